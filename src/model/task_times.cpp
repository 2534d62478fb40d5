// What a task computes from its times, and how it moves in time.

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "model/task.h"
#include "model/task_array.h"
#include "schedule/calendar.h"
#include "values/saturate.h"

namespace
{

CProjectDuration const oneMinute(60);

}  // namespace

// ---- start, end and duration ----------------------------------------------------------------------

CProjectTime CTask::getStartTime() const
{
    if (isSummaryTask()) return getSummaryStartTimeCached();
    return isOpen() ? fields.plannedStartTime : fields.actualStartTime;
}

CProjectTime CTask::getEndTime() const
{
    if (isSummaryTask()) return getSummaryEndTimeCached();
    if (isOpen()) return getPlannedEndTime();
    return fields.status == CTaskStatus::Started ? getEstimatedEndTimeCached() : fields.actualFinishTime;
}

CProjectDuration CTask::getDuration() const
{
    return isSummaryTask() ? getSummaryDurationCached() : fields.duration;
}

CProjectTime CTask::getPlannedEndTime() const
{
    return getPlannedEndTimeCached();
}

CProjectDuration CTask::getPlannedDuration() const
{
    return getCalendar().subtractTimeFromTime(fields.plannedStartTime, getPlannedEndTime());
}

// ---- the ladder of ends ---------------------------------------------------------------------------

CProjectTime CTask::getEndExcludingRisk() const
{
    if (isSummaryTask()) return getEndTime();
    CProjectDuration const risk = getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Unmitigated);
    return getCalendar().subtractDurationFromTime(getEndOfUnmitigatedRisk(), risk, true);
}

CProjectTime CTask::getEndOfBufferedRisk() const
{
    return isSummaryTask() ? getEndTime() : withRisk(getEndOfStoredRisk(), CRiskStatus::Buffered);
}

CProjectTime CTask::getEndOfMitigatedRisk() const
{
    return isSummaryTask() ? getEndTime() : withRisk(getEndOfBufferedRisk(), CRiskStatus::Mitigated);
}

CProjectTime CTask::withRisk(CProjectTime const & end, CRiskStatus const & status) const
{
    return getCalendar().addDurationToTime(end, getTotalReportModifiedRiskDurationByStatus(status), true);
}

CProjectTime CTask::getEndOfUnmitigatedRisk() const
{
    if (isSummaryTask()) return getEndTime();
    return getCalendar().addDurationToTime(getStartTime(), getDurationToEndOfUnmitigatedRisk(), true);
}

CProjectTime CTask::getEndOfStoredRisk() const
{
    if (isSummaryTask()) return getEndTime();
    return withStoredRisk(getEndOfUnmitigatedRisk());
}

// Adding nothing to an end time leaves it where it is.
CProjectTime CTask::withStoredRisk(CProjectTime const & end) const
{
    CProjectDuration const & stored = getStoredRiskDurationCached();
    return stored == CProjectDuration(0) ? end : getCalendar().addDurationToTime(end, stored, true);
}

// A task that this very pass recomputed has its end at hand.
CProjectTime CTask::getEndOfStoredRiskInPass() const
{
    bool const atHand = changed && !isSummaryTask() && isOpen() && fields.assignedRisks.IsEmpty();
    return atHand ? withStoredRisk(getPlannedEndTimeCached()) : getEndOfStoredRisk();
}

CProjectDuration CTask::getDurationToEndOfUnmitigatedRisk() const
{
    if (!isValid()) return CProjectDuration();
    if (isSummaryTask()) return getSummaryDurationCached();
    if (isOpen())
    {
        if (fields.assignedRisks.IsEmpty()) return fields.duration;
        if (fields.riskType == CRiskType::Additive)
            return fields.duration + getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Unmitigated);
        return fields.duration - getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Buffered) -
               getTotalReportModifiedRiskDurationByStatus(CRiskStatus::Mitigated);
    }
    if (fields.status == CTaskStatus::Finished)
        return getCalendar().subtractTimeFromTime(fields.actualStartTime, fields.actualFinishTime);
    if (getEstimatedEndTimeCached() > fields.actualStartTime)
        return getCalendar().subtractTimeFromTime(fields.actualStartTime, getEstimatedEndTimeCached());
    return CProjectDuration(0);
}

CProjectDuration CTask::getDurationToEndOfStoredRisk() const
{
    if (!isValid()) return CProjectDuration();
    if (isSummaryTask()) return getSummaryDurationCached();
    return getDurationToEndOfUnmitigatedRisk() + getStoredRiskDurationCached();
}

// ---- progress -------------------------------------------------------------------------------------

double CTask::getUnconstrainedPercentComplete(CProjectTime const & now) const
{
    if (isOpen()) return 0.0;
    if (fields.status == CTaskStatus::Finished) return 100.0;

    CProjectDuration worked(0);
    if (now > fields.actualStartTime)
        worked = getCalendar().subtractTimeFromTime(fields.actualStartTime, getCalendar().getNextValidStartTime(now));
    for (CTaskReport const & report : fields.taskReports)
        worked = report.getType() == CTaskReportType::Delay ? worked - report.getDuration() : worked + report.getDuration();
    auto const planned = getPlannedDuration().GetTotalSeconds();
    return planned == 0 ? 100.0 : static_cast<double>(worked.GetTotalSeconds()) * 100.0 / static_cast<double>(planned);
}

double CTask::getPercentComplete(CProjectTime const & now) const
{
    return std::clamp(getUnconstrainedPercentComplete(now), 0.0, 100.0);
}

CProjectTime CTask::getTimeOfPercentCompletePoint() const
{
    auto const whole = static_cast<double>(getDurationToEndOfUnmitigatedRisk().GetTotalSeconds());
    CProjectDuration const done(orvane::saturate<std::int32_t>(whole * getPercentComplete() * 0.01));
    return getCalendar().addDurationToTime(fields.actualStartTime, done, true);
}

// ---- setters --------------------------------------------------------------------------------------

// On a subtractive task the duration holds the risks of a fixed size.
CProjectDuration CTask::getMinimumDuration() const
{
    CProjectDuration minimum = oneMinute;
    if (fields.riskType == CRiskType::Additive) return minimum;
    for (CAssignedRisk const & assigned : fields.assignedRisks)
        if (assigned.getValueMode() == CRiskValueMode::Fixed) minimum = minimum + assigned.getValueFixed(*this);
    return minimum;
}

void CTask::setDuration(CProjectDuration const & value)
{
    if (isKeyDate()) write(fields.duration, CProjectDuration(0));
    else if (!canChangeDuration() || !value.isValid()) return;
    else write(fields.duration, std::max(value, getMinimumDuration()));
    updateCachedData(*this, true);
}

void CTask::setPlannedStartTime(CProjectTime const & time)
{
    if (!canReschedule() || !canChangeDuration()) return;
    if (fields.plannedStartTime.isValid() && fields.plannedStartTime == time) return;
    if (!getCalendar().isValidStartTime(time)) return;
    if (!fields.duration.isValid())
    {
        write(fields.plannedStartTime, time);
        changed = true;
        return;
    }
    CProjectTime const plannedEnd = getPlannedEndTime();
    if (time >= plannedEnd) return;
    CProjectTime const limit = getCalendar().subtractDurationFromTime(plannedEnd, getMinimumDuration(), false);
    movePlannedStart(time < limit ? time : limit);
    setPlannedEndTime(plannedEnd);
    updateCachedData(*this, true);
}

void CTask::setPlannedEndTime(CProjectTime const & time)
{
    if (!canReschedule() || !canChangeDuration()) return;
    if (!fields.plannedStartTime.isValid() || !time.isValid() || time <= fields.plannedStartTime) return;
    CProjectDuration const length = getCalendar().subtractTimeFromTime(fields.plannedStartTime, time);
    CProjectDuration const minimum = getMinimumDuration();
    write(fields.duration, length > minimum ? length : minimum);
    updateCachedData(*this, true);
}

void CTask::setDurationToEndOfUnmitigatedRisk(CProjectDuration const & target)
{
    bool const additive = fields.riskType == CRiskType::Additive;
    std::int64_t fixed = 0;
    double share = 0.0;
    // Only what lies on the other side of that end shifts it: on an additive task the unmitigated risk, which is added
    // to the duration, on a subtractive one all other risk, which eats it up.
    for (CAssignedRisk const & assigned : fields.assignedRisks)
    {
        if ((assigned.getStatus() == CRiskStatus::Unmitigated) != additive) continue;
        if (assigned.getValueMode() == CRiskValueMode::Fixed) fixed += assigned.getValueFixed(*this).GetTotalSeconds();
        else share += assigned.getValuePercent(*this) * 0.01;
    }
    std::int64_t const seconds = target.GetTotalSeconds();
    if (additive && seconds < fixed) return;
    constexpr double mostOfIt = 0.999;
    double const length = additive ? static_cast<double>(seconds - fixed) / (1.0 + share)
                                   : static_cast<double>(seconds + fixed) / (1.0 - std::min(share, mostOfIt));
    setDuration(CProjectDuration(orvane::saturate<std::int32_t>(length)));
}

void CTask::setEndOfUnmitigatedRisk(CProjectTime const & time)
{
    if (!canChangeDuration() || !fields.plannedStartTime.isValid() || !time.isValid()) return;
    if (time > fields.plannedStartTime)
        setDurationToEndOfUnmitigatedRisk(getCalendar().subtractTimeFromTime(fields.plannedStartTime, time));
}

bool CTask::setRiskType(CRiskType const & type)
{
    if (isSummaryTask() || fields.riskType == type) return false;
    return type == CRiskType::Subtractive ? makeRiskSubtractive() : makeRiskAdditive();
}

bool CTask::makeRiskSubtractive()
{
    if (fields.riskType != CRiskType::Additive || isSummaryTask()) return false;
    changeRiskType(CRiskType::Subtractive, +1);
    return true;
}

bool CTask::makeRiskAdditive()
{
    if (fields.riskType != CRiskType::Subtractive || isSummaryTask()) return false;
    changeRiskType(CRiskType::Additive, -1);
    return true;
}

// The risks go into the duration or come out of it, and each keeps its length in working time.
void CTask::changeRiskType(CRiskType const & type, int direction)
{
    if (!fields.assignedRisks.IsEmpty())
    {
        std::vector<CProjectDuration> lengths;
        for (CAssignedRisk const & assigned : fields.assignedRisks) lengths.push_back(assigned.getValueFixed(*this));
        CProjectDuration const total = getTotalRiskDuration();
        write(fields.duration, direction > 0 ? getDuration() + total : getDuration() - total);
        touched |= stretchOf(fields.assignedRisks);
        for (int each = 0; each < fields.assignedRisks.GetSize(); ++each)
        {
            CAssignedRisk & assigned = fields.assignedRisks.ElementAt(each);
            if (assigned.getValueMode() == CRiskValueMode::Percent) keepLength(assigned, lengths[static_cast<std::size_t>(each)]);
        }
    }
    write(fields.riskType, type);
}

// The percentage is a rounded quotient: where it falls short of the length by its last digits, it is raised by them.
void CTask::keepLength(CAssignedRisk & assigned, CProjectDuration const & length) const
{
    double const formula =
        static_cast<double>(length.GetTotalSeconds()) * 100.0 / static_cast<double>(getDuration().GetTotalSeconds());
    double percent = formula;
    constexpr int mostSteps = 8;
    for (int step = 0; step <= mostSteps; ++step)
    {
        assigned.setValuePercent(percent);
        if (assigned.getValueFixed(*this) == length) return;
        percent = std::nextafter(percent, std::numeric_limits<double>::infinity());
    }
    assigned.setValuePercent(formula);
}

int CTask::getMaximumAvailableRiskPercent() const
{
    int percent = fields.riskType == CRiskType::Subtractive ? 100 : 999;
    for (CAssignedRisk const & assigned : fields.assignedRisks)
        percent = orvane::saturate<std::int32_t>(percent - assigned.getValuePercent(*this));
    return std::max(percent, 0);
}

CProjectDuration CTask::getMaximumAvailableRiskDuration() const
{
    CProjectDuration left = getDuration();
    if (fields.riskType == CRiskType::Additive)
        left = CProjectDuration(999 * getCalendar().getNormalDay().getWorkingDuration().GetTotalSeconds());
    for (CAssignedRisk const & assigned : fields.assignedRisks) left = left - assigned.getValueFixed(*this);
    return std::max(left, CProjectDuration(0));
}

// ---- totals of risk -------------------------------------------------------------------------------

template <class Counts>
CProjectDuration CTask::sumOfRisks(CProjectDuration (CAssignedRisk::*size)(CTask const &) const, Counts const & counts) const
{
    CProjectDuration sum(0);
    for (CAssignedRisk const & assigned : fields.assignedRisks)
        if (counts(assigned)) sum = sum + (assigned.*size)(*this);
    return sum;
}

CProjectDuration CTask::getTotalRiskDuration() const
{
    return sumOfRisks(&CAssignedRisk::getValueFixed, [](CAssignedRisk const &) { return true; });
}

CProjectDuration CTask::getTotalRiskDurationByStatus(CRiskStatus const & status) const
{
    return sumOfRisks(&CAssignedRisk::getValueFixed, [&](CAssignedRisk const & risk) { return risk.getStatus() == status; });
}

CProjectDuration CTask::getTotalReportModifiedRiskDuration() const
{
    return sumOfRisks(&CAssignedRisk::getReportModifiedValueFixed, [](CAssignedRisk const &) { return true; });
}

CProjectDuration CTask::getTotalReportModifiedRiskDurationByStatus(CRiskStatus const & status) const
{
    return sumOfRisks(&CAssignedRisk::getReportModifiedValueFixed,
                      [&](CAssignedRisk const & risk) { return risk.getStatus() == status; });
}

// ---- rescheduling ---------------------------------------------------------------------------------

// Each child that can move does, by the working time between the summary's present time and its new one:
// measured on the summary's calendar, applied on the child's.
void CTask::rescheduleChildren(CProjectTime const & time, Rescheduling const & way)
{
    CProjectTime const old = (this->*way.current)();
    bool const later = time > old;
    CProjectDuration const delta = getCalendar().subtractTimeFromTime(old, time);
    for (int each = 0; each < subTasks->GetSize(); ++each)
    {
        CTask & child = subTasks->elementForPass(each);
        if (!child.isValid() || !child.canReschedule()) continue;
        CCalendar const & calendar = child.getCalendar();
        CProjectTime const present = (child.*way.current)();
        child.reschedule(later ? calendar.addDurationToTime(present, delta, way.asEnd)
                               : calendar.subtractDurationFromTime(present, delta, way.asEnd),
                         way);
    }
}

// A time that the calendar cannot give leaves the task where it is.
void CTask::movePlannedStart(CProjectTime const & time)
{
    if (time.isValid()) write(fields.plannedStartTime, time);
}

void CTask::reschedule(CProjectTime const & time, Rescheduling const & way)
{
    CCalendar const & calendar = getCalendar();
    if (!canReschedule() || !(way.asEnd ? calendar.isValidEndTime(time) : calendar.isValidStartTime(time))) return;
    if (isSummaryTask()) rescheduleChildren(time, way);
    else movePlannedStart(way.asEnd ? calendar.subtractDurationFromTime(time, (this->*way.length)(), false) : time);
    updateCachedData(*this, true);
}

void CTask::reschedulePlannedStartTime(CProjectTime const & time)
{
    reschedule(time, {&CTask::getStartTime, &CTask::getDuration, false});
}

void CTask::reschedulePlannedEndTime(CProjectTime const & time)
{
    reschedule(time, {&CTask::getEndTime, &CTask::getDuration, true});
}

void CTask::rescheduleEndOfUnmitigatedRisk(CProjectTime const & time)
{
    reschedule(time, {&CTask::getEndOfUnmitigatedRisk, &CTask::getDurationToEndOfUnmitigatedRisk, true});
}

// ---- what may be done -----------------------------------------------------------------------------

bool CTask::isOpen() const
{
    return fields.status != CTaskStatus::Started && fields.status != CTaskStatus::Finished;
}

bool CTask::canBecomeSummaryTask() const
{
    return isValid() && fields.assignedRisks.IsEmpty() && !fields.costs && !isKeyDate();
}

bool CTask::canReschedule() const
{
    return isSummaryTask() || (getConstraintType() != CTaskConstraintType::CannotReschedule && isOpen());
}

bool CTask::canChangeDuration() const
{
    return !isKeyDate() && isOpen() && !isSummaryTask();
}

bool CTask::canAssignRisks() const
{
    return isValid() && !isSummaryTask() && !isKeyDate() && isOpen();
}

bool CTask::canAssignTaskReports() const
{
    return isValid() && !isSummaryTask() && !isKeyDate() && fields.status == CTaskStatus::Started;
}

bool CTask::canAssignResources() const
{
    return isValid() && isOpen();
}

bool CTask::canChangePercentComplete() const
{
    return isValid() && fields.status == CTaskStatus::Started;
}

bool CTask::canChangeBaseline() const
{
    return isValid() && (isSummaryTask() || isOpen());
}

bool CTask::canChangeType() const
{
    if (!isValid() || isSummaryTask()) return false;
    return isKeyDate() || (fields.taskType == CTaskType::Normal && isOpen());
}

// ---- and why not ----------------------------------------------------------------------------------

namespace
{

CString statusReason(CTask const & task)
{
    return task.isOpen() ? CString() : "its status is \"" + task.getStatus().getString() + "\"";
}

CString explanation(char const * opening, CTask const & task, char const * middle, CString const & reason)
{
    return reason.IsEmpty() ? CString() : CString(opening) + task.getName() + middle + reason;
}

}  // namespace

CString CTask::getExplanationForInabilityToReschedule() const
{
    if (canReschedule()) return "";
    CString reason = statusReason(*this);
    if (getConstraintType() == CTaskConstraintType::CannotReschedule) reason = "it is constrained";
    else if (reason.IsEmpty() && isSummaryTask()) reason = "it is a summary task";
    return explanation("\"", *this, "\" cannot be rescheduled because ", reason);
}

CString CTask::getExplanationForInabilityToAssignRisks() const
{
    if (canAssignRisks()) return "";
    CString reason = statusReason(*this);
    if (!isValid()) reason = "it is a blank task";
    else if (isSummaryTask()) reason = "it is a summary task";
    else if (isKeyDate()) reason = "it is a key date";
    return explanation("The task \"", *this, "\" cannot change Risk Assignment because ", reason);
}

CString CTask::getExplanationForInabilityToAssignResources() const
{
    if (canAssignResources()) return "";
    CString reason = statusReason(*this);
    if (!isValid()) reason = "it is a blank task";
    else if (isSummaryTask()) reason = "it is a summary task";
    return explanation("The task \"", *this, "\" cannot change Resource Assignment because ", reason);
}
