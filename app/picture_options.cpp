#include "app/picture_options.h"

#include <filesystem>

#include <fmt/format.h>

#include "app/command.h"
#include "app/text_values.h"

namespace orvane::app
{

using pictures::Format;

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

}  // namespace orvane::app
