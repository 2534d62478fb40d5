#pragma once

#include <deque>
#include <ostream>
#include <vector>

#include "platform/host.h"

namespace orvane
{

// A box as the user would have seen it.
struct ShownBox
{
    CString text;
    CString caption;
    unsigned flags;

    friend bool operator==(ShownBox const &, ShownBox const &) = default;
    friend std::ostream & operator<<(std::ostream & out, ShownBox const & box)
    {
        return out << box.caption << " (0x" << std::hex << box.flags << std::dec << "): " << box.text;
    }
};

// The desktop in tests, from its construction to its destruction: it remembers what it was asked for.
// Questions take the given answers in turn, and No when these have run out; other boxes are closed by OK.
class CRecordingHost : public IHost
{
public:
    CRecordingHost() : former(setHost(this)) {}
    ~CRecordingHost() override { setHost(former); }
    CRecordingHost(CRecordingHost const &) = delete;
    CRecordingHost & operator=(CRecordingHost const &) = delete;

    std::vector<ShownBox> boxes;
    std::deque<int> answers;
    int waitsBegun = 0;
    int waitsEnded = 0;
    std::vector<bool> updates;  // what each update was called with
    std::int64_t now = 1'000'000'000;

    int messageBox(CString const & text, CString const & caption, unsigned flags) override
    {
        return close({text, caption, flags});
    }
    void beginWaitCursor() override { ++waitsBegun; }
    void endWaitCursor() override { ++waitsEnded; }
    void updateAllDialogs(bool everything) override { updates.push_back(everything); }
    std::int64_t currentTime() override { return now; }

private:
    int close(ShownBox const & box)
    {
        boxes.push_back(box);
        if (!box::asks(box.flags)) return answer::ok;
        if (answers.empty()) return answer::no;
        int const reply = answers.front();
        answers.pop_front();
        return reply;
    }

    IHost * former;
};

}  // namespace orvane
