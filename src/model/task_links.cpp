// The walks over links that start at one task. Chains of links can be as long as the plan, so every walk
// keeps its own stack.

#include "model/task.h"

#include "model/circular_search.h"
#include "model/project.h"
#include "model/task_array.h"
#include "model/upstream_search.h"

namespace orvane
{

// Each task is entered once: what was found on one road holds on all. A task that is already on the road counts as
// missing, and a missing task ends the walk of the task that names it.
bool CUpstreamSearch::reachesFrom(CTask const & start)
{
    struct Step
    {
        CTask const * task;
        int link;
    };
    if (auto const known = answers.find(&start); known != answers.end()) return known->second == Answer::yes;
    std::vector<Step> road{{&start, 0}};
    answers[&start] = Answer::onTheRoad;
    while (!road.empty())
    {
        CTask const & task = *road.back().task;
        int const link = road.back().link++;
        CTask const * upstream = nullptr;
        bool reached = false;
        if (link < task.getUpstreamLinks().GetSize())
        {
            CTaskID const & id = task.getUpstreamLinks().GetAt(link).getUpstreamTaskID();
            reached = id == target;
            upstream = reached ? nullptr : project.getTask(id);
        }
        if (upstream)
        {
            auto const [known, fresh] = answers.try_emplace(upstream, Answer::onTheRoad);
            if (fresh) road.push_back({upstream, 0});
            if (fresh || known->second == Answer::no) continue;
            reached = known->second == Answer::yes;
        }
        if (reached)
        {
            for (Step const & step : road) answers[step.task] = Answer::yes;
            return true;
        }
        answers[&task] = Answer::no;
        road.pop_back();
    }
    return false;
}

}  // namespace orvane

bool CTask::isUpstream(CTaskID const & other) const
{
    return project && orvane::CUpstreamSearch(*project, other).reachesFrom(*this);
}

namespace orvane
{

bool CCircularSearch::reachesCircleFrom(CTask const & start)
{
    if (std::size_t const place = placeOf(start); seen[place].colours[whole] == Colour::white) push(place, whole);
    while (!road.empty())
    {
        Visit & visit = road.back();
        CTask const * const upstream =
            visit.link < visit.task->getUpstreamLinks().GetSize() ? followLink(visit) : nullptr;
        bool circle = false;
        if (visit.isCut) leave();
        else if (upstream) circle = upstream->getID() == start.getID() || enter(*upstream, whole);
        else if (CTask const * const parent = takeParent(visit)) circle = enter(*parent, above);
        else if (CTask const * const child = takeChild(visit)) circle = enter(*child, below);
        else leave();
        if (!circle) continue;
        road.clear();
        seen.clear();
        return true;
    }
    return false;
}

// Each task keeps its own place in mind, and is believed when it stands there.
std::size_t CCircularSearch::placeOf(CTask const & task)
{
    auto const mark = static_cast<std::size_t>(task.walkMark());
    if (mark < seen.size() && seen[mark].task == &task) return mark;
    task.setWalkMark(static_cast<int>(seen.size()));
    seen.push_back({&task});
    return seen.size() - 1;
}

CTask const * CCircularSearch::followLink(Visit & visit) const
{
    CTask const * const upstream =
        project.getTask(visit.task->getUpstreamLinks().GetAt(visit.link++).getUpstreamTaskID());
    visit.isCut = !upstream;
    return upstream;
}

CTask const * CCircularSearch::takeParent(Visit & visit)
{
    if (visit.parentDone) return nullptr;
    visit.parentDone = true;
    return visit.task->getParentOfLastPass();
}

CTask const * CCircularSearch::takeChild(Visit & visit)
{
    CTaskArray const * const children = visit.part == above ? nullptr : visit.task->getSubTasks();
    return children && visit.child < children->GetSize() ? &children->GetAt(visit.child++) : nullptr;
}

bool CCircularSearch::enter(CTask const & task, Part part)
{
    std::size_t const place = placeOf(task);
    Colour const colour = seen[place].colours[part];
    if (colour == Colour::white) push(place, part);
    else if (part != whole) road.back().isCut |= seen[place].isCut[part];
    return colour == Colour::grey;
}

void CCircularSearch::push(std::size_t place, Part part)
{
    seen[place].colours[part] = Colour::grey;
    road.push_back({place, seen[place].task, part, part == below});
}

void CCircularSearch::leave()
{
    Visit const left = road.back();
    road.pop_back();
    seen[left.place].colours[left.part] = Colour::black;
    seen[left.place].isCut[left.part] = left.isCut;
    if (left.part != whole && !road.empty()) road.back().isCut |= left.isCut;
}

}  // namespace orvane

bool CTask::isInCircularChain() const
{
    return project && orvane::CCircularSearch(*project).reachesCircleFrom(*this);
}
