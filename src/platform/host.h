#pragma once

#include <cstdint>

#include "platform/string.h"

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

// What a desktop gives to the library. An application derives its own and hands it to setHost. Only
// the box must be given; every other member has an answer that fits a program without a desktop.
// Everything but the clock is called on the thread of the user interface.
class IHost
{
public:
    virtual ~IHost() = default;

    // Shows a text, waits until the user closes the box, and tells the button: one of `answer`.
    virtual int messageBox(CString const & text, CString const & caption, unsigned flags) = 0;

    // The user has to wait from the first to the second. Calls come in pairs and do not nest.
    virtual void beginWaitCursor() {}
    virtual void endWaitCursor() {}

    // The model has changed, and open views that are no CModelessDialog should read it again: all of
    // it when `everything`, otherwise what its changed flags show.
    virtual void updateAllDialogs([[maybe_unused]] bool everything) {}

    // Seconds since the beginning of 1970, universal time.
    virtual std::int64_t currentTime();
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
