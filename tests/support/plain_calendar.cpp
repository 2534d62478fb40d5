#include "tests/support/plain_calendar.h"

#include <algorithm>
#include <optional>

namespace orvane::test
{

namespace
{

CProjectDuration const oneMinute(60);

CProjectDuration minutes(long count)
{
    return CProjectDuration(count * 60);
}

// A time of day that is not valid counts as 00:00.
CProjectTime compose(CProjectDate const & date, CProjectTimeOfDay const & t)
{
    return date + (t.isValid() ? t : CProjectTimeOfDay(0, 0));
}

}  // namespace

// ---- one day --------------------------------------------------------------------------------------

PlainDay::PlainDay(CCalendarDayType const & dayType) : isWorking(dayType.getDayType().getEquivalentValue() != 2)
{
    if (!isWorking) return;
    for (int each = 0; each < dayType.getNumberOfTimeBlocks(); ++each) blocks.push_back(dayType.getTimeBlock(each));
}

CProjectTimeOfDay PlainDay::start() const
{
    return blocks.empty() ? CProjectTimeOfDay() : blocks.front().getStart();
}

CProjectTimeOfDay PlainDay::end() const
{
    return blocks.empty() ? CProjectTimeOfDay() : blocks.back().getEnd();
}

long PlainDay::workingMinutes() const
{
    long sum = 0;
    for (auto const & block : blocks) sum += CProjectDuration(block).GetTotalMinutes();
    return sum;
}

int PlainDay::find(CProjectTimeOfDay const & t) const
{
    for (std::size_t each = 0; each < blocks.size(); ++each)
    {
        if (t < blocks[each].getStart()) return -1;
        if (t <= blocks[each].getEnd()) return static_cast<int>(each);
    }
    return -1;
}

bool PlainDay::isValidStart(CProjectTimeOfDay const & t) const
{
    int const found = find(t);
    return found >= 0 && t < blocks[static_cast<std::size_t>(found)].getEnd();
}

bool PlainDay::isValidEnd(CProjectTimeOfDay const & t) const
{
    int const found = find(t);
    return found >= 0 && blocks[static_cast<std::size_t>(found)].getStart() < t;
}

CProjectTimeOfDay PlainDay::nextStart(CProjectTimeOfDay const & t) const
{
    for (auto const & block : blocks)
    {
        if (t < block.getStart()) return block.getStart();
        if (t < block.getEnd()) return t;
    }
    return {};
}

CProjectTimeOfDay PlainDay::nextEnd(CProjectTimeOfDay const & t) const
{
    for (auto const & block : blocks)
    {
        if (t <= block.getStart()) return block.getStart() + oneMinute;
        if (t <= block.getEnd()) return t;
    }
    return {};
}

CProjectTimeOfDay PlainDay::previousStart(CProjectTimeOfDay const & t) const
{
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block)
    {
        if (t >= block->getEnd()) return block->getEnd() - oneMinute;
        if (t >= block->getStart()) return t;
    }
    return {};
}

CProjectTimeOfDay PlainDay::previousEnd(CProjectTimeOfDay const & t) const
{
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block)
    {
        if (t > block->getEnd()) return block->getEnd();
        if (t > block->getStart()) return t;
    }
    return {};
}

CProjectTimeOfDay PlainDay::add(CProjectTimeOfDay const & t, long duration) const
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

CProjectTimeOfDay PlainDay::subtract(CProjectTimeOfDay const & t, long duration) const
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

long PlainDay::between(CProjectTimeOfDay a, CProjectTimeOfDay b) const
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

// ---- across days ----------------------------------------------------------------------------------

namespace
{

CCalendarDayType const * named(CCalendar const & calendar, CCalendarDayTypeID const & id)
{
    for (CCalendarDayType const & dayType : calendar.getCalendarDayTypes())
        if (dayType.getID() == id) return &dayType;
    return nullptr;
}

CCalendarDayType const * exceptional(CCalendar const & calendar, CProjectDate const & date)
{
    for (CCalendarException const & exception : calendar.getCalendarDayExceptions())
        if (exception.getDate().compare(date) == 0) return named(calendar, exception.getCalendarDayTypeID());
    return nullptr;
}

bool isNormal(CCalendarDayType const & dayType)
{
    return dayType.getDayType().getEquivalentValue() == 1;
}

// What a lookup that fails answers.
CCalendarDayType const nothing(CCalendarDayTypeID::getNULL());

CCalendarDayType const & normalDay(CCalendar const & calendar)
{
    if (!calendar.getNormalDayInUse().getValue()) return nothing;
    for (CCalendarDayType const & dayType : calendar.getCalendarDayTypes())
        if (isNormal(dayType)) return dayType;
    return nothing;
}

}  // namespace

CCalendarDayType const & PlainCalendar::inForce(CCalendarDayType const * found) const
{
    if (!found) return nothing;
    return isNormal(*found) && !calendar.getNormalDayInUse().getValue() ? normalDay(master) : *found;
}

CCalendarDayType const & PlainCalendar::weekday(int day) const
{
    return inForce(named(calendar, calendar.getCalendarWeek().getDay(day)));
}

CCalendarDayType const & PlainCalendar::dayType(CProjectDate const & date) const
{
    CCalendarDayType const * found = calendar.getID() == master.getID() ? nullptr : exceptional(master, date);
    if (found) return *found;
    found = exceptional(calendar, date);
    return found ? inForce(found) : weekday(date.GetDayOfWeek());
}

PlainCalendar::PlainCalendar(CCalendar const & calendar, CCalendar const & master) : calendar(calendar), master(master)
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

// None where dates end, nor where neither the week nor an exception ahead can have blocks.
std::optional<CProjectDate> PlainCalendar::neighbour(CProjectDate const & date, int step) const
{
    CProjectDate const next = date + step;
    bool const isAnyAhead = step > 0 ? next.getDayNumber() <= lastException : next.getDayNumber() >= firstException;
    if (next == date || !(weekHasBlocks || isAnyAhead)) return {};
    return next;
}

PlainDay const & PlainCalendar::day(CProjectDate const & date) const
{
    auto const known = days.find(date.getDayNumber());
    if (known != days.end()) return known->second;
    return days.emplace(date.getDayNumber(), PlainDay(dayType(date))).first->second;
}

CProjectTime PlainCalendar::toValid(CProjectTime const & time, bool asEndTime) const
{
    if (asEndTime) return isValidEnd(time) ? time : previousEnd(time);
    return isValidStart(time) ? time : nextStart(time);
}

CProjectTime PlainCalendar::add(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const
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

CProjectTime PlainCalendar::subtract(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const
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

// Where the minutes end that are left after that date, or not valid where dates end.
CProjectTime PlainCalendar::onOtherDays(CProjectDate date, long left, int step, Within within) const
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

CProjectDuration PlainCalendar::between(CProjectTime const & a, CProjectTime const & b) const
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

bool PlainCalendar::isValidStart(CProjectTime const & time) const
{
    return time.isValid() && day(time.getDate()).isWorking && day(time.getDate()).isValidStart(time.getTimeOfDay());
}

bool PlainCalendar::isValidEnd(CProjectTime const & time) const
{
    return time.isValid() && day(time.getDate()).isWorking && day(time.getDate()).isValidEnd(time.getTimeOfDay());
}

CProjectTime PlainCalendar::search(CProjectTime const & time, Search search, int step) const
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

CProjectTime PlainCalendar::nextStart(CProjectTime const & time) const
{
    return search(time, &PlainDay::nextStart, 1);
}

CProjectTime PlainCalendar::nextEnd(CProjectTime const & time) const
{
    return search(time, &PlainDay::nextEnd, 1);
}

CProjectTime PlainCalendar::previousStart(CProjectTime const & time) const
{
    return search(time, &PlainDay::previousStart, -1);
}

CProjectTime PlainCalendar::previousEnd(CProjectTime const & time) const
{
    return search(time, &PlainDay::previousEnd, -1);
}

}  // namespace orvane::test
