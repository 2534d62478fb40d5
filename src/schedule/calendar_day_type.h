#pragma once

#include "values/date_time.h"
#include "values/duration.h"
#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/scalars.h"
#include "values/time_of_day_span_array.h"
#include "values/typed_array.h"

// A kind of day in a calendar: what it is called, whether it is worked, and in which blocks of time.
//
// Blocks are to ascend and not to overlap; nothing here sorts or checks them, and whatever their order
// every question has a bounded answer. A moment that two touching blocks share belongs to the earlier. A
// start is valid in start <= t < end, an end in start < t <= end, and time goes in whole minutes. Where no
// time answers a question, the answer is a time of day that is not valid.
class CCalendarDayType : public orvane::CRecord<CCalendarDayType>, public IProjectXMLTagProcessor
{
public:
    // A normal working day without blocks, under a fresh identifier or a given one.
    CCalendarDayType();
    explicit CCalendarDayType(CCalendarDayTypeID const & id);

    CCalendarDayTypeID const & getID() const { return id; }
    void setID(CCalendarDayTypeID const & value) { id = value; }
    CProjectString const & getDescription() const { return description; }
    void setDescription(CString const & text) { description = text; }
    CProjectColor const & getColor() const { return color; }
    void setColor(CProjectColor const & value) { color = value; }
    CDayType const & getDayType() const { return dayType; }
    void setDayType(CDayType const & value) { dayType = value; }
    bool isNormal() const;
    // Whether calendars count the day's blocks as working time.
    bool isWorking() const;

    CProjectTimeOfDaySpanArray const & getTimeOfDaySpanArray() const { return timeBlocks; }
    // Ignored when there are more blocks than a day type may have.
    void setTimeOfDaySpanArray(CProjectTimeOfDaySpanArray const & blocks);
    int getNumberOfTimeBlocks() const { return timeBlocks.GetSize(); }
    // A new span for an index out of range.
    CProjectTimeOfDaySpan getTimeBlock(int index) const;
    // Fills up with new spans below the index; an index that no day type may have is ignored.
    void setTimeBlock(int index, CProjectTimeOfDaySpan const & block);
    void deleteTimeBlock(int index);
    void clearTimeBlocks();

    // The start of the first block and the end of the last; not valid without blocks.
    CProjectTimeOfDay getStartTime() const;
    CProjectTimeOfDay getEndTime() const;
    // The sum of all blocks; a block that ends before it starts counts negative.
    CProjectDuration getWorkingDuration() const;
    // The position of the first block that holds the time, both its ends included, or -1.
    int findTimeBlock(CProjectTimeOfDay const & time) const;

    // Never on a non-working day.
    bool isValidStartTime(CProjectTimeOfDay const & time) const;
    bool isValidEndTime(CProjectTimeOfDay const & time) const;
    // The nearest valid start or end within the day, the time itself included.
    CProjectTimeOfDay getNextValidStartTime(CProjectTimeOfDay const & time) const;
    CProjectTimeOfDay getNextValidEndTime(CProjectTimeOfDay const & time) const;
    CProjectTimeOfDay getPrevValidStartTime(CProjectTimeOfDay const & time) const;
    CProjectTimeOfDay getPrevValidEndTime(CProjectTimeOfDay const & time) const;

    // The time that much working time later or earlier on the same day. Not valid from a time in no block,
    // and when the day does not hold the duration.
    CProjectTimeOfDay addDurationToTime(CProjectTimeOfDay const & time, CProjectDuration const & duration) const;
    CProjectTimeOfDay subtractDurationFromTime(CProjectTimeOfDay const & time, CProjectDuration const & duration) const;
    // The working time between two times in any order, never negative. Times outside the day count as its
    // nearest end; a time in a gap between two blocks gives zero.
    CProjectDuration subtractTimeFromTime(CProjectTimeOfDay const & a, CProjectTimeOfDay const & b) const;

    // For going round and round through the blocks: from a gap, or from after the last block, to the start
    // of the next block; other times stay. And the mirror image.
    CProjectTimeOfDay getStartOfNextTimeBlockInRotation(CProjectTimeOfDay const & time) const;
    CProjectTimeOfDay getEndOfPreviousTimeBlockInRotation(CProjectTimeOfDay const & time) const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CCalendarDayType>;
    template <class Visit>
    static void describe(Visit && visit);

    CCalendarDayTypeID id;
    CProjectString description;
    CProjectColor color;
    CDayType dayType;
    CProjectTimeOfDaySpanArray timeBlocks;
};

extern template class orvane::CRecord<CCalendarDayType>;

class CCalendarDayTypeArray : public orvane::CIdentifiedArray<CCalendarDayTypeArray, CCalendarDayType>,
                              public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
