// What the whole plan costs: the totals of the root tasks' subtrees.

#include "model/project.h"

namespace
{

template <double (CTask::*total)(CCostTotalType const &) const>
double overRoots(CTaskArray const & roots, CCostTotalType const & totalType)
{
    double sum = 0.0;
    for (CTask const & root : roots) sum += (root.*total)(totalType);
    return sum;
}

}  // namespace

double CProject::getTotalCosts(CCostTotalType const & totalType) const
{
    return overRoots<&CTask::getTreeCosts>(projectData.tasks, totalType);
}

double CProject::getTotalEquipmentResourceCosts(CCostTotalType const & totalType) const
{
    return overRoots<&CTask::getTreeEquipmentResourceCosts>(projectData.tasks, totalType);
}

double CProject::getTotalHumanResourceCosts(CCostTotalType const & totalType) const
{
    return overRoots<&CTask::getTreeHumanResourceCosts>(projectData.tasks, totalType);
}

double CProject::getTotalLocationResourceCosts(CCostTotalType const & totalType) const
{
    return overRoots<&CTask::getTreeLocationResourceCosts>(projectData.tasks, totalType);
}

double CProject::getTotalMaterialResourceCosts(CCostTotalType const & totalType) const
{
    return overRoots<&CTask::getTreeMaterialResourceCosts>(projectData.tasks, totalType);
}

double CProject::getTotalMitigatedRiskCosts() const
{
    return overRoots<&CTask::getTreeMitigatedRiskCosts>(projectData.tasks, CCostTotalType::Budgeted);
}

double CProject::getTotalUnmitigatedRiskCosts() const
{
    return overRoots<&CTask::getTreeUnmitigatedRiskCosts>(projectData.tasks, CCostTotalType::Budgeted);
}
