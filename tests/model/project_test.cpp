#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

TEST(Project, StartsWithRolesAnAdministratorAndAnEmptyPlan)
{
    int const created = CProject::getCreated(), deleted = CProject::getDeleted();
    {
        CProject const project(nullptr, true);
        std::string roles;
        for (CRole const & role : project.getAllRoles()) roles += std::string(role.getName().view()) + ' ';
        EXPECT_EQ(roles, "Administrator User Guest ");
        EXPECT_TRUE(project.getCurrentUser() == project.getUser(0) && project.getAdminUser() == project.getUser(0));
        EXPECT_TRUE(project.getCurrentRole() == project.getRole(0) && project.getAdminRole() == project.getRole(0));
        for (int const index : {-1, 3}) EXPECT_FALSE(project.getUser(index) || project.getRole(index));
    }
    EXPECT_EQ(CProject::getCreated() - created, CProject::getDeleted() - deleted);
}

TEST(Project, AFailedLoginLeavesTheUser)
{
    CProject project(nullptr, false);
    CUser const * const before = project.getCurrentUser();
    for (auto const & [login, password] :
         {std::pair{"Administrator", ""}, {"administrator", ""}, {"Administrator", "x"}})
    {
        bool const isAccepted = std::string(login) + password == "Administrator";
        EXPECT_EQ(project.login(login, password), isAccepted);
        EXPECT_EQ(project.getCurrentUser(), before);
    }
    // Content without users: nobody can be found, nobody can log in.
    CProject empty((CProjectData()));
    EXPECT_FALSE(empty.getCurrentUser() || empty.getCurrentRole() || empty.getAdminUser() || empty.getAdminRole());
    EXPECT_FALSE(empty.login("Administrator", ""));
}

TEST(Project, TakesContentOverAndGivesCopies)
{
    Plan plan({aTask("dig"), aTask("s").with({aTask("t").after("dig")})});
    std::string const before = digest(plan.project);
    std::unique_ptr<CProjectData> const copy(plan.project.getCopyOfProjectData());
    {
        // What was taken over belongs to the project that took it.
        CProject other(*copy);
        EXPECT_EQ(digest(other), before);
        CLocalRulesChecker(&other, CRulesCheckerContext::OriginatingClient).changeTaskDuration(plan.id("t"), 3_d, true);
        EXPECT_EQ(other.getTask(plan.id("s"))->getDuration(), 3_d);
    }
    EXPECT_EQ(digest(plan.project), before);
    plan.act([&](auto & rules) { rules.removeTasks(plan.ids({"s"})); });
    plan.project.setProjectData(copy.get());
    EXPECT_EQ(plan["t"].getParent(), &plan["s"]);
    EXPECT_EQ(static_cast<CTaskCachedData const &>(plan["t"]).getProject(), &plan.project);
    plan.project.setProjectData(nullptr);
    plan.project.setPresentationData(nullptr);
    EXPECT_EQ(digest(plan.project), before);
}

TEST(Project, ContentIsComparedByWhatItHolds)
{
    Plan plan({aTask("dig"), aTask("s").with({aTask("t").after("dig")})});
    std::unique_ptr<CProjectData> const before(plan.project.getCopyOfProjectData());
    auto const isSame = [&]
    {
        std::unique_ptr<CProjectData> const now(plan.project.getCopyOfProjectData());
        return *now == *before && *before == *now;
    };
    EXPECT_TRUE(isSame());
    // Views and what is derived take no part.
    plan.act([&](auto & rules) { rules.setSelectedTaskID(plan.ids({"dig"})); });
    EXPECT_TRUE(isSame());
    std::pair<char const *, std::function<void(CTask &)>> const changes[] = {
        {"name", [](CTask & t) { t.setName("x"); }},
        {"status", [](CTask & t) { t.setStatus(CTaskStatus::Go); }},
        {"type", [](CTask & t) { t.setTaskType(CTaskType::KeyDate); }},
        {"category", [](CTask & t) { t.setCategoryID(CTaskCategoryID()); }},
        {"buffer", [](CTask & t) { t.setRiskBuffer(true); }},
        {"calendar", [](CTask & t) { t.setDominantCalendarID(CCalendarID()); }},
        {"risk type", [](CTask & t) { t.setRiskType(CRiskType::Additive); }},
        {"constraint", [](CTask & t) { t.setConstraintType(CTaskConstraintType::CannotReschedule); }},
        {"links", [](CTask & t) { t.setUpstreamLinks(Plan({aTask("a").after("a")})["a"].getUpstreamLinks()); }},
        {"supplier", [](CTask & t) { t.getWritableSupplyChain().setSupplierID(CCompanyID()); }},
        {"actual finish", [](CTask & t) { t.setActualFinishTime("01-05 09:00"_t); }},
        {"planned start", [](CTask & t) { t.reschedulePlannedStartTime("01-06 09:00"_t); }},
        {"duration", [](CTask & t) { t.setDuration(2_d); }},
        {"id", [](CTask & t) { t.setID(CTaskID()); }},
        {"child", [](CTask & t) { t.insertSubTask(CTask(), 0); }},
    };
    for (auto const & [name, change] : changes)
    {
        CTask & task = plan.writable("t");
        CTask const kept(task);
        plan.project.resetChanged();
        change(task);
        EXPECT_FALSE(isSame() || task == kept) << name;
        // Every setter is heard, also from under a summary task.
        EXPECT_TRUE(plan.tasks().setChanged() && plan["s"].getChanged() && task.getChanged()) << name;
        EXPECT_FALSE(plan["dig"].getChanged()) << name;
        task = kept;
        EXPECT_TRUE(isSame()) << name;
    }
}

// ---- after a load -----------------------------------------------------------------------------------

TEST(Project, ALoadGivesBegunTasksTheirTimes)
{
    // Status, planned start, actual start, predicted and actual finish; the last three and the links after the load.
    std::tuple<CTaskStatus, CProjectTime, CProjectTime, CProjectTime, CProjectTime, char const *> const cases[] = {
        {CTaskStatus::Go, "01-05 09:00"_t, "?"_t, "?"_t, "?"_t, "? ? ? 1"},
        {CTaskStatus::Started, "01-05 09:00"_t, "?"_t, "?"_t, "?"_t, "01-05 09:00 01-06 17:00 ? 1"},
        // A blank task keeps the links that dangle.
        {CTaskStatus::Started, "?"_t, "?"_t, "01-06 10:00"_t, "?"_t, "? 01-06 10:00 ? 3"},
        {CTaskStatus::Finished, "01-05 09:00"_t, "?"_t, "?"_t, "?"_t, "01-05 09:00 01-06 17:00 01-06 17:00 1"},
        {CTaskStatus::Finished, "01-05 09:00"_t, "?"_t, "01-06 10:00"_t, "01-06 11:00"_t,
         "01-05 09:00 01-06 10:00 01-06 11:00 1"},
    };
    for (auto const & [status, planned, actual, predicted, finish, after] : cases)
    {
        Plan plan({aTask("gone"), aTask("kept"), aTask("t").lasting(2_d).after("gone").after("kept").after("gone")});
        CTask & task = plan.writable("t");
        task.setActualStartTime(actual);
        task.setPredictedFinishTime(predicted);
        task.setActualFinishTime(finish);
        task.setStatus(status);
        const_cast<CProjectTime &>(task.getPlannedStartTime()) = planned;
        plan.tasks().RemoveAt(0);
        plan.project.postSerialize();
        CTask const & t = plan["t"];
        EXPECT_EQ(text(t.getActualStartTime()) + ' ' + text(t.getPredictedFinishTime()) + ' ' +
                      text(t.getActualFinishTime()) + ' ' + std::to_string(t.getUpstreamLinks().GetSize()),
                  after);
    }
}

TEST(Project, ALoadWithoutItsAdministratorGetsTheDefaultUsers)
{
    std::pair<void (*)(CUser &, CRole &), bool> const cases[] = {
        {[](CUser & user, CRole &) { user.setEmail("a@b"); }, true},
        {[](CUser & user, CRole &) { user.setLogin("administrator"); }, false},
        {[](CUser & user, CRole &) { user.setID(CUserID()); }, false},
        {[](CUser &, CRole & role) { role.setName("Chief"); }, false},
    };
    for (auto const & [damage, isKept] : cases)
    {
        CProject project(nullptr, false);
        damage(const_cast<CUser &>(project.getAllUsers().GetAt(0)),
               const_cast<CRole &>(project.getAllRoles().GetAt(0)));
        CRoleID const guest = project.getRole(2)->getID();
        project.postSerialize();
        EXPECT_TRUE(project.getNumberOfUsers() == 1 && project.getNumberOfRoles() == 3);
        EXPECT_EQ(project.getAdminUser()->getEmail() == "a@b", isKept);
        EXPECT_EQ(project.getAdminUser()->getLogin(), "Administrator");
        EXPECT_EQ(project.getAdminRole()->getName(), "Administrator");
        EXPECT_TRUE(!isKept || project.getRole(guest));
    }
}

}  // namespace
