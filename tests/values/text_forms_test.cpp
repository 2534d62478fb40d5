#include "values/date_time.h"

#include <climits>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "schedule/calendar.h"

namespace
{

// In the concise form, unless told otherwise, and by default again in the end.
class TextForms : public testing::Test
{
protected:
    TextForms() { setConcise(true); }
    ~TextForms() override { setConcise(false); }

    static void setConcise(bool concise)
    {
        CProjectConfig::setDisplayTimeConcise(concise);
        CProjectConfig::setDisplayDurationConcise(concise);
    }
};

TEST_F(TextForms, OfDatesAndTimes)
{
    CProjectTime const time(2004, 1, 5, 14, 30);
    EXPECT_EQ(time.getString(), "14:30 05/01/04");
    EXPECT_EQ(time.getDate().getString(), "05/01/04");
    setConcise(false);
    EXPECT_EQ(time.getString(), "14:30 Mo, 05 Jan, 2004");
    EXPECT_EQ(time.getDate().getString(), "Mo, 05 Jan, 2004");
    EXPECT_EQ(time.getLongString(), "14:30 05/01/04");
    EXPECT_EQ(CString(CProjectTimeOfDaySpan({9, 0}, {17, 0})), "09:00   to   17:00");
    EXPECT_EQ(CProjectDate(2004, 1, 10).GetDayOfWeekAsString(), "Saturday");
}

TEST_F(TextForms, OfDurations)
{
    std::tuple<CProjectDuration, CString, CString> const cases[] = {
        {CProjectDuration(), "", ""},
        {CProjectDuration(-100, -5), "0 Days", "0 Days"},
        {CProjectDuration(1, 30), "1 Hour, 30 Minutes", "1h, 30m"},
        {CProjectDuration(25, 1), "1 Day, 1 Hour, 1 Minute", "1d, 1h, 1m"},
        {CProjectDuration(26, 0), "1 Days, 2 Hours", "1d, 2h"},
        {CProjectDuration(49, 0), "2 Day, 1 Hour", "2d, 1h"},
        {CProjectDuration(INT_MAX), "24855 Days, 3 Hours, 14 Minutes", "24855d, 3h, 14m"},
    };
    for (auto const & [duration, full, concise] : cases)
    {
        setConcise(false);
        EXPECT_EQ(duration.getString(), full);
        setConcise(true);
        EXPECT_EQ(duration.getString(), concise);
    }
}

TEST_F(TextForms, OfWorkingTime)
{
    setConcise(false);
    CCalendar const calendar;
    long const day = calendar.getNormalDay().getWorkingDuration().GetTotalSeconds();
    std::pair<long, char const *> const cases[] = {
        {day + 3600, "1 Day, 1 Hour"}, {2 * day + 3660, "2 Days, 1 Hour, 1 Minute"}, {-day, "0 Days"}};
    for (auto const & [seconds, text] : cases) EXPECT_EQ(CProjectDuration(seconds).getString(calendar), text);
    EXPECT_EQ(CProjectDuration().getString(calendar), "");
}

}  // namespace
