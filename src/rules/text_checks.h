#pragma once

#include "platform/string.h"

// What texts the rules take.
namespace orvane
{

// Characters that a text may not hold: control characters, and where there is to be one line, a line feed.
inline constexpr char const * forbiddenInLines = "\x01\x02\x03\x04\x05\x06\x07\x08\x10";
inline constexpr char const * forbiddenInLine = "\n\x01\x02\x03\x04\x05\x06\x07\x08\x10";
inline constexpr char const * blanks = " \t";

// Whether a text may hold nothing, or nothing but blanks and tabs.
enum class Blank
{
    allowed,
    onlyEmpty,
    refused
};

// The limits of one kind of text; the length counts bytes.
struct TextLimit
{
    int longest;
    char const * forbidden;
    Blank blank;
};

namespace limit
{
inline constexpr TextLimit taskName{1024, forbiddenInLine, Blank::allowed};
inline constexpr TextLimit taskComments{8192, forbiddenInLines, Blank::allowed};
inline constexpr TextLimit companyName{1024, forbiddenInLine, Blank::refused};
inline constexpr TextLimit line{1024, forbiddenInLine, Blank::onlyEmpty};
inline constexpr TextLimit lines{1024, forbiddenInLines, Blank::onlyEmpty};
}  // namespace limit

// Whether all characters are of the set, as those of an empty text are.
inline bool isEntirelyComposedOf(CString const & text, char const * set)
{
    return text.SpanIncluding(set).GetLength() == text.GetLength();
}

inline bool accepts(TextLimit const & limit, CString const & text)
{
    if (text.GetLength() > limit.longest || text.FindOneOf(limit.forbidden) >= 0) return false;
    if (limit.blank == Blank::allowed || (limit.blank == Blank::onlyEmpty && text.IsEmpty())) return true;
    return !isEntirelyComposedOf(text, blanks);
}

}  // namespace orvane
