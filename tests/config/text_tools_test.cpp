#include "config/text_tools.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "config/integer_tools.h"

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

TEST(TextToolsTest, ShortenNumbers)
{
    char const * const cases[][2] = {
        {"1.500", "1.5"},   {"100", "1"}, {"000", ""}, {"1.50e-007", "1.5e-7"}, {"1.0e+00", "1"},
        {"2.0e10", "2e10"}, {"", ""},     {"3e", "3"}, {"e100", "e1"},          {"5.0e+100", "5e+100"},
    };
    for (auto const & [number, shortened] : cases)
    {
        CString text = number;
        removeTrailing0sAndDigit(text);
        EXPECT_EQ(text, shortened) << number;
    }
}

TEST(TextToolsTest, TakeWordsOff)
{
    char const * const cases[][3] = {
        {"abc", "abc", ""}, {"abc def", "abc", "def"}, {" abc", "", "abc"}, {"", "", ""}, {"a  b", "a", " b"}};
    for (auto const & [given, word, rest] : cases)
    {
        CString text = given;
        EXPECT_EQ(removeFirstWord(text), word);
        EXPECT_EQ(text, rest);
    }
}

TEST(TextToolsTest, AppendATextToItself)
{
    CString text = "%s%%";
    stringAppend(text, text);
    EXPECT_EQ(text, "%s%%%s%");
    stringAppend(text, " %i%s", 7, static_cast<char const *>(text));
    EXPECT_EQ(text, "%s%%%s% 7%s%%%s%");
}

TEST(IntegerToolsTest, CountUnsignedBytes)
{
    std::vector<unsigned char> const bytes(10'000'000, 0xFF);
    EXPECT_EQ(checksum(bytes.data(), static_cast<int>(bytes.size())), 2'550'000'000);
    EXPECT_EQ(checksum(bytes.data(), INT_MIN) + checksum(nullptr, 5), 0);
    EXPECT_TRUE(odd(-1) && even(INT_MIN));
}

}  // namespace
