#include "app/dump/figures.h"

#include "app/json/records.h"

namespace orvane::app
{

// ---- costs ------------------------------------------------------------------------------------------

namespace
{

using CostTotal = double (CTask::*)(CCostTotalType const &) const;

// In the order of the kinds.
constexpr CostTotal taskTotals[] = {&CTask::getTaskCostsTotal,
                                    &CTask::getEquipmentResourceCostsTotal,
                                    &CTask::getHumanResourceCostsTotal,
                                    &CTask::getLocationResourceCostsTotal,
                                    &CTask::getMaterialResourceCostsTotal,
                                    &CTask::getMitigatedRiskCostsTotal,
                                    &CTask::getUnmitigatedRiskCostsTotal,
                                    &CTask::getTaskReportCostsTotal,
                                    &CTask::getSumTotal};
static_assert(std::size(taskTotals) == CostTotals::kinds.size());

bool isOfResources(std::size_t kind)
{
    constexpr std::size_t first = 1, last = 4;
    return first <= kind && kind <= last;
}

bool hasNoCosts(CTask const & task)
{
    return !task.getCosts() && task.getAssignedResources().IsEmpty() && task.getAssignedRisks().IsEmpty() &&
           task.getTaskReports().IsEmpty();
}

CostTotals ownCosts(CTask const & task)
{
    CostTotals totals;
    if (hasNoCosts(task)) return totals;
    for (std::size_t kind = 0; kind < totals.kinds.size(); ++kind)
    {
        // What a summary task is assigned itself counts for nothing by kind.
        if (isOfResources(kind) && task.isSummaryTask()) continue;
        CostTotal const total = taskTotals[kind];
        totals.budgeted[kind] = (task.*total)(CCostTotalType::Budgeted);
        totals.actual[kind] = (task.*total)(CCostTotalType::Actual);
    }
    return totals;
}

void appendKinds(std::string & text, std::array<double, CostTotals::kinds.size()> const & totals)
{
    ObjectText object(text);
    for (std::size_t kind = 0; kind < totals.size(); ++kind)
        if (totals[kind] != 0 || kind == CostTotals::total) object.add(CostTotals::kinds[kind], totals[kind]);
    object.end();
}

}  // namespace

CostTotals & CostTotals::operator+=(CostTotals const & other)
{
    for (std::size_t kind = 0; kind < kinds.size(); ++kind)
    {
        budgeted[kind] += other.budgeted[kind];
        actual[kind] += other.actual[kind];
    }
    return *this;
}

PlanCosts::PlanCosts(CProject const & project)
{
    for (CTask const & root : project.getAllTasks()) all += add(root);
}

CostTotals PlanCosts::add(CTask const & task)
{
    CostTotals totals = ownCosts(task);
    if (!task.getSubTasks()) return totals;
    for (CTask const & child : *task.getSubTasks()) totals += add(child);
    return summaries[&task] = totals;
}

CostTotals PlanCosts::of(CTask const & task) const
{
    auto const found = summaries.find(&task);
    return found == summaries.end() ? ownCosts(task) : found->second;
}

void appendCosts(std::string & text, CostTotals const & totals)
{
    ObjectText object(text);
    object.begin("budgeted");
    appendKinds(text, totals.budgeted);
    object.begin("actual");
    appendKinds(text, totals.actual);
    object.end();
}

// ---- the longest chain ------------------------------------------------------------------------------

CriticalChain::CriticalChain(CProject const & project) : duration(project.getCriticalPath().getDurationOfCriticalPath())
{
    CCriticalPathCachedData const & path = project.getCriticalPath();
    for (CLink const & link : path.getLinksInCriticalPath())
    {
        CTask const * const task = project.getTask(link.getUpstreamTaskID());
        if (!task) continue;
        tasks.push_back(task);
        links.push_back(&link);
    }
    if (CTask const * const end = path.getEndTaskInLongestChain()) tasks.push_back(end);
}

CriticalPathAsked::CriticalPathAsked()
    : store(settingsStore()), before(setSettingsStore(&store)), shown(CProjectConfig::getShowCriticalPath())
{
    CProjectConfig::setShowCriticalPath(true);
}

CriticalPathAsked::~CriticalPathAsked()
{
    CProjectConfig::setShowCriticalPath(shown);
    setSettingsStore(before);
}

}  // namespace orvane::app
