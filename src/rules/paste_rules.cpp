// Copies of tasks with all below them, over another task or at the end of the list.

#include "rules/local_rules_checker.h"

#include <type_traits>
#include <unordered_map>

#include "platform/string_table.h"

namespace
{

template <class Visit>
void forChildren(CTask & task, Visit const & visit)
{
    CTaskArray * const children = task.getWritableSubTasks();
    for (int each = 0; children && each < children->GetSize(); ++each) visit(children->elementForPass(each));
}

}  // namespace

// One paste: which task of the source became which of the copy, and the links that come along.
class CLocalRulesChecker::Pasting
{
public:
    Pasting(CLocalRulesChecker & checker, CTaskID const & sourceID, CTaskPasteMode const & mode)
        : checker(checker), sourceID(sourceID), mode(mode.getEquivalentValue())
    {
    }

    void become(CTaskID const & source, CTaskID const & copy)
    {
        places.try_emplace(source.getGUID(), oldIDs.GetSize());
        oldIDs.Add(source);
        newIDs.Add(copy);
    }
    CTaskIDArray const & getOldIDs() const { return oldIDs; }
    CTaskIDArray const & getNewIDs() const { return newIDs; }

    // To be called before the copy joins the tree, where no identifier may stand twice.
    void giveNewIDsToOwnedData(CTask & task)
    {
        forOwnedData([&](auto getter, auto setter) {
            auto items((task.*getter)());
            for (int each = 0; each < items.GetSize(); ++each)
            {
                auto & item = items.ElementAt(each);
                item.setID(std::remove_cvref_t<decltype(item.getID())>());
            }
            (task.*setter)(items);
        });
        forChildren(task, [this](CTask & child) {
            giveNewIDsToOwnedData(child);
            CTaskID const oldID(child.getID());
            child.setID(CTaskID());
            become(oldID, child.getID());
            checker.addTaskPresentation(child.getID());
        });
    }

    // Of a copy that has joined the tree just what was renewed counts as changed.
    static void flagRenewed(CTask & task)
    {
        task.resetChanged();
        flagOwnedData(task);
    }

    void copySubtreesLinks()
    {
        if (mode == CTaskPasteMode::WithInnerLinks || mode == CTaskPasteMode::WithAllLinks)
            checker.forEachTask([this](CTask & task) { copyLinks(task); });
    }

private:
    template <class Visit>
    static void forOwnedData(Visit const & visit)
    {
        visit(&CTask::getAssignedResources, &CTask::setAssignedResources);
        visit(&CTask::getAssignedRisks, &CTask::setAssignedRisks);
        visit(&CTask::getTaskReports, &CTask::setTaskReports);
        visit(&CTask::getUpstreamLinks, &CTask::setUpstreamLinks);
    }
    static void flagOwnedData(CTask & task)
    {
        forOwnedData([&](auto getter, auto setter) { (task.*setter)((task.*getter)()); });
        forChildren(task, [](CTask & child) {
            flagOwnedData(child);
            child.setID(child.getID());
        });
    }

    // A copy of each link goes to the copy of its downstream task, or to a task outside the source itself.
    void copyLinks(CTask & downstream)
    {
        CLinkArray copies;
        for (CLink const & link : downstream.getUpstreamLinks())
        {
            if (!needToCopyLink(downstream.getID(), link.getUpstreamTaskID())) continue;
            CLink copy(link);
            copy.setID(CLinkID());
            if (CTaskID const * const upstream = copyOf(link.getUpstreamTaskID())) copy.setUpstreamTaskID(*upstream);
            copies.Add(copy);
        }
        if (copies.IsEmpty()) return;
        CTaskID const * const copiedID = copyOf(downstream.getID());
        CTask * const holder = copiedID ? checker.getTask(*copiedID) : &downstream;
        if (!holder) return;
        CLinkArray links(holder->getUpstreamLinks());
        links.Append(copies);
        holder->setUpstreamLinks(links);
    }

    bool needToCopyLink(CTaskID const & downstreamID, CTaskID const & upstreamID) const
    {
        bool const begins = copyOf(upstreamID) != nullptr;
        bool const ends = copyOf(downstreamID) != nullptr;
        if (mode == CTaskPasteMode::WithAllLinks) return begins || ends;
        return begins && ends && !(upstreamID == sourceID) && !(downstreamID == sourceID);
    }

    // What a task of the source became; null for any other.
    CTaskID const * copyOf(CTaskID const & id) const
    {
        auto const place = places.find(id.getGUID());
        return place == places.end() ? nullptr : &newIDs.GetAt(place->second);
    }

    CLocalRulesChecker & checker;
    CTaskID const sourceID;
    int const mode;
    // Side by side.
    CTaskIDArray oldIDs;
    CTaskIDArray newIDs;
    std::unordered_map<_GUID, int> places;
};

bool CLocalRulesChecker::setCurrentUserAsSupplierOfTaskTree(CTask & task)
{
    CUser const * const user = project->getCurrentUser();
    if (!user) return false;
    task.setSupplyChain(CSupplyChain(user->getCompanyID()));
    forChildren(task, [this](CTask & child) { setCurrentUserAsSupplierOfTaskTree(child); });
    return true;
}

void CLocalRulesChecker::removeUpstreamLinksOfSubtree(CTask & task)
{
    CLinkArray links(task.getUpstreamLinks());
    links.RemoveAll();
    task.setUpstreamLinks(links);
    forChildren(task, removeUpstreamLinksOfSubtree);
}

bool CLocalRulesChecker::pasteIntoTask(CTaskID const & targetID, CTaskID const & sourceID, CTaskPasteMode const & mode)
{
    CTask * const target = getTask(targetID);
    CTask const * const source = getTask(sourceID);
    if (!target || !source || targetID == sourceID) return false;
    if (target->isDescendant(sourceID) || source->isDescendant(targetID)) return false;
    CTaskID const id(targetID);
    Pasting pasting(*this, sourceID, mode);
    pasting.become(sourceID, id);
    removeLinksFromTaskOrSubtasks(id);
    CTask copy(*source);
    copy.setID(id);
    if (!setCurrentUserAsSupplierOfTaskTree(copy)) return false;
    removeUpstreamLinksOfSubtree(copy);
    pasting.giveNewIDsToOwnedData(copy);
    *target = copy;
    pasting.flagRenewed(*target);
    if (!presentationData->addTaskPresentations(pasting.getNewIDs())) return false;
    pasting.copySubtreesLinks();
    transferBufferedRiskToNewBuffers(*target, pasting.getOldIDs(), pasting.getNewIDs());
    // The search for circles goes by the parents of a derived pass.
    tasks->setChanged();
    if (target->isInCircularChain()) return warnUser(orvane::text::circularLink), false;
    return presentPasted(id);
}

bool CLocalRulesChecker::pasteIntoNewTask(CTaskID const & sourceID, int blankCount, CTaskPasteMode const & mode)
{
    if (!project) return false;
    insertBlankTasksAtEnd(blankCount);
    CTask const * const source = getTask(sourceID);
    if (!source) return false;
    CTask copy(*source);
    copy.setID(CTaskID());
    Pasting pasting(*this, sourceID, mode);
    pasting.become(sourceID, copy.getID());
    // Without a current user the copy stays as it is: the application restores the state before.
    if (!setCurrentUserAsSupplierOfTaskTree(copy)) return tasks->addTask(copy), false;
    removeUpstreamLinksOfSubtree(copy);
    pasting.giveNewIDsToOwnedData(copy);
    CTask & task = tasks->addTask(copy);
    pasting.flagRenewed(task);
    pasting.copySubtreesLinks();
    transferBufferedRiskToNewBuffers(task, pasting.getOldIDs(), pasting.getNewIDs());
    addTaskPresentation(copy.getID());
    return presentPasted(copy.getID());
}

bool CLocalRulesChecker::presentPasted(CTaskID const & id)
{
    presentationData->setSingleSelectedTaskID(id);
    deselectTasksThatAreExcludedByFilter();
    criticalPathDirty = true;
    return true;
}
