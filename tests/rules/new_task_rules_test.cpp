#include <gtest/gtest.h>

#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// A moment of the week in which the tests add tasks: what is added starts on the day's morning.
class NewTasks : public testing::Test
{
protected:
    ClockScope clock{"01-07 15:30"_t};
};

TEST_F(NewTasks, StandBehindTheirBlankRows)
{
    Plan plan;
    EXPECT_TRUE(plan.act([](auto & rules) { return rules.addTaskWithName("", -3); }));
    clock.set("01-10 10:00"_t);
    EXPECT_TRUE(plan.act([](auto & rules) { return rules.addTaskWithDuration(12_h, 2); }));
    EXPECT_EQ(digest(plan.project),
              ": 01-07 09:00 > 01-07 17:00 1d\n-\n-\nNew Task: 01-12 09:00 > 01-13 13:00 1d4h\n");
}

TEST_F(NewTasks, TakeADurationOrAnEnd)
{
    std::tuple<CProjectTime, bool, char const *> const cases[] = {
        {"01-09 12:00"_t, true, "01-08 12:00 > 01-09 12:00"},  {"01-11 12:00"_t, true, "01-09 09:00 > 01-09 17:00"},
        {"01-09 09:00"_t, true, "01-08 09:00 > 01-08 17:00"},  {"01-09 17:00"_t, false, "01-12 09:00 > 01-12 17:00"},
        {"01-09 12:00"_t, false, "01-09 12:00 > 01-12 12:00"}, {"01-11 12:00"_t, false, "01-12 09:00 > 01-12 17:00"},
        {"?"_t, true, "01-07 09:00 > 01-07 17:00"},            {"?"_t, false, "01-07 09:00 > 01-07 17:00"},
    };
    for (auto const & [time, isFinish, expected] : cases)
    {
        Plan one;
        EXPECT_TRUE(one.act([&](auto & rules) { return rules.addTaskWithFinish(time, 0, isFinish); }));
        EXPECT_EQ(digest(one.project), "New Task: " + std::string(expected) + " 1d\n")
            << text(time) << isFinish;
    }
}

TEST_F(NewTasks, AreSelectedWhereTheUserActed)
{
    for (int number = 1; number <= 3; ++number)
    {
        Plan plan;
        EXPECT_TRUE(plan.act([](auto & rules) { return rules.addTaskWithName("x", 1); }, contextOf(number)));
        CTaskIDArray expected;
        if (number == 1) expected.Add(plan.project.getTask(1)->getID());
        EXPECT_TRUE(plan.project.getSelectedTaskID() == expected) << number;
        EXPECT_EQ(plan.project.getPrimarySelectedTaskID().isNULL(), number != 1);
    }
}

TEST_F(NewTasks, StayWithoutASupplyChainWhenNobodyIsLoggedIn)
{
    CProject nobody((CProjectData()));
    CLocalRulesChecker rules(&nobody, CRulesCheckerContext::OriginatingClient);
    EXPECT_FALSE(rules.addTaskWithName("dig", 4) || rules.addTaskWithDuration(2_d, 1) ||
                 rules.addTaskWithFinish("01-09 17:00"_t, 1, true));
    // No blank rows, no place in time, no selection; but the tasks and their presentations.
    EXPECT_EQ(digest(nobody), "dig: 01-07 09:00 > 01-07 17:00 1d\nNew Task: 01-07 09:00 > 01-08 17:00 2d\n"
                              "New Task: 01-07 09:00 > 01-07 17:00 1d\n");
    EXPECT_EQ(nobody.getPresentationData().getTaskPresentations().GetCount(), 3);
}

}  // namespace
