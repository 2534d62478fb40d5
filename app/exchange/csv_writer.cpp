#include "app/exchange/csv_writer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <unordered_map>

#include <fmt/format.h>

#include "app/exchange/plan_check.h"

namespace orvane::app
{
namespace
{

std::string csvTime(OptionalMinute const & time)
{
    if (!time) return {};
    std::string text = isoMinute(*time);
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text;
}

// Without an exponent, and with no more digits than it needs.
std::string plainNumber(double number)
{
    std::string text = fmt::format("{:.6f}", number);
    text.resize(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

// A unit that is used where the length is whole in it.
struct CsvLength
{
    Minute minutes;
    char const * unit;
};

template <std::size_t Count>
std::string lengthText(Minute minutes, CsvLength const (&units)[Count])
{
    std::size_t each = 0;
    while (each + 1 < Count && minutes % units[each].minutes != 0) ++each;
    return fmt::format("{}{}", minutes / units[each].minutes, units[each].unit);
}

// A reader takes a day for 8 hours, so that days are written only where they are.
std::string csvWorkText(Minute minutes, bool hasPlainDays)
{
    constexpr CsvLength withDays[] = {{480, "d"}, {60, "h"}, {1, "m"}}, withoutDays[] = {{60, "h"}, {1, "m"}};
    return hasPlainDays ? lengthText(minutes, withDays) : lengthText(minutes, withoutDays);
}

std::string clockText(Minute minutes)
{
    constexpr CsvLength units[] = {{1440, "ed"}, {60, "eh"}, {1, "em"}};
    return lengthText(minutes, units);
}

char const * linkWord(PlanLinkType type)
{
    constexpr char const * words[] = {"FF", "FS", "SF", "SS"};
    return words[static_cast<std::size_t>(type)];
}

char const * constraintWords(PlanConstraint constraint)
{
    constexpr char const * words[] = {"As Soon As Possible",    "As Late As Possible",   "Must Start On",
                                      "Must Finish On",         "Start No Earlier Than", "Start No Later Than",
                                      "Finish No Earlier Than", "Finish No Later Than"};
    return words[static_cast<std::size_t>(constraint)];
}

// A cell in quotation marks where it needs them, doubled inside.
std::string csvCell(std::string_view text)
{
    bool const isPlain =
        text.find_first_of("\",;\t\r\n") == text.npos && !text.starts_with(' ') && !text.ends_with(' ');
    if (isPlain) return std::string(text);
    std::string cell = "\"";
    for (char const c : text) cell.append(c == '"' ? 2 : 1, c);
    return cell + '"';
}

class CsvPlanWriter
{
public:
    explicit CsvPlanWriter(Plan const & plan) : plan(plan)
    {
        for (PlanTask const & task : plan.tasks) taskIDs.emplace(task.uid, task.id);
        for (PlanResource const & resource : plan.resources) resources.emplace(resource.uid, &resource);
        for (PlanAssignment const & assignment : plan.assignments) assignments.emplace(assignment.taskUID, &assignment);
    }

    std::string write() const
    {
        std::string text;
        for (Column const & column : columns) appendCell(text, column.name);
        text.back() = '\n';
        for (PlanTask const & task : plan.tasks)
        {
            for (Column const & column : columns)
                appendCell(text, task.isBlank && !column.isOfBlank ? "" : (this->*column.cell)(task));
            text.back() = '\n';
        }
        return text;
    }

private:
    using Cell = std::string (CsvPlanWriter::*)(PlanTask const &) const;
    struct Column
    {
        char const * name;
        Cell cell;
        // Whether a row without content has it.
        bool isOfBlank;
    };

    static void appendCell(std::string & text, std::string_view cell)
    {
        text += csvCell(cell);
        text += ',';
    }

    std::string ofDuration(std::optional<Minute> const & duration, bool isElapsed) const
    {
        if (!duration) return {};
        return isElapsed ? clockText(*duration) : csvWorkText(*duration, plan.minutesPerDay == 480);
    }

    std::string id(PlanTask const & task) const { return std::to_string(task.id); }
    std::string name(PlanTask const & task) const { return task.name; }
    std::string level(PlanTask const & task) const { return std::to_string(task.outlineLevel); }
    std::string duration(PlanTask const & task) const { return ofDuration(task.duration, task.isElapsed); }
    std::string start(PlanTask const & task) const { return csvTime(task.start); }
    std::string finish(PlanTask const & task) const { return csvTime(task.finish); }
    std::string predecessors(PlanTask const & task) const
    {
        std::string cell;
        for (PlanLink const & link : task.links)
        {
            auto const id = taskIDs.find(link.predecessorUID);
            if (id == taskIDs.end()) continue;
            if (!cell.empty()) cell += ';';
            cell += fmt::format("{}{}{}", id->second, linkWord(link.type), lag(link));
        }
        return cell;
    }
    std::string lag(PlanLink const & link) const
    {
        if (link.lag == 0) return {};
        char const sign = link.lag < 0 ? '-' : '+';
        double const size = std::abs(link.lag);
        if (link.lagIn == PlanLink::Lag::percent) return sign + plainNumber(size) + '%';
        auto const minutes = static_cast<Minute>(std::llround(size));
        return sign + (link.lagIn == PlanLink::Lag::clock ? clockText(minutes)
                                                          : csvWorkText(minutes, plan.minutesPerDay == 480));
    }
    // A separator behind the last name, too, says that commas in names are none.
    std::string resourceNames(PlanTask const & task) const
    {
        std::string cell;
        auto const [first, last] = assignments.equal_range(task.uid);
        for (auto each = first; each != last; ++each)
        {
            auto const resource = resources.find(each->second->resourceUID);
            if (resource == resources.end() || resource->second->kind == PlanResourceKind::cost) continue;
            cell += resource->second->name + units(*resource->second, each->second->units) + ';';
        }
        if (cell.find(',') == cell.npos && !cell.empty()) cell.pop_back();
        return cell;
    }
    static std::string units(PlanResource const & resource, double units)
    {
        if (resource.kind == PlanResourceKind::material) return "[" + plainNumber(units) + " units]";
        return units == 1 ? std::string() : "[" + plainNumber(units * 100) + "%]";
    }
    std::string percent(PlanTask const & task) const { return plainNumber(task.percentComplete); }
    std::string milestone(PlanTask const & task) const { return task.isMilestone ? "Yes" : "No"; }
    std::string constraintType(PlanTask const & task) const { return constraintWords(task.constraint); }
    std::string constraintDate(PlanTask const & task) const { return csvTime(task.constraintDate); }
    std::string actualStart(PlanTask const & task) const { return csvTime(task.actualStart); }
    std::string actualFinish(PlanTask const & task) const { return csvTime(task.actualFinish); }
    std::string baselineStart(PlanTask const & task) const
    {
        return task.baseline ? csvTime(task.baseline->start) : "";
    }
    std::string baselineFinish(PlanTask const & task) const
    {
        return task.baseline ? csvTime(task.baseline->finish) : "";
    }
    std::string baselineDuration(PlanTask const & task) const
    {
        return task.baseline ? ofDuration(task.baseline->duration, false) : "";
    }
    std::string baselineCost(PlanTask const & task) const
    {
        return task.baseline && task.baseline->cost ? fmt::format("{:.2f}", *task.baseline->cost) : "";
    }
    std::string category(PlanTask const & task) const { return task.category; }
    std::string fixedCost(PlanTask const & task) const
    {
        return task.fixedCost == 0 ? "" : fmt::format("{:.2f}", task.fixedCost);
    }
    std::string notes(PlanTask const & task) const { return task.notes; }

    static constexpr Column columns[] = {
        {"ID", &CsvPlanWriter::id, true},
        {"Name", &CsvPlanWriter::name, false},
        {"Outline Level", &CsvPlanWriter::level, true},
        {"Duration", &CsvPlanWriter::duration, false},
        {"Start", &CsvPlanWriter::start, false},
        {"Finish", &CsvPlanWriter::finish, false},
        {"Predecessors", &CsvPlanWriter::predecessors, false},
        {"Resource Names", &CsvPlanWriter::resourceNames, false},
        {"% Complete", &CsvPlanWriter::percent, false},
        {"Milestone", &CsvPlanWriter::milestone, false},
        {"Constraint Type", &CsvPlanWriter::constraintType, false},
        {"Constraint Date", &CsvPlanWriter::constraintDate, false},
        {"Actual Start", &CsvPlanWriter::actualStart, false},
        {"Actual Finish", &CsvPlanWriter::actualFinish, false},
        {"Baseline Start", &CsvPlanWriter::baselineStart, false},
        {"Baseline Finish", &CsvPlanWriter::baselineFinish, false},
        {"Baseline Duration", &CsvPlanWriter::baselineDuration, false},
        {"Baseline Cost", &CsvPlanWriter::baselineCost, false},
        {"Category", &CsvPlanWriter::category, false},
        {"Fixed Cost", &CsvPlanWriter::fixedCost, false},
        {"Notes", &CsvPlanWriter::notes, false},
    };

    Plan const & plan;
    std::unordered_map<int, int> taskIDs;
    std::unordered_map<int, PlanResource const *> resources;
    std::multimap<int, PlanAssignment const *> assignments;
};

}  // namespace

std::string writeCsv(Plan const & plan)
{
    return CsvPlanWriter(plan).write();
}

std::vector<PlanLoss> lossesOfCsv(Plan const & plan)
{
    std::vector<PlanLoss> losses;
    for (PlanCalendar const & calendar : plan.calendars)
        losses.push_back({"", fmt::format("the calendar \"{}\"", calendar.name)});
    for (PlanResource const & resource : plan.resources)
    {
        bool const isMore = resource.kind == PlanResourceKind::cost || resource.standardRate != 0 ||
                            resource.costPerUse != 0 || resource.calendarUID >= 0 || !resource.notes.empty() ||
                            !resource.group.empty();
        if (isMore)
            losses.push_back(
                {"", fmt::format("of the resource \"{}\" all but its name and its assignments", resource.name)});
        if (resource.name.find_first_of(";[") != resource.name.npos)
            losses.push_back(
                {"", fmt::format("the name of the resource \"{}\", which holds a sign that separates names",
                                 resource.name)});
    }
    for (PlanTask const & task : plan.tasks)
        if (task.calendarUID >= 0) losses.push_back({task.name, "the calendar of the task"});
    return losses;
}

}  // namespace orvane::app
