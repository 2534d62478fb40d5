#pragma once

#include <string>

#include "values/date_time.h"

class CProject;

namespace orvane::pictures
{

struct PlayOptions
{
    // Stands at the head of the page.
    std::string title;
    // The present; the page marks it if it is valid and lies within the plan.
    CProjectTime now = {};
    // The page opens at this time; if it is not valid or lies outside the plan, where the plan begins.
    CProjectTime at = {};
};

// A page of HTML that plays the schedule against the site, whole in one file: it needs no server and forbids itself
// the network. Names in the project are data to it and never markup. The same project gives the same page.
//
// Throws std::invalid_argument when entities change more often than a page can hold.
std::string playPage(CProject const & project, PlayOptions const & options);

}  // namespace orvane::pictures
