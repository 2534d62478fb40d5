#include "model/link_index.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "model/task_array.h"

namespace orvane
{

CTask const * CLinkIndex::findHolder(CLinkID const & id)
{
    build();
    auto const found = holders.find(id.getGUID());
    if (found == holders.end()) return nullptr;
    return found->second.only ? found->second.only : roots.findTask(id);
}

bool CLinkIndex::hasDownstream(CTaskID const & upstream)
{
    build();
    return downstream.contains(upstream.getGUID());
}

// The positions that lead from the roots to the task: they order tasks as the tree does.
std::vector<int> CLinkIndex::placeOf(CTask const & task) const
{
    std::vector<int> place;
    CTask const * each = &task;
    while (each)
    {
        CTask const * const parent = each->getParent();
        place.push_back((parent ? *parent->getSubTasks() : roots).positionOf(*each));
        each = parent;
    }
    std::ranges::reverse(place);
    return place;
}

std::vector<CTask const *> CLinkIndex::findDownstream(CTaskID const & upstream)
{
    build();
    auto const found = downstream.find(upstream.getGUID());
    if (found == downstream.end()) return {};
    if (found->second.size() == 1) return found->second;
    std::vector<std::pair<std::vector<int>, CTask const *>> places;
    for (CTask const * task : found->second) places.emplace_back(placeOf(*task), task);
    std::ranges::sort(places);
    std::vector<CTask const *> tasks;
    for (auto const & [place, task] : places) tasks.push_back(task);
    return tasks;
}

void CLinkIndex::build()
{
    if (built) return;
    built = true;
    build(roots);
}

void CLinkIndex::build(CTaskArray const & tasks)
{
    for (CTask const & task : tasks)
    {
        enter(task);
        if (task.getSubTasks()) build(*task.getSubTasks());
    }
}

void CLinkIndex::enter(CTask const & task)
{
    if (!built) return;
    for (CLink const & link : task.getUpstreamLinks())
    {
        Holders & known = holders[link.getID().getGUID()];
        known.only = ++known.count == 1 ? &task : nullptr;
        std::vector<CTask const *> & tasks = downstream[link.getUpstreamTaskID().getGUID()];
        auto const place = std::lower_bound(tasks.begin(), tasks.end(), &task, std::less<>());
        if (place == tasks.end() || *place != &task) tasks.insert(place, &task);
    }
}

void CLinkIndex::leave(CTask const & task)
{
    if (!built) return;
    for (CLink const & link : task.getUpstreamLinks())
    {
        auto const holder = holders.find(link.getID().getGUID());
        if (--holder->second.count == 0) holders.erase(holder);
        auto const group = downstream.find(link.getUpstreamTaskID().getGUID());
        // Gone already when the task has another link from there.
        if (group == downstream.end()) continue;
        std::vector<CTask const *> & tasks = group->second;
        auto const place = std::lower_bound(tasks.begin(), tasks.end(), &task, std::less<>());
        if (place != tasks.end() && *place == &task) tasks.erase(place);
        if (tasks.empty()) downstream.erase(group);
    }
}

}  // namespace orvane
