#pragma once

#include "model/assigned_resource.h"
#include "schedule/calendar.h"
#include "values/date_time.h"

// What an application assembles to draw tasks and resources over time. The model keeps none of it.

// A task as a bar: when it runs, by which calendar, and who works on it.
class CDisplayedTask
{
public:
    CDisplayedTask() = default;
    CDisplayedTask(CDisplayedTask const &) = default;
    CDisplayedTask(CProjectTime const & start, CProjectTime const & end, CAssignedResourceArray const & assignedResources,
                   CCalendar const & calendar)
        : start(start), end(end), assignedResources(assignedResources), calendar(calendar)
    {
    }
    virtual ~CDisplayedTask() = default;
    virtual CDisplayedTask & operator=(CDisplayedTask const &) = default;

    CProjectDate getStartDate() const { return start.getDate(); }
    CProjectDate getEndDate() const { return end.getDate(); }
    CProjectTimeOfDay getStartTimeOfDay() const { return start.getTimeOfDay(); }
    CProjectTimeOfDay getEndTimeOfDay() const { return end.getTimeOfDay(); }
    CAssignedResourceArray const & getAssignedResources() const { return assignedResources; }
    CCalendar const & getCalendar() const { return calendar; }

private:
    CProjectTime start;
    CProjectTime end;
    CAssignedResourceArray assignedResources;
    CCalendar calendar;
};

// A resource, and how many units of it there are to work by a calendar.
class CDisplayedResource
{
public:
    CDisplayedResource() = default;
    CDisplayedResource(CDisplayedResource const &) = default;
    CDisplayedResource(CResourceID const & resourceID, int units, CCalendar const & calendar)
        : resourceID(resourceID), units(units), calendar(calendar)
    {
    }
    virtual ~CDisplayedResource() = default;
    virtual CDisplayedResource & operator=(CDisplayedResource const &) = default;

    CResourceID const & getResourceID() const { return resourceID; }
    int getUnits() const { return units; }
    CCalendar const & getCalendar() const { return calendar; }

private:
    CResourceID resourceID{orvane::nullID};
    int units = 0;
    CCalendar calendar;
};

class CDisplayedResourceArray : public CArray<CDisplayedResource, CDisplayedResource const &>
{
public:
    // The position of the resource of that identifier, or -1.
    int findByID(CResourceID const & id) const
    {
        for (int position = 0; position < GetSize(); ++position)
            if (GetAt(position).getResourceID() == id) return position;
        return -1;
    }
};
