#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "schedule/calendar.h"

namespace orvane::test
{

inline CProjectDuration minutes(long count)
{
    return CProjectDuration(count * 60);
}

// A time of day that is not valid counts as 00:00.
inline CProjectTime compose(CProjectDate const & date, CProjectTimeOfDay const & t)
{
    return date + (t.isValid() ? t : CProjectTimeOfDay(0, 0));
}

// The rules of working time within one day, block by block, on the public values alone.
struct PlainDay
{
    bool isWorking;
    // None on a day that is not worked: calendars pass over them.
    std::vector<CProjectTimeOfDaySpan> blocks;

    explicit PlainDay(CCalendarDayType const & dayType) : isWorking(dayType.getDayType().getEquivalentValue() != 2)
    {
        if (!isWorking) return;
        for (int each = 0; each < dayType.getNumberOfTimeBlocks(); ++each) blocks.push_back(dayType.getTimeBlock(each));
    }

    CProjectTimeOfDay start() const { return blocks.empty() ? CProjectTimeOfDay() : blocks.front().getStart(); }
    CProjectTimeOfDay end() const { return blocks.empty() ? CProjectTimeOfDay() : blocks.back().getEnd(); }
    long workingMinutes() const
    {
        long sum = 0;
        for (auto const & block : blocks) sum += CProjectDuration(block).GetTotalMinutes();
        return sum;
    }
    int find(CProjectTimeOfDay const & t) const
    {
        for (std::size_t each = 0; each < blocks.size(); ++each)
        {
            if (t < blocks[each].getStart()) return -1;
            if (t <= blocks[each].getEnd()) return static_cast<int>(each);
        }
        return -1;
    }
    bool isValidStart(CProjectTimeOfDay const & t) const
    {
        int const found = find(t);
        return found >= 0 && t < blocks[static_cast<std::size_t>(found)].getEnd();
    }
    bool isValidEnd(CProjectTimeOfDay const & t) const
    {
        int const found = find(t);
        return found >= 0 && blocks[static_cast<std::size_t>(found)].getStart() < t;
    }
    CProjectTimeOfDay nextStart(CProjectTimeOfDay const & t) const
    {
        for (auto const & block : blocks)
        {
            if (t < block.getStart()) return block.getStart();
            if (t < block.getEnd()) return t;
        }
        return {};
    }
    CProjectTimeOfDay nextEnd(CProjectTimeOfDay const & t) const
    {
        for (auto const & block : blocks)
        {
            if (t <= block.getStart()) return block.getStart() + minutes(1);
            if (t <= block.getEnd()) return t;
        }
        return {};
    }
    CProjectTimeOfDay previousStart(CProjectTimeOfDay const & t) const
    {
        for (auto block = blocks.rbegin(); block != blocks.rend(); ++block)
        {
            if (t >= block->getEnd()) return block->getEnd() - minutes(1);
            if (t >= block->getStart()) return t;
        }
        return {};
    }
    CProjectTimeOfDay previousEnd(CProjectTimeOfDay const & t) const
    {
        for (auto block = blocks.rbegin(); block != blocks.rend(); ++block)
        {
            if (t > block->getEnd()) return block->getEnd();
            if (t > block->getStart()) return t;
        }
        return {};
    }
    CProjectTimeOfDay add(CProjectTimeOfDay const & t, long duration) const
    {
        int const found = find(t);
        if (found < 0) return {};
        CProjectTimeOfDay from = t;
        for (auto block = blocks.begin() + found;;)
        {
            long const left = (block->getEnd() - from).GetTotalMinutes();
            if (duration <= left) return from + minutes(duration);
            duration -= left;
            if (++block == blocks.end()) return {};
            from = block->getStart();
        }
    }
    CProjectTimeOfDay subtract(CProjectTimeOfDay const & t, long duration) const
    {
        int const found = find(t);
        if (found < 0) return {};
        CProjectTimeOfDay from = t;
        for (auto block = blocks.begin() + found;; --block)
        {
            long const left = (from - block->getStart()).GetTotalMinutes();
            if (duration <= left) return from - minutes(duration);
            duration -= left;
            if (block == blocks.begin()) return {};
            from = std::prev(block)->getEnd();
        }
    }
    long between(CProjectTimeOfDay a, CProjectTimeOfDay b) const
    {
        if (start() > end()) return 0;
        if (a > b) return between(b, a);
        if (a < start()) return between(start(), b);
        if (b > end()) return between(a, end());
        int const i = find(a);
        int const j = find(b);
        if (i < 0 || j < 0 || i > j) return 0;
        if (i == j) return (b - a).GetTotalMinutes();
        auto const first = blocks.begin() + i;
        auto const last = blocks.begin() + j;
        long sum = (first->getEnd() - a).GetTotalMinutes() + (b - last->getStart()).GetTotalMinutes();
        for (auto block = first + 1; block != last; ++block) sum += CProjectDuration(*block).GetTotalMinutes();
        return std::max(0L, sum);
    }
};

// The same across days, one day after the other: slow, and so plain that it can judge the calendar. Days
// are looked up in the calendar's records without its own lookups; no date may have two exceptions.
class PlainCalendar
{
public:
    PlainCalendar(CCalendar const & calendar, CCalendar const & master) : calendar(calendar), master(master)
    {
        for (int each = 1; each <= 7; ++each)
        {
            PlainDay const day(weekday(each));
            weekHasBlocks = weekHasBlocks || !day.blocks.empty();
            minutesOfWeekdays += day.workingMinutes();
        }
        for (auto const * exceptions : {&calendar.getCalendarDayExceptions(), &master.getCalendarDayExceptions()})
            for (CCalendarException const & exception : *exceptions)
            {
                firstException = std::min(firstException, exception.getDate().getDayNumber());
                lastException = std::max(lastException, exception.getDate().getDayNumber());
            }
    }

    CCalendarDayType const & dayType(CProjectDate const & date) const
    {
        CCalendarDayType const * found = calendar.getID() == master.getID() ? nullptr : exceptional(master, date);
        if (found) return *found;
        found = exceptional(calendar, date);
        return found ? inForce(found) : weekday(date.GetDayOfWeek());
    }
    // The working time of a week without exceptions.
    long minutesOfWeek() const { return minutesOfWeekdays; }

    CProjectTime add(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const
    {
        if (!time.isValid()) return {};
        PlainDay const & today = day(time.getDate());
        long const length = duration.GetTotalMinutes();
        long const rest = today.between(time.getTimeOfDay(), today.end());
        if (length <= rest)
        {
            CProjectTime const result = compose(time.getDate(), today.add(time.getTimeOfDay(), length));
            return asEndTime && length <= 1 ? result : toValid(result, asEndTime);
        }
        auto const within = [](PlainDay const & day, long left) { return day.add(day.start(), left); };
        return toValid(onOtherDays(time.getDate(), length - rest, 1, within), asEndTime);
    }
    CProjectTime subtract(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const
    {
        if (!time.isValid()) return {};
        PlainDay const & today = day(time.getDate());
        long const length = duration.GetTotalMinutes();
        long const rest = today.between(today.start(), time.getTimeOfDay());
        if (length <= rest)
        {
            CProjectTime const result = compose(time.getDate(), today.subtract(time.getTimeOfDay(), length));
            return !asEndTime && length <= 1 ? result : toValid(result, asEndTime);
        }
        auto const within = [](PlainDay const & day, long left) { return day.subtract(day.end(), left); };
        return toValid(onOtherDays(time.getDate(), length - rest, -1, within), asEndTime);
    }
    CProjectDuration between(CProjectTime const & a, CProjectTime const & b) const
    {
        if (!a.isValid() || !b.isValid()) return CProjectDuration(0);
        if (a > b) return between(b, a);
        CProjectDate const last = b.getDate();
        PlainDay const & firstDay = day(a.getDate());
        if (a.getDate() == last) return minutes(firstDay.between(a.getTimeOfDay(), b.getTimeOfDay()));
        long sum = firstDay.between(a.getTimeOfDay(), firstDay.end());
        for (CProjectDate date = a.getDate() + 1; date < last; date += 1)
            if (day(date).isWorking) sum += day(date).workingMinutes();
        PlainDay const & lastDay = day(last);
        sum += lastDay.between(lastDay.start(), b.getTimeOfDay());
        return minutes(std::max(0L, sum));
    }
    bool isValidStart(CProjectTime const & time) const
    {
        return time.isValid() && day(time.getDate()).isWorking && day(time.getDate()).isValidStart(time.getTimeOfDay());
    }
    bool isValidEnd(CProjectTime const & time) const
    {
        return time.isValid() && day(time.getDate()).isWorking && day(time.getDate()).isValidEnd(time.getTimeOfDay());
    }
    CProjectTime nextStart(CProjectTime const & time) const { return search(time, &PlainDay::nextStart, 1); }
    CProjectTime nextEnd(CProjectTime const & time) const { return search(time, &PlainDay::nextEnd, 1); }
    CProjectTime previousStart(CProjectTime const & time) const { return search(time, &PlainDay::previousStart, -1); }
    CProjectTime previousEnd(CProjectTime const & time) const { return search(time, &PlainDay::previousEnd, -1); }

private:
    using Search = CProjectTimeOfDay (PlainDay::*)(CProjectTimeOfDay const &) const;
    using Within = CProjectTimeOfDay (*)(PlainDay const & day, long left);

    static CCalendarDayType const * named(CCalendar const & calendar, CCalendarDayTypeID const & id)
    {
        for (CCalendarDayType const & dayType : calendar.getCalendarDayTypes())
            if (dayType.getID() == id) return &dayType;
        return nullptr;
    }
    static CCalendarDayType const * exceptional(CCalendar const & calendar, CProjectDate const & date)
    {
        for (CCalendarException const & exception : calendar.getCalendarDayExceptions())
            if (exception.getDate().compare(date) == 0) return named(calendar, exception.getCalendarDayTypeID());
        return nullptr;
    }
    static bool isNormal(CCalendarDayType const & dayType) { return dayType.getDayType().getEquivalentValue() == 1; }
    CCalendarDayType const & inForce(CCalendarDayType const * found) const
    {
        if (!found) return nothing;
        if (!isNormal(*found) || calendar.getNormalDayInUse().getValue()) return *found;
        if (master.getNormalDayInUse().getValue())
            for (CCalendarDayType const & dayType : master.getCalendarDayTypes())
                if (isNormal(dayType)) return dayType;
        return nothing;
    }
    CCalendarDayType const & weekday(int day) const
    {
        return inForce(named(calendar, calendar.getCalendarWeek().getDay(day)));
    }
    PlainDay const & day(CProjectDate const & date) const
    {
        auto const known = days.find(date.getDayNumber());
        if (known != days.end()) return known->second;
        return days.emplace(date.getDayNumber(), PlainDay(dayType(date))).first->second;
    }
    // None where dates end, nor where neither the week nor an exception ahead can have blocks.
    std::optional<CProjectDate> neighbour(CProjectDate const & date, int step) const
    {
        CProjectDate const next = date + step;
        bool const isAnyAhead = step > 0 ? next.getDayNumber() <= lastException : next.getDayNumber() >= firstException;
        if (next == date || !(weekHasBlocks || isAnyAhead)) return {};
        return next;
    }
    CProjectTime search(CProjectTime const & time, Search search, int step) const
    {
        CProjectTimeOfDay const outermost = step > 0 ? CProjectTimeOfDay(0, 0) : CProjectTimeOfDay(23, 59);
        if (!time.isValid()) return {};
        CProjectDate date = time.getDate();
        for (CProjectTimeOfDay from = time.getTimeOfDay();;)
        {
            CProjectTimeOfDay const found = (day(date).*search)(from);
            if (found.isValid()) return date + found;
            std::optional<CProjectDate> const next = neighbour(date, step);
            if (!next) return {};
            date = *next;
            // Where the clock skipped the last minute of a day, it would show the day after.
            CProjectTime const entered = date + outermost;
            from = entered.getDate() == date ? entered.getTimeOfDay() : outermost;
        }
    }
    CProjectTime toValid(CProjectTime const & time, bool asEndTime) const
    {
        if (asEndTime) return isValidEnd(time) ? time : previousEnd(time);
        return isValidStart(time) ? time : nextStart(time);
    }
    // Where the minutes end that are left after that date, or not valid where dates end.
    CProjectTime onOtherDays(CProjectDate date, long left, int step, Within within) const
    {
        while (std::optional<CProjectDate> const next = neighbour(date, step))
        {
            date = *next;
            PlainDay const & here = day(date);
            if (here.isWorking && left <= here.workingMinutes()) return compose(date, within(here, left));
            left -= here.workingMinutes();
        }
        return {};
    }

    // What a lookup that fails answers.
    CCalendarDayType const nothing{CCalendarDayTypeID::getNULL()};
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
