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
bool CUnbuiltRules::addCompany(CCompany const &) { return notBuilt("addCompany"); }
bool CUnbuiltRules::changeCompany(CCompany const &) { return notBuilt("changeCompany"); }
bool CUnbuiltRules::removeCompany(CCompanyID const &) { return notBuilt("removeCompany"); }
bool CUnbuiltRules::setCompanyName(CCompanyID const &, CString const &) { return notBuilt("setCompanyName"); }
bool CUnbuiltRules::setCompanyAddress(CCompanyID const &, CString const &) { return notBuilt("setCompanyAddress"); }
bool CUnbuiltRules::setCompanyTelephoneNumber(CCompanyID const &, CString const &) { return notBuilt("setCompanyTelephoneNumber"); }
bool CUnbuiltRules::setCompanyFaxNumber(CCompanyID const &, CString const &) { return notBuilt("setCompanyFaxNumber"); }
bool CUnbuiltRules::setCompanyEmailAddress(CCompanyID const &, CString const &) { return notBuilt("setCompanyEmailAddress"); }
bool CUnbuiltRules::setCompanyType(CCompanyID const &, CCompanyType const &) { return notBuilt("setCompanyType"); }
bool CUnbuiltRules::setCompanyColor(CCompanyID const &, unsigned long) { return notBuilt("setCompanyColor"); }
bool CUnbuiltRules::setCalendar(CCalendar const &) { return notBuilt("setCalendar"); }
bool CUnbuiltRules::addUser(CUser const &) { return notBuilt("addUser"); }
bool CUnbuiltRules::changeUser(CUser const &) { return notBuilt("changeUser"); }
bool CUnbuiltRules::removeUser(CUserID const &) { return notBuilt("removeUser"); }
bool CUnbuiltRules::changeSupplyChain(CSupplyChain const &) { return notBuilt("changeSupplyChain"); }
bool CUnbuiltRules::addRole(CRole const &) { return notBuilt("addRole"); }
bool CUnbuiltRules::changeRole(CRole const &) { return notBuilt("changeRole"); }
bool CUnbuiltRules::removeRole(CRoleID const &) { return notBuilt("removeRole"); }
bool CUnbuiltRules::importTasks(CTaskArray const &) { return notBuilt("importTasks"); }
bool CUnbuiltRules::insertBlankTask(CTaskID const &, CInsertType const &) { return notBuilt("insertBlankTask"); }
bool CUnbuiltRules::setTasksBaseline(CTaskIDArray const &) { return notBuilt("setTasksBaseline"); }
bool CUnbuiltRules::clearTasksBaseline(CTaskIDArray const &) { return notBuilt("clearTasksBaseline"); }
bool CUnbuiltRules::pasteIntoTask(CTaskID const &, CTaskID const &, CTaskPasteMode const &) { return notBuilt("pasteIntoTask"); }
bool CUnbuiltRules::pasteIntoNewTask(CTaskID const &, int, CTaskPasteMode const &) { return notBuilt("pasteIntoNewTask"); }
bool CUnbuiltRules::repositionTask(CTaskID const &, int) { return notBuilt("repositionTask"); }
bool CUnbuiltRules::repositionTasks(CTaskIDArray const &, CTaskID const &, int) { return notBuilt("repositionTasks"); }
bool CUnbuiltRules::assignResourceToTask(CTaskID const &, CResourceID const &) { return notBuilt("assignResourceToTask"); }
bool CUnbuiltRules::assignResourceToTasks(CTaskIDArray const &, CResourceID const &) { return notBuilt("assignResourceToTasks"); }
bool CUnbuiltRules::changeAssignedResource(CAssignedResource const &) { return notBuilt("changeAssignedResource"); }
bool CUnbuiltRules::unassignResource(CAssignedResourceID const &) { return notBuilt("unassignResource"); }
bool CUnbuiltRules::assignRiskToTask(CTaskIDArray const &, CRiskID const &) { return notBuilt("assignRiskToTask"); }
bool CUnbuiltRules::changeAssignedRisk(CAssignedRisk const &) { return notBuilt("changeAssignedRisk"); }
bool CUnbuiltRules::unassignRisk(CAssignedRiskID const &) { return notBuilt("unassignRisk"); }
bool CUnbuiltRules::addTaskCost(CTaskID const &) { return notBuilt("addTaskCost"); }
bool CUnbuiltRules::changeTaskCost(CCost const &) { return notBuilt("changeTaskCost"); }
bool CUnbuiltRules::removeTaskCost(CCostID const &) { return notBuilt("removeTaskCost"); }
bool CUnbuiltRules::addTaskReport(CTaskID const &, CRiskID const &, CProjectDate const &, CTaskReportType const &, CProjectDuration const &) { return notBuilt("addTaskReport"); }
bool CUnbuiltRules::changeTaskReport(CTaskReport const &) { return notBuilt("changeTaskReport"); }
bool CUnbuiltRules::removeTaskReport(CTaskReportID const &) { return notBuilt("removeTaskReport"); }
bool CUnbuiltRules::addRisk(CRisk const &, CRiskID const &) { return notBuilt("addRisk"); }
bool CUnbuiltRules::renameRisk(CRiskID const &, CString const &) { return notBuilt("renameRisk"); }
bool CUnbuiltRules::removeRisk(CRiskID const &) { return notBuilt("removeRisk"); }
bool CUnbuiltRules::setRiskValueMode(CRiskID const &, CRiskValueMode const &) { return notBuilt("setRiskValueMode"); }
bool CUnbuiltRules::makeSubRisk(CRiskID const &, CRiskID const &) { return notBuilt("makeSubRisk"); }
bool CUnbuiltRules::addEquipmentResourceToCompany(CEquipmentResource const &, CCompanyID const &) { return notBuilt("addEquipmentResourceToCompany"); }
bool CUnbuiltRules::addHumanResourceToCompany(CHumanResource const &, CCompanyID const &) { return notBuilt("addHumanResourceToCompany"); }
bool CUnbuiltRules::addLocationResourceToCompany(CLocationResource const &, CCompanyID const &) { return notBuilt("addLocationResourceToCompany"); }
bool CUnbuiltRules::addMaterialResourceToCompany(CMaterialResource const &, CCompanyID const &) { return notBuilt("addMaterialResourceToCompany"); }
bool CUnbuiltRules::addEquipmentResourceToParent(CEquipmentResource const &, CResourceID const &) { return notBuilt("addEquipmentResourceToParent"); }
bool CUnbuiltRules::addHumanResourceToParent(CHumanResource const &, CResourceID const &) { return notBuilt("addHumanResourceToParent"); }
bool CUnbuiltRules::addLocationResourceToParent(CLocationResource const &, CResourceID const &) { return notBuilt("addLocationResourceToParent"); }
bool CUnbuiltRules::addMaterialResourceToParent(CMaterialResource const &, CResourceID const &) { return notBuilt("addMaterialResourceToParent"); }
bool CUnbuiltRules::removeResource(CResourceID const &) { return notBuilt("removeResource"); }
bool CUnbuiltRules::makeSubResource(CResourceID const &, CResourceID const &) { return notBuilt("makeSubResource"); }
bool CUnbuiltRules::setResourceName(CResourceID const &, CString const &) { return notBuilt("setResourceName"); }
bool CUnbuiltRules::setResourceAutoAccept(CResourceID const &, bool) { return notBuilt("setResourceAutoAccept"); }
bool CUnbuiltRules::setResourceOrderRequired(CResourceID const &, bool) { return notBuilt("setResourceOrderRequired"); }
bool CUnbuiltRules::setResourceUsedOn(CResourceID const &, CProjectTime const &) { return notBuilt("setResourceUsedOn"); }
bool CUnbuiltRules::setResourceLeadTime(CResourceID const &, CProjectDuration const &) { return notBuilt("setResourceLeadTime"); }
bool CUnbuiltRules::setResourceUseRatePerDay(CResourceID const &, int) { return notBuilt("setResourceUseRatePerDay"); }
bool CUnbuiltRules::setResourceTotalUnitsAvailable(CResourceID const &, int) { return notBuilt("setResourceTotalUnitsAvailable"); }
bool CUnbuiltRules::setResourceUnitType(CResourceID const &, CResourceUnitType const &) { return notBuilt("setResourceUnitType"); }
bool CUnbuiltRules::addResourceCost(CResourceID const &) { return notBuilt("addResourceCost"); }
bool CUnbuiltRules::changeResourceCost(CCost const &) { return notBuilt("changeResourceCost"); }
bool CUnbuiltRules::removeResourceCost(CCostID const &) { return notBuilt("removeResourceCost"); }
bool CUnbuiltRules::addResourceSupplierReference(CResourceID const &, CString const &, int &) { return notBuilt("addResourceSupplierReference"); }
bool CUnbuiltRules::setResourceSupplierReference(CResourceID const &, CString const &, int) { return notBuilt("setResourceSupplierReference"); }
bool CUnbuiltRules::removeResourceSupplierReference(CResourceID const &, int) { return notBuilt("removeResourceSupplierReference"); }
bool CUnbuiltRules::changeResourceSupplier(CResourceID const &, CCompanyID const &) { return notBuilt("changeResourceSupplier"); }
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
bool CUnbuiltRules::addFilter(CFilter const &) { return notBuilt("addFilter"); }
bool CUnbuiltRules::changeFilter(CFilter const &) { return notBuilt("changeFilter"); }
bool CUnbuiltRules::removeFilter(CFilterID const &) { return notBuilt("removeFilter"); }
bool CUnbuiltRules::findNext(CString const &, bool, bool, bool) { return notBuilt("findNext"); }
bool CUnbuiltRules::replaceCurrent(CString const &, CString const &, bool, bool, bool) { return notBuilt("replaceCurrent"); }
bool CUnbuiltRules::replaceAll(CString const &, CString const &, bool, bool) { return notBuilt("replaceAll"); }

}  // namespace orvane
