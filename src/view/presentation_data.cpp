#include "view/presentation_data.h"

#include "values/record_impl.h"

template <class Visit>
void CPresentationData::describe(Visit && visit)
{
    visit("primarySelectedTaskID", &CPresentationData::primarySelectedTaskID);
    visit("selectedTaskID", &CPresentationData::selectedTaskID);
    visit("selectedFilterID", &CPresentationData::selectedFilterID);
    visit("taskPresentations", &CPresentationData::taskPresentations);
}

template class orvane::CRecord<CPresentationData>;

void CPresentationData::clear()
{
    primarySelectedTaskID.clear();
    selectedTaskID.RemoveAll();
    selectedFilterID.clear();
    taskPresentations.RemoveAll();
}

bool CPresentationData::setPrimarySelectedTaskID(CTaskID const & id)
{
    if (!(primarySelectedTaskID == id)) primarySelectedTaskID = id;
    return true;
}

bool CPresentationData::setSelectedTaskID(CTaskIDArray const & ids)
{
    if (selectedTaskID == ids) return true;
    CTaskIDArray selection(ids);
    for (int each = selection.GetUpperBound(); each >= 0; --each)
        if (selection.GetAt(each).isNULL()) selection.RemoveAt(each);
    selectedTaskID = selection;
    return true;
}

bool CPresentationData::setSingleSelectedTaskID(CTaskID const & id)
{
    CTaskIDArray single;
    single.Add(id);
    setPrimarySelectedTaskID(id);
    return setSelectedTaskID(single);
}

void CPresentationData::clearPrimarySelectedTask()
{
    primarySelectedTaskID.clear();
}

void CPresentationData::clearAllSelectedTasks()
{
    primarySelectedTaskID.clear();
    selectedTaskID.RemoveAll();
}

bool CPresentationData::getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const
{
    return taskPresentations.Lookup(id, presentation);
}

bool CPresentationData::addTaskPresentation(CTaskID const & id)
{
    return setTaskPresentation(id, CTaskPresentation());
}

bool CPresentationData::addTaskPresentations(CTaskIDArray const & ids)
{
    bool all = true;
    for (CTaskID const & id : ids) all = addTaskPresentation(id) && all;
    return all;
}

bool CPresentationData::setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation)
{
    if (id.isNULL()) return false;
    taskPresentations.SetAt(id, presentation);
    return true;
}

bool CPresentationData::removeTaskPresentation(CTaskID const & id)
{
    if (id.isNULL()) return false;
    taskPresentations.RemoveKey(id);
    return true;
}
