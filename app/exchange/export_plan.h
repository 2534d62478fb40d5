#pragma once

#include "app/exchange/plan.h"

class CProject;

namespace orvane::app
{

// The project as other programs can hold it; what they cannot is among the plan's losses. Links wait in time of the
// clock, and a duration is the working time of the calendar that rules the task.
Plan exportPlan(CProject const & project);

}  // namespace orvane::app
