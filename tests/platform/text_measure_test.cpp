#include "platform/text_measure.h"

#include <cmath>

#include <gtest/gtest.h>

namespace
{

TEST(TextMeasureTest, IsProportionalToSizeAndLength)
{
    double const width = textWidth("Excavation", "Arial", 10), ascent = textAscent("Excavation", "Arial", 10);
    EXPECT_TRUE(width > 20 && width < 100 && ascent > 5 && ascent < 15) << width << ' ' << ascent;
    for (double scale : {-1.0, 1e-6, 4e3, 1e300})
    {
        EXPECT_DOUBLE_EQ(textWidth("Excavation", "Arial", 10 * scale), width * std::abs(scale));
        EXPECT_DOUBLE_EQ(textAscent("Excavation", "Arial", 10 * scale), ascent * std::abs(scale));
    }
    CString text;
    for (int i = 0; i < 20000; ++i) text += "Excavation ";
    EXPECT_NEAR(textWidth(text, "Arial", 10) / 20000, textWidth("Excavation ", "Arial", 10), 0.01);
    EXPECT_GT(textWidth(CString("\xFF\xC3\0\n", 4) + CString('\x80', 5000), CString('\xFF', 9), 10), 0);
    for (double none : {0.0, std::nan(""), HUGE_VAL, -HUGE_VAL}) EXPECT_EQ(textWidth("a", "Arial", none), 0);
    EXPECT_EQ(textWidth("", "Arial", 10) + textAscent("", "Arial", 10), 0);
}

}  // namespace
