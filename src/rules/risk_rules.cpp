// The register of risks, and the risks that tasks take on.

#include "rules/local_rules_checker.h"

// ---- the register ---------------------------------------------------------------------------------

// The top of the register first, then depth first.
CRisk * CLocalRulesChecker::getRisk(CRiskID const & id) const
{
    return project ? const_cast<CRisk *>(project->findRisk(id)) : nullptr;
}

// Whether the change found its risk in one of the trees, asked in their order.
template <class Change>
bool CLocalRulesChecker::changeRisk(Change const & change)
{
    if (!project) return false;
    CRiskArray & risks = projectData->risks;
    for (int each = 0; each < risks.GetSize(); ++each)
        if (change(risks.elementForPass(each))) return true;
    return false;
}

bool CLocalRulesChecker::addRisk(CRisk const & risk, CRiskID const & parentID)
{
    if (!project) return false;
    CRisk const copy(risk);
    if (parentID.isNULL()) projectData->risks.Add(copy);
    else if (!changeRisk([&](CRisk & top) { return top.addSubRisk(copy, parentID); })) return false;
    addRiskPresentation(copy.getID());
    return true;
}

bool CLocalRulesChecker::renameRisk(CRiskID const & riskID, CString const & name)
{
    if (!changeRisk([&](CRisk & top) { return top.renameSubRisk(riskID, name); })) return false;
    flagAssignedRiskAsChanged(riskID);
    return true;
}

// Assignments made before keep their own mode.
bool CLocalRulesChecker::setRiskValueMode(CRiskID const & riskID, CRiskValueMode const & mode)
{
    return changeRisk([&](CRisk & top) { return top.setSubRiskValueMode(riskID, mode); });
}

bool CLocalRulesChecker::removeRisk(CRiskID const & riskID)
{
    if (!project || project->isAssignedToTasks(riskID)) return false;
    CRiskID const id(riskID);
    CRisk risk;
    if (!project->getRisk(id, risk)) return false;
    removeAllRiskPresentations(risk);
    if (!isTransactionServer()) removeFromFilters(id);
    CRiskArray & risks = projectData->risks;
    int const top = risks.findByID(id);
    if (top >= 0) risks.RemoveAt(top);
    else if (!changeRisk([&](CRisk & tree) { return tree.removeSubRisk(id); })) return false;
    if (!isTransactionServer() && presentationData->getSelectedRiskID() == id) presentationData->clearSelectedRisk();
    return true;
}

// A parent that lay below the child is gone with it, and the child stays removed.
bool CLocalRulesChecker::makeSubRisk(CRiskID const & childID, CRiskID const & parentID)
{
    if (!project || childID == parentID || childID.isNULL() || parentID.isNULL()) return false;
    CRiskID const parent(parentID);
    CRisk child;
    if (!project->getRisk(childID, child) || !removeRisk(child.getID())) return false;
    CRisk * const above = getRisk(parent);
    return above && above->addSubRisk(child, parent);
}

// ---- risks of tasks -------------------------------------------------------------------------------

// A key date is not passed over, although it cannot give the risk up again.
bool CLocalRulesChecker::assignRiskToTask(CTaskIDArray const & taskIDs, CRiskID const & riskID)
{
    CRisk const * const risk = taskIDs.IsEmpty() ? nullptr : getRisk(riskID);
    if (!risk) return false;
    CTaskIDArray const ids(taskIDs);
    for (CTaskID const & id : ids)
    {
        CTask * const task = getTask(id);
        if (!task) return false;
        if (!isEditable(*task)) continue;
        CAssignedRiskArray risks(task->getAssignedRisks());
        bool taken = false;
        for (CAssignedRisk const & assigned : risks) taken |= assigned.getRiskID() == risk->getID();
        if (taken) continue;
        risks.Add(CAssignedRisk(risk->getID(), risk->getValueMode()));
        task->setAssignedRisks(risks);
    }
    deselectTasksThatAreExcludedByFilter();
    return true;
}

namespace
{

// What a started task keeps of its risks: their size, and what they cost and weigh.
bool keepsSize(CTask const & task, CAssignedRisk const & before, CAssignedRisk const & after)
{
    CCostArray const * const old = before.getCosts();
    CCostArray const * const young = after.getCosts();
    bool const sameCosts = old && young ? *old == *young : old == young;
    return after.getValueFixed(task) == before.getValueFixed(task) && after.getValueMode() == before.getValueMode() &&
           after.getWeight() == before.getWeight() && sameCosts;
}

}  // namespace

bool CLocalRulesChecker::changeAssignedRisk(CAssignedRisk const & assigned)
{
    CTask * const task = getHolder(assigned.getID());
    if (!task || task->getStatus() == CTaskStatus::Finished) return false;
    CAssignedRiskArray risks(task->getAssignedRisks());
    int const position = risks.findByID(assigned.getID());
    bool const started = task->getStatus() == CTaskStatus::Started;
    if (position < 0 || (started && !keepsSize(*task, risks.GetAt(position), assigned))) return false;
    risks.changeElement(assigned);
    task->setAssignedRisks(risks);
    task->setChanged();
    criticalPathDirty = true;
    return true;
}

bool CLocalRulesChecker::unassignRisk(CAssignedRiskID const & assignedID)
{
    CTask * const task = getHolder(assignedID);
    if (!task) return false;
    if (!task->canAssignRisks()) return warnUser(task->getExplanationForInabilityToAssignRisks()), false;
    CAssignedRiskArray risks(task->getAssignedRisks());
    int const position = risks.findByID(assignedID);
    if (position < 0) return false;
    risks.RemoveAt(position);
    task->setAssignedRisks(risks);
    criticalPathDirty = true;
    return true;
}

// After a copy of tasks: what was buffered in one of the old tasks is buffered in the new one of the same place.
void CLocalRulesChecker::transferBufferedRiskToNewBuffers(CTask & task, CTaskIDArray const & from, CTaskIDArray const & to)
{
    if (from.GetSize() != to.GetSize()) return;
    if (CTaskArray * const children = task.getWritableSubTasks())
    {
        for (int each = 0; each < children->GetSize(); ++each)
            transferBufferedRiskToNewBuffers(children->elementForPass(each), from, to);
        return;
    }
    CAssignedRiskArray risks(task.getAssignedRisks());
    bool moved = false;
    for (int each = 0; each < risks.GetSize(); ++each)
    {
        CAssignedRisk & assigned = risks.ElementAt(each);
        int const place = assigned.getStatus() == CRiskStatus::Buffered ? from.findByID(assigned.getBufferID()) : -1;
        if (place < 0) continue;
        assigned.setBufferID(to.GetAt(place));
        moved = true;
    }
    if (moved) task.setAssignedRisks(risks);
}
