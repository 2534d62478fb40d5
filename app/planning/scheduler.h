#pragma once

#include <string>
#include <vector>

#include "app/planning/rows.h"

class CLocalRulesChecker;

namespace orvane::app
{

// A task that is to start at another time.
struct Move
{
    CTask const * task;
    CProjectTime from, to;
};

// A task that stays where its links do not have it.
struct HeldTask
{
    CTask const * task;
    // Not valid when no working time follows what its links wait for.
    CProjectTime allowed;
    std::string why;
};

struct Schedule
{
    // In the order of dependency: each task behind all that it waits for.
    std::vector<Move> moves;
    // In the order of the rows.
    std::vector<HeldTask> held;
};

// Each task at the earliest start that its links allow, with what it waits for at theirs; changes nothing.
//
// A link on a summary binds every task below it, and one that leaves a summary waits for the roll-up of what is below.
// A task that no link binds stays, as does one that has begun or is constrained, and one that is blank or below a blank
// row. Buffered risk counts where the last derived pass has placed it. Links that go round in a circle are refused,
// naming the tasks.
Schedule findEarliestStarts(Rows const & rows);

// Moves the tasks, within one action; those that the rules refused are added to the ones held.
void apply(Schedule & schedule, CLocalRulesChecker & rules);

// Whether a link waits for the finish of its upstream task, and whether it binds the finish of its downstream task.
bool leavesFinish(CLink const & link);
bool arrivesAtFinish(CLink const & link);
// "finish to start" and its kin.
char const * nameOfType(CLink const & link);

}  // namespace orvane::app
