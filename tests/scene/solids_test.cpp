#include "scene/solids.h"

#include "scene/entity_group.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <memory>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace
{

// Of a closed surface whose triangles run counter-clockwise from outside; below zero when they run clockwise.
double volumeOf(orvane::Mesh const & mesh)
{
    double sum = 0;
    for (auto const & triangle : mesh.triangles)
    {
        CPoint3D const & a = mesh.points.at(triangle[0]);
        CPoint3D const & b = mesh.points.at(triangle[1]);
        CPoint3D const & c = mesh.points.at(triangle[2]);
        sum += a.x * (b.y * c.z - b.z * c.y) - a.y * (b.x * c.z - b.z * c.x) + a.z * (b.x * c.y - b.y * c.x);
    }
    return sum / 6;
}

CPOINT2DArray toArray(std::initializer_list<CPoint2D> points)
{
    CPOINT2DArray array;
    for (CPoint2D const & point : points) array.Add(point);
    return array;
}

// One of each kind, at `height` where it has one, with its volume before any transform.
std::vector<std::pair<std::unique_ptr<CEntity>, double>> solids(float height)
{
    auto extrusion = std::make_unique<CEntityExtrusion>();
    extrusion->setPoints(toArray({{0, 0}, {3, 0}, {3, 3}, {2, 3}, {2, 1}, {1, 1}, {1, 3}, {0, 3}}));
    extrusion->setHeight(height);
    auto cylinder = std::make_unique<CEntityCylinder>();
    cylinder->setPosition({1, 2, 3});
    cylinder->setRadius(2);
    cylinder->setHeight(height);
    auto sphere = std::make_unique<CEntitySphere>();
    sphere->setPosition({-1, 5, 0.5});
    sphere->setRadius(3);
    std::vector<std::pair<std::unique_ptr<CEntity>, double>> made;
    made.emplace_back(std::move(extrusion), 7 * std::abs(height));
    made.emplace_back(std::move(cylinder), 4 * std::numbers::pi * std::abs(height));
    made.emplace_back(std::move(sphere), 36 * std::numbers::pi);
    return made;
}

void expectNear(CPoint3D const & a, CPoint3D const & b, double tolerance)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

}  // namespace

// The surface is closed, faces outward, has the volume of the shape and fills the bounds, wherever it stands and
// also where it is mirrored. A sphere of chords falls short by a good percent.
TEST(Solids, surface_and_bounds_agree_with_the_shape)
{
    std::mt19937 engine(5);
    std::uniform_real_distribution<double> number(-2, 2);
    auto const vector = [&] { return CVector{number(engine), number(engine), number(engine)}; };
    for (int round = 0; round < 50; ++round)
        for (auto const & [entity, volume] : solids(round % 2 == 0 ? 4 : -0.5F))
        {
            CVector const factors = vector();
            entity->setTransform(CTransform::translation(vector()) * CTransform::rotation(vector(), number(engine)) *
                                 CTransform::scaling(factors));
            double const expected = volume * std::abs(factors.x * factors.y * factors.z);
            orvane::Mesh const mesh = entity->getMesh();
            EXPECT_NEAR(volumeOf(mesh), expected, 0.025 * expected);
            orvane::Box const bounds = entity->getBounds();
            orvane::Box filled;
            for (CPoint3D const & point : mesh.points) filled.include({point, point});
            expectNear(bounds.low, filled.low, 0.06);
            expectNear(bounds.high, filled.high, 0.06);
            filled.include(bounds);
            expectNear(bounds.low, filled.low, 1e-12);
            expectNear(bounds.high, filled.high, 1e-12);
        }
}

TEST(Transform, places_points)
{
    double const right = std::numbers::pi / 2;
    for (auto const & [transform, image] : std::vector<std::pair<CTransform, CPoint3D>>{
             {CTransform(), {1, 2, 3}},
             {CTransform::translation({10, 20, 30}), {11, 22, 33}},
             {CTransform::rotation({0, 0, 5}, right), {-2, 1, 3}},
             {CTransform::rotation({1e300, 0, 0}, right), {1, -3, 2}},
             {CTransform::rotation({0, 0, 0}, right), {1, 2, 3}},
             {CTransform::rotation({NAN, 0, 1}, right), {1, 2, 3}},
             {CTransform::scaling({1, -1, 2}), {1, -2, 6}},
             {CTransform::translation({10, 0, 0}) * CTransform::rotation({0, 0, 1}, right), {8, 1, 3}},
             {CTransform::rotation({0, 0, 1}, right) * CTransform::translation({10, 0, 0}), {-2, 11, 3}},
         })
        expectNear(transform * CPoint3D{1, 2, 3}, image, 1e-12);
}

TEST(Transform, identity_however_reached_is_one_and_the_text_reads_by_rows)
{
    CTransform transform = CTransform::translation({1.5, -2e-7, 1e22});
    char * text = nullptr;
    transform.matrixToString(&text);
    std::unique_ptr<char[]> const owner(text);
    EXPECT_STREQ(text, "1 0 0 1.5 0 1 0 -2e-07 0 0 1 1e+22 0 0 0 1");
    CTransform const copy = transform;
    transform = CTransform::translation({-1.5, 2e-7, -1e22}) * transform;
    EXPECT_TRUE(transform.isIdentity() && transform == CTransform() && transform != copy);
    EXPECT_EQ(copy.getElement(0, 3), 1.5);
    EXPECT_EQ(CTransform({NAN, HUGE_VAL}).getElement(1, 0), std::numeric_limits<double>::max());
}
