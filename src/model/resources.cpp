#include "model/resources.h"

#include "model/resource_impl.h"

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
