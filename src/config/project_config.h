#pragma once

// The settings of the application, shared by all open projects.
class CProjectConfig
{
public:
    // Whether the critical path is computed and shown.
    static int getShowCriticalPath() { return m_ShowCriticalPath; }
    static void setShowCriticalPath(int show) { m_ShowCriticalPath = show; }
    // Whether a new project keeps every state on disk.
    static int getFullHistory() { return m_FullHistory; }
    static void setFullHistory(int keep) { m_FullHistory = keep; }

private:
    static inline int m_ShowCriticalPath = 0;
    static inline int m_FullHistory = 1;
};
