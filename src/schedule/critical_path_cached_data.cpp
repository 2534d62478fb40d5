#include "schedule/critical_path_cached_data.h"

#include <cstdint>
#include <vector>

#include "config/project_config.h"
#include "model/project.h"
#include "schedule/link_network_impl.h"

namespace
{

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

// The longest chain over a network, each task measured once. Chains can be as long as the plan, so the walk
// along them keeps its own stack.
class LongestChain
{
public:
    using Network = orvane::CLinkNetwork;
    static constexpr int none = Network::none;

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
        if (!winner.withLinks) return true;
        for (int row = winner.row; taken(row) != none;)
        {
            Network::Link const & link = network.link(taken(row));
            if (link.type != CLinkType::FinishToFinish) return true;
            row = link.upstream;
            if (!network.hasLinks(row)) return network.row(row).task->getDurationToEndOfStoredRisk().isValid();
        }
        return false;
    }

private:
    // Missing: gone, blank, or already on the way, as only links out of a file bring about.
    enum class State : std::uint8_t { missing, unseen, measured };

    struct Measure
    {
        // The length of the longest chain that ends with the task.
        Seconds length = 0;
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

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    int taken(int row) const { return measures[at(row)].taken; }
    Step firstStep(int row) const { return {row, network.row(row).firstLink}; }

    // In most plans most links come from rows above: one sweep measures the tasks that hang off nothing
    // unmeasured, in whatever order; the others wait until they are asked for.
    void measureIfKnown(int row)
    {
        Measure & measure = measures[at(row)];
        if (!network.row(row).isValid) return;
        if (!network.hasLinks(row))
        {
            measure = {network.row(row).own, none, State::measured};
            return;
        }
        measure.state = State::unseen;
        Step step = firstStep(row);
        while (step.link < network.endOfLinks(row))
        {
            int const upstream = network.link(step.link).upstream;
            if (measures[at(upstream)].state != State::measured && network.row(upstream).isValid) return;
            weigh(step);
        }
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

    void weigh(Step & step)
    {
        int const place = step.link++;
        Network::Link const & link = network.link(place);
        Measure const & upstream = measures[at(link.upstream)];
        if (upstream.state == State::missing) return;
        Seconds length = upstream.length;
        if (leavesStart(link.type))
            length = network.hasLinks(link.upstream) ? wholeMinutes(long{length} - network.row(link.upstream).own) : 0;
        if (length < step.longest) return;
        step.longest = length;
        measures[at(step.row)].taken = place;
    }
    // Without a link that counts the length is zero.
    void finish(Step const & step)
    {
        Measure & measure = measures[at(step.row)];
        measure.state = State::measured;
        if (measure.taken == none) return;
        bool const addsOwn = arrivesAtStart(network.link(measure.taken).type);
        measure.length = addsOwn ? wholeMinutes(long{network.row(step.row).own} + step.longest) : step.longest;
    }

    Network const & network;
    // One more for what is missing.
    std::vector<Measure> measures;
    std::vector<Step> road;
};

}  // namespace

CCriticalPathCachedData::CCriticalPathCachedData() : network(std::make_unique<orvane::CLinkNetwork>()) {}

CCriticalPathCachedData::~CCriticalPathCachedData() = default;

void CCriticalPathCachedData::updateFromProject(CProject * source)
{
    if (!CProjectConfig::getShowCriticalPath() || !source) return;
    project = source;
    network->update(*project);
    LongestChain chain(*network);
    LongestChain::Winner const winner = chain.find();
    std::vector<CLink const *> const backward = chain.linksBackward(winner);
    linksInCriticalPath.RemoveAll();
    linksInCriticalPath.Reserve(static_cast<int>(backward.size()));
    for (auto link = backward.rbegin(); link != backward.rend(); ++link) linksInCriticalPath.Add(**link);
    durationOfCriticalPath = CProjectDuration(winner.length);
    durationOfCriticalPath.setValid(chain.isLengthValid(winner));
    if (winner.row != LongestChain::none) endTaskID = network->row(winner.row).task->getID();
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
        line.Format("%s-%s->", task ? static_cast<char const *>(nameLine(*task)) : "[]",
                    taken ? typeText(taken->getType()) : "link");
        backward.push_back(line);
    }
    for (auto line = backward.rbegin(); line != backward.rend(); ++line) lines.Add(*line);
}

void CCriticalPathCachedData::getCriticalPathDescription(CString &) const {}
