#include "schedule/working_time_day.h"

#include <algorithm>
#include <utility>

namespace orvane
{

namespace
{

// How far `to` lies ahead of `from`, or zero.
std::int64_t ahead(Clock from, Clock to, Direction direction)
{
    std::int64_t const distance = std::int64_t{to.minute} - from.minute;
    return std::max<std::int64_t>(0, distance * step(direction));
}

}  // namespace

Clock Clock::of(CProjectTimeOfDay const & time)
{
    std::int64_t const seconds = time.getCTime().GetTime() + clockOffset();
    return {static_cast<int>(floorDiv(seconds, secondsPerMinute)), time.isValid()};
}

CProjectTimeOfDay Clock::timeOfDay() const
{
    CProjectTimeOfDay time(0, minute);
    time.setValid(valid);
    return time;
}

Clock Clock::plus(std::int64_t minutes) const
{
    return {static_cast<int>(floorMod(minute + minutes, minutesPerDay)), valid};
}

CWorkingDay::CWorkingDay(CProjectTimeOfDaySpanArray const & spans)
{
    blocks.reserve(static_cast<std::size_t>(spans.GetSize()));
    for (CProjectTimeOfDaySpan const & span : spans)
    {
        std::int64_t const length = static_cast<CProjectDuration>(span).GetTotalMinutes();
        blocks.push_back({Clock::of(span.getStart()), Clock::of(span.getEnd()), length});
        minutes += length;
    }
}

Clock CWorkingDay::outer(Edge edge) const
{
    if (!hasBlocks()) return {};
    return edge == Edge::start ? blocks.front().start : blocks.back().end;
}

int CWorkingDay::findBlock(Clock time) const
{
    for (int each = 0; each < size(); ++each)
    {
        if (time.minute < block(each).start.minute) return -1;
        if (time.minute <= block(each).end.minute) return each;
    }
    return -1;
}

bool CWorkingDay::isValid(Clock time, Edge edge) const
{
    int const found = findBlock(time);
    return found >= 0 && block(found).holds(time.minute, edge);
}

Clock CWorkingDay::nearestValid(Clock time, Edge edge, Direction direction) const
{
    bool const forward = direction == Direction::forward;
    for (int each = firstOf(direction); isIn(each); each += step(direction))
    {
        Block const & candidate = block(each);
        int const first = candidate.first(edge);
        int const last = candidate.last(edge);
        if (forward ? time.minute < first : last < time.minute)
            return forward ? candidate.firstTime(edge) : candidate.lastTime(edge);
        if (forward ? time.minute <= last : first <= time.minute) return time;
    }
    return {};
}

Clock CWorkingDay::moved(Clock time, std::int64_t duration, Direction direction) const
{
    int each = findBlock(time);
    if (each < 0) return {};
    std::int64_t rest = duration;
    Clock from = time;
    std::int64_t room = ahead(from, block(each).bound(farEdge(direction)), direction);
    while (rest > room)
    {
        rest -= room;
        each += step(direction);
        if (!isIn(each)) return {};
        from = block(each).bound(nearEdge(direction));
        room = block(each).length();
    }
    return from.plus(rest * step(direction));
}

std::int64_t CWorkingDay::between(Clock a, Clock b) const
{
    int const start = outer(Edge::start).minute;
    int const end = outer(Edge::end).minute;
    if (start > end) return 0;
    Clock const from{std::clamp(std::min(a.minute, b.minute), start, end), true};
    Clock const to{std::clamp(std::max(a.minute, b.minute), start, end), true};
    int const first = findBlock(from);
    int const last = findBlock(to);
    if (first < 0 || last < first) return 0;
    if (first == last) return to.minute - from.minute;
    std::int64_t total =
        ahead(from, block(first).end, Direction::forward) + ahead(block(last).start, to, Direction::forward);
    for (int each = first + 1; each < last; ++each) total += block(each).minutes;
    return std::max<std::int64_t>(0, total);
}

Clock CWorkingDay::rotated(Clock time, Direction direction) const
{
    Edge const near = nearEdge(direction);
    Clock const last = outer(farEdge(direction));
    if (ahead(last, time, direction) > 0) return outer(near);
    for (int each = firstOf(direction); isIn(each + step(direction)); each += step(direction))
    {
        Clock const next = block(each + step(direction)).bound(near);
        bool const past = ahead(time, block(each).bound(farEdge(direction)), direction) == 0;
        if (past && ahead(time, next, direction) > 0) return next;
    }
    return time;
}

}  // namespace orvane
