#include "schedule/calendar.h"

#include "model/project.h"

CCalendar const & CCalendar::getMasterCalendar() const
{
    return project ? project->getProjectCalendar() : getStandardCalendar();
}
