#pragma once

#include <algorithm>
#include <climits>
#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

class CString;

namespace orvane
{

// A char and nothing that merely converts to one: numbers do not slip into texts as characters.
template <class T>
concept Character = std::same_as<T, char>;

// A parameter that takes a CString, a literal or a null pointer (an empty text) alike.
struct Text : std::string_view
{
    Text(char const * text) : std::string_view(text ? text : "") {}
    Text(CString const & text);
};

}  // namespace orvane

// A text of bytes, in UTF-8 as a rule; it may hold zero bytes. Positions and lengths count bytes, and
// every position and count is accepted: what lies outside the text is cut off or not found. Comparisons
// are by unsigned bytes; "case" is that of the ASCII letters. No virtual functions, not for deletion
// through a base.
class CString
{
public:
    CString() = default;
    template <orvane::Character T>
    CString(T character, int repeat = 1) : bytes(atLeastZero(repeat), character)
    {
    }
    CString(char const * text) : bytes(text ? text : "") {}
    CString(unsigned char const * text) : CString(reinterpret_cast<char const *>(text)) {}
    // The first `length` bytes at `text`, zero bytes included; none for a negative length.
    CString(char const * text, int length) : bytes(text ? text : "", text ? atLeastZero(length) : 0) {}
    // Becomes UTF-8; what is no character becomes U+FFFD.
    CString(wchar_t const * text);
    explicit CString(std::string_view text) : bytes(text) {}

    CString & operator=(char const * text)
    {
        bytes.assign(text ? text : "");
        return *this;
    }
    template <orvane::Character T>
    CString & operator=(T character)
    {
        bytes.assign(1, character);
        return *this;
    }

    operator char const *() const { return bytes.c_str(); }
    // Would otherwise compile by way of the pointer, and always be true.
    explicit operator bool() const = delete;
    std::string_view view() const { return bytes; }

    int GetLength() const { return static_cast<int>(std::min<std::size_t>(bytes.size(), INT_MAX)); }
    bool IsEmpty() const { return bytes.empty(); }
    void Empty() { bytes.clear(); }

    // The byte at a position; zero outside the text.
    char GetAt(int index) const { return holds(index) ? bytes[static_cast<std::size_t>(index)] : '\0'; }
    template <std::integral T>
    char operator[](T index) const
    {
        return std::in_range<int>(index) ? GetAt(static_cast<int>(index)) : '\0';
    }
    // Does nothing outside the text.
    void SetAt(int index, char character)
    {
        if (holds(index)) bytes[static_cast<std::size_t>(index)] = character;
    }

    CString Mid(int first) const { return Mid(first, INT_MAX); }
    CString Mid(int first, int count) const;
    CString Left(int count) const { return CString(view().substr(0, atLeastZero(count))); }
    CString Right(int count) const;
    // The longest beginning that holds only, or none of, the characters of a set.
    CString SpanIncluding(orvane::Text set) const { return CString(view().substr(0, bytes.find_first_not_of(set))); }
    CString SpanExcluding(orvane::Text set) const { return CString(view().substr(0, bytes.find_first_of(set))); }

    // Searches answer a position, or -1. A start outside the text finds nothing.
    int Find(char character, int start = 0) const;
    int Find(orvane::Text text, int start = 0) const;
    int ReverseFind(char character) const { return position(bytes.rfind(character)); }
    int FindOneOf(orvane::Text set) const { return position(bytes.find_first_of(set)); }

    void MakeLower();
    void MakeUpper();
    void MakeReverse() { std::reverse(bytes.begin(), bytes.end()); }
    // Cut white space, or the characters of a set, off an end.
    void TrimLeft(orvane::Text set = " \t\n\v\f\r") { bytes.erase(0, bytes.find_first_not_of(set)); }
    void TrimRight(orvane::Text set = " \t\n\v\f\r") { bytes.erase(bytes.find_last_not_of(set) + 1); }

    // Answer how many were replaced or removed. What was put in is not searched again.
    int Replace(char from, char to);
    int Replace(orvane::Text from, orvane::Text to);
    int Remove(char character) { return static_cast<int>(std::erase(bytes, character)); }

    // Answer the new length. A position outside the text counts as its nearer end.
    int Insert(int index, char character) { return Insert(index, CString(character)); }
    int Insert(int index, orvane::Text text);
    int Delete(int index, int count = 1);

    // Negative, zero or positive: -1, 0 or 1.
    int Compare(orvane::Text other) const;
    int CompareNoCase(orvane::Text other) const;

    // Take the place of the text, however long the result. Arguments may point into the old text. A
    // format that the C library refuses gives an empty text.
    [[gnu::format(printf, 2, 3)]] void Format(char const * format, ...);
    [[gnu::format(printf, 2, 0)]] void FormatV(char const * format, std::va_list arguments);

    CString & operator+=(orvane::Text text)
    {
        bytes.append(text);
        return *this;
    }
    template <orvane::Character T>
    CString & operator+=(T character)
    {
        bytes.push_back(character);
        return *this;
    }

    friend CString operator+(CString left, CString const & right) { return std::move(left += right); }
    friend CString operator+(CString left, char const * right) { return std::move(left += right); }
    friend CString operator+(char const * left, CString const & right) { return CString(left) + right; }
    template <orvane::Character T>
    friend CString operator+(CString left, T right)
    {
        return std::move(left += right);
    }
    template <orvane::Character T>
    friend CString operator+(T left, CString const & right)
    {
        return CString(left) + right;
    }

    // The form with a pointer keeps the built-in comparison of two addresses out of the choice.
    friend bool operator==(CString const & left, CString const & right) { return left.bytes == right.bytes; }
    friend bool operator==(CString const & left, char const * right) { return left.view() == orvane::Text(right); }
    friend std::strong_ordering operator<=>(CString const & left, CString const & right)
    {
        return left.bytes <=> right.bytes;
    }
    friend std::strong_ordering operator<=>(CString const & left, char const * right)
    {
        return left.view() <=> std::string_view(orvane::Text(right));
    }

private:
    bool holds(int index) const { return index >= 0 && static_cast<std::size_t>(index) < bytes.size(); }
    static std::size_t atLeastZero(int number) { return static_cast<std::size_t>(std::max(number, 0)); }
    static int position(std::size_t found) { return found <= INT_MAX ? static_cast<int>(found) : -1; }

    std::string bytes;
};

inline orvane::Text::Text(CString const & text) : std::string_view(text.view())
{
}

template <>
struct std::hash<CString>
{
    std::size_t operator()(CString const & text) const { return std::hash<std::string_view>()(text.view()); }
};
