#include "values/date_time.h"

#include "platform/string.h"
#include "tests/support/zone_scope.h"

#include <gtest/gtest.h>

#include <climits>

static_assert(sizeof(CProjectDate) == 16 && sizeof(CProjectTime) == 16 && sizeof(CProjectTimeOfDay) == 16);
static_assert(sizeof(CProjectDuration) == 16);

namespace
{

CProjectTimeOfDaySpan span(int startHour, int endHour)
{
    return {CProjectTimeOfDay(startHour, 0), CProjectTimeOfDay(endHour, 0)};
}

class DateTimeInEveryZone : public testing::TestWithParam<char const *>
{
    ZoneScope const zone{GetParam()};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Zones, DateTimeInEveryZone,
                         testing::Values("UTC", "Europe/Berlin", "Europe/London", "America/New_York",
                                         "America/Sao_Paulo", "America/Santiago", "America/St_Johns", "Asia/Kathmandu",
                                         "Australia/Hobart", "Africa/Monrovia", "EST5EDT,M3.2.0,M11.1.0"));

TEST_P(DateTimeInEveryZone, DatesMoveByDaysAndTimesComeApartAndTogether)
{
    for (int start = -20000; start < 24000; start += 97)
    {
        CProjectDate const date = CProjectDate::fromDayNumber(start);
        for (int days : {1, -1, 30, 365, -1000})
        {
            CProjectDate const moved = date + days;
            ASSERT_EQ(moved.getDayNumber(), start + days);
            ASSERT_EQ(moved - date, days);
            ASSERT_EQ(date - days, CProjectDate::fromDayNumber(start - days));
        }
        std::int64_t const minutes = start * std::int64_t{1440} + (start * 131 & 1023);
        CProjectTime const time = CProjectTime::fromLocalMinutes(minutes);
        ASSERT_EQ(time.getLocalMinutes(), minutes);
        ASSERT_EQ(time.getDate() + time.getTimeOfDay(), time);
        ASSERT_EQ(time.getTimeOfDay() + time.getDate(), time);
        ASSERT_EQ(time.getTimeOfDay().getMinuteOfDay(), orvane::floorMod(minutes, 1440));
    }
}

TEST_P(DateTimeInEveryZone, SubtractionFromTimesEndsAtTheStartOf1970)
{
    CProjectTime const earliest(1970, 1, 1, 0, 0);
    EXPECT_EQ(CProjectTime(1970, 1, 1, 1, 0) - CProjectDuration(2, 0), earliest);
    EXPECT_EQ(CProjectTime(1960, 1, 1, 0, 0) - CProjectDuration(-1, 0), CProjectTime(1960, 1, 1, 1, 0));
    EXPECT_FALSE((CProjectTime() - CProjectDuration(INT_MAX, 0)).isValid());
}

TEST(TimeOfDay, RunsRoundMidnight)
{
    EXPECT_EQ(CProjectTimeOfDay(0, -1).getMinuteOfDay(), 1439);
    EXPECT_EQ(CProjectTimeOfDay(25, 0).GetHour(), 1);
    EXPECT_GE(CProjectTimeOfDay(INT_MAX, INT_MAX).GetHour(), 0);
    ZoneScope const zone("America/Sao_Paulo");
    EXPECT_EQ(CProjectTimeOfDay(23, 59).getCTime(), CTime(1970, 1, 1, 23, 59, 0));
    CProjectTimeOfDay const late(23, 0);
    EXPECT_EQ(late + CProjectDuration(48, 30), CProjectTimeOfDay(23, 30));
    EXPECT_EQ(CProjectTimeOfDay(1, 0) - CProjectDuration(2, 1), CProjectTimeOfDay(22, 59));
    EXPECT_EQ(late - CProjectTimeOfDay(8, 30), CProjectDuration(14, 30));
    EXPECT_EQ(CProjectTimeOfDay(8, 0) - CProjectTimeOfDay(9, 0), CProjectDuration(0, 0));
    EXPECT_EQ(CProjectDuration(CProjectTimeOfDaySpan({17, 30}, {9, 0})), CProjectDuration(-8, -30));
}

TEST(Date, CarriesOverAndStopsAtTheEnds)
{
    ZoneScope const zone("America/Sao_Paulo");
    EXPECT_EQ(CProjectDate(2003, 2, 29), CProjectDate(2003, 3, 1));
    CProjectDate date(2018, 11, 3);
    EXPECT_TRUE((date += 1).getChanged());
    EXPECT_EQ(date, CProjectDate(2018, 11, 4)) << "a day that starts at 01:00";
    EXPECT_EQ((date + CProjectTimeOfDay(0, 30)), CProjectTime(2018, 11, 4, 1, 30));
    EXPECT_EQ(CProjectDate(2037, 1, 1) + INT_MAX, CProjectDate(2500, 1, 1));
    EXPECT_EQ(CProjectDate(INT_MIN, INT_MIN, INT_MIN) - INT_MAX, CProjectDate(-9999, 1, 1));
}

TEST(Date, StepsOverADayThatTheZoneLeftOut)
{
    ZoneScope const zone("Pacific/Apia");  // there was no 30 December 2011
    EXPECT_EQ(CProjectDate(2011, 12, 29) + 1, CProjectDate(2011, 12, 31));
    EXPECT_EQ(CProjectDate(2011, 12, 30), CProjectDate(2011, 12, 31));
    EXPECT_EQ(CProjectDate(2011, 12, 31) - CProjectDate(2011, 12, 29), 1);
}

TEST(Date, IsEqualByDayAndOrderedBySeconds)
{
    CProjectDate stored;
    {
        ZoneScope const zone("Asia/Kolkata");
        stored = CProjectDate(2004, 1, 5);
    }
    ZoneScope const zone("Asia/Karachi");
    EXPECT_EQ(stored, CProjectDate(2004, 1, 4));
    EXPECT_EQ(stored.compare(CProjectDate(2004, 1, 4)), 1);
}

TEST(Time, IsCutToTheMinuteOfTheLocalClock)
{
    ZoneScope const zone("Africa/Monrovia");  // 44 minutes 30 seconds behind until 1972
    EXPECT_EQ(CProjectTime(CTime(1969, 12, 31, 23, 59, 59)).getCTime(), CTime(1969, 12, 31, 23, 59, 0));
    EXPECT_EQ(CProjectTime(1970, 1, 1, 0, 0).getCTime().GetTime(), 2670);
    CProjectTime time;
    time += CProjectDuration(0, 1);
    EXPECT_EQ(time.getCTime().GetTime(), 60) << "what is not valid is not cut";
    EXPECT_TRUE(!time.isValid() && time.getChanged());
}

TEST(Time, AddsElapsedTimeAcrossChangesOfTheClock)
{
    ZoneScope const zone("Europe/Berlin");
    CProjectTime const before(2024, 3, 30, 12, 0), after(2024, 3, 31, 13, 0);
    EXPECT_EQ(before + CProjectDuration(24, 0), after);
    EXPECT_EQ(before - after, CProjectDuration(-24, 0));
    EXPECT_EQ(CProjectTime(2037, 12, 31, 0, 0) + CProjectDuration(INT_MAX, 0), CProjectTime(2040, 1, 1, 0, 0));
    EXPECT_EQ(CProjectTime(1910, 1, 1, 0, 0) + CProjectDuration(INT_MIN, 0), CProjectTime(1800, 1, 1, 0, 0));
}

TEST(TimeOfDaySpan, IsValidUpToOneMinuteBeforeMidnight)
{
    std::pair<CProjectTimeOfDaySpan, bool> const cases[] = {
        {span(9, 17), true}, {span(9, 0), false},         {span(9, 24), false},          {span(9, 9), true},
        {span(0, 0), false}, {{{9, 1}, {9, 0}}, false}, {{{0, 0}, {23, 59}}, true}};
    for (auto const & [given, valid] : cases)
    {
        CProjectTimeOfDaySpan changed;
        changed.setStart(given.getStart());
        changed.setEnd(given.getEnd());
        EXPECT_TRUE(changed.isValid() == valid && changed.getChanged() && changed == given) << CString(given);
    }
}
