// The entries that tell how items are shown: a project has one for every task.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "bench/bench_project.h"

namespace
{

using orvane::benchProject;

struct Entries
{
    explicit Entries(benchmark::State const & state) : ids(static_cast<std::size_t>(state.range(0)))
    {
        for (CTaskID const & id : ids) views.addTaskPresentation(id);
        std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    }
    CTaskID const & nextID()
    {
        next = next + 1 < ids.size() ? next + 1 : 0;
        return ids[next];
    }

    CPresentationData views;
    std::vector<CTaskID> ids;
    std::size_t next = 0;
};

void findPresentation(benchmark::State & state)
{
    Entries entries(state);
    CTaskPresentation found;
    for (auto _ : state) benchmark::DoNotOptimize(entries.views.getTaskPresentation(entries.nextID(), found));
}

void removeAndAddPresentation(benchmark::State & state)
{
    Entries entries(state);
    for (auto _ : state)
    {
        CTaskID const & id = entries.nextID();
        entries.views.removeTaskPresentation(id);
        entries.views.addTaskPresentation(id);
    }
}

// What an action pays three times over, whatever the number of entries.
void passOverViews(benchmark::State & state)
{
    Entries entries(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(entries.views.setChanged());
        entries.views.resetChanged();
    }
}

// The end of a load, of which the entries are a part.
void endOfLoad(benchmark::State & state)
{
    CProject & project = benchProject(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state) project.postSerialize();
    state.SetItemsProcessed(state.iterations() * project.getPresentationData().getTaskPresentations().GetCount());
}

BENCHMARK(findPresentation)->Arg(1'000)->Arg(100'000);
BENCHMARK(removeAndAddPresentation)->Arg(1'000)->Arg(100'000);
BENCHMARK(passOverViews)->Arg(1'000)->Arg(100'000);
BENCHMARK(endOfLoad)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
