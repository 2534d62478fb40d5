#pragma once

#include <cstddef>
#include <vector>

class CProject;
class CTask;

namespace orvane
{

// The question whether a circle can be reached from a task, when a task leads to the upstream tasks of every
// link of its family: its own, those of its ancestors from the parent upward, those of its descendants. A
// family is cut at the first link whose upstream task is missing. Parents are those of the last derived pass.
//
// Families overlap, so they are not written out. Each task stands for three nodes: itself, `above` with the
// links of itself and its ancestors, `below` with those of itself and its descendants. A circle over these
// nodes passes a task and is a circle over tasks, and the other way round, and their edges are as many as the
// links and the children. What a search costs depends on what it sees, not on the size of the plan, and what
// it saw for one task it does not look at again for the next; the plan must not change meanwhile.
class CCircularSearch
{
public:
    explicit CCircularSearch(CProject const & project) : project(project) {}

    bool reachesCircleFrom(CTask const & start);

private:
    enum class Colour : char { white, grey, black };
    // Which part of the family of a task a node stands for.
    enum Part { whole, above, below };
    struct Seen
    {
        CTask const * task;
        Colour colours[3] = {};
        // A link with a missing upstream task ends the part, and what would come after it.
        bool isCut[3] = {};
    };
    struct Visit
    {
        std::size_t place;
        CTask const * task;
        Part part;
        bool parentDone;
        bool isCut = false;
        int link = 0;
        int child = 0;
    };

    // The place among the tasks seen.
    std::size_t placeOf(CTask const & task);
    CTask const * followLink(Visit & visit) const;
    static CTask const * takeParent(Visit & visit);
    static CTask const * takeChild(Visit & visit);
    // Whether the node is on the road already.
    bool enter(CTask const & task, Part part);
    void push(std::size_t place, Part part);
    void leave();

    CProject const & project;
    std::vector<Seen> seen;
    std::vector<Visit> road;
};

}  // namespace orvane
