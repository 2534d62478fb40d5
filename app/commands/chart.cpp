// The command that draws the charts of earned value and of the use of resources.

#include "app/commands/commands.h"

#include <memory>
#include <optional>

#include <CLI/CLI.hpp>

#include "app/command.h"
#include "app/failure.h"
#include "app/picture_options.h"
#include "app/session.h"
#include "pictures/chart.h"

namespace orvane::app
{
namespace
{

using pictures::ChartOptions;
using pictures::Format;
using pictures::Paper;
using pictures::UtilisationOptions;

struct ChartRequest : PictureRequest
{
    bool isEarnedValue = false, isUtilisation = false;
    std::string by;
    std::string at;
    std::optional<int> width;
};

ChartOptions optionsOf(ChartRequest const & request)
{
    ChartOptions options;
    options.range = {timeOf("--from", request.from), timeOf("--to", request.to)};
    options.now = request.at.empty() ? CProjectTime::GetTickCount() : timeOf("--at", request.at);
    if (request.width) options.width = *request.width;
    return options;
}

UtilisationOptions utilisationOf(CProject const & project, ChartRequest const & request)
{
    using By = UtilisationOptions::By;
    UtilisationOptions options = pictures::utilisationOptionsOf(project);
    if (!request.by.empty())
        options.by = request.by == "company" ? By::company : request.by == "kind" ? By::kind : By::resource;
    return options;
}

std::string pictureOf(CProject const & project, ChartRequest const & request)
{
    Format const format = formatOf(request.output);
    ChartOptions const options = optionsOf(request);
    UtilisationOptions const what = utilisationOf(project, request);
    if (format == Format::pdf)
    {
        if (request.width) throw Refusal(request.output + ": --width is for SVG and PNG");
        Paper const paper = pictures::paperOfSettings(request.paper.value_or("A4"), request.isLandscape);
        return request.isEarnedValue ? printEarnedValue(project, options, paper)
                                     : printUtilisation(project, what, options, paper);
    }
    if (request.paper || request.isLandscape) throw Refusal(request.output + ": --paper and --landscape are for PDF");
    return request.isEarnedValue ? drawEarnedValue(project, options, format)
                                 : drawUtilisation(project, what, options, format);
}

int draw(ChartRequest const & request)
{
    if (!request.isEarnedValue && !request.isUtilisation) throw CLI::RequiredError("--earned-value or --utilisation");
    formatOf(request.output);
    Session const session(request.project, Session::Purpose::reading, request.login);
    writeText(request.output, drawn(request.output, [&] { return pictureOf(session.project(), request); }));
    return ending::done;
}

}  // namespace

void addChart(CLI::App & program)
{
    auto const request = std::make_shared<ChartRequest>();
    CLI::App & command =
        addCommand(program, "chart", "draws earned value, or the use of resources, over time as SVG, PNG or PDF",
                   "  orvane chart bridge.prj --earned-value -o value.svg\n"
                   "  orvane chart bridge.prj --earned-value --at 2027-05-01 -o may.pdf --landscape\n"
                   "  orvane chart bridge.prj --utilisation --by company -o use.png");
    addPictureOptions(command, *request);
    CLI::Option * const value =
        command.add_flag("--earned-value", request->isEarnedValue, "draws the costs scheduled, performed and actual");
    CLI::Option * const use = command.add_flag("--utilisation", request->isUtilisation,
                                               "draws the units in use against those that there are");
    use->excludes(value);
    command.add_option("--by", request->by, "for the use of resources: a band for each resource, company or kind")
        ->check(CLI::IsMember({"resource", "company", "kind"}))
        ->needs(use);
    command.add_option("--at", request->at, "as of when work is counted; now unless given")->type_name("TIME");
    command.add_option("--width", request->width, "for SVG and PNG: of the whole picture, in pixels")
        ->check(CLI::Range(static_cast<int>(ChartOptions::leastWidth), static_cast<int>(ChartOptions::mostWidth)));
    addLoginOption(command, request->login);
    onRun(command, [request] { return draw(*request); });
}

}  // namespace orvane::app
