// The costs of tasks' own, and their baselines.

#include "rules/local_rules_checker.h"

namespace
{

bool canChangeCosts(CTask const & task)
{
    return task.isValid() && task.isOpen();
}

}  // namespace

bool CLocalRulesChecker::addTaskCost(CTaskID const & taskID)
{
    CTask * const task = getTask(taskID);
    if (!task || !canChangeCosts(*task)) return false;
    CCost cost;
    task->addCost(cost, -1);
    if (isOriginatingClient()) setSelectedTaskCostID(cost.getID());
    return true;
}

bool CLocalRulesChecker::changeTaskCost(CCost const & cost)
{
    CTask * const task = getHolder(cost.getID());
    if (!task || !canChangeCosts(*task)) return false;
    CCostArray costs(*task->getCosts());
    if (!costs.changeElement(cost)) return false;
    task->setCosts(costs);
    return true;
}

// The one of the three that a summary task refuses.
bool CLocalRulesChecker::removeTaskCost(CCostID const & costID)
{
    CTask * const task = getHolder(costID);
    if (!task || !canChangeCosts(*task) || task->isSummaryTask()) return false;
    CCostID const id(costID);
    CCostArray costs(*task->getCosts());
    costs.RemoveAt(costs.findByID(id));
    task->setCosts(costs);
    if (!isTransactionServer() && presentationData->getSelectedTaskCostID() == id) presentationData->clearSelectedTaskCost();
    return true;
}

bool CLocalRulesChecker::setTasksBaseline(CTaskIDArray const & taskIDs)
{
    for (CTaskID const & id : taskIDs)
        if (CTask * const task = getTask(id); task && task->canChangeBaseline()) task->setBaseline();
    return true;
}

bool CLocalRulesChecker::clearTasksBaseline(CTaskIDArray const & taskIDs)
{
    for (CTaskID const & id : taskIDs)
        if (CTask * const task = getTask(id); task && task->canChangeBaseline()) task->clearBaseline();
    return true;
}
