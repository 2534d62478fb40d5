#include "platform/controls.h"

#include <cfloat>
#include <climits>

#include <gtest/gtest.h>

#include "platform/component.h"
#include "platform/date_time_edit.h"
#include "platform/menu.h"
#include "platform/terminal_host.h"
#include "tests/support/recording_host.h"

namespace
{

using orvane::CRecordingHost;

TEST(ControlsTest, WriteOnlyWhatDiffers)
{
    CRecordingHost host;
    CWnd window;
    for (int round = 0; round < 2; ++round)
    {
        setWindowTextIfChanged(window, "5 ", "days");
        setCurSelIfChanged(window, -1);
        enableWindowIfChanged(window, true);
        setCheckIfChanged(window, 2);
        EXPECT_EQ(host.writes, 4);
    }
    EXPECT_EQ(window.getProperty<CString>(orvane::property::text), "5 days");
    for (float number : {2.5F, 0.1F, -FLT_MAX, FLT_TRUE_MIN})
    {
        setWindowTextIfChanged(window, number);
        CString const text = window.getProperty<CString>(orvane::property::text);
        EXPECT_TRUE(std::strtof(text, nullptr) == number && text.Find('e') < 0) << text;
    }
}

TEST(ControlsTest, OverlapByMoreThanAnEdge)
{
    CRecordingHost host;
    CWnd a, b;
    host.rectangles[&a] = {0, 0, 10, 10};
    std::pair<orvane::Rectangle, bool> const cases[] = {
        {{9, 9, 20, 20}, true}, {{10, 0, 20, 10}, false},
        {{5, 5, 5, 9}, false},  {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, true}};
    for (auto const & [rectangle, overlap] : cases)
    {
        host.rectangles[&b] = rectangle;
        EXPECT_TRUE(overlappingWindows(a, b) == overlap && overlappingWindows(b, a) == overlap) << rectangle.left;
    }
}

TEST(MenuTest, TellsTheHostOfChangesAlone)
{
    CRecordingHost host;
    CMenu menu;
    menu.items = {{1, "Open"}, {2, "View", false, true, {{3, "Gantt"}}}};
    for (int round = 0; round < 2; ++round)
    {
        checkMenuItem(menu, 3, true);
        enableMenuItem(menu, 1, false);
        enableMenuItem(menu, 4, false);
        EXPECT_EQ(host.menuChanges, 2);
    }
    copyMenuIntoPopup(menu, menu);
    EXPECT_TRUE(menu.items.size() == 4 && menu.items[3] == menu.items[1] && menu.find(3)->checked);
}

TEST(DateTimeEditTest, KeepsEverythingInTheControl)
{
    CRecordingHost host;
    CDateTimeEdit edit;
    edit.SetDateTime(37991.5);
    edit.SetYearFull(3, -1);
    edit.Reset();
    EXPECT_EQ(host.properties, (decltype(host.properties){{{&edit, 19, 0}, orvane::ControlValue(37991.5)},
                                                          {{&edit, 29, 3}, orvane::ControlValue(1)}}));
    EXPECT_EQ(host.methods, std::vector{28});
    EXPECT_TRUE(edit.GetDateTime() == 37991.5 && edit.GetYearFull(3) && !edit.GetYearFull(2) && !edit.GetYearShort(3));
}

TEST(TerminalHostTest, HasNoControlsAndAClipboardOfItsOwn)
{
    orvane::IHost * const former = orvane::setHost(nullptr);
    CWnd window;
    CString text = "kept";
    enableWindowIfChanged(window, true);
    EXPECT_FALSE(window.getProperty<int>(orvane::property::enabled) || overlappingWindows(window, window));
    EXPECT_TRUE(!getStringFromClipboard(text) && text == "kept");
    EXPECT_TRUE(setStringToClipboard(CString("a\0b", 3)) && getStringFromClipboard(text) && text == "a");
    orvane::setHost(former);
}

TEST(ComponentTest, TellsWhatCannotBeLoaded)
{
    CRecordingHost host;
    for (bool showErrors : {false, true}) EXPECT_FALSE(registerOCX("\\no%such\\thing.so", showErrors));
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0].text, "Cannot load thing.so in /no%such");
}

}  // namespace
