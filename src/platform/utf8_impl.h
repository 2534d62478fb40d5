#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane
{

// What is no character, such as one half of a pair in UTF-16, becomes the replacement character.
inline void appendUtf8(std::string & out, std::uint32_t point)
{
    bool const isCharacter = point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
    if (!isCharacter) point = 0xFFFD;

    int const followers = point < 0x80 ? 0 : point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    constexpr std::array<std::uint32_t, 4> leads = {0x00, 0xC0, 0xE0, 0xF0};
    out.push_back(static_cast<char>(leads[static_cast<std::size_t>(followers)] | point >> 6 * followers));
    for (int shift = 6 * (followers - 1); shift >= 0; shift -= 6)
        out.push_back(static_cast<char>(0x80 | (point >> shift & 0x3F)));
}

// Puts a text of UTF-16 in the place of what the string held, whose memory it takes over.
inline void assignUtf8(std::string & out, std::u16string_view text)
{
    // Nearly all texts are of characters that are one byte each.
    auto const wide = std::ranges::find_if(text, [](char16_t unit) { return unit >= 0x80; });
    out.resize(static_cast<std::size_t>(wide - text.begin()));
    std::transform(text.begin(), wide, out.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    for (auto at = out.size(); at < text.size(); ++at)
    {
        std::uint32_t const unit = text[at], next = at + 1 < text.size() ? text[at + 1] : 0U;
        bool const isPair = unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000;
        appendUtf8(out, isPair ? 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00) : unit);
        at += isPair;
    }
}

inline std::string utf8(std::u16string_view text)
{
    std::string out;
    assignUtf8(out, text);
    return out;
}

}  // namespace orvane
