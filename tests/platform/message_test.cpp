#include "platform/message.h"

#include <climits>

#include <gtest/gtest.h>

#include "platform/io_error.h"
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

TEST(MessageTest, NamesTheCausesOfErrorsOfFiles)
{
    std::pair<int, CString> const cases[] = {{0, "Unknown"}, {6, "Invalid path"}, {14, "endOfFile"}, {INT_MIN, ""}};
    for (auto const & [cause, word] : cases)
    {
        CRecordingHost host;
        CFileException exception(cause);
        reportIOError("100%s.prj", exception);
        EXPECT_EQ(host.boxes.at(0).text, "I/O error 100%s.prj : " + word);
    }
}

}  // namespace
