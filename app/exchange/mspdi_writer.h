#pragma once

#include <string>

#include "app/exchange/plan.h"

namespace orvane::app
{

// The schedule as a document of Microsoft Project's XML interchange (MSPDI), with elements in the order of its schema.
// Reading it back gives the same plan, but for its losses, the lines of tasks, and what no such document holds:
// fractions of percents complete, thousandths of money, control characters and bytes that are no UTF-8 in texts.
std::string writeMspdi(Plan const & plan);

}  // namespace orvane::app
