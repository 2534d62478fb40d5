// The smallest application: one project, one user action, and the tree read back.

#include <orvane/schedule.h>

#include <iostream>

int main()
{
    CProject project(nullptr, false);
    {
        // The checker is the action: what follows from the changes is derived when it goes out of scope.
        CLocalRulesChecker action(&project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
        action.addTaskWithName("Excavate", 0);
        action.addTaskWithDuration(CProjectDuration(24, 0), 0);
    }
    for (CTask const & task : project.getAllTasks())
        std::cout << task.getName() << ": " << task.getDuration().GetTotalHours() << " working hours, from "
                  << task.getStartTime().getCTime().Format("%Y-%m-%d %H:%M") << '\n';
    return project.getTotalNumberOfTasks() == 2 ? 0 : 1;
}
