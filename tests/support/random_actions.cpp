#include "tests/support/random_actions.h"

#include <functional>
#include <vector>

#include "rules/local_rules_checker.h"
#include "scene/solids.h"
#include "tests/support/plan_builder.h"
#include "tests/support/task_history.h"

namespace orvane
{

namespace
{

struct Actor
{
    CProject & project;
    std::mt19937 & random;
    CLocalRulesChecker rules{&project, CRulesCheckerContext(CRulesCheckerContext::OriginatingClient)};
    std::vector<CTaskID> tasks;

    Actor(CProject & project, std::mt19937 & random) : project(project), random(random)
    {
        forEachTask(project.getAllTasks(), [this](CTask const & task, CTask const *) { tasks.push_back(task.getID()); });
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    CString text() { return CString(("text " + std::to_string(below(1000))).c_str()); }
    CTaskID task() { return tasks.empty() ? CTaskID::getNULL() : tasks[static_cast<std::size_t>(below(static_cast<int>(tasks.size())))]; }
    CTaskIDArray someTasks()
    {
        CTaskIDArray ids;
        for (int each = below(4); each >= 0; --each) ids.Add(task());
        return ids;
    }
    CProjectTime time() { return CProjectTime(2026, 1 + below(12), 1 + below(28), below(24), below(60)); }
    CProjectDuration duration() { return CProjectDuration(60L * below(10'000)); }
    template <class ID, class Array>
    ID any(Array const & all)
    {
        return all.IsEmpty() ? ID::getNULL() : ID(all.GetAt(below(all.GetSize())).getID());
    }
    CCompanyID company() { return any<CCompanyID>(project.getAllCompanies()); }
    CResourceID resource() { return any<CResourceID>(project.getAllHumanResources()); }
    CRiskID risk() { return any<CRiskID>(project.getAllRisks()); }
    template <class Record>
    Record named()
    {
        Record made;
        if constexpr (requires { made.setDescription(text()); }) made.setDescription(text());
        if constexpr (requires { made.setName(text()); }) made.setName(text());
        return made;
    }
    void addSphere()
    {
        CObArray entities;
        entities.Add(new CEntitySphere);
        rules.addEntitiesToScene(entities);
    }
    void changeCalendar()
    {
        CCalendar calendar(project.getProjectCalendar());
        CCalendarDayTypeID const dayType = calendar.getDayType(CProjectDate(2026, 3, 1 + below(7))).getID();
        calendar.setDayTypeOfSelectedDate(CProjectDate(2026, 1 + below(12), 1 + below(28)), dayType);
        rules.setCalendar(calendar);
    }
};

// clang-format off
std::vector<std::function<void(Actor &)>> const actions = {
    [](Actor & by) { by.rules.addTaskWithDuration(by.duration(), by.below(2)); },
    [](Actor & by) { by.rules.addTaskWithName(by.text(), 0); },
    [](Actor & by) { by.rules.changeTaskName(by.task(), by.text()); },
    [](Actor & by) { by.rules.changeTaskComments(by.task(), by.text()); },
    [](Actor & by) { by.rules.changeTaskStart(by.task(), by.time()); },
    [](Actor & by) { by.rules.changeTaskDuration(by.task(), by.duration(), true); },
    [](Actor & by) { by.rules.changeTaskCategory(by.task(), by.text()); },
    [](Actor & by) { by.rules.changeTaskRiskBuffer(by.task(), by.below(2) != 0); },
    [](Actor & by) { by.rules.startTask(by.task(), by.time()); },
    [](Actor & by) { by.rules.finishTask(by.task(), by.time()); },
    [](Actor & by) { by.rules.addTaskReport(by.task(), by.risk(), CProjectDate(2026, 2, 3), CTaskReportType::Delay, by.duration()); },
    [](Actor & by) { by.rules.setTasksBaseline(by.someTasks()); },
    [](Actor & by) { by.rules.removeTasks(by.someTasks()); },
    [](Actor & by) { by.rules.insertBlankTask(by.task(), CInsertType::Above); },
    [](Actor & by) { by.rules.pasteIntoNewTask(by.task(), by.below(9), CTaskPasteMode(static_cast<CTaskPasteMode::Number>(1 + by.below(3)))); },
    [](Actor & by) { by.rules.repositionTasks(by.someTasks(), by.task(), by.below(9)); },
    [](Actor & by) { by.rules.addLink(by.task(), by.task(), CLinkType(static_cast<CLinkType::Number>(1 + by.below(4)))); },
    [](Actor & by) { by.rules.addTaskCost(by.task()); },
    [](Actor & by) { by.rules.addCompany(by.named<CCompany>()); },
    [](Actor & by) { by.rules.addHumanResourceToCompany(by.named<CHumanResource>(), by.company()); },
    [](Actor & by) { by.rules.addHumanResourceToParent(by.named<CHumanResource>(), by.resource()); },
    [](Actor & by) { by.rules.addMaterialResourceToCompany(by.named<CMaterialResource>(), by.company()); },
    [](Actor & by) { by.rules.assignResourceToTask(by.task(), by.resource()); },
    [](Actor & by) { by.rules.addRisk(by.named<CRisk>(), by.below(2) ? by.risk() : CRiskID::getNULL()); },
    [](Actor & by) { by.rules.assignRiskToTask(by.someTasks(), by.risk()); },
    [](Actor & by) { by.rules.addUser(CUser(by.text(), by.text(), by.text(), by.text(), "1", "2")); },
    [](Actor & by) { by.rules.addFilter(by.named<CFilter>()); },
    [](Actor & by) { by.addSphere(); },
    [](Actor & by) { by.changeCalendar(); },
    [](Actor & by) { by.rules.setSelectedTaskID(by.someTasks()); },
};
// clang-format on

}  // namespace

void actAtRandom(CProject & project, std::mt19937 & random)
{
    Actor actor(project, random);
    actions[static_cast<std::size_t>(actor.below(static_cast<int>(actions.size())))](actor);
}

}  // namespace orvane
