#pragma once

#include "scene/entity_group.h"
#include "scene/solids.h"
#include "tests/support/plan_builder.h"
#include "tests/support/scratch_folder.h"

namespace orvane::test
{

// A small plan that holds a record of every kind.
//
//     1 Site
//     2   Dig        5 days, started, reported on, at risk, the excavator and its crew
//     3   Pour       3 days, 24 hours after Dig, costs 1000, gravel
//     4 (blank)
//     5 Reserve      2 days after Pour, a buffer for the risk of Pour
class WholeProject
{
public:
    WholeProject()
        : plan({aTask("Site").with({aTask("Dig").lasting(5_d), aTask("Pour").lasting(3_d).after("Dig", {}, 24_h)}),
                aBlank(), aTask("Reserve").lasting(2_d).after("Pour")})
    {
        plan.writable("Pour").reschedulePlannedStartTime("01-13 09:00"_t);
        plan.writable("Reserve").reschedulePlannedStartTime("01-16 09:00"_t);
        plan.act([this](auto & rules) { return furnish(rules); });
        plan.act([this](auto & rules) { return assign(rules); });
        plan.act([this](auto & rules) { return progress(rules); });
        plan.project.setCurrentStateIndex(CProjectStateIndex(1));
    }

    // Into a file of its own, gone with this object.
    std::string save(std::string const & name = "whole.prj")
    {
        EXPECT_EQ(plan.project.saveToFile(folder.path(name)), 1);
        return std::string(folder.path(name).view());
    }

    Plan plan;
    CScratchFolder folder;

private:
    bool furnish(CLocalRulesChecker & rules)
    {
        CCalendar calendar(plan.project.getProjectCalendar());
        CCalendarDayType off;
        off.setDayType(CDayType::NonWorkingDay);
        off.setDescription("Holiday");
        calendar.addCalendarDayType(off);
        calendar.setDayTypeOfSelectedDate(CProjectDate(2004, 1, 14), off.getID());
        rules.setCalendar(calendar);
        CCompany const company("Groundworks", CCompanyType::Contractor, "1 Quay\nPort", "1", "2", "g@example.org");
        rules.addCompany(company);
        excavator.setName("Excavator");
        crew.setName("Crew");
        gravel.setName("Gravel");
        yard.setName("Yard");
        CCost hour;
        hour.setType(CCostType::Hourly);
        hour.setAmount(25.0);
        CCostArray costs;
        costs.Add(hour);
        crew.addSupplierReference("C-1");
        rules.addEquipmentResourceToCompany(excavator, company.getID());
        rules.addHumanResourceToCompany(crew, company.getID());
        rules.addMaterialResourceToCompany(gravel, company.getID());
        rules.addLocationResourceToCompany(yard, company.getID());
        CHumanResource foreman;
        foreman.setName("Foreman");
        foreman.setCosts(costs);
        rules.addHumanResourceToParent(foreman, crew.getID());
        rain.setDescription("Rain");
        flood.setDescription("Flood");
        rules.addRisk(rain, CRiskID::getNULL());
        rules.addRisk(flood, rain.getID());
        CUser user("ann", "top secret", "Ann", "ann@example.org", "1", "2");
        user.setRoleID(plan.project.getAllRoles().GetAt(0).getID());
        rules.addUser(user);
        CFilter filter;
        filter.setName("Begun");
        rules.addFilter(filter);
        auto * const group = new CEntityGroup;
        group->setName("Base");
        group->addChild(new CEntityCylinder);
        CObArray entities;
        entities.Add(group);
        entities.Add(new CEntitySphere);
        entities.Add(new CEntityExtrusion);
        return rules.addEntitiesToScene(entities);
    }
    bool assign(CLocalRulesChecker & rules)
    {
        for (CResourceID const & id : {excavator.getID(), crew.getID()}) rules.assignResourceToTask(plan.id("Dig"), id);
        rules.assignResourceToTask(plan.id("Pour"), gravel.getID());
        rules.changeTaskRiskBuffer(plan.id("Reserve"), true);
        rules.assignRiskToTask(plan.ids({"Dig", "Pour"}), rain.getID());
        CAssignedRisk stored(plan["Pour"].getAssignedRisks().GetAt(0));
        stored.setStatus(CRiskStatus::Buffered);
        stored.setBufferID(plan.id("Reserve"));
        stored.setValuePercent(20);
        rules.changeAssignedRisk(stored);
        rules.addTaskCost(plan.id("Pour"));
        CCost cost(plan["Pour"].getCosts()->GetAt(0));
        cost.setAmount(1000.0);
        rules.changeTaskCost(cost);
        rules.changeTaskCategory(plan.id("Dig"), "Groundworks");
        rules.changeTaskComments(plan.id("Dig"), "wet \xFF ground\n\"soft\"");
        return rules.setTasksBaseline(plan.ids({"Dig", "Pour"}));
    }
    bool progress(CLocalRulesChecker & rules)
    {
        rules.startTask(plan.id("Dig"), "01-05 09:00"_t);
        rules.changeTaskStatus(plan.id("Dig"), CTaskStatus::Started);
        rules.addTaskReport(plan.id("Dig"), rain.getID(), CProjectDate(2004, 1, 6), CTaskReportType::Delay, 4_h);
        return rules.setPrimarySelectedTaskID(plan.id("Dig"));
    }

    CEquipmentResource excavator;
    CHumanResource crew;
    CMaterialResource gravel;
    CLocationResource yard;
    CRisk rain;
    CRisk flood;
};

}  // namespace orvane::test
