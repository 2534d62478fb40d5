#include "pictures/utilisation.h"

#include <map>
#include <unordered_map>

#include "model/project.h"
#include "pictures/canvas.h"
#include "schedule/calendar.h"

namespace orvane::pictures
{
namespace
{

using Band = Utilisation::Band;

// Something that counts while a calendar works, from its start until just before its end.
struct Share
{
    std::int64_t start = 0;
    std::int64_t end = 0;
    CCalendar const * calendar = nullptr;
    std::int64_t percent = 0;  // of a unit
};

struct Block
{
    std::int64_t start;
    std::int64_t end;
};

// The blocks of a day, as minutes of the local clock, in the order of their starts and without overlaps.
void blocksOf(CCalendar const & calendar, std::int64_t day, std::vector<Block> & blocks)
{
    std::int64_t const midnight = day * TimeSteps::day;
    blocks.clear();
    CCalendarDayType const & type = calendar.getDayType(CProjectDate::fromDayNumber(day));
    if (!type.isWorking()) return;
    bool isOrdered = true;
    for (CProjectTimeOfDaySpan const & span : type.getTimeOfDaySpanArray())
    {
        Block const block{midnight + span.getStartMinute(), midnight + span.getEndMinute()};
        if (block.end <= block.start) continue;
        isOrdered = isOrdered && (blocks.empty() || blocks.back().end <= block.start);
        blocks.push_back(block);
    }
    if (isOrdered) return;
    std::ranges::sort(blocks, {}, &Block::start);
    for (std::size_t each = 1; each < blocks.size(); ++each)
        blocks[each].start = std::max(blocks[each].start, blocks[each - 1].end),
        blocks[each].end = std::max(blocks[each].end, blocks[each].start);
}

// Goes through the days in order and tells how much counts on each. Shares are looked at one by one on their first and
// last days; in between only the sums by calendar are.
class DayByDay
{
public:
    explicit DayByDay(std::vector<Share> shares) : shares(std::move(shares))
    {
        for (std::size_t each = 0; each < this->shares.size(); ++each)
        {
            Share const & share = this->shares[each];
            if (share.end <= share.start || share.percent <= 0) continue;
            std::int64_t const first = floorDiv(share.start, TimeSteps::day);
            std::int64_t const last = floorDiv(share.end - 1, TimeSteps::day);
            edges.push_back({first, each});
            if (last == first) continue;
            edges.push_back({last, each});
            if (last == first + 1) continue;
            changes.push_back({first + 1, each, 1});
            changes.push_back({last, each, -1});
        }
        std::ranges::sort(edges, {}, &Edge::day);
        std::ranges::sort(changes, {}, &Change::day);
    }

    // In percent of a unit, on a day after the one asked for before: the most at any minute, or all that works on it.
    std::int64_t on(std::int64_t day, bool isToTheMinute)
    {
        for (; nextChange < changes.size() && changes[nextChange].day <= day; ++nextChange) apply(changes[nextChange]);
        while (nextEdge < edges.size() && edges[nextEdge].day < day) ++nextEdge;
        std::int64_t all = 0;
        steps.clear();
        bool const hasOne = sums.size() == 1 && (nextEdge == edges.size() || edges[nextEdge].day > day);
        for (auto const & [calendar, sum] : sums) all += count({INT64_MIN, INT64_MAX, calendar, sum.percent}, day);
        for (; nextEdge < edges.size() && edges[nextEdge].day == day; ++nextEdge)
            all += count(shares[edges[nextEdge].share], day);
        return isToTheMinute && !hasOne ? peak() : all;
    }

private:
    struct Edge
    {
        std::int64_t day;
        std::size_t share;
    };
    struct Change
    {
        std::int64_t day;
        std::size_t share;
        int sign;
    };
    struct Sum
    {
        std::int64_t percent = 0;
        int shares = 0;
    };
    struct Step
    {
        std::int64_t minute;
        std::int64_t percent;
    };

    void apply(Change const & change)
    {
        Share const & share = shares[change.share];
        Sum & sum = sums[share.calendar];
        sum.percent += change.sign * share.percent;
        sum.shares += change.sign;
        if (sum.shares == 0) sums.erase(share.calendar);
    }
    // All of the share if it works on the day, else nothing.
    std::int64_t count(Share const & share, std::int64_t day)
    {
        bool works = false;
        blocksOf(*share.calendar, day, blocks);
        for (Block const & block : blocks)
        {
            std::int64_t const start = std::max(block.start, share.start), end = std::min(block.end, share.end);
            if (start >= end) continue;
            works = true;
            steps.push_back({start, share.percent});
            steps.push_back({end, -share.percent});
        }
        return works ? share.percent : 0;
    }
    // What ends at a minute makes room for what begins at it.
    std::int64_t peak()
    {
        std::ranges::sort(steps, [](Step const & a, Step const & b)
                          { return std::pair(a.minute, a.percent) < std::pair(b.minute, b.percent); });
        std::int64_t present = 0, most = 0;
        for (Step const & step : steps) most = std::max(most, present += step.percent);
        return most;
    }

    std::vector<Share> shares;
    std::vector<Edge> edges;
    std::vector<Change> changes;
    std::size_t nextEdge = 0, nextChange = 0;
    std::map<CCalendar const *, Sum> sums;
    std::vector<Block> blocks;
    std::vector<Step> steps;
};

// ---- who uses what ----------------------------------------------------------------------------------

// Beyond all minutes that times reach.
constexpr std::int64_t ever = INT32_MAX;

class Assignments
{
public:
    explicit Assignments(CTaskArray const & tasks) { addAll(tasks); }

    std::vector<Share> const * of(CResourceID const & id) const
    {
        auto const found = shares.find(id.getGUID());
        return found == shares.end() ? nullptr : &found->second;
    }
    std::int64_t first = INT64_MAX, last = INT64_MIN;

private:
    void addAll(CTaskArray const & tasks)
    {
        for (CTask const & task : tasks)
        {
            if (!task.isValid()) continue;
            CProjectTime const start = task.getStartTime(), end = task.getEndTime();
            if (start.isValid() && end.isValid()) add(task, start.getLocalMinutes(), end.getLocalMinutes());
            if (task.isSummaryTask()) addAll(*task.getSubTasks());
        }
    }
    void add(CTask const & task, std::int64_t start, std::int64_t end)
    {
        first = std::min(first, start);
        last = std::max(last, std::max(start, end));
        for (CAssignedResource const & assigned : task.getAssignedResources())
            shares[assigned.getResourceID().getGUID()].push_back(
                {start, end, &task.getCalendar(), assigned.getPercentageAssigned()});
    }

    std::unordered_map<_GUID, std::vector<Share>> shares;
};

// The uses and the units behind one band.
struct Pool
{
    std::vector<Share> uses, supplies;
    bool isAssigned = false;  // itself, whatever is below it
    int resources = 0, idle = 0;

    void take(Pool && other)
    {
        uses.insert(uses.end(), other.uses.begin(), other.uses.end());
        supplies.insert(supplies.end(), other.supplies.begin(), other.supplies.end());
        resources += other.resources;
        idle += other.idle;
    }
};

class BandCollector
{
public:
    BandCollector(CProject const & project, UtilisationOptions const & options, Assignments const & assignments)
        : project(project), options(options), assignments(assignments)
    {
        std::array<Pool, CResourceIndex::kinds> ofKind;
        for (CCompany const & company : project.getAllCompanies())
        {
            Pool ofCompany;
            std::size_t kind = 0;
            company.forEachKind(
                [&](auto const & resources)
                {
                    Pool pool = shows(company, kind) ? poolOf(resources, company) : Pool();
                    bool const isCounted = options.by != By::company || kind != materials || isFor(kindModes[kind]);
                    if (!isCounted) pool = {};
                    if (options.by == By::company) ofCompany.take(std::move(pool));
                    else ofKind[kind].take(std::move(pool));
                    ++kind;
                });
            idle += ofCompany.idle;
            if (options.by == By::company && !ofCompany.uses.empty())
                found.push_back(
                    {{.name = drawable(company.getName().view()), .companyID = company.getID()}, std::move(ofCompany)});
        }
        for (std::size_t kind = 0; kind < ofKind.size(); ++kind)
        {
            idle += ofKind[kind].idle;
            if (options.by == By::kind && !ofKind[kind].uses.empty())
                found.push_back({{.name = kindNames[kind], .kind = kindTypes[kind]}, std::move(ofKind[kind])});
        }
    }

    struct Found
    {
        Band band;
        Pool pool;
    };
    std::vector<Found> found;
    int idle = 0;

private:
    using By = UtilisationOptions::By;
    using Whose = CDisplayUtilisationChartFor;
    static constexpr std::size_t materials = CResourceIndex::kindOf<CMaterialResource>();
    static constexpr char const * kindNames[] = {"Equipment", "People", "Places", "Materials"};
    static constexpr CResourceType::CType kindTypes[] = {CResourceType::Equipment, CResourceType::Human,
                                                         CResourceType::Location, CResourceType::Material};
    static constexpr Whose::UTILISATION_MODE kindModes[] = {Whose::AllEquipment, Whose::AllHuman, Whose::AllLocation,
                                                            Whose::AllMaterial};

    bool isFor(Whose::UTILISATION_MODE mode) const { return options.whose == Whose(mode); }
    bool shows(CCompany const & company, std::size_t kind) const
    {
        if (isFor(Whose::SelectedCompany)) return company.getID() == project.getSelectedCompanyID();
        for (auto const mode : kindModes)
            if (isFor(mode)) return mode == kindModes[kind];
        return true;
    }
    bool shows(CResourceBase const & resource) const
    {
        return !isFor(Whose::SelectedResource) || resource.getID() == project.getSelectedResourceID();
    }

    template <class Array>
    Pool poolOf(Array const & resources, CCompany const & company)
    {
        Pool pool;
        for (auto const & resource : resources) pool.take(poolOf(resource, company));
        return pool;
    }
    template <class Resource>
        requires std::derived_from<Resource, CResourceBase> Pool poolOf(Resource const & resource,
                                                                        CCompany const & company)
        {
            std::size_t const place = found.size();
            Pool pool;
            if (resource.getSubResources()) pool = poolOf(*resource.getSubResources(), company);
            else if constexpr (!std::is_same_v<Resource, CMaterialResource>)
                pool.supplies.push_back(supplyOf(resource));
            std::vector<Share> const * const own = assignments.of(resource.getID());
            if (own) pool.uses.insert(pool.uses.end(), own->begin(), own->end());
            if (!shows(resource)) return pool;
            if (!own && !resource.getSubResources()) ++pool.idle;
            bool const isAskedFor = isFor(Whose::SelectedResource);
            if (options.by == By::resource && (own || isAskedFor))
                found.insert(found.begin() + static_cast<std::ptrdiff_t>(place), {bandOf(resource, company), pool});
            return pool;
        }
    template <class Resource>
    static Share supplyOf(Resource const & resource)
    {
        std::int64_t const told = resource.getTotalUnitsAvailable();
        std::int64_t const units = told > 0 ? told : std::max(resource.getUseRatePerDay(), 0);
        CProjectDate const from = resource.getAvailableFrom(), to = resource.getAvailableTo();
        return {from.isValid() ? from.getDayNumber() * TimeSteps::day : -ever,
                to.isValid() ? (to.getDayNumber() + 1) * TimeSteps::day : ever, &resource.getCalendarInUse(),
                units * 100};
    }
    template <class Resource>
    Band bandOf(Resource const & resource, CCompany const & company) const
    {
        bool const hasUnit = !(resource.getResourceUnitType() == CResourceUnitType::Unknown);
        return {.name = drawable(resource.getName().view()),
                .owner = drawable(company.getName().view()),
                .unit = hasUnit ? std::string(CString(resource.getResourceUnitType()).view()) : std::string(),
                .kind = kindTypes[CResourceIndex::kindOf<Resource>()],
                .companyID = company.getID()};
    }

    CProject const & project;
    UtilisationOptions const & options;
    Assignments const & assignments;
};

void tellLoads(Band & band, Pool && pool, TimeSteps const & steps, bool isToTheMinute)
{
    band.isLimited = !pool.supplies.empty();
    DayByDay uses(std::move(pool.uses)), supplies(std::move(pool.supplies));
    band.loads.resize(steps.count);
    for (std::size_t step = 0; step < steps.count; ++step)
    {
        Utilisation::Load & load = band.loads[step];
        for (std::int64_t minute = steps.point(step); minute < steps.point(step + 1); minute += TimeSteps::day)
        {
            std::int64_t const day = floorDiv(minute, TimeSteps::day);
            auto const used = static_cast<double>(uses.on(day, isToTheMinute)) / 100;
            auto const available = static_cast<double>(supplies.on(day, false)) / 100;
            load.used = std::max(load.used, used);
            load.available = std::max(load.available, available);
            bool const isOver = band.isLimited && used > available;
            load.isOver = load.isOver || isOver;
            band.daysOver += isOver;
        }
        band.mostUsed = std::max(band.mostUsed, load.used);
        band.mostAvailable = std::max(band.mostAvailable, load.available);
    }
}

}  // namespace

UtilisationOptions utilisationOptionsOf(CProject const & project)
{
    CResourceUtilisationPresentation const & view = project.getResourceUtilisationPresentation();
    UtilisationOptions options;
    if (view.getDisplayChartFor() == CDisplayChartFor::Choice4) options.by = UtilisationOptions::By::company;
    if (view.getDisplayUtilisationChartFor().isValid()) options.whose = view.getDisplayUtilisationChartFor();
    options.isToTheMinute = view.getEvaluateToTheMinute().getValue();
    return options;
}

Utilisation utilisationOf(CProject const & project, UtilisationOptions const & options, TimeRange const & range)
{
    Assignments const assignments(project.getAllTasks());
    BandCollector collector(project, options, assignments);
    bool const isEmpty = assignments.first > assignments.last;
    std::int64_t const from = range.from.isValid() ? range.from.getLocalMinutes() : isEmpty ? 0 : assignments.first;
    std::int64_t const to = range.to.isValid() ? range.to.getLocalMinutes()
                            : isEmpty          ? from + 4 * TimeSteps::week
                                               : assignments.last;
    Utilisation utilisation;
    utilisation.steps = TimeSteps::covering(from, to, TimeSteps::day);
    utilisation.idle = collector.idle;
    for (auto & [band, pool] : collector.found)
    {
        tellLoads(band, std::move(pool), utilisation.steps, options.isToTheMinute);
        utilisation.bands.push_back(std::move(band));
    }
    return utilisation;
}

}  // namespace orvane::pictures
