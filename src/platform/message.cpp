#include "platform/message.h"

namespace orvane
{

int showBox(CString const & text, unsigned flags)
{
    return host().messageBox(text, messageCaption, flags);
}

int showFormattedBox(unsigned flags, char const * format, std::va_list arguments)
{
    CString text;
    text.FormatV(format, arguments);
    return showBox(text, flags);
}

CString withSinglePercents(CString text)
{
    text.Replace("%%", "%");
    return text;
}

}  // namespace orvane

void warning(CString const & text)
{
    orvane::showBox(orvane::withSinglePercents(text), orvane::box::warning);
}

bool promptYesNo(CString const & text)
{
    return orvane::showBox(orvane::withSinglePercents(text), orvane::box::question) == orvane::answer::yes;
}
