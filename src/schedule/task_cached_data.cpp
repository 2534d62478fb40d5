#include "schedule/task_cached_data.h"

#include "model/task.h"
#include "model/task_array.h"
#include "schedule/calendar.h"

namespace
{

void makeNotValid(CProjectTime & time)
{
    time = CProjectTime();
}

}  // namespace

CTaskCachedData::CTaskCachedData(CTaskCachedData const & other)
    : changed(other.changed),
      isIncludedByFilter(other.isIncludedByFilter),
      plannedEndTime(other.plannedEndTime),
      estimatedEndTime(other.estimatedEndTime),
      summaryStartTime(other.summaryStartTime),
      summaryEndTime(other.summaryEndTime),
      summaryDuration(other.summaryDuration),
      storedRiskDuration(other.storedRiskDuration),
      storedRiskIDs(other.storedRiskIDs)
{
    countStoring(+1);
}

CTaskCachedData::~CTaskCachedData()
{
    countStoring(-1);
}

CTaskCachedData & CTaskCachedData::operator=(CTaskCachedData const & other)
{
    isIncludedByFilter = other.isIncludedByFilter;
    plannedEndTime = other.plannedEndTime;
    estimatedEndTime = other.estimatedEndTime;
    summaryStartTime = other.summaryStartTime;
    summaryEndTime = other.summaryEndTime;
    summaryDuration = other.summaryDuration;
    storedRiskDuration = other.storedRiskDuration;
    countStoring(-1);
    storedRiskIDs = other.storedRiskIDs;
    countStoring(+1);
    return *this;
}

void CTaskCachedData::resetCachedData()
{
    if (storedRiskIDs.IsEmpty()) return;
    countStoring(-1);
    storedRiskDuration = CProjectDuration(0);
    storedRiskIDs.RemoveAll();
}

void CTaskCachedData::updateCachedData(CTask & task, bool force)
{
    if (changed || force)
    {
        updateSummaryTimes(task, !force);
        updateEndTimes(task);
    }
    if (!task.project) return;
    parent = nullptr;
    if (!force || !task.subTasks) return;
    // Within a pass the array of children points them at their parent as it goes.
    for (int each = 0; each < task.subTasks->GetSize(); ++each) task.subTasks->elementForPass(each).setParentCached(&task);
}

void CTaskCachedData::updateSummaryTimes(CTask const & task, bool inPass)
{
    makeNotValid(summaryStartTime);
    makeNotValid(summaryEndTime);
    summaryDuration = CProjectDuration();
    if (!task.subTasks) return;
    for (CTask const & child : *task.subTasks)
    {
        if (!child.isValid()) continue;
        CProjectTime const start = child.getStartTime();
        CProjectTime const end = inPass ? child.getEndOfStoredRiskInPass() : child.getEndOfStoredRisk();
        if (!start.isValid() || !end.isValid()) continue;
        if (!summaryStartTime.isValid() || start < summaryStartTime) summaryStartTime = start;
        if (!summaryEndTime.isValid() || end > summaryEndTime) summaryEndTime = end;
    }
    if (summaryStartTime.isValid() && summaryEndTime.isValid())
        summaryDuration = task.getCalendar().subtractTimeFromTime(summaryStartTime, summaryEndTime);
}

void CTaskCachedData::updateEndTimes(CTask const & task)
{
    if (!task.isValid())
    {
        makeNotValid(plannedEndTime);
        makeNotValid(estimatedEndTime);
        return;
    }
    CCalendar const & calendar = task.getCalendar();
    CProjectDuration const planned =
        task.isOpen() ? task.getDuration() : calendar.subtractTimeFromTime(task.getActualStartTime(), task.getPredictedFinishTime());
    plannedEndTime = calendar.addDurationToTime(task.getPlannedStartTime(), planned, true);
    if (task.getStatus() == CTaskStatus::Started)
        estimatedEndTime = calendar.addDurationToTime(task.getActualStartTime(), task.getDuration(), true);
    else makeNotValid(estimatedEndTime);
}
