#include "security/permissions.h"

#include <functional>
#include <map>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "model/task.h"
#include "security/role.h"
#include "security/user.h"

namespace
{

constexpr int all = 1, supplier = 2, customer = 3, either = 4, none = 5;

CAccessType access(int number)
{
    CAccessType value;
    value = number;
    return value;
}

enum Relation
{
    supplies,
    buys,
    stranger
};
constexpr Relation relations[] = {supplies, buys, stranger};

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
        for (Relation const relation : relations)
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
        if constexpr (std::is_same_v<Thing, CTask const *>) return &tasks[relation];
        else if constexpr (std::is_same_v<Thing, CUser const *>) return &colleagues[relation];
        else if constexpr (std::is_same_v<Thing, CCompanyID const &>) return owner(relation);
        else return nullptr;
    }
};

using P = CPermissions;
using U = CUser;
using Getter = CAccessType const & (P::*)() const;

// One right with all that reads or writes it.
struct Right
{
    char const * name;
    void (P::*set)(CAccessType const &);
    Getter get;
    // Asks the user and the user's permissions, who must agree.
    std::function<bool(Scene const &, Relation)> ask;
    bool supplierCounts;
    bool customerCounts;
};

template <class Thing>
Right right(char const * name, void (P::*set)(CAccessType const &), Getter get,
            bool (P::*permits)(CUser const *, Thing) const, bool (U::*can)(Thing) const)
{
    auto const ask = [=](Scene const & scene, Relation relation)
    {
        Thing thing = scene.thing<Thing>(relation);
        bool const answer = (scene.user.*can)(thing);
        EXPECT_EQ((scene.user.getPermissions().*permits)(&scene.user, thing), answer);
        return answer;
    };
    constexpr bool isTask = std::is_same_v<Thing, CTask const *>;
    return {name, set, get, ask, !std::is_same_v<Thing, CRole const *>, isTask};
}

std::vector<Right> const rights = {
    right("writeTasks", &P::setWriteTasks, &P::getWriteTasks, &P::canWriteTask, &U::canWriteTask),
    right("readTasks", &P::setReadTasks, &P::getReadTasks, &P::canReadTask, &U::canReadTask),
    right("writeTaskCosts", &P::setWriteTaskCosts, &P::getWriteTaskCosts, &P::canWriteTaskCost, &U::canWriteTaskCost),
    right("readTaskCosts", &P::setReadTaskCosts, &P::getReadTaskCosts, &P::canReadTaskCost, &U::canReadTaskCost),
    right("writeTaskResources", &P::setWriteTaskResources, &P::getWriteTaskResources, &P::canWriteTaskResources,
          &U::canWriteTaskResource),
    right("readTaskResources", &P::setReadTaskResources, &P::getReadTaskResources, &P::canReadTaskResources,
          &U::canReadTaskResource),
    right("writeTaskRisks", &P::setWriteTaskRisks, &P::getWriteTaskRisks, &P::canWriteTaskRisks, &U::canWriteTaskRisk),
    right("readTaskRisks", &P::setReadTaskRisks, &P::getReadTaskRisks, &P::canReadTaskRisks, &U::canReadTaskRisk),
    right("writeTaskRiskCosts", &P::setWriteTaskRiskCosts, &P::getWriteTaskRiskCosts, &P::canWriteTaskRiskCosts,
          &U::canWriteTaskRiskCost),
    right("readTaskRiskCosts", &P::setReadTaskRiskCosts, &P::getReadTaskRiskCosts, &P::canReadTaskRiskCosts,
          &U::canReadTaskRiskCost),
    right("writeTaskReports", &P::setWriteTaskReports, &P::getWriteTaskReports, &P::canWriteTaskReports,
          &U::canWriteTaskReport),
    right("readTaskReports", &P::setReadTaskReports, &P::getReadTaskReports, &P::canReadTaskReports,
          &U::canReadTaskReport),
    right("writeTaskReportCosts", &P::setWriteTaskReportCosts, &P::getWriteTaskReportCosts, &P::canWriteTaskReportCosts,
          &U::canWriteTaskReportCost),
    right("readTaskReportCosts", &P::setReadTaskReportCosts, &P::getReadTaskReportCosts, &P::canReadTaskReportCosts,
          &U::canReadTaskReportCost),
    right("writeResources", &P::setWriteResource, &P::getWriteResource, &P::canWriteResource, &U::canWriteResource),
    right("readResources", &P::setReadResource, &P::getReadResource, &P::canReadResource, &U::canReadResource),
    right("writeResourceCosts", &P::setWriteResourceCost, &P::getWriteResourceCost, &P::canWriteResourceCost,
          &U::canWriteResourceCost),
    right("readResourceCosts", &P::setReadResourceCost, &P::getReadResourceCost, &P::canReadResourceCost,
          &U::canReadResourceCost),
    right("writeUsers", &P::setWriteUsers, &P::getWriteUsers, &P::canWriteUser, &U::canWriteUser),
    right("writeRoles", &P::setWriteRoles, &P::getWriteRoles, &P::canWriteRole, &U::canWriteRole),
};

TEST(PermissionsTest, EachRightHasItsOwnDoorsWhichTheRelationOpens)
{
    for (Right const & granted : rights)
        for (int value = all; value <= none; ++value)
        {
            Scene scene;
            CPermissions permissions;
            EXPECT_FALSE(permissions.setChanged());
            (permissions.*granted.set)(access(value));
            EXPECT_TRUE(permissions.setChanged());
            EXPECT_EQ(permissions == CPermissions(), value == none);
            scene.user.setPermissions(permissions);
            for (Right const & asked : rights)
            {
                SCOPED_TRACE(CString(granted.name) + " granted, asked for " + asked.name);
                int const right = &granted == &asked ? value : none;
                bool const forSupplier = asked.supplierCounts && (right == supplier || right == either);
                bool const forCustomer = asked.customerCounts && (right == customer || right == either);
                EXPECT_EQ((permissions.*asked.get)().getEquivalentValue(), right);
                EXPECT_EQ(asked.ask(scene, supplies), right == all || forSupplier);
                EXPECT_EQ(asked.ask(scene, buys), right == all || forCustomer);
                EXPECT_EQ(asked.ask(scene, stranger), right == all);
            }
            scene.user.setCompanyID(CCompanyID::getNULL());
            for (Relation const relation : relations) EXPECT_EQ(granted.ask(scene, relation), value == all);
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
    EXPECT_FALSE(P::isSupplierOfResource(nullptr, scene.ours));
    EXPECT_FALSE(P::isSupplierOfUser(&nobody, &nobody) || P::isSupplierOfUser(&scene.user, nullptr));
    CPermissions permissions;
    permissions.setWriteTasks(access(all));
    EXPECT_TRUE(permissions.canWriteTask(nullptr, nullptr));
}

TEST(PermissionsTest, GreaterIsWhatGrantsSomethingMore)
{
    for (Right const & right : rights)
    {
        CPermissions nothing, some, other;
        (some.*right.set)(access(supplier));
        (other.*right.set)(access(customer));
        EXPECT_TRUE(some > nothing && some > other && other > some) << right.name;
        EXPECT_FALSE(nothing > some || some > some) << right.name;
    }
}

using Figures = std::map<std::string, int>;

// The rule as a reader would apply it by hand. What a value grants is a set of relations.
Figures inheritedByHand(Figures figures)
{
    constexpr char rules[] = R"(
        writeTasks under readTasks
        readTaskCosts readTaskResources readTaskRisks under readTasks
        readTaskRiskCosts under readTaskRisks
        readTaskReports under readTasks
        readTaskReportCosts under readTaskReports
        writeTaskCosts writeTaskResources writeTaskRisks under writeTasks
        writeTaskRiskCosts under writeTaskRisks
        writeTaskReports under writeTasks
        writeTaskReportCosts under writeTaskReports
        writeTaskCosts under readTaskCosts
        writeTaskResources under readTaskResources
        writeTaskRisks under readTaskRisks
        writeTaskRiskCosts under readTaskRiskCosts
        writeTaskReports under readTaskReports
        writeTaskReportCosts under readTaskReportCosts
        readResourceCosts under readResources
        writeResources under readResources
        writeResourceCosts under writeResources
        writeResourceCosts under readResourceCosts)";
    constexpr int granted[] = {0, 0b111, 0b001, 0b010, 0b011, 0b000};
    std::istringstream words(rules);
    std::vector<std::string> below;
    for (std::string word; words >> word;)
    {
        below.push_back(word);
        if (word != "under") continue;
        below.pop_back();
        words >> word;
        int const limit = figures.at(word);
        for (std::string const & name : below)
            if (granted[figures.at(name)] & ~granted[limit]) figures[name] = limit;
        below.clear();
    }
    return figures;
}

TEST(PermissionsTest, InheritanceFollowsTheOrder)
{
    constexpr unsigned seed = 20261204;
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round)
    {
        Figures figures;
        CPermissions permissions;
        for (Right const & right : rights)
            (permissions.*right.set)(access(figures[right.name] = static_cast<int>(random() % 5) + 1));
        Figures const expected = inheritedByHand(figures);
        permissions.makeSubPermissionsInheritFromParent();
        for (Right const & right : rights)
            ASSERT_EQ((permissions.*right.get)().getEquivalentValue(), expected.at(right.name))
                << right.name << " in round " << round << " of seed " << seed;
    }
}

TEST(PermissionsTest, DefaultRolesAreFixed)
{
    auto const figures = [](CRole const & role)
    {
        std::string text;
        for (Right const & right : rights)
            text += static_cast<char>('0' + (role.getPermissions().*right.get)().getEquivalentValue());
        return text;
    };
    struct
    {
        void (CRole::*become)();
        char const *name, *id, *figures;
    } const cases[] = {
        {&CRole::setToDefaultAdministratorRole, "Administrator", "4a728648a92a7148b2c5225c80b91a77",
         "11111111111111111111"},
        {&CRole::setToDefaultUserRole, "User", "bdcc82f4c6d2714a938e7cbe78426ecf", "21222121222122212225"},
        {&CRole::setToDefaultGuestRole, "Guest", "fdbd6121365ee64781859d4a60cf4ff0", "51555151555155515555"},
    };
    CRole role;
    EXPECT_EQ(role.getName(), "New Role");
    for (auto const & each : cases)
    {
        (role.*each.become)();
        EXPECT_EQ(role.getName(), each.name);
        EXPECT_EQ(role.getID().toString(), each.id);
        role.makeSubPermissionsInheritFromParentPermissions();  // leaves them as they are
        EXPECT_EQ(figures(role), each.figures) << each.name;
    }
}

}  // namespace
