// A plan with money and risk. Counters state times as multiples of the empty action on the bare plan.

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "bench/bench_site.h"
#include "rules/local_rules_checker.h"

namespace
{

using orvane::benchProject;

using orvane::madeOnce;
using orvane::Made;

CRulesCheckerContext const client(CRulesCheckerContext::OriginatingClient);

void stateRatio(benchmark::State & state, std::int32_t leaves)
{
    double const empty = orvane::emptyActionMilliseconds(benchProject(leaves));
    state.counters["empty_ms"] = empty;
    state.counters["x_empty"] =
        benchmark::Counter(empty / 1000.0, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void total(benchmark::State & state, double (CProject::*ask)(CCostTotalType const &) const)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made const & made = madeOnce(leaves, true, false);
    for (auto _ : state) benchmark::DoNotOptimize((made.project.get()->*ask)(CCostTotalType::Budgeted));
    stateRatio(state, leaves);
}

void findResource(benchmark::State & state)
{
    Made const & made = madeOnce(static_cast<std::int32_t>(state.range(0)), true, false);
    std::size_t next = 0;
    for (auto _ : state) benchmark::DoNotOptimize(made.project->getResource(made.resources[next = (next + 7) % made.resources.size()]));
}

void isAssigned(benchmark::State & state)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made const & made = madeOnce(leaves, true, false);
    CResourceID const nobody;
    for (auto _ : state) benchmark::DoNotOptimize(made.project->isAssignedToTasks(nobody));
    stateRatio(state, leaves);
}

void tasksAssigned(benchmark::State & state)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made const & made = madeOnce(leaves, true, false);
    for (auto _ : state)
    {
        CTaskArray tasks;
        benchmark::DoNotOptimize(made.project->getTasksAssignedTo(made.resources[5], tasks));
    }
    stateRatio(state, leaves);
}

// An operation within one action; the action's own passes are not timed.
void operation(benchmark::State & state, std::function<void(CLocalRulesChecker &, Made &)> const & run)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made & made = madeOnce(leaves, true, false);
    for (auto _ : state)
    {
        CLocalRulesChecker rules(made.project.get(), client);
        auto const start = std::chrono::steady_clock::now();
        run(rules, made);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state, leaves);
}

void removeResource(benchmark::State & state)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made & made = madeOnce(leaves, true, false);
    CCompanyID const company(made.project->getCompany(3)->getID());
    for (auto _ : state)
    {
        CLocalRulesChecker rules(made.project.get(), client);
        CHumanResource const resource;
        rules.addHumanResourceToCompany(resource, company);
        auto const start = std::chrono::steady_clock::now();
        rules.removeResource(resource.getID());
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state, leaves);
}

// ---- risk -------------------------------------------------------------------------------------------

// The end of an action that changed every `step`th leaf.
void endOfAction(benchmark::State & state, Made & made, std::size_t step)
{
    int days = 1;
    for (auto _ : state)
    {
        std::optional<CLocalRulesChecker> action(std::in_place, made.project.get(), client);
        days = days % 9 + 1;
        for (std::size_t each = 0; step && each < made.leaves.size(); each += step)
            action->changeTaskDuration(made.leaves[each], CProjectDuration(days * 8, 0), true);
        auto const start = std::chrono::steady_clock::now();
        action.reset();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state, static_cast<std::int32_t>(state.range(0)));
}

void risky(benchmark::State & state, bool withRisks, std::size_t share)
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made & made = madeOnce(leaves, false, withRisks);
    endOfAction(state, made, share ? made.leaves.size() / share : 0);
}

void rowAdded(benchmark::State & state, bool withRisks)
{
    Made & made = madeOnce(static_cast<std::int32_t>(state.range(0)), false, withRisks);
    for (auto _ : state)
    {
        std::optional<CLocalRulesChecker> action(std::in_place, made.project.get(), client);
        action->addTaskWithName("one more", 0);
        auto const start = std::chrono::steady_clock::now();
        action.reset();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    stateRatio(state, static_cast<std::int32_t>(state.range(0)));
}

void downstreamBuffers(benchmark::State & state)
{
    Made & made = madeOnce(static_cast<std::int32_t>(state.range(0)), false, true);
    for (auto _ : state)
    {
        CTaskArray found;
        made.project->getDownstreamRiskBuffers(made.leaves[0], found);
        benchmark::DoNotOptimize(found.GetSize());
    }
    stateRatio(state, static_cast<std::int32_t>(state.range(0)));
}

// The end of an action in which the filter changed, so that every task gets a new verdict.
void filtered(benchmark::State & state, void (*use)(CFilter &, Made const &))
{
    auto const leaves = static_cast<std::int32_t>(state.range(0));
    Made & made = madeOnce(leaves, true, true);
    CFilter filter;
    use(filter, made);
    {
        CLocalRulesChecker rules(made.project.get(), client);
        rules.addFilter(filter);
        rules.setSelectedFilterID(filter.getID());
    }
    for (auto _ : state)
    {
        std::optional<CLocalRulesChecker> action(std::in_place, made.project.get(), client);
        action->changeFilter(filter);
        auto const start = std::chrono::steady_clock::now();
        action.reset();
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    CLocalRulesChecker rules(made.project.get(), client);
    rules.setSelectedFilterID(CFilterID::getNULL());
    stateRatio(state, leaves);
}

template <class Sub>
Sub inUse()
{
    Sub sub;
    sub.setInUse(true);
    return sub;
}

void byName(CFilter & filter, Made const &)
{
    CNameFilter sub = inUse<CNameFilter>();
    CProjectStringArray names;
    names.Add("concrete");
    names.Add("77");
    sub.setNames(names);
    filter.setNameFilter(sub);
}

void byDates(CFilter & filter, Made const &)
{
    filter.setDateRangeFilter(inUse<CDateRangeFilter>());
}

void byStatus(CFilter & filter, Made const &)
{
    filter.setStatusFilter(inUse<CStatusFilter>());
}

void byResources(CFilter & filter, Made const & made)
{
    CResourcesFilter sub = inUse<CResourcesFilter>();
    CResourceIDArray chosen;
    for (std::size_t each = 0; each < made.resources.size(); each += 3) chosen.Add(made.resources[each]);
    sub.setResourcesIncluded(chosen);
    filter.setResourcesFilter(sub);
}

void byCompany(CFilter & filter, Made const & made)
{
    CCompanyFilter sub = inUse<CCompanyFilter>();
    CCompanyIDArray chosen;
    chosen.Add(made.project->getCompany(1)->getID());
    sub.setCompanyIncluded(chosen);
    sub.setMode(CCompanyFilterMode::ResourceOwner);
    filter.setCompanyFilter(sub);
}

constexpr int plan = 100'000;

}  // namespace

BENCHMARK_CAPTURE(total, all, &CProject::getTotalCosts)->Arg(10'000)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(total, equipment, &CProject::getTotalEquipmentResourceCosts)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(total, human, &CProject::getTotalHumanResourceCosts)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(total, location, &CProject::getTotalLocationResourceCosts)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(total, material, &CProject::getTotalMaterialResourceCosts)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK(findResource)->Arg(plan);
BENCHMARK(isAssigned)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK(tasksAssigned)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK(removeResource)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, renameResource, [](CLocalRulesChecker & rules, Made & made) {
    rules.setResourceName(made.resources[5], "renamed");
})->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(operation, setProjectCalendar, [](CLocalRulesChecker & rules, Made & made) {
    rules.setCalendar(CCalendar(made.project->getProjectCalendar()));
})->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(risky, emptyWithout, false, 0)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(risky, emptyWith, true, 0)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(risky, oneWithout, false, 1)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(risky, oneWith, true, 1)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(risky, allWithout, false, plan)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(risky, allWith, true, plan)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rowAdded, without, false)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rowAdded, with, true)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(downstreamBuffers)->Arg(plan)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filtered, byName, byName)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filtered, byDates, byDates)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filtered, byStatus, byStatus)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filtered, byResources, byResources)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(filtered, byCompany, byCompany)->Arg(plan)->UseManualTime()->Unit(benchmark::kMillisecond);
