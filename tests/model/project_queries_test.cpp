// Where the plan and its tasks stand in time.

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

std::string namesOf(CTaskArray const & tasks)
{
    std::string text;
    for (CTask const & task : tasks) text += std::string(task.getName().view()) + ' ';
    return text;
}

// What the three questions answer with the Gantt view focussed on that moment.
std::string atMoment(Plan & plan, CProjectTime const & moment)
{
    CGanttPresentation gantt(plan.project.getGanttPresentation());
    gantt.setFocussedTime(moment);
    plan.act([&](auto & rules) { return rules.setGanttPresentation(gantt); });
    return namesOf(plan.project.getTasksCompletedBeforeFocussedTime()) + "| " +
           namesOf(plan.project.getTasksInProgressDuringFocussedTime()) + "| " +
           namesOf(plan.project.getTasksScheduledAfterFocussedTime());
}

TEST(ProjectQueries, TasksAtTheFocussedTime)
{
    // A row without a schedule has ended long ago, and whoever is below it is asked all the same.
    Plan plan({aTask("house").with({aTask("dig"), aTask("walls").from("01-06 09:00"_t)}),
               aBlank("none").with({aTask("below")}), aBlank("row"),
               aTask("fence").from("01-07 09:00"_t).lasting(2_d)});
    std::pair<CProjectTime, char const *> const cases[] = {
        {"01-05 08:59"_t, "row | | dig walls below fence "}, {"01-05 09:00"_t, "row | dig below | walls fence "},
        {"01-05 17:01"_t, "dig below row | | walls fence "}, {"01-08 17:01"_t, "dig walls below row fence | | "},
        {"?"_t, "| row | dig walls below fence "},
    };
    for (auto const & [moment, stand] : cases) EXPECT_EQ(atMoment(plan, moment), stand) << text(moment);
}

TEST(ProjectQueries, StartAndEndOfTheProject)
{
    Plan empty;
    EXPECT_FALSE(empty.project.getProjectStart().isValid() || empty.project.getProjectEnd().isValid());

    Plan plan({aBlank("row"), aTask("last").from("01-07 09:00"_t).lasting(2_d),
               aTask("house").with({aTask("dig"), aBlank()})});
    EXPECT_EQ(plan.project.getProjectStart(), "01-05 09:00"_t);
    EXPECT_EQ(plan.project.getProjectEnd(), "01-08 17:00"_t);
    // Room for mitigated risk: that of a root counts beyond its end, that of a child does not.
    for (char const * name : {"dig", "last"})
    {
        CAssignedRiskArray risks;
        risks.Add(CAssignedRisk(CRiskID(), CRiskValueMode::Fixed));
        risks.ElementAt(0).setStatus(CRiskStatus::Mitigated);
        risks.ElementAt(0).setValueFixed(5_d);
        plan.writable(name).setRiskType(CRiskType::Additive);
        plan.writable(name).setAssignedRisks(risks);
        plan.derive();
        EXPECT_EQ(plan.project.getProjectEnd(), name == std::string("dig") ? "01-08 17:00"_t : "01-15 17:00"_t);
    }
}

}  // namespace
