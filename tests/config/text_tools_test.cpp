#include "config/text_tools.h"

#include <cfloat>
#include <climits>
#include <cmath>

#include <gtest/gtest.h>

namespace
{

TEST(TextToolsTest, WriteNumbersAsDocumentsHaveThem)
{
    // clang-format off
    std::pair<double, char const *> const cases[] = {
        {0, "0"}, {-0.0, "-0"}, {0.5, "0.5"}, {0.01, "0.01"}, {0.00999, "9.99e-3"}, {0.001, "1e-3"}, {100, "100"},
        {1000, "1000"}, {1000.5, "1.0005e+3"}, {-1500, "-1.5e+3"}, {1e10, "1e+10"}, {-DBL_MAX, "-1.797693e+308"},
        {1e-300, "1e-300"}, {NAN, "nan"}, {HUGE_VAL, "inf"}, {INT_MAX, "2.147484e+9"}, {1e100, "1e+100"},
    };
    // clang-format on
    for (auto const & [number, text] : cases) EXPECT_EQ(convertToNumber(number), text);
}

}  // namespace
