// What the operations on the shape of the tree cost on a plan of 100,000 tasks, with the end of their action.
// Counters state times as multiples of an action without any operation, in the same run.

#include <benchmark/benchmark.h>

#include <chrono>

#include "bench/bench_project.h"
#include "rules/local_rules_checker.h"

namespace
{

CRulesCheckerContext const originator(CRulesCheckerContext::OriginatingClient);

void nothing(CProject const &, CLocalRulesChecker &)
{
}

// Times the operation on a fresh project of so many leaves, after what `prepare` did in an action of its own.
template <class Prepare, class Operation>
void measure(benchmark::State & state, std::int32_t leaves, Prepare const & prepare, Operation const & operation)
{
    CTaskArray const & plan = orvane::benchProject(leaves).getAllTasks();
    double const empty = orvane::emptyActionMilliseconds(orvane::benchProject(leaves));
    for (auto _ : state)
    {
        CProject project(nullptr, false);
        CLocalRulesChecker(&project, originator).importTasks(plan);
        {
            CLocalRulesChecker rules(&project, originator);
            prepare(project, rules);
        }
        // The indices are built by the first question.
        project.getTask(CTaskID());
        project.hasAnyDownstreamLinks(CTaskID());
        auto const start = std::chrono::steady_clock::now();
        {
            CLocalRulesChecker rules(&project, originator);
            if (!operation(project, rules)) state.SkipWithError("refused");
        }
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["empty_ms"] = empty;
    state.counters["x_empty"] =
        benchmark::Counter(empty / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

constexpr std::int32_t large = 100'000;

CTaskID firstRoot(CProject const & project)
{
    return project.getAllTasks().GetAt(0).getID();
}

// So many phases as one subtree: each has 421 tasks and about 600 links.
void gatherPhases(CProject const & project, CLocalRulesChecker & rules, std::int64_t phases)
{
    CTaskIDArray ids;
    for (int each = 1; each < phases; ++each) ids.Add(project.getAllTasks().GetAt(each).getID());
    rules.repositionTasks(ids, firstRoot(project), 0);
}

void insertTask(benchmark::State & state)
{
    measure(state, large, nothing, [](CProject const & project, CLocalRulesChecker & rules) {
        return rules.insertBlankTask(firstRoot(project), CInsertType::Below);
    });
}

void moveAmongSiblings(benchmark::State & state)
{
    measure(state, large, nothing, [](CProject const & project, CLocalRulesChecker & rules) {
        return rules.repositionTask(firstRoot(project), project.getNumberOfTasks() - 1);
    });
}

// Every third leaf, from the first phase on, to the roots.
void moveTasks(benchmark::State & state)
{
    measure(state, large, nothing, [&](CProject const & project, CLocalRulesChecker & rules) {
        CTaskIDArray ids;
        for (CTask const & phase : project.getAllTasks())
            for (CTask const & group : *phase.getSubTasks())
                for (int leaf = 0; leaf < group.getSubTasks()->GetSize() && ids.GetSize() < state.range(0); leaf += 3)
                    ids.Add(group.getSubTasks()->GetAt(leaf).getID());
        return rules.repositionTasks(ids, CTaskID(orvane::nullID), 0);
    });
}

void pasteNew(benchmark::State & state)
{
    measure(
        state, large,
        [&](CProject const & project, CLocalRulesChecker & rules) { gatherPhases(project, rules, state.range(0)); },
        [](CProject const & project, CLocalRulesChecker & rules) {
            return rules.pasteIntoNewTask(firstRoot(project), 0, CTaskPasteMode::WithAllLinks);
        });
}

void pasteOver(benchmark::State & state)
{
    measure(
        state, large,
        [&](CProject const & project, CLocalRulesChecker & rules) { gatherPhases(project, rules, state.range(0)); },
        [](CProject const & project, CLocalRulesChecker & rules) {
            CTask const & last = project.getAllTasks().GetAt(project.getNumberOfTasks() - 1);
            return rules.pasteIntoTask(last.getID(), firstRoot(project), CTaskPasteMode::WithInnerLinks);
        });
}

void importPlan(benchmark::State & state)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    auto const removeAll = [](CProject const &, CLocalRulesChecker & rules) { rules.clear(); };
    measure(state, leaves, removeAll, [&](CProject const &, CLocalRulesChecker & rules) {
        return rules.importTasks(orvane::benchProject(leaves).getAllTasks());
    });
}

BENCHMARK(insertTask)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(moveAmongSiblings)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(moveTasks)->Arg(10)->Arg(100)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(pasteNew)->Arg(1)->Arg(6)->Arg(24)->Arg(96)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(pasteOver)->Arg(24)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(importPlan)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace
