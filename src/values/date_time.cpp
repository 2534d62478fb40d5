#include "values/date_time.h"

#include "platform/string.h"

#include <algorithm>

namespace
{

// Where subtraction ends: 1 January 1970 00:00.
CTime earliest()
{
    return CTime::fromLocalSeconds(0);
}

std::int64_t noonOf(std::int64_t day)
{
    return orvane::fromLocalSeconds(day * orvane::secondsPerDay + orvane::secondsPerDay / 2);
}

}  // namespace

CProjectDate CProjectTime::getDate() const
{
    CProjectDate date = CProjectDate::fromDayNumber(getDayNumber());
    date.setValid(valid);
    return date;
}

CProjectTimeOfDay CProjectTime::getTimeOfDay() const
{
    CProjectTimeOfDay timeOfDay(GetHour(), GetMinute());
    timeOfDay.setValid(valid);
    return timeOfDay;
}

void CProjectTime::move(std::int64_t seconds)
{
    time = CTime(time.GetTime() + seconds);
    truncateSeconds();
}

CProjectTime & CProjectTime::operator+=(CProjectDuration const & duration)
{
    changed = true;
    move(duration.GetTotalSeconds());
    return *this;
}

CProjectTime & CProjectTime::operator-=(CProjectDuration const & duration)
{
    changed = true;
    std::int64_t const seconds = duration.GetTotalSeconds();
    bool const reachesTheEnd = seconds >= 0 && earliest().GetTime() + seconds > time.GetTime();
    if (reachesTheEnd) time = earliest();
    else move(-seconds);
    return *this;
}

CString CProjectTimeOfDay::getString() const
{
    CString text;
    text.Format("%02d:%02d", GetHour(), GetMinute());
    return text;
}

CProjectTime CProjectTimeOfDay::operator+(CProjectDate const & date) const
{
    return CProjectTime::fromLocalMinutes(date.getDayNumber() * orvane::minutesPerDay + getMinuteOfDay());
}

CProjectDuration CProjectTimeOfDay::operator-(CProjectTimeOfDay const & other) const
{
    return CProjectDuration(std::max<std::int64_t>(0, time.GetTime() - other.time.GetTime()));
}

CProjectTimeOfDay & CProjectTimeOfDay::diff(CProjectTimeOfDay const & other)
{
    if (*this != other) *this = other;
    return *this;
}

CProjectTimeOfDay CProjectTimeOfDay::moved(std::int64_t seconds) const
{
    std::int64_t const clock = time.GetTime() + orvane::clockOffset() + seconds;
    std::int64_t const minute = orvane::floorMod(clock, orvane::secondsPerDay) / orvane::secondsPerMinute;
    CProjectTimeOfDay result(0, static_cast<int>(minute));
    result.valid = valid;
    return result;
}

// Noon to noon, so that no change of the clock moves the date by one.
CProjectDate CProjectDate::operator+(int days) const
{
    std::int64_t const moment = noonOf(getDayNumber()) + days * orvane::secondsPerDay;
    return fromDayNumber(orvane::dayOfLocal(orvane::toLocalSeconds(moment)));
}

CProjectDate CProjectDate::operator-(int days) const
{
    std::int64_t const moment = noonOf(getDayNumber()) - days * orvane::secondsPerDay;
    return fromDayNumber(orvane::dayOfLocal(orvane::toLocalSeconds(moment)));
}

int CProjectDate::operator-(CProjectDate const & other) const
{
    if (other > *this) return -(other - *this);
    std::int64_t const midnight = orvane::fromLocalSeconds(other.getDayNumber() * orvane::secondsPerDay);
    return static_cast<int>((noonOf(getDayNumber()) - midnight) / orvane::secondsPerDay);
}

CProjectTime CProjectDate::operator+(CProjectTimeOfDay const & timeOfDay) const
{
    return timeOfDay + *this;
}

void CProjectTimeOfDaySpan::updateValidity()
{
    valid = start <= end && getEndMinute() != 0;
}

void CProjectTimeOfDaySpan::Serialize(CProjectArchive & archive)
{
    archive.exchange(start, end);
    if (!archive.IsLoading()) return;
    updateValidity();
    changed = true;
}

void CProjectTimeOfDaySpan::set(CProjectTimeOfDay & part, CProjectTimeOfDay const & time)
{
    part = time;
    changed = true;
    updateValidity();
}

CProjectTimeOfDaySpan::operator CString() const
{
    return start.getString() + "   to   " + end.getString();
}

int CProjectTimeOfDaySpan::compare(CProjectTimeOfDaySpan const & other) const
{
    int const starts = getStartMinute() - other.getStartMinute();
    int const difference = starts != 0 ? starts : getEndMinute() - other.getEndMinute();
    return (difference > 0) - (difference < 0);
}

// On the real clock of 1 January 1970, whatever it did on that day.
CProjectTimeOfDaySpan::operator CProjectDuration() const
{
    auto const moment = [](int minute) { return orvane::fromLocalSeconds(minute * orvane::secondsPerMinute); };
    return CProjectDuration(moment(getEndMinute()) - moment(getStartMinute()));
}

bool CProjectTimeOfDaySpan::getIntersection(CProjectTimeOfDaySpan const & other, CProjectTimeOfDaySpan & out) const
{
    // Copies, since `out` may be one of the two.
    CProjectTimeOfDay const latestStart = start > other.start ? start : other.start;
    CProjectTimeOfDay const earliestEnd = end < other.end ? end : other.end;
    if (latestStart >= earliestEnd) return false;
    out.setStart(latestStart);
    out.setEnd(earliestEnd);
    return true;
}
