#include "model/task_index.h"

#include <atomic>

#include "model/task_array.h"

namespace orvane
{

namespace
{

// Every task of a subtree, the task itself first. The stack is explicit: depth costs no call frames.
template <class Visit>
void forSubtree(CTask & root, Visit const & visit)
{
    std::vector<CTask *> open{&root};
    while (!open.empty())
    {
        CTask & task = *open.back();
        open.pop_back();
        visit(task);
        if (CTaskArray const * const children = task.getSubTasks())
            for (CTask const & child : *children) open.push_back(const_cast<CTask *>(&child));
    }
}

}  // namespace

CTaskIndex::CTaskIndex(CTaskArray & roots) : roots(roots), links(roots), state{freshStamp(), freshStamp()}
{
}

std::uint64_t CTaskIndex::freshStamp()
{
    // Projects may live on several threads.
    static std::atomic<std::uint64_t> last = 0;
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

CTask * CTaskIndex::find(CTaskID const & id)
{
    if (!built) build();
    auto const found = tasks.find(id.getGUID());
    if (found == tasks.end()) return nullptr;
    return found->second.count == 1 ? found->second.only : const_cast<CTask *>(roots.searchLevelFirst(id));
}

bool CTaskIndex::hasUniqueIDs()
{
    if (!built) build();
    return doubled == 0 && !tasks.contains(_GUID{});
}

void CTaskIndex::build()
{
    tasks.clear();
    doubled = 0;
    built = true;
    for (CTask const & root : roots)
        forSubtree(const_cast<CTask &>(root), [this](CTask & each) { enter(each, each.getID().getGUID()); });
}

void CTaskIndex::subtreeEnters(CTask & task)
{
    tasksMove();
    if (!isBuilt()) return;
    forSubtree(task, [this](CTask & each) {
        enter(each, each.getID().getGUID());
        links.enter(each);
    });
}

void CTaskIndex::subtreeLeaves(CTask & task)
{
    tasksMove();
    if (!isBuilt()) return;
    forSubtree(task, [this](CTask & each) {
        leave(each, each.getID().getGUID());
        links.leave(each);
    });
}

void CTaskIndex::rename(CTask & task, _GUID const & from, _GUID const & to)
{
    if (from == to) return;
    tasksMove();
    leave(task, from);
    enter(task, to);
}

void CTaskIndex::linksLeave(CTask const & task)
{
    state.links = freshStamp();
    links.leave(task);
}

void CTaskIndex::linksEnter(CTask const & task)
{
    links.enter(task);
}

void CTaskIndex::enter(CTask & task, _GUID const & id)
{
    if (!built) return;
    Holders & holders = tasks[id];
    holders.only = ++holders.count == 1 ? &task : nullptr;
    if (holders.count == 2) ++doubled;
}

void CTaskIndex::leave(CTask &, _GUID const & id)
{
    auto const found = tasks.find(id);
    if (found == tasks.end()) return;
    if (--found->second.count == 0)
    {
        tasks.erase(found);
    }
    else if (found->second.count == 1)
    {
        // Of the holders of a doubled identifier one is left, and only the tree knows which: a rare case.
        built = false;
        tasks.clear();
    }
}

}  // namespace orvane
