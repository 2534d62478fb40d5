#include "schedule/calendar.h"

#include <benchmark/benchmark.h>

#include <initializer_list>

namespace
{

// Monday to Friday, 09:00 to 17:00, with twelve days off in each of the years that times reach.
CCalendar withHolidays()
{
    CCalendar calendar;
    CCalendarDayTypeID const off = calendar.getCalendarDayTypes()[1].getID();
    CCalendarExceptionArray holidays;
    for (int year = 2000; year < 2038; ++year)
        for (int month = 1; month <= 12; ++month) holidays.Add(CCalendarException(CProjectDate(year, month, 6), off));
    calendar.setCalendarDayExceptions(holidays);
    return calendar;
}

CProjectTime const start(2024, 1, 8, 10, 15);
constexpr int daysPerYear = 250;

// Lengths are in working days of eight hours.
CProjectDuration length(benchmark::State const & state)
{
    return CProjectDuration(static_cast<int>(state.range(0)) * 8, 0);
}

void addDurationToTime(benchmark::State & state)
{
    CCalendar const calendar = withHolidays();
    CProjectDuration const duration = length(state);
    for (auto _ : state) benchmark::DoNotOptimize(calendar.addDurationToTime(start, duration, true));
}
BENCHMARK(addDurationToTime)->Arg(10)->Arg(daysPerYear)->Arg(10 * daysPerYear);

void subtractDurationFromTime(benchmark::State & state)
{
    CCalendar const calendar = withHolidays();
    CProjectDuration const duration = length(state);
    for (auto _ : state) benchmark::DoNotOptimize(calendar.subtractDurationFromTime(start, duration, false));
}
BENCHMARK(subtractDurationFromTime)->Arg(10)->Arg(daysPerYear)->Arg(10 * daysPerYear);

void subtractTimeFromTime(benchmark::State & state)
{
    CCalendar const calendar = withHolidays();
    CProjectTime const end = calendar.addDurationToTime(start, length(state), true);
    for (auto _ : state) benchmark::DoNotOptimize(calendar.subtractTimeFromTime(start, end));
}
BENCHMARK(subtractTimeFromTime)->Arg(10)->Arg(daysPerYear)->Arg(10 * daysPerYear);

// What the first question after a change costs.
void firstQuestionAfterChange(benchmark::State & state)
{
    CCalendar calendar = withHolidays();
    for (auto _ : state)
    {
        calendar.setNormalDayInUse(true);
        benchmark::DoNotOptimize(calendar.isValidStartTime(start));
    }
}
BENCHMARK(firstQuestionAfterChange);

}  // namespace
