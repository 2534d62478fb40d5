#include "config/text_search.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace
{

constexpr std::size_t maximumReplacements = 4096;
constexpr std::size_t maximumBytes = 64 * 1024;

char lowered(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool isAlphanumeric(char character)
{
    return (character >= '0' && character <= '9') || (lowered(character) >= 'a' && lowered(character) <= 'z');
}

// A text to be found; copies nothing.
struct Sought
{
    std::string_view text;
    bool matchCase;
    bool wholeWord;

    // The position of the first occurrence at or after `from` that counts, or npos. What stands before `from`
    // is seen.
    std::size_t find(std::string_view subject, std::size_t from = 0) const
    {
        std::size_t begin = 0;
        for (std::size_t at = locate(subject, from); at != std::string_view::npos; at = locate(subject, begin = at + 1))
            if (!wholeWord || standsAlone(subject, begin, at)) return at;
        return std::string_view::npos;
    }

private:
    std::size_t locate(std::string_view subject, std::size_t from) const
    {
        if (matchCase || text.empty()) return subject.find(text, from);
        auto const first = subject.begin() + static_cast<std::ptrdiff_t>(std::min(from, subject.size()));
        auto const same = [](char a, char b) { return lowered(a) == lowered(b); };
        auto const found = std::search(first, subject.end(), text.begin(), text.end(), same);
        return found == subject.end() ? std::string_view::npos : static_cast<std::size_t>(found - subject.begin());
    }
    // What stands before `begin` is not looked at.
    bool standsAlone(std::string_view subject, std::size_t begin, std::size_t at) const
    {
        std::size_t const behind = at + text.size();
        bool const joinsLeft = at > begin && isAlphanumeric(subject[at - 1]);
        return !joinsLeft && (behind >= subject.size() || !isAlphanumeric(subject[behind]));
    }
};

CString replaceInOnePass(std::string_view subject, Sought const & sought, std::string_view replacement)
{
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = sought.find(subject); at != std::string_view::npos; at = sought.find(subject, done))
    {
        result.append(subject.substr(done, at - done)).append(replacement);
        done = at + sought.text.size();
    }
    return CString(result.append(subject.substr(done)));
}

// None when it grows beyond the limits.
std::optional<CString> replaceUntilNoneIsLeft(std::string_view subject, Sought const & sought,
                                              std::string_view replacement)
{
    std::string result(subject);
    for (std::size_t count = 0;; ++count)
    {
        std::size_t const at = sought.find(result);
        if (at == std::string::npos) return CString(result);
        if (count == maximumReplacements) return std::nullopt;
        result.replace(at, sought.text.size(), replacement);
        if (result.size() > maximumBytes) return std::nullopt;
    }
}

}  // namespace

bool isStringMatch(CString const & text, CString const & subject, bool matchCase, bool wholeWord)
{
    return Sought{text.view(), matchCase, wholeWord}.find(subject.view()) != std::string_view::npos;
}

CString replaceSubString(CString const & subject, CString const & text, CString const & replacement, bool matchCase,
                         bool wholeWord)
{
    if (text.IsEmpty()) return subject;
    Sought const sought{text.view(), matchCase, wholeWord};
    bool const neverEnds = !wholeWord && isStringMatch(text, replacement, matchCase, false);
    auto const settled = neverEnds ? std::nullopt : replaceUntilNoneIsLeft(subject.view(), sought, replacement.view());
    return settled ? *settled : replaceInOnePass(subject.view(), sought, replacement.view());
}
