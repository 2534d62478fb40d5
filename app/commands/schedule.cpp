#include "app/commands/commands.h"

#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/planning/scheduler.h"
#include "app/printable.h"
#include "app/session.h"
#include "app/table.h"
#include "app/text_values.h"

namespace orvane::app
{
namespace
{

using Json = nlohmann::ordered_json;

char const * const scheduleRules =
    "A link on a summary binds every task below it; one that leaves a summary waits for the last of them. A task that "
    "no link binds stays where the planner put it. So do work that has begun, and tasks that cannot be rescheduled: "
    "those whose links have them elsewhere are listed with the reason. All moves are one action, which undo takes "
    "back.";

struct ScheduleOptions
{
    std::string path;
    bool isDryRun = false;
    bool asJson = false;
    Login login;
};

Json scheduledTask(Rows const & rows, CTask const & task)
{
    return {{"task", task.getName().view()}, {"id", idText(task.getID())}, {"row", rows.numberOf(task)}};
}

Json scheduleAnswer(Rows const & rows, Schedule const & schedule, ScheduleOptions const & options)
{
    Json moved = Json::array(), held = Json::array();
    for (Move const & move : schedule.moves)
    {
        moved.push_back(scheduledTask(rows, *move.task));
        moved.back().update({{"from", isoTime(move.from)}, {"to", isoTime(move.to)}});
    }
    for (HeldTask const & each : schedule.held)
    {
        held.push_back(scheduledTask(rows, *each.task));
        held.back().update({{"start", isoTime(each.task->getStartTime())},
                            {"allowed", each.allowed.isValid() ? Json(isoTime(each.allowed)) : Json()},
                            {"why", each.why}});
    }
    return {{"dryRun", options.isDryRun}, {"rows", rows.size()}, {"moved", moved}, {"held", held}};
}

void printSchedule(Rows const & rows, Schedule const & schedule, ScheduleOptions const & options)
{
    Table::Column const row{"Row", Table::Align::right};
    auto const number = [&](CTask const & task) { return std::to_string(rows.numberOf(task)); };
    auto const name = [](CTask const & task) { return std::string(task.getName().view()); };
    if (!schedule.moves.empty())
    {
        Table moved({row, {"Task"}, {"From"}, {"To"}});
        for (auto const & [task, from, to] : schedule.moves)
            moved.add({number(*task), name(*task), isoTime(from), isoTime(to)});
        moved.print(std::cout);
    }
    if (!schedule.held.empty())
    {
        Table held({row, {"Task stays"}, {"Start"}, {"Links allow"}, {"Why", Table::Align::left, 120}});
        for (auto const & [task, allowed, why] : schedule.held)
            held.add({number(*task), name(*task), isoTime(task->getStartTime()), isoTime(allowed), why});
        held.print(std::cout);
    }
    char const * const verb = options.isDryRun ? "would move" : "moved";
    fmt::print(std::cout, "{} of {} rows {}; {} stay where their links do not have them\n", schedule.moves.size(),
               rows.size(), verb, schedule.held.size());
}

int runSchedule(ScheduleOptions const & options)
{
    auto const purpose = options.isDryRun ? Session::Purpose::reading : Session::Purpose::changing;
    Session session(options.path, purpose, options.login);
    Rows const rows(session.project(), options.path);
    Schedule schedule = findEarliestStarts(rows);
    // Nothing to do is no action.
    if (!options.isDryRun && !schedule.moves.empty())
    {
        session.act("Schedule", [&](CLocalRulesChecker & rules) { return apply(schedule, rules), true; });
        session.save();
    }
    std::ranges::sort(schedule.moves, {}, [&](Move const & move) { return rows.of(*move.task); });
    if (options.asJson) printJson(std::cout, scheduleAnswer(rows, schedule, options));
    else printSchedule(rows, schedule, options);
    for (std::string const & message : session.takeMessages())
        fmt::print(std::cerr, "orvane: {}\n", printable(message));
    return ending::done;
}

}  // namespace

void addSchedule(CLI::App & program)
{
    auto const options = std::make_shared<ScheduleOptions>();
    CLI::App & command = addCommand(
        program, "schedule", "moves each task to the earliest start that its links allow",
        "  orvane schedule bridge.prj --dry-run\n  orvane schedule bridge.prj\n  orvane schedule bridge.prj --json");
    command.footer(std::string(scheduleRules) + "\n\n" + command.get_footer());
    addProject(command, options->path);
    command.add_flag("--dry-run", options->isDryRun, "lists what would move, and changes nothing");
    addJson(command, options->asJson);
    addLoginOption(command, options->login);
    onRun(command, [options] { return runSchedule(*options); });
}

}  // namespace orvane::app
