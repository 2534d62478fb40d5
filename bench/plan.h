#pragma once

#include <cstdint>
#include <vector>

namespace orvane
{

// A random construction plan as plain numbers, from which benchmarks build what they measure.
//
// Leaves of 1 to 15 working days stand under two levels of summaries: 20 leaves a group, 20 groups a
// phase. A leaf has 1.5 finish-to-start predecessors on average, at most 50 leaves back and of its own
// phase; one link in five lags by 1 to 3 days. Phases run side by side in 50 lanes: the first leaf of
// a phase follows the last leaf of the phase 50 before it.
struct CPlan
{
    // A row of the outline, in the order of display.
    struct Row
    {
        std::int32_t parent;  // the row of its summary, -1 at the top
        std::int32_t leaf;    // its number among the leaves, -1 for a summary
    };
    // Leaf `downstream` starts `lag` working days or more after the end of leaf `upstream`.
    struct Link
    {
        std::int32_t upstream;
        std::int32_t downstream;
        std::int32_t lag;
    };

    std::vector<Row> rows;
    std::vector<std::int32_t> durations;  // of each leaf, in working days
    std::vector<Link> links;              // by downstream leaf, then by upstream leaf; always forward
};

// The plan of that many leaves; the same on every machine for the same seed.
CPlan makePlan(std::int32_t leaves, std::uint32_t seed = 1);

}  // namespace orvane
