// The time that buffered risks place in buffer tasks: by its place in the pass, and through any history.

#include <map>
#include <set>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/task_history.h"

using namespace orvane;

namespace
{

CAssignedRisk aRisk(CRiskStatus const & status, CProjectDuration const & size,
                    CTaskID const & buffer = CTaskID::getNULL())
{
    CAssignedRisk risk(CRiskID(), CRiskValueMode::Fixed);
    risk.setValueFixed(size);
    risk.setStatus(status);
    risk.setBufferID(buffer);
    return risk;
}

void take(CTask & task, CAssignedRisk const & risk)
{
    CAssignedRiskArray risks(task.getAssignedRisks());
    risks.Add(risk);
    task.setAssignedRisks(risks);
}

// A summary counts what stands in a buffer below it when the pass comes to the summary, and only in a pass that
// recomputes the summary: risk from before or within is counted, risk from behind is not.
TEST(StoredRisk, CountsInASummaryByThePlaceOfItsTask)
{
    for (auto const & [holder, end] : {std::pair{"before", "01-06 17:00"_t}, {"inside", "01-06 17:00"_t},
                                       {"behind", "01-05 17:00"_t}})
    {
        SCOPED_TRACE(holder);
        Plan plan({aTask("before"), aTask("sum").with({aTask("inside"), aTask("buffer")}), aTask("behind")});
        take(plan.writable(holder), aRisk(CRiskStatus::Buffered, 1_d, plan.id("buffer")));
        // The second time from what the last pass kept.
        for (char const * comment : {"so that the summary is recomputed", "and again"})
        {
            plan.act([&](CLocalRulesChecker & rules) { rules.changeTaskComments(plan.id("buffer"), comment); });
            EXPECT_EQ(plan["buffer"].getStoredRiskDuration(), 1_d);
            EXPECT_EQ(plan["buffer"].getEndOfStoredRisk(), "01-06 17:00"_t);
            EXPECT_EQ(plan["sum"].getEndTime(), end);
            plan.derive();
        }
    }
}

// ---- through any history ----------------------------------------------------------------------------

using Sums = std::map<CTask const *, long>;

// The plain form: children before parents, each assignment once in each buffer.
void placeAll(CTaskArray const & tasks, CProject const & project, std::set<std::pair<CTask const *, CString>> & seen,
              Sums & sums)
{
    for (CTask const & task : tasks)
    {
        if (task.getSubTasks()) placeAll(*task.getSubTasks(), project, seen, sums);
        for (CAssignedRisk const & risk : task.getAssignedRisks())
        {
            CTask const * const buffer =
                risk.getStatus() == CRiskStatus::Buffered ? project.getTask(risk.getBufferID()) : nullptr;
            if (buffer && seen.emplace(buffer, risk.getID().toString()).second)
                sums[buffer] += risk.getReportModifiedValueFixed(task).GetTotalSeconds();
        }
    }
}

void expectPlain(Plan const & plan)
{
    std::set<std::pair<CTask const *, CString>> seen;
    Sums sums;
    placeAll(plan.project.getAllTasks(), plan.project, seen, sums);
    forEachTask(plan.project.getAllTasks(), [&](CTask const & task, CTask const *) {
        ASSERT_EQ(task.getStoredRiskDuration().GetTotalSeconds(), sums[&task]) << task.getName();
    });
}

TEST(StoredRisk, AgreesWithThePlainFormThroughAnyHistory)
{
    for (unsigned seed = 1; seed <= 300; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Plan plan;
        TaskHistory history(seed, plan.tasks(), &plan.project);
        std::vector<CAssignedRisk> met;
        for (int step = 0; step < 120 && !testing::Test::HasFatalFailure(); ++step)
        {
            std::vector<CTask *> const tasks = history.tasks();
            auto const any = [&]() -> CTask &
            { return *tasks[static_cast<std::size_t>(history.below(static_cast<int>(tasks.size())))]; };
            int const edit = tasks.empty() ? 0 : history.below(6);
            SCOPED_TRACE("step " + std::to_string(step) + ", edit " + std::to_string(edit));
            if (edit == 1)
            {
                CProjectDuration const size(600L * history.below(50));
                take(any(), met.emplace_back(aRisk(CRiskStatus::Buffered, size, any().getID())));
            }
            // The same assignment may stand twice, in one buffer or in two.
            else if (edit == 2 && !met.empty() && history.below(4) == 0) take(any(), met.back());
            else if (edit == 3)
            {
                CTask & task = any();
                CAssignedRiskArray risks(task.getAssignedRisks());
                for (int each = 0; each < risks.GetSize(); ++each)
                {
                    if (history.below(2)) risks.ElementAt(each).setBufferID(any().getID());
                    else
                        risks.ElementAt(each).setStatus(history.below(2) ? CRiskStatus::Buffered
                                                                         : CRiskStatus::Mitigated);
                }
                task.setAssignedRisks(risks);
            }
            else if (edit == 4) any().setAssignedRisks(CAssignedRiskArray());
            else history.step();
            int const pass = history.below(4);
            if (pass == 1) plan.tasks().setChanged();
            if (pass < 2) continue;
            plan.derive();
            expectPlain(plan);
        }
    }
}

}  // namespace
