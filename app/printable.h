#pragma once

#include <string>
#include <string_view>

namespace orvane::app
{

// The text as a terminal may have it: names in a project come from anyone, and a terminal obeys control characters.
// Those, line ends among them, and bytes that are no UTF-8 become "?".
std::string printable(std::string_view text);
// How many columns of a terminal the text takes.
int columns(std::string_view text);
// The text in at most so many columns; what was cut off is replaced by "…".
std::string fitted(std::string_view text, int most);

}  // namespace orvane::app
