#include "schedule/calendar_day_type.h"

#include "schedule/working_time_day.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"

using orvane::Clock;
using orvane::CWorkingDay;
using orvane::Direction;
using orvane::Edge;

namespace
{

constexpr int maxTimeBlocks = 8;
constexpr unsigned long newColor = 0xCCFF66;

CProjectTimeOfDay nearestValid(CCalendarDayType const & dayType, CProjectTimeOfDay const & time, Edge edge,
                               Direction direction)
{
    return CWorkingDay(dayType.getTimeOfDaySpanArray()).nearestValid(Clock::of(time), edge, direction).timeOfDay();
}

CProjectTimeOfDay moved(CCalendarDayType const & dayType, CProjectTimeOfDay const & time,
                        CProjectDuration const & duration, Direction direction)
{
    CWorkingDay const day(dayType.getTimeOfDaySpanArray());
    return day.moved(Clock::of(time), duration.GetTotalMinutes(), direction).timeOfDay();
}

}  // namespace

template <class Visit>
void CCalendarDayType::describe(Visit && visit)
{
    visit("ID", &CCalendarDayType::id);
    visit("description", &CCalendarDayType::description);
    visit("color", &CCalendarDayType::color);
    visit("daytype", &CCalendarDayType::dayType);
    visit("timeBlocks", &CCalendarDayType::timeBlocks);
}

template class orvane::CRecord<CCalendarDayType>;

CCalendarDayType::CCalendarDayType() : CCalendarDayType(CCalendarDayTypeID()) {}

CCalendarDayType::CCalendarDayType(CCalendarDayTypeID const & id)
    : id(id), color(newColor), dayType(CDayType::NormalWorkingDay)
{
}

bool CCalendarDayType::isNormal() const
{
    return dayType == CDayType(CDayType::NormalWorkingDay);
}

bool CCalendarDayType::isWorking() const
{
    return dayType != CDayType(CDayType::NonWorkingDay);
}

// ---- the blocks ---------------------------------------------------------------------------------

void CCalendarDayType::setTimeOfDaySpanArray(CProjectTimeOfDaySpanArray const & blocks)
{
    if (blocks.GetSize() <= maxTimeBlocks) timeBlocks = blocks;
}

CProjectTimeOfDaySpan CCalendarDayType::getTimeBlock(int index) const
{
    bool const exists = 0 <= index && index < timeBlocks.GetSize();
    return exists ? timeBlocks[index] : CProjectTimeOfDaySpan();
}

void CCalendarDayType::setTimeBlock(int index, CProjectTimeOfDaySpan const & block)
{
    if (index < 0 || index >= maxTimeBlocks) return;
    timeBlocks.SetAtGrow(index, block);
    changed = true;
}

void CCalendarDayType::deleteTimeBlock(int index)
{
    timeBlocks.RemoveAt(index);
}

void CCalendarDayType::clearTimeBlocks()
{
    timeBlocks.RemoveAll();
}

CProjectTimeOfDay CCalendarDayType::getStartTime() const
{
    return timeBlocks.IsEmpty() ? CProjectTimeOfDay() : timeBlocks[0].getStart();
}

CProjectTimeOfDay CCalendarDayType::getEndTime() const
{
    return timeBlocks.IsEmpty() ? CProjectTimeOfDay() : timeBlocks[timeBlocks.GetUpperBound()].getEnd();
}

// ---- arithmetic within the day --------------------------------------------------------------------

CProjectDuration CCalendarDayType::getWorkingDuration() const
{
    return orvane::durationOfMinutes(CWorkingDay(timeBlocks).getMinutes());
}

int CCalendarDayType::findTimeBlock(CProjectTimeOfDay const & time) const
{
    return CWorkingDay(timeBlocks).findBlock(Clock::of(time));
}

bool CCalendarDayType::isValidStartTime(CProjectTimeOfDay const & time) const
{
    return isWorking() && CWorkingDay(timeBlocks).isValid(Clock::of(time), Edge::start);
}

bool CCalendarDayType::isValidEndTime(CProjectTimeOfDay const & time) const
{
    return isWorking() && CWorkingDay(timeBlocks).isValid(Clock::of(time), Edge::end);
}

CProjectTimeOfDay CCalendarDayType::getNextValidStartTime(CProjectTimeOfDay const & time) const
{
    return nearestValid(*this, time, Edge::start, Direction::forward);
}

CProjectTimeOfDay CCalendarDayType::getNextValidEndTime(CProjectTimeOfDay const & time) const
{
    return nearestValid(*this, time, Edge::end, Direction::forward);
}

CProjectTimeOfDay CCalendarDayType::getPrevValidStartTime(CProjectTimeOfDay const & time) const
{
    return nearestValid(*this, time, Edge::start, Direction::backward);
}

CProjectTimeOfDay CCalendarDayType::getPrevValidEndTime(CProjectTimeOfDay const & time) const
{
    return nearestValid(*this, time, Edge::end, Direction::backward);
}

CProjectTimeOfDay CCalendarDayType::addDurationToTime(CProjectTimeOfDay const & time,
                                                      CProjectDuration const & duration) const
{
    return moved(*this, time, duration, Direction::forward);
}

CProjectTimeOfDay CCalendarDayType::subtractDurationFromTime(CProjectTimeOfDay const & time,
                                                             CProjectDuration const & duration) const
{
    return moved(*this, time, duration, Direction::backward);
}

CProjectDuration CCalendarDayType::subtractTimeFromTime(CProjectTimeOfDay const & a, CProjectTimeOfDay const & b) const
{
    return orvane::durationOfMinutes(CWorkingDay(timeBlocks).between(Clock::of(a), Clock::of(b)));
}

CProjectTimeOfDay CCalendarDayType::getStartOfNextTimeBlockInRotation(CProjectTimeOfDay const & time) const
{
    return CWorkingDay(timeBlocks).rotated(Clock::of(time), Direction::forward).timeOfDay();
}

CProjectTimeOfDay CCalendarDayType::getEndOfPreviousTimeBlockInRotation(CProjectTimeOfDay const & time) const
{
    return CWorkingDay(timeBlocks).rotated(Clock::of(time), Direction::backward).timeOfDay();
}

// ---- the document ---------------------------------------------------------------------------------

void CCalendarDayType::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("CalendarDayType")) return exchangeChildren(archive);
    exchangeElementWithChildren(archive, "CalendarDayType");
    if (archive.isLoading()) archive.setTagProcessor(this);
}

void CCalendarDayTypeArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "CalendarDayTypes", "CalendarDayType");
}
