// The walks over links that start at one task. Chains of links can be as long as the plan, so every walk
// keeps its own stack.

#include "model/task.h"

#include <unordered_map>
#include <vector>

#include "model/project.h"
#include "model/task_array.h"

namespace
{

enum class Colour { white, grey, black };

}  // namespace

// Each task is entered once: one found not to lead there on one road leads there on none. A task that is
// already on the road counts as missing, and a missing task ends the walk of the task that names it.
bool CTask::isUpstream(CTaskID const & other) const
{
    if (!project) return false;
    struct Step
    {
        CTask const * task;
        int link;
    };
    std::unordered_map<CTask const *, Colour> colours{{this, Colour::grey}};
    std::vector<Step> road{{this, 0}};
    while (!road.empty())
    {
        CTask const & task = *road.back().task;
        int const link = road.back().link++;
        CTask const * upstream = nullptr;
        bool ended = link == task.getUpstreamLinks().GetSize();
        if (!ended)
        {
            CTaskID const & id = task.getUpstreamLinks().GetAt(link).getUpstreamTaskID();
            if (id == other) return true;
            upstream = project->getTask(id);
            ended = !upstream || colours[upstream] == Colour::grey;
        }
        if (ended)
        {
            colours[&task] = Colour::black;
            road.pop_back();
        }
        else if (colours[upstream] == Colour::white)
        {
            colours[upstream] = Colour::grey;
            road.push_back({upstream, 0});
        }
    }
    return false;
}

namespace
{

// The question whether a cycle can be reached from a task, over a graph in which a task leads to the
// upstream tasks of every link of its family: its own, those of its ancestors from the parent upward,
// those of its descendants. A family is cut at the first link whose upstream task is missing.
//
// Families overlap, so they are not written out. Each task stands for three nodes: itself, `above` with
// the links of itself and its ancestors, `below` with those of its descendants. A cycle over these nodes
// passes a task and is a cycle over tasks, and the other way round, and their edges are as many as the
// links and the children.
class CircularSearch
{
public:
    explicit CircularSearch(CProject const & project) : project(project) {}

    bool reachesCycleFrom(CTask const & start)
    {
        startID = &start.getID();
        push({&start, self});
        while (!road.empty())
        {
            Visit & visit = road.back();
            if (visit.next == visit.successors.size())
            {
                colours[visit.node] = Colour::black;
                road.pop_back();
                continue;
            }
            Node const node = visit.successors[visit.next++];
            Colour const colour = colours[node];
            if (colour == Colour::grey) return true;
            if (node.kind == self && node.task != &start && node.task->getID() == *startID) return true;
            if (colour == Colour::white) push(node);
        }
        return false;
    }

private:
    enum Kind { self, above, below };
    struct Node
    {
        CTask const * task;
        Kind kind;
        bool operator==(Node const &) const = default;
    };
    struct Hash
    {
        std::size_t operator()(Node const & node) const { return std::hash<CTask const *>()(node.task) * 3 + node.kind; }
    };
    struct Visit
    {
        Node node;
        std::vector<Node> successors;
        std::size_t next = 0;
    };

    void push(Node const & node)
    {
        colours[node] = Colour::grey;
        road.push_back({node, successorsOf(node)});
    }

    std::vector<Node> successorsOf(Node const & node)
    {
        std::vector<Node> successors;
        switch (node.kind)
        {
        case self:
            if (addLinks(*node.task, successors) && addAbove(*node.task, successors)) addBelow(*node.task, successors);
            break;
        case above:
            if (addLinks(*node.task, successors)) addAbove(*node.task, successors);
            break;
        case below:
            for (CTask const & child : *node.task->getSubTasks())
                if (!addLinks(child, successors) || !addBelow(child, successors)) break;
            break;
        }
        return successors;
    }
    // Each answers whether the family goes on behind it.
    bool addLinks(CTask const & task, std::vector<Node> & successors) const
    {
        for (CLink const & link : task.getUpstreamLinks())
        {
            CTask const * const upstream = project.getTask(link.getUpstreamTaskID());
            if (!upstream) return false;
            successors.push_back({upstream, self});
        }
        return true;
    }
    bool addAbove(CTask const & task, std::vector<Node> & successors)
    {
        CTask const * const parent = task.getParentOfLastPass();
        if (!parent) return true;
        successors.push_back({parent, above});
        return isWhole(*parent, above);
    }
    bool addBelow(CTask const & task, std::vector<Node> & successors)
    {
        if (!task.getSubTasks()) return true;
        successors.push_back({&task, below});
        return isWhole(task, below);
    }
    // Whether no link of that part of the family is missing its upstream task.
    bool isWhole(CTask const & task, Kind kind)
    {
        auto const [known, fresh] = whole.try_emplace({&task, kind}, true);
        if (!fresh) return known->second;
        bool answer = true;
        if (kind == above)
        {
            CTask const * const parent = task.getParentOfLastPass();
            answer = hasWholeLinks(task) && (!parent || isWhole(*parent, above));
        }
        else
        {
            for (CTask const & child : *task.getSubTasks())
                answer = answer && hasWholeLinks(child) && (!child.getSubTasks() || isWhole(child, below));
        }
        return whole[{&task, kind}] = answer;
    }
    bool hasWholeLinks(CTask const & task) const
    {
        for (CLink const & link : task.getUpstreamLinks())
            if (!project.getTask(link.getUpstreamTaskID())) return false;
        return true;
    }

    CProject const & project;
    CTaskID const * startID = nullptr;
    std::vector<Visit> road;
    std::unordered_map<Node, Colour, Hash> colours;
    std::unordered_map<Node, bool, Hash> whole;
};

}  // namespace

bool CTask::isInCircularChain() const
{
    return project && CircularSearch(*project).reachesCycleFrom(*this);
}
