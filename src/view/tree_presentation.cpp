#include "view/tree_presentation.h"

#include "values/record_impl.h"

template <class Self>
template <class Visit>
void orvane::CTreePresentation<Self>::describe(Visit && visit)
{
    visit("showExpanded", &CTreePresentation::showExpanded);
}

template <class Self>
void orvane::CTreePresentation<Self>::xmlSerialize(CProjectXMLArchive & archive)
{
    this->exchangeElement(archive, Self::documentTag);
}

template class orvane::CRecord<CResourcePresentation>;
template class orvane::CRecord<CRiskPresentation>;
template class orvane::CTreePresentation<CResourcePresentation>;
template class orvane::CTreePresentation<CRiskPresentation>;
