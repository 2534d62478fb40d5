#pragma once

#include <random>
#include <string>

#include "model/project.h"

namespace orvane
{

// One user action on the project, through the rules: rows and links, companies with resources, risks, costs, users,
// filters, calendars, the site, progress, selection. What the rules refuse counts as one too.
void actAtRandom(CProject & project, std::mt19937 & random);

// The uncompressed stream of the project, and what a stream loads into; false, and the project partly replaced, when
// it is refused.
std::string streamOf(CProject & project);
bool loadStream(CProject & project, std::string const & stream);

}  // namespace orvane
