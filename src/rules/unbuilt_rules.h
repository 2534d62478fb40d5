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
    bool addCompany(CCompany const &) override;
    bool changeCompany(CCompany const &) override;
    bool removeCompany(CCompanyID const &) override;
    bool setCompanyName(CCompanyID const &, CString const &) override;
    bool setCompanyAddress(CCompanyID const &, CString const &) override;
    bool setCompanyTelephoneNumber(CCompanyID const &, CString const &) override;
    bool setCompanyFaxNumber(CCompanyID const &, CString const &) override;
    bool setCompanyEmailAddress(CCompanyID const &, CString const &) override;
    bool setCompanyType(CCompanyID const &, CCompanyType const &) override;
    bool setCompanyColor(CCompanyID const &, unsigned long) override;
    bool setCalendar(CCalendar const &) override;
    bool addUser(CUser const &) override;
    bool changeUser(CUser const &) override;
    bool removeUser(CUserID const &) override;
    bool changeSupplyChain(CSupplyChain const &) override;
    bool addRole(CRole const &) override;
    bool changeRole(CRole const &) override;
    bool removeRole(CRoleID const &) override;
    bool importTasks(CTaskArray const &) override;
    bool insertBlankTask(CTaskID const &, CInsertType const &) override;
    bool setTasksBaseline(CTaskIDArray const &) override;
    bool clearTasksBaseline(CTaskIDArray const &) override;
    bool pasteIntoTask(CTaskID const &, CTaskID const &, CTaskPasteMode const &) override;
    bool pasteIntoNewTask(CTaskID const &, int, CTaskPasteMode const &) override;
    bool repositionTask(CTaskID const &, int) override;
    bool repositionTasks(CTaskIDArray const &, CTaskID const &, int) override;
    bool assignResourceToTask(CTaskID const &, CResourceID const &) override;
    bool assignResourceToTasks(CTaskIDArray const &, CResourceID const &) override;
    bool changeAssignedResource(CAssignedResource const &) override;
    bool unassignResource(CAssignedResourceID const &) override;
    bool assignRiskToTask(CTaskIDArray const &, CRiskID const &) override;
    bool changeAssignedRisk(CAssignedRisk const &) override;
    bool unassignRisk(CAssignedRiskID const &) override;
    bool addTaskCost(CTaskID const &) override;
    bool changeTaskCost(CCost const &) override;
    bool removeTaskCost(CCostID const &) override;
    bool addTaskReport(CTaskID const &, CRiskID const &, CProjectDate const &, CTaskReportType const &, CProjectDuration const &) override;
    bool changeTaskReport(CTaskReport const &) override;
    bool removeTaskReport(CTaskReportID const &) override;
    bool addRisk(CRisk const &, CRiskID const &) override;
    bool renameRisk(CRiskID const &, CString const &) override;
    bool removeRisk(CRiskID const &) override;
    bool setRiskValueMode(CRiskID const &, CRiskValueMode const &) override;
    bool makeSubRisk(CRiskID const &, CRiskID const &) override;
    bool addEquipmentResourceToCompany(CEquipmentResource const &, CCompanyID const &) override;
    bool addHumanResourceToCompany(CHumanResource const &, CCompanyID const &) override;
    bool addLocationResourceToCompany(CLocationResource const &, CCompanyID const &) override;
    bool addMaterialResourceToCompany(CMaterialResource const &, CCompanyID const &) override;
    bool addEquipmentResourceToParent(CEquipmentResource const &, CResourceID const &) override;
    bool addHumanResourceToParent(CHumanResource const &, CResourceID const &) override;
    bool addLocationResourceToParent(CLocationResource const &, CResourceID const &) override;
    bool addMaterialResourceToParent(CMaterialResource const &, CResourceID const &) override;
    bool removeResource(CResourceID const &) override;
    bool makeSubResource(CResourceID const &, CResourceID const &) override;
    bool setResourceName(CResourceID const &, CString const &) override;
    bool setResourceAutoAccept(CResourceID const &, bool) override;
    bool setResourceOrderRequired(CResourceID const &, bool) override;
    bool setResourceUsedOn(CResourceID const &, CProjectTime const &) override;
    bool setResourceLeadTime(CResourceID const &, CProjectDuration const &) override;
    bool setResourceUseRatePerDay(CResourceID const &, int) override;
    bool setResourceTotalUnitsAvailable(CResourceID const &, int) override;
    bool setResourceUnitType(CResourceID const &, CResourceUnitType const &) override;
    bool addResourceCost(CResourceID const &) override;
    bool changeResourceCost(CCost const &) override;
    bool removeResourceCost(CCostID const &) override;
    bool addResourceSupplierReference(CResourceID const &, CString const &, int &) override;
    bool setResourceSupplierReference(CResourceID const &, CString const &, int) override;
    bool removeResourceSupplierReference(CResourceID const &, int) override;
    bool changeResourceSupplier(CResourceID const &, CCompanyID const &) override;
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
    bool addFilter(CFilter const &) override;
    bool changeFilter(CFilter const &) override;
    bool removeFilter(CFilterID const &) override;
    bool findNext(CString const &, bool, bool, bool) override;
    bool replaceCurrent(CString const &, CString const &, bool, bool, bool) override;
    bool replaceAll(CString const &, CString const &, bool, bool) override;
};

}  // namespace orvane
