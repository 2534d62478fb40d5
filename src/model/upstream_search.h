#pragma once

#include <unordered_map>

#include "values/identifiers.h"

class CProject;
class CTask;

namespace orvane
{

// The question which tasks depend on one, through their upstream links. What was found out for a task is
// remembered, so that asking for many tasks costs no more than one walk over the plan; the plan must not change
// meanwhile.
class CUpstreamSearch
{
public:
    CUpstreamSearch(CProject const & project, CTaskID const & target) : project(project), target(target) {}

    // Whether upstream links lead from the task to the target.
    bool reachesFrom(CTask const & start);

private:
    enum class Answer : char { onTheRoad, yes, no };

    CProject const & project;
    CTaskID const target;
    std::unordered_map<CTask const *, Answer> answers;
};

}  // namespace orvane
