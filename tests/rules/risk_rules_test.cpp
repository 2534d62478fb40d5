// The register of risks, the risks of tasks, reports and costs: refusals, effects, and what the context changes.

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

CRisk aRisk(char const * name, CRiskValueMode const & mode = CRiskValueMode::Percent)
{
    CRisk risk;
    risk.setDescription(name);
    risk.setValueMode(mode);
    return risk;
}

// Weather (rain, frost) and strike; a task open, one that runs all January, one done, and a key date.
struct Register : Plan
{
    Register()
        : Plan({aTask("open").lasting(5_d), aTask("runs").lasting(15_d).started("01-05 09:00"_t),
                aTask("done").finished("01-05 09:00"_t, "01-05 17:00"_t), aTask("key").keyDate(), aTask("sum").with({aTask("sub")}),
                aBlank("blank")})
    {
        act([&](auto & rules) {
            EXPECT_TRUE(rules.addRisk(weather, CRiskID::getNULL()) && rules.addRisk(strike, CRiskID::getNULL()));
            EXPECT_TRUE(rules.addRisk(rain, weather.getID()) && rules.addRisk(frost, rain.getID()));
        });
    }
    CAssignedRisk const & risk(std::string const & task, int index = 0) const
    {
        return (*this)[task].getAssignedRisks().GetAt(index);
    }
    CTaskReport const & report(int index = 0) const { return (*this)["runs"].getTaskReports().GetAt(index); }

    CRisk weather = aRisk("weather");
    CRisk rain = aRisk("rain", CRiskValueMode::Fixed);
    CRisk frost = aRisk("frost");
    CRisk strike = aRisk("strike");
};

TEST(RiskRules, TheRegisterIsATree)
{
    Register plan;
    EXPECT_EQ(plan.project.getRiskParent(plan.frost.getID())->getID(), plan.weather.getID());
    EXPECT_EQ(plan.project.getRiskParent(plan.weather.getID()), nullptr);
    plan.act([&](auto & rules) {
        EXPECT_FALSE(rules.addRisk(CRisk(), CRiskID()) || rules.renameRisk(CRiskID(), "x"));
        EXPECT_TRUE(rules.renameRisk(plan.frost.getID(), "") && rules.setRiskValueMode(plan.frost.getID(), CRiskValueMode::Fixed));
        EXPECT_FALSE(rules.makeSubRisk(plan.rain.getID(), plan.rain.getID()) || rules.makeSubRisk(CRiskID(), plan.rain.getID()));
        // What is in use by assignment or report, here or below, neither goes nor moves.
        EXPECT_TRUE(rules.addTaskReport(plan.id("runs"), plan.frost.getID(), CProjectDate(2004, 1, 7), CTaskReportType::Delay, 1_h));
        EXPECT_FALSE(rules.removeRisk(plan.weather.getID()) || rules.makeSubRisk(plan.rain.getID(), plan.strike.getID()));
        EXPECT_TRUE(rules.removeTaskReport(plan.report().getID()));
        EXPECT_TRUE(rules.makeSubRisk(plan.rain.getID(), plan.strike.getID()));
        EXPECT_TRUE(plan.project.getRiskParent(plan.frost.getID())->getID() == plan.strike.getID());
        // A parent below the child goes with it.
        EXPECT_FALSE(rules.makeSubRisk(plan.strike.getID(), plan.frost.getID()));
        EXPECT_EQ(plan.project.getNumberOfRisks(), 1);
        EXPECT_FALSE(rules.removeRisk(plan.strike.getID()));
    });
}

TEST(RiskRules, TasksTakeRisksOn)
{
    Register plan;
    CTaskIDArray ids = plan.ids({"open", "open", "runs", "done", "sum", "blank", "key"});
    ids.Add(CTaskID());
    ids.Append(plan.ids({"sub"}));
    plan.act([&](auto & rules) {
        EXPECT_FALSE(rules.assignRiskToTask(CTaskIDArray(), plan.rain.getID()) || rules.assignRiskToTask(ids, CRiskID()));
        EXPECT_FALSE(rules.assignRiskToTask(ids, plan.rain.getID()));
    });
    EXPECT_EQ(plan["open"].getAssignedRisks().GetSize(), 1);
    EXPECT_EQ(plan.risk("open").getValueMode(), CRiskValueMode::Fixed);
    for (char const * without : {"runs", "done", "sum", "blank", "sub"}) EXPECT_TRUE(plan[without].getAssignedRisks().IsEmpty());
    EXPECT_EQ(plan["key"].getAssignedRisks().GetSize(), 1);
    CRecordingHost desktop;
    EXPECT_FALSE(plan.act([&](auto & rules) { return rules.unassignRisk(plan.risk("key").getID()); }));
    EXPECT_EQ(desktop.boxes.back().text, "The task \"key\" cannot change Risk Assignment because it is a key date");

    // A started task lets only the status and the buffer change, a finished one nothing.
    CAssignedRisk buffered(plan.risk("open"));
    buffered.setStatus(CRiskStatus::Buffered);
    buffered.setBufferID(plan.id("sub"));
    CAssignedRisk heavy(plan.risk("open"));
    heavy.setWeight(CRiskWeight::High);
    plan.writable("open").setStatus(CTaskStatus::Started);
    plan.act([&](auto & rules) {
        EXPECT_FALSE(rules.changeAssignedRisk(heavy) || rules.changeAssignedRisk(CAssignedRisk()));
        EXPECT_TRUE(rules.changeAssignedRisk(buffered));
    });
    EXPECT_EQ(plan.risk("open").getStatus(), CRiskStatus::Buffered);
    plan.writable("open").setStatus(CTaskStatus::Finished);
    EXPECT_FALSE(plan.act([&](auto & rules) { return rules.changeAssignedRisk(buffered); }));
    plan.writable("open").setStatus(CTaskStatus::Hold);
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.unassignRisk(buffered.getID()); }));
}

// The task runs from Monday 5 to Friday 23 January; 10 and 11, 17 and 18 are weekends.
TEST(ReportRules, DatesAreBroughtOntoWorkingDaysOfTheTask)
{
    Register plan;
    auto const add = [&](int day) {
        return plan.act([&](auto & rules) {
            return rules.addTaskReport(plan.id("runs"), CRiskID::getNULL(), CProjectDate(2004, 1, day), CTaskReportType::Delay, 0_h);
        });
    };
    int index = 0;
    for (auto const & [day, becomes] : {std::pair{1, 5}, {7, 7}, {11, 9}, {30, 23}, {5, 5}})
    {
        EXPECT_TRUE(add(day));
        EXPECT_EQ(plan.report(index++).getDate(), CProjectDate(2004, 1, becomes)) << day;
    }
    EXPECT_EQ(plan.project.getPrimarySelectedTaskID(), plan.id("runs"));
    // A changed date walks the way it went.
    for (auto const & [day, becomes] : {std::pair{17, 19}, {10, 9}, {1, 5}})
    {
        CTaskReport report(plan.report());
        report.setDate(CProjectDate(2004, 1, day));
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.changeTaskReport(report); }));
        EXPECT_EQ(plan.report().getDate(), CProjectDate(2004, 1, becomes)) << day;
    }
    plan.act([&](auto & rules) {
        // On what is not started there is nothing to add, and that is no failure.
        for (char const * other : {"open", "done", "key"})
        {
            EXPECT_TRUE(rules.addTaskReport(plan.id(other), CRiskID::getNULL(), CProjectDate(), CTaskReportType::Delay, 1_h));
            EXPECT_TRUE(plan[other].getTaskReports().IsEmpty());
        }
        for (char const * other : {"sum", "blank"})
            EXPECT_FALSE(rules.addTaskReport(plan.id(other), CRiskID::getNULL(), CProjectDate(), CTaskReportType::Delay, 1_h));
        EXPECT_FALSE(rules.addTaskReport(plan.id("runs"), CRiskID(), CProjectDate(), CTaskReportType::Delay, 1_h));
    });
    // A task that lies on days without work alone.
    Plan weekend({aTask("t").started("01-10 09:00"_t).lasting(0_h)});
    EXPECT_FALSE(weekend.act([&](auto & rules) {
        return rules.addTaskReport(weekend.id("t"), CRiskID::getNULL(), CProjectDate(2004, 1, 10), CTaskReportType::Delay, 0_h);
    }));
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.changeTaskStatus(plan.id("runs"), CTaskStatus::Go); }));
    EXPECT_TRUE(plan["runs"].getTaskReports().IsEmpty());
}

TEST(CostRules, TasksOwnCosts)
{
    Register plan;
    plan.act([&](auto & rules) {
        for (char const * other : {"runs", "done", "blank"}) EXPECT_FALSE(rules.addTaskCost(plan.id(other)));
        EXPECT_TRUE(rules.addTaskCost(plan.id("sum")) && rules.addTaskCost(plan.id("open")));
    });
    EXPECT_EQ(plan["sum"].getCosts(), nullptr);
    CCost cost(plan["open"].getCosts()->GetAt(0));
    cost.setDescription("50% up front");
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.changeTaskCost(cost) && !rules.changeTaskCost(CCost()); }));
    EXPECT_TRUE(plan["open"].getCosts()->GetAt(0) == cost);
    EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeTaskCost(cost.getID()); }));
    EXPECT_EQ(plan["open"].getCosts(), nullptr);
}

}  // namespace
