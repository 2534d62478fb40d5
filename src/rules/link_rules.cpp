// Links, which live on their downstream tasks.

#include <unordered_set>

#include "rules/local_rules_checker.h"

#include "platform/string_table.h"

namespace
{

// Two links from the same upstream task.
bool isLinkedTwice(CLinkArray const & links)
{
    std::unordered_set<_GUID> met;
    for (CLink const & link : links)
        if (!met.insert(link.getUpstreamTaskID().getGUID()).second) return true;
    return false;
}

}  // namespace

bool CLocalRulesChecker::addLink(CTaskID const & upstreamID, CTaskID const & downstreamID, CLinkType const & type)
{
    CTask * const downstream = getTask(downstreamID);
    if (!downstream || !getTask(upstreamID)) return false;
    CLinkArray links(downstream->getUpstreamLinks());
    links.Add(CLink(upstreamID, type));
    downstream->setUpstreamLinks(links);
    // From here on the link stays, also when it is refused.
    if (isLinkedTwice(links))
    {
        warnUser(orvane::text::alreadyLinked);
        return false;
    }
    // The search for circles goes by the parents of a derived pass.
    tasks->setChanged();
    if (downstream->isInCircularChain())
    {
        warnUser(orvane::text::circularLink);
        return false;
    }
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::changeLink(CLink const & link)
{
    CTask const * const holder = project ? project->getTask(link.getID()) : nullptr;
    if (!holder || !getTask(link.getUpstreamTaskID())) return false;
    CLinkArray links(holder->getUpstreamLinks());
    int const position = links.findByID(link.getID());
    // Type, status and delay change; where the link comes from does not.
    if (position < 0 || !(links.GetAt(position).getUpstreamTaskID() == link.getUpstreamTaskID())) return false;
    links.changeElement(link);
    getTask(holder->getID())->setUpstreamLinks(links);
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::removeLink(CLinkID const & linkID)
{
    CTask const * const holder = project ? project->getTask(linkID) : nullptr;
    CTask * const task = holder ? getTask(holder->getID()) : nullptr;
    return task && removeLink(*task, linkID);
}

bool CLocalRulesChecker::removeLink(CTask & task, CLinkID const & linkID)
{
    CLinkArray links(task.getUpstreamLinks());
    int const position = links.findByID(linkID);
    if (position < 0) return false;
    links.RemoveAt(position);
    task.setUpstreamLinks(links);
    if (!isTransactionServer()) criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::removeLinks(CTaskID const & taskID)
{
    CTask * const task = getTask(taskID);
    if (!task) return false;
    CLinkArray const arriving(task->getUpstreamLinks());
    for (CLink const & link : arriving)
        if (!removeLink(*task, link.getID())) return false;
    CLinkArray leaving;
    project->getDownstreamLinks(taskID, leaving);
    for (CLink const & link : leaving)
        if (!removeLink(link.getID())) return false;
    return true;
}

// Of a summary task only the links of its direct children go: its own and those further down dangle if the
// subtree is removed, and are dropped at the next load.
bool CLocalRulesChecker::removeLinksFromTaskOrSubtasks(CTaskID const & taskID)
{
    CTask const * const task = project->getTask(taskID);
    if (!task) return false;
    if (!task->getSubTasks()) return removeLinks(taskID);
    CTaskIDArray children;
    for (CTask const & child : *task->getSubTasks()) children.Add(child.getID());
    for (CTaskID const & child : children)
        if (!removeLinks(child)) return false;
    return true;
}
