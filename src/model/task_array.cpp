#include "model/task_array.h"

#include <algorithm>

#include "model/project.h"

CTaskArray::CTaskArray(CTaskArray const & other) : Base()
{
    copyFrom(other);
}

CTaskArray & CTaskArray::operator=(CTaskArray const & other)
{
    // The source may stand inside a subtree that goes: it is copied first.
    if (this == &other)
    {
        flagAsAssigned();
        return *this;
    }
    CTaskArray copy(other);
    takeOver(copy);
    return *this;
}

void CTaskArray::takeOver(CTaskArray & other)
{
    RemoveAll();
    storage() = std::move(other.storage());
    if (!IsEmpty()) entered(0, GetSize());
    changed = other.changed;
}

CTask & CTaskArray::addTask(CProject * project)
{
    SetSize(GetSize() + 1);
    CTask & task = elementForPass(GetUpperBound());
    task.setProject(project);
    return task;
}

CTask & CTaskArray::addTask(CTask const & task)
{
    return elementForPass(Add(task));
}

bool CTaskArray::rePositionElements(int to, int from)
{
    if (!holds(to) || !holds(from)) return false;
    if (to == from) return true;
    mutating();
    Base::leaving(from, 1);
    if (orvane::CTaskIndex * const forest = forestIndex()) forest->tasksMove();
    std::vector<std::unique_ptr<CTask>> moved;
    moved.push_back(storage().release(from));
    moved.front()->flagSubtreeAsAssigned();
    storage().adopt(to, std::move(moved));
    return true;
}

int CTaskArray::findByID(CTaskID const & id) const
{
    orvane::CTaskIndex * const forest = forestIndex();
    if (!forest) return Base::findByID(id);
    CTask const * const task = forest->find(id);
    // A task elsewhere may still have a namesake here when the identifier stands twice.
    if (!task) return -1;
    return task->container == this ? positionOf(*task) : Base::findByID(id);
}

int CTaskArray::positionOf(CTask const & task) const
{
    if (task.container != this) return -1;
    // Rows come and go near each other: the task is not far from where it was last seen.
    int const last = GetUpperBound();
    int const hint = std::clamp(task.positionHint, 0, last);
    for (int away = 0; away <= last; ++away)
    {
        for (int const position : {hint - away, hint + away})
        {
            if (holds(position) && &GetAt(position) == &task) return task.positionHint = position;
        }
    }
    return -1;
}

void CTaskArray::resetChanged()
{
    changed = false;
    for (int each = 0; each < GetSize(); ++each)
    {
        prefetch(each);
        CTask & task = elementForPass(each);
        if (task.isQuiet()) task.changed = false;
        else task.resetChanged();
    }
}

void CTaskArray::resetChangedBelow(CTask const * parent)
{
    changed = false;
    for (int each = 0; each < GetSize(); ++each)
    {
        prefetch(each);
        CTask & task = elementForPass(each);
        task.changed = false;
        if (task.touched != 0) task.resetOwnFields();
        if (task.subTasks) task.subTasks->resetChangedBelow(&task);
        if (task.project) task.setParentCached(parent);
    }
}

void CTaskArray::prefetch(int position)
{
    constexpr int ahead = 8;
    if (position + ahead < GetSize()) __builtin_prefetch(&elementForPass(position + ahead));
}

bool CTaskArray::setChanged()
{
    return setChangedBelow(nullptr, false);
}

bool CTaskArray::setChangedBelow(CTask const * parent, bool parents)
{
    if (IsEmpty()) return changed;
    CProject const * const project = GetAt(0).project;
    bool const filterDue = project && project->isFilterVerdictDue();
    for (int each = 0; each < GetSize(); ++each)
    {
        prefetch(each);
        CTask & task = elementForPass(each);
        if (!filterDue && task.isQuiet() && (parents || !task.getParentCached()))
        {
            task.changed = false;
            if (task.mayPlaceRisk() && task.project) task.updateStoredRisk(task);
        }
        else changed |= task.setChanged();
        if (parents) task.setParentCached(parent);
    }
    return changed;
}

void CTaskArray::flagAsAssigned()
{
    for (int each = 0; each < GetSize(); ++each) elementForPass(each).flagSubtreeAsAssigned();
}

int CTaskArray::countValidTasks() const
{
    int count = 0;
    for (CTask const & task : *this)
        if (task.isValid()) count += 1 + task.calculateNumberOfChildren();
    return count;
}

CTask const * CTaskArray::searchLevelFirst(CTaskID const & id) const
{
    for (CTask const & task : *this)
        if (task.getID() == id) return &task;
    for (CTask const & task : *this)
        if (CTaskArray const * const children = task.getSubTasks())
            if (CTask const * const found = children->searchLevelFirst(id)) return found;
    return nullptr;
}

CTask * CTaskArray::findInForest(CTaskID const & id) const
{
    orvane::CTaskIndex * const forest = forestIndex();
    return forest ? forest->find(id) : nullptr;
}

bool CTaskArray::hasUniqueIDs() const
{
    orvane::CTaskIndex * const forest = forestIndex();
    return forest && forest->hasUniqueIDs();
}

orvane::CForestState CTaskArray::getForestState() const
{
    orvane::CTaskIndex * const forest = forestIndex();
    return forest ? forest->getState() : orvane::CForestState();
}

orvane::CLinkIndex * CTaskArray::getLinkIndex() const
{
    orvane::CTaskIndex * const forest = forestIndex();
    return forest ? &forest->getLinks() : nullptr;
}

void CTaskArray::beRoots()
{
    if (!index) index = std::make_unique<orvane::CTaskIndex>(*this);
}

void CTaskArray::entered(int first, int count)
{
    Base::entered(first, count);
    orvane::CTaskIndex * const forest = forestIndex();
    for (int each = first; each < first + count; ++each)
    {
        CTask & task = elementForPass(each);
        task.container = this;
        task.positionHint = each;
        task.setParentCached(owner);
        if (forest) forest->subtreeEnters(task);
    }
}

void CTaskArray::leaving(int first, int count)
{
    Base::leaving(first, count);
    orvane::CTaskIndex * const forest = forestIndex();
    if (!forest) return;
    for (int each = first; each < first + count; ++each) forest->subtreeLeaves(elementForPass(each));
}

orvane::CTaskIndex * CTaskArray::forestIndex() const
{
    CTaskArray const * level = this;
    while (level->owner && level->owner->container) level = level->owner->container;
    return level->owner ? nullptr : level->index.get();
}

void CTaskArray::idChanges(CTask & task, CTaskID const & value)
{
    Base::lentForWriting();
    if (orvane::CTaskIndex * const forest = forestIndex()) forest->rename(task, task.getID().getGUID(), value.getGUID());
}
