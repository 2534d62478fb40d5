#include "view/company_presentation.h"

#include "values/record_impl.h"

template <class Visit>
void CCompanyPresentation::describe(Visit && visit)
{
    visit("color", &CCompanyPresentation::color);
}

template class orvane::CRecord<CCompanyPresentation>;

void CCompanyPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "companyPresentation");
}
