#pragma once

#include <deque>
#include <map>
#include <ostream>
#include <tuple>
#include <vector>

#include "platform/guid.h"
#include "platform/host.h"

namespace orvane
{

// A box as the user would have seen it.
struct ShownBox
{
    CString text;
    CString caption;
    unsigned flags;
    CWnd * owner = nullptr;

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

    std::vector<Notice> notices;
    std::vector<int> beeps;
    std::map<std::tuple<CWnd const *, int, int>, ControlValue> properties;  // by control, number and index
    int writes = 0;
    std::vector<int> methods;  // that were called on controls
    std::vector<_GUID> controlClasses;
    std::map<CWnd const *, Rectangle> rectangles;
    int menuChanges = 0;
    bool isMouseButtonDown = false;
    unsigned long buttonFace = 0xC0C0C0;

    int messageBox(CString const & text, CString const & caption, unsigned flags) override
    {
        return close({text, caption, flags});
    }
    int ownedMessageBox(CWnd & owner, CString const & text, CString const & caption, unsigned flags) override
    {
        return close({text, caption, flags, &owner});
    }
    void showNotice(CDialog &, Notice const & notice) override { notices.push_back(notice); }
    void beep(int sound) override { beeps.push_back(sound); }
    void beginWaitCursor() override { ++waitsBegun; }
    void endWaitCursor() override { ++waitsEnded; }
    void updateAllDialogs(bool everything) override { updates.push_back(everything); }
    std::int64_t currentTime() override { return now; }
    ControlValue readControl(CWnd const & control, int property, int index) override
    {
        return properties[{&control, property, index}];
    }
    void writeControl(CWnd & control, int property, int index, ControlValue const & value) override
    {
        properties[{&control, property, index}] = value;
        ++writes;
    }
    void callControl(CWnd &, int method) override { methods.push_back(method); }
    bool createControl(CWnd &, _GUID const & controlClass, Rectangle const &, CWnd *, int) override
    {
        controlClasses.push_back(controlClass);
        return true;
    }
    Rectangle windowRectangle(CWnd const & window) override { return rectangles[&window]; }
    void menuChanged(CMenu const &) override { ++menuChanges; }
    bool isLeftMouseButtonDown() override { return isMouseButtonDown; }
    unsigned long systemColor(int) override { return buttonFace; }

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
