#include "schedule/calendar_exception.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CCalendarException::describe(Visit && visit)
{
    visit("date", &CCalendarException::date);
    visit("dayTypeID", &CCalendarException::dayTypeID);
}

template class orvane::CRecord<CCalendarException>;

CCalendarException::CCalendarException(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID)
    : date(date), dayTypeID(dayTypeID)
{
}

CCalendarExceptionArray::CCalendarExceptionArray(CCalendarExceptionArray const & other)
    : CTypedArray(other), IProjectXMLTagProcessor(other)
{
    changed = other.isSorted();
}

CCalendarExceptionArray & CCalendarExceptionArray::operator=(CCalendarExceptionArray const & other)
{
    CTypedArray::operator=(other);
    if (this != &other) changed = other.isSorted();
    return *this;
}

void CCalendarExceptionArray::sortUnsorted() const
{
    if (!IsEmpty()) findByDate(GetAt(0).getDate());
}

int CCalendarExceptionArray::findByDate(CProjectDate const & date) const
{
    if (!IsEmpty() && !isSorted()) changed = true;
    return findByKey(date);
}

void CCalendarException::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "CalendarException");
}

void CCalendarExceptionArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "CalendarDays", "CalendarDay");
}
