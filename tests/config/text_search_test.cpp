#include "config/text_search.h"

#include <cctype>
#include <random>

#include <gtest/gtest.h>

namespace
{

// The search in its plain form, over copies that shrink.
int plainFind(CString text, CString rest, bool matchCase, bool wholeWord)
{
    for (CString * lowered : {&text, &rest})
        if (!matchCase) lowered->MakeLower();
    for (int cut = 0, at = 0; (at = rest.Find(text)) >= 0; cut += at + 1, rest = rest.Mid(at + 1))
        if (!wholeWord || (!std::isalnum(rest[at - 1]) && !std::isalnum(rest[at + text.GetLength()]))) return cut + at;
    return -1;
}

TEST(TextSearch, AgreesWithThePlainForm)
{
    std::mt19937 random(4);
    auto const some = [&](unsigned likely) {
        CString text;
        while (random() % likely) text += "aAb_ 1"[random() % 6];
        return text;
    };
    for (int round = 0; round < 4000; ++round)
    {
        CString const text = some(2), subject = some(8), replacement = some(2);
        bool const matchCase = random() % 2, wholeWord = random() % 2;
        auto const find = [&](CString const & where) { return plainFind(text, where, matchCase, wholeWord); };
        ASSERT_EQ(isStringMatch(text, subject, matchCase, wholeWord), find(subject) >= 0) << text << "|" << subject;
        CString expected = subject;
        int steps = 0;
        for (int at = 0; steps < 50 && !text.IsEmpty() && (at = find(expected)) >= 0; ++steps)
            expected = expected.Left(at) + replacement + expected.Mid(at + text.GetLength());
        CString const result = replaceSubString(subject, text, replacement, matchCase, wholeWord);
        ASSERT_TRUE(steps == 50 || result == expected) << subject << '|' << text << '|' << replacement << '|' << result;
    }
}

TEST(TextSearch, ReplacingEnds)
{
    auto const replaced = [](CString const & subject, char const * text, char const * replacement, bool word = false) {
        return replaceSubString(subject, text, replacement, false, word);
    };
    EXPECT_EQ(replaced("Wall, wall", "wall", "Walls"), "Walls, Walls");
    EXPECT_EQ(replaced("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(replaced("a a-b aa", "A", "a+a", true), "a+a a+a-b aa+a");
    EXPECT_EQ(replaced(CString('a', 5000), "a", "b"), CString('b', 5000));
    // Grows without end, though the replacement does not hold the text.
    EXPECT_EQ(replaced(CString('a', 20) + 'b', "ab", "bbaa"), CString('a', 19) + "bbaa");
}

}  // namespace
