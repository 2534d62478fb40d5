#include "app/picture_options.h"

#include <filesystem>
#include <stdexcept>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/command.h"
#include "app/text_values.h"

namespace orvane::app
{

using pictures::Format;

void addPictureOptions(CLI::App & command, PictureRequest & request)
{
    addProject(command, request.project);
    command.add_option("-o,--output", request.output, "the picture; its name ends in .svg, .png or .pdf")->required();
    command.add_option("--from", request.from, "where the chart begins, as 2027-03-01")->type_name("TIME");
    command.add_option("--to", request.to, "where the chart ends")->type_name("TIME");
    command.add_option("--paper", request.paper, "for PDF: A4, A3, A2 or A1")
        ->check(CLI::IsMember({"A4", "A3", "A2", "A1"}));
    command.add_flag("--landscape", request.isLandscape, "for PDF: the long side of the paper lies below");
}

Format formatOf(std::string const & path)
{
    std::string ending = std::filesystem::path(path).extension().string();
    for (char & each : ending) each = each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
    if (ending == ".svg") return Format::svg;
    if (ending == ".png") return Format::png;
    if (ending == ".pdf") return Format::pdf;
    throw Refusal(path + ": the picture's name must end in .svg, .png or .pdf");
}

CProjectTime timeOf(char const * option, std::string const & text)
try
{
    return text.empty() ? CProjectTime() : readTime(text);
}
catch (std::exception const & failure)
{
    throw Refusal(fmt::format("{}: {}", option, failure.what()));
}

std::string drawn(std::string const & subject, std::function<std::string()> const & draw)
try
{
    return draw();
}
catch (std::invalid_argument const & failure)
{
    throw Refusal(subject + ": " + failure.what());
}

}  // namespace orvane::app
