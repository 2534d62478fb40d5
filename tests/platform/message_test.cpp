#include "platform/message.h"

#include <cerrno>
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

TEST(MessageTest, TakesOnlyYesForYes)
{
    CRecordingHost host;
    host.answers = {orvane::answer::yes, orvane::answer::no, orvane::answer::ok, orvane::answer::yes};
    for (bool expected : {true, false, false, true, false}) EXPECT_EQ(promptYesNo("Sure?"), expected);
}

TEST(MessageTest, TellsItsOwnerAndFindsTextsByNumber)
{
    CRecordingHost host;
    CWnd window;
    host.answers = {orvane::answer::yes, orvane::answer::no, orvane::answer::yes};
    warningIDS(54);
    warningIDS(-1, &window);
    EXPECT_TRUE(promptYesNo(53));
    EXPECT_FALSE(promptYesNo(window, "%s%%n"));
    EXPECT_TRUE(promptYesNo(window, 54));
    errno = ENOENT;
    displayLastError("Title");
    DEBUG_WARNING("%s", "nothing");
    CString const caption = "Tessel Orvane Schedule", linked = "These Tasks are already linked.";
    EXPECT_EQ(host.boxes, (std::vector<orvane::ShownBox>{
                              {linked, caption, 0x2040},
                              {"Cannot find the string", caption, 0x2040, &window},
                              {"This action would produce a circular link.", caption, 0x2024},
                              {"%s%%n", caption, 0x2024, &window},
                              {linked, caption, 0x2024, &window},
                              {"No such file or directory", "Title", 0x2040},
                          }));
}

TEST(MessageTest, NamesTheCausesOfErrorsOfFiles)
{
    std::tuple<int, CString, CString> const cases[] = {
        {0, "Unknown", "No error occurred."},
        {6, "Invalid path", "There was an attempt to use an invalid file handle."},
        {14, "endOfFile", "The end of file was reached."},
        {15, "", ""},
        {INT_MIN, "", ""},
    };
    for (auto const & [cause, word, sentence] : cases)
    {
        CRecordingHost host;
        CFileException exception(cause);
        reportIOError("100%s.prj", exception);
        EXPECT_EQ(host.boxes.at(0).text, "I/O error 100%s.prj : " + word);
        EXPECT_EQ(getErrorDescription(exception), sentence);
    }
}

}  // namespace
