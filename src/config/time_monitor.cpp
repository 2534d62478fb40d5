#include "config/time_monitor.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace
{

std::int64_t steadyMilliseconds()
{
    auto const now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

// What is no number comes last, so that there is an order at all.
double sortedBy(CProcessTime const & row)
{
    return std::isnan(row.duration) ? -INFINITY : row.duration;
}

}  // namespace

CTimeMonitor::CTimeMonitor(CString const & name) : name(name), ticks(steadyMilliseconds()) {}

CTimeMonitor::~CTimeMonitor()
{
    CTimeMonitorManager::setDuration(name, static_cast<double>(steadyMilliseconds() - ticks) * 0.001);
}

CTimeMonitorManager::Rows & CTimeMonitorManager::rows()
{
    // Never destroyed, since static objects may be measured.
    static Rows & all = *new Rows;
    return all;
}

void CTimeMonitorManager::setEnabled(bool enable)
{
    enabled = enable;
    if (!enable) reset();
}

void CTimeMonitorManager::setDuration(CString const & name, double seconds)
{
    if (!enabled) return;
    auto const row = std::find_if(rows().begin(), end(), [&](CProcessTime const & each) { return each.name == name; });
    if (row != end()) row->duration += seconds;
    else if (count < mostRows)
    {
        *row = {name, seconds};
        ++count;
    }
}

void CTimeMonitorManager::sort()
{
    std::stable_sort(rows().begin(), end(),
                     [](CProcessTime const & a, CProcessTime const & b) { return sortedBy(a) > sortedBy(b); });
}

CProcessTime const & CTimeMonitorManager::getProcess(int index)
{
    static CProcessTime const none;
    return index >= 0 && index < count ? rows()[static_cast<std::size_t>(index)] : none;
}
