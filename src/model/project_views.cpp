#include "model/project.h"

#include "model/array_access.h"
#include "view/item_tree.h"

CResourceUtilisationPresentation const & CProject::getResourceUtilisationPresentation() const
{
    return presentationData.getResourceUtilisationPresentation();
}

bool CProject::getResourcePresentation(CResourceID const & id, CResourcePresentation & presentation) const
{
    return presentationData.getResourcePresentation(id, presentation);
}

bool CProject::getRiskPresentation(CRiskID const & id, CRiskPresentation & presentation) const
{
    return presentationData.getRiskPresentation(id, presentation);
}

bool CProject::getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const
{
    return presentationData.getTaskPresentation(id, presentation);
}

// ---- collapsed rows -------------------------------------------------------------------------------

// A task without an entry does, as a new entry would say.
bool CProject::showsChildren(CTask const & task) const
{
    CTaskPresentation const * const entry = presentationData.taskPresentations.find(task.getID());
    return !entry || entry->getShowChildren().getValue();
}

bool CProject::isTaskHidden(CTaskID const & id) const
{
    for (CTask const * parent = getTaskParent(id); parent; parent = getTaskParent(*parent))
        if (!showsChildren(*parent)) return true;
    return false;
}

bool CProject::hasRowShowingChildren(CTask const * task, bool show) const
{
    CTaskArray const * const children = task ? task->getSubTasks() : nullptr;
    if (!children) return false;
    if (showsChildren(*task) == show) return true;
    for (CTask const & child : *children)
        if (hasRowShowingChildren(&child, show)) return true;
    return false;
}

// ---- after a load ---------------------------------------------------------------------------------

namespace
{

// Enters the identifier of each item. The order of the walk is the order of the entries in files.
template <class Items, class Enter>
void enterItems(Items const & items, Enter const & enter)
{
    orvane::visitItems(items, [&](auto const & item) { enter(item.getID()); });
}

}  // namespace

void CProject::validateResourcePresentations()
{
    presentationData.resourcePresentations.refill([this](auto const & enter) {
        for (CCompany const & company : projectData.companies)
            company.forEachKind([&](auto const & resources) { enterItems(resources, enter); });
    });
}

void CProject::validateRiskPresentations()
{
    presentationData.riskPresentations.refill([this](auto const & enter) { enterItems(projectData.risks, enter); });
}

void CProject::validateTaskPresentations()
{
    presentationData.taskPresentations.refill([this](auto const & enter) { enterItems(projectData.tasks, enter); });
}

// ---- filters --------------------------------------------------------------------------------------

CFilter const * CProject::getFilter(int index) const
{
    return orvane::elementAt(projectData.filters, index);
}

CFilter const * CProject::getFilter(CFilterID const & id) const
{
    return orvane::elementOf(projectData.filters, id);
}

bool CProject::isFilterVerdictDue() const
{
    if (getSelectedFilterID().getChanged()) return true;
    CFilter const * const filter = getSelectedFilter();
    return filter && filter->getChanged();
}
