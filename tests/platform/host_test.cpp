#include "platform/host.h"

#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "platform/terminal_host.h"
#include "tests/support/recording_host.h"

namespace
{

using orvane::CRecordingHost;
using orvane::CTerminalHost;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

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
}

}  // namespace
