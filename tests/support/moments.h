#pragma once

#include <cstdio>
#include <string>

#include "platform/string.h"
#include "values/date_time.h"

// Moments in tests as the texts that a planner would write: "2024-01-05 09:00".
namespace orvane::test
{

inline CProjectTime at(std::string const & text)
{
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    int const fields = std::sscanf(text.c_str(), "%d-%d-%d%*c%d:%d", &year, &month, &day, &hour, &minute);
    return fields == 5 ? CProjectTime(year, month, day, hour, minute) : CProjectTime();
}

inline CProjectDate on(std::string const & text)
{
    return at(text + " 00:00").getDate();
}

inline CProjectTimeOfDay clock(std::string const & text)
{
    return at("1970-01-01 " + text).getTimeOfDay();
}

inline std::string shown(CProjectTime const & time)
{
    return time.isValid() ? std::string(time.getCTime().Format("%Y-%m-%d %H:%M").view()) : "none";
}

inline std::string shown(CProjectTimeOfDay const & time)
{
    return time.isValid() ? std::string(time.getString().view()) : "none";
}

}  // namespace orvane::test
