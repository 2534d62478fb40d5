#pragma once

#include "scene/entity.h"

// Entities that belong together, such as the parts of a building. Its own transform and material are kept and
// mean nothing to what is in it.
class CEntityGroup : public CDynamic<CEntityGroup, CEntity>
{
public:
    explicit CEntityGroup(CHandle const & handle = CHandle::create()) : CDynamic(handle), children(*this) {}
    CEntityGroup(CEntityGroup const & other);

    // As CScene::addEntity, for a child of this group.
    CEntity * addChild(CEntity * entity) { return children.adopt(entity); }

    CObArray * getChildren() override { return children.listing(); }
    orvane::Box getBounds() const override;
    std::unique_ptr<CEntity> clone() const override { return std::make_unique<CEntityGroup>(*this); }

    orvane::EntityKind getKind() const override { return orvane::EntityKind::Group; }
    orvane::CEntityList * getList() override { return &children; }
    void addTo(orvane::Mesh & mesh) const override;

private:
    orvane::CEntityList children;
};
