#include <gtest/gtest.h>

#include "schedule/calendar.h"
#include "tests/support/plan_builder.h"
#include "tests/support/task_history.h"

using namespace orvane;

namespace
{

// ---- the flags, by a visit to every field -----------------------------------------------------------

bool anyOf(auto const &... values)
{
    return (values.getChanged() || ...);
}

bool taskChanged(CTask const & task)
{
    CSupplyChain const & chain = task.getSupplyChain();
    bool changed =
        anyOf(task.getID(), task.getName(), task.getPlannedStartTime(), task.getStatus(), task.getRiskType(),
              task.getTaskType(), task.getDominantCalendarID(), task.getActualStartTime(),
              task.getPredictedFinishTime(), task.getActualFinishTime(), task.getRiskBuffer(), task.getComments(),
              task.getCategoryID(), task.isTemplate(), task.getUpstreamLinks(), task.getConstraintType(),
              chain.getID(), chain.getSupplierID(), chain.getCustomerID());
    for (CCompanyID const & company : chain.getCustomerID()) changed |= company.getChanged();
    for (CLink const & link : task.getUpstreamLinks())
        changed |= anyOf(link.getID(), link.getUpstreamTaskID(), link.getType(), link.getStatus(), link.getDelay());
    // A summary task's own duration cannot be read, but in a history nothing writes it alone.
    if (!task.isSummaryTask()) return changed || task.getDuration().getChanged();
    for (CTask const & child : *task.getSubTasks()) changed |= taskChanged(child);
    return changed || task.getSubTasks()->getChanged();
}

bool anyChanged(CTaskArray const & tasks)
{
    bool changed = tasks.getChanged();
    for (CTask const & task : tasks) changed |= taskChanged(task);
    return changed;
}

// ---- the derived times, from the fields of the task and those below it ------------------------------

struct Derived
{
    CProjectTime start, end, planned, estimated, endOfStoredRisk;
    CProjectDuration duration;
};

Derived derive(CTask const & task)
{
    CCalendar const & calendar = task.getCalendar();
    bool const started = task.getStatus() == CTaskStatus::Started, finished = task.getStatus() == CTaskStatus::Finished;
    CProjectTime const begin = task.getActualStartTime();
    Derived result;
    if (!task.isSummaryTask()) result.duration = task.getDuration();
    else
    {
        for (CTask const & child : *task.getSubTasks())
        {
            Derived const below = derive(child);
            if (!child.isValid() || !below.start.isValid() || !below.endOfStoredRisk.isValid()) continue;
            if (!result.start.isValid() || below.start < result.start) result.start = below.start;
            if (!result.end.isValid() || below.endOfStoredRisk > result.end) result.end = below.endOfStoredRisk;
        }
        if (result.start.isValid()) result.duration = calendar.subtractTimeFromTime(result.start, result.end);
    }
    if (task.isValid())
    {
        CProjectDuration const length = started || finished
                                            ? calendar.subtractTimeFromTime(begin, task.getPredictedFinishTime())
                                            : result.duration;
        result.planned = calendar.addDurationToTime(task.getPlannedStartTime(), length, true);
        if (started) result.estimated = calendar.addDurationToTime(begin, result.duration, true);
    }
    if (!task.isSummaryTask())
    {
        result.start = started || finished ? begin : task.getPlannedStartTime();
        result.end = started ? result.estimated : finished ? task.getActualFinishTime() : result.planned;
        CProjectDuration length = result.duration;
        if (started) length = result.end > begin ? calendar.subtractTimeFromTime(begin, result.end) : 0_m;
        if (finished) length = calendar.subtractTimeFromTime(begin, result.end);
        result.endOfStoredRisk = calendar.addDurationToTime(calendar.addDurationToTime(result.start, length, true),
                                                            task.getStoredRiskDuration(), true);
    }
    else result.endOfStoredRisk = result.end;
    return result;
}

void expectDerived(CTask const & task)
{
    Derived const plain = derive(task);
    ASSERT_EQ(text(task.getStartTime()), text(plain.start));
    ASSERT_EQ(text(task.getEndTime()), text(plain.end));
    ASSERT_EQ(text(task.getPlannedEndTime()), text(plain.planned));
    ASSERT_EQ(text(task.getEstimatedFinishTime()), text(plain.estimated));
    ASSERT_EQ(text(task.getDuration()), text(plain.duration));
}

// A pass over the project's data, or over one subtree, judged by the plain forms.
TEST(TaskFlags, PassesAgreeWithPlainFormsThroughAnyHistory)
{
    for (unsigned seed = 1; seed <= 60; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Plan plan;
        CTaskArray & roots = plan.tasks();
        TaskHistory history(seed, roots, &plan.project);
        for (int step = 0; step < 150 && !testing::Test::HasFatalFailure(); ++step)
        {
            std::string const edit = history.step();
            SCOPED_TRACE("step " + std::to_string(step) + ": " + edit);
            int const pass = history.below(6);
            if (pass > 2) continue;
            if (pass == 2)
            {
                // What a reset forgets is not derived any more.
                roots.setChanged();
                plan.project.resetChanged();
                forEachTask(roots, [](CTask const & task, CTask const *)
                            { ASSERT_FALSE(task.getChanged() || taskChanged(task)); });
                ASSERT_FALSE(roots.getChanged());
            }
            std::vector<CTask *> const tasks = history.tasks();
            std::vector<bool> expected;
            for (CTask const * task : tasks) expected.push_back(taskChanged(*task));
            bool const expectedOfAll = anyChanged(roots);
            if (pass == 0 && !tasks.empty())
            {
                std::size_t const one = static_cast<std::size_t>(history.below(static_cast<int>(tasks.size())));
                ASSERT_EQ(tasks[one]->setChanged(), expected[one]);
                ASSERT_EQ(tasks[one]->getParentOfLastPass(), nullptr);
                continue;
            }
            ASSERT_EQ(roots.setChanged(), expectedOfAll);
            for (std::size_t each = 0; each < tasks.size(); ++each)
                ASSERT_EQ(tasks[each]->getChanged(), expected[each]);
            forEachTask(roots,
                        [](CTask const & task, CTask const * parent)
                        {
                            ASSERT_EQ(task.getParentOfLastPass(), parent);
                            expectDerived(task);
                        });
        }
    }
}

// What stands where a copy was assigned is flagged with all below it, also where nothing was copied.
TEST(TaskFlags, MovedAndAssignedTasksAreFlaggedWithAllBelowThem)
{
    std::pair<char const *, void (*)(Plan &)> const changes[] = {
        {"move", [](Plan & plan) { plan.tasks().rePositionElements(0, 1); }},
        {"assign to itself", [](Plan & plan) { plan.writable("s") = plan["s"]; }},
        {"set in its place", [](Plan & plan) { plan.tasks().SetAt(1, plan["s"]); }},
        {"set its children", [](Plan & plan) { plan.writable("s").setSubTasks(*plan["s"].getSubTasks()); }},
    };
    for (auto const & [name, change] : changes)
    {
        Plan plan({aTask("a"), aTask("s").with({aTask("t").with({aTask("u")})})});
        change(plan);
        EXPECT_TRUE(plan["u"].getName().getChanged() && plan["t"].getName().getChanged()) << name;
        EXPECT_FALSE(plan["a"].getName().getChanged()) << name;
        // The parents of copies are right before any pass.
        EXPECT_EQ(plan.project.getTaskParent(plan["t"]), &plan["s"]) << name;
        EXPECT_EQ(plan.project.getTaskParent(plan["u"]), &plan["t"]) << name;
    }
}

}  // namespace
