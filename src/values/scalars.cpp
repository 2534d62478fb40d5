#include "values/scalars.h"

#include "platform/project_xml_archive.h"
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

// Documents leave out what is not valid, and what is false or zero; a flag or a whole number that was read is valid
// whatever was found.

void CProjectBool::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    bool flag = valid && value;
    archive.attribute(name, flag, false);
    if (archive.isLoading()) *this = CProjectBool(flag);
}

void CProjectInt::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    int number = valid ? value : 0;
    archive.attribute(name, number, 0);
    if (archive.isLoading()) *this = CProjectInt(number);
}

void CProjectDouble::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    double number = valid ? value : 0;
    bool const found = archive.attribute(name, number, 0.0);
    if (!archive.isLoading()) return;
    value = number;
    valid |= found;
    changed = true;
}

void CProjectString::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    constexpr char const * mark = "[X ]";
    CString text = *this;
    text.Remove('\n');
    text.Replace("\r", mark);
    archive.attribute(name, text, "");
    if (!archive.isLoading()) return;
    text.Replace(mark, "\r\n");
    *this = text;
}

void CProjectColor::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    bool const found = archive.attribute(name, static_cast<CColor &>(*this));
    if (archive.isLoading() && found) touch();
}

void CProjectStateIndex::xmlSerialize(CProjectXMLArchive & archive)
{
    constexpr char const * tag = "ProjectStateIndex";
    if (archive.isLoading() ? !archive.isTag(tag) : !valid) return;
    archive.startEntity(tag);
    archive.attribute("index", index, 0);
    archive.attribute("acknowledged", acknowledged, false);
    archive.endEntity();
    // Documents have what follows one level further in.
    archive.indent();
    valid = true;
}
