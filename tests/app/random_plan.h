#pragma once

#include <random>

#include "schedule/calendar.h"
#include "tests/support/plan_builder.h"
#include "tests/support/random_actions.h"
#include "tests/support/task_history.h"

namespace orvane::test
{

// A random plan of some twenty rows: summaries, key dates, blank rows, work begun and reported on, constraints, risk
// buffered on other tasks, holidays, a company with a calendar of its own, and links of every type with delays.
class RandomPlan
{
public:
    explicit RandomPlan(unsigned seed) : random(seed), plan(tasksBelow(0))
    {
        setCalendars();
        list();
        for (CTask const * task : all) furnish(const_cast<CTask &>(*task));
        // What was written below the rules counts once the plan comes out of a file.
        loadStream(plan.project, streamOf(plan.project));
        list();
        for (std::size_t each = 0; each < 2 * all.size(); ++each)
            if (addLink()) takeLastLinkBack();
    }

    // Adds a random link between tasks that have dates; whether that closed a circle.
    bool addLink()
    {
        CTask & upstream = pick();
        last = &pick();
        if (!upstream.isValid() || !last->isValid()) return false;
        before = last->getUpstreamLinks();
        CLinkArray links(before);
        CLink link(upstream.getID(), CLinkType(static_cast<CLinkType::Number>(1 + below(4))));
        if (below(3) == 0) link.setDelay(CProjectDuration((below(200) - 50) * 1800L));
        links.Add(link);
        last->setUpstreamLinks(links);
        plan.derive();
        return last->isInCircularChain();
    }
    void takeLastLinkBack()
    {
        last->setUpstreamLinks(before);
        plan.derive();
    }

    CProject & project() { return plan.project; }
    std::vector<CTask const *> const & tasks() const { return all; }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    CTask & pick() { return const_cast<CTask &>(*all[static_cast<std::size_t>(below(static_cast<int>(all.size())))]); }
    CProjectTime morning() { return CProjectTime(2004, 1, 5 + 7 * below(4) + below(5), 9 + below(6), 0); }

    std::vector<TaskDraft> tasksBelow(int depth)
    {
        std::vector<TaskDraft> drafts;
        for (int each = 0; each < (depth ? 3 : 7); ++each)
        {
            TaskDraft draft = aTask("task " + std::to_string(++named)).from(morning());
            draft.lasting(CProjectDuration((1 + below(60)) * 3600L));
            int const kind = below(14);
            if (kind == 0 && depth == 0) draft = aBlank("blank " + std::to_string(named));
            else if (kind == 1) draft.keyDate();
            else if (kind == 2) draft.constrained();
            else if (kind == 3) draft.started(morning());
            else if (kind == 4) draft.finished("01-05 09:00"_t, "01-07 12:00"_t);
            else if (kind > 8 && depth < 3) draft.with(tasksBelow(depth + 1));
            drafts.push_back(draft);
        }
        return drafts;
    }

    void list()
    {
        all.clear();
        forEachTask(plan.project.getAllTasks(), [this](CTask const & task, CTask const *) { all.push_back(&task); });
    }

    void setCalendars()
    {
        CCalendar calendar(plan.project.getProjectCalendar());
        CCalendarDayTypeID const off = calendar.getDayType(CProjectDate(2004, 1, 4)).getID();
        for (int each = 0; each < 5; ++each)
            calendar.setDayTypeOfSelectedDate(CProjectDate(2004, 1, 5 + below(60)), off);
        CCompany company;
        company.setName("Crew");
        plan.act([&](auto & rules) { return rules.setCalendar(calendar) && rules.addCompany(company); });
        CCalendar own(plan.project.getAllCompanies().GetAt(0).getCalendar());
        own.setInUse(true);
        CCalendarDayTypeID const ownOff = own.getDayType(CProjectDate(2004, 1, 4)).getID();
        own.setDayTypeOfDayOfWeek(CProjectDate(2004, 1, 9), ownOff);
        plan.act([&](auto & rules) { return rules.setCalendar(own); });
    }

    // What drafts do not tell.
    void furnish(CTask & task)
    {
        if (!task.isValid() || task.isSummaryTask()) return;
        if (below(4) == 0) task.setDominantCalendarID(plan.project.getAllCompanies().GetAt(0).getCalendar().getID());
        if (task.getStatus() == CTaskStatus::Started) report(task);
        if (below(4) > 0 || task.isKeyDate()) return;
        CAssignedRisk risk(CRiskID(), CRiskValueMode::Fixed);
        risk.setValueFixed(CProjectDuration((1 + below(4)) * 3600L));
        risk.setStatus(CRiskStatus(static_cast<CRiskStatus::Number>(1 + below(3))));
        risk.setBufferID(pick().getID());
        CAssignedRiskArray risks;
        risks.Add(risk);
        task.setAssignedRisks(risks);
    }
    void report(CTask & task)
    {
        CTaskReportArray reports;
        CTaskReport made;
        made.setType(below(2) ? CTaskReportType::Delay : CTaskReportType::Advance);
        made.setDuration(CProjectDuration((1 + below(9)) * 3600L));
        reports.Add(made);
        task.setTaskReports(reports);
    }

    std::mt19937 random;
    int named = 0;
    Plan plan;
    std::vector<CTask const *> all;
    CTask * last = nullptr;
    CLinkArray before;
};

}  // namespace orvane::test
