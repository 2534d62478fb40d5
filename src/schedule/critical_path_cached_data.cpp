#include "schedule/critical_path_cached_data.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "config/project_config.h"
#include "model/project.h"

namespace
{

// What the four types of link do to the length of a chain: one that leaves the upstream task's start takes
// off that task's own length, one that arrives at the finish adds nothing of this task's own.
bool leavesStart(int type)
{
    return type == CLinkType::StartToFinish || type == CLinkType::StartToStart;
}

bool arrivesAtStart(int type)
{
    return type == CLinkType::FinishToStart || type == CLinkType::StartToStart;
}

// Finds the longest chain over rows numbered once, each measured once. Chains can be as long as the plan,
// so the walk along them keeps its own stack.
class LongestChain
{
public:
    struct Winner
    {
        CTask const * task = nullptr;
        CProjectDuration duration{0};
        bool withLinks = false;
    };

    explicit LongestChain(CProject const & project) : project(project)
    {
        number(project.getAllTasks());
        links.push_back(none);
        findFeeders(project.getAllTasks());
    }

    Winner find() { return findEnd(project.getAllTasks()); }

    // The links of a measured task's chain, from the earliest to the one that arrives at the task.
    void collectLinks(CTask const & task, CLinkArray & chain) const
    {
        std::vector<CLink const *> backward;
        for (Row const * row = &rowOf(task); row->taken != none; row = &rows[index(links[index(row->taken)])])
            backward.push_back(&row->task->getUpstreamLinks().GetAt(row->taken - row->firstLink));
        for (auto link = backward.rbegin(); link != backward.rend(); ++link) chain.Add(**link);
    }

private:
    static constexpr int none = -1;
    enum class State : char { unseen, onTheWay, measured };

    struct Row
    {
        CTask const * task;
        int firstLink;
        // The place of the chosen link among all links.
        int taken = none;
        State state = State::unseen;
        // Some link leaves the task.
        bool feeds = false;
        CProjectDuration own;
        CProjectDuration length;
    };
    struct Step
    {
        int row;
        int link;
        CProjectDuration longest{0};
    };

    static std::size_t index(int number) { return static_cast<std::size_t>(number); }
    Row & rowOf(CTask const & task) { return rows[index(task.walkMark())]; }
    Row const & rowOf(CTask const & task) const { return rows[index(task.walkMark())]; }
    int firstLink(int row) const { return rows[index(row)].firstLink; }
    int endOfLinks(int row) const
    {
        return index(row) + 1 < rows.size() ? firstLink(row + 1) : static_cast<int>(links.size()) - 1;
    }

    // Every task of the tree becomes a row, and every link a place that later holds its upstream row.
    void number(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            task.setWalkMark(static_cast<int>(rows.size()));
            Row & row = rows.emplace_back(Row{&task, static_cast<int>(links.size())});
            if (task.isValid()) row.own = task.getDurationToEndOfStoredRisk();
            links.resize(links.size() + index(task.getUpstreamLinks().GetSize()), none);
            if (task.getSubTasks()) number(*task.getSubTasks());
        }
    }
    // The links of tasks below a blank task are not collected, but they are followed.
    void findFeeders(CTaskArray const & tasks, bool collected = true)
    {
        for (CTask const & task : tasks)
        {
            int place = rowOf(task).firstLink;
            bool const collects = collected && !task.getID().isNULL() && task.isValid();
            for (CLink const & link : task.getUpstreamLinks())
            {
                CTask const * const upstream = project.getTask(link.getUpstreamTaskID());
                if (upstream && collects) rowOf(*upstream).feeds = true;
                if (upstream && upstream->isValid()) links[index(place)] = upstream->walkMark();
                ++place;
            }
            if (task.getSubTasks()) findFeeders(*task.getSubTasks(), collects);
        }
    }

    Winner findEnd(CTaskArray const & tasks)
    {
        Winner best;
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            Row & row = rowOf(task);
            if (!task.getSubTasks() && row.own >= best.duration) best = {&task, row.own, false};
            if (!task.getUpstreamLinks().IsEmpty() && !row.feeds)
            {
                measure(task.walkMark());
                if (row.length >= best.duration) best = {&task, row.length, true};
            }
            if (task.getSubTasks())
            {
                Winner const below = findEnd(*task.getSubTasks());
                if (below.task && below.duration >= best.duration) best = below;
            }
        }
        return best;
    }

    void measure(int start)
    {
        std::vector<Step> road;
        enter(start, road);
        while (!road.empty())
        {
            Step & step = road.back();
            Row & row = rows[index(step.row)];
            if (step.link == endOfLinks(step.row))
            {
                finish(row, step.longest);
                road.pop_back();
                continue;
            }
            int const upstream = links[index(step.link)];
            if (mustBeMeasuredFirst(upstream)) enter(upstream, road);
            else weigh(row, step, upstream);
        }
    }
    void enter(int row, std::vector<Step> & road)
    {
        if (rows[index(row)].state != State::unseen) return;
        rows[index(row)].state = State::onTheWay;
        road.push_back({row, firstLink(row)});
    }
    bool mustBeMeasuredFirst(int upstream) const
    {
        return upstream != none && hasLinks(upstream) && rows[index(upstream)].state == State::unseen;
    }
    bool hasLinks(int row) const { return firstLink(row) != endOfLinks(row); }

    // A task already on the way, as only links out of a file bring about, counts as missing.
    void weigh(Row & row, Step & step, int upstream)
    {
        int const place = step.link++;
        if (upstream == none || rows[index(upstream)].state == State::onTheWay) return;
        Row const & up = rows[index(upstream)];
        bool const fromStart = leavesStart(typeOf(row, place));
        CProjectDuration length(0);
        if (hasLinks(upstream)) length = fromStart ? up.length - up.own : up.length;
        else if (!fromStart) length = up.own;
        if (length < step.longest) return;
        step.longest = length;
        row.taken = place;
    }
    // Without a link that counts the length stays a not valid zero.
    static void finish(Row & row, CProjectDuration const & longest)
    {
        row.state = State::measured;
        if (row.taken == none) return;
        row.length = arrivesAtStart(typeOf(row, row.taken)) ? row.own + longest : longest;
    }
    static int typeOf(Row const & row, int place)
    {
        return row.task->getUpstreamLinks().GetAt(place - row.firstLink).getType().getEquivalentValue();
    }

    CProject const & project;
    std::vector<Row> rows;
    // For each link, in the order of the rows, the row of its upstream task, or none; one more at the end.
    std::vector<int> links;
};

}  // namespace

void CCriticalPathCachedData::updateFromProject(CProject * source)
{
    if (!CProjectConfig::getShowCriticalPath() || !source) return;
    project = source;
    LongestChain chain(*project);
    LongestChain::Winner const winner = chain.find();
    linksInCriticalPath.RemoveAll();
    if (winner.withLinks) chain.collectLinks(*winner.task, linksInCriticalPath);
    durationOfCriticalPath = winner.duration;
    if (winner.task) endTaskID = winner.task->getID();
    else endTaskID.clear();
    tasksLeft.clear();
    for (CLink const & link : linksInCriticalPath) tasksLeft.insert(link.getUpstreamTaskID().getGUID());
    changed = true;
}

CTask const * CCriticalPathCachedData::getEndTaskInLongestChain() const
{
    return project ? project->getTask(endTaskID) : nullptr;
}

bool CCriticalPathCachedData::isInCriticalPath(CTaskID const & id) const
{
    return !endTaskID.isNULL() && (endTaskID == id || tasksLeft.contains(id.getGUID()));
}

bool CCriticalPathCachedData::isInCriticalPath(CLinkID const & id) const
{
    return !endTaskID.isNULL() && linksInCriticalPath.findByID(id) >= 0;
}

bool CCriticalPathCachedData::hasChildrenInCriticalPath(CTask const & task) const
{
    if (!task.getSubTasks()) return false;
    for (CTask const & child : *task.getSubTasks())
        if (hasChildrenInCriticalPath(child) || isInCriticalPath(child.getID())) return true;
    return false;
}

// ---- description ----------------------------------------------------------------------------------

namespace
{

char const * typeText(CLinkType const & type)
{
    switch (static_cast<int>(type.getEquivalentValue()))
    {
    case CLinkType::FinishToStart: return "Finish To Start";
    case CLinkType::StartToFinish: return "Start To Finish";
    case CLinkType::StartToStart: return "Start To Start";
    case CLinkType::FinishToFinish: return "Finish To Finish";
    default: return "link";
    }
}

CString nameLine(CTask const & task)
{
    CString line;
    line.Format("[%s]", static_cast<char const *>(task.getName()));
    return line;
}

}  // namespace

void CCriticalPathCachedData::getCriticalPathDescription(CStringArray & lines) const
{
    lines.RemoveAll();
    CTask const * task = getEndTaskInLongestChain();
    if (!task) return;
    std::vector<CString> backward{nameLine(*task)};
    for (int each = 0; task && each < linksInCriticalPath.GetSize(); ++each)
    {
        CLink const * taken = nullptr;
        for (CLink const & link : task->getUpstreamLinks())
            if (!taken && isInCriticalPath(link.getID())) taken = &link;
        task = taken ? project->getTask(taken->getUpstreamTaskID()) : nullptr;
        CString line;
        line.Format("%s-%s->", task ? static_cast<char const *>(nameLine(*task)) : "[]", taken ? typeText(taken->getType()) : "link");
        backward.push_back(line);
    }
    for (auto line = backward.rbegin(); line != backward.rend(); ++line) lines.Add(*line);
}

void CCriticalPathCachedData::getCriticalPathDescription(CString &) const
{
}
