#pragma once

#include <iosfwd>

#include <nlohmann/json_fwd.hpp>

namespace orvane::app
{

using Json = nlohmann::ordered_json;

// Writes the value as JSON and ends the line. Bytes in texts that are no UTF-8 become the mark for what cannot be
// shown. With lines of their own for members it is for people too.
void printJson(std::ostream & out, Json const & value, int blanksPerLevel = 2);

}  // namespace orvane::app
