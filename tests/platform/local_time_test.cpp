#include "platform/local_time.h"

#include "tests/support/zone_scope.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>

namespace
{

std::int64_t local(int year, int month, int day, int hour, int minute)
{
    return orvane::dayNumber(year, month, day) * orvane::secondsPerDay + hour * 3600 + minute * 60;
}

// The judge: the C library's fields, as seconds.
std::int64_t localByLibrary(std::int64_t utc)
{
    std::time_t const moment = utc;
    std::tm fields{};
    ::localtime_r(&moment, &fields);
    return local(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min) +
           fields.tm_sec;
}

class EveryZone : public testing::TestWithParam<char const *>
{
};

}  // namespace

// Also looks around the changes of the clock, where a fault would hide: a moment that the library maps
// forth comes back as itself or as an earlier one with the same local time.
TEST_P(EveryZone, AgreesWithTheLibraryAtRandomMoments)
{
    ZoneScope const zone(GetParam());
    std::mt19937_64 random(20260501);
    std::uniform_int_distribution<std::int64_t> moments(INT32_MIN, INT32_MAX);
    auto const expectRight = [&](std::int64_t utc)
    {
        std::int64_t const expected = localByLibrary(utc);
        ASSERT_EQ(orvane::toLocalSeconds(utc), expected) << utc;
        std::int64_t const back = orvane::fromLocalSeconds(expected);
        ASSERT_LE(back, utc);
        ASSERT_EQ(localByLibrary(back), expected) << utc << " came back as " << back;
    };
    for (int count = 0; count < 20000; ++count)
    {
        std::int64_t const utc = moments(random);
        expectRight(utc);
        std::int64_t low = utc;
        std::int64_t high = utc + 30 * orvane::secondsPerDay;
        auto const offset = [](std::int64_t moment) { return localByLibrary(moment) - moment; };
        if (count % 20 != 0 || offset(low) == offset(high)) continue;
        while (high - low > 1) (offset((low + high) / 2) == offset(low) ? low : high) = (low + high) / 2;
        for (std::int64_t near : {-7200, -3601, -3600, -1800, -1, 0, 1, 1799, 3599, 3600}) expectRight(high + near);
        // What the clock skips moves forward by the gap.
        for (std::int64_t skipped = low + offset(low) + 1; skipped < high + offset(high); skipped += 600)
            ASSERT_EQ(orvane::fromLocalSeconds(skipped), skipped - offset(low));
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, EveryZone,
                         testing::Values(nullptr, "", "UTC", "No/Such_Zone", "Fixed/UTC+05:00:00", "Europe/Berlin",
                                         ":Europe/Berlin", "/usr/share/zoneinfo/Asia/Tokyo", "Europe/London",
                                         "Europe/Dublin", "America/New_York", "America/Sao_Paulo", "America/St_Johns",
                                         "America/Santiago", "Asia/Kolkata", "Asia/Kathmandu", "Australia/Lord_Howe",
                                         "Australia/Hobart", "Pacific/Apia", "Africa/Casablanca", "Africa/Monrovia",
                                         "Antarctica/Troll", "right/Europe/Berlin", "XYZ5", "<+0330>-3:30",
                                         "EST5EDT,M3.2.0,M11.1.0", "NZST-12NZDT,M9.5.0,M4.1.0/3",
                                         "<-03>3<-02>,J60/0,299/1"));

TEST(CivilDay, CountsDaysBothWaysAndCarriesOver)
{
    for (std::int64_t day = -800000; day < 800000; day += 89)
    {
        orvane::CivilDay const date = orvane::civilDay(day);
        EXPECT_EQ(orvane::dayNumber(date.year, date.month, date.day), day);
    }
    EXPECT_EQ(orvane::dayNumber(2023, 14, 30), orvane::dayNumber(2024, 3, 1));
    EXPECT_EQ(orvane::dayNumber(2024, -10, 0), orvane::dayNumber(2023, 1, 31));
    ZoneScope const zone("EST5EDT,M3.2.0,M11.1.0");
    for (std::int64_t far : {std::int64_t{1} << 55, -(std::int64_t{1} << 55)})
        EXPECT_EQ(orvane::fromLocalSeconds(orvane::toLocalSeconds(far)), far);
    EXPECT_LT(orvane::dayNumber(INT32_MIN, INT32_MIN, INT32_MIN), orvane::dayNumber(INT32_MAX, INT32_MAX, INT32_MAX));
    EXPECT_EQ(orvane::dayOfWeek(orvane::dayNumber(1969, 12, 28)), 1);
}
