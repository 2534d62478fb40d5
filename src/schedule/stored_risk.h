#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/guid.h"

class CAssignedRisk;
class CTask;
class CTaskArray;
class CTaskID;

namespace orvane
{

// The time that buffered risks place in buffer tasks.
//
// The derived pass over a whole plan forgets all of it, and each task, as its turn comes, children before
// parents, places its buffered risks anew: what a summary task makes of a buffer below it is what stands there
// when the summary is computed. Between passes only risks that no pass has counted are added.
//
// What the last pass placed is kept, so that tasks that did not change are not read again: in the order of the
// tasks while the rows stay, and by task when rows came, went or moved.
class CStoredRisk
{
public:
    CStoredRisk() = default;
    // Says nothing about the tasks of another plan.
    CStoredRisk(CStoredRisk const &) {}
    CStoredRisk & operator=(CStoredRisk const &)
    {
        forget();
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
    // One buffered risk. The buffer is null while there is no task of that identifier.
    struct Placement
    {
        CTask const * source;
        CTask * buffer;
        _GUID bufferID;
        _GUID riskID;
        long seconds;
    };
    struct Range
    {
        std::size_t first;
        std::size_t last;
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
    void forget();
    Range rangeOf(CTask const & task);
    void diverge(std::size_t upTo);
    CTask * findBuffer(CTask const & task, CTaskID const & id);
    void replay(Placement placement);
    void read(CTask const & task, CAssignedRisk const & assigned);
    void take(Placement const & placement);
    bool counts(Placement const & placement);
    void placeUnseen(CTask const & task, bool changed);

    // What the last pass placed, and how far this pass has come in it.
    std::vector<Placement> placed;
    std::size_t turn = 0;
    // Where each task's placements stand, when they no longer stand in the order of the tasks.
    std::unordered_map<CTask const *, Range> places;
    // What this pass placed, once that is something else.
    std::vector<Placement> next;
    std::unordered_map<_GUID, CTask *> buffers;
    bool inPass = false;
    bool diverged = false;
    bool sameRows = false;
    bool replays = false;
    // How the plan stood at the last pass: its rows, and what else changed what is stored since.
    std::uint64_t rows = 0;
    std::uint64_t copies = 0;
    bool addedBetweenPasses = false;
    // Whom the buffers have counted; of tasks that are gone, too, unless it is exact. As a rule no assignment stands
    // twice; where one does, every placement is checked.
    std::unordered_set<Key, HashKey> seen;
    bool seenIsExact = true;
    bool repeats = false;
};

}  // namespace orvane
