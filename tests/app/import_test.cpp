#include "app/exchange/import_plan.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include <nlohmann/json.hpp>

#include "app/exchange/csv_reader.h"
#include "app/exchange/export_plan.h"
#include "app/exchange/mspdi_reader.h"
#include "app/exchange/mspdi_writer.h"
#include "app/session.h"
#include "tests/app/random_plan.h"
#include "tests/support/command_run.h"
#include "tests/support/moments.h"
#include "tests/support/real_cases.h"
#include "tests/support/scratch_folder.h"

using orvane::app::checkPlan;
using orvane::app::exportPlan;
using orvane::app::ImportOptions;
using orvane::app::ImportReport;
using orvane::app::importPlan;
using orvane::app::Minute;
using orvane::app::PlanConstraint;
using orvane::app::PlanLink;
using orvane::app::PlanLinkType;
using orvane::app::PlanTask;
using orvane::app::Session;
using orvane::test::at;
using orvane::test::shown;

namespace
{

// A plan as other programs write them.
using Draft = orvane::app::Plan;

Minute minute(char const * text)
{
    return at(text).getLocalMinutes();
}

// A project that was made of a plan, in a file of its own.
struct Imported
{
    explicit Imported(Draft const & draft, ImportOptions const & options = {})
        : session(Session::createNew(std::string(folder.path("plan.prj").view()), false, Session::Purpose::changing))
    {
        Draft plan = draft;
        auto const outline = checkPlan(plan, "plan");
        report = importPlan(plan, outline, session, options, [](double) {});
    }

    CTask const & task(std::string const & name) const
    {
        CTask const * found = nullptr;
        forEachTask(session.project().getAllTasks(),
                    [&](CTask const & task, CTask const *)
                    {
                        if (task.getName() == name.c_str()) found = &task;
                    });
        if (!found) throw std::out_of_range(name);
        return *found;
    }
    std::set<std::string> losses() const
    {
        std::set<std::string> all;
        for (auto const & loss : report.losses) all.insert(loss.task + ": " + loss.what);
        return all;
    }
    std::string differences() const
    {
        std::string all;
        for (auto const & each : report.differences)
            all += each.task + ' ' + each.field + ' ' + each.recorded + ' ' + each.computed + ' ' +
                   std::to_string(each.minutes) + ' ' + each.reason.substr(0, 12) + '\n';
        return all;
    }

    orvane::CScratchFolder folder;
    Session session;
    ImportReport report;
};

// Monday to Friday 08:00 to 12:00 and 13:00 to 17:00, off on the first of March 2027; and a night shift, Monday to
// Saturday 00:00 to 06:00.
Draft withCalendars()
{
    Draft plan;
    auto & day = plan.calendars.emplace_back();
    day.uid = plan.calendarUID = 1;
    day.name = "Standard";
    for (std::size_t each = 1; each < 6; ++each) day.week[each] = {{480, 720}, {780, 1020}};
    day.exceptions[at("2027-03-01 00:00").getDate().getDayNumber()] = {};
    day.exceptionNames[at("2027-03-01 00:00").getDate().getDayNumber()] = "St David";
    auto & night = plan.calendars.emplace_back();
    night.uid = 2;
    night.name = "Night shift";
    for (std::size_t each = 1; each < 7; ++each) night.week[each] = {{0, 360}};
    return plan;
}

// At most nine tasks; numbers are those of the rows.
PlanTask & add(Draft & plan, std::string const & name, char const * start, Minute minutes,
               char const * finish = nullptr)
{
    plan.tasks.reserve(9);
    PlanTask & task = plan.tasks.emplace_back();
    task.uid = task.id = static_cast<int>(plan.tasks.size());
    task.name = name;
    task.start = minute(start);
    if (finish) task.finish = minute(finish);
    task.duration = minutes;
    return task;
}

TEST(Import, HoldsCalendarsCompaniesResourcesAndCosts)
{
    Draft plan = withCalendars();
    auto & own = plan.calendars.emplace_back();
    own.uid = 3;
    own.isBase = false;
    own.baseUID = 2;
    own.week[1] = {{60, 120}};
    for (char const * name : {"Crew", "Crane", "Sand", "Permit", "Guard"})
    {
        auto & resource = plan.resources.emplace_back();
        resource.uid = static_cast<int>(plan.resources.size());
        resource.name = name;
    }
    plan.resources[0].standardRate = 40;
    plan.resources[0].costPerUse = 7;
    plan.resources[0].maxUnits = 2.5;
    plan.resources[1].group = "Plant";
    plan.resources[1].calendarUID = 2;
    plan.resources[2].kind = orvane::app::PlanResourceKind::material;
    plan.resources[3].kind = orvane::app::PlanResourceKind::cost;
    plan.resources[4].calendarUID = 3;
    add(plan, "Dig", "2027-02-26 08:00", 960, "2027-03-02 17:00");
    add(plan, "Lift", "2027-03-01 00:00", 720, "2027-03-03 06:00");
    add(plan, "Watch", "2027-03-08 01:00", 60, "2027-03-08 02:00");
    plan.assignments = {{1, 1, 0.5}, {1, 3, 12}, {1, 4, 1, 99.5}, {2, 2, 1}, {3, 5, 1}};

    Imported const made(plan);
    CProject const & project = made.session.project();
    EXPECT_EQ(made.differences(), "");
    EXPECT_EQ(project.getProjectCalendar().getDayType(orvane::test::on("2027-03-01")).getDescription(), "St David");
    ASSERT_EQ(project.getNumberOfCompanies(), 2);
    CCompany const & night = *project.getCompany(1);
    EXPECT_EQ(night.getName(), "Night shift");
    ASSERT_EQ(night.getNumberOfEquipmentResources(), 1);
    CTask const &dig = made.task("Dig"), &lift = made.task("Lift"), &watch = made.task("Watch");
    EXPECT_EQ(shown(dig.getEndTime()), "2027-03-02 17:00");
    EXPECT_EQ(lift.getDominantCalendarID(), night.getCalendar().getID());
    EXPECT_EQ(shown(watch.getEndTime()), "2027-03-08 02:00");
    CHumanResource const & crew = project.getCompany(0)->getHumanResources().GetAt(0);
    EXPECT_EQ(crew.getUseRatePerDay(), 3);
    // 16 hours at half of 40, the use, the permit.
    EXPECT_EQ(dig.getSumTotal(CCostTotalType(CCostTotalType::Budgeted)), 16 * 20 + 7 + 99.5);
    EXPECT_EQ(dig.getAssignedResources().GetAt(1).getPercentageAssigned(), 1200);
    EXPECT_TRUE(made.losses().contains(
        ": calendar \"Night shift\": its hours on 1 day, for there the exceptions of the project's calendar rule"));
}

// The clock time of a lag is that between the predecessor's date and where the work of the lag ends.
TEST(Import, TurnsLagsIntoTimeOfTheClock)
{
    using enum PlanLinkType;
    using Lag = PlanLink::Lag;
    struct Case
    {
        PlanLinkType type;
        Lag in;
        double lag;
        int calendarUID;
        long minutes;
    };
    // From Thursday 08:00 to Friday 17:00, before the weekend and the holiday on Monday.
    Case const cases[] = {
        {finishToStart, Lag::work, 480, -1, 4 * 1440},    {finishToStart, Lag::work, -480, -1, -1440},
        {startToStart, Lag::work, 960, -1, 5 * 1440},     {startToStart, Lag::work, 60, -1, 60},
        {finishToFinish, Lag::percent, 50, -1, 4 * 1440}, {finishToStart, Lag::clock, 77, -1, 77},
        {finishToStart, Lag::work, 360, 2, 780},          {startToFinish, Lag::work, 300, -1, 360},
    };
    for (Case const & each : cases)
    {
        Draft plan = withCalendars();
        add(plan, "Pour", "2027-02-25 08:00", 960, "2027-02-26 17:00");
        PlanTask & next = add(plan, "Strip", "2027-03-15 08:00", 480);
        next.calendarUID = each.calendarUID;
        next.links.push_back({1, each.type, each.in, each.lag});
        Imported const made(plan);
        EXPECT_EQ(made.task("Strip").getUpstreamLinks().GetAt(0).getDelay().GetTotalMinutes(), each.minutes)
            << &each - cases;
    }
}

TEST(Import, TellsWhatIsLostAndWhichDatesDiffer)
{
    Draft plan = withCalendars();
    add(plan, "Site", "2027-02-01 08:00", 960, "2027-02-09 17:00");
    add(plan, "Split", "2027-02-01 08:00", 480, "2027-02-03 17:00").outlineLevel = 2;
    PlanTask & elapsed = add(plan, "Cure", "2027-02-05 08:00", 4320, "2027-02-08 08:00");
    elapsed.outlineLevel = 2;
    elapsed.isElapsed = true;
    PlanTask & manual = add(plan, "Gate", "2027-02-10 17:00", 0, "2027-02-10 17:00");
    manual.isManual = true;
    manual.deadline = minute("2027-02-11 17:00");
    manual.constraint = PlanConstraint::finishNoLaterThan;
    manual.constraintDate = minute("2027-02-12 17:00");
    PlanTask & fixed = add(plan, "Crossing", "2037-02-10 08:00", 60, "2037-02-10 09:00");
    *fixed.start += 1095 * 1440;
    *fixed.finish += 1095 * 1440;
    fixed.constraint = PlanConstraint::mustStartOn;
    PlanTask & based = add(plan, "Based", "2027-02-02 08:00", 480, "2027-02-02 17:00");
    based.baseline = {minute("2027-01-29 08:00"), minute("2027-02-01 12:00"), 600, 123.0};
    PlanTask & blank = plan.tasks.emplace_back();
    blank.uid = 7;
    blank.isBlank = true;

    Imported const made(plan);
    EXPECT_EQ(made.report.tasks, 6u);
    EXPECT_EQ(made.report.datesAgreeing, 7u);
    EXPECT_EQ(made.differences(), "Site finish 2027-02-09T17:00 2027-02-05T17:00 -5760 summary roll\n"
                                  "Split finish 2027-02-03T17:00 2027-02-01T17:00 -2880 split: more \n"
                                  "Cure finish 2027-02-08T08:00 2027-02-05T17:00 -3780 elapsed dura\n"
                                  "Crossing start 2040-02-10T08:00 2038-01-17T00:00 -1086240 times here e\n"
                                  "Crossing finish 2040-02-10T09:00 2038-01-18T09:00 -1084320 times here e\n"
                                  "Based baselineFinish 2027-02-01T12:00 2027-02-01T10:00 -120 a baseline f\n");
    for (char const * loss :
         {"Gate: that it is scheduled by hand", "Gate: the deadline 2027-02-11T17:00",
          "Gate: the constraint \"finish no later than 2027-02-12T17:00\"",
          "Cure: that its duration counts hours of the clock: it is the working time that they span"})
        EXPECT_TRUE(made.losses().contains(loss)) << loss;
    EXPECT_EQ(made.task("Crossing").getConstraintType(), CTaskConstraintType::CannotReschedule);
    EXPECT_TRUE(made.task("Gate").isKeyDate());
    EXPECT_EQ(shown(made.task("Based").getBaselineStart()), "2027-01-29 08:00");
    EXPECT_EQ(made.task("Based").getBaselineTotalCost(), 123);
    EXPECT_EQ(made.task("Based").getCosts(), nullptr);
}

TEST(Import, KeepsProgress)
{
    Draft plan = withCalendars();
    PlanTask & done = add(plan, "Done", "2027-02-02 08:00", 480, "2027-02-02 16:00");
    done.percentComplete = 100;
    done.actualStart = done.start;
    done.actualFinish = done.finish;
    PlanTask & begun = add(plan, "Begun", "2020-02-03 08:00", 2400, "2020-02-07 17:00");
    begun.percentComplete = 40;
    PlanTask & reached = add(plan, "Reached", "2027-02-02 17:00", 0, "2027-02-02 17:00");
    reached.percentComplete = 100;

    Imported const made(plan);
    EXPECT_EQ(made.differences(), "");
    EXPECT_EQ(made.task("Done").getStatus(), CTaskStatus::Finished);
    EXPECT_EQ(made.task("Begun").getStatus(), CTaskStatus::Started);
    EXPECT_EQ(made.task("Reached").getConstraintType(), CTaskConstraintType::CannotReschedule);
    EXPECT_TRUE(made.losses().contains("Begun: that it is 40 percent complete: by the clock it is 100 percent"));
    Imported const kept(plan, {.start = {}, .keepsPercent = true});
    EXPECT_NEAR(kept.task("Begun").getPercentComplete(), 40, 0.1);
}

// What a task is, in a line.
std::vector<std::string> linesOf(CProject const & project)
{
    std::vector<std::string> lines;
    std::unordered_map<_GUID, std::size_t> rows;
    forEachTask(project.getAllTasks(),
                [&](CTask const & task, CTask const *) { rows.emplace(task.getID().getGUID(), rows.size()); });
    forEachTask(project.getAllTasks(),
                [&](CTask const & task, CTask const * parent)
                {
                    if (!task.isValid()) return lines.push_back("blank");
                    std::string line(task.getName().view());
                    line += " below " + (parent ? std::string(parent->getName().view()) : "") + ' ' +
                            shown(task.getStartTime()) + ' ';
                    // Reports move the end of what has begun.
                    if (!(task.getStatus() == CTaskStatus::Started) && !task.isSummaryTask())
                        line += shown(task.getEndTime()) + ' ';
                    if (!task.isSummaryTask()) line += std::to_string(task.getDuration().GetTotalMinutes());
                    line += task.isKeyDate() ? " key" : "";
                    line += task.getConstraintType() == CTaskConstraintType::CannotReschedule ? " fixed" : "";
                    line += task.isOpen() ? "" : task.getStatus() == CTaskStatus::Started ? " started" : " finished";
                    line += " calendar " + shown(task.getCalendar().addDurationToTime(
                                               at("2004-01-05 09:00"), CProjectDuration(100 * 3600), true));
                    std::set<std::size_t> met;
                    for (CLink const & link : task.getUpstreamLinks())
                        if (std::size_t const row = rows.at(link.getUpstreamTaskID().getGUID()); met.insert(row).second)
                            line += " after " + std::to_string(row) + " type " +
                                    std::to_string(link.getType().getEquivalentValue()) + " by " +
                                    std::to_string(link.getDelay().GetTotalMinutes());
                    lines.push_back(line);
                });
    return lines;
}

TEST(Export, AsMspdiAndImportedAgainIsTheSame)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE(seed);
        orvane::test::RandomPlan random(seed);
        std::string const text = writeMspdi(exportPlan(random.project()));
        Imported const first(orvane::app::readMspdi(text, "first"));
        std::vector<std::string> wanted = linesOf(random.project());
        ASSERT_EQ(linesOf(first.session.project()), wanted);
        // What came through once comes through unchanged, resources, money and baselines with it.
        std::string const again = writeMspdi(exportPlan(first.session.project()));
        Imported const second(orvane::app::readMspdi(again, "second"));
        ASSERT_EQ(writeMspdi(exportPlan(second.session.project())), again);
    }
}

TEST(Import, CommandReportsAndWritesCsvBack)
{
    orvane::CScratchFolder folder;
    std::string const input(folder
                                .write("t.csv",
                                       "ID,Name,Duration,Start,Predecessors,Resource Names\n1,Dig,2d,2027-03-01,,Crew\n"
                                       "2,Pour,1d,2027-03-03,1,Crew[50%];Pump\n")
                                .view());
    auto const path = [&](char const * name) { return std::string(folder.path(name).view()); };
    auto const result = orvane::test::ran({"import", input, "-o", path("p.prj"), "--json"});
    ASSERT_EQ(result.ending, 0) << result.err;
    auto const report = nlohmann::json::parse(result.out);
    EXPECT_EQ(report["tasks"], 2);
    EXPECT_EQ(report["links"], 1);
    EXPECT_EQ(report["datesAgreeing"], 2);
    EXPECT_EQ(orvane::test::ran({"import", input, "-o", path("p.prj")}).ending, 1);
    ASSERT_EQ(orvane::test::ran({"export", path("p.prj"), "-o", path("out.csv")}).ending, 0);
    EXPECT_NE(folder.read("out.csv").find("2,Pour,1,1d,2027-03-03 09:00,2027-03-03 17:00,1FS,\"Crew[50%];Pump\","),
              std::string::npos);
    EXPECT_EQ(orvane::test::ran({"export", path("p.prj"), "-o", path("out.doc")}).ending, 1);
}

// Published networks, as a spreadsheet would hold them.
TEST(Import, TakesPublishedNetworksAsCsv)
{
    bool const isThere = orvane::test::forRealCases(
        "psplib",
        [](nlohmann::json const & record)
        {
            auto const & durations = record["durations"];
            std::string text = "ID,Name,Duration,Predecessors\n";
            std::size_t links = 0;
            for (std::size_t each = 0; each < durations.size(); ++each)
            {
                text +=
                    std::to_string(each) + ",activity " + std::to_string(each) + ',' + durations[each].dump() + "d,";
                for (auto const & predecessor : record["predecessors"][each]) text += predecessor.dump() + ';', ++links;
                text += '\n';
            }
            Imported const made(orvane::app::readCsv(text, "network", orvane::app::DateOrder::found),
                                {.start = minute("2027-03-01 09:00"), .keepsPercent = false});
            EXPECT_EQ(made.report.tasks, durations.size()) << record["name"];
            EXPECT_EQ(made.report.links, links) << record["name"];
            EXPECT_EQ(made.session.project().getTotalNumberOfTasks(), static_cast<int>(durations.size()));
        });
    if (!isThere) GTEST_SKIP() << "no records in " << orvane::test::realCasesFolder();
}

}  // namespace
