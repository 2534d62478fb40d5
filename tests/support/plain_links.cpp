#include "tests/support/plain_links.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "tests/support/task_history.h"

namespace orvane::test
{

namespace
{

class LongestChains
{
public:
    LongestChains(CProject const & project, Memory memory) : project(project), memory(memory)
    {
        collect(project.getAllTasks());
    }

    PlainChain findEnd(CTaskArray const & tasks)
    {
        PlainChain best;
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            CProjectDuration const own = task.getDurationToEndOfStoredRisk();
            if (!task.getSubTasks() && own >= best.length) best = {&task, own, {}};
            if (!task.getUpstreamLinks().IsEmpty() && !left.contains(task.getID().getGUID()))
            {
                PlainChain const chain = measure(task);
                if (chain.length >= best.length) best = chain;
            }
            if (!task.getSubTasks()) continue;
            PlainChain const below = findEnd(*task.getSubTasks());
            if (below.end && below.length >= best.length) best = below;
        }
        return best;
    }

private:
    void collect(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            if (task.getID().isNULL() || !task.isValid()) continue;
            for (CLink const & link : task.getUpstreamLinks()) left.insert(link.getUpstreamTaskID().getGUID());
            if (task.getSubTasks()) collect(*task.getSubTasks());
        }
    }

    PlainChain measure(CTask const & task)
    {
        if (auto const found = known.find(&task); found != known.end()) return found->second;
        CProjectDuration const own = task.getDurationToEndOfStoredRisk();
        CProjectDuration longest(0);
        int longestType = 0;
        PlainChain result{&task, CProjectDuration(), {}};
        road.insert(&task);
        for (CLink const & link : task.getUpstreamLinks())
        {
            CTask const * const up = project.getTask(link.getUpstreamTaskID());
            if (!up || !up->isValid() || road.contains(up)) continue;
            int const type = link.getType().getEquivalentValue();
            bool const fromStart = type == 2 || type == 3;
            PlainChain chain{up, CProjectDuration(0), {}};
            if (!up->getUpstreamLinks().IsEmpty())
            {
                chain = measure(*up);
                if (fromStart) chain.length = chain.length - up->getDurationToEndOfStoredRisk();
            }
            else if (!fromStart) chain.length = up->getDurationToEndOfStoredRisk();
            if (chain.length < longest) continue;
            longest = chain.length;
            longestType = type;
            result.links = chain.links;
            result.links.push_back(&link);
        }
        road.erase(&task);
        if (longestType == 1 || longestType == 3) result.length = own + longest;
        else if (longestType != 0) result.length = longest;
        if (memory == Memory::ofTasks) known.emplace(&task, result);
        return result;
    }

    CProject const & project;
    Memory const memory;
    std::set<_GUID> left;
    std::set<CTask const *> road;
    std::map<CTask const *, PlainChain> known;
};

// ---- searches ---------------------------------------------------------------------------------------

bool circular(CProject const & project, CTask const & task, std::set<CTask const *> visited)
{
    if (!visited.insert(&task).second) return true;
    std::vector<CTask const *> family{&task};
    for (CTask const * parent = task.getParentOfLastPass(); parent; parent = parent->getParentOfLastPass())
        family.push_back(parent);
    if (task.getSubTasks())
        forEachTask(*task.getSubTasks(), [&](CTask const & below, CTask const *) { family.push_back(&below); });
    for (CTask const * each : family)
        for (CLink const & link : each->getUpstreamLinks())
        {
            CTask const * const upstream = project.getTask(link.getUpstreamTaskID());
            if (!upstream) return false;
            if (circular(project, *upstream, visited)) return true;
        }
    return false;
}

class UpstreamSearch
{
public:
    UpstreamSearch(CProject const & project, CTaskID const & sought, Memory memory)
        : project(project), sought(sought), memory(memory)
    {
    }

    bool from(CTask const & task)
    {
        road.insert(&task);
        bool const answer = alongLinks(task.getUpstreamLinks());
        road.erase(&task);
        if (memory == Memory::ofTasks) searched.insert(&task);
        return answer;
    }

private:
    bool alongLinks(CLinkArray const & links)
    {
        for (CLink const & link : links)
        {
            if (link.getUpstreamTaskID() == sought) return true;
            CTask const * const next = project.getTask(link.getUpstreamTaskID());
            if (!next || road.contains(next)) return false;
            if (!searched.contains(next) && from(*next)) return true;
        }
        return false;
    }

    CProject const & project;
    CTaskID const & sought;
    Memory const memory;
    std::set<CTask const *> road;
    std::set<CTask const *> searched;
};

}  // namespace

PlainChain plainCriticalPath(CProject const & project, Memory memory)
{
    return LongestChains(project, memory).findEnd(project.getAllTasks());
}

std::vector<CTask const *> everyTask(CProject const & project)
{
    std::vector<CTask const *> all;
    forEachTask(project.getAllTasks(), [&](CTask const & task, CTask const *) { all.push_back(&task); });
    return all;
}

bool plainIsInCircularChain(CProject const & project, CTask const & task)
{
    return circular(project, task, {});
}

bool plainIsUpstream(CProject const & project, CTask const & task, CTaskID const & sought, Memory memory)
{
    return UpstreamSearch(project, sought, memory).from(task);
}

std::vector<CLink const *> plainDownstreamLinks(CProject const & project, CTaskID const & id)
{
    std::vector<CLink const *> links;
    for (CTask const * task : everyTask(project))
        for (CLink const & link : task->getUpstreamLinks())
            if (link.getUpstreamTaskID() == id) links.push_back(&link);
    return links;
}

CTask const * plainHolder(CProject const & project, CLinkID const & id)
{
    for (CTask const * task : everyTask(project))
        for (CLink const & link : task->getUpstreamLinks())
            if (link.getID() == id) return task;
    return nullptr;
}

// ---- random plans -----------------------------------------------------------------------------------

namespace
{

int below(std::mt19937 & random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

TaskDraft randomTask(std::mt19937 & random, int & left)
{
    --left;
    bool const blank = below(random, 10) == 0;
    TaskDraft draft = blank ? aBlank("task " + std::to_string(left)) : aTask("task " + std::to_string(left));
    draft.lasting(CProjectDuration(std::array{8, 8, 16, 20}[static_cast<std::size_t>(below(random, 4))] * 3600L));
    int const kind = below(random, 8);
    if (kind == 0) draft.keyDate();
    if (kind == 1) draft.started("01-06 09:00"_t);
    if (kind == 2) draft.finished("01-06 09:00"_t, "01-08 13:00"_t);
    std::vector<TaskDraft> children;
    while (left > 0 && below(random, 3) == 0) children.push_back(randomTask(random, left));
    return kind == 0 ? draft : draft.with(children);
}

}  // namespace

std::vector<TaskDraft> randomTasks(std::mt19937 & random, int count)
{
    std::vector<TaskDraft> tasks;
    while (count > 0) tasks.push_back(randomTask(random, count));
    return tasks;
}

CLinkArray randomLinks(std::mt19937 & random, std::vector<CTask const *> const & upstream)
{
    CLinkArray links;
    for (int count = below(random, 4); count > 0; --count)
    {
        CTaskID from;
        int const kind = below(random, 20);
        if (kind == 0) from.clear();
        else if (kind > 1 && !upstream.empty()) from.setGUID(upstream[random() % upstream.size()]->getID().getGUID());
        CLinkType type;
        if (below(random, 20)) type = 1 + below(random, 4);
        CLink link(from, type);
        link.setDelay(CProjectDuration(3600L * below(random, 30)));
        links.Add(link);
    }
    return links;
}

void linkAtRandom(Plan & plan, std::mt19937 & random, bool withCircles)
{
    std::vector<CTask const *> tasks = everyTask(plan.project);
    std::ranges::shuffle(tasks, random);
    std::vector<CTask const *> before;
    for (CTask const * task : tasks)
    {
        const_cast<CTask *>(task)->setUpstreamLinks(randomLinks(random, withCircles ? tasks : before));
        before.push_back(task);
    }
    plan.derive();
}

}  // namespace orvane::test
