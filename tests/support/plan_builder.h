#pragma once

#include <string>
#include <vector>

#include "model/project.h"
#include "rules/local_rules_checker.h"
#include "tests/support/printers.h"

namespace orvane
{

// ---- lengths and moments ----------------------------------------------------------------------------

// Working days of eight hours, hours and minutes.
inline CProjectDuration operator""_d(unsigned long long days)
{
    return CProjectDuration(static_cast<long>(days) * 8 * 3600);
}
inline CProjectDuration operator""_h(unsigned long long hours)
{
    return CProjectDuration(static_cast<long>(hours) * 3600);
}
inline CProjectDuration operator""_m(unsigned long long minutes)
{
    return CProjectDuration(static_cast<long>(minutes) * 60);
}
// "01-05 09:00"_t is a moment of 2004, whose first Monday is 01-05; "2005-01-03 09:00"_t names the year; "?"_t
// is not valid.
CProjectTime operator""_t(char const * text, std::size_t length);

// Where an action runs: 1 on the client that it comes from, 2 on the server, 3 on the other clients.
inline CRulesCheckerContext contextOf(int number)
{
    CRulesCheckerContext context;
    context = number;
    return context;
}

// ---- what a plan is to hold -------------------------------------------------------------------------

// One task as a test describes it: by default a task of one day on Monday 01-05.
//     aTask("dig").lasting(5_d).after("survey"), aTask("house").with({aTask("walls"), aTask("roof")}), aBlank()
struct TaskDraft
{
    struct Link
    {
        std::string upstream;
        CLinkType type;
        CProjectDuration delay;
    };

    TaskDraft & from(CProjectTime const & time) { return start = time, *this; }
    TaskDraft & lasting(CProjectDuration const & value) { return duration = value, *this; }
    // Tasks are named, and may stand further on in the plan.
    TaskDraft & after(std::string const & upstream, CLinkType const & type = CLinkType::FinishToStart,
                     CProjectDuration const & delay = CProjectDuration(0))
    {
        return links.push_back({upstream, type, delay}), *this;
    }
    TaskDraft & with(std::vector<TaskDraft> const & tasks) { return children = tasks, *this; }
    // Begun on a plan that then still held: the forecast is the planned length.
    TaskDraft & started(CProjectTime const & time) { return status = CTaskStatus::Started, actualStart = time, *this; }
    TaskDraft & finished(CProjectTime const & begun, CProjectTime const & done)
    {
        return status = CTaskStatus::Finished, actualStart = begun, actualFinish = done, *this;
    }
    TaskDraft & inStatus(CTaskStatus const & value) { return status = value, *this; }
    TaskDraft & ofType(CTaskType const & value) { return type = value, *this; }
    TaskDraft & keyDate() { return ofType(CTaskType::KeyDate); }
    TaskDraft & constrained() { return constraint = CTaskConstraintType::CannotReschedule, *this; }

    // The task with its children, without links, derived as far as a free task can be.
    CTask make() const;

    std::string name;
    bool blank = false;
    CProjectTime start = "01-05 09:00"_t;
    CProjectDuration duration = 1_d;
    CTaskStatus status{CTaskStatus::Hold};
    CTaskType type{CTaskType::Normal};
    CTaskConstraintType constraint{CTaskConstraintType::NoConstraint};
    CProjectTime actualStart;
    CProjectTime actualFinish;
    std::vector<Link> links;
    std::vector<TaskDraft> children;
};

TaskDraft aTask(std::string const & name);
// A row without a schedule; it may have a name by which the test finds it, and children.
TaskDraft aBlank(std::string const & name = "");

// ---- a project with a plan --------------------------------------------------------------------------

// A new project that holds the tasks described, with their presentations, links and derived data. Links are
// given to the tasks as they are told, circles and doubles included.
class Plan
{
public:
    explicit Plan(std::vector<TaskDraft> const & tasks = {});

    CProject project{nullptr, false};

    // The first task of that name in the order of the rows; a name that is not there fails the test.
    CTask const & operator[](std::string const & name) const;
    CTaskID id(std::string const & name) const { return (*this)[name].getID(); }
    CTaskIDArray ids(std::vector<std::string> const & names) const;
    // The link between the two; the first of several.
    CLink const & link(std::string const & upstream, std::string const & downstream) const;

    // What the rules write to, for tests of what stands below the rules.
    CTask & writable(std::string const & name) { return const_cast<CTask &>((*this)[name]); }
    CTaskArray & tasks() { return const_cast<CTaskArray &>(project.getAllTasks()); }

    // Appends to the plan.
    void add(TaskDraft const & draft);
    // One action: `plan.act([&](auto & rules) { return rules.changeTaskName(id, "x"); })`.
    template <class Action>
    auto act(Action const & action, CRulesCheckerContext const & context = CRulesCheckerContext::OriginatingClient)
    {
        CLocalRulesChecker rules(&project, context);
        return action(rules);
    }
    // An action that does nothing, and so derives everything.
    void derive()
    {
        act([](auto &) {});
    }

private:
    void addLinks(TaskDraft const & draft);
};

}  // namespace orvane
