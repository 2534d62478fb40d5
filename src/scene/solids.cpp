#include "scene/solids.h"

#include "scene/scene_form_impl.h"
#include "scene/triangulation.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace orvane
{

namespace
{

// Sides of a full circle, and bands between the poles of a sphere.
constexpr Triangle::value_type circleSides = 32;
constexpr Triangle::value_type sphereBands = 16;

CPoint2D onCircle(Triangle::value_type step, Triangle::value_type stepsAround, double radius)
{
    double const angle = 2 * std::numbers::pi * step / stepsAround;
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

// The scalar product: how far `a` reaches along `b`, times the length of `b`.
double product(CVector const & a, CVector const & b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
CVector fromOrigin(CPoint3D const & point)
{
    return {point.x, point.y, point.z};
}

Extent around(double middle, double reach)
{
    return {middle - reach, middle + reach};
}
// Of a shape that is drawn along another line, which reaches `by`: below where it is negative.
Extent drawnUp(Extent const & extent, double by)
{
    return {extent.low + std::min(0.0, by), extent.high + std::max(0.0, by)};
}

void turnInsideOut(std::vector<Triangle> & triangles)
{
    for (auto & [a, b, c] : triangles) std::swap(b, c);
}

// The solid between a polygon that runs counter-clockwise, cut into `cap`, and the same one at `height` above.
Mesh prism(std::vector<CPoint3D> const & base, std::vector<Triangle> const & cap, double height)
{
    auto const corners = static_cast<Triangle::value_type>(base.size());
    Mesh mesh;
    mesh.points = base;
    for (CPoint3D const & point : base) mesh.points.push_back(point + CVector{0, 0, height});
    for (auto const & [a, b, c] : cap)
    {
        mesh.triangles.push_back({a, c, b});
        mesh.triangles.push_back({corners + a, corners + b, corners + c});
    }
    for (Triangle::value_type from = 0; from < corners; ++from)
    {
        Triangle::value_type const to = (from + 1) % corners;
        mesh.triangles.push_back({from, to, corners + to});
        mesh.triangles.push_back({from, corners + to, corners + from});
    }
    if (height < 0) turnInsideOut(mesh.triangles);
    return mesh;
}

// The triangles over positions among the corners of the outline, which stand in for those of all points.
std::vector<Triangle> overOutline(Triangulation const & triangulation, std::size_t points)
{
    std::vector<Triangle::value_type> place(points);
    for (Triangle::value_type each = 0; each < triangulation.outline.size(); ++each)
        place[triangulation.outline[each]] = each;
    std::vector<Triangle> triangles = triangulation.triangles;
    for (Triangle & triangle : triangles)
        for (auto & corner : triangle) corner = place[corner];
    return triangles;
}

}  // namespace

Box CSolid::getBounds() const
{
    // The point that is highest along an axis of the site reaches farthest along that row of the matrix.
    CTransform const & matrix = getTransform();
    auto const reach = [&](int row)
    {
        CVector const direction{matrix.getElement(row, 0), matrix.getElement(row, 1), matrix.getElement(row, 2)};
        double const offset = matrix.getElement(row, 3);
        Extent const extent = ownExtent(direction);
        return Extent{finite(extent.low + offset), finite(extent.high + offset)};
    };
    Extent const x = reach(0);
    Extent const y = reach(1);
    Extent const z = reach(2);
    return x.low > x.high ? Box() : Box{{x.low, y.low, z.low}, {x.high, y.high, z.high}};
}

// A transform that mirrors makes counter-clockwise clockwise.
void CSolid::addTo(Mesh & mesh) const
{
    Mesh own = ownMesh();
    if (getTransform().isMirroring()) turnInsideOut(own.triangles);
    auto const first = static_cast<Triangle::value_type>(mesh.points.size());
    for (CPoint3D const & point : own.points) mesh.points.push_back(getTransform() * point);
    for (auto const & [a, b, c] : own.triangles) mesh.triangles.push_back({first + a, first + b, first + c});
}

void CRoundSolid::exchange(CSceneForm & form)
{
    CEntity::exchange(form);
    form.field(SceneTag::Position, position);
    form.field(SceneTag::Radius, radius);
    // A file may say what the setter would not.
    setRadius(radius);
}

}  // namespace orvane

void CEntityExtrusion::setPoints(CPOINT2DArray const & points)
{
    CPOINT2DArray known;
    known.Reserve(points.GetSize());
    for (CPoint2D const & point : points) known.Add(orvane::finite(point));
    base = known;
}

void CEntityExtrusion::exchange(orvane::CSceneForm & form)
{
    CEntity::exchange(form);
    form.field(orvane::SceneTag::Points, base);
    form.field(orvane::SceneTag::Height, height);
}

orvane::Mesh CEntityExtrusion::ownMesh() const
{
    orvane::Triangulation const triangulation = orvane::triangulate(base);
    std::vector<CPoint3D> outline;
    for (auto const corner : triangulation.outline)
    {
        CPoint2D const & point = base[static_cast<int>(corner)];
        outline.push_back({point.x, point.y, 0});
    }
    return orvane::prism(outline, orvane::overOutline(triangulation, static_cast<std::size_t>(base.GetSize())), height);
}

orvane::Extent CEntityExtrusion::ownExtent(CVector const & direction) const
{
    orvane::Extent extent{orvane::Box::beyond, -orvane::Box::beyond};
    if (base.IsEmpty()) return extent;
    for (CPoint2D const & point : base)
    {
        double const reach = point.x * direction.x + point.y * direction.y;
        extent = {std::min(extent.low, reach), std::max(extent.high, reach)};
    }
    return orvane::drawnUp(extent, height * direction.z);
}

void CEntityCylinder::exchange(orvane::CSceneForm & form)
{
    CRoundSolid::exchange(form);
    form.field(orvane::SceneTag::Height, height);
}

orvane::Mesh CEntityCylinder::ownMesh() const
{
    using orvane::circleSides;
    if (getRadius() == 0) return {};
    std::vector<CPoint3D> base;
    std::vector<orvane::Triangle> cap;
    for (orvane::Triangle::value_type side = 0; side < circleSides; ++side)
    {
        CPoint2D const point = orvane::onCircle(side, circleSides, getRadius());
        base.push_back(getPosition() + CVector{point.x, point.y, 0});
        if (side >= 2) cap.push_back({0, side - 1, side});
    }
    return orvane::prism(base, cap, height);
}

// The rim of a disc reaches as far as the direction leans toward its plane.
orvane::Extent CEntityCylinder::ownExtent(CVector const & direction) const
{
    double const middle = orvane::product(orvane::fromOrigin(getPosition()), direction);
    double const reach = getRadius() * std::hypot(direction.x, direction.y);
    return orvane::drawnUp(orvane::around(middle, reach), height * direction.z);
}

orvane::Mesh CEntitySphere::ownMesh() const
{
    using orvane::circleSides, orvane::sphereBands;
    if (getRadius() == 0) return {};
    orvane::Mesh mesh;
    // The south pole, the circles between the bands from the south up, the north pole.
    mesh.points.push_back(getPosition() + CVector{0, 0, -getRadius()});
    for (orvane::Triangle::value_type band = 1; band < sphereBands; ++band)
    {
        CPoint2D const profile = orvane::onCircle(band, 2 * sphereBands, getRadius());
        for (orvane::Triangle::value_type side = 0; side < circleSides; ++side)
        {
            CPoint2D const point = orvane::onCircle(side, circleSides, profile.y);
            mesh.points.push_back(getPosition() + CVector{point.x, point.y, -profile.x});
        }
    }
    mesh.points.push_back(getPosition() + CVector{0, 0, getRadius()});

    auto const north = static_cast<orvane::Triangle::value_type>(mesh.points.size() - 1);
    for (orvane::Triangle::value_type side = 0; side < circleSides; ++side)
    {
        orvane::Triangle::value_type const next = (side + 1) % circleSides;
        mesh.triangles.push_back({0, 1 + next, 1 + side});
        for (orvane::Triangle::value_type circle = 1; circle + circleSides < north; circle += circleSides)
        {
            mesh.triangles.push_back({circle + side, circle + next, circle + circleSides + next});
            mesh.triangles.push_back({circle + side, circle + circleSides + next, circle + circleSides + side});
        }
        mesh.triangles.push_back({north, north - circleSides + side, north - circleSides + next});
    }
    return mesh;
}

orvane::Extent CEntitySphere::ownExtent(CVector const & direction) const
{
    double const middle = orvane::product(orvane::fromOrigin(getPosition()), direction);
    return orvane::around(middle, getRadius() * std::hypot(direction.x, direction.y, direction.z));
}
