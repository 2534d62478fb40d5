#include <memory>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"
#include "tests/support/watcher.h"

using namespace orvane;

namespace
{

using Rule = std::function<bool(CLocalRulesChecker &, CTaskID const &)>;

CTaskStatus status(int number)
{
    CTaskStatus result;
    result = number;
    return result;
}

// One rule on one task of each kind: what it answers, by the order of `kinds`, and what it did to a plain task.
std::vector<TaskDraft> kinds()
{
    return {aTask("plain").from("01-06 09:00"_t).lasting(2_d),
            aBlank("blank"),
            aTask("summary").with({aTask("child").from("01-06 09:00"_t)}),
            aTask("key date").keyDate(),
            aTask("started").started("01-06 10:00"_t).lasting(2_d),
            aTask("finished").finished("01-06 10:00"_t, "01-07 12:00"_t),
            aTask("constrained").constrained()};
}

class TaskRules : public testing::Test
{
protected:
    // Wednesday afternoon: a blank task that becomes real starts on the day's morning and lasts a day.
    ClockScope clock{"01-07 15:30"_t};
    Plan plan{kinds()};

    bool act(std::string const & name, Rule const & rule)
    {
        CTaskID const id = plan.id(name);
        return plan.act([&](auto & rules) { return rule(rules, id); });
    }
    // The answers as a string of + and -, for each kind in a plan of its own.
    static std::string answers(Rule const & rule)
    {
        std::string result;
        for (TaskDraft const & kind : kinds())
        {
            Plan one(kinds());
            CTaskID const id = one.id(kind.name);
            result += one.act([&](auto & rules) { return rule(rules, id); }) ? '+' : '-';
        }
        return result;
    }
    std::string line(std::string const & name) const
    {
        std::string const all = digest(plan.project);
        auto const first = all.find(name + ": ");
        return all.substr(first + name.size() + 2, all.find('\n', first) - first - name.size() - 2);
    }
};

TEST_F(TaskRules, EachRefusesTheKindsOfTaskItCannotChange)
{
    // Of plain, blank, summary, key date, started, finished and constrained tasks.
    std::tuple<char const *, Rule, char const *> const cases[] = {
        {"name", [](auto & r, auto & id) { return r.changeTaskName(id, "x"); }, "+++++++"},
        {"hold", [](auto & r, auto & id) { return r.changeTaskStatus(id, status(1)); }, "++--+++"},
        {"to started", [](auto & r, auto & id) { return r.changeTaskStatus(id, status(6)); }, "----++-"},
        {"duration", [](auto & r, auto & id) { return r.changeTaskDuration(id, 3_d, true); }, "++----+"},
        {"start", [](auto & r, auto & id) { return r.changeTaskStart(id, "01-08 10:00"_t); }, "++-+---"},
        {"start at night", [](auto & r, auto & id) { return r.changeTaskStart(id, "01-08 08:59"_t); }, "-------"},
        {"finish", [](auto & r, auto & id) { return r.changeTaskFinish(id, "01-08 10:00"_t); }, "++-+---"},
        {"risk type", [](auto & r, auto & id) { return r.changeTaskRiskType(id, CRiskType::Additive); }, "+-----+"},
        {"calendar", [](auto & r, auto & id) { return r.changeTaskDominantCalendar(id, CCalendarID()); }, "+--+--+"},
        {"constraint", [](auto & r, auto & id) { return r.changeTaskConstraint(id, CTaskConstraint()); }, "+--+--+"},
        {"type", [](auto & r, auto & id) { return r.changeTaskType(id, CTaskType::KeyDate); }, "+--+--+"},
        {"start work", [](auto & r, auto & id) { return r.startTask(id, "01-07 09:00"_t); }, "+--+-++"},
        {"finish work", [](auto & r, auto & id) { return r.finishTask(id, "01-07 12:00"_t); }, "+--++-+"},
    };
    for (auto const & [name, rule, expected] : cases) EXPECT_EQ(answers(rule), expected) << name;
}

// ---- texts ------------------------------------------------------------------------------------------

TEST_F(TaskRules, TextsHaveLimits)
{
    std::tuple<CString, bool, bool> const cases[] = {
        {"", true, true},
        {CString('n', 1024), true, true},
        {CString('n', 1025), false, true},
        {CString('c', 8193), false, false},
        {CString("\xC3\xA4") + CString('n', 1023), false, true},
    };
    CTask const & task = *plan.project.getTask(0);
    for (auto const & [text, asName, asComments] : cases)
    {
        CLocalRulesChecker rules(&plan.project, CRulesCheckerContext::OriginatingClient);
        EXPECT_EQ(rules.changeTaskComments(task.getID(), text), asComments);
        EXPECT_EQ(rules.changeTaskName(task.getID(), text), asName) << text.GetLength();
        EXPECT_EQ(task.getName() == text, asName);
    }
    for (int code = 0; code < 256; ++code)
    {
        char const character = static_cast<char>(code);
        CString const text("a" + CString(character) + "b");
        bool const refused = (code >= 1 && code <= 8) || code == 16;
        CLocalRulesChecker rules(&plan.project, CRulesCheckerContext::OriginatingClient);
        EXPECT_EQ(rules.changeTaskComments(task.getID(), text), !refused) << code;
        EXPECT_EQ(rules.changeTaskName(task.getID(), text), !refused && code != 10) << code;
    }
}

// ---- what makes the critical path due ---------------------------------------------------------------

TEST_F(TaskRules, TheCriticalPathIsDueAfterSomeRulesOnly)
{
    std::pair<Rule, bool> const cases[] = {
        {[](auto & r, auto & id) { return r.changeTaskName(id, "x"); }, false},
        {[](auto & r, auto & id) { return r.changeTaskStatus(id, status(4)); }, true},
        {[](auto & r, auto & id) { return r.changeTaskDuration(id, 2_d, true); }, true},
        {[](auto & r, auto & id) { return r.changeTaskStart(id, "01-08 10:00"_t); }, false},
    };
    CProjectConfig::setShowCriticalPath(1);
    for (auto const & [rule, isDue] : cases)
    {
        for (bool const blank : {false, true})
        {
            Plan one(kinds());
            CTaskID const id = one.id(blank ? "blank" : "plain");
            Watcher watcher([&] { return one.project.getCriticalPathChanged() ? "due" : "not due"; });
            EXPECT_TRUE(one.act([&](auto & rules) { return rule(rules, id); }));
            EXPECT_EQ(watcher.seen.back(), blank || isDue ? "due" : "not due") << blank;
        }
    }
    CProjectConfig::setShowCriticalPath(0);
}

// ---- times ------------------------------------------------------------------------------------------

TEST_F(TaskRules, TimesMoveAgainstEachOther)
{
    std::tuple<char const *, char const *, Rule, char const *> const cases[] = {
        // "plain" is Tuesday 01-06 09:00 to Wednesday 01-07 17:00.
        {"longer backward", "plain", [](auto & r, auto & id) { return r.changeTaskDuration(id, 4_d, false); },
         "01-02 09:00 > 01-07 17:00 4d"},
        {"start", "plain", [](auto & r, auto & id) { return r.changeTaskStart(id, "01-09 16:00"_t); },
         "01-09 16:00 > 01-13 16:00 2d"},
        {"finish", "plain", [](auto & r, auto & id) { return r.changeTaskFinish(id, "01-12 11:00"_t); },
         "01-08 11:00 > 01-12 11:00 2d"},
        {"blank start", "blank", [](auto & r, auto & id) { return r.changeTaskStart(id, "01-14 10:00"_t); },
         "01-14 10:00 > 01-15 10:00 1d"},
        {"blank duration", "blank", [](auto & r, auto & id) { return r.changeTaskDuration(id, 2_d, false); },
         "01-06 09:00 > 01-07 17:00 2d"},
        {"blank, refused", "blank", [](auto & r, auto & id) { return !r.changeTaskStart(id, "01-10 10:00"_t); },
         "01-07 09:00 > 01-07 17:00 1d"},
    };
    std::unique_ptr<CProjectData> const before(plan.project.getCopyOfProjectData());
    for (auto const & [name, task, rule, after] : cases)
    {
        plan.project.setProjectData(before.get());
        EXPECT_TRUE(act(task, rule)) << name;
        EXPECT_EQ(line(task), after) << name;
    }
}

// ---- status and progress ----------------------------------------------------------------------------

TEST_F(TaskRules, AStartOrFinishPreparesTheStatusThatFollows)
{
    EXPECT_TRUE(act("plain",
                    [](auto & r, auto & id)
                    {
                        return !r.changeTaskStatus(id, status(6)) && r.startTask(id, "01-07 11:00"_t) &&
                               r.changeTaskStatus(id, status(6));
                    }));
    EXPECT_EQ(plan["plain"].getPredictedFinishTime(), "01-09 11:00"_t);
    EXPECT_EQ(line("plain"), "01-07 11:00 > 01-09 11:00 2d, Started");
    EXPECT_FALSE(act("plain", [](auto & r, auto & id) { return r.startTask(id, "01-07 12:00"_t); }));

    // What is finished can be started again, and forgets its finish.
    EXPECT_TRUE(act("finished", [](auto & r, auto & id) { return r.startTask(id, "01-08 09:00"_t); }));
    EXPECT_FALSE(plan["finished"].getActualFinishTime().isValid());
    // Its length is read between the new start and the old finish, five hours before.
    EXPECT_EQ(plan["finished"].getPredictedFinishTime(), "01-08 14:00"_t);
}

TEST_F(TaskRules, AFinishLiesBehindTheStart)
{
    // Actual start > predicted finish > actual finish.
    std::tuple<char const *, CProjectTime, char const *> const cases[] = {
        {"plain", "01-10 12:00"_t, "01-06 09:00 > 01-07 17:00 > 01-12 09:01"},
        {"plain", "01-06 09:00"_t, "01-02 09:00 > 01-07 17:00 > 01-06 09:01"},
        {"plain", "01-05 12:00"_t, "01-01 12:00 > 01-07 17:00 > 01-05 12:00"},
        {"started", "01-05 12:00"_t, "01-06 10:00 > 01-08 10:00 > 01-06 10:01"},
        {"key date", "01-05 12:00"_t, "01-05 09:00 > 01-05 09:00 > 01-05 12:00"},
    };
    for (auto const & [name, time, times] : cases)
    {
        Plan fresh(kinds());
        CTaskID const id = fresh.id(name);
        EXPECT_TRUE(fresh.act([&](auto & rules) { return rules.finishTask(id, time); }));
        CTask const & task = fresh[name];
        EXPECT_EQ(text(task.getActualStartTime()) + " > " + text(task.getPredictedFinishTime()) + " > " +
                      text(task.getActualFinishTime()),
                  times)
            << name << ' ' << text(time);
    }
}

// ---- kinds and flags --------------------------------------------------------------------------------

TEST_F(TaskRules, ATypeTakesEffectBeforeItsChecks)
{
    auto const toKeyDate = [](auto & r, auto & id) { return r.changeTaskType(id, CTaskType::KeyDate); };
    auto const toNormal = [](auto & r, auto & id) { return r.changeTaskType(id, CTaskType::Normal); };
    EXPECT_TRUE(act("plain", [](auto & r, auto & id) { return r.changeTaskStatus(id, status(3)); }));
    EXPECT_TRUE(act("plain", toNormal));
    EXPECT_EQ(line("plain"), "01-06 09:00 > 01-07 17:00 2d, Ready");
    EXPECT_TRUE(act("plain", toKeyDate));
    EXPECT_EQ(line("plain"), "01-06 09:00 > 01-06 09:00 0, Ready, key date");
    EXPECT_TRUE(act("plain", toNormal));
    EXPECT_EQ(line("plain"), "01-06 09:00 > 01-06 17:00 1d");
    EXPECT_TRUE(act("plain", [](auto & r, auto & id) { return r.changeTaskRiskBuffer(id, true); }));
    EXPECT_FALSE(act("plain", toKeyDate));
    EXPECT_EQ(line("plain"), "01-06 09:00 > 01-06 17:00 1d, key date, buffer");
}

TEST_F(TaskRules, CategoriesLiveAsLongAsATaskIsInThem)
{
    auto const into = [&](char const * task, char const * name)
    {
        EXPECT_TRUE(act(task, [&](auto & r, auto & id) { return r.changeTaskCategory(id, name); }));
        std::string all;
        for (CTaskCategory const & category : plan.project.getTaskCategories())
            all += std::string(category.getName().view()) + ' ';
        return all;
    };
    EXPECT_EQ(into("plain", "earth"), "earth ");
    EXPECT_EQ(into("child", "earth"), "earth ");
    EXPECT_EQ(plan["plain"].getCategoryID(), plan["child"].getCategoryID());
    EXPECT_EQ(into("plain", "steel"), "earth steel ");
    EXPECT_EQ(into("child", "steel"), "steel ");
    EXPECT_EQ(into("child", ""), "steel ");
    EXPECT_TRUE(plan["child"].getCategoryID().isNULL());
    EXPECT_EQ(into("plain", ""), "");
}

}  // namespace
