#pragma once

#include <cstdint>
#include <ctime>

namespace orvane
{

// Where a host without a clock of its own takes the present moment from: seconds since 1 January 1970
// 00:00 UTC.
using ClockSource = std::int64_t (*)();

inline std::int64_t systemClock()
{
    return std::time(nullptr);
}

inline ClockSource clock = systemClock;

inline std::int64_t nowSeconds()
{
    return clock();
}

// Puts another clock in place, for a host or a test; null brings the system's back.
inline void setClock(ClockSource source)
{
    clock = source ? source : systemClock;
}

}  // namespace orvane
