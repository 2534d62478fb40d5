// Links: the critical path alone, the test for circles that each new link takes, what hangs off a task, and
// the removal of many linked tasks. Ratios are to the bare critical-path pass over the same plan.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "bench/bench_project.h"
#include "rules/local_rules_checker.h"

namespace
{

using orvane::benchProject;
using orvane::WithCriticalPath;

CRulesCheckerContext const client(CRulesCheckerContext::OriginatingClient);

std::int32_t leavesOf(benchmark::State const & state)
{
    return static_cast<std::int32_t>(state.range(0));
}

void stateRatio(benchmark::State & state)
{
    double const yardstick = orvane::yardstickMillisecondsFor(leavesOf(state));
    state.counters["yardstick_ms"] = yardstick;
    // Seconds an iteration over the yardstick's seconds.
    state.counters["x_yardstick"] = benchmark::Counter(
        yardstick / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void addLeaves(CTaskArray const & tasks, std::vector<CTask const *> & leaves)
{
    for (CTask const & task : tasks)
    {
        if (task.getSubTasks()) addLeaves(*task.getSubTasks(), leaves);
        else leaves.push_back(&task);
    }
}

std::vector<CTask const *> leavesOf(CProject const & project)
{
    std::vector<CTask const *> leaves;
    addLeaves(project.getAllTasks(), leaves);
    return leaves;
}

void criticalPath(benchmark::State & state)
{
    WithCriticalPath const shown;
    CProject & project = benchProject(leavesOf(state));
    for (auto _ : state) project.updateCriticalPath();
    stateRatio(state);
}

// After a change, outside the measure, that makes it read more than the tasks' durations again.
template <class Change>
void criticalPathAfter(benchmark::State & state, Change const & change)
{
    WithCriticalPath const shown;
    CProject & project = benchProject(leavesOf(state));
    for (auto _ : state)
    {
        change(const_cast<CTaskArray &>(project.getAllTasks()));
        auto const start = std::chrono::steady_clock::now();
        project.updateCriticalPath();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state);
}

void criticalPathAfterNewLink(benchmark::State & state)
{
    criticalPathAfter(state, [](CTaskArray & tasks) { tasks.elementForPass(0).setUpstreamLinks(CLinkArray()); });
}

void criticalPathAfterNewRow(benchmark::State & state)
{
    criticalPathAfter(state,
                      [](CTaskArray & tasks)
                      {
                          tasks.InsertAt(0, CTask());
                          tasks.RemoveAt(0);
                      });
}

// The test for circles alone, of the last task of a plan in which every task follows the two before it, so that
// it depends on all of them.
void circularChainOfAll(benchmark::State & state)
{
    auto const count = static_cast<std::size_t>(state.range(0));
    CProject project(nullptr, false);
    auto & tasks = const_cast<CTaskArray &>(project.getAllTasks());
    std::vector<CTaskID> ids;
    for (std::size_t each = 0; each < count; ++each)
    {
        CTask & task = tasks.addTask(&project);
        ids.push_back(task.getID());
        CLinkArray links;
        for (std::size_t back = 1; back <= 2 && back <= each; ++back)
            links.Add(CLink(ids[each - back], CLinkType::FinishToStart));
        task.setUpstreamLinks(links);
    }
    for (auto _ : state) benchmark::DoNotOptimize(tasks.GetAt(tasks.GetUpperBound()).isInCircularChain());
    stateRatio(state);
}

// One action: a link to a leaf, taken back outside the measure.
void addLinkTo(benchmark::State & state, std::size_t upstream, std::size_t downstream)
{
    CProject & project = benchProject(leavesOf(state));
    std::vector<CTask const *> const leaves = leavesOf(project);
    CTask & task = const_cast<CTask &>(*leaves[downstream]);
    CLinkArray const before(task.getUpstreamLinks());
    for (auto _ : state)
    {
        auto const start = std::chrono::steady_clock::now();
        bool const added = CLocalRulesChecker(&project, client)
                               .addLink(leaves[upstream]->getID(), task.getID(), CLinkType::FinishToStart);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (!added) state.SkipWithError("refused");
        task.setUpstreamLinks(before);
        CLocalRulesChecker const derive(&project, client);
    }
    stateRatio(state);
}

// Within the first phase, which hangs off no other.
void addLocalLink(benchmark::State & state)
{
    addLinkTo(state, 0, 399);
}

// To the last phase, which hangs off every fiftieth before it.
void addFarLink(benchmark::State & state)
{
    std::size_t const last = static_cast<std::size_t>(state.range(0)) - 1;
    addLinkTo(state, last - 1, last);
}

void findByLink(benchmark::State & state)
{
    CProject & project = benchProject(leavesOf(state));
    std::vector<CTask const *> const leaves = leavesOf(project);
    std::size_t next = 0;
    for (auto _ : state)
    {
        next = (next + 7919) % leaves.size();
        CLinkArray const & links = leaves[next]->getUpstreamLinks();
        if (!links.IsEmpty()) benchmark::DoNotOptimize(project.getTask(links.GetAt(0).getID()));
    }
}

void downstreamLinks(benchmark::State & state)
{
    CProject & project = benchProject(leavesOf(state));
    std::vector<CTask const *> const leaves = leavesOf(project);
    std::size_t next = 0;
    CLinkArray links;
    for (auto _ : state)
    {
        next = (next + 7919) % leaves.size();
        project.getDownstreamLinks(leaves[next]->getID(), links);
    }
}

// Every tenth leaf of the plan goes, with its links, in one call.
void removeLinkedTasks(benchmark::State & state)
{
    std::unique_ptr<CProjectData> const data(benchProject(leavesOf(state)).getCopyOfProjectData());
    for (auto _ : state)
    {
        CProject project(*data);
        project.postSerialize();
        CTaskIDArray ids;
        std::vector<CTask const *> const leaves = leavesOf(project);
        for (std::size_t each = 0; each < leaves.size(); each += 10) ids.Add(leaves[each]->getID());
        auto const start = std::chrono::steady_clock::now();
        CLocalRulesChecker(&project, client).removeTasks(ids);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state);
}

BENCHMARK(criticalPath)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(criticalPathAfterNewLink)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(criticalPathAfterNewRow)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(circularChainOfAll)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(addLocalLink)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(addFarLink)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(findByLink)->Arg(1'000)->Arg(100'000);
BENCHMARK(downstreamLinks)->Arg(1'000)->Arg(100'000);
BENCHMARK(removeLinkedTasks)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

}  // namespace
