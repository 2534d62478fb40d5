#include "security/permissions.h"

#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "model/task.h"
#include "security/role.h"
#include "security/user.h"

namespace
{

using P = CPermissions;
using U = CUser;

constexpr int all = 1, supplier = 2, customer = 3, either = 4;
enum Relation { supplies, buys, stranger };

CAccessType access(int number)
{
    CAccessType value;
    value = number;
    return value;
}

// A user of a company, and things that the company supplies, is a customer of, or has no part in.
struct Scene
{
    CCompanyID ours, theirs, others;
    CUser user;
    CTask tasks[3];
    CUser colleagues[3];

    Scene()
    {
        user.setCompanyID(ours);
        for (Relation const relation : {supplies, buys, stranger})
        {
            CSupplyChain chain(others);
            chain.assignToCompany(relation == buys ? ours : others);
            chain.assignToCompany(owner(relation));
            tasks[relation].setSupplyChain(chain);
            colleagues[relation].setCompanyID(owner(relation));
        }
    }
    CCompanyID const & owner(Relation relation) const { return relation == supplies ? ours : theirs; }

    template <class Thing>
    Thing thing(Relation relation) const
    {
        if constexpr (std::is_same_v<Thing, P::Task>) return &tasks[relation];
        else if constexpr (std::is_same_v<Thing, P::User>) return &colleagues[relation];
        else if constexpr (std::is_same_v<Thing, P::Owner>) return owner(relation);
        else return nullptr;
    }
};

// One right with all that reads or writes it, and whom it can be given to.
struct Right
{
    void (P::*set)(CAccessType const &);
    CAccessType const & (P::*get)() const;
    std::function<bool(Scene const &, Relation)> ask;
    bool supplierCounts, customerCounts;

    int figure(P const & permissions) const { return (permissions.*get)().getEquivalentValue(); }
};

template <class Thing>
Right to(void (P::*set)(CAccessType const &), CAccessType const & (P::*get)() const, bool (U::*can)(Thing) const)
{
    auto const ask = [can](Scene const & scene, Relation relation)
    {
        return (scene.user.*can)(scene.thing<Thing>(relation));
    };
    return {set, get, ask, !std::is_same_v<Thing, CRole const *>, std::is_same_v<Thing, P::Task>};
}

std::vector<Right> const rights = {
    to<P::Task>(&P::setWriteTasks, &P::getWriteTasks, &U::canWriteTask),
    to<P::Task>(&P::setReadTasks, &P::getReadTasks, &U::canReadTask),
    to<P::Task>(&P::setWriteTaskCosts, &P::getWriteTaskCosts, &U::canWriteTaskCost),
    to<P::Task>(&P::setReadTaskCosts, &P::getReadTaskCosts, &U::canReadTaskCost),
    to<P::Task>(&P::setWriteTaskResources, &P::getWriteTaskResources, &U::canWriteTaskResource),
    to<P::Task>(&P::setReadTaskResources, &P::getReadTaskResources, &U::canReadTaskResource),
    to<P::Task>(&P::setWriteTaskRisks, &P::getWriteTaskRisks, &U::canWriteTaskRisk),
    to<P::Task>(&P::setReadTaskRisks, &P::getReadTaskRisks, &U::canReadTaskRisk),
    to<P::Task>(&P::setWriteTaskRiskCosts, &P::getWriteTaskRiskCosts, &U::canWriteTaskRiskCost),
    to<P::Task>(&P::setReadTaskRiskCosts, &P::getReadTaskRiskCosts, &U::canReadTaskRiskCost),
    to<P::Task>(&P::setWriteTaskReports, &P::getWriteTaskReports, &U::canWriteTaskReport),
    to<P::Task>(&P::setReadTaskReports, &P::getReadTaskReports, &U::canReadTaskReport),
    to<P::Task>(&P::setWriteTaskReportCosts, &P::getWriteTaskReportCosts, &U::canWriteTaskReportCost),
    to<P::Task>(&P::setReadTaskReportCosts, &P::getReadTaskReportCosts, &U::canReadTaskReportCost),
    to<P::Owner>(&P::setWriteResource, &P::getWriteResource, &U::canWriteResource),
    to<P::Owner>(&P::setReadResource, &P::getReadResource, &U::canReadResource),
    to<P::Owner>(&P::setWriteResourceCost, &P::getWriteResourceCost, &U::canWriteResourceCost),
    to<P::Owner>(&P::setReadResourceCost, &P::getReadResourceCost, &U::canReadResourceCost),
    to<P::User>(&P::setWriteUsers, &P::getWriteUsers, &U::canWriteUser),
    to<CRole const *>(&P::setWriteRoles, &P::getWriteRoles, &U::canWriteRole),
};

std::string figures(P const & permissions)
{
    std::string text;
    for (Right const & right : rights) text += static_cast<char>('0' + right.figure(permissions));
    return text;
}

// The rule as a reader would apply it by hand: each pair is a right and its limit, by their places above.
std::string inheritedByHand(std::string figures)
{
    constexpr std::string_view limits = "abdbfbhbjhlbnlcaeagaigkamkcdefghijklmnrpopqoqr";
    constexpr int granted[] = {0, 0b111, 0b001, 0b010, 0b011, 0b000};  // a set of relations
    for (std::size_t i = 0; i < limits.size(); i += 2)
    {
        char &right = figures.at(limits[i] - 'a'), limit = figures.at(limits[i + 1] - 'a');
        if (granted[right - '0'] & ~granted[limit - '0']) right = limit;
    }
    return figures;
}

TEST(PermissionsTest, EachRightHasItsOwnDoorsWhichTheRelationOpens)
{
    std::mt19937 random(20261204);
    Scene scene;
    for (int round = 0; round < 2000; ++round)
    {
        CPermissions permissions;
        for (Right const & right : rights) (permissions.*right.set)(access(static_cast<int>(random() % 5) + 1));
        scene.user.setPermissions(permissions);
        scene.user.setCompanyID(round % 5 ? scene.ours : CCompanyID::getNULL());
        for (Right const & right : rights)
        {
            SCOPED_TRACE(&right - rights.data());
            int const given = right.figure(permissions);
            bool const some = round % 5 != 0;
            bool const forSupplier = some && right.supplierCounts && (given == supplier || given == either);
            bool const forCustomer = some && right.customerCounts && (given == customer || given == either);
            ASSERT_EQ(right.ask(scene, supplies), given == all || forSupplier);
            ASSERT_EQ(right.ask(scene, buys), given == all || forCustomer);
            ASSERT_EQ(right.ask(scene, stranger), given == all);
        }
        std::string const expected = inheritedByHand(figures(permissions));
        permissions.makeSubPermissionsInheritFromParent();
        ASSERT_EQ(figures(permissions), expected) << "round " << round;
    }
}

TEST(PermissionsTest, WhatIsMissingHasNoRelation)
{
    Scene const scene;
    CUser nobody;
    nobody.setCompanyID(CCompanyID::getNULL());
    CCompanyIDArray customers;
    customers.Add(CCompanyID::getNULL());
    CSupplyChain chain;
    chain.setCustomerID(customers);
    CTask forNobody;
    forNobody.setSupplyChain(chain);
    for (auto const & [user, task] : {std::pair<P::User, P::Task>{&nobody, &forNobody},
                                      {nullptr, &scene.tasks[supplies]},
                                      {nullptr, &scene.tasks[buys]},
                                      {&scene.user, nullptr}})
        EXPECT_FALSE(P::isSupplierOfTask(user, task) || P::isCustomerOfTask(user, task));
    EXPECT_FALSE(P::isSupplierOfResource(&nobody, CCompanyID::getNULL()));
    EXPECT_FALSE(P::isSupplierOfUser(&nobody, &nobody) || P::isSupplierOfUser(&scene.user, nullptr));
    CPermissions permissions;
    permissions.setWriteTasks(access(all));
    EXPECT_TRUE(permissions.canWriteTask(nullptr, nullptr));
}

TEST(PermissionsTest, EachRightCountsInComparisonsAndChanges)
{
    for (Right const & right : rights)
    {
        CPermissions nothing, some, other;
        (some.*right.set)(access(supplier));
        (other.*right.set)(access(customer));
        EXPECT_TRUE(some > nothing && some > other && other > some && some != nothing);
        EXPECT_FALSE(nothing > some || some > some || nothing.setChanged() || !some.setChanged());
    }
}

TEST(PermissionsTest, DefaultRolesAreFixed)
{
    std::tuple<void (CRole::*)(), CString, char const *> const cases[] = {
        {&CRole::setToDefaultAdministratorRole, "Administrator4a728648a92a7148b2c5225c80b91a77",
         "11111111111111111111"},
        {&CRole::setToDefaultUserRole, "Userbdcc82f4c6d2714a938e7cbe78426ecf", "21222121222122212225"},
        {&CRole::setToDefaultGuestRole, "Guestfdbd6121365ee64781859d4a60cf4ff0", "51555151555155515555"},
    };
    for (auto const & [become, nameAndID, expected] : cases)
    {
        CRole role;
        (role.*become)();
        EXPECT_EQ(role.getName() + role.getID().toString(), nameAndID);
        role.makeSubPermissionsInheritFromParentPermissions();  // leaves them as they are
        EXPECT_EQ(figures(role.getPermissions()), expected);
    }
}

}  // namespace
