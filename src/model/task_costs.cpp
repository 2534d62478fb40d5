// What a task costs, and how that compares with its baseline.

#include "model/task.h"

#include <optional>
#include <vector>

#include "model/project.h"
#include "model/task_array.h"
#include "schedule/calendar.h"
#include "values/saturate.h"

namespace
{

// Prices costs over one period of work, which counts in whole hours and days.
class Pricing
{
public:
    Pricing(CProjectDuration const & period, CCalendar const & calendar) : period(period), calendar(calendar) {}

    // Whether the type is one of those charged by the length of the period.
    static bool isByTime(CCostType const & type) { return type == CCostType::Hourly || type == CCostType::Daily; }

    double price(CCost const & cost)
    {
        double const amount = cost.getAmount().getValue();
        if (!isByTime(cost.getType())) return amount;
        return amount * static_cast<double>(cost.getType() == CCostType::Hourly ? hours() : days());
    }

private:
    // To the nearest hour, halves up.
    long hours()
    {
        constexpr double hoursPerMinute = 0.016666666666666666;
        if (!wholeHours)
            wholeHours = orvane::saturate<std::int32_t>(static_cast<double>(period.GetTotalMinutes()) * hoursPerMinute + 0.5);
        return *wholeHours;
    }
    // Working days of the calendar's normal day; a day begun counts.
    long days()
    {
        if (!wholeDays)
        {
            bool const begun = period.GetMinutes(calendar) != 0 || period.GetHours(calendar) != 0;
            wholeDays = period.GetDays(calendar) + begun;
        }
        return *wholeDays;
    }

    CProjectDuration const period;
    CCalendar const & calendar;
    std::optional<long> wholeHours;
    std::optional<long> wholeDays;
};

double sumOf(CCostArray const & costs, Pricing & pricing)
{
    double sum = 0.0;
    for (CCost const & cost : costs) sum += pricing.price(cost);
    return sum;
}

// An hourly cost is charged by the share of the resource that is assigned, any other in full.
double assignedPrice(CAssignedResource const & assigned, CCost const & cost, Pricing & pricing)
{
    double const price = pricing.price(cost);
    return cost.getType() == CCostType::Hourly ? price * assigned.getPercentageAssigned() * 0.01 : price;
}

double assignedSum(CAssignedResource const & assigned, CCostArray const & costs, Pricing & pricing)
{
    double sum = 0.0;
    for (CCost const & cost : costs) sum += assignedPrice(assigned, cost, pricing);
    return sum;
}

Pricing pricingOf(CTask const & task, CCostTotalType const & totalType, CProjectDuration const & planned)
{
    CCalendar const & calendar = task.getCalendar();
    if (!(totalType == CCostTotalType::Actual) || task.isOpen()) return {planned, calendar};
    bool const started = task.getStatus() == CTaskStatus::Started;
    CProjectTime const end = started ? task.getEstimatedFinishTime() : task.getActualFinishTime();
    return {calendar.subtractTimeFromTime(task.getActualStartTime(), end), calendar};
}

using Kind = std::size_t;
constexpr Kind equipment = orvane::CResourceIndex::kindOf<CEquipmentResource>();
constexpr Kind human = orvane::CResourceIndex::kindOf<CHumanResource>();
constexpr Kind location = orvane::CResourceIndex::kindOf<CLocationResource>();
constexpr Kind material = orvane::CResourceIndex::kindOf<CMaterialResource>();

// What a task's assignments refer to, looked up once.
class Assignments
{
public:
    Assignments(CTask const & task, CProject const * project)
    {
        if (!project) return;
        found.reserve(static_cast<std::size_t>(task.getAssignedResources().GetSize()));
        for (CAssignedResource const & assigned : task.getAssignedResources())
            if (auto const * holders = project->findResources(assigned.getResourceID())) found.emplace_back(&assigned, holders);
    }

    // Calls `visit` with each assignment of a resource of the kind that has costs, and the resource.
    template <class Visit>
    void forEachWithCosts(Kind kind, Visit const & visit) const
    {
        for (auto const & [assigned, holders] : found)
        {
            CResourceBase const * const resource = holders->places[kind].resource;
            if (resource && resource->getCosts()) visit(*assigned, *resource);
        }
    }
    double total(Kind kind, Pricing & pricing) const
    {
        double sum = 0.0;
        forEachWithCosts(kind, [&](CAssignedResource const & assigned, CResourceBase const & resource) {
            // A parent's own costs count for nothing, unless it is a material.
            if (kind != material && resource.countSubResources() > 0) return;
            sum += assignedSum(assigned, *resource.getCosts(), pricing);
        });
        return sum;
    }

private:
    std::vector<std::pair<CAssignedResource const *, orvane::CResourceIndex::Holders const *>> found;
};

// What a total of one task comes to over the subtree.
template <double (CTask::*own)(CCostTotalType const &) const>
double overTree(CTask const & task, CCostTotalType const & totalType, bool leavesOnly = false)
{
    double sum = leavesOnly && task.isSummaryTask() ? 0.0 : (task.*own)(totalType);
    if (task.getSubTasks())
        for (CTask const & child : *task.getSubTasks()) sum += overTree<own>(child, totalType, leavesOnly);
    return sum;
}

}  // namespace

// ---- the task's own costs -------------------------------------------------------------------------

void CTask::setCosts(CCostArray const & costs)
{
    bool const drops = fields.costs && costs.IsEmpty();
    touched |= stretchOf(fields.costs);
    fields.costs.assign(costs);
    if (drops) flagByID();
}

void CTask::addCost(CCost & cost, int index)
{
    if (isSummaryTask()) return;
    touched |= stretchOf(fields.costs);
    CCostArray & costs = fields.costs.make();
    if (index < 0) costs.Add(cost);
    else costs.InsertAt(std::min(index, costs.GetSize()), cost);
}

// ---- pricing --------------------------------------------------------------------------------------

double CTask::applyCost(CCost const & cost, CCostTotalType const & totalType) const
{
    return pricingOf(*this, totalType, fields.duration).price(cost);
}

double CTask::applyCosts(CCostArray const & costs, CCostTotalType const & totalType) const
{
    Pricing pricing = pricingOf(*this, totalType, fields.duration);
    return sumOf(costs, pricing);
}

double CTask::applyCost(CAssignedResource const & assigned, CCost const & cost, CCostTotalType const & totalType) const
{
    Pricing pricing = pricingOf(*this, totalType, fields.duration);
    return assignedPrice(assigned, cost, pricing);
}

double CTask::applyCosts(CAssignedResource const & assigned, CCostArray const & costs, CCostTotalType const & totalType) const
{
    Pricing pricing = pricingOf(*this, totalType, fields.duration);
    return assignedSum(assigned, costs, pricing);
}

double CTask::applyRiskCosts(CAssignedRisk const & assigned, CCostTotalType const &) const
{
    if (!assigned.getCosts()) return 0.0;
    Pricing pricing(assigned.getReportModifiedValueFixed(*this), getCalendar());
    double sum = 0.0;
    for (CCost const & cost : *assigned.getCosts())
        if (cost.getType() == CCostType::Fixed || Pricing::isByTime(cost.getType())) sum += pricing.price(cost);
    return sum;
}

// ---- totals of this task --------------------------------------------------------------------------

double CTask::getTaskCostsTotal(CCostTotalType const & totalType) const
{
    return getCosts() ? applyCosts(*getCosts(), totalType) : 0.0;
}

double CTask::getResourceCostsTotal(std::size_t kind, CCostTotalType const & totalType) const
{
    if (fields.assignedResources.IsEmpty()) return 0.0;
    Pricing pricing = pricingOf(*this, totalType, fields.duration);
    return Assignments(*this, project).total(kind, pricing);
}

double CTask::getEquipmentResourceCostsTotal(CCostTotalType const & totalType) const
{
    return getResourceCostsTotal(equipment, totalType);
}

double CTask::getHumanResourceCostsTotal(CCostTotalType const & totalType) const
{
    return getResourceCostsTotal(human, totalType);
}

double CTask::getLocationResourceCostsTotal(CCostTotalType const & totalType) const
{
    return getResourceCostsTotal(location, totalType);
}

double CTask::getMaterialResourceCostsTotal(CCostTotalType const & totalType) const
{
    return getResourceCostsTotal(material, totalType);
}

double CTask::getRiskCostsTotal(CRiskStatus const & status) const
{
    double sum = 0.0;
    for (CAssignedRisk const & assigned : fields.assignedRisks)
        if (assigned.getStatus() == status) sum += applyRiskCosts(assigned, CCostTotalType::Budgeted);
    return sum;
}

double CTask::getMitigatedRiskCostsTotal(CCostTotalType const &) const
{
    return getRiskCostsTotal(CRiskStatus::Mitigated);
}

double CTask::getUnmitigatedRiskCostsTotal(CCostTotalType const &) const
{
    return getRiskCostsTotal(CRiskStatus::Unmitigated);
}

double CTask::getTaskReportCostsTotal(CCostTotalType const & totalType) const
{
    CCostArray costs;
    return getTaskReportCosts(costs) ? applyCosts(costs, totalType) : 0.0;
}

double CTask::getSumTotal(CCostTotalType const & totalType) const
{
    Pricing pricing = pricingOf(*this, totalType, fields.duration);
    double sum = getCosts() ? sumOf(*getCosts(), pricing) : 0.0;
    if (!fields.assignedResources.IsEmpty())
    {
        Assignments const assignments(*this, project);
        for (Kind const kind : {material, location, human, equipment}) sum += assignments.total(kind, pricing);
    }
    sum += getTaskReportCostsTotal(totalType);
    return isOpen() ? sum + getUnmitigatedRiskCostsTotal(totalType) : sum;
}

// ---- totals of the subtree ------------------------------------------------------------------------

double CTask::getTreeCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getSumTotal>(*this, totalType);
}

double CTask::getTreeDirectTaskCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getTaskCostsTotal>(*this, totalType);
}

double CTask::getTreeMitigatedRiskCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getMitigatedRiskCostsTotal>(*this, totalType);
}

double CTask::getTreeUnmitigatedRiskCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getUnmitigatedRiskCostsTotal>(*this, totalType);
}

double CTask::getTreeTaskReportCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getTaskReportCostsTotal>(*this, totalType);
}

// What a summary task is assigned itself counts for nothing from here on.
double CTask::getTreeEquipmentResourceCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getEquipmentResourceCostsTotal>(*this, totalType, true);
}

double CTask::getTreeHumanResourceCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getHumanResourceCostsTotal>(*this, totalType, true);
}

double CTask::getTreeLocationResourceCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getLocationResourceCostsTotal>(*this, totalType, true);
}

double CTask::getTreeMaterialResourceCosts(CCostTotalType const & totalType) const
{
    return overTree<&CTask::getMaterialResourceCostsTotal>(*this, totalType, true);
}

// ---- lists of costs -------------------------------------------------------------------------------

bool CTask::getResourceCosts(std::size_t kind, CCostArray & costs) const
{
    int const before = costs.GetSize();
    Assignments(*this, project).forEachWithCosts(kind, [&](CAssignedResource const &, CResourceBase const & resource) {
        costs.Append(*resource.getCosts());
    });
    return costs.GetSize() > before;
}

bool CTask::getEquipmentResourceCosts(CCostArray & costs) const
{
    return getResourceCosts(equipment, costs);
}

bool CTask::getHumanResourceCosts(CCostArray & costs) const
{
    return getResourceCosts(human, costs);
}

bool CTask::getLocationResourceCosts(CCostArray & costs) const
{
    return getResourceCosts(location, costs);
}

bool CTask::getMaterialResourceCosts(CCostArray & costs) const
{
    return getResourceCosts(material, costs);
}

bool CTask::getRiskCosts(CRiskStatus const & status, CCostArray & costs) const
{
    int const before = costs.GetSize();
    for (CAssignedRisk const & assigned : fields.assignedRisks)
        if (assigned.getStatus() == status && assigned.getCosts()) costs.Append(*assigned.getCosts());
    return costs.GetSize() > before;
}

bool CTask::getMitigatedRiskCosts(CCostArray & costs) const
{
    return getRiskCosts(CRiskStatus::Mitigated, costs);
}

bool CTask::getUnmitigatedRiskCosts(CCostArray & costs) const
{
    return getRiskCosts(CRiskStatus::Unmitigated, costs);
}

bool CTask::getTaskReportCosts(CCostArray & costs) const
{
    int const before = costs.GetSize();
    for (CTaskReport const & report : fields.taskReports)
    {
        bool const saves = report.getType() == CTaskReportType::Advance;
        for (CCost cost : report.getCosts())
        {
            if (saves) cost.setAmount(0.0 - cost.getAmount().getValue());
            costs.Add(cost);
        }
    }
    return costs.GetSize() > before;
}

// ---- the baseline ---------------------------------------------------------------------------------

void CTask::setBaseline()
{
    write(fields.baselineSet, CProjectBool(true));
    touched |= stretchOf(fields.baselineData);
    fields.baselineData.storeBaselineData(*this);
}

double CTask::getTotalCostVariance() const
{
    return isBaselineSet() ? getBaselineTotalCost() - getSumTotal(CCostTotalType::Budgeted) : 0.0;
}

double CTask::getTotalCostVarianceAsPercentage() const
{
    double const baseline = isBaselineSet() ? getBaselineTotalCost() : 0.0;
    return baseline == 0.0 ? 0.0 : getTotalCostVariance() * 100.0 / baseline;
}

namespace
{

// Elapsed time; not valid unless both ends are.
CProjectDuration elapsed(CProjectTime const & start, CProjectTime const & finish)
{
    return start.isValid() && finish.isValid() ? finish - start : CProjectDuration();
}

}  // namespace

CProjectDuration CTask::getScheduleVariance() const
{
    if (!isBaselineSet()) return CProjectDuration();
    CProjectDuration const planned = elapsed(getBaselineStart(), getBaselineFinish());
    CProjectDuration const present = elapsed(getStartTime(), getEndTime());
    return planned.isValid() && present.isValid() ? planned - present : CProjectDuration();
}

double CTask::getScheduleVarianceAsPercentage() const
{
    if (!isBaselineSet()) return 0.0;
    CProjectDuration const planned = elapsed(getBaselineStart(), getBaselineFinish());
    if (!planned.isValid() || planned.GetTotalSeconds() == 0) return 0.0;
    return static_cast<double>(getScheduleVariance().GetTotalSeconds()) * 100.0 / static_cast<double>(planned.GetTotalSeconds());
}
