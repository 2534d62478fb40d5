#include "schedule/calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <random>
#include <vector>

#include "model/project.h"
#include "tests/support/moments.h"
#include "tests/support/plain_calendar.h"
#include "tests/support/printers.h"
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

// ---- by hand --------------------------------------------------------------------------------------

// What the plain form might have misread as the calendar does. 5 January 2024 is a Friday.
TEST(CalendarArithmetic, DurationsOnTheStandardCalendar)
{
    constexpr bool asEnd = true, asStart = false;
    // Minutes are subtracted when negative.
    std::tuple<char const *, int, bool, char const *> const cases[] = {
        {"2024-01-05 09:00", 480, asEnd, "2024-01-05 17:00"}, {"2024-01-05 09:00", 480, asStart, "2024-01-08 09:00"},
        {"2024-01-08 09:00", 0, asEnd, "2024-01-08 09:00"}, {"2024-01-08 09:00", -30, asStart, "2024-01-05 16:30"},
        // From outside the blocks of a day that would have held it, the duration is lost.
        {"2024-01-08 08:00", 120, asEnd, "2024-01-05 17:00"}, {"2024-01-08 08:00", 120, asStart, "2024-01-08 09:00"},
        {"2024-01-08 08:00", 481, asEnd, "2024-01-09 09:01"}, {"2024-01-06 10:00", 0, asEnd, "2024-01-06 00:00"},
        {"2024-01-08 18:00", -120, asEnd, "2024-01-05 17:00"}, {"2024-01-06 10:00", 60, asEnd, "2024-01-08 10:00"},
        // A minute's exception is the other way round in subtraction.
        {"2024-01-08 09:01", -1, asEnd, "2024-01-05 17:00"}, {"2024-01-05 16:59", 1, asStart, "2024-01-08 09:00"},
        {"2024-01-01 09:00", 522 * 5 * 480, asEnd, "2033-12-30 17:00"},
        {"2024-01-01 09:00", -522 * 5 * 480, asStart, "2013-12-30 09:00"},
        {"2024-01-01 09:00", 30'000'000, asEnd, "none"}, {"2024-01-01 09:00", -30'000'000, asEnd, "none"}};
    CCalendar const calendar;
    for (auto const & [time, minutes, asEndTime, result] : cases)
    {
        CProjectDuration const duration(std::abs(minutes) * 60L);
        EXPECT_EQ(shown(minutes < 0 ? calendar.subtractDurationFromTime(at(time), duration, asEndTime)
                                    : calendar.addDurationToTime(at(time), duration, asEndTime)),
                  result)
            << time << ' ' << minutes << (asEndTime ? " as end" : " as start");
    }
    EXPECT_EQ(shown(calendar.addDurationToTime(at("2024-01-08 10:00"), CProjectDuration(-61 * 60L), asEnd)),
              "2024-01-08 08:59");
    EXPECT_EQ(shown(calendar.subtractDurationFromTime(at("2024-01-08 09:00"), CProjectDuration(0), asEnd)),
              "2024-01-05 17:00");
    EXPECT_EQ(shown(calendar.addDurationToTime(at("2024-01-05 10:00"), CProjectDuration(), asEnd)), "2024-01-05 10:00");
    EXPECT_EQ(calendar.subtractTimeFromTime(at("2024-01-08 10:00"), at("2024-01-05 16:00")), CProjectDuration(2, 0));
}

TEST(CalendarArithmetic, WithinOneDay)
{

    CCalendarDayType const touchingDay = dayOf({block("09:00", "12:00"), block("12:00", "17:00")});
    EXPECT_FALSE(touchingDay.isValidStartTime(clock("12:00")));
    EXPECT_TRUE(touchingDay.isValidEndTime(clock("12:00")));
    EXPECT_FALSE(CCalendarDayType().getStartTime().isValid() || CCalendarDayType().getEndTime().isValid());
    // A day off keeps its own arithmetic when it holds blocks.
    CCalendarDayType const off = dayOf({block("09:00", "17:00")}, CDayType::NonWorkingDay);
    EXPECT_EQ(shown(off.addDurationToTime(clock("09:00"), CProjectDuration(1, 0))), "10:00");
    EXPECT_FALSE(off.isValidStartTime(clock("10:00")));
}

// Nothing to find ends the search, in no more than some thousand steps even where each day must be asked.
TEST(CalendarArithmetic, CalendarsWithoutWorkingTimeAnswerNothing)
{
    CProjectTime const time = at("2024-01-05 10:00");
    for (CCalendarDayType day : {dayOf({}), dayOf({block("10:00", "09:00")}), dayOf({block("00:00", "00:00")})})
    {
        CCalendar calendar;
        day.setID(calendar.getNormalDay().getID());
        calendar.editCalendarDayType(day);
        EXPECT_EQ(shown(calendar.addDurationToTime(time, CProjectDuration(1, 0), true)), "none");
        EXPECT_EQ(shown(calendar.subtractDurationFromTime(time, CProjectDuration(1, 0), false)), "none");
        EXPECT_EQ(calendar.subtractTimeFromTime(time, at("2034-01-05 10:00")), CProjectDuration(0));
    }
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
        int const kind = below(12);
        if (kind == 0) return CProjectDuration(below(3) * 60L);
        if (kind == 1) return CProjectDuration(-below(2000) * 60L);
        if (kind == 2) return CProjectDuration(below(oneIn(10) ? 1'000'000 : 100'000) * 60L);
        if (kind == 3) return oneIn(100) ? CProjectDuration(INT32_MAX) : CProjectDuration();
        if (kind <= 5) return CProjectDuration(below(40) * 480 * 60L);
        return CProjectDuration(below(oneIn(3) ? 20'000 : 1500) * 60L);
    }

private:
    std::mt19937 engine;
};

// What one calendar is asked at once.
struct Question
{
    CProjectTime time;
    CProjectTime other;
    CProjectDuration duration;

    void ask(CCalendar const & calendar, PlainCalendar const & plain) const
    {
        for (bool asEnd : {false, true})
        {
            EXPECT_EQ(calendar.addDurationToTime(time, duration, asEnd), plain.add(time, duration, asEnd)) << *this;
            EXPECT_EQ(calendar.subtractDurationFromTime(time, duration, asEnd), plain.subtract(time, duration, asEnd))
                << *this;
        }
        EXPECT_EQ(calendar.subtractTimeFromTime(time, other), plain.between(time, other)) << *this;
        EXPECT_EQ(calendar.getNextValidStartTime(time), plain.nextStart(time)) << *this;
        EXPECT_EQ(calendar.getNextValidEndTime(time), plain.nextEnd(time)) << *this;
        EXPECT_EQ(calendar.getPrevValidStartTime(time), plain.previousStart(time)) << *this;
        EXPECT_EQ(calendar.getPrevValidEndTime(time), plain.previousEnd(time)) << *this;
        EXPECT_EQ(calendar.isValidStartTime(time), plain.isValidStart(time)) << *this;
        EXPECT_EQ(calendar.isValidEndTime(time), plain.isValidEnd(time)) << *this;
    }

    friend std::ostream & operator<<(std::ostream & out, Question const & question)
    {
        return out << "time " << shown(question.time) << ", other time " << shown(question.other) << ", duration "
                   << question.duration.GetTotalMinutes();
    }
};

// The ends of what times hold, and changes of the clock at night, at midnight, and an hour or a minute from it.
std::pair<char const *, char const *> const windows[] = {
    {"UTC", "2024-03-01"},               {"UTC", "1970-01-01"},
    {"UTC", "1902-02-01"},               {"UTC", "2037-12-01"},
    {"Europe/London", "2024-03-31"},     {"America/Sao_Paulo", "2017-10-15"},
    {"America/Sao_Paulo", "2018-02-18"}, {"America/St_Johns", "2006-10-29"},
    {"America/St_Johns", "1935-05-05"},  {"Asia/Beirut", "2022-03-27"},
    {"America/Los_Angeles", "2038-01-01"}, {"Pacific/Auckland", "1902-01-15"}};

TEST(AgainstThePlainForm, EveryAnswerOfACalendarIsTheSame)
{
    auto const seed = static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    for (auto const & [zoneName, middle] : windows)
    {
        ZoneScope const zone(zoneName);
        std::int64_t const day = on(middle).getDayNumber();
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
            ASSERT_FALSE(HasFailure()) << "calendar " << round << " in " << zoneName << " around " << middle;
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
