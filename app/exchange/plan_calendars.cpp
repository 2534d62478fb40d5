#include "app/exchange/plan_calendars.h"

#include <algorithm>
#include <map>
#include <utility>

#include <fmt/format.h>

#include "platform/local_time.h"

namespace orvane::app
{
namespace
{

constexpr std::size_t mostBlocks = 8;
constexpr int lastMinuteOfDay = 24 * 60 - 1;
// The years that times can hold, in days.
constexpr std::int64_t firstDay = -23'741, lastDay = 24'836;

// Bases of bases end after so many, also where they go in a circle.
constexpr int deepestBase = 8;

// What times can hold, with a day to spare at either end.
Minute const earliestMinute = orvane::dayNumber(1901, 12, 15) * 1440,
             latestMinute = orvane::dayNumber(2038, 1, 17) * 1440;

struct DayFaults
{
    int pastMidnight = 0;
    int tooMany = 0;
};

PlanDay heldDay(PlanDay day, DayFaults & faults)
{
    std::erase_if(day, [](PlanBlock const & block) { return block.from >= block.to; });
    std::sort(day.begin(), day.end(), [](PlanBlock const & a, PlanBlock const & b) { return a.from < b.from; });
    PlanDay result;
    for (PlanBlock block : day)
    {
        if (block.to > lastMinuteOfDay) ++faults.pastMidnight;
        block.to = std::min(block.to, lastMinuteOfDay);
        if (!result.empty() && block.from < result.back().to) result.back().to = std::max(result.back().to, block.to);
        else if (block.from < block.to) result.push_back(block);
    }
    if (result.size() > mostBlocks)
    {
        ++faults.tooMany;
        result.resize(mostBlocks);
    }
    return result;
}

std::size_t weekdayIndex(std::int64_t day)
{
    return static_cast<std::size_t>(orvane::dayOfWeek(day) - 1);
}

int workOf(PlanDay const & day)
{
    int minutes = 0;
    for (PlanBlock const & block : day) minutes += block.to - block.from;
    return minutes;
}

std::string blocksText(PlanDay const & day)
{
    std::string text;
    for (PlanBlock const & block : day)
        text += fmt::format("{}{:02}:{:02}-{:02}:{:02}", text.empty() ? "" : ", ", block.from / 60, block.from % 60,
                            block.to / 60, block.to % 60);
    return text;
}

// The day that the week has most often; of those as often the longest.
PlanDay normalDayOf(std::array<PlanDay, 7> const & week)
{
    auto const rank = [&](PlanDay const & day)
    { return std::pair(std::count(week.begin(), week.end(), day), workOf(day)); };
    PlanDay const * best = nullptr;
    for (PlanDay const & day : week)
        if (!day.empty() && (!best || rank(day) > rank(*best))) best = &day;
    return best ? *best : PlanDay();
}

// The day types of a calendar: one for each list of blocks under each name.
class DayTypes
{
public:
    explicit DayTypes(CCalendarDayTypeArray const & present)
    {
        for (CCalendarDayType const & type : present)
        {
            if (type.getDayType() == CDayType::NormalWorkingDay && !normal.isValid()) normal = type;
            if (type.getDayType() == CDayType::NonWorkingDay && !free.isValid()) free = type;
        }
    }

    void begin(PlanDay const & normalDay)
    {
        normal.type.setDayType(CDayType(CDayType::NormalWorkingDay));
        free.type.setDayType(CDayType(CDayType::NonWorkingDay));
        fill(normal.type, normalDay);
        fill(free.type, {});
        enter(normal.type, normalDay);
        enter(free.type, {});
    }
    CCalendarDayTypeID idOf(PlanDay const & day, std::string const & name)
    {
        auto known = ids.find({day, name});
        // A calendar does not need more names than this.
        constexpr std::size_t mostNamed = 400;
        if (known == ids.end() && ids.size() >= mostNamed) known = ids.find({day, ""});
        if (known != ids.end()) return known->second;
        CCalendarDayType type;
        type.setDescription((name.empty() ? blocksText(day) : name).c_str());
        type.setColor(day.empty() ? free.type.getColor() : normal.type.getColor());
        type.setDayType(CDayType(day.empty() ? CDayType::NonWorkingDay : CDayType::OtherWorkingDay));
        fill(type, day);
        enter(type, day);
        return type.getID();
    }
    CCalendarDayTypeArray const & all() const { return types; }

private:
    // One of the two that every calendar begins with.
    struct First
    {
        CCalendarDayType type;
        bool isGiven = false;
        bool isValid() const { return isGiven; }
        First & operator=(CCalendarDayType const & value)
        {
            type = value;
            isGiven = true;
            return *this;
        }
    };

    static void fill(CCalendarDayType & type, PlanDay const & day)
    {
        type.clearTimeBlocks();
        int count = 0;
        for (PlanBlock const & block : day)
            type.setTimeBlock(count++, {CProjectTimeOfDay(block.from / 60, block.from % 60),
                                        CProjectTimeOfDay(block.to / 60, block.to % 60)});
    }
    void enter(CCalendarDayType const & type, PlanDay const & day)
    {
        types.Add(type);
        ids.emplace(Key(day, std::string(type.getDescription().view())), type.getID());
        ids.emplace(Key(day, ""), type.getID());
    }

    struct BlockOrder
    {
        bool operator()(std::pair<PlanDay, std::string> const & a, std::pair<PlanDay, std::string> const & b) const
        {
            if (a.second != b.second) return a.second < b.second;
            return std::lexicographical_compare(a.first.begin(), a.first.end(), b.first.begin(), b.first.end(),
                                                [](PlanBlock const & x, PlanBlock const & y)
                                                { return std::pair(x.from, x.to) < std::pair(y.from, y.to); });
        }
    };
    using Key = std::pair<PlanDay, std::string>;

    First normal, free;
    CCalendarDayTypeArray types;
    std::map<Key, CCalendarDayTypeID, BlockOrder> ids;
};

}  // namespace

CProjectTime timeAt(Minute minute)
{
    return CProjectTime::fromLocalMinutes(std::clamp(minute, earliestMinute, latestMinute));
}

bool isBeyondTimes(Minute minute)
{
    return minute < earliestMinute || minute > latestMinute;
}

// ---- days -------------------------------------------------------------------------------------------

PlanDay const & PlanDays::on(std::int64_t day) const
{
    auto const exception = exceptions.find(day);
    return exception == exceptions.end() ? week[weekdayIndex(day)] : exception->second;
}

bool PlanDays::hasWork() const
{
    return std::any_of(week.begin(), week.end(), [](PlanDay const & day) { return !day.empty(); });
}

// ---- the calendars of a plan ------------------------------------------------------------------------

PlanCalendars::PlanCalendars(std::vector<PlanCalendar> const & calendars)
{
    for (PlanCalendar const & calendar : calendars) byUID.emplace(calendar.uid, &calendar);
}

PlanCalendar const * PlanCalendars::find(int uid) const
{
    auto const found = byUID.find(uid);
    return found == byUID.end() ? nullptr : found->second;
}

PlanCalendar const * PlanCalendars::baseOf(PlanCalendar const & calendar) const
{
    PlanCalendar const * base = &calendar;
    for (int depth = 0; base && !base->isBase && depth < deepestBase; ++depth) base = find(base->baseUID);
    return base && base->isBase ? base : nullptr;
}

PlanDays PlanCalendars::daysOf(PlanCalendar const & calendar, std::vector<PlanLoss> & losses) const
{
    std::vector<PlanCalendar const *> chain{&calendar};
    while (chain.size() < deepestBase && chain.back()->baseUID >= 0)
    {
        PlanCalendar const * const base = find(chain.back()->baseUID);
        if (!base || std::find(chain.begin(), chain.end(), base) != chain.end()) break;
        chain.push_back(base);
    }
    PlanDays days;
    DayFaults faults;
    std::size_t outside = 0;
    for (auto each = chain.rbegin(); each != chain.rend(); ++each)
    {
        for (std::size_t day = 0; day < 7; ++day)
            if ((*each)->week[day]) days.week[day] = heldDay(*(*each)->week[day], faults);
        for (auto const & [day, blocks] : (*each)->exceptions)
        {
            if (day < firstDay || day > lastDay) ++outside;
            else days.exceptions[day] = heldDay(blocks, faults);
        }
        for (auto const & [day, name] : (*each)->exceptionNames) days.names[day] = name;
    }
    // An exception that changes nothing would still overrule other calendars.
    std::erase_if(days.exceptions,
                  [&](auto const & each) { return each.second == days.week[weekdayIndex(each.first)]; });
    auto const lose = [&](bool isLost, char const * what)
    {
        if (isLost) losses.push_back({"", fmt::format("calendar \"{}\": {}", calendar.name, what)});
    };
    lose(faults.pastMidnight > 0, "work that lasts until midnight ends at 23:59");
    lose(faults.tooMany > 0, "of a day with more than eight blocks of work the first eight are kept");
    lose(outside > 0, "exceptions before 1905 or after 2037");
    return days;
}

// ---- calendars of the model -------------------------------------------------------------------------

CCalendar calendarWithDays(CCalendar const & calendar, PlanDays const & days)
{
    DayTypes types(calendar.getCalendarDayTypes());
    types.begin(normalDayOf(days.week));
    CCalendarWeek week;
    for (int day = 1; day <= 7; ++day) week.setDay(day, types.idOf(days.week[static_cast<std::size_t>(day - 1)], ""));
    CCalendarExceptionArray exceptions;
    for (auto const & [day, blocks] : days.exceptions)
    {
        auto const name = days.names.find(day);
        exceptions.Add(CCalendarException(CProjectDate::fromDayNumber(day),
                                          types.idOf(blocks, name == days.names.end() ? "" : name->second)));
    }
    CCalendar result(calendar);
    result.setCalendarDayTypes(types.all());
    result.setCalendarWeek(week);
    result.setCalendarDayExceptions(exceptions);
    result.setInUse(true);
    result.setNormalDayInUse(true);
    return result;
}

PlanDays daysOfCalendar(CCalendar const & calendar)
{
    CCalendarDayTypeArray const & types = calendar.getCalendarDayTypes();
    auto const blocksOf = [&](CCalendarDayTypeID const & id)
    {
        PlanDay day;
        int const position = types.findByID(id);
        if (position < 0 || !types.GetAt(position).isWorking()) return day;
        // A normal day may be borrowed.
        CCalendarDayType const & own = types.GetAt(position);
        CCalendarDayType const & type = own.isNormal() ? calendar.getNormalDay() : own;
        for (int each = 0; each < type.getNumberOfTimeBlocks(); ++each)
            day.push_back({type.getTimeBlock(each).getStartMinute(), type.getTimeBlock(each).getEndMinute()});
        return day;
    };
    PlanDays days;
    for (int day = 1; day <= 7; ++day)
        days.week[static_cast<std::size_t>(day - 1)] = blocksOf(calendar.getCalendarWeek().getDay(day));
    for (CCalendarException const & exception : calendar.getCalendarDayExceptions())
    {
        int const position = types.findByID(exception.getCalendarDayTypeID());
        if (position < 0) continue;
        std::int64_t const day = exception.getDate().getDayNumber();
        days.exceptions[day] = blocksOf(exception.getCalendarDayTypeID());
        days.names[day] = std::string(types.GetAt(position).getDescription().view());
    }
    return days;
}

}  // namespace orvane::app
