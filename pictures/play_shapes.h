#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "scene/mesh.h"
#include "scene/transform.h"

namespace orvane::pictures
{

// Surfaces as whole numbers, each form once however often it stands on the site.
//
// The numbers count thousandths of the length of the page, which is a metre on a site of common size. A larger or
// smaller site is brought to such a size first, so that any coordinates a scene can hold come out finite.
class PlayShapes
{
public:
    using Point = std::array<std::int32_t, 3>;
    struct Shape
    {
        std::vector<Point> points;  // the first is 0, 0, 0
        std::vector<Triangle> triangles;

        friend auto operator<=>(Shape const &, Shape const &) = default;
    };
    struct Placed
    {
        std::size_t shape;
        Point at;
    };

    // For a site within these bounds.
    explicit PlayShapes(orvane::Box const & bounds);

    Placed add(Mesh const & mesh);
    std::vector<Shape const *> const & shapes() const { return inOrder; }
    // Half the size of the site along each axis.
    Point halfSize() const { return half; }
    // A transform of the site as one of the page.
    CTransform toPage(CTransform const & ofSite) const;

private:
    CVector fromCentre(CPoint3D const & point) const;

    CPoint3D centre;
    double perMetre = 1;
    Point half{};
    std::map<Shape, std::size_t> known;
    std::vector<Shape const *> inOrder;
};

}  // namespace orvane::pictures
