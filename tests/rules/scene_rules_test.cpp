// Entities through the rules: who owns them, what each kind takes, and for which resources they stand.

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "scene/entity_group.h"
#include "scene/solids.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

CEntityID idOf(CEntity const & entity)
{
    CEntityID id;
    id.setGUID(entity.getHandle().getGUID());
    return id;
}

CObArray listOf(std::initializer_list<CObject *> objects)
{
    CObArray list;
    for (CObject * object : objects) list.Add(object);
    return list;
}

// A building of a wall, a wing with a column and a ball, and an empty yard.
struct Building : Plan
{
    CEntityGroup *house = new CEntityGroup, *wing = new CEntityGroup, *yard = new CEntityGroup;
    CEntityExtrusion * wall = new CEntityExtrusion;
    CEntityCylinder * column = new CEntityCylinder;
    CEntitySphere * ball = new CEntitySphere;
    std::vector<CEntity *> all{house, wing, yard, wall, column, ball};

    Building()
    {
        house->addChild(wall);
        house->addChild(wing);
        house->addChild(yard);
        wing->addChild(column);
        wing->addChild(ball);
        EXPECT_TRUE(act([&](auto & rules) { return rules.addEntitiesToScene(listOf({house})); }));
    }
};

TEST(SceneRules, WhatIsRefusedStaysTheCallers)
{
    Plan plan;
    CLocalRulesChecker rules(&plan.project, CRulesCheckerContext::OriginatingClient);
    auto * const first = new CEntitySphere;
    EXPECT_TRUE(rules.addEntitiesToScene(CObArray()) && rules.addEntitiesToScene(listOf({nullptr, first, nullptr})));
    // The second stops it: met before, or no entity at all.
    CTask noEntity;
    for (CObject * second : {static_cast<CObject *>(first), static_cast<CObject *>(&noEntity)})
    {
        auto * const taken = new CEntitySphere;
        auto const left = std::make_unique<CEntitySphere>();
        EXPECT_FALSE(rules.addEntitiesToScene(listOf({taken, second, left.get()})));
        EXPECT_TRUE(plan.project.getEntity(idOf(*taken)) == taken && !plan.project.getEntity(idOf(*left)));
    }
    EXPECT_TRUE(rules.removeEntityFromScene(CEntityID()));
}

TEST(SceneRules, SelectionGoesWithTheSceneButOnAServer)
{
    for (int number : {1, 2, 3})
        for (bool whole : {false, true})
        {
            Building site;
            CEntityID const house = idOf(*site.house), ball = idOf(*site.ball);
            CRulesCheckerContext const context = contextOf(number);
            CLocalRulesChecker rules(&site.project, context);
            rules.setPrimarySelectedSceneEntityID(house);
            EXPECT_TRUE(rules.removeEntityFromScene(ball) && !site.project.getEntity(ball));
            EXPECT_EQ(site.project.getPrimarySelectedSceneEntityID(), house);
            EXPECT_TRUE(whole ? rules.clearScene() : rules.removeEntityFromScene(house));
            EXPECT_TRUE(site.project.getScene().isEmpty());
            EXPECT_EQ(site.project.getPrimarySelectedSceneEntityID().isNULL(), number != 2);
        }
}

// "+" for each entity that takes the change: house, wing, yard, wall, column, ball, an unknown one.
TEST(SceneRules, EachKindTakesItsOwnChanges)
{
    Building site;
    CPOINT2DArray outline;
    for (CPoint2D const & point : {CPoint2D{0, 0}, {4, 0}, {0, 3}}) outline.Add(point);
    CString const longest(std::string(1024, '%').c_str()), tooLong = longest + "%";
    using Change = std::function<bool(CLocalRulesChecker &, CEntityID const &)>;
    std::pair<char const *, Change> const cases[] = {
        {"---+---", [&](auto & rules, auto & id) { return rules.changeEntityBoxDimensions(id, outline, 1e300); }},
        {"---+---", [&](auto & rules, auto & id) { return rules.changeEntityExtrusionDimensions(id, outline, 2.5); }},
        {"----+--", [&](auto & rules, auto & id) { return rules.changeEntityCylinderDimensions(id, 1.5, -2); }},
        {"-----+-", [&](auto & rules, auto & id) { return rules.changeEntitySphereDimensions(id, std::nan("")); }},
        {"++++++-", [&](auto & rules, auto & id) { return rules.renameEntityInScene(id, longest); }},
        {"-------", [&](auto & rules, auto & id) { return rules.renameEntityInScene(id, tooLong); }},
        {"++++++-", [&](auto & rules, auto & id) { return rules.renameEntityInScene(id, ""); }},
    };
    for (auto const & [taken, change] : cases)
    {
        CLocalRulesChecker rules(&site.project, CRulesCheckerContext::OriginatingClient);
        std::string answers;
        for (CEntity * each : site.all) answers += change(rules, idOf(*each)) ? '+' : '-';
        answers += change(rules, CEntityID()) || change(rules, CEntityID::getNULL()) ? '+' : '-';
        EXPECT_EQ(answers, taken);
    }
    EXPECT_TRUE(site.wall->getBase().GetSize() == 3 && site.wall->getHeight() == 2.5F);
    EXPECT_TRUE(site.column->getRadius() == 1.5F && site.column->getHeight() == -2.0F &&
                site.ball->getRadius() == 0.0F);
}

TEST(SceneRules, PlacesGoToAllBelowAndMaterialsToTheSolids)
{
    Building site;
    CTransform const moved = CTransform::translation({1, 2, 3});
    CMaterial const glass(CColor(), 0.5F);
    // As above: m for moved, g for coated, b for both.
    std::pair<CEntity *, char const *> const cases[] = {
        {site.yard, "--m---"}, {site.wing, "-mm-bb"}, {site.house, "mmmbbb"}};
    for (auto const & [target, expected] : cases)
    {
        CLocalRulesChecker rules(&site.project, CRulesCheckerContext::TransactionServer);
        EXPECT_TRUE(rules.changeEntityTransform(idOf(*target), moved) &&
                    rules.changeEntityMaterial(idOf(*target), glass));
        std::string reached;
        for (CEntity * each : site.all)
            reached += "-mgb"[(each->getTransform() == moved) + 2 * (each->getMaterial() == glass)];
        EXPECT_EQ(reached, expected);
    }
}

TEST(SceneRules, EntitiesStandForResources)
{
    Plan plan;
    CCompany company;
    CHumanResource crew, mason;
    CMaterialResource sand;
    CEntityID const wall, ball;
    CLocalRulesChecker rules(&plan.project, CRulesCheckerContext::TransactionServer);
    rules.addCompany(company);
    rules.addHumanResourceToCompany(crew, company.getID());
    rules.addHumanResourceToParent(mason, crew.getID());
    rules.addMaterialResourceToCompany(sand, company.getID());
    auto const held = [&](CResourceBase const & of) -> auto const &
    {
        return plan.project.getResource(of.getID())->getRepresentations();
    };
    auto const assignAll = [&]
    {
        for (CEntityID const & id : {wall, ball, wall})
            for (CResourceID const & of : {mason.getID(), sand.getID()}) rules.assignEntityToResource(id, of);
    };
    auto const after = [&](bool answer) { return std::tuple(answer, held(mason).GetSize(), held(sand).GetSize()); };
    CResourceID const null(nullID), unknown;
    EXPECT_EQ(after(rules.assignEntityToResource(CEntityID::getNULL(), sand.getID())), std::tuple(false, 0, 0));
    for (CResourceID const & none : {null, unknown})
        EXPECT_EQ(after(rules.assignEntityToResource(wall, none)), std::tuple(false, 0, 0));
    assignAll();
    // What is held below does not count; every occurrence goes.
    EXPECT_EQ(after(rules.unassignEntityFromResource(wall, crew.getID())), std::tuple(false, 3, 3));
    EXPECT_EQ(after(rules.unassignEntityFromResource(wall, mason.getID())), std::tuple(true, 1, 3));
    EXPECT_EQ(after(rules.unassignEntityFromResource(wall, mason.getID())), std::tuple(false, 1, 3));
    EXPECT_EQ(after(rules.unassignAllEntitiesFromResource(mason.getID())), std::tuple(true, 0, 3));
    assignAll();
    // Removing is no unassigning. The argument may be among what goes.
    EXPECT_EQ(after(rules.removeEntityFromScene(wall)), std::tuple(true, 3, 6));
    EXPECT_EQ(after(rules.unassignEntityFromAllResources(held(mason).GetAt(0))), std::tuple(true, 1, 2));
}

}  // namespace
