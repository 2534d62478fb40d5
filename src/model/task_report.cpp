#include "model/task_report.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CTaskReport::describe(Visit && visit)
{
    visit("id", &CTaskReport::id);
    visit("riskID", &CTaskReport::riskID);
    visit("date", &CTaskReport::date);
    visit("duration", &CTaskReport::duration);
    visit("type", &CTaskReport::type);
    visit("comments", &CTaskReport::comments);
    visit("costs", &CTaskReport::costs);
}

template class orvane::CRecord<CTaskReport>;

void CTaskReport::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, riskID, date, duration, type);
    archive.exchangeSince(5, comments, "");
    archive.exchange(costs);
}

// Takes the attributes of every element that it is given, whatever its name.
void CTaskReport::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("TaskReport");
    exchangeAttributes(archive);
    archive.out(" >");
    exchangeChildren(archive);
    archive.endEntity("</TaskReport>");
}

void CTaskReportArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "TaskReports", nullptr);
}
