#include "app/apply/action.h"

#include <utility>

#include <fmt/format.h>

#include "app/command.h"
#include "app/json/given_fields.h"

namespace orvane::app
{
namespace
{

Action::Step readStep(Json const & json, Reader const & reader)
{
    GivenFields fields(json);
    Action::Step step;
    CString name, label;
    fields.need("rule", name, reader);
    fields.with("args", [&](Json const & given) { step.arguments = arrayOf(given); });
    fields.read("as", label, reader);
    fields.refuseOthers();
    step.rule = findRule(name.view());
    step.label = label.view();
    if (!step.rule) throw Refusal(fmt::format("there is no rule \"{}\"", name.view()));
    return step;
}

Json createdJson(std::map<std::string, std::vector<_GUID>> const & created)
{
    Json json = Json::object();
    for (auto const & [kind, guids] : created)
    {
        Json ids = Json::array();
        CTaskID id(nullID);
        for (_GUID const & guid : guids)
        {
            id.setGUID(guid);
            ids.push_back(leafJson(id));
        }
        json[kind] = ids.size() == 1 ? ids[0] : ids;
    }
    return json;
}

// The answer of one rule, and its label where it was done.
Json runStep(Action::Step const & step, CLocalRulesChecker & rules, CProject const & project, Names & names,
             bool & isDone)
{
    Json json = {{"rule", step.rule->name}, {"done", false}};
    isDone = false;
    try
    {
        RuleAnswer answer = step.rule->run(rules, step.arguments, project, names);
        json["done"] = isDone = answer.isDone;
        if (!step.label.empty() && isDone)
        {
            names.label(step.label, std::move(answer.labelled));
            json["as"] = step.label;
        }
        if (!answer.created.empty()) json["created"] = createdJson(answer.created);
        if (!answer.index.is_null()) json["index"] = answer.index;
    }
    catch (Refusal const & refusal)
    {
        json["why"] = refusal.what();
    }
    return json;
}

}  // namespace

Action readAction(std::string_view line, CProject const & project)
{
    Json const json = parseJson(line);
    Reader const reader{.calendar = project.getProjectCalendar()};
    GivenFields fields(json);
    Action action;
    CString name;
    fields.need("action", name, reader);
    action.name = name.view();
    fields.read("role", action.role, reader);
    auto const readSteps = [&](Json const & given)
    {
        std::size_t position = 0;
        for (Json const & each : arrayOf(given))
        {
            ++position;
            std::string where = fmt::format("rule {}", position);
            try
            {
                action.steps.push_back(readStep(each, reader));
                where += fmt::format(", {}", action.steps.back().rule->name);
                action.steps.back().rule->prove(action.steps.back().arguments, project);
            }
            catch (Refusal const & refusal)
            {
                throw Refusal(fmt::format("{}: {}", where, refusal.what()));
            }
        }
    };
    if (!fields.with("rules", readSteps)) throw Refusal("field \"rules\" is missing");
    fields.refuseOthers();
    return action;
}

ActionAnswer runAction(Session & session, Action const & action, Names & names, bool stopOnRefusal)
{
    ActionAnswer answer;
    Json results = Json::array();
    auto const body = [&](CLocalRulesChecker & rules)
    {
        for (Action::Step const & step : action.steps)
        {
            bool isDone = false;
            results.push_back(runStep(step, rules, session.project(), names, isDone));
            answer.refused += !isDone;
            if (!isDone && stopOnRefusal) break;
        }
        return answer.refused == 0;
    };
    session.act(action.name, body, action.role);
    answer.isTakenBack = stopOnRefusal && answer.refused > 0;
    if (answer.isTakenBack) session.takeBack();
    answer.json = {{"action", action.name}, {"state", session.state()}, {"results", std::move(results)}};
    if (answer.isTakenBack) answer.json["takenBack"] = true;
    answer.json["messages"] = session.takeMessages();
    return answer;
}

}  // namespace orvane::app
