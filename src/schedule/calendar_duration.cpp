#include "schedule/calendar.h"

#include "values/duration_text.h"

// Durations in the working days of a calendar.

namespace
{

long workingSecondsOfDay(CCalendar const & calendar)
{
    return calendar.getNormalDay().getWorkingDuration().GetTotalSeconds();
}

}  // namespace

CProjectDuration::CProjectDuration(long days, int hours, int minutes, CCalendar const & calendar)
    : CProjectDuration(orvane::saturate<std::int32_t>(days) * workingSecondsOfDay(calendar) +
                       (hours * 60L + minutes) * 60L)
{
}

long CProjectDuration::GetDays(CCalendar const & calendar) const
{
    long const day = workingSecondsOfDay(calendar);
    return day < 1 ? 0 : seconds / day;
}

int CProjectDuration::GetHours(CCalendar const & calendar) const
{
    long const beyondDays = seconds - GetDays(calendar) * workingSecondsOfDay(calendar);
    return static_cast<int>(beyondDays / 3600);
}

int CProjectDuration::GetMinutes(CCalendar const & calendar) const
{
    long const days = GetDays(calendar) * workingSecondsOfDay(calendar);
    return static_cast<int>((seconds - GetHours(calendar) * 3600L - days) / 60);
}

CString CProjectDuration::getString(CCalendar const & calendar) const
{
    if (!valid) return CString();
    auto const piece = [](long count) { return orvane::DurationPiece{count, count != 1}; };
    return orvane::durationText(piece(GetDays(calendar)), piece(GetHours(calendar)), piece(GetMinutes(calendar)));
}
