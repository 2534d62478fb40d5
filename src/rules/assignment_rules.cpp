// Who and what works on which task.

#include "rules/local_rules_checker.h"
#include "values/saturate.h"

// ---- flags ----------------------------------------------------------------------------------------

// A task whose array is assigned to itself counts as changed, as if each assignment had been put back.
void CLocalRulesChecker::flagAssignedResourceAsChanged(CResourceID const & resourceID)
{
    forEachTask([&](CTask & task) {
        if (task.getAssignedResources().findByID(resourceID) >= 0) task.setAssignedResources(task.getAssignedResources());
    });
}

void CLocalRulesChecker::flagAssignedRiskAsChanged(CRiskID const & riskID)
{
    forEachTask([&](CTask & task) {
        for (CAssignedRisk const & assigned : task.getAssignedRisks())
            if (assigned.getRiskID() == riskID) return task.setAssignedRisks(task.getAssignedRisks());
    });
}

// ---- assigning ------------------------------------------------------------------------------------

void CLocalRulesChecker::assign(CTask & task, CResourceID const & resourceID, int useRatePerDay)
{
    int const percent = orvane::saturate<std::int32_t>(std::int64_t{useRatePerDay} * 100);
    CAssignedResourceArray assigned(task.getAssignedResources());
    assigned.Add(CAssignedResource(CAssignedResourceID(), resourceID, percent));
    task.setAssignedResources(assigned);
}

int CLocalRulesChecker::getUseRatePerDay(CResourceID const & resourceID) const
{
    int rate = 0;
    withResource(resourceID, [&](auto const & resource) { return rate = resource.getUseRatePerDay(), true; });
    return rate;
}

bool CLocalRulesChecker::assignResourceToTask(CTaskID const & taskID, CResourceID const & resourceID)
{
    CTask * const task = getTask(taskID);
    if (!task || !task->canAssignResources() || task->getAssignedResources().findByID(resourceID) >= 0) return false;
    if (!getResourceBase(resourceID)) return false;
    // A parent stands for its sub-resources: assignments end on leaves.
    CResourceIDArray below;
    withResource(resourceID, [&](auto const & resource) {
        if (resource.hasSubResource())
            for (auto const & each : *resource.getSubResources()) below.Add(each.getID());
        return true;
    });
    if (!below.IsEmpty())
    {
        for (CResourceID const & each : below)
            if (!assignResourceToTask(taskID, each)) return false;
        return true;
    }
    int const rate = getUseRatePerDay(resourceID);
    if (rate == 0) return false;
    assign(*task, resourceID, rate);
    deselectTasksThatAreExcludedByFilter();
    return true;
}

// Unlike above, a parent is assigned as such, with what its leaves can do together.
bool CLocalRulesChecker::assignResourceToTasks(CTaskIDArray const & taskIDs, CResourceID const & resourceID)
{
    if (!project) return false;
    CTaskIDArray const ids(taskIDs);
    for (CTaskID const & id : ids)
    {
        CTask * const task = getTask(id);
        if (!task || !task->canAssignResources()) return false;
        if (task->getAssignedResources().findByID(resourceID) >= 0) continue;
        int const rate = getUseRatePerDay(resourceID);
        if (rate == 0) return false;
        assign(*task, resourceID, rate);
    }
    deselectTasksThatAreExcludedByFilter();
    return true;
}

// ---- changing and taking off ----------------------------------------------------------------------

bool CLocalRulesChecker::changeAssignedResource(CAssignedResource const & assigned)
{
    CTask * const task = getHolder(assigned.getID());
    if (!task) return false;
    // A task that has begun takes no change, and that is no failure.
    if (!task->canAssignResources()) return true;
    CAssignedResourceArray resources(task->getAssignedResources());
    if (!resources.changeElement(assigned)) return false;
    task->setAssignedResources(resources);
    return true;
}

bool CLocalRulesChecker::unassignResource(CAssignedResourceID const & assignedID)
{
    CTask * const task = getHolder(assignedID);
    if (!task) return false;
    if (!task->canAssignResources()) return warnUser(task->getExplanationForInabilityToAssignResources()), false;
    CAssignedResourceArray resources(task->getAssignedResources());
    int position = resources.GetUpperBound();
    while (position >= 0 && !(resources.GetAt(position).getID() == assignedID)) --position;
    if (position < 0 || rulesCalendarOf(*task, resources.GetAt(position).getResourceID())) return false;
    resources.RemoveAt(position);
    task->setAssignedResources(resources);
    return true;
}

// A task cannot lose the resource by whose calendar it runs.
bool CLocalRulesChecker::rulesCalendarOf(CTask const & task, CResourceID const & resourceID) const
{
    return withResource(resourceID, [&](auto const & resource) {
        if constexpr (requires { resource.getCalendar(); }) return resource.getCalendar().getID() == task.getDominantCalendarID();
        else return false;
    });
}

// ---- handing over ---------------------------------------------------------------------------------

// Every task that has `from` gets each of `to` in its place. Stops at the first refusal.
bool CLocalRulesChecker::replaceResourceAssignments(CResourceID const & from, CResourceIDArray const & to)
{
    std::vector<std::pair<CTaskID, CAssignedResourceID>> assignments;
    for (CTask const & root : *tasks) collectAssignments(root, from, assignments);
    for (auto const & [taskID, assignedID] : assignments)
    {
        if (!unassignResource(assignedID)) return false;
        for (CResourceID const & each : to)
            if (!assignResourceToTask(taskID, each)) return false;
    }
    return true;
}

void CLocalRulesChecker::collectAssignments(CTask const & task, CResourceID const & resourceID,
                                            std::vector<std::pair<CTaskID, CAssignedResourceID>> & assignments)
{
    CAssignedResourceArray const & assigned = task.getAssignedResources();
    int const position = assigned.findByID(resourceID);
    if (position >= 0) assignments.emplace_back(task.getID(), assigned.GetAt(position).getID());
    if (task.getSubTasks())
        for (CTask const & child : *task.getSubTasks()) collectAssignments(child, resourceID, assignments);
}

bool CLocalRulesChecker::replaceResourceAssignments(CAssignedResourceArray & assignments)
{
    for (int index = 0; index < assignments.GetSize(); ++index)
    {
        CResourceID const id(assignments.GetAt(index).getResourceID());
        CResourceIDArray leaves;
        bool expands = false;
        auto const read = [&](auto const * resource) {
            if (!resource) return false;
            expands = resource->hasSubResource();
            return !expands || resource->getLeafResources(leaves);
        };
        // Here the kinds are tried from the last to the first.
        bool const found = read(getMaterialResource(id)) || read(getLocationResource(id)) ||
                           read(getHumanResource(id)) || read(getEquipmentResource(id));
        if (!found) return false;
        if (expands) replaceResourceAssignments(assignments, index, leaves);
    }
    return true;
}

void CLocalRulesChecker::replaceResourceAssignments(CAssignedResourceArray & assignments, int index,
                                                    CResourceIDArray const & leaves)
{
    CAssignedResourceArray added;
    for (CResourceID const & leaf : leaves)
        if (assignments.findByID(leaf) < 0) added.Add(CAssignedResource(CAssignedResourceID(), leaf, 100));
    assignments.RemoveAt(index);
    assignments.InsertAt(index, &added);
}
