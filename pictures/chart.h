#pragma once

#include <string>

#include "pictures/canvas.h"
#include "pictures/earned_value.h"
#include "pictures/gantt.h"
#include "pictures/utilisation.h"

namespace orvane::pictures
{

struct ChartOptions
{
    static constexpr double leastWidth = 400, mostWidth = 100'000;

    // The ends of the time shown; one that is not valid is where the plan begins, or ends.
    TimeRange range = {};
    // Where the line of the present stands, and as of when work is counted; there is neither if it is not valid.
    CProjectTime now = {};
    // Of a picture in one piece, from leastWidth to mostWidth.
    double width = 1100;

    // The width; throws std::invalid_argument when it cannot be.
    double checkedWidth() const;
};

// Charts as the content of an SVG or PNG file, or of a PDF file of pages of that paper. Colours, and what is shown, are
// as the settings and the views of the project tell. Each throws std::invalid_argument when the end of the time shown
// is not after its start, and when the picture would be larger than its format can be.

// The curves of the costs scheduled, performed and actual over time, and what they come to: on one page.
std::string drawEarnedValue(CProject const & project, ChartOptions const & options, Format format);
std::string printEarnedValue(CProject const & project, ChartOptions const & options, Paper const & paper);

// The units in use against those that there are, a band for each resource, company or kind; on as many pages as it
// takes. Bands are filled columns, or lines when the views show the second of the two types of chart.
std::string drawUtilisation(CProject const & project, UtilisationOptions const & what, ChartOptions const & options,
                            Format format);
std::string printUtilisation(CProject const & project, UtilisationOptions const & what, ChartOptions const & options,
                             Paper const & paper);

}  // namespace orvane::pictures
