#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "app/json/values.h"
#include "app/session.h"
#include "tests/support/command_run.h"
#include "tests/support/scratch_folder.h"

namespace orvane::test
{
namespace
{

using app::Json;

class SceneCommand : public ::testing::Test
{
protected:
    SceneCommand()
    {
        app::Session::createNew(file, true, app::Session::Purpose::changing).save();
        auto const lines = folder.write(
            "a.jsonl", R"({"action": "A", "rules": [{"rule": "addCompany", "args": [{"name": "Firm"}]}, )"
                       R"({"rule": "addEquipmentResourceToCompany", "args": [{"name": "Crane"}, "@Firm"]}]})");
        EXPECT_EQ(ran({"apply", file, std::string(lines.view()), "--stop-on-refusal"}).ending, 0);
    }

    Ran add(std::string const & json) { return ran({"scene", file, "add", std::string(folder.write("s.json", json).view())}); }
    Json list() { return Json::parse(ran({"scene", file, "list", "--json"}).out)["entities"]; }

    CScratchFolder folder;
    std::string file{folder.path("p.prj").view()};
};

TEST_F(SceneCommand, AddsTheSceneOfTheManual)
{
    std::ifstream manual(ORVANE_SOURCE_DIR "/docs/actions.md");
    std::string const text{std::istreambuf_iterator<char>(manual), {}};
    std::size_t const from = text.find("{\"entities\"");
    Ran const added = add(text.substr(from, text.find("```", from) - from));
    ASSERT_EQ(added.ending, 0) << added.err;
    Json const listed = list();
    ASSERT_EQ(listed.size(), 4U);
    EXPECT_EQ(listed[0]["outline"], Json::parse("[[0, 0], [4, 0], [4, 2], [0, 2]]"));
    EXPECT_EQ(listed[0]["transform"][3], 10);
    EXPECT_EQ(listed[1]["height"], 0.3);
    EXPECT_EQ(listed[2]["material"], Json::parse(R"({"color": "#808080", "opacity": 0.5})"));
    EXPECT_EQ(listed[3]["position"], Json::parse("[3, 3, 2]"));
    EXPECT_NE(ran({"scene", file, "list"}).out.find("Hut   extrusion  4.00 x 2.00 x 3.00"), std::string::npos);
}

TEST_F(SceneCommand, BindsToResourcesAndTakesBackItsOwnOutput)
{
    ASSERT_EQ(add(R"([{"kind": "sphere", "radius": 2, "name": "S", "resource": "Crane"}])").ending, 0);
    Json entity = list()[0];
    EXPECT_EQ(entity["resources"], Json::array({"Crane"}));
    for (char const * const computed : {"parent", "resources"}) entity.erase(computed);
    EXPECT_NE(add(Json::array({entity}).dump()).err.find("the scene has an entity of that identifier"), std::string::npos);
    entity.erase("id");
    EXPECT_EQ(add(Json::array({entity}).dump()).ending, 0);
    EXPECT_EQ(list().size(), 2U);
}

TEST_F(SceneCommand, RefusesWrongFilesAndLeavesTheSceneAsItWas)
{
    struct Case
    {
        char const * entity;
        char const * message;
    };
    Case const cases[] = {
        {"5", "entity 2: 5 is no object"},
        {R"({"kind": "cube"})", "field \"kind\": \"cube\" is none of"},
        {R"({"kind": "sphere"})", "field \"radius\" is missing"},
        {R"({"kind": "sphere", "radius": -1})", "field \"radius\": -1 is no size above 0"},
        {R"({"kind": "sphere", "radius": 1, "height": 1})", "there is no field \"height\""},
        {R"({"kind": "extrusion", "outline": [[0, 0], [1, 1]], "height": 1})", "three corners or more"},
        {R"({"kind": "sphere", "radius": 1, "transform": [1, 2]})", "is no transform of 3 or 16 numbers"},
        {R"({"kind": "sphere", "radius": 1, "material": {"opacity": 2}})", "field \"opacity\": 2 is no value"},
        {R"({"kind": "sphere", "radius": 1, "resource": "Digger"})", "no resource is named \"Digger\""},
        {R"({"kind": "sphere", "radius": 1, "name": "a\u0007"})", "is no name for an entity"},
    };
    for (Case const & each : cases)
    {
        SCOPED_TRACE(each.message);
        Ran const run = add(R"([{"kind": "sphere", "radius": 1}, )" + std::string(each.entity) + "]");
        EXPECT_EQ(run.ending, 1);
        EXPECT_NE(run.err.find(each.message), std::string::npos) << run.err;
        EXPECT_TRUE(list().empty());
    }
}

}  // namespace
}  // namespace orvane::test
