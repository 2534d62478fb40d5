#pragma once

#include <iosfwd>

class CProject;

namespace orvane::app
{

// Writes the whole model as JSON: what is stored, but for passwords, and what is computed of it. docs/json.md tells the
// form. Tasks are written one by one, so that the memory does not grow with the plan. The project must have been
// read while its longest chain was asked for.
void writeDump(std::ostream & out, CProject const & project);

}  // namespace orvane::app
