#include "scene/scene.h"

#include "scene/entity_group.h"
#include "scene/scene_form_impl.h"
#include "scene/solids.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

using orvane::CSceneForm;
using orvane::EntityKind;

std::unique_ptr<CEntity> makeEntity(EntityKind kind, CHandle const & handle)
{
    switch (kind)
    {
        case EntityKind::Group: return std::make_unique<CEntityGroup>(handle);
        case EntityKind::Extrusion: return std::make_unique<CEntityExtrusion>(handle);
        case EntityKind::Cylinder: return std::make_unique<CEntityCylinder>(handle);
        case EntityKind::Sphere: return std::make_unique<CEntitySphere>(handle);
    }
    return nullptr;
}

// Calls `visit(entity, level)` for each entity before those below it. Levels are limited where entities come in,
// so this and all else that goes down a scene may do so by recursion.
template <class Visit>
void walkEntities(orvane::CEntityList const & list, Visit const & visit, int level = 1)
{
    for (auto const & entity : list.entities())
    {
        visit(*entity, level);
        if (entity->getList()) walkEntities(*entity->getList(), visit, level + 1);
    }
}

CEntity * findBelow(CEntity & entity, CHandle const & handle)
{
    if (entity.getHandle() == handle) return &entity;
    if (orvane::CEntityList const * const list = entity.getList())
        for (auto const & child : list->entities())
            if (CEntity * const found = findBelow(*child, handle)) return found;
    return nullptr;
}

void exchangeSettings(CSceneForm & form, CColor & backgroundColor, bool & headLight)
{
    form.field(orvane::SceneTag::BackgroundColor, backgroundColor);
    form.field(orvane::SceneTag::HeadLight, headLight, true);
}

}  // namespace

// On refusal everything below is as unknown as before, so that the caller may rename and try again.
bool CScene::enter(CEntity & entity)
{
    if (entity.getHandle().isNull() || !index.emplace(entity.getHandle(), &entity).second) return false;
    orvane::CEntityList const * const list = entity.getList();
    if (!list) return true;
    auto const & below = list->entities();
    auto const refused = std::ranges::find_if(below, [this](auto const & child) { return !enter(*child); });
    if (refused == below.end()) return true;
    for (auto child = below.begin(); child != refused; ++child) leave(**child);
    index.erase(entity.getHandle());
    return false;
}

void CScene::leave(CEntity & entity)
{
    index.erase(entity.getHandle());
    if (orvane::CEntityList const * const list = entity.getList())
        for (auto const & child : list->entities()) leave(*child);
}

void CScene::clear()
{
    // At once, instead of one by one as the entities go.
    index.clear();
    roots.clear();
}

void CScene::copyEntitiesFrom(CScene const & other)
{
    if (this == &other) return;
    clear();
    roots.appendCopies(other.roots);
    index.reserve(other.index.size());
    for (auto const & entity : roots.entities()) enter(*entity);
}

CEntity * CScene::getEntity(CHandle handle) const
{
    auto const found = index.find(handle);
    return found == index.end() ? nullptr : found->second;
}

CEntity * CScene::getEntity(CObArray * entities, CHandle handle)
{
    if (!entities) return nullptr;
    if (entities == roots.listing()) return getEntity(handle);
    for (CObject * const object : *entities)
        if (auto * const entity = dynamic_cast<CEntity *>(object))
            if (CEntity * const found = findBelow(*entity, handle)) return found;
    return nullptr;
}

void CScene::getAllEntities(CObArray & entities, CRuntimeClass const * runtimeClass, bool deep) const
{
    entities.RemoveAll();
    auto const add = [&](CEntity & entity)
    {
        if (runtimeClass && entity.IsKindOf(runtimeClass)) entities.Add(&entity);
    };
    if (deep) walkEntities(roots, [&](CEntity & entity, int) { add(entity); });
    else
        for (auto const & entity : roots.entities()) add(*entity);
}

int CScene::write(orvane::IByteSink & sink) const
{
    CSceneForm form(sink);
    // The form takes fields as it would read them: copies serve, since writing changes nothing.
    CColor color = backgroundColor;
    bool light = headLight;
    exchangeSettings(form, color, light);
    walkEntities(roots,
                 [&](CEntity & entity, int level)
                 {
                     form.putEntity(entity.getKind(), level, entity.getHandle());
                     entity.exchange(form);
                 });
    form.putEnd();
    return 1;
}

int CScene::read(orvane::IByteSource & source)
{
    clear();
    backgroundColor = CColor();
    headLight = true;
    try
    {
        readEntities(source);
        return 1;
    }
    catch (orvane::MalformedScene const &)
    {
        clear();
        return 0;
    }
    // The source may have its own way to tell of its end; it is for the caller to hear of.
    catch (...)
    {
        clear();
        throw;
    }
}

void CScene::readEntities(orvane::IByteSource & source)
{
    CSceneForm form(source);
    // The list that an entity of level n + 1 goes to, for each n that is open; and the latest entity.
    std::vector<orvane::CEntityList *> open{&roots};
    CEntity * entity = nullptr;
    while (form.next())
    {
        if (form.tag() != orvane::SceneTag::Entity)
        {
            if (entity) entity->exchange(form);
            else exchangeSettings(form, backgroundColor, headLight);
            continue;
        }
        auto const [kind, level, handle] = form.takeEntity();
        // Beyond the limit bytes were not written here; a level that skips some goes to the deepest open one.
        if (level < 1 || level > orvane::CEntityList::maximumLevels) throw orvane::MalformedScene();
        open.resize(std::min(open.size(), static_cast<std::size_t>(level)));
        auto made = makeEntity(kind, isFree(handle) ? handle : CHandle::create());
        entity = made.get();
        orvane::CEntityList * const outer = open.back();
        // What should stand below a solid or an unknown kind goes to the group outside.
        open.push_back(made && made->getList() ? made->getList() : outer);
        if (!made) continue;
        index.emplace(made->getHandle(), entity);
        outer->append(std::move(made));
    }
}
