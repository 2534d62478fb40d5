#include "platform/local_time.h"

#include <chrono>
#include <ctime>
#include <utility>

namespace orvane
{

OffsetTable::OffsetTable(std::vector<Step> given) : steps(std::move(given))
{
    steps.push_back({INT64_MAX, 0});
    std::uint32_t step = 0;
    for (std::int64_t start = first; start <= last; start += std::int64_t{1} << bucketBits)
    {
        while (steps[step + 1].from <= start) ++step;
        stepOfBucket.push_back(step);
    }
}

// From when on the zone has an offset, in seconds east of UTC.
struct TimeZone::Change
{
    std::int64_t from;
    std::int64_t offset;
    bool daylightSaving;

    static std::vector<Change> read();

private:
    static Change at(std::int64_t utc);
    static Change firstDifferent(Change const & now, std::int64_t later);

    bool sameAs(Change const & other) const { return offset == other.offset && daylightSaving == other.daylightSaving; }
};

// The offset is taken from the fields, not from tm_gmtoff, which leaves out the leap seconds that some zones count.
TimeZone::Change TimeZone::Change::at(std::int64_t utc)
{
    std::time_t const moment = utc;
    std::tm fields{};
    ::localtime_r(&moment, &fields);
    std::int64_t const day = dayNumber(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
    std::int64_t const local = ((day * 24 + fields.tm_hour) * 60 + fields.tm_min) * 60 + fields.tm_sec;
    return {utc, local - utc, fields.tm_isdst > 0};
}

// By bisection, where `later` is known to differ from now.
TimeZone::Change TimeZone::Change::firstDifferent(Change const & now, std::int64_t later)
{
    std::int64_t same = now.from;
    while (later - same > 1)
    {
        std::int64_t const middle = same + (later - same) / 2;
        (now.sameAs(at(middle)) ? same : later) = middle;
    }
    return at(later);
}

// Day by day: no zone comes back to the same offset sooner.
std::vector<TimeZone::Change> TimeZone::Change::read()
{
    ::tzset();
    std::vector<Change> changes{at(OffsetTable::first)};
    for (std::int64_t day = OffsetTable::first; day < OffsetTable::last; day += secondsPerDay)
    {
        Change const next = at(std::min(day + secondsPerDay, OffsetTable::last));
        Change now = changes.back();
        now.from = day;
        while (!now.sameAs(next)) changes.push_back(now = firstDifferent(now, next.from));
    }
    return changes;
}

namespace
{

// Of a moment that a change makes ambiguous or skips, the local time belongs to the offset before.
template <class Changes>
std::vector<OffsetTable::Step> stepsByLocal(Changes const & changes)
{
    std::vector<OffsetTable::Step> steps;
    std::int64_t before = changes.front().offset;
    for (auto const & change : changes)
    {
        steps.push_back({change.from + std::max(before, change.offset), change.offset});
        before = change.offset;
    }
    return steps;
}

template <class Changes>
std::vector<OffsetTable::Step> stepsByUtc(Changes const & changes)
{
    std::vector<OffsetTable::Step> steps;
    for (auto const & change : changes) steps.push_back({change.from, change.offset});
    return steps;
}

// While daylight saving is on, the standard offset is the last one before it, or the first of all.
template <class Changes>
std::vector<OffsetTable::Step> standardSteps(Changes const & changes)
{
    auto const isStandard = [](auto const & change) { return !change.daylightSaving; };
    auto const any = std::find_if(changes.begin(), changes.end(), isStandard);
    std::int64_t offset = any != changes.end() ? any->offset : changes.front().offset;
    std::vector<OffsetTable::Step> steps;
    for (auto const & change : changes)
    {
        if (isStandard(change)) offset = change.offset;
        steps.push_back({change.from, offset});
    }
    return steps;
}

}  // namespace

TimeZone::TimeZone() : TimeZone(Change::read()) {}

TimeZone::TimeZone(std::vector<Change> const & changes)
    : byUtc(stepsByUtc(changes)),
      byLocal(stepsByLocal(changes)),
      standard(standardSteps(changes)),
      clockOffset(-fromLocal(0))
{
}

void reloadLocalZone()
{
    localZone() = TimeZone();
}

namespace
{

// The Gregorian calendar repeats itself after these.
constexpr std::int64_t yearsPerEra = 400;
constexpr std::int64_t daysPerEra = 146097;

}  // namespace

CivilDay civilDay(std::int64_t dayNumber)
{
    std::chrono::sys_days const withinEra{std::chrono::days{floorMod(dayNumber, daysPerEra)}};
    std::chrono::year_month_day const date{withinEra};
    return {static_cast<int>(floorDiv(dayNumber, daysPerEra) * yearsPerEra + int{date.year()}),
            static_cast<int>(unsigned{date.month()}), static_cast<int>(unsigned{date.day()})};
}

std::int64_t dayNumber(int year, int month, int day)
{
    std::int64_t const months = std::int64_t{year} * 12 + month - 1;
    std::int64_t const era = floorDiv(months, yearsPerEra * 12);
    auto const withinEra = static_cast<int>(floorMod(months, yearsPerEra * 12));
    std::chrono::sys_days const firstOfMonth{std::chrono::year{withinEra / 12} /
                                             std::chrono::month{static_cast<unsigned>(withinEra % 12 + 1)} / 1};
    return era * daysPerEra + firstOfMonth.time_since_epoch().count() + day - 1;
}

}  // namespace orvane
