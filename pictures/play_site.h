#pragma once

#include <cstddef>
#include <vector>

#include "pictures/entity_state.h"
#include "values/date_time.h"
#include "values/identifiers.h"

class CAssignedResource;
class CCompany;
class CEntity;
class CProject;
class CResourceBase;
class CTask;

namespace orvane::pictures
{

// Which dates of the tasks count. A task without a baseline stands in the baseline as it is planned.
enum class Dates
{
    plan,
    baseline
};

// Who uses what on the site, as the tasks, their resources and the scene tell together.
//
// An entity stands for a resource that names it, and so does all that is below a group that is named. A task uses the
// entities of each resource that it is assigned and of all below that resource. Rows without a schedule use nothing.
struct Site
{
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    struct Resource
    {
        CResourceBase const * resource;
        CCompany const * company;
        std::size_t kind;    // equipment, people, places, materials
        std::size_t parent;  // its position, or none
    };
    // One assignment.
    struct Use
    {
        CTask const * task;
        CAssignedResource const * assigned;
        std::size_t resource;

        EntityUse during(Dates dates) const;
    };
    // A solid of the scene that wishes to be seen.
    struct Entity
    {
        CEntity const * entity;
        std::vector<std::size_t> resources;  // for which it stands
        std::size_t users;                   // which list of uses is its
    };

    std::vector<Resource> resources;                // by company, parents before what is below
    std::vector<Use> uses;                          // in the order of the rows
    std::vector<Entity> entities;                   // in the order of the scene
    std::vector<std::vector<std::size_t>> usersOf;  // lists of uses, each there once; in the order of the rows
};

// Holds as long as the project stays as it is. Throws std::invalid_argument when entities are used more often than can be
// told apart in reasonable time: tens of thousands of times each, or millions of times together.
Site siteOf(CProject const & project);
// The uses of a list, for entityAt and entityChanges.
std::vector<EntityUse> usesDuring(Site const & site, std::size_t users, Dates dates);

// The state of one entity at a time; in place for one that is not known, or that does not wish to be seen.
EntityState entityStateAt(CProject const & project, CEntityID const & entity, CProjectTime const & time,
                          Dates dates = Dates::plan);

}  // namespace orvane::pictures
