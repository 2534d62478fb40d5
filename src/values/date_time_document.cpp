#include "values/date_time.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "platform/project_xml_archive.h"
#include "platform/xml_text.h"

namespace
{

// Writes the text of a value, or answers the one that was read. Empty for a value that is not valid.
template <class Value>
CString exchangeText(CProjectXMLArchive & archive, CString const & name, Value const & value)
{
    CString text = archive.isStoring() && value.isValid() ? value.getString() : CString();
    archive.attribute(name, text, "");
    return text;
}

// From 1 to 12; 13 for what is no month.
int monthOf(CString const & word)
{
    constexpr char const * months[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                       "jul", "aug", "sep", "oct", "nov", "dec"};
    auto const isWord = [&](char const * month) { return word.CompareNoCase(month) == 0; };
    return static_cast<int>(std::find_if(std::begin(months), std::end(months), isWord) - months) + 1;
}

// The first moment of a day that is told as weekday, month, day and year. The weekday is not looked at.
std::optional<CTime> dayOf(CString const & text)
{
    std::vector<std::string_view> const words = orvane::wordsOf(text.view());
    if (words.size() < 4) return std::nullopt;
    CString month(words[1]);
    month.Remove(',');
    int day = 0;
    int year = 0;
    bool const isDay =
        monthOf(month) <= 12 && orvane::parseNumber(words[2], day) && orvane::parseNumber(words[3], year);
    return isDay ? std::optional(CTime(year, monthOf(month), day, 0, 0, 0)) : std::nullopt;
}

}  // namespace

void CProjectDate::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    CString const text = exchangeText(archive, name, *this);
    if (!archive.isLoading()) return;
    std::optional<CTime> const day = dayOf(text);
    *this = day ? CProjectDate(*day) : CProjectDate();
}

void CProjectTime::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    CString const text = exchangeText(archive, name, *this);
    if (!archive.isLoading()) return;
    std::optional<CTime> const day = dayOf(text);
    *this = day ? CProjectTime(*day) : CProjectTime();
}

void CProjectTimeOfDay::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    CString const text = exchangeText(archive, name, *this);
    if (!archive.isLoading()) return;
    int hour = 0;
    *this = orvane::parseNumber(text.view(), hour) ? CProjectTimeOfDay(hour, -1) : CProjectTimeOfDay();
}

void CProjectTimeOfDaySpan::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("TimeOfDaySpan");
    start.xmlSerialize(archive, "start");
    end.xmlSerialize(archive, "finish");
    archive.endEntity();
    // Documents have what follows one level further in.
    archive.indent();
    if (!archive.isLoading()) return;
    updateValidity();
    changed = true;
}

void CProjectDuration::xmlSerialize(CProjectXMLArchive & archive, CString const & name) const
{
    if (archive.isStoring()) exchangeText(archive, name, *this);
}
