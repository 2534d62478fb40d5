#pragma once

#include "platform/clock.h"
#include "values/date_time.h"

// The clock stands still within a scope, and can be set.
class ClockScope
{
public:
    explicit ClockScope(CProjectTime const & time)
    {
        set(time);
        orvane::setClock([] { return now; });
    }
    ~ClockScope() { orvane::setClock(nullptr); }
    ClockScope(ClockScope const &) = delete;
    ClockScope & operator=(ClockScope const &) = delete;

    void set(CProjectTime const & time) { now = time.getCTime().GetTime(); }

private:
    static inline std::int64_t now = 0;
};
