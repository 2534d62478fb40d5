#include "model/link.h"

#include "model/task.h"
#include "schedule/calendar.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CLink::describe(Visit && visit)
{
    visit("id", &CLink::id);
    visit("upstreamTaskID", &CLink::upstreamTaskID);
    visit("type", &CLink::type);
    visit("status", &CLink::status);
    visit("delay", &CLink::delay);
}

template class orvane::CRecord<CLink>;

CLink::CLink()
{
    ++s_created;
}

CLink::CLink(CTaskID const & upstreamTaskID, CLinkType const & type) : upstreamTaskID(upstreamTaskID), type(type)
{
    ++s_created;
}

CLink::CLink(CLink const & other)
    : CRecord(other),
      distance(other.distance),
      id(other.id),
      upstreamTaskID(other.upstreamTaskID),
      type(other.type),
      status(other.status),
      delay(other.delay)
{
    ++s_created;
}

CLink::~CLink()
{
    ++s_deleted;
}

namespace
{

// What the four types of link tie together, at either end.
bool leavesFinish(CLinkType const & type)
{
    int const number = type.getEquivalentValue();
    return number == CLinkType::FinishToStart || number == CLinkType::FinishToFinish;
}

bool arrivesAtFinish(CLinkType const & type)
{
    int const number = type.getEquivalentValue();
    return number == CLinkType::StartToFinish || number == CLinkType::FinishToFinish;
}

}  // namespace

CProjectTime CLink::getEarliestStartOfDownstreamTask(CTask const & upstream, CTask const & downstream) const
{
    CCalendar const & calendar = downstream.getCalendar();
    CProjectTime const allowed = (leavesFinish(type) ? upstream.getEndOfStoredRisk() : upstream.getStartTime()) + delay;
    if (!arrivesAtFinish(type)) return calendar.getNextValidStartTime(allowed);
    return calendar.subtractDurationFromTime(calendar.getNextValidEndTime(allowed),
                                             downstream.getDurationToEndOfStoredRisk(), false);
}

CProjectTime CLink::getLatestStartOfUpstreamTask(CTask const & upstream, CTask const & downstream) const
{
    CCalendar const & calendar = upstream.getCalendar();
    CProjectTime const needed =
        (arrivesAtFinish(type) ? downstream.getEndOfStoredRisk() : downstream.getStartTime()) - delay;
    CProjectDuration const length = upstream.getDurationToEndOfStoredRisk();
    // A link that leaves the start binds the start itself, whatever the length of the task.
    if (!leavesFinish(type) || length == CProjectDuration(0)) return calendar.getPrevValidStartTime(needed);
    return calendar.subtractDurationFromTime(calendar.getPrevValidEndTime(needed), length, false);
}

// ---- in the document -------------------------------------------------------------------------------

void CLink::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "Link ", " />");
}

void CLinkArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Links", "Link");
}
