#include "values/scalars.h"

#include "values/saturate.h"

CProjectColor::operator unsigned long() const
{
    unsigned long number = 0;
    for (float const component : {blue(), green(), red()})
    {
        int const whole = orvane::saturate<std::int32_t>(component * 255.0);
        number = number << 8 | (static_cast<unsigned long>(whole) & 0xFF);
    }
    return number;
}

void CProjectString::Serialize(CProjectArchive & archive)
{
    archive.exchange(valid, static_cast<CString &>(*this));
    changed |= archive.IsLoading();
}

void CProjectColor::Serialize(CProjectArchive & archive)
{
    CColor::Serialize(archive);
    if (archive.IsLoading()) touch();
}
