#pragma once

#include "values/date_time.h"
#include "values/enumerations.h"
#include "values/identifier_arrays.h"
#include "values/record.h"
#include "values/string_array.h"

class CProject;
class CTask;

// The questions of which a CFilter is made. Each takes part only while it is in use, which at first none is.

namespace orvane
{

template <class Self>
class CSubFilter : public CRecord<Self>, public IProjectXMLTagProcessor
{
public:
    CProjectBool const & getInUse() const { return inUse; }
    void setInUse(CProjectBool const & value) { inUse = value; }

protected:
    CSubFilter() = default;
    CSubFilter(CSubFilter const &) = default;
    CSubFilter & operator=(CSubFilter const &) = default;
    ~CSubFilter() override = default;

    // An element of that name with the list of what is chosen.
    void exchangeList(CProjectXMLArchive & archive, char const * name);

    CProjectBool inUse{false};
};

}  // namespace orvane

// By the task's name: shows the tasks in whose name one of the texts is found, or those in which none is.
class CNameFilter : public orvane::CSubFilter<CNameFilter>
{
public:
    CProjectStringArray const & getNames() const { return names; }
    void setNames(CProjectStringArray const & value) { names = value; }
    // Whether tasks whose name matches are shown; else they are hidden, and all others shown.
    CProjectBool const & getIncludeMatches() const { return includeMatches; }
    void setIncludeMatches(CProjectBool const & value) { includeMatches = value; }
    // How a text is sought in a name; see isStringMatch.
    CProjectBool const & getMatchCase() const { return matchCase; }
    void setMatchCase(CProjectBool const & value) { matchCase = value; }
    CProjectBool const & getMatchWholeWordOnly() const { return matchWholeWordOnly; }
    void setMatchWholeWordOnly(CProjectBool const & value) { matchWholeWordOnly = value; }

    // False when not in use, and for a blank task.
    bool includeTask(CTask const & task) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CNameFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectStringArray names;
    CProjectBool includeMatches{true};
    CProjectBool matchCase{false};
    CProjectBool matchWholeWordOnly{false};
};

// By the days of the task's start and end. Both ends of the range belong to it; a new one is today.
class CDateRangeFilter : public orvane::CSubFilter<CDateRangeFilter>
{
public:
    CProjectDate const & getStart() const { return start; }
    void setStart(CProjectDate const & value) { start = value; }
    CProjectDate const & getEnd() const { return end; }
    void setEnd(CProjectDate const & value) { end = value; }
    // Whether a day in common is enough; else the task must lie wholly within the range.
    CProjectBool const & getIncludeOverlaps() const { return includeOverlaps; }
    void setIncludeOverlaps(CProjectBool const & value) { includeOverlaps = value; }

    // False when not in use, and for a blank task.
    bool includeTask(CTask const & task) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CDateRangeFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectDate start = CProjectDate::GetCurrentDate();
    CProjectDate end = CProjectDate::GetCurrentDate();
    CProjectBool includeOverlaps{true};
};

// By the task's status, each of which is shown or not.
class CStatusFilter : public orvane::CSubFilter<CStatusFilter>
{
public:
    CProjectBool const & getHoldIncluded() const { return holdIncluded; }
    void setHoldIncluded(CProjectBool const & value) { holdIncluded = value; }
    CProjectBool const & getApprovedIncluded() const { return approvedIncluded; }
    void setApprovedIncluded(CProjectBool const & value) { approvedIncluded = value; }
    CProjectBool const & getReadyIncluded() const { return readyIncluded; }
    void setReadyIncluded(CProjectBool const & value) { readyIncluded = value; }
    CProjectBool const & getGoIncluded() const { return goIncluded; }
    void setGoIncluded(CProjectBool const & value) { goIncluded = value; }
    CProjectBool const & getTbaIncluded() const { return tbaIncluded; }
    void setTbaIncluded(CProjectBool const & value) { tbaIncluded = value; }
    CProjectBool const & getStartedIncluded() const { return startedIncluded; }
    void setStartedIncluded(CProjectBool const & value) { startedIncluded = value; }
    CProjectBool const & getFinishedIncluded() const { return finishedIncluded; }
    void setFinishedIncluded(CProjectBool const & value) { finishedIncluded = value; }

    // False when not in use, and for a blank or a summary task, whose status means nothing.
    bool includeTask(CTask const & task) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CStatusFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectBool holdIncluded{true};
    CProjectBool approvedIncluded{true};
    CProjectBool readyIncluded{true};
    CProjectBool goIncluded{true};
    CProjectBool tbaIncluded{true};
    CProjectBool startedIncluded{true};
    CProjectBool finishedIncluded{true};
};

// By the resources that the task is assigned: shows it when one of them is chosen.
class CResourcesFilter : public orvane::CSubFilter<CResourcesFilter>
{
public:
    CResourceIDArray const & getResourcesIncluded() const { return resourcesIncluded; }
    void setResourcesIncluded(CResourceIDArray const & value) { resourcesIncluded = value; }
    // Takes the resource out of the chosen ones; no change when it is not among them.
    void removeResource(CResourceID const & id);

    // Whether in use or not.
    bool includeTask(CTask const & task) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CResourcesFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CResourceIDArray resourcesIncluded;
};

// By the risks that the task takes on: shows it when one of them is chosen.
class CRiskFilter : public orvane::CSubFilter<CRiskFilter>
{
public:
    CRiskIDArray const & getRiskIncluded() const { return riskIncluded; }
    void setRiskIncluded(CRiskIDArray const & value) { riskIncluded = value; }
    // Takes the risk out of the chosen ones; no change when it is not among them.
    void removeRisk(CRiskID const & id);

    // Whether in use or not.
    bool includeTask(CTask const & task) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CRiskFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    CRiskIDArray riskIncluded;
};

// By the companies that have to do with the task, in one of the ways of CCompanyFilterMode.
class CCompanyFilter : public orvane::CSubFilter<CCompanyFilter>
{
public:
    CCompanyIDArray const & getCompanyIncluded() const { return companyIncluded; }
    void setCompanyIncluded(CCompanyIDArray const & value) { companyIncluded = value; }
    CCompanyFilterMode const & getMode() const { return mode; }
    void setMode(CCompanyFilterMode const & value) { mode = value; }
    // Where the owners of resources are looked up; not owned. Without it no resource has an owner.
    void setProject(CProject * value) { project = value; }
    // Takes the company out of the chosen ones; no change when it is not among them.
    void removeCompany(CCompanyID const & id);

    // False when not in use.
    bool includeTask(CTask const & task) const;

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCompanyFilter>;
    template <class Visit>
    static void describe(Visit && visit);

    bool isTasksSupplierChosen(CTask const & task) const;
    bool isTasksCustomerChosen(CTask const & task) const;
    bool isTasksAssignedResourcesSupplierChosen(CTask const & task) const;

    CCompanyIDArray companyIncluded;
    CCompanyFilterMode mode{CCompanyFilterMode::Supplier};
    CProject * project = nullptr;
};

extern template class orvane::CRecord<CNameFilter>;
extern template class orvane::CRecord<CDateRangeFilter>;
extern template class orvane::CRecord<CStatusFilter>;
extern template class orvane::CRecord<CResourcesFilter>;
extern template class orvane::CRecord<CRiskFilter>;
extern template class orvane::CRecord<CCompanyFilter>;
