#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "values/date_time.h"

namespace orvane::pictures
{

// Even steps of the local clock, over which a chart tells its figures. All moments are whole minutes of the local
// clock, as CProjectTime::getLocalMinutes counts them.
struct TimeSteps
{
    static constexpr std::int64_t hour = 60, day = 24 * hour, week = 7 * day;

    std::int64_t first = 0;
    std::int64_t length = day;
    std::size_t count = 0;

    // Where the step of that number begins; that of `count` is where the last one ends.
    std::int64_t point(std::size_t number) const { return first + static_cast<std::int64_t>(number) * length; }
    std::int64_t last() const { return point(count); }
    // The step in which a moment lies that is neither before the first nor at or after the last.
    std::size_t stepOf(std::int64_t minute) const { return static_cast<std::size_t>((minute - first) / length); }

    // The shortest steps, not shorter than `least`, that are not too many to be told apart: hours, days, weeks from
    // Monday on, four weeks or a year of weeks. They begin on whole ones and cover at least one.
    static TimeSteps covering(std::int64_t from, std::int64_t to, std::int64_t least)
    {
        struct Length
        {
            std::int64_t minutes;
            std::int64_t most;
        };
        constexpr Length lengths[] = {{hour, 240}, {day, 1200}, {week, 1200}, {4 * week, 1200}, {52 * week, 1200}};
        constexpr std::int64_t monday = 4 * day;
        to = std::max(to, from + 1);
        auto const fits = [&](Length const & each)
        { return each.minutes >= least && (to - from) / each.minutes < each.most; };
        Length const * const found = std::find_if(std::begin(lengths), std::end(lengths) - 1, fits);
        std::int64_t const offset = found->minutes >= week ? monday : 0;
        TimeSteps steps{floorDiv(from - offset, found->minutes) * found->minutes + offset, found->minutes, 0};
        steps.count = static_cast<std::size_t>((to - steps.first - 1) / steps.length + 1);
        return steps;
    }
};

// The time that a chart covers: as asked, or, where that is not valid, as it is found.
struct TimeRange
{
    CProjectTime from = {};
    CProjectTime to = {};
};

}  // namespace orvane::pictures
