#include "app/apply/solids.h"

#include <fmt/format.h>

#include "app/command.h"
#include "app/json/given_fields.h"
#include "scene/solids.h"

namespace orvane::app
{
namespace
{

// Sizes are numbers above zero.
void needSize(GivenFields & fields, char const * name, float & size, Reader const & reader)
{
    fields.need(name, size, reader);
    if (!(size > 0)) throw Refusal(fmt::format("field \"{}\": {} is no size above 0", name, size));
}

void readBox(CEntityExtrusion & box, GivenFields & fields, Reader const & reader)
{
    CPoint3D size;
    fields.need("size", size, reader);
    if (!(size.x > 0 && size.y > 0 && size.z > 0)) throw Refusal("field \"size\": a box needs three sizes above 0");
    CPOINT2DArray corners;
    for (CPoint2D const & corner : {CPoint2D{0, 0}, {size.x, 0}, {size.x, size.y}, {0, size.y}}) corners.Add(corner);
    box.setPoints(corners);
    box.setHeight(static_cast<float>(size.z));
}

void readExtrusion(CEntityExtrusion & extrusion, GivenFields & fields, Reader const & reader)
{
    CPOINT2DArray outline;
    float height = 0;
    fields.need("outline", outline, reader);
    fields.need("height", height, reader);
    if (outline.GetSize() < 3) throw Refusal("field \"outline\": an outline has three corners or more");
    extrusion.setPoints(outline);
    extrusion.setHeight(height);
}

template <class Solid>
void readRound(Solid & solid, GivenFields & fields, Reader const & reader)
{
    float radius = 0, height = 0;
    CPoint3D position;
    needSize(fields, "radius", radius, reader);
    fields.read("position", position, reader);
    solid.setRadius(radius);
    solid.setPosition(position);
    if constexpr (requires { solid.setHeight(height); })
    {
        fields.need("height", height, reader);
        solid.setHeight(height);
    }
}

template <class Solid>
std::unique_ptr<CEntity> madeBy(void (*read)(Solid &, GivenFields &, Reader const &), CHandle const & handle,
                                GivenFields & fields, Reader const & reader)
{
    auto solid = std::make_unique<Solid>(handle);
    read(*solid, fields, reader);
    return solid;
}

std::unique_ptr<CEntity> makeSolid(std::string_view kind, CHandle const & handle, GivenFields & fields,
                                   Reader const & reader)
{
    if (kind == "box") return madeBy(readBox, handle, fields, reader);
    if (kind == "extrusion") return madeBy(readExtrusion, handle, fields, reader);
    if (kind == "cylinder") return madeBy(readRound<CEntityCylinder>, handle, fields, reader);
    if (kind == "sphere") return madeBy(readRound<CEntitySphere>, handle, fields, reader);
    throw Refusal(fmt::format("field \"kind\": \"{}\" is none of box, extrusion, cylinder, sphere", kind));
}

void addDimensions(Json & json, CEntity const & entity)
{
    auto const addRound = [&](auto const & solid)
    {
        json["radius"] = shortest(solid.getRadius());
        json["position"] = leafJson(solid.getPosition());
    };
    if (auto const * const extrusion = dynamic_cast<CEntityExtrusion const *>(&entity))
    {
        json["outline"] = toJson(extrusion->getBase());
        json["height"] = shortest(extrusion->getHeight());
    }
    else if (auto const * const cylinder = dynamic_cast<CEntityCylinder const *>(&entity))
    {
        addRound(*cylinder);
        json["height"] = shortest(cylinder->getHeight());
    }
    else if (auto const * const sphere = dynamic_cast<CEntitySphere const *>(&entity)) addRound(*sphere);
}

}  // namespace

std::unique_ptr<CEntity> readSolid(Json const & json, Reader const & reader)
{
    GivenFields fields(json);
    CEntityID id;
    CString kind, name;
    CTransform transform;
    CMaterial material;
    fields.need("kind", kind, reader);
    fields.read("id", id, reader);
    std::unique_ptr<CEntity> entity = makeSolid(kind.view(), CHandle(id.getGUID()), fields, reader);
    if (fields.read("name", name, reader)) entity->setName(name);
    if (fields.read("transform", transform, reader)) entity->setTransform(transform);
    // Also what views come back to after they have coloured it.
    if (fields.read("material", material, reader))
    {
        entity->setMaterial(material);
        entity->setDefaultMaterial(material);
    }
    fields.refuseOthers();
    return entity;
}

Json solidJson(CEntity const & entity)
{
    char const * const kinds[] = {"", "group", "extrusion", "cylinder", "sphere"};
    Json json = {{"id", leafJson(idOf(entity))},
                 {"kind", kinds[static_cast<std::size_t>(entity.getKind())]},
                 {"name", leafJson(entity.getName())}};
    addDimensions(json, entity);
    json["transform"] = leafJson(entity.getTransform());
    json["material"] = toJson(entity.getMaterial());
    return json;
}

CEntityID idOf(CEntity const & entity)
{
    CEntityID id(nullID);
    id.setGUID(entity.getHandle().getGUID());
    return id;
}

}  // namespace orvane::app
