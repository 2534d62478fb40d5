#include "app/exchange/mspdi_values.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>

#include <fmt/format.h>

namespace orvane::app
{
namespace
{

// Two or four digits at that place; -1 for anything else.
int digitsAt(std::string_view text, std::size_t at, std::size_t count)
{
    if (at + count > text.size()) return -1;
    int number = 0;
    for (char const each : text.substr(at, count))
    {
        if (each < '0' || each > '9') return -1;
        number = number * 10 + (each - '0');
    }
    return number;
}

bool isAt(std::string_view text, std::size_t at, char expected)
{
    return at < text.size() && text[at] == expected;
}

// A fraction of a second, and "Z" or "+01:00".
bool isPassedOver(std::string_view rest)
{
    if (isAt(rest, 0, '.')) rest.remove_prefix(std::min(rest.find_first_not_of("0123456789", 1), rest.size()));
    if (rest.empty() || rest == "Z") return true;
    return rest.size() == 6 && (rest[0] == '+' || rest[0] == '-') && digitsAt(rest, 1, 2) >= 0 && rest[3] == ':' &&
           digitsAt(rest, 4, 2) >= 0;
}

// Minutes of what a letter stands for, by where it stands: before the T or behind.
double minutesOf(char unit, bool isTime)
{
    if (isTime) return unit == 'H' ? 60 : unit == 'M' ? 1 : unit == 'S' ? 1.0 / 60 : 0;
    return unit == 'D' ? minutesOfDay : unit == 'W' ? 7 * minutesOfDay : 0;
}

}  // namespace

std::int64_t dayOf(Minute minute)
{
    return std::chrono::floor<std::chrono::days>(std::chrono::minutes(minute)).count();
}

std::optional<Minute> readMspdiTime(std::string_view text)
{
    using namespace std::chrono;
    int const year = digitsAt(text, 0, 4), month = digitsAt(text, 5, 2), day = digitsAt(text, 8, 2);
    if (year < 1 || month < 0 || day < 0 || text[4] != '-' || text[7] != '-') return {};
    year_month_day const date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) return {};
    int time = 0;
    if (text.size() > 10)
    {
        std::optional<int> const read = text[10] == 'T' ? readMspdiTimeOfDay(text.substr(11)) : std::nullopt;
        if (!read) return {};
        time = *read;
    }
    constexpr sys_days end = std::chrono::year(10000) / 1 / 1;
    Minute const minute = Minute{sys_days(date).time_since_epoch().count()} * minutesOfDay + time;
    return dayOf(minute) < end.time_since_epoch().count() ? std::optional(minute) : std::nullopt;
}

std::optional<int> readMspdiTimeOfDay(std::string_view text)
{
    int const hour = digitsAt(text, 0, 2), minute = digitsAt(text, 3, 2), second = digitsAt(text, 6, 2);
    bool const isTime = isAt(text, 2, ':') && isAt(text, 5, ':') && second >= 0 && isPassedOver(text.substr(8));
    bool const isRange = hour >= 0 && minute >= 0 && minute < 60 && second < 60;
    if (!isTime || !isRange || hour * 60 + minute > minutesOfDay || (hour == 24 && second > 0)) return {};
    return hour * 60 + minute;
}

std::optional<double> readMspdiDuration(std::string_view text)
{
    constexpr double most = 1000.0 * 366 * minutesOfDay;
    double const sign = isAt(text, 0, '-') ? -1 : 1;
    if (sign < 0) text.remove_prefix(1);
    if (!isAt(text, 0, 'P') || text.size() < 3) return {};
    text.remove_prefix(1);
    double minutes = 0;
    bool isTime = false;
    while (!text.empty())
    {
        if (!isTime && text[0] == 'T')
        {
            isTime = true;
            text.remove_prefix(1);
        }
        double number = 0;
        auto const [end, error] =
            std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
        auto const length = static_cast<std::size_t>(end - text.data());
        if (error != std::errc() || length == text.size() || text[0] == '-' || !(number <= most)) return {};
        double const unit = minutesOf(*end, isTime);
        if (unit == 0 && number > 0) return {};
        minutes += number * unit;
        text.remove_prefix(length + 1);
    }
    if (!(minutes <= most)) return {};
    return sign * minutes;
}

std::string_view trimmed(std::string_view text)
{
    constexpr char const * blanks = " \t\r\n";
    std::size_t const first = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string mspdiTime(Minute minute)
{
    using namespace std::chrono;
    year_month_day const date{sys_days(days(dayOf(minute)))};
    return fmt::format("{:04}-{:02}-{:02}T{}", int(date.year()), unsigned(date.month()), unsigned(date.day()),
                       mspdiTimeOfDay(static_cast<int>(minute - dayOf(minute) * minutesOfDay)));
}

std::string mspdiTimeOfDay(int minute)
{
    return fmt::format("{:02}:{:02}:00", minute / 60 % 24, minute % 60);
}

std::string mspdiDuration(Minute minutes)
{
    return fmt::format("PT{}H{}M0S", minutes / 60, minutes % 60);
}

}  // namespace orvane::app
