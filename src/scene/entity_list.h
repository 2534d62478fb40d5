#pragma once

#include "platform/array.h"

#include <memory>
#include <vector>

class CEntity;
class CScene;

namespace orvane
{

// The entities on one level of a scene or of a group, which own them: in the order of addition.
class CEntityList
{
public:
    // Groups do not nest deeper, so that walking a scene is safe whatever built it.
    static constexpr int maximumLevels = 1000;

    explicit CEntityList(CScene & scene);
    explicit CEntityList(CEntity & group);
    CEntityList(CEntityList const &) = delete;
    CEntityList & operator=(CEntityList const &) = delete;
    ~CEntityList();

    std::vector<std::unique_ptr<CEntity>> const & entities() const { return owned; }
    // The group whose children these are; null at the top of a scene.
    CEntity * getGroup() const { return group; }
    // The scene that these belong to, at whatever depth; null outside of any.
    CScene * getScene() const;

    // Takes the entity over, with all below it, and answers it. Null, and the entity stays the caller's, when
    // it is null, belongs to a list already, holds this list or would reach below the deepest level, or when in
    // a scene one of its handles is NULL or known there.
    CEntity * adopt(CEntity * entity);
    // Takes over an entity that is known to satisfy all that.
    void append(std::unique_ptr<CEntity> entity);
    // Lets go of an entity that is being destroyed.
    void forget(CEntity & entity);
    // Appends copies, with all below them, under the same handles.
    void appendCopies(CEntityList const & other);
    void clear();

    // The same entities for callers that know only arrays. What they change in it has no effect here, and is
    // gone when the array is next asked for.
    CObArray * listing();

private:
    class Listing : public CObArray
    {
    public:
        bool current = true;

    protected:
        void mutating() override { current = false; }
        void lentForWriting() override { current = false; }
    };

    bool isInside(CEntity const & entity) const;
    // The level on which these entities stand: 1 at the top.
    int level() const;

    CScene * ownScene = nullptr;
    CEntity * group = nullptr;
    std::vector<std::unique_ptr<CEntity>> owned;
    Listing array;
};

}  // namespace orvane
