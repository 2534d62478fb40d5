#pragma once

#include <cstdint>

#include "values/date_time.h"
#include "values/duration.h"
#include "values/identifier_arrays.h"

class CProject;
class CTask;

// What a task can only know by looking at its children, its calendar and its risks: derived in the pass
// that ends every action, never saved. It is the first base of CTask, and what a pass over untouched
// tasks must read stands at its head.
class CTaskCachedData
{
public:
    virtual CProject * getProject() const = 0;

    // Forgets the risk that other tasks have placed on this one; the next pass places it anew.
    void resetCachedData();
    // Whether any task of the process has risk placed on it: otherwise there is nothing to forget.
    static bool anyStoresRisk() { return s_storing > 0; }

protected:
    CTaskCachedData() = default;
    // The parent is not copied: whoever takes the copy in says where it belongs.
    CTaskCachedData(CTaskCachedData const & other);
    CTaskCachedData & operator=(CTaskCachedData const & other);
    ~CTaskCachedData();

    // Recomputes what the task's change flag, or `force`, makes due: summary times, then end times; then,
    // in a project, the verdict of the filter, the parent pointers and the risk stored elsewhere.
    void updateCachedData(CTask & task, bool force);

    CProjectTime const & getPlannedEndTimeCached() const { return plannedEndTime; }
    CProjectTime const & getEstimatedEndTimeCached() const { return estimatedEndTime; }
    CProjectTime const & getSummaryStartTimeCached() const { return summaryStartTime; }
    CProjectTime const & getSummaryEndTimeCached() const { return summaryEndTime; }
    CProjectDuration const & getSummaryDurationCached() const { return summaryDuration; }
    CProjectDuration const & getStoredRiskDurationCached() const { return storedRiskDuration; }
    bool getIsIncludedByFilterCached() const { return isIncludedByFilter; }
    CTask const * getParentCached() const { return parent; }
    void setParentCached(CTask const * task) { parent = task; }

    // Which fields may have changed since the last reset of the flags: a bit for each stretch of the
    // record. Every setter, copy and assignment says so; a pass looks at no other field.
    static constexpr std::uint32_t everything = ~std::uint32_t{0};
    std::uint32_t touched = everything;
    // The result of the last setChanged.
    bool changed = false;
    // Whether the task has children: said here, so that a pass need not look further into the task.
    bool hasSubTasks = false;

    // Nothing in the task itself can be due in a pass but its parent pointer.
    bool isQuiet() const { return touched == 0 && !hasSubTasks; }

private:
    void updateSummaryTimes(CTask const & task, bool inPass);
    void updateEndTimes(CTask const & task);
    // To be called around every change of what is stored.
    void countStoring(int sign) { s_storing += storedRiskIDs.IsEmpty() ? 0 : sign; }

    bool isIncludedByFilter = true;
    CTask const * parent = nullptr;

    CProjectTime plannedEndTime;
    CProjectTime estimatedEndTime;
    CProjectTime summaryStartTime;
    CProjectTime summaryEndTime;
    CProjectDuration summaryDuration;
    CProjectDuration storedRiskDuration{0};
    CAssignedRiskIDArray storedRiskIDs;

    static inline int s_storing = 0;
};
