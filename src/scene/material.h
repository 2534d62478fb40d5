#pragma once

#include "platform/color.h"
#include "scene/geometry.h"

#include <algorithm>

// What the surface of an entity looks like: white and opaque at first.
class CMaterial
{
public:
    CMaterial() = default;
    explicit CMaterial(CColor const & color, float opacity = 1.0F) : color(color) { setOpacity(opacity); }

    CColor const & getColor() const { return color; }
    void setColor(CColor const & value) { color = value; }
    // From 0, not seen at all, to 1; what lies outside is brought inside.
    float getOpacity() const { return opacity; }
    void setOpacity(float value) { opacity = std::clamp(orvane::finite(value), 0.0F, 1.0F); }

    friend bool operator==(CMaterial const &, CMaterial const &) = default;

private:
    CColor color;
    float opacity = 1.0F;
};
