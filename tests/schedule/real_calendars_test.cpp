#include "schedule/calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <vector>

#include "tests/support/moments.h"
#include "tests/support/real_cases.h"

// Schedules that others made, with the dates that their programs stored: the calendar must find the same.
namespace
{

using namespace orvane::test;
using Json = nlohmann::json;

// A calendar with a day type for each list of blocks that it uses; false for one that cannot be held.
bool read(Json const & record, CCalendar & calendar)
{
    std::map<Json, CCalendarDayTypeID> known;
    CCalendarDayTypeArray dayTypes;
    CCalendarExceptionArray exceptions;
    CCalendarWeek week;
    bool isHeld = true;
    auto const dayType = [&](Json const & blocks)
    {
        // Not at midnight and not beyond eight blocks: no day type holds those.
        isHeld = isHeld && blocks.size() <= 8 && (blocks.empty() || blocks.back()[1] < 24 * 60);
        auto const [place, isNew] = known.try_emplace(blocks);
        if (!isNew) return place->second;
        CCalendarDayType day(place->second);
        int count = 0;
        for (Json const & block : blocks)
            day.setTimeBlock(count++,
                             {CProjectTimeOfDay(0, block[0].get<int>()), CProjectTimeOfDay(0, block[1].get<int>())});
        dayTypes.Add(day);
        return place->second;
    };
    for (int day = 0; day < 7; ++day) week.setDay(day + 1, dayType(record["week"][static_cast<std::size_t>(day)]));
    for (auto const & [date, blocks] : record["exceptions"].items())
        exceptions.Add(CCalendarException(on(date), dayType(blocks)));
    calendar.setCalendarDayTypes(dayTypes);
    calendar.setCalendarWeek(week);
    calendar.setCalendarDayExceptions(exceptions);
    return isHeld;
}

// How many records of one kind agreed, and the answers of those that did not.
struct Tally
{
    int agreed = 0;
    int passedOver = 0;
    std::vector<std::string> others;

    void count(Json const & record, std::string const & answer, std::string const & wanted)
    {
        if (answer == wanted) ++agreed;
        else others.push_back(answer + " for " + record.dump());
    }
};

CProjectTime timeIn(Json const & record, char const * field)
{
    return at(record[field].get<std::string>());
}

CProjectDuration lengthOf(Json const & record)
{
    return CProjectDuration(record["minutes"].get<long>() * 60);
}

// The finish of a piece of work. What starts outside all blocks starts with the next one.
void judgeCase(CCalendar const & calendar, Json const & record, Tally & tally)
{
    CProjectTime start = timeIn(record, "start");
    if (!record["start_in_work"].get<bool>() && lengthOf(record) > CProjectDuration(0))
        start = calendar.getNextValidStartTime(start);
    tally.count(record, shown(calendar.addDurationToTime(start, lengthOf(record), true)),
                shown(timeIn(record, "finish")));
}

bool isAtWork(CCalendar const & calendar, CProjectTime const & time)
{
    return calendar.isValidStartTime(time) || calendar.isValidEndTime(time);
}

void judgeSpan(CCalendar const & calendar, Json const & record, Tally & tally)
{
    CProjectTime const from = timeIn(record, "from");
    CProjectTime const to = timeIn(record, "to");
    if (!isAtWork(calendar, from) || !isAtWork(calendar, to)) ++tally.passedOver;
    else
        tally.count(record, std::to_string(calendar.subtractTimeFromTime(from, to).GetTotalMinutes()),
                    record["minutes"].dump());
}

// The start after predecessors that all finish first, without a lag.
void judgeLink(CCalendar const & calendar, Json const & record, Tally & tally)
{
    CProjectTime latest = timeIn(record, "project_start");
    for (Json const & link : record["links"])
    {
        if (link["type"] != "FS" || link["lag"] != 0) return void(++tally.passedOver);
        latest = std::max(latest, timeIn(link, "pred_finish"));
    }
    bool const isMilestone = lengthOf(record) == CProjectDuration(0);
    CProjectTime const start =
        isMilestone && isAtWork(calendar, latest) ? latest : calendar.getNextValidStartTime(latest);
    tally.count(record, shown(start), shown(timeIn(record, "start")));
}

class RealCalendars : public testing::TestWithParam<char const *>
{
};

TEST_P(RealCalendars, DatesAreThoseThatWereStored)
{
    std::map<std::string, CCalendar> calendars;
    std::map<std::string, Tally> tallies;
    std::map<std::string, void (*)(CCalendar const &, Json const &, Tally &)> const judges = {
        {"case", judgeCase}, {"span", judgeSpan}, {"link", judgeLink}};
    bool const isThere = forRealCases(GetParam(), [&](Json const & record) {
        std::string const kind = record["kind"];
        CCalendar calendar;
        if (kind != "calendar")
        {
            auto const known = calendars.find(record["calendar"]);
            if (known != calendars.end()) judges.at(kind)(known->second, record, tallies[kind]);
            else ++tallies[kind].passedOver;
        }
        else if (read(record, calendar)) calendars.emplace(record["id"], calendar);
    });
    if (!isThere) GTEST_SKIP() << "no records in " << realCasesFolder();
    for (auto const & [kind, tally] : tallies)
    {
        std::cout << GetParam() << ' ' << kind << ": " << tally.agreed << " agree, " << tally.others.size()
                  << " differ, " << tally.passedOver << " passed over\n";
        EXPECT_GT(tally.agreed, 0);
        for (std::string const & other : tally.others) ADD_FAILURE() << other;
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, RealCalendars, testing::Values("mspdi", "xer"));

}  // namespace
