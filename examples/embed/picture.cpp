// An application that draws: a plan of two tasks as a Gantt chart, written as SVG.

#include <iostream>

#include <orvane/pictures/gantt.h>
#include <orvane/schedule.h>

int main()
{
    CProject project(nullptr, false);
    {
        CLocalRulesChecker action(&project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient));
        action.addTaskWithDuration(CProjectDuration(24, 0), 0);
        action.addTaskWithDuration(CProjectDuration(16, 0), 0);
    }
    using namespace orvane::pictures;
    std::cout << drawGantt(layOutGantt(project, GanttOptions()), Format::svg);
}
