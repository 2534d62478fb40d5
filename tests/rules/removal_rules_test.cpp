#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

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

// What is removed or cleared, and the outline after it.
using Case = std::pair<std::vector<std::string>, char const *>;

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
    for (auto const & [names, after] : cases)
    {
        for (int context = 1; context <= 3; ++context)
        {
            Plan plan;
            build(plan);
            CTaskIDArray const ids = plan.ids(names);
            CRulesCheckerContext const role = contextOf(context);
            plan.act([&](auto & rules) { rules.setSelectedTaskID(plan.ids({"a", "h"})); });
            EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeTasks(ids); }, role));
            EXPECT_EQ(outline(plan.project.getAllTasks()), after);
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
        // All children blank: they go, and the parent is a plain task again.
        {{"e", "f"}, "a b(c d -) g< h< i(j< -)"},
        {{"c", "d"}, "a b g< h i(j -)"},
        {{"e", "b", "f"}, "a - g< h i(j -)"},
    };
    for (auto const & [names, after] : cases)
    {
        Plan plan;
        build(plan);
        CTaskIDArray const ids = plan.ids(names);
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.clearTasks(ids); }));
        EXPECT_EQ(outline(plan.project.getAllTasks()), after);
        for (CTaskID const & id : ids)
        {
            CTaskPresentation presentation;
            EXPECT_TRUE(!plan.project.getTask(id) || plan.project.getTaskPresentation(id, presentation));
        }
    }
}

}  // namespace
