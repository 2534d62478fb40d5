#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// The civil time of the process's zone. Moments are seconds since 1 January 1970 00:00 UTC; local
// seconds are what the local clock shows, counted as if it ran on UTC; day numbers count local days
// from 1 January 1970, which is 0.
namespace orvane
{

constexpr std::int64_t secondsPerMinute = 60;
constexpr std::int64_t minutesPerDay = 24 * 60;
constexpr std::int64_t secondsPerDay = minutesPerDay * secondsPerMinute;
inline constexpr int daysPerWeek = 7;

// Division by a positive number that rounds down, so that times before 1970 keep the same grid.
constexpr std::int64_t floorDiv(std::int64_t number, std::int64_t divisor)
{
    return number / divisor - (number % divisor < 0);
}

constexpr std::int64_t floorMod(std::int64_t number, std::int64_t divisor)
{
    return number - floorDiv(number, divisor) * divisor;
}

// A number of seconds that changes in steps over the years that 32-bit times reach. Beyond them the
// first or last value holds.
class OffsetTable
{
public:
    struct Step
    {
        std::int64_t from;
        std::int64_t offset;
    };

    // `steps` ascend; the first holds from the beginning, wherever it stands.
    explicit OffsetTable(std::vector<Step> steps);

    std::int64_t at(std::int64_t seconds) const
    {
        std::int64_t const within = std::clamp(seconds, first, last);
        std::size_t step = stepOfBucket[static_cast<std::size_t>((within - first) >> bucketBits)];
        while (steps[step + 1].from <= within) ++step;
        return steps[step].offset;
    }

    // The span of the table: all 32-bit times and two days more, so that their local times lie inside.
    static constexpr std::int64_t first = INT32_MIN - 2 * secondsPerDay;
    static constexpr std::int64_t last = INT32_MAX + 2 * secondsPerDay;

private:
    // Twelve days: a zone seldom changes twice in one, so that a look-up needs no search.
    static constexpr int bucketBits = 20;

    std::vector<Step> steps;
    std::vector<std::uint32_t> stepOfBucket;
};

// A time zone as the C library knows it, read once into tables. So every form of TZ has the C library's
// own meaning, and no conversion touches the library's shared state.
class TimeZone
{
public:
    // Reads the zone that TZ names now; takes a few milliseconds.
    TimeZone();

    std::int64_t toLocal(std::int64_t utc) const { return utc + byUtc.at(utc); }
    std::int64_t fromLocal(std::int64_t local) const { return local - byLocal.at(local); }
    std::int64_t fromLocalStandard(std::int64_t local) const { return local - standard.at(fromLocal(local)); }
    std::int64_t getClockOffset() const { return clockOffset; }

private:
    struct Change;
    explicit TimeZone(std::vector<Change> const & changes);

    OffsetTable byUtc;
    OffsetTable byLocal;
    OffsetTable standard;
    std::int64_t clockOffset;
};

// The zone of this process, read at the first use.
inline TimeZone & localZone()
{
    static TimeZone zone;
    return zone;
}

// Reads the zone again, after a change of TZ. Stored moments keep their numbers and show other local times.
void reloadLocalZone();

inline std::int64_t toLocalSeconds(std::int64_t utc)
{
    return localZone().toLocal(utc);
}

// A local time that occurs twice is the earlier moment; one that is skipped moves forward by the gap.
inline std::int64_t fromLocalSeconds(std::int64_t local)
{
    return localZone().fromLocal(local);
}

// With daylight saving off: the moment at which a clock that stays on standard time shows `local`.
inline std::int64_t fromLocalStandardSeconds(std::int64_t local)
{
    return localZone().fromLocalStandard(local);
}

// The one offset east of UTC of all times of day: the one in force at local midnight of 1 January 1970, also
// where daylight saving was on.
inline std::int64_t clockOffset()
{
    return localZone().getClockOffset();
}

constexpr std::int64_t dayOfLocal(std::int64_t localSeconds)
{
    return floorDiv(localSeconds, secondsPerDay);
}

// A day of the calendar: month from 1 to 12, day from 1 to 31.
struct CivilDay
{
    int year;
    int month;
    int day;
};

CivilDay civilDay(std::int64_t dayNumber);

// Months and days out of their ranges carry into the next or previous ones, as far as they reach.
std::int64_t dayNumber(int year, int month, int day);

// From 1 for Sunday to 7 for Saturday.
constexpr int dayOfWeek(std::int64_t dayNumber)
{
    return static_cast<int>(floorMod(dayNumber + 4, 7)) + 1;
}

}  // namespace orvane
