#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "bench/bench_project.h"

namespace orvane
{

// A site on the plan of benchProject: three assignments a task to 1,000 resources of 20 companies, two risks a task, a
// third of them buffered in 500 tasks.
struct Made
{
    std::unique_ptr<CProject> project;
    std::vector<CTaskID> leaves;
    std::vector<CResourceID> resources;
    CResourceID spare{nullID};
};

// Made once for each choice.
Made & madeOnce(std::int32_t leaves, bool withResources, bool withRisks);

}  // namespace orvane
