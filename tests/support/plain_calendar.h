#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "schedule/calendar.h"

namespace orvane::test
{

// The rules of working time within one day, block by block, on the public values alone.
struct PlainDay
{
    bool isWorking;
    // None on a day that is not worked: calendars pass over them.
    std::vector<CProjectTimeOfDaySpan> blocks;

    explicit PlainDay(CCalendarDayType const & dayType);

    CProjectTimeOfDay start() const;
    CProjectTimeOfDay end() const;
    long workingMinutes() const;
    int find(CProjectTimeOfDay const & t) const;
    bool isValidStart(CProjectTimeOfDay const & t) const;
    bool isValidEnd(CProjectTimeOfDay const & t) const;
    CProjectTimeOfDay nextStart(CProjectTimeOfDay const & t) const;
    CProjectTimeOfDay nextEnd(CProjectTimeOfDay const & t) const;
    CProjectTimeOfDay previousStart(CProjectTimeOfDay const & t) const;
    CProjectTimeOfDay previousEnd(CProjectTimeOfDay const & t) const;
    CProjectTimeOfDay add(CProjectTimeOfDay const & t, long minutes) const;
    CProjectTimeOfDay subtract(CProjectTimeOfDay const & t, long minutes) const;
    long between(CProjectTimeOfDay a, CProjectTimeOfDay b) const;
};

// The same across days, one day after the other: slow, and so plain that it can judge the calendar. Days
// are looked up in the calendar's records without its own lookups; no date may have two exceptions.
class PlainCalendar
{
public:
    PlainCalendar(CCalendar const & calendar, CCalendar const & master);

    CCalendarDayType const & dayType(CProjectDate const & date) const;
    // The working time of a week without exceptions.
    long minutesOfWeek() const { return minutesOfWeekdays; }

    CProjectTime add(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const;
    CProjectTime subtract(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const;
    CProjectDuration between(CProjectTime const & a, CProjectTime const & b) const;
    bool isValidStart(CProjectTime const & time) const;
    bool isValidEnd(CProjectTime const & time) const;
    CProjectTime nextStart(CProjectTime const & time) const;
    CProjectTime nextEnd(CProjectTime const & time) const;
    CProjectTime previousStart(CProjectTime const & time) const;
    CProjectTime previousEnd(CProjectTime const & time) const;

private:
    using Search = CProjectTimeOfDay (PlainDay::*)(CProjectTimeOfDay const &) const;
    using Within = CProjectTimeOfDay (*)(PlainDay const & day, long left);

    CCalendarDayType const & inForce(CCalendarDayType const * found) const;
    CCalendarDayType const & weekday(int day) const;
    PlainDay const & day(CProjectDate const & date) const;
    std::optional<CProjectDate> neighbour(CProjectDate const & date, int step) const;
    CProjectTime search(CProjectTime const & time, Search search, int step) const;
    CProjectTime toValid(CProjectTime const & time, bool asEndTime) const;
    CProjectTime onOtherDays(CProjectDate date, long left, int step, Within within) const;

    CCalendar const & calendar;
    CCalendar const & master;
    bool weekHasBlocks = false;
    long minutesOfWeekdays = 0;
    std::int64_t firstException = INT64_MAX;
    std::int64_t lastException = INT64_MIN;
    // Every day is looked up once: both calendars must stay as they are.
    mutable std::unordered_map<std::int64_t, PlainDay> days;
};

}  // namespace orvane::test
