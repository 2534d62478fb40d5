#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>

#include "app/apply/rule_table.h"
#include "app/json/records.h"
#include "app/session.h"
#include "tests/app/whole_project.h"
#include "tests/support/command_run.h"

namespace orvane::test
{
namespace
{

using app::Json;

std::string textOfFile(std::string const & path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The answers of a run, line by line.
std::vector<Json> answersOf(Ran const & run)
{
    std::vector<Json> answers;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) answers.push_back(Json::parse(line));
    return answers;
}

std::string rule(std::string const & name, std::string const & arguments, std::string const & label = "")
{
    return R"({"rule": ")" + name + R"(", "args": [)" + arguments + "]" +
           (label.empty() ? "" : R"(, "as": ")" + label + '"') + "}";
}

std::string action(std::string const & rules)
{
    return R"({"action": "Test", "rules": [)" + rules + "]}\n";
}

class Apply : public ::testing::Test
{
protected:
    Apply() { app::Session::createNew(file, true, app::Session::Purpose::changing).save(); }

    Ran apply(std::string const & lines, std::vector<std::string> const & options = {})
    {
        std::vector<std::string> arguments{"apply", file, std::string(folder.write("a.jsonl", lines).view())};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return ran(arguments);
    }
    // The names of the root tasks, each with a comma.
    std::string tasks()
    {
        app::Session const session(file, app::Session::Purpose::reading);
        std::string names;
        for (CTask const & task : session.project().getAllTasks()) names += std::string(task.getName().view()) + ',';
        return names;
    }

    CScratchFolder folder;
    std::string file{folder.path("p.prj").view()};
};

TEST(ApplyTable, HoldsEveryOperationOfTheInterface)
{
    std::string const header = textOfFile(ORVANE_SOURCE_DIR "/src/rules/rules_checker.h");
    std::regex const operation(R"(virtual bool (\w+)\()");
    std::vector<std::string> declared, known;
    for (std::sregex_iterator each(header.begin(), header.end(), operation), end; each != end; ++each)
        declared.push_back((*each)[1]);
    for (app::Rule const & each : app::allRules()) known.emplace_back(each.name);
    ASSERT_GT(declared.size(), 100U);
    EXPECT_EQ(known, declared);
}

// Reading what was written, over a new record, gives back every field.
template <class Record>
void expectBack(Record const & record, CProject & project)
{
    Json json = app::toJson(record);
    // What is computed cannot be set.
    for (auto each = json.begin(); each != json.end();)
        each = each.key().starts_with("baseline") ? json.erase(each) : std::next(each);
    Record back;
    app::setFields(back, json, {.calendar = project.getProjectCalendar(), .project = &project});
    Json read = app::toJson(back);
    for (auto const & [name, value] : json.items()) EXPECT_EQ(app::jsonText(read[name]), app::jsonText(value)) << name;
}

TEST(RecordJson, GoesThereAndBack)
{
    WholeProject whole;
    CProject & project = whole.plan.project;
    expectBack(project.getProjectCalendar(), project);
    expectBack(*project.getCompany(0), project);
    expectBack(*project.getRole(0), project);
    expectBack(*project.getFilter(0), project);
    expectBack(project.getAllRisks().GetAt(0), project);
    for (char const * const name : {"Pour", "Reserve"}) expectBack(whole.plan[name], project);
    for (CUser const & user : project.getAllUsers())
    {
        EXPECT_FALSE(app::toJson(user).contains("password"));
        expectBack(user, project);
    }
}

TEST_F(Apply, RunsTheExamplesOfTheManual)
{
    std::string const manual = textOfFile(ORVANE_SOURCE_DIR "/docs/actions.md");
    std::size_t const from = manual.find("```jsonl\n") + 9;
    Ran const run = apply(manual.substr(from, manual.find("```", from) - from), {"--stop-on-refusal"});
    ASSERT_EQ(run.ending, 0) << run.err << run.out;
    EXPECT_EQ(answersOf(run).size(), 6U);
    app::Session const session(file, app::Session::Purpose::reading);
    CProject const & project = session.project();
    CTask const & slab = project.getAllTasks().GetAt(1);
    EXPECT_EQ(slab.getUpstreamLinks().GetAt(0).getDelay().GetTotalHours(), 16);
    EXPECT_EQ(project.getAllTasks().GetAt(0).getAssignedResources().GetAt(0).getPercentageAssigned(), 50);
    EXPECT_EQ(project.getProjectCalendar().getCalendarDayExceptions().GetSize(), 1);
    EXPECT_EQ(slab.getAssignedRisks().GetSize(), 1);
    EXPECT_FALSE(project.getScene().isEmpty());
    EXPECT_EQ(session.steps().size(), 6U);
}

TEST_F(Apply, LabelsWhatRulesMade)
{
    // The third row is the task; the imported parent stands for its children; without anything made, the argument.
    Ran const run = apply(
        action(rule("addTaskWithName", R"("Dig", 2)", "dig") + "," + rule("changeTaskName", R"("$dig", "Dug")", "same") +
               "," + rule("changeTaskComments", R"("$same", "deep")")) +
        action(rule("importTasks",
                    R"([{"name": "House", "plannedStartTime": "2027-03-01T09:00", "subTasks": [{"name": "Roof"}]}])",
                    "house") +
               "," + rule("changeTaskName", R"("$house", "Home")")) +
        action(rule("addCompany", R"({"name": "Firm"})", "firm") + "," + rule("setCalendar", R"({"id": "$firm", "inUse": true})") +
               "," + rule("addMaterialResourceToCompany", R"({"name": "Sand"}, "@Firm")", "sand") + "," +
               rule("addResourceSupplierReference", R"("$sand", "S-1")")));
    ASSERT_EQ(run.ending, 0) << run.err;
    EXPECT_EQ(run.err, "") << run.out;
    EXPECT_EQ(tasks(), ",,Dug,Home,");
    std::vector<Json> const answers = answersOf(run);
    EXPECT_EQ(answers[0]["results"][0]["created"]["task"].size(), 3U);
    EXPECT_EQ(answers[2]["results"][3]["index"], 0);
    EXPECT_TRUE(answers[2]["results"][0]["created"].contains("calendar"));
}

TEST_F(Apply, ReportsRefusalsOrStopsAtThem)
{
    std::string const lines = action(rule("addTaskWithName", R"("A", 0)")) +
                              action(rule("addTaskWithName", R"("B", 0)") + "," + rule("changeTaskName", R"("@C", "D")") +
                                     "," + rule("addTaskWithName", R"("E", 0)")) +
                              action(rule("addTaskWithName", R"("F", 0)"));
    Ran const dry = apply(lines, {"--dry-run"});
    EXPECT_EQ(dry.ending, 1);
    EXPECT_EQ(answersOf(dry)[1]["results"][1]["why"], "argument 1: no task is named \"C\"");
    EXPECT_EQ(tasks(), "");

    Ran const stopped = apply(lines, {"--stop-on-refusal"});
    EXPECT_EQ(stopped.ending, 1);
    EXPECT_EQ(answersOf(stopped).size(), 2U);
    EXPECT_EQ(answersOf(stopped)[1]["takenBack"], true);
    EXPECT_EQ(answersOf(stopped)[1]["state"], 2);
    EXPECT_EQ(tasks(), "A,");

    Ran const goesOn = apply(lines);
    EXPECT_EQ(goesOn.ending, 1);
    EXPECT_EQ(goesOn.err, "orvane: 1 rule was refused\n");
    EXPECT_EQ(tasks(), "A,A,B,E,F,");
}

TEST_F(Apply, RefusesWrongLinesBeforeTheyRunAndSavesWhatWasDone)
{
    struct Case
    {
        std::string line;
        char const * message;
    };
    std::string deep = R"({"action": "Deep", "rules": )" + std::string(100'000, '[');
    Case const cases[] = {
        {"{", "is no JSON"},
        {deep, "nests too deeply"},
        {R"({"action": "A"})", "field \"rules\" is missing"},
        {R"({"action": "A", "rules": [], "rank": 1})", "there is no field \"rank\""},
        {R"({"action": "A", "rules": [], "role": 4})", "field \"role\": 4 is no value of the list"},
        {action(rule("addTusk", "")), "there is no rule \"addTusk\""},
        {action(rule("addTaskWithName", R"("A")")), "takes 2 arguments and is given 1"},
        {action(rule("addTaskWithName", R"("A", 1.5)")), "argument 2: 1.5 is no whole number of 32 bits"},
        {action(rule("addTaskWithName", R"("A", 4294967296)")), "is no whole number of 32 bits"},
        {action(rule("addTaskWithDuration", R"("soon", 0)")), "argument 1: \"soon\" is no duration"},
        {action(rule("addTaskWithDuration", R"(1e30, 0)")), "is no duration"},
        {action(rule("startTask", R"("@A", "2027-02-30")")), "argument 2: \"2027-02-30\""},
        {action(rule("startTask", R"("A", "2027-02-03")")), "argument 1: \"A\" is no identifier"},
        {action(rule("changeLink", R"({"delay": 5})")), "field \"id\" is missing"},
        {action(rule("changeLink", R"({"id": "$l", "delay": true})")), "field \"delay\": true is no duration"},
        {action(rule("addCompany", R"({"calendar": {"calendarWeek": {"mon": null}}})")),
         "field \"calendar\": field \"calendarWeek\": there is no field \"mon\"; there are sunday, monday"},
        {action(rule("importTasks", R"([{"plannedStartTime": "2027-03-06T09:00"}])")), "is no value that stands here"},
        {action(rule("addEntitiesToScene", R"([{"kind": "box", "size": [1, 0, 1]}])")), "a box needs three sizes above 0"},
    };
    int done = 0;
    for (Case const & each : cases)
    {
        SCOPED_TRACE(each.message);
        std::string const good = action(rule("addTaskWithName", R"("Good", 0)"));
        Ran const run = apply(good + "\n" + each.line + "\n" + good);
        EXPECT_EQ(run.ending, 1);
        EXPECT_NE(run.err.find("a.jsonl: line 3: "), std::string::npos) << run.err;
        EXPECT_NE(run.err.find(each.message), std::string::npos) << run.err;
        EXPECT_EQ(std::ranges::count(tasks(), ','), ++done);
    }
}

TEST_F(Apply, RefusesAmbiguousNamesAndTakenIdentifiers)
{
    std::string const id(32, 'a');
    std::string const filter = R"({"id": ")" + id + R"(", "name": "F"})";
    Ran const run = apply(action(rule("addTaskWithName", R"("A", 0)") + "," + rule("addTaskWithName", R"("A", 0)") + "," +
                                 rule("changeTaskName", R"("@A", "B")") + "," + rule("changeTaskName", R"("$x", "B")")) +
                          action(rule("addFilter", filter, "f") + "," + rule("addFilter", filter) + "," +
                                 rule("changeFilter", R"({"id": "@F", "filterMode": "passany"})") + "," +
                                 rule("changeTaskName", R"("$f", "B")")));
    ASSERT_EQ(run.ending, 1) << run.err;
    std::vector<Json> const answers = answersOf(run);
    EXPECT_EQ(answers[0]["results"][2]["why"], "argument 1: more than one task is named \"A\"");
    EXPECT_EQ(answers[0]["results"][3]["why"], "argument 1: nothing is labelled \"$x\"");
    EXPECT_EQ(answers[1]["results"][0]["created"]["filter"], id);
    EXPECT_FALSE(answers[1]["results"][1]["done"]);
    EXPECT_TRUE(answers[1]["results"][2]["done"]);
    EXPECT_EQ(answers[1]["results"][3]["why"], "argument 1: \"$f\" labels no task");
}

}  // namespace
}  // namespace orvane::test
