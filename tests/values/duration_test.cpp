#include "values/duration.h"

#include "values/saturate.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>

TEST(Duration, IsWholeMinutesCutTowardZero)
{
    std::pair<long, long> const cases[] = {
        {90, 60}, {-90, -60}, {-59, 0}, {INT32_MAX, 2147483640}, {LONG_MAX, 2147483640}, {LONG_MIN, -2147483640},
    };
    for (auto const & [given, seconds] : cases)
    {
        CProjectDuration const duration(given);
        EXPECT_EQ(duration.GetTotalSeconds(), seconds) << given;
        EXPECT_TRUE(duration.isValid() && !duration.getChanged());
    }
    EXPECT_EQ(CProjectDuration(INT32_MAX, INT32_MAX).GetTotalSeconds(), 2147483640);
}

TEST(Duration, SumsAreNewValuesWhileCompoundAssignmentsTouchTheNumberAlone)
{
    CProjectDuration sum;
    sum += CProjectDuration(180);
    EXPECT_EQ(sum.GetTotalSeconds(), 180);
    EXPECT_FALSE(sum.isValid() || sum.getChanged());
    sum -= CProjectDuration(INT32_MIN);
    sum -= CProjectDuration(INT32_MIN);
    EXPECT_EQ(sum.GetTotalSeconds(), INT32_MAX);
    EXPECT_EQ((sum + CProjectDuration()).GetTotalSeconds(), 2147483640);
    EXPECT_TRUE((sum - sum).isValid());
    EXPECT_EQ((CProjectDuration(INT32_MIN) - sum).GetTotalSeconds(), -2147483640);
}

TEST(Duration, CopiesKeepTheChangeFlagAndAssignmentsTakeTheSourcesValidity)
{
    CProjectDuration target(3, 0);
    target = CProjectDuration(4, 0);
    EXPECT_TRUE(target.getChanged() && CProjectDuration(target).getChanged());
    target = CProjectDuration();
    EXPECT_FALSE(target.getChanged() || target.isValid() || CProjectDuration(target).getChanged());
    target.touch();
    EXPECT_FALSE(target.getChanged()) << "as after an assignment of what is not valid";
    CProjectDuration given(1, 0);
    given.touch();
    EXPECT_TRUE(given.getChanged());
}

TEST(Saturate, KeepsWhatFitsAndStopsAtTheEnds)
{
    EXPECT_EQ(orvane::saturate<std::int32_t>(std::int64_t{1} << 40), INT32_MAX);
    EXPECT_EQ(orvane::saturate<std::int32_t>(INT64_MIN), INT32_MIN);
    EXPECT_EQ(orvane::saturate<std::int32_t>(-1.99), -1);
    EXPECT_EQ(orvane::saturate<std::int32_t>(2147483647.5), INT32_MAX);
    EXPECT_EQ(orvane::saturate<std::int32_t>(std::nan("")), 0);
    EXPECT_EQ(orvane::saturate<std::int64_t>(HUGE_VAL), INT64_MAX);
    EXPECT_EQ(orvane::saturate<std::int64_t>(-9.3e18), INT64_MIN);
}
