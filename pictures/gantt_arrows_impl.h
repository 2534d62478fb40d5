#pragma once

#include <vector>

#include "pictures/gantt.h"

namespace orvane::pictures
{

// The stretch of a row that its bars cover; right is less than left when there are none.
struct Covered
{
    double left = 1;
    double right = 0;
};

// Where an arrow leaves a row's bar, or arrives at it.
struct ArrowEnd
{
    std::size_t row;
    double x;
    bool isFinish;  // the end of the bar rather than its start
    double length;  // of the bar, which an arrow from above may reach anywhere; 0 for a diamond
};

// A way between the bars of two different rows: with as few crossings of the bars of rows between as can be had, and
// among those with few bends.
std::vector<Point> routeArrow(std::vector<GanttLayout::Row> const & rows, std::vector<Covered> const & covered,
                              ArrowEnd const & from, ArrowEnd const & to);

}  // namespace orvane::pictures
