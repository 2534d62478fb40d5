#include <gtest/gtest.h>

#include "schedule/calendar.h"
#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// All figures: Monday to Friday, 09:00 to 17:00; 01-05 is a Monday.
using Change = void (*)(CTask &);

std::string span(CTask const & task)
{
    return text(task.getStartTime()) + " > " + text(task.getEndTime()) + ' ' + text(task.getDuration());
}

// ---- setters ----------------------------------------------------------------------------------------

TEST(TaskTimes, SettersKeepTheOtherEndAndTheLeastLength)
{
    char const * const asItWas = "01-05 09:00 > 01-07 17:00 3d";
    std::tuple<char const *, Change, char const *> const cases[] = {
        {"later start", [](CTask & t) { t.setPlannedStartTime("01-06 12:00"_t); }, "01-06 12:00 > 01-07 17:00 1d5h"},
        {"start at the end", [](CTask & t) { t.setPlannedStartTime("01-08 09:00"_t); }, asItWas},
        {"end at night", [](CTask & t) { t.setPlannedEndTime("01-08 20:00"_t); }, "01-05 09:00 > 01-08 17:00 4d"},
        {"negative", [](CTask & t) { t.setDuration(CProjectDuration(-7200)); }, "01-05 09:00 > 01-05 09:01 1m"},
        {"end of risk at the start", [](CTask & t) { t.setEndOfUnmitigatedRisk("01-05 09:00"_t); }, asItWas},
        {"negative, additive",
         [](CTask & t)
         {
             t.setRiskType(CRiskType::Additive);
             t.setDurationToEndOfUnmitigatedRisk(CProjectDuration(-60));
         },
         asItWas},
        {"move the end", [](CTask & t) { t.reschedulePlannedEndTime("01-09 12:00"_t); },
         "01-06 12:00 > 01-09 12:00 3d"},
        {"move the end of risk", [](CTask & t) { t.rescheduleEndOfUnmitigatedRisk("01-14 17:00"_t); },
         "01-12 09:00 > 01-14 17:00 3d"},
        {"key date", [](CTask & t) { t.setTaskType(CTaskType::KeyDate), t.setDuration(5_d); },
         "01-05 09:00 > 01-05 09:00 0"},
        // Begun and constrained tasks stay.
        {"started",
         [](CTask & t)
         {
             t.setActualStartTime("01-06 09:00"_t);
             t.setActualFinishTime("01-06 12:00"_t);
             t.setStatus(CTaskStatus::Finished);
             t.setDuration(1_d), t.setPlannedStartTime("01-06 09:00"_t), t.setPlannedEndTime("01-06 17:00"_t);
             t.setDurationToEndOfUnmitigatedRisk(1_d), t.setEndOfUnmitigatedRisk("01-06 17:00"_t);
             t.reschedulePlannedStartTime("01-06 09:00"_t), t.reschedulePlannedEndTime("01-06 17:00"_t);
             EXPECT_EQ(t.getPlannedStartTime(), "01-05 09:00"_t);
         },
         "01-06 09:00 > 01-06 12:00 3d"},
        {"constrained",
         [](CTask & t)
         {
             t.setConstraintType(CTaskConstraintType::CannotReschedule);
             t.setPlannedStartTime("01-06 09:00"_t), t.setPlannedEndTime("01-06 17:00"_t);
             t.reschedulePlannedStartTime("01-06 09:00"_t), t.rescheduleEndOfUnmitigatedRisk("01-06 17:00"_t);
         },
         asItWas},
    };
    for (auto const & [name, change, after] : cases)
    {
        Plan plan({aTask("t").lasting(3_d)});
        change(plan.writable("t"));
        plan.tasks().setChanged();
        EXPECT_EQ(span(plan["t"]), after) << name;
    }
}

// ---- summary tasks ----------------------------------------------------------------------------------

TEST(TaskTimes, ASummaryTaskMovesTheChildrenThatCanMove)
{
    std::string const asItWas = "a 01-05 09:00, b 01-07 15:00, v 01-08 15:00, s 01-05 09:00 > 01-12 15:00 5d6h";
    std::tuple<char const *, Change, std::string> const cases[] = {
        // Ten working hours on: b would start at 17:00, which is the next morning.
        {"later start", [](CTask & s) { s.reschedulePlannedStartTime("01-06 11:00"_t); },
         "a 01-06 11:00, b 01-09 09:00, v 01-12 09:00, s 01-05 12:00 > 01-13 17:00 6d5h"},
        {"no start", [](CTask & s) { s.reschedulePlannedStartTime("01-10 09:00"_t); }, asItWas},
        // Five working hours on.
        {"later end", [](CTask & s) { s.reschedulePlannedEndTime("01-13 12:00"_t); },
         "a 01-05 14:00, b 01-08 12:00, v 01-09 12:00, s 01-05 12:00 > 01-13 12:00 6d"},
        {"its own times cannot be set",
         [](CTask & s)
         {
             s.setPlannedStartTime("01-02 15:00"_t), s.setPlannedEndTime("01-13 12:00"_t), s.setDuration(1_d);
             s.setEndOfUnmitigatedRisk("01-13 12:00"_t);
             EXPECT_FALSE(s.setRiskType(CRiskType::Additive));
         },
         asItWas},
    };
    for (auto const & [name, change, after] : cases)
    {
        Plan plan({aTask("s").with({aTask("a").lasting(2_d), aTask("b").from("01-07 15:00"_t), aBlank(),
                                    aTask("fixed").from("01-06 09:00"_t).constrained(),
                                    aTask("begun").started("01-05 12:00"_t),
                                    aTask("u").with({aTask("v").from("01-08 15:00"_t).lasting(2_d)})})});
        change(plan.writable("s"));
        std::string places;
        for (char const * child : {"a", "b", "v"})
            places += std::string(child) + ' ' + text(plan[child].getStartTime()) + ", ";
        EXPECT_EQ(places + "s " + span(plan["s"]), after) << name;
        EXPECT_EQ(span(plan["fixed"]) + ", " + span(plan["begun"]),
                  "01-06 09:00 > 01-06 17:00 1d, 01-05 12:00 > 01-06 12:00 1d");
        // Its own planned start plus the length of the children.
        EXPECT_EQ(plan["s"].getPlannedEndTime(),
                  plan["s"].getCalendar().addDurationToTime("01-05 09:00"_t, plan["s"].getDuration(), true));
    }
}

TEST(TaskTimes, ASummaryTaskOfBlankRowsHasNoTimes)
{
    Plan plan({aTask("s").with({aBlank(), aBlank()})});
    plan.writable("s").reschedulePlannedStartTime("01-06 09:00"_t);
    EXPECT_EQ(span(plan["s"]), "? > ? ?");
}

// ---- progress ---------------------------------------------------------------------------------------

TEST(TaskTimes, ProgressGoesByTheClock)
{
    std::tuple<TaskDraft, CProjectTime, double, double, char const *> const cases[] = {
        {aTask("t").lasting(2_d), "01-06 09:00"_t, 0, 0, "?"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-05 08:00"_t, 0, 0, "01-05 09:00"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-05 20:00"_t, 50, 50, "01-05 17:00"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-08 09:00"_t, 150, 100, "01-06 17:00"},
        {aTask("t").keyDate().lasting(0_m).started("01-05 09:00"_t), "01-05 08:00"_t, 100, 100, "01-05 09:00"},
        {aTask("t").lasting(2_d).finished("01-05 09:00"_t, "01-05 12:00"_t), "01-05 10:00"_t, 100, 100, "01-05 12:00"},
    };
    for (auto const & [draft, now, worked, complete, point] : cases)
    {
        SCOPED_TRACE(point);
        ClockScope const clock(now);
        Plan plan({draft});
        EXPECT_DOUBLE_EQ(plan["t"].getUnconstrainedPercentComplete(), worked);
        EXPECT_DOUBLE_EQ(plan["t"].getPercentComplete(), complete);
        EXPECT_EQ(text(plan["t"].getTimeOfPercentCompletePoint()), point);
    }
}

// ---- what may be done, and why not ------------------------------------------------------------------

TEST(TaskTimes, PredicatesAndTheirExplanations)
{
    TaskDraft const parent = aTask("t").with({aTask("child")});
    // Summary, links, reschedule, duration, risks, reports, resources, percent, baseline, type; and why no risks.
    std::tuple<TaskDraft, char const *, std::string> const cases[] = {
        {aTask("t"), "+++++-+-++", ""},
        {aTask("t").constrained(), "++-++-+-++", ""},
        {aBlank("t"), "--++------", "it is a blank task"},
        {aTask("t").keyDate(), "-++---+-++", "it is a key date"},
        {aTask("t").started("01-05 09:00"_t), "++---+-+--", "its status is \"Started\""},
        {aTask("t").finished("01-05 09:00"_t, "01-05 10:00"_t), "++--------", "its status is \"Finished\""},
        {aTask("t").keyDate().started("01-05 09:00"_t), "-+-----+-+", "it is a key date"},
        {parent, "+++---+-+-", "it is a summary task"},
        {TaskDraft(parent).started("01-05 09:00"_t), "+++----++-", "it is a summary task"},
    };
    for (auto const & [draft, can, why] : cases)
    {
        Plan plan({draft});
        CTask const & t = plan["t"];
        std::string answers;
        for (bool const each : {t.canBecomeSummaryTask(), t.canCreateLinks(), t.canReschedule(), t.canChangeDuration(),
                                t.canAssignRisks(), t.canAssignTaskReports(), t.canAssignResources(),
                                t.canChangePercentComplete(), t.canChangeBaseline(), t.canChangeType()})
            answers += each ? '+' : '-';
        EXPECT_EQ(answers, can);
        std::string const text = why.empty() ? "" : "The task \"t\" cannot change Risk Assignment because " + why;
        EXPECT_EQ(t.getExplanationForInabilityToAssignRisks(), text.c_str());
    }
}

}  // namespace
