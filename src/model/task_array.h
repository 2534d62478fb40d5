#pragma once

#include <memory>

#include "model/task.h"
#include "model/task_index.h"
#include "values/typed_array.h"

// Tasks in the order of their rows: the roots of a project, or the children of one summary task.
//
// The array knows the task that owns it and tells each element where it stands, so that a task finds its
// parent, its siblings and its place in them at any time, and the index of the whole forest stays right.
class CTaskArray : public orvane::CIdentifiedArray<CTaskArray, CTask>, public IProjectXMLTagProcessor
{
    using Base = orvane::CIdentifiedArray<CTaskArray, CTask>;

public:
    CTaskArray() = default;
    CTaskArray(CTaskArray const & other);
    CTaskArray & operator=(CTaskArray const & other);
    ~CTaskArray() override = default;

    // Grows the array by a new task of the project, and answers it.
    CTask & addTask(CProject * project);
    // Grows the array by a copy.
    CTask & addTask(CTask const & task);
    // Moves the element at `from` to `to`, the others making way. False when either is out of range.
    bool rePositionElements(int to, int from);

    // The position of a task of that identifier, or -1.
    int findByID(CTaskID const & id) const;
    // The position of this very task, or -1.
    int positionOf(CTask const & task) const;

    // Derives every task's flag and caches, children before parents, and points parents anew.
    bool setChanged();
    void resetChanged();
    // The same for roots, and points parents anew, as the derived pass over unchanged tasks would.
    void resetChangedWithParents() { resetChangedBelow(nullptr); }
    // Flags the tasks below as a copy of the array assigned over it would have: for changing in place.
    void flagAsAssigned();

    // Every valid task of the array and below; a blank task's subtree is not entered.
    int countValidTasks() const;
    // The first task of that identifier by a search of this array first and then of each child array.
    CTask const * searchLevelFirst(CTaskID const & id) const;

    // The first task, depth first, that holds what bears the identifier: a link, a supply chain, an assignment, a
    // report, a cost.
    template <class ID>
    CTask const * findTask(ID const & id) const
    {
        for (CTask const & task : *this)
            if (CTask const * const found = task.findTask(id)) return found;
        return nullptr;
    }

    CTask * getOwner() const { return owner; }
    // The task of that identifier anywhere in this forest, as a search would find it, level first.
    CTask * findInForest(CTaskID const & id) const;
    // Whether no two tasks of this forest have the same identifier, and none a NULL one; false without an index.
    bool hasUniqueIDs() const;
    // Of this forest; zeros without an index.
    orvane::CForestState getForestState() const;
    // The links of this forest; null without an index.
    orvane::CLinkIndex * getLinkIndex() const;
    // Makes this array the roots of a forest with an index of its own.
    void beRoots();

    // A document gives no tasks back: its array empties this one, and its tasks are read past.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class CTask;
    friend class orvane::CTaskIndex;

    using Base::Add;

    void mutating() override { changed = true; }
    void entered(int first, int count) override;
    void leaving(int first, int count) override;
    void lentForWriting() override {}

    // The index of the forest that the array stands in, or null.
    orvane::CTaskIndex * forestIndex() const;
    void idChanges(CTask & task, CTaskID const & value);
    bool setChangedBelow(CTask const * parent, bool parents);
    void resetChangedBelow(CTask const * parent);
    // Passes visit tasks that lie apart in memory: asks for the head of one a little further on.
    void prefetch(int position);
    // Takes over the tasks of the other array, without copying, in place of its own.
    void takeOver(CTaskArray & other);

    CTask * owner = nullptr;
    std::unique_ptr<orvane::CTaskIndex> index;
};
