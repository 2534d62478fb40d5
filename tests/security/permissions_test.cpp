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

// A user of one company, and things that the company supplies, is a customer of, or has no part in.
struct Scene
{
    enum Relation { supplies, buys, stranger };

    CCompanyID ours, theirs, others;
    CUser user;

    Scene() { user.setCompanyID(ours); }
    CTask task(Relation relation) const
    {
        CSupplyChain chain;
        for (CCompanyID const & company : {others, relation == buys ? ours : others, relation == supplies ? ours : theirs})
            chain.assignToCompany(company);
        CTask task;
        task.setSupplyChain(chain);
        return task;
    }
    CCompanyID const & company(Relation relation) const { return relation == supplies ? ours : theirs; }
};

// One right with all that reads or writes it.
struct Right
{
    using Ask = std::function<bool(CPermissions const &, Scene const &, Scene::Relation)>;

    char const * name;
    void (CPermissions::*set)(CAccessType const &);
    CAccessType const & (CPermissions::*get)() const;
    bool supplierCounts, customerCounts;
    Ask permissionsAnswer, userAnswers;
};

using Set = void (CPermissions::*)(CAccessType const &);
using Get = CAccessType const & (CPermissions::*)() const;

// The user's door, with the permissions as the user's own.
template <class Ask>
bool askUser(CPermissions const & permissions, Scene const & scene, Ask const & ask)
{
    CUser user = scene.user;
    user.setPermissions(permissions);
    return ask(user);
}

Right taskRight(char const * name, Set set, Get get, bool (CPermissions::*ask)(CUser const *, CTask const *) const,
                bool (CUser::*can)(CTask const *) const)
{
    return {name, set, get, true, true,
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            {
                CTask const task = scene.task(relation);
                return (permissions.*ask)(&scene.user, &task);
            },
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            {
                CTask const task = scene.task(relation);
                return askUser(permissions, scene, [&](CUser const & user) { return (user.*can)(&task); });
            }};
}

Right resourceRight(char const * name, Set set, Get get,
                    bool (CPermissions::*ask)(CUser const *, CCompanyID const &) const,
                    bool (CUser::*can)(CCompanyID const &) const)
{
    return {name, set, get, true, false,
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            { return (permissions.*ask)(&scene.user, scene.company(relation)); },
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            {
                return askUser(permissions, scene,
                               [&](CUser const & user) { return (user.*can)(scene.company(relation)); });
            }};
}

Right userRight()
{
    auto const colleague = [](Scene const & scene, Scene::Relation relation)
    {
        CUser user;
        user.setCompanyID(scene.company(relation));
        return user;
    };
    return {"writeUsers", &CPermissions::setWriteUsers, &CPermissions::getWriteUsers, true, false,
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            {
                CUser const other = colleague(scene, relation);
                return permissions.canWriteUser(&scene.user, &other);
            },
            [=](CPermissions const & permissions, Scene const & scene, Scene::Relation relation)
            {
                CUser const other = colleague(scene, relation);
                return askUser(permissions, scene, [&](CUser const & user) { return user.canWriteUser(&other); });
            }};
}

Right roleRight()
{
    return {"writeRoles", &CPermissions::setWriteRoles, &CPermissions::getWriteRoles, false, false,
            [](CPermissions const & permissions, Scene const & scene, Scene::Relation)
            { return permissions.canWriteRole(&scene.user, nullptr); },
            [](CPermissions const & permissions, Scene const & scene, Scene::Relation)
            {
                CRole const * const role = nullptr;
                return askUser(permissions, scene, [&](CUser const & user) { return user.canWriteRole(role); });
            }};
}

std::vector<Right> const & rights()
{
    using P = CPermissions;
    using U = CUser;
    static std::vector<Right> const table = {
        taskRight("writeTasks", &P::setWriteTasks, &P::getWriteTasks, &P::canWriteTask, &U::canWriteTask),
        taskRight("readTasks", &P::setReadTasks, &P::getReadTasks, &P::canReadTask, &U::canReadTask),
        taskRight("writeTaskCosts", &P::setWriteTaskCosts, &P::getWriteTaskCosts, &P::canWriteTaskCost, &U::canWriteTaskCost),
        taskRight("readTaskCosts", &P::setReadTaskCosts, &P::getReadTaskCosts, &P::canReadTaskCost, &U::canReadTaskCost),
        taskRight("writeTaskResources", &P::setWriteTaskResources, &P::getWriteTaskResources, &P::canWriteTaskResources, &U::canWriteTaskResource),
        taskRight("readTaskResources", &P::setReadTaskResources, &P::getReadTaskResources, &P::canReadTaskResources, &U::canReadTaskResource),
        taskRight("writeTaskRisks", &P::setWriteTaskRisks, &P::getWriteTaskRisks, &P::canWriteTaskRisks, &U::canWriteTaskRisk),
        taskRight("readTaskRisks", &P::setReadTaskRisks, &P::getReadTaskRisks, &P::canReadTaskRisks, &U::canReadTaskRisk),
        taskRight("writeTaskRiskCosts", &P::setWriteTaskRiskCosts, &P::getWriteTaskRiskCosts, &P::canWriteTaskRiskCosts, &U::canWriteTaskRiskCost),
        taskRight("readTaskRiskCosts", &P::setReadTaskRiskCosts, &P::getReadTaskRiskCosts, &P::canReadTaskRiskCosts, &U::canReadTaskRiskCost),
        taskRight("writeTaskReports", &P::setWriteTaskReports, &P::getWriteTaskReports, &P::canWriteTaskReports, &U::canWriteTaskReport),
        taskRight("readTaskReports", &P::setReadTaskReports, &P::getReadTaskReports, &P::canReadTaskReports, &U::canReadTaskReport),
        taskRight("writeTaskReportCosts", &P::setWriteTaskReportCosts, &P::getWriteTaskReportCosts, &P::canWriteTaskReportCosts, &U::canWriteTaskReportCost),
        taskRight("readTaskReportCosts", &P::setReadTaskReportCosts, &P::getReadTaskReportCosts, &P::canReadTaskReportCosts, &U::canReadTaskReportCost),
        resourceRight("writeResources", &P::setWriteResource, &P::getWriteResource, &P::canWriteResource, &U::canWriteResource),
        resourceRight("readResources", &P::setReadResource, &P::getReadResource, &P::canReadResource, &U::canReadResource),
        resourceRight("writeResourceCosts", &P::setWriteResourceCost, &P::getWriteResourceCost, &P::canWriteResourceCost, &U::canWriteResourceCost),
        resourceRight("readResourceCosts", &P::setReadResourceCost, &P::getReadResourceCost, &P::canReadResourceCost, &U::canReadResourceCost),
        userRight(),
        roleRight(),
    };
    return table;
}

TEST(PermissionsTest, EachRightHasItsOwnDoors)
{
    Scene const scene;
    for (Right const & granted : rights())
    {
        CPermissions permissions;
        EXPECT_FALSE(permissions.setChanged());
        (permissions.*granted.set)(access(all));
        EXPECT_TRUE(permissions.setChanged());
        EXPECT_FALSE(permissions == CPermissions());
        for (Right const & asked : rights())
        {
            SCOPED_TRACE(CString(granted.name) + " granted, asked for " + asked.name);
            bool const same = &granted == &asked;
            EXPECT_EQ((permissions.*asked.get)().getEquivalentValue(), same ? all : none);
            EXPECT_EQ(asked.permissionsAnswer(permissions, scene, Scene::stranger), same);
            EXPECT_EQ(asked.userAnswers(permissions, scene, Scene::stranger), same);
        }
    }
}

TEST(PermissionsTest, TheRelationDecides)
{
    Scene const scene;
    Scene withoutCompany;
    withoutCompany.user.setCompanyID(CCompanyID::getNULL());
    for (Right const & right : rights())
        for (int value : {all, supplier, customer, either, none})
        {
            SCOPED_TRACE(CString(right.name) + " at " + CString(static_cast<char>('0' + value)));
            CPermissions permissions;
            (permissions.*right.set)(access(value));
            bool const forSupplier = right.supplierCounts && (value == supplier || value == either);
            bool const forCustomer = right.customerCounts && (value == customer || value == either);
            EXPECT_EQ(right.permissionsAnswer(permissions, scene, Scene::supplies), value == all || forSupplier);
            EXPECT_EQ(right.permissionsAnswer(permissions, scene, Scene::buys), value == all || forCustomer);
            EXPECT_EQ(right.permissionsAnswer(permissions, scene, Scene::stranger), value == all);
            EXPECT_EQ(right.userAnswers(permissions, scene, Scene::supplies), value == all || forSupplier);
            EXPECT_EQ(right.permissionsAnswer(permissions, withoutCompany, Scene::supplies), value == all);
        }
}

TEST(PermissionsTest, WhatIsMissingHasNoRelation)
{
    Scene const scene;
    CUser nobody;
    nobody.setCompanyID(CCompanyID::getNULL());
    CTask const unsupplied;
    CTask const ours = scene.task(Scene::supplies), bought = scene.task(Scene::buys);
    using P = CPermissions;
    EXPECT_FALSE(P::isSupplierOfTask(&nobody, &unsupplied));
    EXPECT_FALSE(P::isSupplierOfTask(nullptr, &ours) || P::isSupplierOfTask(&scene.user, nullptr));
    EXPECT_FALSE(P::isCustomerOfTask(nullptr, &bought) || P::isCustomerOfTask(&scene.user, nullptr));
    EXPECT_FALSE(P::isSupplierOfResource(&nobody, CCompanyID::getNULL()) || P::isSupplierOfResource(nullptr, scene.ours));
    EXPECT_FALSE(P::isSupplierOfUser(&nobody, &nobody) || P::isSupplierOfUser(&scene.user, nullptr));
    EXPECT_TRUE(P::isSupplierOfUser(&scene.user, &scene.user));
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
        {{{"writeTaskCosts", all}}, &CPermissions::getWriteTaskCosts, none},
        {{{"writeTasks", supplier}, {"readTasks", customer}}, &CPermissions::getWriteTasks, customer},
        {{{"writeTasks", all}, {"readTasks", either}}, &CPermissions::getWriteTasks, either},
        {{{"writeTasks", supplier}, {"readTasks", all}}, &CPermissions::getWriteTasks, supplier},
        {{{"writeResourceCosts", all}, {"writeResources", all}, {"readResources", all}}, &CPermissions::getWriteResourceCost, none},
        {{{"writeUsers", all}}, &CPermissions::getWriteUsers, all},
        {{{"writeRoles", either}}, &CPermissions::getWriteRoles, either},
    };
    for (auto const & each : cases)
    {
        CPermissions permissions = permissionsOf(each.given);
        permissions.makeSubPermissionsInheritFromParent();
        EXPECT_EQ((permissions.*each.get)().getEquivalentValue(), each.expected) << each.given.begin()->first;
    }
}

}  // namespace
