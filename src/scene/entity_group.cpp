#include "scene/entity_group.h"

CEntityGroup::CEntityGroup(CEntityGroup const & other) : CDynamic(other), children(*this)
{
    children.appendCopies(other.children);
}

orvane::Box CEntityGroup::getBounds() const
{
    orvane::Box box;
    for (auto const & child : children.entities()) box.include(child->getBounds());
    return box;
}

void CEntityGroup::addTo(orvane::Mesh & mesh) const
{
    for (auto const & child : children.entities()) child->addTo(mesh);
}
