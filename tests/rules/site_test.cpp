// A site built through the rules alone: what it costs, and what holds of its resources after any action.

#include <map>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

template <class Resource>
Resource named(char const * name, int rate = 1)
{
    Resource resource;
    resource.setName(name);
    resource.setUseRatePerDay(rate);
    return resource;
}

// Two companies with a crew of two trades, a crane, concrete and a yard.
struct Site : Plan
{
    explicit Site(std::vector<TaskDraft> const & tasks) : Plan(tasks)
    {
        act([&](auto & rules) {
            EXPECT_TRUE(rules.addCompany(builders) && rules.addCompany(haulers));
            EXPECT_TRUE(rules.addHumanResourceToCompany(crew, builders.getID()));
            EXPECT_TRUE(rules.addHumanResourceToParent(drivers, crew.getID()));
            EXPECT_TRUE(rules.addHumanResourceToParent(labourers, crew.getID()));
            EXPECT_TRUE(rules.addEquipmentResourceToCompany(crane, haulers.getID()));
            EXPECT_TRUE(rules.addMaterialResourceToCompany(concrete, haulers.getID()));
            EXPECT_TRUE(rules.addLocationResourceToCompany(yard, builders.getID()));
        });
    }
    void cost(CResourceBase const & resource, CCostType const & type, double amount)
    {
        act([&](auto & rules) {
            EXPECT_TRUE(rules.addResourceCost(resource.getID()));
            CCostArray const & costs = *project.getResource(resource.getID())->getCosts();
            CCost cost(costs.GetAt(costs.GetUpperBound()));
            cost.setType(type);
            cost.setAmount(amount);
            EXPECT_TRUE(rules.changeResourceCost(cost));
        });
    }
    bool assign(std::string const & task, CResourceBase const & resource)
    {
        return act([&](auto & rules) { return rules.assignResourceToTask(id(task), resource.getID()); });
    }
    std::vector<int> percentages(std::string const & task) const
    {
        std::vector<int> all;
        for (CAssignedResource const & each : (*this)[task].getAssignedResources()) all.push_back(each.getPercentageAssigned());
        return all;
    }
    CAssignedResourceID assignment(std::string const & task, int index = 0) const
    {
        return (*this)[task].getAssignedResources().GetAt(index).getID();
    }

    CCompany builders{"Builders", CCompanyType::Contractor, "", "", "", ""};
    CCompany haulers{"Haulers", CCompanyType::Supplier, "", "", "", ""};
    CHumanResource crew = named<CHumanResource>("Crew", 7);
    CHumanResource drivers = named<CHumanResource>("Drivers", 2);
    CHumanResource labourers = named<CHumanResource>("Labourers", 3);
    CEquipmentResource crane = named<CEquipmentResource>("Crane");
    CMaterialResource concrete = named<CMaterialResource>("Concrete");
    CLocationResource yard = named<CLocationResource>("Yard");
};

TEST(Site, CostsWhatWasReckonedByHand)
{
    Site site({aTask("works").with({aTask("dig").lasting(3_d), aTask("pour").lasting(90_m)}), aTask("key").keyDate()});
    site.cost(site.drivers, CCostType::Daily, 100);
    site.cost(site.labourers, CCostType::Hourly, 10);
    site.cost(site.crane, CCostType::Fixed, 500);
    site.cost(site.crane, CCostType::Hourly, 20);
    site.cost(site.concrete, CCostType::Fixed, 300);
    site.cost(site.yard, CCostType::Weekly, 50);
    // A parent's own costs count for nothing.
    site.cost(site.crew, CCostType::Fixed, 100000);
    EXPECT_TRUE(site.assign("dig", site.crew) && site.assign("dig", site.crane));
    EXPECT_TRUE(site.assign("dig", site.concrete) && site.assign("dig", site.yard));
    EXPECT_TRUE(site.assign("pour", site.labourers) && site.assign("pour", site.drivers));
    site.act([&](auto & rules) {
        EXPECT_TRUE(rules.addTaskCost(site.id("dig")));
        CCost own(site["dig"].getCosts()->GetAt(0));
        own.setAmount(75.0);
        EXPECT_TRUE(rules.changeTaskCost(own));
    });
    EXPECT_EQ(site.percentages("dig"), (std::vector<int>{200, 300, 100, 100, 100}));

    CTask const & dig = site["dig"];
    CTask const & pour = site["pour"];
    // 3 days and 24 hours: drivers 3 x 100, labourers 24 x 10 x 300 %.
    EXPECT_DOUBLE_EQ(dig.getHumanResourceCostsTotal(CCostTotalType::Budgeted), 300 + 720);
    EXPECT_DOUBLE_EQ(dig.getEquipmentResourceCostsTotal(CCostTotalType::Budgeted), 500 + 480);
    EXPECT_DOUBLE_EQ(dig.getMaterialResourceCostsTotal(CCostTotalType::Budgeted), 300);
    EXPECT_DOUBLE_EQ(dig.getLocationResourceCostsTotal(CCostTotalType::Budgeted), 50);
    EXPECT_DOUBLE_EQ(dig.getSumTotal(CCostTotalType::Budgeted), 2425);
    // 90 minutes are two hours and one day.
    EXPECT_DOUBLE_EQ(pour.getSumTotal(CCostTotalType::Budgeted), 60 + 100);
    EXPECT_DOUBLE_EQ(site.project.getTotalCosts(CCostTotalType::Budgeted), 2585);

    // What a summary task is assigned counts in the sum of all, and not by kind.
    EXPECT_TRUE(site.assign("works", site.yard));
    EXPECT_DOUBLE_EQ(site.project.getTotalCosts(CCostTotalType::Budgeted), 2635);

    // The baseline, then a plan that grew by a day: 100 for the drivers, 8 x 10 x 3 + 8 x 20 by the hour.
    CTaskIDArray ids = site.ids({"dig"});
    ids.Add(CTaskID());
    EXPECT_TRUE(site.act([&](auto & rules) { return rules.setTasksBaseline(ids); }));
    EXPECT_DOUBLE_EQ(dig.getBaselineTotalCost(), 2425);
    site.act([&](auto & rules) { EXPECT_TRUE(rules.changeTaskDuration(site.id("dig"), 4_d, true)); });
    EXPECT_DOUBLE_EQ(dig.getTotalCostVariance(), -500);
    // From Wednesday 17:00 to Thursday 17:00 of 56 hours planned.
    EXPECT_EQ(dig.getScheduleVariance(), CProjectDuration(-24 * 3600));
    EXPECT_TRUE(site.act([&](auto & rules) { return rules.clearTasksBaseline(site.ids({"dig"})); }));

    // As it really went: begun a day later, done in 1 day and 1 minute, which is 2 days and 8 hours.
    site.act([&](auto & rules) {
        EXPECT_TRUE(rules.startTask(site.id("dig"), "01-06 09:00"_t));
        EXPECT_TRUE(rules.changeTaskStatus(site.id("dig"), CTaskStatus::Started));
        EXPECT_TRUE(rules.finishTask(site.id("dig"), "01-07 09:01"_t));
        EXPECT_TRUE(rules.changeTaskStatus(site.id("dig"), CTaskStatus::Finished));
    });
    EXPECT_DOUBLE_EQ(dig.getHumanResourceCostsTotal(CCostTotalType::Actual), 2 * 100 + 8 * 10 * 3);
}

TEST(Site, AssigningEndsOnLeavesOrOnTheParentItself)
{
    Site site({aTask("a"), aTask("b"), aTask("c").started("01-05 09:00"_t)});
    EXPECT_TRUE(site.act([&](auto & rules) { return rules.assignResourceToTasks(site.ids({"b", "b"}), site.crew.getID()); }));
    EXPECT_EQ(site.percentages("b"), std::vector<int>{500});
    EXPECT_FALSE(site.assign("c", site.crane));
    EXPECT_TRUE(site.assign("a", site.crane));
    EXPECT_FALSE(site.assign("a", site.crane));
    site.act([&](auto & rules) { EXPECT_TRUE(rules.setResourceUseRatePerDay(site.yard.getID(), 0)); });
    EXPECT_FALSE(site.assign("a", site.yard));

    // A leaf that becomes a parent hands its work to the new leaf.
    CEquipmentResource const jib = named<CEquipmentResource>("Jib", 4);
    site.act([&](auto & rules) { EXPECT_TRUE(rules.addEquipmentResourceToParent(jib, site.crane.getID())); });
    EXPECT_EQ(site.percentages("a"), std::vector<int>{400});
    EXPECT_EQ(site["a"].getAssignedResources().GetAt(0).getResourceID(), jib.getID());

    // The resource whose calendar the task runs on stays; a begun task changes nothing and says why.
    site.writable("a").setDominantCalendarID(site.project.getEquipmentResource(jib.getID())->getCalendar().getID());
    EXPECT_FALSE(site.act([&](auto & rules) { return rules.unassignResource(site.assignment("a")); }));
    site.writable("a").setStatus(CTaskStatus::Started);
    CRecordingHost desktop;
    EXPECT_FALSE(site.act([&](auto & rules) { return rules.unassignResource(site.assignment("a")); }));
    ASSERT_EQ(desktop.boxes.size(), 1u);
    EXPECT_EQ(desktop.boxes[0].text, "The task \"a\" cannot change Resource Assignment because its status is \"Started\"");
}

TEST(Site, ParentsAreWhatTheirLeavesAre)
{
    Site site({aTask("a")});
    CHumanResource const & crew = *site.project.getHumanResource(site.crew.getID());
    EXPECT_EQ(crew.getUseRatePerDay(), 5);
    EXPECT_EQ(site.project.getCompany(site.builders.getID())->getHumanResourceUseRatePerDay(), 5);
    EXPECT_FALSE(crew.canMakeSubResource(crew) || crew.canMakeSubResource(crew.getSubResources()->GetAt(0)));

    EXPECT_TRUE(site.assign("a", site.drivers) && site.assign("a", site.crane));
    site.act([&](auto & rules) {
        EXPECT_FALSE(rules.setResourceName(site.crane.getID(), "   ") || rules.setResourceName(site.crane.getID(), ""));
        // Refused while anything below is assigned; a parent without its last child is a leaf of its own rate again.
        EXPECT_FALSE(rules.removeResource(site.crew.getID()));
        EXPECT_TRUE(rules.removeResource(site.labourers.getID()));
        EXPECT_TRUE(rules.unassignResource(site.assignment("a")));
        EXPECT_TRUE(rules.removeResource(site.drivers.getID()));
    });
    EXPECT_EQ(site.project.getHumanResource(site.crew.getID())->getUseRatePerDay(), 7);
}

TEST(Site, CalendarsGiveWayToThoseAbove)
{
    Site site({aTask("a").lasting(2_d)});
    auto const calendarOf = [&](auto const & holder) -> CCalendar const & {
        return site.project.getActualCalendar(holder->getCalendar().getID());
    };
    CEquipmentResource const * crane = site.project.getEquipmentResource(site.crane.getID());
    CCompany const * const haulers = site.project.getCompany(site.haulers.getID());
    EXPECT_EQ(&crane->getCalendarInUse(), &site.project.getProjectCalendar());
    CCalendar company(haulers->getCalendar());
    company.setInUse(true);
    EXPECT_TRUE(site.act([&](auto & rules) { return rules.setCalendar(company); }));
    crane = site.project.getEquipmentResource(site.crane.getID());
    EXPECT_EQ(&crane->getCalendarInUse(), &calendarOf(haulers));

    // A task that runs on the crane's calendar moves when that calendar is replaced: Tuesdays off.
    site.act([&](auto & rules) { rules.changeTaskDominantCalendar(site.id("a"), crane->getCalendar().getID()); });
    CCalendar offOnTuesday(crane->getCalendar());
    CCalendarWeek week(offOnTuesday.getCalendarWeek());
    week.setDay(3, week.getDay(1));
    offOnTuesday.setCalendarWeek(week);
    offOnTuesday.setInUse(true);
    site.act([&](auto & rules) { EXPECT_TRUE(rules.setCalendar(offOnTuesday)); });
    EXPECT_EQ(site["a"].getEndTime(), "01-07 17:00"_t);

    CCalendar never(offOnTuesday);
    for (int day = 1; day <= 7; ++day) week.setDay(day, week.getDay(1));
    never.setCalendarWeek(week);
    CRecordingHost desktop;
    EXPECT_FALSE(site.act([&](auto & rules) { return rules.setCalendar(never); }));
    ASSERT_EQ(desktop.boxes.size(), 1u);
    EXPECT_EQ(desktop.boxes[0].text, "There must be at least one working day in a week!");
}

// ---- after any action -------------------------------------------------------------------------------

struct Seat
{
    CResourceBase const * parent;
    CResourceBase const * resource;
};

template <class Array>
void seatAll(Array const & array, CCompany const & company, CResourceBase const * parent, CProject const & project,
             std::map<CString, Seat> & seats)
{
    for (auto const & each : array)
    {
        ASSERT_TRUE(seats.emplace(each.getID().toString(), Seat{parent, &each}).second) << "stands twice";
        ASSERT_TRUE(project.getPresentationData().getResourcePresentations().find(each.getID()));
        ASSERT_EQ(project.getResource(each.getID()), &each);
        ASSERT_EQ(project.getParentCompany(each.getID()), &company);
        // Materials below materials may have lost their project; nothing depends on it.
        if constexpr (requires { each.getCalendar(); })
        {
            ASSERT_EQ(each.getProject(), &project);
            ASSERT_EQ(&project.getActualCalendar(each.getCalendar().getID()), &each.getCalendar());
        }
        if (!each.getSubResources()) continue;
        ASSERT_GT(each.getSubResources()->GetSize(), 0);
        seatAll(*each.getSubResources(), company, &each, project, seats);
    }
}

void expectSound(CProject const & project, std::map<CString, Seat> & seats)
{
    seats.clear();
    for (CCompany const & company : project.getAllCompanies())
        company.forEachKind([&](auto const & array) { seatAll(array, company, nullptr, project, seats); });
    for (CTask const & task : project.getAllTasks())
        for (CAssignedResource const & assigned : task.getAssignedResources())
            ASSERT_TRUE(seats.contains(assigned.getResourceID().toString())) << "assigned, but gone";
    for (auto const & [text, seat] : seats)
    {
        bool const isHuman = dynamic_cast<CHumanResource const *>(seat.resource);
        ASSERT_TRUE(!isHuman || project.getHumanParent(seat.resource->getID()) == seat.parent);
    }
}

TEST(Site, ResourcesStaySoundThroughAnyActions)
{
    for (unsigned seed = 1; seed <= 20; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        auto const below = [&](std::size_t limit) { return random() % limit; };
        Site site({aTask("a"), aTask("b")});
        std::map<CString, Seat> seats;
        expectSound(site.project, seats);
        for (int step = 0; step < 60 && !testing::Test::HasFatalFailure(); ++step)
        {
            auto const any = [&] {
                auto const at = static_cast<std::ptrdiff_t>(below(seats.size() + 1));
                return at ? CResourceID(std::next(seats.begin(), at - 1)->second.resource->getID()) : CResourceID();
            };
            CResourceID const id(any()), other(any());
            CTaskID const task = site.id(below(2) ? "a" : "b");
            CCompanyID const company = below(2) ? site.builders.getID() : site.haulers.getID();
            CHumanResource const * const human = site.project.getHumanResource(id);
            CHumanResource const * const above = site.project.getHumanResource(other);
            int const action = static_cast<int>(below(9));
            SCOPED_TRACE("step " + std::to_string(step) + ", action " + std::to_string(action));
            site.act([&](auto & rules) {
                switch (action)
                {
                    case 0: rules.addHumanResourceToCompany(CHumanResource(), company); break;
                    case 1: rules.addHumanResourceToParent(CHumanResource(), id); break;
                    case 2: rules.addMaterialResourceToParent(CMaterialResource(), id); break;
                    case 3:
                        if (human && above && above->canMakeSubResource(*human)) rules.makeSubResource(id, other);
                        break;
                    case 4: rules.changeResourceSupplier(id, company); break;
                    case 5: rules.removeResource(id); break;
                    case 6: rules.assignResourceToTask(task, id); break;
                    case 7:
                        if (!site.project.getTask(task)->getAssignedResources().IsEmpty())
                            rules.unassignResource(site.project.getTask(task)->getAssignedResources().GetAt(0).getID());
                        break;
                    default: rules.setResourceName(id, "renamed"); break;
                }
                // The lookups hold within the action, too.
                expectSound(site.project, seats);
            });
            expectSound(site.project, seats);
        }
    }
}

// A bad target loses what was moved; nothing else changes.
TEST(Site, WhatIsMovedToNowhereIsGone)
{
    Site site({aTask("a")});
    site.act([&](auto & rules) {
        EXPECT_FALSE(rules.makeSubResource(site.crane.getID(), site.crew.getID()));
        EXPECT_FALSE(rules.changeResourceSupplier(site.labourers.getID(), CCompanyID()));
        EXPECT_FALSE(rules.makeSubResource(CResourceID(), site.crew.getID()));
        EXPECT_FALSE(rules.addHumanResourceToCompany(site.crew, CCompanyID()));
        EXPECT_FALSE(rules.changeResourceCost(CCost()) || rules.removeResourceCost(CCostID()));
    });
    EXPECT_EQ(site.project.getResource(site.crane.getID()), nullptr);
    EXPECT_EQ(site.project.getHumanResource(site.crew.getID())->countSubResources(), 1);
}

}  // namespace
