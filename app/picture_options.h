#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/session.h"
#include "pictures/canvas.h"
#include "values/date_time.h"

// What the commands that draw have in common.
namespace orvane::app
{

struct PictureRequest
{
    std::string project, output, from, to;
    std::optional<std::string> paper;
    bool isLandscape = false;
    Login login;
};
// PROJECT, --output, --from, --to, --paper and --landscape.
void addPictureOptions(CLI::App & command, PictureRequest & request);

// By the ending of the picture's name; refuses another than .svg, .png and .pdf.
pictures::Format formatOf(std::string const & path);
// Not valid for an empty text; refuses what is no time, by the name of the option.
CProjectTime timeOf(char const * option, std::string const & text);
// What `draw` answers; what it cannot draw is refused, by the name of the subject.
std::string drawn(std::string const & subject, std::function<std::string()> const & draw);

}  // namespace orvane::app
