#pragma once

#include "rules/rules_checker.h"

namespace orvane
{

// The operations whose records the model does not have yet. A call fails loudly, in every build, rather
// than answer a made-up result: it throws std::logic_error with the operation's name.
class CUnbuiltRules : public IRulesChecker
{
public:
    bool undo(int) override;
    bool redo(int) override;
    bool importTasks(CTaskArray const &) override;
    bool insertBlankTask(CTaskID const &, CInsertType const &) override;
    bool pasteIntoTask(CTaskID const &, CTaskID const &, CTaskPasteMode const &) override;
    bool pasteIntoNewTask(CTaskID const &, int, CTaskPasteMode const &) override;
    bool repositionTask(CTaskID const &, int) override;
    bool repositionTasks(CTaskIDArray const &, CTaskID const &, int) override;
    bool clearScene() override;
    bool addEntitiesToScene(CObArray const &) override;
    bool assignEntityToResource(CEntityID const &, CResourceID const &) override;
    bool unassignEntityFromResource(CEntityID const &, CResourceID const &) override;
    bool unassignAllEntitiesFromResource(CResourceID const &) override;
    bool unassignEntityFromAllResources(CEntityID const &) override;
    bool renameEntityInScene(CEntityID const &, CString const &) override;
    bool changeEntityTransform(CEntityID const &, CTransform const &) override;
    bool changeEntityBoxDimensions(CEntityID const &, CPOINT2DArray const &, double) override;
    bool changeEntityCylinderDimensions(CEntityID const &, double, double) override;
    bool changeEntitySphereDimensions(CEntityID const &, double) override;
    bool changeEntityExtrusionDimensions(CEntityID const &, CPOINT2DArray const &, double) override;
    bool changeEntityMaterial(CEntityID const &, CMaterial const &) override;
    bool removeEntityFromScene(CEntityID const &) override;
    bool findNext(CString const &, bool, bool, bool) override;
    bool replaceCurrent(CString const &, CString const &, bool, bool, bool) override;
    bool replaceAll(CString const &, CString const &, bool, bool) override;
};

}  // namespace orvane
