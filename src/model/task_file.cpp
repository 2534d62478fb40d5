#include "model/task.h"

#include "model/task_array.h"
#include "view/task_presentation.h"

void CTask::Serialize(CProjectArchive & archive)
{
    int const version = archive.fileVersion();
    if (archive.IsStoring()) dropEmptyArrays();
    else touched = everything;

    archive.exchange(fields.id, fields.assignedRisks, fields.assignedResources);
    archive.skipUntil<CTaskPresentation>(34);
    archive.exchange(fields.status, fields.riskType);
    // One version had the constraint here, and a type of task where the constraint came to stand.
    if (version == 9) archive.exchange(fields.constraint);
    archive.exchange(fields.upstreamLinks, fields.dominantCalendarID);
    archive.skipUntil<CProjectInt>(2);
    archive.exchange(fields.name, fields.plannedStartTime, fields.duration);
    exchangeSubTasks(archive);
    archive.exchange(fields.costs);
    if (archive.IsLoading()) dropEmptyArrays();
    archive.exchange(fields.actualStartTime, fields.predictedFinishTime, fields.actualFinishTime, fields.taskReports,
                     fields.baselineSet);
    if (isBaselineSet()) archive.exchange(fields.baselineData);
    archive.exchange(fields.riskBuffer);
    archive.exchangeSince(7, fields.comments, "");
    if (version == 9) archive.skip<CTaskType>();
    else if (version >= 10) archive.exchange(fields.constraint);
    else fields.constraint.setType(CTaskConstraintType(CTaskConstraintType::NoConstraint));
    if (version >= 14) archive.exchange(fields.supplyChain);
    else fields.supplyChain.setSupplierID(CCompanyID::getNULL());
    archive.exchangeSince(28, fields.categoryID, CTaskCategoryID::getNULL());
    archive.exchangeSince(28, fields.isTemplateTask, CProjectBool(false));
    archive.exchangeSince(30, fields.taskType, CTaskType(CTaskType::Normal));
}

void CTask::exchangeSubTasks(CProjectArchive & archive)
{
    bool exist = subTasks != nullptr;
    archive.exchange(exist);
    if (archive.IsLoading()) dropSubTasks();
    if (!exist) return;
    CProjectArchive::CNested const nested(archive);
    makeSubTasks().Serialize(archive);
}
