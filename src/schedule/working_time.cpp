#include "schedule/working_time.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orvane
{

namespace
{

// The Sunday from which weeks are counted: 28 December 1969.
constexpr std::int64_t firstSunday = -4;

constexpr std::int64_t weekOf(std::int64_t day)
{
    return floorDiv(day - firstSunday, daysPerWeek);
}

constexpr std::size_t dayInWeek(std::int64_t day)
{
    return static_cast<std::size_t>(floorMod(day - firstSunday, daysPerWeek));
}

std::int64_t firstDay()
{
    return CTime(std::numeric_limits<std::int32_t>::min()).getDayNumber();
}

std::int64_t lastDay()
{
    return CTime(std::numeric_limits<std::int32_t>::max()).getDayNumber();
}

bool isRepresentable(std::int64_t day)
{
    return firstDay() <= day && day <= lastDay();
}

std::int64_t dayOf(std::int64_t time)
{
    return floorDiv(time, minutesPerDay);
}

Clock clockOf(std::int64_t time)
{
    return {static_cast<int>(floorMod(time, minutesPerDay)), true};
}

// The local time that a stored time for this day and clock shows: another one where the clock skipped it,
// and at the ends of what can be stored. A clock time that is not valid counts as 00:00.
std::int64_t settled(std::int64_t day, Clock clock)
{
    std::int64_t const time = day * minutesPerDay + (clock.valid ? clock.minuteOfDay() : 0);
    return CProjectTime::fromLocalMinutes(time).getLocalMinutes();
}

// What the clock shows where a search comes to a day: not its first or last minute where that was skipped,
// but never the clock of another day.
Clock entered(std::int64_t day, Clock outermost)
{
    std::int64_t const time = settled(day, outermost);
    return dayOf(time) == day ? clockOf(time) : outermost;
}

}  // namespace

CWorkingTime::CWorkingTime(std::vector<CWorkingDay> kinds, std::array<std::size_t, 7> const & week,
                           std::vector<Exception> const & exceptions)
    : kinds(std::move(kinds)), week(week)
{
    for (std::size_t day = 0; day < week.size(); ++day)
    {
        CWorkingDay const & kind = this->kinds[week[day]];
        workInWeek[day + 1] = workInWeek[day] + kind.getMinutes();
        worksInWeek = worksInWeek || kind.hasBlocks();
    }
    special.reserve(exceptions.size());
    for (Exception const & exception : exceptions)
    {
        std::int64_t const work = weekWorkBefore(exception.day) + specialWorkBefore(special.size());
        special.push_back({exception.day, work + this->kinds[exception.kind].getMinutes(), exception.kind});
    }
    ascends =
        std::all_of(this->kinds.begin(), this->kinds.end(), [](auto const & kind) { return kind.getMinutes() >= 0; });
}

std::optional<std::int64_t> CWorkingTime::moved(std::int64_t time, std::int64_t duration, Direction direction,
                                                Edge purpose) const
{
    Edge const far = farEdge(direction);
    std::int64_t const day = dayOf(time);
    CWorkingDay const & today = kindOf(day);
    std::int64_t const rest = today.between(clockOf(time), today.outer(far));
    if (duration <= rest)
    {
        std::int64_t const result = settled(day, today.moved(clockOf(time), duration, direction));
        // What is no longer than a minute stays, as an end of an addition and as a start of a subtraction.
        bool const stays = duration <= 1 && purpose == far;
        return stays ? result : corrected(result, purpose);
    }
    std::optional<Reached> const reached = reach(day + step(direction), duration - rest, direction);
    if (!reached) return {};
    CWorkingDay const & last = kindOf(reached->day);
    return corrected(settled(reached->day, last.moved(last.outer(nearEdge(direction)), reached->rest, direction)),
                     purpose);
}

std::optional<std::int64_t> CWorkingTime::corrected(std::int64_t time, Edge purpose) const
{
    if (isValid(time, purpose)) return time;
    return nearestValid(time, purpose, purpose == Edge::end ? Direction::backward : Direction::forward);
}

std::int64_t CWorkingTime::between(std::int64_t from, std::int64_t to) const
{
    std::int64_t const fromDay = dayOf(from);
    std::int64_t const toDay = dayOf(to);
    CWorkingDay const & first = kindOf(fromDay);
    if (fromDay == toDay) return first.between(clockOf(from), clockOf(to));
    CWorkingDay const & last = kindOf(toDay);
    std::int64_t total = first.between(clockOf(from), first.outer(Edge::end));
    // A clock set back over midnight can show the later time on an earlier day.
    if (fromDay + 1 < toDay) total += workBefore(toDay) - workBefore(fromDay + 1);
    total += last.between(last.outer(Edge::start), clockOf(to));
    return std::max<std::int64_t>(0, total);
}

bool CWorkingTime::isValid(std::int64_t time, Edge edge) const
{
    return kindOf(dayOf(time)).isValid(clockOf(time), edge);
}

std::optional<std::int64_t> CWorkingTime::nearestValid(std::int64_t time, Edge edge, Direction direction) const
{
    Clock const outermost{direction == Direction::forward ? 0 : Clock::minutesPerDay - 1, true};
    std::int64_t const ownDay = dayOf(time);
    for (std::int64_t day = ownDay; isRepresentable(day); day = nextDay(day, direction))
    {
        CWorkingDay const & kind = kindOf(day);
        if (!kind.hasBlocks()) continue;
        Clock const found = kind.nearestValid(day == ownDay ? clockOf(time) : entered(day, outermost), edge, direction);
        if (found.valid) return settled(day, found);
    }
    return {};
}

// ---- days ---------------------------------------------------------------------------------------

std::size_t CWorkingTime::countSpecialBefore(std::int64_t day) const
{
    return static_cast<std::size_t>(std::ranges::lower_bound(special, day, {}, &SpecialDay::day) - special.begin());
}

CWorkingDay const & CWorkingTime::kindOf(std::int64_t day) const
{
    std::size_t const place = countSpecialBefore(day);
    bool const isSpecial = place < special.size() && special[place].day == day;
    return kinds[isSpecial ? special[place].kind : week[dayInWeek(day)]];
}

std::int64_t CWorkingTime::nextDay(std::int64_t day, Direction direction) const
{
    if (worksInWeek) return day + step(direction);
    if (direction == Direction::forward)
    {
        std::size_t const next = countSpecialBefore(day + 1);
        return next < special.size() ? special[next].day : lastDay() + 1;
    }
    std::size_t const before = countSpecialBefore(day);
    return before > 0 ? special[before - 1].day : firstDay() - 1;
}

// ---- running sums -------------------------------------------------------------------------------

std::int64_t CWorkingTime::weekWorkBefore(std::int64_t day) const
{
    return weekOf(day) * workInWeek.back() + workInWeek[dayInWeek(day)];
}

// What the exceptions add to the weeks' work.
std::int64_t CWorkingTime::specialWorkBefore(std::size_t count) const
{
    return count == 0 ? 0 : special[count - 1].workThrough - weekWorkBefore(special[count - 1].day + 1);
}

std::int64_t CWorkingTime::workBefore(std::int64_t day) const
{
    return weekWorkBefore(day) + specialWorkBefore(countSpecialBefore(day));
}

std::optional<CWorkingTime::Reached> CWorkingTime::reach(std::int64_t day, std::int64_t work, Direction direction) const
{
    if (!ascends) return walk(day, work, direction);
    // Both ways the question is which day holds a certain minute of work, counted from the past.
    bool const forward = direction == Direction::forward;
    std::int64_t const minute = forward ? workBefore(day) + work : workBefore(day + 1) - work + 1;
    std::int64_t const reached = dayReaching(minute);
    if (!isRepresentable(reached)) return {};
    return Reached{reached, forward ? minute - workBefore(reached) : workBefore(reached + 1) - minute + 1};
}

std::optional<CWorkingTime::Reached> CWorkingTime::walk(std::int64_t day, std::int64_t work, Direction direction) const
{
    for (; isRepresentable(day); day += step(direction))
    {
        std::int64_t const minutes = kindOf(day).getMinutes();
        if (work <= minutes) return Reached{day, work};
        work -= minutes;
    }
    return {};
}

std::int64_t CWorkingTime::dayReaching(std::int64_t work) const
{
    auto const next = std::ranges::lower_bound(special, work, {}, &SpecialDay::workThrough);
    std::int64_t const latest = next != special.end() ? next->day : std::numeric_limits<std::int64_t>::max();
    // Without work in weeks there is none before the first exception.
    if (workInWeek.back() == 0) return work > 0 ? latest : std::numeric_limits<std::int64_t>::min();
    std::int64_t const inWeeks = work - specialWorkBefore(static_cast<std::size_t>(next - special.begin()));
    std::int64_t const weeks = floorDiv(inWeeks - 1, workInWeek.back());
    std::int64_t const inWeek = inWeeks - weeks * workInWeek.back();
    auto const day = std::lower_bound(workInWeek.begin() + 1, workInWeek.end(), inWeek) - workInWeek.begin() - 1;
    return std::min(latest, firstSunday + weeks * daysPerWeek + day);
}

}  // namespace orvane
