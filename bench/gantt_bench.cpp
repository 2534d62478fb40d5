// The Gantt chart of plans of several sizes: laying it out, and drawing it.

#include <benchmark/benchmark.h>

#include "bench/bench_project.h"
#include "pictures/gantt.h"

namespace
{

using namespace orvane;
using namespace orvane::pictures;

CProject const & planOf(benchmark::State const & state)
{
    return benchProject(static_cast<std::int32_t>(state.range(0)));
}

void layOutGanttChart(benchmark::State & state)
{
    CProject const & project = planOf(state);
    for (auto _ : state) benchmark::DoNotOptimize(layOutGantt(project, {}).bars.size());
}

void drawGanttAsSvg(benchmark::State & state)
{
    CProject const & project = planOf(state);
    std::size_t size = 0;
    for (auto _ : state) size = drawGantt(layOutGantt(project, {}), Format::svg).size();
    state.counters["bytes"] = static_cast<double>(size);
}

void printGanttAsPdf(benchmark::State & state)
{
    CProject const & project = planOf(state);
    Paper const paper = paperOfSettings("A3", true);
    std::size_t size = 0;
    for (auto _ : state) size = printGantt(layOutGantt(project, {}, paper), paper).size();
    state.counters["bytes"] = static_cast<double>(size);
}

BENCHMARK(layOutGanttChart)->Arg(500)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(drawGanttAsSvg)->Arg(500)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(printGanttAsPdf)->Arg(500)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
