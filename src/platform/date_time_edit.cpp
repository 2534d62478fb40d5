#include "platform/date_time_edit.h"

#include "platform/host.h"

_GUID const & CDateTimeEdit::GetClsid()
{
    static constexpr _GUID id{0xD5EA92B7, 0x4F2E, 0x412A, {0xBF, 0x26, 0x2A, 0x0C, 0xC6, 0x8F, 0x65, 0x67}};
    return id;
}

bool CDateTimeEdit::Create(orvane::Rectangle const & box, CWnd * parent, int id)
{
    return orvane::host().createControl(*this, GetClsid(), box, parent, id);
}

void CDateTimeEdit::Reset()
{
    orvane::host().callControl(*this, reset);
}
