// New tasks at the end of the list.

#include "rules/local_rules_checker.h"
#include "schedule/calendar.h"

namespace
{

// More than any list on a screen; a number beyond it is a mistake, and would only fill the memory.
constexpr int mostBlankRows = 65'536;

}  // namespace

void CLocalRulesChecker::insertBlankTasksAtEnd(int count)
{
    CUser const * const user = project->getCurrentUser();
    if (!user || count > mostBlankRows) return;
    for (int each = 0; each < count; ++each)
    {
        CTask & blank = tasks->addTask(project);
        addTaskPresentation(blank.getID());
        blank.setSupplyChain(CSupplyChain(user->getCompanyID()));
    }
}

void CLocalRulesChecker::makeTaskValid(CTask & task)
{
    CCalendar const & calendar = task.getCalendar();
    CProjectTime const today = CProjectDate::GetCurrentDate() + CProjectTimeOfDay(0, 0);
    task.setPlannedStartTime(calendar.getNextValidStartTime(today));
    task.setDuration(task.getCalendar().getNormalDay().getWorkingDuration());
    criticalPathDirty = true;
}

template <class Fill, class Place>
bool CLocalRulesChecker::addTask(int blankCount, Fill const & fill, Place const & place)
{
    if (!project) return false;
    insertBlankTasksAtEnd(blankCount);
    CTask & task = tasks->addTask(project);
    makeTaskValid(task);
    task.setProject(project);
    fill(task);
    addTaskPresentation(task.getID());
    // The task stays without a supply chain: the application restores the state before.
    CUser const * const user = project->getCurrentUser();
    if (!user) return false;
    task.setSupplyChain(CSupplyChain(user->getCompanyID()));
    place(task);
    if (isOriginatingClient()) presentationData->setSingleSelectedTaskID(task.getID());
    deselectTasksThatAreExcludedByFilter();
    criticalPathDirty = true;
    return true;
}

namespace
{

char const * const newTaskName = "New Task";

void asItIs(CTask &)
{
}

}  // namespace

bool CLocalRulesChecker::addTaskWithName(CString const & name, int blankCount)
{
    return addTask(blankCount, [&](CTask & task) { task.setName(name); }, asItIs);
}

bool CLocalRulesChecker::addTaskWithDuration(CProjectDuration const & duration, int blankCount)
{
    auto const fill = [&](CTask & task) {
        task.setName(newTaskName);
        task.setDuration(duration);
    };
    return addTask(blankCount, fill, asItIs);
}

bool CLocalRulesChecker::addTaskWithFinish(CProjectTime const & time, int blankCount, bool isFinish)
{
    auto const place = [&](CTask & task) {
        if (isFinish) task.reschedulePlannedEndTime(task.getCalendar().getPrevValidEndTime(time));
        else task.reschedulePlannedStartTime(task.getCalendar().getNextValidStartTime(time));
    };
    return addTask(blankCount, [](CTask & task) { task.setName(newTaskName); }, place);
}
