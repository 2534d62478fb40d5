#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "schedule/working_time_day.h"

namespace orvane
{

// The working time of a calendar as tables: built once, asked often. It counts whole minutes of the local
// clock, from midnight on 1 January 1970; only the local times that exist, within the years that stored
// times reach, come out of it.
//
// The work of all days before a day is known in closed form: whole weeks by multiplication, exceptions by
// running sums. So a duration of ten years costs no more than one of ten days: one search finds the day
// in which its last minute lies. Where blocks in disorder make a day count negative, sums no longer ascend
// and the days are walked one by one instead.
class CWorkingTime
{
public:
    // A date whose day differs from the week's; `kind` is a position among the kinds of day.
    struct Exception
    {
        std::int64_t day;
        std::size_t kind;
    };

    // `week` names the kind of each day from Sunday on; exceptions ascend and no two share a day.
    CWorkingTime(std::vector<CWorkingDay> kinds, std::array<std::size_t, 7> const & week,
                 std::vector<Exception> const & exceptions);

    // The time so much work away from a time, good for a start or an end. Nothing if that lies nowhere
    // within the years that times reach; so with nearestValid.
    std::optional<std::int64_t> moved(std::int64_t time, std::int64_t duration, Direction direction,
                                      Edge purpose) const;
    // The work from one time to a later one, at least zero.
    std::int64_t between(std::int64_t from, std::int64_t to) const;
    bool isValid(std::int64_t time, Edge edge) const;
    // The nearest valid start or end in a direction, the time itself included.
    std::optional<std::int64_t> nearestValid(std::int64_t time, Edge edge, Direction direction) const;

private:
    // An exception's day, and all work up to its end.
    struct SpecialDay
    {
        std::int64_t day;
        std::int64_t workThrough;
        std::size_t kind;
    };
    struct Reached
    {
        std::int64_t day;
        std::int64_t rest;
    };

    CWorkingDay const & kindOf(std::int64_t day) const;
    std::size_t countSpecialBefore(std::int64_t day) const;
    // The work of all days before a day, counted from some day in the past.
    std::int64_t workBefore(std::int64_t day) const;
    std::int64_t weekWorkBefore(std::int64_t day) const;
    std::int64_t specialWorkBefore(std::size_t count) const;

    // The day on which so much work is done, going from the beginning of a day in a direction, and how
    // much of it falls on that day.
    std::optional<Reached> reach(std::int64_t day, std::int64_t work, Direction direction) const;
    std::optional<Reached> walk(std::int64_t day, std::int64_t work, Direction direction) const;
    // The first day with at least so much work up to its end.
    std::int64_t dayReaching(std::int64_t work) const;
    std::int64_t nextDay(std::int64_t day, Direction direction) const;
    std::optional<std::int64_t> corrected(std::int64_t time, Edge purpose) const;

    std::vector<CWorkingDay> kinds;
    std::array<std::size_t, 7> week;
    std::vector<SpecialDay> special;
    // The work of a week before each of its days, and in all.
    std::array<std::int64_t, 8> workInWeek{};
    bool worksInWeek = false;
    bool ascends = true;
};

}  // namespace orvane
