#include "view/task_presentation.h"

#include "values/record_impl.h"

template <class Visit>
void CTaskPresentation::describe(Visit && visit)
{
    visit("rowHeight", &CTaskPresentation::rowHeight);
    visit("showChildren", &CTaskPresentation::showChildren);
}

template class orvane::CRecord<CTaskPresentation>;

void CTaskPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, documentTag);
}
