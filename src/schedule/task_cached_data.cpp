#include "schedule/task_cached_data.h"

#include "model/project.h"
#include "schedule/calendar.h"

namespace
{

void makeNotValid(CProjectTime & time)
{
    time = CProjectTime();
}

// From the start as it was: the length without risk, what unmitigated risk the reports have left, and each report.
CProjectTime estimateEnd(CTask const & task, CCalendar const & calendar)
{
    CProjectDuration length = task.getDuration();
    if (task.getRiskType() == CRiskType::Subtractive) length = length - task.getTotalRiskDuration();
    length = length + task.getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Unmitigated);
    CProjectTime end = calendar.addDurationToTime(task.getActualStartTime(), length, true);
    for (CTaskReport const & report : task.getTaskReports())
    {
        bool const delay = report.getType() == CTaskReportType::Delay;
        end = delay ? calendar.addDurationToTime(end, report.getDuration(), true)
                    : calendar.subtractDurationFromTime(end, report.getDuration(), true);
    }
    return end;
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
      storedRiskDuration(other.storedRiskDuration)
{
    if (!storesRisk()) return;
    ++s_storing;
    ++s_copies;
}

CTaskCachedData::~CTaskCachedData()
{
    if (storesRisk()) --s_storing;
}

CTaskCachedData & CTaskCachedData::operator=(CTaskCachedData const & other)
{
    isIncludedByFilter = other.isIncludedByFilter;
    plannedEndTime = other.plannedEndTime;
    estimatedEndTime = other.estimatedEndTime;
    summaryStartTime = other.summaryStartTime;
    summaryEndTime = other.summaryEndTime;
    summaryDuration = other.summaryDuration;
    if (storesRisk() || other.storesRisk()) ++s_copies;
    s_storing += other.storesRisk() - storesRisk();
    storedRiskDuration = other.storedRiskDuration;
    return *this;
}

void CTaskCachedData::resetCachedData()
{
    if (!storesRisk()) return;
    storedRiskDuration = CProjectDuration(0);
    --s_storing;
}

void CTaskCachedData::storeRisk(CProjectDuration const & duration)
{
    bool const stored = storesRisk();
    storedRiskDuration = storedRiskDuration + duration;
    s_storing += storesRisk() - stored;
}

void CTaskCachedData::updateCachedData(CTask & task, bool force)
{
    if (changed || force)
    {
        updateSummaryTimes(task, !force);
        updateEndTimes(task);
    }
    if (!task.project) return;
    if (changed || force || task.project->isFilterVerdictDue()) updateIncludedByFilter(task);
    parent = nullptr;
    // Within a pass the array of children points them at their parent as it goes.
    if (force && task.subTasks)
        for (int each = 0; each < task.subTasks->GetSize(); ++each)
            task.subTasks->elementForPass(each).setParentCached(&task);
    updateStoredRisk(task);
}

// A summary task stays shown for the sake of a child.
void CTaskCachedData::updateIncludedByFilter(CTask const & task)
{
    CFilter const * const filter = task.project->getSelectedFilter();
    isIncludedByFilter = !filter || filter->includeTask(task);
    if (isIncludedByFilter || !task.subTasks) return;
    for (CTask const & child : *task.subTasks)
        if (child.isValid() && child.isIncludedByFilter()) isIncludedByFilter = true;
}

void CTaskCachedData::updateStoredRisk(CTask & task)
{
    bool const readsAnew = touched != 0 || readsRiskAnew;
    bool buffers = buffersRisk;
    if (readsAnew)
    {
        buffers = false;
        for (CAssignedRisk const & assigned : task.getAssignedRisks())
            buffers |= assigned.getStatus() == CRiskStatus::Buffered;
    }
    if (!buffersRisk && !buffers)
    {
        readsRiskAnew = false;
        return;
    }
    // A summary task's percentages are of a duration that changes without it.
    bool const wasItsTurn = task.project->storedRisk().place(task, readsAnew || hasSubTasks);
    // What the last pass placed for the task is taken back in its next turn.
    buffersRisk = buffers || (buffersRisk && !wasItsTurn);
    if (wasItsTurn) readsRiskAnew = false;
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
    if (task.getStatus() == CTaskStatus::Started) estimatedEndTime = estimateEnd(task, calendar);
    else makeNotValid(estimatedEndTime);
}
