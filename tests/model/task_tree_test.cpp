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

TEST(TaskTree, RowsAreRepositioned)
{
    struct
    {
        int to, from;
        char const * after;
    } const cases[] = {{0, 2, "CAB"}, {2, 0, "BCA"}, {1, 1, "ABC"}, {0, 3, ""}, {3, 0, ""}, {-1, 0, ""}, {0, -1, ""}};
    for (auto const & each : cases)
    {
        CTaskArray array;
        for (char const * name : {"A", "B", "C"}) array.addTask(aTask(name).make());
        EXPECT_EQ(array.rePositionElements(each.to, each.from), *each.after != 0);
        std::string names;
        for (CTask const & task : array) names += task.getName();
        EXPECT_EQ(names, *each.after ? each.after : "ABC");
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
        for (int position : {1, -1}) task.insertSubTask(child, position);
        EXPECT_FALSE(task.isSummaryTask());
        task.insertSubTask(child, 0);
        EXPECT_EQ(task.isSummaryTask(), takes);
        task.setSubTasks(two);
        task.insertSubTask(child, 2);
        EXPECT_EQ(task.calculateNumberOfChildren(), takes ? 3 : 0);
        task.setSubTasks(CTaskArray());
        EXPECT_FALSE(task.getSubTasks());
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

TEST(TaskTree, ATaskCanBeAssignedFromItsOwnSubtreeAndToIt)
{
    Plan plan({aTask("a").with({aTask("b").with({aTask("c"), aTask("d")}), aTask("e")})});
    CTask & a = plan.writable("a");
    a = *a.getSubTasks()->GetAt(0).findTask(plan.id("b"));
    EXPECT_TRUE(a.getName() == "b" && a.calculateNumberOfChildren() == 2);
    a.setSubTasks(*a.getSubTasks());
    CTask & c = plan.writable("c");
    c = a;
    EXPECT_EQ(c.getParent(), &a);
    a = a;
    EXPECT_EQ(a.calculateNumberOfChildren(), 4);
    plan.tasks() = *a.getSubTasks();
    EXPECT_EQ(plan.project.getNumberOfTasks(), 2);
    EXPECT_EQ(plan.project.getTotalNumberOfTasks(), 4);
}

// ---- searches and places ----------------------------------------------------------------------------

TEST(TaskTree, SearchesFindWhatLiesBelow)
{
    Plan plan({aTask("a"), aTask("s").with({aTask("t").after("a"), aTask("u").with({aTask("v")})})});
    CTask const & s = plan["s"];
    CTask const & v = plan["v"];
    CLinkID const link = plan.link("a", "t").getID();
    EXPECT_TRUE(s.findTask(v.getID()) == &v && !s.findTask(plan.id("a")));
    EXPECT_TRUE(s.findTask(link) == &plan["t"] && !plan["u"].findTask(link));
    EXPECT_EQ(s.findTask(v.getSupplyChain().getID()), &v);
    EXPECT_TRUE(s.isDescendant(v.getID()));
    EXPECT_FALSE(s.isDescendant(s.getID()) || s.isDescendant(plan.id("a")));

    CProject const & project = plan.project;
    EXPECT_EQ(project.getTask(v.getSupplyChain().getID()), &v);
    EXPECT_FALSE(project.getTask(CTaskID::getNULL()) || project.getTask(CSupplyChainID::getNULL()));
    EXPECT_FALSE(project.getTask(-1) || project.getTask(2));
    EXPECT_EQ(project.getTaskParent(v.getID()), &plan["u"]);
    EXPECT_FALSE(project.getTaskParent(s.getID()) || project.getTaskParent(CTaskID()));
}

TEST(TaskTree, ATaskKnowsItsPlaceAmongItsSiblings)
{
    Plan plan({aTask("a"), aTask("s").with({aTask("t"), aTask("u"), aTask("v")})});
    std::string places;
    for (char const * name : {"a", "s", "t", "u", "v"})
    {
        CTask const & task = plan[name];
        places += std::to_string(task.getPositionInSiblings()) + (task.canMoveTaskUp() ? "up" : "") +
                  (task.canMoveTaskDown() ? "down " : " ");
    }
    EXPECT_EQ(places, "0down 1up 0down 1updown 2up ");
    CTask free;
    for (int const position : {0, -1})
    {
        EXPECT_EQ(free.getPositionInSiblings(), position);
        EXPECT_FALSE(free.canMoveTaskUp() || free.canMoveTaskDown());
        free.setProject(&plan.project);
    }
}

TEST(TaskTree, BlankTasksAndWhatLiesBelowThemDoNotCount)
{
    Plan plan({aTask("a"), aBlank(), aBlank("gap").with({aTask("lost")}),
               aTask("s").with({aTask("t"), aBlank(), aTask("u").with({aTask("v")})})});
    EXPECT_EQ(plan.project.getNumberOfTasks(), 4);
    EXPECT_EQ(plan.project.getTotalNumberOfTasks(), 5);
    EXPECT_EQ(plan.project.getNumberOfSubtasks(plan["s"]), 3);
}

}  // namespace
