#include "app/planning/reasons.h"

#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "app/planning/scheduler.h"
#include "app/text_values.h"
#include "schedule/calendar.h"

namespace orvane::app
{
namespace
{

using Json = nlohmann::ordered_json;

std::string dateText(CProjectDate const & date)
{
    return fmt::format("{} {}", date.GetDayOfWeekAsString().view(), isoDate(date));
}

std::string hoursText(long minutes)
{
    auto const counted = [](long count, char const * unit)
    { return count ? fmt::format("{} {}{}", count, unit, count == 1 ? "" : "s") : std::string(); };
    std::string text = counted(minutes / 60, "hour");
    if (minutes % 60 || text.empty())
        text += (text.empty() ? "" : " ") + fmt::format("{} minute{}", minutes % 60, minutes % 60 == 1 ? "" : "s");
    return text;
}

// Working time as people say it: in days where it comes out even.
std::string workText(CProjectDuration const & duration, CCalendar const & calendar)
{
    long const day = secondsOfNormalDay(calendar), days = duration.GetTotalSeconds() / day;
    if (days == 0 || duration.GetTotalSeconds() % day != 0) return hoursText(duration.GetTotalMinutes()) + " of work";
    return fmt::format("{} working day{}", days, days == 1 ? "" : "s");
}

std::string delayText(CLink const & link)
{
    CProjectDuration const & delay = link.getDelay();
    if (delay == CProjectDuration(0)) return {};
    return fmt::format(", {} by {} of the clock", delay < CProjectDuration(0) ? "brought forward" : "delayed",
                       hoursText(std::abs(delay.GetTotalMinutes())));
}

// Days without work in a stretch of time, and why they have none.
class DaysOff
{
public:
    // The exceptions from the calendar's week alone, or all days.
    enum class Which
    {
        exceptions,
        all
    };

    DaysOff(CProject const & project, CTask const & task, CProjectTime const & from, CProjectTime const & to,
            Which which)
    {
        // Long stretches are read so far and no further.
        constexpr std::int64_t mostRead = 3660;
        CCalendar const & calendar = task.getCalendar();
        std::int64_t const first = from.getDayNumber();
        std::int64_t const last = std::min(to.getDayNumber(), first + mostRead);
        for (std::int64_t day = first; day <= last && days.size() < mostShown; ++day)
        {
            CProjectDate const date = CProjectDate::fromDayNumber(day);
            CCalendarDayType const & type = calendar.getDayType(date);
            if (type.isWorking() && type.getWorkingDuration() > CProjectDuration(0)) continue;
            bool const isException =
                calendar.isDayAnException(date) || project.getProjectCalendar().isDayAnException(date);
            if (which == Which::all || isException) days.push_back({date, isException, type.getDescription()});
        }
    }

    Json json() const
    {
        Json list = Json::array();
        for (Day const & day : days)
            list.push_back({{"date", isoDate(day.date)}, {"exception", day.isException}, {"dayType", day.type.view()}});
        return list;
    }
    std::string text() const
    {
        std::string result;
        for (Day const & day : days)
        {
            result += (result.empty() ? "" : ", ") + dateText(day.date);
            if (day.isException) result += fmt::format(" ({})", day.type.view());
        }
        return days.size() < mostShown ? result : result + " and more";
    }
    bool isEmpty() const { return days.empty(); }

private:
    static constexpr std::size_t mostShown = 12;
    struct Day
    {
        CProjectDate date;
        bool isException;
        CString type;
    };
    std::vector<Day> days;
};

class Explainer
{
public:
    Explainer(Rows const & rows, CProject const & project) : rows(rows), project(project) {}

    std::vector<Reason> explain(CTask const & task)
    {
        if (!task.isValid()) return {};
        follow(Point{&task, true});
        if (!told.contains({&task, false})) follow(Point{&task, false});
        return std::move(reasons);
    }

private:
    // The start or the end of a task.
    struct Point
    {
        CTask const * task;
        bool isEnd;
        auto operator<=>(Point const &) const = default;
    };
    using Next = std::optional<Point>;

    // A link that binds the start of a task, also by way of a summary above it.
    struct Driver
    {
        CLink const * link = nullptr;
        CTask const * holder = nullptr;
        CTask const * upstream = nullptr;
        CProjectTime allowed;
    };

    void follow(Next point)
    {
        while (point)
        {
            if (!told.insert(*point).second)
            {
                say(*point, "seen", timeOf(*point), {},
                    fmt::format("Why it {} then is told above.", point->isEnd ? "ends" : "starts"));
                return;
            }
            point = point->isEnd ? explainEnd(*point->task) : explainStart(*point->task);
        }
    }

    static CProjectTime timeOf(Point const & point)
    {
        return point.isEnd ? point.task->getEndOfStoredRisk() : point.task->getStartTime();
    }

    void say(Point const & of, char const * kind, CProjectTime const & time, Json facts, std::string text)
    {
        if (facts.is_null()) facts = Json::object();
        reasons.push_back({of.task, of.isEnd, kind, time, std::move(facts), std::move(text)});
    }

    Json factsOf(CTask const & other) const
    {
        return {{"name", other.getName().view()}, {"id", idText(other.getID())}, {"row", rows.numberOf(other)}};
    }

    // ---- ends ---------------------------------------------------------------------------------------

    Next explainEnd(CTask const & task)
    {
        if (task.isSummaryTask()) return explainByChild(task, true);
        Point const end{&task, true};
        if (task.getStatus() == CTaskStatus::Finished)
        {
            say(end, "actual", task.getActualFinishTime(), {},
                fmt::format("It was finished on {}.", momentText(task.getActualFinishTime())));
            addEndOfWorkingTime(task, task.getActualFinishTime());
            addStored(task);
            return {};
        }
        if (task.isOpen()) explainOpenEnd(task);
        else explainStartedEnd(task);
        addStored(task);
        return Point{&task, false};
    }

    void explainOpenEnd(CTask const & task)
    {
        CProjectTime const start = task.getStartTime();
        if (task.isKeyDate())
        {
            addWork(task, "work", start, task.getDuration(), task.getPlannedEndTime(),
                    "As a key date it takes no time");
            return;
        }
        addWork(task, "work", start, task.getDuration(), task.getPlannedEndTime(), "It takes");
        if (task.getEndOfUnmitigatedRisk() == task.getPlannedEndTime()) return;
        bool const isAdditive = task.getRiskType() == CRiskType::Additive;
        addWork(task, "risk", start, task.getDurationToEndOfUnmitigatedRisk(), task.getEndOfUnmitigatedRisk(),
                isAdditive ? "With its unmitigated risk it takes"
                           : "Links do not wait for the risk that was mitigated or buffered; without it it takes");
    }

    // From the work alone through each report, as they stand on the task.
    void explainStartedEnd(CTask const & task)
    {
        CCalendar const & calendar = task.getCalendar();
        CProjectDuration length = task.getDuration();
        if (task.getRiskType() == CRiskType::Subtractive) length = length - task.getTotalRiskDuration();
        length = length + task.getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Unmitigated);
        CProjectTime end = calendar.addDurationToTime(task.getActualStartTime(), length, true);
        bool const hasRisk = !task.getAssignedRisks().IsEmpty();
        addWork(task, "work", task.getActualStartTime(), length, end,
                hasRisk ? "With the risk that reports have left of it, it takes" : "It takes");
        for (CTaskReport const & report : task.getTaskReports())
        {
            bool const isDelay = report.getType() == CTaskReportType::Delay;
            CProjectTime const from = end;
            end = isDelay ? calendar.addDurationToTime(from, report.getDuration(), true)
                          : calendar.subtractDurationFromTime(from, report.getDuration(), true);
            addReport(task, report, isDelay, from, end);
        }
        addEndOfWorkingTime(task, end);
    }

    // Links wait for an end by the calendar.
    void addEndOfWorkingTime(CTask const & task, CProjectTime const & end)
    {
        CProjectTime const inForce = task.getEndOfUnmitigatedRisk();
        if (inForce == end) return;
        say({&task, true}, "calendar", inForce, {{"from", isoTime(end)}, {"calendar", calendarName(task)}},
            fmt::format("{} has its work from {} end on {}.", calendarName(task), momentText(task.getStartTime()),
                        momentText(inForce)));
    }

    void addReport(CTask const & task, CTaskReport const & report, bool isDelay, CProjectTime const & from,
                   CProjectTime const & end)
    {
        char const * const type = isDelay ? "delay" : "advance";
        std::string const dated = report.getDate().isValid() ? " of " + dateText(report.getDate()) : std::string();
        say({&task, true}, "report", end,
            {{"from", isoTime(from)},
             {"type", type},
             {"durationMinutes", report.getDuration().GetTotalMinutes()},
             {"date", isoDate(report.getDate())}},
            fmt::format("The report{} of {} {} of {} moves its end to {}.", dated, isDelay ? "a" : "an", type,
                        workText(report.getDuration(), task.getCalendar()), momentText(end)));
    }

    void addWork(CTask const & task, char const * kind, CProjectTime const & from, CProjectDuration const & length,
                 CProjectTime const & end, std::string_view opening)
    {
        DaysOff const off(project, task, from, end, DaysOff::Which::exceptions);
        std::string text(opening);
        if (!task.isKeyDate()) text += " " + workText(length, task.getCalendar());
        text += fmt::format(" from {}, and ends on {}.", momentText(from), momentText(end));
        if (!off.isEmpty()) text += fmt::format(" No work is done on {}.", off.text());
        say({&task, true}, kind, end,
            {{"from", isoTime(from)}, {"durationMinutes", length.GetTotalMinutes()}, {"daysOff", off.json()}},
            std::move(text));
    }

    void addStored(CTask const & task)
    {
        CProjectDuration const stored = task.getStoredRiskDuration();
        if (stored == CProjectDuration(0)) return;
        Json sources = Json::array();
        std::string names;
        for (CTask const * source : sourcesOf(task))
        {
            sources.push_back(factsOf(*source));
            names += (names.empty() ? " by " : ", ") + quoted(*source);
        }
        say({&task, true}, "storedRisk", task.getEndOfStoredRisk(),
            {{"from", isoTime(task.getEndOfUnmitigatedRisk())},
             {"durationMinutes", stored.GetTotalMinutes()},
             {"sources", std::move(sources)}},
            fmt::format("Links also wait for {} of risk stored on it{}, until {}.",
                        workText(stored, task.getCalendar()), names, momentText(task.getEndOfStoredRisk())));
    }

    // The tasks that buffer risk on the task.
    std::vector<CTask const *> sourcesOf(CTask const & buffer)
    {
        if (sources.empty())
            for (int row = 0; row < rows.size(); ++row)
            {
                // A task is named once for all its risks in one buffer.
                for (CAssignedRisk const & assigned : rows[row].task->getAssignedRisks())
                    if (assigned.getStatus() == CRiskStatus::Buffered)
                        if (int const at = rows.find(assigned.getBufferID()); at != Rows::none)
                            sources.emplace(at, row);
            }
        std::vector<CTask const *> found;
        auto const [first, last] =
            std::pair(sources.lower_bound({rows.of(buffer), 0}), sources.lower_bound({rows.of(buffer) + 1, 0}));
        for (auto each = first; each != last; ++each) found.push_back(rows[each->second].task);
        return found;
    }

    // ---- starts -------------------------------------------------------------------------------------

    Next explainStart(CTask const & task)
    {
        if (task.isSummaryTask()) return explainByChild(task, false);
        Point const start{&task, false};
        CProjectTime const time = task.getStartTime();
        if (!task.isOpen())
        {
            say(start, "actual", time, {{"planned", isoTime(task.getPlannedStartTime())}},
                fmt::format("Work on it began on {}; it was planned for {}.", momentText(time),
                            momentText(task.getPlannedStartTime())));
            return {};
        }
        Driver const driver = findDriver(task);
        bool const drives = driver.link && addLink(task, driver);
        if (!task.canReschedule())
            say(start, "constraint", time, {{"constraint", task.getConstraintType().getString().view()}},
                fmt::format("It cannot be rescheduled from {}.", momentText(time)));
        else if (!drives) addChoice(task, driver);
        if (!drives) return {};
        return Point{driver.upstream, leavesFinish(*driver.link)};
    }

    Driver findDriver(CTask const & task) const
    {
        Driver driver;
        for (int row = rows.of(task); row != Rows::none && rows[row].counts; row = rows[row].parent)
            for (CLink const & link : rows[row].task->getUpstreamLinks())
            {
                CTask const * const upstream = project.getTask(link.getUpstreamTaskID());
                if (!upstream) break;
                CProjectTime const allowed = link.getEarliestStartOfDownstreamTask(*upstream, task);
                if (allowed.isValid() && (!driver.link || allowed > driver.allowed))
                    driver = {&link, rows[row].task, upstream, allowed};
            }
        return driver;
    }

    // Whether the task starts when the link allows it.
    bool addLink(CTask const & task, Driver const & driver)
    {
        CLink const & link = *driver.link;
        CCalendar const & calendar = task.getCalendar();
        bool const fromEnd = leavesFinish(link), toEnd = arrivesAtFinish(link);
        CProjectTime const from = timeOf({driver.upstream, fromEnd});
        CProjectTime const moment = from + link.getDelay();
        CProjectTime const valid = toEnd ? calendar.getNextValidEndTime(moment) : driver.allowed;
        Json facts = {{"upstream", factsOf(*driver.upstream)},
                      {"type", nameOfType(link)},
                      {"from", isoTime(from)},
                      {"delayMinutes", link.getDelay().GetTotalMinutes()},
                      {"moment", isoTime(moment)}};
        if (driver.holder != &task) facts["holder"] = factsOf(*driver.holder);
        say({&task, false}, "link", driver.allowed, std::move(facts),
            fmt::format("The link from {}{} ({}) allows it to start on {} at the earliest{}: {} {} on {}{}.",
                        quoted(*driver.upstream),
                        driver.holder != &task ? " to the summary " + quoted(*driver.holder) : std::string(),
                        nameOfType(link), momentText(driver.allowed),
                        toEnd ? " and to end on " + momentText(valid) : std::string(), quoted(*driver.upstream),
                        fromEnd ? "ends" : "starts", momentText(from), delayText(link)));
        if (!(valid == moment)) addGap(task, moment, valid);
        CProjectTime const time = task.getStartTime();
        if (time == driver.allowed) return true;
        // A task of no length may be allowed to end where none may start.
        bool const drives = time == calendar.getNextValidStartTime(driver.allowed);
        if (drives) addGap(task, driver.allowed, time);
        return drives;
    }

    void addGap(CTask const & task, CProjectTime const & from, CProjectTime const & to)
    {
        DaysOff const off(project, task, from, to, DaysOff::Which::all);
        say({&task, false}, "calendar", to,
            {{"from", isoTime(from)}, {"calendar", calendarName(task)}, {"daysOff", off.json()}},
            fmt::format("{} has no work between {} and {}{}.", calendarName(task), momentText(from), momentText(to),
                        off.isEmpty() ? ", outside its hours" : ": " + off.text()));
    }

    void addChoice(CTask const & task, Driver const & driver)
    {
        CProjectTime const time = task.getStartTime();
        Json facts;
        std::string text = fmt::format("No link binds it: the planner chose {}.", momentText(time));
        if (driver.link)
        {
            CProjectDuration const apart = task.getCalendar().subtractTimeFromTime(time, driver.allowed);
            facts = {{"allowed", isoTime(driver.allowed)}, {"workingMinutesApart", apart.GetTotalMinutes()}};
            text = fmt::format("It stands on {}, {} {} its links allow it.", momentText(time),
                               workText(apart, task.getCalendar()), time > driver.allowed ? "later than" : "before");
        }
        say({&task, false}, "choice", time, std::move(facts), std::move(text));
    }

    // ---- summaries and calendars --------------------------------------------------------------------

    Next explainByChild(CTask const & summary, bool isEnd)
    {
        Point const point{&summary, isEnd};
        CProjectTime const time = timeOf(point);
        CTask const * const child = time.isValid() ? childThatGives(point, time) : nullptr;
        if (!child)
        {
            say(point, "choice", time, {}, "It is a summary without tasks that have dates.");
            return {};
        }
        bool const countsAllRisk = timeOf({child, isEnd}) == time;
        say(point, isEnd ? "lastChild" : "firstChild", time,
            {{"child", factsOf(*child)}, {"countsAllStoredRisk", countsAllRisk}},
            fmt::format("It is a summary: of the tasks below it {} {} on {}{}.", quoted(*child),
                        isEnd ? "ends last," : "starts first,", momentText(time),
                        countsAllRisk ? "" : ", without the risk that tasks further down store on it"));
        return Point{child, isEnd};
    }

    // Risk that tasks behind a summary store below it is not in its end.
    CTask const * childThatGives(Point const & summary, CProjectTime const & time) const
    {
        CTask const * partly = nullptr;
        for (CTask const & child : *summary.task->getSubTasks())
        {
            if (!child.isValid()) continue;
            CProjectTime const own = timeOf({&child, summary.isEnd});
            if (own == time) return &child;
            if (summary.isEnd && own > time && child.getEndOfUnmitigatedRisk() <= time) partly = &child;
        }
        return partly;
    }

    std::string calendarName(CTask const & task) const
    {
        CCalendarID const & id = task.getCalendar().getID();
        if (id == project.getProjectCalendar().getID()) return "The project calendar";
        for (CCompany const & company : project.getAllCompanies())
            if (company.getCalendar().getID() == id)
                return fmt::format("The calendar of \"{}\"", company.getName().view());
        for (CAssignedResource const & assigned : task.getAssignedResources())
        {
            CCalendar const * const own = project.getResourceCalendarFromAssignedResourceID(assigned.getID());
            CResourceBase const * const resource = project.getResource(assigned.getResourceID());
            if (own && resource && own->getID() == id)
                return fmt::format("The calendar of \"{}\"", resource->getName().view());
        }
        return "Its calendar";
    }

    Rows const & rows;
    CProject const & project;
    std::vector<Reason> reasons;
    std::set<Point> told;
    // Pairs of rows: a buffer, and a task that buffers risk on it.
    std::set<std::pair<int, int>> sources;
};

}  // namespace

std::vector<Reason> explainDates(Rows const & rows, CProject const & project, CTask const & task)
{
    return Explainer(rows, project).explain(task);
}

std::string momentText(CProjectTime const & time)
{
    if (!time.isValid()) return "no date";
    return fmt::format("{} {} {:02}:{:02}", time.getDate().GetDayOfWeekAsString().view(), isoDate(time.getDate()),
                       time.GetHour(), time.GetMinute());
}

}  // namespace orvane::app
