#include "bench/yardstick.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <numeric>

namespace orvane
{
namespace
{

std::size_t at(std::int32_t index)
{
    return static_cast<std::size_t>(index);
}

}  // namespace

CYardstick::CYardstick(CPlan const & plan)
    : firstLink(plan.durations.size() + 1), downstream(plan.links.size()), lags(plan.links.size()),
      durations(plan.durations), upstreamCounts(durations.size()), waiting(durations.size()),
      earlyStarts(durations.size()), lateStarts(durations.size()), driver(durations.size())
{
    order.reserve(durations.size());
    for (CPlan::Link const & link : plan.links)
    {
        ++firstLink[at(link.upstream) + 1];
        ++upstreamCounts[at(link.downstream)];
    }
    std::partial_sum(firstLink.begin(), firstLink.end(), firstLink.begin());

    std::vector<std::int32_t> next(firstLink);
    for (CPlan::Link const & link : plan.links)
    {
        std::size_t const place = at(next[at(link.upstream)]++);
        downstream[place] = link.downstream;
        lags[place] = link.lag;
    }
}

std::int32_t CYardstick::run()
{
    sortTopologically();
    std::int32_t const last = passForward();
    std::int32_t const span = last < 0 ? 0 : earlyStarts[at(last)] + durations[at(last)];
    passBackward(span);
    followChain(last);
    return span;
}

void CYardstick::sortTopologically()
{
    std::copy(upstreamCounts.begin(), upstreamCounts.end(), waiting.begin());
    order.clear();
    for (std::size_t leaf = 0; leaf < waiting.size(); ++leaf)
        if (waiting[leaf] == 0) order.push_back(static_cast<std::int32_t>(leaf));

    for (std::size_t done = 0; done < order.size(); ++done)
    {
        std::size_t const leaf = at(order[done]);
        for (std::size_t link = at(firstLink[leaf]); link < at(firstLink[leaf + 1]); ++link)
            if (--waiting[at(downstream[link])] == 0) order.push_back(downstream[link]);
    }
}

// Returns the leaf that ends last, -1 for an empty plan.
std::int32_t CYardstick::passForward()
{
    std::fill(earlyStarts.begin(), earlyStarts.end(), 0);
    std::fill(driver.begin(), driver.end(), -1);
    std::int32_t last = -1;
    std::int32_t span = -1;
    for (std::int32_t const number : order)
    {
        std::size_t const leaf = at(number);
        std::int32_t const end = earlyStarts[leaf] + durations[leaf];
        if (end > span)
        {
            span = end;
            last = number;
        }
        for (std::size_t link = at(firstLink[leaf]); link < at(firstLink[leaf + 1]); ++link)
        {
            std::size_t const next = at(downstream[link]);
            if (end + lags[link] < earlyStarts[next]) continue;
            earlyStarts[next] = end + lags[link];
            driver[next] = number;
        }
    }
    return last;
}

void CYardstick::passBackward(std::int32_t span)
{
    for (std::size_t place = order.size(); place-- > 0;)
    {
        std::size_t const leaf = at(order[place]);
        std::int32_t end = span;
        for (std::size_t link = at(firstLink[leaf]); link < at(firstLink[leaf + 1]); ++link)
            end = std::min(end, lateStarts[at(downstream[link])] - lags[link]);
        lateStarts[leaf] = end - durations[leaf];
    }
}

void CYardstick::followChain(std::int32_t last)
{
    longestChain.clear();
    for (; last >= 0; last = driver[at(last)]) longestChain.push_back(last);
    std::reverse(longestChain.begin(), longestChain.end());
}

double yardstickMilliseconds(CPlan const & plan)
{
    using Clock = std::chrono::steady_clock;
    CYardstick yardstick(plan);
    std::array<double, 9> runs{};
    for (double & run : runs)
    {
        Clock::time_point const start = Clock::now();
        yardstick.run();
        run = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    }
    std::nth_element(runs.begin(), runs.begin() + runs.size() / 2, runs.end());
    return runs[runs.size() / 2];
}

}  // namespace orvane
