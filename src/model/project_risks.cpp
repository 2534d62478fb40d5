// What a project answers about its register of risks, and about the risks and reports of its tasks.

#include "model/project.h"

#include <unordered_set>

#include "model/array_access.h"
#include "model/upstream_search.h"

// ---- the register ---------------------------------------------------------------------------------

CRisk const * CProject::findRisk(CRiskID const & id) const
{
    if (id.isNULL()) return nullptr;
    // The top of the register first, then depth first.
    if (CRisk const * const top = orvane::elementOf(projectData.risks, id)) return top;
    for (CRisk const & risk : projectData.risks)
        if (CRisk const * const found = risk.findRisk(id)) return found;
    return nullptr;
}

CRisk CProject::getRisk(int index) const
{
    CRisk const * const risk = orvane::elementAt(projectData.risks, index);
    CRisk copy;
    if (risk) copy = *risk;
    else copy.setID(CRiskID::getNULL());
    return copy;
}

bool CProject::getRisk(CRiskID const & id, CRisk & risk) const
{
    CRisk const * const found = findRisk(id);
    if (found) risk = CRisk(*found);
    else risk.setID(CRiskID::getNULL());
    return found != nullptr;
}

CRisk const * CProject::getRiskParent(CRiskID const & id) const
{
    if (id.isNULL() || projectData.risks.findByID(id) >= 0) return nullptr;
    for (CRisk const & top : projectData.risks)
        if (top.findRisk(id)) return &top;
    return nullptr;
}

// ---- risks and reports of tasks -------------------------------------------------------------------

CAssignedRisk const * CProject::getAssignedRisk(CAssignedRiskID const & id) const
{
    CTask const * const task = getTask(id);
    return task ? orvane::elementOf(task->getAssignedRisks(), id) : nullptr;
}

bool CProject::getAssignedRisk(CAssignedRisk & assigned, CAssignedRiskID const & id) const
{
    CAssignedRisk const * const found = getAssignedRisk(id);
    if (found) assigned = *found;
    return found != nullptr;
}

namespace
{

using Identifiers = std::unordered_set<_GUID>;

void collectRisks(CRisk const & risk, Identifiers & ids)
{
    ids.insert(risk.getID().getGUID());
    if (risk.getSubRisks())
        for (CRisk const & each : *risk.getSubRisks()) collectRisks(each, ids);
}

template <class Array>
bool anyNames(Array const & array, Identifiers const & risks)
{
    for (auto const & each : array)
        if (risks.contains(each.getRiskID().getGUID())) return true;
    return false;
}

bool anyTaskNames(CTaskArray const & tasks, Identifiers const & risks)
{
    for (CTask const & task : tasks)
    {
        if (anyNames(task.getAssignedRisks(), risks) || anyNames(task.getTaskReports(), risks)) return true;
        if (task.getSubTasks() && anyTaskNames(*task.getSubTasks(), risks)) return true;
    }
    return false;
}

void collectBuffers(CTaskArray const & tasks, orvane::CUpstreamSearch & search, CTaskArray & buffers)
{
    for (CTask const & task : tasks)
    {
        if (task.getSubTasks()) collectBuffers(*task.getSubTasks(), search, buffers);
        else if (task.getRiskBuffer().getValue() && search.reachesFrom(task)) buffers.addTask(task);
    }
}

}  // namespace

bool CProject::isAssignedToTasks(CRiskID const & id) const
{
    if (id.isNULL()) return false;
    Identifiers tree{id.getGUID()};
    if (CRisk const * const risk = findRisk(id)) collectRisks(*risk, tree);
    return anyTaskNames(projectData.tasks, tree);
}

void CProject::getDownstreamRiskBuffers(CTaskID const & id, CTaskArray & buffers) const
{
    // The identifier may be that of a task in the array.
    orvane::CUpstreamSearch search(*this, id);
    buffers.RemoveAll();
    collectBuffers(projectData.tasks, search, buffers);
}

// ---- their costs ----------------------------------------------------------------------------------

bool CProject::doesAssignedRiskHaveCost(CAssignedRiskID const & id) const
{
    CAssignedRisk const * const assigned = getAssignedRisk(id);
    return assigned && assigned->getCosts();
}

bool CProject::doesTaskReportHaveCost(CTaskReportID const & id) const
{
    CTask const * const task = getTask(id);
    CTaskReport const * const report = task ? orvane::elementOf(task->getTaskReports(), id) : nullptr;
    return report && !report->getCosts().IsEmpty();
}

bool CProject::areAssignedRiskCostsDifferent(CTask const & task, CAssignedRisk const & assigned) const
{
    CAssignedRisk const * const held = orvane::elementOf(task.getAssignedRisks(), assigned.getID());
    if (!held) return false;
    CCostArray const * const a = held->getCosts();
    CCostArray const * const b = assigned.getCosts();
    return a && b ? !(*a == *b) : a != b;
}

bool CProject::areTaskReportCostsDifferent(CTask const & task, CTaskReport const & report) const
{
    CTaskReport const * const held = orvane::elementOf(task.getTaskReports(), report.getID());
    return held && !(held->getCosts() == report.getCosts());
}
