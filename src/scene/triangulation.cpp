#include "scene/triangulation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace
{

using Index = std::uint32_t;

// A point moved to a fine grid, on which the side of a line is computed exactly.
struct GridPoint
{
    std::int64_t x;
    std::int64_t y;

    friend bool operator==(GridPoint const &, GridPoint const &) = default;
};

constexpr double gridSize = 1 << 30;

// Positive when c lies left of the line from a to b, zero on the line: twice the area of the triangle.
// Differences have 31 bits, so nothing overflows.
std::int64_t side(GridPoint const & a, GridPoint const & b, GridPoint const & c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// The same as a sign, zero also when c is within a step of the grid from the line: a point that was meant to lie
// on it does so only as far as rounding lets it.
int roughSide(GridPoint const & a, GridPoint const & b, GridPoint const & c)
{
    std::int64_t const step = std::abs(b.x - a.x) + std::abs(b.y - a.y);
    std::int64_t const exact = side(a, b, c);
    return (exact > step) - (exact < -step);
}

// The polygon in units of a billionth of its size, from whatever range of doubles.
std::vector<GridPoint> toGrid(CPOINT2DArray const & polygon)
{
    // Halves, so that the difference of the largest numbers is one too.
    CPoint2D low{HUGE_VAL, HUGE_VAL};
    CPoint2D high{-HUGE_VAL, -HUGE_VAL};
    auto const half = [](CPoint2D const & point)
    {
        CPoint2D const known = orvane::finite(point);
        return CPoint2D{known.x / 2, known.y / 2};
    };
    for (CPoint2D const & each : polygon)
    {
        CPoint2D const point = half(each);
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    double const size = std::max(high.x - low.x, high.y - low.y);
    auto const snapped = [size](double offset)
    { return size > 0 ? std::llround((offset / size - 0.5) * gridSize) : 0; };
    std::vector<GridPoint> points;
    points.reserve(static_cast<std::size_t>(polygon.GetSize()));
    for (CPoint2D const & each : polygon)
        points.push_back({snapped(half(each).x - low.x), snapped(half(each).y - low.y)});
    return points;
}

// Cuts ears off a polygon: corners whose triangle lies inside it and holds none of the rest.
class EarClipper
{
public:
    explicit EarClipper(CPOINT2DArray const & polygon) : points(toGrid(polygon)) {}

    orvane::Triangulation run()
    {
        orvane::Triangulation result;
        result.outline = corners();
        link(result.outline);
        clip(result.triangles);
        return result;
    }

private:
    // How much is asked of an ear. A sound polygon always has one that satisfies `exact`; in one that crosses itself
    // a full round without any lowers the demand for one cut.
    enum class Care
    {
        exact,
        convexOnly,
        none
    };

    // A spike of no width is straight too, and goes with what it leaves behind.
    std::vector<Index> corners() const
    {
        std::vector<Index> kept;
        kept.reserve(points.size());
        for (Index each = 0; each < points.size(); ++each) push(kept, each);
        // The seam between the last corner and the first.
        std::size_t first = 0;
        for (bool dropped = true; dropped && kept.size() - first > 2;)
        {
            dropped = true;
            if (isStraight(kept[kept.size() - 2], kept.back(), kept[first])) kept.pop_back();
            else if (isStraight(kept.back(), kept[first], kept[first + 1])) ++first;
            else dropped = false;
        }
        kept.erase(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(first));
        if (kept.size() < 3) return {};
        if (area(kept) < 0) std::reverse(kept.begin(), kept.end());
        return kept;
    }
    void push(std::vector<Index> & kept, Index next) const
    {
        while (kept.size() > 1 && isStraight(kept[kept.size() - 2], kept.back(), next)) kept.pop_back();
        if (kept.empty() || !(points[kept.back()] == points[next])) kept.push_back(next);
    }
    bool isStraight(Index a, Index b, Index c) const { return side(points[a], points[b], points[c]) == 0; }
    double area(std::vector<Index> const & ring) const
    {
        double sum = 0;
        for (std::size_t each = 2; each < ring.size(); ++each)
            sum += static_cast<double>(side(points[ring[0]], points[ring[each - 1]], points[ring[each]]));
        return sum;
    }

    void link(std::vector<Index> const & ring)
    {
        before.resize(points.size());
        after.resize(points.size());
        for (std::size_t each = 0; each < ring.size(); ++each)
        {
            Index const next = ring[each + 1 < ring.size() ? each + 1 : 0];
            after[ring[each]] = next;
            before[next] = ring[each];
        }
        for (Index const corner : ring)
            if (isReentrant(corner)) reentrant.push_back(corner);
        left = ring.size();
        current = ring.empty() ? 0 : ring.front();
    }

    void clip(std::vector<orvane::Triangle> & triangles)
    {
        triangles.reserve(left);
        Care care = Care::exact;
        for (std::size_t refused = 0; left >= 3;)
        {
            if (--work < 0) care = Care::none;
            if (isEar(current, care))
            {
                if (turn(current) > 0) triangles.push_back({before[current], current, after[current]});
                cut(current);
                refused = 0;
                care = Care::exact;
            }
            else
            {
                current = after[current];
                if (++refused < left) continue;
                care = care == Care::exact ? Care::convexOnly : Care::none;
                refused = 0;
            }
        }
    }
    // Goes on two corners further, which keeps triangles from fanning out of one corner.
    void cut(Index corner)
    {
        Index const previous = before[corner];
        Index const next = after[corner];
        after[previous] = next;
        before[next] = previous;
        after[corner] = before[corner] = corner;
        --left;
        current = after[next];
    }

    bool isEar(Index corner, Care care)
    {
        if (care == Care::none || turn(corner) == 0) return true;
        if (turn(corner) < 0) return false;
        return care == Care::convexOnly || !isEntered(before[corner], corner, after[corner]);
    }
    // Whether the outline enters the triangle. It then has a reentrant corner there, so only those are asked.
    bool isEntered(Index a, Index b, Index c)
    {
        for (std::size_t each = 0; each < reentrant.size() && work > 0;)
        {
            Index const corner = reentrant[each];
            // A corner that was cut, or opened by a cut, never becomes reentrant again.
            if (!isReentrant(corner))
            {
                reentrant[each] = reentrant.back();
                reentrant.pop_back();
                continue;
            }
            ++each;
            --work;
            if (corner != a && corner != c && enters(corner, points[a], points[b], points[c])) return true;
        }
        return false;
    }
    bool enters(Index corner, GridPoint const & a, GridPoint const & b, GridPoint const & c) const
    {
        GridPoint const & point = points[corner];
        int const ab = roughSide(a, b, point);
        int const bc = roughSide(b, c, point);
        if (ab < 0 || bc < 0 || side(c, a, point) < 0 || point == a || point == c) return false;
        // A corner that only touches a side enters where one of its own sides leads inward.
        auto const leadsInward = [&](GridPoint const & neighbour)
        { return (ab > 0 || roughSide(a, b, neighbour) > 0) && (bc > 0 || roughSide(b, c, neighbour) > 0); };
        return leadsInward(points[before[corner]]) || leadsInward(points[after[corner]]);
    }

    std::int64_t turn(Index corner) const
    {
        return side(points[before[corner]], points[corner], points[after[corner]]);
    }
    bool isReentrant(Index corner) const { return turn(corner) < 0; }

    // The corners that are left form a ring; one that was cut is its own neighbour.
    std::vector<GridPoint> points;
    std::vector<Index> before;
    std::vector<Index> after;
    // All reentrant corners of the ring, and some that no longer are: those are dropped when met.
    std::vector<Index> reentrant;
    std::size_t left = 0;
    Index current = 0;
    // How many more corners may be looked at: in proportion, so that no file makes a viewer wait for long.
    std::int64_t work = std::min<std::int64_t>(100'000'000, std::int64_t{10'000} * std::ssize(points));
};

}  // namespace

orvane::Triangulation orvane::triangulate(CPOINT2DArray const & polygon)
{
    return EarClipper(polygon).run();
}
