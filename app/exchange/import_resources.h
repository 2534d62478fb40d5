#pragma once

#include <climits>
#include <string>
#include <unordered_map>
#include <vector>

#include "app/exchange/plan.h"
#include "app/exchange/plan_calendars.h"
#include "model/project.h"
#include "rules/local_rules_checker.h"

namespace orvane::app
{

// Makes the calendars, companies and resources of the plan, and knows them by their numbers. What the model has no place
// for is told in `losses`. All of these must outlive it.
class ResourceImport
{
public:
    ResourceImport(Plan const & plan, CProject const & project, CLocalRulesChecker & rules,
                   std::vector<PlanLoss> & losses);

    // Whether the rules took everything.
    bool run();

    CCompanyID const & mainCompany() const { return companies.at(noCalendar); }
    // The calendar by which a task with that calendar works; NULL means the project's.
    CCalendarID calendarOf(int uid) const;

    struct Resource
    {
        PlanResource const * plan;
        CResourceID id{orvane::nullID};
        // By which it works; NULL means the project's.
        CCalendarID calendarID{orvane::nullID};
    };
    // Null for a cost resource, which is none here.
    Resource const * find(int uid) const;
    // Of a cost resource; empty for any other.
    std::string costName(int uid) const;

private:
    static constexpr int noCalendar = INT_MIN;

    void lose(std::string const & what) { losses.push_back({"", what}); }
    void tellOverruled(std::string const & name, PlanDays const & days);

    bool setProjectCalendar();
    bool addCompany(int calendarUID, std::string const & name);
    bool addCompanies();
    bool addCompanyOf(PlanCalendar const & calendar);

    bool addResources();
    bool addResource(PlanResource const & resource);
    template <class Kind>
    bool add(PlanResource const & from, bool (IRulesChecker::*door)(Kind const &, CCompanyID const &));
    template <class Kind>
    void setUnits(Kind & resource, PlanResource const & from);
    CCostArray costsOf(PlanResource const & from);
    template <class Kind>
    bool setCalendar(Resource & added, PlanCalendar const & calendar, PlanCalendar const & base);

    Plan const & plan;
    PlanCalendars const calendars;
    CProject const & project;
    CLocalRulesChecker & rules;
    std::vector<PlanLoss> & losses;
    PlanDays projectDays;
    std::unordered_map<int, CCompanyID> companies;
    std::unordered_map<int, CCalendarID> calendarIDs;
    std::unordered_map<int, Resource> resources;
    std::unordered_map<int, std::string> costNames;
};

}  // namespace orvane::app
