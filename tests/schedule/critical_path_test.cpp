#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plain_links.h"
#include "tests/support/task_history.h"

using namespace orvane;
using namespace orvane::test;

namespace
{

class CriticalPath : public testing::Test
{
protected:
    CriticalPath() { CProjectConfig::setShowCriticalPath(1); }
    ~CriticalPath() override { CProjectConfig::setShowCriticalPath(0); }
};

std::string join(CStringArray const & lines)
{
    std::string all;
    for (CString const & line : lines) all += line.view();
    return all;
}

// End task, length and the chain as text.
std::string pathOf(Plan & plan)
{
    plan.project.updateCriticalPath();
    CCriticalPathCachedData const & path = plan.project.getCriticalPath();
    CStringArray lines;
    path.getCriticalPathDescription(lines);
    return text(path.getDurationOfCriticalPath()) + ' ' + join(lines);
}

TEST_F(CriticalPath, IsTheLongestChainOfLinkedWork)
{
    CLinkType const ss = CLinkType::StartToStart, ff = CLinkType::FinishToFinish;
    auto const a = aTask("a").lasting(2_d);
    auto const b = aTask("b").lasting(3_d);
    auto const c = aTask("c").lasting(1_d);
    std::pair<std::vector<TaskDraft>, char const *> const cases[] = {
        {{}, "0 "},
        // Lags and places in the tree count for nothing.
        {{a, TaskDraft(b).after("a", CLinkType::FinishToStart, 90_d)}, "5d [a]-Finish To Start->[b]"},
        {{aTask("s").with({TaskDraft(b).after("a"), a}), c}, "5d [a]-Finish To Start->[b]"},
        // What leaves the start of b takes b off again, what arrives at the finish adds nothing.
        {{a, TaskDraft(b).after("a"), aTask("c").lasting(4_d).after("b", ss)},
         "6d [a]-Finish To Start->[b]-Start To Start->[c]"},
        {{a, TaskDraft(b).after("a"), TaskDraft(c).after("b", ff)},
         "5d [a]-Finish To Start->[b]-Finish To Finish->[c]"},
        // Of equals the last: of links, of ends, of a task alone and a chain.
        {{a, aTask("a2").lasting(2_d), TaskDraft(b).after("a").after("a2")}, "5d [a2]-Finish To Start->[b]"},
        // A task that others hang off ends no chain, but may be the longest alone.
        {{a, aTask("b").lasting(9_d).after("a", ff), TaskDraft(c).after("b", ss)}, "9d [b]"},
        // Only blank tasks before it: the chain has no length, the task alone has.
        {{aBlank("x"), TaskDraft(b).after("x")}, "3d [b]"},
        {{aBlank("x"), aTask("k").keyDate().after("x")}, "? [k]"},
    };
    for (auto const & [tasks, path] : cases)
    {
        Plan plan(tasks);
        EXPECT_EQ(pathOf(plan), path);
    }
}

TEST_F(CriticalPath, AnswersWhatLiesOnIt)
{
    Plan plan({aTask("s").with({aTask("a"), aTask("t").with({aTask("b").after("a")})}), aTask("c").after("b"),
               aTask("d").after("a"), aTask("u").with({aTask("e")})});
    plan.project.updateCriticalPath();
    CProject const & project = plan.project;
    std::string tasks, parents;
    for (CTask const * task : everyTask(project))
    {
        if (project.isInCriticalPath(task->getID())) tasks += task->getName();
        if (project.hasChildrenInCriticalPath(*task)) parents += task->getName();
    }
    EXPECT_EQ(tasks, "abc");
    EXPECT_EQ(parents, "st");
    EXPECT_EQ(project.getCriticalPath().getEndTaskInLongestChain(), &plan["c"]);
    EXPECT_TRUE(project.isInCriticalPath(plan.link("a", "b").getID()));
    EXPECT_FALSE(project.isInCriticalPath(plan.link("a", "d").getID()));
}

TEST_F(CriticalPath, StopsAtTheEndsOfSeconds)
{
    long const most = 2147483640;
    Plan plan({aTask("a").lasting(CProjectDuration(most)), aTask("b").lasting(CProjectDuration(most)).after("a"),
               aTask("c").lasting(1_d).after("b", CLinkType::StartToStart)});
    plan.project.updateCriticalPath();
    EXPECT_EQ(plan.project.getCriticalPath().getDurationOfCriticalPath(), CProjectDuration(most));
}

// ---- against the plain judge ------------------------------------------------------------------------

void expectAsJudged(CProject & project, Memory memory)
{
    project.updateCriticalPath();
    CCriticalPathCachedData const & path = project.getCriticalPath();
    PlainChain plain = plainCriticalPath(project, memory);
    // It is kept by its identifier.
    if (plain.end) plain.end = project.getTask(plain.end->getID());
    EXPECT_EQ(path.getEndTaskInLongestChain(), plain.end);
    EXPECT_EQ(text(path.getDurationOfCriticalPath()), text(plain.length));
    std::vector<CString> links, plainLinks;
    for (CLink const & link : path.getLinksInCriticalPath()) links.push_back(link.getID().toString());
    for (CLink const * link : plain.links) plainLinks.push_back(link->getID().toString());
    EXPECT_EQ(links, plainLinks);
}

TEST_F(CriticalPath, AgreesWithEveryRoadOfSmallPlans)
{
    for (unsigned seed = 0; seed < 20000 && !HasFailure(); ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Plan plan(randomTasks(random, 1 + static_cast<int>(seed % 8)));
        for (bool const withCircles : {false, true})
        {
            linkAtRandom(plan, random, withCircles);
            expectAsJudged(plan.project, withCircles ? Memory::ofTasks : Memory::none);
        }
    }
}

// What the path keeps of the plan must never be older than the plan.
TEST_F(CriticalPath, AgreesThroughHistoriesOfEdits)
{
    for (unsigned seed = 0; seed < 400 && !HasFailure(); ++seed)
    {
        Plan plan;
        TaskHistory history(seed, plan.tasks(), &plan.project);
        std::mt19937 random(seed);
        std::string edits;
        for (int each = 0; each < 120 && !HasFailure(); ++each)
        {
            edits += history.step() + '\n';
            std::vector<CTask const *> const all = everyTask(plan.project);
            if (!all.empty() && history.below(2))
                const_cast<CTask *>(all[random() % all.size()])->setUpstreamLinks(randomLinks(random, all));
            if (history.below(3) == 0) plan.derive();
            SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + edits);
            expectAsJudged(plan.project, Memory::ofTasks);
        }
    }
}

// ---- size -------------------------------------------------------------------------------------------

// Tasks in a row of roots; links name their upstream tasks by number.
void fill(CProject & project, int count, auto const & upstreamOf)
{
    std::vector<CTaskID> ids(static_cast<std::size_t>(count));
    CTask const model = aTask("").make();
    CTaskArray & tasks = const_cast<CTaskArray &>(project.getAllTasks());
    for (int each = 0; each < count; ++each)
    {
        CTask & task = tasks.addTask(model);
        task.setProject(&project);
        task.setID(ids[static_cast<std::size_t>(each)]);
        CLinkArray links;
        for (int upstream : upstreamOf(each))
            links.Add(CLink(ids[static_cast<std::size_t>(upstream)], CLinkType::FinishToStart));
        task.setUpstreamLinks(links);
    }
}

TEST_F(CriticalPath, ChainsAreAsLongAsThePlan)
{
    constexpr int count = 200000;
    CProject project(nullptr, false);
    // Upward, so that nothing is measured when it is asked for.
    fill(project, count, [](int task) { return task + 1 < count ? std::vector{task + 1} : std::vector<int>(); });
    project.updateCriticalPath();
    EXPECT_EQ(project.getCriticalPath().getLinksInCriticalPath().GetSize(), count - 1);
    EXPECT_EQ(project.getCriticalPath().getEndTaskInLongestChain(), project.getTask(0));
    EXPECT_FALSE(project.getTask(0)->isInCircularChain());
    EXPECT_TRUE(project.getTask(0)->isUpstream(project.getTask(count - 1)->getID()));
    EXPECT_FALSE(project.getTask(0)->isUpstream(CTaskID()));
    CStringArray lines;
    project.getCriticalPath().getCriticalPathDescription(lines);
    EXPECT_EQ(lines.GetSize(), count);
}

TEST_F(CriticalPath, RoadsMayBeBeyondCount)
{
    // A ladder: two tasks abreast, each after both of the rung before.
    CProject project(nullptr, false);
    fill(project, 120,
         [](int task) {
             return task < 2 ? std::vector<int>() : std::vector{task / 2 * 2 - 2, task / 2 * 2 - 1};
         });
    project.updateCriticalPath();
    EXPECT_EQ(text(project.getCriticalPath().getDurationOfCriticalPath()), "60d");
    EXPECT_EQ(project.getCriticalPath().getEndTaskInLongestChain(), project.getTask(119));
    EXPECT_FALSE(project.getTask(119)->isInCircularChain());
    EXPECT_FALSE(project.getTask(119)->isUpstream(CTaskID()));
}

}  // namespace
