#pragma once

#include "model/project.h"
#include "view/item_tree.h"

namespace orvane::app
{

// Calls `visit` with every resource of the project, whatever its kind, parents first.
template <class Visit>
void forEachResource(CProject const & project, Visit const & visit)
{
    for (CCompany const & company : project.getAllCompanies())
        company.forEachKind([&](auto const & resources) { visitItems(resources, visit); });
}

}  // namespace orvane::app
