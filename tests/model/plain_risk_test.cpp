// Random tasks with risks, reports and costs, judged by the formulas in their plainest form: numbers of seconds, one
// loop for each question, nothing remembered.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

class Judge
{
public:
    explicit Judge(CTask const & task) : task(task), calendar(task.getCalendar()) {}

    static long minutes(double seconds) { return static_cast<long>(seconds) / 60 * 60; }
    bool subtractive() const { return task.getRiskType() == CRiskType::Subtractive; }
    // The size of a risk, before (0) or after (1) the reports.
    long size(CAssignedRisk const & risk, double percent, long fixed, bool afterReports) const
    {
        bool const isFixed = risk.getValueMode() == CRiskValueMode::Fixed;
        long left = isFixed ? fixed : minutes(static_cast<double>(task.getDuration().GetTotalSeconds()) * percent * 0.01);
        for (CTaskReport const & report : task.getTaskReports())
        {
            if (!afterReports || !(report.getRiskID() == risk.getRiskID())) continue;
            left = std::max(left - report.getDuration().GetTotalSeconds(), 0L);
        }
        return left;
    }
    CProjectTime after(CProjectTime const & time, long seconds) const
    {
        return calendar.addDurationToTime(time, CProjectDuration(seconds), true);
    }

    CTask const & task;
    CCalendar const & calendar;
};

struct Drawn
{
    double percent;
    long fixed;
};

TEST(PlainRisk, RandomTasksAgreeWithTheFormulas)
{
    for (unsigned seed = 1; seed <= 1500; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        auto const below = [&](unsigned limit) { return static_cast<long>(random() % limit); };
        Plan plan({aTask("t")});
        CTask & task = plan.writable("t");
        task.setRiskType(below(2) ? CRiskType::Subtractive : CRiskType::Additive);
        task.setDuration(CProjectDuration(600 * below(300)));
        task.reschedulePlannedStartTime(CProjectTime(2004, 1, 5 + static_cast<int>(below(5)), 9 + static_cast<int>(below(7)), 0));
        std::vector<Drawn> drawn;
        CAssignedRiskArray risks;
        CTaskReportArray reports;
        for (long count = below(4); count > 0; --count)
        {
            drawn.push_back({static_cast<double>(below(400)) / 10, 600 * below(60)});
            CRiskStatus status;
            status = static_cast<int>(1 + below(3));
            CAssignedRisk risk(CRiskID(), below(2) ? CRiskValueMode::Fixed : CRiskValueMode::Percent);
            risk.setStatus(status);
            risk.setValuePercent(drawn.back().percent);
            risk.setValueFixed(CProjectDuration(drawn.back().fixed));
            risks.Add(risk);
            CTaskReport report;
            report.setRiskID(below(4) ? risk.getRiskID() : CRiskID());
            report.setType(below(2) ? CTaskReportType::Delay : CTaskReportType::Advance);
            report.setDuration(CProjectDuration(600 * below(30)));
            if (below(2)) reports.Add(report);
        }
        task.setAssignedRisks(risks);
        bool const started = below(3) == 0;
        if (started)
        {
            task.setActualStartTime(task.getPlannedStartTime());
            task.setPredictedFinishTime(task.getPlannedEndTime());
            task.setStatus(CTaskStatus::Started);
            task.setTaskReports(reports);
        }
        plan.tasks().setChanged();

        Judge const judge(task);
        long total = 0;
        long byStatus[4] = {};
        long left[4] = {};
        for (int each = 0; each < risks.GetSize(); ++each)
        {
            auto const & [percent, fixed] = drawn[static_cast<std::size_t>(each)];
            int const status = risks.GetAt(each).getStatus().getEquivalentValue();
            long const whole = judge.size(risks.GetAt(each), percent, fixed, false);
            total += whole;
            byStatus[status] += whole;
            left[status] += judge.size(risks.GetAt(each), percent, fixed, true);
        }
        long const duration = task.getDuration().GetTotalSeconds();
        EXPECT_EQ(task.getTotalRiskDuration().GetTotalSeconds(), total);
        EXPECT_EQ(task.getTotalReportModifiedRiskDuration().GetTotalSeconds(), left[1] + left[2] + left[3]);
        CProjectTime end = task.getActualStartTime();
        if (started)
        {
            end = judge.after(end, duration - (judge.subtractive() ? total : 0) + left[1]);
            for (CTaskReport const & report : reports)
                end = report.getType() == CTaskReportType::Delay
                          ? judge.calendar.addDurationToTime(end, report.getDuration(), true)
                          : judge.calendar.subtractDurationFromTime(end, report.getDuration(), true);
            ASSERT_EQ(task.getEstimatedFinishTime(), end);
        }
        else
        {
            long const length = judge.subtractive() ? duration - left[3] - left[2] : duration + left[1];
            ASSERT_EQ(task.getDurationToEndOfUnmitigatedRisk().GetTotalSeconds(), length);
            end = judge.after(task.getPlannedStartTime(), length);
            ASSERT_EQ(task.getEndOfUnmitigatedRisk(), end);
        }
        end = task.getEndOfUnmitigatedRisk();
        ASSERT_EQ(task.getEndExcludingRisk(), judge.calendar.subtractDurationFromTime(end, CProjectDuration(left[1]), true));
        ASSERT_EQ(task.getEndOfStoredRisk(), end);
        ASSERT_EQ(task.getEndOfBufferedRisk(), judge.after(end, left[3]));
        ASSERT_EQ(task.getEndOfMitigatedRisk(), judge.after(task.getEndOfBufferedRisk(), left[2]));
        for (int status = 1; status <= 3; ++status)
        {
            CRiskStatus which;
            which = status;
            ASSERT_EQ(task.getTotalRiskDurationByStatus(which).GetTotalSeconds(), byStatus[status]);
        }
        if (started || total >= duration) continue;
        // Solving for the duration leads back to where the task ended, but for what minutes cut off.
        task.setEndOfUnmitigatedRisk(end);
        ASSERT_NEAR(static_cast<double>(task.getDurationToEndOfUnmitigatedRisk().GetTotalSeconds()),
                    static_cast<double>(judge.calendar.subtractTimeFromTime(task.getPlannedStartTime(), end).GetTotalSeconds()), 240);
    }
}

}  // namespace
