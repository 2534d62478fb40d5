// The command that makes the page which plays the schedule against the site.

#include "app/commands/commands.h"

#include <filesystem>
#include <memory>

#include <CLI/CLI.hpp>

#include "app/command.h"
#include "app/failure.h"
#include "app/picture_options.h"
#include "app/session.h"
#include "pictures/play.h"

namespace orvane::app
{
namespace
{

struct PlayRequest
{
    std::string project;
    std::string output;
    std::string title;
    std::string at;
    Login login;
};

// When the page opens: as asked for, or where the views are focussed.
CProjectTime openingTime(CProject const & project, std::string const & asked)
{
    return asked.empty() ? project.getGanttPresentation().getFocussedTime() : timeOf("--at", asked);
}

int makePage(PlayRequest const & request)
{
    Session const session(request.project, Session::Purpose::reading, request.login);
    pictures::PlayOptions options;
    options.title = request.title.empty() ? std::filesystem::path(request.project).stem().string() : request.title;
    options.now = CProjectTime::GetTickCount();
    options.at = openingTime(session.project(), request.at);
    writeText(request.output, drawn(request.project, [&] { return playPage(session.project(), options); }));
    return ending::done;
}

}  // namespace

void addPlay(CLI::App & program)
{
    auto const request = std::make_shared<PlayRequest>();
    CLI::App & command =
        addCommand(program, "play", "Makes a page that plays the schedule against the site, in one file.",
                   "  orvane play bridge.prj -o bridge.html\n"
                   "  orvane play bridge.prj -o bridge.html --title \"Bridge over the Ouse\" --at 2027-05-01");
    addProject(command, request->project);
    command.add_option("-o,--output", request->output, "the page, a file of HTML; - is the standard output")
        ->required();
    command.add_option("--title", request->title, "what the page is called; the name of the file unless given");
    command
        .add_option("--at", request->at, "the time at which it opens; the focussed time, or the start, unless given")
        ->type_name("TIME");
    addLoginOption(command, request->login);
    onRun(command, [request] { return makePage(*request); });
}

}  // namespace orvane::app
