#pragma once

#include "platform/local_time.h"
#include "platform/saturate.h"

#include <compare>
#include <cstdint>

class CString;

// A length of time in seconds, of 32 bits. All arithmetic stops at the ends.
class CTimeSpan
{
public:
    CTimeSpan() = default;
    explicit CTimeSpan(std::int64_t seconds) : seconds(orvane::saturate<std::int32_t>(seconds)) {}
    CTimeSpan(long days, int hours, int minutes, int seconds);

    // The whole length in one unit, cut toward zero.
    std::int64_t GetTotalSeconds() const { return seconds; }
    std::int64_t GetTotalMinutes() const { return seconds / 60; }
    std::int64_t GetTotalHours() const { return seconds / 3600; }

    // The parts that together make up the length; in a negative one none is above 0.
    long GetDays() const { return seconds / 86400; }
    int GetHours() const { return seconds / 3600 % 24; }
    int GetMinutes() const { return seconds / 60 % 60; }
    int GetSeconds() const { return seconds % 60; }

    CTimeSpan & operator+=(CTimeSpan other) { return *this = CTimeSpan(GetTotalSeconds() + other.seconds); }
    CTimeSpan & operator-=(CTimeSpan other) { return *this = CTimeSpan(GetTotalSeconds() - other.seconds); }
    friend CTimeSpan operator+(CTimeSpan a, CTimeSpan b) { return a += b; }
    friend CTimeSpan operator-(CTimeSpan a, CTimeSpan b) { return a -= b; }
    auto operator<=>(CTimeSpan const &) const = default;

private:
    std::int32_t seconds = 0;
};

// A moment: seconds since 1 January 1970 00:00 UTC in 32 bits, from December 1901 to January 2038.
// What lies beyond stops at the ends. Fields are those of the local clock.
class CTime
{
public:
    // 1 January 1970 00:00 UTC.
    CTime() = default;
    explicit CTime(std::int64_t seconds) : seconds(orvane::saturate<std::int32_t>(seconds)) {}
    // From fields of the local clock, months and days counted from 1. Fields out of their ranges carry
    // over. A local time that occurs twice is the earlier, one that is skipped moves forward by the gap.
    // With `dst` 0 the fields are standard time also while daylight saving is on; any other number asks
    // for what the clock shows.
    CTime(int year, int month, int day, int hour, int minute, int second, int dst = -1);

    static CTime GetCurrentTime();
    static CTime fromLocalSeconds(std::int64_t local) { return CTime(orvane::fromLocalSeconds(local)); }

    // In 64 bits, so that sums and differences have room.
    std::int64_t GetTime() const { return seconds; }
    std::int64_t getLocalSeconds() const { return orvane::toLocalSeconds(seconds); }
    std::int64_t getDayNumber() const { return orvane::dayOfLocal(getLocalSeconds()); }

    int GetYear() const { return orvane::civilDay(getDayNumber()).year; }
    int GetMonth() const { return orvane::civilDay(getDayNumber()).month; }
    int GetDay() const { return orvane::civilDay(getDayNumber()).day; }
    int GetHour() const { return secondOfDay() / 3600; }
    int GetMinute() const { return secondOfDay() / 60 % 60; }
    int GetSecond() const { return secondOfDay() % 60; }
    // From 1 for Sunday to 7 for Saturday.
    int GetDayOfWeek() const { return orvane::dayOfWeek(getDayNumber()); }

    // The text of a strftime format, in the language of the process's locale; "%Z" always names the
    // standard time. A text of more than 64 KiB is left empty.
    CString Format(char const * format) const;

    CTime & operator+=(CTimeSpan span) { return *this = CTime(GetTime() + span.GetTotalSeconds()); }
    CTime & operator-=(CTimeSpan span) { return *this = CTime(GetTime() - span.GetTotalSeconds()); }
    friend CTime operator+(CTime time, CTimeSpan span) { return time += span; }
    friend CTime operator-(CTime time, CTimeSpan span) { return time -= span; }
    friend CTimeSpan operator-(CTime a, CTime b) { return CTimeSpan(a.GetTime() - b.GetTime()); }
    auto operator<=>(CTime const &) const = default;

private:
    int secondOfDay() const { return static_cast<int>(orvane::floorMod(getLocalSeconds(), orvane::secondsPerDay)); }

    std::int32_t seconds = 0;
};

// Milliseconds since midnight on the local clock. A host whose clock is not the system's has whole seconds.
int getTime();
