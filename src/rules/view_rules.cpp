// The state of the views: what is selected, and how views and the items in them are shown.

#include "rules/local_rules_checker.h"
#include "view/item_tree.h"

// ---- selecting ------------------------------------------------------------------------------------

bool CLocalRulesChecker::setPrimarySelectedTaskID(CTaskID const & id)
{
    return project && presentationData->setPrimarySelectedTaskID(id);
}

bool CLocalRulesChecker::setSelectedTaskReportID(CTaskReportID const & id)
{
    return project && presentationData->setSelectedTaskReportID(id);
}

bool CLocalRulesChecker::setSelectedResourceID(CResourceID const & id)
{
    return project && presentationData->setSelectedResourceID(id);
}

bool CLocalRulesChecker::setPrimarySelectedSceneEntityID(CEntityID const & id)
{
    return project && presentationData->setPrimarySelectedSceneEntityID(id);
}

bool CLocalRulesChecker::setSelectedSceneEntityID(CEntityIDArray const & ids)
{
    return project && presentationData->setSelectedSceneEntityID(ids);
}

bool CLocalRulesChecker::setSelectedLinksTasks(CLinkID const & linkID)
{
    // The holder is the downstream task; hidden rows cannot be seen to be selected.
    CTask const * const holder = project ? project->getTask(linkID) : nullptr;
    if (!holder) return false;
    CTaskIDArray joined;
    if (!project->isTaskHidden(holder->getID())) joined.Add(holder->getID());
    int const link = holder->getUpstreamLinks().findByID(linkID);
    if (link < 0) return false;
    CTaskID const & upstreamID = holder->getUpstreamLinks().GetAt(link).getUpstreamTaskID();
    if (!project->isTaskHidden(upstreamID)) joined.Add(upstreamID);
    presentationData->setSelectedTaskID(joined);
    return true;
}

void CLocalRulesChecker::deselectSubTasks(CTask const & task)
{
    CTaskArray const * const children = task.getSubTasks();
    if (!children) return;
    auto const isChild = [&](CTaskID const & id) { return children->findByID(id) >= 0; };
    if (isChild(presentationData->getPrimarySelectedTaskID())) presentationData->clearPrimarySelectedTask();
    CTaskIDArray selection(presentationData->getSelectedTaskID());
    int const before = selection.GetSize();
    for (int each = selection.GetUpperBound(); each >= 0; --each)
        if (isChild(selection.GetAt(each))) selection.RemoveAt(each);
    if (selection.GetSize() < before) presentationData->setSelectedTaskID(selection);
    for (CTask const & child : *children) deselectSubTasks(child);
}

// Assigning flags the whole field, also when nothing differs.
template <class Field>
bool CLocalRulesChecker::assignView(Field CPresentationData::*field, Field const & value)
{
    if (!project) return false;
    presentationData->*field = value;
    return true;
}

bool CLocalRulesChecker::setSelectedTaskReportCostID(CCostID const & id)
{
    return assignView(&CPresentationData::selectedTaskReportCostID, id);
}

bool CLocalRulesChecker::setSelectedFilterID(CFilterID const & id)
{
    return assignView(&CPresentationData::selectedFilterID, id);
}

bool CLocalRulesChecker::setSelectedAssignedRiskCostID(CCostID const & id)
{
    return assignView(&CPresentationData::selectedAssignedRiskCostID, id);
}

bool CLocalRulesChecker::setSelectedTaskCostID(CCostID const & id)
{
    return assignView(&CPresentationData::selectedTaskCostID, id);
}

bool CLocalRulesChecker::setSelectedResourceCostID(CCostID const & id)
{
    return assignView(&CPresentationData::selectedResourceCostID, id);
}

// ---- views as a whole -----------------------------------------------------------------------------

bool CLocalRulesChecker::setResourceUtilisationPresentation(CResourceUtilisationPresentation const & presentation)
{
    return assignView(&CPresentationData::resourceUtilisationPresentation, presentation);
}

bool CLocalRulesChecker::setNavigatorPresentation(CNavigatorPresentation const & presentation)
{
    return assignView(&CPresentationData::navigatorPresentation, presentation);
}

bool CLocalRulesChecker::set3DPresentation(C3DPresentation const & presentation)
{
    return assignView(&CPresentationData::presentation3D, presentation);
}

bool CLocalRulesChecker::setGanttPresentation(CGanttPresentation const & presentation)
{
    return assignView(&CPresentationData::ganttPresentation, presentation);
}

bool CLocalRulesChecker::setEVAGraphPresentation(CEVAGraphPresentation const & presentation)
{
    return assignView(&CPresentationData::evaGraphPresentation, presentation);
}

// ---- how one item is shown ------------------------------------------------------------------------

bool CLocalRulesChecker::addResourcePresentation(CResourceID const & id)
{
    return project && presentationData->addResourcePresentation(id);
}

bool CLocalRulesChecker::setResourcePresentation(CResourceID const & id, CResourcePresentation const & presentation)
{
    return project && presentationData->setResourcePresentation(id, presentation);
}

bool CLocalRulesChecker::removeResourcePresentation(CResourceID const & id)
{
    return project && presentationData->removeResourcePresentation(id);
}

bool CLocalRulesChecker::setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation)
{
    return project && presentationData->setTaskPresentation(id, presentation);
}

namespace
{

// Writes only a flag that differs. An item that was moved may stand without an entry until the next load.
template <class Map, class ID>
bool showEntryExpanded(Map & entries, ID const & id, bool exists, bool expanded)
{
    auto const * const entry = entries.find(id);
    if (!entry && !exists) return false;
    auto presentation = entry ? *entry : std::remove_cvref_t<decltype(*entry)>();
    if (presentation.getShowExpanded() == expanded) return true;
    presentation.setShowExpanded(expanded);
    entries.SetAt(id, presentation);
    return true;
}

}  // namespace

bool CLocalRulesChecker::showExpanded(CResourceID const & id, bool expanded)
{
    return project &&
           showEntryExpanded(presentationData->resourcePresentations, id, project->getResource(id), expanded);
}

bool CLocalRulesChecker::showExpanded(CRiskID const & id, bool expanded)
{
    return project && showEntryExpanded(presentationData->riskPresentations, id, project->findRisk(id), expanded);
}

// ---- an item and all below it ---------------------------------------------------------------------

namespace
{

// Calls `change` with the identifier of each, children first; whether all of them succeeded.
template <class Item, class Change>
bool changeWithAllBelow(Item const & item, Change const & change)
{
    bool all = true;
    if (auto const * const below = orvane::itemsBelow(item))
        for (auto const & each : *below) all = changeWithAllBelow(each, change) && all;
    return change(item.getID()) && all;
}

}  // namespace

bool CLocalRulesChecker::setEntriesOf(CRisk const & risk, CRiskPresentation const & presentation)
{
    return changeWithAllBelow(risk, [&](CRiskID const & id)
                              { return presentationData->setRiskPresentation(id, presentation); });
}

bool CLocalRulesChecker::setRiskPresentation(CRiskID const & id, CRiskPresentation const & presentation, bool recursive)
{
    if (!project) return false;
    if (!recursive) return presentationData->setRiskPresentation(id, presentation);
    CRisk const * const risk = project->findRisk(id);
    return risk && setEntriesOf(*risk, presentation);
}

bool CLocalRulesChecker::setRiskPresentation(CRiskArray const * risks, CRiskPresentation const & presentation)
{
    if (!project) return false;
    bool all = true;
    if (risks)
        for (CRisk const & risk : *risks) all = setEntriesOf(risk, presentation) && all;
    return all;
}

template <class Resource>
bool CLocalRulesChecker::removeEntriesOf(Resource const & resource)
{
    return changeWithAllBelow(resource, [this](CResourceID const & id) { return removeResourcePresentation(id); });
}

bool CLocalRulesChecker::removeAllResourcePresentations(CEquipmentResource const & resource)
{
    return removeEntriesOf(resource);
}

bool CLocalRulesChecker::removeAllResourcePresentations(CHumanResource const & resource)
{
    return removeEntriesOf(resource);
}

bool CLocalRulesChecker::removeAllResourcePresentations(CLocationResource const & resource)
{
    return removeEntriesOf(resource);
}

bool CLocalRulesChecker::removeAllResourcePresentations(CMaterialResource const & resource)
{
    return removeEntriesOf(resource);
}

bool CLocalRulesChecker::removeAllResourcePresentations(CCompany const & company)
{
    if (!project) return false;
    bool all = true;
    company.forEachKind(
        [&](auto const & resources)
        {
            for (auto const & resource : resources) all = removeEntriesOf(resource) && all;
        });
    return all;
}

bool CLocalRulesChecker::removeAllRiskPresentations(CRisk const & risk)
{
    return changeWithAllBelow(risk, [this](CRiskID const & id) { return removeRiskPresentation(id); });
}

bool CLocalRulesChecker::removeAllTaskPresentations(CTask const & task)
{
    return changeWithAllBelow(task, [this](CTaskID const & id) { return removeTaskPresentation(id); });
}
