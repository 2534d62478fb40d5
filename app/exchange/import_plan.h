#pragma once

#include <functional>

#include "app/exchange/import_report.h"
#include "app/exchange/plan.h"
#include "app/exchange/plan_check.h"

namespace orvane::app
{

class Session;

// The company of all that has no calendar of its own.
inline constexpr char const * mainCompanyName = "Main company";
// How costs are called that come from figures without a name.
inline constexpr char const * fixedCostName = "Fixed cost";

struct ImportOptions
{
    // Where tasks stand that have no date, of a plan without any; else the next start of work from now on.
    OptionalMinute start;
    // Progress here follows the clock from the actual start. A report of delay or advance makes it the recorded
    // percentage at the moment of the import, and moves the finish; without one the finish stays as recorded.
    bool keepsPercent = false;
};

// Makes the new project of the session a project of the plan, by one action, and tells what came of it. The plan has
// been checked, and `outline` is its tree. `onProgress` hears what share of the work is done.
ImportReport importPlan(Plan const & plan, PlanOutline const & outline, Session & session,
                        ImportOptions const & options, std::function<void(double)> const & onProgress);

}  // namespace orvane::app
