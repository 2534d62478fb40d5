#pragma once

#include <memory>
#include <unordered_set>

#include "model/link.h"
#include "platform/array.h"
#include "platform/string_array.h"
#include "values/duration.h"
#include "values/identifiers.h"

class CProject;
class CTask;
class CTaskArray;

namespace orvane
{
class CLinkNetwork;
}

// The longest chain of linked tasks: the tasks, joined by upstream links, whose sum of working durations
// is the greatest. Dates, lags, constraints and calendars play no part in choosing it, only the durations
// to the end of stored risk and the types of the links. Among equals, the chain met last in the order of
// the rows wins. It is computed on demand and never saved; it holds identifiers, so that it may be asked
// at any time, and may be older than the plan.
class CCriticalPathCachedData : public CDynamic<CCriticalPathCachedData>
{
public:
    CCriticalPathCachedData();
    CCriticalPathCachedData(CCriticalPathCachedData const &) = delete;
    CCriticalPathCachedData & operator=(CCriticalPathCachedData const &) = delete;
    ~CCriticalPathCachedData() override;

    // Computes the chain anew, in time linear in tasks and links, unless the setting that shows the
    // critical path is off or there is no project. Flags itself as changed whether or not anything is.
    void updateFromProject(CProject * source);

    // The last task of the chain, or null.
    CTask const * getEndTaskInLongestChain() const;
    // Working time; zero when there is no chain.
    CProjectDuration const & getDurationOfCriticalPath() const { return durationOfCriticalPath; }
    // From the earliest link to the one that arrives at the end task.
    CLinkArray const & getLinksInCriticalPath() const { return linksInCriticalPath; }
    bool isInCriticalPath(CTaskID const & id) const;
    bool isInCriticalPath(CLinkID const & id) const;
    bool hasChildrenInCriticalPath(CTask const & task) const;

    // One line a task, from the first to the last: its name and the type of the link that leaves it.
    void getCriticalPathDescription(CStringArray & lines) const;
    // Leaves its argument as it is.
    void getCriticalPathDescription(CString & text) const;

    // A result was computed since the last resetChanged.
    bool getChanged() const { return changed; }
    bool setChanged() const { return changed; }
    void resetChanged() { changed = false; }

private:
    CProject * project = nullptr;
    // What the last update read of the project; see there when it is read again.
    std::unique_ptr<orvane::CLinkNetwork> network;
    CTaskID endTaskID{orvane::nullID};
    CProjectDuration durationOfCriticalPath{0};
    CLinkArray linksInCriticalPath;
    // The tasks that the links leave, for asking about one task at a time.
    std::unordered_set<_GUID> tasksLeft;
    bool changed = false;
};
