#include "app/text_values.h"

#include <charconv>
#include <chrono>
#include <cmath>

#include <fmt/format.h>

#include "app/command.h"
#include "platform/project_xml_archive.h"
#include "schedule/calendar.h"

namespace orvane::app
{
namespace
{

// Reads a text from the left.
class Scanner
{
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    // Exactly so many digits.
    bool digits(std::size_t count, int & number)
    {
        if (rest.size() < count) return false;
        auto const [end, error] = std::from_chars(rest.data(), rest.data() + count, number);
        bool const all = error == std::errc() && end == rest.data() + count && rest[0] != '-';
        if (all) rest.remove_prefix(count);
        return all;
    }
    bool skip(std::string_view any)
    {
        bool const found = !rest.empty() && any.find(rest[0]) != any.npos;
        if (found) rest.remove_prefix(1);
        return found;
    }
    bool atEnd() const { return rest.empty(); }
    void skipDigits() { rest.remove_prefix(std::min(rest.find_first_not_of("0123456789"), rest.size())); }

private:
    std::string_view rest;
};

bool scanDate(Scanner & scanner, std::chrono::year_month_day & date)
{
    int year = 0, month = 0, day = 0;
    bool const read = scanner.digits(4, year) && scanner.skip("-") && scanner.digits(2, month) && scanner.skip("-") &&
                      scanner.digits(2, day);
    date = {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
    return read && date.ok();
}

bool scanTimeOfDay(Scanner & scanner, int & hour, int & minute)
{
    int second = 0;
    if (!scanner.digits(2, hour) || !scanner.skip(":") || !scanner.digits(2, minute)) return false;
    if (scanner.skip(":"))
    {
        if (!scanner.digits(2, second)) return false;
        if (scanner.skip(".,")) scanner.skipDigits();
    }
    return minute < 60 && second < 60 && (hour < 24 || (hour == 24 && minute == 0 && second == 0));
}

[[noreturn]] void refuseValue(std::string_view text, char const * expected)
{
    throw Refusal(fmt::format("\"{}\" is no {}", text, expected));
}

CProjectTime madeTime(std::string_view text, std::chrono::year_month_day const & date, int hour, int minute)
{
    using namespace std::chrono;
    constexpr year_month_day first = 1901y / December / 14, last = 2038y / January / 18;
    if (date < first || date > last) throw Refusal(fmt::format("\"{}\" lies beyond 1901-12-14 to 2038-01-18", text));
    return {int(date.year()), static_cast<int>(unsigned(date.month())), static_cast<int>(unsigned(date.day())), hour,
            minute};
}

}  // namespace

std::string isoTime(CProjectTime const & time)
{
    if (!time.isValid()) return {};
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}", time.GetYear(), time.GetMonth(), time.GetDay(), time.GetHour(),
                       time.GetMinute());
}

std::string isoDate(CProjectDate const & date)
{
    if (!date.isValid()) return {};
    return fmt::format("{:04}-{:02}-{:02}", date.GetYear(), date.GetMonth(), date.GetDay());
}

std::string isoTimeOfDay(CProjectTimeOfDay const & time)
{
    return time.isValid() ? fmt::format("{:02}:{:02}", time.GetHour(), time.GetMinute()) : std::string();
}

CProjectTime readTime(std::string_view text)
{
    Scanner scanner(text);
    std::chrono::year_month_day date;
    int hour = 0, minute = 0;
    if (!scanDate(scanner, date)) refuseValue(text, "time; a time is written as 2027-03-01T09:00");
    if (!scanner.atEnd() && !(scanner.skip("T ") && scanTimeOfDay(scanner, hour, minute) && scanner.atEnd()))
        refuseValue(text, "time; a time is written as 2027-03-01T09:00");
    return madeTime(text, date, hour, minute);
}

CProjectDate readDate(std::string_view text)
{
    Scanner scanner(text);
    std::chrono::year_month_day date;
    if (!scanDate(scanner, date) || !scanner.atEnd()) refuseValue(text, "date; a date is written as 2027-03-01");
    return madeTime(text, date, 0, 0).getDate();
}

CProjectTimeOfDay readTimeOfDay(std::string_view text)
{
    Scanner scanner(text);
    int hour = 0, minute = 0;
    if (!scanTimeOfDay(scanner, hour, minute) || !scanner.atEnd())
        refuseValue(text, "time of day; one is written as 09:00");
    return {hour, minute};
}

long secondsOfNormalDay(CCalendar const & calendar)
{
    constexpr long eightHours = 8 * 3600;
    long const seconds = calendar.getNormalDay().getWorkingDuration().GetTotalSeconds();
    return seconds > 0 ? seconds : eightHours;
}

double workingDays(CProjectDuration const & duration, CCalendar const & calendar)
{
    return static_cast<double>(duration.GetTotalSeconds()) / static_cast<double>(secondsOfNormalDay(calendar));
}

std::string dayText(CProjectDuration const & duration, CCalendar const & calendar)
{
    if (!duration.isValid()) return {};
    return fmt::format("{}d", std::round(workingDays(duration, calendar) * 100) / 100);
}

CProjectDuration readDuration(std::string_view text, CCalendar const & calendar)
{
    char const * const expected = "duration; one is written as 5d, 2w, 4h, 90m or in minutes";
    double number = 0;
    bool const signs = text.starts_with('+');
    auto const [end, error] = std::from_chars(text.data() + signs, text.data() + text.size(), number,
                                              std::chars_format::fixed);
    if (error != std::errc() || !std::isfinite(number) || (signs && text.substr(1).starts_with('-')))
        refuseValue(text, expected);
    std::string_view const unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    double seconds = 60;
    if (unit == "h") seconds = 3600;
    else if (unit == "d") seconds = static_cast<double>(secondsOfNormalDay(calendar));
    else if (unit == "w") seconds = 5.0 * static_cast<double>(secondsOfNormalDay(calendar));
    else if (!unit.empty() && unit != "m") refuseValue(text, expected);
    double const minutes = std::round(number * seconds / 60);
    if (std::abs(minutes) > INT32_MAX / 60) refuseValue(text, "duration that fits: it is too long");
    return CProjectDuration(static_cast<long>(minutes) * 60);
}

std::string idText(CIDBase const & id)
{
    return std::string(CProjectXMLArchive::idToString(id).view());
}

bool readID(std::string_view text, CIDBase & id)
{
    bool const fits = text.size() == 32 && text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
    if (fits) CProjectXMLArchive::stringToHandle(CString(std::string(text).c_str()), id);
    return fits;
}

}  // namespace orvane::app
