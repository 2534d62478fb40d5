#include "app/exchange/export_plan.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "app/exchange/import_plan.h"
#include "app/exchange/plan_calendars.h"
#include "app/text_values.h"
#include "model/project.h"
#include "platform/guid.h"
#include "view/item_tree.h"

namespace orvane::app
{
namespace
{

OptionalMinute minuteOf(CProjectTime const & time)
{
    return time.isValid() ? OptionalMinute(time.getLocalMinutes()) : std::nullopt;
}

std::string plainText(CString const & text)
{
    return std::string(text.view());
}

class PlanExport
{
public:
    explicit PlanExport(CProject const & project) : project(project) {}

    Plan run()
    {
        plan.name = plainText(project.getProjectName());
        plan.start = minuteOf(project.getProjectStart());
        plan.finish = minuteOf(project.getProjectEnd());
        addProjectCalendar();
        for (CCompany const & company : project.getAllCompanies()) addCompany(company);
        numberTasks();
        addTasks(project.getAllTasks(), 1);
        tellRest();
        return std::move(plan);
    }

private:
    void lose(std::string const & task, std::string what) { plan.losses.push_back({task, std::move(what)}); }

    // ---- calendars ----------------------------------------------------------------------------------

    PlanCalendar & addCalendar(std::string const & name)
    {
        PlanCalendar & calendar = plan.calendars.emplace_back();
        calendar.uid = static_cast<int>(plan.calendars.size());
        calendar.name = name;
        return calendar;
    }

    static void setDays(PlanCalendar & calendar, PlanDays const & days)
    {
        for (std::size_t day = 0; day < 7; ++day) calendar.week[day] = days.week[day];
        calendar.exceptions = days.exceptions;
        calendar.exceptionNames = days.names;
    }

    void addProjectCalendar()
    {
        CCalendar const & calendar = project.getProjectCalendar();
        projectDays = daysOfCalendar(calendar);
        setDays(addCalendar("Standard"), projectDays);
        plan.calendarUID = projectCalendarUID;
        plan.minutesPerDay = static_cast<int>(secondsOfNormalDay(calendar) / 60);
        plan.minutesPerWeek = 0;
        for (PlanDay const & day : projectDays.week)
            for (PlanBlock const & block : day) plan.minutesPerWeek += block.to - block.from;
        calendarUIDs.emplace(calendar.getID().getGUID(), projectCalendarUID);
    }

    // The number of the calendar that is the base for all that the company brings.
    int addCalendarOf(CCompany const & company)
    {
        CCalendar const & calendar = company.getCalendar();
        if (!calendar.getInUse().getValue()) return projectCalendarUID;
        PlanCalendar & added = addCalendar(plainText(company.getName()));
        PlanDays const days = daysOfCalendar(calendar);
        setDays(added, days);
        calendarUIDs.emplace(calendar.getID().getGUID(), added.uid);
        bool const isOverruled = std::any_of(projectDays.exceptions.begin(), projectDays.exceptions.end(),
                                             [&](auto const & each) { return days.on(each.first) != each.second; });
        if (isOverruled)
            lose("", fmt::format("calendar \"{}\": that the exceptions of the project's calendar rule over it",
                                 added.name));
        return added.uid;
    }

    // ---- companies and resources --------------------------------------------------------------------

    void addCompany(CCompany const & company)
    {
        int const base = addCalendarOf(company);
        std::string const name = plainText(company.getName());
        if (name == mainCompanyName) mainCompany = company.getID();
        bool const hasAddress = !company.getAddress().IsEmpty() || !company.getEmailAddress().IsEmpty() ||
                                !company.getTelephoneNumber().IsEmpty() || !company.getFaxNumber().IsEmpty();
        if (hasAddress) lose("", fmt::format("company \"{}\": address and numbers", name));
        if (base == projectCalendarUID && name != mainCompanyName)
            lose("",
                 fmt::format("company \"{}\": it has no calendar of its own, and only calendars tell companies apart",
                             name));
        company.forEachKind([&](auto const & resources) { addResources(resources, base); });
    }

    template <class Array>
    void addResources(Array const & resources, int base)
    {
        for (auto const & resource : resources)
        {
            addResource(resource, base);
            if (!resource.hasSubResource()) continue;
            lose("", fmt::format("resource \"{}\": that others stand below it", resource.getName().view()));
            addResources(*resource.getSubResources(), base);
        }
    }

    template <class Resource>
    void addResource(Resource const & from, int base)
    {
        PlanResource & resource = plan.resources.emplace_back();
        resource.uid = static_cast<int>(plan.resources.size());
        resource.name = plainText(from.getName());
        resource.notes = plainText(from.getDescription());
        resourceUIDs.emplace(from.getID().getGUID(), resource.uid);
        if constexpr (std::is_same_v<Resource, CEquipmentResource>) resource.group = "Equipment";
        if constexpr (std::is_same_v<Resource, CLocationResource>) resource.group = "Location";
        if constexpr (requires { from.getCalendar(); })
        {
            resource.maxUnits = from.getUseRatePerDay() * from.getPercentageUsed().getValue() / 100.0;
            setCalendar(resource, from.getCalendar(), base);
        }
        else resource.kind = PlanResourceKind::material;
        setCosts(resource, from);
        if (!from.getRepresentations().IsEmpty())
            lose("", fmt::format("resource \"{}\": what stands for it on the site", resource.name));
        if (from.getNumberOfSupplierReferences() > 0)
            lose("", fmt::format("resource \"{}\": references of suppliers", resource.name));
    }

    // Each has a calendar, which only changes its base where it is in use.
    void setCalendar(PlanResource & resource, CCalendar const & own, int base)
    {
        PlanCalendar & calendar = addCalendar(resource.name);
        calendar.isBase = false;
        calendar.baseUID = base;
        resource.calendarUID = calendar.uid;
        bool const isOwn = own.getInUse().getValue();
        if (isOwn) setDays(calendar, daysOfCalendar(own));
        // By which it works when a task goes by its people.
        bool const isOfProject = !isOwn && base == projectCalendarUID;
        rulingCalendars.emplace(resource.uid, isOwn ? own.getID().getGUID() : isOfProject ? _GUID{} : guidOf(base));
    }

    _GUID guidOf(int calendarUID) const
    {
        for (auto const & [guid, uid] : calendarUIDs)
            if (uid == calendarUID) return guid;
        return {};
    }

    template <class Resource>
    void setCosts(PlanResource & resource, Resource const & from)
    {
        if (!from.getCosts()) return;
        bool const isMaterial = resource.kind == PlanResourceKind::material;
        bool hasRate = false, hasUse = false;
        for (CCost const & cost : *from.getCosts())
        {
            double const amount = cost.getAmount().getValue();
            bool const isRate = isMaterial ? cost.getType() == CCostType::Fixed && cost.getDescription() == "Unit price"
                                           : cost.getType() == CCostType::Hourly;
            bool const isUse = !isRate && cost.getType() == CCostType::Fixed;
            if (isRate && !hasRate) resource.standardRate = amount, hasRate = true;
            else if (isUse && !hasUse) resource.costPerUse = amount, hasUse = true;
            else lose("", fmt::format("resource \"{}\": the cost \"{}\"", resource.name, cost.getDescription().view()));
        }
    }

    // ---- tasks --------------------------------------------------------------------------------------

    // Links lead to rows that come later.
    void numberTasks()
    {
        visitItems(project.getAllTasks(), [this](CTask const & task)
                   { taskUIDs.emplace(task.getID().getGUID(), static_cast<int>(taskUIDs.size()) + 1); });
    }

    void addTasks(CTaskArray const & tasks, int level)
    {
        for (CTask const & task : tasks)
        {
            addTask(task, level);
            if (task.getSubTasks()) addTasks(*task.getSubTasks(), level + 1);
        }
    }

    void addTask(CTask const & from, int level)
    {
        plan.tasks.emplace_back();
        PlanTask & task = plan.tasks.back();
        task.id = static_cast<int>(plan.tasks.size());
        task.uid = taskUIDs.at(from.getID().getGUID());
        task.outlineLevel = level;
        task.isBlank = !from.isValid();
        if (task.isBlank) return;
        task.name = plainText(from.getName());
        task.notes = plainText(from.getComments());
        task.category = categoryOf(from);
        task.isSummary = from.isSummaryTask();
        task.isMilestone = from.isKeyDate() && !task.isSummary;
        task.start = minuteOf(from.getStartTime());
        task.finish = minuteOf(from.getEndTime());
        task.duration = from.getDuration().GetTotalMinutes();
        if (from.getConstraintType() == CTaskConstraintType::CannotReschedule)
        {
            task.constraint = PlanConstraint::mustStartOn;
            task.constraintDate = task.start;
        }
        setProgress(task, from);
        setLinks(task, from);
        setBaseline(task, from);
        setAssignments(task, from);
        setCosts(task, from);
        task.calendarUID = calendarOf(from, task);
        tellLosses(from, task.name);
    }

    std::string categoryOf(CTask const & task) const
    {
        int const position = project.getTaskCategories().findByID(task.getCategoryID());
        return position < 0 ? std::string() : plainText(project.getTaskCategories().GetAt(position).getName());
    }

    void setProgress(PlanTask & task, CTask const & from)
    {
        if (from.isOpen() || task.isSummary) return;
        bool const isDone = from.getStatus() == CTaskStatus::Finished;
        // Work that goes on is not done, whatever the clock says.
        constexpr double mostUndone = 99;
        task.percentComplete = isDone ? 100 : std::min(std::floor(from.getPercentComplete()), mostUndone);
        task.actualStart = minuteOf(from.getActualStartTime());
        if (isDone) task.actualFinish = minuteOf(from.getActualFinishTime());
        if (!(from.getPlannedStartTime() == from.getActualStartTime())) lose(task.name, "when it was planned to start");
        if (!from.getTaskReports().IsEmpty()) lose(task.name, "its reports");
    }

    void setLinks(PlanTask & task, CTask const & from)
    {
        constexpr PlanLinkType types[] = {PlanLinkType::finishToStart, PlanLinkType::finishToStart,
                                          PlanLinkType::startToFinish, PlanLinkType::startToStart,
                                          PlanLinkType::finishToFinish};
        for (CLink const & link : from.getUpstreamLinks())
        {
            auto const predecessor = taskUIDs.find(link.getUpstreamTaskID().getGUID());
            if (predecessor == taskUIDs.end()) continue;
            task.links.push_back({predecessor->second, types[link.getType().getEquivalentValue()], PlanLink::Lag::clock,
                                  static_cast<double>(link.getDelay().GetTotalMinutes())});
            if (link.getStatus() == CLinkStatus::Proposed) lose(task.name, "that a link is proposed");
        }
    }

    static void setBaseline(PlanTask & task, CTask const & from)
    {
        if (!from.isBaselineSet()) return;
        PlanBaseline & baseline = task.baseline.emplace();
        baseline.start = minuteOf(from.getBaselineStart());
        baseline.finish = minuteOf(from.getBaselineFinish());
        baseline.duration = from.getBaselineDuration().GetTotalMinutes();
        baseline.cost = from.getBaselineTotalCost();
    }

    void setAssignments(PlanTask const & task, CTask const & from)
    {
        for (CAssignedResource const & assigned : from.getAssignedResources())
        {
            auto const resource = resourceUIDs.find(assigned.getResourceID().getGUID());
            if (resource == resourceUIDs.end()) continue;
            plan.assignments.push_back({task.uid, resource->second, assigned.getPercentageAssigned() / 100.0});
            if (!(assigned.getResourceProfileType() == CResourceProfileType::Temporary))
                lose(task.name, fmt::format("what it does with \"{}\" on the site",
                                            plan.resources[static_cast<std::size_t>(resource->second - 1)].name));
        }
    }

    // A cost with a name is a resource that costs.
    void setCosts(PlanTask & task, CTask const & from)
    {
        if (!from.getCosts()) return;
        for (CCost const & cost : *from.getCosts())
        {
            std::string const name = plainText(cost.getDescription());
            double const amount = cost.getAmount().getValue();
            if (!(cost.getType() == CCostType::Fixed))
                lose(task.name, fmt::format("the cost \"{}\", which goes by time", name));
            else if (name == fixedCostName) task.fixedCost += amount;
            else plan.assignments.push_back({task.uid, costResource(name), 1, amount});
        }
    }

    int costResource(std::string const & name)
    {
        auto const [known, isNew] = costResources.try_emplace(name, static_cast<int>(plan.resources.size()) + 1);
        if (isNew)
        {
            PlanResource & resource = plan.resources.emplace_back();
            resource.uid = known->second;
            resource.name = name;
            resource.kind = PlanResourceKind::cost;
        }
        return known->second;
    }

    // None where readers take the calendar of the people, if that is the one.
    int calendarOf(CTask const & from, PlanTask const & task)
    {
        _GUID const own = from.getDominantCalendarID().getGUID();
        auto const known = calendarUIDs.find(own);
        if (known != calendarUIDs.end()) return known->second;
        _GUID const ofPeople = calendarOfPeople(from);
        if (own == ofPeople) return PlanCalendar().uid;
        if (!(own == _GUID{})) lose(task.name, "its calendar, which is that of a resource");
        return projectCalendarUID;
    }

    _GUID calendarOfPeople(CTask const & task) const
    {
        _GUID common{};
        if (task.isSummaryTask()) return common;
        bool isFirst = true;
        for (CAssignedResource const & assigned : task.getAssignedResources())
        {
            auto const resource = resourceUIDs.find(assigned.getResourceID().getGUID());
            auto const ruling =
                resource == resourceUIDs.end() ? rulingCalendars.end() : rulingCalendars.find(resource->second);
            if (ruling == rulingCalendars.end()) continue;
            if (!isFirst && !(ruling->second == common)) return {};
            common = ruling->second;
            isFirst = false;
        }
        return common;
    }

    void tellLosses(CTask const & task, std::string const & name)
    {
        if (!task.getAssignedRisks().IsEmpty()) lose(name, "its risks");
        if (task.getRiskBuffer().getValue()) lose(name, "that it is a buffer for risk");
        if (task.isTemplate().getValue()) lose(name, "that it is a template");
        if (task.isOpen() && !(task.getStatus() == CTaskStatus::Hold))
            lose(name, fmt::format("the status \"{}\"", task.getStatus().getString().view()));
        CSupplyChain const & chain = task.getSupplyChain();
        if (!chain.getSupplierID().isNULL() && !(chain.getSupplierID() == mainCompany))
            lose(name, "which company does it");
    }

    void tellRest()
    {
        if (project.getNumberOfRisks() > 0)
            lose("", fmt::format("the register of risks ({})", project.getNumberOfRisks()));
        if (project.getNumberOfFilters() > 0) lose("", fmt::format("filters ({})", project.getNumberOfFilters()));
        if (project.getNumberOfUsers() > 1) lose("", fmt::format("users ({})", project.getNumberOfUsers()));
    }

    static constexpr int projectCalendarUID = 1;

    CProject const & project;
    Plan plan;
    PlanDays projectDays;
    CCompanyID mainCompany{orvane::nullID};
    std::unordered_map<_GUID, int> calendarUIDs, taskUIDs, resourceUIDs;
    std::unordered_map<int, _GUID> rulingCalendars;
    std::unordered_map<std::string, int> costResources;
};

}  // namespace

Plan exportPlan(CProject const & project)
{
    return PlanExport(project).run();
}

}  // namespace orvane::app
