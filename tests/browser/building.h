#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/project.h"
#include "values/identifiers.h"

namespace orvane::test
{

// A building with its schedule and its site, of any size.
//
// Each zone of each floor is a task that installs a parent resource, whose parts are columns and a slab, and on the
// outside a wall; each floor is a summary with a key date at its end. An old shed is demolished first, a crane and a
// scaffold are used, trees stand for nothing. The baseline is what was planned before the second floor slipped.
struct BuildingSize
{
    int floors = 3;
    int zonesWide = 3;
    int zonesDeep = 2;
    double daysBetween = 1.5;  // from the start of a zone to that of the next
    bool hasBaseline = true;
};

struct Building
{
    std::unique_ptr<CProject> project;
    std::vector<CEntityID> entities;  // solids, in the order of the scene
};

Building makeBuilding(BuildingSize const & size);

}  // namespace orvane::test
