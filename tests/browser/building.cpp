#include "tests/browser/building.h"

#include "model/project_data.h"
#include "rules/local_rules_checker.h"
#include "scene/entity_group.h"
#include "scene/solids.h"

namespace orvane::test
{
namespace
{

using Profile = CResourceProfileType;

constexpr double zoneSize = 6, storey = 3.5, margin = 0.15;
constexpr long secondsOfDay = 8 * 3600;

struct Look
{
    float red, green, blue;
    float opacity = 1;
};
constexpr Look concrete{0.72F, 0.72F, 0.70F}, slabLook{0.62F, 0.64F, 0.66F}, brick{0.70F, 0.33F, 0.22F},
    old{0.55F, 0.45F, 0.36F}, yellow{0.95F, 0.75F, 0.10F}, steel{0.55F, 0.60F, 0.68F, 0.5F}, green{0.30F, 0.50F, 0.25F};

class Builder
{
public:
    explicit Builder(BuildingSize const & size) : size(size) {}

    Building make()
    {
        CTask prepare = task("Prepare the site", 0, 1);
        prepare.setSubTasks(demolition());
        tasks.addTask(prepare);
        for (int floor = 0; floor < size.floors; ++floor) tasks.addTask(makeFloor(floor));
        addTrees();
        addPlant();
        return finish();
    }

private:
    // ---- tasks ----

    CTask task(std::string const & name, double dayAfterStart, double days, CTaskType const & type = CTaskType::Normal)
    {
        CTask made;
        made.setName(name.c_str());
        CProjectTime const begin(2027, 3, 1, 9, 0);
        CProjectDuration const offset(static_cast<long>(dayAfterStart * secondsOfDay));
        made.setPlannedStartTime(made.getCalendar().addDurationToTime(begin, offset, false));
        made.setTaskType(type);
        if (days > 0) made.setDuration(CProjectDuration(static_cast<long>(days * secondsOfDay)));
        return made;
    }
    static void assign(CTask & task, CResourceID const & resource, Profile const & profile, CVector const & by = {})
    {
        CAssignedResourceArray assigned(task.getAssignedResources());
        CAssignedResource use(CAssignedResourceID(), resource, 100);
        use.setResourceProfileType(profile);
        use.setTransform(CTransform::translation(by));
        assigned.Add(use);
        task.setAssignedResources(assigned);
    }

    CTaskArray demolition()
    {
        CTask shed = task("Demolish the old shed", 0, 4);
        CMaterialResource resource;
        resource.setName("Old shed");
        resource.addRepresentation(box("Old shed", {-9, 1, 0}, {6, 9, 3}, old));
        assign(shed, resource.getID(), Profile::Remove);
        groundworks.getWritableMaterialResources().Add(resource);
        CTaskArray all;
        all.addTask(shed);
        return all;
    }

    CTask makeFloor(int floor)
    {
        int const zones = size.zonesWide * size.zonesDeep;
        std::string const name = "Floor " + std::to_string(floor + 1);
        double const start = 4 + floor * zones * size.daysBetween;
        CTask made = task(name, start, 1);
        CTaskArray below;
        for (int zone = 0; zone < zones; ++zone) below.addTask(makeZone(floor, zone, start + zone * size.daysBetween));
        below.addTask(task(name + " handed over", start + (zones - 1) * size.daysBetween + 2, 0, CTaskType::KeyDate));
        made.setSubTasks(below);
        return made;
    }

    CTask makeZone(int floor, int zone, double start)
    {
        std::string const name = "floor " + std::to_string(floor + 1) + ", zone " + std::to_string(zone + 1);
        CTask made = task("Build " + name, start, 2);
        CMaterialResource frame;
        frame.setName(("Frame of " + name).c_str());
        double const x = zone % size.zonesWide * zoneSize, y = zone / size.zonesWide * zoneSize, z = floor * storey;
        CMaterialResourceArray parts;
        auto const part = [&](char const * partName, std::vector<CEntityID> const & entities)
        {
            CMaterialResource resource;
            resource.setName((partName + (" of " + name)).c_str());
            for (CEntityID const & each : entities) resource.addRepresentation(each);
            parts.Add(resource);
        };
        part("Columns", {column("Column of " + name, {x + 1, y + 1, z})});
        part("Slab", {box("Slab of " + name, {x + margin, y + margin, z + storey - 0.4},
                          {zoneSize - 2 * margin, zoneSize - 2 * margin, 0.4}, slabLook)});
        if (zone / size.zonesWide == size.zonesDeep - 1)
            part("Wall", {box("Wall of " + name, {x + margin, y + zoneSize - 0.4, z},
                              {zoneSize - 2 * margin, 0.3, storey - 0.4}, brick)});
        frame.setSubResources(parts);
        assign(made, frame.getID(), Profile::Install);
        frames.getWritableMaterialResources().Add(frame);
        if (zone % 2 == 0) assign(made, craneID, Profile::Temporary);
        if (zone / size.zonesWide == size.zonesDeep - 1) assign(made, scaffoldID, Profile::Temporary, {0, 0, z});
        return made;
    }

    // ---- what stands on the site ----

    CEntityID keep(CEntity * entity, std::string const & name, Look const & look, CEntityGroup * group = nullptr)
    {
        entity->setName(name.c_str());
        entity->setDefaultMaterial(CMaterial(CColor(look.red, look.green, look.blue), look.opacity));
        CEntityID id(nullID);
        id.setGUID(entity->getHandle().getGUID());
        ids.push_back(id);
        if (group) group->addChild(entity);
        else scene.Add(entity);
        return id;
    }
    CEntityID box(std::string const & name, CVector const & at, CVector const & lengths, Look const & look,
                  CEntityGroup * group = nullptr)
    {
        auto * const made = new CEntityExtrusion;
        CPOINT2DArray corners;
        for (CPoint2D const & each :
             {CPoint2D{0, 0}, CPoint2D{lengths.x, 0}, CPoint2D{lengths.x, lengths.y}, CPoint2D{0, lengths.y}})
            corners.Add(each);
        made->setPoints(corners);
        made->setHeight(static_cast<float>(lengths.z));
        made->setTransform(CTransform::translation(at));
        return keep(made, name, look, group);
    }
    CEntityID column(std::string const & name, CVector const & at)
    {
        auto * const made = new CEntityCylinder;
        made->setRadius(0.3F);
        made->setHeight(static_cast<float>(storey - 0.4));
        made->setTransform(CTransform::translation(at));
        return keep(made, name, concrete);
    }
    void addTrees()
    {
        for (int each = 0; each < 3; ++each)
        {
            auto * const tree = new CEntitySphere;
            tree->setRadius(1.6F);
            tree->setPosition({-4.0 + 7.0 * each, -5, 1.6});
            keep(tree, "Tree", green);
        }
    }
    // The crane is a group, which stands for the resource as a whole.
    void addPlant()
    {
        double const width = size.zonesWide * zoneSize, height = size.floors * storey + 5;
        auto * const crane = new CEntityGroup;
        crane->setName("Crane");
        box("Mast", {width + 2, 3, 0}, {1, 1, height}, yellow, crane);
        box("Jib", {2, 3.2, height}, {width + 4, 0.6, 0.7}, yellow, crane);
        scene.Add(crane);
        CEntityID group(nullID);
        group.setGUID(crane->getHandle().getGUID());
        CEquipmentResource machine;
        machine.setName("Tower crane");
        machine.setID(craneID);
        machine.addRepresentation(group);
        frames.getWritableEquipmentResources().Add(machine);
        CEquipmentResource scaffold;
        scaffold.setName("Scaffold");
        scaffold.setID(scaffoldID);
        double const depth = size.zonesDeep * zoneSize;
        scaffold.addRepresentation(box("Scaffold", {0, depth + 0.6, 0}, {width, 1.2, storey}, steel));
        groundworks.getWritableEquipmentResources().Add(scaffold);
    }

    // ---- the project ----

    Building finish()
    {
        groundworks.setName("Moor Groundworks");
        groundworks.setColor(CProjectColor(160, 110, 60));
        frames.setName("Aldine Frames");
        frames.setColor(CProjectColor(60, 110, 160));
        CCompanyArray companies;
        companies.Add(groundworks);
        companies.Add(frames);
        CProject const fresh(nullptr, false);
        std::unique_ptr<CProjectData> const data(fresh.getCopyOfProjectData());
        data->setTasks(tasks);
        data->setCompanies(companies);
        Building building{std::make_unique<CProject>(*data), std::move(ids)};
        building.project->postSerialize();
        CLocalRulesChecker(building.project.get(), CRulesCheckerContext::OriginatingClient).addEntitiesToScene(scene);
        if (size.hasBaseline) slip(*building.project);
        return building;
    }
    // All that comes after the first floor is ten working days late.
    static void slip(CProject & project)
    {
        auto & all = const_cast<CTaskArray &>(project.getAllTasks());
        for (int row = 0; row < all.GetSize(); ++row)
        {
            CTaskArray & below = *const_cast<CTask &>(all.GetAt(row)).getWritableSubTasks();
            for (int each = 0; each < below.GetSize(); ++each)
            {
                CTask & task = const_cast<CTask &>(below.GetAt(each));
                task.setBaseline();
                CProjectDuration const delay(10 * secondsOfDay);
                if (row > 1)
                    task.reschedulePlannedStartTime(
                        task.getCalendar().addDurationToTime(task.getPlannedStartTime(), delay, false));
            }
        }
        CLocalRulesChecker(&project, CRulesCheckerContext::OriginatingClient);
    }

    BuildingSize size;
    CTaskArray tasks;
    CCompany groundworks;
    CCompany frames;
    CResourceID craneID, scaffoldID;
    CObArray scene;
    std::vector<CEntityID> ids;
};

}  // namespace

Building makeBuilding(BuildingSize const & size)
{
    return Builder(size).make();
}

}  // namespace orvane::test
