#pragma once

#include <array>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "app/exchange/plan.h"
#include "schedule/calendar.h"

namespace orvane::app
{

// The time of the model at that minute; beyond what times can hold, the last day that they do or the first.
CProjectTime timeAt(Minute minute);
bool isBeyondTimes(Minute minute);

// The days of a calendar with those of its bases in them.
struct PlanDays
{
    std::array<PlanDay, 7> week;
    std::map<std::int64_t, PlanDay> exceptions;
    std::map<std::int64_t, std::string> names;

    PlanDay const & on(std::int64_t day) const;
    bool hasWork() const;
    friend bool operator==(PlanDays const & a, PlanDays const & b)
    {
        return a.week == b.week && a.exceptions == b.exceptions;
    }
};

// The calendars of a plan by their numbers.
class PlanCalendars
{
public:
    explicit PlanCalendars(std::vector<PlanCalendar> const & calendars);

    // Null for an unknown number.
    PlanCalendar const * find(int uid) const;
    // The base at the end of the chain; null when there is none.
    PlanCalendar const * baseOf(PlanCalendar const & calendar) const;
    // As far as the model can hold them: blocks in order, at most eight a day, that end before midnight. What had to be
    // left is told as losses.
    PlanDays daysOf(PlanCalendar const & calendar, std::vector<PlanLoss> & losses) const;

private:
    std::unordered_map<int, PlanCalendar const *> byUID;
};

// The calendar with these days, under the identifiers that it has, and in use.
CCalendar calendarWithDays(CCalendar const & calendar, PlanDays const & days);
// The days of a calendar of the model; the week's, and exceptions of its own.
PlanDays daysOfCalendar(CCalendar const & calendar);

}  // namespace orvane::app
