#pragma once

#include "values/identifier_arrays.h"
#include "values/record.h"
#include "view/presentation_map.h"

class CProject;

// The state of the views: what is selected and how rows are shown. It is saved with the project and is no
// part of its content. It holds identifiers only; whether one still means something is seen when it is
// used.
class CPresentationData : public orvane::CRecord<CPresentationData>
{
public:
    // An empty selection and no entries.
    void clear();
    void setProject(CProject * value) { project = value; }

    // The task whose details are shown; NULL when there is none.
    CTaskID const & getPrimarySelectedTaskID() const { return primarySelectedTaskID; }
    CTaskIDArray const & getSelectedTaskID() const { return selectedTaskID; }
    CFilterID const & getSelectedFilterID() const { return selectedFilterID; }

    // Selecting always answers true; a NULL identifier clears the field, and NULL ones are left out of a list.
    bool setPrimarySelectedTaskID(CTaskID const & id);
    bool setSelectedTaskID(CTaskIDArray const & ids);
    // This task and no other, primary and selected.
    bool setSingleSelectedTaskID(CTaskID const & id);
    void clearPrimarySelectedTask();
    void clearAllSelectedTasks();

    // Copies the entry out; false and untouched without one.
    bool getTaskPresentation(CTaskID const & id, CTaskPresentation & presentation) const;
    // A default entry in place of any other. False for a NULL identifier, as with the two below.
    bool addTaskPresentation(CTaskID const & id);
    bool addTaskPresentations(CTaskIDArray const & ids);
    bool setTaskPresentation(CTaskID const & id, CTaskPresentation const & presentation);
    // True also when there was no entry.
    bool removeTaskPresentation(CTaskID const & id);
    // Replaces all entries at once.
    void setTaskPresentations(CTaskPresentationMap const & presentations) { taskPresentations = presentations; }
    CTaskPresentationMap const & getTaskPresentations() const { return taskPresentations; }

private:
    friend class orvane::CRecord<CPresentationData>;
    template <class Visit>
    static void describe(Visit && visit);

    CProject * project = nullptr;
    CTaskID primarySelectedTaskID{orvane::nullID};
    CTaskIDArray selectedTaskID;
    CFilterID selectedFilterID{orvane::nullID};
    CTaskPresentationMap taskPresentations;
};

extern template class orvane::CRecord<CPresentationData>;
