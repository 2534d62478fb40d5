#include "view/tree_presentation.h"

#include "values/record_impl.h"

template <class Self>
template <class Visit>
void orvane::CTreePresentation<Self>::describe(Visit && visit)
{
    visit("showExpanded", &CTreePresentation::showExpanded);
}

template class orvane::CRecord<CResourcePresentation>;
template class orvane::CRecord<CRiskPresentation>;
