#include <functional>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

CRulesCheckerContext in(int number)
{
    CRulesCheckerContext value;
    value = number;
    return value;
}

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

    CUser planner{"planner", "secret", "Pat", "pat@example.org", "1", "2"};
};

constexpr char noAccess[] = "You do not have Access Permission to do this.\nPlease contact the Administrator";

// One refusal or success: what it answers, and what the user reads of it.
struct Case
{
    char const * login;
    std::function<bool(CLocalRulesChecker &, Office &)> action;
    bool done;
    // Composed by the rule, or the notice, which is no message.
    char const * box = "";
};

template <class Alter>
auto changedUser(Alter alter, bool admin = false)
{
    return [=](CLocalRulesChecker & rules, Office & office)
    {
        CUser copy(admin ? office.admin() : office.stored());
        alter(copy, office);
        return rules.changeUser(copy);
    };
}

template <class Alter>
auto changedRole(char const * name, Alter alter)
{
    return [=](CLocalRulesChecker & rules, Office & office)
    {
        CRole copy(office.role(name));
        alter(copy);
        return rules.changeRole(copy);
    };
}

CPermissions everything()
{
    CRole role;
    role.setToDefaultAdministratorRole();
    return role.getPermissions();
}

bool addRole(CLocalRulesChecker & rules, char const * name, CPermissions const & permissions)
{
    CRole role;
    role.setName(name);
    role.setPermissions(permissions);
    return rules.addRole(role);
}

bool addUser(CLocalRulesChecker & rules, Office & office, char const * role, char const * telephone = "")
{
    CUser user("new", "", "", "", telephone, "");
    user.setRoleID(office.role(role).getID());
    return rules.addUser(user);
}

using Rules = CLocalRulesChecker;

Case const cases[] = {
    // Roles.
    {"Administrator", [](Rules & rules, Office &) { return addRole(rules, "R", everything()); }, true},
    {"Administrator", [](Rules & rules, Office &) { return addRole(rules, "a\x10", everything()); }, false},
    {"planner", [](Rules & rules, Office &) { return addRole(rules, "R", everything()); }, false, noAccess},
    {"", [](Rules & rules, Office &) { return addRole(rules, "R", CPermissions()); }, false},
    {"Administrator", changedRole("Administrator", [](CRole &) {}), false, "The Administrator Role cannot be changed"},
    {"planner", changedRole("Guest", [](CRole & role) { role.setPermissions(everything()); }), false, noAccess},
    {"Administrator", [](Rules & rules, Office & office) { return rules.removeRole(office.role("Guest").getID()); },
     true},
    {"Administrator",
     [](Rules & rules, Office & office) { return rules.removeRole(office.role("Administrator").getID()); }, false,
     "The Administrator Role cannot be removed"},
    {"Administrator", [](Rules & rules, Office & office) { return rules.removeRole(office.role("User").getID()); },
     false, "Cannot remove \"User\" because\nthere are existing Users who have this Role"},
    // New users.
    {"Administrator", [](Rules & rules, Office & office) { return addUser(rules, office, "Administrator", "1\n2"); },
     true},
    {"planner", [](Rules & rules, Office & office) { return addUser(rules, office, "User"); }, true},
    {"planner", [](Rules & rules, Office & office) { return addUser(rules, office, "Administrator"); }, false,
     noAccess},
    // Changed ones. An unchanged text passes, whatever it holds.
    {"Administrator", changedUser([](CUser & user, Office &) { user.setLogin("l\n"); }), true},
    {"Administrator", changedUser([](CUser & user, Office &) { user.setTelephoneNumber("1\n"); }), false},
    {"Administrator", changedUser([](CUser & user, Office &) { user.setRoleID(CRoleID()); }), false},
    {"planner", changedUser([](CUser & user, Office & office) { user.setRoleID(office.role("Guest").getID()); }), true},
    {"planner", changedUser([](CUser & user, Office & office) { user.setRoleID(office.admin().getRoleID()); }), false,
     noAccess},
    // Without a role the user's own rights count.
    {"planner",
     changedUser([](CUser & user, Office &) { user.setRoleID(CRoleID::getNULL()), user.setPermissions(everything()); }),
     false, noAccess},
    {"Administrator", changedUser([](CUser & user, Office &) { user.setPassword("new"); }, true), true},
    {"Administrator",
     changedUser([](CUser & user, Office & office) { user.setRoleID(office.role("Guest").getID()); }, true), false,
     "The Administrator User cannot be changed"},
    // Users who go.
    {"Administrator", [](Rules & rules, Office & office) { return rules.removeUser(office.stored().getID()); }, true},
    {"Administrator", [](Rules & rules, Office & office) { return rules.removeUser(office.admin().getID()); }, false,
     "You cannot remove yourself from the project"},
    {"planner", [](Rules & rules, Office & office) { return rules.removeUser(office.admin().getID()); }, false,
     "The Administrator User cannot be removed"},
};

TEST(UserRules, WhoMayGiveWhatToWhom)
{
    for (Case const & each : cases)
    {
        for (int number = 1; number <= 3; ++number)
        {
            SCOPED_TRACE(testing::Message() << "case " << &each - cases << " in context " << number);
            Office office;
            if (*each.login) EXPECT_TRUE(office.project.login(each.login, *each.login == 'p' ? "secret" : ""));
            else
            {
                // Nobody is logged in once the current user is gone.
                CUser const gone("gone", "", "", "", "", "");
                CUser guest(gone);
                guest.setRoleID(office.role("Guest").getID());
                office.act([&](auto & rules) { return rules.addUser(guest); });
                EXPECT_TRUE(office.project.login("gone", ""));
                auto & users = const_cast<CUserArray &>(office.project.getAllUsers());
                users.RemoveAt(users.findByID(guest.getID()));
            }
            CRecordingHost desktop;
            {
                CLocalRulesChecker rules(&office.project, in(number));
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
    EXPECT_FALSE(office.act([&](auto & rules) { return addUser(rules, office, "Administrator"); }));
    ASSERT_EQ(office.project.getNumberOfUsers(), 3);
    EXPECT_TRUE(office.project.getUser(2)->canWriteRole(office.project.getRole(0)));
}

}  // namespace
