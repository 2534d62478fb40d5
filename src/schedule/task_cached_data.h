#pragma once

#include <atomic>
#include <cstdint>

#include "values/date_time.h"
#include "values/duration.h"

class CProject;
class CTask;

namespace orvane
{
class CStoredRisk;
}

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
    // A number that changes whenever stored risk came or went by copying a task.
    static std::uint64_t copiesOfStoredRisk() { return s_copies; }

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

    // Whether the task has buffered risks, and whether they are to be read anew although no bit says so any more.
    bool buffersRisk = false;
    bool readsRiskAnew = false;

    // Nothing in the task itself can be due in a pass but its parent pointer and the placing of its buffered risks.
    bool isQuiet() const { return touched == 0 && !hasSubTasks; }
    // Whether the task may place risk elsewhere.
    bool mayPlaceRisk() const { return buffersRisk || readsRiskAnew; }
    void updateStoredRisk(CTask & task);

private:
    friend class orvane::CStoredRisk;

    void updateSummaryTimes(CTask const & task, bool inPass);
    void updateEndTimes(CTask const & task);
    void updateIncludedByFilter(CTask const & task);
    void storeRisk(CProjectDuration const & duration);
    bool storesRisk() const { return !(storedRiskDuration == CProjectDuration(0)); }

    bool isIncludedByFilter = true;
    CTask const * parent = nullptr;

    CProjectTime plannedEndTime;
    CProjectTime estimatedEndTime;
    CProjectTime summaryStartTime;
    CProjectTime summaryEndTime;
    CProjectDuration summaryDuration;
    CProjectDuration storedRiskDuration{0};

    static inline std::atomic<int> s_storing = 0;
    static inline std::atomic<std::uint64_t> s_copies = 0;
};
