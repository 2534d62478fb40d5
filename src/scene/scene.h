#pragma once

#include "platform/bytes.h"
#include "platform/color.h"
#include "scene/entity.h"
#include "scene/handle.h"

#include <unordered_map>

// The site in three dimensions: what a schedule builds, played against its tasks. It owns its entities, which
// form trees, and finds any of them by its handle at once. It is a model: it draws nothing.
//
// All handles in a scene differ, at every depth.
class CScene
{
public:
    CScene() : roots(*this) {}
    CScene(CScene const &) = delete;
    CScene & operator=(CScene const &) = delete;
    ~CScene() { clear(); }

    // Whether there is no entity.
    bool isEmpty() const { return roots.entities().empty(); }
    // Deletes all entities. The settings stay.
    void clear();
    // Copies of the other scene's entities take the place of all that are here, under the same handles. The
    // settings stay.
    void copyEntitiesFrom(CScene const & other);

    // Takes the entity over, with all below it, at the top of the scene, and answers it. Null, and the entity
    // stays the caller's, when it is null, belongs to a scene or a group or has too many levels below it, or
    // when one of its handles is NULL or known here.
    CEntity * addEntity(CEntity * entity) { return roots.adopt(entity); }
    // At any depth, with all below it. An unknown handle is no error.
    void deleteEntity(CHandle handle) { delete getEntity(handle); }
    // At any depth; null for an unknown handle.
    CEntity * getEntity(CHandle handle) const;
    // The first entity of that handle among the elements and all below them; null without one, and for a null
    // pointer. At once for the scene's own array.
    CEntity * getEntity(CObArray * entities, CHandle handle);
    // The entities at the top, in the order of addition. Changes to the array have no effect on the scene.
    CObArray * getEntityArray() { return roots.listing(); }
    // Fills the array, whose old content goes, with the entities of that class or one derived from it: those at
    // the top or, when `deep`, all, each before those below it.
    void getAllEntities(CObArray & entities, CRuntimeClass const * runtimeClass, bool deep) const;

    // Settings of the view that belong to the scene; written and read with it.
    CColor const & getBackgroundColor() const { return backgroundColor; }
    void setBackgroundColor(CColor const & color) { backgroundColor = color; }
    // Whether a light goes with the viewer.
    bool getHeadLight() const { return headLight; }
    void setHeadLight(bool on) { headLight = on; }

    // Both answer nonzero on success. The form is the scene's own and ends itself: reading takes exactly the
    // bytes that writing gave. It tolerates what it does not know: unknown kinds of entities are passed over
    // and their children go to the next group outside; an entity whose handle is NULL or was met before gets a
    // fresh one. Bytes that end early, were written by something else or nest too deep leave an empty scene.
    int write(orvane::IByteSink & sink) const;
    int read(orvane::IByteSource & source);

private:
    friend class orvane::CEntityList;

    // Make an entity known by handle, and unknown again, with all below it. When a handle is NULL or known
    // already, the answer is false and none was made known.
    bool enter(CEntity & entity);
    void leave(CEntity & entity);
    bool isFree(CHandle const & handle) const { return !handle.isNull() && !index.contains(handle); }
    void readEntities(orvane::IByteSource & source);

    CColor backgroundColor;
    bool headLight = true;
    // Outlives the entities, which leave it as they go.
    std::unordered_map<CHandle, CEntity *, orvane::HandleHash> index;
    orvane::CEntityList roots;
};
