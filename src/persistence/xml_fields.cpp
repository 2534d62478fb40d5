#include "persistence/xml_attribute.h"

#include <algorithm>
#include <cstring>

#include "config/text_tools.h"
#include "platform/xml_text.h"
#include "values/sorted_word_array.h"

namespace
{

// The digits of an identifier, from the last byte to the first.
struct Hexadecimal
{
    std::string_view view() const { return {digits, sizeof digits}; }
    char digits[2 * sizeof(_GUID)];
};

Hexadecimal hexadecimal(CIDBase const & id)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string_view const bytes = id.keyBytes();
    Hexadecimal text;
    char * next = text.digits;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
    {
        auto const number = static_cast<unsigned char>(*byte);
        *next++ = digits[number >> 4];
        *next++ = digits[number & 0xF];
    }
    return text;
}

}  // namespace

// ---- writing -------------------------------------------------------------------------------------------

// Answers 1, for what was written.
int CProjectXMLArchive::putAttribute(CString const & name, std::string_view value, int newLine)
{
    put({newLine ? indentation() : " ", name.view(), " = \"", value, newLine ? "\"\n" : "\""});
    return 1;
}

int CProjectXMLArchive::putText(CString const & name, CString const & value, CString const & fallback, int newLine,
                                int furtherBlanks)
{
    if (value == fallback) return 0;
    CString text = orvane::withEntities(value);
    if (text.Find('\n') >= 0) text.Replace("\n", CString("\n") + CString(indentation(furtherBlanks)));
    return putAttribute(name, text.view(), newLine);
}

void CProjectXMLArchive::putWords(CString const & name, CWordArray const & words)
{
    out(name + " = ");
    indent();
    out("\"");
    for (unsigned short const word : words) putLine(std::to_string(word));
    out("\"");
    undent();
}

int CProjectXMLArchive::attributeOut(CString const & name, CString const & value, CString const & fallback)
{
    return writing && value != fallback ? putAttribute(name, value.view(), 1) : 0;
}

// ---- both directions -----------------------------------------------------------------------------------

// An archive that was not opened leaves every value alone.
template <class Value>
int CProjectXMLArchive::orFallback(int found, Value & value, Value const & fallback) const
{
    if (!found && reading) value = fallback;
    return found;
}

int CProjectXMLArchive::attribute(CString const & name, CString & value, CString const & fallback, int newLine)
{
    if (writing) return putText(name, value, fallback, newLine, 0);
    int const found = findAttribute(name, value);
    if (found) value = orvane::withoutEntities(value);
    return orFallback(found, value, fallback);
}

int CProjectXMLArchive::attributeParagraph(CString const & name, CString & value, CString const & fallback)
{
    // Under the first character of the value, but for its quote.
    int const column = name.GetLength() + 3;
    if (writing) return putText(name, value, fallback, 1, column);
    int const found = findAttribute(name, value);
    if (found) value = orvane::withParagraphLines(orvane::withoutEntities(value));
    return orFallback(found, value, fallback);
}

template <class Number>
int CProjectXMLArchive::number(CString const & name, Number & value, Number fallback, int newLine)
{
    if (writing)
        return value == fallback ? 0 : putAttribute(name, convertToNumber(static_cast<double>(value)).view(), newLine);
    return orFallback(find(name, value), value, fallback);
}

int CProjectXMLArchive::attribute(CString const & name, int & value, int fallback, int newLine)
{
    return number(name, value, fallback, newLine);
}

int CProjectXMLArchive::attribute(CString const & name, short & value, short fallback)
{
    return number(name, value, fallback, 1);
}

int CProjectXMLArchive::attribute(CString const & name, double & value, double fallback, int newLine)
{
    return number(name, value, fallback, newLine);
}

int CProjectXMLArchive::attribute(CString const & name, float & value, float fallback, int newLine)
{
    return number(name, value, fallback, newLine);
}

int CProjectXMLArchive::attribute(CString const & name, bool & value, bool fallback)
{
    if (writing) return value == fallback ? 0 : putAttribute(name, orvane::boolText(value), 1);
    return orFallback(find(name, value), value, fallback);
}

int CProjectXMLArchive::attributeBool(CString const & name, int & value, int fallback, int newLine)
{
    if (writing) return value == fallback ? 0 : putAttribute(name, orvane::boolText(value != 0), newLine);
    return orFallback(findBool(name, value), value, fallback);
}

int CProjectXMLArchive::attribute(CString const & name, CIDBase & value, int newLine)
{
    if (writing) return putAttribute(name, hexadecimal(value).view(), newLine);
    CString text;
    int const found = findAttribute(name, text);
    if (found) stringToHandle(text, value);
    else if (reading) value.clear();
    return found;
}

int CProjectXMLArchive::attribute(CString const & name, CColor & value)
{
    if (writing) return putAttribute(name, orvane::colorText(value).view(), 1);
    CString text;
    return findAttribute(name, text) && orvane::parseColor(text.view(), value);
}

template <class Words>
int CProjectXMLArchive::words(CString const & name, Words & value, bool sorted)
{
    if (writing)
    {
        if (value.IsEmpty()) return 0;
        if (value.GetSize() == 1) return putAttribute(name, convertToNumber(value.GetAt(0)).view(), 1);
        putWords(name, value);
        return 1;
    }
    if (!reading) return 0;
    std::vector<unsigned short> found;
    int const present = findWords(name, found);
    if (sorted) std::ranges::sort(found);
    value.RemoveAll();
    for (unsigned short const word : found) value.Add(word);
    return present;
}

int CProjectXMLArchive::attribute(CString const & name, CWordArray & value)
{
    return words(name, value, false);
}

int CProjectXMLArchive::attribute(CString const & name, CSortedWordArray & value)
{
    return words(name, value, true);
}

int CProjectXMLArchive::attribute(CString const &, unsigned char *)
{
    return 1;
}

// ---- reading -------------------------------------------------------------------------------------------

int CProjectXMLArchive::findAttribute(CString const & name, CString & value) const
{
    for (CAttribute const & attribute : *attributes)
    {
        if (!(attribute.getName() == name)) continue;
        value = attribute.getValue();
        return 1;
    }
    return 0;
}

namespace
{

template <class Value>
int findBy(bool (*parse)(std::string_view, Value &), CProjectXMLArchive const & archive, CString const & name,
           Value & value)
{
    CString text;
    return archive.findAttribute(name, text) && parse(text.view(), value);
}

}  // namespace

int CProjectXMLArchive::find(CString const & name, short & value) const
{
    return findBy(orvane::parseNumber, *this, name, value);
}

int CProjectXMLArchive::find(CString const & name, int & value) const
{
    return findBy(orvane::parseNumber, *this, name, value);
}

int CProjectXMLArchive::find(CString const & name, double & value) const
{
    return findBy(orvane::parseNumber, *this, name, value);
}

int CProjectXMLArchive::find(CString const & name, float & value) const
{
    return findBy(orvane::parseNumber, *this, name, value);
}

int CProjectXMLArchive::find(CString const & name, bool & value) const
{
    return findBy(orvane::parseBool, *this, name, value);
}

int CProjectXMLArchive::findBool(CString const & name, int & value) const
{
    bool flag = false;
    int const found = find(name, flag);
    if (found) value = flag;
    return found;
}

bool CProjectXMLArchive::findWords(CString const & name, std::vector<unsigned short> & words) const
{
    CString text;
    bool const present = findAttribute(name, text) != 0;
    for (std::string_view const word : orvane::wordsOf(text.view()))
    {
        int number = 0;
        if (!orvane::parseNumber(word, number)) continue;
        words.push_back(static_cast<unsigned short>(std::clamp(number, 0, 0xFFFF)));
    }
    return present;
}

// ---- forms ---------------------------------------------------------------------------------------------

CString CProjectXMLArchive::idToString(CIDBase const & id)
{
    return CString(hexadecimal(id).view());
}

void CProjectXMLArchive::stringToHandle(CString const & text, CIDBase & id)
{
    unsigned char bytes[sizeof(_GUID)];
    int at = 0;
    for (auto byte = std::rbegin(bytes); byte != std::rend(bytes); ++byte, at += 2)
        *byte = static_cast<unsigned char>(charToNumber(text.GetAt(at)) << 4 | charToNumber(text.GetAt(at + 1)));
    _GUID guid;
    std::memcpy(&guid, bytes, sizeof guid);
    id.setGUID(guid);
}

int CProjectXMLArchive::getXYPair(CString const & text, int length, int & position, double & x, double & y)
{
    constexpr std::size_t longestToken = 255;
    std::string_view const list = text.view().substr(0, static_cast<std::size_t>(std::max(length, 0)));
    std::size_t const first = list.find_first_not_of(' ', static_cast<std::size_t>(std::max(position, 0)));
    if (first == list.npos) return 0;
    std::string_view const token = list.substr(first, list.find(' ', first) - first);
    position = static_cast<int>(first + token.size());
    return token.size() <= longestToken && orvane::parsePair(token, x, y);
}
