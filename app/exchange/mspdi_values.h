#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/exchange/plan.h"

// Times and durations as Microsoft Project's XML interchange writes them.
namespace orvane::app
{

constexpr int minutesOfDay = 1440;

// The number of the day since 1970-01-01 that the minute lies on.
std::int64_t dayOf(Minute minute);

// "2027-03-01T09:00:00", also without its time; seconds and a zone are passed over. Nothing when there is no such time
// in the years 1 to 9999.
std::optional<Minute> readMspdiTime(std::string_view text);
// "09:00:00", up to "24:00:00", as a minute of the day.
std::optional<int> readMspdiTimeOfDay(std::string_view text);
// "PT8H30M0S", with days of 24 hours, fractions and a sign, in minutes. Nothing for any other text, for one with years
// or months, and for more than a thousand years.
std::optional<double> readMspdiDuration(std::string_view text);

// Without the blanks around it.
std::string_view trimmed(std::string_view text);

std::string mspdiTime(Minute minute);
std::string mspdiTimeOfDay(int minute);
std::string mspdiDuration(Minute minutes);

}  // namespace orvane::app
