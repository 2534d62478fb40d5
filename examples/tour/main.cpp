// A walk through the library: a small site is planned by a handful of user actions, each through the rules; the plan is read
// back with its dates and its critical path, undone, saved and loaded.

#include <orvane/schedule.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace
{

CRulesCheckerContext const user(CRulesCheckerContext::OriginatingClient);

struct Job
{
    char const * name;
    int days;
};

CString shown(CProjectTime const & time)
{
    return time.isValid() ? time.getCTime().Format("%a %d %b %Y %H:%M") : CString("-");
}

CTaskID newest(CProject const & project)
{
    return project.getAllTasks().GetAt(project.getNumberOfTasks() - 1).getID();
}

// One action adds all jobs; the first starts at the given time, as they all would without links.
std::vector<CTaskID> addJobs(CProject & project, std::initializer_list<Job> jobs, CProjectTime const & start)
{
    CLocalRulesChecker action(&project, user);
    std::vector<CTaskID> ids;
    for (Job const & job : jobs)
    {
        action.addTaskWithName(job.name, 0);
        CTaskID const id = newest(project);
        action.changeTaskDuration(id, CProjectDuration(job.days * 8, 0), true);
        action.changeTaskStart(id, start);
        ids.push_back(id);
    }
    return ids;
}

void link(CProject & project, CTaskID const & from, CTaskID const & to, CLinkType const & type)
{
    CLocalRulesChecker action(&project, user);
    action.addLink(from, to, type);
}

// Moves each task to the first start that its links allow: the tasks stand in the order of their links.
void schedule(CProject & project, std::vector<CTaskID> const & ids)
{
    CLocalRulesChecker action(&project, user);
    for (CTaskID const & id : ids)
    {
        CProjectTime const earliest = project.getEarliestStartFromUpstreamLinks(id);
        if (earliest.isValid()) action.changeTaskStart(id, earliest);
    }
}

void print(CProject const & project, CTaskArray const & tasks, int depth)
{
    for (CTask const & task : tasks)
    {
        std::string const name = std::string(static_cast<std::size_t>(2 * depth), ' ') + static_cast<char const *>(task.getName());
        std::printf("%c %-28s %-22s %-22s %5.1f days  %s\n", project.isInCriticalPath(task.getID()) ? '*' : ' ', name.c_str(),
                    static_cast<char const *>(shown(task.getStartTime())), static_cast<char const *>(shown(task.getEndTime())),
                    static_cast<double>(task.getDuration().GetTotalMinutes()) / 480.0,
                    static_cast<char const *>(task.getStatus().getString()));
        if (task.getSubTasks()) print(project, *task.getSubTasks(), depth + 1);
    }
}

void print(CProject const & project, char const * title)
{
    std::printf("\n%s\n", title);
    print(project, project.getAllTasks(), 0);
}

// A company brings a crew of two trades, paid by the hour, and a crane, paid by the day; both pour the foundation.
void payFor(CProject & project, CTaskID const & pour)
{
    CCompany const company("Groundworks", CCompanyType::Contractor, "", "", "", "");
    CHumanResource crew;
    CHumanResource carpenters;
    CHumanResource labourers;
    CEquipmentResource crane;
    {
        CLocalRulesChecker action(&project, user);
        carpenters.setUseRatePerDay(2);
        labourers.setUseRatePerDay(3);
        action.addCompany(company);
        action.addHumanResourceToCompany(crew, company.getID());
        action.addHumanResourceToParent(carpenters, crew.getID());
        action.addHumanResourceToParent(labourers, crew.getID());
        action.addEquipmentResourceToCompany(crane, company.getID());
        for (auto const & [id, type, amount] : {std::tuple{carpenters.getID(), CCostType::Hourly, 34.0},
                                                {labourers.getID(), CCostType::Hourly, 27.0},
                                                {crane.getID(), CCostType::Daily, 640.0}})
        {
            action.addResourceCost(id);
            CCost cost(project.getResource(id)->getCosts()->GetAt(0));
            cost.setType(type);
            cost.setAmount(amount);
            action.changeResourceCost(cost);
        }
        action.assignResourceToTask(pour, crew.getID());
        action.assignResourceToTask(pour, crane.getID());
    }
    CTask const & task = *project.getTask(pour);
    std::printf("\n%s costs %.2f: %.2f for people, %.2f for the crane.\n", static_cast<char const *>(task.getName()),
                task.getSumTotal(CCostTotalType::Budgeted), task.getHumanResourceCostsTotal(CCostTotalType::Budgeted),
                task.getEquipmentResourceCostsTotal(CCostTotalType::Budgeted));
}

// Rain may cost the excavation a fifth of its time; the frame's task keeps that time in reserve.
void reckonWithRain(CProject & project, CTaskID const & excavation, CTaskID const & buffer)
{
    {
        CLocalRulesChecker action(&project, user);
        CRisk rain;
        rain.setDescription("Rain");
        CTaskIDArray tasks;
        tasks.Add(excavation);
        action.addRisk(rain, CRiskID::getNULL());
        action.assignRiskToTask(tasks, rain.getID());
        CAssignedRisk assigned(project.getTask(excavation)->getAssignedRisks().GetAt(0));
        assigned.setValuePercent(20.0);
        assigned.setStatus(CRiskStatus::Buffered);
        assigned.setBufferID(buffer);
        action.changeAssignedRisk(assigned);
    }
    CTask const & reserve = *project.getTask(buffer);
    std::printf("\n%s holds %.1f hours in reserve for rain and ends %s at the latest.\n",
                static_cast<char const *>(reserve.getName()),
                static_cast<double>(reserve.getStoredRiskDuration().GetTotalMinutes()) / 60.0,
                static_cast<char const *>(shown(reserve.getEndOfStoredRisk())));
}

// A column stands for the crane; then the plan is saved, changed, taken back by undo, and read from its file.
void keep(CProject & project, CTaskID const & pour)
{
    std::filesystem::path const folder = std::filesystem::temp_directory_path() / "orvane-demo";
    std::filesystem::create_directories(folder);
    CString const history(folder.c_str());
    CString const file((folder / "site.prj").c_str());

    {
        CLocalRulesChecker action(&project, user);
        auto column = std::make_unique<CEntityCylinder>();
        CEntityID id{CEntityID::getNULL()};
        id.setGUID(column->getHandle().getGUID());
        CObArray entities;
        entities.Add(column.get());
        if (action.addEntitiesToScene(entities)) column.release();
        CEquipmentResourceArray const cranes = project.getAllEquipmentResources();
        action.assignEntityToResource(id, cranes.GetAt(0).getID());
        action.changeEntityCylinderDimensions(id, 1.5, 40);
    }

    project.setProjectNameDirectoryAndHistoryDirectory("site", history, history);
    project.setFullHistory(true);
    project.setCurrentStateIndex(CProjectStateIndex(1));
    project.pushState("Remove the foundation");
    {
        CLocalRulesChecker action(&project, user);
        CTaskIDArray one;
        one.Add(pour);
        action.removeTasks(one);
    }
    int const without = project.getTotalNumberOfTasks();
    project.setCurrentStateIndex(CProjectStateIndex(2));
    {
        CLocalRulesChecker action(&project, user);
        action.undo(1);
    }
    std::printf("\nWithout the foundation there are %d jobs; after undo %d again.\n", without, project.getTotalNumberOfTasks());

    project.saveToFile(file);
    CProject again(nullptr, false);
    again.readFromFile(file, true);
    std::printf("Saved in %ju bytes and read back: %d jobs, cost %.0f as before, the crane is %s in the scene.\n",
                static_cast<std::uintmax_t>(std::filesystem::file_size(file.view())), again.getTotalNumberOfTasks(),
                again.getTotalCosts(CCostTotalType::Budgeted), again.getScene().isEmpty() ? "missing" : "a column");
    std::filesystem::remove_all(folder);
}

}  // namespace

int main()
{
    CProjectConfig::setShowCriticalPath(1);
    CProject project(nullptr, false);
    std::printf("Logged in as %s, who is %s.\n", static_cast<char const *>(project.getCurrentUser()->getName()),
                static_cast<char const *>(project.getCurrentRole()->getName()));

    std::vector<CTaskID> const ids = addJobs(project,
                                             {{"Set out the site", 1},
                                              {"Excavate", 4},
                                              {"Drain the trench", 2},
                                              {"Formwork", 3},
                                              {"Pour the foundation", 2},
                                              {"Order steel", 12},
                                              {"Erect the frame", 5}},
                                             CProjectTime(2027, 3, 1, 9, 0));
    print(project, "Seven jobs, none linked: all start on Monday.");

    link(project, ids[0], ids[1], CLinkType::FinishToStart);
    link(project, ids[1], ids[2], CLinkType::StartToStart);
    link(project, ids[1], ids[3], CLinkType::FinishToStart);
    link(project, ids[3], ids[4], CLinkType::FinishToStart);
    link(project, ids[4], ids[6], CLinkType::FinishToStart);
    link(project, ids[5], ids[6], CLinkType::FinishToStart);
    schedule(project, ids);
    print(project, "Linked and moved to the first starts that the links allow; * is on the critical path.");

    payFor(project, ids[4]);
    reckonWithRain(project, ids[1], ids[6]);

    {
        CLocalRulesChecker action(&project, user);
        action.startTask(ids[0], CProjectTime(2027, 3, 1, 10, 0));
        action.changeTaskStatus(ids[0], CTaskStatus::Started);
        std::printf("\nA link back from the frame to the start is %s.\n",
                    action.addLink(ids[6], ids[0], CLinkType::FinishToStart) ? "taken" : "refused");
        CLinkArray links;
        project.getDownstreamLinks(ids[6], links);
        for (CLink const & circular : links) action.removeLink(circular.getID());
    }
    print(project, "The first job began an hour late.");

    CStringArray chain;
    project.getCriticalPath().getCriticalPathDescription(chain);
    std::printf("\nThe longest chain takes %.1f working days:\n",
                static_cast<double>(project.getCriticalPath().getDurationOfCriticalPath().GetTotalMinutes()) / 480.0);
    for (CString const & line : chain) std::printf("  %s\n", static_cast<char const *>(line));

    keep(project, ids[4]);
    return 0;
}
