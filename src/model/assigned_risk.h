#pragma once

#include "model/cost.h"
#include "values/duration.h"
#include "values/sub_items.h"

class CTask;

// A task takes on a risk: how much time the risk is worth on this task, and what has been done about it. It
// lives on its task, and reports on the same risk use its time up.
class CAssignedRisk : public orvane::CRecord<CAssignedRisk>, public IProjectXMLTagProcessor
{
public:
    CAssignedRisk() = default;
    CAssignedRisk(CRiskID const & riskID, CRiskValueMode const & valueMode) : riskID(riskID), valueMode(valueMode) {}

    CAssignedRiskID const & getID() const { return id; }
    void setID(CAssignedRiskID const & value) { id = value; }
    CRiskID const & getRiskID() const { return riskID; }
    void setRiskID(CRiskID const & value) { riskID = value; }
    CRiskStatus const & getStatus() const { return status; }
    void setStatus(CRiskStatus const & value) { status = value; }
    CRiskWeight const & getWeight() const { return weight; }
    void setWeight(CRiskWeight const & value) { weight = value; }
    CRiskValueMode const & getValueMode() const { return valueMode; }
    void setValueMode(CRiskValueMode const & value) { valueMode = value; }
    // The task that holds the time of a buffered risk.
    CTaskID const & getBufferID() const { return bufferID; }
    void setBufferID(CTaskID const & value) { bufferID = value; }
    void setValuePercent(double percent) { valuePercent = percent; }
    void setValueFixed(CProjectDuration const & value) { valueFixed = value; }

    // The size on the task, in working time: as stored, or the percentage of the task's duration.
    CProjectDuration getValueFixed(CTask const & task) const;
    // The size in percent of the planned duration: as stored, or computed; 100 of a planned duration of 0.
    double getValuePercent(CTask const & task) const;
    // What the task's reports on this risk have left of it, at least 0.
    CProjectDuration getReportModifiedValueFixed(CTask const & task) const;
    double getReportModifiedValuePercent(CTask const & task) const;

    // Null when there never were any.
    CCostArray const * getCosts() const { return costs.get(); }
    // Keeps a copy, also of an empty array.
    void setCosts(CCostArray const & array) { costs.make() = array; }
    bool findCost(CCost & out, CCostID const & sought) const;
    // In place of the cost of the same identifier, or at the end; always true.
    bool addCost(CCost const & cost);
    bool removeCost(CCostID const & sought);

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CAssignedRisk>;
    template <class Visit>
    static void describe(Visit && visit);

    CAssignedRiskID id;
    CRiskID riskID{orvane::nullID};
    CRiskStatus status{CRiskStatus::Unmitigated};
    CRiskWeight weight{CRiskWeight::Medium};
    CProjectDouble valuePercent{0.0};
    CProjectDuration valueFixed{0};
    CRiskValueMode valueMode{CRiskValueMode::Percent};
    orvane::CSubItems<CCostArray, orvane::Empty::stays> costs;
    CTaskID bufferID{orvane::nullID};
};

extern template class orvane::CRecord<CAssignedRisk>;

class CAssignedRiskArray : public orvane::CIdentifiedArray<CAssignedRiskArray, CAssignedRisk>,
                           public IProjectXMLTagProcessor
{
public:
    void xmlSerialize(CProjectXMLArchive & archive) override;
};
