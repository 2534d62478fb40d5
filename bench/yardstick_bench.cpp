#include "bench/yardstick.h"

#include <benchmark/benchmark.h>

namespace
{

void yardstick(benchmark::State & state)
{
    orvane::CYardstick pass(orvane::makePlan(static_cast<std::int32_t>(state.range(0))));
    std::int32_t span = 0;
    for (auto _ : state) benchmark::DoNotOptimize(span = pass.run());
    state.counters["span_days"] = span;
    state.counters["chain_tasks"] = static_cast<double>(pass.getLongestChain().size());
}
BENCHMARK(yardstick)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
