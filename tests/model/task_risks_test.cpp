// What risks and reports make of a task's times, by hand.

#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

struct Risk
{
    CRiskStatus status;
    CRiskValueMode mode;
    double percent;
    CProjectDuration fixed;
};

Risk fixed(CRiskStatus const & status, CProjectDuration const & size)
{
    return {status, CRiskValueMode::Fixed, 0, size};
}

Risk percent(CRiskStatus const & status, double size)
{
    return {status, CRiskValueMode::Percent, size, 0_h};
}

// A task that has taken on some risks, each of its own kind.
struct Risky : Plan
{
    Risky(TaskDraft const & task, std::vector<Risk> const & risks, CRiskType const & type = CRiskType::Subtractive)
        : Plan({task})
    {
        CAssignedRiskArray assigned;
        for (Risk const & risk : risks)
        {
            CAssignedRisk each(CRiskID(), risk.mode);
            each.setStatus(risk.status);
            each.setValuePercent(risk.percent);
            each.setValueFixed(risk.fixed);
            assigned.Add(each);
        }
        CTask & written = writable(task.name);
        written.setRiskType(type);
        written.setAssignedRisks(assigned);
        tasks().setChanged();
    }
    CAssignedRisk const & risk(int index) const { return project.getTask(0)->getAssignedRisks().GetAt(index); }
    void report(int index, CTaskReportType const & type, CProjectDuration const & duration)
    {
        CTask & task = const_cast<CTask &>(*project.getTask(0));
        CTaskReport report;
        report.setRiskID(risk(index).getRiskID());
        report.setType(type);
        report.setDuration(duration);
        CTaskReportArray reports(task.getTaskReports());
        reports.Add(report);
        task.setTaskReports(reports);
        tasks().setChanged();
    }
};

constexpr auto unmitigated = CRiskStatus::Unmitigated;
constexpr auto mitigated = CRiskStatus::Mitigated;
constexpr auto buffered = CRiskStatus::Buffered;

// Days of eight hours from Monday 01-05 09:00. The ends: without risk, of unmitigated, buffered and mitigated risk.
TEST(TaskRisks, LadderOfEnds)
{
    struct Case
    {
        CRiskType type;
        std::vector<Risk> risks;
        CProjectTime ends[4];
    } const cases[] = {
        {CRiskType::Subtractive, {}, {"01-07 17:00"_t, "01-07 17:00"_t, "01-07 17:00"_t, "01-07 17:00"_t}},
        {CRiskType::Additive, {}, {"01-07 17:00"_t, "01-07 17:00"_t, "01-07 17:00"_t, "01-07 17:00"_t}},
        // 24 hours hold 4 buffered and 2 mitigated: 18 to the end of unmitigated risk, of which 3 are risk.
        {CRiskType::Subtractive,
         {fixed(unmitigated, 3_h), fixed(buffered, 4_h), fixed(mitigated, 2_h)},
         {"01-06 16:00"_t, "01-07 11:00"_t, "01-07 15:00"_t, "01-07 17:00"_t}},
        // 24 hours and 3 on top; then 4, then 2.
        {CRiskType::Additive,
         {fixed(unmitigated, 3_h), fixed(buffered, 4_h), fixed(mitigated, 2_h)},
         {"01-07 17:00"_t, "01-08 12:00"_t, "01-08 16:00"_t, "01-09 10:00"_t}},
        {CRiskType::Subtractive,
         {percent(buffered, 25), percent(unmitigated, 12.5)},
         {"01-06 16:00"_t, "01-07 11:00"_t, "01-07 17:00"_t, "01-07 17:00"_t}},
    };
    for (Case const & each : cases)
    {
        Risky plan(aTask("t").lasting(3_d), each.risks, each.type);
        CTask const & task = plan["t"];
        EXPECT_EQ(task.getEndExcludingRisk(), each.ends[0]);
        EXPECT_EQ(task.getEndOfUnmitigatedRisk(), each.ends[1]);
        EXPECT_EQ(task.getEndOfStoredRisk(), each.ends[1]);
        EXPECT_EQ(task.getEndOfBufferedRisk(), each.ends[2]);
        EXPECT_EQ(task.getEndOfMitigatedRisk(), each.ends[3]);
        // The project's end leaves room for all risk.
        plan.writable("t").setEndOfUnmitigatedRisk(each.ends[1]);
        EXPECT_EQ(task.getDuration(), 3_d);
    }
}

TEST(TaskRisks, StartedTaskReckonsWithItsReports)
{
    for (auto const & [type, ends] : {std::pair{CRiskType(CRiskType::Subtractive), std::array{"01-06 13:00"_t, "01-06 13:00"_t, "01-06 12:00"_t}},
                                      std::pair{CRiskType(CRiskType::Additive), std::array{"01-07 13:00"_t, "01-07 13:00"_t, "01-07 12:00"_t}}})
    {
        // 16 hours: subtractive 16 - 8 in all + 4 unmitigated; additive 16 + 4.
        Risky plan(aTask("t").lasting(2_d).started("01-05 09:00"_t), {fixed(unmitigated, 4_h), fixed(mitigated, 4_h)}, type);
        EXPECT_EQ(plan["t"].getEstimatedFinishTime(), ends[0]);
        // A delay takes its time from the risk that it came from.
        plan.report(0, CTaskReportType::Delay, 3_h);
        EXPECT_EQ(plan["t"].getEstimatedFinishTime(), ends[1]);
        EXPECT_EQ(plan.risk(0).getReportModifiedValueFixed(plan["t"]), 1_h);
        // An advance uses it up too, and brings the end forward by the rest of the risk and more.
        plan.report(0, CTaskReportType::Advance, 0_h);
        plan.report(0, CTaskReportType::Delay, 0_h);
        EXPECT_EQ(plan["t"].getEstimatedFinishTime(), ends[1]);
        plan.report(1, CTaskReportType::Advance, 1_h);
        EXPECT_EQ(plan["t"].getEstimatedFinishTime(), ends[2]);
        plan.report(0, CTaskReportType::Delay, 9_h);
        EXPECT_EQ(plan.risk(0).getReportModifiedValueFixed(plan["t"]), 0_h);
        EXPECT_EQ(plan.risk(0).getReportModifiedValuePercent(plan["t"]), 0.0);
    }
}

TEST(TaskRisks, ChangeOfTypeKeepsEveryLength)
{
    for (double size : {10.0, 33.3333, 12.5, 0.7, 61.0})
    {
        Risky plan(aTask("t").lasting(5_d), {percent(unmitigated, size), fixed(buffered, 3_h)});
        CTask & task = plan.writable("t");
        CProjectDuration const before = task.getDuration();
        CProjectDuration const length = plan.risk(0).getValueFixed(task);
        EXPECT_TRUE(task.setRiskType(CRiskType::Additive));
        EXPECT_EQ(task.getDuration(), before - length - 3_h);
        EXPECT_EQ(plan.risk(0).getValueFixed(task), length);
        EXPECT_FALSE(task.setRiskType(CRiskType::Additive));
        EXPECT_TRUE(task.setRiskType(CRiskType::Subtractive));
        EXPECT_EQ(task.getDuration(), before);
        EXPECT_EQ(plan.risk(0).getValueFixed(task), length);
    }
    // A duration that is all risk leaves none to take a percentage of.
    Risky plan(aTask("t").lasting(1_d), {percent(unmitigated, 100)});
    EXPECT_TRUE(plan.writable("t").setRiskType(CRiskType::Additive));
    EXPECT_EQ(plan["t"].getDuration(), 0_h);
    EXPECT_TRUE(std::isinf(plan.risk(0).getValuePercent(plan["t"])));
    EXPECT_EQ(plan.risk(0).getValueFixed(plan["t"]), 0_h);
}

TEST(TaskRisks, LimitsOfDurationAndOfFurtherRisk)
{
    // A subtractive task holds its fixed risks and a minute.
    Risky held(aTask("t").lasting(2_d), {fixed(unmitigated, 3_h), percent(mitigated, 50)});
    held.writable("t").setDuration(1_h);
    EXPECT_EQ(held["t"].getDuration(), 3_h + 1_m);
    // Risks of a hundred percent and more count as 99.9.
    Risky full(aTask("t").lasting(2_d), {percent(mitigated, 150)});
    full.writable("t").setDurationToEndOfUnmitigatedRisk(1_h);
    EXPECT_NEAR(static_cast<double>(full["t"].getDuration().GetTotalSeconds()), 3600 / 0.001, 60);
    EXPECT_EQ(full["t"].getMaximumAvailableRiskPercent(), 0);
    EXPECT_EQ(full["t"].getMaximumAvailableRiskDuration(), 0_h);
    // An additive task keeps its duration when the target lies below its fixed risks.
    Risky added(aTask("t").lasting(2_d), {fixed(unmitigated, 5_h), percent(unmitigated, 25)}, CRiskType::Additive);
    added.writable("t").setDurationToEndOfUnmitigatedRisk(4_h);
    EXPECT_EQ(added["t"].getDuration(), 2_d);
    added.writable("t").setDurationToEndOfUnmitigatedRisk(15_h);
    EXPECT_EQ(added["t"].getDuration(), 8_h);
    EXPECT_EQ(added["t"].getMaximumAvailableRiskPercent(), 999 - 62 - 1 - 25);
    EXPECT_EQ(added["t"].getMaximumAvailableRiskDuration(), CProjectDuration(999 * 8 * 3600L) - 7_h);
    // A fixed risk on no planned duration is all of it.
    Risky none(aTask("t").keyDate(), {fixed(unmitigated, 1_h)});
    none.writable("t").setDuration(0_h);
    EXPECT_EQ(none.risk(0).getValuePercent(none["t"]), 100.0);
}

TEST(TaskRisks, CostsOfRisksAndReports)
{
    Risky plan(aTask("t").lasting(5_d), {fixed(unmitigated, 9_h), fixed(mitigated, 80_m)});
    int each = 0;
    CAssignedRiskArray risks(plan["t"].getAssignedRisks());
    for (auto const type : {CCostType::Fixed, CCostType::Hourly, CCostType::Daily, CCostType::Weekly})
    {
        CCost cost;
        cost.setType(type);
        cost.setAmount(10.0);
        for (each = 0; each < risks.GetSize(); ++each) risks.ElementAt(each).addCost(cost);
    }
    plan.writable("t").setAssignedRisks(risks);
    // 9 hours are 9 and 2 days begun, 80 minutes are 1 and 1; a week costs nothing here.
    EXPECT_EQ(plan["t"].getUnmitigatedRiskCostsTotal(CCostTotalType::Budgeted), 10 + 90 + 20);
    EXPECT_EQ(plan["t"].getMitigatedRiskCostsTotal(CCostTotalType::Budgeted), 10 + 10 + 10);
    EXPECT_EQ(plan["t"].getSumTotal(CCostTotalType::Budgeted), 120);
    EXPECT_TRUE(plan.project.doesAssignedRiskHaveCost(plan.risk(0).getID()));
    plan.writable("t").setStatus(CTaskStatus::Started);
    EXPECT_EQ(plan["t"].getSumTotal(CCostTotalType::Budgeted), 0);
    plan.report(1, CTaskReportType::Advance, 1_h);
    CTaskReportArray reports(plan["t"].getTaskReports());
    CCostArray costs(*risks.GetAt(0).getCosts());
    reports.ElementAt(0).setCosts(costs);
    EXPECT_TRUE(plan.project.areTaskReportCostsDifferent(plan["t"], reports.GetAt(0)));
    plan.writable("t").setTaskReports(reports);
    // Priced over the task: 40 hours, 5 days, and a week charged once; an advance saves it.
    EXPECT_EQ(plan["t"].getSumTotal(CCostTotalType::Budgeted), -(10 + 400 + 50 + 10));
}

// ---- the register -----------------------------------------------------------------------------------

TEST(Risks, PromptTellsWhatGoes)
{
    CRisk risk;
    risk.setDescription("100% rain");
    CRecordingHost desktop;
    desktop.answers = {answer::yes};
    EXPECT_TRUE(risk.removalPrompt(false));
    CRisk child;
    risk.addSubRisk(child, risk.getID());
    EXPECT_FALSE(risk.removalPrompt(true));
    risk.addSubRisk(CRisk(), child.getID());
    risk.removalPrompt(true);
    EXPECT_EQ(desktop.boxes[0].text, "Remove the risk \"100% rain\"?");
    EXPECT_EQ(desktop.boxes[1].text, "Remove the risk \"100% rain\" and its subcatagory?\nThis risk, or one of its "
                                     "subcatagories, is assigned to tasks.\nIf you continue, tasks will lose their risk assignment.");
    EXPECT_EQ(desktop.boxes[2].text.Left(49), "Remove the risk \"100% rain\" and its 2 subcatagori");
}

}  // namespace
