#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "values/enumerations.h"

namespace orvane::pictures
{

// A task uses what stands for one of its resources: from its start until its end, in whole minutes of the local clock.
// An end before the start counts as the start.
struct EntityUse
{
    std::int64_t start = 0;
    std::int64_t end = 0;
    CResourceProfileType::Number profile = CResourceProfileType::Temporary;
};

// How an entity of the scene stands on the site. The numbers are those of the page.
enum class EntityState
{
    hidden = 0,    // not there yet, or not there just now
    underWay = 1,  // being installed or removed
    inPlace = 2,   // there, and nothing happens to it
    inUse = 3,     // a task works with it
    removed = 4,   // there no more
};

// The state at one moment, and the use that brought it about, as a position among the entity's uses.
struct EntityMoment
{
    static constexpr int noUse = -1;

    EntityState state = EntityState::inPlace;
    int use = noUse;

    friend bool operator==(EntityMoment const &, EntityMoment const &) = default;
};

// What uses come to at a moment:
//
// - While some last, the most telling decides: a removal is under way, an installation is under way, or the entity is
//   in use. Among equals the one that is first among the uses. A use lasts from its start until just before its end.
// - Between them, the last installation or removal that is over decides: in place, or removed. Of two that end
//   together the removal counts.
// - Before any of those the entity is there if the first of them removes it, and hidden if it installs it.
// - An entity that is never installed nor removed but used comes with its first use, waits in place between uses, and
//   is removed after the last. Without any use it is always in place.
EntityMoment entityAt(std::span<EntityUse const> uses, std::int64_t minute);

// From this minute until the next change.
struct EntityChange
{
    static constexpr std::int64_t ever = std::numeric_limits<std::int64_t>::min();

    std::int64_t from = ever;
    EntityMoment moment;
};

// What entityAt answers for every minute there is, in the order of time; the first holds since ever.
std::vector<EntityChange> entityChanges(std::span<EntityUse const> uses);

}  // namespace orvane::pictures
