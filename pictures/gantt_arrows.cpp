#include "pictures/gantt.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "pictures/gantt_arrows_impl.h"

namespace orvane::pictures
{
namespace
{

// How far an arrow goes on beyond the bar it leaves, and how much it needs in front of the one it arrives at.
constexpr double stubOut = 5;
constexpr double stubIn = 8;
// Between a vertical line and the bar that it passes.
constexpr double clearance = 3;
// Over so many rows a line crosses bars whatever way it takes.
constexpr std::size_t farApart = 1000;
// What a crossing weighs against bends, and how long a detour weighs as much as one bend.
constexpr double crossingCost = 4, detour = 10;

// What stands in the way of a vertical line from one row to another.
class Obstacles
{
public:
    explicit Obstacles(std::span<Covered const> between)
    {
        if (between.size() > farApart) return;
        for (Covered const & each : between)
        {
            if (each.right < each.left) continue;
            lefts.push_back(each.left - clearance);
            rights.push_back(each.right + clearance);
        }
        std::ranges::sort(lefts);
        std::ranges::sort(rights);
    }

    // The bars across that place: those that begin before it, and do not end before it.
    double crossings(double x) const
    {
        auto const begun = std::ranges::lower_bound(lefts, x) - lefts.begin();
        auto const ended = std::ranges::upper_bound(rights, x) - rights.begin();
        return static_cast<double>(begun - ended);
    }
    struct Column
    {
        double x;
        double cost;
    };
    // The place from `low` to `high` that crosses little and lies near to the wished one.
    Column best(double low, double high, double wish) const
    {
        Column found{wish, crossings(wish) * crossingCost};
        auto const look = [&](double x)
        {
            if (x < low || x > high) return;
            double const cost = crossings(x) * crossingCost + std::abs(x - wish) / detour;
            if (cost < found.cost) found = {x, cost};
        };
        for (double const x : lefts) look(x);
        for (double const x : rights) look(x);
        return found;
    }

private:
    std::vector<double> lefts;
    std::vector<double> rights;
};

struct Way
{
    std::vector<Point> points;
    double cost = std::numeric_limits<double>::infinity();
};

class Router
{
public:
    Router(std::vector<GanttLayout::Row> const & rows, std::span<Covered const> between, ArrowEnd const & from,
           ArrowEnd const & to)
        : from(from), to(to), start(rows[from.row]), goal(rows[to.row]), isDown(to.row > from.row), obstacles(between)
    {
        leave = {from.x + (from.length > 0 ? 0 : sign(from.isFinish) * GanttLayout::Bar::halfDiamond),
                 start.barMiddle()};
        arrive = {to.x + (to.length > 0 ? 0 : sign(to.isFinish) * GanttLayout::Bar::halfDiamond), goal.barMiddle()};
        out = leave.x + sign(from.isFinish) * stubOut;
        in = arrive.x + sign(to.isFinish) * stubIn;
    }

    std::vector<Point> route() const
    {
        Way best = drop();
        for (Way const & way : {direct(), around()})
            if (way.cost < best.cost) best = way;
        return best.points;
    }

private:
    static double sign(bool isFinish) { return isFinish ? 1 : -1; }
    double costOf(double x, double bends) const { return obstacles.crossings(x) * crossingCost + bends; }

    // Along the row and straight down, or up, into the bar: from an end to a start that is not earlier.
    Way drop() const
    {
        if (!from.isFinish || to.isFinish) return {};
        double const x = to.x + std::min(4.0, to.length / 2);
        if (x < from.x) return {};
        double const half = to.length > 0 ? 0 : GanttLayout::Bar::halfDiamond - goal.barHeight() / 2;
        double const tip = isDown ? goal.barTop() - half : goal.barTop() + goal.barHeight() + half;
        // A diamond below the very end of a bar hangs from it.
        if (x < leave.x + 1) return {{{x, leave.y}, {x, tip}}, costOf(x, 0)};
        return {{leave, {x, leave.y}, {x, tip}}, costOf(x, 1)};
    }

    // Out of one bar, down a column, and into the other.
    Way direct() const
    {
        constexpr double far = std::numeric_limits<double>::max();
        double const low = std::max(from.isFinish ? out : -far, to.isFinish ? in : -far);
        double const high = std::min(from.isFinish ? far : out, to.isFinish ? far : in);
        if (low > high) return {};
        auto const [x, cost] = obstacles.best(low, high, std::clamp(in, low, high));
        return {{leave, {x, leave.y}, {x, arrive.y}, arrive}, cost + 2};
    }

    // By way of the gaps beside the two rows, for what lies back to back.
    Way around() const
    {
        constexpr double far = std::numeric_limits<double>::max();
        double const first = isDown ? start.bottom() : start.top;
        double const second = isDown ? goal.top : goal.bottom();
        Obstacles::Column const nearOut = obstacles.best(-far, far, out), nearIn = obstacles.best(-far, far, in);
        auto const [x, cost] = nearOut.cost < nearIn.cost ? nearOut : nearIn;
        return {{leave, {out, leave.y}, {out, first}, {x, first}, {x, second}, {in, second}, {in, arrive.y}, arrive},
                cost + 4};
    }

    ArrowEnd from, to;
    GanttLayout::Row const & start;
    GanttLayout::Row const & goal;
    bool isDown;
    Obstacles obstacles;
    Point leave, arrive;
    double out, in;
};

// Without points that lie on the line between their neighbours.
std::vector<Point> straightened(std::vector<Point> const & points)
{
    std::vector<Point> kept;
    auto const same = [](double a, double b) { return std::abs(a - b) < 0.01; };
    for (Point const & point : points)
    {
        if (!kept.empty() && same(kept.back().x, point.x) && same(kept.back().y, point.y)) continue;
        if (kept.size() >= 2)
        {
            Point const & last = kept.back();
            Point const & before = kept[kept.size() - 2];
            bool const isVertical = same(before.x, last.x) && same(last.x, point.x);
            bool const isLevel = same(before.y, last.y) && same(last.y, point.y);
            if (isVertical || isLevel) kept.pop_back();
        }
        kept.push_back(point);
    }
    return kept;
}

}  // namespace

std::vector<Point> routeArrow(std::vector<GanttLayout::Row> const & rows, std::vector<Covered> const & covered,
                              ArrowEnd const & from, ArrowEnd const & to)
{
    auto const [upper, lower] = std::minmax(from.row, to.row);
    std::span<Covered const> const between(covered.begin() + static_cast<std::ptrdiff_t>(upper) + 1,
                                           covered.begin() + static_cast<std::ptrdiff_t>(lower));
    return straightened(Router(rows, between, from, to).route());
}

}  // namespace orvane::pictures
