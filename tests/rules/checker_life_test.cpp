#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"
#include "tests/support/watcher.h"

using namespace orvane;

namespace
{

CRulesCheckerContext const contexts[] = {CRulesCheckerContext::OriginatingClient,
                                         CRulesCheckerContext::TransactionServer,
                                         CRulesCheckerContext::ReceivingClient};

std::string flags(CProject const & project)
{
    std::string result = project.getChanged() ? "project " : "";
    if (project.getPresentationData().getChanged()) result += "views ";
    if (project.getCriticalPathChanged()) result += "path ";
    for (CTask const & task : project.getAllTasks())
        if (task.getChanged()) result += std::string(task.getName().view()) + ' ';
    return result;
}

TEST(CheckerLife, AnActionRunsFromTheWaitCursorToTheDialogs)
{
    for (CRulesCheckerContext const & context : contexts)
    {
        CProjectConfig::setShowCriticalPath(1);
        CRecordingHost desktop;
        Plan plan({aTask("dig"), aTask("pour")});
        desktop.updates.clear();
        int const waits = desktop.waitsBegun;
        Watcher watcher([&] { return flags(plan.project); });
        bool const hasDialogs = !(context == CRulesCheckerContext::TransactionServer);
        {
            CLocalRulesChecker rules(&plan.project, context);
            EXPECT_EQ(CLocalRulesChecker::getNumberOfLocalRulesCheckers(), 1);
            EXPECT_EQ(desktop.waitsBegun, waits + 1);
            EXPECT_EQ(desktop.waitsEnded, waits);
            EXPECT_TRUE(rules.changeTaskName(plan.id("dig"), "excavate"));
            EXPECT_TRUE(watcher.seen.empty());
        }
        EXPECT_EQ(CLocalRulesChecker::getNumberOfLocalRulesCheckers(), 0);
        EXPECT_EQ(desktop.waitsEnded, waits + 1);
        EXPECT_EQ(flags(plan.project), "");
        // An action without a change; one that moves the schedule; one that moves a view.
        plan.act([](auto &) {}, context);
        plan.act([&](auto & rules) { rules.changeTaskDuration(plan.id("pour"), 3_d, true); }, context);
        plan.act([&](auto & rules) { rules.setPrimarySelectedTaskID(plan.id("pour")); }, context);
        std::vector<std::string> const told{"project excavate ", "", "project path pour ", "views "};
        EXPECT_EQ(watcher.seen, hasDialogs ? told : std::vector<std::string>());
        EXPECT_EQ(desktop.updates, std::vector<bool>(hasDialogs ? 4 : 0, false));
        CProjectConfig::setShowCriticalPath(0);
    }
}

TEST(CheckerLife, TheEndOfAnInnerCheckerClearsTheFlagsOfTheOuter)
{
    Plan plan({aTask("dig")});
    Watcher watcher([&] { return flags(plan.project); });
    {
        CLocalRulesChecker outer(&plan.project, CRulesCheckerContext::OriginatingClient);
        CTaskID const id = plan.id("dig");
        outer.changeTaskName(id, "excavate");
        {
            CLocalRulesChecker inner(&plan.project, CRulesCheckerContext::ReceivingClient);
            EXPECT_EQ(CLocalRulesChecker::getNumberOfLocalRulesCheckers(), 2);
            inner.changeTaskComments(id, "deep");
        }
        EXPECT_EQ(CLocalRulesChecker::getNumberOfLocalRulesCheckers(), 1);
    }
    EXPECT_EQ(watcher.seen, (std::vector<std::string>{"project excavate ", ""}));
}

TEST(CheckerLife, ClearGivesTheContentOfANewProject)
{
    Plan plan({aTask("dig")});
    CUserID const user = plan.project.getCurrentUser()->getID();
    CProjectID const project = plan.project.getProjectID();
    plan.act([&](auto & rules) { EXPECT_TRUE(rules.setSelectedTaskID(plan.ids({"dig"})) && rules.clear()); });
    EXPECT_EQ(digest(plan.project), "");
    EXPECT_TRUE(plan.project.getSelectedTaskID().IsEmpty());
    EXPECT_TRUE(plan.project.getPresentationData().getTaskPresentations().IsEmpty());
    EXPECT_FALSE(plan.project.getProjectID() == project);
    // The administrator of every project has the same identity.
    EXPECT_EQ(plan.project.getCurrentUser()->getID(), user);
}

// ---- refusals ---------------------------------------------------------------------------------------

bool acceptsATask(CLocalRulesChecker & rules, CTaskID const & id)
{
    CProjectTime const time = "01-05 09:00"_t;
    bool const answers[] = {rules.changeTaskName(id, "x"),
                            rules.changeTaskStatus(id, CTaskStatus::Go),
                            rules.changeTaskDuration(id, 1_d, false),
                            rules.changeTaskStart(id, time),
                            rules.changeTaskFinish(id, time),
                            rules.changeTaskRiskType(id, CRiskType::Additive),
                            rules.changeTaskDominantCalendar(id, CCalendarID()),
                            rules.changeTaskRiskBuffer(id, true),
                            rules.changeTaskComments(id, "x"),
                            rules.changeTaskConstraint(id, CTaskConstraint()),
                            rules.changeTaskCategory(id, "x"),
                            rules.changeTaskType(id, CTaskType::KeyDate),
                            rules.changeTaskTemplateFlag(id, true),
                            rules.startTask(id, time),
                            rules.finishTask(id, time),
                            rules.addLink(id, id, CLinkType::FinishToStart),
                            rules.changeLink(CLink(id, CLinkType::FinishToStart))};
    return std::ranges::find(answers, true) != std::end(answers);
}

TEST(CheckerLife, WithoutAProjectOrItsTaskEverythingIsRefused)
{
    Plan plan({aTask("dig")});
    CTaskIDArray const ids = plan.ids({"dig"});
    {
        CLocalRulesChecker nothing(nullptr, CRulesCheckerContext::OriginatingClient);
        EXPECT_FALSE(acceptsATask(nothing, plan.id("dig")) || nothing.clear() || nothing.addTaskWithName("x", 2));
        EXPECT_FALSE(nothing.clearTasks(ids) || nothing.removeTasks(ids) || nothing.setSelectedTaskID(ids));
    }
    std::unique_ptr<CProjectData> const before(plan.project.getCopyOfProjectData());
    for (CTaskID const & id : {CTaskID(), CTaskID::getNULL()})
        EXPECT_FALSE(plan.act([&](CLocalRulesChecker & rules) { return acceptsATask(rules, id); }));
    std::unique_ptr<CProjectData> const after(plan.project.getCopyOfProjectData());
    EXPECT_TRUE(*before == *after);
}

// ---- the same action elsewhere ----------------------------------------------------------------------

template <class... IDs>
struct Replay
{
    static void collect() { (IDs::setCollectIssuedIDs(true), ...); }
    static void issue()
    {
        (IDs::setCollectIssuedIDs(false), ...);
        (IDs::getIDsToIssue().Copy(IDs::getIssuedIDs()), ...);
        (IDs::setIssueIDs(true), ...);
    }
    static int left()
    {
        int const count = (0 + ... + IDs::getIDsToIssue().GetSize());
        (IDs::getIDsToIssue().RemoveAll(), ...);
        (IDs::setIssueIDs(false), ...);
        return count;
    }
};
using ReplayAll = Replay<CTaskID, CLinkID, CSupplyChainID, CTaskCategoryID, CCalendarID, CCalendarDayTypeID, CCompanyID,
                         CUserID, CRoleID>;

TEST(CheckerLife, AnActionReplayedElsewhereGivesTheSameProject)
{
    auto const actions = [](CLocalRulesChecker & rules, CProject const & project)
    {
        auto const id = [&](int row) { return CTaskID(project.getTask(row)->getID()); };
        EXPECT_TRUE(rules.addTaskWithName("dig", 2));
        EXPECT_TRUE(rules.addTaskWithDuration(3_d, 0));
        EXPECT_TRUE(rules.addTaskWithFinish("01-09 17:00"_t, 1, true));
        EXPECT_TRUE(rules.addLink(id(2), id(3), CLinkType::FinishToStart));
        EXPECT_FALSE(rules.addLink(id(3), id(2), CLinkType::FinishToStart));
        EXPECT_TRUE(rules.changeTaskCategory(id(2), "earth"));
        CTaskIDArray cleared;
        cleared.Add(id(3));
        EXPECT_TRUE(rules.clearTasks(cleared));
        EXPECT_TRUE(rules.changeTaskName(id(3), "again"));
        EXPECT_TRUE(rules.addLink(id(2), id(3), CLinkType::StartToStart));
    };
    CProject first(nullptr, false);
    std::unique_ptr<CProjectData> const start(first.getCopyOfProjectData());
    for (CRulesCheckerContext const & context : contexts)
    {
        CRecordingHost desktop;
        first.setProjectData(start.get());
        CProject second(*start);
        second.login("Administrator", "");
        ReplayAll::collect();
        {
            CLocalRulesChecker rules(&first, CRulesCheckerContext::OriginatingClient);
            actions(rules, first);
        }
        ReplayAll::issue();
        {
            CLocalRulesChecker rules(&second, context);
            actions(rules, second);
        }
        EXPECT_EQ(ReplayAll::left(), 0) << context.getString();
        EXPECT_EQ(digest(first), digest(second));
        std::unique_ptr<CProjectData> const one(first.getCopyOfProjectData());
        std::unique_ptr<CProjectData> const other(second.getCopyOfProjectData());
        EXPECT_TRUE(*one == *other) << context.getString();
    }
}

}  // namespace
