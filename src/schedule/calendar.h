#pragma once

#include <cstdint>
#include <memory>

#include "schedule/calendar_day_type.h"
#include "schedule/calendar_exception.h"
#include "schedule/calendar_week.h"

class CProject;

namespace orvane
{
class CWorkingTime;
enum class Direction : int;
enum class Edge;
}  // namespace orvane

// When work is done: the arithmetic that turns a moment and a length of working time into another moment,
// and back. Every time of a task passes through it.
//
// A calendar has a week of day types and exceptions on single dates. The project's calendar is the master
// of all others: its exceptions override theirs, and a calendar whose normal day is not in use borrows the
// master's. Without a project a standard calendar (Monday to Friday, 09:00 to 17:00) stands in for it. A
// calendar with the master's identifier is the master.
//
// All arithmetic is on the clock as it stands in the calendar, in whole minutes. A time that is not valid
// gives a time that is not valid, zero or false; so does a search that leaves the years that times can
// hold. Odd calendars (blocks in disorder, no working time at all) give odd but bounded answers.
class CCalendar : public orvane::CRecord<CCalendar>, public IProjectXMLTagProcessor
{
public:
    // As clear(false) leaves it.
    CCalendar();
    // The copy belongs to the same project.
    CCalendar(CCalendar const & other);
    // Keeps the project it belongs to, if it has one.
    CCalendar & operator=(CCalendar const & other);
    ~CCalendar() override;

    // Monday to Friday, 09:00 to 17:00, no exceptions, in use. The day types have fresh identifiers, or,
    // with `fixedIDs`, they and the calendar have those by which the start of every project is recognised.
    void clear(bool fixedIDs);

    // Derives the flag from all fields but the identifier.
    bool setChanged();

    // The calendar that stands in where there is no project.
    static CCalendar const & getStandardCalendar();

    CCalendarID const & getID() const { return id; }
    void setID(CCalendarID const & value);
    CCalendarWeek const & getCalendarWeek() const { return week; }
    void setCalendarWeek(CCalendarWeek const & value);
    CCalendarExceptionArray const & getCalendarDayExceptions() const { return exceptions; }
    void setCalendarDayExceptions(CCalendarExceptionArray const & value);
    CCalendarDayTypeArray const & getCalendarDayTypes() const { return dayTypes; }
    void setCalendarDayTypes(CCalendarDayTypeArray const & value);
    void addCalendarDayType(CCalendarDayType const & dayType);
    // In force; if not, the calendars above it decide.
    CProjectBool getInUse() const { return inUse; }
    void setInUse(bool flag) { inUse = CProjectBool(flag); }
    // The calendar's own normal day counts; if not, the master's does.
    CProjectBool getNormalDayInUse() const { return normalDayInUse; }
    void setNormalDayInUse(bool flag);
    // Not owned; may be null.
    void setProject(CProject * value) { project = value; }
    // To be called after loading.
    void postSerialize(CProject * value);

    // ---- days -----------------------------------------------------------------------------------
    // The day type in force on a date, or an empty one where the calendar names none.
    CCalendarDayType const & getDayType(CProjectDate const & date) const;
    // The normal working day in force: its working duration is what a day of a duration means.
    CCalendarDayType const & getNormalDay() const;
    // Whether this calendar has an exception on the date, with a day type that exists.
    bool isDayAnException(CProjectDate const & date) const;
    // Not where the master decides, and only on a working day.
    bool canEditDayType(CProjectDate const & date) const;

    // Each gives dates a day type, by exceptions where it differs from the week's.
    void setDayTypeOfSelectedDate(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);
    // Every such day of the week, from then on without exceptions.
    void setDayTypeOfDayOfWeek(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);
    // From the Sunday before to the Saturday after.
    void setDayTypeOfSelectedWeek(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);
    void setDayTypeOfDayOfWeekOfSelectedMonth(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);
    void setDayTypeOfDayOfWeekOfSelectedYear(CProjectDate const & date, CCalendarDayTypeID const & dayTypeID);

    // Replaces the day type of the same identifier; false when there is none, or when the calendar is not
    // in use. Editing the normal day of a calendar that borrows it makes it take over its own.
    bool editCalendarDayType(CCalendarDayType const & dayType);
    // Becomes a copy of the master that is not in use and borrows its normal day. The master itself stays.
    void copyFromMasterCalendar();

    // ---- working time ---------------------------------------------------------------------------
    // `asEndTime` says whether the result is to end something (17:00) or to start it (the next morning).
    // A result of at most one minute's addition as an end, or subtraction as a start, stays where it is
    // even if it is no valid end or start, so that a milestone does not move.
    CProjectTime addDurationToTime(CProjectTime const & time, CProjectDuration const & duration, bool asEndTime) const;
    CProjectTime subtractDurationFromTime(CProjectTime const & time, CProjectDuration const & duration,
                                          bool asEndTime) const;
    // The working time between two moments in any order, never negative.
    CProjectDuration subtractTimeFromTime(CProjectTime const & a, CProjectTime const & b) const;

    bool isValidStartTime(CProjectTime const & time) const;
    bool isValidEndTime(CProjectTime const & time) const;
    // The nearest valid start or end, the time itself included.
    CProjectTime getNextValidStartTime(CProjectTime const & time) const;
    CProjectTime getNextValidEndTime(CProjectTime const & time) const;
    CProjectTime getPrevValidStartTime(CProjectTime const & time) const;
    CProjectTime getPrevValidEndTime(CProjectTime const & time) const;

    // What a calendar that is not in use holds is not stored.
    void Serialize(CProjectArchive & archive);
    // The same in a document. The exceptions in it are read under another name than they are written.
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCalendar>;
    template <class Visit>
    static void describe(Visit && visit);

    struct Unissued
    {
    };
    // With identifiers that take no part in replaying: for what is built at an unforeseeable moment.
    explicit CCalendar(Unissued);

    void build(CCalendarDayType normalDay, CCalendarDayType nonWorkingDay);

    CCalendar const & getMasterCalendar() const;
    bool isMaster(CCalendar const & master) const { return id == master.id; }

    // Null where there is none, or none with a day type that exists.
    CCalendarDayType const * findDayType(CCalendarDayTypeID const & dayTypeID) const;
    CCalendarDayType const * findException(CProjectDate const & date) const;
    CCalendarDayType const * findMasterException(CProjectDate const & date) const;
    // What the week says, from 1 for Sunday to 7 for Saturday.
    CCalendarDayType const & getWeekDayType(int day) const;
    CCalendarDayType const & getOwnNormalDay() const;
    // The day type that rules where `own` is named: borrowed if it is a normal day and those are.
    CCalendarDayType const & inForce(CCalendarDayType const & own) const;

    // The first date in any case, then in steps up to the last.
    void setDayTypeOfDates(CProjectDate const & first, CProjectDate const & last, int step,
                           CCalendarDayTypeID const & dayTypeID);

    CProjectTime moved(CProjectTime const & time, CProjectDuration const & duration, orvane::Direction direction,
                       bool asEndTime) const;
    CProjectTime nearestValid(CProjectTime const & time, orvane::Edge edge, orvane::Direction direction) const;

    // To be called after every change to what working time is derived from. Drops nothing at once, but no
    // table built before is used again, by this calendar or by those of which it is the master.
    void contentChanged() { content = ++lastContent; }
    // The tables that answer for the present content of this calendar and of its master.
    orvane::CWorkingTime const & workingTime() const;
    orvane::CWorkingTime makeWorkingTime(CCalendar const & master) const;

    CProject * project = nullptr;
    CCalendarID id;
    CCalendarWeek week;
    CCalendarExceptionArray exceptions;
    CCalendarDayTypeArray dayTypes;
    CProjectBool inUse{true};
    CProjectBool normalDayInUse{true};
    CCalendarDayType defaultDayType;

    // A number that stands for the content: two calendars with the same number have the same content, so a
    // table outlives copying, and is never taken for that of another calendar at the same address.
    static inline std::uint64_t lastContent = 0;
    std::uint64_t content = ++lastContent;
    struct Table;
    mutable std::shared_ptr<Table const> table;
};

extern template class orvane::CRecord<CCalendar>;
