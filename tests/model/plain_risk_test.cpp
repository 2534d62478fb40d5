// Random tasks with risks, reports and costs, judged by the formulas in their plainest form: numbers of seconds, one
// loop for each question, nothing remembered.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

struct Drawn
{
    double percent;
    long fixed;
};

// The size of a risk, before or after the reports.
long sizeOf(CTask const & task, CAssignedRisk const & risk, Drawn const & drawn, bool afterReports)
{
    double const part = static_cast<double>(task.getDuration().GetTotalSeconds()) * drawn.percent * 0.01;
    long left = risk.getValueMode() == CRiskValueMode::Fixed ? drawn.fixed : static_cast<long>(part) / 60 * 60;
    for (CTaskReport const & report : task.getTaskReports())
        if (afterReports && report.getRiskID() == risk.getRiskID())
            left = std::max(left - report.getDuration().GetTotalSeconds(), 0L);
    return left;
}

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
        task.reschedulePlannedStartTime("01-05 09:00"_t + CProjectDuration(3600 * (24 * below(5) + below(7))));
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

        CCalendar const & calendar = task.getCalendar();
        auto const after = [&](CProjectTime const & time, long seconds)
        { return calendar.addDurationToTime(time, CProjectDuration(seconds), true); };
        auto const before = [&](CProjectTime const & time, long seconds)
        { return calendar.subtractDurationFromTime(time, CProjectDuration(seconds), true); };
        bool const subtractive = task.getRiskType() == CRiskType::Subtractive;
        long total = 0, byStatus[4] = {}, left[4] = {};
        for (int each = 0; each < risks.GetSize(); ++each)
        {
            Drawn const & size = drawn[static_cast<std::size_t>(each)];
            int const status = risks.GetAt(each).getStatus().getEquivalentValue();
            byStatus[status] += sizeOf(task, risks.GetAt(each), size, false);
            total += sizeOf(task, risks.GetAt(each), size, false);
            left[status] += sizeOf(task, risks.GetAt(each), size, true);
        }
        long const duration = task.getDuration().GetTotalSeconds();
        EXPECT_EQ(task.getTotalRiskDuration().GetTotalSeconds(), total);
        EXPECT_EQ(task.getTotalReportModifiedRiskDuration().GetTotalSeconds(), left[1] + left[2] + left[3]);
        CProjectTime end = task.getActualStartTime();
        if (started)
        {
            end = after(end, duration - (subtractive ? total : 0) + left[1]);
            for (CTaskReport const & report : reports)
            {
                long const length = report.getDuration().GetTotalSeconds();
                end = report.getType() == CTaskReportType::Delay ? after(end, length) : before(end, length);
            }
            ASSERT_EQ(task.getEstimatedFinishTime(), end);
        }
        else
        {
            long const length = subtractive ? duration - left[3] - left[2] : duration + left[1];
            ASSERT_EQ(task.getDurationToEndOfUnmitigatedRisk().GetTotalSeconds(), length);
            end = after(task.getPlannedStartTime(), length);
            ASSERT_EQ(task.getEndOfUnmitigatedRisk(), end);
        }
        end = task.getEndOfUnmitigatedRisk();
        ASSERT_EQ(task.getEndExcludingRisk(), before(end, left[1]));
        ASSERT_EQ(task.getEndOfStoredRisk(), end);
        ASSERT_EQ(task.getEndOfBufferedRisk(), after(end, left[3]));
        ASSERT_EQ(task.getEndOfMitigatedRisk(), after(task.getEndOfBufferedRisk(), left[2]));
        for (int status = 1; status <= 3; ++status)
        {
            CRiskStatus which;
            which = status;
            ASSERT_EQ(task.getTotalRiskDurationByStatus(which).GetTotalSeconds(), byStatus[status]);
        }
        if (started || total >= duration) continue;
        // Solving for the duration leads back to where the task ended, but for what minutes cut off.
        task.setEndOfUnmitigatedRisk(end);
        CProjectDuration const length = calendar.subtractTimeFromTime(task.getPlannedStartTime(), end);
        ASSERT_NEAR(static_cast<double>(task.getDurationToEndOfUnmitigatedRisk().GetTotalSeconds()),
                    static_cast<double>(length.GetTotalSeconds()), 240);
    }
}

}  // namespace
