#pragma once

#include "platform/string.h"
#include "values/date_time.h"
#include "values/enumerations.h"

// Figures that never change: units of time, and measures of the views in pixels.
class CProjectConstants
{
public:
    static int getDaysPerWeek() { return 7; }
    static int getHoursPerDay() { return 24; }
    static int getMinutesPerHour() { return 60; }
    static int getSecondsPerMinute() { return 60; }
    // A tenth of a minute.
    static int getSecondsPerDeciMinute() { return 6; }
    static int getSecondsPerHour() { return 3600; }
    static int getMinutesPerDay() { return 1440; }
    static int getSecondsPerDay() { return 86400; }
    static int getHoursPerWeek() { return 168; }
    static int getMaxTimeblocksPerDayType() { return 8; }
    // The range of the start of the Gantt chart: 1970 to the beginning of 2020.
    static CProjectTime getMinViewStartTime() { return CProjectTime(1970, 1, 1, 0, 0); }
    static CProjectTime getMaxViewStartTime() { return CProjectTime(2020, 1, 1, 0, 0); }

    static int getGanttRulerHeight() { return 32; }
    static int getScrollZoneSize() { return 10; }
    static int getSideBarWidth() { return 220; }
    static int getBottomBarHeight() { return 240; }
    // How far the mouse moves before a drag begins.
    static int getDragDelta() { return 12; }
    // By what one step of zooming multiplies.
    static double getZoomProportion() { return 1.2; }
    static CString getTaskGridDataFontFace() { return "Arial"; }
    static CString getTaskGridHeadingsFontFace() { return "Arial"; }
    // In points.
    static int getTaskGridDataFontSize() { return 8; }
    static int getTaskGridHeadingsFontSize() { return 8; }
    // 1000, and no limit of the machine's integers.
    static int getINT_MAX() { return 1000; }

    // In what colour tasks of a status are drawn, as 0x00BBGGRR; white for a status that is none.
    static unsigned long getColor(CTaskStatus const & status);
};
