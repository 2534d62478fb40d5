#include "scene/entity.h"

#include "scene/scene_form_impl.h"

CEntity::CEntity(CEntity const & other)
    : CDynamic(other),
      handle(other.handle),
      name(other.name),
      transform(other.transform),
      material(other.material),
      defaultMaterial(other.defaultMaterial),
      visible(other.visible)
{
}

CEntity::~CEntity()
{
    if (list) list->forget(*this);
}

orvane::Mesh CEntity::getMesh() const
{
    orvane::Mesh mesh;
    addTo(mesh);
    return mesh;
}

void CEntity::exchange(orvane::CSceneForm & form)
{
    using enum orvane::SceneTag;
    form.field(Name, name);
    form.field(Visible, visible, true);
    form.field(Transform, transform);
    form.field(Material, material);
    form.field(DefaultMaterial, defaultMaterial);
}
