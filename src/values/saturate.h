#pragma once

#include "platform/saturate.h"

#include <concepts>
#include <limits>

namespace orvane
{

// A fraction cut toward zero, or the nearest number that `To` holds; what is not a number gives 0.
template <std::signed_integral To, std::floating_point From>
constexpr To saturate(From number)
{
    using Limits = std::numeric_limits<To>;
    if (number != number) return 0;
    // Half the range is a power of two and so exact, where max() itself may be rounded up.
    From const end = 2 * static_cast<From>(Limits::max() / 2 + 1);
    if (number >= end) return Limits::max();
    if (number <= -end) return Limits::min();
    return static_cast<To>(number);
}

}  // namespace orvane
