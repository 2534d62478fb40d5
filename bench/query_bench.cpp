// Questions to a whole plan, and replacing in all its names, as multiples of a plain pass: one walk over the same
// tasks that reads a field of each.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "bench/bench_project.h"
#include "rules/local_rules_checker.h"

namespace
{

constexpr std::int32_t leafTasks = 100'000;

int countMarked(CTaskArray const & tasks)
{
    int count = 0;
    for (CTask const & task : tasks)
    {
        count += task.getRiskBuffer().getValue() || task.getName().IsEmpty();
        if (task.getSubTasks()) count += countMarked(*task.getSubTasks());
    }
    return count;
}

// The same plan as other measurements have, focussed on a moment in the middle of its starts.
CProject & plan()
{
    static CProject & project = []() -> CProject &
    {
        CProject & made = orvane::benchProject(leafTasks);
        CLocalRulesChecker rules(&made, CRulesCheckerContext::TransactionServer);
        CGanttPresentation gantt(made.getGanttPresentation());
        gantt.setFocussedTime(CProjectTime(2026, 3, 4, 12, 0));
        rules.setGanttPresentation(gantt);
        return made;
    }();
    return project;
}

// The median of several plain passes now.
double plainSeconds()
{
    using Clock = std::chrono::steady_clock;
    CTaskArray const & tasks = plan().getAllTasks();
    std::array<double, 9> times{};
    for (double & time : times)
    {
        auto const start = Clock::now();
        benchmark::DoNotOptimize(countMarked(tasks));
        time = std::chrono::duration<double>(Clock::now() - start).count();
    }
    std::ranges::nth_element(times, times.begin() + times.size() / 2);
    return times[times.size() / 2];
}

template <class Run>
void measure(benchmark::State & state, Run const & run)
{
    double const plain = plainSeconds();
    for (auto _ : state) run();
    // Seconds an iteration over those of the plain pass.
    state.counters["x_plain"] =
        benchmark::Counter(plain, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct Query
{
    char const * name;
    void (*ask)(CProject const & project);
};

template <auto question>
void ask(CProject const & project)
{
    benchmark::DoNotOptimize((project.*question)());
}

template <auto question>
void askForTotal(CProject const & project)
{
    benchmark::DoNotOptimize((project.*question)(CCostTotalType::Budgeted));
}

// Of a task in the middle of the plan.
CTask const & middle(CProject const & project)
{
    CTask const * task = project.getTask(project.getNumberOfTasks() / 2);
    while (task->getSubTasks()) task = &task->getSubTasks()->GetAt(0);
    return *task;
}

Query const queries[] = {
    {"getProjectStart", ask<&CProject::getProjectStart>},
    {"getProjectEnd", ask<&CProject::getProjectEnd>},
    {"getTasksScheduledAfterFocussedTime", ask<&CProject::getTasksScheduledAfterFocussedTime>},
    {"getTasksInProgressDuringFocussedTime", ask<&CProject::getTasksInProgressDuringFocussedTime>},
    {"getTasksCompletedBeforeFocussedTime", ask<&CProject::getTasksCompletedBeforeFocussedTime>},
    {"getTotalCosts", askForTotal<&CProject::getTotalCosts>},
    {"getTotalEquipmentResourceCosts", askForTotal<&CProject::getTotalEquipmentResourceCosts>},
    {"getTotalHumanResourceCosts", askForTotal<&CProject::getTotalHumanResourceCosts>},
    {"getTotalLocationResourceCosts", askForTotal<&CProject::getTotalLocationResourceCosts>},
    {"getTotalMaterialResourceCosts", askForTotal<&CProject::getTotalMaterialResourceCosts>},
    {"getTotalMitigatedRiskCosts", ask<&CProject::getTotalMitigatedRiskCosts>},
    {"getTotalUnmitigatedRiskCosts", ask<&CProject::getTotalUnmitigatedRiskCosts>},
    {"getTotalNumberOfTasks", ask<&CProject::getTotalNumberOfTasks>},
    {"doesAssignedRiskHaveCost",
     [](CProject const & project) { benchmark::DoNotOptimize(project.doesAssignedRiskHaveCost(CAssignedRiskID())); }},
    {"doesTaskReportHaveCost",
     [](CProject const & project) { benchmark::DoNotOptimize(project.doesTaskReportHaveCost(CTaskReportID())); }},
    {"getDownstreamLinks",
     [](CProject const & project)
     {
         CLinkArray links;
         project.getDownstreamLinks(middle(project).getID(), links);
     }},
    {"hasAnyDownstreamLinks", [](CProject const & project)
     { benchmark::DoNotOptimize(project.hasAnyDownstreamLinks(middle(project).getID())); }},
    {"getDownstreamRiskBuffers",
     [](CProject const & project)
     {
         CTaskArray buffers;
         project.getDownstreamRiskBuffers(middle(project).getID(), buffers);
     }},
    {"getTasksAssignedTo",
     [](CProject const & project)
     {
         CTaskArray tasks;
         benchmark::DoNotOptimize(project.getTasksAssignedTo(CResourceID(), tasks));
     }},
    {"hasTasksAssignedTo",
     [](CProject const & project) { benchmark::DoNotOptimize(project.hasTasksAssignedTo(CResourceID())); }},
};

int const registered = []
{
    for (Query const & query : queries)
        benchmark::RegisterBenchmark(query.name,
                                     [&query](benchmark::State & state) { measure(state, [&] { query.ask(plan()); }); })
            ->Unit(benchmark::kMicrosecond)
            ->UseRealTime();
    return 0;
}();

// There and back, so that every run finds something to do in every name.
void replaceAll(benchmark::State & state)
{
    CLocalRulesChecker rules(&plan(), CRulesCheckerContext::TransactionServer);
    CString text("task"), replacement("JOB");
    measure(state,
            [&]
            {
                if (!rules.replaceAll(text, replacement, false, true)) state.SkipWithError("nothing was replaced");
                std::swap(text, replacement);
            });
}
BENCHMARK(replaceAll)->Unit(benchmark::kMicrosecond)->UseRealTime();

// What is not there is looked for in every name.
void findNext(benchmark::State & state)
{
    CLocalRulesChecker rules(&plan(), CRulesCheckerContext::TransactionServer);
    rules.setPrimarySelectedTaskID(middle(plan()).getID());
    measure(state, [&] { benchmark::DoNotOptimize(rules.findNext("roof", true, false, true)); });
}
BENCHMARK(findNext)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
