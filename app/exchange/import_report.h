#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "app/exchange/plan.h"

namespace orvane::app
{

// A date of the file that the model computes otherwise.
struct DateDifference
{
    std::string task;
    // "start", "finish", "baselineFinish".
    std::string field;
    // As ISO 8601; empty when there is none.
    std::string recorded, computed;
    // Computed less recorded, on the clock.
    Minute minutes = 0;
    std::string reason;
};

// What an import ends with: what came, what the model could not hold, and which dates differ.
struct ImportReport
{
    std::size_t tasks = 0;
    std::size_t links = 0;
    // Recorded starts and finishes that the model computes to the minute.
    std::size_t datesAgreeing = 0;
    std::vector<PlanLoss> losses;
    std::vector<DateDifference> differences;
};

// {"tasks": n, "links": n, "datesAgreeing": n, "losses": [{"task", "what"}], "differences": [{"task", "field",
// "recorded", "computed", "minutes", "reason"}]}
nlohmann::ordered_json toJson(ImportReport const & report);
// For people: the counts, then the losses by task, then the differences as a table.
std::string toText(ImportReport const & report);

}  // namespace orvane::app
