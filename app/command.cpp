#include "app/command.h"

#include <iostream>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/commands/commands.h"
#include "app/failure.h"
#include "app/printable.h"
#include "platform/archive.h"
#include "platform/file.h"

namespace orvane::app
{
namespace
{

char const * const about = "Plans construction schedules: imports, schedules, explains and changes project files.";

// The ending that the command's action answered with.
int answered = ending::done;

int refuse(std::string const & what)
{
    fmt::print(std::cerr, "orvane: {}\n", printable(what));
    return ending::refused;
}

int runParsed(CLI::App & program, int count, char const * const * arguments)
{
    try
    {
        answered = ending::done;
        program.parse(count, arguments);
        return answered;
    }
    catch (CLI::ParseError const & wrong)
    {
        return program.exit(wrong, std::cout, std::cerr) == 0 ? ending::done : ending::wrongUsage;
    }
    catch (CFileException const & failure)
    {
        return refuse(describe(failure));
    }
    catch (CArchiveException const & failure)
    {
        return refuse(describe(failure));
    }
    catch (std::bad_alloc const &)
    {
        return refuse("not enough memory");
    }
    catch (std::exception const & failure)
    {
        return refuse(failure.what());
    }
}

}  // namespace

CLI::App & addCommand(CLI::App & program, std::string const & name, std::string const & summary,
                      std::string const & examples)
{
    CLI::App & command = *program.add_subcommand(name, summary);
    command.footer("Examples:\n" + examples);
    return command;
}

void addProject(CLI::App & command, std::string & path)
{
    command.add_option("PROJECT", path, "the project file")->required();
}

void addJson(CLI::App & command, bool & asJson)
{
    command.add_flag("--json", asJson, "answers as JSON");
}

void onRun(CLI::App & command, std::function<int()> action)
{
    command.callback([action = std::move(action)] { answered = action(); });
}

int run(int count, char const * const * arguments)
{
    CLI::App program(about, "orvane");
    program.set_version_flag("--version", "orvane " ORVANE_VERSION);
    program.require_subcommand(1);
    program.footer("orvane COMMAND --help tells more of a command. Endings: 0 done, 1 refused or failed, 2 wrong usage.");
    addImport(program);
    addExport(program);
    addSchedule(program);
    addWhy(program);
    addShow(program);
    addDump(program);
    addApply(program);
    addHistory(program);
    addScene(program);
    addConfig(program);
    addVerify(program);
    addGantt(program);
    addChart(program);
    addPlay(program);
    int const result = runParsed(program, count, arguments);
    std::cout.flush();
    // A full disk behind a redirection must not pass for success.
    return std::cout ? result : refuse("the output cannot be written");
}

}  // namespace orvane::app
