#include "security/user.h"

#include <gtest/gtest.h>

#include "model/project.h"
#include "tests/support/recording_host.h"

namespace
{

TEST(UserTest, ANamelessUserIsCalledByTheLoginAndCanBecomeTheAdministrator)
{
    auto const card = [](CUser const & user)
    {
        return user.getName() + "," + user.getLogin() + "," + user.getPassword() + "," + user.getEmail() + "," +
               user.getTelephoneNumber() + "," + user.getMobileTelephoneNumber();
    };
    CUser user("anna", "secret", "", "a@site", "1", "2");
    EXPECT_EQ(card(user), "anna,anna,secret,a@site,1,2");
    EXPECT_EQ(card(CUser("anna", "", "Anna", "", "", "")), "Anna,anna,,,,");
    EXPECT_TRUE(user.getRoleID().isNULL() && user.getCompanyID().isNULL());
    EXPECT_FALSE(CUser().getRoleID().isNULL() || CUser().getCompanyID().isNULL());
    CRoleID const role;
    user.setCompanyID(CCompanyID());
    user.setupBlankAdministratorUser(role);
    EXPECT_EQ(user.getID().toString(), "8232b9a019dc95499ae858bff525a438");
    EXPECT_EQ(card(user), "Administrator,Administrator,,,,");
    EXPECT_TRUE(user.getRoleID() == role && user.getCompanyID().isNULL());
}

TEST(UserTest, LoginsAreFoundExactly)
{
    CUserArray users;
    for (char const * login : {"anna", "Bob", "anna", ""}) users.Add(CUser(login, "", "", "", "", ""));
    std::pair<CString, int> const cases[] = {
        {"anna", 0}, {"Bob", 1}, {"bob", -1}, {"ann", -1}, {"anna ", -1}, {"", 3}, {CString("Bob\0b", 5), -1},
    };
    for (auto const & [login, position] : cases) EXPECT_EQ(users.findByLogin(login), position) << login;
    EXPECT_EQ(users.findByLogin(nullptr), 3);
    EXPECT_EQ(CUserArray().findByLogin("anna"), -1);
}

TEST(UserTest, TheRoleCountsWhereItCanBeFound)
{
    CProject project(nullptr, false);
    CUser user;
    CPermissions own;
    own.setWriteRoles(CAccessType::All);
    user.setPermissions(own);
    user.setRoleID(project.getRole(2)->getID());
    EXPECT_TRUE(user.canWriteRole(project.getRole(1))) << "without a project, the user's own permissions";
    user.setProject(&project);
    EXPECT_FALSE(user.canWriteRole(project.getRole(1))) << "a guest";
    user.setRoleID(CRoleID::getNULL());
    EXPECT_TRUE(user.canWriteRole(project.getRole(1))) << "without a role";
    user.setRoleID(CRoleID());
    EXPECT_TRUE(user.canWriteRole(project.getRole(1))) << "with a role that is gone";
}

TEST(UserTest, LooksObjectsUpInTheProject)
{
    CProject project(nullptr, false);
    CUser user;
    user.setProject(&project);
    user.setRoleID(project.getRole(1)->getID());
    CUserID const administrator = project.getAdminUser()->getID();
    EXPECT_FALSE(user.canWriteUser(administrator)) << "of no company";
    EXPECT_FALSE(user.canWriteRole(project.getAdminRole()->getID()));
    EXPECT_FALSE(user.canWriteTask(CTaskID()));
    EXPECT_TRUE(user.canReadTask(CTaskID())) << "all tasks, also those that do not exist";
    CUser const * const admin = project.getCurrentUser();
    ASSERT_NE(admin, nullptr);
    CTaskID const none;
    EXPECT_TRUE(admin->canWriteTask(none) && admin->canWriteTaskCost(none) && admin->canWriteTaskResource(none) &&
                admin->canWriteTaskRisk(none) && admin->canWriteTaskReport(none) && admin->canReadTask(none) &&
                admin->canWriteUser(user.getID()) && admin->canWriteRole(CRoleID()));
}

TEST(UserTest, ALostRoleBecomesTheAdministrators)
{
    CProject project(nullptr, false);
    CRoleID const admin = project.getAdminRole()->getID();
    CRoleID const guest = project.getRole(2)->getID();
    CRoleID const null = CRoleID::getNULL();
    std::pair<CRoleID, CRoleID> const cases[] = {{CRoleID(), admin}, {guest, guest}, {null, null}};
    for (auto const & [before, after] : cases)
    {
        CUser user;
        user.setRoleID(before);
        user.postSerialize(nullptr);
        EXPECT_EQ(user.getRoleID(), before);
        user.postSerialize(&project);
        EXPECT_EQ(user.getRoleID(), after);
    }
}

TEST(UserTest, TheNoticeNamesTheAdministratorsAddress)
{
    orvane::CRecordingHost host;
    CProject project(nullptr, false);
    CUser user;
    user.showNoAccessNotice();
    user.setProject(&project);
    // Without an action at hand.
    const_cast<CUser *>(project.getAdminUser())->setEmail("%s@site");
    user.showNoAccessNotice();
    CString const text = "You do not have Access Permission to do this.\nPlease contact the Administrator";
    CString const caption = "Tessel Orvane Schedule";
    EXPECT_EQ(host.boxes, (std::vector<orvane::ShownBox>{
                              {text, caption, 0x2010},
                              {text + ", by emailing\n%s@site", caption, 0x2010},
                          }));
}

}  // namespace
