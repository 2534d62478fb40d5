#include "platform/message.h"

#include <gtest/gtest.h>

#include "tests/support/recording_host.h"

namespace
{

using orvane::CRecordingHost;

TEST(MessageTest, NeverTakesATextForAFormat)
{
    CString const name('n', 5000);
    std::pair<char const *, CString> const cases[] = {{"100%", "100%"},          {"%s%n%999999d", "%s%n%999999d"},
                                                      {"%%%", "%%"},             {nullptr, ""},
                                                      {"50%% done", "50% done"}, {name, name}};
    for (auto const & [text, shown] : cases)
    {
        CRecordingHost host;
        warning(text);
        promptYesNo(CString(text));
        EXPECT_EQ(host.boxes.at(0), (orvane::ShownBox{shown, "Tessel Orvane Schedule", 0x2040}));
        EXPECT_EQ(host.boxes.at(1), (orvane::ShownBox{shown, "Tessel Orvane Schedule", 0x2024}));
    }
    CRecordingHost host;
    warning("I/O error %s : %i%%", static_cast<char const *>(name), 7);
    promptYesNo("Remove \"%s\"?", "%d");
    EXPECT_EQ(host.boxes.at(0), (orvane::ShownBox{"I/O error " + name + " : 7%", "Tessel Orvane Schedule", 0x2040}));
    EXPECT_EQ(host.boxes.at(1).text, "Remove \"%d\"?");
}

TEST(MessageTest, TakesOnlyYesForYes)
{
    CRecordingHost host;
    host.answers = {orvane::answer::yes, orvane::answer::no, orvane::answer::ok, orvane::answer::yes};
    for (bool expected : {true, false, false, true, false}) EXPECT_EQ(promptYesNo("Sure?"), expected);
}

}  // namespace
