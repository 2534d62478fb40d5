#include "rules/local_rules_checker.h"
#include "scene/entity_group.h"
#include "scene/scene.h"
#include "scene/solids.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace
{

// Memory as a file.
class Bytes : public orvane::IByteSink, public orvane::IByteSource
{
public:
    void write(void const * data, std::size_t size) override { bytes.append(static_cast<char const *>(data), size); }
    std::size_t read(void * data, std::size_t size) override
    {
        std::size_t const got = bytes.copy(static_cast<char *>(data), size, position);
        position += got;
        return got;
    }
    void rewind() { position = 0; }
    std::size_t size() const { return bytes.size(); }

private:
    std::string bytes;
    std::size_t position = 0;
};

constexpr int perBuilding = 100;

// Buildings of boxes and columns, each in its place.
void build(CScene & scene, int entities)
{
    CPOINT2DArray square;
    for (CPoint2D const & point : {CPoint2D{0, 0}, {6, 0}, {6, 4}, {0, 4}}) square.Add(point);
    for (int building = 0; building < entities / perBuilding; ++building)
    {
        auto * const group = new CEntityGroup;
        group->setName("Building");
        for (int part = 1; part < perBuilding; ++part)
        {
            auto * const wall = new CEntityExtrusion;
            wall->setName("Wall of the ground floor");
            wall->setPoints(square);
            wall->setHeight(3);
            wall->setTransform(CTransform::translation({7.0 * part, 9.0 * building, 0}));
            group->addChild(wall);
        }
        scene.addEntity(group);
    }
}

void writeScene(benchmark::State & state)
{
    CScene scene;
    build(scene, static_cast<int>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state)
    {
        Bytes bytes;
        scene.write(bytes);
        size = bytes.size();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK(writeScene)->Arg(50'000)->Unit(benchmark::kMillisecond);

void readScene(benchmark::State & state)
{
    CScene scene;
    build(scene, static_cast<int>(state.range(0)));
    Bytes bytes;
    scene.write(bytes);
    for (auto _ : state)
    {
        bytes.rewind();
        CScene back;
        if (!back.read(bytes)) state.SkipWithError("the scene was not read");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(readScene)->Arg(50'000)->Unit(benchmark::kMillisecond);

void copyScene(benchmark::State & state)
{
    CScene scene;
    build(scene, static_cast<int>(state.range(0)));
    for (auto _ : state)
    {
        CScene copy;
        copy.copyEntitiesFrom(scene);
    }
}
BENCHMARK(copyScene)->Arg(50'000)->Unit(benchmark::kMillisecond);

void findEntity(benchmark::State & state)
{
    CScene scene;
    build(scene, static_cast<int>(state.range(0)));
    CObArray all;
    scene.getAllEntities(all, CObject::GetThisClass(), true);
    int next = 0;
    for (auto _ : state)
    {
        next = (next + 7919) % all.GetSize();
        CHandle const handle = static_cast<CEntity *>(all[next])->getHandle();
        benchmark::DoNotOptimize(scene.getEntity(scene.getEntityArray(), handle));
    }
}
BENCHMARK(findEntity)->Arg(500)->Arg(50'000);

// Through the rules, any entity in turn: the same for a large scene as for a small one.
void changeEntityByRules(benchmark::State & state)
{
    CScene source;
    build(source, static_cast<int>(state.range(0)));
    CObArray copies;
    for (CObject * const building : *source.getEntityArray())
        copies.Add(static_cast<CEntity *>(building)->clone().release());
    CProject project(nullptr, false);
    CLocalRulesChecker rules(&project, CRulesCheckerContext::TransactionServer);
    if (!rules.addEntitiesToScene(copies)) state.SkipWithError("the scene did not take the buildings");
    CObArray all;
    project.getScene().getAllEntities(all, CEntityExtrusion::GetThisClass(), true);
    CString const names[] = {"Wall", "Partition"};
    int next = 0;
    for (auto _ : state)
    {
        next = (next + 7919) % all.GetSize();
        CEntityID id{orvane::nullID};
        id.setGUID(static_cast<CEntity *>(all[next])->getHandle().getGUID());
        rules.renameEntityInScene(id, names[next % 2]);
        rules.changeEntityMaterial(id, CMaterial());
    }
}
BENCHMARK(changeEntityByRules)->Arg(500)->Arg(50'000);

// One by one, in the order in which they were added, from the flat scene that makes it hardest.
void deleteEntities(benchmark::State & state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        CScene scene;
        std::vector<CHandle> handles;
        for (int each = 0; each < state.range(0); ++each)
            handles.push_back(scene.addEntity(new CEntitySphere)->getHandle());
        state.ResumeTiming();
        for (CHandle const & handle : handles) scene.deleteEntity(handle);
    }
}
BENCHMARK(deleteEntities)->Arg(50'000)->Unit(benchmark::kMillisecond);

void triangulateBuildings(benchmark::State & state)
{
    CScene scene;
    build(scene, static_cast<int>(state.range(0)));
    CObArray buildings;
    scene.getAllEntities(buildings, CObject::GetThisClass(), false);
    for (auto _ : state)
        for (CObject * const building : buildings)
            benchmark::DoNotOptimize(static_cast<CEntity *>(building)->getMesh());
}
BENCHMARK(triangulateBuildings)->Arg(50'000)->Unit(benchmark::kMillisecond);

}  // namespace
