#include "model/location.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CLocation::describe(Visit && visit)
{
    visit("id", &CLocation::id);
}

template class orvane::CRecord<CLocation>;

void CLocation::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "Location");
}

void CLocationArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Locations", "Location");
}
