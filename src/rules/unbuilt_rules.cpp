#include "rules/unbuilt_rules.h"

#include <stdexcept>
#include <string>

namespace
{

[[noreturn]] bool notBuilt(char const * operation)
{
    throw std::logic_error(std::string("IRulesChecker::") + operation + " is not available in this version");
}

}  // namespace

namespace orvane
{

bool CUnbuiltRules::undo(int) { return notBuilt("undo"); }
bool CUnbuiltRules::redo(int) { return notBuilt("redo"); }
bool CUnbuiltRules::importTasks(CTaskArray const &) { return notBuilt("importTasks"); }
bool CUnbuiltRules::insertBlankTask(CTaskID const &, CInsertType const &) { return notBuilt("insertBlankTask"); }
bool CUnbuiltRules::pasteIntoTask(CTaskID const &, CTaskID const &, CTaskPasteMode const &) { return notBuilt("pasteIntoTask"); }
bool CUnbuiltRules::pasteIntoNewTask(CTaskID const &, int, CTaskPasteMode const &) { return notBuilt("pasteIntoNewTask"); }
bool CUnbuiltRules::repositionTask(CTaskID const &, int) { return notBuilt("repositionTask"); }
bool CUnbuiltRules::repositionTasks(CTaskIDArray const &, CTaskID const &, int) { return notBuilt("repositionTasks"); }
bool CUnbuiltRules::clearScene() { return notBuilt("clearScene"); }
bool CUnbuiltRules::addEntitiesToScene(CObArray const &) { return notBuilt("addEntitiesToScene"); }
bool CUnbuiltRules::assignEntityToResource(CEntityID const &, CResourceID const &) { return notBuilt("assignEntityToResource"); }
bool CUnbuiltRules::unassignEntityFromResource(CEntityID const &, CResourceID const &) { return notBuilt("unassignEntityFromResource"); }
bool CUnbuiltRules::unassignAllEntitiesFromResource(CResourceID const &) { return notBuilt("unassignAllEntitiesFromResource"); }
bool CUnbuiltRules::unassignEntityFromAllResources(CEntityID const &) { return notBuilt("unassignEntityFromAllResources"); }
bool CUnbuiltRules::renameEntityInScene(CEntityID const &, CString const &) { return notBuilt("renameEntityInScene"); }
bool CUnbuiltRules::changeEntityTransform(CEntityID const &, CTransform const &) { return notBuilt("changeEntityTransform"); }
bool CUnbuiltRules::changeEntityBoxDimensions(CEntityID const &, CPOINT2DArray const &, double) { return notBuilt("changeEntityBoxDimensions"); }
bool CUnbuiltRules::changeEntityCylinderDimensions(CEntityID const &, double, double) { return notBuilt("changeEntityCylinderDimensions"); }
bool CUnbuiltRules::changeEntitySphereDimensions(CEntityID const &, double) { return notBuilt("changeEntitySphereDimensions"); }
bool CUnbuiltRules::changeEntityExtrusionDimensions(CEntityID const &, CPOINT2DArray const &, double) { return notBuilt("changeEntityExtrusionDimensions"); }
bool CUnbuiltRules::changeEntityMaterial(CEntityID const &, CMaterial const &) { return notBuilt("changeEntityMaterial"); }
bool CUnbuiltRules::removeEntityFromScene(CEntityID const &) { return notBuilt("removeEntityFromScene"); }
bool CUnbuiltRules::findNext(CString const &, bool, bool, bool) { return notBuilt("findNext"); }
bool CUnbuiltRules::replaceCurrent(CString const &, CString const &, bool, bool, bool) { return notBuilt("replaceCurrent"); }
bool CUnbuiltRules::replaceAll(CString const &, CString const &, bool, bool) { return notBuilt("replaceAll"); }

}  // namespace orvane
