#pragma once

#include "values/duration.h"
#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/typed_array.h"

class CProjectTime;
class CTask;

// One task's timing depends on another's. A link lives on its downstream task and names the upstream
// task by identifier; a link whose upstream task is gone dangles and is passed over.
class CLink : public orvane::CRecord<CLink>, public IProjectXMLTagProcessor
{
public:
    // No upstream task, a type that is not valid.
    CLink();
    CLink(CTaskID const & upstreamTaskID, CLinkType const & type);
    CLink(CLink const & other);
    CLink & operator=(CLink const &) = default;
    ~CLink() override;

    CLinkID const & getID() const { return id; }
    void setID(CLinkID const & value) { id = value; }
    CTaskID const & getUpstreamTaskID() const { return upstreamTaskID; }
    void setUpstreamTaskID(CTaskID const & value) { upstreamTaskID = value; }
    CLinkType const & getType() const { return type; }
    void setType(CLinkType const & value) { type = value; }
    CLinkStatus const & getStatus() const { return status; }
    void setStatus(CLinkStatus const & value) { status = value; }
    // The lag added to the upstream task's time: clock time, not working time.
    CProjectDuration const & getDelay() const { return delay; }
    void setDelay(CProjectDuration const & value) { delay = value; }

    // The first start of the downstream task that the link allows, on that task's calendar.
    CProjectTime getEarliestStartOfDownstreamTask(CTask const & upstream, CTask const & downstream) const;
    // The last start of the upstream task with which the downstream task can stay, on the upstream calendar.
    CProjectTime getLatestStartOfUpstreamTask(CTask const & upstream, CTask const & downstream) const;

    // How many rows above its own the upstream task stood when a walk over the whole tree last looked: where the
    // next one looks first. No part of the link's value.
    int upstreamDistance() const { return distance; }
    void setUpstreamDistance(int rows) const { distance = rows; }

    static int getCreated() { return s_created; }
    static int getDeleted() { return s_deleted; }
    static void resetCreatedAndDeletedCount() { s_created = s_deleted = 0; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CLink>;
    template <class Visit>
    static void describe(Visit && visit);

    mutable int distance = 0;
    CLinkID id;
    CTaskID upstreamTaskID{orvane::nullID};
    CLinkType type;
    CLinkStatus status{CLinkStatus::Accepted};
    CProjectDuration delay{0};

    static inline int s_created = 0;
    static inline int s_deleted = 0;
};

extern template class orvane::CRecord<CLink>;

class CLinkArray : public orvane::CIdentifiedArray<CLinkArray, CLink>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
