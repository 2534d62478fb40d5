#pragma once

#include <string>

#include "app/exchange/plan.h"

namespace orvane::app
{

// Reads a schedule out of Microsoft Project's XML interchange (MSPDI). What a plan has no place for is told in its
// losses, by task; figures that the other program computes from the rest are passed over. `fileName` is for messages.
//
// Throws Refusal, with file, line and subject, for a text that is no such document or no whole one, a document type
// declaration, a time that does not exist, a negative duration, a number given twice, a link, calendar or assignment
// that refers to nothing, and more than any schedule needs. Gaps in the outline stay.
Plan readMspdi(std::string const & text, std::string const & fileName);

}  // namespace orvane::app
