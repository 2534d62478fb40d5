#pragma once

#include <array>
#include <cstdint>

#include "platform/string.h"

// How long stretches of the program take, summed up by name. One thread.

// A row of the monitor.
struct CProcessTime
{
    CString name;
    double duration = 0;  // seconds
};

// Measures from its construction to its destruction, on a clock that nobody sets.
class CTimeMonitor
{
public:
    explicit CTimeMonitor(CString const & name);
    ~CTimeMonitor();
    CTimeMonitor(CTimeMonitor const &) = delete;
    CTimeMonitor & operator=(CTimeMonitor const &) = delete;

private:
    CString name;
    std::int64_t ticks;  // milliseconds
};

// The rows. It begins disabled, and takes nothing while it is.
class CTimeMonitorManager
{
public:
    static bool getEnabled() { return enabled; }
    // Disabling empties the rows.
    static void setEnabled(bool enable);

    // Adds to the row of that name. A new name gets a row while there are fewer than 399.
    static void setDuration(CString const & name, double seconds);
    // The longest first.
    static void sort();
    static void reset() { count = 0; }

    static int getNumberOfProcesses() { return count; }
    // An empty row when there is none of that index.
    static CProcessTime const & getProcess(int index);

private:
    using Rows = std::array<CProcessTime, 400>;
    static constexpr int mostRows = 399;

    static Rows & rows();
    // The first `count` rows and no more are in use.
    static Rows::iterator end() { return rows().begin() + count; }

    static inline int count = 0;
    static inline bool enabled = false;
};
