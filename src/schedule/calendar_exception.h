#pragma once

#include "values/date_time.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/typed_array.h"

// On this date the calendar's day type is that one instead of the week's.
class CCalendarException : public orvane::CRecord<CCalendarException>, public IProjectXMLTagProcessor
{
public:
    CCalendarException() = default;
    CCalendarException(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);

    CProjectDate const & getDate() const { return date; }
    void setDate(CProjectDate const & value) { date = value; }
    CCalendarDayTypeID const & getCalendarDayTypeID() const { return dayTypeID; }
    void setCalendarDayTypeID(CCalendarDayTypeID const & value) { dayTypeID = value; }

    // Reads whatever element it is given.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCalendarException>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectDate date;
    CCalendarDayTypeID dayTypeID{orvane::nullID};
};

extern template class orvane::CRecord<CCalendarException>;

// The exceptions of a calendar. Unlike its kin this array counts being sorted as a change, and a copy is
// changed when its source was sorted. Files do not show it, but what asks for the flags does.
class CCalendarExceptionArray
    : public orvane::CTypedArray<CCalendarExceptionArray, CCalendarException, &CCalendarException::getDate>,
      public IProjectXMLTagProcessor
{
public:
    CCalendarExceptionArray() = default;
    CCalendarExceptionArray(CCalendarExceptionArray const & other);
    CCalendarExceptionArray & operator=(CCalendarExceptionArray const & other);

    // The position of an exception on the date, compared by its stored moment, or -1.
    int findByDate(CProjectDate const & date) const;
    // Sorts, as a lookup would; nothing to do when that has been done.
    void sort() const
    {
        if (!isSorted()) sortUnsorted();
    }

    // Exceptions are read under another name than they are written: "CalendarDay".
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    void sortUnsorted() const;
};
