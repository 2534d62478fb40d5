#include "bench/bench_project.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "bench/plan.h"
#include "bench/yardstick.h"
#include "rules/local_rules_checker.h"

namespace orvane
{
namespace
{

constexpr int secondsPerWorkingDay = 8 * 3600;
constexpr int secondsPerDay = 24 * 3600;

class ProjectMaker
{
public:
    explicit ProjectMaker(std::int32_t leaves) : plan(makePlan(leaves)), ids(plan.durations.size()), children(plan.rows.size())
    {
        for (std::int32_t row = 0; row < static_cast<std::int32_t>(plan.rows.size()); ++row)
        {
            std::int32_t const parent = plan.rows[at(row)].parent;
            (parent < 0 ? roots : children[at(parent)]).push_back(row);
        }
    }

    std::unique_ptr<CProject> make()
    {
        CTaskArray tasks;
        for (std::int32_t const row : roots) tasks.addTask(makeTask(row));
        CProject const fresh(nullptr, false);
        std::unique_ptr<CProjectData> const data(fresh.getCopyOfProjectData());
        data->setTasks(tasks);
        auto project = std::make_unique<CProject>(*data);
        project->postSerialize();
        project->resetChanged();
        return project;
    }

private:
    static std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }

    CTask makeTask(std::int32_t row)
    {
        CTask task;
        task.setName(("Task " + std::to_string(row)).c_str());
        task.setPlannedStartTime(CProjectTime(2026, 3, 2 + row / 400 % 5, 9, 0));
        std::int32_t const leaf = plan.rows[at(row)].leaf;
        task.setDuration(CProjectDuration((leaf < 0 ? 1L : plan.durations[at(leaf)]) * secondsPerWorkingDay));
        if (leaf >= 0) giveLinks(task, leaf);
        CTaskArray below;
        for (std::int32_t const child : children[at(row)]) below.addTask(makeTask(child));
        task.setSubTasks(below);
        return task;
    }
    // Links come by downstream leaf, and always from a leaf before.
    void giveLinks(CTask & task, std::int32_t leaf)
    {
        ids[at(leaf)].setGUID(task.getID().getGUID());
        CLinkArray links;
        for (; nextLink < plan.links.size() && plan.links[nextLink].downstream == leaf; ++nextLink)
        {
            CPlan::Link const & from = plan.links[nextLink];
            CLink link(ids[at(from.upstream)], CLinkType::FinishToStart);
            link.setDelay(CProjectDuration(from.lag * long{secondsPerDay}));
            links.Add(link);
        }
        task.setUpstreamLinks(links);
    }

    CPlan plan;
    std::vector<CTaskID> ids;
    std::vector<std::vector<std::int32_t>> children;
    std::vector<std::int32_t> roots;
    std::size_t nextLink = 0;
};

template <class Run>
double medianMilliseconds(Run const & run)
{
    std::array<double, 9> times{};
    for (double & time : times)
    {
        auto const start = std::chrono::steady_clock::now();
        run();
        time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    std::ranges::nth_element(times, times.begin() + times.size() / 2);
    return times[times.size() / 2];
}

}  // namespace

CProject & benchProject(std::int32_t leaves)
{
    static std::map<std::int32_t, std::unique_ptr<CProject>> projects;
    std::unique_ptr<CProject> & project = projects[leaves];
    if (!project) project = ProjectMaker(leaves).make();
    return *project;
}

double emptyActionMilliseconds(CProject & project)
{
    return medianMilliseconds([&] { CLocalRulesChecker const action(&project, CRulesCheckerContext::OriginatingClient); });
}

double yardstickMillisecondsFor(std::int32_t leaves)
{
    return yardstickMilliseconds(makePlan(leaves));
}

}  // namespace orvane
