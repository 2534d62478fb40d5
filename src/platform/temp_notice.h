#pragma once

#include <cstdarg>

#include "platform/dialog.h"

// A text that is shown for a second, or with `alert` and a sound for two, and needs no answer.
class CTempNotice : public CDynamic<CTempNotice, CDialog>
{
public:
    // A text by its number in the table of texts.
    CTempNotice(int id, bool alert);
    CTempNotice(CString const & text, bool alert) : CDynamic(layout), text(text), alert(alert) {}

    int DoModal() override;

private:
    static constexpr int layout = 278;

    // As large as the text needs, centred where the template stands; its upper edge stays.
    orvane::Rectangle fittedBox() const;

    CString text;
    int timerID = 0;  // of the timer while it runs
    bool alert;
};

void showTempNotice(int id, bool alert);

// Without alert. One argument is the text itself; with more, the first is a format, as for `warning`.
void howTempNotice(CString const & text);

namespace orvane
{

[[gnu::format(printf, 1, 0)]] void showFormattedNotice(char const * format, std::va_list arguments);

}  // namespace orvane

template <class = void>
[[gnu::format(printf, 1, 2)]] void howTempNotice(char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    orvane::showFormattedNotice(format, arguments);
    va_end(arguments);
}

inline void howTempNotice(char const * text)
{
    howTempNotice(CString(text));
}
