#include "config/color_tools.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace
{

TEST(ColorToolsTest, KnowThePlacesOfColorsAndTheWayBack)
{
    double hue, luminance, saturation;
    RGBtoHLS(0xFF8080, hue, luminance, saturation);
    EXPECT_TRUE(hue == 170 && luminance == 191.5 && saturation == 255) << hue << ' ' << luminance << ' ' << saturation;
    RGBtoHLS(0x808080, hue, luminance, saturation);
    EXPECT_TRUE(hue == 0 && luminance == 128 && saturation == 0) << hue << ' ' << luminance << ' ' << saturation;

    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round)
    {
        unsigned long const color = random() & 0xFFFFFF;
        RGBtoHLS(color, hue, luminance, saturation);
        ASSERT_EQ(HLStoRGB(hue, luminance, saturation), color);
        ASSERT_EQ(HLStoRGB(hue - 510, luminance, saturation), color);
    }
    for (double wild : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1.0})
        EXPECT_LE(HLStoRGB(wild, wild, wild) | HLStoRGB(wild, 127.5, 255), 0xFFFFFFu);
}

}  // namespace
