#pragma once

#include <cstdarg>

#include "platform/host.h"

// Messages to the user, in boxes of the host. `warning` shows a text with OK; `promptYesNo` asks a
// question, and is true when the answer is Yes.
//
// With one argument, that is the text itself, composed as it may be: "%%" in it shows as "%", every
// other "%" as it stands. With more, the first is a format of printf, which the compiler checks. The
// result may be of any length.

namespace orvane
{

// The caption of every box.
inline constexpr char const * messageCaption = "Tessel Orvane Schedule";

// Shows a text that is already as the user shall read it; the answer is one of `answer`.
int showBox(CString const & text, unsigned flags);
[[gnu::format(printf, 2, 0)]] int showFormattedBox(unsigned flags, char const * format, std::va_list arguments);

// The text as a format without arguments gives it, with no other "%" taken for a directive.
CString withSinglePercents(CString text);

}  // namespace orvane

void warning(CString const & text);
bool promptYesNo(CString const & text);

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
