#include "app/apply/rule_table.h"

#include <algorithm>
#include <memory>
#include <tuple>
#include <unordered_set>

#include <fmt/format.h>

#include "app/apply/solids.h"
#include "app/command.h"
#include "app/json/given_fields.h"
#include "rules/local_rules_checker.h"
#include "view/item_tree.h"

namespace orvane::app
{
namespace
{

// ---- what comes into being --------------------------------------------------------------------------

// Keeps the identifiers that are issued while it lives.
class IssuedIDs
{
public:
    IssuedIDs() { collect(true); }
    IssuedIDs(IssuedIDs const &) = delete;
    IssuedIDs & operator=(IssuedIDs const &) = delete;
    ~IssuedIDs() { collect(false); }

private:
    static void collect(bool flag)
    {
        forEachKindOfID([flag]<class ID>(std::type_identity<ID>) { ID::setCollectIssuedIDs(flag); });
    }
};

CTaskID taskIDOf(_GUID const & guid)
{
    CTaskID id(nullID);
    id.setGUID(guid);
    return id;
}

// Of tasks that were made at once the last of those that stand under none of the others.
_GUID mainTask(CProject const & project, std::vector<_GUID> const & made)
{
    CTask const * main = nullptr;
    std::unordered_set<_GUID> const together(made.begin(), made.end());
    for (_GUID const & each : made)
    {
        CTask const * const task = project.getTask(taskIDOf(each));
        CTask const * const parent = task->getParent();
        bool const isBelow = parent && together.contains(parent->getID().getGUID());
        if (isBelow) continue;
        if (!main || task->getPositionInSiblings() > main->getPositionInSiblings()) main = task;
    }
    return main ? main->getID().getGUID() : made.back();
}

// A project with the same calendars, for tasks that are read: these say when a task may start.
std::unique_ptr<CProject> makeCalendarProject(CProject const & project)
{
    CProjectData data;
    data.clear();
    data.setCompanies(project.getAllCompanies());
    auto made = std::make_unique<CProject>(data);
    CCalendar calendar(project.getProjectCalendar());
    calendar.setID(made->getProjectCalendar().getID());
    CLocalRulesChecker(made.get(), CRulesCheckerContext::ReceivingClient).setCalendar(calendar);
    return made;
}

}  // namespace

// ---- arguments --------------------------------------------------------------------------------------

// One use of a rule: reads its arguments and finds out what it made.
class Rule::Call
{
public:
    // Without names the call only proves the arguments.
    Call(std::string_view rule, CProject const & project, Names const * names)
        : project(project), isAdding(rule.starts_with("add")), isProof(!names),
          reader{.calendar = project.getProjectCalendar(), .isProof = isProof}
    {
        reader.named = [names](std::string_view text, CIDBase & id)
        {
            if (names) names->find(text, id);
            else if (!text.starts_with('$') && !text.starts_with('@'))
                throw Refusal(fmt::format("\"{}\" is no identifier: 32 hexadecimal digits, $label or @Name", text));
        };
    }

    template <class Value>
    void read(Json const & json, Value & value)
    {
        readJson(json, value, reader);
        if constexpr (std::derived_from<Value, CIDBase>)
            if (answer.labelled.empty() && !value.isNULL()) answer.labelled[kindOf(value)] = value.getGUID();
    }
    // What is changed begins as it stands in the project, what is added begins new.
    template <class Record>
        requires requires(CProject const & in, Record & out) { findPresent(in, out.getID(), out); } ||
                 std::derived_from<Record, CResourceBase>
    void read(Json const & json, Record & record)
    {
        if (auto const given = objectOf(json).find("id"); given != json.end()) readPresent(*given, record);
        else if (!isAdding) throw Refusal("field \"id\" is missing: it says what is to change");
        readJson(json, record, reader);
        expected.emplace_back(kindOf(record.getID()), record.getID().getGUID());
    }
    void read(Json const & json, CTaskArray & tasks)
    {
        calendarProject = makeCalendarProject(project);
        reader.project = calendarProject.get();
        readJson(json, tasks, reader);
        expectTasks(tasks);
    }
    void read(Json const & json, CObArray & entities)
    {
        std::size_t position = 0;
        for (Json const & each : arrayOf(json))
        {
            try
            {
                solids.push_back(readSolid(each, reader));
            }
            catch (Refusal const & refusal)
            {
                throw Refusal(fmt::format("entity {}: {}", position + 1, refusal.what()));
            }
            ++position;
            entities.Add(solids.back().get());
            expected.emplace_back("entity", solids.back()->getHandle().getGUID());
        }
    }

    // Runs the rule, which is given as a function without arguments.
    template <class Run>
    void run(Run const & run)
    {
        answer.isDone = run();
        // What the scene took over it owns; the rest stays here.
        for (auto & solid : solids)
            if (project.getEntity(idOf(*solid)) == solid.get()) static_cast<void>(solid.release());
    }
    // What the rule made, when issued identifiers are no longer kept: looking for them issues some.
    RuleAnswer takeAnswer()
    {
        forEachKindOfID([this](auto kind) { findCreated(kind); });
        return std::move(answer);
    }

    RuleAnswer answer;

private:
    template <class Record>
    void readPresent(Json const & given, Record & record)
    {
        auto id = record.getID();
        readJson(given, id, reader);
        if (isProof) return;
        if constexpr (requires { findPresent(project, id, record); })
            if (!isAdding) findPresent(project, id, record);
        if (isAdding && exists(project, id))
            throw Refusal("field \"id\": the project has something of that identifier");
    }

    void expectTasks(CTaskArray const & tasks)
    {
        visitItems(tasks,
                   [this](CTask const & task)
                   {
                       if (!isProof && exists(project, task.getID()))
                           throw Refusal(fmt::format("the project has a task {}", idText(task.getID())));
                       expected.emplace_back(kindOf(task.getID()), task.getID().getGUID());
                   });
    }

    // What was issued or expected and is there now. What is changed was there before.
    template <class ID>
    void findCreated(std::type_identity<ID>)
    {
        ID id(nullID);
        std::string const kind = kindOf(id);
        // What is expected stands last, as what the rule is about.
        std::vector<_GUID> last, made;
        if (isAdding || calendarProject)
            for (auto const & [expectedKind, guid] : expected)
                if (expectedKind == kind) last.push_back(guid);
        std::unordered_set<_GUID> met(last.begin(), last.end());
        auto const take = [&](_GUID const & guid)
        {
            id.setGUID(guid);
            if (exists(project, id)) made.push_back(guid);
        };
        auto & issued = ID::getIssuedIDs();
        for (int each = 0; each < issued.GetSize(); ++each)
            if (met.insert(issued.GetAt(each)).second) take(issued.GetAt(each));
        met.clear();
        for (_GUID const & guid : last)
            if (met.insert(guid).second) take(guid);
        if (made.empty()) return;
        if (answer.created.empty()) answer.labelled.clear();
        answer.labelled[kind] = std::is_same_v<ID, CTaskID> ? mainTask(project, made) : made.back();
        answer.created[kind] = std::move(made);
    }

    CProject const & project;
    bool isAdding;
    bool isProof;
    Reader reader;
    std::unique_ptr<CProject> calendarProject;
    std::vector<std::unique_ptr<CEntity>> solids;
    std::vector<std::pair<std::string, _GUID>> expected;
};

namespace
{

// ---- from JSON to the operations --------------------------------------------------------------------

// What an operation hands back is not given.
template <class Parameter>
constexpr bool isArgument = !std::is_same_v<Parameter, int &>;

template <class Value>
void readArgument(Json const & arguments, std::size_t & position, Value & value, Rule::Call & call)
{
    try
    {
        call.read(arguments[position], value);
    }
    catch (Refusal const & refusal)
    {
        throw Refusal(fmt::format("argument {}: {}", position + 1, refusal.what()));
    }
    ++position;
}

template <auto operation, class... Parameters>
void performWith(bool (IRulesChecker::*)(Parameters...), Json const & arguments, Rule::Call & call,
                 IRulesChecker * rules)
{
    std::tuple<std::remove_cvref_t<Parameters>...> values;
    [[maybe_unused]] std::size_t position = 0;
    auto const read = [&]<class Parameter>(std::type_identity<Parameter>, auto & value)
    {
        if constexpr (isArgument<Parameter>) readArgument(arguments, position, value, call);
        else value = 0;
    };
    std::apply([&](auto &... each) { (read(std::type_identity<Parameters>(), each), ...); }, values);
    if (!rules) return;
    call.run([&] { return std::apply([&](auto &... each) { return (rules->*operation)(each...); }, values); });
    auto const handBack = [&]<class Parameter>(std::type_identity<Parameter>, [[maybe_unused]] auto & value)
    {
        if constexpr (!isArgument<Parameter>)
            if (call.answer.isDone) call.answer.index = value;
    };
    std::apply([&](auto &... each) { (handBack(std::type_identity<Parameters>(), each), ...); }, values);
}

template <auto operation>
void perform(Json const & arguments, Rule::Call & call, IRulesChecker * rules)
{
    performWith<operation>(operation, arguments, call, rules);
}

template <class... Parameters>
consteval std::size_t countGiven(bool (IRulesChecker::*)(Parameters...))
{
    return (std::size_t{0} + ... + (isArgument<Parameters> ? 1 : 0));
}

// The name of the operation as it is declared, from the compiler's own text.
template <auto operation>
consteval std::string_view nameOfOperation()
{
    std::string_view text = __PRETTY_FUNCTION__;
    std::string_view const scope = "IRulesChecker::";
    text.remove_prefix(text.find(scope) + scope.size());
    return text.substr(0, text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"));
}

template <auto... operations>
constexpr auto tableOf()
{
    return std::to_array<Rule>({{nameOfOperation<operations>(), countGiven(operations), &perform<operations>}...});
}

using Rules = IRulesChecker;
// clang-format off
constexpr auto ruleTable = tableOf<
    &Rules::clear, &Rules::undo, &Rules::redo, &Rules::setState, &Rules::addCompany, &Rules::changeCompany,
    &Rules::removeCompany, &Rules::setCompanyName, &Rules::setCompanyAddress, &Rules::setCompanyTelephoneNumber,
    &Rules::setCompanyFaxNumber, &Rules::setCompanyEmailAddress, &Rules::setCompanyType, &Rules::setCompanyColor,
    &Rules::setCalendar, &Rules::addUser, &Rules::changeUser, &Rules::removeUser, &Rules::changeSupplyChain,
    &Rules::addRole, &Rules::changeRole, &Rules::removeRole, &Rules::addTaskWithName, &Rules::addTaskWithDuration,
    &Rules::addTaskWithFinish, &Rules::importTasks, &Rules::changeTaskName, &Rules::changeTaskStatus,
    &Rules::changeTaskDuration, &Rules::changeTaskStart, &Rules::changeTaskFinish, &Rules::changeTaskRiskType,
    &Rules::changeTaskDominantCalendar, &Rules::changeTaskRiskBuffer, &Rules::changeTaskComments,
    &Rules::changeTaskConstraint, &Rules::changeTaskCategory, &Rules::changeTaskType, &Rules::changeTaskTemplateFlag,
    &Rules::startTask, &Rules::finishTask, &Rules::clearTasks, &Rules::removeTasks, &Rules::insertBlankTask,
    &Rules::setTasksBaseline, &Rules::clearTasksBaseline, &Rules::pasteIntoTask, &Rules::pasteIntoNewTask,
    &Rules::repositionTask, &Rules::repositionTasks, &Rules::assignResourceToTask, &Rules::assignResourceToTasks,
    &Rules::changeAssignedResource, &Rules::unassignResource, &Rules::assignRiskToTask, &Rules::changeAssignedRisk,
    &Rules::unassignRisk, &Rules::addLink, &Rules::changeLink, &Rules::removeLink, &Rules::addTaskCost,
    &Rules::changeTaskCost, &Rules::removeTaskCost, &Rules::addTaskReport, &Rules::changeTaskReport,
    &Rules::removeTaskReport, &Rules::addRisk, &Rules::renameRisk, &Rules::removeRisk, &Rules::setRiskValueMode,
    &Rules::makeSubRisk, &Rules::addEquipmentResourceToCompany, &Rules::addHumanResourceToCompany,
    &Rules::addLocationResourceToCompany, &Rules::addMaterialResourceToCompany, &Rules::addEquipmentResourceToParent,
    &Rules::addHumanResourceToParent, &Rules::addLocationResourceToParent, &Rules::addMaterialResourceToParent,
    &Rules::removeResource, &Rules::makeSubResource, &Rules::setResourceName, &Rules::setResourceAutoAccept,
    &Rules::setResourceOrderRequired, &Rules::setResourceUsedOn, &Rules::setResourceLeadTime,
    &Rules::setResourceUseRatePerDay, &Rules::setResourceTotalUnitsAvailable, &Rules::setResourceUnitType,
    &Rules::addResourceCost, &Rules::changeResourceCost, &Rules::removeResourceCost,
    &Rules::addResourceSupplierReference, &Rules::setResourceSupplierReference,
    &Rules::removeResourceSupplierReference, &Rules::changeResourceSupplier, &Rules::clearScene,
    &Rules::addEntitiesToScene, &Rules::assignEntityToResource, &Rules::unassignEntityFromResource,
    &Rules::unassignAllEntitiesFromResource, &Rules::unassignEntityFromAllResources, &Rules::renameEntityInScene,
    &Rules::changeEntityTransform, &Rules::changeEntityBoxDimensions, &Rules::changeEntityCylinderDimensions,
    &Rules::changeEntitySphereDimensions, &Rules::changeEntityExtrusionDimensions, &Rules::changeEntityMaterial,
    &Rules::removeEntityFromScene, &Rules::addFilter, &Rules::changeFilter, &Rules::removeFilter, &Rules::findNext,
    &Rules::replaceCurrent, &Rules::replaceAll
>();
// clang-format on

}  // namespace

void Rule::prove(Json const & arguments, CProject const & project) const
{
    if (arrayOf(arguments).size() != numberOfArguments)
        throw Refusal(fmt::format("takes {} arguments and is given {}", numberOfArguments, arguments.size()));
    Call call(name, project, nullptr);
    perform(arguments, call, nullptr);
}

RuleAnswer Rule::run(IRulesChecker & rules, Json const & arguments, CProject const & project, Names const & names) const
{
    Call call(name, project, &names);
    {
        IssuedIDs const issued;
        perform(arguments, call, &rules);
    }
    return call.takeAnswer();
}

std::span<Rule const> allRules()
{
    return ruleTable;
}

Rule const * findRule(std::string_view name)
{
    auto const found = std::ranges::find(ruleTable, name, &Rule::name);
    return found == ruleTable.end() ? nullptr : &*found;
}

}  // namespace orvane::app
