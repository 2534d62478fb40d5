#include "values/identifiers.h"

#include <cstdlib>
#include <cstring>

#include "platform/project_xml_archive.h"

CIDBase::CIDBase() : CFlagged(true)
{
    CoCreateGuid(&guid);
}

CIDBase & CIDBase::operator=(CIDBase const & other)
{
    CFlagged::operator=(other);
    guid = other.guid;
    return *this;
}

int CIDBase::compare(CIDBase const * other) const
{
    if (!other) return 1;
    int const difference = std::memcmp(&guid, &other->guid, sizeof guid);
    return (difference > 0) - (difference < 0);
}

void CIDBase::clear()
{
    setGUID(_GUID{});
}

void CIDBase::setGUID(_GUID const & value)
{
    guid = value;
    changed = valid = true;
}

void CIDBase::setGUID(CString const & text)
{
    unsigned char bytes[sizeof guid];
    if (text.GetLength() != static_cast<int>(2 * sizeof guid)) return clear();
    for (std::size_t each = 0; each < sizeof guid; ++each)
    {
        int const at = static_cast<int>(2 * each);
        char const pair[] = {text.GetAt(at), text.GetAt(at + 1), '\0'};
        bytes[each] = static_cast<unsigned char>(std::strtol(pair, nullptr, 16));
    }
    std::memcpy(&guid, bytes, sizeof guid);
}

CString CIDBase::toString() const
{
    char text[2 * sizeof guid + 1];
    char const * const digits = "0123456789abcdef";
    char * next = text;
    for (char const character : keyBytes())
    {
        auto const byte = static_cast<unsigned char>(character);
        *next++ = byte < 0x10 ? ' ' : digits[byte >> 4];
        *next++ = digits[byte & 0xF];
    }
    return CString(text, static_cast<int>(2 * sizeof guid));
}

void CIDBase::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    archive.attribute(name, *this);
}

// Documents have what follows one level further in.
void CIDBase::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity(tagName());
    xmlSerialize(archive, "id");
    archive.endEntity();
    archive.indent();
}

void CIDBase::initialize(bool & collect, bool & issue, GuidArray & issued, GuidArray & toIssue)
{
    if (collect)
    {
        issued.Add(guid);
    }
    else if (issue && !toIssue.IsEmpty())
    {
        guid = toIssue.GetAt(0);
        toIssue.RemoveAt(0);
    }
}

void CIDBase::setCollectIssuedIDs(bool flag, bool & collect, bool &, GuidArray & issued)
{
    collect = flag;
    if (flag) issued.RemoveAll();
}

void CIDBase::setIssueIDs(bool flag, bool &, bool & issue, GuidArray &, GuidArray &)
{
    issue = flag;
}
