#include "view/navigator_presentation.h"

#include "config/project_config.h"
#include "values/record_impl.h"

template <class Visit>
void CNavigatorPresentation::describe(Visit && visit)
{
    visit("companyFilter", &CNavigatorPresentation::companyFilter);
    visit("companyFilterInUse", &CNavigatorPresentation::companyFilterInUse);
    visit("resourceFilter", &CNavigatorPresentation::resourceFilter);
    visit("equipmentResourcesExpanded", &CNavigatorPresentation::equipmentResourcesExpanded);
    visit("humanResourcesExpanded", &CNavigatorPresentation::humanResourcesExpanded);
    visit("locationResourcesExpanded", &CNavigatorPresentation::locationResourcesExpanded);
    visit("materialResourcesExpanded", &CNavigatorPresentation::materialResourcesExpanded);
}

template class orvane::CRecord<CNavigatorPresentation>;

CNavigatorPresentation::CNavigatorPresentation()
{
    clear();
    resetChanged();
}

void CNavigatorPresentation::clear()
{
    companyFilter = CProjectConfig::getCompanyFilter();
    companyFilterInUse = CProjectConfig::getCompanyFilterInUse();
    resourceFilter.clear();
    equipmentResourcesExpanded = CProjectConfig::getEquipmentResourcesExpanded();
    humanResourcesExpanded = CProjectConfig::getHumanResourcesExpanded();
    locationResourcesExpanded = CProjectConfig::getLocationResourcesExpanded();
    materialResourcesExpanded = CProjectConfig::getMaterialResourcesExpanded();
}

void CNavigatorPresentation::xmlSerialize(CProjectXMLArchive & archive)
{
    if (archive.readsAnother("NavigatorPresentation")) return;
    exchangeElement(archive, "NavigatorPresentation");
}
