#include "schedule/calendar.h"

#include <gtest/gtest.h>

#include "model/project.h"
#include "tests/support/moments.h"

using namespace orvane::test;

namespace
{

CCalendarDayTypeID const & normalID(CCalendar const & calendar)
{
    return calendar.getCalendarDayTypes()[0].getID();
}

CCalendarDayTypeID const & offID(CCalendar const & calendar)
{
    return calendar.getCalendarDayTypes()[1].getID();
}

std::string exceptionsOf(CCalendar const & calendar)
{
    std::string text;
    for (CCalendarException const & exception : calendar.getCalendarDayExceptions())
        text += (text.empty() ? "" : " ") + shown(exception.getDate() + clock("00:00")).substr(5, 5);
    return text;
}

TEST(Calendar, ClearGivesTheStandardWeek)
{
    CCalendar calendar;
    calendar.clear(true);
    EXPECT_EQ(calendar.getID().toString(), CString("1e6717b6e37a4046a86ed5dc457a2de6"));
    EXPECT_EQ(normalID(calendar).toString(), CString("c7ea95b1c2f27d4886f017d37bbd5484"));
    EXPECT_EQ(offID(calendar).toString(), CString("6c231cb1ae9b9d4ab47820cbaaf96c45"));
    for (int day = 0; day <= 8; ++day)
    {
        CCalendarDayTypeID const & id = calendar.getCalendarWeek().getDay(day);
        EXPECT_EQ(id == offID(calendar), day == 1 || day == 7) << day;
        EXPECT_EQ(id == normalID(calendar), 2 <= day && day <= 6) << day;
    }
    EXPECT_TRUE(calendar.getInUse().getValue() && calendar.getNormalDayInUse().getValue());
    EXPECT_FALSE(normalID(CCalendar()) == normalID(calendar));
}

TEST(Calendar, DayTypeKeepsAtMostEightBlocks)
{
    CCalendarDayType day;
    CProjectTimeOfDaySpan const block(clock("09:00"), clock("10:00"));
    day.setTimeBlock(2, block);
    EXPECT_FALSE(day.getTimeBlock(1).isValid() || day.getTimeBlock(-1).isValid() || day.getTimeBlock(3).isValid());
    for (int index : {-1, 8}) day.setTimeBlock(index, block);
    for (int index : {3, 0}) day.deleteTimeBlock(index);
    EXPECT_EQ(day.getNumberOfTimeBlocks(), 2);
    CProjectTimeOfDaySpanArray tooMany;
    for (int each = 0; each < 9; ++each) tooMany.Add(block);
    day.setTimeOfDaySpanArray(tooMany);
    EXPECT_EQ(day.getNumberOfTimeBlocks(), 2);
}

// January 2024 begins on a Monday.
TEST(Calendar, DaysAreSetByExceptionsWhereTheyDifferFromTheWeek)
{
    CProjectDate const wednesday = on("2024-01-10");
    CCalendar calendar;
    CCalendarDayTypeID const off = offID(calendar), normal = normalID(calendar);
    calendar.setDayTypeOfSelectedDate(wednesday, off);
    EXPECT_FALSE(calendar.canEditDayType(wednesday));
    calendar.setDayTypeOfSelectedDate(wednesday, normal);
    EXPECT_EQ(exceptionsOf(calendar), "");

    calendar.setDayTypeOfSelectedWeek(wednesday, off);
    EXPECT_EQ(exceptionsOf(calendar), "01-08 01-09 01-10 01-11 01-12");
    calendar.setDayTypeOfDayOfWeek(wednesday, off);
    EXPECT_EQ(exceptionsOf(calendar), "01-08 01-09 01-11 01-12");
    calendar.setDayTypeOfDayOfWeekOfSelectedMonth(on("2024-01-31"), normal);
    EXPECT_EQ(exceptionsOf(calendar), "01-08 01-09 01-11 01-12 01-03 01-10 01-17 01-24 01-31");
    calendar.setDayTypeOfDayOfWeekOfSelectedYear(wednesday, off);
    calendar.setDayTypeOfDayOfWeekOfSelectedYear(on("2024-12-31"), off);
    EXPECT_EQ(calendar.getCalendarDayExceptions().GetSize(), 3 + 53);
}

TEST(Calendar, SettingDaysEndsWhereDatesEnd)
{
    CCalendar calendar;
    CCalendarDayTypeID const off = offID(calendar);
    for (CProjectDate const & date : {CProjectDate(1901, 12, 13), CProjectDate(2038, 1, 19)})
    {
        calendar.setDayTypeOfSelectedWeek(date, off);
        calendar.setDayTypeOfDayOfWeekOfSelectedMonth(date, off);
        calendar.setDayTypeOfDayOfWeekOfSelectedYear(date, off);
        EXPECT_TRUE(calendar.isDayAnException(date));
    }
    EXPECT_LT(calendar.getCalendarDayExceptions().GetSize(), 20);
}

// Arguments may be parts of the calendar that the call changes.
TEST(Calendar, SettersTakeTheCalendarsOwnParts)
{
    CCalendar calendar;
    CProjectDate const wednesday = on("2024-01-10");
    calendar.setDayTypeOfSelectedDate(wednesday, offID(calendar));
    CCalendarException const & exception = calendar.getCalendarDayExceptions()[0];
    calendar.setDayTypeOfDayOfWeek(exception.getDate(), exception.getCalendarDayTypeID());
    EXPECT_TRUE(calendar.getCalendarWeek().getDay(4) == offID(calendar));
    calendar.addCalendarDayType(calendar.getCalendarDayTypes()[0]);
    calendar.setCalendarDayTypes(calendar.getCalendarDayTypes());
    calendar = *&calendar;
    EXPECT_EQ(calendar.getCalendarDayTypes().GetSize(), 3);
}

// No answer comes from before a change, whoever changed.
TEST(Calendar, EveryChangeIsSeen)
{
    CProject project(nullptr, false);
    // Only rules replace a project's calendar; here it is written in place.
    CCalendar & master = const_cast<CCalendar &>(project.getProjectCalendar());
    CCalendar own;
    own.setProject(&project);
    auto const answer = [&]
    { return shown(own.addDurationToTime(at("2024-01-05 10:00"), CProjectDuration(8, 0), true)).substr(5); };
    EXPECT_EQ(answer(), "01-08 10:00");
    master.setDayTypeOfSelectedDate(on("2024-01-08"), offID(master));
    EXPECT_EQ(answer(), "01-09 10:00");
    own.setDayTypeOfSelectedDate(on("2024-01-09"), offID(own));
    EXPECT_EQ(answer(), "01-10 10:00");
    CCalendar const before(own);
    CCalendarWeek week = own.getCalendarWeek();
    week.setDay(4, offID(own));
    own.setCalendarWeek(week);
    EXPECT_EQ(answer(), "01-11 10:00");
    own.setCalendarDayExceptions(CCalendarExceptionArray());
    EXPECT_EQ(answer(), "01-09 10:00");
    own = before;
    EXPECT_EQ(answer(), "01-10 10:00");
    own.setProject(nullptr);
    EXPECT_EQ(answer(), "01-08 10:00");
    own.setProject(&project);
    EXPECT_EQ(answer(), "01-10 10:00");
    master.clear(true);
    EXPECT_EQ(answer(), "01-08 10:00");
}

// Being asked sorts the exceptions, which counts as a change; and a copy of sorted ones is changed.
TEST(Calendar, FlagsFollowTheFieldsAndTheOrderOfExceptionsButNotTheIdentifier)
{
    CCalendar calendar;
    calendar.setDayTypeOfSelectedDate(on("2024-01-08"), offID(calendar));
    calendar.setDayTypeOfSelectedDate(on("2024-01-03"), offID(calendar));
    EXPECT_TRUE(calendar.setChanged());
    calendar.resetChanged();
    calendar.setID(CCalendarID());
    EXPECT_TRUE(calendar.getID().getChanged());
    CCalendarExceptionArray const unsorted(calendar.getCalendarDayExceptions());
    EXPECT_FALSE(unsorted.getChanged() || calendar.setChanged());
    calendar.isValidStartTime(at("2024-02-05 10:00"));
    EXPECT_TRUE(calendar.setChanged());
    calendar.resetChanged();
    calendar.getDayType(on("2024-01-08"));
    EXPECT_FALSE(calendar.setChanged());
    CCalendarExceptionArray const sorted(calendar.getCalendarDayExceptions());
    EXPECT_TRUE(sorted.getChanged());
    EXPECT_EQ(sorted.findByDate(on("2024-01-03")), 1);
    EXPECT_EQ(sorted.findByDate(on("2024-01-04")), -1);
}

}  // namespace
