#include "platform/string.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "platform/utf8_impl.h"

namespace
{

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

int sign(std::strong_ordering order)
{
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace

CString::CString(wchar_t const * text)
{
    for (; text && *text; ++text) orvane::appendUtf8(bytes, static_cast<std::uint32_t>(*text));
}

CString CString::Mid(int first, int count) const
{
    std::size_t const from = std::min(atLeastZero(first), bytes.size());
    return CString(view().substr(from, atLeastZero(count)));
}

CString CString::Right(int count) const
{
    return CString(view().substr(bytes.size() - std::min(atLeastZero(count), bytes.size())));
}

int CString::Find(char character, int start) const
{
    return start < 0 ? -1 : position(bytes.find(character, static_cast<std::size_t>(start)));
}

int CString::Find(orvane::Text text, int start) const
{
    return start < 0 ? -1 : position(bytes.find(text, static_cast<std::size_t>(start)));
}

void CString::MakeLower()
{
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), lower);
}

void CString::MakeUpper()
{
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), upper);
}

int CString::Replace(char from, char to)
{
    if (from == to) return 0;
    int const count = static_cast<int>(std::count(bytes.begin(), bytes.end(), from));
    std::replace(bytes.begin(), bytes.end(), from, to);
    return count;
}

int CString::Replace(orvane::Text from, orvane::Text to)
{
    std::size_t found = from.empty() ? std::string::npos : bytes.find(from);
    if (found == std::string::npos) return 0;

    // Built aside: one pass however many there are, and both arguments may be parts of this text.
    std::string result;
    std::size_t done = 0;
    int count = 0;
    for (; found != std::string::npos; found = bytes.find(from, done), ++count)
    {
        result.append(bytes, done, found - done).append(to);
        done = found + from.size();
    }
    result.append(bytes, done);
    bytes = std::move(result);
    return count;
}

int CString::Insert(int index, orvane::Text text)
{
    bytes.insert(std::min(atLeastZero(index), bytes.size()), text);
    return GetLength();
}

int CString::Delete(int index, int count)
{
    bytes.erase(std::min(atLeastZero(index), bytes.size()), atLeastZero(count));
    return GetLength();
}

int CString::Compare(orvane::Text other) const
{
    return sign(view() <=> std::string_view(other));
}

int CString::CompareNoCase(orvane::Text other) const
{
    auto const compare = [](char a, char b)
    { return static_cast<unsigned char>(lower(a)) <=> static_cast<unsigned char>(lower(b)); };
    return sign(
        std::lexicographical_compare_three_way(bytes.begin(), bytes.end(), other.begin(), other.end(), compare));
}

void CString::Format(char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(char const * format, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);

    // Most texts are short and are printed once; a longer one is measured first.
    std::array<char, 256> buffer;
    int const length = format ? std::vsnprintf(buffer.data(), buffer.size(), format, arguments) : 0;
    std::size_t const size = atLeastZero(length);
    std::string result;
    if (size < buffer.size()) result.assign(buffer.data(), size);
    else
    {
        result.resize(size);
        std::vsnprintf(result.data(), size + 1, format, again);
    }
    va_end(again);
    bytes = std::move(result);
}
