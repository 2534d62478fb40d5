#include "scene/scene.h"

#include "scene/entity_group.h"
#include "scene/solids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <utility>

namespace
{

CHandle handleOf(unsigned number)
{
    return _GUID{number, 0, 0, {}};
}
unsigned numberOf(CEntity const * entity)
{
    return entity ? entity->getHandle().getGUID().Data1 : 0;
}

// Each entity of the scene with the group that it is in, 0 at the top.
std::map<unsigned, unsigned> parentsIn(CScene const & scene)
{
    CObArray all;
    scene.getAllEntities(all, CEntity::GetThisClass(), true);
    std::map<unsigned, unsigned> parents;
    for (CObject * const object : all)
    {
        auto const * const entity = static_cast<CEntity *>(object);
        EXPECT_TRUE(parents.emplace(numberOf(entity), numberOf(entity->getParent())).second);
    }
    return parents;
}

void expectListed(CObArray & list, unsigned parent, std::map<unsigned, unsigned> const & parents)
{
    EXPECT_EQ(list.GetSize(), std::ranges::count(parents, parent, &std::pair<unsigned const, unsigned>::second));
    for (CObject * const entity : list) EXPECT_EQ(parents.at(numberOf(static_cast<CEntity *>(entity))), parent);
    // The array only tells what is owned: what is done to it changes nothing.
    list.Add(nullptr);
    list.RemoveAt(0);
}

}  // namespace

// Against a plain record of who is in which group, whatever comes and goes and by whatever way.
TEST(Scene, finds_entities_through_random_histories)
{
    for (unsigned seed = 0; seed < 40; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 engine(seed);
        CScene scene;
        std::map<unsigned, unsigned> parents;
        for (unsigned step = 1; step <= 200; ++step)
        {
            auto const anyone = [&] { return static_cast<unsigned>(engine() % step); };
            unsigned const chosen = anyone();
            CEntity * const found = scene.getEntity(handleOf(chosen));
            ASSERT_EQ(found != nullptr, parents.contains(chosen));
            if (auto const action = engine() % 6; action < 4)
            {
                unsigned const number = action == 0 ? chosen : step;
                auto * const group = dynamic_cast<CEntityGroup *>(scene.getEntity(handleOf(anyone())));
                std::unique_ptr<CEntity> entity = std::make_unique<CEntitySphere>(handleOf(number));
                if (engine() % 2 == 0) entity = std::make_unique<CEntityGroup>(handleOf(number));
                CEntity * const added = group ? group->addChild(entity.get()) : scene.addEntity(entity.get());
                ASSERT_EQ(added == nullptr, number == 0 || parents.contains(number));
                if (added) parents[numberOf(entity.release())] = numberOf(group);
            }
            else
            {
                if (action == 4) delete found;
                scene.deleteEntity(handleOf(chosen));
                parents.erase(chosen);
                auto const isOrphan = [&](auto const & pair) { return pair.second && !parents.contains(pair.second); };
                while (std::erase_if(parents, isOrphan) > 0) continue;
            }
            ASSERT_EQ(parentsIn(scene), parents);
            expectListed(*scene.getEntityArray(), 0, parents);
            for (auto const & [number, parent] : parents)
                if (CObArray * const children = scene.getEntity(handleOf(number))->getChildren())
                    expectListed(*children, number, parents);
        }
        CScene copy;
        copy.addEntity(new CEntitySphere);
        copy.copyEntitiesFrom(scene);
        copy.copyEntitiesFrom(copy);
        scene.clear();
        EXPECT_TRUE(scene.isEmpty());
        EXPECT_EQ(parentsIn(copy), parents);
    }
}

TEST(Scene, refuses_what_it_cannot_own_and_leaves_it_as_it_was)
{
    CScene scene;
    EXPECT_EQ(scene.addEntity(nullptr), nullptr);
    CEntity * const owned = scene.addEntity(new CEntitySphere(handleOf(1)));
    EXPECT_EQ(scene.addEntity(owned), nullptr);

    // One clash anywhere below refuses the whole, and makes nothing of it known.
    auto * const group = new CEntityGroup(handleOf(2));
    group->addChild(new CEntitySphere(handleOf(3)));
    CEntity * const clash = group->addChild(new CEntitySphere(handleOf(1)));
    EXPECT_EQ(scene.addEntity(group), nullptr);
    EXPECT_EQ(scene.getEntity(handleOf(1)), owned);
    EXPECT_EQ(scene.getEntity(handleOf(3)), nullptr);
    delete clash;
    EXPECT_EQ(scene.addEntity(group), group);

    CEntityGroup outside;
    auto * const inside = new CEntityGroup;
    outside.addChild(inside);
    EXPECT_EQ(inside->addChild(&outside), nullptr);
    EXPECT_EQ(outside.addChild(&outside), nullptr);
}
