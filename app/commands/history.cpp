#include "app/commands/commands.h"

#include <algorithm>
#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/printable.h"
#include "app/session.h"
#include "app/table.h"

namespace orvane::app
{
namespace
{

using HistorySteps = std::vector<Session::Step>;

struct HistoryOptions
{
    std::string path;
    int count = 1;
    bool asJson = false;
    Login login;
};

// A way through the states kept.
struct HistoryDirection
{
    char const * name;
    char const * summary;
    char const * examples;
    char const * done;
    void (Session::*go)(int);
};
constexpr HistoryDirection undoing = {"undo", "goes back to the state before the last actions",
                                      "  orvane undo bridge.prj\n  orvane undo bridge.prj 3", "undone", &Session::undo};
constexpr HistoryDirection redoing = {"redo", "does actions again that were undone",
                                      "  orvane redo bridge.prj\n  orvane redo bridge.prj 2", "redone", &Session::redo};

int goThrough(HistoryOptions const & options, HistoryDirection const & direction)
{
    Session session(options.path, Session::Purpose::changing, options.login);
    int const before = session.state();
    (session.*direction.go)(options.count);
    session.save();
    int const from = std::min(before, session.state()), to = std::max(before, session.state());
    Json actions = Json::array();
    for (Session::Step const & step : session.steps())
        if (step.state >= from && step.state < to) actions.push_back(step.action);
    if (options.asJson)
    {
        printJson(std::cout, {{"state", session.state()}, {direction.done, actions}});
        return ending::done;
    }
    for (Json const & action : actions)
        fmt::print(std::cout, "{}: {}\n", direction.done, printable(action.get<std::string>()));
    fmt::print(std::cout, "state {}\n", session.state());
    return ending::done;
}

Json historyJson(HistorySteps const & steps, int present)
{
    Json list = Json::array();
    for (Session::Step const & step : steps)
        list.push_back({{"state", step.state + 1LL},
                        {"action", step.action},
                        {"time", step.time},
                        {"user", step.user},
                        {"done", step.state < present}});
    return {{"state", present}, {"actions", list}};
}

Table historyTable(HistorySteps const & steps, int present)
{
    Table table({{"", Table::Align::left}, {"State", Table::Align::right}, {"Action"}, {"Time"}, {"User"}});
    auto const add = [&](long long state, Session::Step const & step) {
        table.add({state == present ? "*" : "", std::to_string(state), step.action, step.time, step.user});
    };
    // The actions may not be known from the first state on.
    int const first = steps.empty() ? present : steps.front().state;
    add(first, {first, "(start)", "", ""});
    for (Session::Step const & step : steps) add(step.state + 1LL, step);
    return table;
}

int tellHistory(HistoryOptions const & options)
{
    Session const session(options.path, Session::Purpose::reading, options.login);
    HistorySteps const steps = session.steps();
    if (options.asJson) printJson(std::cout, historyJson(steps, session.state()));
    else historyTable(steps, session.state()).print(std::cout);
    return ending::done;
}

CLI::App & addHistoryCommand(CLI::App & program, HistoryOptions & options, char const * name, char const * summary,
                             char const * examples)
{
    CLI::App & command = addCommand(program, name, summary, examples);
    addProject(command, options.path);
    addJson(command, options.asJson);
    addLoginOption(command, options.login);
    return command;
}

void addDirection(CLI::App & program, HistoryDirection const & direction)
{
    auto const options = std::make_shared<HistoryOptions>();
    CLI::App & command = addHistoryCommand(program, *options, direction.name, direction.summary, direction.examples);
    command.add_option("COUNT", options->count, "how many actions")->check(CLI::PositiveNumber)->capture_default_str();
    onRun(command, [options, &direction] { return goThrough(*options, direction); });
}

}  // namespace

void addHistory(CLI::App & program)
{
    addDirection(program, undoing);
    addDirection(program, redoing);
    auto const options = std::make_shared<HistoryOptions>();
    CLI::App & command =
        addHistoryCommand(program, *options, "history", "lists the actions on a project and its present state",
                          "  orvane history bridge.prj\n  orvane history bridge.prj --json");
    onRun(command, [options] { return tellHistory(*options); });
}

}  // namespace orvane::app
