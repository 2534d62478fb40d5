#pragma once

#include "bench/plan.h"

#include <cstdint>
#include <vector>

namespace orvane
{

// The least that any critical-path computation must do, on bare arrays of integers: topological
// order, early times forward, late times backward, and the chain of leaves that sets the end. What
// the library takes for the same plan is stated as a multiple of it, which holds on any machine.
class CYardstick
{
public:
    explicit CYardstick(CPlan const & plan);

    // Computes everything anew and returns the plan's span in working days.
    std::int32_t run();

    // Results of the last run, by leaf.
    std::vector<std::int32_t> const & getEarlyStarts() const { return earlyStarts; }
    std::vector<std::int32_t> const & getLateStarts() const { return lateStarts; }
    // The leaves that set the end, first to last.
    std::vector<std::int32_t> const & getLongestChain() const { return longestChain; }

private:
    void sortTopologically();
    std::int32_t passForward();
    void passBackward(std::int32_t span);
    void followChain(std::int32_t last);

    // Outgoing links in compressed rows: those of leaf i stand from firstLink[i] up to firstLink[i + 1].
    std::vector<std::int32_t> firstLink;
    std::vector<std::int32_t> downstream;
    std::vector<std::int32_t> lags;
    std::vector<std::int32_t> durations;
    std::vector<std::int32_t> upstreamCounts;

    std::vector<std::int32_t> waiting;
    std::vector<std::int32_t> order;
    std::vector<std::int32_t> earlyStarts;
    std::vector<std::int32_t> lateStarts;
    std::vector<std::int32_t> driver;  // the upstream leaf that sets a leaf's early start, -1 for none
    std::vector<std::int32_t> longestChain;
};

// Milliseconds that the yardstick takes for a plan on this machine now: the median of several runs.
double yardstickMilliseconds(CPlan const & plan);

}  // namespace orvane
