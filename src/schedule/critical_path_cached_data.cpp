#include "schedule/critical_path_cached_data.h"

#include <algorithm>
#include <bit>
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
// links lie apart in memory, and each is read once.
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
        // The upstream row, or none.
        int upstream;
        int type;
    };

    explicit Network(CProject const & project)
    {
        addRows(project.getAllTasks());
        findRows(project);
        addLinks();
        rows.push_back({nullptr, none, static_cast<int>(links.size())});
        if (hasDoubledIDs) feedNamesakes();
    }

    int size() const { return static_cast<int>(rows.size()) - 1; }
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
            std::size_t const number = rows.size();
            rows.push_back({&task});
            ids.push_back(task.getID().getGUID());
            if (task.getSubTasks()) addRows(*task.getSubTasks());
            rows[number].end = static_cast<int>(rows.size());
        }
    }

    // ---- rows by identifier: open addressing, at most half full --------------------------------

    void findRows(CProject const & project)
    {
        table.assign(std::bit_ceil(2 * rows.size() + 1), none);
        for (int number = 0; number < static_cast<int>(rows.size()); ++number)
        {
            int & known = placeOf(ids[at(number)]);
            if (known == none) known = number;
            else hasDoubledIDs = true;
        }
        if (hasDoubledIDs) settleNamesakes(project);
    }
    int & placeOf(_GUID const & id)
    {
        std::size_t const mask = table.size() - 1;
        std::size_t place = std::hash<_GUID>()(id) & mask;
        while (table[place] != none && !(ids[at(table[place])] == id)) place = (place + 1) & mask;
        return table[place];
    }
    // Of tasks with one identifier, links mean the one that the project finds.
    void settleNamesakes(CProject const & project)
    {
        for (int number = 0; number < static_cast<int>(rows.size()); ++number) rows[at(number)].task->setWalkMark(number);
        for (Row const & row : rows)
            if (CTask const * const found = project.getTask(row.task->getID())) placeOf(found->getID().getGUID()) = found->walkMark();
    }
    void feedNamesakes()
    {
        for (std::size_t number = 0; number < ids.size(); ++number) rows[number].feeds |= rows[at(placeOf(ids[number]))].feeds;
    }

    // ---- links ---------------------------------------------------------------------------------

    // The links of tasks below a blank task are followed, but do not count as leaving their upstream tasks.
    void addLinks()
    {
        int notCollected = 0;
        for (int number = 0; number < static_cast<int>(rows.size()); ++number)
        {
            prefetch(number);
            Row & row = rows[at(number)];
            CTask const & task = *row.task;
            row.firstLink = static_cast<int>(links.size());
            row.isSummary = task.getSubTasks() != nullptr;
            row.isValid = task.isValid();
            if (row.isValid) row.own = static_cast<Seconds>(task.getDurationToEndOfStoredRisk().GetTotalSeconds());
            if (!row.isValid || ids[at(number)] == _GUID{}) notCollected = std::max(notCollected, row.end);
            for (CLink const & link : task.getUpstreamLinks())
            {
                _GUID const & id = link.getUpstreamTaskID().getGUID();
                int const upstream = placeOf(id);
                if (upstream != none && number >= notCollected) rows[at(upstream)].feeds = true;
                links.push_back({id == _GUID{} ? none : upstream, link.getType().getEquivalentValue()});
            }
        }
    }
    void prefetch(int number) const
    {
        constexpr std::size_t ahead = 8;
        std::size_t const far = at(number) + ahead;
        if (far < rows.size())
        {
            char const * const task = reinterpret_cast<char const *>(rows[far].task);
            for (int line = 0; line < 8; ++line) __builtin_prefetch(task + line * 64);
        }
        std::size_t const near = at(number) + ahead / 2;
        if (near < rows.size() && !rows[near].task->getUpstreamLinks().IsEmpty())
        {
            char const * const link = reinterpret_cast<char const *>(&rows[near].task->getUpstreamLinks().GetAt(0));
            __builtin_prefetch(link);
            __builtin_prefetch(link + 64);
        }
    }

    std::vector<Row> rows;
    std::vector<_GUID> ids;
    std::vector<Link> links;
    std::vector<int> table;
    bool hasDoubledIDs = false;
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

    explicit LongestChain(Network const & network) : network(network), measures(at(network.size())) {}

    Winner find() { return findEnd(0, network.size()); }

    // The row of the winner's own task, or that of each task of its chain, from the last to the first.
    template <class Visit>
    void forLinksBackward(Winner const & winner, Visit const & visit) const
    {
        for (int row = winner.row; measures[at(row)].taken != none; row = network.link(measures[at(row)].taken).upstream)
            visit(network.recordOf(row, measures[at(row)].taken));
    }

    // Whether a chain's length is a number that a duration would call valid: a sum is, what is passed on along
    // links from finish to finish is what it was, and a chain without any link that counts has none.
    bool isLengthValid(Winner const & winner) const
    {
        int row = winner.row;
        while (measures[at(row)].taken != none)
        {
            Network::Link const & link = network.link(measures[at(row)].taken);
            if (link.type != CLinkType::FinishToFinish) return true;
            row = link.upstream;
            if (!network.hasLinks(row)) return network.row(row).task->getDurationToEndOfStoredRisk().isValid();
        }
        return false;
    }

private:
    enum class State : std::uint8_t { unseen, onTheWay, measured };

    struct Measure
    {
        Seconds length = 0;
        // The place of the chosen link, or none.
        int taken = none;
        State state = State::unseen;
    };
    struct Step
    {
        int row;
        int link;
        Seconds longest = 0;
    };

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
                Seconds const length = measures[at(row)].length;
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
                continue;
            }
            int const upstream = network.link(step.link).upstream;
            if (mustBeMeasuredFirst(upstream)) enter(upstream);
            else weigh(step, upstream);
        }
    }
    void enter(int row)
    {
        if (measures[at(row)].state != State::unseen) return;
        measures[at(row)].state = State::onTheWay;
        road.push_back({row, network.row(row).firstLink});
    }
    bool mustBeMeasuredFirst(int upstream) const
    {
        return upstream != none && measures[at(upstream)].state == State::unseen && network.row(upstream).isValid &&
               network.hasLinks(upstream);
    }

    // A task already on the way, as only links out of a file bring about, counts as missing.
    void weigh(Step & step, int upstream)
    {
        int const place = step.link++;
        if (upstream == none || !network.row(upstream).isValid || measures[at(upstream)].state == State::onTheWay) return;
        Seconds const own = network.row(upstream).own;
        Seconds const up = measures[at(upstream)].length;
        bool const fromStart = leavesStart(network.link(place).type);
        Seconds length = 0;
        if (network.hasLinks(upstream)) length = fromStart ? wholeMinutes(long{up} - own) : up;
        else if (!fromStart) length = own;
        if (length < step.longest) return;
        step.longest = length;
        measures[at(step.row)].taken = place;
    }
    // Without a link that counts the length stays zero.
    void finish(Step const & step)
    {
        Measure & measured = measures[at(step.row)];
        measured.state = State::measured;
        if (measured.taken == none) return;
        bool const addsOwn = arrivesAtStart(network.link(measured.taken).type);
        measured.length = addsOwn ? wholeMinutes(long{network.row(step.row).own} + step.longest) : step.longest;
    }

    Network const & network;
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
    std::vector<CLink const *> backward;
    if (winner.withLinks) chain.forLinksBackward(winner, [&](CLink const & link) { backward.push_back(&link); });
    linksInCriticalPath.RemoveAll();
    linksInCriticalPath.Reserve(static_cast<int>(backward.size()));
    for (auto link = backward.rbegin(); link != backward.rend(); ++link) linksInCriticalPath.Add(**link);
    durationOfCriticalPath = CProjectDuration(winner.length);
    if (winner.withLinks && !chain.isLengthValid(winner)) durationOfCriticalPath = CProjectDuration();
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
