#include "platform/controls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "platform/host.h"

namespace
{

template <class T>
void writeIfChanged(CWnd & window, int property, T const & value)
{
    if (window.getProperty<T>(property) != value) window.setProperty(property, value);
}

template <class Number, class... Form>
CString decimal(Number number, Form... form)
{
    // The longest: the smallest float has 45 places and more behind the point.
    std::array<char, 64> digits;
    char const * const end = std::to_chars(digits.begin(), digits.end(), number, form...).ptr;
    return CString(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

}  // namespace

void setWindowTextIfChanged(CWnd & window, CString const & text)
{
    writeIfChanged(window, orvane::property::text, text);
}

void setWindowTextIfChanged(CWnd & window, CString const & text, CString const & behind)
{
    setWindowTextIfChanged(window, text + behind);
}

void setWindowTextIfChanged(CWnd & window, int number)
{
    setWindowTextIfChanged(window, decimal(number));
}

void setWindowTextIfChanged(CWnd & window, float number)
{
    setWindowTextIfChanged(window, decimal(number, std::chars_format::fixed));
}

void setCurSelIfChanged(CWnd & list, int position)
{
    writeIfChanged(list, orvane::property::selection, position);
}

void enableWindowIfChanged(CWnd & window, bool enabled)
{
    writeIfChanged(window, orvane::property::enabled, int{enabled});
}

void setCheckIfChanged(CWnd & button, int check)
{
    writeIfChanged(button, orvane::property::check, check);
}

bool overlappingWindows(CWnd const & a, CWnd const & b)
{
    orvane::Rectangle const first = a.getRectangle(), second = b.getRectangle();
    return std::max(first.left, second.left) < std::min(first.right, second.right) &&
           std::max(first.top, second.top) < std::min(first.bottom, second.bottom);
}

bool leftMouseButtonPressed()
{
    return orvane::host().isLeftMouseButtonDown();
}

bool setStringToClipboard(CString const & text)
{
    return orvane::host().setClipboardText(static_cast<char const *>(text));
}

bool getStringFromClipboard(CString & text)
{
    return orvane::host().getClipboardText(text);
}
