// The states kept beside a project, and the user's settings.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "app/session.h"
#include "app/stored_settings.h"
#include "config/project_config.h"
#include "platform/settings_store.h"
#include "tests/support/command_run.h"
#include "tests/support/scratch_folder.h"

namespace orvane::test
{
namespace
{

using nlohmann::json;

TEST(History, GoesBackAndForthThroughActions)
{
    CScratchFolder const folder;
    std::string const path(folder.path("plan.prj").view());
    {
        app::Session session = app::Session::createNew(path, false, app::Session::Purpose::changing);
        for (char const * name : {"Dig", "Pour", "Cure"})
            session.act(std::string("Add ") + name, [&](auto & rules) { return rules.addTaskWithName(name, 0); });
        session.save();
    }
    auto const tasks = [&] { return json::parse(ran({"show", path, "--json"}).out).size(); };
    auto const history = [&] { return json::parse(ran({"history", path, "--json"}).out); };
    EXPECT_EQ(tasks(), 3);
    EXPECT_EQ(history()["state"], 4);
    EXPECT_EQ(ran({"undo", path, "2"}).out, "undone: Add Pour\nundone: Add Cure\nstate 2\n");
    EXPECT_EQ(tasks(), 1);
    EXPECT_EQ(history()["actions"][0]["done"], true);
    EXPECT_EQ(history()["actions"][1]["done"], false);
    EXPECT_EQ(history()["actions"][1]["state"], 3);
    EXPECT_NE(ran({"history", path}).out.find("\n*      2  Add Dig"), std::string::npos);
    EXPECT_EQ(json::parse(ran({"redo", path, "--json"}).out), json::parse(R"({"state": 3, "redone": ["Add Pour"]})"));
    EXPECT_EQ(tasks(), 2);
    // Further than there is refuses and changes nothing.
    std::string const before = folder.read("plan.prj");
    EXPECT_EQ(ran({"redo", path, "2"}).ending, 1);
    EXPECT_EQ(ran({"undo", path, "3"}).ending, 1);
    EXPECT_EQ(ran({"undo", path, "0"}).ending, 2);
    EXPECT_EQ(folder.read("plan.prj"), before);
}

// Settings in a file of the test's own.
class Config : public ::testing::Test
{
protected:
    Config()
    {
        setSettingsStore(store.get());
        app::useStoredSettings();
    }
    ~Config() override
    {
        CProjectConfig::setRegistryKey("");
        setSettingsStore(nullptr);
    }
    std::string get(std::string const & name) { return ran({"config", "get", name}).out; }

    CScratchFolder folder;
    std::unique_ptr<ISettingsStore> store = makeSettingsFile(folder.path("settings.db").view());
};

TEST_F(Config, SetsAndResetsSettingsOfEveryKind)
{
    struct Case
    {
        char const * name;
        char const * value;
        char const * byDefault;
        char const * wrong;
    } const cases[] = {
        {"DisplayTimeConcise", "true", "false\n", "1"},
        {"PrintingTopMargin", "-3", "1\n", "2.5"},
        {"ServerConnectionDelay", "0.25", "1.0\n", "nan"},
        {"PrintingHeader", "Bridge \"north\"", "\n", nullptr},
    };
    for (Case const & each : cases)
    {
        EXPECT_EQ(ran({"config", "set", each.name, each.value}).ending, 0) << each.name;
        EXPECT_EQ(get(each.name), std::string(each.value) + '\n');
        std::string const wrong = each.wrong ? each.wrong : std::string(260, 'x');
        EXPECT_EQ(ran({"config", "set", each.name, wrong}).ending, 1) << each.name;
        EXPECT_EQ(get(each.name), std::string(each.value) + '\n');
        EXPECT_EQ(ran({"config", "reset", each.name}).ending, 0);
        EXPECT_EQ(get(each.name), each.byDefault);
    }
    EXPECT_EQ(ran({"config", "get", "Nothing"}).ending, 1);
    json const list = json::parse(ran({"config", "list", "--json"}).out);
#define COUNT(...) +1
    EXPECT_EQ(list.size(), 0 ORVANE_SETTINGS(COUNT));
#undef COUNT
}

TEST_F(Config, RefusesWhatCannotBeKept)
{
    folder.write("settings.db", "something else");
    auto const other = makeSettingsFile(folder.path("settings.db").view());
    setSettingsStore(other.get());
    EXPECT_EQ(ran({"config", "set", "PrintingFooter", "x"}).ending, 1);
    EXPECT_EQ(folder.read("settings.db"), "something else");
}

}  // namespace
}  // namespace orvane::test
