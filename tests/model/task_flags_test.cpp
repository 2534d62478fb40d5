#include <gtest/gtest.h>

#include "schedule/calendar.h"
#include "tests/support/plan_builder.h"
#include "tests/support/task_history.h"

using namespace orvane;

namespace
{

// ---- the flags, by a visit to every field -----------------------------------------------------------

bool linkChanged(CLink const & link)
{
    return link.getID().getChanged() || link.getUpstreamTaskID().getChanged() || link.getType().getChanged() ||
           link.getStatus().getChanged() || link.getDelay().getChanged();
}

bool supplyChainChanged(CSupplyChain const & chain)
{
    bool changed =
        chain.getID().getChanged() || chain.getSupplierID().getChanged() || chain.getCustomerID().getChanged();
    for (CCompanyID const & company : chain.getCustomerID()) changed |= company.getChanged();
    return changed;
}

bool taskChanged(CTask const & task);

bool anyChanged(CTaskArray const & tasks)
{
    bool changed = tasks.getChanged();
    for (int each = 0; each < tasks.GetSize(); ++each) changed |= taskChanged(tasks.GetAt(each));
    return changed;
}

bool taskChanged(CTask const & task)
{
    bool changed = task.getUpstreamLinks().getChanged() || supplyChainChanged(task.getSupplyChain()) ||
                   task.getConstraintType().getChanged();
    for (CLink const & link : task.getUpstreamLinks()) changed |= linkChanged(link);
    // A summary task's own duration cannot be read, but in a history nothing writes it alone.
    if (!task.isSummaryTask()) changed |= task.getDuration().getChanged();
    bool const fields[] = {task.getID().getChanged(),
                           task.getName().getChanged(),
                           task.getPlannedStartTime().getChanged(),
                           task.getStatus().getChanged(),
                           task.getRiskType().getChanged(),
                           task.getTaskType().getChanged(),
                           task.getDominantCalendarID().getChanged(),
                           task.getActualStartTime().getChanged(),
                           task.getPredictedFinishTime().getChanged(),
                           task.getActualFinishTime().getChanged(),
                           task.getRiskBuffer().getChanged(),
                           task.getComments().getChanged(),
                           task.getCategoryID().getChanged(),
                           task.isTemplate().getChanged()};
    for (bool const field : fields) changed |= field;
    return changed || (task.getSubTasks() && anyChanged(*task.getSubTasks()));
}

// ---- the derived times, from the fields of the task and those below it ------------------------------

struct Derived
{
    CProjectTime start, end, planned, estimated;
    CProjectDuration duration;
};

CProjectTime endOfStoredRisk(CTask const & task, Derived const & derived)
{
    CCalendar const & calendar = task.getCalendar();
    if (task.isSummaryTask()) return derived.end;
    CProjectDuration length = derived.duration;
    if (task.getStatus() == CTaskStatus::Started)
        length = derived.estimated > task.getActualStartTime()
                     ? calendar.subtractTimeFromTime(task.getActualStartTime(), derived.estimated)
                     : 0_m;
    if (task.getStatus() == CTaskStatus::Finished)
        length = calendar.subtractTimeFromTime(task.getActualStartTime(), task.getActualFinishTime());
    return calendar.addDurationToTime(calendar.addDurationToTime(derived.start, length, true),
                                      task.getStoredRiskDuration(), true);
}

Derived derive(CTask const & task)
{
    CCalendar const & calendar = task.getCalendar();
    bool const started = task.getStatus() == CTaskStatus::Started;
    bool const finished = task.getStatus() == CTaskStatus::Finished;
    Derived result;
    CProjectTime start, end;
    if (task.isSummaryTask())
    {
        for (CTask const & child : *task.getSubTasks())
        {
            Derived const below = derive(child);
            CProjectTime const childEnd = child.isValid() ? endOfStoredRisk(child, below) : CProjectTime();
            if (!child.isValid() || !below.start.isValid() || !childEnd.isValid()) continue;
            if (!start.isValid() || below.start < start) start = below.start;
            if (!end.isValid() || childEnd > end) end = childEnd;
        }
        if (start.isValid() && end.isValid()) result.duration = calendar.subtractTimeFromTime(start, end);
    }
    else
    {
        result.duration = task.getDuration();
    }
    if (task.isValid())
    {
        CProjectDuration const length =
            started || finished
                ? calendar.subtractTimeFromTime(task.getActualStartTime(), task.getPredictedFinishTime())
                : result.duration;
        result.planned = calendar.addDurationToTime(task.getPlannedStartTime(), length, true);
        if (started) result.estimated = calendar.addDurationToTime(task.getActualStartTime(), result.duration, true);
    }
    bool const begun = started || finished;
    result.start = task.isSummaryTask() ? start : begun ? task.getActualStartTime() : task.getPlannedStartTime();
    result.end = task.isSummaryTask() ? end
                 : started            ? result.estimated
                 : finished           ? task.getActualFinishTime()
                                      : result.planned;
    return result;
}

void expectDerived(CTask const & task)
{
    auto const line = [](Derived const & derived)
    {
        return text(derived.start) + " > " + text(derived.end) + ", planned " + text(derived.planned) + ", estimated " +
               text(derived.estimated) + ", " + text(derived.duration);
    };
    Derived const expected = derive(task);
    Derived const actual{task.getStartTime(), task.getEndTime(), task.getPlannedEndTime(),
                         task.getEstimatedFinishTime(), task.getDuration()};
    ASSERT_EQ(line(actual), line(expected));
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
        {"assign a copy", [](Plan & plan) { plan.writable("s") = CTask(plan["s"]); }},
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

TEST(TaskFlags, ReadingIsNoChange)
{
    Plan plan({aTask("s").with({aTask("t").after("v"), aBlank()}), aTask("v").started("01-05 09:00"_t)});
    digest(plan.project);
    plan.project.getTask(CTaskID());
    plan["s"].getPositionInSiblings();
    plan["v"].getTimeOfPercentCompletePoint();
    plan["t"].isInCircularChain();
    EXPECT_FALSE(plan.tasks().setChanged());
}

}  // namespace
