// What a project answers about its span of time, and about where its tasks stand at a moment.

#include "model/project.h"

namespace
{

// The first of all in that order, among the valid times of the valid roots; not valid without any.
template <class Time, class Before>
CProjectTime firstOfRoots(CTaskArray const & roots, Time const & timeOf, Before const & before)
{
    CProjectTime first;
    for (CTask const & root : roots)
    {
        if (!root.isValid()) continue;
        CProjectTime const time = timeOf(root);
        if (time.isValid() && (!first.isValid() || before(time, first))) first = time;
    }
    return first;
}

template <class Belongs>
void collectLeafTasks(CTaskArray const & tasks, Belongs const & belongs, CTaskArray & leaves)
{
    for (CTask const & task : tasks)
    {
        if (task.isSummaryTask()) collectLeafTasks(*task.getSubTasks(), belongs, leaves);
        else if (belongs(task)) leaves.addTask(task);
    }
}

}  // namespace

CProjectTime CProject::getProjectStart() const
{
    return firstOfRoots(
        projectData.tasks, [](CTask const & root) { return root.getStartTime(); }, std::less<>());
}

CProjectTime CProject::getProjectEnd() const
{
    return firstOfRoots(
        projectData.tasks, [](CTask const & root) { return root.getEndOfMitigatedRisk(); }, std::greater<>());
}

CTaskArray CProject::getTasksScheduledAfterFocussedTime() const
{
    CProjectTime const & moment = getGanttPresentation().getFocussedTime();
    CTaskArray found;
    collectLeafTasks(
        projectData.tasks, [&](CTask const & task) { return task.getStartTime() > moment; }, found);
    return found;
}

CTaskArray CProject::getTasksInProgressDuringFocussedTime() const
{
    CProjectTime const & moment = getGanttPresentation().getFocussedTime();
    CTaskArray found;
    auto const inProgress = [&](CTask const & task)
    { return task.getStartTime() <= moment && task.getEndTime() >= moment; };
    collectLeafTasks(projectData.tasks, inProgress, found);
    return found;
}

CTaskArray CProject::getTasksCompletedBeforeFocussedTime() const
{
    CProjectTime const & moment = getGanttPresentation().getFocussedTime();
    CTaskArray found;
    collectLeafTasks(
        projectData.tasks, [&](CTask const & task) { return task.getEndTime() < moment; }, found);
    return found;
}
