#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/date_time.h"
#include "values/duration.h"
#include "values/identifiers.h"

class CCalendar;

// How values stand in JSON, CSV and tables. Reading refuses what is no such value, and says so.
namespace orvane::app
{

// Local time as ISO 8601, to the minute: "2027-03-01T09:00"; a date "2027-03-01", a time of day "09:00". Empty when the
// value is not valid.
std::string isoTime(CProjectTime const & time);
std::string isoDate(CProjectDate const & date);
std::string isoTimeOfDay(CProjectTimeOfDay const & time);
// Also without its time, which is 00:00 then, with seconds, which are dropped, and with a blank for the T. A time with
// a zone, a day that does not exist, or one beyond 1901-12-14 to 2038-01-18 is refused.
CProjectTime readTime(std::string_view text);
CProjectDate readDate(std::string_view text);
// From 00:00 to 24:00, which is 00:00 of the next day.
CProjectTimeOfDay readTimeOfDay(std::string_view text);

// Seconds of work on a normal day of the calendar; eight hours when it has none.
long secondsOfNormalDay(CCalendar const & calendar);
// Working time in working days of the calendar, to two places at most: "2.5d"; empty when it is not valid.
std::string dayText(CProjectDuration const & duration, CCalendar const & calendar);
double workingDays(CProjectDuration const & duration, CCalendar const & calendar);
// "5d" in working days of the calendar, "2w" in weeks of five of them, "4h", "90m", or minutes; fractions with a point,
// which are rounded to the minute; a sign. Refuses what is no duration, or more than 32 bits of seconds hold.
CProjectDuration readDuration(std::string_view text, CCalendar const & calendar);

// 32 hexadecimal digits, as in the project's XML document.
std::string idText(CIDBase const & id);
// False when the text has another form.
bool readID(std::string_view text, CIDBase & id);

}  // namespace orvane::app
