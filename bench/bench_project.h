#pragma once

#include <cstdint>
#include <memory>

#include "config/project_config.h"
#include "model/project.h"

namespace orvane
{

// A project with the random plan of that many leaf tasks and its links, every leaf under two summaries,
// its flags reset and its figures derived. Made once for each size.
CProject & benchProject(std::int32_t leaves);

// What one checker without any operation takes on the project, and the bare critical-path pass over the
// same plan; both in milliseconds, both the median of several runs.
double emptyActionMilliseconds(CProject & project);
double yardstickMillisecondsFor(std::int32_t leaves);

// While it lives, actions compute the critical path.
class WithCriticalPath
{
public:
    WithCriticalPath() { CProjectConfig::setShowCriticalPath(1); }
    ~WithCriticalPath() { CProjectConfig::setShowCriticalPath(0); }
    WithCriticalPath(WithCriticalPath const &) = delete;
    WithCriticalPath & operator=(WithCriticalPath const &) = delete;
};

}  // namespace orvane
