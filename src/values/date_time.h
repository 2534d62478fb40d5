#pragma once

#include "platform/local_time.h"
#include "platform/time.h"
#include "values/duration.h"
#include "values/value.h"

#include <algorithm>
#include <compare>
#include <cstdint>

class CProjectDate;
class CProjectTimeOfDay;
class CString;

namespace orvane
{

// What a date, a time and a time of day share: one moment, ordered by its seconds whether valid or not.
template <class Self>
class CTimed : public CFlagged<Self, CopyCounts::asChange>
{
public:
    CTime getCTime() const { return time; }
    void Serialize(CProjectArchive & archive) { this->exchangeLeaf(archive, time); }

    friend std::strong_ordering operator<=>(Self const & a, Self const & b) { return a.time <=> b.time; }

protected:
    CTimed() = default;
    CTimed(CTime time, bool valid) : CFlagged<Self, CopyCounts::asChange>(valid), time(time) {}

    CTime time;
};

// What a date and a time share: the fields of the local day.
template <class Self>
class CDated : public CTimed<Self>
{
public:
    int GetYear() const { return this->time.GetYear(); }
    // From 1 to 12.
    int GetMonth() const { return this->time.GetMonth(); }
    // From 1 to 31.
    int GetDay() const { return this->time.GetDay(); }
    // From 1 for Sunday to 7 for Saturday.
    int GetDayOfWeek() const { return this->time.GetDayOfWeek(); }

    // The local day counted from 1 January 1970, which is 0.
    std::int64_t getDayNumber() const { return this->time.getDayNumber(); }

protected:
    using CTimed<Self>::CTimed;
};

}  // namespace orvane

// A moment of the plan, to the whole minute of the local clock, from December 1901 to January 2038.
// What lies beyond stops at the ends.
class CProjectTime : public orvane::CDated<CProjectTime>
{
public:
    // Not valid.
    CProjectTime() = default;
    // Cut to the minute.
    explicit CProjectTime(CTime const & time) : CDated(time, true) { truncateSeconds(); }
    CProjectTime(int year, int month, int day, int hour, int minute)
        : CDated(atLocal((orvane::dayNumber(year, month, day) * 24 + hour) * 60 + minute), true)
    {
    }

    // Unlike other values a time is not flagged by being loaded.
    void Serialize(CProjectArchive & archive) { archive.exchange(time, valid); }
    // As a date: the time of day is written, and never read.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    // The present minute.
    static CProjectTime GetTickCount() { return CProjectTime(CTime::GetCurrentTime()); }

    // Whole minutes of the local clock since it showed 1 January 1970 00:00, and the valid time of such
    // a number. They differ by a constant from the moments themselves between two changes of the clock.
    std::int64_t getLocalMinutes() const { return orvane::floorDiv(time.getLocalSeconds(), orvane::secondsPerMinute); }
    static CProjectTime fromLocalMinutes(std::int64_t minutes) { return {atLocal(minutes), true}; }

    int GetHour() const { return time.GetHour(); }
    int GetMinute() const { return time.GetMinute(); }
    // As "14:30 Mo, 05 Jan, 2004", or as "14:30 05/01/04" while DisplayTimeConcise is set.
    CString getString() const;
    // Always the concise form of getString.
    CString getLongString() const;
    // The two parts; they are valid when the time is.
    CProjectDate getDate() const;
    CProjectTimeOfDay getTimeOfDay() const;

    // Elapsed time. A time that is not valid stays so. Subtracting stops at 1 January 1970 00:00, also
    // for a time that lies before.
    CProjectTime & operator+=(CProjectDuration const & duration);
    CProjectTime & operator-=(CProjectDuration const & duration);
    CProjectTime operator+(CProjectDuration const & duration) const { return CProjectTime(*this) += duration; }
    CProjectTime operator-(CProjectDuration const & duration) const { return CProjectTime(*this) -= duration; }
    // The elapsed time since `other`; valid, and negative when this is the earlier.
    CProjectDuration operator-(CProjectTime const & other) const
    {
        return CProjectDuration(time.GetTime() - other.time.GetTime());
    }

    friend bool operator==(CProjectTime const & a, CProjectTime const & b) { return a.time == b.time; }

    // Cuts a valid time to the whole minute of the local clock.
    void truncateSeconds()
    {
        std::int64_t const beyond = orvane::floorMod(time.getLocalSeconds(), orvane::secondsPerMinute);
        if (valid) time = CTime(std::max(time.GetTime() - beyond, -lastMinute));
    }

private:
    static constexpr std::int64_t lastMinute = INT32_MAX / orvane::secondsPerMinute * orvane::secondsPerMinute;

    CProjectTime(CTime time, bool valid) : CDated(time, valid) {}
    // Also at the ends a whole minute.
    static CTime atLocal(std::int64_t minutes)
    {
        std::int64_t const bounded = orvane::saturate<std::int32_t>(minutes);
        std::int64_t const moment = orvane::fromLocalSeconds(bounded * orvane::secondsPerMinute);
        return CTime(std::clamp(moment, -lastMinute, lastMinute));
    }
    void move(std::int64_t seconds);
};

// A time on the clock, without a day. It stands on 1 January 1970, at the offset that held at that day's
// midnight, so that it reads back as it was given in every zone. Hours and minutes out of their ranges carry over,
// into another day than that one too: order and equality see it, the fields do not.
class CProjectTimeOfDay : public orvane::CTimed<CProjectTimeOfDay>
{
public:
    // 00:00, and not valid.
    CProjectTimeOfDay() : CTimed(at(0), false) {}
    CProjectTimeOfDay(int hour, int minute) : CTimed(at(hour * std::int64_t{60} + minute), true) {}

    static CProjectTimeOfDay GetCurrentTimeOfDay() { return CProjectTime::GetTickCount().getTimeOfDay(); }

    int GetHour() const { return getMinuteOfDay() / 60; }
    int GetMinute() const { return getMinuteOfDay() % 60; }
    // Written as getString has it. Only the hour is read, and the minute is the one before it: "14:30" reads as 13:59.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name);
    // From 0 to 1439.
    int getMinuteOfDay() const
    {
        std::int64_t const clock = time.GetTime() + orvane::clockOffset();
        return static_cast<int>(orvane::floorMod(clock, orvane::secondsPerDay) / orvane::secondsPerMinute);
    }

    // As "14:30".
    CString getString() const;

    // The time of that date and this clock time.
    CProjectTime operator+(CProjectDate const & date) const;
    // Around midnight: 23:00 plus two hours is 01:00. A time of day that is not valid stays so.
    CProjectTimeOfDay operator+(CProjectDuration const & duration) const { return moved(duration.GetTotalSeconds()); }
    CProjectTimeOfDay operator-(CProjectDuration const & duration) const { return moved(-duration.GetTotalSeconds()); }
    // Zero when this is the earlier.
    CProjectDuration operator-(CProjectTimeOfDay const & other) const;
    // Takes on `other` if it differs, so that an equal one is no change.
    CProjectTimeOfDay & diff(CProjectTimeOfDay const & other);

    friend bool operator==(CProjectTimeOfDay const & a, CProjectTimeOfDay const & b) { return a.time == b.time; }

private:
    static CTime at(std::int64_t minutes) { return CTime(minutes * orvane::secondsPerMinute - orvane::clockOffset()); }
    CProjectTimeOfDay moved(std::int64_t seconds) const;
};

// A local day, held as its midnight.
class CProjectDate : public orvane::CDated<CProjectDate>
{
public:
    // 1 January 1970, and not valid.
    CProjectDate() : CDated(CTime::fromLocalSeconds(0), false) {}
    // Months and days out of their ranges carry over.
    CProjectDate(int year, int month, int day) : CProjectDate(CTime(year, month, day, 0, 0, 0)) {}

    static CProjectDate GetCurrentDate() { return fromDayNumber(CTime::GetCurrentTime().getDayNumber()); }
    // The valid date of a day counted from 1 January 1970.
    static CProjectDate fromDayNumber(std::int64_t dayNumber)
    {
        std::int64_t const bounded = orvane::saturate<std::int32_t>(dayNumber);
        return CProjectDate(CTime::fromLocalSeconds(bounded * orvane::secondsPerDay));
    }

    // As "Mo, 05 Jan, 2004", or as "05/01/04" while DisplayTimeConcise is set.
    CString getString() const;
    // In English, whatever the locale.
    CString GetDayOfWeekAsString() const;
    // Written as getString has it, unless it is not valid. Read in another order, as "Mon, Jan 5 2004"; any other text
    // gives a date that is not valid.
    virtual void xmlSerialize(CProjectXMLArchive & archive, CString const & name);

    // By days, also across changes of the clock; always valid.
    CProjectDate operator+(int days) const;
    CProjectDate operator-(int days) const;
    CProjectDate & operator+=(int days) { return *this = *this + days; }
    CProjectDate & operator-=(int days) { return *this = *this - days; }
    // Whole days since `other`, negative when this is the earlier.
    int operator-(CProjectDate const & other) const;
    CProjectTime operator+(CProjectTimeOfDay const & timeOfDay) const;

    // Equality is that of the day, the order that of the seconds: -1, 0 or 1.
    friend bool operator==(CProjectDate const & a, CProjectDate const & b)
    {
        return a.time == b.time || a.getDayNumber() == b.getDayNumber();
    }
    int compare(CProjectDate const & other) const { return (time > other.time) - (time < other.time); }

private:
    explicit CProjectDate(CTime midnight) : CDated(midnight, true) {}
};

// A period within a day, from start to end. It is valid when the start is not after the end and the
// end is not 00:00: no span reaches midnight.
class CProjectTimeOfDaySpan : public orvane::CFlagged<CProjectTimeOfDaySpan>
{
public:
    // 00:00 to 00:00, and not valid.
    CProjectTimeOfDaySpan() = default;
    CProjectTimeOfDaySpan(CProjectTimeOfDay const & start, CProjectTimeOfDay const & end) : start(start), end(end)
    {
        updateValidity();
    }

    CProjectTimeOfDay getStart() const { return start; }
    CProjectTimeOfDay getEnd() const { return end; }
    void setStart(CProjectTimeOfDay const & time) { set(start, time); }
    void setEnd(CProjectTimeOfDay const & time) { set(end, time); }
    void updateValidity();
    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive);

    // The same without a copy.
    int getStartMinute() const { return start.getMinuteOfDay(); }
    int getEndMinute() const { return end.getMinuteOfDay(); }

    // As "09:00   to   17:00".
    operator CString() const;
    // The order of these texts, without building them: -1, 0 or 1.
    int compare(CProjectTimeOfDaySpan const & other) const;

    operator CProjectDuration() const;

    // Whether the two have more than a moment in common; `out` takes it if they have, and is left
    // alone otherwise.
    bool getIntersection(CProjectTimeOfDaySpan const & other, CProjectTimeOfDaySpan & out) const;

    friend bool operator==(CProjectTimeOfDaySpan const & a, CProjectTimeOfDaySpan const & b)
    {
        return a.start == b.start && a.end == b.end;
    }

private:
    void set(CProjectTimeOfDay & part, CProjectTimeOfDay const & time);

    CProjectTimeOfDay start;
    CProjectTimeOfDay end;
};
