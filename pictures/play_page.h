#pragma once

#include <string_view>

namespace orvane::pictures
{

// The page as it was made when this library was built, with its style, its script and the library that draws the scene:
// what stands before the data of a project, and what stands behind it.
std::string_view pageBeforeData();
std::string_view pageBehindData();

}  // namespace orvane::pictures
