#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "platform/guid.h"

class CTask;
class CTaskArray;

namespace orvane
{

// The time that buffered risks place in buffer tasks.
//
// The derived pass over a whole plan forgets all of it, and each task, as its turn comes, children before
// parents, places its buffered risks anew: what a summary task makes of a buffer below it is what stands there
// when the summary is computed. Between passes only risks that no pass has counted are added. What the last
// pass placed is kept in its order, so that tasks that did not change are not looked at again.
class CStoredRisk
{
public:
    CStoredRisk() = default;
    // Says nothing about the tasks of another plan.
    CStoredRisk(CStoredRisk const &) {}
    CStoredRisk & operator=(CStoredRisk const &)
    {
        rows = 0;
        return *this;
    }

    // Whether a pass has anything to forget or to place.
    bool isInUse() const { return !placed.empty(); }

    void beginPass(CTaskArray & roots);
    void endPass();
    // The turn of one task that has buffered risks, or had some; `changed` when they are to be read anew. Whether a pass
    // is under way.
    bool place(CTask & task, bool changed);

private:
    struct Placement
    {
        CTask const * source;
        CTask * buffer;
        _GUID bufferID;
        _GUID riskID;
        long seconds;
    };
    // A buffer counts a risk once.
    struct Key
    {
        _GUID buffer;
        _GUID risk;
        bool operator==(Key const &) const = default;
    };
    struct HashKey
    {
        std::size_t operator()(Key const & key) const
        {
            return std::hash<_GUID>()(key.buffer) * 31 + std::hash<_GUID>()(key.risk);
        }
    };

    static Key keyOf(Placement const & placement) { return {placement.bufferID, placement.riskID}; }
    template <class Take>
    void readPlacements(CTask const & task, Take const & take) const;
    void take(Placement const & placement);
    bool counts(Placement const & placement);
    void placeUnseen(CTask const & task, bool changed);

    // What the last pass placed, in the order of the tasks, and how far this pass has come in it.
    std::vector<Placement> placed;
    std::size_t turn = 0;
    // What this pass placed, once that is something else.
    std::vector<Placement> next;
    bool diverged = false;
    bool inPass = false;
    // Whether the last pass holds for tasks that did not change: the same rows, and nothing stored but by it.
    bool replays = false;
    std::uint64_t rows = 0;
    std::uint64_t copies = 0;
    bool addedBetweenPasses = false;
    // Whom the buffers have counted. As a rule no assignment stands twice; where one does, every placement is
    // checked.
    std::unordered_set<Key, HashKey> seen;
    bool repeats = false;
};

}  // namespace orvane
