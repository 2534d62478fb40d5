#include "security/role.h"

#include <gtest/gtest.h>

namespace
{

// The twenty figures, from the right to write tasks to the right to write roles.
std::string figures(CPermissions const & permissions)
{
    using P = CPermissions;
    std::string text;
    for (auto const get :
         {&P::getWriteTasks,           &P::getReadTasks,           &P::getWriteTaskCosts,   &P::getReadTaskCosts,
          &P::getWriteTaskResources,   &P::getReadTaskResources,   &P::getWriteTaskRisks,   &P::getReadTaskRisks,
          &P::getWriteTaskRiskCosts,   &P::getReadTaskRiskCosts,   &P::getWriteTaskReports, &P::getReadTaskReports,
          &P::getWriteTaskReportCosts, &P::getReadTaskReportCosts, &P::getWriteResource,    &P::getReadResource,
          &P::getWriteResourceCost,    &P::getReadResourceCost,    &P::getWriteUsers,       &P::getWriteRoles})
        text += static_cast<char>('0' + (permissions.*get)().getEquivalentValue());
    return text;
}

TEST(RoleTest, DefaultRolesAreFixed)
{
    struct
    {
        void (CRole::*become)();
        char const * name;
        char const * id;
        char const * figures;
    } const cases[] = {
        {&CRole::setToDefaultAdministratorRole, "Administrator", "4a728648a92a7148b2c5225c80b91a77",
         "11111111111111111111"},
        {&CRole::setToDefaultUserRole, "User", "bdcc82f4c6d2714a938e7cbe78426ecf", "21222121222122212225"},
        {&CRole::setToDefaultGuestRole, "Guest", "fdbd6121365ee64781859d4a60cf4ff0", "51555151555155515555"},
    };
    CRole role;
    EXPECT_EQ(role.getName(), "New Role");
    EXPECT_EQ(figures(role.getPermissions()), "55555555555555555555");
    for (auto const & each : cases)
    {
        (role.*each.become)();
        EXPECT_EQ(role.getName(), each.name);
        EXPECT_EQ(role.getID().toString(), each.id);
        EXPECT_EQ(figures(role.getPermissions()), each.figures) << each.name;
        // The inheritance leaves them as they are.
        role.makeSubPermissionsInheritFromParentPermissions();
        EXPECT_EQ(figures(role.getPermissions()), each.figures) << each.name;
    }
}

}  // namespace
