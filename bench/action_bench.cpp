// What one user action costs. Counters state times as multiples of the yardstick, the bare critical-path
// pass over the same plan in the same run.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <chrono>
#include <fstream>
#include <optional>
#include <random>
#include <vector>

#include "bench/bench_project.h"
#include "rules/local_rules_checker.h"

namespace
{

using orvane::benchProject;
using orvane::WithCriticalPath;

CRulesCheckerContext const client(CRulesCheckerContext::OriginatingClient);

void stateRatio(benchmark::State & state)
{
    double const yardstick = orvane::yardstickMillisecondsFor(static_cast<std::int32_t>(state.range(0)));
    // Seconds an iteration over the yardstick's seconds.
    state.counters["yardstick_ms"] = yardstick;
    state.counters["x_yardstick"] =
        benchmark::Counter(yardstick / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

std::vector<CTaskID> leafIDs(CTaskArray const & tasks)
{
    std::vector<CTaskID> ids;
    for (CTask const & task : tasks)
    {
        if (!task.getSubTasks()) ids.push_back(task.getID());
        else
            for (CTaskID const & id : leafIDs(*task.getSubTasks())) ids.push_back(id);
    }
    return ids;
}

void emptyAction(benchmark::State & state)
{
    CProject & project = benchProject(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state) CLocalRulesChecker const action(&project, client);
    stateRatio(state);
}

// The end of an action that changed every `step`th leaf: the derived pass, the critical path, the reset.
void endOfAction(benchmark::State & state, std::size_t step)
{
    WithCriticalPath const shown;
    CProject & project = benchProject(static_cast<std::int32_t>(state.range(0)));
    std::vector<CTaskID> const ids = leafIDs(project.getAllTasks());
    int days = 1;
    for (auto _ : state)
    {
        std::optional<CLocalRulesChecker> action(std::in_place, &project, client);
        days = days % 9 + 1;
        for (std::size_t each = 0; each < ids.size(); each += step)
            action->changeTaskDuration(ids[each], CProjectDuration(days * 8, 0), true);
        auto const start = std::chrono::steady_clock::now();
        action.reset();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state);
}

void changeOneTask(benchmark::State & state)
{
    endOfAction(state, static_cast<std::size_t>(state.range(0)));
}

void changeAllTasks(benchmark::State & state)
{
    endOfAction(state, 1);
}

void findTask(benchmark::State & state)
{
    CProject & project = benchProject(static_cast<std::int32_t>(state.range(0)));
    std::vector<CTaskID> ids = leafIDs(project.getAllTasks());
    std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    std::size_t next = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(project.getTask(ids[next]));
        next = next + 1 < ids.size() ? next + 1 : 0;
    }
}

void addManyTasks(benchmark::State & state)
{
    for (auto _ : state)
    {
        CProject project(nullptr, false);
        CLocalRulesChecker action(&project, client);
        for (int each = 0; each < state.range(0); ++each) action.addTaskWithName("Another task", 0);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

long residentBytes()
{
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    statm >> pages >> pages;
    return pages * 4096;
}

// One iteration: the memory of a project that is made once, without what its making used meanwhile.
void memoryOfTask(benchmark::State & state)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state)
    {
        long const before = residentBytes();
        CProject const & project = benchProject(leaves);
        malloc_trim(0);
        state.counters["bytes_per_task"] =
            static_cast<double>(residentBytes() - before) / static_cast<double>(project.getTotalNumberOfTasks());
    }
    state.counters["sizeof_CTask"] = sizeof(CTask);
}

// First, while the process has no memory to use again.
BENCHMARK(memoryOfTask)->Arg(100'000)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(emptyAction)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(changeOneTask)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(changeAllTasks)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(findTask)->Arg(1'000)->Arg(100'000);
BENCHMARK(addManyTasks)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
