#include "platform/time.h"

#include "platform/string.h"
#include "tests/support/zone_scope.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <type_traits>

static_assert(sizeof(CTime) == 4 && std::is_trivially_copyable_v<CTime>);

TEST(Time, FieldsOutOfRangeCarryOverAsInTheLibrary)
{
    int const cases[][6] = {{2004, 2, 30, 0, 0, 0}, {2003, 14, 1, 8, 0, 0},    {2004, 1, 0, 12, 0, 0},
                            {2004, 0, 1, 0, -1, 0}, {2004, 6, 15, 49, 90, 61}, {2004, 6, -400, 7, 0, -86400},
                            {1935, 7, 1, 9, 30, 1}, {1968, 1, 800, 10, 0, 0}};
    for (char const * tz : {"Europe/Berlin", "America/St_Johns", "Australia/Sydney", "EST5EDT,M3.2.0,M11.1.0"})
    {
        ZoneScope const zone(tz);
        for (auto const & [y, mo, d, h, mi, s] : cases)
            for (int dst : {-1, 0})
            {
                std::tm fields{s, mi, h, d, mo - 1, y - 1900, 0, 0, dst, 0, nullptr};
                CTime const time(y, mo, d, h, mi, s, dst);
                EXPECT_EQ(time.GetTime(), std::mktime(&fields)) << tz << ' ' << y << ' ' << mo << ' ' << d;
                EXPECT_EQ(std::tuple(time.GetYear(), time.GetMonth(), time.GetDay(), time.GetDayOfWeek()),
                          std::tuple(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_wday + 1));
                EXPECT_EQ(std::tuple(time.GetHour(), time.GetMinute(), time.GetSecond()),
                          std::tuple(fields.tm_hour, fields.tm_min, fields.tm_sec));
            }
    }
}

TEST(Time, StopsAtTheEnds)
{
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    ZoneScope const zone("Asia/Kolkata");
    CTime const last(std::numeric_limits<std::int64_t>::max());
    CTime const first(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(last.GetTime(), INT32_MAX);
    EXPECT_EQ(first.GetTime(), INT32_MIN);
    EXPECT_EQ(CTime(most, most, most, most, most, most), last);
    EXPECT_EQ(CTime(least, least, least, least, least, least, 0), first);
    EXPECT_EQ(CTime(2038, 1, 19, 8, 44, 8), last);
    EXPECT_EQ(last + CTimeSpan(1), last);
    EXPECT_EQ(first - CTimeSpan(1), first);
    EXPECT_EQ((last - first).GetTotalSeconds(), INT32_MAX);
    EXPECT_EQ(CTimeSpan(std::numeric_limits<long>::max(), most, most, most).GetTotalSeconds(), INT32_MAX);
}

TEST(Time, FormatsInTheMannerOfStrftime)
{
    ZoneScope const zone("Asia/Kathmandu");
    CTime const time(2004, 12, 30, 14, 5, 9);
    EXPECT_EQ(time.Format("%H:%M:%S %d/%m/%y|%a %b|%j|%z|%%"), "14:05:09 30/12/04|Thu Dec|365|+0545|%");
    EXPECT_TRUE(time.Format("%5000Y").GetLength() == 5000 && time.Format(" ") == " ");
    EXPECT_TRUE(time.Format("%2000000000Y").IsEmpty() && time.Format(nullptr).IsEmpty());
}
