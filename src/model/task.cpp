#include "model/task.h"

#include "model/project.h"
#include "model/task_array.h"
#include "schedule/calendar.h"

// ---- the fields, stated once ----------------------------------------------------------------------

template <class Visit>
void CTask::describe(Visit && visit)
{
    visit("ID", &Fields::id);
    visit("name", &Fields::name);
    visit("plannedStartTime", &Fields::plannedStartTime);
    visit("duration", &Fields::duration);
    visit("status", &Fields::status);
    visit("assignedResources", &Fields::assignedResources);
    visit("assignedRisks", &Fields::assignedRisks);
    visit("riskType", &Fields::riskType);
    visit("taskType", &Fields::taskType);
    visit("constraint", &Fields::constraint);
    visit("upstreamLinks", &Fields::upstreamLinks);
    visit("dominantCalendarID", &Fields::dominantCalendarID);
    visit("actualStartTime", &Fields::actualStartTime);
    visit("predictedFinishTime", &Fields::predictedFinishTime);
    visit("actualFinishTime", &Fields::actualFinishTime);
    visit("taskReports", &Fields::taskReports);
    visit("baselineSet", &Fields::baselineSet);
    visit("riskBuffer", &Fields::riskBuffer);
    visit("comments", &Fields::comments);
    visit("supplyChain", &Fields::supplyChain);
    visit("categoryID", &Fields::categoryID);
    visit("template", &Fields::isTemplateTask);
    visit("costs", &Fields::costs);
}

bool CTask::ownFieldsChanged()
{
    bool any = false;
    describe([&](char const *, auto field) {
        if (touched & stretchOf(fields.*field)) any |= (fields.*field).setChanged();
    });
    // What is stored counts only while it is a baseline.
    if (isBaselineSet() && touched & stretchOf(fields.baselineData)) any |= fields.baselineData.setChanged();
    return any;
}

void CTask::resetOwnFields()
{
    describe([this](char const *, auto field) {
        if (touched & stretchOf(fields.*field)) (fields.*field).resetChanged();
    });
    fields.baselineData.resetChanged();
    readsRiskAnew |= buffersRisk || !fields.assignedRisks.IsEmpty();
    touched = 0;
}

void CTask::touch()
{
    touched = everything;
    describe([this](char const *, auto field) { (fields.*field).touch(); });
    fields.baselineData.touch();
}

bool CTask::equal(CTask const & a, CTask const & b)
{
    if (!a.subTasks != !b.subTasks || (a.subTasks && !(*a.subTasks == *b.subTasks))) return false;
    bool same = true;
    describe([&](char const *, auto field) { same = same && a.fields.*field == b.fields.*field; });
    return same && (!a.isBaselineSet() || a.fields.baselineData == b.fields.baselineData);
}

// ---- changes that the forest hears of -------------------------------------------------------------

class CTask::LinksChange
{
public:
    explicit LinksChange(CTask const & task)
        : task(task), forest(task.container ? task.container->forestIndex() : nullptr)
    {
        if (forest) forest->linksLeave(task);
    }
    LinksChange(LinksChange const &) = delete;
    LinksChange & operator=(LinksChange const &) = delete;
    ~LinksChange()
    {
        if (forest) forest->linksEnter(task);
    }

private:
    CTask const & task;
    orvane::CTaskIndex * const forest;
};

// ---- life -----------------------------------------------------------------------------------------

CTask::CTask()
{
    ++s_created;
}

CTask::CTask(CTask const & other) : CTaskCachedData(other), CDynamic(other), project(other.project), fields(other.fields)
{
    ++s_created;
    if (other.subTasks && !other.subTasks->IsEmpty()) makeSubTasks() = *other.subTasks;
}

CTask::~CTask()
{
    ++s_deleted;
}

CTask & CTask::operator=(CTask const & other)
{
    if (this == &other)
    {
        flagSubtreeAsAssigned();
        return *this;
    }
    // The source may be one of the children that are about to go: everything is taken from it first.
    CTaskArray children;
    if (other.subTasks) children = *other.subTasks;
    if (container) container->idChanges(*this, other.fields.id);
    CTaskCachedData::operator=(other);
    touched = everything;
    changed = other.changed;
    project = other.project;
    {
        LinksChange const change(*this);
        fields = other.fields;
    }
    if (children.IsEmpty()) dropSubTasks();
    else makeSubTasks().takeOver(children);
    setParentCached(getParent());
    return *this;
}

void CTask::flagSubtreeAsAssigned()
{
    touch();
    if (subTasks) subTasks->flagAsAssigned();
}

void CTask::setProject(CProject * value)
{
    project = value;
    if (!subTasks) return;
    for (int each = 0; each < subTasks->GetSize(); ++each) subTasks->elementForPass(each).setProject(value);
}

// ---- fields that need more than writing -----------------------------------------------------------

void CTask::setID(CTaskID const & value)
{
    if (container) container->idChanges(*this, value);
    write(fields.id, value);
}

void CTask::setUpstreamLinks(CLinkArray const & value)
{
    LinksChange const change(*this);
    write(fields.upstreamLinks, value);
}

void CTask::prefetchForChains() const
{
    __builtin_prefetch(&getStoredRiskDurationCached());
    __builtin_prefetch(&fields.id);
    __builtin_prefetch(&fields.upstreamLinks);
}

void CTask::setConstraintType(CTaskConstraintType const & value)
{
    touched |= stretchOf(fields.constraint);
    fields.constraint.setType(value);
}

CSupplyChain & CTask::getWritableSupplyChain()
{
    touched |= stretchOf(fields.supplyChain);
    return fields.supplyChain;
}

CCalendar const & CTask::getCalendar() const
{
    if (!project) return CCalendar::getStandardCalendar();
    return isValid() ? project->getCalendarInUse(fields.dominantCalendarID) : project->getProjectCalendar();
}

// ---- change flags ---------------------------------------------------------------------------------

bool CTask::setChanged()
{
    changed = touched != 0 && ownFieldsChanged();
    if (subTasks) changed |= subTasks->setChangedBelow(this, project != nullptr);
    updateCachedData(*this, false);
    return changed;
}

void CTask::resetChanged()
{
    changed = false;
    if (touched != 0) resetOwnFields();
    if (subTasks) subTasks->resetChanged();
}

void CTask::resetAllCachedData()
{
    resetCachedData();
    if (!subTasks) return;
    for (int each = 0; each < subTasks->GetSize(); ++each) subTasks->elementForPass(each).resetAllCachedData();
}

// ---- after a load ---------------------------------------------------------------------------------

void CTask::postSerialize(CProject * loadedInto)
{
    touched = everything;
    project = loadedInto;
    if (subTasks)
        for (int each = 0; each < subTasks->GetSize(); ++each) subTasks->elementForPass(each).postSerialize(loadedInto);
    if (giveBegunTaskItsTimes()) dropDanglingLinks();
}

bool CTask::giveBegunTaskItsTimes()
{
    bool const started = fields.status == CTaskStatus::Started;
    bool const finished = fields.status == CTaskStatus::Finished;
    if (!started && !finished) return true;

    CProjectTime const & plannedStart = fields.plannedStartTime;
    if (!fields.actualStartTime.isValid())
    {
        if (!plannedStart.isValid()) return false;
        fields.actualStartTime = plannedStart;
    }
    CProjectTime & finish = started ? fields.predictedFinishTime : fields.actualFinishTime;
    if (!finish.isValid())
    {
        if (!plannedStart.isValid() || !fields.duration.isValid()) return false;
        if (project)
            finish = project->getCalendarInUse(fields.dominantCalendarID).addDurationToTime(plannedStart, fields.duration, true);
    }
    if (finished && !fields.predictedFinishTime.isValid() && fields.actualFinishTime.isValid())
        fields.predictedFinishTime = fields.actualFinishTime;
    return true;
}

void CTask::dropDanglingLinks()
{
    for (int each = fields.upstreamLinks.GetUpperBound(); each >= 0; --each)
    {
        if (project && project->getTask(fields.upstreamLinks.GetAt(each).getUpstreamTaskID())) continue;
        LinksChange const change(*this);
        fields.upstreamLinks.RemoveAt(each);
    }
}
