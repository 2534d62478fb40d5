#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"
#include "tests/support/watcher.h"

using namespace orvane;

namespace
{

// The outline alone: names by depth, "-" for a blank row.
std::string outline(CTaskArray const & tasks)
{
    std::string result;
    for (CTask const & task : tasks)
    {
        if (!result.empty()) result += ' ';
        result += task.isValid() ? std::string(task.getName().view()) : "-";
        for (CLink const & link : task.getUpstreamLinks()) result += link.getUpstreamTaskID().isNULL() ? "" : "<";
        if (task.getSubTasks()) result += '(' + outline(*task.getSubTasks()) + ')';
    }
    return result;
}

// a, b(c d(e f) -), g<a, h<d, i(j<c -)
Plan & build(Plan & plan)
{
    plan.add(aTask("a"));
    plan.add(aTask("b").with({aTask("c"), aTask("d").with({aTask("e"), aTask("f")}), aBlank()}));
    plan.add(aTask("g").after("a"));
    plan.add(aTask("h").after("d"));
    plan.add(aTask("i").with({aTask("j").after("c"), aBlank()}));
    return plan;
}

struct Case
{
    std::vector<std::string> names;
    char const * after;
};

TEST(RemovalRules, RemoveTakesRowsAndTheirLinks)
{
    Case const cases[] = {
        {{}, "a b(c d(e f) -) g< h< i(j< -)"},
        {{"a", "a", "g"}, "b(c d(e f) -) h< i(j< -)"},
        {{"c"}, "a b(d(e f) -) g< h< i(j -)"},
        {{"e", "f"}, "a b(c d -) g< h< i(j< -)"},
        // Of a summary task the links of its children go; its own stay, and dangle.
        {{"d"}, "a b(c -) g< h< i(j< -)"},
        {{"b", "c", "e"}, "a g< h i(j -)"},
        {{"e", "d", "b"}, "a g< h< i(j -)"},
        // The last valid child takes the blank ones along.
        {{"j"}, "a b(c d(e f) -) g< h< i"},
        {{"c", "d"}, "a b g< h< i(j -)"},
    };
    for (Case const & each : cases)
    {
        for (int context = 1; context <= 3; ++context)
        {
            Plan plan;
            build(plan);
            CTaskIDArray const ids = plan.ids(each.names);
            CRulesCheckerContext role;
            role = context;
            plan.act([&](auto & rules) { rules.setSelectedTaskID(plan.ids({"a", "h"})); });
            EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeTasks(ids); }, role));
            EXPECT_EQ(outline(plan.project.getAllTasks()), each.after);
            EXPECT_EQ(plan.project.getSelectedTaskID().GetSize(), context == 2 ? 2 : 0);
            for (CTaskID const & id : ids)
            {
                CTaskPresentation presentation;
                EXPECT_FALSE(plan.project.getTaskPresentation(id, presentation));
            }
        }
    }
}

TEST(RemovalRules, TheSelectionItselfCanBeRemovedOrCleared)
{
    for (bool const remove : {true, false})
    {
        Plan plan;
        build(plan);
        plan.act([&](auto & rules) { rules.setSelectedTaskID(plan.ids({"a", "b", "d", "e"})); });
        CTaskIDArray const & selection = plan.project.getSelectedTaskID();
        EXPECT_TRUE(plan.act([&](auto & rules)
                             { return remove ? rules.removeTasks(selection) : rules.clearTasks(selection); }));
        EXPECT_EQ(outline(plan.project.getAllTasks()), remove ? "g h i(j -)" : "- - g h i(j -)");
    }
}

TEST(RemovalRules, ClearLeavesBlankRows)
{
    Case const cases[] = {
        {{"a", "a"}, "- b(c d(e f) -) g h< i(j< -)"},
        {{"c"}, "a b(- d(e f) -) g< h< i(j -)"},
        {{"e"}, "a b(c d(- f) -) g< h< i(j< -)"},
        // All children blank: they go, and the parent is a plain task again.
        {{"e", "f"}, "a b(c d -) g< h< i(j< -)"},
        {{"d"}, "a b(c - -) g< h i(j< -)"},
        {{"c", "d"}, "a b g< h i(j -)"},
        {{"e", "b", "f"}, "a - g< h i(j -)"},
    };
    for (Case const & each : cases)
    {
        Plan plan;
        build(plan);
        CTaskIDArray const ids = plan.ids(each.names);
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.clearTasks(ids); }));
        EXPECT_EQ(outline(plan.project.getAllTasks()), each.after);
        for (CTaskID const & id : ids)
        {
            CTask const * const row = plan.project.getTask(id);
            if (!row) continue;
            EXPECT_TRUE(row->getName().IsEmpty() && !row->getDuration().isValid());
            CTaskPresentation presentation;
            EXPECT_TRUE(plan.project.getTaskPresentation(id, presentation));
        }
    }
}

TEST(RemovalRules, AParentThatMayHaveNoChildrenKeepsThem)
{
    Plan plan({aBlank("gap").with({aTask("x"), aTask("y").after("x")})});
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeTasks(plan.ids({"x"})); }));
    EXPECT_EQ(outline(plan.project.getAllTasks()), "-(x y)");
    EXPECT_EQ(plan.project.getTotalNumberOfTasks(), 0);
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.clearTasks(plan.ids({"x", "y", "gap"})); }));
    EXPECT_EQ(outline(plan.project.getAllTasks()), "-(- -)");
}

TEST(RemovalRules, TheSiblingsOfWhatWentAreReportedAsChanged)
{
    Plan plan;
    build(plan);
    Watcher watcher(
        [&]
        {
            std::string changed;
            for (char const * name : {"a", "b", "d", "e", "f", "g", "h", "i", "j"})
                if (plan[name].getChanged()) changed += name;
            return changed;
        });
    plan.act([&](auto & rules) { return rules.removeTasks(plan.ids({"c"})); });
    EXPECT_EQ(watcher.seen, std::vector<std::string>{"bdefij"});
    // Only on a transaction server the critical path stays as it was after a removal without links.
    CProjectConfig::setShowCriticalPath(1);
    for (int context = 1; context <= 3; ++context)
    {
        CRulesCheckerContext role;
        role = context;
        Plan one({aTask("a").lasting(3_d), aTask("b")});
        one.project.updateCriticalPath();
        ASSERT_TRUE(one.project.isInCriticalPath(one.id("a")));
        one.act([&](auto & rules) { return rules.removeTasks(one.ids({"a"})); }, role);
        EXPECT_EQ(one.project.isInCriticalPath(one.id("b")), context != 2);
    }
    CProjectConfig::setShowCriticalPath(0);
}

}  // namespace
