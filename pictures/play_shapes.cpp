#include "pictures/play_shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "values/saturate.h"

namespace orvane::pictures
{
namespace
{

constexpr double numbersPerLength = 1000;
// Half the length of a site that is shown as it is; beyond, thousandths do not fit the numbers of a graphics card.
constexpr double largest = 8'000, smallest = 8;

double middle(double low, double high)
{
    return low / 2 + high / 2;
}

PlayShapes::Point rounded(CVector const & vector)
{
    auto const number = [](double value) { return saturate<std::int32_t>(std::round(value * numbersPerLength)); };
    return {number(vector.x), number(vector.y), number(vector.z)};
}

}  // namespace

PlayShapes::PlayShapes(orvane::Box const & bounds)
{
    if (bounds.isEmpty()) return;
    centre = {middle(bounds.low.x, bounds.high.x), middle(bounds.low.y, bounds.high.y),
              middle(bounds.low.z, bounds.high.z)};
    CVector const reach = {middle(-bounds.low.x, bounds.high.x), middle(-bounds.low.y, bounds.high.y),
                           middle(-bounds.low.z, bounds.high.z)};
    double const longest = std::max({reach.x, reach.y, reach.z});
    if (longest > largest) perMetre = largest / longest;
    else if (longest > 0 && longest < smallest) perMetre = std::min(smallest / longest, 1e6);
    half = rounded({reach.x * perMetre, reach.y * perMetre, reach.z * perMetre});
}

CVector PlayShapes::fromCentre(CPoint3D const & point) const
{
    // Halves first: the distance itself may be more than a double holds.
    auto const distance = [&](double from, double to) { return (to / 2 - from / 2) * perMetre * 2; };
    return {distance(centre.x, point.x), distance(centre.y, point.y), distance(centre.z, point.z)};
}

PlayShapes::Placed PlayShapes::add(Mesh const & mesh)
{
    Shape shape;
    shape.triangles = mesh.triangles;
    CVector const first = mesh.points.empty() ? CVector() : fromCentre(mesh.points.front());
    for (CPoint3D const & point : mesh.points)
    {
        CVector const each = fromCentre(point);
        shape.points.push_back(rounded({each.x - first.x, each.y - first.y, each.z - first.z}));
    }
    auto const [entry, isNew] = known.try_emplace(std::move(shape), known.size());
    if (isNew) inOrder.push_back(&entry->first);
    return {entry->second, rounded(first)};
}

CTransform PlayShapes::toPage(CTransform const & ofSite) const
{
    CVector const scale = {perMetre, perMetre, perMetre}, back = {1 / perMetre, 1 / perMetre, 1 / perMetre};
    return CTransform::scaling(scale) * CTransform::translation({-centre.x, -centre.y, -centre.z}) * ofSite *
           CTransform::translation({centre.x, centre.y, centre.z}) * CTransform::scaling(back);
}

}  // namespace orvane::pictures
