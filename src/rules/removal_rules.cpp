// Rows that are blanked or go, alone or with everything below them.

#include <unordered_map>
#include <unordered_set>

#include "rules/local_rules_checker.h"

// What a batch of removals settles once for each parent, not once for each child: how many valid children
// are left, the flags that replacing its children by copies would have raised, and the derived pass that
// puts the parents right.
class CLocalRulesChecker::Removal
{
public:
    explicit Removal(CLocalRulesChecker & checker) : checker(checker) {}
    Removal(Removal const &) = delete;
    Removal & operator=(Removal const &) = delete;
    ~Removal()
    {
        for (_GUID const & guid : parents)
        {
            CTaskID id{orvane::nullID};
            id.setGUID(guid);
            CTask * const parent = checker.getTask(id);
            if (CTaskArray * const children = parent ? parent->getWritableSubTasks() : nullptr) children->flagAsAssigned();
        }
        if (!parents.empty()) checker.tasks->setChanged();
    }

    // Takes a child out from under its parent; false when it is not there.
    bool removeChild(CTask & child, CTask & parent)
    {
        CTaskArray & children = *parent.getWritableSubTasks();
        int const position = children.positionOf(child);
        if (position < 0) return false;
        checker.removeAllTaskPresentations(child);
        parents.insert(parent.getID().getGUID());
        // A parent that may not have children keeps the ones it has.
        if (parent.canBecomeSummaryTask())
        {
            validChildren(parent) -= child.isValid();
            if (children.GetSize() > 1) children.RemoveAt(position);
            else parent.setSubTasks(CTaskArray());
        }
        parent.setID(parent.getID());
        desummarizeIfDue(parent);
        return true;
    }
    void childWasBlanked(CTask & parent, bool wasValid)
    {
        validChildren(parent) -= wasValid;
        desummarizeIfDue(parent);
    }
    // To be asked before a child changes, so that the count is of the children before.
    int & validChildren(CTask & parent)
    {
        auto const [known, fresh] = valid.try_emplace(&parent, 0);
        if (fresh && parent.getSubTasks())
            for (CTask const & child : *parent.getSubTasks()) known->second += child.isValid();
        return known->second;
    }

private:
    void desummarizeIfDue(CTask & parent)
    {
        if (validChildren(parent) == 0) checker.desummarizeIfChildrenAreInvalid(parent.getID());
    }

    CLocalRulesChecker & checker;
    std::unordered_map<CTask *, int> valid;
    std::unordered_set<_GUID> parents;
};

bool CLocalRulesChecker::desummarizeIfChildrenAreInvalid(CTaskID const & taskID)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->getSubTasks()) return false;
    for (CTask const & child : *task->getSubTasks())
        if (child.isValid()) return false;
    task->setSubTasks(CTaskArray());
    task->setID(task->getID());
    if (!isTransactionServer()) presentationData->clearAllSelectedTasks();
    return true;
}

bool CLocalRulesChecker::removeTasks(CTaskIDArray const & taskIDs)
{
    if (!project) return false;
    // The caller's list may be the selection, which changes.
    CTaskIDArray const ids(taskIDs);
    {
        Removal removal(*this);
        for (CTaskID const & id : ids)
        {
            CTask * const task = getTask(id);
            // It may have gone with a parent removed before it.
            if (!task) continue;
            if (!removeLinksFromTaskOrSubtasks(id)) return false;
            if (CTask * const parent = task->getParent())
            {
                if (!removal.removeChild(*task, *parent)) return false;
                continue;
            }
            int const position = tasks->positionOf(*task);
            if (position < 0) return false;
            removeAllTaskPresentations(*task);
            tasks->RemoveAt(position);
        }
    }
    if (isTransactionServer()) return true;
    presentationData->clearAllSelectedTasks();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::clearTasks(CTaskIDArray const & taskIDs)
{
    if (!project) return false;
    CTaskIDArray const ids(taskIDs);
    Removal removal(*this);
    for (CTaskID const & id : ids)
    {
        CTask * task = getTask(id);
        if (!task || !task->isValid()) continue;
        if (CTaskArray const * const children = task->getSubTasks())
        {
            CTaskIDArray below;
            for (CTask const & child : *children) below.Add(child.getID());
            if (!clearTasks(below)) return false;
        }
        if (!removeLinks(id)) return false;
        task = getTask(id);
        CTask * const parent = task->getParent();
        if (parent) removal.validChildren(*parent);
        CTask blank;
        blank.setProject(project);
        blank.setID(id);
        *task = blank;
        if (parent) removal.childWasBlanked(*parent, true);
    }
    criticalPathDirty = true;
    return true;
}
