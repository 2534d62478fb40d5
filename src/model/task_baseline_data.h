#pragma once

#include "platform/project_xml_archive.h"
#include "values/date_time.h"
#include "values/duration.h"
#include "values/record.h"
#include "values/scalars.h"

class CTask;

// A task's dates and budgeted totals as they stood when its baseline was set. Empty before; money is in the
// project's currency.
class CTaskBaselineData : public orvane::CRecord<CTaskBaselineData>, public IProjectXMLTagProcessor
{
public:
    // Takes the present figures of the task, all costs as budgeted.
    void storeBaselineData(CTask const & task);

    CProjectTime const & getStartTime() const { return startTime; }
    // Working time to the end of unmitigated risk.
    CProjectDuration const & getDuration() const { return duration; }
    CProjectTime const & getFinishTime() const { return finishTime; }
    CProjectDouble const & getEquipmentCost() const { return equipmentCost; }
    CProjectDouble const & getHumanCost() const { return humanCost; }
    CProjectDouble const & getLocationCost() const { return locationCost; }
    CProjectDouble const & getMaterialCost() const { return materialCost; }
    CProjectDouble const & getMitigatedRiskCost() const { return mitigatedRiskCost; }
    CProjectDouble const & getUnmitigatedRiskCost() const { return unmitigatedRiskCost; }
    CProjectDouble const & getTaskCost() const { return taskCost; }
    // The sum of the seven costs; one that was never stored counts as 0.
    double getTotalCost() const;

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CTaskBaselineData>;
    template <class Visit>
    static void describe(Visit && visit);

    CProjectTime startTime;
    CProjectDuration duration;
    CProjectTime finishTime;
    CProjectDouble equipmentCost;
    CProjectDouble humanCost;
    CProjectDouble locationCost;
    CProjectDouble materialCost;
    CProjectDouble mitigatedRiskCost;
    CProjectDouble unmitigatedRiskCost;
    CProjectDouble taskCost;
};

extern template class orvane::CRecord<CTaskBaselineData>;
