// A task, with what it holds by value, in the project's XML document.

#include "model/task.h"

#include "model/task_array.h"
#include "values/document_array_impl.h"

void CTask::exchangeAttributes(CProjectXMLArchive & archive)
{
    // Through the setter when loading: the task may stand in an array.
    CTaskID id = fields.id;
    id.xmlSerialize(archive, "ID");
    if (archive.isLoading()) setID(id);
    fields.name.xmlSerialize(archive, "name");
    fields.plannedStartTime.xmlSerialize(archive, "startTime");
    fields.duration.xmlSerialize(archive, "duration");
    fields.status.xmlSerialize(archive, "status");
    fields.riskType.xmlSerialize(archive, "riskType");
    fields.dominantCalendarID.xmlSerialize(archive, "dominantCalendar");
    fields.actualStartTime.xmlSerialize(archive, "actualStartDate");
    fields.predictedFinishTime.xmlSerialize(archive, "predictedFinishDate");
    fields.actualFinishTime.xmlSerialize(archive, "actualFinishTime");
    fields.riskBuffer.xmlSerialize(archive, "riskBuffer");
    fields.comments.xmlSerialize(archive, "comments");
    fields.taskType.xmlSerialize(archive, "taskType");
    fields.isTemplateTask.xmlSerialize(archive, "template");
    fields.categoryID.xmlSerialize(archive, "categoryID");
}

void CTask::exchangeChildren(CProjectXMLArchive & archive)
{
    if (isBaselineSet()) fields.baselineData.xmlSerialize(archive);
    fields.assignedRisks.xmlSerialize(archive);
    fields.assignedResources.xmlSerialize(archive);
    fields.upstreamLinks.xmlSerialize(archive);
    fields.taskReports.xmlSerialize(archive);
    if (subTasks) subTasks->xmlSerialize(archive);
    fields.costs.xmlSerialize(archive);
    fields.constraint.xmlSerialize(archive);
    fields.supplyChain.xmlSerialize(archive);
}

void CTask::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.isLoading()) touched = everything;
    deleteSubTasksIfEmpty();
    archive.startEntity("Task");
    exchangeAttributes(archive);
    archive.out(">");
    exchangeChildren(archive);
    archive.endEntity("</Task>");
    deleteSubTasksIfEmpty();
}

void CTaskArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Tasks", nullptr);
    if (archive.isTag("Task")) CTask().xmlSerialize(archive);
}
