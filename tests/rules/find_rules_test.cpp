// Finding and replacing, against a flat list of the rows that can be seen.

#include <algorithm>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "config/text_search.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

using Rows = std::vector<CTask const *>;

// All rows in their order, or those that a blank task does not hide.
Rows rowsOf(CTaskArray const & tasks, bool all)
{
    Rows rows;
    for (CTask const & task : tasks)
    {
        if (!all && !task.isValid()) continue;
        rows.push_back(&task);
        if (task.getSubTasks()) std::ranges::copy(rowsOf(*task.getSubTasks(), all), std::back_inserter(rows));
    }
    return rows;
}

// A forest of numbered tasks, some of them blank, whose names hold a few short words.
std::vector<TaskDraft> randomForest(std::mt19937 & random, int & number, int depth = 0)
{
    char const * const words[] = {"", "a", "A", "aa", "ab", "b a", "a_b", "xa", "aaa", "bAb", "%s"};
    std::vector<TaskDraft> drafts;
    for (auto left = random() % 4 + (depth == 0); left > 0; --left)
    {
        std::string const name = std::to_string(++number) + '/' + words[random() % std::size(words)];
        drafts.push_back(random() % 6 ? aTask(name) : aBlank(name));
        if (depth < 3 && random() % 2) drafts.back().with(randomForest(random, number, depth + 1));
    }
    return drafts;
}

struct Search
{
    CString text;
    bool matchCase;
    bool wholeWord;

    explicit Search(std::mt19937 & random)
        : text(std::vector{"a", "A", "aa", "ab", "b", "%s"}[random() % 6]),
          matchCase(random() % 2),
          wholeWord(random() % 2)
    {
    }
    bool matches(CTask const & task) const { return isStringMatch(text, task.getName(), matchCase, wholeWord); }
    CString replaced(CTask const & task, CString const & by) const
    {
        return replaceSubString(task.getName(), text, by, matchCase, wholeWord);
    }
};

// The task to be found from the current one, which may be hidden, unknown or none.
CTask const * expectedNext(Rows rows, CTaskID const & current, bool forward, Search const & search)
{
    if (!forward) std::ranges::reverse(rows);
    if (!current.isNULL())
    {
        auto const at = std::ranges::find_if(rows, [&](CTask const * task) { return task->getID() == current; });
        if (at == rows.end()) return nullptr;
        std::ranges::rotate(rows, at + 1);
        rows.pop_back();
    }
    auto const found = std::ranges::find_if(rows, [&](CTask const * task) { return search.matches(*task); });
    return found == rows.end() ? nullptr : *found;
}

TEST(FindRules, GoesThroughTheRowsThatAreNotHidden)
{
    for (unsigned seed = 0; seed < 150; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        int number = 0;
        Plan plan(randomForest(random, number));
        Rows const all = rowsOf(plan.tasks(), true);
        for (int step = 0; step < 30; ++step)
        {
            CRecordingHost host;
            CLocalRulesChecker rules(&plan.project, CRulesCheckerContext::OriginatingClient);
            if (random() % 4 == 0) rules.setPrimarySelectedTaskID(random() % 2 ? CTaskID::getNULL() : CTaskID());
            if (random() % 4 == 0) rules.setPrimarySelectedTaskID(all[random() % all.size()]->getID());
            CTaskID const current(plan.project.getPrimarySelectedTaskID());
            Search const search(random);
            bool const forward = random() % 2;
            CTask const * const next = expectedNext(rowsOf(plan.tasks(), false), current, forward, search);
            EXPECT_EQ(rules.findNext(search.text, forward, search.matchCase, search.wholeWord), next != nullptr);
            EXPECT_EQ(plan.project.getPrimarySelectedTaskID(), next ? next->getID() : current);
            CTaskIDArray const & selected = plan.project.getSelectedTaskID();
            EXPECT_TRUE(!next || (selected.GetSize() == 1 && selected.GetAt(0) == next->getID()));
            CTask const * const stays = plan.project.getTask(current);
            EXPECT_EQ(host.boxes.size(), next || (stays && search.matches(*stays)) ? 0U : 1U);
            for (ShownBox const & box : host.boxes)
                EXPECT_EQ(box.text, "Cannot find the string\"" + search.text + "\"");
        }
        Search const search(random);
        CString const by(std::vector{"", "b", "aXa", "x", "\n", "%s%n"}[random() % 6]);
        std::map<CTask const *, CString> expected;
        for (CTask const * task : all) expected[task] = task->getName();
        for (CTask const * task : rowsOf(plan.tasks(), false))
            if (search.matches(*task) && by != "\n") expected[task] = search.replaced(*task, by);
        CLocalRulesChecker(&plan.project, CRulesCheckerContext::TransactionServer)
            .replaceAll(search.text, by, search.matchCase, search.wholeWord);
        for (CTask const * task : all) EXPECT_EQ(task->getName(), expected[task]);
    }
}

TEST(FindRules, ReplaceCurrentChangesOneNameWithinTheLimits)
{
    std::string const longest(1024, 'a');
    std::tuple<std::string, std::string, std::string, bool, std::string> const cases[] = {
        {"a wall", "a", "aa", true, "aa waall"},
        {"a wall", "wall", "100%\n", false, "a wall"},
        {"a wall", "WALL", "100% %s", true, "a 100% %s"},
        {longest, "a", "b", true, std::string(1024, 'b')},
        {longest, "a", "ab", false, longest},
        // What does not match is sought: here the other task, there the text itself.
        {"wall", "other", "x", true, "wall"},
        {"wall", "%d", "x", false, "wall"},
    };
    for (auto const & [name, text, by, result, after] : cases)
    {
        SCOPED_TRACE(text + " by " + by);
        Plan plan({aTask(name), aTask("other")});
        CTaskID const id = plan.id(name);
        CRecordingHost host;
        EXPECT_EQ(plan.act(
                      [&](auto & rules)
                      {
                          rules.setPrimarySelectedTaskID(id);
                          return rules.replaceCurrent(text.c_str(), by.c_str(), true, false, false);
                      }),
                  result);
        EXPECT_EQ(plan.project.getTask(id)->getName(), after.c_str());
        EXPECT_EQ(plan.project.getPrimarySelectedTaskID() == id, text != "other");
        EXPECT_EQ(host.boxes.size(), text == "%d" ? 1U : 0U);
    }
}

}  // namespace
