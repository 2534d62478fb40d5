#include "pictures/time_scale.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <stdexcept>

#include "pictures/canvas.h"

namespace orvane::pictures
{
namespace
{

constexpr std::int64_t dayInMinutes = 24 * 60;
constexpr char const * monthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                       "July",    "August",   "September", "October", "November", "December"};
constexpr char const * dayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

std::chrono::year_month_day dayOf(std::int64_t minute)
{
    return std::chrono::sys_days(std::chrono::days(floorDiv(minute, dayInMinutes)));
}
int yearOf(std::int64_t minute)
{
    return static_cast<int>(dayOf(minute).year());
}
// Months since the year 0.
int monthCount(std::int64_t minute)
{
    return yearOf(minute) * 12 + static_cast<int>(static_cast<unsigned>(dayOf(minute).month())) - 1;
}
std::int64_t minuteOfMonth(int count)
{
    using namespace std::chrono;
    auto const month = static_cast<unsigned>(floorMod(count, 12)) + 1;
    sys_days const start = year(static_cast<int>(floorDiv(count, 12))) / std::chrono::month(month) / 1;
    return start.time_since_epoch().count() * dayInMinutes;
}

std::string twoDigits(std::int64_t number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}
std::string yearText(std::int64_t minute)
{
    return std::to_string(yearOf(minute));
}
std::string dayNumberText(std::int64_t minute)
{
    return std::to_string(static_cast<unsigned>(dayOf(minute).day()));
}
std::string monthName(std::int64_t minute)
{
    return monthNames[static_cast<unsigned>(dayOf(minute).month()) - 1];
}
std::string shortMonth(std::int64_t minute)
{
    return monthName(minute).substr(0, 3);
}
std::string dayText(std::int64_t minute)
{
    return dayNumberText(minute) + ' ' + shortMonth(minute);
}

// What a unit that begins at a minute may be called, the fullest first.
using Labels = std::vector<std::string>;

Labels clockLabels(std::int64_t minute)
{
    std::int64_t const ofDay = floorMod(minute, dayInMinutes);
    return {twoDigits(ofDay / 60) + ':' + twoDigits(ofDay % 60)};
}
Labels hourLabels(std::int64_t minute)
{
    return {twoDigits(floorMod(minute, dayInMinutes) / 60)};
}
Labels dayNumberLabels(std::int64_t minute)
{
    return {dayNumberText(minute)};
}
Labels dayLabels(std::int64_t minute)
{
    std::string const name = dayNames[floorMod(floorDiv(minute, dayInMinutes) + 4, 7)];
    return {name + ' ' + dayNumberText(minute) + ' ' + monthName(minute) + ' ' + yearText(minute),
            name + ' ' + dayText(minute), dayText(minute), dayNumberText(minute)};
}
Labels monthLabels(std::int64_t minute)
{
    return {monthName(minute) + ' ' + yearText(minute), shortMonth(minute) + ' ' + yearText(minute),
            shortMonth(minute)};
}
Labels shortMonthLabels(std::int64_t minute)
{
    return {shortMonth(minute)};
}
Labels quarterLabels(std::int64_t minute)
{
    return {'Q' + std::to_string(monthCount(minute) % 12 / 3 + 1)};
}
Labels yearLabels(std::int64_t minute)
{
    return {yearText(minute)};
}
Labels decadeLabels(std::int64_t minute)
{
    return {yearText(minute) + 's'};
}

Font const rulerFont{.size = 10};

}  // namespace

struct TimeScale::Unit
{
    std::int64_t minutes;  // of one unit, or 0 when it is counted in months
    int months;
    std::int64_t offset;  // minutes by which units of minutes start after 1 January 1970, 00:00
    double leastWidth;    // with which it can be read
    Labels (*labels)(std::int64_t minute);
    int upper;  // the place of the unit to show above

    std::int64_t floor(std::int64_t minute) const
    {
        if (months > 0) return minuteOfMonth(static_cast<int>(floorDiv(monthCount(minute), months)) * months);
        return floorDiv(minute - offset, minutes) * minutes + offset;
    }
    std::int64_t next(std::int64_t start) const
    {
        return months > 0 ? minuteOfMonth(monthCount(start) + months) : start + minutes;
    }
    double meanMinutes() const
    {
        return months > 0 ? months * 30.4375 * static_cast<double>(dayInMinutes) : static_cast<double>(minutes);
    }
};

// Weeks begin on Mondays, which the fifth day of 1970 was.
TimeScale::Unit const TimeScale::units[] = {
    {15, 0, 0, 38, clockLabels, 10},
    {60, 0, 0, 20, hourLabels, 10},
    {6 * 60, 0, 0, 20, hourLabels, 10},
    {dayInMinutes, 0, 0, 18, dayNumberLabels, 9},
    {7 * dayInMinutes, 0, 4 * dayInMinutes, 20, dayNumberLabels, 9},
    {0, 1, 0, 28, shortMonthLabels, 7},
    {0, 3, 0, 22, quarterLabels, 7},
    {0, 12, 0, 34, yearLabels, 8},
    {0, 120, 0, 40, decadeLabels, 11},
    {0, 1, 0, 0, monthLabels, 0},
    {dayInMinutes, 0, 0, 0, dayLabels, 0},
    {0, 1200, 0, 0, decadeLabels, 0},
};
constexpr int lastLowerUnit = 8;

TimeScale::TimeScale(CProjectTime const & from, CProjectTime const & to, double width)
    : first(from.getLocalMinutes()), last(to.getLocalMinutes()), chartWidth(width)
{
    if (!from.isValid() || !to.isValid()) throw std::invalid_argument("the start and the end of a chart must be times");
    if (first >= last) throw std::invalid_argument("the end of a chart must be after its start");
    if (!(width > 0)) throw std::invalid_argument("a chart must have a width");
    Unit const & lowerUnit = finestReadable(width / static_cast<double>(last - first));
    lowerCells = cellsOf(lowerUnit, true);
    upperCells = cellsOf(units[lowerUnit.upper], false);
}

TimeScale::Unit const & TimeScale::finestReadable(double widthOfMinute)
{
    auto const isReadable = [&](Unit const & unit) { return unit.meanMinutes() * widthOfMinute >= unit.leastWidth; };
    return *std::find_if(units, units + lastLowerUnit, isReadable);
}

std::vector<TimeScale::Cell> TimeScale::cellsOf(Unit const & unit, bool isLower) const
{
    constexpr double margin = 3;
    std::vector<Cell> cells;
    for (std::int64_t start = unit.floor(first); start < last; start = unit.next(start))
    {
        Cell cell{std::max(xOfMinute(start), 0.0), std::min(xOfMinute(unit.next(start)), chartWidth), {}};
        // The short names of the lower row would be taken for those of what is left of a unit cut off.
        bool const isNamed = start >= first || !isLower;
        for (std::string const & label : unit.labels(start))
            if (isNamed && cell.label.empty() && textWidth(label, rulerFont) + margin <= cell.right - cell.left)
                cell.label = label;
        cells.push_back(std::move(cell));
    }
    return cells;
}

std::string dateText(CProjectTime const & time)
{
    if (!time.isValid()) return {};
    return dayText(time.getLocalMinutes()) + ' ' + yearText(time.getLocalMinutes());
}

}  // namespace orvane::pictures
