#include "app/printable.h"

#include <algorithm>
#include <cwchar>

namespace orvane::app
{
namespace
{

// A character: how many bytes it takes, and how many columns; no columns for one that is not to be shown.
struct Glyph
{
    std::size_t bytes;
    int columns;
    bool isShown;
};

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

Glyph glyphAt(std::string_view text, std::size_t at)
{
    constexpr Glyph broken{1, 1, false};
    auto const lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return {1, 1, lead >= ' ' && lead != 0x7F};
    std::size_t const size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + size > text.size()) return broken;
    char32_t code = lead & (0xFFU >> (size + 1));
    for (std::size_t each = 1; each < size; ++each)
    {
        if (!isContinuation(text[at + each])) return broken;
        code = code << 6 | (static_cast<unsigned char>(text[at + each]) & 0x3FU);
    }
    // Marks that turn the direction of what follows would rearrange a line.
    bool const turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    int const width = wcwidth(static_cast<wchar_t>(code));
    return turns || width < 0 ? Glyph{size, 1, false} : Glyph{size, width, true};
}

template <class Visit>
void forEachGlyph(std::string_view text, Visit const & visit)
{
    for (std::size_t at = 0; at < text.size();)
    {
        Glyph const glyph = glyphAt(text, at);
        if (!visit(glyph, text.substr(at, glyph.bytes))) return;
        at += glyph.bytes;
    }
}

}  // namespace

std::string printable(std::string_view text)
{
    std::string result;
    forEachGlyph(text,
                 [&](Glyph const & glyph, std::string_view bytes)
                 {
                     result += glyph.isShown ? bytes : "?";
                     return true;
                 });
    return result;
}

int columns(std::string_view text)
{
    int sum = 0;
    forEachGlyph(text, [&](Glyph const & glyph, std::string_view) { return sum += glyph.columns, true; });
    return sum;
}

std::string fitted(std::string_view text, int most)
{
    if (columns(text) <= most) return std::string(text);
    std::string result;
    int left = std::max(most, 1) - 1;
    forEachGlyph(text,
                 [&](Glyph const & glyph, std::string_view bytes)
                 {
                     left -= glyph.columns;
                     if (left >= 0) result += bytes;
                     return left >= 0;
                 });
    return result + "…";
}

}  // namespace orvane::app
