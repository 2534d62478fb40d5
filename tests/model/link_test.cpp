#include "model/link.h"

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

CLinkType const fs = CLinkType::FinishToStart;
CLinkType const sf = CLinkType::StartToFinish;
CLinkType const ss = CLinkType::StartToStart;
CLinkType const ff = CLinkType::FinishToFinish;

TEST(Link, EveryFieldCountsInFlagsAndEquality)
{
    void (*const changes[])(CLink &) = {
        [](CLink & link) { link.setID(CLinkID()); }, [](CLink & link) { link.setUpstreamTaskID(CTaskID()); },
        [](CLink & link) { link.setType(ff); },      [](CLink & link) { link.setStatus(CLinkStatus::Proposed); },
        [](CLink & link) { link.setDelay(2_h); },
    };
    CLink const link(CTaskID(), fs);
    for (auto const change : changes)
    {
        CLink copy(link);
        EXPECT_TRUE(copy == link && !copy.setChanged());
        change(copy);
        EXPECT_FALSE(copy == link);
        EXPECT_TRUE(copy.setChanged() && copy.getChanged());
    }
    // Where a walk last found the upstream task is no part of it.
    CLink copy(link);
    copy.setUpstreamDistance(7);
    EXPECT_TRUE(copy == link && !copy.setChanged());
}

// ---- times --------------------------------------------------------------------------------------------
// Working days are Monday to Friday, 09:00 to 17:00; 01-05 and 01-12 are Mondays. Delays count by the clock.

struct Limit
{
    CLinkType type;
    long delayHours;
    char const * time;
};

template <class Ask>
void expectLimits(std::vector<Limit> const & limits, Ask const & ask)
{
    for (auto const & [type, delayHours, time] : limits)
    {
        CLink link(CTaskID(), type);
        link.setDelay(CProjectDuration(delayHours * 3600));
        EXPECT_EQ(text(ask(link)), time) << type.getEquivalentValue() << ' ' << delayHours;
    }
}

// Thursday and Friday; Tuesday.
TaskDraft const upstreamTask = aTask("up").from("01-08 09:00"_t).lasting(2_d);
TaskDraft const downstreamTask = aTask("down").from("01-13 09:00"_t).lasting(1_d);

// Behind Friday 17:00 is where work goes on. An end is reached a minute after work begins at the soonest.
TEST(LinkTimes, TheEarliestStartOfTheDownstreamTask)
{
    Plan const plan({upstreamTask, downstreamTask, aTask("moment").from("01-13 09:00"_t).keyDate(), aBlank("blank")});
    auto const between = [&](char const * up, char const * down)
    { return [&, up, down](CLink & link) { return link.getEarliestStartOfDownstreamTask(plan[up], plan[down]); }; };
    expectLimits({{fs, 0, "01-12 09:00"}, {fs, 68, "01-12 13:00"}, {fs, -4, "01-09 13:00"}, {ss, 0, "01-08 09:00"},
                  {ss, 10, "01-09 09:00"}, {ss, -24, "01-07 09:00"}, {sf, 0, "01-07 09:01"}, {sf, 6, "01-07 15:00"},
                  {sf, 10, "01-08 09:01"}, {ff, 0, "01-09 09:00"}, {ff, 24, "01-09 09:01"}, {ff, -2, "01-08 15:00"},
                  {CLinkType(), 0, "01-12 09:00"}},
                 between("up", "down"));
    // What has no length may stand at the end of work, where nothing can start.
    expectLimits({{ff, 0, "01-09 17:00"}, {fs, 0, "01-12 09:00"}}, between("up", "moment"));
    expectLimits({{fs, 0, "?"}, {sf, 0, "?"}, {ss, 0, "?"}, {ff, 0, "?"}}, between("blank", "down"));
}

TEST(LinkTimes, TheLatestStartOfTheUpstreamTask)
{
    Plan const plan({upstreamTask, downstreamTask, aTask("moment").from("01-08 09:00"_t).keyDate(), aBlank("blank")});
    auto const between = [&](char const * up, char const * down)
    { return [&, up, down](CLink & link) { return link.getLatestStartOfUpstreamTask(plan[up], plan[down]); }; };
    expectLimits({{fs, 0, "01-09 09:00"}, {fs, 24, "01-08 09:00"}, {fs, 48, "01-08 09:00"}, {fs, -4, "01-09 13:00"},
                  {ss, 0, "01-13 09:00"}, {ss, 24, "01-12 09:00"}, {ss, 48, "01-09 16:59"}, {sf, 0, "01-13 16:59"},
                  {sf, 4, "01-13 13:00"}, {sf, 9, "01-12 16:59"}, {ff, 0, "01-12 09:00"}, {ff, 24, "01-09 09:00"},
                  {ff, 72, "01-08 09:00"}},
                 between("up", "down"));
    expectLimits({{fs, 0, "01-13 09:00"}, {fs, 1, "01-12 16:59"}, {ss, 0, "01-13 09:00"}, {sf, 0, "01-13 16:59"},
                  {ff, 0, "01-13 16:59"}, {ff, 48, "01-09 16:59"}},
                 between("moment", "down"));
    expectLimits({{fs, 0, "?"}, {sf, 0, "?"}, {ss, 0, "?"}, {ff, 0, "?"}}, between("up", "blank"));
}

TEST(LinkTimes, AllLinksOfATaskLimitIt)
{
    Plan plan({upstreamTask, aTask("late").from("01-14 09:00"_t).lasting(3_d),
               TaskDraft(downstreamTask).after("up").after("late", ss, 2_h), aTask("free"),
               aTask("s").with({aTask("next").from("01-13 15:00"_t).after("up", fs, 4_h)}),
               aTask("blind").after("up").after("gone").after("late"), aBlank("blank"), aTask("gone")});
    auto const earliest = [&](char const * name)
    { return text(plan.project.getEarliestStartFromUpstreamLinks(plan.id(name))); };
    auto const latest = [&](char const * name)
    { return text(plan.project.getLatestStartFromDownstreamLinks(plan.id(name))); };
    EXPECT_EQ(earliest("down"), "01-14 11:00");
    EXPECT_EQ(earliest("free"), "?");
    EXPECT_EQ(latest("free"), "?");
    EXPECT_EQ(latest("late"), "2003-12-31 09:00");
    plan.tasks().RemoveAt(plan.tasks().GetUpperBound());
    // Behind a link that dangles no more is read.
    EXPECT_EQ(earliest("blind"), "01-12 09:00");
    plan.writable("blind").setUpstreamLinks(CLinkArray());
    EXPECT_EQ(latest("late"), "01-12 16:59");
    EXPECT_EQ(latest("up"), "01-09 09:00");
    // A blank task sets no limit, nor does a subtree without links.
    plan.writable("blank").setUpstreamLinks(plan["down"].getUpstreamLinks());
    EXPECT_EQ(latest("up"), "01-09 09:00");
    for (CTaskID const & id : {CTaskID(), CTaskID::getNULL()})
    {
        EXPECT_FALSE(plan.project.getEarliestStartFromUpstreamLinks(id).isValid());
        EXPECT_FALSE(plan.project.getLatestStartFromDownstreamLinks(id).isValid());
    }
}

}  // namespace
