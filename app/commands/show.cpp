#include "app/commands/commands.h"

#include <iostream>

#include <CLI/CLI.hpp>
#include <fmt/ostream.h>

#include "app/command.h"
#include "app/dump/figures.h"
#include "app/dump/listing.h"
#include "app/json/records.h"
#include "app/planning/rows.h"
#include "app/printable.h"
#include "app/session.h"

namespace orvane::app
{
namespace
{

constexpr auto rightAligned = Table::Align::right;

struct ShowOptions
{
    std::string path;
    std::string what = "tasks";
    bool asJson = false;
    Login login;
};

std::string indented(int level, std::string_view text)
{
    return std::string(static_cast<std::size_t>(level) * 2, ' ') + std::string(text);
}

// People read a time with a blank.
std::string spaced(CProjectTime const & time)
{
    std::string text = isoTime(time);
    if (auto const letter = text.find('T'); letter != text.npos) text[letter] = ' ';
    return text;
}

Listing::Cell timeCell(CProjectTime const & time)
{
    return {leafJson(time), spaced(time)};
}

Listing::Cell daysCell(CProjectDuration const & duration, CCalendar const & calendar)
{
    return {duration.isValid() ? Json(workingDays(duration, calendar)) : Json(), dayText(duration, calendar)};
}

// In the table with two digits, in JSON as it is.
Listing::Cell moneyCell(double amount)
{
    return {Json(amount)};
}

// The level of each row in the outline, from 0.
std::vector<int> levelsOf(Rows const & rows)
{
    std::vector<int> levels;
    for (int row = 0; row < rows.size(); ++row)
    {
        int const parent = rows[row].parent;
        levels.push_back(parent == Rows::none ? 0 : levels[static_cast<std::size_t>(parent)] + 1);
    }
    return levels;
}

// ---- tasks ------------------------------------------------------------------------------------------

char const * shortLinkText(CLinkType const & type)
{
    switch (type.getEquivalentValue())
    {
        case CLinkType::StartToFinish: return "SF";
        case CLinkType::StartToStart: return "SS";
        case CLinkType::FinishToFinish: return "FF";
        default: return "FS";
    }
}

// Lags count hours of the clock.
std::string lagText(CProjectDuration const & lag)
{
    long const minutes = lag.GetTotalMinutes();
    if (minutes == 0) return {};
    return minutes % 60 == 0 ? fmt::format("{:+}h", minutes / 60) : fmt::format("{:+}m", minutes);
}

// What the task waits for, as planners write it: "12FS+48h;15SS".
std::string predecessorText(CTask const & task, Rows const & rows)
{
    std::string text;
    for (CLink const & link : task.getUpstreamLinks())
        if (int const upstream = rows.find(link.getUpstreamTaskID()); upstream != Rows::none)
            text += fmt::format("{}{}{}{}", text.empty() ? "" : ";", upstream + 1, shortLinkText(link.getType()),
                                lagText(link.getDelay()));
    return text;
}

std::string resourceText(CTask const & task, CProject const & project)
{
    std::string text;
    for (CAssignedResource const & assigned : task.getAssignedResources())
        if (CResourceBase const * const resource = project.getResource(assigned.getResourceID()))
            text += fmt::format("{}{}", text.empty() ? "" : ", ", resource->getName().view());
    return text;
}

Listing listTasks(CProject const & project)
{
    Listing listing({{"row", "#", rightAligned},
                     {"level", ""},
                     {"id", ""},
                     {"name", "Task"},
                     {"status", "Status"},
                     {"type", ""},
                     {"start", "Start"},
                     {"end", "End"},
                     {"durationMinutes", ""},
                     {"durationDays", "Duration", rightAligned},
                     {"percentComplete", "%", rightAligned},
                     {"critical", "Critical"},
                     {"summary", ""},
                     {"predecessors", "Predecessors"},
                     {"resources", "Resources"}});
    Rows const rows(project);
    std::vector<int> const levels = levelsOf(rows);
    CCalendar const & calendar = project.getProjectCalendar();
    for (int row = 0; row < rows.size(); ++row)
    {
        CTask const & task = *rows[row].task;
        int const level = levels[static_cast<std::size_t>(row)];
        std::string_view const name = task.getName().view();
        bool const isCounted = task.isValid();
        CProjectDuration const duration = isCounted ? task.getDuration() : CProjectDuration();
        double const percent = isCounted ? task.getPercentComplete() : 0;
        listing.add({Json(row + 1),
                     Json(level),
                     leafJson(task.getID()),
                     {Json(name), indented(level, name)},
                     {leafJson(task.getStatus()), isCounted ? std::string(task.getStatus().getString().view()) : ""},
                     leafJson(task.getTaskType()),
                     timeCell(isCounted ? task.getStartTime() : CProjectTime()),
                     timeCell(isCounted ? task.getEndTime() : CProjectTime()),
                     leafJson(duration),
                     daysCell(duration, calendar),
                     {Json(percent), isCounted ? fmt::format("{:.0f}", percent) : ""},
                     Json(project.isInCriticalPath(task.getID())),
                     Json(task.isSummaryTask()),
                     Json(predecessorText(task, rows)),
                     Json(resourceText(task, project))});
    }
    return listing;
}

// ---- the longest chain ------------------------------------------------------------------------------

Json chainJson(CriticalChain const & chain, Rows const & rows, CCalendar const & calendar)
{
    Json tasks = Json::array(), links = Json::array();
    for (CTask const * const task : chain.tasks)
        tasks.push_back({{"row", rows.numberOf(*task)},
                         {"id", leafJson(task->getID())},
                         {"name", task->getName().view()},
                         {"start", leafJson(task->getStartTime())},
                         {"end", leafJson(task->getEndTime())},
                         {"durationMinutes", task->getDuration().GetTotalMinutes()}});
    for (std::size_t each = 0; each < chain.links.size(); ++each)
    {
        CLink const & link = *chain.links[each];
        links.push_back({{"id", leafJson(link.getID())},
                         {"upstreamTaskID", leafJson(link.getUpstreamTaskID())},
                         {"downstreamTaskID", leafJson(chain.tasks[each + 1]->getID())},
                         {"type", leafJson(link.getType())},
                         {"delayMinutes", link.getDelay().GetTotalMinutes()}});
    }
    return {{"durationMinutes", chain.duration.GetTotalMinutes()},
            {"durationDays", workingDays(chain.duration, calendar)},
            {"tasks", tasks},
            {"links", links}};
}

void printChain(CriticalChain const & chain, Rows const & rows, CCalendar const & calendar)
{
    fmt::print(std::cout, "{} of work in {} tasks\n", dayText(chain.duration, calendar), chain.tasks.size());
    Table table({{"#", rightAligned}, {"Task"}, {"Start"}, {"End"}, {"Duration", rightAligned}, {"Link to the next"}});
    for (std::size_t each = 0; each < chain.tasks.size(); ++each)
    {
        CTask const & task = *chain.tasks[each];
        std::string next;
        if (each < chain.links.size())
            next = shortLinkText(chain.links[each]->getType()) + lagText(chain.links[each]->getDelay());
        table.add({std::to_string(rows.numberOf(task)), std::string(task.getName().view()), spaced(task.getStartTime()),
                   spaced(task.getEndTime()), dayText(task.getDuration(), calendar), next});
    }
    table.print(std::cout);
}

int showCriticalPath(CProject const & project, bool asJson)
{
    CriticalChain const chain(project);
    Rows const rows(project);
    CCalendar const & calendar = project.getProjectCalendar();
    if (asJson) printJson(std::cout, chainJson(chain, rows, calendar));
    else if (chain.tasks.empty()) fmt::print(std::cout, "There is no chain of tasks.\n");
    else printChain(chain, rows, calendar);
    return ending::done;
}

// ---- companies and their resources ------------------------------------------------------------------

// How many assignments each resource has.
using AssignmentCounts = std::unordered_map<_GUID, int>;

AssignmentCounts countAssignments(CProject const & project)
{
    AssignmentCounts counts;
    Rows const rows(project);
    for (int row = 0; row < rows.size(); ++row)
        for (CAssignedResource const & assigned : rows[row].task->getAssignedResources())
            ++counts[assigned.getResourceID().getGUID()];
    return counts;
}

template <class Resource>
void addResourceRows(Listing & listing, AssignmentCounts const & counts, CCompany const & company,
                     Resource const & resource, int level)
{
    auto const found = counts.find(resource.getID().getGUID());
    CProjectDate from, to;
    if constexpr (requires { resource.getAvailableFrom(); })
    {
        from = resource.getAvailableFrom();
        to = resource.getAvailableTo();
    }
    std::string_view const name = resource.getName().view();
    listing.add({Json(company.getName().view()),
                 leafJson(company.getID()),
                 Json(resource.getType().view()),
                 {Json(name), indented(level, name)},
                 leafJson(resource.getID()),
                 Json(level),
                 leafJson(resource.getStatus()),
                 Json(resource.getTotalUnitsAvailable()),
                 leafJson(resource.getResourceUnitType()),
                 Json(resource.getUseRatePerDay()),
                 leafJson(from),
                 leafJson(to),
                 Json(found == counts.end() ? 0 : found->second)});
    if (resource.getSubResources())
        for (Resource const & below : *resource.getSubResources())
            addResourceRows(listing, counts, company, below, level + 1);
}

Listing listResources(CProject const & project)
{
    Listing listing({{"company", "Company"},
                     {"companyID", ""},
                     {"kind", "Kind"},
                     {"name", "Resource"},
                     {"id", ""},
                     {"level", ""},
                     {"status", "Status"},
                     {"units", "Units", rightAligned},
                     {"unitType", "Unit"},
                     {"useRatePerDay", "A day", rightAligned},
                     {"availableFrom", "From"},
                     {"availableTo", "To"},
                     {"assignments", "Assignments", rightAligned}});
    AssignmentCounts const counts = countAssignments(project);
    for (CCompany const & company : project.getAllCompanies())
        company.forEachKind(
            [&](auto const & resources)
            {
                for (auto const & resource : resources) addResourceRows(listing, counts, company, resource, 0);
            });
    return listing;
}

// ---- money ------------------------------------------------------------------------------------------

Listing listCosts(CProject const & project)
{
    std::vector<Listing::Column> columns{{"row", "#", rightAligned}, {"id", ""}, {"name", "Task"}};
    static constexpr char const * titles[] = {"Tasks",     "Equipment",   "People",  "Places", "Materials",
                                              "Mitigated", "Unmitigated", "Reports", "Budget"};
    for (std::size_t kind = 0; kind < CostTotals::kinds.size(); ++kind)
        columns.push_back({CostTotals::kinds[kind], titles[kind], rightAligned});
    columns.push_back({"actualTotal", "Actual", rightAligned});
    Listing listing(columns);
    auto const add =
        [&](Listing::Cell const & row, Listing::Cell const & id, Listing::Cell const & name, CostTotals const & costs)
    {
        std::vector<Listing::Cell> cells{row, id, name};
        for (double const amount : costs.budgeted) cells.push_back(moneyCell(amount));
        cells.push_back(moneyCell(costs.actual[CostTotals::total]));
        listing.add(std::move(cells));
    };
    PlanCosts const costs(project);
    Rows const rows(project);
    std::vector<int> const levels = levelsOf(rows);
    for (int row = 0; row < rows.size(); ++row)
    {
        CTask const & task = *rows[row].task;
        std::string_view const name = task.getName().view();
        add(Json(row + 1), leafJson(task.getID()), {Json(name), indented(levels[static_cast<std::size_t>(row)], name)},
            costs.of(task));
    }
    add(Json(), Json(), {Json(), "The whole plan"}, costs.ofPlan());
    return listing;
}

// ---- risks ------------------------------------------------------------------------------------------

struct RiskUse
{
    int tasks = 0;
    CProjectDuration time{0};
};
using RiskUses = std::unordered_map<_GUID, RiskUse>;

void addRiskRows(Listing & listing, RiskUses const & uses, CCalendar const & calendar, CRisk const & risk, int level)
{
    auto const found = uses.find(risk.getID().getGUID());
    RiskUse const use = found == uses.end() ? RiskUse() : found->second;
    bool const isFixed = risk.getValueMode() == CRiskValueMode::Fixed;
    std::string_view const description = risk.getDescription().view();
    listing.add({leafJson(risk.getID()),
                 Json(level),
                 {Json(description), indented(level, description)},
                 {leafJson(risk.getValueMode()), isFixed ? "time" : "percent"},
                 Json(use.tasks),
                 Json(use.time.GetTotalMinutes()),
                 daysCell(use.time, calendar)});
    if (risk.getSubRisks())
        for (CRisk const & below : *risk.getSubRisks()) addRiskRows(listing, uses, calendar, below, level + 1);
}

Listing listRisks(CProject const & project)
{
    Listing listing({{"id", ""},
                     {"level", ""},
                     {"description", "Risk"},
                     {"valueMode", "Measured in"},
                     {"tasks", "Tasks", rightAligned},
                     {"minutesOnTasks", ""},
                     {"daysOnTasks", "On tasks", rightAligned}});
    RiskUses uses;
    Rows const rows(project);
    for (int row = 0; row < rows.size(); ++row)
        for (CAssignedRisk const & assigned : rows[row].task->getAssignedRisks())
        {
            RiskUse & use = uses[assigned.getRiskID().getGUID()];
            ++use.tasks;
            use.time += assigned.getValueFixed(*rows[row].task);
        }
    for (CRisk const & risk : project.getAllRisks()) addRiskRows(listing, uses, project.getProjectCalendar(), risk, 0);
    return listing;
}

// ---- users ------------------------------------------------------------------------------------------

Listing listUsers(CProject const & project)
{
    Listing listing({{"id", ""},
                     {"login", "Login"},
                     {"name", "Name"},
                     {"role", "Role"},
                     {"company", "Company"},
                     {"email", "E-mail"},
                     {"telephoneNumber", "Telephone"},
                     {"mobileTelephoneNumber", "Mobile"}});
    for (CUser const & user : project.getAllUsers())
    {
        CRole const * const role = project.getRole(user.getRoleID());
        CCompany const * const company = project.getCompany(user.getCompanyID());
        listing.add({leafJson(user.getID()), leafJson(user.getLogin()), leafJson(user.getName()),
                     role ? leafJson(role->getName()) : Json(), company ? leafJson(company->getName()) : Json(),
                     leafJson(user.getEmail()), leafJson(user.getTelephoneNumber()),
                     leafJson(user.getMobileTelephoneNumber())});
    }
    return listing;
}

// ---- calendars --------------------------------------------------------------------------------------

double hoursOf(CCalendarDayType const & day)
{
    return day.isWorking() ? static_cast<double>(day.getWorkingDuration().GetTotalMinutes()) / 60 : 0;
}

// Hours of work from Sunday to Saturday.
std::string weekText(CCalendar const & calendar)
{
    std::string text;
    CCalendarDayTypeArray const & types = calendar.getCalendarDayTypes();
    for (int day = 1; day <= 7; ++day)
    {
        int const type = types.findByID(calendar.getCalendarWeek().getDay(day));
        text += fmt::format("{}{:g}", text.empty() ? "" : " ", type < 0 ? 0.0 : hoursOf(types.GetAt(type)));
    }
    return text;
}

template <class Resource>
void addResourceCalendars(auto const & add, Resource const & resource)
{
    if constexpr (requires { resource.getCalendar(); }) add("resource", resource.getName(), resource.getCalendar());
    if (resource.getSubResources())
        for (Resource const & below : *resource.getSubResources()) addResourceCalendars(add, below);
}

Listing listCalendars(CProject const & project)
{
    Listing listing({{"of", "Of"},
                     {"name", "Name"},
                     {"inUse", "In use"},
                     {"", "Hours Sun to Sat"},
                     {"", "Days off or changed", rightAligned},
                     {"calendar", ""}});
    auto const add = [&](char const * of, CString const & name, CCalendar const & calendar)
    {
        listing.add({Json(of), Json(name.view()), Json(calendar.getInUse().getValue()), Json(weekText(calendar)),
                     Json(calendar.getCalendarDayExceptions().GetSize()), toJson(calendar)});
    };
    add("project", project.getProjectName(), project.getProjectCalendar());
    for (CCompany const & company : project.getAllCompanies())
    {
        add("company", company.getName(), company.getCalendar());
        company.forEachKind(
            [&](auto const & resources)
            {
                for (auto const & resource : resources) addResourceCalendars(add, resource);
            });
    }
    return listing;
}

// ---- the command ------------------------------------------------------------------------------------

struct Shown
{
    char const * name;
    Listing (*list)(CProject const &);
};
constexpr Shown listings[] = {{"tasks", listTasks}, {"resources", listResources}, {"costs", listCosts},
                              {"risks", listRisks}, {"users", listUsers},         {"calendars", listCalendars}};
constexpr char criticalPath[] = "critical-path";

int show(ShowOptions const & options)
{
    CriticalPathAsked const asked;
    Session const session(options.path, Session::Purpose::reading, options.login);
    if (options.what == criticalPath) return showCriticalPath(session.project(), options.asJson);
    Listing const listing = std::ranges::find(listings, options.what, &Shown::name)->list(session.project());
    if (options.asJson) printJson(std::cout, listing.json());
    else listing.print(std::cout);
    return ending::done;
}

}  // namespace

void addShow(CLI::App & program)
{
    auto const options = std::make_shared<ShowOptions>();
    CLI::App & command = addCommand(program, "show", "shows a part of a project as a table",
                                    "  orvane show bridge.prj\n  orvane show bridge.prj critical-path --json\n"
                                    "  orvane show bridge.prj costs");
    addProject(command, options->path);
    std::vector<std::string> names{criticalPath};
    for (Shown const & each : listings) names.emplace_back(each.name);
    command.add_option("PART", options->what, "what to show")->check(CLI::IsMember(names))->capture_default_str();
    addJson(command, options->asJson);
    addLoginOption(command, options->login);
    onRun(command, [options] { return show(*options); });
}

}  // namespace orvane::app
