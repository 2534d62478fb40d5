#include "app/exchange/import_plan.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include <fmt/format.h>

#include "app/command.h"
#include "app/exchange/date_comparison.h"
#include "app/exchange/import_resources.h"
#include "app/exchange/import_values.h"
#include "app/exchange/plan_calendars.h"
#include "app/session.h"
#include "app/text_values.h"
#include "model/task_array.h"
#include "values/saturate.h"

namespace orvane::app
{
namespace
{

// ---- tasks ------------------------------------------------------------------------------------------

// A project in which any minute is one of work, so that tasks take the times that were recorded.
class TimelessProject
{
public:
    TimelessProject() : project(nullptr, false)
    {
        PlanDays days;
        days.week.fill({{0, 24 * 60 - 1}});
        CLocalRulesChecker rules(&project, CRulesCheckerContext(CRulesCheckerContext::TransactionServer));
        rules.setCalendar(calendarWithDays(project.getProjectCalendar(), days));
    }

    CProject project;
};

// How a row of the plan stands in the project.
struct PlacedTask
{
    CTaskID id{orvane::nullID};
    CCalendarID calendarID{orvane::nullID};
    CCalendar const * calendar = nullptr;
    CProjectTime start, finish;
    CProjectDuration duration{0};
    bool isKeyDate = false;
};

class TaskImport
{
public:
    TaskImport(Plan const & plan, PlanOutline const & outline, ResourceImport const & resources,
               CProject const & project, ImportOptions const & options, ImportReport & report)
        : plan(plan),
          outline(outline),
          resources(resources),
          project(project),
          options(options),
          report(report),
          placed(plan.tasks.size()),
          assignments(plan.tasks.size())
    {
    }

    // The whole tree, and what stands where.
    CTaskArray build(std::function<void(double)> const & onProgress)
    {
        for (PlanAssignment const & assignment : plan.assignments)
            assignments[row(assignment.taskUID)].push_back(&assignment);
        bool const hasBaseline = std::any_of(plan.tasks.begin(), plan.tasks.end(),
                                             [](PlanTask const & task) { return task.baseline.has_value(); });
        if (hasBaseline)
            copy = std::make_unique<CProject>(*std::unique_ptr<CProjectData>(project.getCopyOfProjectData()));
        firstStart = startOfPlan();
        for (std::size_t each = 0; each < placed.size(); ++each) place(each);
        CTaskArray tasks;
        for (int const root : outline.roots)
        {
            fill(tasks.addTask(&timeless.project), root);
            onProgress(static_cast<double>(built) / static_cast<double>(placed.size()));
        }
        return tasks;
    }

    std::vector<PlacedTask> takePlaced() { return std::move(placed); }

private:
    std::size_t row(int uid) const { return static_cast<std::size_t>(outline.rowOf.at(uid)); }
    PlanTask const & taskAt(std::size_t each) const { return plan.tasks[each]; }
    void lose(PlanTask const & task, std::string what) { report.losses.push_back({nameOf(task), std::move(what)}); }

    // ---- when ---------------------------------------------------------------------------------------

    CProjectTime startOfPlan() const
    {
        OptionalMinute first = options.start;
        if (!first)
            for (PlanTask const & task : plan.tasks)
                if (task.start && (!first || *task.start < *first)) first = task.start;
        if (!first) first = plan.start;
        if (first) return timeAt(*first);
        return project.getProjectCalendar().getNextValidStartTime(CProjectTime::GetTickCount());
    }

    // A task without a calendar of its own works by that of its people, where they have one between them.
    CCalendarID calendarOf(std::size_t each) const
    {
        PlanTask const & task = taskAt(each);
        if (task.calendarUID >= 0) return resources.calendarOf(task.calendarUID);
        CCalendarID common{orvane::nullID};
        bool isFirst = true;
        for (PlanAssignment const * assignment : assignments[each])
        {
            ResourceImport::Resource const * const resource = resources.find(assignment->resourceUID);
            if (!resource || resource->plan->kind != PlanResourceKind::work) continue;
            if (!isFirst && !(resource->calendarID == common)) return CCalendarID(orvane::nullID);
            common = resource->calendarID;
            isFirst = false;
        }
        return common;
    }

    void place(std::size_t each)
    {
        PlanTask const & task = taskAt(each);
        PlacedTask & it = placed[each];
        if (!outline.isSummary(static_cast<int>(each))) it.calendarID = calendarOf(each);
        else if (task.calendarUID >= 0) it.calendarID = resources.calendarOf(task.calendarUID);
        it.calendar = &project.getCalendarInUse(it.calendarID);
        it.duration = durationOf(task, *it.calendar);
        it.isKeyDate = it.duration == CProjectDuration(0) && !outline.isSummary(static_cast<int>(each));
        if (task.start) it.start = timeAt(*task.start);
        else if (task.finish)
            it.start = it.calendar->subtractDurationFromTime(timeAt(*task.finish), it.duration, false);
        if (!it.start.isValid()) it.start = firstStart;
        if (task.isElapsed && task.duration) it.duration = clockAsWork(it, *task.duration);
        it.finish = task.finish ? timeAt(*task.finish) : it.calendar->addDurationToTime(it.start, it.duration, true);
        if (!it.finish.isValid()) it.finish = it.start;
    }

    static CProjectDuration clockAsWork(PlacedTask const & it, Minute minutes)
    {
        return it.calendar->subtractTimeFromTime(it.start, it.start + minutesLong(minutes));
    }

    static CProjectDuration durationOf(PlanTask const & task, CCalendar const & calendar)
    {
        if (task.duration) return minutesLong(*task.duration);
        if (task.start && task.finish) return calendar.subtractTimeFromTime(timeAt(*task.start), timeAt(*task.finish));
        return task.isMilestone ? CProjectDuration(0) : CProjectDuration(secondsOfNormalDay(calendar));
    }

    // Any minute but the last of a day, which no block of work holds.
    static void moveTo(CTask & task, CProjectTime const & time)
    {
        task.reschedulePlannedStartTime(time);
        if (!(task.getPlannedStartTime() == time)) task.reschedulePlannedStartTime(time + CProjectDuration(60));
    }

    // ---- links --------------------------------------------------------------------------------------

    // The time of the clock that the lag spans behind the predecessor's date as it was recorded.
    CProjectDuration delayOf(PlanLink const & link, PlacedTask const & from, PlanTask const & predecessor,
                             PlacedTask const & to) const
    {
        if (link.lag == 0 || !std::isfinite(link.lag)) return CProjectDuration(0);
        bool isClock = link.lagIn == PlanLink::Lag::clock;
        double minutes = link.lag;
        if (link.lagIn == PlanLink::Lag::percent)
        {
            isClock = predecessor.isElapsed;
            minutes *= static_cast<double>(isClock ? *predecessor.duration : from.duration.GetTotalMinutes()) / 100;
        }
        CProjectDuration const lag(orvane::saturate<std::int32_t>(std::round(minutes) * 60));
        if (isClock) return lag;
        bool const leavesFinish = link.type == PlanLinkType::finishToStart || link.type == PlanLinkType::finishToFinish;
        CProjectTime const date = leavesFinish ? from.finish : from.start;
        CCalendar const & calendar = *to.calendar;
        bool const isAtWork = calendar.isValidStartTime(date) || calendar.isValidEndTime(date);
        CProjectTime until;
        if (lag > CProjectDuration(0))
            until =
                calendar.addDurationToTime(isAtWork ? date : calendar.getNextValidStartTime(date), lag, leavesFinish);
        else
            until = calendar.subtractDurationFromTime(isAtWork ? date : calendar.getPrevValidEndTime(date),
                                                      CProjectDuration(-lag.GetTotalSeconds()), leavesFinish);
        return until.isValid() ? until - date : lag;
    }

    static CLinkType::LINK_TYPE typeOf(PlanLinkType type)
    {
        constexpr CLinkType::LINK_TYPE types[] = {CLinkType::FinishToFinish, CLinkType::FinishToStart,
                                                  CLinkType::StartToFinish, CLinkType::StartToStart};
        return types[static_cast<std::size_t>(type)];
    }

    void setLinks(CTask & task, std::size_t each)
    {
        PlanTask const & from = taskAt(each);
        if (from.links.empty()) return;
        CLinkArray links;
        std::vector<int> met;
        for (PlanLink const & link : from.links)
        {
            std::size_t const predecessor = row(link.predecessorUID);
            bool const isAgain = std::find(met.begin(), met.end(), link.predecessorUID) != met.end();
            if (isAgain || taskAt(predecessor).isBlank)
            {
                lose(from, isAgain ? fmt::format("a second link from \"{}\"", nameOf(taskAt(predecessor)))
                                   : "a link from a row without content");
                continue;
            }
            met.push_back(link.predecessorUID);
            CLink made(idOf(predecessor), CLinkType(typeOf(link.type)));
            made.setDelay(delayOf(link, placed[predecessor], taskAt(predecessor), placed[each]));
            links.Add(made);
        }
        report.links += met.size();
        task.setUpstreamLinks(links);
    }

    // A predecessor may come later: the identifier waits for it.
    CTaskID const & idOf(std::size_t each)
    {
        if (placed[each].id.isNULL()) placed[each].id = CTaskID();
        return placed[each].id;
    }

    // ---- the task itself ----------------------------------------------------------------------------

    void setTexts(CTask & task, PlanTask const & from)
    {
        constexpr std::size_t longestName = 1024, longestNotes = 8192;
        bool isNameChanged = false, areNotesChanged = false;
        task.setName(heldText(from.name, longestName, TextLines::one, isNameChanged).c_str());
        if (!from.notes.empty())
            task.setComments(heldText(from.notes, longestNotes, TextLines::many, areNotesChanged).c_str());
        if (isNameChanged) lose(from, "of its name what is longer than 1,024 bytes, or control characters");
        if (areNotesChanged) lose(from, "of its notes what is longer than 8,192 bytes, or control characters");
    }

    // A baseline is taken from the task as it stands, so it stands there for a moment, at the recorded cost.
    void setBaseline(CTask & task, PlanTask const & from, PlacedTask const & it)
    {
        PlanBaseline const & baseline = *from.baseline;
        if (!baseline.start && !baseline.finish && !baseline.duration) return;
        CProjectDuration duration = it.duration;
        if (baseline.duration) duration = minutesLong(*baseline.duration);
        else if (baseline.start && baseline.finish)
            duration = it.calendar->subtractTimeFromTime(timeAt(*baseline.start), timeAt(*baseline.finish));
        CProjectTime const start =
            baseline.start    ? timeAt(*baseline.start)
            : baseline.finish ? it.calendar->subtractDurationFromTime(timeAt(*baseline.finish), duration, false)
                              : it.start;
        if (!start.isValid()) return;
        moveTo(task, start);
        if (duration == CProjectDuration(0)) task.setTaskType(CTaskType(CTaskType::KeyDate));
        task.setDuration(duration);
        CCostArray costs;
        addCost(costs, "Baseline", baseline.cost.value_or(0), CCostType::Fixed);
        task.setCosts(costs);
        task.setProject(copy.get());
        task.setBaseline();
        task.setProject(&timeless.project);
        task.setCosts(CCostArray());
        task.setTaskType(CTaskType(CTaskType::Normal));
    }

    void setAssignments(CTask & task, std::size_t each)
    {
        if (assignments[each].empty()) return;
        CAssignedResourceArray assigned;
        CCostArray costs;
        for (PlanAssignment const * assignment : assignments[each])
        {
            ResourceImport::Resource const * const resource = resources.find(assignment->resourceUID);
            if (!resource)
                addCost(costs, resources.costName(assignment->resourceUID), assignment->cost, CCostType::Fixed);
            else if (assigned.findByID(resource->id) >= 0)
                lose(taskAt(each), fmt::format("a second assignment of \"{}\"", resource->plan->name));
            else
            {
                int const percent = orvane::saturate<std::int32_t>(std::round(assignment->units * 100));
                CAssignedResource use(CAssignedResourceID(), resource->id, percent);
                // What is built in stays; people and plant go when their work is done.
                if (resource->plan->kind == PlanResourceKind::material)
                    use.setResourceProfileType(CResourceProfileType(CResourceProfileType::Install));
                assigned.Add(use);
            }
        }
        if (!assigned.IsEmpty()) task.setAssignedResources(assigned);
        addCosts(task, each, costs);
    }

    void addCosts(CTask & task, std::size_t each, CCostArray const & costs)
    {
        if (costs.IsEmpty()) return;
        if (outline.isSummary(static_cast<int>(each)))
            return lose(taskAt(each), "costs of its own, which a task with tasks below cannot have");
        CCostArray all;
        if (task.getCosts()) all = *task.getCosts();
        for (CCost const & cost : costs) all.Add(cost);
        task.setCosts(all);
    }

    void setProgress(CTask & task, PlanTask const & from, PlacedTask const & it)
    {
        bool const isDone = from.percentComplete >= 100 || from.actualFinish;
        if (!isDone && from.percentComplete <= 0 && !from.actualStart) return;
        // Some programs write a date where none was given.
        bool const isEmpty = from.actualStart && from.actualFinish && *from.actualFinish <= *from.actualStart;
        if (isEmpty && from.percentComplete <= 0 && !it.isKeyDate)
            return lose(from, fmt::format("the actual start and finish {}, for it is 0 percent complete",
                                          isoMinute(*from.actualStart)));
        if (it.isKeyDate)
        {
            task.setConstraint(CTaskConstraint(CTaskConstraintType(CTaskConstraintType::CannotReschedule)));
            return lose(from, "its progress, which a moment without length has none of; it cannot be rescheduled");
        }
        CProjectTime const start = from.actualStart ? timeAt(*from.actualStart) : it.start;
        CProjectTime const finish = from.actualFinish ? timeAt(*from.actualFinish) : it.finish;
        task.setActualStartTime(start);
        task.setPredictedFinishTime(std::max(finish, start));
        if (isDone) task.setActualFinishTime(std::max(finish, start));
        task.setStatus(CTaskStatus(isDone ? CTaskStatus::Finished : CTaskStatus::Started));
    }

    void setConstraint(CTask & task, PlanTask const & from)
    {
        using enum PlanConstraint;
        constexpr char const * words[] = {"",
                                          "as late as possible",
                                          "must start on",
                                          "must finish on",
                                          "start no earlier than",
                                          "start no later than",
                                          "finish no earlier than",
                                          "finish no later than"};
        if (from.constraint == asSoonAsPossible) return;
        bool const holdsStill = from.constraint == mustStartOn || from.constraint == mustFinishOn;
        if (holdsStill) task.setConstraint(CTaskConstraint(CTaskConstraintType(CTaskConstraintType::CannotReschedule)));
        OptionalMinute const own = from.constraint == mustStartOn ? from.start : from.finish;
        if (holdsStill && (!from.constraintDate || from.constraintDate == own)) return;
        std::string const date = from.constraintDate ? " " + isoMinute(*from.constraintDate) : "";
        lose(from, fmt::format("the constraint \"{}{}\"{}", words[static_cast<std::size_t>(from.constraint)], date,
                               holdsStill ? ": it cannot be rescheduled from where it stands" : ""));
    }

    // What a task of the model has no place for.
    void tellLosses(PlanTask const & from, PlacedTask const & it)
    {
        if (from.isManual) lose(from, "that it is scheduled by hand");
        if (!from.isActive) lose(from, "that it is inactive: it is a task as all others");
        if (from.deadline) lose(from, fmt::format("the deadline {}", isoMinute(*from.deadline)));
        if (from.isMilestone && !it.isKeyDate) lose(from, "that it is a milestone, for it has a length");
        if (from.isElapsed && it.duration > CProjectDuration(0))
            lose(from, "that its duration counts hours of the clock: it is the working time that they span");
    }

    void fill(CTask & task, int which)
    {
        auto const each = static_cast<std::size_t>(which);
        PlanTask const & from = taskAt(each);
        PlacedTask const & it = placed[each];
        ++built;
        task.setID(idOf(each));
        if (from.isBlank) return;
        ++report.tasks;
        task.setProject(&timeless.project);
        task.setSupplyChain(CSupplyChain(resources.mainCompany()));
        if (!it.calendarID.isNULL()) task.setDominantCalendarID(it.calendarID);
        if (from.baseline) setBaseline(task, from, it);
        setTexts(task, from);
        moveTo(task, it.start);
        if (it.isKeyDate) task.setTaskType(CTaskType(CTaskType::KeyDate));
        task.setDuration(it.duration);
        setLinks(task, each);
        addChildren(task, each);
        setAssignments(task, each);
        CCostArray fixed;
        addCost(fixed, fixedCostName, from.fixedCost, CCostType::Fixed);
        addCosts(task, each, fixed);
        setConstraint(task, from);
        if (!outline.isSummary(which)) setProgress(task, from, it);
        tellLosses(from, it);
    }

    // The first child makes the array, in which the others grow.
    void addChildren(CTask & task, std::size_t each)
    {
        for (int const child : outline.children[each])
        {
            if (task.getSubTasks()) fill(task.getWritableSubTasks()->addTask(&timeless.project), child);
            else
            {
                task.insertSubTask(CTask(), 0);
                fill(task.getWritableSubTasks()->ElementAt(0), child);
            }
        }
    }

    Plan const & plan;
    PlanOutline const & outline;
    ResourceImport const & resources;
    CProject const & project;
    ImportOptions const & options;
    ImportReport & report;
    TimelessProject timeless;
    // The project with its calendars, where tasks stand for their baseline.
    std::unique_ptr<CProject> copy;
    std::vector<PlacedTask> placed;
    std::vector<std::vector<PlanAssignment const *>> assignments;
    CProjectTime firstStart;
    std::size_t built = 0;
};

// ---- the whole --------------------------------------------------------------------------------------

// A report on each begun task by which it is, at this moment, as far as was recorded.
bool reportProgress(Plan const & plan, std::vector<PlacedTask> const & placed, CProject const & project,
                    CLocalRulesChecker & rules)
{
    CProjectTime const now = CProjectTime::GetTickCount();
    for (std::size_t each = 0; each < placed.size(); ++each)
    {
        CTask const * const task = project.getTask(placed[each].id);
        if (!task || !(task->getStatus() == CTaskStatus::Started) || task->isSummaryTask()) continue;
        double const missing = task->getUnconstrainedPercentComplete() - plan.tasks[each].percentComplete;
        double const seconds = missing / 100 * static_cast<double>(task->getPlannedDuration().GetTotalSeconds());
        CProjectDuration const length(orvane::saturate<std::int32_t>(std::abs(seconds)));
        if (length == CProjectDuration(0)) continue;
        CTaskReportType const type(missing > 0 ? CTaskReportType::Delay : CTaskReportType::Advance);
        // A task of no working day takes no report, and its percentage is among the losses.
        rules.addTaskReport(placed[each].id, CRiskID::getNULL(), now.getDate(), type, length);
    }
    return true;
}

void tellLossesOfPlan(Plan const & plan, CProject const & project, std::vector<PlanLoss> & losses)
{
    auto const lose = [&](std::string const & what) { losses.push_back({"", what}); };
    if (!plan.name.empty()) lose(fmt::format("the name \"{}\": a project is called as its file", plan.name));
    if (plan.statusDate) lose(fmt::format("the status date {}", isoMinute(*plan.statusDate)));
    if (!plan.currency.empty()) lose(fmt::format("the currency {}", plan.currency));
    long const minutes = secondsOfNormalDay(project.getProjectCalendar()) / 60;
    if (!plan.calendars.empty() && plan.minutesPerDay != minutes)
        lose(fmt::format("that a day of a duration has {} minutes: it has {}, as the normal day of the calendar",
                         plan.minutesPerDay, minutes));
}

}  // namespace

ImportReport importPlan(Plan const & plan, PlanOutline const & outline, Session & session,
                        ImportOptions const & options, std::function<void(double)> const & onProgress)
{
    ImportReport report;
    report.losses = plan.losses;
    std::vector<PlacedTask> placed;
    CProject const & project = session.project();
    bool const isDone = session.act("Import",
                                    [&](CLocalRulesChecker & rules)
                                    {
                                        ResourceImport resources(plan, project, rules, report.losses);
                                        if (!resources.run()) return false;
                                        TaskImport tasks(plan, outline, resources, project, options, report);
                                        bool isImported = rules.importTasks(tasks.build(onProgress));
                                        placed = tasks.takePlaced();
                                        for (std::size_t each = 0; each < placed.size() && isImported; ++each)
                                            if (!plan.tasks[each].category.empty() && !plan.tasks[each].isBlank)
                                                isImported = rules.changeTaskCategory(
                                                    placed[each].id, plan.tasks[each].category.c_str());
                                        return isImported;
                                    });
    if (!isDone) throw Refusal(session.path() + ": the rules of the project do not take the schedule");
    if (options.keepsPercent)
        session.act("Report progress",
                    [&](CLocalRulesChecker & rules) { return reportProgress(plan, placed, project, rules); });
    tellLossesOfPlan(plan, project, report.losses);
    std::vector<CTaskID> ids;
    for (PlacedTask const & each : placed) ids.push_back(each.id);
    compareDates(plan, ids, project, report);
    return report;
}

}  // namespace orvane::app
