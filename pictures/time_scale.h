#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "values/date_time.h"

namespace orvane::pictures
{

// Where the moments of a chart stand on its width, and the two rows of units above it.
//
// The scale is even in the time of the local clock. The lower row has the finest units that are wide enough to be
// read, from quarters of an hour to decades; the upper row tells to what they belong.
class TimeScale
{
public:
    // One unit, as far as the chart shows it, with what it is called; no label where there is no room for one.
    struct Cell
    {
        double left;
        double right;
        std::string label;

        friend bool operator==(Cell const &, Cell const &) = default;
    };

    // Throws std::invalid_argument unless both times are valid, the end is after the start and the width positive.
    TimeScale(CProjectTime const & from, CProjectTime const & to, double width);

    double width() const { return chartWidth; }
    CProjectTime from() const { return CProjectTime::fromLocalMinutes(first); }
    CProjectTime to() const { return CProjectTime::fromLocalMinutes(last); }
    // From 0 at the start to the width at the end; moments outside the chart lie outside of these.
    double x(CProjectTime const & time) const { return xOfMinute(time.getLocalMinutes()); }
    double xOfMinute(std::int64_t localMinute) const
    {
        return static_cast<double>(localMinute - first) * chartWidth / static_cast<double>(last - first);
    }
    double widthOfDay() const { return xOfMinute(first + 24 * 60); }
    std::vector<Cell> const & upper() const { return upperCells; }
    std::vector<Cell> const & lower() const { return lowerCells; }

private:
    struct Unit;
    static Unit const units[];
    static Unit const & finestReadable(double widthOfMinute);
    std::vector<Cell> cellsOf(Unit const & unit, bool isLower) const;

    std::int64_t first;
    std::int64_t last;
    double chartWidth;
    std::vector<Cell> upperCells;
    std::vector<Cell> lowerCells;
};

// A day as "2 Mar 2027", whatever the locale; empty when the time is not valid.
std::string dateText(CProjectTime const & time);

}  // namespace orvane::pictures
