// The page that plays a schedule: what state an entity is in, who uses it, and what the page carries.

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "config/project_config.h"
#include "pictures/play.h"
#include "pictures/play_shapes.h"
#include "pictures/play_site.h"
#include "scene/entity_group.h"
#include "scene/solids.h"
#include "tests/support/plan_builder.h"

using namespace orvane;
using namespace orvane::pictures;

namespace
{

using Profile = CResourceProfileType;

constexpr EntityUse install(std::int64_t start, std::int64_t end)
{
    return {start, end, Profile::Install};
}
constexpr EntityUse use(std::int64_t start, std::int64_t end)
{
    return {start, end, Profile::Temporary};
}
constexpr EntityUse remove(std::int64_t start, std::int64_t end)
{
    return {start, end, Profile::Remove};
}

// A letter a minute from 0 to 9: hidden, working at it, place, use, removed.
std::string lifeOf(std::vector<EntityUse> const & uses)
{
    std::string life;
    for (std::int64_t minute = 0; minute < 10; ++minute)
        life += "hwpur"[static_cast<int>(entityAt(uses, minute).state)];
    return life;
}

TEST(EntityState, FollowsFromAllUses)
{
    struct
    {
        std::vector<EntityUse> uses;
        char const * life;
    } const cases[] = {
        {{}, "pppppppppp"},
        {{install(2, 5)}, "hhwwwppppp"},
        {{remove(2, 5)}, "ppwwwrrrrr"},
        {{use(2, 4)}, "hhuurrrrrr"},
        {{use(2, 4), use(6, 7)}, "hhuuppurrr"},
        {{use(6, 7), use(2, 4)}, "hhuuppurrr"},
        {{install(1, 3), remove(6, 8)}, "hwwpppwwrr"},
        {{remove(6, 8), install(1, 3)}, "hwwpppwwrr"},
        {{remove(1, 2), install(4, 6)}, "pwrrwwpppp"},
        {{install(1, 3), use(5, 7)}, "hwwppuuppp"},
        {{use(1, 3), install(5, 6)}, "huuhhwpppp"},
        // At the same time the more telling counts.
        {{use(1, 8), install(3, 5)}, "huuwwuuupp"},
        {{install(1, 4), remove(3, 4)}, "hwwwrrrrrr"},
        // What takes no time, or ends before it starts, is done at once.
        {{install(3, 3)}, "hhhppppppp"},
        {{install(3, 1), remove(6, 2)}, "hhhppprrrr"},
        {{use(3, 3)}, "hhhrrrrrrr"},
        // A profile that is none counts as temporary.
        {{EntityUse{2, 4, Profile::Number{}}}, "hhuurrrrrr"},
    };
    for (auto const & [uses, life] : cases) EXPECT_EQ(lifeOf(uses), life);
    std::vector<EntityUse> const both{use(0, 9), install(1, 3), install(2, 4)};
    EXPECT_EQ(entityAt(both, 2), (EntityMoment{EntityState::underWay, 1})) << "the first among equals";
}

TEST(EntityState, ChangesSayTheSameAtEveryMinute)
{
    std::mt19937 random(7);
    auto const number = [&](int below) { return static_cast<std::int64_t>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 200; ++round)
    {
        std::vector<EntityUse> uses(random() % 7);
        for (EntityUse & each : uses)
            each = {number(30) - 5, number(30) - 3, static_cast<Profile::Number>(number(3) + 1)};
        std::vector<EntityChange> const changes = entityChanges(uses);
        ASSERT_EQ(changes.front().from, EntityChange::ever);
        for (std::int64_t minute = -10; minute < 40; ++minute)
        {
            auto const behind = std::ranges::upper_bound(changes, minute, {}, &EntityChange::from);
            ASSERT_EQ(std::prev(behind)->moment, entityAt(uses, minute)) << "round " << round << ", minute " << minute;
        }
    }
}

CEntityID idOf(CEntity const & entity)
{
    CEntityID id(nullID);
    id.setGUID(entity.getHandle().getGUID());
    return id;
}

// A crew of two and what they stand for: a group with a ball in it, and a ball by itself. "dig" uses the crew, "tidy"
// installs the second alone.
struct CrewSite : Plan
{
    CEntityGroup * group = new CEntityGroup;
    CEntitySphere *inGroup = new CEntitySphere, *alone = new CEntitySphere, *unseen = new CEntitySphere,
                  *free = new CEntitySphere;

    CrewSite() : Plan({aTask("dig"), aTask("tidy").from("01-07 09:00"_t)})
    {
        group->addChild(inGroup);
        unseen->setVisible(false);
        CHumanResource crew, first, second;
        first.addRepresentation(idOf(*group));
        second.addRepresentation(idOf(*alone));
        second.addRepresentation(idOf(*unseen));
        second.addRepresentation(CEntityID());
        CHumanResourceArray members;
        members.Add(first);
        members.Add(second);
        crew.setSubResources(members);
        CCompany company;
        company.setName("Crew & <Co>");
        company.getWritableHumanResources().Add(crew);
        const_cast<CCompanyArray &>(project.getAllCompanies()).Add(company);
        assign("dig", crew.getID(), Profile::Temporary);
        assign("tidy", second.getID(), Profile::Install);
        CObArray entities;
        for (CEntity * each : std::initializer_list<CEntity *>{group, alone, unseen, free}) entities.Add(each);
        act([&](auto & rules) { return rules.addEntitiesToScene(entities); });
    }
    void assign(char const * task, CResourceID const & resource, Profile const & profile)
    {
        CAssignedResource assigned(CAssignedResourceID(), resource, 100);
        assigned.setResourceProfileType(profile);
        CAssignedResourceArray all;
        all.Add(assigned);
        writable(task).setAssignedResources(all);
    }
};

TEST(PlaySite, TasksDriveWhatStandsForTheirResources)
{
    CrewSite site;
    struct
    {
        CEntity const * entity;
        CProjectTime time;
        EntityState state;
    } const cases[] = {
        {site.inGroup, "01-05 08:59"_t, EntityState::hidden},  {site.inGroup, "01-05 09:00"_t, EntityState::inUse},
        {site.inGroup, "01-08 09:00"_t, EntityState::removed}, {site.alone, "01-05 10:00"_t, EntityState::inUse},
        {site.alone, "01-06 10:00"_t, EntityState::hidden},    {site.alone, "01-07 10:00"_t, EntityState::underWay},
        {site.alone, "01-08 10:00"_t, EntityState::inPlace},   {site.free, "01-05 10:00"_t, EntityState::inPlace},
        {site.unseen, "01-05 10:00"_t, EntityState::inPlace},
    };
    for (auto const & [entity, time, state] : cases)
        EXPECT_EQ(entityStateAt(site.project, idOf(*entity), time), state) << &entity - &cases[0].entity;
    EXPECT_EQ(siteOf(site.project).entities.size(), 3U) << "one does not wish to be seen";

    site.writable("tidy").setBaseline();
    site.writable("tidy").reschedulePlannedStartTime("01-14 09:00"_t);
    site.derive();
    CProjectTime const between = "01-09 09:00"_t;
    EXPECT_EQ(entityStateAt(site.project, idOf(*site.alone), between), EntityState::hidden);
    EXPECT_EQ(entityStateAt(site.project, idOf(*site.alone), between, Dates::baseline), EntityState::inPlace);
}

std::string const dataStart = R"(<script id="plan" type="application/json">)";

nlohmann::json dataOf(std::string const & page)
{
    std::size_t const start = page.find(dataStart) + dataStart.size();
    return nlohmann::json::parse(page.substr(start, page.find("</script>", start) - start));
}

TEST(PlayPage, CarriesNamesAsData)
{
    char const * const names[] = {"</script><script>alert(1)</script>", "<!--<script>", "&lt;b&gt;", "\xE2\x80\xA8",
                                  "\"\\\n\r\x01"};
    CrewSite site;
    // Nothing in a name opens or ends an element.
    auto const tags = [](std::string const & page) { return std::ranges::count(page, '<'); };
    auto const plain = tags(playPage(site.project, {.title = ""}));
    for (char const * name : names)
    {
        site.alone->setName(name);
        std::string const page = playPage(site.project, {.title = name});
        auto const data = dataOf(page);
        EXPECT_EQ(data["title"], name);
        EXPECT_EQ(data["entities"][1][0], name);
        EXPECT_EQ(tags(page), plain) << name;
    }
    // Texts that are no UTF-8, or longer than any line, are cut to what is.
    site.alone->setName((std::string(999, 'x') + "\xC3\xA4").c_str());
    EXPECT_EQ(dataOf(playPage(site.project, {.title = "\xFF"}))["entities"][1][0].get<std::string>(),
              std::string(999, 'x'));
}

TEST(PlayPage, BringsSettingsIntoTheirRanges)
{
    CrewSite site;
    site.alone->setDefaultMaterial(CMaterial(CColor(7, -3, NAN), 1));
    CProjectConfig::setHumanResourceInstallOpacity(900);
    CProjectConfig::setHumanResourceInstallColor(-1);
    auto const data = dataOf(playPage(site.project, {.title = "", .now = "2050-01-01 00:00"_t, .at = "01-06 09:00"_t}));
    CProjectConfig::setHumanResourceInstallOpacity(100);
    CProjectConfig::setHumanResourceInstallColor(0x00FF00);
    auto const style = data["styles"][data["kinds"][1][1][0].get<std::size_t>()];
    EXPECT_EQ(style, nlohmann::json({255, 255, 255, 100}));
    EXPECT_EQ(data["entities"][1][3], nlohmann::json({255, 0, 255}));
    EXPECT_TRUE(data["now"].is_null()) << "outside the plan";
    EXPECT_EQ(data["at"], 24 * 60 + 9 * 60);
}

TEST(PlayShapes, AreThereOnceAndFinite)
{
    Mesh mesh{{{0, 0, 0}, {1, 0, 0}, {0, 2, 0}}, {{0, 1, 2}}};
    PlayShapes shapes({{-50, -50, 0}, {50, 50, 20}});
    for (int each = 0; each < 10; ++each)
    {
        for (CPoint3D & point : mesh.points) point = point + CVector{0.1, 1.7, 0};
        shapes.add(mesh);
    }
    ASSERT_EQ(shapes.shapes().size(), 1U);
    EXPECT_EQ(shapes.shapes()[0]->points[2], (PlayShapes::Point{0, 2000, 0}));
    EXPECT_EQ(shapes.add(mesh).at, (PlayShapes::Point{1000, 17000, -10000}));

    for (double size : {1e-300, 1e-3, 1e9, 1.7e308})
    {
        PlayShapes extreme({{-size, -size, -size}, {size, size, size}});
        auto const placed = extreme.add({{{size, size, size}, {-size, 0, 0}, {0, 0, 0}}, {{0, 1, 2}}});
        for (int const number : placed.at) EXPECT_LE(std::abs(number), 8'000'000) << size;
        CTransform const moved = extreme.toPage(CTransform::translation({size, 0, 0}));
        EXPECT_TRUE(std::isfinite(moved.getElement(0, 3))) << size;
    }
}

}  // namespace
