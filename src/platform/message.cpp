#include "platform/message.h"

#include <cerrno>
#include <system_error>

namespace orvane
{

int showBox(CString const & text, unsigned flags, CWnd * owner)
{
    return owner ? host().ownedMessageBox(*owner, text, messageCaption, flags)
                 : host().messageBox(text, messageCaption, flags);
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

void warningIDS(int id, CWnd * owner)
{
    orvane::showBox(orvane::loadString(id), orvane::box::warning, owner);
}

bool promptYesNo(int id)
{
    return orvane::showBox(orvane::loadString(id), orvane::box::question) == orvane::answer::yes;
}

bool promptYesNo(CWnd & owner, CString const & text)
{
    return orvane::showBox(text, orvane::box::question, &owner) == orvane::answer::yes;
}

bool promptYesNo(CWnd & owner, int id)
{
    return promptYesNo(owner, orvane::loadString(id));
}

void notImplemented()
{
    warning("This feature is unavailable in this version");
}

void displayLastError(CString const & caption)
{
    CString const text(std::system_category().message(errno));
    orvane::host().messageBox(text, caption, orvane::box::warning);
}
