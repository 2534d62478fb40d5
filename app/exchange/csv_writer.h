#pragma once

#include <string>

#include "app/exchange/plan.h"

namespace orvane::app
{

// The tasks of the plan as a table that `readCsv` takes back: comma separated, times as ISO 8601, lags in time of the
// clock.
std::string writeCsv(Plan const & plan);
// What of the plan the table has no place for.
std::vector<PlanLoss> lossesOfCsv(Plan const & plan);

}  // namespace orvane::app
