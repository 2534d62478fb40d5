// A task among its children, its siblings and its parents.

#include "model/task.h"

#include "model/project.h"
#include "model/task_array.h"

// ---- children -------------------------------------------------------------------------------------

CTaskArray & CTask::makeSubTasks()
{
    if (!subTasks)
    {
        subTasks = std::make_unique<CTaskArray>();
        subTasks->owner = this;
        hasSubTasks = true;
    }
    return *subTasks;
}

void CTask::dropSubTasks()
{
    if (!subTasks) return;
    // Emptied first, so that the index of the forest hears of it.
    subTasks->RemoveAll();
    subTasks.reset();
    hasSubTasks = false;
    flagByID();
}

void CTask::flagByID()
{
    touched |= stretchOf(fields.id);
    fields.id.touch();
}

CTaskArray * CTask::getWritableSubTasks()
{
    return subTasks.get();
}

void CTask::setSubTasks(CTaskArray const & tasks)
{
    if (!canBecomeSummaryTask()) return;
    if (tasks.IsEmpty()) dropSubTasks();
    else makeSubTasks() = tasks;
}

void CTask::insertSubTask(CTask const & task, int position)
{
    int const count = subTasks ? subTasks->GetSize() : 0;
    if (!canBecomeSummaryTask() || position < 0 || position > count) return;
    // The new child may be a copy of this very task.
    CTask const child(task);
    makeSubTasks().InsertAt(position, child);
}

int CTask::calculateNumberOfChildren() const
{
    return subTasks ? subTasks->countValidTasks() : 0;
}

void CTask::deleteSubTasksIfEmpty()
{
    dropEmptyArrays();
    if (!subTasks) return;
    for (int each = 0; each < subTasks->GetSize(); ++each) subTasks->elementForPass(each).deleteSubTasksIfEmpty();
}

void CTask::dropEmptyArrays()
{
    if (subTasks && subTasks->IsEmpty()) dropSubTasks();
    if (fields.costs.deleteIfEmpty()) touched |= stretchOf(fields.costs);
}

// ---- searches below -------------------------------------------------------------------------------

template <class Test>
CTask const * CTask::findDepthFirst(Test const & test) const
{
    if (test(*this)) return this;
    if (!subTasks) return nullptr;
    for (CTask const & child : *subTasks)
        if (CTask const * const found = child.findDepthFirst(test)) return found;
    return nullptr;
}

CTask const * CTask::findTask(CTaskID const & sought) const
{
    if (fields.id == sought) return this;
    return subTasks ? subTasks->searchLevelFirst(sought) : nullptr;
}

CTask * CTask::findWritableTask(CTaskID const & sought)
{
    return const_cast<CTask *>(findTask(sought));
}

CTask const * CTask::findTask(CLinkID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getUpstreamLinks().findByID(sought) >= 0; });
}

CTask const * CTask::findTask(CSupplyChainID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getSupplyChain().getID() == sought; });
}

CTask const * CTask::findTask(CAssignedResourceID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getAssignedResources().findByID(sought) >= 0; });
}

CTask const * CTask::findTask(CAssignedRiskID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getAssignedRisks().findByID(sought) >= 0; });
}

CTask const * CTask::findTask(CTaskReportID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getTaskReports().findByID(sought) >= 0; });
}

CTask const * CTask::findTask(CCostID const & sought) const
{
    return findDepthFirst([&](CTask const & task) { return task.getCosts() && task.getCosts()->findByID(sought) >= 0; });
}

CAssignedRisk const * CTask::findAssignedRisk(CAssignedRiskID const & sought) const
{
    CTask const * const holder = findTask(sought);
    if (!holder) return nullptr;
    CAssignedRiskArray const & risks = holder->getAssignedRisks();
    return &risks.GetAt(risks.findByID(sought));
}

bool CTask::findAssignedRisk(CAssignedRisk & out, CAssignedRiskID const & sought) const
{
    CAssignedRisk const * const found = findAssignedRisk(sought);
    if (found) out = *found;
    return found != nullptr;
}

bool CTask::hasAssignedResources(CResourceID const & resource) const
{
    return findDepthFirst([&](CTask const & task) { return task.getAssignedResources().findByID(resource) >= 0; });
}

bool CTask::findAssignedResources(CTaskArray & tasks, CResourceID const & resource) const
{
    int const before = tasks.GetSize();
    findDepthFirst([&](CTask const & task) {
        if (task.getAssignedResources().findByID(resource) >= 0) tasks.addTask(task);
        return false;
    });
    return tasks.GetSize() > before;
}

bool CTask::isDescendant(CTaskID const & sought) const
{
    return subTasks && subTasks->searchLevelFirst(sought);
}

// ---- place in the tree ----------------------------------------------------------------------------

CTask * CTask::getParent() const
{
    return container ? container->getOwner() : nullptr;
}

CTaskArray const * CTask::getSiblings() const
{
    if (!project) return nullptr;
    CTask const * const parent = project->getTaskParent(*this);
    return parent ? parent->getSubTasks() : &project->getAllTasks();
}

int CTask::getPositionInSiblings() const
{
    CTaskArray const * const siblings = getSiblings();
    return siblings ? siblings->findByID(fields.id) : 0;
}

bool CTask::canMoveTaskUp() const
{
    return project && getPositionInSiblings() > 0;
}

bool CTask::canMoveTaskDown() const
{
    if (!project) return false;
    int const position = getPositionInSiblings();
    return position >= 0 && position < getSiblings()->GetUpperBound();
}
