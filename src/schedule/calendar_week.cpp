#include "schedule/calendar_week.h"

#include "values/record_impl.h"

namespace
{

// Its identity takes no part in replaying, since nobody can tell when it is first asked for.
CCalendarDayTypeID const & noDayType()
{
    static CCalendarDayTypeID const id = []
    {
        CCalendarDayTypeID fresh{orvane::nullID};
        _GUID guid;
        CoCreateGuid(&guid);
        fresh.setGUID(guid);
        return fresh;
    }();
    return id;
}

}  // namespace

template <class Visit>
void CCalendarWeek::describe(Visit && visit)
{
    visit("day0", &CCalendarWeek::sunday);
    visit("day1", &CCalendarWeek::monday);
    visit("day2", &CCalendarWeek::tuesday);
    visit("day3", &CCalendarWeek::wednesday);
    visit("day4", &CCalendarWeek::thursday);
    visit("day5", &CCalendarWeek::friday);
    visit("day6", &CCalendarWeek::saturday);
}

template class orvane::CRecord<CCalendarWeek>;

CCalendarDayTypeID CCalendarWeek::*CCalendarWeek::fieldOf(int day)
{
    CCalendarDayTypeID CCalendarWeek::*found = nullptr;
    int each = 1;
    describe([&](char const *, auto field) { found = each++ == day ? field : found; });
    return found;
}

CCalendarDayTypeID const & CCalendarWeek::getDay(int day) const
{
    auto const field = fieldOf(day);
    return field ? this->*field : noDayType();
}

void CCalendarWeek::setDay(int day, CCalendarDayTypeID const & dayTypeID)
{
    if (auto const field = fieldOf(day)) this->*field = dayTypeID;
}

void CCalendarWeek::Serialize(CProjectArchive & archive)
{
    CRecord::Serialize(archive);
    changed = true;
}

void CCalendarWeek::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("CalendarWeek")) return;
    exchangeElement(archive, "CalendarWeek");
    // Documents have what follows one level further in.
    archive.indent();
}
