#include "platform/time.h"

#include "platform/host.h"
#include "platform/string.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

namespace
{

// No overflow for any numbers: days come from 32-bit fields or were saturated.
std::int64_t secondsOf(std::int64_t days, int hours, int minutes, int seconds)
{
    return days * orvane::secondsPerDay + hours * std::int64_t{3600} + minutes * std::int64_t{60} + seconds;
}

std::tm localFields(CTime time)
{
    std::int64_t const day = time.getDayNumber();
    orvane::CivilDay const date = orvane::civilDay(day);
    std::tm fields{};
    fields.tm_year = date.year - 1900;
    fields.tm_mon = date.month - 1;
    fields.tm_mday = date.day;
    fields.tm_hour = time.GetHour();
    fields.tm_min = time.GetMinute();
    fields.tm_sec = time.GetSecond();
    fields.tm_wday = time.GetDayOfWeek() - 1;
    fields.tm_yday = static_cast<int>(day - orvane::dayNumber(date.year, 1, 1));
    fields.tm_gmtoff = time.getLocalSeconds() - time.GetTime();
    return fields;
}

}  // namespace

CTimeSpan::CTimeSpan(long days, int hours, int minutes, int seconds)
    : CTimeSpan(secondsOf(orvane::saturate<std::int32_t>(days), hours, minutes, seconds))
{
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int dst)
{
    std::int64_t const local = secondsOf(orvane::dayNumber(year, month, day), hour, minute, second);
    *this = CTime(dst == 0 ? orvane::fromLocalStandardSeconds(local) : orvane::fromLocalSeconds(local));
}

CTime CTime::GetCurrentTime()
{
    return CTime(orvane::host().currentTime());
}

CString CTime::Format(char const * format) const
{
    constexpr std::size_t longest = 1 << 16;
    // A blank at the end tells a text that is empty from one that did not fit.
    std::string const ended = std::string(format ? format : "") + ' ';
    std::tm const fields = localFields(*this);
    std::string text;
    for (std::size_t room = 128; room <= longest; room *= 8)
    {
        text.resize(room);
        std::size_t const length = std::strftime(text.data(), room, ended.c_str(), &fields);
        if (length > 0) return CString(std::string_view(text.data(), length - 1));
    }
    return CString();
}

int getTime()
{
    using std::chrono::milliseconds;
    auto const sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    std::int64_t const system = std::chrono::duration_cast<milliseconds>(sinceEpoch).count();
    std::int64_t const seconds = orvane::host().currentTime();
    // The system's seconds may lag a little behind its finer clock.
    bool const agree = std::abs(orvane::saturate<std::int32_t>(system / 1000 - seconds)) <= 1;
    std::int64_t const moment = agree ? system : seconds * 1000;
    std::int64_t const local = orvane::toLocalSeconds(orvane::floorDiv(moment, 1000));
    return static_cast<int>(orvane::floorMod(local, orvane::secondsPerDay) * 1000 + orvane::floorMod(moment, 1000));
}
