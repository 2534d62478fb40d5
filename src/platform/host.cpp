#include "platform/host.h"

#include <optional>

#include "platform/clock.h"
#include "platform/terminal_host.h"

namespace
{

// Constant-initialised: both serve static objects of an application, in whatever order they come.
orvane::IHost * given = nullptr;
int waiting = 0;

std::optional<CString> & ownClipboard()
{
    static auto & text = *new std::optional<CString>;
    return text;
}

}  // namespace

namespace orvane
{

std::int64_t IHost::currentTime()
{
    return nowSeconds();
}

bool IHost::setClipboardText(CString const & text)
{
    ownClipboard() = text;
    return true;
}

bool IHost::getClipboardText(CString & text)
{
    if (!ownClipboard()) return false;
    text = *ownClipboard();
    return true;
}

IHost & host()
{
    // Never destroyed, since destructors of static objects may still have something to say.
    static CTerminalHost & terminal = *new CTerminalHost;
    return given ? *given : terminal;
}

IHost * setHost(IHost * host)
{
    IHost * const former = given;
    if (former == host) return former;

    // Neither host is left with half of a pair.
    if (waiting > 0) orvane::host().endWaitCursor();
    given = host;
    if (waiting > 0) orvane::host().beginWaitCursor();
    return former;
}

}  // namespace orvane

CWaitCursor::CWaitCursor()
{
    if (waiting == 0) orvane::host().beginWaitCursor();
    ++waiting;
}

CWaitCursor::~CWaitCursor()
{
    if (--waiting == 0) orvane::host().endWaitCursor();
}

int CWaitCursor::nesting()
{
    return waiting;
}
