#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "app/apply/names.h"
#include "app/json/values.h"

class IRulesChecker;

// Every operation of IRulesChecker by its name, with arguments in JSON.
namespace orvane::app
{

// What running one rule came to.
struct RuleAnswer
{
    bool isDone = false;
    // What came into the project, by kind, in the order in which it was made.
    std::map<std::string, std::vector<_GUID>> created;
    // What a label on the rule stands for: of each kind the last thing made, and of tasks made with others below them
    // the topmost; where nothing was made, what the first identifier among the arguments says.
    Identities labelled;
    // What the rule handed back beside its answer; null for nothing.
    Json index;
};

class Rule
{
public:
    std::string_view name;
    // As many as are given; what a rule hands back is none of them.
    std::size_t numberOfArguments;

    // Refuses arguments that no project could make right; names and labels are not looked up.
    void prove(Json const & arguments, CProject const & project) const;
    // Refuses arguments that name what is not there; nothing was done then.
    RuleAnswer run(IRulesChecker & rules, Json const & arguments, CProject const & project, Names const & names) const;

    // The arguments in JSON, where they are taken from, and for running the rules; null to prove the arguments alone.
    class Call;
    void (*perform)(Json const & arguments, Call & call, IRulesChecker * rules);
};

// In the order of the interface.
std::span<Rule const> allRules();
// Null for an unknown name.
Rule const * findRule(std::string_view name);

}  // namespace orvane::app
