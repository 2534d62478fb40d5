#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "app/planning/rows.h"

namespace orvane::app
{

// One step of the answer to why a task starts or ends when it does.
struct Reason
{
    CTask const * task;
    // Of its end, or else of its start.
    bool isOfEnd;
    // "work", "risk", "storedRisk", "report", "calendar", "link", "constraint", "choice", "actual", "firstChild",
    // "lastChild", "seen".
    char const * kind;
    // The date that the step arrives at, from what `facts` hold.
    CProjectTime time;
    nlohmann::ordered_json facts;
    // The same as a sentence.
    std::string text;
};

// Why the task ends and starts when it does, by the figures of the last derived pass, back along what drives it to the
// start of the chain; of a summary, first for its end and then for its start. What was told before is not told again,
// so that circles end. Of a blank task there is nothing to tell.
std::vector<Reason> explainDates(Rows const & rows, CProject const & project, CTask const & task);

// "Monday 2027-03-01 09:00"
std::string momentText(CProjectTime const & time);

}  // namespace orvane::app
