#include "view/presentation_data.h"

#include <functional>

#include "config/project_config.h"
#include "model/project.h"
#include "values/record_impl.h"

template <class Visit>
void CPresentationData::describe(Visit && visit)
{
    using Views = CPresentationData;
    visit("primarySelectedTaskID", &Views::primarySelectedTaskID);
    visit("selectedTaskID", &Views::selectedTaskID);
    visit("selectedCompanyID", &Views::selectedCompanyID);
    visit("selectedResourceID", &Views::selectedResourceID);
    visit("selectedRiskID", &Views::selectedRiskID);
    visit("selectedFilterID", &Views::selectedFilterID);
    visit("selectedAssignedRiskCostID", &Views::selectedAssignedRiskCostID);
    visit("selectedTaskCostID", &Views::selectedTaskCostID);
    visit("selectedResourceCostID", &Views::selectedResourceCostID);
    visit("primarySelectedSceneEntityID", &Views::primarySelectedSceneEntityID);
    visit("selectedSceneEntityID", &Views::selectedSceneEntityID);
    visit("selectedTaskReportID", &Views::selectedTaskReportID);
    visit("selectedTaskReportCostID", &Views::selectedTaskReportCostID);
    visit("selectedUserID", &Views::selectedUserID);
    visit("selectedRoleID", &Views::selectedRoleID);
    visit("resourceUtilisationPresentation", &Views::resourceUtilisationPresentation);
    visit("evaGraphPresentation", &Views::evaGraphPresentation);
    visit("navigatorPresentation", &Views::navigatorPresentation);
    visit("presentation3D", &Views::presentation3D);
    visit("ganttPresentation", &Views::ganttPresentation);
    visit("resourcePresentations", &Views::resourcePresentations);
    visit("riskPresentations", &Views::riskPresentations);
    visit("taskPresentations", &Views::taskPresentations);
}

template class orvane::CRecord<CPresentationData>;

namespace
{

template <class Field>
void clearField(Field & field)
{
    if constexpr (requires { field.RemoveAll(); }) field.RemoveAll();
    else field.clear();
}

}  // namespace

void CPresentationData::clear()
{
    describe([this](char const *, auto field) { clearField(this->*field); });
}

// ---- selecting ------------------------------------------------------------------------------------

namespace
{

// Whether that is a change.
template <class ID>
bool selectID(ID & field, ID const & id)
{
    if (field == id) return false;
    field = id;
    return true;
}

}  // namespace

void CPresentationData::choose3DMode(C3DDisplayMode const & mode)
{
    if (CProjectConfig::getAutoChoose3DMode()) presentation3D.set3DDisplayMode(mode);
}

// Whether that is a change.
template <class ID>
bool CPresentationData::selectIn3D(ID & field, ID const & id, C3DDisplayMode const & mode)
{
    if (!selectID(field, id)) return false;
    choose3DMode(field.isNULL() ? C3DDisplayMode::NothingSelected : mode);
    return true;
}

template <class Array>
void CPresentationData::selectAllIn3D(Array & field, Array const & ids, C3DDisplayMode const & mode)
{
    if (field == ids) return;
    Array selection(ids);
    for (int each = selection.GetUpperBound(); each >= 0; --each)
        if (selection.GetAt(each).isNULL()) selection.RemoveAt(each);
    // Assigning an empty array would leave no flagged element, and so no trace.
    if (selection.IsEmpty()) field.RemoveAll();
    else field = selection;
    choose3DMode(field.IsEmpty() ? C3DDisplayMode::NothingSelected : mode);
}

bool CPresentationData::setPrimarySelectedTaskID(CTaskID const & id)
{
    if (!selectIn3D(primarySelectedTaskID, id, C3DDisplayMode::Task)) return true;
    clearSelectedTaskCost();
    clearSelectedTaskReport();
    clearSelectedTaskReportCost();
    deselectAssignedRiskCostIDIfNecessary();
    return true;
}

bool CPresentationData::setSelectedTaskID(CTaskIDArray const & ids)
{
    selectAllIn3D(selectedTaskID, ids, C3DDisplayMode::Task);
    return true;
}

bool CPresentationData::setSingleSelectedTaskID(CTaskID const & id)
{
    // Copied first: the identifier may stand in the selection that it replaces.
    CTaskIDArray single;
    single.Add(id);
    return setPrimarySelectedTaskID(id) && setSelectedTaskID(single);
}

bool CPresentationData::setSelectedCompanyID(CCompanyID const & id)
{
    selectIn3D(selectedCompanyID, id, C3DDisplayMode::Company);
    return true;
}

bool CPresentationData::setSelectedResourceID(CResourceID const & id)
{
    if (selectIn3D(selectedResourceID, id, C3DDisplayMode::Resource)) clearSelectedResourceCost();
    return true;
}

bool CPresentationData::setSelectedRiskID(CRiskID const & id)
{
    selectID(selectedRiskID, id);
    return true;
}

bool CPresentationData::setPrimarySelectedSceneEntityID(CEntityID const & id)
{
    selectIn3D(primarySelectedSceneEntityID, id, C3DDisplayMode::SceneEntity);
    return true;
}

bool CPresentationData::setSelectedSceneEntityID(CEntityIDArray const & ids)
{
    selectAllIn3D(selectedSceneEntityID, ids, C3DDisplayMode::SceneEntity);
    return true;
}

bool CPresentationData::setSelectedTaskReportID(CTaskReportID const & id)
{
    if (!selectID(selectedTaskReportID, id)) return true;
    clearSelectedTaskReportCost();
    clearSelectedResourceCost();
    return true;
}

bool CPresentationData::setSelectedUserID(CUserID const & id)
{
    selectID(selectedUserID, id);
    return true;
}

bool CPresentationData::setSelectedRoleID(CRoleID const & id)
{
    selectID(selectedRoleID, id);
    return true;
}

bool CPresentationData::setSelectedTaskCostID(CCostID const & id)
{
    selectID(selectedTaskCostID, id);
    return true;
}

bool CPresentationData::setSelectedResourceCostID(CCostID const & id)
{
    selectID(selectedResourceCostID, id);
    return true;
}

bool CPresentationData::setSelectedAssignedRiskCostID(CCostID const & id)
{
    selectID(selectedAssignedRiskCostID, id);
    return true;
}

bool CPresentationData::setSelectedTaskReportCostID(CCostID const & id)
{
    selectID(selectedTaskReportCostID, id);
    return true;
}

// ---- what is selected with a task -----------------------------------------------------------------

namespace
{

// The identifier of the first assignment of what `subjectOf` tells; NULL when there is none.
template <class ID, class Assigned, class SubjectOf, class Subject>
ID firstAssignment(Assigned const & assigned, SubjectOf subjectOf, Subject const & subject)
{
    for (auto const & each : assigned)
        if (std::invoke(subjectOf, each) == subject) return each.getID();
    return ID::getNULL();
}

}  // namespace

CAssignedRiskID CPresentationData::getSelectedAssignedRiskID() const
{
    CTask const * const task = project ? project->getTask(primarySelectedTaskID) : nullptr;
    if (!task || selectedRiskID.isNULL()) return CAssignedRiskID::getNULL();
    return firstAssignment<CAssignedRiskID>(task->getAssignedRisks(), &CAssignedRisk::getRiskID, selectedRiskID);
}

CAssignedResourceID CPresentationData::getSelectedAssignedResourceID() const
{
    CTask const * const task = project ? project->getTask(primarySelectedTaskID) : nullptr;
    if (!task || selectedResourceID.isNULL()) return CAssignedResourceID::getNULL();
    return firstAssignment<CAssignedResourceID>(task->getAssignedResources(), &CAssignedResource::getResourceID,
                                                selectedResourceID);
}

void CPresentationData::deselectAssignedRiskCostIDIfNecessary()
{
    CAssignedRiskID const id = getSelectedAssignedRiskID();
    CAssignedRisk const * const assigned = id.isNULL() ? nullptr : project->getAssignedRisk(id);
    // An assignment that cannot be found says nothing about its costs.
    if (!id.isNULL() && !assigned) return;
    CCostArray const * const costs = assigned ? assigned->getCosts() : nullptr;
    if (!costs || costs->findByID(selectedAssignedRiskCostID) < 0) clearSelectedAssignedRiskCost();
}

// ---- deselecting ----------------------------------------------------------------------------------

void CPresentationData::clearAllSelectedTasks()
{
    primarySelectedTaskID.clear();
    selectedTaskID.RemoveAll();
}

void CPresentationData::clearSelectedSceneEntity()
{
    primarySelectedSceneEntityID.clear();
    selectedSceneEntityID.RemoveAll();
}

template <class Array>
bool CPresentationData::deselectResourceIn(Array const & resources)
{
    if (selectedResourceID.isNULL()) return false;
    for (auto const & resource : resources)
        if (resource.findResource(selectedResourceID))
        {
            clearSelectedResource();
            return true;
        }
    return false;
}

bool CPresentationData::deselectAllResources(CEquipmentResourceArray const & resources)
{
    return deselectResourceIn(resources);
}

bool CPresentationData::deselectAllResources(CHumanResourceArray const & resources)
{
    return deselectResourceIn(resources);
}

bool CPresentationData::deselectAllResources(CLocationResourceArray const & resources)
{
    return deselectResourceIn(resources);
}

bool CPresentationData::deselectAllResources(CMaterialResourceArray const & resources)
{
    return deselectResourceIn(resources);
}

bool CPresentationData::deselectResourceIfOwnedByCompany(CCompany const & company)
{
    bool done = false;
    company.forEachKind([&](auto const & resources) { done = done || deselectAllResources(resources); });
    return done;
}

// ---- how items are shown --------------------------------------------------------------------------

namespace
{

template <class Map, class ID, class Presentation>
bool enterPresentation(Map & map, ID const & id, Presentation const & presentation)
{
    if (id.isNULL()) return false;
    map.SetAt(id, presentation);
    return true;
}

template <class Map, class ID>
bool removePresentation(Map & map, ID const & id)
{
    if (id.isNULL()) return false;
    map.RemoveKey(id);
    return true;
}

}  // namespace

bool CPresentationData::getResourcePresentation(CResourceID const & id, CResourcePresentation & presentation) const
{
    return resourcePresentations.Lookup(id, presentation);
}

bool CPresentationData::getRiskPresentation(CRiskID const & id, CRiskPresentation & presentation) const
{
    return riskPresentations.Lookup(id, presentation);
}

bool CPresentationData::getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const
{
    return taskPresentations.Lookup(id, presentation);
}

bool CPresentationData::addTaskPresentations(CTaskIDArray const & ids)
{
    bool all = true;
    for (CTaskID const & id : ids) all = addTaskPresentation(id) && all;
    return all;
}

bool CPresentationData::setResourcePresentation(CResourceID const & id, CResourcePresentation const & presentation)
{
    return enterPresentation(resourcePresentations, id, presentation);
}

bool CPresentationData::setRiskPresentation(CRiskID const & id, CRiskPresentation const & presentation)
{
    return enterPresentation(riskPresentations, id, presentation);
}

bool CPresentationData::setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation)
{
    return enterPresentation(taskPresentations, id, presentation);
}

bool CPresentationData::removeResourcePresentation(CResourceID const & id)
{
    return removePresentation(resourcePresentations, id);
}

bool CPresentationData::removeRiskPresentation(CRiskID const & id)
{
    return removePresentation(riskPresentations, id);
}

bool CPresentationData::removeTaskPresentation(CTaskID const & id)
{
    return removePresentation(taskPresentations, id);
}

void CPresentationData::Serialize(CProjectArchive & archive)
{
    archive.exchange(primarySelectedTaskID, selectedTaskID, selectedCompanyID, selectedResourceID, selectedRiskID,
                     selectedTaskReportID, selectedTaskReportCostID, selectedUserID, selectedRoleID, selectedFilterID,
                     selectedAssignedRiskCostID, selectedTaskCostID, selectedResourceCostID);
    archive.exchange(resourceUtilisationPresentation, navigatorPresentation, presentation3D, ganttPresentation,
                     evaGraphPresentation);
    archive.exchangeSince(32, resourcePresentations, CResourcePresentationMap());
    archive.exchangeSince(33, riskPresentations, CRiskPresentationMap());
    archive.exchangeSince(34, taskPresentations, CTaskPresentationMap());
    archive.exchangeSince(42, primarySelectedSceneEntityID, CEntityID::getNULL());
    archive.exchangeSince(42, selectedSceneEntityID, CEntityIDArray());
}

// While reading, the groups without an element of their own have nothing to be found in.
void CPresentationData::xmlSerialize(CProjectXMLArchive & archive)
{
    bool const isOwn = archive.isStoring() || archive.isTag("PresentationData");
    archive.startEntity("PresentationData");
    if (isOwn) exchangeAttributes(archive);
    archive.out(">");
    archive.out("<selectedTaskIDs>");
    archive.indent();
    selectedTaskID.xmlSerialize(archive);
    archive.undent();
    archive.out("</selectedTaskIDs>");
    resourceUtilisationPresentation.xmlSerialize(archive);
    if (archive.isStoring()) evaGraphPresentation.xmlSerialize(archive);
    navigatorPresentation.xmlSerialize(archive);
    if (archive.isStoring()) presentation3D.xmlSerialize(archive);
    if (archive.isStoring()) ganttPresentation.xmlSerialize(archive);
    resourcePresentations.xmlSerialize(archive);
    riskPresentations.xmlSerialize(archive);
    taskPresentations.xmlSerialize(archive);
    archive.endEntity("</PresentationData>");
    if (archive.isLoading() && isOwn) archive.setTagProcessor(this);
}
