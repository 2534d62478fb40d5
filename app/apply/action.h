#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/apply/rule_table.h"
#include "app/session.h"

namespace orvane::app
{

// One user action as a line of JSON tells it:
// {"action": "Link the slabs", "role": 1, "rules": [{"rule": "addLink", "args": ["@Dig", "$slab", 1], "as": "link"}]}
struct Action
{
    struct Step
    {
        Rule const * rule = nullptr;
        Json arguments = Json::array();
        std::string label;
    };

    std::string name;
    CRulesCheckerContext role{CRulesCheckerContext::OriginatingClient};
    std::vector<Step> steps;
};

// Refuses what is no action, names unknown rules, or gives one arguments that no project could make right.
Action readAction(std::string_view line, CProject const & project);

// What an action came to.
struct ActionAnswer
{
    // The answer as it is shown.
    Json json;
    int refused = 0;
    // It ended at a rule that was refused, and was taken back.
    bool isTakenBack = false;
};

// Runs the action on the session. A refused rule leaves the others to run, or ends and takes back the action.
ActionAnswer runAction(Session & session, Action const & action, Names & names, bool stopOnRefusal);

}  // namespace orvane::app
