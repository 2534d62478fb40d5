#include "tests/support/plan_builder.h"

#include <cstdio>
#include <stdexcept>

#include "tests/support/task_history.h"

namespace orvane
{

// ---- texts ------------------------------------------------------------------------------------------

std::string text(CProjectTime const & time)
{
    if (!time.isValid()) return "?";
    std::string const whole(time.getCTime().Format("%Y-%m-%d %H:%M").view());
    return time.GetYear() == 2004 ? whole.substr(5) : whole;
}

namespace
{

std::string inUnits(long minutes, long minutesOfDay)
{
    if (minutes < 0) return "-" + inUnits(-minutes, minutesOfDay);
    std::string result;
    struct
    {
        long unit;
        char letter;
    } const units[] = {{minutesOfDay, 'd'}, {60, 'h'}, {1, 'm'}};
    for (auto const & [unit, letter] : units)
    {
        if (minutes / unit) result += std::to_string(minutes / unit) + letter;
        minutes %= unit;
    }
    return result.empty() ? "0" : result;
}

std::string nameOf(CTaskID const & id, CProject const * project)
{
    CTask const * const task = project ? project->getTask(id) : nullptr;
    return task ? std::string(task->getName().view()) : "?";
}

std::string linkText(CLink const & link, CProject const * project)
{
    static char const * const types[] = {"", "FS", "SF", "SS", "FF"};
    std::string result =
        ", after " + nameOf(link.getUpstreamTaskID(), project) + ' ' + types[link.getType().getEquivalentValue()];
    long const lag = link.getDelay().GetTotalMinutes();
    if (lag) result += (lag > 0 ? "+" : "") + inUnits(lag, 24 * 60);
    if (link.getStatus() == CLinkStatus::Proposed) result += " proposed";
    return result;
}

std::string lineOf(CTask const & task, CProject const * project)
{
    std::string line(task.getName().view());
    if (!task.isValid()) return line.empty() ? "-" : line + ": -";
    line += ": " + text(task.getStartTime()) + " > " + text(task.getEndTime()) + ' ' + text(task.getDuration());
    if (task.getStatus() != CTaskStatus::Hold) line += ", " + std::string(task.getStatus().getString().view());
    if (task.isKeyDate()) line += ", key date";
    if (task.getConstraintType() == CTaskConstraintType::CannotReschedule) line += ", constrained";
    if (task.getRiskBuffer().getValue()) line += ", buffer";
    if (task.isTemplate().getValue()) line += ", template";
    if (task.getStoredRiskDuration() != CProjectDuration(0)) line += ", stored " + text(task.getStoredRiskDuration());
    for (CLink const & link : task.getUpstreamLinks()) line += linkText(link, project);
    return line;
}

void addLines(std::string & result, CTaskArray const & tasks, CProject const * project, std::size_t depth)
{
    for (CTask const & task : tasks)
    {
        result += std::string(2 * depth, ' ') + lineOf(task, project) + '\n';
        if (task.getSubTasks()) addLines(result, *task.getSubTasks(), project, depth + 1);
    }
}

}  // namespace

std::string text(CProjectDuration const & duration)
{
    return duration.isValid() ? inUnits(duration.GetTotalMinutes(), 8 * 60) : "?";
}

std::string digest(CTaskArray const & tasks, CProject const * project)
{
    std::string result;
    addLines(result, tasks, project, 0);
    return result;
}

std::string digest(CProject const & project)
{
    return digest(project.getAllTasks(), &project);
}

CProjectTime operator""_t(char const * text, std::size_t length)
{
    std::string const given(text, length);
    if (given == "?") return {};
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    std::string const whole = length == 11 ? "2004-" + given : given;
    if (std::sscanf(whole.c_str(), "%4d-%d-%d %d:%d", &year, &month, &day, &hour, &minute) != 5)
        throw std::invalid_argument("no moment: " + given);
    return {year, month, day, hour, minute};
}

// ---- tasks ------------------------------------------------------------------------------------------

TaskDraft aTask(std::string const & name)
{
    TaskDraft draft;
    draft.name = name;
    return draft;
}

TaskDraft aBlank(std::string const & name)
{
    TaskDraft draft = aTask(name);
    draft.blank = true;
    return draft;
}

CTask TaskDraft::make() const
{
    CTask task;
    if (!name.empty()) task.setName(name.c_str());
    if (blank && children.empty()) return task;
    // Children come while the task may have any: a blank row may not, but a file can hold one that has.
    task.setPlannedStartTime(start);
    int position = 0;
    for (TaskDraft const & child : children) task.insertSubTask(child.make(), position++);
    if (blank) const_cast<CProjectTime &>(task.getPlannedStartTime()) = CProjectTime();
    task.setTaskType(type);
    task.setDuration(duration);
    task.setConstraintType(constraint);
    task.setActualStartTime(actualStart);
    if (actualStart.isValid())
        task.setPredictedFinishTime(task.getCalendar().addDurationToTime(actualStart, duration, true));
    task.setActualFinishTime(actualFinish);
    task.setStatus(status);
    return task;
}

// ---- plans ------------------------------------------------------------------------------------------

Plan::Plan(std::vector<TaskDraft> const & drafts)
{
    for (TaskDraft const & draft : drafts) tasks().addTask(draft.make());
    for (TaskDraft const & draft : drafts) addLinks(draft);
    project.postSerialize();
    derive();
}

void Plan::add(TaskDraft const & draft)
{
    tasks().addTask(draft.make());
    addLinks(draft);
    project.postSerialize();
    derive();
}

void Plan::addLinks(TaskDraft const & draft)
{
    if (!draft.links.empty())
    {
        CLinkArray links;
        for (auto const & [upstream, type, delay] : draft.links)
        {
            CLink link(id(upstream), type);
            link.setDelay(delay);
            links.Add(link);
        }
        writable(draft.name).setUpstreamLinks(links);
    }
    for (TaskDraft const & child : draft.children) addLinks(child);
}

CTask const & Plan::operator[](std::string const & name) const
{
    CTask const * task = nullptr;
    forEachTask(project.getAllTasks(), [&](CTask const & each, CTask const *)
                { task = task || each.getName() != name.c_str() ? task : &each; });
    if (!task) throw std::invalid_argument("the plan has no task " + name);
    return *task;
}

CTaskIDArray Plan::ids(std::vector<std::string> const & names) const
{
    CTaskIDArray result;
    for (std::string const & name : names) result.Add(id(name));
    return result;
}

CLink const & Plan::link(std::string const & upstream, std::string const & downstream) const
{
    CTaskID const from = id(upstream);
    CLinkArray const & links = (*this)[downstream].getUpstreamLinks();
    for (int each = 0; each < links.GetSize(); ++each)
        if (links.GetAt(each).getUpstreamTaskID() == from) return links.GetAt(each);
    throw std::invalid_argument("no link from " + upstream + " to " + downstream);
}

}  // namespace orvane
