// What verify says of files.

#include <gtest/gtest.h>

#include <zlib.h>

#include <nlohmann/json.hpp>

#include "tests/app/whole_project.h"
#include "tests/support/command_run.h"

namespace orvane::test
{
namespace
{

std::string packed(CScratchFolder const & folder, std::string const & bytes)
{
    gzFile const file = gzopen(folder.path("packed").view().data(), "wb");
    gzwrite(file, bytes.data(), static_cast<unsigned>(bytes.size()));
    gzclose(file);
    return folder.read("packed");
}

constexpr char schedule[] = "<?xml version=\"1.0\"?>\n<Project xmlns=\"http://schemas.microsoft.com/project\">"
                            "<SaveVersion>14</SaveVersion><Tasks><Task/><Task/></Tasks></Project>";

TEST(Verify, TellsWhatFilesAreAndWhetherTheyAreWhole)
{
    WholeProject whole;
    whole.save();
    std::string const project = whole.folder.read("whole.prj");
    std::unique_ptr<CProjectData> const data(whole.plan.project.getCopyOfProjectData());
    ASSERT_EQ(data->saveToFile(whole.folder.path("data")), 1);
    std::unique_ptr<CPresentationData> const views(whole.plan.project.getCopyOfPresentationData());
    ASSERT_EQ(views->saveToFile(whole.folder.path("views")), 1);
    std::string wrongSum = project, damaged = project;
    wrongSum[wrongSum.size() - 8] ^= 1;
    damaged[damaged.size() / 2] ^= 0x55;
    std::string const xml = schedule;
    std::string const document =
        "<?xml version = \"1.0\" encoding = 'utf-8'?>\n<!-- File Format - Orvane Schedule 2027 -->\n"
        "<Some Root\n date = \"a > b\">\n<Task name = \"x\"/><Task>\n</Task>\n</Some Root>";
    struct Case
    {
        std::string content;
        std::string kind;
        // What is wrong; empty for a whole file.
        std::string fault;
    } const cases[] = {
        {project, "project file", ""},
        {project.substr(0, project.size() - 1), "project file", "end too early"},
        {project.substr(0, project.size() / 2), "project file", "end too early"},
        {wrongSum, "project file", "damaged: incorrect data check"},
        {damaged, "project file", "damaged"},
        {project + "x", "project file", "other bytes follow"},
        {whole.folder.read("data"), "data file", ""},
        {whole.folder.read("views"), "view state", ""},
        {xml, "MSPDI document", ""},
        {xml.substr(0, xml.size() - 9), "MSPDI document", "line 2"},
        {packed(whole.folder, xml), "MSPDI document", ""},
        {"<a><b/></a>", "XML document", ""},
        {"<!DOCTYPE a [<!ENTITY x \"y\">]><a>&x;</a>", "XML document", "type of document"},
        {document, "project document", ""},
        {document.substr(0, document.size() - 1), "project document", "last element"},
        {document.substr(0, document.size() - 20), "project document", "last element"},
        {"ID,Name\n1,\"Dig, deep\"\n", "CSV table", ""},
        {"ID;Name\n1;\"Dig", "CSV table", "quotation marks"},
        {"ID\tName\n1", "CSV table", "middle of a row"},
        {"{\"a\": 1}\n{\"b\": [2]}\n", "JSON lines", ""},
        {"{\"a\": 1}\n{\"b\": [2", "JSON document", "value 2"},
        {"[1,\n 2]", "JSON document", ""},
        {packed(whole.folder, "hello"), "gzip file of something else", ""},
        {"\x7f"
         "ELF\n",
         "something else", ""},
        {"", "empty file", "holds nothing"},
    };
    for (Case const & each : cases)
    {
        SCOPED_TRACE(each.kind + ", " + each.fault);
        std::string const path(whole.folder.write("file", each.content).view());
        Ran const run = ran({"verify", path, "--json"});
        nlohmann::json const answer = nlohmann::json::parse(run.out);
        EXPECT_EQ(answer["kind"], each.kind);
        EXPECT_EQ(run.ending, each.fault.empty() ? 0 : 1) << run.err;
        EXPECT_EQ(answer["whole"], each.fault.empty());
        EXPECT_NE(run.err.find(each.fault), run.err.npos) << run.err;
        EXPECT_EQ(std::ranges::count(run.err, '\n'), each.fault.empty() ? 0 : 1);
        EXPECT_EQ(answer["fileSize"], each.content.size());
    }
}

TEST(Verify, CountsWhatFilesHold)
{
    WholeProject whole;
    whole.save();
    auto const counts = [](std::string const & path) {
        return nlohmann::json::parse(ran({"verify", path, "--json"}).out);
    };
    nlohmann::json const project = counts(std::string(whole.folder.path("whole.prj").view()));
    EXPECT_EQ(project["version"], "42");
    EXPECT_EQ(project["counts"], nlohmann::json::parse(R"({"tasks": 4, "links": 2, "companies": 1, "resources": 5,
                                                      "risks": 1, "users": 2, "filters": 1, "entities": 4})"));
    nlohmann::json const other = counts(std::string(whole.folder.write("plan.xml", schedule).view()));
    EXPECT_EQ(other["version"], "14");
    EXPECT_EQ(other["counts"]["tasks"], 2);
    EXPECT_EQ(ran({"verify", std::string(whole.folder.path("nothing").view())}).ending, 1);
}

}  // namespace
}  // namespace orvane::test
