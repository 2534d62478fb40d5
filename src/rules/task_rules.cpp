// The fields and the progress of one task.

#include "rules/local_rules_checker.h"
#include "rules/text_checks.h"
#include "schedule/calendar.h"

bool CLocalRulesChecker::isEditable(CTask const & task) const
{
    return task.isValid() && !task.isSummaryTask() && task.isOpen();
}

// ---- texts ----------------------------------------------------------------------------------------

bool CLocalRulesChecker::changeTaskName(CTaskID const & taskID, CString const & name)
{
    CTask * const task = getTask(taskID);
    if (!task || !orvane::accepts(orvane::limit::taskName, name)) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (task->getName() == name) return true;
    task->setName(name);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

bool CLocalRulesChecker::changeTaskComments(CTaskID const & taskID, CString const & comments)
{
    CTask * const task = getTask(taskID);
    if (!task || !orvane::accepts(orvane::limit::taskComments, comments)) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (task->getComments() == comments) return true;
    task->setComments(comments);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

bool CLocalRulesChecker::changeTaskCategory(CTaskID const & taskID, CString const & name)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->isValid()) return false;
    CTaskCategoryID const before(task->getCategoryID());
    if (!name.IsEmpty()) task->setCategoryID(projectData->taskCategories.getByName(name).getID());
    else if (!before.isNULL()) task->setCategoryID(CTaskCategoryID::getNULL());
    project->clearUnusedTaskCategory(before);
    return true;
}

// ---- status and progress --------------------------------------------------------------------------

bool CLocalRulesChecker::changeTaskStatus(CTaskID const & taskID, CTaskStatus const & status)
{
    CTask * const task = getTask(taskID);
    if (!task || task->isSummaryTask() || !status.isValid() || task->isKeyDate()) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (task->getStatus() == status) return true;
    switch (status.getEquivalentValue())
    {
    case CTaskStatus::Started:
        if (!task->getActualStartTime().isValid() || !task->getPredictedFinishTime().isValid()) return false;
        break;
    case CTaskStatus::Finished:
        if (!task->getActualStartTime().isValid() || !task->getActualFinishTime().isValid()) return false;
        break;
    default:
        task->setTaskReports(CTaskReportArray());
        task->setActualStartTime(CProjectTime());
        task->setActualFinishTime(CProjectTime());
        task->setPredictedFinishTime(CProjectTime());
        break;
    }
    task->setStatus(status);
    task->setChanged();
    deselectTasksThatAreExcludedByFilter();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::startTask(CTaskID const & taskID, CProjectTime const & time)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->isValid() || task->isSummaryTask() || task->getStatus() == CTaskStatus::Started) return false;
    task->setActualStartTime(time);
    task->setPredictedFinishTime(task->getCalendar().addDurationToTime(time, task->getDurationToEndOfUnmitigatedRisk(), true));
    task->setTaskReports(CTaskReportArray());
    task->setActualFinishTime(CProjectTime());
    return true;
}

bool CLocalRulesChecker::finishTask(CTaskID const & taskID, CProjectTime const & time)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->isValid() || task->isSummaryTask() || task->getStatus() == CTaskStatus::Finished) return false;
    CCalendar const & calendar = task->getCalendar();
    if (task->isOpen())
    {
        // Finished without having been started: the start is derived from the plan.
        CProjectDuration const length = task->getDurationToEndOfUnmitigatedRisk();
        CProjectTime const start = task->getPlannedStartTime();
        task->setActualStartTime(start);
        task->setPredictedFinishTime(calendar.addDurationToTime(start, length, true));
        if (time <= start) task->setActualStartTime(calendar.subtractDurationFromTime(time, length, false));
    }
    CProjectTime const earliest = calendar.addDurationToTime(task->getActualStartTime(), CProjectDuration(60), true);
    task->setActualFinishTime(calendar.getNextValidEndTime(time > earliest ? time : earliest));
    return true;
}

// ---- times ----------------------------------------------------------------------------------------

bool CLocalRulesChecker::changeTaskDuration(CTaskID const & taskID, CProjectDuration const & duration, bool keepStart)
{
    CTask * const task = getTask(taskID);
    if (!task) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (!task->canChangeDuration()) return false;
    CProjectTime const end = task->getEndOfUnmitigatedRisk();
    task->setDurationToEndOfUnmitigatedRisk(duration);
    if (!keepStart) task->rescheduleEndOfUnmitigatedRisk(end);
    deselectTasksThatAreExcludedByFilter();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::changeTaskStart(CTaskID const & taskID, CProjectTime const & time)
{
    CTask * const task = getTask(taskID);
    if (!task) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (!task->canReschedule() || task->isSummaryTask() || !task->getCalendar().isValidStartTime(time)) return false;
    if (task->getStartTime() == time) return true;
    task->reschedulePlannedStartTime(time);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

bool CLocalRulesChecker::changeTaskFinish(CTaskID const & taskID, CProjectTime const & time)
{
    CTask * const task = getTask(taskID);
    if (!task) return false;
    if (!task->isValid()) makeTaskValid(*task);
    if (!task->canReschedule() || task->isSummaryTask() || !task->getCalendar().isValidEndTime(time)) return false;
    if (task->getEndOfUnmitigatedRisk() == time) return true;
    task->rescheduleEndOfUnmitigatedRisk(time);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

// ---- kinds, calendars and flags -------------------------------------------------------------------

bool CLocalRulesChecker::changeTaskConstraint(CTaskID const & taskID, CTaskConstraint const & constraint)
{
    CTask * const task = getTask(taskID);
    if (!task || !isEditable(*task)) return false;
    if (task->getConstraint() == constraint) return true;
    task->setConstraint(constraint);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

bool CLocalRulesChecker::changeTaskType(CTaskID const & taskID, CTaskType const & type)
{
    CTask * const task = getTask(taskID);
    if (!task || !isEditable(*task)) return false;
    if (task->getTaskType() == type) return true;
    // The type takes effect before the check: a refused key date stays one.
    task->setTaskType(type);
    if (type == CTaskType::Normal)
    {
        task->setStatus(CTaskStatus::Hold);
        task->setDuration(task->getCalendar().getNormalDay().getWorkingDuration());
    }
    else if (type == CTaskType::KeyDate)
    {
        if (!task->getAssignedRisks().IsEmpty() || task->getRiskBuffer().getValue()) return false;
        task->setDuration(CProjectDuration(0));
    }
    return true;
}

bool CLocalRulesChecker::changeTaskRiskType(CTaskID const & taskID, CRiskType const & type)
{
    CTask * const task = getTask(taskID);
    return task && isEditable(*task) && !task->isKeyDate() && task->setRiskType(type);
}

bool CLocalRulesChecker::changeTaskDominantCalendar(CTaskID const & taskID, CCalendarID const & calendarID)
{
    CTask * const task = getTask(taskID);
    if (!task || !isEditable(*task)) return false;
    task->setDominantCalendarID(calendarID);
    return true;
}

bool CLocalRulesChecker::changeTaskRiskBuffer(CTaskID const & taskID, bool isBuffer)
{
    CTask * const task = getTask(taskID);
    if (!task || !isEditable(*task) || task->isKeyDate() || task->getRiskBuffer().getValue() == isBuffer) return false;
    // What was flagged on the task earlier in this action is dropped from the report of changes.
    if (!isBuffer) task->resetChanged();
    task->setRiskBuffer(isBuffer);
    return true;
}

bool CLocalRulesChecker::changeTaskTemplateFlag(CTaskID const & taskID, bool isTemplate)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->isValid()) return false;
    task->setTemplate(isTemplate);
    return true;
}
