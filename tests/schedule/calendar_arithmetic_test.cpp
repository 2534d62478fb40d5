#include "schedule/calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "model/project.h"
#include "tests/support/moments.h"
#include "tests/support/plain_calendar.h"
#include "tests/support/zone_scope.h"

using namespace orvane::test;

namespace
{

CProjectTimeOfDaySpan block(std::string const & start, std::string const & end)
{
    return CProjectTimeOfDaySpan(clock(start), clock(end));
}

CCalendarDayType dayOf(std::vector<CProjectTimeOfDaySpan> const & blocks,
                       CDayType::CDay kind = CDayType::NormalWorkingDay)
{
    CCalendarDayType dayType;
    dayType.setDayType(CDayType(kind));
    for (int each = 0; each < static_cast<int>(blocks.size()); ++each)
        dayType.setTimeBlock(each, blocks[static_cast<std::size_t>(each)]);
    return dayType;
}

// Monday to Friday like that, in place of 09:00 to 17:00.
CCalendar weekOf(CCalendarDayType workday)
{
    CCalendar calendar;
    workday.setID(calendar.getNormalDay().getID());
    calendar.editCalendarDayType(workday);
    return calendar;
}

CCalendarDayType const splitDay = dayOf({block("09:00", "12:00"), block("13:00", "17:00")});
CCalendarDayType const touchingDay = dayOf({block("09:00", "12:00"), block("12:00", "17:00")});

// ---- by hand --------------------------------------------------------------------------------------

// 5 January 2024 is a Friday.
TEST(CalendarArithmetic, DurationsOnTheStandardCalendar)
{
    constexpr bool plus = true, minus = false, asEnd = true, asStart = false;
    struct Case
    {
        char const * time;
        bool add;
        int minutes;
        bool asEndTime;
        char const * result;
    };
    Case const cases[] = {
        {"2024-01-05 09:00", plus, 480, asEnd, "2024-01-05 17:00"},
        {"2024-01-05 09:00", plus, 480, asStart, "2024-01-08 09:00"},
        {"2024-01-05 16:30", plus, 60, asEnd, "2024-01-08 09:30"},
        {"2024-01-08 09:00", minus, 30, asStart, "2024-01-05 16:30"},
        {"2024-01-08 09:00", minus, 0, asStart, "2024-01-08 09:00"},
        {"2024-01-05 17:00", minus, 0, asStart, "2024-01-05 17:00"},
        {"2024-01-08 09:00", plus, 0, asEnd, "2024-01-08 09:00"},
        // From outside the blocks of a day that would have held it, the duration is lost.
        {"2024-01-08 08:00", plus, 120, asEnd, "2024-01-05 17:00"},
        {"2024-01-08 08:00", plus, 120, asStart, "2024-01-08 09:00"},
        {"2024-01-08 08:00", plus, 481, asEnd, "2024-01-09 09:01"},
        {"2024-01-06 10:00", plus, 0, asEnd, "2024-01-06 00:00"},
        {"2024-01-06 10:00", plus, 60, asEnd, "2024-01-08 10:00"},
        {"2024-01-08 18:00", minus, 120, asEnd, "2024-01-05 17:00"},
        // A minute's exception is the other way round in subtraction.
        {"2024-01-05 17:00", plus, 0, asStart, "2024-01-08 09:00"},
        {"2024-01-08 09:00", minus, 0, asEnd, "2024-01-05 17:00"},
        {"2024-01-08 09:01", minus, 1, asEnd, "2024-01-05 17:00"},
        {"2024-01-05 16:59", plus, 1, asStart, "2024-01-08 09:00"},
        {"2024-01-05 16:58", plus, 2, asStart, "2024-01-08 09:00"},
        {"2024-01-08 10:00", plus, -60, asEnd, "2024-01-08 09:00"},
        {"2024-01-08 10:00", plus, -61, asEnd, "2024-01-08 08:59"},
        {"2024-01-01 09:00", plus, 522 * 5 * 480, asEnd, "2033-12-30 17:00"},
        {"2024-01-01 09:00", minus, 522 * 5 * 480, asStart, "2013-12-30 09:00"},
        {"2024-01-01 09:00", plus, 30'000'000, asEnd, "none"},
        {"2024-01-01 09:00", minus, 30'000'000, asEnd, "none"},
    };
    CCalendar const calendar;
    for (Case const & each : cases)
    {
        CProjectDuration const duration(each.minutes * 60L);
        CProjectTime const result = each.add
                                        ? calendar.addDurationToTime(at(each.time), duration, each.asEndTime)
                                        : calendar.subtractDurationFromTime(at(each.time), duration, each.asEndTime);
        EXPECT_EQ(shown(result), each.result) << each.time << (each.add ? " plus " : " minus ") << each.minutes
                                              << (each.asEndTime ? " as end" : " as start");
    }
}

TEST(CalendarArithmetic, SearchesAndSpansOnTheStandardCalendar)
{
    CCalendar const calendar;
    EXPECT_EQ(shown(calendar.getNextValidStartTime(at("2024-01-05 17:00"))), "2024-01-08 09:00");
    EXPECT_EQ(shown(calendar.getPrevValidEndTime(at("2024-01-08 09:00"))), "2024-01-05 17:00");
    EXPECT_EQ(shown(calendar.getNextValidEndTime(at("2024-01-08 08:00"))), "2024-01-08 09:01");
    EXPECT_EQ(shown(calendar.getPrevValidStartTime(at("2024-01-05 18:00"))), "2024-01-05 16:59");
    EXPECT_EQ(calendar.subtractTimeFromTime(at("2024-01-05 16:00"), at("2024-01-08 10:00")), CProjectDuration(2, 0));
    EXPECT_EQ(calendar.subtractTimeFromTime(at("2024-01-08 10:00"), at("2024-01-05 16:00")), CProjectDuration(2, 0));
    EXPECT_EQ(calendar.subtractTimeFromTime(at("2024-01-06 10:00"), at("2024-01-07 10:00")), CProjectDuration(0));
}

TEST(CalendarArithmetic, TimesThatAreNotValidAnswerNothing)
{
    CCalendar const calendar;
    CProjectTime const never;
    CProjectTime const time = at("2024-01-05 10:00");
    EXPECT_FALSE(calendar.addDurationToTime(never, CProjectDuration(1, 0), true).isValid());
    EXPECT_FALSE(calendar.subtractDurationFromTime(never, CProjectDuration(1, 0), true).isValid());
    EXPECT_FALSE(calendar.getNextValidStartTime(never).isValid());
    EXPECT_FALSE(calendar.isValidStartTime(never) || calendar.isValidEndTime(never));
    EXPECT_EQ(calendar.subtractTimeFromTime(never, time), CProjectDuration(0));
    EXPECT_EQ(shown(calendar.addDurationToTime(time, CProjectDuration(), true)), "2024-01-05 10:00");
}

TEST(CalendarArithmetic, WithinOneDay)
{
    EXPECT_EQ(splitDay.findTimeBlock(clock("12:30")), -1);
    EXPECT_EQ(splitDay.subtractTimeFromTime(clock("12:30"), clock("14:00")), CProjectDuration(0));
    EXPECT_EQ(splitDay.subtractTimeFromTime(clock("18:00"), clock("08:00")), CProjectDuration(7, 0));
    EXPECT_EQ(shown(splitDay.addDurationToTime(clock("11:00"), CProjectDuration(2, 0))), "14:00");
    EXPECT_EQ(shown(splitDay.subtractDurationFromTime(clock("14:00"), CProjectDuration(2, 0))), "11:00");
    EXPECT_EQ(shown(splitDay.addDurationToTime(clock("16:00"), CProjectDuration(1, 1))), "none");
    EXPECT_EQ(splitDay.getWorkingDuration(), CProjectDuration(7, 0));
    EXPECT_FALSE(touchingDay.isValidStartTime(clock("12:00")));
    EXPECT_TRUE(touchingDay.isValidEndTime(clock("12:00")));
    EXPECT_EQ(shown(weekOf(touchingDay).getNextValidStartTime(at("2024-01-05 12:00"))), "2024-01-05 12:00");

    EXPECT_EQ(shown(splitDay.getStartOfNextTimeBlockInRotation(clock("12:00"))), "13:00");
    EXPECT_EQ(shown(splitDay.getStartOfNextTimeBlockInRotation(clock("17:01"))), "09:00");
    EXPECT_EQ(shown(splitDay.getStartOfNextTimeBlockInRotation(clock("08:00"))), "08:00");
    EXPECT_EQ(shown(splitDay.getEndOfPreviousTimeBlockInRotation(clock("13:00"))), "12:00");
    EXPECT_EQ(shown(splitDay.getEndOfPreviousTimeBlockInRotation(clock("08:59"))), "17:00");
    EXPECT_EQ(shown(splitDay.getEndOfPreviousTimeBlockInRotation(clock("18:00"))), "18:00");

    CCalendarDayType const empty;
    EXPECT_FALSE(empty.getStartTime().isValid() || empty.getEndTime().isValid());
    EXPECT_EQ(empty.subtractTimeFromTime(clock("09:00"), clock("17:00")), CProjectDuration(0));
    EXPECT_EQ(empty.getWorkingDuration(), CProjectDuration(0));
}

// A day off keeps its own arithmetic when it holds blocks, but no calendar works on it.
TEST(CalendarArithmetic, BlocksOfADayOffDoNotCount)
{
    CCalendarDayType const off = dayOf({block("09:00", "17:00")}, CDayType::NonWorkingDay);
    EXPECT_EQ(shown(off.addDurationToTime(clock("09:00"), CProjectDuration(1, 0))), "10:00");
    EXPECT_FALSE(off.isValidStartTime(clock("10:00")));
    CCalendar calendar;
    CCalendarDayTypeArray dayTypes = calendar.getCalendarDayTypes();
    dayTypes[1].setTimeBlock(0, block("09:00", "17:00"));
    calendar.setCalendarDayTypes(dayTypes);
    EXPECT_EQ(calendar.subtractTimeFromTime(at("2024-01-05 16:00"), at("2024-01-07 12:00")), CProjectDuration(1, 0));
    EXPECT_EQ(shown(calendar.addDurationToTime(at("2024-01-06 10:00"), CProjectDuration(1, 0), true)),
              "2024-01-08 10:00");
}

// Nothing to find ends the search, in no more than some thousand steps even where each day must be asked.
TEST(CalendarArithmetic, CalendarsWithoutWorkingTimeAnswerNothing)
{
    CCalendarDayType const disorder = dayOf({block("10:00", "09:00")});
    CCalendarDayType const instant = dayOf({block("00:00", "00:00")});
    for (CCalendarDayType const & day : {dayOf({}), disorder, instant})
    {
        CCalendar const calendar = weekOf(day);
        CProjectTime const time = at("2024-01-05 10:00");
        EXPECT_EQ(shown(calendar.addDurationToTime(time, CProjectDuration(1, 0), true)), "none");
        EXPECT_EQ(shown(calendar.subtractDurationFromTime(time, CProjectDuration(1, 0), false)), "none");
        EXPECT_EQ(calendar.subtractTimeFromTime(time, at("2034-01-05 10:00")), CProjectDuration(0));
    }
    EXPECT_EQ(shown(weekOf(dayOf({})).getPrevValidEndTime(at("2024-01-05 10:00"))), "none");
}

// ---- against the plain form -------------------------------------------------------------------------

// Random calendars, odd ones among them, and random questions to them.
class Chance
{
public:
    explicit Chance(unsigned seed) : engine(seed) {}

    int below(int bound) { return static_cast<int>(engine() % static_cast<unsigned>(bound)); }
    bool oneIn(int count) { return below(count) == 0; }

    std::vector<CProjectTimeOfDaySpan> blocks()
    {
        std::vector<int> bounds;
        for (int count = 2 * below(oneIn(4) ? 5 : 3); count > 0; --count)
            bounds.push_back(oneIn(4) ? below(1440) : below(48) * 30);
        if (!oneIn(5)) std::sort(bounds.begin(), bounds.end());
        if (bounds.size() > 2 && oneIn(3)) bounds[2] = bounds[1];
        std::vector<CProjectTimeOfDaySpan> spans;
        for (std::size_t each = 0; each < bounds.size(); each += 2)
            spans.emplace_back(CProjectTimeOfDay(0, bounds[each]), CProjectTimeOfDay(0, bounds[each + 1]));
        if (oneIn(12)) spans.insert(spans.begin() + below(static_cast<int>(spans.size()) + 1), CProjectTimeOfDaySpan());
        if (oneIn(12)) spans.emplace_back(clock("22:00"), CProjectTimeOfDay(24, 0));
        return spans;
    }

    // With exceptions in the months around the day, and a week that seldom has no working time.
    void fill(CCalendar & calendar, std::int64_t day)
    {
        calendar.clear(false);
        CCalendarDayTypeArray dayTypes;
        for (int count = 1 + below(4); count > 0; --count)
        {
            auto const kind = static_cast<CDayType::CDay>(1 + below(3));
            dayTypes.Add(oneIn(3) ? dayOf({block("08:00", "12:00"), block("12:30", "16:30")}) : dayOf(blocks(), kind));
        }
        auto const anyID = [&]
        { return oneIn(15) ? CCalendarDayTypeID() : dayTypes.GetAt(below(dayTypes.GetSize())).getID(); };
        CCalendarWeek week = calendar.getCalendarWeek();
        for (int each = 1; each <= 7; ++each) week.setDay(each, anyID());
        std::vector<bool> taken(241);
        CCalendarExceptionArray exceptions;
        for (int count = oneIn(4) ? 0 : below(30); count > 0; --count)
        {
            int const offset = below(241);
            if (taken[static_cast<std::size_t>(offset)]) continue;
            taken[static_cast<std::size_t>(offset)] = true;
            CProjectDate const date = CProjectDate::fromDayNumber(day - 120 + offset);
            if (date.getDayNumber() == day - 120 + offset) exceptions.Add(CCalendarException(date, anyID()));
        }
        calendar.setCalendarDayTypes(dayTypes);
        calendar.setCalendarWeek(week);
        calendar.setCalendarDayExceptions(exceptions);
        calendar.setNormalDayInUse(!oneIn(4));
    }

    CProjectTime timeNear(std::int64_t day)
    {
        if (oneIn(200)) return {};
        std::int64_t const minute = oneIn(2) ? below(1440) : below(48) * 30 + below(3) - 1;
        std::int64_t const far = oneIn(20) ? below(8000) - 4000 : below(300) - 150;
        return CProjectTime::fromLocalMinutes((day + far) * 1440 + minute);
    }

    CProjectDuration duration()
    {
        switch (below(12))
        {
            case 0: return CProjectDuration(below(3) * 60L);
            case 1: return CProjectDuration(-below(2000) * 60L);
            case 2: return CProjectDuration(below(oneIn(10) ? 1'000'000 : 100'000) * 60L);
            case 3: return oneIn(100) ? CProjectDuration(INT32_MAX) : CProjectDuration();
            case 4:
            case 5: return CProjectDuration(below(40) * 480 * 60L);
            default: return CProjectDuration(below(oneIn(3) ? 20'000 : 1500) * 60L);
        }
    }

private:
    std::mt19937 engine;
};

std::string text(CProjectTime const & time)
{
    return shown(time);
}

std::string text(CProjectDuration const & duration)
{
    return std::to_string(duration.GetTotalMinutes()) + " minutes";
}

bool isSame(CProjectTime const & a, CProjectTime const & b)
{
    return a.isValid() == b.isValid() && (!a.isValid() || a == b);
}

bool isSame(CProjectDuration const & a, CProjectDuration const & b)
{
    return a == b;
}

// What one calendar is asked at once: texts are made only of answers that differ.
struct Question
{
    CProjectTime time;
    CProjectTime other;
    CProjectDuration duration;

    void ask(CCalendar const & calendar, PlainCalendar const & plain) const
    {
        for (bool asEnd : {false, true})
        {
            char const * const purpose = asEnd ? "as an end" : "as a start";
            expect(calendar.addDurationToTime(time, duration, asEnd), plain.add(time, duration, asEnd), "later",
                   purpose);
            expect(calendar.subtractDurationFromTime(time, duration, asEnd), plain.subtract(time, duration, asEnd),
                   "earlier", purpose);
        }
        expect(calendar.subtractTimeFromTime(time, other), plain.between(time, other), "from time to time");
        expect(calendar.getNextValidStartTime(time), plain.nextStart(time), "next", "start");
        expect(calendar.getNextValidEndTime(time), plain.nextEnd(time), "next", "end");
        expect(calendar.getPrevValidStartTime(time), plain.previousStart(time), "previous", "start");
        expect(calendar.getPrevValidEndTime(time), plain.previousEnd(time), "previous", "end");
        EXPECT_EQ(calendar.isValidStartTime(time), plain.isValidStart(time)) << shown(time);
        EXPECT_EQ(calendar.isValidEndTime(time), plain.isValidEnd(time)) << shown(time);
    }

private:
    template <class Answer>
    void expect(Answer const & answer, Answer const & wanted, char const * what, char const * purpose = "") const
    {
        if (isSame(answer, wanted)) return;
        ADD_FAILURE() << what << ' ' << purpose << ": " << text(answer) << ", not " << text(wanted) << "; time "
                      << shown(time) << ", duration " << text(duration) << ", other time " << shown(other);
    }
};

// The ends of what times hold, and changes of the clock at night, at midnight, and an hour or a minute from it.
struct Window
{
    char const * zone;
    char const * day;
};
Window const windows[] = {
    {"UTC", "2024-03-01"},
    {"UTC", "1970-01-01"},
    {"UTC", "1902-02-01"},
    {"UTC", "2037-12-01"},
    {"Europe/London", "2024-03-31"},
    {"America/Sao_Paulo", "2017-10-15"},
    {"America/Sao_Paulo", "2018-02-18"},
    {"America/St_Johns", "2006-10-29"},
    {"America/St_Johns", "1935-05-05"},
    {"Asia/Beirut", "2022-03-27"},
    {"America/Los_Angeles", "2038-01-01"},
    {"Pacific/Auckland", "1902-01-15"},
};

TEST(AgainstThePlainForm, EveryAnswerOfACalendarIsTheSame)
{
    auto const seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    std::cout << "seed " << seed << '\n';
    Chance chance(seed);
    for (Window const & window : windows)
    {
        ZoneScope const zone(window.zone);
        std::int64_t const day = on(window.day).getDayNumber();
        CProject project(nullptr, false);
        // Only rules replace a project's calendar; here it is written in place.
        CCalendar & master = const_cast<CCalendar &>(project.getProjectCalendar());
        for (int round = 0; round < 24; ++round)
        {
            CCalendar own;
            own.setProject(&project);
            chance.fill(own, day);
            chance.fill(master, day);
            CCalendar const & calendar = chance.oneIn(5) ? master : own;
            PlainCalendar const plain(calendar, master);
            // Where weeks gain nothing, the plain form walks to the end of time.
            for (int left = plain.minutesOfWeek() > 0 ? 50 : 2; left > 0; --left)
                Question{chance.timeNear(day), chance.timeNear(day), chance.duration()}.ask(calendar, plain);
            ASSERT_FALSE(HasFailure()) << "calendar " << round << " in " << window.zone << " around " << window.day
                                       << ", seed " << seed;
        }
    }
}

TEST(AgainstThePlainForm, EveryAnswerOfADayTypeIsTheSame)
{
    auto const seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    for (int round = 0; round < 10'000 && !HasFailure(); ++round)
    {
        CCalendarDayType const day = dayOf(chance.blocks());
        PlainDay const plain(day);
        CProjectTimeOfDay const a = chance.timeNear(0).getTimeOfDay();
        CProjectTimeOfDay const b = chance.timeNear(0).getTimeOfDay();
        long const minutes = chance.below(1500) - 100;
        CProjectDuration const duration(minutes * 60);
        EXPECT_EQ(day.getWorkingDuration().GetTotalMinutes(), plain.workingMinutes());
        EXPECT_EQ(day.findTimeBlock(a), plain.find(a));
        EXPECT_EQ(day.isValidStartTime(a), plain.isValidStart(a));
        EXPECT_EQ(day.isValidEndTime(a), plain.isValidEnd(a));
        EXPECT_EQ(shown(day.getNextValidStartTime(a)), shown(plain.nextStart(a)));
        EXPECT_EQ(shown(day.getNextValidEndTime(a)), shown(plain.nextEnd(a)));
        EXPECT_EQ(shown(day.getPrevValidStartTime(a)), shown(plain.previousStart(a)));
        EXPECT_EQ(shown(day.getPrevValidEndTime(a)), shown(plain.previousEnd(a)));
        EXPECT_EQ(shown(day.addDurationToTime(a, duration)), shown(plain.add(a, minutes)));
        EXPECT_EQ(shown(day.subtractDurationFromTime(a, duration)), shown(plain.subtract(a, minutes)));
        EXPECT_EQ(day.subtractTimeFromTime(a, b).GetTotalMinutes(), plain.between(a, b));
    }
}

}  // namespace
