#include "model/task_report.h"

#include "values/record_impl.h"

template <class Visit>
void CTaskReport::describe(Visit && visit)
{
    visit("ID", &CTaskReport::id);
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
