#include "tests/support/task_history.h"

#include <iterator>

#include "model/project.h"

namespace orvane
{

void forEachTask(CTaskArray const & tasks, std::function<void(CTask const &, CTask const *)> const & visit,
                 CTask const * parent)
{
    for (int each = 0; each < tasks.GetSize(); ++each)
    {
        CTask const & task = tasks.GetAt(each);
        visit(task, parent);
        if (task.getSubTasks()) forEachTask(*task.getSubTasks(), visit, &task);
    }
}

std::vector<CTask *> TaskHistory::tasks() const
{
    std::vector<CTask *> result;
    forEachTask(roots, [&](CTask const & task, CTask const *) { result.push_back(const_cast<CTask *>(&task)); });
    return result;
}

std::vector<CTaskArray *> TaskHistory::arrays() const
{
    std::vector<CTaskArray *> result{&roots};
    forEachTask(roots,
                [&](CTask const & task, CTask const *)
                {
                    if (task.getSubTasks()) result.push_back(const_cast<CTaskArray *>(task.getSubTasks()));
                });
    return result;
}

CTask * TaskHistory::anyTask()
{
    std::vector<CTask *> const all = tasks();
    return all.empty() ? nullptr : all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
}

CTaskArray & TaskHistory::anyArray()
{
    std::vector<CTaskArray *> const all = arrays();
    return *all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
}

CProjectTime TaskHistory::anyTime()
{
    return {2004, 1, 1 + below(60), 9 + below(9), 15 * below(4)};
}

// An edit of some task; some of them need room, because they copy subtrees.
struct TaskHistory::Edit
{
    char const * name;
    bool grows;
    void (*run)(TaskHistory &, CTask &);
};

std::string TaskHistory::step()
{
    static Edit const edits[] = {
        {"add a root", true, [](auto & h, auto &) { h.roots.addTask(h.project); }},
        {"insert a child", true,
         [](auto & h, auto & t)
         {
             CTask child;
             child.setProject(h.project);
             child.setPlannedStartTime(CProjectTime(2004, 1, 5 + h.below(5), 9, 0));
             child.setDuration(CProjectDuration(3600L * h.below(30)));
             t.insertSubTask(child, h.below(3));
         }},
        {"insert a copy", true, [](auto & h, auto & t) { t.insertSubTask(*h.anyTask(), h.below(2)); }},
        {"insert itself", true, [](auto &, auto & t) { t.insertSubTask(t, 0); }},
        {"copy into an array", true,
         [](auto & h, auto & t)
         {
             CTaskArray & array = h.anyArray();
             array.InsertAt(h.below(array.GetSize() + 1), t, 1 + h.below(2));
         }},
        {"append a copy", true, [](auto & h, auto & t) { h.anyArray().addTask(t); }},
        {"assign", true, [](auto & h, auto & t) { t = *h.anyTask(); }},
        {"set in an array", true,
         [](auto & h, auto & t)
         {
             CTaskArray & array = h.anyArray();
             array.SetAt(h.below(array.GetSize() + 1), t);
         }},
        {"set children", true, [](auto & h, auto & t) { t.setSubTasks(h.anyArray()); }},
        {"assign an array", true,
         [](auto & h, auto &)
         {
             // An array of children assigned from an empty one takes over its flag too: nobody would hear of it.
             CTaskArray const & source = h.anyArray();
             if (!source.IsEmpty()) h.anyArray() = source;
         }},
        {"set own children", false,
         [](auto &, auto & t)
         {
             if (t.getSubTasks()) t.setSubTasks(*t.getSubTasks());
         }},
        {"drop children", false,
         [](auto & h, auto & t)
         {
             if (h.below(3) == 0) t.setSubTasks(CTaskArray());
         }},
        {"empty children", false,
         [](auto &, auto & t)
         {
             if (CTaskArray * const children = t.getWritableSubTasks(); children && children->GetSize() < 3)
                 children->RemoveAll();
         }},
        {"drop empty children", false, [](auto &, auto & t) { t.deleteSubTasksIfEmpty(); }},
        {"remove", false,
         [](auto & h, auto &)
         {
             CTaskArray & array = h.anyArray();
             array.RemoveAt(h.below(array.GetSize() + 1), 1 + h.below(2));
         }},
        {"move", false,
         [](auto & h, auto &)
         {
             CTaskArray & array = h.anyArray();
             array.rePositionElements(h.below(array.GetSize() + 1), h.below(array.GetSize() + 1));
         }},
        {"clear", false,
         [](auto & h, auto & t)
         {
             CTask blank;
             blank.setID(t.getID());
             blank.setProject(h.project);
             t = blank;
         }},
        {"new identifier", false, [](auto &, auto & t) { t.setID(CTaskID()); }},
        {"doubled identifier", false, [](auto & h, auto & t) { t.setID(h.anyTask()->getID()); }},
        {"rename", false, [](auto &, auto & t) { t.setName("renamed"); }},
        {"comment", false, [](auto &, auto & t) { t.setComments("noted"); }},
        {"plan the start", false, [](auto & h, auto & t) { t.setPlannedStartTime(h.anyTime()); }},
        {"plan the end", false, [](auto & h, auto & t) { t.setPlannedEndTime(h.anyTime()); }},
        {"plan the duration", false, [](auto & h, auto & t) { t.setDuration(CProjectDuration(900L * h.below(200))); }},
        {"move the start", false, [](auto & h, auto & t) { t.reschedulePlannedStartTime(h.anyTime()); }},
        {"move the end", false, [](auto & h, auto & t) { t.reschedulePlannedEndTime(h.anyTime()); }},
        {"begin", false,
         [](auto & h, auto & t)
         {
             t.setActualStartTime(h.anyTime());
             t.setPredictedFinishTime(h.anyTime());
             t.setActualFinishTime(h.anyTime());
             t.setStatus(h.below(2) ? CTaskStatus::Started : CTaskStatus::Finished);
         }},
        {"back to planning", false, [](auto &, auto & t) { t.setStatus(CTaskStatus::Go); }},
        {"change the type", false,
         [](auto & h, auto & t) { t.setTaskType(h.below(3) ? CTaskType::Normal : CTaskType::KeyDate); }},
        {"constrain", false,
         [](auto & h, auto & t) {
             t.setConstraintType(h.below(2) ? CTaskConstraintType::NoConstraint
                                            : CTaskConstraintType::CannotReschedule);
         }},
        {"link", false,
         [](auto & h, auto & t)
         {
             CLinkArray links(t.getUpstreamLinks());
             links.Add(CLink(h.anyTask()->getID(), CLinkType::FinishToStart));
             t.setUpstreamLinks(links);
         }},
        {"hand on", false, [](auto &, auto & t) { t.getWritableSupplyChain().assignToCompany(CCompanyID()); }},
        {"flag", false, [](auto &, auto & t) { t.setTemplate(true); }},
    };
    CTask * const task = anyTask();
    bool const isFull = tasks().size() > 40;
    Edit const & edit = task ? edits[below(static_cast<int>(std::size(edits)))] : edits[0];
    if (isFull && edit.grows) roots.RemoveAt(below(roots.GetSize()));
    else edit.run(*this, task ? *task : roots.addTask(project));
    for (CTask const * each : tasks())
        if (below(8) == 0) met.push_back(each->getID());
    return edit.name;
}

}  // namespace orvane
