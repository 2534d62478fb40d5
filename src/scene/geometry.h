#pragma once

#include "platform/array.h"

#include <algorithm>
#include <concepts>
#include <limits>

// Places and directions of the site: right-handed, in metres, z up. Components may be any number; what is
// stored in an entity or a transform goes through orvane::finite first.

// A direction with a length: what leads from one point to another.
struct CVector2D
{
    double x = 0;
    double y = 0;

    friend bool operator==(CVector2D const &, CVector2D const &) = default;
};

// A place on a plane, such as the ground.
struct CPoint2D
{
    double x = 0;
    double y = 0;

    friend bool operator==(CPoint2D const &, CPoint2D const &) = default;
    friend CVector2D operator-(CPoint2D const & to, CPoint2D const & from) { return {to.x - from.x, to.y - from.y}; }
    friend CPoint2D operator+(CPoint2D const & point, CVector2D const & by) { return {point.x + by.x, point.y + by.y}; }
};

struct CVector
{
    double x = 0;
    double y = 0;
    double z = 0;

    friend bool operator==(CVector const &, CVector const &) = default;
};

// A place on the site. Points do not add up; a vector added to one gives another.
struct CPoint3D
{
    double x = 0;
    double y = 0;
    double z = 0;

    friend bool operator==(CPoint3D const &, CPoint3D const &) = default;
    friend CVector operator-(CPoint3D const & to, CPoint3D const & from)
    {
        return {to.x - from.x, to.y - from.y, to.z - from.z};
    }
    friend CPoint3D operator+(CPoint3D const & point, CVector const & by)
    {
        return {point.x + by.x, point.y + by.y, point.z + by.z};
    }
};

// Points in order: of a plane, of the site.
class CPOINT2DArray : public CDynamic<CPOINT2DArray, CArray<CPoint2D>>
{
};
class CPOINT3DArray : public CDynamic<CPOINT3DArray, CArray<CPoint3D>>
{
};

namespace orvane
{

// The nearest finite number; 0 for what is not a number.
template <std::floating_point T>
constexpr T finite(T number)
{
    constexpr T most = std::numeric_limits<T>::max();
    return number == number ? std::clamp(number, -most, most) : T{0};
}
constexpr CPoint2D finite(CPoint2D const & point)
{
    return {finite(point.x), finite(point.y)};
}
constexpr CPoint3D finite(CPoint3D const & point)
{
    return {finite(point.x), finite(point.y), finite(point.z)};
}

// A place on a drawing surface, in whole pixels.
struct PixelPoint
{
    int x = 0;
    int y = 0;

    friend bool operator==(PixelPoint const &, PixelPoint const &) = default;
};

}  // namespace orvane

// Points of a drawing, in order.
class CPOINTArray : public CDynamic<CPOINTArray, CArray<orvane::PixelPoint>>
{
};
