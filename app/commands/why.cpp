#include "app/commands/commands.h"

#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>
#include <nlohmann/json.hpp>

#include "app/command.h"
#include "app/dump/json_text.h"
#include "app/planning/reasons.h"
#include "app/printable.h"
#include "app/session.h"
#include "app/text_values.h"

namespace orvane::app
{
namespace
{

using Json = nlohmann::ordered_json;

struct WhyOptions
{
    std::string path;
    std::string task;
    bool asJson = false;
    Login login;
};

Json explainedTask(Rows const & rows, CTask const & task)
{
    return {{"task", task.getName().view()},
            {"id", idText(task.getID())},
            {"row", rows.numberOf(task)},
            {"start", isoTime(task.getStartTime())},
            {"end", isoTime(task.getEndTime())}};
}

Json whyAnswer(Rows const & rows, CTask const & task, std::vector<Reason> const & reasons)
{
    Json answer = explainedTask(rows, task);
    Json & steps = answer["steps"] = Json::array();
    for (Reason const & reason : reasons)
    {
        Json step = {{"task", reason.task->getName().view()},
                     {"id", idText(reason.task->getID())},
                     {"row", rows.numberOf(*reason.task)},
                     {"of", reason.isOfEnd ? "end" : "start"},
                     {"reason", reason.kind},
                     {"time", isoTime(reason.time)}};
        step.update(reason.facts);
        step["text"] = reason.text;
        steps.push_back(std::move(step));
    }
    return answer;
}

// A line for each task of the chain, and below it one for each step.
void printReasons(CTask const & task, std::vector<Reason> const & reasons)
{
    CTask const * told = nullptr;
    for (Reason const & reason : reasons)
    {
        if (reason.task != told)
            fmt::print(std::cout, "{} starts on {} and ends on {}.\n", printable(quoted(*reason.task)),
                       momentText(reason.task->getStartTime()), momentText(reason.task->getEndTime()));
        told = reason.task;
        fmt::print(std::cout, "  {}\n", printable(reason.text));
    }
    if (reasons.empty()) fmt::print(std::cout, "{} is a blank row and has no dates.\n", printable(quoted(task)));
}

int runWhy(WhyOptions const & options)
{
    Session const session(options.path, Session::Purpose::reading, options.login);
    Rows const rows(session.project(), options.path);
    CTask const & task = rows.choose(options.task);
    std::vector<Reason> const reasons = explainDates(rows, session.project(), task);
    if (options.asJson) printJson(std::cout, whyAnswer(rows, task, reasons));
    else printReasons(task, reasons);
    return ending::done;
}

}  // namespace

void addWhy(CLI::App & program)
{
    auto const options = std::make_shared<WhyOptions>();
    CLI::App & command = addCommand(program, "why", "tells why a task starts and ends when it does",
                                    "  orvane why bridge.prj \"Pour the deck\"\n  orvane why bridge.prj '#12' --json");
    command.footer("The answer goes back from link to link to the start of the chain: what drives each date, and what "
                   "the calendar, constraints, risks, reports and progress make of it.\n\n" +
                   command.get_footer());
    addProject(command, options->path);
    command.add_option("TASK", options->task, "its exact name, # and its row from 1, or its 32 hexadecimal digits")
        ->required();
    addJson(command, options->asJson);
    addLoginOption(command, options->login);
    onRun(command, [options] { return runWhy(*options); });
}

}  // namespace orvane::app
