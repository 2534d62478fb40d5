#include "app/planning/scheduler.h"

#include <algorithm>
#include <span>

#include <fmt/format.h>

#include "rules/local_rules_checker.h"
#include "schedule/calendar.h"

namespace orvane::app
{
namespace
{

void raise(CProjectTime & bound, CProjectTime const & moment)
{
    if (moment.isValid() && (!bound.isValid() || moment > bound)) bound = moment;
}

void lower(CProjectTime & bound, CProjectTime const & moment)
{
    if (moment.isValid() && (!bound.isValid() || moment < bound)) bound = moment;
}

CProjectTime withRisk(CTask const & task, CProjectTime const & end, CProjectDuration const & risk)
{
    return risk == CProjectDuration(0) ? end : task.getCalendar().addDurationToTime(end, risk, true);
}

// Goes through the rows once. Each has two points, told by one number: its opening, where everything that binds its
// start is known, and its closing, where its times are. A point is settled behind those it needs.
class Scheduler
{
public:
    explicit Scheduler(Rows const & rows)
        : rows(rows), bounds(count()), times(count()), hasMoved(count()), states(2 * count())
    {
        for (int row = 0; row < rows.size(); ++row)
        {
            addLinks(row);
            addUncounted(row);
        }
        firstLinks.push_back(links.size());
    }

    Schedule run()
    {
        for (int row = 0; row < rows.size(); ++row) settle(closing(row));
        std::ranges::sort(schedule.held, {}, [&](HeldTask const & held) { return rows.of(*held.task); });
        return std::move(schedule);
    }

private:
    struct Times
    {
        CProjectTime start, end;
        // As the summary above counts it.
        CProjectTime endInSummary;
    };

    // Moments before which a task may not start, and may not end; not valid where there is none.
    struct Bounds
    {
        CProjectTime start, end;
    };
    enum class State : char
    {
        untouched,
        onTheRoad,
        settled
    };
    struct Incoming
    {
        int upstream;
        CLink const * link;
    };
    struct Visit
    {
        int point;
        int next;
    };

    static int opening(int row) { return 2 * row; }
    static int closing(int row) { return 2 * row + 1; }
    static bool isOpening(int point) { return point % 2 == 0; }
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    std::size_t count() const { return at(rows.size()); }

    // As in the limits that the project computes, a link to a task that is gone hides those behind it.
    void addLinks(int row)
    {
        firstLinks.push_back(links.size());
        if (!rows[row].counts) return;
        for (CLink const & link : rows[row].task->getUpstreamLinks())
        {
            int const upstream = rows.find(link.getUpstreamTaskID());
            if (upstream == Rows::none) break;
            links.push_back({upstream, &link});
        }
    }
    // A summary counts the risk stored on a task below it as far as the derived pass has come: that of tasks behind the
    // summary, and of the summaries above them, comes too late.
    void addUncounted(int source)
    {
        for (CAssignedRisk const & assigned : rows[source].task->getAssignedRisks())
        {
            int const buffer =
                assigned.getStatus() == CRiskStatus::Buffered ? rows.find(assigned.getBufferID()) : Rows::none;
            int const summary = buffer == Rows::none ? Rows::none : rows[buffer].parent;
            if (summary == Rows::none) continue;
            int const end = rows[summary].end;
            bool const comesLater = source >= end || (source <= summary && rows[source].end >= end);
            if (comesLater)
                uncounted.try_emplace(buffer, 0).first->second +=
                    assigned.getReportModifiedValueFixed(*rows[source].task);
        }
    }
    std::span<Incoming const> linksOf(int row) const
    {
        return {links.data() + firstLinks[at(row)], links.data() + firstLinks[at(row) + 1]};
    }

    // Chains are as long as the plan, so the road is kept here and not on the stack.
    void settle(int first)
    {
        enter(first);
        while (!road.empty())
        {
            int const needed = takeNeed(road.back());
            if (needed != Rows::none) enter(needed);
            else
            {
                int const point = road.back().point;
                road.pop_back();
                states[at(point)] = State::settled;
                if (isOpening(point)) open(point / 2);
                else close(point / 2);
            }
        }
    }

    void enter(int point)
    {
        State & state = states[at(point)];
        if (state == State::onTheRoad) refuseCircle(point);
        if (state == State::untouched)
        {
            state = State::onTheRoad;
            road.push_back({point, 0});
        }
    }

    // What the point still waits for; none when it has everything.
    int takeNeed(Visit & visit) const
    {
        int const row = visit.point / 2;
        if (!rows[row].counts) return Rows::none;
        int const step = visit.next++;
        return isOpening(visit.point) ? needOfOpening(row, step) : needOfClosing(row, step, visit.next);
    }
    int needOfOpening(int row, int step) const
    {
        if (step == 0) return rows[row].parent == Rows::none ? closingOfLink(row, 0) : opening(rows[row].parent);
        return closingOfLink(row, rows[row].parent == Rows::none ? step : step - 1);
    }
    int closingOfLink(int row, int link) const
    {
        std::span<Incoming const> const own = linksOf(row);
        return at(link) < own.size() ? closing(own[at(link)].upstream) : Rows::none;
    }
    // First the opening, then child by child, of which `next` keeps the row's distance.
    int needOfClosing(int row, int step, int & next) const
    {
        if (step == 0) return opening(row);
        int const child = row + step;
        if (child >= rows[row].end) return Rows::none;
        next = rows[child].end - row;
        return closing(child);
    }

    void open(int row)
    {
        if (!rows[row].counts) return;
        Bounds & own = bounds[at(row)];
        if (rows[row].parent != Rows::none) own = bounds[at(rows[row].parent)];
        for (Incoming const & incoming : linksOf(row))
        {
            Times const & upstream = times[at(incoming.upstream)];
            CProjectTime const moment =
                (leavesFinish(*incoming.link) ? upstream.end : upstream.start) + incoming.link->getDelay();
            raise(arrivesAtFinish(*incoming.link) ? own.end : own.start, moment);
        }
    }

    // A summary below which nothing moves keeps its figures.
    void close(int row)
    {
        CTask const & task = *rows[row].task;
        if (task.isSummaryTask()) times[at(row)] = {task.getStartTime(), task.getEndTime(), task.getEndTime()};
        else times[at(row)] = timesOf(row, task.getStartTime(), task.getEndOfUnmitigatedRisk());
        if (!rows[row].counts) return;
        Bounds const & own = bounds[at(row)];
        if (task.isSummaryTask()) rollUp(row);
        else if (own.start.isValid() || own.end.isValid()) place(row);
        if (hasMoved[at(row)] && rows[row].parent != Rows::none) hasMoved[at(rows[row].parent)] = true;
    }

    Times timesOf(int row, CProjectTime const & start, CProjectTime const & endOfUnmitigatedRisk) const
    {
        CTask const & task = *rows[row].task;
        CProjectDuration const stored = task.getStoredRiskDuration();
        CProjectTime const end = withRisk(task, endOfUnmitigatedRisk, stored);
        auto const later = uncounted.find(row);
        if (later == uncounted.end()) return {start, end, end};
        return {start, end, withRisk(task, endOfUnmitigatedRisk, stored - later->second)};
    }

    void rollUp(int row)
    {
        if (!hasMoved[at(row)]) return;
        Times & own = times[at(row)] = {};
        for (int child = row + 1; child < rows[row].end; child = rows[child].end)
        {
            Times const & below = times[at(child)];
            if (!rows[child].counts || !below.start.isValid() || !below.endInSummary.isValid()) continue;
            lower(own.start, below.start);
            raise(own.end, below.endInSummary);
        }
        own.endInSummary = own.end;
    }

    static CProjectTime allowedStart(CTask const & task, Bounds const & bounds)
    {
        CCalendar const & calendar = task.getCalendar();
        CProjectTime allowed;
        if (bounds.start.isValid()) raise(allowed, calendar.getNextValidStartTime(bounds.start));
        if (bounds.end.isValid())
            raise(allowed, calendar.subtractDurationFromTime(calendar.getNextValidEndTime(bounds.end),
                                                             task.getDurationToEndOfStoredRisk(), false));
        return allowed;
    }

    void place(int row)
    {
        CTask const & task = *rows[row].task;
        Times & own = times[at(row)];
        CProjectTime const allowed = allowedStart(task, bounds[at(row)]);
        if (allowed.isValid() && allowed == own.start) return;
        // A task of no length may be allowed to end where none may start.
        CProjectTime const target = task.getCalendar().getNextValidStartTime(allowed);
        if (target.isValid() && target == own.start) return;
        if (!target.isValid()) hold(task, target, "its calendar has no working time left");
        else if (!task.canReschedule())
        {
            // Work that began later than it might have is no fault.
            if (task.isOpen() || own.start < target)
                hold(task, target, task.getExplanationForInabilityToReschedule().view());
        }
        else
        {
            schedule.moves.push_back({&task, own.start, target});
            hasMoved[at(row)] = true;
            own = timesOf(row, target,
                          task.getCalendar().addDurationToTime(target, task.getDurationToEndOfUnmitigatedRisk(), true));
        }
    }

    void hold(CTask const & task, CProjectTime const & allowed, std::string_view why)
    {
        schedule.held.push_back({&task, allowed, std::string(why)});
    }

    [[noreturn]] void refuseCircle(int point) const
    {
        constexpr std::size_t mostShown = 12;
        std::vector<CTask const *> circle;
        auto step = std::ranges::find(road, point, &Visit::point);
        for (; step != road.end(); ++step)
            if (CTask const * const task = rows[step->point / 2].task; circle.empty() || circle.back() != task)
                circle.push_back(task);
        if (circle.size() > 1 && circle.back() == circle.front()) circle.pop_back();
        // The road goes upstream, links downstream.
        std::reverse(circle.begin() + 1, circle.end());
        std::string names = quoted(*circle.front());
        for (std::size_t each = 1; each < std::min(circle.size(), mostShown); ++each)
            names += ", " + quoted(*circle[each]);
        if (circle.size() > mostShown) names += fmt::format(" and {} more", circle.size() - mostShown);
        rows.refuse(fmt::format("links go round in a circle: {}, and back to {}", names, quoted(*circle.front())));
    }

    Rows const & rows;
    std::vector<Incoming> links;
    // Where each row's links begin.
    std::vector<std::size_t> firstLinks;
    std::vector<Bounds> bounds;
    std::vector<Times> times;
    // Whether the task, or one below it, moves.
    std::vector<bool> hasMoved;
    // By the row of the task that stores it.
    std::unordered_map<int, CProjectDuration> uncounted;
    std::vector<State> states;
    std::vector<Visit> road;
    Schedule schedule;
};

}  // namespace

Schedule findEarliestStarts(Rows const & rows)
{
    return Scheduler(rows).run();
}

void apply(Schedule & schedule, CLocalRulesChecker & rules)
{
    std::erase_if(schedule.moves,
                  [&](Move const & move)
                  {
                      bool const moved = rules.changeTaskStart(move.task->getID(), move.to);
                      if (!moved) schedule.held.push_back({move.task, move.to, "the rules refuse the start"});
                      return !moved;
                  });
}

bool leavesFinish(CLink const & link)
{
    int const type = link.getType().getEquivalentValue();
    return type == CLinkType::FinishToStart || type == CLinkType::FinishToFinish;
}

bool arrivesAtFinish(CLink const & link)
{
    int const type = link.getType().getEquivalentValue();
    return type == CLinkType::StartToFinish || type == CLinkType::FinishToFinish;
}

char const * nameOfType(CLink const & link)
{
    if (leavesFinish(link)) return arrivesAtFinish(link) ? "finish to finish" : "finish to start";
    return arrivesAtFinish(link) ? "start to finish" : "start to start";
}

}  // namespace orvane::app
