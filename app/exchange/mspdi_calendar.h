#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/exchange/plan.h"

namespace orvane::app
{

// Days that differ from the week: a period, in which a rule picks days.
struct MspdiException
{
    // As the format numbers them; a plain period is daily with period 1.
    enum Type
    {
        daily = 1,
        yearlyByDay,
        yearlyByPosition,
        monthlyByDay,
        monthlyByPosition,
        weekly,
        byDayCount,
    };

    int line = 0;
    std::string name;
    OptionalMinute from, to;
    int type = daily;
    bool isEnteredByOccurrences = false;
    int occurrences = 0;
    // Every how many days, weeks or months.
    int period = 1;
    // One bit a day, Sunday first.
    int daysOfWeek = 0;
    // 0 a day, 1 a working day from Monday to Friday, 2 a day of the week's end, 3 Sunday to 9 Saturday.
    int monthItem = 0;
    // From 0; 4 is the last.
    int monthPosition = 0;
    // From 0 January; days from 1.
    int month = 0;
    int monthDay = 1;
    // Of a day of the week, 1 to 7 from Sunday; 0 for an exception.
    int dayType = 0;
    std::optional<bool> isWorking;
    std::vector<PlanBlock> times;
};

// Weeks that differ for a time.
struct MspdiWorkWeek
{
    OptionalMinute from, to;
    std::string name;
    std::array<std::optional<PlanDay>, 7> week;
};

// A calendar as it stands in the file.
struct MspdiCalendar
{
    PlanCalendar calendar;
    int line = 0;
    std::vector<MspdiWorkWeek> workWeeks;
    // Those among the days of the week, as older files have them, and those of their own.
    std::vector<MspdiException> oldExceptions, exceptions;
};

// Work on such a day: sorted and not overlapping.
PlanDay dayOf(MspdiException const & day);

// Writes out the days of calendars. What the rules of a file ask for is bounded: periods of many years are cut to ten
// years around the schedule.
class MspdiCalendarDays
{
public:
    // The first and the last day of the schedule.
    MspdiCalendarDays(std::int64_t first, std::int64_t last) : first(first), last(last) {}

    // Moves exceptions into the days of the calendar. False when there are more than a file may have.
    bool expand(MspdiCalendar & draft);
    // Days beyond the ten years, and rules that are not known.
    int cut() const { return cutDays; }
    int unknown() const { return unknownRules; }

private:
    bool expand(PlanCalendar & calendar, MspdiWorkWeek const & weeks);
    bool expand(PlanCalendar & calendar, MspdiException const & exception);
    bool put(PlanCalendar & calendar, std::int64_t day, PlanDay const & work, std::string const & name);
    bool isKept(std::int64_t from, std::int64_t to, std::int64_t day) const;

    std::int64_t first, last;
    std::int64_t walked = 0, stored = 0;
    int cutDays = 0;
    int unknownRules = 0;
};

}  // namespace orvane::app
