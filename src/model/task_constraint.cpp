#include "model/task_constraint.h"

#include "model/document_tags_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CTaskConstraint::describe(Visit && visit)
{
    visit("type", &CTaskConstraint::type);
}

template class orvane::CRecord<CTaskConstraint>;

void CTaskConstraint::xmlSerialize(CProjectXMLArchive & archive)
{
    if (orvane::readsAnother(archive, "TaskConstraint")) return;
    archive.startEntity("TaskConstraint");
    exchangeAttributes(archive);
    archive.endEntity();
}
