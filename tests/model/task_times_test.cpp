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

TEST(TaskTimes, StandOnTheFieldsOfTheStatus)
{
    struct
    {
        TaskDraft draft;
        // start > end, planned end, planned length, forecast, end of risk, length to it
        char const * times;
    } const cases[] = {
        {aTask("Hold").lasting(12_h), "01-05 09:00 > 01-06 13:00, 01-06 13:00, 1d4h, ?, 01-06 13:00, 1d4h"},
        {aTask("TBA").inStatus(CTaskStatus::TBA).from("01-09 16:00"_t),
         "01-09 16:00 > 01-12 16:00, 01-12 16:00, 1d, ?, 01-12 16:00, 1d"},
        {aTask("Started").lasting(2_d).started("01-07 11:00"_t),
         "01-07 11:00 > 01-09 11:00, 01-06 17:00, 2d, 01-09 11:00, 01-09 11:00, 2d"},
        {aTask("Finished").lasting(2_d).finished("01-07 11:00"_t, "01-08 10:00"_t),
         "01-07 11:00 > 01-08 10:00, 01-06 17:00, 2d, ?, 01-08 10:00, 7h"},
        {aTask("key").keyDate().from("01-06 12:00"_t), "01-06 12:00 > 01-06 12:00, 01-06 12:00, 0, ?, 01-06 12:00, 0"},
        {aBlank(), "? > ?, ?, 0, ?, ?, ?"},
    };
    for (auto const & [draft, times] : cases)
    {
        Plan const plan(std::vector<TaskDraft>{draft});
        CTask const & task = *plan.project.getTask(0);
        EXPECT_EQ(text(task.getStartTime()) + " > " + text(task.getEndTime()) + ", " + text(task.getPlannedEndTime()) +
                      ", " + text(task.getPlannedDuration()) + ", " + text(task.getEstimatedFinishTime()) + ", " +
                      text(task.getEndOfUnmitigatedRisk()) + ", " + text(task.getDurationToEndOfUnmitigatedRisk()),
                  times)
            << draft.name;
    }
}

TEST(TaskTimes, AStartedTaskWhoseForecastIsNotBehindItsStartHasNoLength)
{
    Plan plan({aTask("t").lasting(2_d).started("01-07 11:00"_t)});
    CTask & task = plan.writable("t");
    // Within the action the forecast is still that of the old start.
    task.setActualStartTime("01-12 11:00"_t);
    EXPECT_EQ(task.getDurationToEndOfUnmitigatedRisk(), 0_m);
    task.setChanged();
    EXPECT_EQ(task.getDurationToEndOfUnmitigatedRisk(), 2_d);
}

// ---- setters ----------------------------------------------------------------------------------------

TEST(TaskTimes, SettersKeepTheOtherEndAndTheLeastLength)
{
    struct
    {
        char const * name;
        Change change;
        char const * after;
    } const cases[] = {
        // The task runs from Monday 01-05 09:00 to Wednesday 01-07 17:00.
        {"later start", [](CTask & t) { t.setPlannedStartTime("01-06 12:00"_t); }, "01-06 12:00 > 01-07 17:00 1d5h"},
        {"start a minute before the end", [](CTask & t) { t.setPlannedStartTime("01-07 16:59"_t); },
         "01-07 16:59 > 01-07 17:00 1m"},
        {"start at the end", [](CTask & t) { t.setPlannedStartTime("01-08 09:00"_t); }, "01-05 09:00 > 01-07 17:00 3d"},
        {"start at night", [](CTask & t) { t.setPlannedStartTime("01-06 18:00"_t); }, "01-05 09:00 > 01-07 17:00 3d"},
        {"end at night", [](CTask & t) { t.setPlannedEndTime("01-08 20:00"_t); }, "01-05 09:00 > 01-08 17:00 4d"},
        {"end behind the start", [](CTask & t) { t.setPlannedEndTime("01-05 09:01"_t); },
         "01-05 09:00 > 01-05 09:01 1m"},
        {"less", [](CTask & t) { t.setDuration(CProjectDuration(59)); }, "01-05 09:00 > 01-05 09:01 1m"},
        {"negative", [](CTask & t) { t.setDuration(CProjectDuration(-7200)); }, "01-05 09:00 > 01-05 09:01 1m"},
        {"no duration", [](CTask & t) { t.setDuration(CProjectDuration()); }, "01-05 09:00 > 01-07 17:00 3d"},
        {"end of risk", [](CTask & t) { t.setEndOfUnmitigatedRisk("01-06 10:00"_t); },
         "01-05 09:00 > 01-06 10:00 1d1h"},
        {"end of risk at the start", [](CTask & t) { t.setEndOfUnmitigatedRisk("01-05 09:00"_t); },
         "01-05 09:00 > 01-07 17:00 3d"},
        {"negative, additive",
         [](CTask & t)
         {
             EXPECT_TRUE(t.setRiskType(CRiskType::Additive));
             EXPECT_FALSE(t.setRiskType(CRiskType::Additive));
             t.setDurationToEndOfUnmitigatedRisk(CProjectDuration(-60));
         },
         "01-05 09:00 > 01-07 17:00 3d"},
        {"move", [](CTask & t) { t.reschedulePlannedStartTime("01-09 09:00"_t); }, "01-09 09:00 > 01-13 17:00 3d"},
        {"move to an end", [](CTask & t) { t.reschedulePlannedStartTime("01-09 17:00"_t); },
         "01-05 09:00 > 01-07 17:00 3d"},
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
         "01-05 09:00 > 01-07 17:00 3d"},
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
    struct
    {
        char const * name;
        Change change;
        std::string after;
    } const cases[] = {
        {"as it was", [](CTask &) {}, asItWas},
        // Ten working hours on: b would start at 17:00, which is the next morning.
        {"later start", [](CTask & s) { s.reschedulePlannedStartTime("01-06 11:00"_t); },
         "a 01-06 11:00, b 01-09 09:00, v 01-12 09:00, s 01-05 12:00 > 01-13 17:00 6d5h"},
        {"earlier start", [](CTask & s) { s.reschedulePlannedStartTime("01-02 15:00"_t); },
         "a 01-02 15:00, b 01-07 13:00, v 01-08 13:00, s 01-02 15:00 > 01-12 13:00 5d6h"},
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
    EXPECT_EQ(span(plan["s"]), "? > ? ?");
    plan.writable("s").reschedulePlannedStartTime("01-06 09:00"_t);
    EXPECT_EQ(span(plan["s"]), "? > ? ?");
    EXPECT_TRUE(plan["s"].isValid() && plan["s"].canReschedule());
}

// ---- progress ---------------------------------------------------------------------------------------

TEST(TaskTimes, ProgressGoesByTheClock)
{
    struct
    {
        TaskDraft draft;
        CProjectTime now;
        double worked, complete;
        char const * point;
    } const cases[] = {
        {aTask("t").lasting(2_d), "01-06 09:00"_t, 0, 0, "?"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-05 08:00"_t, 0, 0, "01-05 09:00"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-05 20:00"_t, 50, 50, "01-05 17:00"},
        {aTask("t").lasting(2_d).started("01-05 09:00"_t), "01-08 09:00"_t, 150, 100, "01-06 17:00"},
        {aTask("t").lasting(2_d).started("01-06 11:00"_t), "01-07 11:00"_t, 50, 50, "01-07 11:00"},
        {aTask("t").keyDate().lasting(0_m).started("01-05 09:00"_t), "01-05 08:00"_t, 100, 100, "01-05 09:00"},
        {aTask("t").lasting(2_d).finished("01-05 09:00"_t, "01-05 12:00"_t), "01-05 10:00"_t, 100, 100, "01-05 12:00"},
    };
    int number = 0;
    for (auto const & each : cases)
    {
        SCOPED_TRACE(number++);
        ClockScope const clock(each.now);
        Plan plan(std::vector<TaskDraft>{each.draft});
        EXPECT_DOUBLE_EQ(plan["t"].getUnconstrainedPercentComplete(), each.worked);
        EXPECT_DOUBLE_EQ(plan["t"].getPercentComplete(), each.complete);
        EXPECT_EQ(text(plan["t"].getTimeOfPercentCompletePoint()), each.point);
    }
}

// ---- what may be done, and why not ------------------------------------------------------------------

TEST(TaskTimes, PredicatesAndTheirExplanations)
{
    auto const begun = [](TaskDraft draft) { return draft.started("01-05 09:00"_t); };
    TaskDraft const parent = aTask("t").with({aTask("child")});
    std::string const moved = "\"t\" cannot be rescheduled because ";
    std::string const risks = "The task \"t\" cannot change Risk Assignment because ";
    std::string const resources = "The task \"t\" cannot change Resource Assignment because ";
    std::string const isBegun = "its status is \"Started\"", isDone = "its status is \"Finished\"";
    struct
    {
        TaskDraft draft;
        // summary, links, reschedule, duration, risks, reports, resources, percent, baseline, type
        char const * can;
        std::string whyNotMoved, whyNoRisks, whyNoResources;
    } const cases[] = {
        {aTask("t"), "+++++-+-++", "", "", ""},
        {aTask("t").constrained(), "++-++-+-++", moved + "it is constrained", "", ""},
        {aBlank("t"), "--++------", "", risks + "it is a blank task", resources + "it is a blank task"},
        {aTask("t").keyDate(), "-++---+-++", "", risks + "it is a key date", ""},
        {begun(aTask("t")), "++---+-+--", moved + isBegun, risks + isBegun, resources + isBegun},
        {aTask("t").finished("01-05 09:00"_t, "01-05 10:00"_t), "++--------",
         moved + isDone, risks + isDone, resources + isDone},
        {begun(aTask("t").keyDate()), "-+-----+-+", moved + isBegun, risks + "it is a key date", resources + isBegun},
        {parent, "+++---+-+-", "", risks + "it is a summary task", ""},
        {begun(parent), "+++----++-", "", risks + "it is a summary task", resources + "it is a summary task"},
    };
    int number = 0;
    for (auto const & each : cases)
    {
        SCOPED_TRACE(number++);
        Plan plan(std::vector<TaskDraft>{each.draft});
        CTask const & t = plan["t"];
        bool const can[] = {t.canBecomeSummaryTask(), t.canCreateLinks(),           t.canReschedule(),
                            t.canChangeDuration(),    t.canAssignRisks(),           t.canAssignTaskReports(),
                            t.canAssignResources(),   t.canChangePercentComplete(), t.canChangeBaseline(),
                            t.canChangeType()};
        std::string answers;
        for (bool const one : can) answers += one ? '+' : '-';
        EXPECT_EQ(answers, each.can);
        EXPECT_EQ(t.getExplanationForInabilityToReschedule(), each.whyNotMoved.c_str());
        EXPECT_EQ(t.getExplanationForInabilityToAssignRisks(), each.whyNoRisks.c_str());
        EXPECT_EQ(t.getExplanationForInabilityToAssignResources(), each.whyNoResources.c_str());
    }
}

}  // namespace
