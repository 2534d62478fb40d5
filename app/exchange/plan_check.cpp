#include "app/exchange/plan_check.h"

#include <algorithm>
#include <chrono>
#include <unordered_set>

#include <fmt/format.h>

#include "app/command.h"

namespace orvane::app
{
namespace
{

// No schedule is as deep, and files hold a thousand levels at most.
constexpr int deepestOutline = 500;

class PlanCheck
{
public:
    PlanCheck(Plan & plan, std::string const & fileName) : plan(plan), fileName(fileName) {}

    PlanOutline run()
    {
        checkTasks();
        checkReferences();
        buildOutline();
        checkCircles();
        return std::move(outline);
    }

private:
    PlanTask & task(int row) { return plan.tasks[static_cast<std::size_t>(row)]; }
    int count() const { return static_cast<int>(plan.tasks.size()); }

    [[noreturn]] void refuse(PlanTask const & where, std::string const & what) const
    {
        std::string const line = where.line > 0 ? fmt::format("line {}: ", where.line) : "";
        throw Refusal(fmt::format("{}: {}task \"{}\": {}", fileName, line, nameOf(where), what));
    }

    void checkTasks()
    {
        outline.rowOf.reserve(plan.tasks.size());
        for (int row = 0; row < count(); ++row)
        {
            PlanTask const & each = task(row);
            if (!outline.rowOf.emplace(each.uid, row).second)
                refuse(each, fmt::format("the number {} stands twice", each.uid));
            if (each.duration && *each.duration < 0) refuse(each, "the duration is negative");
        }
    }

    void checkReferences()
    {
        std::unordered_set<int> resources;
        for (PlanResource const & resource : plan.resources) resources.insert(resource.uid);
        for (PlanTask const & each : plan.tasks)
            for (PlanLink const & link : each.links)
                if (!outline.rowOf.contains(link.predecessorUID))
                    refuse(each,
                           fmt::format("there is no task with the number {} that it follows", link.predecessorUID));
        for (PlanAssignment const & assignment : plan.assignments)
        {
            auto const row = outline.rowOf.find(assignment.taskUID);
            if (row == outline.rowOf.end())
                throw Refusal(fmt::format("{}: there is no task with the number {} that a resource is assigned to",
                                          fileName, assignment.taskUID));
            if (!resources.contains(assignment.resourceUID))
                refuse(task(row->second),
                       fmt::format("there is no resource with the number {}", assignment.resourceUID));
        }
    }

    // ---- the tree -----------------------------------------------------------------------------------

    // A row without content breaks no group: it stands where the rows around it stand.
    void placeBlankRows()
    {
        int next = 1;
        for (int row = count() - 1; row >= 0; --row)
        {
            if (task(row).isBlank) task(row).outlineLevel = std::max(task(row).outlineLevel, next);
            else next = task(row).outlineLevel;
        }
        int last = 0;
        next = 1;
        for (int row = 0; row < count(); ++row)
        {
            if (!task(row).isBlank)
            {
                last = task(row).outlineLevel;
                continue;
            }
            int const following = row + 1 < count() ? task(row + 1).outlineLevel : 1;
            task(row).outlineLevel = std::clamp(task(row).outlineLevel, 1, std::max({1, last, following}));
        }
    }

    void buildOutline()
    {
        placeBlankRows();
        outline.parent.assign(plan.tasks.size(), PlanOutline::none);
        outline.children.resize(plan.tasks.size());
        // The tasks under which the present row stands, from the root on.
        std::vector<int> above;
        for (int row = 0; row < count(); ++row)
        {
            PlanTask & each = task(row);
            if (each.outlineLevel > deepestOutline)
                refuse(each, fmt::format("outline level {} is too deep", each.outlineLevel));
            std::size_t const depth = static_cast<std::size_t>(std::max(each.outlineLevel, 1)) - 1;
            if (depth > above.size() && !each.isBlank)
                plan.losses.push_back(
                    {nameOf(each), fmt::format("outline level {}, which has no parent: it is of level {}",
                                               each.outlineLevel, above.size() + 1)});
            std::size_t const kept = std::min(depth, above.size());
            int const parent = kept == 0 ? PlanOutline::none : above[kept - 1];
            outline.parent[static_cast<std::size_t>(row)] = parent;
            (parent == PlanOutline::none ? outline.roots : outline.children[static_cast<std::size_t>(parent)])
                .push_back(row);
            if (each.isBlank) continue;
            above.resize(kept);
            above.push_back(row);
        }
    }

    // ---- circles ------------------------------------------------------------------------------------

    // Each task is a beginning and an end. What a summary task waits for, all below it wait for; and who waits for it,
    // waits for all below it.
    static std::size_t beginning(int row) { return 2 * static_cast<std::size_t>(row); }
    static std::size_t end(int row) { return beginning(row) + 1; }

    template <class Visit>
    void forEachWait(Visit const & visit) const
    {
        for (int row = 0; row < count(); ++row)
        {
            if (!outline.isSummary(row)) visit(beginning(row), end(row));
            for (int const child : outline.children[static_cast<std::size_t>(row)])
            {
                visit(beginning(row), beginning(child));
                visit(end(child), end(row));
            }
            for (PlanLink const & link : plan.tasks[static_cast<std::size_t>(row)].links)
                visit(end(outline.rowOf.at(link.predecessorUID)), beginning(row));
        }
    }

    // Takes away what waits for nothing until nothing more goes: what is left stands in a circle or behind one.
    void checkCircles() const
    {
        std::size_t const nodes = 2 * plan.tasks.size();
        std::vector<int> waits(nodes, 0);
        std::vector<std::size_t> first(nodes + 1, 0);
        forEachWait([&](std::size_t from, std::size_t to) { ++waits[to], ++first[from + 1]; });
        for (std::size_t node = 0; node < nodes; ++node) first[node + 1] += first[node];
        std::vector<std::size_t> followers(first[nodes]), next(first.begin(), first.end() - 1);
        forEachWait([&](std::size_t from, std::size_t to) { followers[next[from]++] = to; });
        std::vector<std::size_t> free;
        for (std::size_t node = 0; node < nodes; ++node)
            if (waits[node] == 0) free.push_back(node);
        for (std::size_t done = 0; done < free.size(); ++done)
            for (std::size_t each = first[free[done]]; each < first[free[done] + 1]; ++each)
                if (--waits[followers[each]] == 0) free.push_back(followers[each]);
        if (free.size() < nodes) refuseCircle(waits);
    }

    // Goes back from one that waits to what it waits for until a node comes again.
    [[noreturn]] void refuseCircle(std::vector<int> const & waits) const
    {
        std::size_t const nodes = waits.size();
        std::vector<std::size_t> before(nodes, nodes);
        forEachWait(
            [&](std::size_t from, std::size_t to)
            {
                if (waits[from] > 0 && waits[to] > 0) before[to] = from;
            });
        std::size_t at = 0;
        while (before[at] == nodes) ++at;
        std::vector<bool> isMet(nodes, false);
        for (; !isMet[at]; at = before[at]) isMet[at] = true;
        std::vector<int> rows;
        std::size_t const start = at;
        do {
            if (rows.empty() || rows.back() != static_cast<int>(at / 2)) rows.push_back(static_cast<int>(at / 2));
            at = before[at];
        } while (at != start);
        if (rows.size() > 1 && rows.back() == rows.front()) rows.pop_back();
        // In the order of time, from the first of them in the file.
        std::reverse(rows.begin(), rows.end());
        std::rotate(rows.begin(), std::min_element(rows.begin(), rows.end()), rows.end());
        constexpr std::size_t mostNamed = 8;
        std::string names;
        for (std::size_t each = 1; each < rows.size() && each < mostNamed; ++each)
            names +=
                fmt::format("{}\"{}\"", each > 1 ? ", " : "", nameOf(plan.tasks[static_cast<std::size_t>(rows[each])]));
        if (rows.size() > mostNamed) names += fmt::format(" and {} more", rows.size() - mostNamed);
        refuse(plan.tasks[static_cast<std::size_t>(rows[0])],
               names.empty() ? "it follows itself" : fmt::format("its links go in a circle by way of {}", names));
    }

    Plan & plan;
    std::string const & fileName;
    PlanOutline outline;
};

}  // namespace

PlanOutline checkPlan(Plan & plan, std::string const & fileName)
{
    return PlanCheck(plan, fileName).run();
}

std::string nameOf(PlanTask const & task)
{
    return task.name.empty() ? fmt::format("task {}", task.id) : task.name;
}

std::string isoMinute(Minute minute)
{
    using namespace std::chrono;
    sys_days const day = floor<days>(sys_time<minutes>(minutes(minute)));
    year_month_day const date(day);
    Minute const ofDay = minute - Minute{day.time_since_epoch().count()} * 1440;
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}", int(date.year()), unsigned(date.month()), unsigned(date.day()),
                       ofDay / 60, ofDay % 60);
}

}  // namespace orvane::app
