#pragma once

#include <cstdint>

#include "platform/string.h"
#include "platform/window.h"

class CDialog;
class CMenu;
struct _GUID;

namespace orvane
{

// What a box looks like: the flags that a host receives.
namespace box
{
constexpr unsigned warning = 0x2040;   // information, one button OK
constexpr unsigned question = 0x2024;  // Yes and No
constexpr unsigned noAccess = 0x2010;  // refusal, one button OK

// Whether a box with these flags asks for Yes or No.
constexpr bool asks(unsigned flags)
{
    return (flags & 0xF) == 4;
}
}  // namespace box

// The button with which a box was closed.
namespace answer
{
constexpr int ok = 1, yes = 6, no = 7;
}

// Sounds and colours that a desktop keeps for all its programs.
namespace system_sound
{
constexpr int exclamation = 0x30;
}
namespace system_color
{
constexpr int buttonFace = 15;
}

// A text of one line that is shown, centred, in a box of its own and closes by itself. Colours are 0x00BBGGRR.
struct Notice
{
    CString text;
    Rectangle box;
    unsigned long background;
    unsigned long textColor;
    int milliseconds;
    int timer;  // the number of the timer that closes it
};

// What a desktop gives to the library. An application derives its own and hands it to setHost. Only
// the box must be given; every other member has an answer that fits a program without a desktop.
// Everything but the clock is called on the thread of the user interface.
class IHost
{
public:
    virtual ~IHost() = default;

    // Shows a text, waits until the user closes the box, and tells the button: one of `answer`.
    virtual int messageBox(CString const & text, CString const & caption, unsigned flags) = 0;

    // The same, in front of a window that waits with it.
    virtual int ownedMessageBox([[maybe_unused]] CWnd & owner, CString const & text, CString const & caption, unsigned flags)
    {
        return messageBox(text, caption, flags);
    }
    // Shows a notice in a dialog, and returns when its time is over or the user closed it.
    virtual void showNotice([[maybe_unused]] CDialog & dialog, [[maybe_unused]] Notice const & notice) {}
    // One of `system_sound`.
    virtual void beep([[maybe_unused]] int sound) {}

    // The user has to wait from the first to the second. Calls come in pairs and do not nest.
    virtual void beginWaitCursor() {}
    virtual void endWaitCursor() {}

    // The model has changed, and open views that are no CModelessDialog should read it again: all of
    // it when `everything`, otherwise what its changed flags show.
    virtual void updateAllDialogs([[maybe_unused]] bool everything) {}

    // Seconds since the beginning of 1970, universal time.
    virtual std::int64_t currentTime();

    // The clipboard's plain text. False when it cannot be set, or holds none. At first it is one that this
    // process alone sees.
    virtual bool setClipboardText(CString const & text);
    virtual bool getClipboardText(CString & text);

    // What controls show. Without a desktop there are none: every property reads as 0, and what is written
    // or called goes nowhere.
    virtual ControlValue readControl([[maybe_unused]] CWnd const & control, [[maybe_unused]] int property,
                                     [[maybe_unused]] int index)
    {
        return {};
    }
    virtual void writeControl([[maybe_unused]] CWnd & control, [[maybe_unused]] int property, [[maybe_unused]] int index,
                              [[maybe_unused]] ControlValue const & value)
    {
    }
    virtual void callControl([[maybe_unused]] CWnd & control, [[maybe_unused]] int method) {}
    // Makes the control of a class in its parent, which may be null; false when it cannot be made.
    virtual bool createControl([[maybe_unused]] CWnd & control, [[maybe_unused]] _GUID const & controlClass,
                               [[maybe_unused]] Rectangle const & box, [[maybe_unused]] CWnd * parent,
                               [[maybe_unused]] int id)
    {
        return false;
    }
    virtual Rectangle windowRectangle([[maybe_unused]] CWnd const & window) { return {}; }
    // A menu has changed and should be shown anew.
    virtual void menuChanged([[maybe_unused]] CMenu const & menu) {}
    virtual bool isLeftMouseButtonDown() { return false; }
    // One of `system_color` as 0x00BBGGRR; grey unless the desktop has another.
    virtual unsigned long systemColor([[maybe_unused]] int number) { return 0xC0C0C0; }
};

// The desktop in use: the one given last, at first the terminal.
IHost & host();

// Puts a desktop in the place of the present one and gives that back; null stands for the terminal. The
// host stays the caller's, and must live until it is replaced.
IHost * setHost(IHost * host);

}  // namespace orvane

// The wait cursor is shown while at least one of these lives.
class CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(CWaitCursor const &) = delete;
    CWaitCursor & operator=(CWaitCursor const &) = delete;

    // How many live now.
    static int nesting();
};
