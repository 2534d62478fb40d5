#pragma once

#include "scene/entity.h"

#include <algorithm>
#include <memory>

namespace orvane
{

// How far a shape reaches along a direction; with `low` above `high` for a shape without points.
struct Extent
{
    double low;
    double high;
};

// An entity with a shape of its own, from which its surface and its bounds in the site follow. Sizes are in
// metres; what is no finite number is taken as the nearest one, or as 0.
class CSolid : public CDynamic<CSolid, CEntity>
{
public:
    Box getBounds() const override;
    void addTo(Mesh & mesh) const override;

protected:
    explicit CSolid(CHandle const & handle) : CDynamic(handle) {}

private:
    // Both before the transform. The extent is that of the products of all points with the direction.
    virtual Mesh ownMesh() const = 0;
    virtual Extent ownExtent(CVector const & direction) const = 0;
};

}  // namespace orvane

// A polygon of the ground plane drawn up to a height: walls, slabs, boxes.
class CEntityExtrusion : public CDynamic<CEntityExtrusion, orvane::CSolid>
{
public:
    explicit CEntityExtrusion(CHandle const & handle = CHandle::create()) : CDynamic(handle) {}

    // The corners, either way round; the last is joined to the first. The polygon may be concave and may touch
    // itself, but should not cross itself.
    CPOINT2DArray const & getBase() const { return base; }
    void setPoints(CPOINT2DArray const & points);
    // Below zero the solid reaches down.
    float getHeight() const { return height; }
    void setHeight(float value) { height = orvane::finite(value); }

    std::unique_ptr<CEntity> clone() const override { return std::make_unique<CEntityExtrusion>(*this); }

    orvane::EntityKind getKind() const override { return orvane::EntityKind::Extrusion; }
    void exchange(orvane::CSceneForm & form) override;

private:
    orvane::Mesh ownMesh() const override;
    orvane::Extent ownExtent(CVector const & direction) const override;

    CPOINT2DArray base;
    float height = 0;
};

namespace orvane
{

// A solid around a position, with a radius.
class CRoundSolid : public CDynamic<CRoundSolid, CSolid>
{
public:
    CPoint3D const & getPosition() const { return position; }
    void setPosition(CPoint3D const & value) { position = finite(value); }
    // Not below zero.
    float getRadius() const { return radius; }
    void setRadius(float value) { radius = std::max(0.0F, finite(value)); }

    void exchange(CSceneForm & form) override;

protected:
    explicit CRoundSolid(CHandle const & handle) : CDynamic(handle) {}

private:
    CPoint3D position;
    float radius = 0;
};

}  // namespace orvane

// An upright cylinder whose base is around its position: columns, piles, tanks.
class CEntityCylinder : public CDynamic<CEntityCylinder, orvane::CRoundSolid>
{
public:
    explicit CEntityCylinder(CHandle const & handle = CHandle::create()) : CDynamic(handle) {}

    // Below zero the solid reaches down.
    float getHeight() const { return height; }
    void setHeight(float value) { height = orvane::finite(value); }

    std::unique_ptr<CEntity> clone() const override { return std::make_unique<CEntityCylinder>(*this); }

    orvane::EntityKind getKind() const override { return orvane::EntityKind::Cylinder; }
    void exchange(orvane::CSceneForm & form) override;

private:
    orvane::Mesh ownMesh() const override;
    orvane::Extent ownExtent(CVector const & direction) const override;

    float height = 0;
};

// A sphere whose centre is its position.
class CEntitySphere : public CDynamic<CEntitySphere, orvane::CRoundSolid>
{
public:
    explicit CEntitySphere(CHandle const & handle = CHandle::create()) : CDynamic(handle) {}

    std::unique_ptr<CEntity> clone() const override { return std::make_unique<CEntitySphere>(*this); }

    orvane::EntityKind getKind() const override { return orvane::EntityKind::Sphere; }

private:
    orvane::Mesh ownMesh() const override;
    orvane::Extent ownExtent(CVector const & direction) const override;
};
