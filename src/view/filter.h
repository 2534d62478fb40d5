#pragma once

#include "view/sub_filters.h"

// A named choice of the tasks that the views show, made of up to six questions. The project keeps its filters
// with its content; which one is selected belongs to the views.
class CFilter : public orvane::CRecord<CFilter>, public IProjectXMLTagProcessor
{
public:
    CFilterID const & getID() const { return id; }
    void setID(CFilterID const & value) { id = value; }
    CProjectString const & getName() const { return name; }
    void setName(CString const & text) { name = text; }
    // Whether a task must pass every sub-filter in use, or one.
    CFilterMode const & getFilterMode() const { return filterMode; }
    void setFilterMode(CFilterMode const & value) { filterMode = value; }

    CNameFilter const & getNameFilter() const { return nameFilter; }
    void setNameFilter(CNameFilter const & value) { nameFilter = value; }
    CDateRangeFilter const & getDateRangeFilter() const { return dateRangeFilter; }
    void setDateRangeFilter(CDateRangeFilter const & value) { dateRangeFilter = value; }
    CStatusFilter const & getStatusFilter() const { return statusFilter; }
    void setStatusFilter(CStatusFilter const & value) { statusFilter = value; }
    CResourcesFilter const & getResourcesFilter() const { return resourcesFilter; }
    void setResourcesFilter(CResourcesFilter const & value) { resourcesFilter = value; }
    CRiskFilter const & getRiskFilter() const { return riskFilter; }
    void setRiskFilter(CRiskFilter const & value) { riskFilter = value; }
    CCompanyFilter const & getCompanyFilter() const { return companyFilter; }
    void setCompanyFilter(CCompanyFilter const & value) { companyFilter = value; }
    // For the company filter, which looks up the owners of resources.
    void setProject(CProject * project) { companyFilter.setProject(project); }

    // Whether the filter by itself shows the task. A blank task is always shown, and every task while no
    // sub-filter is in use.
    bool includeTask(CTask const & task) const;
    // What is in force, in words, such as "Status Filter Applied".
    CString getDescription() const;

    // Take an object that goes out of the chosen ones; no change when it was not chosen.
    void forget(CCompanyID const & company) { companyFilter.removeCompany(company); }
    void forget(CResourceID const & resource) { resourcesFilter.removeResource(resource); }
    void forget(CRiskID const & risk) { riskFilter.removeRisk(risk); }

    // Reads its attributes from whatever element it is given, its questions from theirs.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CFilterID id;
    CProjectString name{"New Filter"};
    CFilterMode filterMode{CFilterMode::PassEvery};
    CNameFilter nameFilter;
    CDateRangeFilter dateRangeFilter;
    CStatusFilter statusFilter;
    CResourcesFilter resourcesFilter;
    CRiskFilter riskFilter;
    CCompanyFilter companyFilter;
};

extern template class orvane::CRecord<CFilter>;

class CFilterArray : public orvane::CIdentifiedArray<CFilterArray, CFilter>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
