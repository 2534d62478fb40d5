#include "model/task_baseline_data.h"

#include "model/task.h"
#include "values/record_impl.h"

template <class Visit>
void CTaskBaselineData::describe(Visit && visit)
{
    visit("baselineStartTime", &CTaskBaselineData::startTime);
    visit("baselineDuration", &CTaskBaselineData::duration);
    visit("baselineFinishTime", &CTaskBaselineData::finishTime);
    visit("baselineEquipmentCost", &CTaskBaselineData::equipmentCost);
    visit("baselineHumanCost", &CTaskBaselineData::humanCost);
    visit("baselineLocationCost", &CTaskBaselineData::locationCost);
    visit("baselineMaterialCost", &CTaskBaselineData::materialCost);
    visit("baselineMitigatedRiskCost", &CTaskBaselineData::mitigatedRiskCost);
    visit("baselineUnmitigatedRiskCost", &CTaskBaselineData::unmitigatedRiskCost);
    visit("baselineTaskCost", &CTaskBaselineData::taskCost);
}

template class orvane::CRecord<CTaskBaselineData>;

void CTaskBaselineData::storeBaselineData(CTask const & task)
{
    CCostTotalType const budgeted(CCostTotalType::Budgeted);
    startTime = task.getStartTime();
    duration = task.getDurationToEndOfUnmitigatedRisk();
    finishTime = task.getEndOfUnmitigatedRisk();
    equipmentCost = task.getEquipmentResourceCostsTotal(budgeted);
    humanCost = task.getHumanResourceCostsTotal(budgeted);
    locationCost = task.getLocationResourceCostsTotal(budgeted);
    materialCost = task.getMaterialResourceCostsTotal(budgeted);
    mitigatedRiskCost = task.getMitigatedRiskCostsTotal(budgeted);
    unmitigatedRiskCost = task.getUnmitigatedRiskCostsTotal(budgeted);
    taskCost = task.getTaskCostsTotal(budgeted);
}

double CTaskBaselineData::getTotalCost() const
{
    double total = 0.0;
    for (CProjectDouble const * cost :
         {&equipmentCost, &humanCost, &locationCost, &materialCost, &mitigatedRiskCost, &unmitigatedRiskCost, &taskCost})
        if (cost->isValid()) total += cost->getValue();
    return total;
}

void CTaskBaselineData::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("TaskBaseLine")) return;
    exchangeElement(archive, "TaskBaseLine");
}
