#include "schedule/link_network_impl.h"

#include <algorithm>

#include "model/project.h"

namespace orvane
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

}  // namespace

void CLinkNetwork::update(CProject const & project)
{
    CTaskArray const & tasks = project.getAllTasks();
    CForestState const now = tasks.getForestState();
    bool const sameRows = now.rows == state.rows && now.rows != 0;
    bool const sameLinks = sameRows && now.links == state.links;
    state = now;
    if (!sameRows)
    {
        rows.clear();
        addRows(tasks);
        rows.push_back({nullptr});
    }
    if (!sameLinks) idsAreUnique = tasks.hasUniqueIDs();
    readRows(project, !sameLinks);
    if (idsAreUnique) findFeeders();
    else feedNamesakes();
}

void CLinkNetwork::addRows(CTaskArray const & tasks)
{
    for (CTask const & task : tasks)
    {
        std::size_t const number = rows.size();
        rows.push_back({&task});
        if (task.getSubTasks()) addRows(*task.getSubTasks());
        rows[number].end = static_cast<int>(rows.size());
    }
}

void CLinkNetwork::readRows(CProject const & project, bool withLinks)
{
    if (withLinks) links.clear();
    for (int number = 0; number < size(); ++number)
    {
        prefetch(number, withLinks);
        readTask(rows[at(number)]);
        if (withLinks) addLinks(project, number);
    }
    rows.back().firstLink = static_cast<int>(links.size());
}

void CLinkNetwork::readTask(Row & row) const
{
    CTask const & task = *row.task;
    row.isSummary = task.isSummaryTask();
    row.isValid = task.isValid();
    row.own = row.isValid ? static_cast<std::int32_t>(task.getDurationToEndOfStoredRisk().GetTotalSeconds()) : 0;
}

void CLinkNetwork::addLinks(CProject const & project, int number)
{
    rows[at(number)].firstLink = static_cast<int>(links.size());
    for (CLink const & link : row(number).task->getUpstreamLinks())
        links.push_back({findUpstream(project, link, number), link.getType().getEquivalentValue()});
}

// A task is looked for as many rows above as it stood when last seen, before it is looked up.
int CLinkNetwork::findUpstream(CProject const & project, CLink const & link, int number) const
{
    auto const guess = static_cast<int>(std::clamp(long{number} - link.upstreamDistance(), 0L, long{size()} - 1));
    if (idsAreUnique && row(guess).task->getID() == link.getUpstreamTaskID()) return guess;
    CTask const * const task = project.getTask(link.getUpstreamTaskID());
    if (!task) return size();
    int const found = rowOf(*task);
    link.setUpstreamDistance(number - found);
    return found;
}

int CLinkNetwork::rowOf(CTask const & task) const
{
    int const mark = task.walkMark();
    // Another walk has left its own marks since.
    if (mark < 0 || mark >= size() || row(mark).task != &task)
        for (int number = 0; number < size(); ++number) row(number).task->setWalkMark(number);
    return task.walkMark();
}

// What of the tree is collected when the links are: no task below a blank one, or below one without identity.
void CLinkNetwork::findFeeders()
{
    for (Row & row : rows) row.feeds = false;
    for (int number = 0; number < size();)
    {
        if (!row(number).isValid)
        {
            number = row(number).end;
            continue;
        }
        for (int place = row(number).firstLink; place < endOfLinks(number); ++place)
            rows[at(link(place).upstream)].feeds = true;
        ++number;
    }
}

// An identifier that stands twice is that of each of its tasks.
void CLinkNetwork::feedNamesakes()
{
    std::unordered_set<_GUID> upstreamIDs;
    for (int number = 0; number < size();)
    {
        CTask const & task = *row(number).task;
        bool const isCollected = row(number).isValid && !task.getID().isNULL();
        if (isCollected)
            for (CLink const & link : task.getUpstreamLinks()) upstreamIDs.insert(link.getUpstreamTaskID().getGUID());
        number = isCollected ? number + 1 : row(number).end;
    }
    for (int number = 0; number < size(); ++number)
        rows[at(number)].feeds = upstreamIDs.contains(row(number).task->getID().getGUID());
}

// Asks the memory early for tasks, and for their links a little later, when it is known where they are.
void CLinkNetwork::prefetch(int number, bool withLinks) const
{
    constexpr int ahead = 12;
    if (number + ahead >= size()) return;
    row(number + ahead).task->prefetchForChains();
    if (!withLinks) return;
    for (CLink const & link : row(number + ahead / 2).task->getUpstreamLinks())
    {
        __builtin_prefetch(&link.getUpstreamTaskID());
        __builtin_prefetch(&link.getStatus());
    }
}

}  // namespace orvane
