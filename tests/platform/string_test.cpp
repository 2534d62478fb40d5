#include "platform/string.h"

#include <climits>

#include <gtest/gtest.h>

namespace
{

template <class Change>
CString changed(CString text, Change && change)
{
    change(text);
    return text;
}

TEST(StringTest, IsMadeFromEveryKindOfText)
{
    wchar_t const noCharacters[] = {static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
    for (CString const & empty : {CString(static_cast<char const *>(nullptr)), CString("abc", -1), CString('=', -3),
                                  CString(static_cast<wchar_t const *>(nullptr)), CString(nullptr, 5)})
        EXPECT_TRUE(empty == "" && empty == nullptr && empty.IsEmpty());
    EXPECT_EQ(CString("abc", 2) + '|' + CString('=', 3) + "|" + nullptr + CString('x'), "ab|===|x");
    EXPECT_EQ(CString(L"A\u00E9\u20AC\U0001F600"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(CString(noCharacters), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(StringTest, KeepsZeroBytes)
{
    CString text("a\0b", 3);
    EXPECT_GT(text, "a");
    EXPECT_EQ((text + text).Find(CString("\0b", 2), 2), 4);
    EXPECT_TRUE(text.Replace(CString('\0'), "-") == 1 && text.Replace("-", "--") == 1 && text == "a--b");
    EXPECT_TRUE(text.Replace("", "x") == 0 && text.Remove('-') == 2);
    text.Format("%c%s", '\0', "x");
    EXPECT_EQ(text.GetLength(), 2);
}

TEST(StringTest, TakesAnyPositionAndCount)
{
    std::tuple<int, int, char const *, char const *> const cases[] = {
        {1, 2, "bc", "ad"},     {3, 9, "d", "abc"},        {4, 1, "", "abcd"},             {-2, 1, "a", "bcd"},
        {1, -1, "", "abcd"},    {1, INT_MAX, "bcd", "a"},  {INT_MAX, INT_MAX, "", "abcd"},
        {INT_MIN, INT_MAX, "abcd", ""}};
    for (auto const & [first, count, mid, deleted] : cases)
    {
        CString text("abcd");
        EXPECT_EQ(text.Mid(first, count), mid);
        int const length = text.Delete(first, count);
        EXPECT_TRUE(length == text.GetLength() && text == deleted) << first << ", " << count;
    }
    CString text("abcd");
    EXPECT_EQ(text.Left(-1) + "|" + text.Left(3) + "|" + text.Left(INT_MAX), "|abc|abcd");
    EXPECT_EQ(text.Right(-1) + "|" + text.Right(3) + "|" + text.Right(INT_MAX), "|bcd|abcd");
    EXPECT_EQ(text.SpanIncluding("ba") + "|" + text.SpanIncluding("") + "|" + text.SpanIncluding("dcba"), "ab||abcd");
    EXPECT_EQ(text.SpanExcluding("dc") + "|" + text.SpanExcluding("") + "|" + text.SpanExcluding("a"), "ab|abcd|");
    for (int index : {-1, 4, INT_MIN, INT_MAX})
    {
        EXPECT_EQ(text[index], '\0') << index;
        text.SetAt(index, 'x');
    }
    EXPECT_EQ(text[1L << 40], '\0');
    text.SetAt(2, 'C');
    EXPECT_EQ(changed(text, [](CString & t) { t.Insert(-5, "<"), t.Insert(99, '>'), t.Insert(2, nullptr); }), "<abCd>");
}

TEST(StringTest, SearchesFromAnyStart)
{
    CString const text("a,b,a");
    int const cases[][4] = {{0, 1, 1, 0},   {2, 3, 3, 2},    {4, -1, -1, 4},        {5, -1, -1, 5},
                            {6, -1, -1, -1}, {-1, -1, -1, -1}, {INT_MAX, -1, -1, -1}};
    for (auto const & [start, character, piece, nothing] : cases)
    {
        EXPECT_EQ(text.Find(',', start), character) << start;
        EXPECT_EQ(text.Find(",", start), piece) << start;
        EXPECT_EQ(text.Find("", start), nothing) << start;
    }
    EXPECT_TRUE(text.ReverseFind('a') == 4 && text.ReverseFind('x') == -1);
    EXPECT_TRUE(text.FindOneOf("xb,") == 1 && text.FindOneOf("") == -1);
}

TEST(StringTest, TakesPartsOfItselfAsArguments)
{
    CString const long_('x', 100);
    auto const tail = [](CString const & t) { return static_cast<char const *>(t) + 90; };
    EXPECT_EQ(changed(long_, [&](CString & t) { t = tail(t); }), CString('x', 10));
    EXPECT_EQ(changed(long_, [&](CString & t) { t += tail(t); }), CString('x', 110));
    EXPECT_EQ(changed(long_, [&](CString & t) { t.Insert(5, tail(t)); }), CString('x', 110));
    EXPECT_EQ(changed(long_, [&](CString & t) { t.Replace(t, t); }), long_);
    for (int length : {254, 255, 256, 100'000})
        EXPECT_EQ(changed(CString('y', length), [](CString & t) { t.Format("<%s>", static_cast<char const *>(t)); }),
                  "<" + CString('y', length) + '>');
}

TEST(StringTest, ComparesByUnsignedBytes)
{
    char const * const ascending[] = {"", "A", "AB", "a", "a ", "b", "\x7F", "\x80", "\xC3\xA9", "\xFF"};
    for (char const * const & left : ascending)
        for (char const * const & right : ascending)
        {
            int const order = &left < &right ? -1 : &left > &right;
            EXPECT_EQ(CString(left).Compare(right), order) << left << " " << right;
            EXPECT_TRUE((CString(left) < CString(right)) == (order < 0) && (CString(left) >= right) == (order >= 0));
            EXPECT_TRUE((CString(left) == CString(right)) == (order == 0) && (left != CString(right)) == (order != 0));
        }
    EXPECT_EQ(CString("Digging").CompareNoCase("dIGGING"), 0);
    EXPECT_TRUE(CString("_").CompareNoCase("A") == -1 && CString("a\xC3").CompareNoCase("AZ") == 1);
}

}  // namespace
