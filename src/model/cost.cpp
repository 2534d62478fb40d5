#include "model/cost.h"

#include "values/document_array_impl.h"
#include "values/record_impl.h"

template <class Visit>
void CCost::describe(Visit && visit)
{
    visit("id", &CCost::id);
    visit("description", &CCost::description);
    visit("amount", &CCost::amount);
    visit("type", &CCost::type);
}

template class orvane::CRecord<CCost>;

void CCost::xmlSerialize(CProjectXMLArchive & archive)
{
    exchangeElement(archive, "Cost");
}

void CCostArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Costs", "Cost");
}
