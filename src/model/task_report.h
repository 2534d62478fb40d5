#pragma once

#include "model/cost.h"
#include "values/date_time.h"
#include "values/duration.h"

// Something that delayed or advanced a started task, usually a risk that came true, whose time it uses up.
class CTaskReport : public orvane::CRecord<CTaskReport>, public IProjectXMLTagProcessor
{
public:
    CTaskReportID const & getID() const { return id; }
    void setID(CTaskReportID const & value) { id = value; }
    // NULL for a report on no risk.
    CRiskID const & getRiskID() const { return riskID; }
    void setRiskID(CRiskID const & value) { riskID = value; }
    CProjectDate const & getDate() const { return date; }
    void setDate(CProjectDate const & value) { date = value; }
    // Working time.
    CProjectDuration const & getDuration() const { return duration; }
    void setDuration(CProjectDuration const & value) { duration = value; }
    CTaskReportType const & getType() const { return type; }
    void setType(CTaskReportType const & value) { type = value; }
    CProjectString const & getComments() const { return comments; }
    void setComments(CString const & text) { comments = text; }
    CCostArray const & getCosts() const { return costs; }
    void setCosts(CCostArray const & array) { costs = array; }

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CTaskReport>;
    template <class Visit>
    static void describe(Visit && visit);

    CTaskReportID id;
    CRiskID riskID{orvane::nullID};
    CProjectDate date;
    CProjectDuration duration{0};
    CTaskReportType type{CTaskReportType::Delay};
    CProjectString comments;
    CCostArray costs;
};

extern template class orvane::CRecord<CTaskReport>;

class CTaskReportArray : public orvane::CIdentifiedArray<CTaskReportArray, CTaskReport>, public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
