#include "bench/plan.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace orvane
{
namespace
{

constexpr std::int32_t leavesPerGroup = 20;
constexpr std::int32_t leavesPerPhase = 20 * leavesPerGroup;
constexpr std::int32_t lanes = 50;
constexpr std::int32_t linkWindow = 50;

class CPlanMaker
{
public:
    CPlanMaker(std::int32_t leaves, std::uint32_t seed) : leaves(leaves), random(seed) {}

    CPlan make()
    {
        for (std::int32_t leaf = 0; leaf < leaves; ++leaf)
        {
            addRows(leaf);
            plan.durations.push_back(between(1, 15));
            linkToNeighbours(leaf);
            linkToLane(leaf);
        }
        return std::move(plan);
    }

private:
    void addRows(std::int32_t leaf)
    {
        if (leaf % leavesPerPhase == 0) phase = addRow(-1, -1);
        if (leaf % leavesPerGroup == 0) group = addRow(phase, -1);
        addRow(group, leaf);
    }

    std::int32_t addRow(std::int32_t parent, std::int32_t leaf)
    {
        plan.rows.push_back({parent, leaf});
        return static_cast<std::int32_t>(plan.rows.size()) - 1;
    }

    void linkToNeighbours(std::int32_t leaf)
    {
        std::int32_t const first = std::max(leaf - leaf % leavesPerPhase, leaf - linkWindow);
        std::int32_t const wanted = std::array{0, 1, 1, 1, 2, 2, 2, 2, 2, 2}[static_cast<std::size_t>(between(0, 9))];
        std::int32_t const count = std::min(wanted, leaf - first);
        if (count == 0) return;

        std::int32_t one = between(first, leaf - 1);
        if (count == 2)
        {
            std::int32_t other = between(first, leaf - 2);
            if (other >= one) ++other;
            addLink(std::min(one, other), leaf);
            one = std::max(one, other);
        }
        addLink(one, leaf);
    }

    void addLink(std::int32_t upstream, std::int32_t downstream)
    {
        plan.links.push_back({upstream, downstream, between(1, 5) == 1 ? between(1, 3) : 0});
    }

    void linkToLane(std::int32_t leaf)
    {
        std::int32_t const upstream = leaf - lanes * leavesPerPhase + leavesPerPhase - 1;
        if (leaf % leavesPerPhase == 0 && leaf >= lanes * leavesPerPhase) plan.links.push_back({upstream, leaf, 0});
    }

    // Both ends included. The standard distributions differ between libraries, so none is used.
    std::int32_t between(std::int32_t low, std::int32_t high)
    {
        return low + static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(high - low + 1));
    }

    std::int32_t leaves;
    std::mt19937 random;
    CPlan plan;
    std::int32_t phase = -1;
    std::int32_t group = -1;
};

}  // namespace

CPlan makePlan(std::int32_t leaves, std::uint32_t seed)
{
    return CPlanMaker(leaves, seed).make();
}

}  // namespace orvane
