#pragma once

#include <cstdarg>

#include "platform/string.h"

// Words and numbers in texts.

// Up to the first blank, or the whole text when it has none.
CString getFirstWord(CString const & text);
// Takes the first word off a text with the blank behind it, and answers it.
CString removeFirstWord(CString & text);

// A number as documents have it: with six places, without an exponent from 0.01 to 1000 and with one beyond, then
// shortened by removeTrailing0sAndDigit. 0.5 is "0.5" and 1500 is "1.5e+3", in every locale.
CString convertToNumber(double number);
// Takes trailing zeros off a number, and then a point at its end. Before an exponent likewise; the exponent loses
// its leading zeros and keeps its sign, and goes when it is zero. The number is taken to have a point: "100"
// becomes "1".
void removeTrailing0sAndDigit(CString & number);

namespace orvane
{

[[gnu::format(printf, 2, 0)]] void appendFormatted(CString & text, char const * format, std::va_list arguments);

}  // namespace orvane

// Appends a text. One argument is the text itself, in which "%%" becomes "%"; with more, the first is a format, which
// the compiler checks.
void stringAppend(CString & text, CString const & more);

// A template only so that a call with one argument prefers the functions beside it.
template <class = void>
[[gnu::format(printf, 2, 3)]] void stringAppend(CString & text, char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    orvane::appendFormatted(text, format, arguments);
    va_end(arguments);
}

inline void stringAppend(CString & text, char const * more)
{
    stringAppend(text, CString(more));
}
