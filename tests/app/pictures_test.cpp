#include <gtest/gtest.h>

#include <filesystem>

#include "app/failure.h"
#include "persistence/project_file.h"
#include "platform/file.h"
#include "tests/support/command_run.h"
#include "tests/support/plan_builder.h"
#include "tests/support/scratch_folder.h"

namespace
{

using namespace orvane;
using app::readText;
using test::Ran;
using test::ran;

struct PictureCommands : testing::Test
{
    PictureCommands()
    {
        orvane::Plan plan({aTask("house").with({aTask("dig"), aTask("build").after("dig")}), aTask("free")});
        CFileException failure;
        storeProjectFile(project.c_str(), failure, [&](CProjectArchive & archive) { plan.project.Serialize(archive); });
    }

    std::string path(std::string const & name) const { return std::string(scratch.path(name).view()); }
    Ran draw(char const * command, std::string const & picture, std::vector<std::string> const & more = {}) const
    {
        std::vector<std::string> arguments{command, project, "-o", path(picture)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return ran(arguments);
    }

    CScratchFolder scratch;
    std::string project = path("house.prj");
};

TEST_F(PictureCommands, WritesThePictureByItsEnding)
{
    std::pair<char const *, char const *> const beginnings[] = {
        {"a.svg", "<?xml"}, {"a.PNG", "\x89PNG"}, {"a.pdf", "%PDF"}};
    for (auto const & [name, beginning] : beginnings)
    {
        using Options = std::vector<std::string>;
        for (Options const & options : {Options{"gantt"}, {"chart", "--earned-value"}, {"chart", "--utilisation"}})
        {
            Ran const run = draw(options[0].c_str(), name, {options.begin() + 1, options.end()});
            EXPECT_EQ(run.ending, 0) << run.err;
            EXPECT_TRUE(readText(path(name)).starts_with(beginning)) << name << options.back();
        }
    }
    ASSERT_EQ(draw("gantt", "a.svg").ending, 0);
    // The critical path is shown whatever the settings say.
    EXPECT_NE(readText(path("a.svg")).find(">Critical path<"), std::string::npos);
}

TEST_F(PictureCommands, ShowsTheRowsAndLinksAsked)
{
    struct Case
    {
        std::vector<std::string> options;
        bool hasChildren, hasLinks;
    };
    Case const cases[] = {{{}, true, true}, {{"--expand", "--no-links"}, true, false}, {{"--collapsed"}, false, false}};
    for (auto const & [options, hasChildren, hasLinks] : cases)
    {
        ASSERT_EQ(draw("gantt", "a.svg", options).ending, 0);
        std::string const svg = readText(path("a.svg"));
        EXPECT_EQ(svg.find(">build<") != std::string::npos, hasChildren);
        EXPECT_EQ(svg.find(">Link<") != std::string::npos, hasLinks);
    }
}

TEST_F(PictureCommands, RefusesInOneLineAndWritesNothing)
{
    struct Case
    {
        char const * command;
        std::string picture;
        std::vector<std::string> options;
        int ending;
        std::string message;
    };
    Case const cases[] = {
        {"gantt", "a.gif", {}, 1, "a.gif: the picture's name must end in .svg, .png or .pdf"},
        {"gantt", "a.svg", {"--paper", "A4"}, 1, "a.svg: --paper, --landscape and --one-page are for PDF"},
        {"gantt", "a.svg", {"--from", "2004-02-31"}, 1, "--from: \"2004-02-31\" is no time"},
        {"gantt",
         "a.pdf",
         {"--from", "2005-01-01", "--to", "2004-01-01"},
         1,
         "a.pdf: the end of the chart is not after its start"},
        {"gantt", "a.png", {"--width", "90000"}, 1, "a.png: the picture is larger than a PNG may be"},
        {"gantt", "a.pdf", {"--paper", "A9"}, 2, "A9 not in {A4,A3,A2,A1}"},
        {"gantt", "a.svg", {"--expand", "--collapsed"}, 2, "--expand"},
        {"chart", "a.svg", {}, 2, "--earned-value or --utilisation"},
        {"chart", "a.svg", {"--earned-value", "--utilisation"}, 2, "excludes"},
        {"chart", "a.svg", {"--earned-value", "--by", "kind"}, 2, "--by"},
        {"chart", "a.pdf", {"--utilisation", "--width", "500"}, 1, "a.pdf: --width is for SVG and PNG"},
        {"chart", "a.svg", {"--earned-value", "--at", "soon"}, 1, "--at: \"soon\" is no time"},
        {"chart",
         "a.svg",
         {"--utilisation", "--from", "2005-01-01", "--to", "2004-01-01"},
         1,
         "a.svg: the end of a chart must be after its start"},
    };
    for (auto const & [command, picture, options, ending, message] : cases)
    {
        Ran const run = draw(command, picture, options);
        EXPECT_EQ(run.ending, ending) << message;
        EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
        EXPECT_FALSE(std::filesystem::exists(path(picture)));
    }
}

}  // namespace
