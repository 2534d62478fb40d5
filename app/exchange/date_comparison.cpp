#include "app/exchange/date_comparison.h"

#include <cmath>

#include <fmt/format.h>

#include "app/exchange/plan_calendars.h"
#include "app/exchange/plan_check.h"
#include "app/text_values.h"
#include "model/project.h"

namespace orvane::app
{
namespace
{

class Comparison
{
public:
    Comparison(Plan const & plan, std::vector<CTaskID> const & ids, CProject const & project, ImportReport & report)
        : plan(plan), ids(ids), project(project), report(report)
    {
    }

    void run()
    {
        for (std::size_t each = 0; each < ids.size(); ++each)
        {
            PlanTask const & from = plan.tasks[each];
            CTask const * const task = from.isBlank ? nullptr : project.getTask(ids[each]);
            if (!task) continue;
            bool const isSummary = task->isSummaryTask();
            compare(from, "start", from.start, task->getStartTime(), [&] { return reasonOfStart(from, isSummary); });
            compare(from, "finish", from.finish, task->getEndTime(), [&] { return reasonOfFinish(from, *task); });
            if (from.baseline && task->isBaselineSet())
            {
                compare(from, "baselineStart", from.baseline->start, task->getBaselineStart(),
                        [&] { return reasonOfStart(from, false); });
                compare(
                    from, "baselineFinish", from.baseline->finish, task->getBaselineFinish(),
                    []
                    { return std::string("a baseline finishes where its duration ends on the calendar of the task"); });
            }
            comparePercent(from, *task);
        }
    }

private:
    template <class Reason>
    void compare(PlanTask const & from, char const * field, OptionalMinute const & recorded,
                 CProjectTime const & computed, Reason const & reason)
    {
        if (!recorded) return;
        bool const isValid = computed.isValid();
        Minute const minutes = isValid ? computed.getLocalMinutes() - *recorded : 0;
        if (isValid && minutes == 0)
        {
            report.datesAgreeing += field[0] != 'b';
            return;
        }
        report.differences.push_back({nameOf(from), field, isoMinute(*recorded), isoTime(computed), minutes, reason()});
    }

    static std::string reasonOfStart(PlanTask const & from, bool isSummary)
    {
        if (isSummary) return "summary roll-up: a task with tasks below starts with the first of them";
        if (from.start && isBeyondTimes(*from.start)) return "times here end in 1901 and 2038";
        if (from.actualStart && from.actualStart != from.start) return "a task that has begun starts when it did";
        return "no task starts in the last minute of a day";
    }

    std::string reasonOfFinish(PlanTask const & from, CTask const & task) const
    {
        if (task.isSummaryTask()) return "summary roll-up: a task with tasks below ends with the last of them";
        if (isBeyondTimes(*from.finish) || (from.start && isBeyondTimes(*from.start)))
            return "times here end in 1901 and 2038";
        if (from.isManual) return "scheduled by hand: the dates need not fit the duration";
        if (from.isElapsed)
            return "elapsed duration: it counts hours of the clock, and here the working time that they span";
        if (task.getStatus() == CTaskStatus::Finished) return "a task that is done ends when it did";
        CCalendar const & calendar = task.getCalendar();
        CProjectTime const start = task.getStartTime(), finish = timeAt(*from.finish);
        auto const endsAsRecorded = [&](CCalendar const & other)
        { return other.addDurationToTime(start, task.getDuration(), true) == finish; };
        if (!task.isKeyDate())
            if (std::string const other = otherCalendar(task, endsAsRecorded); !other.empty())
                return fmt::format("duration measured on another calendar: {}", other);
        if (!calendar.isValidStartTime(start))
            return "outside work time: the start is no time of work on the calendar of the task";
        if (task.isKeyDate()) return "a moment without length ends where it starts";
        if (task.getAssignedResources().GetSize() > 1)
            return "assignment calendars: each resource works on its own, and the task on one";
        return calendar.subtractTimeFromTime(start, finish) > task.getDuration()
                   ? "split: more working time lies between the dates than the duration, by a pause or by days off "
                     "that the file does not tell"
                   : "less working time lies between the dates than the duration";
    }

    // The project's calendar, or that of a resource of the task.
    template <class Test>
    std::string otherCalendar(CTask const & task, Test const & test) const
    {
        if (test(project.getProjectCalendar())) return "that of the project";
        for (CAssignedResource const & assigned : task.getAssignedResources())
        {
            CCalendar const * const own = project.getResourceCalendarFromAssignedResourceID(assigned.getID());
            if (!own || !test(project.getCalendarInUse(own->getID()))) continue;
            return fmt::format("that of \"{}\"", project.getResource(assigned.getResourceID())->getName().view());
        }
        return {};
    }

    void comparePercent(PlanTask const & from, CTask const & task)
    {
        if (!(task.getStatus() == CTaskStatus::Started) || task.isSummaryTask()) return;
        double const percent = task.getPercentComplete();
        if (std::abs(percent - from.percentComplete) < 1) return;
        report.losses.push_back(
            {nameOf(from), fmt::format("that it is {:g} percent complete: by the clock it is {:.0f} percent",
                                       from.percentComplete, percent)});
    }

    Plan const & plan;
    std::vector<CTaskID> const & ids;
    CProject const & project;
    ImportReport & report;
};

}  // namespace

void compareDates(Plan const & plan, std::vector<CTaskID> const & ids, CProject const & project, ImportReport & report)
{
    Comparison(plan, ids, project, report).run();
}

}  // namespace orvane::app
