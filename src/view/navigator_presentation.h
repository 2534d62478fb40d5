#pragma once

#include "platform/project_xml_archive.h"
#include "values/enumerations.h"
#include "values/identifiers.h"
#include "values/record.h"
#include "values/scalars.h"

// What the navigator lists of companies and resources, and which of its groups are open.
class CNavigatorPresentation : public orvane::CRecord<CNavigatorPresentation>, public IProjectXMLTagProcessor
{
public:
    // As after clear, and unchanged.
    CNavigatorPresentation();
    // Filters and groups of the settings, resources of all companies.
    void clear();

    // Companies of this type alone, while the filter is in use.
    CCompanyType const & getCompanyFilter() const { return companyFilter; }
    void setCompanyFilter(CCompanyType const & type) { companyFilter = type; }
    CProjectBool const & getCompanyFilterInUse() const { return companyFilterInUse; }
    void setCompanyFilterInUse(CProjectBool const & inUse) { companyFilterInUse = inUse; }
    // Resources of this company alone; of all when NULL.
    CCompanyID const & getResourceFilter() const { return resourceFilter; }
    void setResourceFilter(CCompanyID const & company) { resourceFilter = company; }
    CProjectBool const & getEquipmentResourcesExpanded() const { return equipmentResourcesExpanded; }
    void setEquipmentResourcesExpanded(CProjectBool const & expanded) { equipmentResourcesExpanded = expanded; }
    CProjectBool const & getHumanResourcesExpanded() const { return humanResourcesExpanded; }
    void setHumanResourcesExpanded(CProjectBool const & expanded) { humanResourcesExpanded = expanded; }
    CProjectBool const & getLocationResourcesExpanded() const { return locationResourcesExpanded; }
    void setLocationResourcesExpanded(CProjectBool const & expanded) { locationResourcesExpanded = expanded; }
    CProjectBool const & getMaterialResourcesExpanded() const { return materialResourcesExpanded; }
    void setMaterialResourcesExpanded(CProjectBool const & expanded) { materialResourcesExpanded = expanded; }

    void xmlSerialize(CProjectXMLArchive & archive) override;

private:
    friend class orvane::CRecord<CNavigatorPresentation>;
    template <class Visit>
    static void describe(Visit && visit);

    CCompanyType companyFilter;
    CProjectBool companyFilterInUse;
    CCompanyID resourceFilter{orvane::nullID};
    CProjectBool equipmentResourcesExpanded;
    CProjectBool humanResourcesExpanded;
    CProjectBool locationResourcesExpanded;
    CProjectBool materialResourcesExpanded;
};

extern template class orvane::CRecord<CNavigatorPresentation>;
