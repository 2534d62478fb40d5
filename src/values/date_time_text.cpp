#include "values/date_time.h"

#include "config/project_config.h"
#include "platform/string.h"

namespace
{

constexpr char const * conciseTime = "%H:%M %d/%m/%y";

// The first two characters, however many bytes they take in the language of the locale.
CString firstTwo(CString const & text)
{
    int characters = 0;
    for (int i = 0; i < text.GetLength(); ++i)
    {
        bool const isContinuation = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (!isContinuation && ++characters > 2) return text.Left(i);
    }
    return text;
}

CString longDate(CTime time)
{
    return firstTwo(time.Format("%a")) + time.Format(", %d %b, %Y");
}

}  // namespace

CString CProjectDate::getString() const
{
    return CProjectConfig::getDisplayTimeConcise() ? time.Format("%d/%m/%y") : longDate(time);
}

CString CProjectDate::GetDayOfWeekAsString() const
{
    constexpr char const * names[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    return names[GetDayOfWeek() - 1];
}

CString CProjectTime::getString() const
{
    return CProjectConfig::getDisplayTimeConcise() ? getLongString() : time.Format("%H:%M ") + longDate(time);
}

CString CProjectTime::getLongString() const
{
    return time.Format(conciseTime);
}
