#pragma once

#include "platform/object.h"
#include "platform/string.h"
#include "scene/entity_list.h"
#include "scene/handle.h"
#include "scene/material.h"
#include "scene/mesh.h"
#include "scene/transform.h"

#include <memory>
#include <optional>

namespace orvane
{

class CSceneForm;

// What an entity is, in files: the numbers never change their meaning.
enum class EntityKind : unsigned short
{
    Group = 1,
    Extrusion = 2,
    Cylinder = 3,
    Sphere = 4
};

}  // namespace orvane

// A thing on the site: a group of things, or a solid. It is known by its handle and belongs to at most one
// scene or group, which owns it. Deleting an entity, from wherever, takes it out of there; a group takes all
// below it along.
//
// A transform places the entity straight into the site, whatever group it is in: moving a group means giving
// each entity below it the transform.
class CEntity : public CDynamic<CEntity>
{
public:
    CEntity & operator=(CEntity const &) = delete;
    ~CEntity() override;

    // The entities of a group, at any time the same as it owns; null for a solid. To add one, ask the group.
    virtual CObArray * getChildren() { return nullptr; }
    virtual CString const & getName() const { return name; }
    virtual void setName(CString const & text) { name = text; }
    // What it looks like from now on.
    virtual void setMaterial(CMaterial const & value) { material = value; }

    CHandle const & getHandle() const { return handle; }
    // The group that it is in; null at the top of a scene and outside.
    CEntity * getParent() const { return list ? list->getGroup() : nullptr; }
    // What it looks like now: its default material until another one was set.
    CMaterial const & getMaterial() const { return material ? *material : defaultMaterial; }
    // What it is made of, to come back to.
    CMaterial const & getDefaultMaterial() const { return defaultMaterial; }
    void setDefaultMaterial(CMaterial const & value) { defaultMaterial = value; }
    // Its own wish; a group does not hide what is in it.
    bool getVisible() const { return visible; }
    void setVisible(bool value) { visible = value; }
    CTransform const & getTransform() const { return transform; }
    // The second argument, 1, says that the transform takes the place of the present one. There is no other
    // way, so it has no effect.
    void setTransform(CTransform const & value, int = 1) { transform = value; }

    // The surface in the site, of a group that of all below it. Round shapes become polygons inside them.
    orvane::Mesh getMesh() const;
    // The smallest box around it in the site, round shapes taken as round; empty without any solid.
    virtual orvane::Box getBounds() const = 0;

    // A copy with all below it, under the same handles, which belongs to nobody yet.
    virtual std::unique_ptr<CEntity> clone() const = 0;

    // For those who walk over scenes, read and write them.
    virtual orvane::EntityKind getKind() const = 0;
    virtual orvane::CEntityList * getList() { return nullptr; }
    virtual void exchange(orvane::CSceneForm & form);
    virtual void addTo(orvane::Mesh & mesh) const = 0;

protected:
    explicit CEntity(CHandle const & handle) : handle(handle) {}
    // A copy belongs to nobody.
    CEntity(CEntity const & other);

private:
    friend class orvane::CEntityList;

    orvane::CEntityList * list = nullptr;
    CHandle handle;
    CString name;
    CTransform transform;
    std::optional<CMaterial> material;
    CMaterial defaultMaterial;
    bool visible = true;
};
