// Calendars are replaced as a whole, and those who work by them count as changed.

#include <functional>
#include <unordered_set>

#include "rules/local_rules_checker.h"

namespace
{

// Every day of the week has a day type of the calendar.
bool hasAllDayTypes(CCalendar const & calendar)
{
    for (int day = 1; day <= 7; ++day)
        if (calendar.getCalendarDayTypes().findByID(calendar.getCalendarWeek().getDay(day)) < 0) return false;
    return true;
}

bool hasWorkingDay(CCalendar const & calendar)
{
    for (int day = 1; day <= 7; ++day)
    {
        int const position = calendar.getCalendarDayTypes().findByID(calendar.getCalendarWeek().getDay(day));
        if (!(calendar.getCalendarDayTypes().GetAt(position).getDayType() == CDayType::NonWorkingDay)) return true;
    }
    return false;
}

}  // namespace

// ---- flags: nothing changes its value -------------------------------------------------------------

void CLocalRulesChecker::flagTasksCalendarAsChanged(CalendarIDs const & calendarIDs)
{
    forEachTask([&](CTask & task) {
        if (calendarIDs.contains(task.getDominantCalendarID().getGUID()))
            task.setDominantCalendarID(CCalendarID(task.getDominantCalendarID()));
    });
}

// Of the company's own calendar nothing is flagged, nor of what lies below its top-level resources.
void CLocalRulesChecker::collectCalendars(CCompany const & company, CalendarIDs & calendarIDs) const
{
    company.forEachKind([&](auto const & resources) {
        for (auto const & each : resources)
            if constexpr (requires { each.getCalendar(); }) calendarIDs.insert(each.getCalendar().getID().getGUID());
    });
}

void CLocalRulesChecker::flagCompanyCalendarUsersAsChanged(CCompany const & company)
{
    CalendarIDs calendarIDs;
    collectCalendars(company, calendarIDs);
    flagTasksCalendarAsChanged(calendarIDs);
}

void CLocalRulesChecker::flagProjectCalendarUsersAsChanged()
{
    CalendarIDs calendarIDs{projectData->calendar.getID().getGUID()};
    CCompanyArray & companies = projectData->companies;
    for (int each = 0; each < companies.GetSize(); ++each)
    {
        CCompany & company = companies.elementForPass(each);
        company.setCalendar(CCalendar(company.getCalendar()));
        collectCalendars(company, calendarIDs);
    }
    flagTasksCalendarAsChanged(calendarIDs);
}

// ---- the rule -------------------------------------------------------------------------------------

bool CLocalRulesChecker::setCalendar(CCalendar const & calendar)
{
    if (!project || !hasAllDayTypes(calendar)) return false;
    if (!hasWorkingDay(calendar)) return warnUser("There must be at least one working day in a week!"), false;
    if (calendar.getID() == projectData->calendar.getID())
    {
        if (!calendar.getInUse()) return false;
        projectData->calendar = calendar;
        flagProjectCalendarUsersAsChanged();
        return true;
    }
    return setCompanyOrResourceCalendar(calendar);
}

bool CLocalRulesChecker::setCompanyOrResourceCalendar(CCalendar const & calendar)
{
    CCompanyArray & companies = projectData->companies;
    for (int each = 0; each < companies.GetSize(); ++each)
    {
        CCompany & company = companies.elementForPass(each);
        if (company.getCalendar().getID() == calendar.getID())
        {
            company.setCalendar(calendar);
            flagCompanyCalendarUsersAsChanged(company);
            return true;
        }
        bool found = false;
        company.forEachKind([&](auto & resources) {
            if constexpr (requires { resources.GetAt(0).getCalendar(); })
                for (int top = 0; top < resources.GetSize() && !found; ++top)
                    if (auto const * const resource = resources.GetAt(top).findResourceCalendar(calendar.getID()))
                    {
                        found = true;
                        resources.elementForPass(top).findWritableResource(resource->getID())->setCalendar(calendar);
                        flagTasksCalendarAsChanged({calendar.getID().getGUID()});
                        flagAssignedResourceAsChanged(resource->getID());
                    }
        });
        if (found) return true;
    }
    return false;
}
