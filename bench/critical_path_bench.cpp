// Links: the critical path alone, the test for circles that each new link takes, what hangs off a task, and
// the removal of many linked tasks. Ratios are to the bare critical-path pass over the same plan.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "bench/bench_project.h"
#include "config/project_config.h"
#include "rules/local_rules_checker.h"

namespace
{

using orvane::benchProject;

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
    state.counters["x_yardstick"] =
        benchmark::Counter(yardstick / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
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
    CProjectConfig::setShowCriticalPath(1);
    CProject & project = benchProject(leavesOf(state));
    for (auto _ : state) project.updateCriticalPath();
    stateRatio(state);
    CProjectConfig::setShowCriticalPath(0);
}

// The test alone, of a task in the middle: it sees what lies before the task and its summaries.
void circularChainInTheMiddle(benchmark::State & state)
{
    CProject & project = benchProject(leavesOf(state));
    std::vector<CTask const *> const leaves = leavesOf(project);
    CTask const & task = *leaves[leaves.size() / 2];
    for (auto _ : state) benchmark::DoNotOptimize(task.isInCircularChain());
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
        bool const added =
            CLocalRulesChecker(&project, client).addLink(leaves[upstream]->getID(), task.getID(), CLinkType::FinishToStart);
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
BENCHMARK(circularChainInTheMiddle)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(addLocalLink)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(addFarLink)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(findByLink)->Arg(1'000)->Arg(100'000);
BENCHMARK(downstreamLinks)->Arg(1'000)->Arg(100'000);
BENCHMARK(removeLinkedTasks)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

}  // namespace
