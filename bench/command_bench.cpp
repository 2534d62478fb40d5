// What the command computes on a plan before it writes. Ratios are to the bare critical-path pass over the same plan.

#include <benchmark/benchmark.h>

#include "app/planning/scheduler.h"
#include "bench/bench_project.h"
#include "rules/local_rules_checker.h"

namespace
{

CRulesCheckerContext const commandClient(CRulesCheckerContext::OriginatingClient);

void stateSchedulingRatio(benchmark::State & state)
{
    double const yardstick = orvane::yardstickMillisecondsFor(static_cast<std::int32_t>(state.range(0)));
    state.counters["yardstick_ms"] = yardstick;
    state.counters["x_yardstick"] = benchmark::Counter(
        yardstick / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Where every task is to start.
void findEarliestStarts(benchmark::State & state)
{
    CProject & project = orvane::benchProject(static_cast<std::int32_t>(state.range(0)));
    std::size_t moves = 0;
    for (auto _ : state) moves = orvane::app::findEarliestStarts(orvane::app::Rows(project)).moves.size();
    state.counters["moves"] = static_cast<double>(moves);
    stateSchedulingRatio(state);
}

// The same, and the action that moves them all, from the plan as it was made.
void scheduleAll(benchmark::State & state)
{
    std::unique_ptr<CProjectData> const data(
        orvane::benchProject(static_cast<std::int32_t>(state.range(0))).getCopyOfProjectData());
    for (auto _ : state)
    {
        state.PauseTiming();
        CProject project(*data);
        project.postSerialize();
        state.ResumeTiming();
        orvane::app::Schedule schedule = orvane::app::findEarliestStarts(orvane::app::Rows(project));
        CLocalRulesChecker rules(&project, commandClient);
        orvane::app::apply(schedule, rules);
    }
    stateSchedulingRatio(state);
}

BENCHMARK(findEarliestStarts)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(scheduleAll)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
