// What a project answers about companies, their resources and calendars.

#include "model/project.h"

#include <unordered_set>

#include "model/array_access.h"

// ---- companies ------------------------------------------------------------------------------------

CCompany const * CProject::getCompany(int index) const
{
    return orvane::elementAt(projectData.companies, index);
}

CCompany const * CProject::getCompany(CCompanyID const & id) const
{
    return orvane::elementOf(projectData.companies, id);
}

bool CProject::hasResources(CCompanyID const & id) const
{
    CCompany const * const company = getCompany(id);
    return company && company->getTotalNumberOfResources() > 0;
}

// ---- resources by identifier ----------------------------------------------------------------------

template <class Resource>
orvane::CResourceIndex::Place CProject::placeOf(CResourceID const & id) const
{
    auto const * const holders = findResources(id);
    return holders ? holders->places[orvane::CResourceIndex::kindOf<Resource>()] : orvane::CResourceIndex::Place();
}

CResourceBase const * CProject::getResource(CResourceID const & id) const
{
    auto const * const holders = findResources(id);
    return holders ? holders->first().resource : nullptr;
}

CResourceType CProject::getResourceType(CResourceID const & id) const
{
    auto const * const holders = findResources(id);
    if (!holders) return CResourceType();
    constexpr CResourceType::CType types[] = {CResourceType::Equipment, CResourceType::Human, CResourceType::Location,
                                              CResourceType::Material};
    std::size_t kind = 0;
    while (!holders->places[kind].resource) ++kind;
    return CResourceType(types[kind]);
}

CCompany const * CProject::getParentCompany(CResourceID const & id) const
{
    auto const * const holders = findResources(id);
    return holders ? holders->first().company : nullptr;
}

namespace
{

template <class Resource>
Resource const * as(CResourceBase const * resource)
{
    return static_cast<Resource const *>(resource);
}

template <class Resource>
Resource const * withCompany(orvane::CResourceIndex::Place const & place, CCompany const *& company)
{
    company = place.company;
    return as<Resource>(place.resource);
}

}  // namespace

CEquipmentResource const * CProject::getEquipmentResource(CResourceID const & id) const
{
    return as<CEquipmentResource>(placeOf<CEquipmentResource>(id).resource);
}

CEquipmentResource const * CProject::getEquipmentResource(CResourceID const & id, CCompany const *& company) const
{
    return withCompany<CEquipmentResource>(placeOf<CEquipmentResource>(id), company);
}

CEquipmentResource const * CProject::getEquipmentParent(CResourceID const & id) const
{
    return as<CEquipmentResource>(placeOf<CEquipmentResource>(id).parent);
}

CCompany const * CProject::getParentCompany(CEquipmentResource const & resource) const
{
    return placeOf<CEquipmentResource>(resource.getID()).company;
}

CHumanResource const * CProject::getHumanResource(CResourceID const & id) const
{
    return as<CHumanResource>(placeOf<CHumanResource>(id).resource);
}

CHumanResource const * CProject::getHumanResource(CResourceID const & id, CCompany const *& company) const
{
    return withCompany<CHumanResource>(placeOf<CHumanResource>(id), company);
}

CHumanResource const * CProject::getHumanParent(CResourceID const & id) const
{
    return as<CHumanResource>(placeOf<CHumanResource>(id).parent);
}

CCompany const * CProject::getParentCompany(CHumanResource const & resource) const
{
    return placeOf<CHumanResource>(resource.getID()).company;
}

CLocationResource const * CProject::getLocationResource(CResourceID const & id) const
{
    return as<CLocationResource>(placeOf<CLocationResource>(id).resource);
}

CLocationResource const * CProject::getLocationResource(CResourceID const & id, CCompany const *& company) const
{
    return withCompany<CLocationResource>(placeOf<CLocationResource>(id), company);
}

CLocationResource const * CProject::getLocationParent(CResourceID const & id) const
{
    return as<CLocationResource>(placeOf<CLocationResource>(id).parent);
}

CCompany const * CProject::getParentCompany(CLocationResource const & resource) const
{
    return placeOf<CLocationResource>(resource.getID()).company;
}

CMaterialResource const * CProject::getMaterialResource(CResourceID const & id) const
{
    return as<CMaterialResource>(placeOf<CMaterialResource>(id).resource);
}

CMaterialResource const * CProject::getMaterialResource(CResourceID const & id, CCompany const *& company) const
{
    return withCompany<CMaterialResource>(placeOf<CMaterialResource>(id), company);
}

CMaterialResource const * CProject::getMaterialParent(CResourceID const & id) const
{
    return as<CMaterialResource>(placeOf<CMaterialResource>(id).parent);
}

CCompany const * CProject::getParentCompany(CMaterialResource const & resource) const
{
    return placeOf<CMaterialResource>(resource.getID()).company;
}

CResourceBase const * CProject::getResourceFromCost(CCostID const & id) const
{
    CResourceBase const * found = nullptr;
    auto const search = [&](auto const & resources) {
        for (auto const & each : resources)
            if (!found) found = each.findResource(id);
    };
    for (CCompany const & company : projectData.companies) company.forEachKind(search);
    return id.isNULL() ? nullptr : found;
}

// ---- lists of resources ---------------------------------------------------------------------------

namespace
{

template <class Resource, class Array>
void leavesOf(CCompanyArray const & companies, Array & leaves)
{
    for (CCompany const & company : companies)
        for (Resource const & each : company.resourcesOf<Resource>()) each.getLeafResources(leaves);
}

template <class Resource, class Array>
void assignedTops(CCompanyArray const & companies, CTask const & task, Array & resources)
{
    resources.RemoveAll();
    for (CAssignedResource const & assigned : task.getAssignedResources())
    {
        for (CCompany const & company : companies)
        {
            auto const & tops = company.resourcesOf<Resource>();
            int const position = assigned.getResourceID().isNULL() ? -1 : tops.findByID(assigned.getResourceID());
            if (position < 0) continue;
            resources.Add(tops.GetAt(position));
            break;
        }
    }
}

}  // namespace

CEquipmentResourceArray CProject::getAllEquipmentResources() const
{
    CEquipmentResourceArray leaves;
    leavesOf<CEquipmentResource>(projectData.companies, leaves);
    return leaves;
}

void CProject::getEquipmentResources(CTask const & task, CEquipmentResourceArray & resources) const
{
    assignedTops<CEquipmentResource>(projectData.companies, task, resources);
}

CHumanResourceArray CProject::getAllHumanResources() const
{
    CHumanResourceArray leaves;
    leavesOf<CHumanResource>(projectData.companies, leaves);
    return leaves;
}

void CProject::getHumanResources(CTask const & task, CHumanResourceArray & resources) const
{
    assignedTops<CHumanResource>(projectData.companies, task, resources);
}

CLocationResourceArray CProject::getAllLocationResources() const
{
    CLocationResourceArray leaves;
    leavesOf<CLocationResource>(projectData.companies, leaves);
    return leaves;
}

void CProject::getLocationResources(CTask const & task, CLocationResourceArray & resources) const
{
    assignedTops<CLocationResource>(projectData.companies, task, resources);
}

CMaterialResourceArray CProject::getAllMaterialResources() const
{
    CMaterialResourceArray leaves;
    leavesOf<CMaterialResource>(projectData.companies, leaves);
    return leaves;
}

void CProject::getMaterialResources(CTask const & task, CMaterialResourceArray & resources) const
{
    assignedTops<CMaterialResource>(projectData.companies, task, resources);
}

// ---- assignments ----------------------------------------------------------------------------------

bool CProject::getTasksAssignedTo(CResourceID const & id, CTaskArray & tasks) const
{
    bool any = false;
    if (!id.isNULL())
        for (CTask const & task : projectData.tasks) any = task.findAssignedResources(tasks, id) || any;
    return any;
}

namespace
{

// Whether any task of the trees passes the test.
template <class Test>
bool anyTask(CTaskArray const & tasks, Test const & test)
{
    for (CTask const & task : tasks)
        if (test(task) || (task.getSubTasks() && anyTask(*task.getSubTasks(), test))) return true;
    return false;
}

using Identifiers = std::unordered_set<_GUID>;

template <class Resource>
void collectTree(Resource const & resource, Identifiers & ids)
{
    ids.insert(resource.getID().getGUID());
    if (!resource.hasSubResource()) return;
    for (Resource const & each : *resource.getSubResources()) collectTree(each, ids);
}

bool anyAssigned(CTaskArray const & tasks, Identifiers const & ids)
{
    if (ids.empty()) return false;
    return anyTask(tasks, [&](CTask const & task) {
        for (CAssignedResource const & assigned : task.getAssignedResources())
            if (ids.contains(assigned.getResourceID().getGUID())) return true;
        return false;
    });
}

}  // namespace

bool CProject::hasTasksAssignedTo(CResourceID const & id) const
{
    return !id.isNULL() && anyTask(projectData.tasks, [&](CTask const & task) { return task.getAssignedResources().findByID(id) >= 0; });
}

bool CProject::isAssignedToTasks(CResourceID const & id) const
{
    if (id.isNULL()) return false;
    Identifiers tree{id.getGUID()};
    if (auto const * const equipment = getEquipmentResource(id)) collectTree(*equipment, tree);
    else if (auto const * const human = getHumanResource(id)) collectTree(*human, tree);
    else if (auto const * const location = getLocationResource(id)) collectTree(*location, tree);
    else if (auto const * const material = getMaterialResource(id)) collectTree(*material, tree);
    return anyAssigned(projectData.tasks, tree);
}

bool CProject::hasResourcesThatAreAssignedToTasks(CCompanyID const & id) const
{
    CCompany const * const company = getCompany(id);
    if (!company) return false;
    Identifiers all;
    company->forEachKind([&](auto const & resources) {
        for (auto const & each : resources) collectTree(each, all);
    });
    return anyAssigned(projectData.tasks, all);
}

CCalendar const * CProject::getResourceCalendarFromAssignedResourceID(CAssignedResourceID const & id) const
{
    CTask const * const task = getTask(id);
    if (!task) return nullptr;
    CAssignedResourceArray const & assigned = task->getAssignedResources();
    CResourceID const & resource = assigned.GetAt(assigned.findByID(id)).getResourceID();
    if (auto const * const equipment = getEquipmentResource(resource)) return &equipment->getCalendar();
    if (auto const * const human = getHumanResource(resource)) return &human->getCalendar();
    if (auto const * const location = getLocationResource(resource)) return &location->getCalendar();
    return nullptr;
}

namespace
{

// The first assignment seen of each identifier, until it is listed as the first of several.
using FirstSeen = std::unordered_map<_GUID, CAssignedResource const *>;

void collectDuplicates(CTaskArray const & tasks, FirstSeen & seen, CAssignedResourceArray & duplicates)
{
    for (CTask const & task : tasks)
    {
        if (task.getSubTasks()) collectDuplicates(*task.getSubTasks(), seen, duplicates);
        for (CAssignedResource const & assigned : task.getAssignedResources())
        {
            auto const [entry, fresh] = seen.try_emplace(assigned.getID().getGUID(), &assigned);
            if (fresh) continue;
            duplicates.Add(assigned);
            if (CAssignedResource const * const first = std::exchange(entry->second, nullptr)) duplicates.Add(*first);
        }
    }
}

}  // namespace

bool CProject::findDuplicateIDs(CAssignedResourceArray & duplicates) const
{
    FirstSeen seen;
    collectDuplicates(projectData.tasks, seen, duplicates);
    return !duplicates.IsEmpty();
}

// ---- calendars ------------------------------------------------------------------------------------

CCalendar const & CProject::getCalendarInUse(CCalendarID const & id) const
{
    CCalendar const & own = projectData.calendar;
    if (id.isNULL() || id == own.getID()) return own;
    auto const * const place = resourceIndex.find(projectData.companies, id);
    if (!place) return own;
    if (place->calendar->getInUse()) return *place->calendar;
    CCalendar const & above = place->company->getCalendar();
    return above.getInUse() ? above : own;
}

CCalendar const & CProject::getActualCalendar(CCalendarID const & id) const
{
    if (id.isNULL() || id == projectData.calendar.getID()) return projectData.calendar;
    auto const * const place = resourceIndex.find(projectData.companies, id);
    return place ? *place->calendar : projectData.calendar;
}
