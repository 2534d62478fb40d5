#pragma once

#include <memory>

#include "app/json/values.h"
#include "scene/entity.h"

// How the solids of the site stand in JSON.
namespace orvane::app
{

// {"kind": "box", "size": [4, 2, 3]}, {"kind": "extrusion", "outline": [[0, 0], [4, 0], [4, 2]], "height": 3},
// {"kind": "cylinder", "radius": 0.4, "height": 6}, {"kind": "sphere", "radius": 1.5}; with "id", "name", "transform",
// "material" and, of round ones, "position". A box is the extrusion of a rectangle from the origin.
std::unique_ptr<CEntity> readSolid(Json const & json, Reader const & reader);
// The same, for groups without dimensions.
Json solidJson(CEntity const & entity);

CEntityID idOf(CEntity const & entity);

}  // namespace orvane::app
