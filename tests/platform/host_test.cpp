#include "platform/host.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include "platform/dialog.h"
#include "platform/registered_name.h"
#include "platform/terminal_host.h"
#include "tests/support/recording_host.h"

namespace
{

using orvane::CRecordingHost;
using orvane::CTerminalHost;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

TEST(HostTest, ShowsOneWaitCursorHoweverTheyNestAndGoesBackToTheFormerHost)
{
    CRecordingHost outer;
    {
        CWaitCursor const first, second;
        {
            CRecordingHost inner;  // takes the cursor over and gives it back
            EXPECT_TRUE(&orvane::host() == &inner && inner.waitsBegun == 1 && outer.waitsEnded == 1);
        }
        EXPECT_EQ(outer.waitsBegun, 2);
    }
    EXPECT_TRUE(outer.waitsEnded == 2 && CWaitCursor::nesting() == 0);
    EXPECT_EQ(orvane::setHost(nullptr), &outer);
    EXPECT_NE(dynamic_cast<CTerminalHost *>(&orvane::host()), nullptr);
    EXPECT_NEAR(static_cast<double>(orvane::host().currentTime()), static_cast<double>(std::time(nullptr)), 2.0);
    orvane::setHost(&outer);
}

TEST(TerminalHostTest, LetsNoTextControlTheTerminalAndAnswersNoWithoutOne)
{
    File const in(std::tmpfile(), std::fclose), out(std::tmpfile(), std::fclose);
    std::fputs("yes\n", in.get());
    std::rewind(in.get());
    CTerminalHost host(in.get(), out.get());
    CString const text = CString("a\x1B[2Jb\tc\nd\x7F\xC2\x9B" "1m \xC3\x9B \xC2\xA0 \xC2");
    EXPECT_EQ(host.messageBox(text, "Title", orvane::box::noAccess), orvane::answer::ok);
    EXPECT_EQ(host.messageBox("Sure?", "Title", orvane::box::question), orvane::answer::no);
    std::rewind(out.get());
    char buffer[1000];
    std::string const shown(buffer, std::fread(buffer, 1, sizeof buffer, out.get()));
    EXPECT_TRUE(shown.starts_with("Title: a?[2Jb\tc\nd???1m \xC3\x9B \xC2\xA0 \xC2\nTitle: Sure?")) << shown;
}

TEST(TerminalHostTest, AsksUntilItIsAnswered)
{
    std::pair<CString, int> const cases[] = {
        {"perhaps\n\n YES \n", orvane::answer::yes},
        {"No\ny\n", orvane::answer::no},
        {CString('y', 1000) + "\nn\n", orvane::answer::no},
        {"\x04", orvane::answer::no},  // the end of the input
    };
    for (auto const & [typed, answer] : cases)
    {
        SCOPED_TRACE(typed);
        int const user = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_TRUE(user >= 0 && grantpt(user) == 0 && unlockpt(user) == 0);
        File const in(std::fopen(ptsname(user), "r"), std::fclose), out(std::fopen(ptsname(user), "w"), std::fclose);
        ASSERT_TRUE(in && out);
        ASSERT_EQ(write(user, typed, typed.view().size()), std::ssize(typed.view()));
        EXPECT_EQ(CTerminalHost(in.get(), out.get()).messageBox("Sure?", "Title", orvane::box::question), answer);
        close(user);
    }
}

// A dialog that does what it is told when it is updated.
class CTestDialog : public CModelessDialog
{
public:
    std::function<void(bool)> onUpdate = [](bool) {};
    int updates = 0;

protected:
    void updateFromModel(bool everything) override
    {
        ++updates;
        auto const act = onUpdate;  // a copy, for this may be gone before the call returns
        act(everything);
    }
};

TEST(DialogTest, MayOpenCloseAndUpdateDialogsDuringAnUpdate)
{
    CRecordingHost host;
    std::vector<std::unique_ptr<CTestDialog>> opened;
    CTestDialog first;
    auto self = std::make_unique<CTestDialog>(), next = std::make_unique<CTestDialog>();
    CTestDialog last;
    first.onUpdate = [&](bool everything)
    {
        if (!everything) CModelessDialog::updateAllDialogs(true);
    };
    self->onUpdate = [&](bool)
    {
        for (int i = 0; i < 100; ++i) opened.push_back(std::make_unique<CTestDialog>());
        self.reset();
        next.reset();
    };
    CModelessDialog::updateAllDialogs(false);
    EXPECT_EQ(host.updates, (std::vector<bool>{true, false}));
    EXPECT_TRUE(last.updates == 2 && opened.front()->updates == 0);  // it was opened with the present model

    last.onUpdate = [](bool) { throw 1; };
    EXPECT_THROW(CModelessDialog::updateAllDialogs(true), int);
    last.onUpdate = [](bool) {};
    CModelessDialog::updateAllDialogs(true);
    EXPECT_TRUE(opened.size() == 100 && opened.back()->updates == 1);
}

// Takes all numbers. Answers 0 when equal names share one and they end where they should.
int exhaustNames()
{
    unsigned const known = RegisterWindowMessage("known");
    unsigned highest = 0;
    for (int i = 0; i < 0x4000; ++i) highest = std::max(highest, RegisterClipboardFormat(std::to_string(i).c_str()));
    bool const full = highest == 0xFFFF && RegisterClipboardFormat("one too many") == 0;
    return full && known >= 0xC000 && RegisterClipboardFormat(CString("known")) == known ? 0 : 1;
}

TEST(RegisteredNameTest, GivesOneNumberToOneNameWhileThereAreNumbers)
{
    EXPECT_EQ(RegisterClipboardFormat("") + RegisterClipboardFormat(nullptr), 0u);
    // In a process of its own, for the names would last.
    EXPECT_EXIT(_exit(exhaustNames()), testing::ExitedWithCode(0), "");
}

}  // namespace
