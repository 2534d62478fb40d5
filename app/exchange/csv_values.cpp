#include "app/exchange/csv_values.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "app/command.h"

namespace orvane::app
{
namespace
{

// ---- texts ------------------------------------------------------------------------------------------

char lowerLetter(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
bool isLetter(char c)
{
    return lowerLetter(c) >= 'a' && lowerLetter(c) <= 'z';
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// ---- numbers and durations --------------------------------------------------------------------------

// A number at the beginning, with a decimal point or comma; goes behind it. False when there is none.
bool takeNumber(std::string_view & text, double & number)
{
    std::size_t const length = std::min(text.find_first_not_of("0123456789.,"), text.size());
    std::string digits(text.substr(0, length));
    std::replace(digits.begin(), digits.end(), ',', '.');
    auto const [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
    if (error != std::errc() || end != digits.data() + digits.size()) return false;
    text.remove_prefix(length);
    return true;
}

// A unit of durations by its names, in minutes of work and of the clock.
struct CsvUnit
{
    std::string_view names;
    double work, clock;
};
constexpr CsvUnit csvUnits[] = {
    {" m min mins minute minutes ", 1, 1},       {" h hr hrs hour hours ", 60, 60},
    {" d dy dys day days ", 480, 1440},          {" w wk wks week weeks ", 2400, 10080},
    {" mo mon mons month months ", 9600, 43200},
};

CsvUnit const * findUnit(std::string_view word)
{
    for (CsvUnit const & unit : csvUnits)
        if (!word.empty() && unit.names.find(fmt::format(" {} ", word)) != std::string_view::npos) return &unit;
    return nullptr;
}

// "5 days", "5d", "1,5w", "5 edays" of the clock, "5" days, "3 days?" of an estimate; nothing else, or false.
bool parseDuration(std::string_view text, CsvDuration & duration)
{
    double number = 0;
    if (!takeNumber(text, number)) return false;
    text = withoutBlanks(text);
    if (text.ends_with('?')) text.remove_suffix(1);
    std::string const word = plainWord(text);
    if (std::count_if(text.begin(), text.end(), isLetter) != static_cast<std::ptrdiff_t>(withoutBlanks(text).size()))
        return false;
    CsvUnit const * unit = word.empty() ? findUnit("d") : findUnit(word);
    duration.isElapsed = !unit && word.starts_with('e');
    if (duration.isElapsed) unit = findUnit(std::string_view(word).substr(1));
    if (!unit) return false;
    duration.minutes = std::round(number * (duration.isElapsed ? unit->clock : unit->work));
    return true;
}

// ---- dates ------------------------------------------------------------------------------------------

// A date and time as it is written: numbers and words, each with the sign before it.
struct DateToken
{
    char before = ' ';
    int number = -1;
    std::size_t digits = 0;
    std::string word;
};

std::vector<DateToken> tokensOf(std::string_view text)
{
    std::vector<DateToken> tokens;
    char before = ' ';
    for (std::size_t at = 0; at < text.size();)
    {
        bool const isNumber = isDigit(text[at]), isWord = isLetter(text[at]);
        if (!isNumber && !isWord)
        {
            if (text[at] != ' ') before = text[at];
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && (isNumber ? isDigit(text[end]) : isLetter(text[end]))) ++end;
        DateToken token;
        token.before = std::exchange(before, ' ');
        token.digits = isNumber ? end - at : 0;
        if (isNumber && token.digits <= 6) std::from_chars(text.data() + at, text.data() + end, token.number);
        if (isWord) token.word = plainWord(text.substr(at, end - at));
        tokens.push_back(token);
        at = end;
    }
    return tokens;
}

// From 1; 0 for another word.
int monthOf(std::string_view word)
{
    constexpr std::string_view names[] = {"january", "february", "march",     "april",   "may",      "june",
                                          "july",    "august",   "september", "october", "november", "december"};
    if (word.size() < 3) return 0;
    for (int month = 1; month <= 12; ++month)
        if (names[month - 1].starts_with(word)) return month;
    return word == "sept" ? 9 : 0;
}

// The three parts of a date in the order of the text, and where its time begins.
struct WrittenDate
{
    int year = -1, month = 0, day = 0;
    // Numbers of which either may be the day; -1 where the text says which is which.
    int first = -1, second = -1;
    std::size_t time = 0;
};

int fullYear(DateToken const & token)
{
    if (token.digits == 4) return token.number;
    return token.digits == 2 ? token.number + (token.number < 70 ? 2000 : 1900) : -1;
}

bool parseDate(std::vector<DateToken> const & tokens, WrittenDate & date)
{
    // The day of the week adds nothing.
    std::size_t const at = !tokens.empty() && !tokens[0].word.empty() && monthOf(tokens[0].word) == 0 ? 1 : 0;
    if (tokens.size() < at + 3) return false;
    DateToken const &a = tokens[at], &b = tokens[at + 1], &c = tokens[at + 2];
    date.time = at + 3;
    if (a.digits == 4 && b.digits > 0 && c.digits > 0 && b.before == c.before)
    {
        date.year = a.number, date.month = b.number, date.day = c.number;
        return true;
    }
    date.year = fullYear(c);
    if (a.digits > 0 && !b.word.empty()) date.day = a.number, date.month = monthOf(b.word);
    else if (!a.word.empty() && b.digits > 0) date.day = b.number, date.month = monthOf(a.word);
    else if (b.before != c.before) return false;
    else if (b.before == '.') date.day = a.number, date.month = b.number;
    else date.first = a.number, date.second = b.number;
    bool const hasSigns = b.before == '/' || b.before == '-' || b.before == '.' || !a.word.empty() || !b.word.empty();
    return date.year >= 0 && hasSigns && a.digits <= 2 && b.digits <= 2;
}

// Minutes of the day out of the tokens from that one on; -1 when they are no time, `without` when there are none.
int parseTimeOfDay(std::vector<DateToken> const & tokens, std::size_t at, int without)
{
    if (at < tokens.size() && tokens[at].word == "t") ++at;
    if (at == tokens.size()) return without;
    int const hour = tokens[at].number;
    std::size_t const digits = tokens[at].digits;
    int parts[3] = {hour, 0, 0};
    int count = 0;
    for (; at < tokens.size() && tokens[at].digits > 0 && count < 3; ++at, ++count)
    {
        if (count > 0 && tokens[at].before != ':') break;
        parts[count] = tokens[at].number;
    }
    bool const hasFraction = count == 3 && at < tokens.size() && tokens[at].digits > 0 && tokens[at].before == '.';
    at += hasFraction;
    std::string const half = at < tokens.size() ? tokens[at].word : "";
    bool const isHalf = half == "am" || half == "pm";
    if (at + isHalf != tokens.size() || count == 0 || digits > 2 || (count == 1 && !isHalf)) return -1;
    if (parts[1] > 59 || parts[1] < 0 || parts[2] > 59 || (isHalf ? hour < 1 || hour > 12 : hour > 24)) return -1;
    int const minutes = (isHalf ? hour % 12 + (half == "pm" ? 12 : 0) : hour) * 60 + parts[1];
    return minutes > 1440 ? -1 : minutes;
}

// ---- links and resources ----------------------------------------------------------------------------

struct LinkWord
{
    std::string_view word;
    PlanLinkType type;
};
constexpr LinkWord linkWords[] = {{"fs", PlanLinkType::finishToStart},
                                  {"ss", PlanLinkType::startToStart},
                                  {"ff", PlanLinkType::finishToFinish},
                                  {"sf", PlanLinkType::startToFinish}};

bool parseLag(std::string_view text, PlanLink & link)
{
    if (text.empty()) return true;
    bool const isLead = text[0] == '-';
    if (!isLead && text[0] != '+') return false;
    text = withoutBlanks(text.substr(1));
    if (text.ends_with('%'))
    {
        text.remove_suffix(1);
        link.lagIn = PlanLink::Lag::percent;
        if (!takeNumber(text, link.lag) || !text.empty()) return false;
    }
    else
    {
        CsvDuration lag;
        if (!parseDuration(text, lag)) return false;
        link.lagIn = lag.isElapsed ? PlanLink::Lag::clock : PlanLink::Lag::work;
        link.lag = lag.minutes;
    }
    if (isLead) link.lag = -link.lag;
    return true;
}

// "12", "12FS+2d", "3 SS - 50%".
bool parseLink(std::string_view text, CsvLink & result)
{
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), result.id);
    if (error != std::errc() || text[0] == '-') return false;
    text = withoutBlanks(text.substr(static_cast<std::size_t>(end - text.data())));
    std::string const word = plainWord(text.substr(0, 2));
    for (LinkWord const & each : linkWords)
    {
        if (word != each.word) continue;
        result.link.type = each.type;
        return parseLag(withoutBlanks(text.substr(2)), result.link);
    }
    return parseLag(text, result.link);
}

}  // namespace

std::string_view withoutBlanks(std::string_view text)
{
    auto const isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string plainWord(std::string_view text)
{
    std::string word;
    for (char const c : text)
    {
        if (isLetter(c) || isDigit(c)) word += lowerLetter(c);
        else if (c == '%') word += "percent";
    }
    return word;
}

std::vector<std::string_view> splitAt(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (true)
    {
        std::size_t const at = text.find(separator);
        std::string_view const part = withoutBlanks(text.substr(0, at));
        if (!part.empty()) parts.push_back(part);
        if (at == text.npos) return parts;
        text.remove_prefix(at + 1);
    }
}

[[noreturn]] void refuseCell(std::string_view text, std::string_view what)
{
    throw Refusal(fmt::format("\"{}\" {}", text, what));
}

double readCsvNumber(std::string_view text, char const * what)
{
    std::string_view rest = text;
    double number = 0;
    bool const isNegative = rest.starts_with('-');
    if (isNegative) rest.remove_prefix(1);
    bool const isRead = takeNumber(rest, number);
    rest = withoutBlanks(rest);
    if (!isRead || !(rest.empty() || rest == "%")) refuseCell(text, what);
    return isNegative ? -number : number;
}

double readCsvMoney(std::string_view text)
{
    std::string digits;
    for (char const c : text)
        if (isDigit(c) || c == '.' || c == ',' || c == '-') digits += c;
    std::size_t const last = digits.find_last_of(".,");
    bool const hasDecimals = last != digits.npos && digits.size() - last - 1 != 3;
    std::string plain;
    for (std::size_t at = 0; at < digits.size(); ++at)
    {
        if (isDigit(digits[at]) || digits[at] == '-') plain += digits[at];
        else if (at == last && hasDecimals) plain += '.';
    }
    double amount = 0;
    auto const [end, error] =
        std::from_chars(plain.data(), plain.data() + plain.size(), amount, std::chars_format::fixed);
    if (error != std::errc() || end != plain.data() + plain.size()) refuseCell(text, "is no amount of money");
    return amount;
}

CsvDuration readCsvDuration(std::string_view text)
{
    if (text.starts_with('-')) refuseCell(text, "is a negative duration");
    CsvDuration duration;
    if (!parseDuration(text, duration)) refuseCell(text, "is no duration; one is written as 5d, 2w, 4h or 90m");
    // What 32 bits of seconds hold.
    if (duration.minutes > INT32_MAX / 60) refuseCell(text, "is too long a duration");
    return duration;
}

void CsvDates::learnFrom(std::string_view text)
{
    WrittenDate date;
    if (order != DateOrder::found || !parseDate(tokensOf(text), date) || date.first < 0) return;
    if (date.first > 12 && date.second <= 12) order = DateOrder::dayFirst;
    if (date.second > 12 && date.first <= 12) order = DateOrder::monthFirst;
}

Minute CsvDates::read(std::string_view text, int without) const
{
    std::vector<DateToken> const tokens = tokensOf(text);
    WrittenDate date;
    if (!parseDate(tokens, date)) refuseCell(text, "is no date; one is written as 2027-03-01 or 2027-03-01 09:00");
    if (date.first >= 0)
    {
        if (order == DateOrder::found && date.first != date.second && date.first <= 12 && date.second <= 12)
            refuseCell(text, "can be read in two ways; say --date-order day-first or month-first");
        date.day = order == DateOrder::monthFirst ? date.second : date.first;
        date.month = order == DateOrder::monthFirst ? date.first : date.second;
    }
    int const minute = parseTimeOfDay(tokens, date.time, without);
    if (minute < 0) refuseCell(text, "has no time of day that exists; one is written as 09:00");
    using namespace std::chrono;
    year_month_day const day(year(date.year), month(static_cast<unsigned>(date.month)),
                             std::chrono::day(static_cast<unsigned>(date.day)));
    if (!day.ok()) refuseCell(text, "is a date that does not exist");
    return Minute{sys_days(day).time_since_epoch().count()} * 1440 + minute;
}

std::vector<CsvLink> readLinks(std::string_view text)
{
    CsvLink link;
    // A comma may separate links or decimals: what reads as one link is one.
    if (parseLink(text, link)) return {link};
    std::vector<CsvLink> links;
    for (std::string_view const part : splitAt(text, text.find(';') != text.npos ? ';' : ','))
    {
        link = {};
        if (!parseLink(part, link)) refuseCell(part, "is no predecessor; one is written as 12FS+2d");
        links.push_back(link);
    }
    return links;
}

CsvAssignment readAssignment(std::string_view text)
{
    std::size_t const open = text.find_last_of('[');
    if (open == text.npos || open == 0 || !text.ends_with(']')) return {text};
    std::string_view amount = withoutBlanks(text.substr(open + 1, text.size() - open - 2));
    CsvAssignment assignment{withoutBlanks(text.substr(0, open))};
    if (!takeNumber(amount, assignment.units)) return {text};
    amount = withoutBlanks(amount);
    if (amount == "%") assignment.units /= 100;
    else assignment.isMaterial = !amount.empty();
    return assignment;
}

}  // namespace orvane::app
