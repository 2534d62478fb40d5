#include <gtest/gtest.h>

#include "tests/support/plain_links.h"
#include "tests/support/task_history.h"

using namespace orvane;
using namespace orvane::test;

namespace
{

TEST(TaskLinks, SearchesAgreeWithEveryRoadOfSmallPlans)
{
    for (unsigned seed = 0; seed < 20000 && !HasFailure(); ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        bool const withCircles = seed % 2 != 0;
        Memory const memory = withCircles ? Memory::ofTasks : Memory::none;
        Plan plan(randomTasks(random, 1 + static_cast<int>(seed % 8)));
        linkAtRandom(plan, random, withCircles);
        std::vector<CTask const *> const all = everyTask(plan.project);
        for (CTask const * task : all)
        {
            EXPECT_EQ(task->isInCircularChain(), plainIsInCircularChain(plan.project, *task)) << task->getName().view();
            for (CTask const * other : all)
                EXPECT_EQ(task->isUpstream(other->getID()),
                          plainIsUpstream(plan.project, *task, other->getID(), memory))
                    << task->getName().view() << other->getName().view();
        }
    }
}

// ---- what hangs off a task --------------------------------------------------------------------------

std::string names(CLinkArray const & links)
{
    std::string result;
    for (CLink const & link : links) result += ' ' + std::string(link.getID().toString().view());
    return result;
}

void expectAsWalked(CProject const & project, CTaskID const & id)
{
    CLinkArray links, plain;
    links.Add(CLink());
    project.getDownstreamLinks(id, links);
    for (CLink const * link : plainDownstreamLinks(project, id)) plain.Add(*link);
    EXPECT_EQ(names(links), names(plain));
    EXPECT_EQ(project.hasAnyDownstreamLinks(id), !plain.IsEmpty());
}

void expectAsWalked(CProject const & project, TaskHistory const & history)
{
    for (CTask const * task : everyTask(project))
    {
        expectAsWalked(project, task->getID());
        for (CLink const & link : task->getUpstreamLinks())
        {
            EXPECT_EQ(project.getTask(link.getID()), plainHolder(project, link.getID()));
            expectAsWalked(project, link.getUpstreamTaskID());
        }
    }
    for (CTaskID const & id : history.metIDs()) expectAsWalked(project, id);
    expectAsWalked(project, CTaskID::getNULL());
    EXPECT_EQ(project.getTask(CLinkID()), nullptr);
    EXPECT_EQ(project.getTask(CLinkID::getNULL()), nullptr);
}

TEST(TaskLinks, WhatHangsOffATaskIsKnownThroughHistoriesOfEdits)
{
    for (unsigned seed = 0; seed < 100 && !HasFailure(); ++seed)
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
            // Drops the links that dangle.
            if (history.below(20) == 0) plan.project.postSerialize();
            SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + edits);
            if (each % 3 == 0) expectAsWalked(plan.project, history);
        }
    }
}

TEST(TaskLinks, TheIdentifierMayLieInTheArrayThatIsEmptied)
{
    Plan plan({aTask("a"), aTask("s").after("a").with({aTask("t").after("a")})});
    CLinkArray links;
    plan.project.getDownstreamLinks(plan.id("a"), links);
    plan.project.getDownstreamLinks(links.GetAt(0).getUpstreamTaskID(), links);
    EXPECT_EQ(links.GetSize(), 2);
}

}  // namespace
