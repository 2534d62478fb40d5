#include "schedule/stored_risk.h"

#include <utility>

#include "model/project.h"

namespace orvane
{

void CStoredRisk::forget()
{
    placed.clear();
    seen.clear();
    seenIsExact = true;
    repeats = false;
    rows = 0;
}

// ---- the pass -------------------------------------------------------------------------------------

void CStoredRisk::beginPass(CTaskArray & roots)
{
    std::uint64_t const nowRows = roots.getForestState().rows;
    std::uint64_t const nowCopies = CTaskCachedData::copiesOfStoredRisk();
    sameRows = rows == nowRows;
    if (sameRows && copies == nowCopies && !addedBetweenPasses)
    {
        for (Placement const & each : placed)
            if (each.buffer) each.buffer->resetCachedData();
    }
    else if (CTaskCachedData::anyStoresRisk())
    {
        for (int each = 0; each < roots.GetSize(); ++each) roots.elementForPass(each).resetAllCachedData();
    }
    replays = !repeats;
    if (repeats) forget();
    rows = nowRows;
    copies = nowCopies;
    seenIsExact = seenIsExact && sameRows && !addedBetweenPasses;
    addedBetweenPasses = false;
    turn = 0;
    next.clear();
    buffers.clear();
    diverged = !sameRows;
    places.clear();
    for (std::size_t first = 0; !sameRows && first < placed.size();)
    {
        std::size_t last = first;
        while (last < placed.size() && placed[last].source == placed[first].source) ++last;
        places[placed[first].source] = {first, last};
        first = last;
    }
    inPass = true;
}

void CStoredRisk::endPass()
{
    if (diverged) placed = std::move(next);
    next.clear();
    inPass = false;
}

// A task that stands where one was that is gone is new, and read.
CStoredRisk::Range CStoredRisk::rangeOf(CTask const & task)
{
    if (!sameRows)
    {
        auto const found = places.find(&task);
        return found == places.end() ? Range{0, 0} : found->second;
    }
    std::size_t const first = turn;
    while (turn < placed.size() && placed[turn].source == &task) ++turn;
    return {first, turn};
}

void CStoredRisk::diverge(std::size_t upTo)
{
    if (diverged) return;
    next.assign(placed.begin(), placed.begin() + static_cast<std::ptrdiff_t>(upTo));
    diverged = true;
}

bool CStoredRisk::place(CTask & task, bool changed)
{
    if (!inPass) return placeUnseen(task, changed), false;
    auto const [first, last] = rangeOf(task);
    if (replays && !changed)
    {
        for (std::size_t each = first; each < last; ++each) replay(placed[each]);
        return true;
    }
    diverge(first);
    for (std::size_t each = first; replays && !repeats && each < last; ++each) seen.erase(keyOf(placed[each]));
    for (CAssignedRisk const & assigned : task.getAssignedRisks()) read(task, assigned);
    return true;
}

void CStoredRisk::replay(Placement placement)
{
    bool const wasThere = placement.buffer;
    if (!sameRows)
    {
        CTaskID id{orvane::nullID};
        id.setGUID(placement.bufferID);
        placement.buffer = findBuffer(*placement.source, id);
    }
    bool const isCounted = !placement.buffer || (wasThere && !repeats) || counts(placement);
    if (isCounted) take(placement);
}

void CStoredRisk::read(CTask const & task, CAssignedRisk const & assigned)
{
    if (!(assigned.getStatus() == CRiskStatus::Buffered)) return;
    CTask * const buffer = findBuffer(task, assigned.getBufferID());
    long const seconds = assigned.getReportModifiedValueFixed(task).GetTotalSeconds();
    Placement const placement{&task, buffer, assigned.getBufferID().getGUID(), assigned.getID().getGUID(), seconds};
    if (!buffer || counts(placement)) take(placement);
}

// Many tasks share few buffers.
CTask * CStoredRisk::findBuffer(CTask const & task, CTaskID const & id)
{
    auto const [known, fresh] = buffers.try_emplace(id.getGUID(), nullptr);
    if (fresh) known->second = const_cast<CTask *>(task.getProject()->getTask(id));
    return known->second;
}

void CStoredRisk::take(Placement const & placement)
{
    if (placement.buffer) placement.buffer->storeRisk(CProjectDuration(placement.seconds));
    if (diverged) next.push_back(placement);
}

bool CStoredRisk::counts(Placement const & placement)
{
    if (seen.insert(keyOf(placement)).second) return true;
    if (repeats) return false;
    // The other one may be gone, or come later in this pass: then this is the one that counts.
    repeats = true;
    seen.clear();
    for (Placement const & each : next)
        if (each.buffer) seen.insert(keyOf(each));
    return seen.insert(keyOf(placement)).second;
}

// ---- between passes -------------------------------------------------------------------------------

void CStoredRisk::placeUnseen(CTask const & task, bool changed)
{
    // The last pass has counted all that an unchanged task has to place.
    if (!changed && rows == task.getProject()->getAllTasks().getForestState().rows) return;
    if (!seenIsExact)
    {
        seen.clear();
        for (Placement const & each : placed)
            if (each.buffer) seen.insert(keyOf(each));
        seenIsExact = true;
    }
    for (CAssignedRisk const & assigned : task.getAssignedRisks())
    {
        if (!(assigned.getStatus() == CRiskStatus::Buffered)) continue;
        auto * const buffer = const_cast<CTask *>(task.getProject()->getTask(assigned.getBufferID()));
        if (!buffer || !seen.insert({buffer->getID().getGUID(), assigned.getID().getGUID()}).second) continue;
        buffer->storeRisk(assigned.getReportModifiedValueFixed(task));
        addedBetweenPasses = true;
    }
}

}  // namespace orvane
