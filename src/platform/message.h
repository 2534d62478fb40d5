#pragma once

#include <cstdarg>

#include "platform/host.h"
#include "platform/string_table.h"

// Messages to the user, in boxes of the host. `warning` shows a text with OK; `promptYesNo` asks a
// question, and is true when the answer is Yes.
//
// With one argument, that is the text itself, composed as it may be: "%%" in it shows as "%", every
// other "%" as it stands. With more, the first is a format of printf, which the compiler checks. The
// result may be of any length. Texts by number are those of `loadString`, and show as they stand.

namespace orvane
{

// The caption of every box.
inline constexpr char const * messageCaption = "Tessel Orvane Schedule";

// Shows a text that is already as the user shall read it, in front of `owner` if there is one; the answer is
// one of `answer`.
int showBox(CString const & text, unsigned flags, CWnd * owner = nullptr);
[[gnu::format(printf, 2, 0)]] int showFormattedBox(unsigned flags, char const * format, std::va_list arguments);

// The text as a format without arguments gives it, with no other "%" taken for a directive.
CString withSinglePercents(CString text);

}  // namespace orvane

void warning(CString const & text);
bool promptYesNo(CString const & text);

void warningIDS(int id, CWnd * owner = nullptr);
bool promptYesNo(int id);
// Before a window. The text is no format: it shows as it stands.
bool promptYesNo(CWnd & owner, CString const & text);
bool promptYesNo(CWnd & owner, int id);

// Tells that what the user asked for is not there.
void notImplemented();
// Shows the system's text for the last error that a call into it left behind (errno).
void displayLastError(CString const & caption);

// Nothing; its text is for whoever reads the code.
[[gnu::format(printf, 1, 2)]] inline void DEBUG_WARNING(char const *, ...)
{
}

// Templates only so that a call with one argument prefers the functions above.
template <class = void>
[[gnu::format(printf, 1, 2)]] void warning(char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    orvane::showFormattedBox(orvane::box::warning, format, arguments);
    va_end(arguments);
}

template <class = void>
[[gnu::format(printf, 1, 2)]] bool promptYesNo(char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    int const reply = orvane::showFormattedBox(orvane::box::question, format, arguments);
    va_end(arguments);
    return reply == orvane::answer::yes;
}

inline void warning(char const * text)
{
    warning(CString(text));
}

inline bool promptYesNo(char const * text)
{
    return promptYesNo(CString(text));
}
