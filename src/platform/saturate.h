#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <limits>

namespace orvane
{

// The nearest number that `To` holds.
template <std::signed_integral To, std::signed_integral From>
constexpr To saturate(From number)
{
    using Limits = std::numeric_limits<To>;
    return static_cast<To>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

}  // namespace orvane
