#include "view/filter.h"

#include "model/task.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CFilter::describe(Visit && visit)
{
    visit("ID", &CFilter::id);
    visit("name", &CFilter::name);
    visit("filterMode", &CFilter::filterMode);
    visit("nameFilter", &CFilter::nameFilter);
    visit("dateRangeFilter", &CFilter::dateRangeFilter);
    visit("statusFilter", &CFilter::statusFilter);
    visit("resourcesFilter", &CFilter::resourcesFilter);
    visit("riskFilter", &CFilter::riskFilter);
    visit("companyFilter", &CFilter::companyFilter);
}

template class orvane::CRecord<CFilter>;

bool CFilter::includeTask(CTask const & task) const
{
    if (!task.isValid()) return true;
    // The first sub-filter that answers so settles it.
    bool const settling = filterMode.getEquivalentValue() == CFilterMode::PassAny;
    bool someInUse = false;
    auto const settles = [&](auto const & part) {
        if (!part.getInUse().getValue()) return false;
        someInUse = true;
        return part.includeTask(task) == settling;
    };
    bool const settled = settles(nameFilter) || settles(dateRangeFilter) || settles(statusFilter) ||
                         settles(resourcesFilter) || settles(riskFilter) || settles(companyFilter);
    return settled ? settling : !someInUse || !settling;
}

CString CFilter::getDescription() const
{
    CString description = "No Filter Applied";
    int inUse = 0;
    auto const tell = [&](auto const & part, char const * label) {
        if (!part.getInUse().getValue()) return;
        description = ++inUse == 1 ? label : "Multiple Filters Applied";
    };
    tell(nameFilter, "Name Filter Applied");
    tell(dateRangeFilter, "Date Range Filter Applied");
    tell(statusFilter, "Status Filter Applied");
    tell(resourcesFilter, "Resources Filter Applied");
    tell(riskFilter, "Risk Filter Applied");
    tell(companyFilter, "Company Filter Applied");
    return description;
}

void CFilter::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("Filter ");
    exchangeAttributes(archive);
    archive.out(" >");
    exchangeChildren(archive);
    archive.endEntity("</Filter>");
}

void CFilterArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Filters", "Filter");
}
