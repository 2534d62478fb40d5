// What is reported on started tasks.

#include <algorithm>

#include "rules/local_rules_checker.h"
#include "schedule/calendar.h"

namespace
{

CProjectDate firstDay(CTask const & task)
{
    return task.getStartTime().getDate();
}

CProjectDate lastDay(CTask const & task)
{
    return task.getEndTime().getDate();
}

CProjectDate limited(CProjectDate const & date, CTask const & task)
{
    CProjectDate const last = lastDay(task);
    CProjectDate const upTo = date > last ? last : date;
    return upTo < firstDay(task) ? firstDay(task) : upTo;
}

// Walks the date, which lies within the task, past days without work; false when it leaves the task.
bool moveOntoWorkingDay(CTask const & task, CProjectDate & date, int step)
{
    CProjectDate const first = firstDay(task);
    CProjectDate const last = lastDay(task);
    while (!(date < first) && !(date > last))
    {
        if (!(task.getCalendar().getDayType(date).getDayType() == CDayType::NonWorkingDay)) return true;
        date += step;
    }
    return false;
}

}  // namespace

bool CLocalRulesChecker::addTaskReport(CTaskID const & taskID, CRiskID const & riskID, CProjectDate const & date,
                                       CTaskReportType const & type, CProjectDuration const & duration)
{
    if (!riskID.isNULL() && !getRisk(riskID)) return false;
    CTask * const task = getTask(taskID);
    if (!task || !task->isValid() || task->isSummaryTask()) return false;
    // On a task that has not begun, or is done, there is nothing to report, and that is no failure.
    if (!(task->getStatus() == CTaskStatus::Started)) return true;
    CProjectDate day = limited(date, *task);
    if (!moveOntoWorkingDay(*task, day, day > date ? +1 : -1)) return false;
    CTaskReport report;
    report.setRiskID(riskID);
    report.setType(type);
    report.setDate(day);
    report.setDuration(duration);
    CTaskReportArray reports(task->getTaskReports());
    reports.Add(report);
    task->setTaskReports(reports);
    task->setChanged();
    if (isOriginatingClient()) presentationData->setSingleSelectedTaskID(task->getID());
    deselectTasksThatAreExcludedByFilter();
    return true;
}

// The task that holds the report, while reports on it may change.
CTask * CLocalRulesChecker::getReportedTask(CTaskReportID const & reportID) const
{
    CTask * const task = getHolder(reportID);
    bool const open = task && task->isValid() && !task->isSummaryTask() && task->getStatus() == CTaskStatus::Started;
    return open ? task : nullptr;
}

bool CLocalRulesChecker::changeTaskReport(CTaskReport const & report)
{
    CTask * const task = getReportedTask(report.getID());
    if (!task) return false;
    CTaskReportArray reports(task->getTaskReports());
    CTaskReport changed(report);
    CProjectDate const before = reports.GetAt(reports.findByID(report.getID())).getDate();
    if (!(changed.getDate() == before))
    {
        CProjectDate day = limited(changed.getDate(), *task);
        if (!moveOntoWorkingDay(*task, day, day > before ? +1 : -1)) return false;
        changed.setDate(day);
    }
    reports.changeElement(changed);
    task->setTaskReports(reports);
    task->setChanged();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::removeTaskReport(CTaskReportID const & reportID)
{
    CTask * const task = getReportedTask(reportID);
    if (!task) return false;
    CTaskReportID const id(reportID);
    CTaskReportArray reports(task->getTaskReports());
    reports.RemoveAt(reports.findByID(id));
    task->setTaskReports(reports);
    if (!isTransactionServer())
    {
        if (presentationData->getSelectedTaskReportID() == id) presentationData->clearSelectedTaskReport();
        criticalPathDirty = true;
    }
    task->setChanged();
    return true;
}
