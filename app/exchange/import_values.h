#pragma once

#include <cstddef>
#include <string>

#include "app/exchange/plan.h"
#include "model/cost.h"
#include "values/duration.h"

// Values of a plan as the model holds them.
namespace orvane::app
{

// As far as durations go.
CProjectDuration minutesLong(Minute minutes);

enum class TextLines
{
    one,
    many
};

// As the rules take it: so many bytes at most, without control characters. Tells whether that changed the text.
std::string heldText(std::string text, std::size_t longest, TextLines lines, bool & isChanged);

// Adds nothing for an amount of 0, or one that is no number.
void addCost(CCostArray & costs, std::string const & description, double amount, CCostType::COST_TYPE type);

}  // namespace orvane::app
