#pragma once

#include <cstdint>
#include <vector>

#include "values/date_time.h"
#include "values/time_of_day_span_array.h"

namespace orvane
{

enum class Direction : int
{
    backward = -1,
    forward = 1
};
// What a time is to be good for; also the two ends of a block or a day.
enum class Edge
{
    start,
    end
};

constexpr int step(Direction direction)
{
    return static_cast<int>(direction);
}

// The end that is met first when going in a direction, and the other one.
constexpr Edge nearEdge(Direction direction)
{
    return direction == Direction::forward ? Edge::start : Edge::end;
}

constexpr Edge farEdge(Direction direction)
{
    return direction == Direction::forward ? Edge::end : Edge::start;
}

// A time on the clock in whole minutes after midnight. Given times may lie beyond the day and be not valid,
// and compare as the numbers they are; computed ones lie within the day.
struct Clock
{
    int minute = 0;
    bool valid = false;

    static constexpr int minutesPerDay = 24 * 60;

    static Clock of(CProjectTimeOfDay const & time);
    CProjectTimeOfDay timeOfDay() const;
    // What the clock shows.
    int minuteOfDay() const { return static_cast<int>(floorMod(minute, minutesPerDay)); }
    // Round midnight; as valid as this.
    Clock plus(std::int64_t minutes) const;
};

inline CProjectDuration durationOfMinutes(std::int64_t minutes)
{
    return CProjectDuration(minutes * secondsPerMinute);
}

// The time blocks of one day, and the arithmetic within them. Durations are whole minutes.
class CWorkingDay
{
public:
    // A day without blocks.
    CWorkingDay() = default;
    explicit CWorkingDay(CProjectTimeOfDaySpanArray const & blocks);

    bool hasBlocks() const { return !blocks.empty(); }
    // The sum of the blocks; negative when they are in disorder enough.
    std::int64_t getMinutes() const { return minutes; }

    // The start of the first block or the end of the last; not valid without blocks.
    Clock outer(Edge edge) const;
    int findBlock(Clock time) const;
    bool isValid(Clock time, Edge edge) const;
    // The nearest valid start or end in a direction, the time itself included; not valid if there is none.
    Clock nearestValid(Clock time, Edge edge, Direction direction) const;
    // The time that much work away; not valid from a time in no block, or when the blocks do not suffice.
    Clock moved(Clock time, std::int64_t duration, Direction direction) const;
    // The work between two times in any order, at least zero.
    std::int64_t between(Clock a, Clock b) const;
    // From a gap or from beyond the last block to the next block in a direction; other times stay.
    Clock rotated(Clock time, Direction direction) const;

private:
    struct Block
    {
        Clock start;
        Clock end;
        std::int64_t minutes;  // negative where the block ends before it starts

        Clock bound(Edge edge) const { return edge == Edge::start ? start : end; }
        std::int64_t length() const { return start.minute < end.minute ? end.minute - start.minute : 0; }
        // The first and the last minute that is good for that, before they are brought into the day.
        int first(Edge edge) const { return edge == Edge::start ? start.minute : start.minute + 1; }
        int last(Edge edge) const { return edge == Edge::start ? end.minute - 1 : end.minute; }
        bool holds(int minute, Edge edge) const { return first(edge) <= minute && minute <= last(edge); }
        Clock firstTime(Edge edge) const { return edge == Edge::start ? start : start.plus(1); }
        Clock lastTime(Edge edge) const { return edge == Edge::start ? end.plus(-1) : end; }
    };

    Block const & block(int index) const { return blocks[static_cast<std::size_t>(index)]; }
    int size() const { return static_cast<int>(blocks.size()); }
    // Where a walk over the blocks begins, and whether it goes on.
    int firstOf(Direction direction) const { return direction == Direction::forward ? 0 : size() - 1; }
    bool isIn(int index) const { return 0 <= index && index < size(); }

    std::vector<Block> blocks;
    std::int64_t minutes = 0;
};

}  // namespace orvane
