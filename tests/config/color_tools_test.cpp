#include "config/color_tools.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "config/bitmap.h"
#include "tests/support/recording_host.h"

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

TEST(ColorToolsTest, InterpolateBetweenTheEndsAlone)
{
    std::pair<double, unsigned long> const cases[] = {
        {0, 0x102030},   {1, 0xF0A000},    {0.5, 0x806018}, {0.33, 0x594A20},
        {1.5, 0x102030}, {-0.1, 0x102030}, {NAN, 0x102030},
    };
    for (auto const & [t, color] : cases) EXPECT_EQ(interpolateColors(0x102030, 0xF0A000, t), color) << t;
}

TEST(BitmapTest, TakesTheDesktopsColorForLightGrey)
{
    orvane::CRecordingHost host;
    host.buttonFace = 0xC8D0D4;
    std::pair<orvane::Bitmap, std::vector<unsigned char>> const cases[] = {
        {{3, 1, 4, 8, {0, 0xC0C0C0, 0xC8D0D8, 0xC0C0C0}, {1, 3, 0, 1}}, {2, 3, 0, 1}},
        {{3, 1, 6, 16, {}, {0x18, 0x19, 0x19, 0x18, 0x00, 0x18}}, {0x59, 0x6B, 0x19, 0x18, 0x00, 0x18}},
        {{1, 2, 4, 24, {}, {192, 192, 192, 192, 192, 192, 192}}, {0xC8, 0xD0, 0xD4, 192, 0xC8, 0xD0, 0xD4}},
        {{2, 1, 8, 32, {}, {192, 192, 192, 7, 0, 192, 192, 192}}, {0xC8, 0xD0, 0xD4, 7, 0, 192, 192, 192}},
        // More pixels than bits, wrong measures, no palette, and a depth that is none.
        {{1 << 30, 1 << 30, 1 << 30, 32, {}, {192, 192, 192, 7, 192, 192}}, {0xC8, 0xD0, 0xD4, 7, 192, 192}},
        {{9, 9, -1, 32, {}, {192, 192, 192, 192}}, {192, 192, 192, 192}},
        {{4, 1, 4, 8, {}, {192, 192, 192, 192}}, {192, 192, 192, 192}},
        {{4, 1, 4, 4, {0xC0C0C0}, {0, 0, 0, 0}}, {0, 0, 0, 0}},
    };
    for (auto [bitmap, changed] : cases)
    {
        replaceBitmapColor(&bitmap);
        EXPECT_EQ(bitmap.bits, changed) << bitmap.depth << " bits, stride " << bitmap.stride;
    }
    replaceBitmapColor(nullptr);
}

}  // namespace
