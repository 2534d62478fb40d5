#include <gtest/gtest.h>

#include <chrono>

#include "app/command.h"
#include "app/planning/scheduler.h"
#include "config/project_config.h"
#include "tests/app/random_plan.h"
#include "tests/support/command_run.h"
#include "tests/support/random_actions.h"
#include "tests/support/real_cases.h"
#include "tests/support/scratch_folder.h"

namespace
{

using namespace orvane;
using namespace orvane::app;
using orvane::test::RandomPlan;

CRulesCheckerContext const client(CRulesCheckerContext::OriginatingClient);

// In one action; answers how many tasks moved, and which stayed elsewhere than their links have them.
Schedule schedule(CProject & project)
{
    Rows const rows(project);
    Schedule found = findEarliestStarts(rows);
    std::size_t const planned = found.moves.size();
    CLocalRulesChecker rules(&project, client);
    apply(found, rules);
    EXPECT_EQ(found.moves.size(), planned) << "the rules refuse a move";
    return found;
}

// ---- the slow form ----------------------------------------------------------------------------------

// The latest start that a link of the task, or of a summary above it, allows first.
CProjectTime limitOf(CProject const & project, CTask const & task)
{
    CProjectTime limit;
    for (CTask const * holder = &task; holder; holder = project.getTaskParent(*holder))
        for (CLink const & link : holder->getUpstreamLinks())
        {
            CTask const * const upstream = project.getTask(link.getUpstreamTaskID());
            if (!upstream) break;
            CProjectTime const allowed = link.getEarliestStartOfDownstreamTask(*upstream, task);
            if (allowed.isValid() && (!limit.isValid() || allowed > limit)) limit = allowed;
        }
    return limit;
}

// One action for one task at a time, until none moves.
void scheduleByActions(CProject & project)
{
    for (bool moved = true; moved;)
    {
        moved = false;
        Rows const rows(project);
        for (int row = 0; row < rows.size(); ++row)
        {
            CTask const & task = *rows[row].task;
            if (!rows[row].counts || task.isSummaryTask() || !task.canReschedule()) continue;
            CProjectTime const limit = limitOf(project, task);
            CProjectTime const target = task.getCalendar().getNextValidStartTime(limit);
            if (!target.isValid() || task.getStartTime() == limit || task.getStartTime() == target) continue;
            ASSERT_TRUE(CLocalRulesChecker(&project, client).changeTaskStart(task.getID(), target));
            moved = true;
        }
    }
}

TEST(Scheduling, agreesWithActionsTaskByTask)
{
    std::size_t moves = 0, held = 0;
    for (unsigned seed = 1; seed <= 120; ++seed)
    {
        RandomPlan plan(seed);
        CProject slow(nullptr, false);
        ASSERT_TRUE(loadStream(slow, streamOf(plan.project())));
        Schedule const done = schedule(plan.project());
        moves += done.moves.size();
        held += done.held.size();
        scheduleByActions(slow);
        ASSERT_EQ(digest(plan.project()), digest(slow)) << "seed " << seed;
        EXPECT_TRUE(findEarliestStarts(Rows(plan.project())).moves.empty()) << "seed " << seed;
    }
    EXPECT_GT(moves, 500u);
    EXPECT_GT(held, 20u);
}

TEST(Scheduling, refusesExactlyTheCircles)
{
    int circles = 0;
    for (unsigned seed = 1; seed <= 60; ++seed)
    {
        RandomPlan plan(seed);
        bool const isCircular = plan.addLink();
        circles += isCircular;
        std::string refused;
        try
        {
            findEarliestStarts(Rows(plan.project()));
        }
        catch (Refusal const & refusal)
        {
            refused = refusal.what();
        }
        EXPECT_EQ(isCircular, refused.find("circle") != std::string::npos) << "seed " << seed << refused;
    }
    EXPECT_GT(circles, 10);
}

// ---- cases ------------------------------------------------------------------------------------------

TEST(Scheduling, endsAsStated)
{
    struct
    {
        std::vector<TaskDraft> tasks;
        char const * after;
        char const * held = "";
    } const cases[] = {
        // A task that no link binds stays.
        {{aTask("far").from("02-02 09:00"_t).after("dig"), aTask("dig").lasting(5_d),
          aTask("free").from("01-20 09:00"_t)},
         "far: 01-12 09:00 > 01-12 17:00 1d, after dig FS\ndig: 01-05 09:00 > 01-09 17:00 5d\n"
         "free: 01-20 09:00 > 01-20 17:00 1d\n"},
        // A link on a summary binds what is below; one from a summary waits for all of it.
        {{aTask("dig").lasting(2_d),
          aTask("frame").after("dig").with({aTask("columns"), aTask("slab").after("columns").from("01-08 09:00"_t)}),
          aTask("roof").keyDate().after("frame")},
         "dig: 01-05 09:00 > 01-06 17:00 2d\nframe: 01-07 09:00 > 01-08 17:00 2d, after dig FS\n"
         "  columns: 01-07 09:00 > 01-07 17:00 1d\n  slab: 01-08 09:00 > 01-08 17:00 1d, after columns FS\n"
         "roof: 01-09 09:00 > 01-09 09:00 0, key date, after frame FS\n"},
        // What cannot move holds the rest; work that began later than it might have is no fault.
        {{aTask("dig").lasting(5_d).started("01-07 09:00"_t), aTask("fixed").constrained().after("dig"),
          aTask("begun").started("01-06 09:00"_t).after("dig"), aTask("roof").after("fixed"), aBlank(),
          aTask("late").started("01-21 09:00"_t).after("dig")},
         "dig: 01-07 09:00 > 01-13 17:00 5d, Started\nfixed: 01-05 09:00 > 01-05 17:00 1d, constrained, after dig FS\n"
         "begun: 01-06 09:00 > 01-06 17:00 1d, Started, after dig FS\n"
         "roof: 01-06 09:00 > 01-06 17:00 1d, after fixed FS\n-\n"
         "late: 01-21 09:00 > 01-21 17:00 1d, Started, after dig FS\n",
         "\"fixed\" cannot be rescheduled because it is constrained\n"
         "\"begun\" cannot be rescheduled because its status is \"Started\"\n"},
    };
    for (auto const & each : cases)
    {
        Plan plan(each.tasks);
        std::string held;
        for (HeldTask const & task : schedule(plan.project).held) held += task.why + '\n';
        EXPECT_EQ(digest(plan.project), each.after);
        EXPECT_EQ(held, each.held);
    }
}

// ---- networks with known answers --------------------------------------------------------------------

TEST(Scheduling, findsTheSpansOfKnownNetworks)
{
    CProjectConfig::setShowCriticalPath(1);
    auto const days = [](CProjectDuration const & duration) { return duration.GetTotalSeconds() / (8 * 3600); };
    test::forRealCases(
        "psplib",
        [&](nlohmann::json const & record)
        {
            std::vector<TaskDraft> drafts;
            for (std::size_t each = 0; each < record["durations"].size(); ++each)
            {
                TaskDraft & draft = drafts.emplace_back(aTask(std::to_string(each)));
                draft.lasting(CProjectDuration(record["durations"][each].get<long>() * 8 * 3600));
                if (record["durations"][each] == 0) draft.keyDate();
                for (std::size_t const upstream : record["predecessors"][each]) draft.after(std::to_string(upstream));
            }
            Plan plan(drafts);
            schedule(plan.project);
            plan.project.updateCriticalPath();
            auto const & calendar = plan.project.getProjectCalendar();
            CProjectTime const end = plan[std::to_string(drafts.size() - 1)].getStartTime();
            EXPECT_EQ(days(calendar.subtractTimeFromTime(plan["0"].getStartTime(), end)), record["mpm_time"])
                << record["name"];
            EXPECT_EQ(days(plan.project.getCriticalPath().getDurationOfCriticalPath()), record["mpm_time"])
                << record["name"];
        });
    CProjectConfig::setShowCriticalPath(0);
}

TEST(Scheduling, takesLongChainsAndManyTasksInItsStride)
{
    std::vector<TaskDraft> drafts;
    for (int each = 0; each < 5000; ++each)
    {
        drafts.push_back(aTask(std::to_string(each)).lasting(1_h));
        if (each < 4999) drafts.back().after(std::to_string(each + 1));
    }
    Plan plan(drafts);
    auto const begin = std::chrono::steady_clock::now();
    EXPECT_EQ(schedule(plan.project).moves.size(), 4999u);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

// ---- the command ------------------------------------------------------------------------------------

class ScheduleCommand : public testing::Test
{
protected:
    void save(std::vector<TaskDraft> const & tasks)
    {
        Plan plan(tasks);
        ASSERT_EQ(plan.project.saveToFile(file.c_str()), 1);
    }
    std::string bytes() const { return folder.read("plan.prj"); }

    CScratchFolder folder;
    std::string file{folder.path("plan.prj").view()};
};

TEST_F(ScheduleCommand, movesOnceAndSaysWhat)
{
    save({aTask("dig").lasting(5_d), aTask("roof").after("dig")});
    std::string const before = bytes();
    auto const tried = test::ran({"schedule", file, "--dry-run", "--json"});
    auto const answer = nlohmann::json::parse(tried.out);
    EXPECT_EQ(tried.ending, 0) << tried.err;
    EXPECT_EQ(answer["moved"][0]["task"], "roof");
    EXPECT_EQ(answer["moved"][0]["from"], "2004-01-05T09:00");
    EXPECT_EQ(answer["moved"][0]["to"], "2004-01-12T09:00");
    EXPECT_EQ(bytes(), before);
    auto const done = test::ran({"schedule", file});
    EXPECT_NE(done.out.find("2  roof  2004-01-05T09:00  2004-01-12T09:00"), std::string::npos) << done.out;
    std::string const after = bytes();
    EXPECT_NE(after, before);
    EXPECT_NE(test::ran({"schedule", file}).out.find("0 of 2 rows moved"), std::string::npos);
    EXPECT_EQ(bytes(), after);
}

TEST_F(ScheduleCommand, refusesACircleInOneLineAndLeavesTheFile)
{
    save({aTask("dig\n").after("roof"), aTask("frame").after("dig\n"), aTask("roof").after("frame"),
          aTask("x").after("roof")});
    std::string const before = bytes();
    auto const ran = test::ran({"schedule", file});
    EXPECT_EQ(ran.ending, 1);
    EXPECT_EQ(ran.err, "orvane: " + file +
                           ": links go round in a circle: \"dig?\", \"frame\", \"roof\", and back to \"dig?\"\n");
    EXPECT_EQ(bytes(), before);
}

}  // namespace
