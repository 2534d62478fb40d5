#include "model/assigned_risk.h"

#include <algorithm>

#include "model/task.h"
#include "values/document_array_impl.h"
#include "values/record_impl.h"
#include "values/saturate.h"

template <class Visit>
void CAssignedRisk::describe(Visit && visit)
{
    visit("id", &CAssignedRisk::id);
    visit("riskid", &CAssignedRisk::riskID);
    visit("status", &CAssignedRisk::status);
    visit("weight", &CAssignedRisk::weight);
    visit("valuePercent", &CAssignedRisk::valuePercent);
    visit("valueFixed", &CAssignedRisk::valueFixed);
    visit("valueMode", &CAssignedRisk::valueMode);
    visit("costs", &CAssignedRisk::costs);
    visit("bufferID", &CAssignedRisk::bufferID);
}

template class orvane::CRecord<CAssignedRisk>;

namespace
{

double secondsOf(CProjectDuration const & duration)
{
    return static_cast<double>(duration.GetTotalSeconds());
}

// What each report of the task on the risk, in their order, leaves of a size: never less than nothing.
template <class Size, class Use>
Size lessReports(Size size, CTask const & task, CRiskID const & riskID, Use const & use)
{
    for (CTaskReport const & report : task.getTaskReports())
        if (report.getRiskID() == riskID) size = std::max(use(size, report.getDuration()), Size(0));
    return size;
}

}  // namespace

// ---- size -----------------------------------------------------------------------------------------

CProjectDuration CAssignedRisk::getValueFixed(CTask const & task) const
{
    if (valueMode == CRiskValueMode::Fixed) return valueFixed;
    double const seconds = secondsOf(task.getDuration()) * valuePercent.getValue() * 0.01;
    return CProjectDuration(orvane::saturate<std::int32_t>(seconds));
}

// The percentage is that of the planned duration, the size that of the duration: no inverses.
double CAssignedRisk::getValuePercent(CTask const & task) const
{
    if (valueMode == CRiskValueMode::Percent) return valuePercent.getValue();
    double const planned = secondsOf(task.getPlannedDuration());
    return planned == 0.0 ? 100.0 : secondsOf(valueFixed) * 100.0 / planned;
}

CProjectDuration CAssignedRisk::getReportModifiedValueFixed(CTask const & task) const
{
    auto const use = [](CProjectDuration const & left, CProjectDuration const & used) { return left - used; };
    return lessReports(getValueFixed(task), task, riskID, use);
}

double CAssignedRisk::getReportModifiedValuePercent(CTask const & task) const
{
    if (task.getTaskReports().IsEmpty()) return getValuePercent(task);
    double const planned = std::max(secondsOf(task.getPlannedDuration()), 1.0);
    auto const use = [&](double left, CProjectDuration const & used) { return left - secondsOf(used) * (100.0 / planned); };
    return lessReports(getValuePercent(task), task, riskID, use);
}

// ---- costs ----------------------------------------------------------------------------------------

bool CAssignedRisk::findCost(CCost & out, CCostID const & sought) const
{
    int const position = costs ? costs.get()->findByID(sought) : -1;
    if (position >= 0) out = costs.get()->GetAt(position);
    return position >= 0;
}

bool CAssignedRisk::addCost(CCost const & cost)
{
    if (!costs.make().changeElement(cost)) costs.make().Add(cost);
    return true;
}

bool CAssignedRisk::removeCost(CCostID const & sought)
{
    int const position = costs ? costs.get()->findByID(sought) : -1;
    if (position >= 0) costs.get()->RemoveAt(position);
    return position >= 0;
}

void CAssignedRisk::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, riskID, status, weight, valuePercent, valueFixed, costs, bufferID, valueMode);
}

void CAssignedRisk::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("AssignedRisk");
    exchangeAttributes(archive);
    if (costs) archive.out(">");
    exchangeChildren(archive);
    archive.endEntity(costs ? "</AssignedRisk>" : "/>");
    orvane::readOwnedArray(archive, costs, "hasCosts");
}

void CAssignedRiskArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "AssignedRisks", "AssignedRisk");
}
