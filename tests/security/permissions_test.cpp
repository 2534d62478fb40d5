#include "security/permissions.h"

#include <functional>
#include <map>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "model/task.h"
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

// One right with all that reads or writes it.
struct Right
{
    char const * name;
    void (P::*set)(CAccessType const &);
    CAccessType const & (P::*get)() const;
    // Asks the user and the user's permissions, who must agree.
    std::function<bool(Scene const &, Relation)> ask;
    bool supplierCounts;
    bool customerCounts;
};

template <class Thing>
Right right(char const * name, void (P::*set)(CAccessType const &), CAccessType const & (P::*get)() const,
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

std::vector<Right> const & rights()
{
    static std::vector<Right> const table = {
        right("writeTasks", &P::setWriteTasks, &P::getWriteTasks, &P::canWriteTask, &U::canWriteTask),
        right("readTasks", &P::setReadTasks, &P::getReadTasks, &P::canReadTask, &U::canReadTask),
        right("writeTaskCosts", &P::setWriteTaskCosts, &P::getWriteTaskCosts, &P::canWriteTaskCost,
              &U::canWriteTaskCost),
        right("readTaskCosts", &P::setReadTaskCosts, &P::getReadTaskCosts, &P::canReadTaskCost, &U::canReadTaskCost),
        right("writeTaskResources", &P::setWriteTaskResources, &P::getWriteTaskResources, &P::canWriteTaskResources,
              &U::canWriteTaskResource),
        right("readTaskResources", &P::setReadTaskResources, &P::getReadTaskResources, &P::canReadTaskResources,
              &U::canReadTaskResource),
        right("writeTaskRisks", &P::setWriteTaskRisks, &P::getWriteTaskRisks, &P::canWriteTaskRisks,
              &U::canWriteTaskRisk),
        right("readTaskRisks", &P::setReadTaskRisks, &P::getReadTaskRisks, &P::canReadTaskRisks, &U::canReadTaskRisk),
        right("writeTaskRiskCosts", &P::setWriteTaskRiskCosts, &P::getWriteTaskRiskCosts, &P::canWriteTaskRiskCosts,
              &U::canWriteTaskRiskCost),
        right("readTaskRiskCosts", &P::setReadTaskRiskCosts, &P::getReadTaskRiskCosts, &P::canReadTaskRiskCosts,
              &U::canReadTaskRiskCost),
        right("writeTaskReports", &P::setWriteTaskReports, &P::getWriteTaskReports, &P::canWriteTaskReports,
              &U::canWriteTaskReport),
        right("readTaskReports", &P::setReadTaskReports, &P::getReadTaskReports, &P::canReadTaskReports,
              &U::canReadTaskReport),
        right("writeTaskReportCosts", &P::setWriteTaskReportCosts, &P::getWriteTaskReportCosts,
              &P::canWriteTaskReportCosts, &U::canWriteTaskReportCost),
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
    return table;
}

TEST(PermissionsTest, EachRightHasItsOwnDoors)
{
    for (Right const & granted : rights())
    {
        CPermissions permissions;
        EXPECT_FALSE(permissions.setChanged());
        (permissions.*granted.set)(access(all));
        EXPECT_TRUE(permissions.setChanged());
        EXPECT_FALSE(permissions == CPermissions());
        Scene scene;
        scene.user.setPermissions(permissions);
        for (Right const & asked : rights())
        {
            SCOPED_TRACE(CString(granted.name) + " granted, asked for " + asked.name);
            EXPECT_EQ((permissions.*asked.get)().getEquivalentValue(), &granted == &asked ? all : none);
            EXPECT_EQ(asked.ask(scene, stranger), &granted == &asked);
        }
    }
}

TEST(PermissionsTest, TheRelationDecides)
{
    for (Right const & right : rights())
        for (int value = all; value <= none; ++value)
        {
            SCOPED_TRACE(testing::Message() << right.name << " at " << value);
            CPermissions permissions;
            (permissions.*right.set)(access(value));
            Scene scene;
            scene.user.setPermissions(permissions);
            bool const forSupplier = right.supplierCounts && (value == supplier || value == either);
            bool const forCustomer = right.customerCounts && (value == customer || value == either);
            EXPECT_EQ(right.ask(scene, supplies), value == all || forSupplier);
            EXPECT_EQ(right.ask(scene, buys), value == all || forCustomer);
            EXPECT_EQ(right.ask(scene, stranger), value == all);
            scene.user.setCompanyID(CCompanyID::getNULL());
            for (Relation const relation : relations) EXPECT_EQ(right.ask(scene, relation), value == all);
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
    EXPECT_FALSE(P::isSupplierOfTask(&nobody, &forNobody) || P::isCustomerOfTask(&nobody, &forNobody));
    EXPECT_FALSE(P::isSupplierOfTask(nullptr, &scene.tasks[supplies]) || P::isSupplierOfTask(&scene.user, nullptr));
    EXPECT_FALSE(P::isCustomerOfTask(nullptr, &scene.tasks[buys]) || P::isCustomerOfTask(&scene.user, nullptr));
    EXPECT_FALSE(P::isSupplierOfResource(&nobody, nobody.getCompanyID()));
    EXPECT_FALSE(P::isSupplierOfResource(nullptr, scene.ours));
    EXPECT_FALSE(P::isSupplierOfUser(&nobody, &nobody) || P::isSupplierOfUser(&scene.user, nullptr));
    CPermissions permissions;
    permissions.setWriteTasks(access(all));
    EXPECT_TRUE(permissions.canWriteTask(nullptr, nullptr));
    permissions.setWriteTasks(access(either));
    EXPECT_FALSE(permissions.canWriteTask(nullptr, nullptr));
}

TEST(PermissionsTest, GreaterIsWhatGrantsSomethingMore)
{
    // Rows are this value from 1 to 5, columns the other.
    char const * const greater[] = {"01111", "00101", "01001", "01101", "00000"};
    for (Right const & right : rights())
        for (int mine = all; mine <= none; ++mine)
            for (int other = all; other <= none; ++other)
            {
                SCOPED_TRACE(right.name);
                CPermissions a, b;
                (a.*right.set)(access(mine));
                (b.*right.set)(access(other));
                EXPECT_EQ(a > b, greater[mine - 1][other - 1] == '1') << mine << " > " << other;
            }
}

// ---- inheritance ------------------------------------------------------------------------------------

using Figures = std::map<std::string, int>;

CPermissions permissionsOf(Figures const & figures)
{
    CPermissions permissions;
    for (Right const & right : rights())
        if (figures.contains(right.name)) (permissions.*right.set)(access(figures.at(right.name)));
    return permissions;
}

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
        if (word != "under")
        {
            below.push_back(word);
            continue;
        }
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
        for (Right const & right : rights()) figures[right.name] = static_cast<int>(random() % 5) + 1;
        Figures const expected = inheritedByHand(figures);
        CPermissions permissions = permissionsOf(figures);
        permissions.makeSubPermissionsInheritFromParent();
        for (Right const & right : rights())
            ASSERT_EQ((permissions.*right.get)().getEquivalentValue(), expected.at(right.name))
                << right.name << " in round " << round << " of seed " << seed;
    }
}

TEST(PermissionsTest, InheritanceCutsToTheParent)
{
    struct
    {
        Figures given;
        CAccessType const & (CPermissions::*get)() const;
        int expected;
    } const cases[] = {
        {{{"writeTaskCosts", all}}, &P::getWriteTaskCosts, none},
        {{{"writeTasks", supplier}, {"readTasks", customer}}, &P::getWriteTasks, customer},
        {{{"writeTasks", all}, {"readTasks", either}}, &P::getWriteTasks, either},
        {{{"writeTasks", supplier}, {"readTasks", all}}, &P::getWriteTasks, supplier},
        {{{"writeResourceCosts", all}, {"writeResources", all}, {"readResources", all}},
         &P::getWriteResourceCost,
         none},
        {{{"writeUsers", all}}, &P::getWriteUsers, all},
        {{{"writeRoles", either}}, &P::getWriteRoles, either},
    };
    for (auto const & each : cases)
    {
        CPermissions permissions = permissionsOf(each.given);
        permissions.makeSubPermissionsInheritFromParent();
        EXPECT_EQ((permissions.*each.get)().getEquivalentValue(), each.expected) << each.given.begin()->first;
    }
}

}  // namespace
