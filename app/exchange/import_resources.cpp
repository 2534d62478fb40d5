#include "app/exchange/import_resources.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string_view>

#include <fmt/format.h>

#include "app/exchange/import_plan.h"
#include "app/exchange/import_values.h"

namespace orvane::app
{
namespace
{

bool namesOneOf(std::string const & text, std::initializer_list<std::string_view> words)
{
    std::string lower;
    for (char const c : text) lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return lower.find(word) != lower.npos; });
}

}  // namespace

ResourceImport::ResourceImport(Plan const & plan, CProject const & project, CLocalRulesChecker & rules,
                               std::vector<PlanLoss> & losses)
    : plan(plan), calendars(plan.calendars), project(project), rules(rules), losses(losses)
{
}

bool ResourceImport::run()
{
    return setProjectCalendar() && addCompanies() && addResources();
}

CCalendarID ResourceImport::calendarOf(int uid) const
{
    auto const found = calendarIDs.find(uid);
    return found == calendarIDs.end() ? CCalendarID(orvane::nullID) : found->second;
}

ResourceImport::Resource const * ResourceImport::find(int uid) const
{
    auto const found = resources.find(uid);
    return found == resources.end() ? nullptr : &found->second;
}

std::string ResourceImport::costName(int uid) const
{
    auto const found = costNames.find(uid);
    return found == costNames.end() ? std::string() : found->second;
}

bool ResourceImport::setProjectCalendar()
{
    CCalendar const & present = project.getProjectCalendar();
    projectDays = daysOfCalendar(present);
    PlanCalendar const * const calendar = calendars.find(plan.calendarUID);
    if (!calendar) return true;
    PlanDays const days = calendars.daysOf(*calendar, losses);
    if (!days.hasWork())
    {
        lose(fmt::format("calendar \"{}\": its week has no work; the project works Monday to Friday, 09:00 to 17:00",
                         calendar->name));
        return true;
    }
    projectDays = days;
    return rules.setCalendar(calendarWithDays(present, days));
}

// The exceptions of the project's calendar overrule those of all others.
void ResourceImport::tellOverruled(std::string const & name, PlanDays const & days)
{
    std::size_t overruled = 0;
    for (auto const & [day, blocks] : projectDays.exceptions) overruled += days.on(day) != blocks;
    if (overruled > 0)
        lose(fmt::format("calendar \"{}\": its hours on {} {}, for there the exceptions of the project's calendar rule",
                         name, overruled, overruled == 1 ? "day" : "days"));
}

bool ResourceImport::addCompany(int calendarUID, std::string const & name)
{
    CCompany company;
    company.setName(name.c_str());
    company.setType(CCompanyType(CCompanyType::Contractor));
    companies.emplace(calendarUID, company.getID());
    return rules.addCompany(company);
}

bool ResourceImport::addCompanies()
{
    if (!addCompany(noCalendar, mainCompanyName)) return false;
    for (PlanCalendar const & calendar : plan.calendars)
        if (calendar.isBase && calendar.uid != plan.calendarUID && !addCompanyOf(calendar)) return false;
    return true;
}

bool ResourceImport::addCompanyOf(PlanCalendar const & calendar)
{
    bool isChanged = false;
    constexpr std::size_t longestName = 1024;
    std::string name = heldText(calendar.name, longestName, TextLines::one, isChanged);
    if (name.find_first_not_of(" \t") == name.npos) name = fmt::format("Calendar {}", calendar.uid);
    PlanDays const days = calendars.daysOf(calendar, losses);
    // The main company may be one of those that were exported.
    if (name == mainCompanyName) companies.emplace(calendar.uid, companies.at(noCalendar));
    else if (!addCompany(calendar.uid, name)) return false;
    CCalendar const & present = project.getCompany(companies.at(calendar.uid))->getCalendar();
    if (!days.hasWork())
    {
        lose(fmt::format("calendar \"{}\": its week has no work; the project's calendar is used instead",
                         calendar.name));
        return true;
    }
    calendarIDs.emplace(calendar.uid, present.getID());
    tellOverruled(calendar.name, days);
    return rules.setCalendar(calendarWithDays(present, days));
}

bool ResourceImport::addResources()
{
    return std::all_of(plan.resources.begin(), plan.resources.end(),
                       [this](PlanResource const & resource) { return addResource(resource); });
}

bool ResourceImport::addResource(PlanResource const & resource)
{
    if (resource.kind == PlanResourceKind::cost)
    {
        costNames.emplace(resource.uid, resource.name);
        return true;
    }
    if (resource.kind == PlanResourceKind::material)
        return add<CMaterialResource>(resource, &IRulesChecker::addMaterialResourceToCompany);
    if (namesOneOf(resource.group, {"equipment", "plant", "machine"}))
        return add<CEquipmentResource>(resource, &IRulesChecker::addEquipmentResourceToCompany);
    if (namesOneOf(resource.group, {"location"}))
        return add<CLocationResource>(resource, &IRulesChecker::addLocationResourceToCompany);
    return add<CHumanResource>(resource, &IRulesChecker::addHumanResourceToCompany);
}

// Whole units work a day each, all with the same share of it.
template <class Kind>
void ResourceImport::setUnits(Kind & resource, PlanResource const & from)
{
    double const most = std::isfinite(from.maxUnits) ? std::clamp(from.maxUnits, 0.0, 1e6) : 1;
    int const units = static_cast<int>(std::ceil(most));
    resource.setUseRatePerDay(units);
    resource.setTotalUnitsAvailable(units);
    if constexpr (requires { resource.setPercentageUsed(100); })
    {
        int const percent = units == 0 ? 100 : static_cast<int>(std::lround(most / units * 100));
        resource.setPercentageUsed(percent);
        if (std::abs(units * percent * 0.01 - most) > 1e-6)
            lose(fmt::format("resource \"{}\": {} units, of which {} at {} percent are kept", from.name, from.maxUnits,
                             units, percent));
    }
}

CCostArray ResourceImport::costsOf(PlanResource const & from)
{
    CCostArray costs;
    bool const isMaterial = from.kind == PlanResourceKind::material;
    addCost(costs, isMaterial ? "Unit price" : "Standard rate", from.standardRate,
            isMaterial ? CCostType::Fixed : CCostType::Hourly);
    addCost(costs, "Cost per use", from.costPerUse, CCostType::Fixed);
    if (isMaterial && from.standardRate != 0)
        lose(fmt::format("resource \"{}\": the price of a unit is charged once on each task, whatever the quantity",
                         from.name));
    if (from.overtimeRate != 0) lose(fmt::format("resource \"{}\": the rate for overtime", from.name));
    return costs;
}

template <class Kind>
bool ResourceImport::add(PlanResource const & from, bool (IRulesChecker::*door)(Kind const &, CCompanyID const &))
{
    PlanCalendar const * const calendar = calendars.find(from.calendarUID);
    PlanCalendar const * const base = calendar ? calendars.baseOf(*calendar) : nullptr;
    auto const company = companies.find(base ? base->uid : noCalendar);
    CCompanyID const companyID = company == companies.end() ? mainCompany() : company->second;
    bool isChanged = false;
    constexpr std::size_t longest = 8192;
    Kind resource;
    resource.setName(heldText(from.name.empty() ? fmt::format("Resource {}", from.uid) : from.name, longest,
                              TextLines::one, isChanged)
                         .c_str());
    resource.setDescription(heldText(from.notes, longest, TextLines::many, isChanged).c_str());
    setUnits(resource, from);
    CCostArray const costs = costsOf(from);
    if (!costs.IsEmpty()) resource.setCosts(costs);
    if (!from.group.empty() && !namesOneOf(from.group, {"equipment", "plant", "machine", "location"}))
        lose(fmt::format("resource \"{}\": the group \"{}\"", from.name, from.group));
    if (!(rules.*door)(resource, companyID)) return false;
    auto & added = resources[from.uid];
    added = {&from, resource.getID(), base ? calendarOf(base->uid) : CCalendarID(orvane::nullID)};
    if constexpr (requires { resource.getCalendar(); })
        if (calendar && base && calendar != base) return setCalendar<Kind>(added, *calendar, *base);
    return true;
}

// Only days that differ from those of the base make a calendar of its own.
template <class Kind>
bool ResourceImport::setCalendar(Resource & added, PlanCalendar const & calendar, PlanCalendar const & base)
{
    std::vector<PlanLoss> baseLosses, ownLosses;
    PlanDays const days = calendars.daysOf(calendar, ownLosses), baseDays = calendars.daysOf(base, baseLosses);
    if (days == baseDays) return true;
    if (!days.hasWork())
    {
        lose(fmt::format("calendar of the resource \"{}\": its week has no work", added.plan->name));
        return true;
    }
    tellOverruled(added.plan->name, days);
    CCalendar const & present = static_cast<Kind const *>(project.getResource(added.id))->getCalendar();
    added.calendarID = present.getID();
    return rules.setCalendar(calendarWithDays(present, days));
}

}  // namespace orvane::app
