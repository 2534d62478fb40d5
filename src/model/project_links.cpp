// What a project answers about links. They are stored on their downstream tasks, and an index knows which
// these are.

#include "model/project.h"

#include <functional>

namespace
{

// Calls visit(task, link) for every link that leaves the task, in the order of the tree, each task's links
// before its children's.
template <class Visit>
void forDownstreamLinks(CTaskArray const & roots, CTaskID const & id, Visit const & visit)
{
    for (CTask const * task : roots.getLinkIndex()->findDownstream(id))
        for (CLink const & link : task->getUpstreamLinks())
            if (link.getUpstreamTaskID() == id) visit(*task, link);
}

// A limit takes the place of the one so far when there is none so far, or when it is the tighter one.
template <class Tighter>
void tighten(CProjectTime & limit, CProjectTime const & other, Tighter const & tighter)
{
    if (!limit.isValid() || (other.isValid() && tighter(other, limit))) limit = other;
}

}  // namespace

CProjectTime CProject::getEarliestStartFromUpstreamLinks(CTaskID const & id) const
{
    CTask const * const task = getTask(id);
    return task ? getEarliestStartFromUpstreamLinks(*task) : CProjectTime();
}

CProjectTime CProject::getEarliestStartFromUpstreamLinks(CTask const & task) const
{
    CProjectTime earliest;
    for (CLink const & link : task.getUpstreamLinks())
    {
        CTask const * const upstream = getTask(link.getUpstreamTaskID());
        if (!upstream) break;
        tighten(earliest, link.getEarliestStartOfDownstreamTask(*upstream, task), std::greater<>());
    }
    return earliest;
}

CProjectTime CProject::getLatestStartFromDownstreamLinks(CTaskID const & id) const
{
    CTask const * const task = getTask(id);
    return task ? getLatestStartFromDownstreamLinks(*task) : CProjectTime();
}

CProjectTime CProject::getLatestStartFromDownstreamLinks(CTask const & task) const
{
    CProjectTime latest;
    forDownstreamLinks(getAllTasks(), task.getID(),
                       [&](CTask const & downstream, CLink const & link)
                       { tighten(latest, link.getLatestStartOfUpstreamTask(task, downstream), std::less<>()); });
    return latest;
}

void CProject::getDownstreamLinks(CTaskID const & id, CLinkArray & links) const
{
    // The identifier may lie in a link of the array that is emptied.
    CTaskID const sought(id);
    links.RemoveAll();
    forDownstreamLinks(getAllTasks(), sought, [&](CTask const &, CLink const & link) { links.Add(link); });
}

bool CProject::hasAnyDownstreamLinks(CTaskID const & id) const
{
    return getAllTasks().getLinkIndex()->hasDownstream(id);
}
