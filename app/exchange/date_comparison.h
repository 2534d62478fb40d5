#pragma once

#include <vector>

#include "app/exchange/import_report.h"
#include "app/exchange/plan.h"
#include "values/identifiers.h"

class CProject;

namespace orvane::app
{

// Compares the dates of the plan's tasks, which bear these identifiers row by row, with those that the project computes:
// counts in the report which agree, and tells those that do not, each with its reason. A percentage that the clock makes
// another is a loss.
void compareDates(Plan const & plan, std::vector<CTaskID> const & ids, CProject const & project, ImportReport & report);

}  // namespace orvane::app
