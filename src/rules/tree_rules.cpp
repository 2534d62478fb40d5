// Rows that come in beside others, from elsewhere, and that move.

#include "rules/local_rules_checker.h"

#include <climits>
#include <unordered_map>
#include <unordered_set>

#include "model/circular_search.h"
#include "platform/string_table.h"
#include "schedule/calendar.h"
#include "view/item_tree.h"

// ---- new rows -------------------------------------------------------------------------------------

// It stays blank where the calendar refuses the target's start.
bool CLocalRulesChecker::insertBlankTask(CTaskID const & targetID, CInsertType const & type)
{
    CTask * const target = getTask(targetID);
    if (!target) return false;
    int const place = type.getEquivalentValue();
    // A first child starts out as long as its parent.
    bool const takesLength = place == CInsertType::AsChild && !target->getSubTasks();
    CTask task;
    task.setProject(project);
    task.setName("New Task");
    task.setPlannedStartTime(target->getStartTime());
    task.setDuration(takesLength ? target->getDurationToEndOfUnmitigatedRisk()
                                 : project->getProjectCalendar().getNormalDay().getWorkingDuration());
    CUser const * const user = project->getCurrentUser();
    if (!user) return false;
    task.setSupplyChain(CSupplyChain(user->getCompanyID()));
    if (place == CInsertType::AsChild) return insertTaskAsChild(task, *target);
    return place == CInsertType::Below ? insertTaskBelow(task, *target) : insertTaskAbove(task, *target);
}

bool CLocalRulesChecker::insertTaskAbove(CTask const & task, CTask const & target)
{
    return insertTaskBeside(task, target, 0);
}

bool CLocalRulesChecker::insertTaskBelow(CTask const & task, CTask const & target)
{
    return insertTaskBeside(task, target, 1);
}

bool CLocalRulesChecker::insertTaskBeside(CTask const & task, CTask const & target, int offset)
{
    CTask * const parent = target.getParent();
    if (parent && !parent->canBecomeSummaryTask()) return false;
    CTaskArray & siblings = parent ? *parent->getWritableSubTasks() : *tasks;
    int const position = siblings.positionOf(target);
    if (position < 0) return false;
    siblings.InsertAt(position + offset, task);
    if (parent) siblings.flagAsAssigned();
    addTaskPresentation(task.getID());
    return presentationData->setSingleSelectedTaskID(task.getID());
}

bool CLocalRulesChecker::insertTaskAsChild(CTask const & task, CTask & target)
{
    if (!target.canBecomeSummaryTask()) return false;
    target.insertSubTask(task, target.getSubTasks() ? target.getSubTasks()->GetSize() : 0);
    target.getWritableSubTasks()->flagAsAssigned();
    addTaskPresentation(task.getID());
    return presentationData->setSingleSelectedTaskID(task.getID());
}

// ---- rows from elsewhere --------------------------------------------------------------------------

bool CLocalRulesChecker::importTasks(CTaskArray const & imported)
{
    if (!project) return false;
    addPresentationsForTasks(imported);
    int const first = tasks->Append(imported);
    for (int each = first; each < tasks->GetSize(); ++each) tasks->elementForPass(each).setProject(project);
    criticalPathDirty = true;
    return true;
}

void CLocalRulesChecker::addPresentationsForTasks(CTaskArray const & array)
{
    orvane::visitItems(array, [this](CTask const & task) { addTaskPresentation(task.getID()); });
}

// ---- moves ----------------------------------------------------------------------------------------

namespace
{

// How far past the last root a row may be put: more than any list on a screen, for the gap is filled with rows.
constexpr int widestGap = 65'536;

}  // namespace

bool CLocalRulesChecker::repositionTask(CTaskID const & taskID, int newIndex)
{
    CTask * const task = getTask(taskID);
    if (!task) return false;
    CTask * const parent = task->getParent();
    CTaskArray & siblings = parent ? *parent->getWritableSubTasks() : *tasks;
    int const index = siblings.positionOf(*task);
    if (index == newIndex || !siblings.rePositionElements(newIndex, index)) return false;
    deselectTasksThatAreExcludedByFilter();
    return true;
}

// A batch of moves to one parent, which counts the valid children of each former parent once.
class CLocalRulesChecker::Relocation
{
public:
    Relocation(CLocalRulesChecker & checker, CTaskID const & parentID)
        : checker(checker), parentID(parentID), toRoots(!checker.getTask(parentID))
    {
    }

    bool canBegin(int index) const { return !toRoots || isRootPosition(index); }
    // False when the task is gone, or has left its place and finds no other.
    bool move(CTaskID const & id, int position)
    {
        CTask * const task = checker.getTask(id);
        if (!task) return false;
        CTask * const parent = task->getParent();
        if (staysWhereItIs(*task, parent)) return true;
        CTask const copy(*task);
        takeOut(*task, parent);
        return putIn(copy, position);
    }

private:
    // A root stands under the NULL parent; an unknown one means the roots, but no task stands there already.
    bool staysWhereItIs(CTask const & task, CTask const * parent) const
    {
        bool const isThere = parent ? parent->getID() == parentID : parentID.isNULL();
        return isThere || task.getID() == parentID || task.isDescendant(parentID);
    }

    void takeOut(CTask const & task, CTask * parent)
    {
        CTaskArray & siblings = parent ? *parent->getWritableSubTasks() : *checker.tasks;
        int const position = siblings.positionOf(task);
        if (!parent) return siblings.RemoveAt(position);
        auto const [known, fresh] = validChildren.try_emplace(parent->getID().getGUID(), 0);
        if (fresh)
            for (CTask const & child : siblings) known->second += child.isValid();
        known->second -= task.isValid();
        siblings.RemoveAt(position);
        if (known->second == 0) checker.desummarizeIfChildrenAreInvalid(parent->getID());
    }

    bool putIn(CTask const & task, int position)
    {
        if (CTask * const target = checker.getTask(parentID))
        {
            if (!target->canBecomeSummaryTask()) return false;
            target->insertSubTask(task, position);
            return true;
        }
        // The target may have gone just now, a blank row among those whose last valid sibling left.
        if (!toRoots && !isRootPosition(position)) return false;
        while (checker.tasks->GetSize() < position) checker.tasks->addTask(checker.project);
        checker.tasks->InsertAt(position, task);
        return true;
    }

    bool isRootPosition(int position) const
    {
        return position >= 0 && position - checker.tasks->GetSize() <= widestGap;
    }

    CLocalRulesChecker & checker;
    CTaskID const parentID;
    bool const toRoots;
    std::unordered_map<_GUID, int> validChildren;
};

bool CLocalRulesChecker::repositionTasks(CTaskIDArray const & taskIDs, CTaskID const & newParentID, int index)
{
    if (!project || taskIDs.IsEmpty()) return false;
    Relocation relocation(*this, newParentID);
    if (!relocation.canBegin(index)) return false;
    CTaskID const primary(presentationData->getPrimarySelectedTaskID());
    CTaskIDArray const selected(presentationData->getSelectedTaskID());
    CTaskIDArray ids;
    putTaskIdsInOrderOfTasks(taskIDs, *tasks, ids);
    int position = index;
    for (CTaskID const & id : ids)
    {
        if (!relocation.move(id, position)) return false;
        if (position < INT_MAX) ++position;
    }
    // The search for circles goes by the parents of a derived pass.
    tasks->setChanged();
    orvane::CCircularSearch search(*project);
    for (CTaskID const & id : ids)
    {
        CTask const * const task = getTask(id);
        if (!task) return false;
        if (search.reachesCircleFrom(*task)) return warnUser(orvane::text::circularLink), false;
    }
    // A parent that lost its last valid child has cleared the selection.
    if (!(presentationData->primarySelectedTaskID == primary)) presentationData->primarySelectedTaskID = primary;
    if (!(presentationData->selectedTaskID == selected)) presentationData->selectedTaskID = selected;
    deselectTasksThatAreExcludedByFilter();
    return true;
}

void CLocalRulesChecker::putTaskIdsInOrderOfTasks(CTaskIDArray const & ids, CTaskArray const & array,
                                                  CTaskIDArray & ordered)
{
    std::unordered_set<_GUID> wanted;
    for (CTaskID const & id : ids)
        if (!id.isNULL()) wanted.insert(id.getGUID());
    orvane::visitItems(array, [&](CTask const & task) {
        if (!wanted.empty() && wanted.erase(task.getID().getGUID())) ordered.Add(task.getID());
    });
}
