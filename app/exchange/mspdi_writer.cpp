#include "app/exchange/mspdi_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "app/exchange/mspdi_values.h"

namespace orvane::app
{
namespace
{

// The field for texts of tasks that holds their category, as the format numbers it.
constexpr int categoryField = 188743731;
// Formats of durations and lags: days of work, days of the clock, percent.
constexpr int inWorkDays = 7, inClockDays = 8, inPercent = 19;

// How many bytes of UTF-8 begin there that XML may hold; 0 for none.
std::size_t characterAt(std::string_view text, std::size_t at)
{
    auto const byte = [&](std::size_t index)
    { return at + index < text.size() ? static_cast<unsigned char>(text[at + index]) : 0U; };
    unsigned const first = byte(0);
    if (first < 0x80) return first >= ' ' || first == '\t' || first == '\n' || first == '\r';
    std::size_t const length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) return 0;
    unsigned code = first & (0x7FU >> length);
    for (std::size_t each = 1; each < length; ++each)
    {
        if ((byte(each) & 0xC0U) != 0x80U) return 0;
        code = code << 6 | (byte(each) & 0x3FU);
    }
    constexpr unsigned least[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const isHalf = code >= 0xD800 && code < 0xE000;
    bool const isAllowed = code >= least[length] && code <= 0x10FFFF && !isHalf && code != 0xFFFE && code != 0xFFFF;
    return isAllowed ? length : 0;
}

class ElementWriter
{
public:
    // An element with others inside; `body` writes them.
    template <class Body>
    void in(char const * name, Body const & body)
    {
        line(fmt::format("<{}>", name));
        ++depth;
        body();
        --depth;
        line(fmt::format("</{}>", name));
    }

    void put(char const * name, std::string_view text)
    {
        out.append(depth, '\t');
        out.append(1, '<').append(name).append(1, '>');
        escape(text);
        out.append("</").append(name).append(">\n");
    }
    void put(char const * name, std::string const & text) { put(name, std::string_view(text)); }
    void put(char const * name, char const * text) { put(name, std::string_view(text)); }
    void put(char const * name, bool flag) { put(name, flag ? "1" : "0"); }
    void put(char const * name, int number) { put(name, fmt::format_int(number).c_str()); }
    void put(char const * name, double number) { put(name, fmt::format("{}", number)); }

    void putGiven(char const * name, std::string const & text)
    {
        if (!text.empty()) put(name, text);
    }
    void putTime(char const * name, OptionalMinute const & time)
    {
        if (time) put(name, mspdiTime(*time));
    }
    void putDuration(char const * name, Minute minutes) { put(name, mspdiDuration(minutes)); }
    // In hundredths.
    void putMoney(char const * name, double amount) { put(name, std::round(amount * 1e4) / 100); }

    void line(std::string_view text) { out.append(depth, '\t').append(text).append(1, '\n'); }
    std::string take() { return std::move(out); }

private:
    void escape(std::string_view text);

    std::string out;
    std::size_t depth = 0;
};

void ElementWriter::escape(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();)
    {
        std::size_t const length = characterAt(text, at);
        switch (text[at])
        {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            // Readers make a line feed of it.
            case '\r': out += "&#13;"; break;
            default: out.append(length > 0 ? text.substr(at, length) : "?");
        }
        at += std::max<std::size_t>(length, 1);
    }
}

// Days that follow each other and are alike.
struct Stretch
{
    std::int64_t from, to;
    PlanDay const * work;
    std::string_view name;
};

std::vector<Stretch> stretchesOf(PlanCalendar const & calendar)
{
    std::vector<Stretch> stretches;
    for (auto const & [day, work] : calendar.exceptions)
    {
        auto const named = calendar.exceptionNames.find(day);
        std::string_view const name = named == calendar.exceptionNames.end() ? std::string_view() : named->second;
        bool const goesOn = !stretches.empty() && stretches.back().to == day - 1 && *stretches.back().work == work &&
                            stretches.back().name == name;
        if (goesOn) stretches.back().to = day;
        else stretches.push_back({day, day, &work, name});
    }
    return stretches;
}

class PlanWriter : private ElementWriter
{
public:
    explicit PlanWriter(Plan const & plan) : plan(plan)
    {
        for (PlanTask const & task : plan.tasks) tasks.emplace(task.uid, &task);
        for (PlanResource const & resource : plan.resources) resources.emplace(resource.uid, &resource);
    }

    std::string write();

private:
    void writeProject();
    void writeCategoryField();
    void writeCalendar(PlanCalendar const & calendar);
    void writeDay(int dayType, PlanDay const & work, Stretch const * stretch);
    void writeWork(PlanDay const & work);
    void writePeriod(Stretch const & stretch);
    void writeException(Stretch const & stretch);
    void writeSummary();
    void writeTask(PlanTask const & task);
    void writeCategory(std::string const & category);
    void writeProgress(PlanTask const & task);
    void writeLink(PlanLink const & link);
    void writeBaseline(PlanBaseline const & baseline);
    void writeResource(PlanResource const & resource);
    void writeAssignment(PlanAssignment const & assignment, int uid);
    std::string outlineNumber(int level);

    Plan const & plan;
    std::unordered_map<int, PlanTask const *> tasks;
    std::unordered_map<int, PlanResource const *> resources;
    // How many tasks stand on each level below the same parent so far.
    std::vector<int> outline;
};

std::string PlanWriter::write()
{
    line("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>");
    line("<Project xmlns=\"http://schemas.microsoft.com/project\">");
    writeProject();
    writeCategoryField();
    in("Calendars",
       [&]
       {
           for (auto const & each : plan.calendars) writeCalendar(each);
       });
    in("Tasks",
       [&]
       {
           if (!tasks.contains(0)) writeSummary();
           for (auto const & each : plan.tasks) writeTask(each);
       });
    in("Resources",
       [&]
       {
           for (auto const & each : plan.resources) writeResource(each);
       });
    in("Assignments",
       [&]
       {
           int uid = 0;
           for (auto const & each : plan.assignments) writeAssignment(each, ++uid);
       });
    line("</Project>");
    return take();
}

void PlanWriter::writeProject()
{
    constexpr int newest = 14;
    put("SaveVersion", newest);
    putGiven("Name", plan.name);
    putGiven("Title", plan.name);
    put("ScheduleFromStart", true);
    putTime("StartDate", plan.start);
    putTime("FinishDate", plan.finish);
    bool const isCode =
        plan.currency.size() == 3 && plan.currency.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
    putGiven(isCode ? "CurrencyCode" : "CurrencySymbol", plan.currency);
    put("CalendarUID", plan.calendarUID);
    put("MinutesPerDay", plan.minutesPerDay);
    put("MinutesPerWeek", plan.minutesPerWeek);
    putTime("StatusDate", plan.statusDate);
}

void PlanWriter::writeCategoryField()
{
    if (std::ranges::all_of(plan.tasks, [](PlanTask const & task) { return task.category.empty(); })) return;
    in("ExtendedAttributes",
       [&]
       {
           in("ExtendedAttribute",
              [&]
              {
                  put("FieldID", categoryField);
                  put("FieldName", "Text1");
                  put("Alias", "Category");
              });
       });
}

void PlanWriter::writeCalendar(PlanCalendar const & calendar)
{
    auto const stretches = stretchesOf(calendar);
    auto const writeWeek = [&]
    {
        for (std::size_t day = 0; day < calendar.week.size(); ++day)
            if (calendar.week[day]) writeDay(static_cast<int>(day) + 1, *calendar.week[day], nullptr);
        // Programs before 2007 read exceptions here alone.
        for (Stretch const & each : stretches) writeDay(0, *each.work, &each);
    };
    bool const hasWeek =
        !stretches.empty() || std::ranges::any_of(calendar.week, [](auto const & day) { return !!day; });
    in("Calendar",
       [&]
       {
           put("UID", calendar.uid);
           putGiven("Name", calendar.name);
           put("IsBaseCalendar", calendar.isBase);
           put("BaseCalendarUID", calendar.baseUID);
           if (hasWeek) in("WeekDays", writeWeek);
           if (stretches.empty()) return;
           in("Exceptions",
              [&]
              {
                  for (Stretch const & each : stretches) writeException(each);
              });
       });
}

void PlanWriter::writeDay(int dayType, PlanDay const & work, Stretch const * stretch)
{
    in("WeekDay",
       [&]
       {
           put("DayType", dayType);
           put("DayWorking", !work.empty());
           if (stretch) writePeriod(*stretch);
           writeWork(work);
       });
}

void PlanWriter::writeWork(PlanDay const & work)
{
    if (work.empty()) return;
    auto const writeBlock = [&](PlanBlock const & block)
    {
        put("FromTime", mspdiTimeOfDay(block.from));
        put("ToTime", mspdiTimeOfDay(block.to));
    };
    in("WorkingTimes",
       [&]
       {
           for (PlanBlock const & each : work) in("WorkingTime", [&] { writeBlock(each); });
       });
}

void PlanWriter::writePeriod(Stretch const & stretch)
{
    in("TimePeriod",
       [&]
       {
           put("FromDate", mspdiTime(stretch.from * minutesOfDay));
           put("ToDate", mspdiTime((stretch.to + 1) * minutesOfDay - 1));
       });
}

void PlanWriter::writeException(Stretch const & stretch)
{
    constexpr int daily = 1;
    in("Exception",
       [&]
       {
           put("EnteredByOccurrences", false);
           writePeriod(stretch);
           put("Occurrences", static_cast<int>(stretch.to - stretch.from + 1));
           putGiven("Name", std::string(stretch.name));
           put("Type", daily);
           put("DayWorking", !stretch.work->empty());
           writeWork(*stretch.work);
       });
}

void PlanWriter::writeSummary()
{
    in("Task",
       [&]
       {
           put("UID", 0);
           put("ID", 0);
           putGiven("Name", plan.name);
           put("Type", 1);
           put("IsNull", false);
           put("OutlineNumber", "0");
           put("OutlineLevel", 0);
           putTime("Start", plan.start);
           putTime("Finish", plan.finish);
           put("Summary", true);
       });
}

std::string PlanWriter::outlineNumber(int level)
{
    auto const depth = static_cast<std::size_t>(std::max(level, 1));
    outline.resize(depth);
    ++outline.back();
    return fmt::format("{}", fmt::join(outline, "."));
}

void PlanWriter::writeTask(PlanTask const & task)
{
    in("Task",
       [&]
       {
           put("UID", task.uid);
           put("ID", task.id);
           if (task.isBlank) return put("IsNull", true);
           putGiven("Name", task.name);
           put("Active", task.isActive);
           put("Manual", task.isManual);
           // Summary tasks keep their duration, which is that of their children.
           put("Type", task.isSummary ? 1 : 0);
           put("IsNull", false);
           std::string const number = outlineNumber(task.outlineLevel);
           put("WBS", number);
           put("OutlineNumber", number);
           put("OutlineLevel", task.outlineLevel);
           putTime("Start", task.start);
           putTime("Finish", task.finish);
           if (task.duration) putDuration("Duration", *task.duration);
           if (task.isManual) putTime("ManualStart", task.start), putTime("ManualFinish", task.finish);
           if (task.isManual && task.duration) putDuration("ManualDuration", *task.duration);
           put("DurationFormat", task.isElapsed ? inClockDays : inWorkDays);
           put("Milestone", task.isMilestone);
           put("Summary", task.isSummary);
           if (task.fixedCost != 0) putMoney("FixedCost", task.fixedCost);
           writeProgress(task);
           put("ConstraintType", static_cast<int>(task.constraint));
           put("CalendarUID", task.calendarUID);
           putTime("ConstraintDate", task.constraintDate);
           putTime("Deadline", task.deadline);
           putGiven("Notes", task.notes);
           for (PlanLink const & each : task.links) writeLink(each);
           if (!task.category.empty()) writeCategory(task.category);
           if (task.baseline) writeBaseline(*task.baseline);
       });
}

void PlanWriter::writeCategory(std::string const & category)
{
    in("ExtendedAttribute",
       [&]
       {
           put("FieldID", categoryField);
           put("Value", category);
       });
}

void PlanWriter::writeProgress(PlanTask const & task)
{
    int const done = static_cast<int>(std::lround(task.percentComplete));
    put("PercentComplete", done);
    putTime("ActualStart", task.actualStart);
    putTime("ActualFinish", task.actualFinish);
    if (!task.duration) return;
    Minute const actual = std::llround(static_cast<double>(*task.duration) * done / 100);
    putDuration("ActualDuration", actual);
    putDuration("RemainingDuration", *task.duration - actual);
}

void PlanWriter::writeLink(PlanLink const & link)
{
    bool const isPercent = link.lagIn == PlanLink::Lag::percent;
    int const format = isPercent ? inPercent : link.lagIn == PlanLink::Lag::clock ? inClockDays : inWorkDays;
    in("PredecessorLink",
       [&]
       {
           put("PredecessorUID", link.predecessorUID);
           put("Type", static_cast<int>(link.type));
           put("CrossProject", false);
           put("LinkLag", static_cast<int>(std::lround(link.lag * (isPercent ? 1 : 10))));
           put("LagFormat", format);
       });
}

void PlanWriter::writeBaseline(PlanBaseline const & baseline)
{
    in("Baseline",
       [&]
       {
           put("Number", 0);
           putTime("Start", baseline.start);
           putTime("Finish", baseline.finish);
           if (baseline.duration) putDuration("Duration", *baseline.duration);
           if (baseline.duration) put("DurationFormat", inWorkDays);
           if (baseline.cost) putMoney("Cost", *baseline.cost);
       });
}

void PlanWriter::writeResource(PlanResource const & resource)
{
    // By hour, or by unit of a material.
    constexpr int hours = 2, units = 8;
    int const format = resource.kind == PlanResourceKind::material ? units : hours;
    in("Resource",
       [&]
       {
           put("UID", resource.uid);
           put("ID", resource.uid);
           putGiven("Name", resource.name);
           put("Type", resource.kind == PlanResourceKind::work);
           put("IsNull", false);
           putGiven("Group", resource.group);
           put("MaxUnits", resource.maxUnits);
           put("StandardRate", resource.standardRate);
           put("StandardRateFormat", format);
           put("OvertimeRate", resource.overtimeRate);
           put("OvertimeRateFormat", hours);
           putMoney("CostPerUse", resource.costPerUse);
           put("CalendarUID", resource.calendarUID);
           putGiven("Notes", resource.notes);
           put("IsCostResource", resource.kind == PlanResourceKind::cost);
       });
}

void PlanWriter::writeAssignment(PlanAssignment const & assignment, int uid)
{
    auto const task = tasks.find(assignment.taskUID);
    auto const resource = resources.find(assignment.resourceUID);
    if (task == tasks.end() || resource == resources.end()) return;
    // Work of people counts their time, that of a material its units as hours.
    constexpr double minutesOfUnit = 60;
    bool const isCost = resource->second->kind == PlanResourceKind::cost;
    bool const isWork = resource->second->kind == PlanResourceKind::work;
    double const unit = isWork ? static_cast<double>(task->second->duration.value_or(0)) : minutesOfUnit;
    Minute const work = std::llround(std::clamp(assignment.units * unit, 0.0, 1e9));
    in("Assignment",
       [&]
       {
           put("UID", uid);
           put("TaskUID", assignment.taskUID);
           put("ResourceUID", assignment.resourceUID);
           if (isCost) putMoney("Cost", assignment.cost);
           putTime("Finish", task->second->finish);
           putTime("Start", task->second->start);
           put("Units", assignment.units);
           putDuration("Work", work);
           put("WorkContour", 0);
       });
}

}  // namespace

std::string writeMspdi(Plan const & plan)
{
    return PlanWriter(plan).write();
}

}  // namespace orvane::app
