#include "schedule/stored_risk.h"

#include <utility>

#include "model/project.h"

namespace orvane
{

void CStoredRisk::beginPass(CTaskArray & roots)
{
    std::uint64_t const nowRows = roots.getForestState().rows;
    std::uint64_t const nowCopies = CTaskCachedData::copiesOfStoredRisk();
    bool const holds = rows == nowRows && copies == nowCopies && !addedBetweenPasses;
    if (holds)
        for (Placement const & each : placed) each.buffer->resetCachedData();
    else if (CTaskCachedData::anyStoresRisk())
        for (int each = 0; each < roots.GetSize(); ++each) roots.elementForPass(each).resetAllCachedData();
    replays = holds && !repeats;
    if (!replays)
    {
        placed.clear();
        seen.clear();
        repeats = false;
    }
    rows = nowRows;
    copies = nowCopies;
    addedBetweenPasses = false;
    turn = 0;
    next.clear();
    diverged = false;
    inPass = true;
}

void CStoredRisk::endPass()
{
    if (diverged) placed = std::move(next);
    next.clear();
    inPass = false;
}

bool CStoredRisk::place(CTask & task, bool changed)
{
    if (!inPass) return placeUnseen(task, changed), false;
    std::size_t const first = turn;
    while (turn < placed.size() && placed[turn].source == &task) ++turn;
    auto const old = [&](auto const & visit) {
        for (std::size_t each = first; each < turn; ++each) visit(placed[each]);
    };
    if (replays && !changed)
    {
        old([this](Placement const & each) {
            if (!repeats || counts(each)) take(each);
        });
        return true;
    }
    if (!diverged)
    {
        next.assign(placed.begin(), placed.begin() + static_cast<std::ptrdiff_t>(first));
        diverged = true;
    }
    if (!repeats) old([this](Placement const & each) { seen.erase(keyOf(each)); });
    readPlacements(task, [this](Placement const & each) {
        if (counts(each)) take(each);
    });
    return true;
}

// An assignment that no buffer is found for places nothing.
template <class Take>
void CStoredRisk::readPlacements(CTask const & task, Take const & take) const
{
    for (CAssignedRisk const & assigned : task.getAssignedRisks())
    {
        if (!(assigned.getStatus() == CRiskStatus::Buffered)) continue;
        auto * const buffer = const_cast<CTask *>(task.getProject()->getTask(assigned.getBufferID()));
        if (!buffer) continue;
        long const seconds = assigned.getReportModifiedValueFixed(task).GetTotalSeconds();
        take({&task, buffer, buffer->getID().getGUID(), assigned.getID().getGUID(), seconds});
    }
}

void CStoredRisk::take(Placement const & placement)
{
    placement.buffer->storeRisk(CProjectDuration(placement.seconds));
    if (diverged) next.push_back(placement);
}

bool CStoredRisk::counts(Placement const & placement)
{
    if (seen.insert(keyOf(placement)).second) return true;
    if (repeats) return false;
    // The other one may come later in this pass: then this is the one that counts.
    repeats = true;
    seen.clear();
    for (Placement const & each : next) seen.insert(keyOf(each));
    return seen.insert(keyOf(placement)).second;
}

void CStoredRisk::placeUnseen(CTask const & task, bool changed)
{
    // The last pass has counted all that an unchanged task has to place.
    if (!changed && rows == task.getProject()->getAllTasks().getForestState().rows) return;
    readPlacements(task, [this](Placement const & each) {
        if (!seen.insert(keyOf(each)).second) return;
        each.buffer->storeRisk(CProjectDuration(each.seconds));
        addedBetweenPasses = true;
    });
}

}  // namespace orvane
