// The page that plays a schedule: how long it takes to make, and how large it comes out.

#include <benchmark/benchmark.h>

#include "pictures/play.h"
#include "tests/browser/building.h"

namespace
{

using orvane::test::Building;

// 2,000 tasks and some 4,400 entities.
void playLargePage(benchmark::State & state)
{
    Building const building = orvane::test::makeBuilding(
        {.floors = 40, .zonesWide = 10, .zonesDeep = 5, .daysBetween = 0.25, .hasBaseline = false});
    std::size_t size = 0;
    for (auto _ : state)
    {
        std::string const page = orvane::pictures::playPage(*building.project, {.title = "A large building"});
        size = page.size();
        benchmark::DoNotOptimize(page.data());
    }
    state.counters["tasks"] = building.project->getTotalNumberOfTasks();
    state.counters["entities"] = static_cast<double>(building.entities.size());
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(playLargePage)->Unit(benchmark::kMillisecond);

}  // namespace
