#include "platform/text_measure.h"

#include <cmath>

#include <gtest/gtest.h>

#include "platform/temp_notice.h"
#include "tests/support/recording_host.h"

// The caches of the font library stay until the process ends, behind offsets that the leak check cannot follow.
extern "C" char const * __lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

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

TEST(TempNoticeTest, FitsItsTextAndStandsWhereItStood)
{
    class CPlacingHost : public orvane::CRecordingHost
    {
        orvane::Rectangle windowRectangle(CWnd const &) override { return {100, 50, 300, 90}; }
    } host;
    showTempNotice(54, true);
    howTempNotice("%i of %s", 3, "%d");
    howTempNotice("100%% %s");
    EXPECT_EQ(host.beeps, std::vector{0x30});
    std::tuple<CString, unsigned long, int> const expected[] = {
        {"These Tasks are already linked.", 0x8080FF, 2000}, {"3 of %d", 0xDCFFFF, 1000}, {"100% %s", 0xDCFFFF, 1000}};
    ASSERT_EQ(host.notices.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i)
    {
        auto const & [text, box, background, textColor, milliseconds, timer] = host.notices[i];
        EXPECT_EQ(std::tuple(text, background, milliseconds), expected[i]);
        EXPECT_NEAR(box.right - box.left, 20 + textWidth(text, "MS Sans Serif", 32 / 3.0), 1);
        EXPECT_NEAR(box.left + box.right, 400, 1);
        EXPECT_TRUE(box.top == 50 && box.bottom > 50 + 6 + 8);
    }
}

}  // namespace
