#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "model/task_array.h"

class CProject;

namespace orvane
{

// The tasks of a project in the order of the tree and their links, as plain numbers side by side: tasks and
// links lie far apart in memory, and reading them is most of what a walk over all of them costs. It is kept
// from one walk to the next, and what cannot have changed meanwhile is not read again.
class CLinkNetwork
{
public:
    static constexpr int none = -1;

    struct Row
    {
        CTask const * task;
        // The row behind everything below the task.
        int end = none;
        // The place of its first link among all links.
        int firstLink = none;
        // Working seconds to the end of stored risk.
        std::int32_t own = 0;
        bool isValid = false;
        bool isSummary = false;
        // Some link leaves the task; links of tasks below a blank task do not count.
        bool feeds = false;
    };
    struct Link
    {
        // The row of the upstream task; size() when it is missing.
        int upstream;
        // 1 to 4.
        int type;
    };

    // To be called before the numbers are read; they hold until the project changes.
    void update(CProject const & project);

    int size() const { return static_cast<int>(rows.size()) - 1; }
    // The row behind the last stands for every task that is missing.
    Row const & row(int number) const { return rows[static_cast<std::size_t>(number)]; }
    Link const & link(int place) const { return links[static_cast<std::size_t>(place)]; }
    int endOfLinks(int number) const { return row(number + 1).firstLink; }
    bool hasLinks(int number) const { return row(number).firstLink != endOfLinks(number); }
    CLink const & recordOf(int number, int place) const
    {
        return row(number).task->getUpstreamLinks().GetAt(place - row(number).firstLink);
    }

private:
    void addRows(CTaskArray const & tasks);
    void readRows(CProject const & project, bool withLinks);
    void readTask(Row & row) const;
    void addLinks(CProject const & project, int number);
    int findUpstream(CProject const & project, CLink const & link, int number) const;
    int rowOf(CTask const & task) const;
    void findFeeders();
    void feedNamesakes();
    void prefetch(int number, bool withLinks) const;

    CForestState state;
    bool idsAreUnique = false;
    std::vector<Row> rows;
    std::vector<Link> links;
};

}  // namespace orvane
