#include "scene/entity_list.h"

#include "scene/entity.h"
#include "scene/scene.h"

#include <algorithm>
#include <utility>

namespace orvane
{

namespace
{

// How many levels the entity takes with all below it.
int levelsOf(CEntity & entity)
{
    int below = 0;
    if (CEntityList const * const list = entity.getList())
        for (auto const & child : list->entities()) below = std::max(below, levelsOf(*child));
    return 1 + below;
}

}  // namespace

CEntityList::CEntityList(CScene & scene) : ownScene(&scene) {}

CEntityList::CEntityList(CEntity & group) : group(&group) {}

CEntityList::~CEntityList()
{
    clear();
}

CScene * CEntityList::getScene() const
{
    CEntityList const * top = this;
    while (top && top->group) top = top->group->list;
    return top ? top->ownScene : nullptr;
}

bool CEntityList::isInside(CEntity const & entity) const
{
    for (CEntity const * outer = group; outer; outer = outer->getParent())
        if (outer == &entity) return true;
    return false;
}

int CEntityList::level() const
{
    int count = 1;
    for (CEntity const * outer = group; outer; outer = outer->getParent()) ++count;
    return count;
}

// Only what belongs nowhere is taken, so an entity has one owner and no group can come to stand below itself but
// by way of the outermost one around it.
CEntity * CEntityList::adopt(CEntity * entity)
{
    if (!entity || entity->list || isInside(*entity)) return nullptr;
    if (level() - 1 + levelsOf(*entity) > maximumLevels) return nullptr;
    CScene * const scene = getScene();
    if (scene && !scene->enter(*entity)) return nullptr;
    append(std::unique_ptr<CEntity>(entity));
    return entity;
}

// The array is carried along where it still tells the truth, so that adding, removing and asking in turn does not
// make it anew each time.
void CEntityList::append(std::unique_ptr<CEntity> entity)
{
    entity->list = this;
    bool const wasCurrent = array.current;
    if (wasCurrent) array.Add(entity.get());
    array.current = wasCurrent;
    owned.push_back(std::move(entity));
}

void CEntityList::forget(CEntity & entity)
{
    if (CScene * const scene = getScene()) scene->leave(entity);
    auto const place = std::ranges::find(owned, &entity, &std::unique_ptr<CEntity>::get);
    bool const wasCurrent = array.current;
    if (wasCurrent) array.RemoveAt(static_cast<int>(place - owned.begin()));
    array.current = wasCurrent;
    // It is on its way out by itself.
    static_cast<void>(place->release());
    owned.erase(place);
}

void CEntityList::appendCopies(CEntityList const & other)
{
    owned.reserve(owned.size() + other.owned.size());
    for (auto const & entity : other.owned) append(entity->clone());
}

void CEntityList::clear()
{
    CScene * const scene = getScene();
    // Out of the list first, then out of existence: what a destructor asks for meanwhile is consistent.
    auto const leaving = std::exchange(owned, {});
    array.RemoveAll();
    array.current = true;
    for (auto const & entity : leaving)
    {
        if (scene) scene->leave(*entity);
        entity->list = nullptr;
    }
}

CObArray * CEntityList::listing()
{
    if (!array.current)
    {
        array.RemoveAll();
        for (auto const & entity : owned) array.Add(entity.get());
        array.current = true;
    }
    return &array;
}

}  // namespace orvane
