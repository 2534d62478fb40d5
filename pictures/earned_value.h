#pragma once

#include <optional>
#include <vector>

#include "pictures/chart_steps.h"

class CProject;

namespace orvane::pictures
{

// What a plan should have cost by now, what the work done is worth, and what it did cost, by the definitions of
// earned-value management (ANSI/EIA-748), in the money of the project's costs:
//
//     BCWS  budgeted cost of work scheduled   sum of budget x share of the work planned until then
//     BCWP  budgeted cost of work performed   sum of budget x share of the work done until then
//     ACWP  actual cost of work performed     sum of what the work done until then has cost
//
// A task's budget is what its baseline cost in all, from the start of the baseline to its end; without a baseline it is
// CTask::getSumTotal as budgeted, from the planned start to the planned end. The share done by the status time is the
// percent complete; it came evenly since the task began, or until it was finished. The cost is getSumTotal as it really
// comes, evenly from the actual start to the actual or the forecast finish. All of it goes by working time in the
// task's calendar; what takes no working time counts at once, after its moment. What a summary task costs by itself is
// an effort that goes on as long as its children take: it is planned, earned and spent alike.
//
// Blank tasks and all below them do not count. A cost that is no number counts as 0, and none as more than 1e15.
struct EarnedValue
{
    struct Figures
    {
        double scheduled = 0;
        double performed = 0;
        double actual = 0;

        // Negative when behind the schedule, or over the budget.
        double scheduleVariance() const { return performed - scheduled; }
        double costVariance() const { return performed - actual; }
        // Below 1 when behind or over; none before anything was scheduled or spent.
        std::optional<double> schedulePerformance() const { return ratio(performed, scheduled); }
        std::optional<double> costPerformance() const { return ratio(performed, actual); }

    private:
        static std::optional<double> ratio(double a, double b) { return b > 0 ? std::optional(a / b) : std::nullopt; }
    };

    TimeSteps steps;
    // At each point of the steps, from the first to the last: the scheduled costs at all, the others as far as the
    // status time.
    std::vector<double> scheduled;
    std::vector<double> performed;
    std::vector<double> actual;
    // When it was asked how far the work is; not valid when it was not.
    CProjectTime status;
    Figures atStatus;
    double budgetAtCompletion = 0;
    // Whether any task has a time to stand at.
    bool hasTimes = false;
};

// The figures as of the status time. The range decides the steps alone: what lies before it is contained.
EarnedValue earnedValueOf(CProject const & project, CProjectTime const & status, TimeRange const & range = {});

}  // namespace orvane::pictures
