#include "pictures/earned_value.h"

#include <cmath>
#include <unordered_map>

#include "model/project.h"
#include "schedule/calendar.h"

namespace orvane::pictures
{
namespace
{

double bounded(double cost)
{
    constexpr double most = 1e15;
    return std::isnan(cost) ? 0 : std::clamp(cost, -most, most);
}

// A moment in a pause counts as the end of the pause: working time is told between moments of work.
CProjectTime settled(CCalendar const & calendar, std::int64_t minute)
{
    CProjectTime const time = CProjectTime::fromLocalMinutes(minute);
    CProjectTime const next = calendar.getNextValidStartTime(time);
    return next.isValid() ? next : time;
}

// Minutes of work; a duration holds no more than 68 years of them.
double workBetween(CCalendar const & calendar, std::int64_t from, std::int64_t to)
{
    constexpr std::int64_t most = 60LL * 365 * TimeSteps::day;
    if (to - from > most) return workBetween(calendar, from, from + most) + workBetween(calendar, from + most, to);
    if (to <= from) return 0;
    CProjectDuration const work = calendar.subtractTimeFromTime(settled(calendar, from), settled(calendar, to));
    return static_cast<double>(work.GetTotalMinutes());
}

// ---- sums of costs over time ------------------------------------------------------------------------

// Costs that each come evenly over a time of work.
class Accrual
{
public:
    void add(CCalendar const & calendar, CProjectTime const & from, CProjectTime const & to, double amount)
    {
        if (!from.isValid()) return;
        std::int64_t const start = from.getLocalMinutes();
        std::int64_t const end = to.isValid() ? std::max(to.getLocalMinutes(), start) : start;
        Cost const cost{&calendar, start, end, workBetween(calendar, start, end), bounded(amount)};
        begin = costs.empty() ? start : std::min(begin, start);
        finish = costs.empty() ? end : std::max(finish, end);
        costs.push_back(cost);
    }

    bool empty() const { return costs.empty(); }
    // Of all costs that were added.
    std::int64_t first() const { return begin; }
    std::int64_t last() const { return finish; }

    double all() const
    {
        double sum = 0;
        for (Cost const & cost : costs) sum += cost.amount;
        return sum;
    }
    double until(std::int64_t minute) const
    {
        double sum = 0;
        for (Cost const & cost : costs) sum += cost.until(minute);
        return sum;
    }

    // At each point of the steps. Each cost is looked at once; the steps that lie wholly within it are left to the
    // sum of all costs by its calendar.
    std::vector<double> at(TimeSteps const & steps) const
    {
        std::vector<double> totals(steps.count + 1);
        std::unordered_map<CCalendar const *, std::size_t> groupOf;
        std::vector<std::vector<Cost const *>> groups;
        for (Cost const & cost : costs)
        {
            auto const group = groupOf.emplace(cost.calendar, groups.size()).first;
            if (group->second == groups.size()) groups.emplace_back();
            groups[group->second].push_back(&cost);
        }
        for (auto const & group : groups) addGroup(group, steps, totals);
        for (std::size_t each = 1; each < totals.size(); ++each) totals[each] += totals[each - 1];
        return totals;
    }

private:
    struct Cost
    {
        CCalendar const * calendar;
        std::int64_t start, end;
        double work;
        double amount;

        double during(std::int64_t from, std::int64_t to) const
        {
            if (work > 0) return amount * (workBetween(*calendar, std::max(from, start), std::min(to, end)) / work);
            return start >= from && start < to ? amount : 0;
        }
        double until(std::int64_t minute) const
        {
            return minute >= end && end > start ? amount : during(start, minute);
        }
    };
    // By how much the money spent in a minute of work, and the number of costs, change with a step.
    struct Change
    {
        double rate = 0;
        int costs = 0;
    };

    // Adds to each point what came since the point before.
    static void addGroup(std::vector<Cost const *> const & group, TimeSteps const & steps, std::vector<double> & totals)
    {
        std::vector<Change> changes(steps.count + 1);
        for (Cost const * const cost : group)
        {
            totals.front() += cost->until(steps.first);
            std::int64_t const from = std::max(cost->start, steps.first), to = std::min(cost->end, steps.last());
            if (from >= steps.last() || to < from) continue;
            std::size_t const begun = steps.stepOf(from), ended = steps.stepOf(std::max(to - 1, from));
            totals[begun + 1] += cost->during(from, steps.point(begun + 1));
            if (ended == begun || !(cost->work > 0)) continue;
            totals[ended + 1] += cost->during(steps.point(ended), to);
            changes[begun + 1].rate += cost->amount / cost->work;
            changes[begun + 1].costs += 1;
            changes[ended].rate -= cost->amount / cost->work;
            changes[ended].costs -= 1;
        }
        Change present;
        for (std::size_t step = 0; step < steps.count; ++step)
        {
            present.rate += changes[step].rate;
            present.costs += changes[step].costs;
            // What rounding leaves behind must not add up.
            if (present.costs == 0) present.rate = 0;
            else
                totals[step + 1] +=
                    present.rate * workBetween(*group.front()->calendar, steps.point(step), steps.point(step + 1));
        }
    }

    std::vector<Cost> costs;
    std::int64_t begin = 0, finish = 0;
};

// ---- the costs of tasks -----------------------------------------------------------------------------

class Ledger
{
public:
    explicit Ledger(CProjectTime const & status) : status(status) {}

    void addAll(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            if (task.isSummaryTask()) addSummary(task);
            else addLeaf(task);
            if (task.isSummaryTask()) addAll(*task.getSubTasks());
        }
    }

    Accrual scheduled, performed, actual;

private:
    static double budgetOf(CTask const & task)
    {
        return task.isBaselineSet() ? task.getBaselineTotalCost() : task.getSumTotal(CCostTotalType::Budgeted);
    }
    void schedule(CTask const & task, CProjectTime const & start, CProjectTime const & end)
    {
        bool const isBaseline = task.isBaselineSet() && task.getBaselineStart().isValid();
        scheduled.add(task.getCalendar(), isBaseline ? task.getBaselineStart() : start,
                      isBaseline ? task.getBaselineFinish() : end, budgetOf(task));
    }
    void addSummary(CTask const & task)
    {
        CProjectTime const start = task.getStartTime(), end = task.getEndTime();
        schedule(task, start, end);
        performed.add(task.getCalendar(), start, end, budgetOf(task));
        actual.add(task.getCalendar(), start, end, task.getSumTotal(CCostTotalType::Actual));
    }
    void addLeaf(CTask const & task)
    {
        schedule(task, task.getPlannedStartTime(), task.getPlannedEndTime());
        if (task.isOpen()) return;
        bool const isFinished = task.getStatus() == CTaskStatus::Finished;
        CProjectTime const & start = task.getActualStartTime();
        CProjectTime const end = isFinished ? task.getActualFinishTime() : task.getEstimatedFinishTime();
        actual.add(task.getCalendar(), start, end, task.getSumTotal(CCostTotalType::Actual));
        double const done = bounded(budgetOf(task)) * task.getPercentComplete(status) * 0.01;
        if (isFinished) performed.add(task.getCalendar(), start, end, done);
        else if (status.isValid() && status > start) performed.add(task.getCalendar(), start, status, done);
    }

    CProjectTime const & status;
};

TimeRange rangeOf(Ledger const & ledger, CProjectTime const & status, TimeRange const & asked)
{
    constexpr std::int64_t whenEmpty = 4 * TimeSteps::week;
    std::int64_t first = INT64_MAX, last = INT64_MIN;
    for (Accrual const * const each : {&ledger.scheduled, &ledger.performed, &ledger.actual})
        if (!each->empty()) first = std::min(first, each->first()), last = std::max(last, each->last());
    if (first > last) last = (first = status.isValid() ? status.getLocalMinutes() : 0) + whenEmpty;
    return {asked.from.isValid() ? asked.from : CProjectTime::fromLocalMinutes(first),
            asked.to.isValid() ? asked.to : CProjectTime::fromLocalMinutes(last)};
}

}  // namespace

EarnedValue earnedValueOf(CProject const & project, CProjectTime const & status, TimeRange const & asked)
{
    Ledger ledger(status);
    ledger.addAll(project.getAllTasks());
    TimeRange const range = rangeOf(ledger, status, asked);
    EarnedValue value;
    value.status = status;
    value.hasTimes = !ledger.scheduled.empty();
    value.budgetAtCompletion = ledger.scheduled.all();
    value.steps = TimeSteps::covering(range.from.getLocalMinutes(), range.to.getLocalMinutes(), TimeSteps::hour);
    value.scheduled = ledger.scheduled.at(value.steps);
    if (!status.isValid()) return value;
    std::int64_t const minute = status.getLocalMinutes();
    value.atStatus = {ledger.scheduled.until(minute), ledger.performed.until(minute), ledger.actual.until(minute)};
    std::size_t told = 0;
    while (told <= value.steps.count && value.steps.point(told) <= minute) ++told;
    for (auto const & [curve, costs] :
         {std::pair(&value.performed, &ledger.performed), {&value.actual, &ledger.actual}})
    {
        *curve = costs->at(value.steps);
        curve->resize(told);
    }
    return value;
}

}  // namespace orvane::pictures
