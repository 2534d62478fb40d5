// What dump and show tell of a project.

#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include "app/text_values.h"
#include "config/project_config.h"
#include "tests/app/whole_project.h"
#include "tests/support/command_run.h"
#include "tests/support/random_actions.h"
#include "tests/support/recording_host.h"
#include "tests/support/task_history.h"

namespace orvane::test
{
namespace
{

using nlohmann::json;

struct DumpSchema : valijson::Schema
{
    DumpSchema()
    {
        std::ifstream file(ORVANE_SOURCE_DIR "/docs/project.schema.json");
        json const text = json::parse(file);
        valijson::SchemaParser().populateSchema(valijson::adapters::NlohmannJsonAdapter(text), *this);
    }
};

// What is wrong with the document by the schema; empty when nothing is.
std::string faultsOf(json const & document)
{
    static DumpSchema const schema;
    valijson::ValidationResults results;
    valijson::Validator().validate(schema, valijson::adapters::NlohmannJsonAdapter(document), &results);
    std::string faults;
    for (valijson::ValidationResults::Error error; results.popError(error);)
    {
        for (std::string const & part : error.context) faults += part;
        faults += ": " + error.description + '\n';
    }
    return faults;
}

json answer(std::vector<std::string> const & arguments)
{
    Ran const run = ran(arguments);
    EXPECT_EQ(run.ending, 0) << run.err;
    return json::parse(run.out, nullptr, false);
}

// Every task of the dump by its identifier.
void collect(json const & tasks, std::map<std::string, json> & byID)
{
    for (json const & task : tasks)
    {
        byID[task["id"]] = task;
        collect(task["subTasks"], byID);
    }
}

TEST(Dump, HoldsEveryRecordAsTheSchemaSays)
{
    WholeProject whole;
    std::string const path = whole.save();
    std::string const text = ran({"dump", path}).out;
    json const document = json::parse(text);
    EXPECT_EQ(faultsOf(document), "");
    EXPECT_EQ(text.find("top secret"), text.npos);
    for (char const * part : {"companies", "users", "roles", "taskCategories", "risks", "filters", "tasks"})
        EXPECT_FALSE(document[part].empty()) << part;
    EXPECT_EQ(document["scene"]["entities"].size(), 3);
    EXPECT_EQ(document["scene"]["entities"][0]["children"].size(), 1);
    EXPECT_EQ(document["users"].size(), 2);

    std::map<std::string, json> tasks;
    collect(document["tasks"], tasks);
    json const dig = tasks[app::idText(whole.plan.id("Dig"))], pour = tasks[app::idText(whole.plan.id("Pour"))];
    json const reserve = tasks[app::idText(whole.plan.id("Reserve"))]["computed"];
    EXPECT_EQ(dig["computed"]["estimatedFinish"], "2004-01-12T13:00");
    EXPECT_EQ(dig["taskReports"][0]["duration"], 240);
    EXPECT_EQ(dig["computed"]["costs"]["budgeted"], json({{"people", 1000.0}, {"total", 1000.0}}));
    EXPECT_EQ(pour["computed"]["costs"]["budgeted"]["tasks"], 1000.0);
    EXPECT_EQ(document["costs"]["budgeted"]["total"], 2000.0);
    EXPECT_EQ(reserve["storedRiskMinutes"], 288);
    EXPECT_TRUE(reserve["critical"]);
    EXPECT_EQ(document["criticalPath"]["durationDays"], 10.5);
}

TEST(Dump, TellsWhatTheModelAnswers)
{
    for (unsigned seed = 0; seed < 8; ++seed)
    {
        CRecordingHost const host;
        CScratchFolder const folder;
        std::mt19937 random(seed);
        CProject project(nullptr, false);
        for (int action = 0; action < 300; ++action) actAtRandom(project, random);
        std::string const path(folder.path("random.prj").view());
        ASSERT_EQ(project.saveToFile(path.c_str()), 1);
        CProject loaded(nullptr, false);
        ASSERT_EQ(loaded.readFromFile(path.c_str(), false), 1);
        json const document = answer({"dump", path});
        EXPECT_EQ(faultsOf(document), "") << "seed " << seed;
        std::map<std::string, json> tasks;
        collect(document["tasks"], tasks);
        int row = 0;
        forEachTask(loaded.getAllTasks(),
                    [&](CTask const & task, CTask const *)
                    {
                        json const computed = tasks[app::idText(task.getID())]["computed"];
                        EXPECT_EQ(computed["row"], ++row);
                        if (!task.isValid()) return;
                        EXPECT_EQ(computed["start"], app::isoTime(task.getStartTime()));
                        EXPECT_EQ(computed["durationMinutes"], task.getDuration().GetTotalMinutes());
                        EXPECT_DOUBLE_EQ(computed["costs"]["budgeted"]["total"],
                                         task.getTreeCosts(CCostTotalType::Budgeted));
                        EXPECT_DOUBLE_EQ(computed["costs"]["actual"].value("materials", 0.0),
                                         task.getTreeMaterialResourceCosts(CCostTotalType::Actual));
                    });
        EXPECT_EQ(static_cast<std::size_t>(row), tasks.size());
    }
}

TEST(Dump, LeavesTheOldFileWhenTheDiskIsFull)
{
    WholeProject whole;
    std::string const path = whole.save(), output(whole.folder.write("out.json", "old").view());
    {
        CFullDisk const full(4096);
        Ran const run = ran({"dump", path, "-o", output});
        EXPECT_EQ(run.ending, 1);
        EXPECT_EQ(std::ranges::count(run.err, '\n'), 1);
    }
    EXPECT_EQ(whole.folder.read("out.json"), "old");
    EXPECT_EQ(ran({"dump", path, "-o", output}).ending, 0);
    EXPECT_EQ(whole.folder.read("out.json"), ran({"dump", path}).out);
}

TEST(Show, AnswersTheLongestChainWhateverTheSetting)
{
    WholeProject whole;
    std::string const path = whole.save();
    json chains[2];
    for (int const shown : {0, 1})
    {
        CProjectConfig::setShowCriticalPath(shown);
        chains[shown] = answer({"show", path, "critical-path", "--json"});
        EXPECT_EQ(CProjectConfig::getShowCriticalPath(), shown);
    }
    CProjectConfig::setShowCriticalPath(false);
    EXPECT_EQ(chains[0], chains[1]);
    EXPECT_EQ(chains[0]["durationMinutes"], 5040);
    EXPECT_EQ(chains[0]["durationDays"], 10.5);
    ASSERT_EQ(chains[0]["tasks"].size(), 3);
    EXPECT_EQ(chains[0]["tasks"][1]["name"], "Pour");
    EXPECT_EQ(chains[0]["links"][0]["delayMinutes"], 1440);
    EXPECT_EQ(chains[0]["links"][1]["upstreamTaskID"], chains[0]["tasks"][1]["id"]);
    EXPECT_EQ(chains[0]["links"][1]["downstreamTaskID"], chains[0]["tasks"][2]["id"]);
}

TEST(Show, PrintsTablesAndTheSameAsJson)
{
    WholeProject whole;
    std::string const path = whole.save();
    struct Case
    {
        char const * part;
        // How many rows, and a line of the table.
        std::size_t rows;
        char const * line;
    } const cases[] = {
        {"tasks", 5,
         "3    Pour   Hold     2004-01-13 09:00  2004-01-16 17:00        3d    0  yes       2FS+24h       Gravel"},
        {"resources", 5, "Groundworks  Human        Foreman  Active      0  Unknown      1                      1"},
        {"risks", 2, "  Flood  percent          0        0d"},
        {"users", 2, "ann            Ann            Administrator           ann@example.org  1          2"},
        {"calendars", 6, "company   Groundworks          0 8 8 8 8 8 0                       0"},
    };
    for (Case const & each : cases)
    {
        std::string const table = ran({"show", path, each.part}).out;
        EXPECT_NE(table.find(std::string("\n") + each.line + '\n'), table.npos) << table;
        EXPECT_EQ(answer({"show", path, each.part, "--json"}).size(), each.rows) << each.part;
    }
    EXPECT_EQ(answer({"show", path, "costs", "--json"}).back()["total"], 2000.0);
    EXPECT_EQ(ran({"show", path, "dreams"}).ending, 2);
}

}  // namespace
}  // namespace orvane::test
