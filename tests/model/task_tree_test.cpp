#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/task_history.h"

using namespace orvane;

namespace
{

// ---- places by a walk over the whole tree -----------------------------------------------------------

CTask const * searched(CTaskArray const & tasks, CTaskID const & id)
{
    for (CTask const & task : tasks)
        if (task.getID() == id) return &task;
    CTask const * found = nullptr;
    for (CTask const & task : tasks)
        if (!found && task.getSubTasks()) found = searched(*task.getSubTasks(), id);
    return found;
}

void expectPlacesAsWalked(CTaskArray const & roots, std::vector<CTaskArray *> const & arrays,
                          std::vector<CTaskID> const & ids)
{
    forEachTask(roots,
                [&](CTask const & task, CTask const * parent)
                {
                    ASSERT_EQ(task.getParent(), parent);
                    CTaskArray const & siblings = parent ? *parent->getSubTasks() : roots;
                    int const position = siblings.positionOf(task);
                    ASSERT_GE(position, 0);
                    ASSERT_EQ(&siblings.GetAt(position), &task);
                    ASSERT_EQ(roots.findInForest(task.getID()), searched(roots, task.getID()));
                    ASSERT_EQ(task.findTask(task.getID()), &task);
                });
    for (CTaskID const & id : ids)
    {
        ASSERT_EQ(roots.findInForest(id), searched(roots, id));
        for (CTaskArray const * array : arrays)
        {
            int const position = array->findByID(id);
            bool isHere = false;
            for (CTask const & task : *array) isHere = isHere || task.getID() == id;
            ASSERT_EQ(position >= 0, isHere);
            ASSERT_TRUE(!isHere || array->GetAt(position).getID() == id);
        }
    }
}

TEST(TaskTree, LookupsAgreeWithAWalkThroughAnyHistoryAndNoTaskIsLost)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CTask::resetCreatedAndDeletedCount();
        CLink::resetCreatedAndDeletedCount();
        // A project's forest, which has an index, and a free array, which has none.
        Plan plan;
        CTaskArray free;
        bool const isProject = seed % 4 != 0;
        CTaskArray & roots = isProject ? plan.tasks() : free;
        TaskHistory history(seed, roots, isProject ? &plan.project : nullptr);
        for (int step = 0; step < 150 && !testing::Test::HasFatalFailure(); ++step)
        {
            std::string const edit = history.step();
            SCOPED_TRACE("step " + std::to_string(step) + ": " + edit);
            int links = 0;
            for (CTask const * task : history.tasks()) links += task->getUpstreamLinks().GetSize();
            ASSERT_EQ(CTask::getCreated() - CTask::getDeleted(), static_cast<int>(history.tasks().size()));
            ASSERT_EQ(CLink::getCreated() - CLink::getDeleted(), links);
            // Not after every edit, so that the index also meets several in a row before it is asked.
            if (!isProject || history.below(3)) continue;
            expectPlacesAsWalked(roots, history.arrays(), history.metIDs());
        }
        forEachTask(roots, [&](CTask const & task, CTask const * parent) { EXPECT_EQ(task.getParent(), parent); });
    }
}

// ---- children ---------------------------------------------------------------------------------------

TEST(TaskTree, OnlySomeTasksTakeChildren)
{
    CTask const child = aTask("child").make();
    CTaskArray two;
    for (int each = 0; each < 2; ++each) two.addTask(child);
    std::pair<TaskDraft, bool> const cases[] = {
        {aTask("plain"), true}, {aBlank("blank"), false}, {aTask("key date").keyDate(), false}};
    for (auto const & [draft, takes] : cases)
    {
        CTask task = draft.make();
        for (int position : {1, -1, 0}) task.insertSubTask(child, position);
        EXPECT_EQ(task.calculateNumberOfChildren(), takes ? 1 : 0);
        task.setSubTasks(two);
        EXPECT_EQ(task.calculateNumberOfChildren(), takes ? 2 : 0);
    }
}

TEST(TaskTree, AnEmptyArrayOfChildrenIsNoneInACopy)
{
    CTask const plain = aTask("task").make();
    CTask emptied(plain);
    emptied.insertSubTask(plain, 0);
    emptied.getWritableSubTasks()->RemoveAll();
    EXPECT_FALSE(emptied == plain || plain == emptied);
    CTask const copy(emptied);
    EXPECT_FALSE(copy.getSubTasks());
    EXPECT_TRUE(copy == plain);
    emptied.deleteSubTasksIfEmpty();
    EXPECT_TRUE(emptied == plain);
}

// ---- searches and places ----------------------------------------------------------------------------

TEST(TaskTree, BlankTasksAndWhatLiesBelowThemDoNotCount)
{
    Plan plan({aTask("a"), aBlank(), aBlank("gap").with({aTask("lost")}),
               aTask("s").with({aTask("t"), aBlank(), aTask("u").with({aTask("v")})})});
    EXPECT_EQ(plan.project.getNumberOfTasks(), 4);
    EXPECT_EQ(plan.project.getTotalNumberOfTasks(), 5);
    EXPECT_EQ(plan.project.getNumberOfSubtasks(plan["s"]), 3);
}

}  // namespace
