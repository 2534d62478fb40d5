#include "model/task_constraint.h"

#include "values/record_impl.h"

template <class Visit>
void CTaskConstraint::describe(Visit && visit)
{
    visit("type", &CTaskConstraint::type);
}

template class orvane::CRecord<CTaskConstraint>;

void CTaskConstraint::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("TaskConstraint")) return;
    exchangeElement(archive, "TaskConstraint");
}
