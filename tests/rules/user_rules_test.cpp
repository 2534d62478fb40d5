#include <functional>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

// A project with a planner, who has the default role "User", beside the administrator.
struct Office : Plan
{
    Office()
    {
        planner.setRoleID(role("User").getID());
        act([&](auto & rules) { return rules.addUser(planner); });
    }
    CRole const & role(char const * name) const
    {
        int index = 0;
        while (!(project.getRole(index)->getName() == name)) ++index;
        return *project.getRole(index);
    }
    CUser const & admin() const { return *project.getAdminUser(); }
    CUser const & stored() const { return *project.getUser(planner.getID()); }
    // Records as a dialog would hand them in.
    CUser inRole(CUser user, char const * name) const { return user.setRoleID(role(name).getID()), user; }
    CUser altered(void (*alter)(CUser &)) const
    {
        CUser copy(stored());
        alter(copy);
        return copy;
    }

    CUser planner{"planner", "secret", "Pat", "pat@example.org", "1", "2"};
};

CRole strong(char const * name, CRole role = CRole())
{
    CRole strongest;
    strongest.setToDefaultAdministratorRole();
    role.setPermissions(strongest.getPermissions());
    role.setName(name);
    return role;
}

CUser aUser(char const * telephone = "")
{
    return CUser("new", "", "", "", telephone, "");
}

constexpr char admin[] = "Administrator", planner[] = "planner";
constexpr char noAccess[] = "You do not have Access Permission to do this.\nPlease contact the Administrator";

TEST(UserRules, WhoMayGiveWhatToWhom)
{
    struct
    {
        char const * login;
        std::function<bool(CLocalRulesChecker &, Office &)> action;
        bool done;
        // Composed by the rule, or the notice, which is no message.
        char const * box = "";
    } const cases[] = {
        {admin, [](auto & r, auto &) { return r.addRole(strong("R")); }, true},
        {planner, [](auto & r, auto &) { return r.addRole(strong("R")); }, false, noAccess},
        {admin, [](auto & r, auto & o) { return r.changeRole(strong("A", o.role("Administrator"))); }, false,
         "The Administrator Role cannot be changed"},
        {planner, [](auto & r, auto & o) { return r.changeRole(strong("G", o.role("Guest"))); }, false, noAccess},
        {admin, [](auto & r, auto & o) { return r.removeRole(o.role("Guest").getID()); }, true},
        {admin, [](auto & r, auto & o) { return r.removeRole(o.role("Administrator").getID()); }, false,
         "The Administrator Role cannot be removed"},
        {admin, [](auto & r, auto & o) { return r.removeRole(o.role("User").getID()); }, false,
         "Cannot remove \"User\" because\nthere are existing Users who have this Role"},
        {admin, [](auto & r, auto & o) { return r.addUser(o.inRole(aUser("1\n2"), admin)); }, true},
        {planner, [](auto & r, auto & o) { return r.addUser(o.inRole(aUser(), admin)); }, false, noAccess},
        // Logins may hold what other texts may not.
        {admin, [](auto & r, auto & o) { return r.changeUser(o.altered([](CUser & u) { u.setLogin("l\n"); })); }, true},
        {planner, [](auto & r, auto & o) { return r.changeUser(o.inRole(o.stored(), admin)); }, false, noAccess},
        // Without a role the user's own rights count.
        {planner,
         [](auto & r, auto & o)
         {
             return r.changeUser(o.altered(
                 [](CUser & u)
                 { u.setRoleID(CRoleID::getNULL()), u.setPermissions(strong("").getPermissions()); }));
         },
         false, noAccess},
        {admin, [](auto & r, auto & o) { return r.changeUser(o.inRole(o.admin(), "Guest")); }, false,
         "The Administrator User cannot be changed"},
        {admin, [](auto & r, auto & o) { return r.removeUser(o.stored().getID()); }, true},
        {admin, [](auto & r, auto & o) { return r.removeUser(o.admin().getID()); }, false,
         "You cannot remove yourself from the project"},
        {planner, [](auto & r, auto & o) { return r.removeUser(o.admin().getID()); }, false,
         "The Administrator User cannot be removed"},
    };
    for (auto const & each : cases)
    {
        for (int number = 1; number <= 3; ++number)
        {
            SCOPED_TRACE(testing::Message() << "case " << &each - cases << " in context " << number);
            Office office;
            EXPECT_TRUE(office.project.login(each.login, *each.login == 'p' ? "secret" : ""));
            CRecordingHost desktop;
            CRulesCheckerContext const context = contextOf(number);
            {
                CLocalRulesChecker rules(&office.project, context);
                EXPECT_EQ(each.action(rules, office), each.done);
                EXPECT_EQ(rules.getMessage(), each.box == std::string(noAccess) ? "" : each.box);
            }
            ASSERT_EQ(desktop.boxes.size(), *each.box && number == 1 ? 1u : 0u);
            for (ShownBox const & box : desktop.boxes) EXPECT_EQ(box.text, each.box);
        }
    }
}

TEST(UserRules, RefusedNewUserStays)
{
    Office office;
    ASSERT_TRUE(office.project.login("planner", "secret"));
    CRecordingHost desktop;
    EXPECT_FALSE(office.act([&](auto & rules) { return rules.addUser(office.inRole(aUser(), "Administrator")); }));
    ASSERT_EQ(office.project.getNumberOfUsers(), 3);
    EXPECT_TRUE(office.project.getUser(2)->canWriteRole(office.project.getRole(0)));
}

}  // namespace
