#include "config/time_monitor.h"

#include <chrono>
#include <climits>
#include <cmath>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace
{

using Manager = CTimeMonitorManager;

TEST(TimeMonitorTest, KeepsAndSorts399Rows)
{
    Manager::setDuration("disabled", 1);
    EXPECT_EQ(Manager::getNumberOfProcesses(), 0);
    Manager::setEnabled(true);
    for (int i = 0; i < 500; ++i) Manager::setDuration(std::to_string(i).c_str(), i);
    EXPECT_EQ(Manager::getNumberOfProcesses(), 399);
    Manager::setDuration("7", 1000);
    Manager::setDuration("8", NAN);
    Manager::sort();
    EXPECT_TRUE(Manager::getProcess(0).name == "7" && Manager::getProcess(0).duration == 1007);
    EXPECT_TRUE(Manager::getProcess(1).name == "398" && Manager::getProcess(398).name == "8");
    for (int outside : {-1, 399, 400, INT_MAX, INT_MIN}) EXPECT_EQ(Manager::getProcess(outside).name, "");
    Manager::setEnabled(false);
    EXPECT_EQ(Manager::getNumberOfProcesses(), 0);
}

TEST(TimeMonitorTest, CountsInSeconds)
{
    Manager::setEnabled(true);
    {
        CTimeMonitor const monitor("sleep");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    double const seconds = Manager::getProcess(0).duration;
    EXPECT_TRUE(seconds >= 0.019 && seconds < 10) << seconds;
    Manager::setEnabled(false);
}

}  // namespace
