#include "schedule/critical_path_cached_data.h"

#include <cstdint>
#include <vector>

#include "config/project_config.h"
#include "model/project.h"

namespace
{

constexpr int none = -1;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

// Working time in seconds, which adds up as durations do: it stops at the ends of 32 bits and is cut to
// whole minutes.
using Seconds = std::int32_t;

Seconds wholeMinutes(long seconds)
{
    auto const kept = orvane::saturate<Seconds>(seconds);
    return kept - kept % 60;
}

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

// The tasks of a project in the order of the tree and their links, as plain numbers side by side: tasks and
// links lie far apart in memory, and each is read once.
class Network
{
public:
    struct Row
    {
        CTask const * task;
        // The row behind everything below the task.
        int end = none;
        // The place of its first link among all links.
        int firstLink = none;
        Seconds own = 0;
        bool isValid = false;
        bool isSummary = false;
        // Some link leaves the task.
        bool feeds = false;
    };
    struct Link
    {
        // The row of the upstream task; the row behind the last when it is missing.
        int upstream;
        int type;
    };

    explicit Network(CProject const & project) : project(project), idsAreUnique(project.getAllTasks().hasUniqueIDs())
    {
        addRows(project.getAllTasks());
        missing = static_cast<int>(rows.size());
        rows.push_back({nullptr});
        addLinks();
        rows.back().firstLink = static_cast<int>(links.size());
        if (!idsAreUnique) feedNamesakes();
    }

    int size() const { return missing; }
    Row const & row(int number) const { return rows[at(number)]; }
    Link const & link(int place) const { return links[at(place)]; }
    int endOfLinks(int number) const { return rows[at(number) + 1].firstLink; }
    bool hasLinks(int number) const { return row(number).firstLink != endOfLinks(number); }
    CLink const & recordOf(int number, int place) const
    {
        return row(number).task->getUpstreamLinks().GetAt(place - row(number).firstLink);
    }

private:
    void addRows(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            int const number = static_cast<int>(rows.size());
            rows.push_back({&task});
            if (task.walkMark() != number) task.setWalkMark(number);
            if (task.getSubTasks()) addRows(*task.getSubTasks());
            rows[at(number)].end = static_cast<int>(rows.size());
        }
    }

    // The links of tasks below a blank task are followed, but do not count as leaving their upstream tasks.
    void addLinks()
    {
        int collectedFrom = 0;
        for (int number = 0; number < missing; ++number)
        {
            prefetch(number);
            Row & row = rows[at(number)];
            CTask const & task = *row.task;
            row.firstLink = static_cast<int>(links.size());
            row.isSummary = task.getSubTasks() != nullptr;
            row.isValid = task.isValid();
            if (row.isValid) row.own = static_cast<Seconds>(task.getDurationToEndOfStoredRisk().GetTotalSeconds());
            if (!row.isValid || task.getID().isNULL()) collectedFrom = std::max(collectedFrom, row.end);
            for (CLink const & link : task.getUpstreamLinks())
            {
                int const upstream = findUpstream(link, number);
                links.push_back({upstream, link.getType().getEquivalentValue()});
                if (number < collectedFrom) continue;
                rows[at(upstream)].feeds = true;
                if (!idsAreUnique) upstreamIDs.insert(link.getUpstreamTaskID().getGUID());
            }
        }
    }
    // A task is looked for as many rows above as it stood when last seen, before it is looked up.
    int findUpstream(CLink const & link, int number) const
    {
        int const guess = number - link.upstreamDistance();
        if (idsAreUnique && guess >= 0 && guess < missing && rows[at(guess)].task->getID().getGUID() == link.getUpstreamTaskID().getGUID())
            return guess;
        CTask const * const task = project.getTask(link.getUpstreamTaskID());
        if (!task) return missing;
        link.setUpstreamDistance(number - task->walkMark());
        return task->walkMark();
    }
    // An identifier that stands twice is that of each of its tasks.
    void feedNamesakes()
    {
        for (int number = 0; number < missing; ++number)
            rows[at(number)].feeds = upstreamIDs.contains(rows[at(number)].task->getID().getGUID());
    }
    void prefetch(int number) const
    {
        constexpr int ahead = 12;
        if (number + ahead >= missing) return;
        CTask const & far = *rows[at(number + ahead)].task;
        __builtin_prefetch(&far.getID());
        __builtin_prefetch(&far.getUpstreamLinks());
        CLinkArray const & near = rows[at(number + ahead / 2)].task->getUpstreamLinks();
        if (near.IsEmpty()) return;
        __builtin_prefetch(&near.GetAt(0).getUpstreamTaskID());
        __builtin_prefetch(&near.GetAt(0).getStatus());
    }

    CProject const & project;
    bool const idsAreUnique;
    int missing = 0;
    std::vector<Row> rows;
    std::vector<Link> links;
    std::unordered_set<_GUID> upstreamIDs;
};

// The longest chain over a network, each task measured once. Chains can be as long as the plan, so the walk
// along them keeps its own stack.
class LongestChain
{
public:
    struct Winner
    {
        int row = none;
        Seconds length = 0;
        bool withLinks = false;
    };

    explicit LongestChain(Network const & network) : network(network), measures(at(network.size()) + 1)
    {
        for (int row = 0; row < network.size(); ++row) measureIfKnown(row);
    }

    Winner find() { return findEnd(0, network.size()); }

    // The links of the winner's chain, from the last to the first.
    std::vector<CLink const *> linksBackward(Winner const & winner) const
    {
        std::vector<CLink const *> links;
        if (!winner.withLinks) return links;
        for (int row = winner.row; taken(row) != none; row = network.link(taken(row)).upstream)
            links.push_back(&network.recordOf(row, taken(row)));
        return links;
    }

    // Whether a duration would call the length valid: a sum is, one that is passed on from finish to finish is
    // what it was, and that of a chain without a link that counts is not.
    bool isLengthValid(Winner const & winner) const
    {
        int row = winner.row;
        while (winner.withLinks && taken(row) != none)
        {
            Network::Link const & link = network.link(taken(row));
            if (link.type != CLinkType::FinishToFinish) return true;
            row = link.upstream;
            if (!network.hasLinks(row)) return network.row(row).task->getDurationToEndOfStoredRisk().isValid();
        }
        return !winner.withLinks;
    }

private:
    // Missing: a task that is gone or blank, or already on the way, as only links out of a file bring about.
    enum class State : std::uint8_t { missing, unseen, measured };

    struct Measure
    {
        // What links from the task's finish and from its start pass on.
        Seconds toFinish = 0;
        Seconds toStart = 0;
        // The place of the chosen link, or none.
        int taken = none;
        State state = State::missing;
    };
    struct Step
    {
        int row;
        int link;
        Seconds longest = 0;
    };

    int taken(int row) const { return measures[at(row)].taken; }

    // In most plans most links come from rows above: one sweep measures these, and leaves those for later
    // whose chains are not all known.
    void measureIfKnown(int row)
    {
        Measure & measure = measures[at(row)];
        if (!network.row(row).isValid) return;
        if (!network.hasLinks(row))
        {
            measure = {network.row(row).own, 0, none, State::measured};
            return;
        }
        measure.state = State::unseen;
        Step step = firstStep(row);
        for (int link = step.link; link < network.endOfLinks(row); ++link)
        {
            int const upstream = network.link(link).upstream;
            if (network.row(upstream).isValid && measures[at(upstream)].state != State::measured) return;
        }
        while (step.link < network.endOfLinks(row)) weigh(step);
        finish(step);
    }

    Winner findEnd(int row, int end)
    {
        Winner best;
        for (; row < end; row = network.row(row).end)
        {
            Network::Row const & task = network.row(row);
            if (!task.isValid) continue;
            if (!task.isSummary && task.own >= best.length) best = {row, task.own, false};
            if (!task.feeds && network.hasLinks(row))
            {
                measure(row);
                Seconds const length = measures[at(row)].toFinish;
                if (length >= best.length) best = {row, length, true};
            }
            if (!task.isSummary) continue;
            Winner const below = findEnd(row + 1, task.end);
            if (below.row != none && below.length >= best.length) best = below;
        }
        return best;
    }

    void measure(int start)
    {
        enter(start);
        while (!road.empty())
        {
            Step & step = road.back();
            if (step.link == network.endOfLinks(step.row))
            {
                finish(step);
                road.pop_back();
            }
            else if (!enter(network.link(step.link).upstream)) weigh(step);
        }
    }
    // Whether the row has to be measured first, and now is on the way.
    bool enter(int row)
    {
        if (measures[at(row)].state != State::unseen) return false;
        measures[at(row)].state = State::missing;
        road.push_back(firstStep(row));
        return true;
    }
    Step firstStep(int row) const { return {row, network.row(row).firstLink}; }

    void weigh(Step & step)
    {
        int const place = step.link++;
        Network::Link const & link = network.link(place);
        Measure const & upstream = measures[at(link.upstream)];
        if (upstream.state == State::missing) return;
        Seconds const length = leavesStart(link.type) ? upstream.toStart : upstream.toFinish;
        if (length < step.longest) return;
        step.longest = length;
        measures[at(step.row)].taken = place;
    }
    // Without a link that counts the length is zero.
    void finish(Step const & step)
    {
        Measure & measure = measures[at(step.row)];
        Seconds const own = network.row(step.row).own;
        if (measure.taken != none)
            measure.toFinish = arrivesAtStart(network.link(measure.taken).type) ? wholeMinutes(long{own} + step.longest) : step.longest;
        measure.toStart = wholeMinutes(long{measure.toFinish} - own);
        measure.state = State::measured;
    }

    Network const & network;
    // One more for what is missing.
    std::vector<Measure> measures;
    std::vector<Step> road;
};

}  // namespace

void CCriticalPathCachedData::updateFromProject(CProject * source)
{
    if (!CProjectConfig::getShowCriticalPath() || !source) return;
    project = source;
    Network const network(*project);
    LongestChain chain(network);
    LongestChain::Winner const winner = chain.find();
    std::vector<CLink const *> const backward = chain.linksBackward(winner);
    linksInCriticalPath.RemoveAll();
    linksInCriticalPath.Reserve(static_cast<int>(backward.size()));
    for (auto link = backward.rbegin(); link != backward.rend(); ++link) linksInCriticalPath.Add(**link);
    durationOfCriticalPath = CProjectDuration(winner.length);
    durationOfCriticalPath.setValid(chain.isLengthValid(winner));
    if (winner.row != none) endTaskID = network.row(winner.row).task->getID();
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
