#include "view/sub_filters.h"

#include <functional>
#include <utility>

#include "config/text_search.h"
#include "model/project.h"
#include "values/record_impl.h"

namespace
{

// Also an identifier that was chosen twice goes.
template <class Array, class ID>
void removeChosen(Array & chosen, ID const & id)
{
    // The argument may belong to the list.
    ID const gone(id);
    for (int position = chosen.findByID(gone); position >= 0; position = chosen.findByID(gone))
        chosen.RemoveAt(position);
}

// Whether one of the identifiers that `key` gives of the items is chosen.
template <class Items, class Key, class Array>
bool isOneChosen(Items const & items, Key const & key, Array const & chosen)
{
    for (auto const & item : items)
        if (chosen.findByID(std::invoke(key, item)) >= 0) return true;
    return false;
}

}  // namespace

// ---- name -----------------------------------------------------------------------------------------

template <class Visit>
void CNameFilter::describe(Visit && visit)
{
    visit("inUse", &CNameFilter::inUse);
    visit("names", &CNameFilter::names);
    visit("includeMatches", &CNameFilter::includeMatches);
    visit("matchCase", &CNameFilter::matchCase);
    visit("matchWholeWordOnly", &CNameFilter::matchWholeWordOnly);
}

bool CNameFilter::includeTask(CTask const & task) const
{
    if (!inUse.getValue() || !task.isValid()) return false;
    for (CProjectString const & name : names)
        if (isStringMatch(name, task.getName(), matchCase.getValue(), matchWholeWordOnly.getValue()))
            return includeMatches.getValue();
    return !includeMatches.getValue();
}

// ---- date range -----------------------------------------------------------------------------------

template <class Visit>
void CDateRangeFilter::describe(Visit && visit)
{
    visit("inUse", &CDateRangeFilter::inUse);
    visit("start", &CDateRangeFilter::start);
    visit("end", &CDateRangeFilter::end);
    visit("includeOverlaps", &CDateRangeFilter::includeOverlaps);
}

bool CDateRangeFilter::includeTask(CTask const & task) const
{
    if (!inUse.getValue() || !task.isValid()) return false;
    CProjectDate const first = task.getStartTime().getDate();
    CProjectDate const last = task.getEndTime().getDate();
    return includeOverlaps.getValue() ? first <= end && last >= start : first >= start && last <= end;
}

// ---- status ---------------------------------------------------------------------------------------

template <class Visit>
void CStatusFilter::describe(Visit && visit)
{
    visit("inUse", &CStatusFilter::inUse);
    visit("holdIncluded", &CStatusFilter::holdIncluded);
    visit("approvedIncluded", &CStatusFilter::approvedIncluded);
    visit("readyIncluded", &CStatusFilter::readyIncluded);
    visit("goIncluded", &CStatusFilter::goIncluded);
    visit("tbaIncluded", &CStatusFilter::tbaIncluded);
    visit("startedIncluded", &CStatusFilter::startedIncluded);
    visit("finishedIncluded", &CStatusFilter::finishedIncluded);
}

bool CStatusFilter::includeTask(CTask const & task) const
{
    if (!inUse.getValue() || !task.isValid() || task.isSummaryTask()) return false;
    // Not by the number that the status stores: a status that was never given stores that of Hold.
    using Choice = std::pair<CTaskStatus::Number, CProjectBool CStatusFilter::*>;
    static constexpr Choice choices[] = {
        {CTaskStatus::Hold, &CStatusFilter::holdIncluded},
        {CTaskStatus::Approved, &CStatusFilter::approvedIncluded},
        {CTaskStatus::Ready, &CStatusFilter::readyIncluded},
        {CTaskStatus::Go, &CStatusFilter::goIncluded},
        {CTaskStatus::TBA, &CStatusFilter::tbaIncluded},
        {CTaskStatus::Started, &CStatusFilter::startedIncluded},
        {CTaskStatus::Finished, &CStatusFilter::finishedIncluded},
    };
    for (auto const & [status, included] : choices)
        if (task.getStatus() == status) return (this->*included).getValue();
    return false;
}

// ---- resources and risks --------------------------------------------------------------------------

template <class Visit>
void CResourcesFilter::describe(Visit && visit)
{
    visit("inUse", &CResourcesFilter::inUse);
    visit("resourcesIncluded", &CResourcesFilter::resourcesIncluded);
}

void CResourcesFilter::removeResource(CResourceID const & id)
{
    removeChosen(resourcesIncluded, id);
}

bool CResourcesFilter::includeTask(CTask const & task) const
{
    return isOneChosen(task.getAssignedResources(), &CAssignedResource::getResourceID, resourcesIncluded);
}

template <class Visit>
void CRiskFilter::describe(Visit && visit)
{
    visit("inUse", &CRiskFilter::inUse);
    visit("riskIncluded", &CRiskFilter::riskIncluded);
}

void CRiskFilter::removeRisk(CRiskID const & id)
{
    removeChosen(riskIncluded, id);
}

bool CRiskFilter::includeTask(CTask const & task) const
{
    return isOneChosen(task.getAssignedRisks(), &CAssignedRisk::getRiskID, riskIncluded);
}

// ---- company --------------------------------------------------------------------------------------

template <class Visit>
void CCompanyFilter::describe(Visit && visit)
{
    visit("inUse", &CCompanyFilter::inUse);
    visit("companyIncluded", &CCompanyFilter::companyIncluded);
    visit("mode", &CCompanyFilter::mode);
}

void CCompanyFilter::removeCompany(CCompanyID const & id)
{
    removeChosen(companyIncluded, id);
}

bool CCompanyFilter::includeTask(CTask const & task) const
{
    if (!inUse.getValue()) return false;
    switch (mode.getEquivalentValue())
    {
        case CCompanyFilterMode::Supplier: return isTasksSupplierChosen(task);
        case CCompanyFilterMode::Customer: return isTasksCustomerChosen(task);
        case CCompanyFilterMode::SupplierOrCustomer: return isTasksSupplierChosen(task) || isTasksCustomerChosen(task);
        case CCompanyFilterMode::ResourceOwner: return isTasksAssignedResourcesSupplierChosen(task);
        default: return false;
    }
}

bool CCompanyFilter::isTasksSupplierChosen(CTask const & task) const
{
    CCompanyID const & supplier = task.getSupplyChain().getSupplierID();
    return !supplier.isNULL() && companyIncluded.findByID(supplier) >= 0;
}

bool CCompanyFilter::isTasksCustomerChosen(CTask const & task) const
{
    return isOneChosen(task.getSupplyChain().getCustomerID(), std::identity{}, companyIncluded);
}

bool CCompanyFilter::isTasksAssignedResourcesSupplierChosen(CTask const & task) const
{
    if (!project) return false;
    for (CAssignedResource const & assigned : task.getAssignedResources())
    {
        CCompany const * const owner = project->getParentCompany(assigned.getResourceID());
        if (owner && companyIncluded.findByID(owner->getID()) >= 0) return true;
    }
    return false;
}

template class orvane::CRecord<CNameFilter>;
template class orvane::CRecord<CDateRangeFilter>;
template class orvane::CRecord<CStatusFilter>;
template class orvane::CRecord<CResourcesFilter>;
template class orvane::CRecord<CRiskFilter>;
template class orvane::CRecord<CCompanyFilter>;

void CCompanyFilter::Serialize(CProjectArchive & archive)
{
    archive.exchange(inUse, companyIncluded);
    archive.exchangeSince(37, mode, CCompanyFilterMode(CCompanyFilterMode::ResourceOwner));
}

// ---- the document ---------------------------------------------------------------------------------

// Some tags are written with a blank behind their name.

void CNameFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("NameFilter")) return names.xmlSerialize(archive);
    archive.startEntity("NameFilter ");
    exchangeAttributes(archive);
    archive.out(">");
    names.xmlSerialize(archive, "Names");
    archive.endEntity("</NameFilter>");
    if (archive.isLoading()) archive.setTagProcessor(this);
}

void CDateRangeFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("DateRangeFilter")) return;
    exchangeElement(archive, "DateRangeFilter ");
}

void CStatusFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("StatusFilter")) return;
    exchangeElement(archive, "StatusFilter ", " />");
}

template <class Self>
void orvane::CSubFilter<Self>::exchangeList(CProjectXMLArchive & archive, char const * name)
{
    if (archive.readsAnother(name)) return this->exchangeChildren(archive);
    archive.startEntity(name);
    this->exchangeAttributes(archive);
    archive.out(">");
    this->exchangeChildren(archive);
    archive.endEntity("</" + CString(name) + ">");
    if (archive.isLoading()) archive.setTagProcessor(this);
}

void CResourcesFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeList(archive, "ResourcesFilter");
}

void CRiskFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeList(archive, "RiskFilter");
}

void CCompanyFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeList(archive, "CompanyFilter");
}
