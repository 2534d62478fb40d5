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

// Working days are Monday to Friday, 09:00 to 17:00; 01-05 and 01-12 are Mondays. Delays count by the clock.

// The type, the delay in hours, and the time.
using Limit = std::tuple<CLinkType, long, char const *>;

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
               aTask("blind").after("up").after("gone").after("late"), aTask("gone")});
    auto const earliest = [&](char const * name)
    { return text(plan.project.getEarliestStartFromUpstreamLinks(plan.id(name))); };
    auto const latest = [&](char const * name)
    { return text(plan.project.getLatestStartFromDownstreamLinks(plan.id(name))); };
    EXPECT_EQ(earliest("down") + ' ' + earliest("free") + ' ' + latest("free"), "01-14 11:00 ? ?");
    plan.tasks().RemoveAt(plan.tasks().GetUpperBound());
    // Behind a link that dangles no more is read.
    EXPECT_EQ(earliest("blind"), "01-12 09:00");
    plan.writable("blind").setUpstreamLinks(CLinkArray());
    EXPECT_EQ(latest("late") + ' ' + latest("up"), "01-12 16:59 01-09 09:00");
    EXPECT_FALSE(plan.project.getEarliestStartFromUpstreamLinks(CTaskID()).isValid());
    EXPECT_FALSE(plan.project.getLatestStartFromDownstreamLinks(CTaskID()).isValid());
}

}  // namespace
