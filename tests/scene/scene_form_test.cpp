#include "scene/scene.h"

#include "scene/entity_group.h"
#include "scene/solids.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace
{

struct Memory : orvane::IByteSink, orvane::IByteSource
{
    Memory() = default;
    explicit Memory(std::string content) : bytes(std::move(content)) {}
    void write(void const * data, std::size_t size) override { bytes.append(static_cast<char const *>(data), size); }
    std::size_t read(void * data, std::size_t size) override
    {
        std::size_t const got = bytes.copy(static_cast<char *>(data), size, position);
        position += got;
        return got;
    }

    std::string bytes;
    std::size_t position = 0;
};

std::string bytesOf(CScene const & scene)
{
    Memory memory;
    EXPECT_TRUE(scene.write(memory));
    return memory.bytes;
}

CHandle handleNumbered(unsigned char number)
{
    _GUID::Bytes bytes;
    bytes.fill(number);
    return _GUID::fromBytes(bytes);
}

template <class T>
T & at(CScene & scene, unsigned char number)
{
    return dynamic_cast<T &>(*scene.getEntity(handleNumbered(number)));
}

// Every kind, with two levels of groups and all fields as they are at first.
void build(CScene & scene)
{
    auto * const group = new CEntityGroup(handleNumbered(1));
    group->addChild(new CEntityGroup(handleNumbered(2)));
    scene.addEntity(group);
    at<CEntityGroup>(scene, 2).addChild(new CEntityExtrusion(handleNumbered(3)));
    group->addChild(new CEntityCylinder(handleNumbered(4)));
    scene.addEntity(new CEntitySphere(handleNumbered(5)));
}

CPOINT2DArray manyPoints(int count)
{
    CPOINT2DArray points;
    for (int each = 0; each < count; ++each) points.Add({std::cos(each / 1000.0), each * 0.1});
    return points;
}

CTransform const moved = CTransform::translation({9, 8, 7});

// One change for each field that a scene or an entity has, under which nothing else changes.
std::vector<void (*)(CScene &)> const changes = {
    [](CScene & scene) { scene.setBackgroundColor(CColor(0.25F, 0.5F, 0.75F)); },
    [](CScene & scene) { scene.setHeadLight(false); },
    [](CScene & scene) { scene.getEntity(handleNumbered(5))->setName(CString('x', 200'000)); },
    [](CScene & scene) { scene.getEntity(handleNumbered(2))->setVisible(false); },
    [](CScene & scene) { scene.getEntity(handleNumbered(4))->setTransform(moved); },
    [](CScene & scene) { scene.getEntity(handleNumbered(4))->setMaterial(CMaterial(CColor(0.1F, 0.2F, 0.3F), 0.4F)); },
    [](CScene & scene) { scene.getEntity(handleNumbered(3))->setDefaultMaterial(CMaterial(CColor(0.5F, 0.6F, 0.7F))); },
    [](CScene & scene) { at<CEntityExtrusion>(scene, 3).setPoints(manyPoints(10'000)); },
    [](CScene & scene) { at<CEntityExtrusion>(scene, 3).setHeight(0.3F); },
    [](CScene & scene) { at<CEntityCylinder>(scene, 4).setPosition(moved * CPoint3D()); },
    [](CScene & scene) { at<CEntityCylinder>(scene, 4).setHeight(-2.8F); },
    [](CScene & scene) { at<CEntitySphere>(scene, 5).setRadius(7); },
};

// Records as other writers may make them.
template <class... Numbers>
std::string record(unsigned short tag, Numbers... numbers)
{
    Memory payload;
    (orvane::writeNumber(payload, numbers), ...);
    Memory memory;
    orvane::writeNumber(memory, tag);
    orvane::writeNumber(memory, static_cast<std::uint32_t>(payload.bytes.size()));
    return memory.bytes + payload.bytes;
}
std::string entityRecord(unsigned short kind, unsigned short level, unsigned char number)
{
    std::uint64_t const half = 0x0101010101010101u * number;
    return record(1, kind, level, half, half);
}
std::string const start("OSCN\x01\0", 6);
std::string const end(6, '\0');

}  // namespace

TEST(SceneForm, gives_back_every_field_and_takes_exactly_its_bytes)
{
    CScene scene;
    build(scene);
    std::string before = bytesOf(scene);
    for (auto const & change : changes)
    {
        change(scene);
        std::string const bytes = bytesOf(scene);
        EXPECT_NE(bytes, before);
        before = bytes;
        Memory memory(bytes + "more");
        CScene back;
        back.addEntity(new CEntitySphere);
        EXPECT_TRUE(back.read(memory));
        EXPECT_EQ(memory.bytes.size() - memory.position, 4u);
        EXPECT_TRUE(bytesOf(back) == bytes);
    }
}

TEST(SceneForm, is_as_told)
{
    CScene scene;
    EXPECT_EQ(bytesOf(scene), start + end);
    auto * const group = new CEntityGroup(handleNumbered(7));
    group->addChild(new CEntitySphere(handleNumbered(8)))->setName("tank");
    scene.addEntity(group);
    at<CEntitySphere>(scene, 8).setRadius(2);
    EXPECT_EQ(bytesOf(scene), start + entityRecord(1, 1, 7) + entityRecord(4, 2, 8) + record(16, 't', 'a', 'n', 'k') +
                                  record(23, 2.0F) + end);
}

TEST(SceneForm, tolerates_what_others_write)
{
    // An unknown field, unknown kinds of which one has children, a field with more behind it, levels that skip,
    // a child below a solid, handles that repeat or are NULL, numbers that are none.
    std::string const bytes = start + record(99, 1, 2, 3) + entityRecord(1, 1, 1) + entityRecord(77, 2, 2) +
                              record(16, 'n', 'o') + entityRecord(4, 3, 3) + record(23, -5.0F, 1) +
                              record(22, double(NAN), HUGE_VAL, 1.0) + record(999) + entityRecord(4, 9, 3) +
                              record(16, 'b') + entityRecord(3, 1, 0) + record(24, NAN) + end;
    Memory memory(bytes);
    CScene scene;
    ASSERT_TRUE(scene.read(memory));
    auto const * const first = dynamic_cast<CEntitySphere const *>(scene.getEntity(handleNumbered(3)));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->getParent(), scene.getEntity(handleNumbered(1)));
    EXPECT_EQ(first->getRadius(), 0);
    EXPECT_EQ(first->getName(), CString());
    EXPECT_EQ(first->getPosition(), (CPoint3D{0, std::numeric_limits<double>::max(), 1}));
    CObArray all;
    scene.getAllEntities(all, CObject::GetThisClass(), true);
    ASSERT_EQ(all.GetSize(), 4);
    EXPECT_EQ(static_cast<CEntity *>(all[2])->getParent(), scene.getEntity(handleNumbered(1)));
    EXPECT_EQ(static_cast<CEntity *>(all[2])->getName(), CString("b"));
    EXPECT_FALSE(static_cast<CEntity *>(all[3])->getHandle().isNull());
}

TEST(SceneForm, refuses_without_harm)
{
    std::string deep = start;
    for (unsigned short level = 1; level <= 1000; ++level) deep += entityRecord(1, level, 0);
    CScene scene;
    Memory deepest(deep + end);
    EXPECT_TRUE(scene.read(deepest));
    for (std::string const & bytes :
         {deep + entityRecord(1, 1001, 0) + end, start + entityRecord(1, 0, 0) + end, "OSCN\x02\0"s + end,
          "OSCM" + start.substr(4) + end, start + entityRecord(4, 1, 1) + record(23, 'x') + end,
          start + entityRecord(4, 1, 1) + "\x10\0\xff\xff\xff\xffname"s + end})
    {
        Memory memory(bytes);
        EXPECT_FALSE(scene.read(memory));
        EXPECT_TRUE(scene.isEmpty());
    }
}

// Cut at every length, and with random bytes changed.
TEST(SceneForm, survives_damage)
{
    CScene scene;
    build(scene);
    for (auto const & change : changes) change(scene);
    scene.getEntity(handleNumbered(5))->setName("short");
    at<CEntityExtrusion>(scene, 3).setPoints(manyPoints(5));
    std::string const whole = bytesOf(scene);
    CScene back;
    for (std::size_t length = 0; length < whole.size(); ++length)
    {
        Memory memory(whole.substr(0, length));
        ASSERT_FALSE(back.read(memory)) << length;
        ASSERT_TRUE(back.isEmpty());
    }
    std::mt19937 engine(3);
    for (int round = 0; round < 20'000; ++round)
    {
        Memory memory(whole);
        for (int flips = 0; flips < 3; ++flips) memory.bytes[engine() % whole.size()] = static_cast<char>(engine());
        if (!back.read(memory)) continue;
        Memory again(bytesOf(back));
        ASSERT_TRUE(back.read(again)) << round;
        ASSERT_EQ(bytesOf(back), again.bytes) << round;
    }
}
