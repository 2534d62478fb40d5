#pragma once

#include "scene/geometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace orvane
{

// Three positions among some points; seen from outside they run counter-clockwise.
using Triangle = std::array<std::uint32_t, 3>;

// A surface of triangles over shared points.
struct Mesh
{
    std::vector<CPoint3D> points;
    std::vector<Triangle> triangles;
};

// A box along the axes; empty at first, with every `low` above its `high`.
struct Box
{
    static constexpr double beyond = std::numeric_limits<double>::infinity();
    CPoint3D low{beyond, beyond, beyond};
    CPoint3D high{-beyond, -beyond, -beyond};

    bool isEmpty() const { return low.x > high.x; }
    // Grows to hold the other box as well; an empty one changes nothing.
    void include(Box const & other)
    {
        low = {std::min(low.x, other.low.x), std::min(low.y, other.low.y), std::min(low.z, other.low.z)};
        high = {std::max(high.x, other.high.x), std::max(high.y, other.high.y), std::max(high.z, other.high.z)};
    }

    friend bool operator==(Box const &, Box const &) = default;
};

}  // namespace orvane
