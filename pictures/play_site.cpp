#include "pictures/play_site.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "model/project.h"
#include "scene/entity.h"

namespace orvane::pictures
{
namespace
{

using Positions = std::vector<std::size_t>;
using PositionsByID = std::unordered_map<std::string, Positions>;

std::string keyOf(CIDBase const & id)
{
    return std::string(id.keyBytes());
}

std::string keyOf(CEntity const & entity)
{
    CEntityID id(nullID);
    id.setGUID(entity.getHandle().getGUID());
    return keyOf(id);
}

void sortOnce(Positions & positions)
{
    std::ranges::sort(positions);
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
}

class SiteReader
{
public:
    explicit SiteReader(CProject const & project)
    {
        for (CCompany const & company : project.getAllCompanies()) addCompany(company);
        addTasks(project.getAllTasks());
        CObArray roots;
        project.getScene().getAllEntities(roots, CEntity::GetThisClass(), false);
        for (int each = 0; each < roots.GetSize(); ++each) addEntity(static_cast<CEntity &>(*roots.GetAt(each)), {});
    }

    Site take() { return std::move(site); }

private:
    void addCompany(CCompany const & company)
    {
        std::size_t kind = 0;
        company.forEachKind([&](auto const & tops) { addResources(tops, company, kind++, Site::none); });
    }

    template <class Array>
    void addResources(Array const & array, CCompany const & company, std::size_t kind, std::size_t parent)
    {
        for (auto const & resource : array)
        {
            std::size_t const position = site.resources.size();
            site.resources.push_back({&resource, &company, kind, parent});
            resourcesByID.emplace(keyOf(resource.getID()), position);
            for (CEntityID const & entity : resource.getRepresentations())
                resourcesByEntity[keyOf(entity)].push_back(position);
            if (resource.getSubResources()) addResources(*resource.getSubResources(), company, kind, position);
        }
    }

    void addTasks(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            if (task.getStartTime().isValid() && task.getEndTime().isValid()) addUses(task);
            if (task.getSubTasks()) addTasks(*task.getSubTasks());
        }
    }

    void addUses(CTask const & task)
    {
        usesByResource.resize(site.resources.size());
        for (CAssignedResource const & assigned : task.getAssignedResources())
        {
            auto const found = resourcesByID.find(keyOf(assigned.getResourceID()));
            if (found == resourcesByID.end()) continue;
            usesByResource[found->second].push_back(site.uses.size());
            site.uses.push_back({&task, &assigned, found->second});
        }
    }

    // `around` are the resources for which the groups around the entity stand.
    void addEntity(CEntity & entity, Positions around)
    {
        if (auto const found = resourcesByEntity.find(keyOf(entity)); found != resourcesByEntity.end())
        {
            around.insert(around.end(), found->second.begin(), found->second.end());
            sortOnce(around);
        }
        if (CObArray * const children = entity.getChildren())
        {
            for (int each = 0; each < children->GetSize(); ++each)
                addEntity(static_cast<CEntity &>(*children->GetAt(each)), around);
            return;
        }
        if (!entity.getVisible()) return;
        std::size_t const users = usersOf(around);
        site.entities.push_back({&entity, std::move(around), users});
    }

    // The list of the uses of the resources, and of those above them.
    std::size_t usersOf(Positions const & resources)
    {
        usesByResource.resize(site.resources.size());
        Positions users;
        for (std::size_t const resource : resources)
            for (std::size_t each = resource; each != Site::none; each = site.resources[each].parent)
                users.insert(users.end(), usesByResource[each].begin(), usesByResource[each].end());
        sortOnce(users);
        auto const [entry, isNew] = lists.try_emplace(users, site.usersOf.size());
        if (isNew)
        {
            refuseTooMany(users.size());
            site.usersOf.push_back(std::move(users));
        }
        return entry->second;
    }

    void refuseTooMany(std::size_t more)
    {
        constexpr std::size_t mostOfOne = 20'000, mostTogether = 2'000'000;
        usesTogether += more;
        if (more > mostOfOne || usesTogether > mostTogether)
            throw std::invalid_argument(more > mostOfOne ? "one entity is used by more than 20,000 assignments"
                                                         : "the entities are used more than 2,000,000 times");
    }

    Site site;
    std::size_t usesTogether = 0;
    std::unordered_map<std::string, std::size_t> resourcesByID;
    PositionsByID resourcesByEntity;
    std::vector<Positions> usesByResource;
    std::map<Positions, std::size_t> lists;
};

}  // namespace

EntityUse Site::Use::during(Dates dates) const
{
    bool const isBaseline = dates == Dates::baseline && task->isBaselineSet() && task->getBaselineStart().isValid() &&
                            task->getBaselineFinish().isValid();
    CProjectTime const start = isBaseline ? task->getBaselineStart() : task->getStartTime();
    CProjectTime const end = isBaseline ? task->getBaselineFinish() : task->getEndTime();
    auto const profile = assigned->getResourceProfileType().getEquivalentValue();
    return {start.getLocalMinutes(), end.getLocalMinutes(), static_cast<CResourceProfileType::Number>(profile)};
}

Site siteOf(CProject const & project)
{
    return SiteReader(project).take();
}

std::vector<EntityUse> usesDuring(Site const & site, std::size_t users, Dates dates)
{
    std::vector<EntityUse> uses;
    for (std::size_t const each : site.usersOf[users]) uses.push_back(site.uses[each].during(dates));
    return uses;
}

EntityState entityStateAt(CProject const & project, CEntityID const & entity, CProjectTime const & time, Dates dates)
{
    Site const site = siteOf(project);
    auto const found =
        std::ranges::find(site.entities, keyOf(entity), [](Site::Entity const & each) { return keyOf(*each.entity); });
    if (found == site.entities.end()) return EntityState::inPlace;
    return entityAt(usesDuring(site, found->users, dates), time.getLocalMinutes()).state;
}

}  // namespace orvane::pictures
