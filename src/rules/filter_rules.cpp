// Filters: coming, changing and going; and what a selected filter does to the selection.

#include "rules/local_rules_checker.h"

#include "platform/message.h"
#include "view/item_tree.h"

// ---- the filters ----------------------------------------------------------------------------------

bool CLocalRulesChecker::addFilter(CFilter const & filter)
{
    if (!project || projectData->filters.findByID(filter.getID()) >= 0) return false;
    int const position = projectData->filters.Add(filter);
    projectData->filters.elementForPass(position).setProject(project);
    return true;
}

bool CLocalRulesChecker::changeFilter(CFilter const & filter)
{
    if (!project || !projectData->filters.changeElement(filter)) return false;
    int const position = projectData->filters.findByID(filter.getID());
    projectData->filters.elementForPass(position).setProject(project);
    if (filter.getID() == project->getSelectedFilterID()) deselectTasksThatAreExcludedByFilter();
    return true;
}

bool CLocalRulesChecker::removeFilter(CFilterID const & filterID)
{
    // The argument may belong to what goes.
    CFilterID const id(filterID);
    int const asked = project ? projectData->filters.findByID(id) : -1;
    if (asked < 0) return false;
    CString const question = "Remove the Filter \"" + projectData->filters.GetAt(asked).getName() + "\"?";
    if (isOriginatingClient() && !promptYesNo(question)) return false;
    int const position = projectData->filters.findByID(id);
    if (position < 0) return false;
    projectData->filters.RemoveAt(position);
    if (!isTransactionServer() && id == project->getSelectedFilterID()) presentationData->clearSelectedFilter();
    return true;
}

// ---- the selection --------------------------------------------------------------------------------

// By the filter itself: a summary task that is shown only for the sake of a child goes.
void CLocalRulesChecker::deselectTasksThatAreExcludedByFilter()
{
    CFilter const * const filter = project ? project->getSelectedFilter() : nullptr;
    if (!filter) return;
    auto const isExcluded = [&](CTaskID const & id) {
        CTask const * const task = getTask(id);
        return task && !filter->includeTask(*task);
    };
    CTaskIDArray kept;
    for (CTaskID const & id : presentationData->getSelectedTaskID())
        if (!isExcluded(id)) kept.Add(id);
    if (kept.GetSize() < presentationData->getSelectedTaskID().GetSize()) presentationData->setSelectedTaskID(kept);
    if (isExcluded(presentationData->getPrimarySelectedTaskID()))
        presentationData->setPrimarySelectedTaskID(CTaskID(orvane::nullID));
}

// ---- what the filters choose by -------------------------------------------------------------------

template <class ID>
void CLocalRulesChecker::forgetInFilters(ID const & id)
{
    for (int each = 0; each < projectData->filters.GetSize(); ++each)
        projectData->filters.elementForPass(each).forget(id);
}

template <class Items>
void CLocalRulesChecker::forgetTreesInFilters(Items const & items)
{
    orvane::visitItems(items, [this](auto const & item) { forgetInFilters(item.getID()); });
}

void CLocalRulesChecker::removeFromFilters(CCompanyID const & companyID)
{
    CCompanyID const id(companyID);
    forgetInFilters(id);
    CCompany const * const company = project->getCompany(id);
    if (company) company->forEachKind([this](auto const & resources) { forgetTreesInFilters(resources); });
}

void CLocalRulesChecker::removeFromFilters(CResourceID const & resourceID)
{
    CResourceID const id(resourceID);
    forgetInFilters(id);
    withResource(id, [this](auto const & resource) {
        if (resource.hasSubResource()) forgetTreesInFilters(*resource.getSubResources());
        return true;
    });
}

void CLocalRulesChecker::removeFromFilters(CRiskID const & riskID)
{
    CRiskID const id(riskID);
    forgetInFilters(id);
    CRisk const * const risk = getRisk(id);
    if (risk && risk->getSubRisks()) forgetTreesInFilters(*risk->getSubRisks());
}
