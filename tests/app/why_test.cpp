#include <gtest/gtest.h>

#include <map>

#include "app/planning/reasons.h"
#include "app/text_values.h"
#include "tests/app/random_plan.h"
#include "tests/support/command_run.h"
#include "tests/support/scratch_folder.h"

namespace
{

using namespace orvane;
using namespace orvane::app;

using Json = nlohmann::ordered_json;

// ---- every step holds -------------------------------------------------------------------------------

// What the library makes of the facts of a step.
class Judge
{
public:
    Judge(CProject const & project, Rows const & rows) : project(project), rows(rows) {}

    CProjectTime recompute(Reason const & reason) const
    {
        CTask const & task = *reason.task;
        CCalendar const & calendar = task.getCalendar();
        std::string const kind = reason.kind;
        if (kind == "link") return allowedBy(reason);
        if (kind.ends_with("Child")) return timeOf(named(reason.facts["child"]), reason.isOfEnd);
        if (kind == "actual" && reason.isOfEnd) return task.getActualFinishTime();
        if (!reason.facts.contains("from")) return timeOf(task, reason.isOfEnd);
        CProjectTime const from = readTime(reason.facts["from"].get<std::string>());
        if (kind == "calendar" && !reason.isOfEnd)
        {
            CProjectTime const start = calendar.getNextValidStartTime(from);
            return start == reason.time ? start : calendar.getNextValidEndTime(from);
        }
        if (kind == "calendar") return task.getEndOfUnmitigatedRisk();
        CProjectDuration const length(reason.facts["durationMinutes"].get<long>() * 60);
        return reason.facts.value("type", "") == "advance" ? calendar.subtractDurationFromTime(from, length, true)
                                                           : calendar.addDurationToTime(from, length, true);
    }

    static CProjectTime timeOf(CTask const & task, bool end)
    {
        return end ? task.getEndOfStoredRisk() : task.getStartTime();
    }

private:
    CTask const & named(Json const & facts) const { return rows.choose(facts["id"].get<std::string>()); }

    // The latest start that any link of the task, or above it, allows, when that is the link told.
    CProjectTime allowedBy(Reason const & reason) const
    {
        CTask const & upstream = named(reason.facts["upstream"]);
        bool isTold = false;
        CProjectTime latest;
        for (CTask const * holder = reason.task; holder; holder = project.getTaskParent(*holder))
            for (CLink const & link : holder->getUpstreamLinks())
            {
                CTask const & other = *project.getTask(link.getUpstreamTaskID());
                CProjectTime const allowed = link.getEarliestStartOfDownstreamTask(other, *reason.task);
                isTold |= &other == &upstream && allowed == reason.time;
                if (allowed.isValid() && (!latest.isValid() || allowed > latest)) latest = allowed;
            }
        return isTold ? latest : CProjectTime();
    }

    CProject const & project;
    Rows const & rows;
};

TEST(Reasons, holdOnRandomPlans)
{
    std::map<std::string, int> kinds;
    for (unsigned seed = 1; seed <= 60; ++seed)
    {
        test::RandomPlan plan(seed);
        Rows const rows(plan.project());
        Judge const judge(plan.project(), rows);
        for (CTask const * task : plan.tasks())
        {
            std::map<std::pair<CTask const *, bool>, Reason const *> last;
            std::vector<Reason> const reasons = explainDates(rows, plan.project(), *task);
            EXPECT_EQ(reasons.empty(), !task->isValid());
            for (Reason const & reason : reasons)
            {
                ++kinds[reason.kind];
                last[{reason.task, reason.isOfEnd}] = &reason;
                if (!reason.facts.value("countsAllStoredRisk", true)) continue;
                EXPECT_EQ(text(judge.recompute(reason)), text(reason.time)) << "seed " << seed << ": " << reason.text;
            }
            // The last step on each date arrives at it.
            for (auto const & [point, reason] : last)
                EXPECT_EQ(text(reason->time), text(Judge::timeOf(*point.first, point.second)))
                    << "seed " << seed << ": " << reason->text;
        }
    }
    for (char const * kind : {"work", "risk", "storedRisk", "report", "calendar", "link", "constraint", "choice",
                              "actual", "firstChild", "lastChild", "seen"})
        EXPECT_GE(kinds[kind], 3) << kind;
}

// ---- what is said -----------------------------------------------------------------------------------

std::string told(Plan & plan, char const * name)
{
    std::string lines;
    for (Reason const & reason : explainDates(Rows(plan.project), plan.project, plan[name]))
        lines += std::string(reason.task->getName().view()) + ": " + reason.text + '\n';
    return lines;
}

TEST(Reasons, goBackToTheStartOfTheChain)
{
    Plan plan({aTask("dig").lasting(5_d), aTask("frame").after("dig").with({aTask("walls").from("01-12 09:00"_t)})});
    EXPECT_EQ(told(plan, "frame"),
              "frame: It is a summary: of the tasks below it \"walls\" ends last, on Monday 2004-01-12 17:00.\n"
              "walls: It takes 1 working day from Monday 2004-01-12 09:00, and ends on Monday 2004-01-12 17:00.\n"
              "walls: The link from \"dig\" to the summary \"frame\" (finish to start) allows it to start on Monday "
              "2004-01-12 09:00 at the earliest: \"dig\" ends on Friday 2004-01-09 17:00.\n"
              "walls: The project calendar has no work between Friday 2004-01-09 17:00 and Monday 2004-01-12 09:00: "
              "Saturday 2004-01-10, Sunday 2004-01-11.\n"
              "dig: It takes 5 working days from Monday 2004-01-05 09:00, and ends on Friday 2004-01-09 17:00.\n"
              "dig: No link binds it: the planner chose Monday 2004-01-05 09:00.\n"
              "frame: It is a summary: of the tasks below it \"walls\" starts first, on Monday 2004-01-12 09:00.\n"
              "walls: Why it starts then is told above.\n");
}

TEST(Reasons, endInACircle)
{
    Plan plan({aTask("a").after("b"), aTask("b").after("a")});
    EXPECT_NE(told(plan, "a"), "");
}

TEST(Why, takesNamesRowsAndIdentifiersAndRefusesTheRest)
{
    CScratchFolder const folder;
    std::string const file(folder.path("plan.prj").view());
    Plan plan({aTask("dig").with({aTask("pour")}), aTask("frame").with({aTask("pour")}), aBlank("rest")});
    ASSERT_EQ(plan.project.saveToFile(file.c_str()), 1);
    struct
    {
        std::string task;
        int ending;
        char const * says;
    } const cases[] = {
        {"frame", 0, "\"frame\" starts on Monday 2004-01-05 09:00 and ends on Monday 2004-01-05 17:00.\n"},
        {"#2", 0, "\"pour\" starts on"},
        {idText(plan.id("frame")), 0, "\"frame\" starts on"},
        {"rest", 0, "\"rest\" is a blank row and has no dates.\n"},
        {"pour", 1, "2 tasks have the name \"pour\": #2 in \"dig\", #4 in \"frame\"\n"},
        {"Frame", 1, "no task has the name \"Frame\"\n"},
        {"#6", 1, "there is no row #6; the plan has 5\n"},
        {"#99999999999999999999", 1, "there is no row"},
    };
    for (auto const & each : cases)
    {
        test::Ran const ran = test::ran({"why", file, each.task});
        EXPECT_EQ(ran.ending, each.ending) << ran.err;
        EXPECT_NE((each.ending ? ran.err : ran.out).find(each.says), std::string::npos) << ran.out << ran.err;
    }
    Json const answer = Json::parse(test::ran({"why", file, "#2", "--json"}).out);
    EXPECT_EQ(answer["steps"][0]["reason"], "work");
    EXPECT_EQ(answer["steps"][0]["time"], "2004-01-05T17:00");
}

}  // namespace
