#include "schedule/calendar.h"

void CCalendar::setDayTypeOfSelectedDate(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
{
    bool const isTheWeeks = dayTypeID == week.getDay(date.GetDayOfWeek());
    int found = exceptions.GetUpperBound();
    while (found >= 0 && exceptions.GetAt(found).getDate() != date) --found;
    if (found < 0 && isTheWeeks) return;

    if (found < 0) exceptions.Add(CCalendarException(date, dayTypeID));
    else if (isTheWeeks) exceptions.RemoveAt(found);
    else exceptions[found].setCalendarDayTypeID(dayTypeID);
    contentChanged();
}

// The week first: the identifier may be one of an exception that goes.
void CCalendar::setDayTypeOfDayOfWeek(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
{
    int const day = date.GetDayOfWeek();
    week.setDay(day, dayTypeID);
    for (int each = exceptions.GetUpperBound(); each >= 0; --each)
        if (exceptions.GetAt(each).getDate().GetDayOfWeek() == day) exceptions.RemoveAt(each);
    contentChanged();
}

void CCalendar::setDayTypeOfSelectedWeek(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
{
    CProjectDate const sunday = date - (date.GetDayOfWeek() - 1);
    setDayTypeOfDates(sunday, sunday + (orvane::daysPerWeek - 1), 1, dayTypeID);
}

void CCalendar::setDayTypeOfDayOfWeekOfSelectedMonth(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
{
    int const remainder = date.GetDay() % orvane::daysPerWeek;
    CProjectDate const first(date.GetYear(), date.GetMonth(), remainder == 0 ? orvane::daysPerWeek : remainder);
    CProjectDate const last(date.GetYear(), date.GetMonth() + 1, 0);
    setDayTypeOfDates(first, last, orvane::daysPerWeek, dayTypeID);
}

void CCalendar::setDayTypeOfDayOfWeekOfSelectedYear(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
{
    CProjectDate const newYear(date.GetYear(), 1, 1);
    int const days = (orvane::daysPerWeek - newYear.GetDayOfWeek() + date.GetDayOfWeek()) % orvane::daysPerWeek;
    setDayTypeOfDates(newYear + days, CProjectDate(date.GetYear(), 12, 31), orvane::daysPerWeek, dayTypeID);
}

// Where dates end, a step further leads nowhere.
void CCalendar::setDayTypeOfDates(CProjectDate const & first, CProjectDate const & last, int step,
                                  CCalendarDayTypeID const & dayTypeID)
{
    CCalendarDayTypeID const wanted(dayTypeID);
    CProjectDate previous = first;
    for (CProjectDate date = first; date == first || (date > previous && date <= last); date += step)
    {
        setDayTypeOfSelectedDate(date, wanted);
        previous = date;
    }
}

bool CCalendar::editCalendarDayType(CCalendarDayType const & dayType)
{
    if (!inUse.getValue()) return false;
    if (dayType.isNormal() && !normalDayInUse.getValue())
    {
        setNormalDayInUse(true);
        CCalendarDayType own(dayType);
        own.setID(getNormalDay().getID());
        return editCalendarDayType(own);
    }
    bool const found = dayTypes.changeElement(dayType);
    if (found) contentChanged();
    return found;
}

void CCalendar::copyFromMasterCalendar()
{
    CCalendar const & master = getMasterCalendar();
    if (isMaster(master)) return;
    CCalendarID const ownID(id);
    *this = master;
    setID(ownID);
    setNormalDayInUse(false);
    setInUse(false);
}
