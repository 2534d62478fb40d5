#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "app/exchange/plan.h"

namespace orvane::app
{

// The rows of a plan as a tree: which row stands under which.
struct PlanOutline
{
    static constexpr int none = -1;

    std::unordered_map<int, int> rowOf;      // by number of the task
    std::vector<int> parent;                 // none for a root
    std::vector<std::vector<int>> children;  // in the order of the rows
    std::vector<int> roots;

    bool isSummary(int row) const { return !children[static_cast<std::size_t>(row)].empty(); }
};

// Levels that leave one out hang the row under the nearest task above, which is a loss. Refuses a plan in which a
// number stands twice, a reference leads nowhere, a duration is negative, or links go in a circle: with the file, the
// line where it is known, and the tasks.
PlanOutline checkPlan(Plan & plan, std::string const & fileName);

// What a task is called in messages.
std::string nameOf(PlanTask const & task);
// As ISO 8601, to the minute, also beyond the years that times of the model hold.
std::string isoMinute(Minute minute);

}  // namespace orvane::app
