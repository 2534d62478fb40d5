// What a project answers about links. They are stored on their downstream tasks: what hangs off a task is
// found by a walk over the tree.

#include "model/project.h"

namespace
{

// Calls visit(task, link) for every link that leaves the task, in the order of the tree, each task's links
// before its children's, until visit answers false; whether it went to the end.
template <class Visit>
bool forDownstreamLinks(CTaskArray const & tasks, CTaskID const & id, Visit const & visit)
{
    for (CTask const & task : tasks)
    {
        for (CLink const & link : task.getUpstreamLinks())
            if (link.getUpstreamTaskID() == id && !visit(task, link)) return false;
        if (task.getSubTasks() && !forDownstreamLinks(*task.getSubTasks(), id, visit)) return false;
    }
    return true;
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
        CProjectTime const allowed = link.getEarliestStartOfDownstreamTask(*upstream, task);
        if (!earliest.isValid() || allowed > earliest) earliest = allowed;
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
    forDownstreamLinks(getAllTasks(), task.getID(), [&](CTask const & downstream, CLink const & link) {
        CProjectTime const allowed = link.getLatestStartOfUpstreamTask(task, downstream);
        if (!latest.isValid() || allowed < latest) latest = allowed;
        return true;
    });
    return latest;
}

void CProject::getDownstreamLinks(CTaskID const & id, CLinkArray & links) const
{
    // The identifier may lie in a link of the array that is emptied.
    CTaskID const sought(id);
    links.RemoveAll();
    forDownstreamLinks(getAllTasks(), sought, [&](CTask const &, CLink const & link) { return links.Add(link) >= 0; });
}

bool CProject::hasAnyDownstreamLinks(CTaskID const & id) const
{
    return !forDownstreamLinks(getAllTasks(), id, [](CTask const &, CLink const &) { return false; });
}
