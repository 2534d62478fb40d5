#pragma once

#include "platform/saturate.h"
#include "values/value.h"

#include <compare>
#include <cstdint>

class CCalendar;
class CString;

// A length of working or elapsed time: whole minutes, kept in seconds of 32 bits. What lies beyond
// stops at the ends; all divisions cut toward zero. As working time it counts working seconds: a day
// of eight hours is 28800.
class CProjectDuration : public orvane::CFlagged<CProjectDuration>
{
public:
    // Zero, and not valid.
    CProjectDuration() = default;
    // Cut to whole minutes toward zero.
    explicit CProjectDuration(long seconds) : CFlagged(true), seconds(orvane::saturate<std::int32_t>(seconds))
    {
        truncateSeconds();
    }
    CProjectDuration(int hours, int minutes) : CProjectDuration((hours * 60L + minutes) * 60L) {}
    // Unlike other values a duration is copied with its change flag, and assigning one that is not
    // valid is no change.
    CProjectDuration(CProjectDuration const & other) : CFlagged(other), seconds(other.seconds)
    {
        changed = other.changed;
    }
    CProjectDuration & operator=(CProjectDuration const & other)
    {
        seconds = other.seconds;
        valid = other.valid;
        changed = other.valid;
        return *this;
    }

    void Serialize(CProjectArchive & archive) { exchangeLeaf(archive, seconds); }
    // The text of getString, unless it is not valid. It is never read back.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name) const;

    // What such an assignment would have left.
    void touch() { changed = valid; }

    long GetTotalSeconds() const { return seconds; }
    long GetTotalMinutes() const { return seconds / 60; }
    long GetTotalHours() const { return seconds / 3600; }
    // The hours beyond whole days of 24 hours, and the minutes beyond whole hours.
    int GetHours() const { return seconds / 3600 % 24; }
    int GetMinutes() const { return seconds / 60 % 60; }

    // Elapsed time in days of 24 hours, as "1 Day, 1 Hour, 30 Minutes", or as "1d, 1h, 30m" while
    // DisplayDurationConcise is set. "0 Days" when nothing is above zero, empty when it is not valid. The long
    // form takes the plural of its days from the hours: "1 Days, 2 Hours", "2 Day, 1 Hour".
    CString getString() const;

    // ---- in the working days of a calendar: defined with the calendar --------------------------
    CProjectDuration(long days, int hours, int minutes, CCalendar const & calendar);
    // 0 when the calendar's normal day has no working time.
    long GetDays(CCalendar const & calendar) const;
    int GetHours(CCalendar const & calendar) const;
    int GetMinutes(CCalendar const & calendar) const;
    // Working time; each plural follows its own count.
    CString getString(CCalendar const & calendar) const;
    // --------------------------------------------------------------------------------------------

    // Always valid, in whole minutes.
    CProjectDuration operator+(CProjectDuration const & other) const
    {
        return CProjectDuration(GetTotalSeconds() + other.seconds);
    }
    CProjectDuration operator-(CProjectDuration const & other) const
    {
        return CProjectDuration(GetTotalSeconds() - other.seconds);
    }
    // These change the number alone: no flag, and nothing is cut.
    CProjectDuration & operator+=(CProjectDuration const & other)
    {
        seconds = orvane::saturate<std::int32_t>(GetTotalSeconds() + other.seconds);
        return *this;
    }
    CProjectDuration & operator-=(CProjectDuration const & other)
    {
        seconds = orvane::saturate<std::int32_t>(GetTotalSeconds() - other.seconds);
        return *this;
    }

    // Two that are not valid are equal, whatever their numbers. The order looks at the numbers alone.
    friend bool operator==(CProjectDuration const & a, CProjectDuration const & b)
    {
        return a.valid == b.valid && (!a.valid || a.seconds == b.seconds);
    }
    friend std::strong_ordering operator<=>(CProjectDuration const & a, CProjectDuration const & b)
    {
        return a.seconds <=> b.seconds;
    }

    // Cuts a valid duration to whole minutes toward zero.
    void truncateSeconds()
    {
        if (valid) seconds -= seconds % 60;
    }

private:
    std::int32_t seconds = 0;
};
