#include "model/resources.h"

#include "model/resource_impl.h"
#include "values/document_array_impl.h"

template <class Visit>
void CMaterialResource::describeOwn(Visit && visit)
{
    visit("usedOn", &CMaterialResource::usedOn);
    visit("useRatePerDay", &CMaterialResource::useRatePerDay);
    visit("subResources", &CMaterialResource::subResources);
}

void CMaterialResource::exchangeOwn(CMaterialResource & resource, CProjectArchive & archive)
{
    archive.exchangeSince(8, resource.subResources, orvane::CSubItems<CMaterialResourceArray>());
    archive.exchange(resource.usedOn, resource.useRatePerDay);
}

CMaterialResource::CMaterialResource() : usedOn(CProjectDate::GetCurrentDate() + CProjectTimeOfDay(0, 0))
{
}

template class orvane::CResourceKind<CEquipmentResource, CEquipmentResourceArray>;
template class orvane::CResourceKind<CHumanResource, CHumanResourceArray>;
template class orvane::CResourceKind<CLocationResource, CLocationResourceArray>;
template class orvane::CResourceKind<CMaterialResource, CMaterialResourceArray>;
template class orvane::CWorkingResource<CEquipmentResource, CEquipmentResourceArray>;
template class orvane::CWorkingResource<CHumanResource, CHumanResourceArray>;
template class orvane::CWorkingResource<CLocationResource, CLocationResourceArray>;

void CEquipmentResourceArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "EquipmentResources", CEquipmentResource::documentTag);
}

void CHumanResourceArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "HumanResources", CHumanResource::documentTag);
}

void CLocationResourceArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "LocationResources", CLocationResource::documentTag);
}

void CMaterialResourceArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "MaterialResources", CMaterialResource::documentTag);
}
