#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"
#include "tests/support/real_cases.h"

using namespace orvane;
using namespace orvane::test;

namespace
{

// Activity networks whose longest chains were published with them: activities by number, finish-to-start,
// without lags; one unit is one working day here.
std::vector<TaskDraft> tasksOf(nlohmann::json const & network)
{
    std::vector<TaskDraft> tasks;
    for (std::size_t each = 0; each < network["durations"].size(); ++each)
    {
        long const days = network["durations"][each];
        TaskDraft task = aTask(std::to_string(each)).lasting(CProjectDuration(days * 8 * 3600));
        if (days == 0) task.keyDate();
        for (nlohmann::json const & upstream : network["predecessors"][each])
            task.after(std::to_string(upstream.get<int>()));
        tasks.push_back(task);
    }
    return tasks;
}

TEST(RealNetworks, TheLongestChainIsThePublishedOne)
{
    CProjectConfig::setShowCriticalPath(1);
    int networks = 0;
    bool const isThere = forRealCases("psplib", [&](nlohmann::json const & network) {
        ++networks;
        Plan plan(tasksOf(network));
        plan.project.updateCriticalPath();
        CCriticalPathCachedData const & path = plan.project.getCriticalPath();
        CProjectDuration const length = path.getDurationOfCriticalPath();
        EXPECT_EQ(length.GetDays(plan.project.getProjectCalendar()), network["mpm_time"].get<long>())
            << network["name"];
        // The chain itself accounts for every minute of it.
        CProjectDuration sum = path.getEndTaskInLongestChain()->getDuration();
        for (CLink const & link : path.getLinksInCriticalPath())
            sum = sum + plan.project.getTask(link.getUpstreamTaskID())->getDuration();
        EXPECT_EQ(sum, length) << network["name"];
    });
    CProjectConfig::setShowCriticalPath(0);
    if (!isThere) GTEST_SKIP() << "no records in " << realCasesFolder();
    EXPECT_GT(networks, 0);
}

}  // namespace
