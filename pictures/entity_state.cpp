#include "pictures/entity_state.h"

#include <algorithm>

namespace orvane::pictures
{
namespace
{

using Profile = CResourceProfileType;

// What is known of the uses at one moment. Profiles that are none count as temporary.
class UsesAt
{
public:
    UsesAt(std::span<EntityUse const> uses, std::int64_t minute) : uses(uses), minute(minute)
    {
        for (int each = 0; each < static_cast<int>(uses.size()); ++each) consider(each);
    }

    EntityMoment moment() const
    {
        if (isUse(lasting)) return {rank(lasting) ? EntityState::underWay : EntityState::inUse, lasting};
        if (isUse(settled)) return {removes(settled) ? EntityState::removed : EntityState::inPlace, settled};
        if (isUse(coming)) return {removes(coming) ? EntityState::inPlace : EntityState::hidden, EntityMoment::noUse};
        if (isUse(used)) return {isUsedAgain ? EntityState::inPlace : EntityState::removed, used};
        return {uses.empty() ? EntityState::inPlace : EntityState::hidden, EntityMoment::noUse};
    }

private:
    static bool isUse(int use) { return use != EntityMoment::noUse; }
    EntityUse const & at(int use) const { return uses[static_cast<std::size_t>(use)]; }
    std::int64_t endOf(int use) const { return std::max(at(use).start, at(use).end); }
    bool removes(int use) const { return at(use).profile == Profile::Remove; }
    // How telling a use is.
    int rank(int use) const { return removes(use) ? 2 : at(use).profile == Profile::Install ? 1 : 0; }

    void consider(int use)
    {
        bool const isOver = endOf(use) <= minute;
        bool const isComing = at(use).start > minute;
        if (!isOver && !isComing)
        {
            if (!isUse(lasting) || rank(use) > rank(lasting)) lasting = use;
        }
        else if (rank(use) == 0)
        {
            if (isOver && (!isUse(used) || endOf(use) > endOf(used))) used = use;
            isUsedAgain |= isComing;
        }
        else if (isOver)
        {
            if (!isUse(settled) || isSettledAfter(use, settled)) settled = use;
        }
        else if (!isUse(coming) || at(use).start < at(coming).start) coming = use;
    }
    bool isSettledAfter(int use, int other) const
    {
        return endOf(use) != endOf(other) ? endOf(use) > endOf(other) : rank(use) > rank(other);
    }

    std::span<EntityUse const> uses;
    std::int64_t minute;
    int lasting = EntityMoment::noUse;
    // Of installations and removals, the last that is over and the first to come; of other uses the last that is over.
    int settled = EntityMoment::noUse;
    int coming = EntityMoment::noUse;
    int used = EntityMoment::noUse;
    bool isUsedAgain = false;
};

}  // namespace

EntityMoment entityAt(std::span<EntityUse const> uses, std::int64_t minute)
{
    return UsesAt(uses, minute).moment();
}

std::vector<EntityChange> entityChanges(std::span<EntityUse const> uses)
{
    std::vector<std::int64_t> moments{EntityChange::ever};
    for (EntityUse const & use : uses)
    {
        moments.push_back(use.start);
        moments.push_back(std::max(use.start, use.end));
    }
    std::ranges::sort(moments);
    moments.erase(std::unique(moments.begin(), moments.end()), moments.end());
    std::vector<EntityChange> changes;
    for (std::int64_t const minute : moments)
    {
        EntityMoment const moment = entityAt(uses, minute);
        if (changes.empty() || changes.back().moment != moment) changes.push_back({minute, moment});
    }
    return changes;
}

}  // namespace orvane::pictures
