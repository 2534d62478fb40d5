#include <gtest/gtest.h>

#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// A moment of the week in which the tests add tasks: what is added starts on the next working morning.
class NewTasks : public testing::Test
{
protected:
    ClockScope clock{"01-07 15:30"_t};
    Plan plan;

    std::string add(auto const & rule)
    {
        plan.act(rule);
        return digest(plan.project);
    }
};

TEST_F(NewTasks, StandBehindTheirBlankRows)
{
    EXPECT_EQ(add([](auto & rules) { EXPECT_TRUE(rules.addTaskWithName("dig", 0)); }),
              "dig: 01-07 09:00 > 01-07 17:00 1d\n");
    EXPECT_EQ(add([](auto & rules) { EXPECT_TRUE(rules.addTaskWithName("", -3)); }),
              "dig: 01-07 09:00 > 01-07 17:00 1d\n: 01-07 09:00 > 01-07 17:00 1d\n");
    clock.set("01-10 10:00"_t);
    EXPECT_EQ(add([](auto & rules) { EXPECT_TRUE(rules.addTaskWithDuration(12_h, 2)); }),
              "dig: 01-07 09:00 > 01-07 17:00 1d\n: 01-07 09:00 > 01-07 17:00 1d\n-\n-\n"
              "New Task: 01-12 09:00 > 01-13 13:00 1d4h\n");
    EXPECT_EQ(plan.project.getNumberOfTasks(), 5);
    EXPECT_EQ(plan.project.getTotalNumberOfTasks(), 3);
    CCompanyID const company = plan.project.getCurrentUser()->getCompanyID();
    for (CTask const & task : plan.project.getAllTasks())
    {
        CTaskPresentation presentation;
        EXPECT_TRUE(plan.project.getTaskPresentation(task.getID(), presentation));
        EXPECT_EQ(task.getSupplyChain().getSupplierID(), company);
    }
}

TEST_F(NewTasks, TakeADurationOrAnEnd)
{
    struct
    {
        CProjectTime time;
        bool isFinish;
        char const * expected;
    } const cases[] = {
        {"01-09 17:00"_t, true, "01-09 09:00 > 01-09 17:00"},  {"01-09 12:00"_t, true, "01-08 12:00 > 01-09 12:00"},
        {"01-11 12:00"_t, true, "01-09 09:00 > 01-09 17:00"},  {"01-09 09:00"_t, true, "01-08 09:00 > 01-08 17:00"},
        {"01-09 17:00"_t, false, "01-12 09:00 > 01-12 17:00"}, {"01-09 12:00"_t, false, "01-09 12:00 > 01-12 12:00"},
        {"01-11 12:00"_t, false, "01-12 09:00 > 01-12 17:00"}, {"?"_t, true, "01-07 09:00 > 01-07 17:00"},
        {"?"_t, false, "01-07 09:00 > 01-07 17:00"},
    };
    for (auto const & each : cases)
    {
        Plan one;
        EXPECT_TRUE(one.act([&](auto & rules) { return rules.addTaskWithFinish(each.time, 0, each.isFinish); }));
        EXPECT_EQ(digest(one.project), "New Task: " + std::string(each.expected) + " 1d\n")
            << text(each.time) << each.isFinish;
    }
    struct
    {
        CProjectDuration given;
        char const * expected;
    } const durations[] = {{0_m, "1m"},
                           {CProjectDuration(-60), "1m"},
                           {CProjectDuration(119), "1m"},
                           {2_m, "2m"},
                           {CProjectDuration(), "1d"}};
    for (auto const & each : durations)
    {
        Plan one;
        EXPECT_TRUE(one.act([&](auto & rules) { return rules.addTaskWithDuration(each.given, 0); }));
        EXPECT_EQ(text(one.project.getTask(0)->getDuration()), each.expected);
    }
}

TEST_F(NewTasks, AreSelectedWhereTheUserActed)
{
    for (int context = 1; context <= 3; ++context)
    {
        for (int rule = 0; rule < 3; ++rule)
        {
            CRulesCheckerContext role;
            role = context;
            plan.act(
                [&](auto & rules)
                {
                    rules.setSelectedTaskID(CTaskIDArray());
                    if (rule == 0) rules.addTaskWithName("x", 1);
                    if (rule == 1) rules.addTaskWithDuration(1_d, 1);
                    if (rule == 2) rules.addTaskWithFinish("01-09 17:00"_t, 1, true);
                },
                role);
            CTask const & last = *plan.project.getTask(plan.project.getNumberOfTasks() - 1);
            CTaskIDArray expected;
            if (context == 1) expected.Add(last.getID());
            EXPECT_TRUE(plan.project.getSelectedTaskID() == expected) << context << rule;
            EXPECT_EQ(plan.project.getPrimarySelectedTaskID() == last.getID(), context == 1);
        }
    }
}

TEST_F(NewTasks, StayWithoutASupplyChainWhenNobodyIsLoggedIn)
{
    CProject nobody((CProjectData()));
    ASSERT_FALSE(nobody.getCurrentUser());
    CLocalRulesChecker rules(&nobody, CRulesCheckerContext::OriginatingClient);
    EXPECT_FALSE(rules.addTaskWithName("dig", 4));
    EXPECT_FALSE(rules.addTaskWithDuration(2_d, 1));
    EXPECT_FALSE(rules.addTaskWithFinish("01-09 17:00"_t, 1, true));
    // No blank rows, no place in time, no selection; but the tasks and their presentations.
    EXPECT_EQ(digest(nobody), "dig: 01-07 09:00 > 01-07 17:00 1d\nNew Task: 01-07 09:00 > 01-08 17:00 2d\n"
                              "New Task: 01-07 09:00 > 01-07 17:00 1d\n");
    EXPECT_TRUE(nobody.getSelectedTaskID().IsEmpty());
    EXPECT_EQ(nobody.getPresentationData().getTaskPresentations().GetCount(), 3);
    EXPECT_TRUE(nobody.getTask(0)->getSupplyChain().getSupplierID().isNULL());
}

}  // namespace
