#pragma once

#include "platform/string.h"

namespace orvane
{

// A piece of a duration's text: its count, and whether the long form names its unit in the plural.
struct DurationPiece
{
    long count;
    bool plural;
};

// The pieces with a count above zero, in the long or the concise form as the setting DisplayDurationConcise
// says; "0 Days" when there is none.
CString durationText(DurationPiece days, DurationPiece hours, DurationPiece minutes);

}  // namespace orvane
