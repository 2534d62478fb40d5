#include "platform/temp_notice.h"

#include <cmath>

#include "platform/message.h"
#include "platform/saturate.h"
#include "platform/string_table.h"
#include "platform/text_measure.h"

namespace
{

// The font of the template, 8 points on a screen of 96 dots an inch.
constexpr char const * noticeFont = "MS Sans Serif";
constexpr double noticeFontSize = 8.0 * 96 / 72;

constexpr int extraWidth = 20, extraHeight = 6;

// Texts are at most 2 GiB long, so their extent fits.
std::int64_t pixels(double extent)
{
    return static_cast<std::int64_t>(std::ceil(extent));
}

}  // namespace

CTempNotice::CTempNotice(int id, bool alert) : CTempNotice(orvane::loadString(id), alert) {}

orvane::Rectangle CTempNotice::fittedBox() const
{
    using orvane::saturate;
    orvane::Rectangle const former = getRectangle();
    std::int64_t const width = pixels(textWidth(text, noticeFont, noticeFontSize)) + extraWidth;
    std::int64_t const height = pixels(orvane::textHeight(text, noticeFont, noticeFontSize)) + extraHeight;
    std::int64_t const left = (std::int64_t{former.left} + former.right - width) / 2;
    return {saturate<int>(left), former.top, saturate<int>(left + width), saturate<int>(former.top + height)};
}

int CTempNotice::DoModal()
{
    constexpr unsigned long yellowish = 0xDCFFFF, reddish = 0x8080FF, black = 0;
    orvane::Rectangle const box = fittedBox();
    if (alert) orvane::host().beep(orvane::system_sound::exclamation);
    timerID = 1;
    orvane::host().showNotice(*this, {text, box, alert ? reddish : yellowish, black, alert ? 2000 : 1000, timerID});
    timerID = 0;
    return orvane::answer::ok;
}

void showTempNotice(int id, bool alert)
{
    CTempNotice(id, alert).DoModal();
}

void howTempNotice(CString const & text)
{
    CTempNotice(orvane::withSinglePercents(text), false).DoModal();
}

void orvane::showFormattedNotice(char const * format, std::va_list arguments)
{
    CString text;
    text.FormatV(format, arguments);
    CTempNotice(text, false).DoModal();
}
