#pragma once

#include <string>

#include "pictures/canvas.h"
#include "values/date_time.h"

// What the commands that draw have in common.
namespace orvane::app
{

// By the ending of the picture's name; refuses another than .svg, .png and .pdf.
pictures::Format formatOf(std::string const & path);
// Not valid for an empty text; refuses what is no time, by the name of the option.
CProjectTime timeOf(char const * option, std::string const & text);

}  // namespace orvane::app
