#include "config/text_tools.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "platform/message.h"

namespace
{

void shortenFraction(CString & number)
{
    number.TrimRight("0");
    if (number.Right(1) == ".") number = number.Left(number.GetLength() - 1);
}

// "e+03" as "e+3"; nothing for "e+00".
CString shortenedExponent(CString const & exponent)
{
    int const digits = exponent[1] == '+' || exponent[1] == '-' ? 2 : 1;
    CString value = exponent.Mid(digits);
    value.TrimLeft("0");
    return value.IsEmpty() ? CString() : exponent.Left(digits) + value;
}

}  // namespace

CString getFirstWord(CString const & text)
{
    return text.SpanExcluding(" ");
}

CString removeFirstWord(CString & text)
{
    CString const word = getFirstWord(text);
    text.Delete(0, word.GetLength() + 1);
    return word;
}

CString convertToNumber(double number)
{
    constexpr int places = 6;
    double const size = std::abs(number);
    auto const form = size >= 0.01 && size <= 1000 ? std::chars_format::fixed : std::chars_format::scientific;
    // By the standard's own conversion, which knows no locale.
    std::array<char, 32> digits;
    char const * const end = std::to_chars(digits.begin(), digits.end(), number, form, places).ptr;
    CString text(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
    removeTrailing0sAndDigit(text);
    return text;
}

void removeTrailing0sAndDigit(CString & number)
{
    int const found = number.Find('e', 1);
    int const behindMantissa = found < 0 ? number.GetLength() : found;
    CString const exponent = number.Mid(behindMantissa);
    number = number.Left(behindMantissa);
    shortenFraction(number);
    number += shortenedExponent(exponent);
}

void orvane::appendFormatted(CString & text, char const * format, std::va_list arguments)
{
    CString more;
    more.FormatV(format, arguments);
    text += more;
}

void stringAppend(CString & text, CString const & more)
{
    text += orvane::withSinglePercents(more);
}
