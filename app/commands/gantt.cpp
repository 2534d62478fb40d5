// The command that draws the Gantt chart.

#include "app/commands/commands.h"

#include <iostream>
#include <memory>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/command.h"
#include "app/dump/figures.h"
#include "app/failure.h"
#include "app/picture_options.h"
#include "app/session.h"
#include "pictures/gantt.h"

namespace orvane::app
{
namespace
{

using pictures::Format;
using pictures::GanttLayout;
using pictures::GanttOptions;
using pictures::Paper;

struct GanttRequest : PictureRequest
{
    bool isOnePage = false;
    bool isExpanded = false, isCollapsed = false;
    bool hidesLinks = false;
    int width = 0;
};

GanttOptions optionsOf(GanttRequest const & request)
{
    GanttOptions options;
    options.from = timeOf("--from", request.from);
    options.to = timeOf("--to", request.to);
    options.now = CProjectTime::GetTickCount();
    if (request.isExpanded) options.rows = GanttOptions::Rows::all;
    if (request.isCollapsed) options.rows = GanttOptions::Rows::roots;
    options.showsLinks = !request.hidesLinks;
    options.width = request.width;
    return options;
}

std::string pdfOf(CProject const & project, GanttRequest const & request)
{
    Paper paper = pictures::paperOfSettings(request.paper.value_or("A4"), request.isLandscape);
    paper.isOnePage = request.isOnePage;
    GanttLayout const layout = pictures::layOutGantt(project, optionsOf(request), paper);
    constexpr double leastReadable = 4, pointsOfText = 8;
    double const points =
        paper.isOnePage ? pointsOfText / pictures::enlargementForOnePage(layout, paper) : pointsOfText;
    if (points < leastReadable)
        fmt::print(std::cerr,
                   "orvane: on one page the letters are only {:.1f} points high; larger paper, or several "
                   "pages, are easier to read\n",
                   points);
    return pictures::printGantt(layout, paper);
}

std::string pictureOf(CProject const & project, GanttRequest const & request)
{
    Format const format = formatOf(request.output);
    if (format == Format::pdf) return pdfOf(project, request);
    if (request.paper || request.isLandscape || request.isOnePage)
        throw Refusal(request.output + ": --paper, --landscape and --one-page are for PDF");
    GanttLayout const layout = pictures::layOutGantt(project, optionsOf(request));
    if (format == Format::png && layout.height() > pictures::mostPixels)
        throw Refusal(
            fmt::format("{}: {} rows are more than a PNG can show; SVG and PDF can, and --collapsed shows fewer",
                        request.output, layout.rows.size()));
    return pictures::drawGantt(layout, format);
}

int draw(GanttRequest const & request)
{
    formatOf(request.output);
    CriticalPathAsked const asked;
    Session const session(request.project, Session::Purpose::reading, request.login);
    writeText(request.output, drawn(request.output, [&] { return pictureOf(session.project(), request); }));
    return ending::done;
}

}  // namespace

void addGantt(CLI::App & program)
{
    auto const request = std::make_shared<GanttRequest>();
    CLI::App & command = addCommand(program, "gantt", "draws the Gantt chart as SVG, PNG or PDF",
                                    "  orvane gantt bridge.prj -o bridge.svg\n"
                                    "  orvane gantt bridge.prj -o bridge.pdf --paper A3 --landscape\n"
                                    "  orvane gantt bridge.prj -o may.png --from 2027-05-01 --to 2027-06-01 --expand");
    addPictureOptions(command, *request);
    command.add_flag("--one-page", request->isOnePage, "for PDF: everything on one page, made smaller where it must");
    CLI::Option * const expand =
        command.add_flag("--expand", request->isExpanded, "all rows, also those that the views show collapsed");
    command.add_flag("--collapsed", request->isCollapsed, "the outermost rows alone")->excludes(expand);
    command.add_flag("--no-links", request->hidesLinks, "no arrows between linked tasks");
    command.add_option("--width", request->width, "of the whole picture, in pixels")
        ->check(CLI::Range(static_cast<int>(GanttOptions::leastWidth), static_cast<int>(GanttOptions::mostWidth)));
    addLoginOption(command, request->login);
    onRun(command, [request] { return draw(*request); });
}

}  // namespace orvane::app
