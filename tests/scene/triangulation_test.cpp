#include "scene/triangulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <utility>

using orvane::triangulate;
using Points = std::vector<CPoint2D>;

namespace
{

CPOINT2DArray toArray(Points const & points)
{
    CPOINT2DArray array;
    for (CPoint2D const & point : points) array.Add(point);
    return array;
}

double cross(CPoint2D const & a, CPoint2D const & b, CPoint2D const & c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}
double areaOf(Points const & polygon)
{
    double sum = 0;
    for (std::size_t each = 2; each < polygon.size(); ++each)
        sum += cross(polygon[0], polygon[each - 1], polygon[each]) / 2;
    return sum;
}

// Each ear takes its signed area off the polygon, so after a wrong cut the triangles, all positive, sum to more.
double areaOfTriangles(Points const & polygon)
{
    double sum = 0;
    for (auto const & [a, b, c] : triangulate(toArray(polygon)).triangles)
        sum += cross(polygon.at(a), polygon.at(b), polygon.at(c)) / 2;
    return sum;
}

Points star(std::size_t corners, std::mt19937 & engine)
{
    Points points;
    for (std::size_t each = 0; each < corners; ++each)
    {
        double const angle = 2 * std::numbers::pi * double(each) / double(corners);
        double const radius = 0.05 + static_cast<double>(engine() % 1000) / 1000;
        points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return points;
}

}  // namespace

TEST(Triangulation, covers_random_polygons_exactly_once)
{
    for (unsigned seed = 0; seed < 3000; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        Points polygon = star(3 + engine() % 60, engine);
        if (seed % 3 == 0) std::ranges::reverse(polygon);
        // At the ends of the range, and far from the origin as surveyors' coordinates are.
        double const factor = seed % 5 == 0 ? 1e-140 : seed % 5 == 1 ? 1e140 : 1;
        double const offset = seed % 5 == 2 ? 5'000'000 : 0;
        for (CPoint2D & point : polygon) point = {point.x * factor + offset, point.y * factor};
        double const area = std::abs(areaOf(polygon));
        EXPECT_NEAR(areaOfTriangles(polygon), area, 1e-7 * area);
    }
}

// A tip that reaches a corner or a side from within must not be cut across, though no point lies in the ear; a
// hole is reached through a bridge that is walked twice.
TEST(Triangulation, sees_what_only_touches)
{
    for (Points const & polygon : std::vector<Points>{
             {{0, 0}, {1, -0.1}, {4, 0}, {4, 4}, {3, 4}, {0, 0}, {2, 4}, {0, 4}, {-0.1, 1}},
             {{0, 0}, {1, -0.1}, {4, 0}, {4, 4}, {3, 4}, {0.5, -0.05}, {2, 4}, {0, 4}, {-0.1, 1}},
             {{0, 0}, {2, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}},
             {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {1, 2}, {1.5, 2.5}, {3, 3}, {2, 1}, {1, 2}},
             {{0, 0}, {4, 0}, {4, 2}, {2, 2}, {2, 3}, {3, 3}, {3, 2}, {4, 2}, {4, 4}, {0, 4}},
         })
        for (std::size_t first = 0; first < polygon.size(); ++first)
        {
            Points turned = polygon;
            std::ranges::rotate(turned, turned.begin() + std::ptrdiff_t(first));
            EXPECT_NEAR(areaOfTriangles(turned), areaOf(polygon), 1e-8);
        }
}

TEST(Triangulation, answers_whatever_the_points)
{
    double const huge = 1.7e308;
    for (auto const & [points, corners] : std::vector<std::pair<Points, std::size_t>>{
             {{}, 0},
             {{{1, 1}, {1, 1}, {1, 1}, {1, 1}}, 0},
             {{{0, 0}, {1, 1}, {2, 2}, {3, 3}}, 0},
             {{{0, 0}, {4, 0}, {4, 4}, {4, 9}, {4, 4}, {0, 4}}, 4},
             {{{0, 0}, {2, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 2}}, 4},
             {{{NAN, 0}, {HUGE_VAL, 0}, {HUGE_VAL, -HUGE_VAL}}, 3},
             {{{-huge, -huge}, {huge, -huge}, {huge, huge}, {-huge, huge}}, 4},
         })
    {
        auto const result = triangulate(toArray(points));
        EXPECT_EQ(result.outline.size(), corners);
        EXPECT_EQ(result.triangles.size(), corners == 0 ? 0 : corners - 2);
    }
    // Points anyhow, which cross each other, repeat and lie in line.
    std::mt19937 engine(1);
    for (int round = 0; round < 3000; ++round)
    {
        Points points(engine() % 40);
        for (CPoint2D & point : points) point = {double(engine() % 6), double(engine() % 6)};
        auto const result = triangulate(toArray(points));
        EXPECT_LE(result.triangles.size() + 2, std::max<std::size_t>(result.outline.size(), 2));
        for (auto const & triangle : result.triangles)
            for (auto const corner : triangle) ASSERT_LT(corner, points.size());
    }
}
