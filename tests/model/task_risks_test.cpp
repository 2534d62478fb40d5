// What risks and reports make of a task's times, by hand.

#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

CAssignedRisk fixed(CRiskStatus const & status, CProjectDuration const & size)
{
    CAssignedRisk risk(CRiskID(), CRiskValueMode::Fixed);
    risk.setStatus(status);
    risk.setValueFixed(size);
    return risk;
}

CAssignedRisk percent(CRiskStatus const & status, double size)
{
    CAssignedRisk risk(CRiskID(), CRiskValueMode::Percent);
    risk.setStatus(status);
    risk.setValuePercent(size);
    return risk;
}

// A task that has taken on some risks, each of its own kind.
struct Risky : Plan
{
    Risky(TaskDraft const & draft, std::vector<CAssignedRisk> const & risks, CRiskType const & type) : Plan({draft})
    {
        CAssignedRiskArray assigned;
        for (CAssignedRisk const & risk : risks) assigned.Add(risk);
        task.setRiskType(type);
        task.setAssignedRisks(assigned);
        tasks().setChanged();
    }
    CAssignedRisk const & risk(int index) const { return task.getAssignedRisks().GetAt(index); }
    void report(int index, CTaskReportType const & type, CProjectDuration const & duration)
    {
        CTaskReportArray reports(task.getTaskReports());
        CTaskReport report;
        report.setRiskID(risk(index).getRiskID());
        report.setType(type);
        report.setDuration(duration);
        reports.Add(report);
        task.setTaskReports(reports);
        tasks().setChanged();
    }
    CTask & task = tasks().ElementAt(0);
};

CRiskType const subtractive = CRiskType::Subtractive, additive = CRiskType::Additive;
constexpr auto unmitigated = CRiskStatus::Unmitigated;
constexpr auto mitigated = CRiskStatus::Mitigated;
constexpr auto buffered = CRiskStatus::Buffered;

TEST(TaskRisks, ChangeOfTypeKeepsEveryLength)
{
    for (double size : {10.0, 33.3333, 0.7})
    {
        Risky plan(aTask("t").lasting(5_d), {percent(unmitigated, size), fixed(buffered, 3_h)}, subtractive);
        CProjectDuration const length = plan.risk(0).getValueFixed(plan.task);
        EXPECT_TRUE(plan.task.setRiskType(additive));
        EXPECT_EQ(plan.task.getDuration(), 5_d - length - 3_h);
        EXPECT_EQ(plan.risk(0).getValueFixed(plan.task), length);
        EXPECT_FALSE(plan.task.setRiskType(additive));
        EXPECT_TRUE(plan.task.setRiskType(subtractive));
        EXPECT_EQ(plan.task.getDuration(), 5_d);
        EXPECT_EQ(plan.risk(0).getValueFixed(plan.task), length);
    }
    // A duration that is all risk leaves none to take a percentage of.
    Risky plan(aTask("t").lasting(1_d), {percent(unmitigated, 100)}, subtractive);
    EXPECT_TRUE(plan.task.setRiskType(additive));
    EXPECT_EQ(plan.task.getDuration(), 0_h);
    EXPECT_TRUE(std::isinf(plan.risk(0).getValuePercent(plan.task)));
    EXPECT_EQ(plan.risk(0).getValueFixed(plan.task), 0_h);
}

TEST(TaskRisks, LimitsOfDurationAndOfFurtherRisk)
{
    // A subtractive task holds its fixed risks and a minute.
    Risky held(aTask("t").lasting(2_d), {fixed(unmitigated, 3_h), percent(mitigated, 50)}, subtractive);
    held.task.setDuration(1_h);
    EXPECT_EQ(held.task.getDuration(), 3_h + 1_m);
    // Risks of a hundred percent and more count as 99.9.
    Risky full(aTask("t").lasting(2_d), {percent(mitigated, 150)}, subtractive);
    full.task.setDurationToEndOfUnmitigatedRisk(1_h);
    EXPECT_NEAR(static_cast<double>(full.task.getDuration().GetTotalSeconds()), 3600 / 0.001, 60);
    EXPECT_EQ(full.task.getMaximumAvailableRiskPercent(), 0);
    EXPECT_EQ(full.task.getMaximumAvailableRiskDuration(), 0_h);
    // An additive task keeps its duration when the target lies below its fixed risks.
    Risky added(aTask("t").lasting(2_d), {fixed(unmitigated, 5_h), percent(unmitigated, 25)}, additive);
    added.task.setDurationToEndOfUnmitigatedRisk(4_h);
    EXPECT_EQ(added.task.getDuration(), 2_d);
    added.task.setDurationToEndOfUnmitigatedRisk(15_h);
    EXPECT_EQ(added.task.getDuration(), 8_h);
    EXPECT_EQ(added.task.getMaximumAvailableRiskPercent(), 999 - 62 - 1 - 25);
    EXPECT_EQ(added.task.getMaximumAvailableRiskDuration(), CProjectDuration(999 * 8 * 3600L) - 7_h);
    // A fixed risk on no planned duration is all of it.
    Risky none(aTask("t").keyDate(), {fixed(unmitigated, 1_h)}, subtractive);
    none.task.setDuration(0_h);
    EXPECT_EQ(none.risk(0).getValuePercent(none.task), 100.0);
}

TEST(TaskRisks, CostsOfRisksAndReports)
{
    std::vector<CAssignedRisk> risks{fixed(unmitigated, 9_h), fixed(mitigated, 80_m)};
    for (auto const type : {CCostType::Fixed, CCostType::Hourly, CCostType::Daily, CCostType::Weekly})
    {
        CCost cost;
        cost.setType(type);
        cost.setAmount(10.0);
        for (CAssignedRisk & risk : risks) risk.addCost(cost);
    }
    Risky plan(aTask("t").lasting(5_d), risks, subtractive);
    // 9 hours are 9 and 2 days begun, 80 minutes are 1 and 1; a week costs nothing here.
    EXPECT_EQ(plan.task.getUnmitigatedRiskCostsTotal(CCostTotalType::Budgeted), 10 + 90 + 20);
    EXPECT_EQ(plan.task.getMitigatedRiskCostsTotal(CCostTotalType::Budgeted), 10 + 10 + 10);
    EXPECT_EQ(plan.task.getSumTotal(CCostTotalType::Budgeted), 120);
    EXPECT_TRUE(plan.project.doesAssignedRiskHaveCost(plan.risk(0).getID()));
    plan.task.setStatus(CTaskStatus::Started);
    EXPECT_EQ(plan.task.getSumTotal(CCostTotalType::Budgeted), 0);
    plan.report(1, CTaskReportType::Advance, 1_h);
    CTaskReportArray reports(plan.task.getTaskReports());
    reports.ElementAt(0).setCosts(CCostArray(*risks[0].getCosts()));
    EXPECT_TRUE(plan.project.areTaskReportCostsDifferent(plan.task, reports.GetAt(0)));
    plan.task.setTaskReports(reports);
    // Priced over the task: 40 hours, 5 days, and a week charged once; an advance saves it.
    EXPECT_EQ(plan.task.getSumTotal(CCostTotalType::Budgeted), -(10 + 400 + 50 + 10));
}

}  // namespace
