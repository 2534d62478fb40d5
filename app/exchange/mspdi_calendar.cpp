#include "app/exchange/mspdi_calendar.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "app/exchange/mspdi_values.h"

namespace orvane::app
{
namespace
{

constexpr std::int64_t tenYears = 3653;
constexpr std::int64_t mostWalked = 50'000'000, mostStored = 1'000'000;

// A day as rules of recurrence see it.
class RuleDay
{
public:
    explicit RuleDay(std::int64_t number) : number(number), date(std::chrono::sys_days(std::chrono::days(number))) {}

    // From 0 Sunday; 1970-01-01 was a Thursday. Weeks begin on Sundays.
    int weekday() const { return static_cast<int>((number + 4) % 7 + 7) % 7; }
    std::int64_t week() const { return (number - weekday() + 4) / 7; }
    int month() const { return static_cast<int>(unsigned(date.month())) - 1; }
    std::int64_t months() const { return std::int64_t{int(date.year())} * 12 + month(); }
    int day() const { return static_cast<int>(unsigned(date.day())); }
    int daysOfMonth() const
    {
        return static_cast<int>(unsigned((date.year() / date.month() / std::chrono::last).day()));
    }

    // A day beyond the month's end is its last.
    bool isDay(int wanted) const { return day() == std::min(wanted, daysOfMonth()); }
    // The first to the fourth or the last day of its kind in the month.
    bool isAt(int position, int item) const
    {
        if (!isItem(weekday(), item)) return false;
        constexpr int lastPosition = 4;
        bool const isLast = position == lastPosition;
        int others = 0;
        for (int each = isLast ? day() + 1 : 1; each < (isLast ? daysOfMonth() + 1 : day()); ++each)
            others += isItem((weekday() + each - day() + 35) % 7, item);
        return others == (isLast ? 0 : position);
    }

private:
    static bool isItem(int weekday, int item)
    {
        bool const isWeekEnd = weekday == 0 || weekday == 6;
        return item == 0 || (item == 1 && !isWeekEnd) || (item == 2 && isWeekEnd) || item == weekday + 3;
    }

    std::int64_t number;
    std::chrono::year_month_day date;
};

bool picks(MspdiException const & rule, std::int64_t from, std::int64_t number)
{
    std::int64_t const period = std::max(1, rule.period);
    RuleDay const day(number), start(from);
    bool const isMonth = (day.months() - start.months()) % period == 0;
    switch (rule.type)
    {
        case MspdiException::weekly:
            return (rule.daysOfWeek >> day.weekday() & 1) != 0 && (day.week() - start.week()) % period == 0;
        case MspdiException::monthlyByDay: return isMonth && day.isDay(rule.monthDay);
        case MspdiException::monthlyByPosition: return isMonth && day.isAt(rule.monthPosition, rule.monthItem);
        case MspdiException::yearlyByDay: return day.month() == rule.month && day.isDay(rule.monthDay);
        case MspdiException::yearlyByPosition:
            return day.month() == rule.month && day.isAt(rule.monthPosition, rule.monthItem);
        default: return (number - from) % period == 0;
    }
}

bool isPlainPeriod(MspdiException const & exception)
{
    return exception.type == MspdiException::daily && exception.period <= 1;
}

}  // namespace

PlanDay dayOf(MspdiException const & day)
{
    if (!day.isWorking.value_or(!day.times.empty())) return {};
    // A day of work without times has the usual ones.
    if (day.times.empty()) return {{480, 720}, {780, 1020}};
    PlanDay blocks = day.times;
    std::ranges::sort(blocks, {}, [](PlanBlock const & block) { return std::pair(block.from, block.to); });
    PlanDay apart;
    for (PlanBlock const & block : blocks)
        if (!apart.empty() && block.from < apart.back().to) apart.back().to = std::max(apart.back().to, block.to);
        else apart.push_back(block);
    return apart;
}

bool MspdiCalendarDays::expand(MspdiCalendar & draft)
{
    auto const all = [&](auto const & list)
    { return std::ranges::all_of(list, [&](auto const & each) { return expand(draft.calendar, each); }); };
    // What is written later replaces what is there: single days win over rules, rules over weeks.
    std::stable_partition(draft.exceptions.begin(), draft.exceptions.end(),
                          [](auto const & each) { return !isPlainPeriod(each); });
    return all(draft.workWeeks) && all(draft.oldExceptions) && all(draft.exceptions);
}

bool MspdiCalendarDays::expand(PlanCalendar & calendar, MspdiWorkWeek const & weeks)
{
    if (!weeks.from || !weeks.to) return true;
    std::int64_t const from = dayOf(*weeks.from), to = dayOf(*weeks.to);
    for (std::int64_t day = from; day <= to; ++day)
    {
        if (++walked > mostWalked) return false;
        auto const & work = weeks.week[static_cast<std::size_t>(RuleDay(day).weekday())];
        if (!work) continue;
        if (!isKept(from, to, day)) ++cutDays;
        else if (!put(calendar, day, *work, weeks.name)) return false;
    }
    return true;
}

bool MspdiCalendarDays::expand(PlanCalendar & calendar, MspdiException const & exception)
{
    if (!exception.from || !exception.to) return true;
    if (exception.type < MspdiException::daily || exception.type > MspdiException::byDayCount)
    {
        ++unknownRules;
        return true;
    }
    std::int64_t const from = dayOf(*exception.from), to = dayOf(*exception.to);
    bool const isCounted = exception.isEnteredByOccurrences && exception.occurrences > 0 && !isPlainPeriod(exception);
    int left = exception.occurrences;
    PlanDay const work = dayOf(exception);
    for (std::int64_t day = from; day <= to && (!isCounted || left > 0); ++day)
    {
        if (++walked > mostWalked) return false;
        if (!picks(exception, from, day)) continue;
        --left;
        if (!isKept(from, to, day)) ++cutDays;
        else if (!put(calendar, day, work, exception.name)) return false;
    }
    return true;
}

bool MspdiCalendarDays::isKept(std::int64_t from, std::int64_t to, std::int64_t day) const
{
    return to - from <= tenYears || (day >= first - tenYears && day <= last + tenYears);
}

bool MspdiCalendarDays::put(PlanCalendar & calendar, std::int64_t day, PlanDay const & work, std::string const & name)
{
    stored += calendar.exceptions.insert_or_assign(day, work).second;
    if (name.empty()) calendar.exceptionNames.erase(day);
    else calendar.exceptionNames[day] = name;
    return stored <= mostStored;
}

}  // namespace orvane::app
