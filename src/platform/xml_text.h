#pragma once

#include <string_view>
#include <vector>

#include "platform/color.h"
#include "platform/string.h"

// The forms that values take in a document. Numbers are those of the C locale. What reads a value leaves it alone and
// answers false when the text does not hold one.

namespace orvane
{

// The characters that XML reserves as entities, and back. Going back takes one entity after the other over the whole
// text, so that "&amp;lt;" becomes "<".
CString withEntities(CString text);
CString withoutEntities(CString text);
// A text that was a paragraph: runs of blanks become one, and each "+" begins a line.
CString withParagraphLines(CString const & text);

// Leading blanks are passed over, and what follows the number. A whole number stops at the ends of its type; a
// fraction that is beyond its type is none.
bool parseNumber(std::string_view text, int & value);
bool parseNumber(std::string_view text, short & value);
bool parseNumber(std::string_view text, double & value);
bool parseNumber(std::string_view text, float & value);
// "x, y", where the blank may be missing.
bool parsePair(std::string_view text, double & x, double & y);
bool parseBool(std::string_view text, bool & value);
char const * boolText(bool value);

// "red, green, blue", six places each.
CString colorText(CColor const & color);
bool parseColor(std::string_view text, CColor & color);

// The words between blanks and line ends.
std::vector<std::string_view> wordsOf(std::string_view text);

}  // namespace orvane

// The value of a hexadecimal digit; 0 for any other character.
int charToNumber(char digit);
