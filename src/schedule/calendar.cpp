#include "schedule/calendar.h"

#include "schedule/working_time.h"
#include "values/record_impl.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>
#include <vector>

using orvane::CWorkingDay;
using orvane::CWorkingTime;
using orvane::Direction;
using orvane::Edge;

namespace
{

constexpr char const * fixedCalendarID = "1e6717b6e37a4046a86ed5dc457a2de6";
constexpr char const * fixedNormalDayID = "c7ea95b1c2f27d4886f017d37bbd5484";
constexpr char const * fixedNonWorkingDayID = "6c231cb1ae9b9d4ab47820cbaaf96c45";
constexpr unsigned long normalDayColor = 0xC8D0D4;
constexpr unsigned long nonWorkingDayColor = 0x808080;

template <class ID>
ID unissued()
{
    ID id{orvane::nullID};
    _GUID guid;
    CoCreateGuid(&guid);
    id.setGUID(guid);
    return id;
}

CProjectTime timeOf(std::optional<std::int64_t> localMinutes)
{
    return localMinutes ? CProjectTime::fromLocalMinutes(*localMinutes) : CProjectTime();
}

}  // namespace

struct CCalendar::Table
{
    std::uint64_t content;
    std::uint64_t masterContent;
    CWorkingTime time;
};

template <class Visit>
void CCalendar::describe(Visit && visit)
{
    visit("id", &CCalendar::id);
    visit("week", &CCalendar::week);
    visit("exceptions", &CCalendar::exceptions);
    visit("dayTypes", &CCalendar::dayTypes);
    visit("inUse", &CCalendar::inUse);
    visit("normalDayInUse", &CCalendar::normalDayInUse);
}

template class orvane::CRecord<CCalendar>;

// ---- construction and fields ----------------------------------------------------------------------

CCalendar::CCalendar()
{
    clear(false);
}

CCalendar::CCalendar(Unissued) : id(unissued<CCalendarID>()), defaultDayType(unissued<CCalendarDayTypeID>())
{
    build(CCalendarDayType(unissued<CCalendarDayTypeID>()), CCalendarDayType(unissued<CCalendarDayTypeID>()));
}

CCalendar::CCalendar(CCalendar const & other) = default;

CCalendar & CCalendar::operator=(CCalendar const & other)
{
    CRecord::operator=(other);
    if (!project) project = other.project;
    id = other.id;
    week = other.week;
    exceptions = other.exceptions;
    dayTypes = other.dayTypes;
    inUse = other.inUse;
    normalDayInUse = other.normalDayInUse;
    content = other.content;
    table = other.table;
    return *this;
}

CCalendar::~CCalendar() = default;

void CCalendar::clear(bool fixedIDs)
{
    CCalendarDayType normalDay;
    CCalendarDayType nonWorkingDay;
    if (fixedIDs)
    {
        CCalendarDayTypeID dayTypeID{orvane::nullID};
        id.setGUID(CString(fixedCalendarID));
        dayTypeID.setGUID(CString(fixedNormalDayID));
        normalDay.setID(dayTypeID);
        dayTypeID.setGUID(CString(fixedNonWorkingDayID));
        nonWorkingDay.setID(dayTypeID);
    }
    build(std::move(normalDay), std::move(nonWorkingDay));
}

void CCalendar::build(CCalendarDayType normalDay, CCalendarDayType nonWorkingDay)
{
    normalDay.setDescription("Normal Working Day");
    normalDay.setColor(CProjectColor(normalDayColor));
    normalDay.setTimeBlock(0, CProjectTimeOfDaySpan(CProjectTimeOfDay(9, 0), CProjectTimeOfDay(17, 0)));
    nonWorkingDay.setDescription("Non-Working Day");
    nonWorkingDay.setColor(CProjectColor(nonWorkingDayColor));
    nonWorkingDay.setDayType(CDayType(CDayType::NonWorkingDay));

    dayTypes.RemoveAll();
    dayTypes.Add(normalDay);
    dayTypes.Add(nonWorkingDay);
    exceptions.RemoveAll();
    for (int day = 1; day <= orvane::daysPerWeek; ++day)
    {
        bool const isWeekend = day == 1 || day == orvane::daysPerWeek;
        week.setDay(day, isWeekend ? nonWorkingDay.getID() : normalDay.getID());
    }
    inUse = CProjectBool(true);
    normalDayInUse = CProjectBool(true);
    contentChanged();
}

CCalendar const & CCalendar::getStandardCalendar()
{
    static CCalendar const standard{Unissued{}};
    return standard;
}

bool CCalendar::setChanged()
{
    bool const idChanged = id.getChanged();
    id.resetChanged();
    CRecord::setChanged();
    if (idChanged) id.touch();
    return changed;
}

void CCalendar::setID(CCalendarID const & value)
{
    id = value;
    contentChanged();
}

void CCalendar::setCalendarWeek(CCalendarWeek const & value)
{
    week = value;
    contentChanged();
}

void CCalendar::setCalendarDayExceptions(CCalendarExceptionArray const & value)
{
    exceptions = value;
    contentChanged();
}

void CCalendar::setCalendarDayTypes(CCalendarDayTypeArray const & value)
{
    dayTypes = value;
    contentChanged();
}

void CCalendar::addCalendarDayType(CCalendarDayType const & dayType)
{
    dayTypes.Add(dayType);
    contentChanged();
}

void CCalendar::setNormalDayInUse(bool flag)
{
    normalDayInUse = CProjectBool(flag);
    contentChanged();
}

void CCalendar::postSerialize(CProject * value)
{
    project = value;
    contentChanged();
}

// ---- which day type -------------------------------------------------------------------------------

CCalendarDayType const * CCalendar::findDayType(CCalendarDayTypeID const & dayTypeID) const
{
    int const found = dayTypes.findByID(dayTypeID);
    return found < 0 ? nullptr : &dayTypes[found];
}

CCalendarDayType const * CCalendar::findException(CProjectDate const & date) const
{
    int const found = exceptions.findByDate(date);
    return found < 0 ? nullptr : findDayType(exceptions[found].getCalendarDayTypeID());
}

CCalendarDayType const * CCalendar::findMasterException(CProjectDate const & date) const
{
    CCalendar const & master = getMasterCalendar();
    return isMaster(master) ? nullptr : master.findException(date);
}

CCalendarDayType const & CCalendar::getDayType(CProjectDate const & date) const
{
    if (CCalendarDayType const * overriding = findMasterException(date)) return *overriding;
    CCalendarDayType const * exception = findException(date);
    return exception ? inForce(*exception) : getWeekDayType(date.GetDayOfWeek());
}

CCalendarDayType const & CCalendar::getWeekDayType(int day) const
{
    CCalendarDayType const * dayType = findDayType(week.getDay(day));
    return dayType ? inForce(*dayType) : defaultDayType;
}

CCalendarDayType const & CCalendar::inForce(CCalendarDayType const & own) const
{
    bool const borrows = own.isNormal() && !normalDayInUse.getValue();
    return borrows ? getMasterCalendar().getOwnNormalDay() : own;
}

CCalendarDayType const & CCalendar::getOwnNormalDay() const
{
    if (!normalDayInUse.getValue()) return defaultDayType;
    for (CCalendarDayType const & dayType : dayTypes)
        if (dayType.isNormal()) return dayType;
    return defaultDayType;
}

CCalendarDayType const & CCalendar::getNormalDay() const
{
    CCalendar const & master = getMasterCalendar();
    bool const borrows = !normalDayInUse.getValue() && !isMaster(master);
    return borrows ? master.getOwnNormalDay() : getOwnNormalDay();
}

bool CCalendar::isDayAnException(CProjectDate const & date) const
{
    return findException(date) != nullptr;
}

bool CCalendar::canEditDayType(CProjectDate const & date) const
{
    return !findMasterException(date) && getDayType(date).isWorking();
}

// ---- working time ---------------------------------------------------------------------------------

CWorkingTime const & CCalendar::workingTime() const
{
    CCalendar const & master = getMasterCalendar();
    // As every lookup of a date would; flags tell the difference.
    exceptions.sort();
    master.exceptions.sort();
    if (!table || table->content != content || table->masterContent != master.content)
        table = std::make_shared<Table const>(Table{content, master.content, makeWorkingTime(master)});
    return table->time;
}

CWorkingTime CCalendar::makeWorkingTime(CCalendar const & master) const
{
    std::vector<CWorkingDay> kinds;
    std::map<CCalendarDayType const *, std::size_t> kindOf;
    auto const kind = [&](CCalendarDayType const & dayType)
    {
        auto const [place, isNew] = kindOf.emplace(&dayType, kinds.size());
        if (isNew) kinds.push_back(dayType.isWorking() ? CWorkingDay(dayType.getTimeOfDaySpanArray()) : CWorkingDay());
        return place->second;
    };

    std::array<std::size_t, orvane::daysPerWeek> weekKinds;
    for (std::size_t day = 0; day < weekKinds.size(); ++day)
        weekKinds[day] = kind(getWeekDayType(static_cast<int>(day) + 1));

    std::vector<std::int64_t> days;
    for (CCalendarException const & exception : exceptions) days.push_back(exception.getDate().getDayNumber());
    for (CCalendarException const & exception : master.exceptions) days.push_back(exception.getDate().getDayNumber());
    std::sort(days.begin(), days.end());
    days.erase(std::unique(days.begin(), days.end()), days.end());

    // An exception that turns out to decide nothing does no harm: its day has the week's kind.
    std::vector<CWorkingTime::Exception> special;
    for (std::int64_t day : days) special.push_back({day, kind(getDayType(CProjectDate::fromDayNumber(day)))});
    return CWorkingTime(std::move(kinds), weekKinds, special);
}

CProjectTime CCalendar::moved(CProjectTime const & time, CProjectDuration const & duration, Direction direction,
                              bool asEndTime) const
{
    if (!time.isValid()) return {};
    Edge const purpose = asEndTime ? Edge::end : Edge::start;
    return timeOf(workingTime().moved(time.getLocalMinutes(), duration.GetTotalMinutes(), direction, purpose));
}

CProjectTime CCalendar::addDurationToTime(CProjectTime const & time, CProjectDuration const & duration,
                                          bool asEndTime) const
{
    return moved(time, duration, Direction::forward, asEndTime);
}

CProjectTime CCalendar::subtractDurationFromTime(CProjectTime const & time, CProjectDuration const & duration,
                                                 bool asEndTime) const
{
    return moved(time, duration, Direction::backward, asEndTime);
}

CProjectDuration CCalendar::subtractTimeFromTime(CProjectTime const & a, CProjectTime const & b) const
{
    if (!a.isValid() || !b.isValid()) return CProjectDuration(0);
    auto const & [from, to] = std::minmax(a, b);
    return orvane::durationOfMinutes(workingTime().between(from.getLocalMinutes(), to.getLocalMinutes()));
}

bool CCalendar::isValidStartTime(CProjectTime const & time) const
{
    return time.isValid() && workingTime().isValid(time.getLocalMinutes(), Edge::start);
}

bool CCalendar::isValidEndTime(CProjectTime const & time) const
{
    return time.isValid() && workingTime().isValid(time.getLocalMinutes(), Edge::end);
}

CProjectTime CCalendar::nearestValid(CProjectTime const & time, Edge edge, Direction direction) const
{
    if (!time.isValid()) return {};
    return timeOf(workingTime().nearestValid(time.getLocalMinutes(), edge, direction));
}

CProjectTime CCalendar::getNextValidStartTime(CProjectTime const & time) const
{
    return nearestValid(time, Edge::start, Direction::forward);
}

CProjectTime CCalendar::getNextValidEndTime(CProjectTime const & time) const
{
    return nearestValid(time, Edge::end, Direction::forward);
}

CProjectTime CCalendar::getPrevValidStartTime(CProjectTime const & time) const
{
    return nearestValid(time, Edge::start, Direction::backward);
}

CProjectTime CCalendar::getPrevValidEndTime(CProjectTime const & time) const
{
    return nearestValid(time, Edge::end, Direction::backward);
}

void CCalendar::Serialize(CProjectArchive & archive)
{
    archive.exchange(inUse, id);
    if (inUse.getValue()) archive.exchange(week, exceptions, dayTypes, normalDayInUse);
    if (archive.IsLoading()) contentChanged();
}

// Nobody asks for working time between the elements of a calendar that is being read: its exceptions and day types
// arrive in their arrays after this calendar was told of them.
void CCalendar::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.isLoading()) contentChanged();
    if (archive.readsAnother("Calendar"))
    {
        if (inUse.getValue()) exchangeChildren(archive);
        return;
    }
    archive.startEntity("Calendar");
    inUse.xmlSerialize(archive, "inUse");
    id.xmlSerialize(archive, "ID");
    if (inUse.getValue()) normalDayInUse.xmlSerialize(archive, "normalDayInUse");
    archive.out(">");
    if (inUse.getValue()) exchangeChildren(archive);
    archive.endEntity("</Calendar>");
    if (archive.isLoading()) archive.setTagProcessor(this);
}
