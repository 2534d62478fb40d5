#pragma once

#include "scene/mesh.h"

#include <cstdint>
#include <vector>

namespace orvane
{

// A polygon of the plane, cut into triangles.
struct Triangulation
{
    // The corners of the polygon counter-clockwise, as positions among the points given. Points that repeat
    // the one before or lie on a straight line between their neighbours are no corners.
    std::vector<std::uint32_t> outline;
    // Counter-clockwise, over the same positions.
    std::vector<Triangle> triangles;
};

// The triangles cover a polygon that may be concave, run either way round and touch itself (as one does that
// reaches its hole through a bridge); what is narrower than a billionth of its size counts as having no width.
// A polygon that crosses itself gets triangles between its points, without a promise of what they cover. One
// without an area gets none. Work is bounded: past some ten thousand reentrant corners the rest is cut unseen.
Triangulation triangulate(CPOINT2DArray const & polygon);

}  // namespace orvane
