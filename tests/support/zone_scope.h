#pragma once

#include "platform/local_time.h"

#include <cstdlib>
#include <optional>
#include <string>

// The process's time zone within a scope: what TZ says, or no TZ at all for null.
class ZoneScope
{
public:
    explicit ZoneScope(char const * tz)
    {
        if (char const * before = std::getenv("TZ")) outer = before;
        set(tz);
    }
    ~ZoneScope() { set(outer ? outer->c_str() : nullptr); }
    ZoneScope(ZoneScope const &) = delete;
    ZoneScope & operator=(ZoneScope const &) = delete;

private:
    static void set(char const * tz)
    {
        if (tz) ::setenv("TZ", tz, 1);
        else ::unsetenv("TZ");
        orvane::reloadLocalZone();
    }

    std::optional<std::string> outer;
};
