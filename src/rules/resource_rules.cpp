// Resources: where they stand, what they are, what they cost. What the four kinds do alike is said once.

#include "rules/local_rules_checker.h"

namespace
{

// The operations of the interface by which each kind is added.
template <class Resource>
struct Doors;
template <>
struct Doors<CEquipmentResource>
{
    static constexpr auto toCompany = &IRulesChecker::addEquipmentResourceToCompany;
    static constexpr auto toParent = &IRulesChecker::addEquipmentResourceToParent;
};
template <>
struct Doors<CHumanResource>
{
    static constexpr auto toCompany = &IRulesChecker::addHumanResourceToCompany;
    static constexpr auto toParent = &IRulesChecker::addHumanResourceToParent;
};
template <>
struct Doors<CLocationResource>
{
    static constexpr auto toCompany = &IRulesChecker::addLocationResourceToCompany;
    static constexpr auto toParent = &IRulesChecker::addLocationResourceToParent;
};
template <>
struct Doors<CMaterialResource>
{
    static constexpr auto toCompany = &IRulesChecker::addMaterialResourceToCompany;
    static constexpr auto toParent = &IRulesChecker::addMaterialResourceToParent;
};

// Changes to an array in place flag its elements as assigning a changed copy would.
template <class Array>
void flagAll(Array & array)
{
    array = *&array;
}

template <class Array>
bool removeByID(Array & array, CResourceID const & id)
{
    int const position = array.findByID(id);
    if (position < 0) return false;
    array.RemoveAt(position);
    flagAll(array);
    return true;
}

template <class Resource>
void collectTree(Resource const & resource, CResourceIDArray & ids)
{
    ids.Add(resource.getID());
    if (!resource.hasSubResource()) return;
    for (Resource const & each : *resource.getSubResources()) collectTree(each, ids);
}

}  // namespace

// ---- lookups --------------------------------------------------------------------------------------

CEquipmentResource * CLocalRulesChecker::getEquipmentResource(CResourceID const & id) const
{
    return getWritable<CEquipmentResource>(id);
}

CHumanResource * CLocalRulesChecker::getHumanResource(CResourceID const & id) const
{
    return getWritable<CHumanResource>(id);
}

CLocationResource * CLocalRulesChecker::getLocationResource(CResourceID const & id) const
{
    return getWritable<CLocationResource>(id);
}

CMaterialResource * CLocalRulesChecker::getMaterialResource(CResourceID const & id) const
{
    return getWritable<CMaterialResource>(id);
}

CResourceBase * CLocalRulesChecker::getResourceBase(CResourceID const & id) const
{
    auto const * const holders = project ? project->findResources(id) : nullptr;
    return holders ? holders->first().resource : nullptr;
}

// ---- coming ---------------------------------------------------------------------------------------

// What joins the project belongs to it, starts with the project's calendar, not in force, and is shown.
template <class Resource>
Resource CLocalRulesChecker::joining(Resource const & resource)
{
    Resource copy(resource);
    copy.setProject(project);
    if constexpr (requires { copy.copyCalendarFromMasterCalendar(); }) copy.copyCalendarFromMasterCalendar();
    addResourcePresentation(copy.getID());
    return copy;
}

template <class Array, class Resource>
bool CLocalRulesChecker::append(Array & array, Resource const & resource)
{
    int const position = array.Add(resource);
    if (position < 0) return false;
    flagAll(array);
    array.elementForPass(position).setProject(project);
    return true;
}

template <class Resource>
bool CLocalRulesChecker::addToCompany(Resource const & resource, CCompanyID const & companyID)
{
    CCompany * const company = getCompany(companyID);
    return company && append(company->resourcesOf<Resource>(), joining(resource));
}

template <class Resource>
bool CLocalRulesChecker::addToParent(Resource const & resource, CResourceID const & parentID)
{
    Resource * const parent = getWritable<Resource>(parentID);
    if (!parent) return false;
    CResourceID const id(parentID);
    bool const wasLeaf = !parent->hasSubResource();
    Resource const child = joining(resource);
    if (!append(parent->makeSubResources(), child)) return false;
    expandResource(id);
    if (!wasLeaf || !project->hasTasksAssignedTo(id)) return true;
    // Work that was the parent's passes to its leaves.
    CResourceIDArray leaves;
    return child.getLeafResources(leaves) && replaceResourceAssignments(id, leaves);
}

bool CLocalRulesChecker::addEquipmentResourceToCompany(CEquipmentResource const & resource, CCompanyID const & companyID)
{
    return addToCompany(resource, companyID);
}

bool CLocalRulesChecker::addHumanResourceToCompany(CHumanResource const & resource, CCompanyID const & companyID)
{
    return addToCompany(resource, companyID);
}

bool CLocalRulesChecker::addLocationResourceToCompany(CLocationResource const & resource, CCompanyID const & companyID)
{
    return addToCompany(resource, companyID);
}

bool CLocalRulesChecker::addMaterialResourceToCompany(CMaterialResource const & resource, CCompanyID const & companyID)
{
    return addToCompany(resource, companyID);
}

bool CLocalRulesChecker::addEquipmentResourceToParent(CEquipmentResource const & resource, CResourceID const & parentID)
{
    return addToParent(resource, parentID);
}

bool CLocalRulesChecker::addHumanResourceToParent(CHumanResource const & resource, CResourceID const & parentID)
{
    return addToParent(resource, parentID);
}

bool CLocalRulesChecker::addLocationResourceToParent(CLocationResource const & resource, CResourceID const & parentID)
{
    return addToParent(resource, parentID);
}

bool CLocalRulesChecker::addMaterialResourceToParent(CMaterialResource const & resource, CResourceID const & parentID)
{
    return addToParent(resource, parentID);
}

// ---- going and moving -----------------------------------------------------------------------------

// Takes the resource out from where it stands. Nothing else hears of it.
bool CLocalRulesChecker::detachResource(CResourceID const & resourceID)
{
    removeResourcePresentation(resourceID);
    return takeOut(resourceID);
}

bool CLocalRulesChecker::takeOut(CResourceID const & resourceID)
{
    // The argument may belong to what goes.
    CResourceID const id(resourceID);
    return withResource(id, [&](auto & resource) {
        using Resource = std::remove_reference_t<decltype(resource)>;
        auto const & place = project->findResources(id)->places[orvane::CResourceIndex::kindOf<Resource>()];
        auto * const parent = static_cast<Resource *>(place.parent);
        if (!parent) return removeByID(place.company->template resourcesOf<Resource>(), id);
        bool const removed = removeByID(parent->makeSubResources(), id);
        if (parent->getSubResources()->IsEmpty()) parent->setSubResources(*parent->getSubResources());
        return removed;
    });
}

bool CLocalRulesChecker::makeSubResource(CResourceID const & childID, CResourceID const & parentID)
{
    CResourceID const parent(parentID);
    return withResource(childID, [&](auto & resource) {
        using Resource = std::remove_reference_t<decltype(resource)>;
        Resource const copy(resource);
        return detachResource(copy.getID()) && (this->*Doors<Resource>::toParent)(copy, parent);
    });
}

bool CLocalRulesChecker::changeResourceSupplier(CResourceID const & resourceID, CCompanyID const & companyID)
{
    CCompanyID const company(companyID);
    return withResource(resourceID, [&](auto & resource) {
        using Resource = std::remove_reference_t<decltype(resource)>;
        Resource const copy(resource);
        return detachResource(copy.getID()) && (this->*Doors<Resource>::toCompany)(copy, company);
    });
}

// The whole tree goes, with what the views know of it. Nothing of it is assigned, so taking out the top takes all.
bool CLocalRulesChecker::removeResource(CResourceID const & resourceID)
{
    if (!project || project->isAssignedToTasks(resourceID)) return false;
    CResourceID const id(resourceID);
    CResourceIDArray tree;
    tree.Add(id);
    withResource(id, [&](auto const & resource) {
        tree.RemoveAll();
        collectTree(resource, tree);
        return true;
    });
    if (!isTransactionServer())
    {
        if (tree.findByID(presentationData->getSelectedResourceID()) >= 0) presentationData->clearSelectedResource();
        removeFromFilters(id);
    }
    if (!getResourceBase(id)) return false;
    for (CResourceID const & each : tree) removeResourcePresentation(each);
    return takeOut(id);
}

// ---- fields ---------------------------------------------------------------------------------------

bool CLocalRulesChecker::setResourceName(CResourceID const & resourceID, CString const & name)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    bool const onlyBlanks = name.SpanIncluding(" ").GetLength() == name.GetLength();
    if (!resource || onlyBlanks) return false;
    resource->setName(name);
    flagAssignedResourceAsChanged(resourceID);
    return true;
}

template <class Value, class Argument>
bool CLocalRulesChecker::setResourceField(CResourceID const & resourceID, void (CResourceBase::*setter)(Value),
                                          Argument const & value)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    if (resource) (resource->*setter)(value);
    return resource != nullptr;
}

bool CLocalRulesChecker::setResourceAutoAccept(CResourceID const & resourceID, bool accept)
{
    return setResourceField(resourceID, &CResourceBase::setAutoAccept, accept);
}

bool CLocalRulesChecker::setResourceOrderRequired(CResourceID const & resourceID, bool required)
{
    return setResourceField(resourceID, &CResourceBase::setOrderRequired, required);
}

bool CLocalRulesChecker::setResourceLeadTime(CResourceID const & resourceID, CProjectDuration const & leadTime)
{
    return setResourceField(resourceID, &CResourceBase::setLeadTime, leadTime);
}

bool CLocalRulesChecker::setResourceTotalUnitsAvailable(CResourceID const & resourceID, int units)
{
    return setResourceField(resourceID, &CResourceBase::setTotalUnitsAvailable, units);
}

bool CLocalRulesChecker::setResourceUnitType(CResourceID const & resourceID, CResourceUnitType const & type)
{
    return setResourceField(resourceID, &CResourceBase::setResourceUnitType, type);
}

bool CLocalRulesChecker::setResourceUseRatePerDay(CResourceID const & resourceID, int rate)
{
    return withResource(resourceID, [&](auto & resource) { return resource.setUseRatePerDay(rate), true; });
}

bool CLocalRulesChecker::setResourceUsedOn(CResourceID const & resourceID, CProjectTime const & time)
{
    CMaterialResource * const material = getMaterialResource(resourceID);
    if (material) material->setUsedOn(time);
    return material != nullptr;
}

// ---- costs ----------------------------------------------------------------------------------------

CResourceBase * CLocalRulesChecker::getResourceOfCost(CCostID const & costID) const
{
    CResourceBase const * const holder = project ? project->getResourceFromCost(costID) : nullptr;
    return holder ? getResourceBase(holder->getID()) : nullptr;
}

bool CLocalRulesChecker::addResourceCost(CResourceID const & resourceID)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    if (!resource) return false;
    CCost const cost;
    resource->addCost(cost, -1);
    if (isOriginatingClient()) setSelectedResourceCostID(cost.getID());
    return true;
}

bool CLocalRulesChecker::changeResourceCost(CCost const & cost)
{
    CResourceBase * const resource = getResourceOfCost(cost.getID());
    if (!resource || !resource->getCosts()) return false;
    CCostArray costs(*resource->getCosts());
    if (!costs.changeElement(cost)) return false;
    resource->setCosts(costs);
    return true;
}

bool CLocalRulesChecker::removeResourceCost(CCostID const & costID)
{
    CResourceBase * const resource = getResourceOfCost(costID);
    if (!resource || !resource->getCosts()) return false;
    CCostArray costs(*resource->getCosts());
    int const position = costs.findByID(costID);
    if (position < 0) return false;
    costs.RemoveAt(position);
    resource->setCosts(costs);
    return true;
}

// ---- supplier references --------------------------------------------------------------------------

// The caller's index is left as it was: where the reference stands, the number of references tells.
bool CLocalRulesChecker::addResourceSupplierReference(CResourceID const & resourceID, CString const & reference, int &)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    if (resource) resource->addSupplierReference(reference);
    return resource != nullptr;
}

bool CLocalRulesChecker::setResourceSupplierReference(CResourceID const & resourceID, CString const & reference, int index)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    if (!resource || index < 0 || index >= resource->getNumberOfSupplierReferences()) return false;
    resource->setSupplierReference(reference, index);
    return true;
}

bool CLocalRulesChecker::removeResourceSupplierReference(CResourceID const & resourceID, int index)
{
    CResourceBase * const resource = getResourceBase(resourceID);
    return resource && resource->removeSupplierReference(index) >= 0;
}
