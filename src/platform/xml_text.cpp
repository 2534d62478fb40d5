#include "platform/xml_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/saturate.h"

namespace orvane
{

namespace
{

struct Entity
{
    char const * character;
    char const * text;
};

// In the order of replacement, both ways.
constexpr Entity entities[] = {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&apos;"}};
constexpr std::string_view whitespace = " \t\n\v\f\r";

// Takes a number off the front of the text. A plus sign, which from_chars does not know, is passed over.
template <class Number>
std::from_chars_result takeNumber(std::string_view & text, Number & value)
{
    text.remove_prefix(std::min(text.find_first_not_of(whitespace), text.size()));
    bool const hasPlus = text.starts_with('+') && text.size() > 1 && text[1] != '-';
    if (hasPlus) text.remove_prefix(1);
    std::from_chars_result const result = std::from_chars(text.data(), text.data() + text.size(), value);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return result;
}

template <std::floating_point Number>
std::optional<Number> takeFraction(std::string_view & text)
{
    Number value;
    bool const isNumber = takeNumber(text, value).ec == std::errc() && std::isfinite(value);
    return isNumber ? std::optional(value) : std::nullopt;
}

template <std::floating_point Number>
bool parseFraction(std::string_view text, Number & value)
{
    std::optional<Number> const found = takeFraction<Number>(text);
    value = found.value_or(value);
    return found.has_value();
}

bool takeComma(std::string_view & text)
{
    bool const isComma = text.starts_with(',');
    if (isComma) text.remove_prefix(1);
    return isComma;
}

// A component, and the comma before it unless it is the first.
bool takeComponent(std::string_view & text, float & component, bool first)
{
    if (!first && !takeComma(text)) return false;
    std::optional<float> const found = takeFraction<float>(text);
    component = std::clamp(found.value_or(0.0F), 0.0F, 1.0F);
    return found.has_value();
}

void appendComponent(CString & text, float component)
{
    // Room for the largest float, its sign and six places.
    std::array<char, 64> digits;
    char const * const end =
        std::to_chars(digits.begin(), digits.end(), double{component}, std::chars_format::fixed, 6).ptr;
    text += CString(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

}  // namespace

CString withEntities(CString text)
{
    if (text.FindOneOf("&<>\"'") < 0) return text;
    for (Entity const & entity : entities) text.Replace(entity.character, entity.text);
    return text;
}

CString withoutEntities(CString text)
{
    if (text.Find('&') < 0) return text;
    for (Entity const & entity : entities) text.Replace(entity.text, entity.character);
    return text;
}

CString withParagraphLines(CString const & text)
{
    std::string lines(text.view());
    auto const bothBlank = [](char a, char b) { return a == ' ' && b == ' '; };
    lines.erase(std::unique(lines.begin(), lines.end(), bothBlank), lines.end());
    CString result{std::string_view(lines)};
    result.Replace("+", "\n+");
    return result;
}

bool parseNumber(std::string_view text, int & value)
{
    bool const isNegative = text.substr(std::min(text.find_first_not_of(whitespace), text.size())).starts_with('-');
    int number = 0;
    std::errc const error = takeNumber(text, number).ec;
    if (error == std::errc::invalid_argument) return false;
    using Limits = std::numeric_limits<int>;
    bool const isBeyond = error == std::errc::result_out_of_range;
    value = isBeyond ? (isNegative ? Limits::min() : Limits::max()) : number;
    return true;
}

bool parseNumber(std::string_view text, short & value)
{
    int number = 0;
    if (!parseNumber(text, number)) return false;
    value = saturate<short>(number);
    return true;
}

bool parseNumber(std::string_view text, double & value)
{
    return parseFraction(text, value);
}

bool parseNumber(std::string_view text, float & value)
{
    return parseFraction(text, value);
}

bool parsePair(std::string_view text, double & x, double & y)
{
    std::optional<double> const first = takeFraction<double>(text);
    if (!first || !takeComma(text)) return false;
    std::optional<double> const second = takeFraction<double>(text);
    if (!second) return false;
    x = *first;
    y = *second;
    return true;
}

bool parseBool(std::string_view text, bool & value)
{
    bool const isTrue = text == "true" || text == "1";
    if (!isTrue && text != "false" && text != "0") return false;
    value = isTrue;
    return true;
}

char const * boolText(bool value)
{
    return value ? "true" : "false";
}

CString colorText(CColor const & color)
{
    CString text;
    appendComponent(text, color.red());
    text += ", ";
    appendComponent(text, color.green());
    text += ", ";
    appendComponent(text, color.blue());
    return text;
}

bool parseColor(std::string_view text, CColor & color)
{
    float components[3];
    for (float & component : components)
        if (!takeComponent(text, component, &component == components)) return false;
    color = CColor(components[0], components[1], components[2]);
    return true;
}

std::vector<std::string_view> wordsOf(std::string_view text)
{
    constexpr std::string_view separators = " \r\n\t";
    std::vector<std::string_view> words;
    std::size_t first = text.find_first_not_of(separators);
    while (first != text.npos)
    {
        std::size_t const end = std::min(text.find_first_of(separators, first), text.size());
        words.push_back(text.substr(first, end - first));
        first = text.find_first_not_of(separators, end);
    }
    return words;
}

}  // namespace orvane

int charToNumber(char digit)
{
    if (digit >= '1' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return 0;
}
