#include "app/exchange/csv_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "app/command.h"
#include "app/exchange/csv_writer.h"
#include "tests/support/command_run.h"
#include "tests/support/moments.h"
#include "tests/support/printers.h"
#include "tests/support/scratch_folder.h"

using namespace orvane::app;
using orvane::test::at;

namespace
{

// What the file "t.csv" is read as, or why not.
std::string refusalOf(std::string const & text, DateOrder order = DateOrder::found)
{
    try
    {
        readCsv(text, "t.csv", order);
        return "accepted";
    }
    catch (Refusal const & refused)
    {
        return refused.what();
    }
}

PlanTask oneTask(std::string const & headings, std::string const & cells, DateOrder order = DateOrder::found)
{
    Plan const plan = readCsv(headings + '\n' + cells + '\n', "t.csv", order);
    return plan.tasks.empty() ? PlanTask() : plan.tasks.back();
}

TEST(CsvReader, ReadsDatesInTheFormsThatPeopleWrite)
{
    struct Case
    {
        char const * text;
        char const * meaning;
        DateOrder order = DateOrder::found;
    };
    Case const cases[] = {
        {"2027-03-04", "2027-03-04 09:00"},
        {"2027-03-04 13:30", "2027-03-04 13:30"},
        {"2027-03-04T13:30:59.5", "2027-03-04 13:30"},
        {"2027/3/4 08:00", "2027-03-04 08:00"},
        {"04.03.2027", "2027-03-04 09:00"},
        {"Do 04.03.27 7:05", "2027-03-04 07:05"},
        {"Thu 04/03/27", "2027-03-04 09:00", DateOrder::dayFirst},
        {"04/03/2027 12:00 AM", "2027-04-03 00:00", DateOrder::monthFirst},
        {"13/03/2027 5:00 PM", "2027-03-13 17:00"},
        {"3/13/27 8 AM", "2027-03-13 08:00"},
        {"04-03-2027", "2027-03-04 09:00", DateOrder::dayFirst},
        {"4-Mar-27", "2027-03-04 09:00"},
        {"4 March 2027 09:15", "2027-03-04 09:15"},
        {"Thursday, March 4, 2027 9:15 am", "2027-03-04 09:15"},
        {"05/05/2027", "2027-05-05 09:00"},
        {"29.02.2028", "2028-02-29 09:00"},
        {"2027-03-04 24:00", "2027-03-05 00:00"},
    };
    for (Case const & each : cases)
        EXPECT_EQ(CProjectTime::fromLocalMinutes(
                      *oneTask("Name;Start", std::string("Dig;\"") + each.text + '"', each.order).start),
                  at(each.meaning))
            << each.text;
    for (char const * wrong : {"2027-13-01", "31.04.2027", "2027-03-04 9:60", "2027-03-04 13 PM", "20270304",
                               "4 Marble 2027", "2027-03-04 09:00 Z", "2027-03/04", "March 2027", "1/2",
                               "2027-03-04 soon", "99999999999-01-01", "--", "2027-3-4-5"})
        EXPECT_NE(refusalOf(std::string("Name;Start\nDig;") + wrong), "accepted") << wrong;
    // One date with a single reading tells how all others are meant.
    EXPECT_EQ(readCsv("Name;Start\nA;03/04/2027\nB;25/12/2027", "t.csv", DateOrder::found).tasks[0].start,
              oneTask("Name;Start", "A;2027-04-03").start);
    EXPECT_EQ(CProjectTime::fromLocalMinutes(*oneTask("Name;Finish", "Dig;2027-03-04").finish), at("2027-03-04 17:00"));
}

TEST(CsvReader, ReadsDurationsAndLinks)
{
    std::map<std::string, std::pair<Minute, bool>> const durations = {
        {"5 days", {2400, false}},  {"5d", {2400, false}},     {"5", {2400, false}},        {"1w", {2400, false}},
        {"4 hrs", {240, false}},    {"90 min", {90, false}},   {"1.5 days?", {720, false}}, {"\"1,5d\"", {720, false}},
        {"2 mons", {19200, false}}, {"5 edays", {7200, true}}, {"3eh", {180, true}},        {"0", {0, false}},
    };
    for (auto const & [text, meaning] : durations)
    {
        PlanTask const task = oneTask("Name,Duration", "Dig," + text);
        EXPECT_EQ(std::pair(task.duration.value_or(-1), task.isElapsed), meaning) << text;
        EXPECT_EQ(task.isMilestone, meaning.first == 0);
    }
    for (char const * wrong : {"-1d", "1x", "d", "1d2", "1.2.3d", "e5", "1 d d", "99999999w", "+"})
        EXPECT_NE(refusalOf(std::string("Name,Duration\nDig,") + wrong), "accepted") << wrong;

    using enum PlanLinkType;
    using Lag = PlanLink::Lag;
    struct Case
    {
        char const * text;
        std::vector<PlanLink> links;
    };
    Case const cases[] = {
        {"1", {{1, finishToStart, Lag::work, 0}}},
        {"1FS+2d;2SS", {{1, finishToStart, Lag::work, 960}, {2, startToStart, Lag::work, 0}}},
        {"1ff-1,5 days", {{1, finishToFinish, Lag::work, -720}}},
        {"1, 2 SF + 50%", {{1, finishToStart, Lag::work, 0}, {2, startToFinish, Lag::percent, 50}}},
        {"2+3ed", {{2, finishToStart, Lag::clock, 4320}}},
        {"1-4h;", {{1, finishToStart, Lag::work, -240}}},
    };
    for (Case const & each : cases)
    {
        auto const links =
            readCsv(std::string("Name\tPredecessors\nA\t\nB\t\nC\t") + each.text, "t.csv", DateOrder::found)
                .tasks[2]
                .links;
        ASSERT_EQ(links.size(), each.links.size()) << each.text;
        for (std::size_t link = 0; link < links.size(); ++link)
            EXPECT_EQ(std::tie(links[link].predecessorUID, links[link].type, links[link].lagIn, links[link].lag),
                      std::tie(each.links[link].predecessorUID, each.links[link].type, each.links[link].lagIn,
                               each.links[link].lag))
                << each.text;
    }
}

TEST(CsvReader, TakesWhatSpreadsheetsWrite)
{
    Plan const plan = readCsv(
        "\xEF\xBB\xBFID;Task Name;Outline Level;% Complete;Resource Names;Notes;Fixed Cost;Colour\r\n"
        "0;House;0;;;;;\r\n"
        "10;\"Dig; \"\"deep\"\"\";1;25%;\"Crew[50%];Sand[5,5 m3];Smith, J;\";\"two\r\nlines\";1.234,50 EUR;red\r\n"
        "20;;1;;;;;\r\n"
        "30;Pour;1;0;Crew,Pump;;$2,000;\r\n",
        "t.csv", DateOrder::found);
    EXPECT_EQ(plan.name, "House");
    ASSERT_EQ(plan.tasks.size(), 3u);
    EXPECT_EQ(plan.tasks[0].name, "Dig; \"deep\"");
    EXPECT_EQ(plan.tasks[0].notes, "two\r\nlines");
    EXPECT_EQ(plan.tasks[0].percentComplete, 25);
    EXPECT_EQ(plan.tasks[0].fixedCost, 1234.5);
    EXPECT_TRUE(plan.tasks[1].isBlank);
    EXPECT_EQ(plan.tasks[2].line, 6);
    EXPECT_EQ(plan.tasks[2].fixedCost, 2000);
    std::vector<std::string> assigned;
    for (PlanAssignment const & each : plan.assignments)
        assigned.push_back(plan.resources[static_cast<std::size_t>(each.resourceUID - 1)].name + " " +
                           std::to_string(each.units).substr(0, 3));
    EXPECT_EQ(assigned, (std::vector<std::string>{"Crew 0.5", "Sand 5.5", "Smith, J 1.0", "Crew 1.0", "Pump 1.0"}));
    EXPECT_EQ(plan.resources[1].kind, PlanResourceKind::material);
    ASSERT_EQ(plan.losses.size(), 1u);
    EXPECT_EQ(plan.losses[0].what, "the column \"Colour\" (1 cell)");
    EXPECT_EQ(readCsv("Name\rM\xFCller\r", "t.csv", DateOrder::found).tasks[0].name, "M\xC3\xBCller");
}

// What is written is read again as it was, whatever signs the texts hold.
TEST(CsvWriter, WritesWhatTheReaderTakesBack)
{
    Plan plan;
    std::string const names[] = {"Dig", "a;b", "say \"so\"", "comma, and\nline", "tab\there"};
    for (int each = 1; each <= 5; ++each)
    {
        PlanTask & task = plan.tasks.emplace_back();
        task.uid = task.id = each;
        task.name = names[each - 1];
        task.outlineLevel = each == 3 ? 2 : 1;
        task.duration = each * 250;
        task.start = 30'000'000 + each * 1000;
        task.constraint = static_cast<PlanConstraint>(each);
        task.links.push_back(
            {each % 5 + 1, static_cast<PlanLinkType>(each % 4), PlanLink::Lag::clock, each * 700.0 - 2000});
        task.percentComplete = each * 10;
        task.baseline = PlanBaseline{task.start, {}, 480, 12.5};
    }
    plan.resources.resize(2);
    plan.resources[0].name = "Smith, J";
    plan.resources[1].name = "Crew";
    for (int each : {0, 1}) plan.resources[static_cast<std::size_t>(each)].uid = each + 1;
    plan.assignments = {{1, 1, 1}, {2, 2, 0.335}, {2, 1, 2}};
    std::string const text = writeCsv(plan);
    Plan const again = readCsv(text, "t.csv", DateOrder::found);
    EXPECT_EQ(writeCsv(again), text);
    EXPECT_EQ(again.tasks[3].name, names[3]);
    EXPECT_EQ(again.tasks[4].links[0].lag, 1500);
    EXPECT_EQ(again.assignments[1].units, 0.335);
}

// Each wrong file of the folder with the message that it gives; nothing is made, and what is there stays.
TEST(WrongInputs, AreRefusedInOneLineAndLeaveTheProject)
{
    std::string const folder = ORVANE_SOURCE_DIR "/tests/app/wrong/";
    std::ifstream messages(folder + "messages.tsv");
    orvane::CScratchFolder scratch;
    std::string const project(scratch.write("there.prj", "as it was").view()), fresh(scratch.path("new.prj").view());
    std::size_t count = 0;
    for (std::string line; std::getline(messages, line); ++count)
    {
        std::size_t const tab = line.find('\t');
        std::string const message = "orvane: " + folder + line.substr(tab + 1) + '\n';
        for (std::string const & target : {project, fresh})
        {
            orvane::test::Ran const result =
                orvane::test::ran({"import", folder + line.substr(0, tab), "-o", target, "--force"});
            EXPECT_EQ(std::tie(result.ending, result.err, result.out), std::tuple(1, message, "")) << line;
        }
    }
    EXPECT_EQ(scratch.read("there.prj"), "as it was");
    EXPECT_EQ(scratch.entryCount(), 1);
    EXPECT_EQ(count + 1, static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {})));
}

}  // namespace
