#include "platform/message.h"

#include <gtest/gtest.h>

#include "tests/support/recording_host.h"

namespace
{

using orvane::CRecordingHost;

TEST(MessageTest, NeverTakesATextForAFormat)
{
    struct
    {
        char const *text, *shown;
    } const cases[] = {
        {"plain", "plain"},       {"", ""},       {nullptr, ""},   {"100%", "100%"}, {"%s%n%999999d", "%s%n%999999d"},
        {"50%% done", "50% done"}, {"%%%", "%%"}, {"%%%%", "%%"},  {"a%%s", "a%s"},
    };
    CRecordingHost host;
    for (auto const & each : cases)
    {
        warning(each.text);
        promptYesNo(CString(each.text));
        EXPECT_EQ(host.boxes.at(0), (orvane::ShownBox{each.shown, "Tessel Orvane Schedule", 0x2040}));
        EXPECT_EQ(host.boxes.at(1), (orvane::ShownBox{each.shown, "Tessel Orvane Schedule", 0x2024}));
        host.boxes.clear();
    }
}

TEST(MessageTest, FormatsWithoutCutting)
{
    CString const name('n', 5000);
    CRecordingHost host;
    warning("I/O error %s : %i%%", static_cast<char const *>(name), 7);
    promptYesNo("Remove \"%s\"?", "%d");
    EXPECT_EQ(host.boxes.at(0).text, "I/O error " + name + " : 7%");
    EXPECT_EQ(host.boxes.at(0).flags, orvane::box::warning);
    EXPECT_EQ(host.boxes.at(1).text, "Remove \"%d\"?");

    warning(name);
    EXPECT_EQ(host.boxes.at(2).text, name);
}

TEST(MessageTest, TakesOnlyYesForYes)
{
    CRecordingHost host;
    host.answers = {orvane::answer::yes, orvane::answer::no, orvane::answer::ok, orvane::answer::yes};
    EXPECT_TRUE(promptYesNo("Sure?"));
    EXPECT_FALSE(promptYesNo("Sure?"));
    EXPECT_FALSE(promptYesNo("Sure of %s?", "it"));
    EXPECT_TRUE(promptYesNo("Sure of %s?", "it"));
    EXPECT_FALSE(promptYesNo("Sure?"));
}

}  // namespace
