// Where everything of a chart stands.

#include "pictures/gantt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "model/company.h"
#include "model/project.h"
#include "pictures/chart_sheet.h"
#include "pictures/gantt_arrows_impl.h"
#include "schedule/calendar.h"

namespace orvane::pictures
{
namespace
{

using Bar = GanttLayout::Bar;
using Row = GanttLayout::Row;
using Column = GanttLayout::Column;
using Sample = GanttLayout::LegendEntry::Sample;

constexpr double indentOfLevel = 12;
constexpr int mostIndents = 10;
// Narrower shades would only flicker; narrower bars could not be seen.
constexpr double leastShade = 4;
constexpr double leastBar = 1.5;
constexpr int minutesInDay = 24 * 60;

Font const cellFont{.size = 11};

constexpr Color summaryColor{45, 55, 72};
constexpr Color baselineColor{150, 160, 175};
constexpr Color progressColor{20, 26, 36};

// Working time in days of the calendar, or in hours when it is less than one.
std::string durationText(CProjectDuration const & duration, CCalendar const & calendar)
{
    if (!duration.isValid()) return {};
    auto const seconds = static_cast<double>(duration.GetTotalSeconds());
    auto const day = static_cast<double>(calendar.getNormalDay().getWorkingDuration().GetTotalSeconds());
    bool const inDays = day > 0 && seconds >= day;
    char text[64];
    std::snprintf(text, sizeof text, "%.1f", seconds / (inDays ? day : 3600));
    std::string number = text;
    if (number.ends_with(".0")) number.resize(number.size() - 2);
    return number + (inDays ? "d" : "h");
}

// A task whose row is shown.
struct Shown
{
    CTask const * task;
    Row::Kind kind;
    int level;
    std::string number;
    double height;
    CProjectTime start;
    // The ends without risk, and with unmitigated, stored, buffered and mitigated risk.
    std::array<CProjectTime, 5> ends;

    bool hasBar() const { return kind != Row::Kind::blank && start.isValid() && ends.front().isValid(); }
    CProjectTime const & lastEnd() const { return ends.back(); }
};

// ---- which rows -------------------------------------------------------------------------------------

class RowCollector
{
public:
    RowCollector(CProject const & project, GanttOptions::Rows which)
        : project(project), which(which), isFiltered(project.getSelectedFilter() != nullptr)
    {
        collect(project.getAllTasks(), "", 0);
        while (!shown.empty() && isEmpty(shown.back())) shown.pop_back();
    }

    std::vector<Shown> shown;

private:
    static bool isEmpty(Shown const & row) { return row.kind == Row::Kind::blank && row.task->getName().IsEmpty(); }

    void collect(CTaskArray const & tasks, std::string const & prefix, int level)
    {
        int number = 0;
        for (CTask const & task : tasks)
        {
            if (task.isValid()) ++number;
            if (isFiltered && !(task.isValid() && task.isIncludedByFilter())) continue;
            Shown row = describe(task, prefix + std::to_string(number), level);
            // A gap is a gap, however many rows it has.
            if (isEmpty(row) && (shown.empty() || isEmpty(shown.back()))) continue;
            std::string const below = row.number + '.';
            shown.push_back(std::move(row));
            if (showsChildren(task)) collect(*task.getSubTasks(), below, level + 1);
        }
    }

    bool showsChildren(CTask const & task) const
    {
        if (!task.isValid() || !task.isSummaryTask() || which == GanttOptions::Rows::roots) return false;
        return which == GanttOptions::Rows::all || presentationOf(task).getShowChildren().getValue();
    }
    CTaskPresentation presentationOf(CTask const & task) const
    {
        CTaskPresentation const * const found = project.getPresentationData().getTaskPresentations().find(task.getID());
        return found ? *found : CTaskPresentation();
    }

    Shown describe(CTask const & task, std::string number, int level) const
    {
        Row::Kind const kind = !task.isValid()        ? Row::Kind::blank
                               : task.isSummaryTask() ? Row::Kind::summary
                               : task.isKeyDate()     ? Row::Kind::keyDate
                                                      : Row::Kind::task;
        double const height = std::clamp(presentationOf(task).getRowHeight().getValue(), 14, 60);
        Shown row{&task, kind, level, kind == Row::Kind::blank ? std::string() : std::move(number), height, {}, {}};
        if (kind == Row::Kind::blank) return row;
        row.start = task.getStartTime();
        row.ends = endsOf(task, kind);
        return row;
    }
    // Each at least the one before; what risk would add to finished work has happened or not.
    static std::array<CProjectTime, 5> endsOf(CTask const & task, Row::Kind kind)
    {
        std::array<CProjectTime, 5> ends;
        if (kind != Row::Kind::task || task.getStatus() == CTaskStatus::Finished)
        {
            ends.fill(kind == Row::Kind::keyDate ? task.getStartTime() : task.getEndTime());
            return ends;
        }
        ends = {task.getEndExcludingRisk(), task.getEndOfUnmitigatedRisk(), task.getEndOfStoredRisk(),
                task.getEndOfBufferedRisk(), task.getEndOfMitigatedRisk()};
        if (!ends[0].isValid()) ends[0] = task.getEndTime();
        for (std::size_t each = 1; each < ends.size(); ++each)
            if (!ends[each].isValid() || ends[each] < ends[each - 1]) ends[each] = ends[each - 1];
        return ends;
    }

    CProject const & project;
    GanttOptions::Rows which;
    bool isFiltered;
};

// ---- how wide, and which time -----------------------------------------------------------------------

struct Range
{
    CProjectTime from;
    CProjectTime to;
};

CProjectTime moved(CProjectTime const & time, std::int64_t minutes)
{
    return CProjectTime::fromLocalMinutes(time.getLocalMinutes() + minutes);
}

CProjectTime midnight(CProjectTime const & time, int daysLater = 0)
{
    return CProjectTime::fromLocalMinutes((time.getDate().getDayNumber() + daysLater) * minutesInDay);
}

Range rangeOf(std::vector<Shown> const & shown, GanttOptions const & options)
{
    Range range;
    auto const include = [&](CProjectTime const & time)
    {
        if (!time.isValid()) return;
        if (!range.from.isValid() || time < range.from) range.from = time;
        if (!range.to.isValid() || time > range.to) range.to = time;
    };
    for (Shown const & row : shown)
    {
        if (!row.hasBar()) continue;
        include(row.start);
        include(row.lastEnd());
        if (row.task->isBaselineSet()) include(row.task->getBaselineStart()), include(row.task->getBaselineFinish());
    }
    bool const isKnown = range.from.isValid();
    if (!isKnown) include(options.now.isValid() ? options.now : CProjectTime::GetTickCount());
    std::int64_t const span = range.to.getLocalMinutes() - range.from.getLocalMinutes();
    std::int64_t const room = isKnown ? std::max<std::int64_t>(span / 40, minutesInDay / 2) : 28 * minutesInDay;
    range.from = options.from.isValid() ? options.from : midnight(moved(range.from, isKnown ? -room : 0));
    range.to = options.to.isValid() ? options.to : midnight(moved(range.to, room), 1);
    // One end alone may lie beyond the plan.
    if (!options.to.isValid() && range.to <= range.from) range.to = moved(range.from, 28 * minutesInDay);
    if (!options.from.isValid() && range.to <= range.from) range.from = moved(range.to, -28 * minutesInDay);
    return range;
}

// The clock time of a task in the middle of all by length.
double usualLength(std::vector<Shown> const & shown)
{
    std::vector<std::int64_t> lengths;
    for (Shown const & row : shown)
        if (row.kind == Row::Kind::task && row.hasBar())
            lengths.push_back(row.ends[2].getLocalMinutes() - row.start.getLocalMinutes());
    if (lengths.empty()) return 5 * minutesInDay;
    auto const middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return static_cast<double>(std::max<std::int64_t>(*middle, 1));
}

double chartWidthFor(Range const & range, std::vector<Shown> const & shown, GanttOptions const & options, double table)
{
    constexpr double leastChart = 100;
    bool const isWide = options.width >= GanttOptions::leastWidth && options.width <= GanttOptions::mostWidth;
    if (options.width != 0 && !isWide) throw std::invalid_argument("the width of a chart is from 400 to 100000");
    double const span = static_cast<double>(range.to.getLocalMinutes() - range.from.getLocalMinutes());
    constexpr double readableBar = 14;
    double const wish = std::clamp(span * readableBar / usualLength(shown), 800.0, 2400.0);
    if (options.pageWidth == 0) return options.width > 0 ? std::max(options.width - table, leastChart) : wish;
    double const page = std::max(options.pageWidth - table, leastChart);
    double const chart = options.width > 0 ? options.width - table : wish;
    // A further page is worth while for more than a little.
    return page * std::max(std::ceil(chart / page - 0.5), 1.0);
}

// ---- the chart --------------------------------------------------------------------------------------

class GanttBuilder
{
public:
    GanttBuilder(CProject const & project, GanttOptions const & options)
        : project(project),
          options(options),
          shown(std::move(RowCollector(project, options.rows).shown)),
          table(makeColumns()),
          layout(makeLayout())
    {
    }

    GanttLayout build()
    {
        writeTitle();
        addRows();
        for (std::size_t row = 0; row < shown.size(); ++row) addBars(row);
        if (options.showsLinks) addArrows();
        addShades();
        addMoments();
        addLegend();
        return std::move(layout);
    }

private:
    // ---- the columns ----
    std::vector<Column> makeColumns() const
    {
        using Content = Column::Content;
        double number = 0, name = 0;
        for (Shown const & row : shown)
        {
            number = std::max(number, textWidth(row.number, cellFont));
            name = std::max(name, nameWidth(row));
        }
        auto const limit = [](int setting, double least, double most)
        { return std::clamp(static_cast<double>(setting), least, most); };
        double const mostNumber = limit(CProjectConfig::getTaskListIndexColumnWidth(), 30, 100) + 20;
        double const mostName = limit(CProjectConfig::getTaskListNameColumnWidth(), 120, 600);
        number = std::clamp(number + 2 * Column::padding, 30.0, mostNumber);
        name = std::clamp(name + 2 * Column::padding, 120.0, mostName);
        std::vector<Column> columns{{Content::number, "No.", 0, number, Align::left},
                                    {Content::name, "Task", 0, name, Align::left},
                                    {Content::duration, "Duration", 0, 62, Align::right},
                                    {Content::start, "Start", 0, 86, Align::right},
                                    {Content::finish, "Finish", 0, 86, Align::right}};
        fitColumns(columns);
        double left = 0;
        for (Column & column : columns) left = (column.left = left) + column.width;
        return columns;
    }
    // On a narrow page names give way first, and then the columns behind them.
    void fitColumns(std::vector<Column> & columns) const
    {
        double const room = options.pageWidth > 0 ? options.pageWidth * 0.42
                            : options.width > 0   ? options.width * 0.45
                                                  : 1e9;
        Column & name = columns[1];
        auto const total = [&]
        {
            double sum = 0;
            for (Column const & column : columns) sum += column.width;
            return sum;
        };
        while (columns.size() > 2 && total() - name.width + 160 > room) columns.erase(columns.begin() + 2);
        name.width = std::clamp(name.width, 80.0, std::max(room - (total() - name.width), 80.0));
    }
    static double indentOf(int level) { return std::min(level, mostIndents) * indentOfLevel; }
    static Font nameFont(Row::Kind kind) { return {.size = cellFont.size, .isBold = kind == Row::Kind::summary}; }
    static double nameWidth(Shown const & row)
    {
        return indentOf(row.level) + textWidth(drawable(row.task->getName().view()), nameFont(row.kind));
    }

    GanttLayout makeLayout() const
    {
        double const width = table.back().left + table.back().width;
        Range const range = rangeOf(shown, options);
        if (range.to <= range.from) throw std::invalid_argument("the end of the chart is not after its start");
        TimeScale scale(range.from, range.to, chartWidthFor(range, shown, options, width));
        return {{}, {}, std::move(scale), width, table, {}, {}, {}, {}, {}, {}, {}};
    }

    void writeTitle()
    {
        layout.title = chartTitle(project);
        auto const tasks = std::ranges::count_if(shown, [](Shown const & row) { return row.kind != Row::Kind::blank; });
        layout.subtitle = dateText(layout.scale.from()) + " – " + dateText(moved(layout.scale.to(), -1)) + ", " +
                          std::to_string(tasks) + (tasks == 1 ? " row" : " rows");
        if (options.now.isValid()) layout.subtitle += ", as of " + dateText(options.now);
    }

    // ---- the rows ----
    void addRows()
    {
        double top = 0;
        for (Shown const & row : shown)
        {
            layout.rows.push_back(
                {row.task->getID(), row.kind, row.level, indentOf(row.level), top, row.height, cellsOf(row)});
            top += row.height;
        }
    }
    std::vector<std::string> cellsOf(Shown const & row) const
    {
        std::vector<std::string> cells;
        for (Column const & column : table)
        {
            bool const isName = column.content == Column::Content::name;
            double const room = column.width - 2 * Column::padding - (isName ? indentOf(row.level) : 0);
            cells.push_back(fitted(contentOf(row, column.content), room, isName ? nameFont(row.kind) : cellFont));
        }
        return cells;
    }
    static std::string contentOf(Shown const & row, Column::Content content)
    {
        if (content == Column::Content::name) return std::string(row.task->getName().view());
        if (row.kind == Row::Kind::blank) return {};
        if (content == Column::Content::number) return row.number;
        if (content == Column::Content::start) return dateText(row.start);
        if (content == Column::Content::finish) return dateText(row.ends[2]);
        if (row.kind == Row::Kind::keyDate) return {};
        return durationText(row.task->getDuration(), row.task->getCalendar());
    }

    // ---- the bars ----
    // Nothing outside the time shown, and nothing too thin to be seen.
    void addBar(std::size_t row, Bar::Kind kind, CProjectTime const & from, CProjectTime const & to, Color color)
    {
        if (!from.isValid() || !to.isValid() || to < from) return;
        double const width = layout.scale.width();
        double left = layout.scale.x(from), right = layout.scale.x(to);
        if (right < 0 || left > width) return;
        bool const isDiamond = kind == Bar::Kind::keyDate || kind == Bar::Kind::baselineKeyDate;
        left = std::max(left, 0.0);
        right = isDiamond ? left : std::min(std::max(right, left + leastBar), width);
        layout.bars.push_back({row, kind, left, right, color});
    }

    void addBars(std::size_t at)
    {
        Shown const & row = shown[at];
        if (!row.hasBar()) return;
        if (row.kind == Row::Kind::keyDate) addKeyDate(at);
        else if (row.kind == Row::Kind::summary) addBar(at, Bar::Kind::summary, row.start, row.lastEnd(), summaryColor);
        else addTask(at);
        if (row.task->isBaselineSet() && row.kind != Row::Kind::keyDate)
            addBar(at, Bar::Kind::baseline, row.task->getBaselineStart(), row.task->getBaselineFinish(), baselineColor);
    }
    void addKeyDate(std::size_t at)
    {
        Shown const & row = shown[at];
        if (row.task->isBaselineSet())
            addBar(at, Bar::Kind::baselineKeyDate, row.task->getBaselineStart(), row.task->getBaselineStart(),
                   baselineColor);
        std::size_t const before = layout.bars.size();
        addBar(at, Bar::Kind::keyDate, row.start, row.start, statusColor(*row.task));
        if (layout.bars.size() == before) return;
        Bar const diamond = layout.bars.back();
        if (project.isInCriticalPath(row.task->getID()))
            layout.bars.push_back({at, Bar::Kind::critical, diamond.left, diamond.left, black});
        std::string const date = dateText(row.start), day = date.substr(0, date.rfind(' '));
        double const behind = diamond.left + GanttLayout::Note::gap;
        bool const isBefore = behind + textWidth(day, GanttLayout::Note::font) > layout.scale.width();
        layout.notes.push_back({at, isBefore ? diamond.left - GanttLayout::Note::gap : behind, day, isBefore});
    }
    void addTask(std::size_t at)
    {
        Shown const & row = shown[at];
        CTask const & task = *row.task;
        addBar(at, Bar::Kind::task, row.start, row.ends[0], statusColor(task));
        struct Risk
        {
            Bar::Kind kind;
            int (*setting)();
        };
        constexpr Risk risks[] = {{Bar::Kind::unmitigatedRisk, CProjectConfig::getGanttUnmitigatedRiskColor},
                                  {Bar::Kind::storedRisk, CProjectConfig::getGanttStoredRiskColor},
                                  {Bar::Kind::bufferedRisk, CProjectConfig::getGanttBufferedRiskColor},
                                  {Bar::Kind::mitigatedRisk, CProjectConfig::getGanttMitigatedRiskColor}};
        for (std::size_t each = 0; each < std::size(risks); ++each)
            if (row.ends[each] < row.ends[each + 1])
                addBar(at, risks[each].kind, row.ends[each], row.ends[each + 1],
                       Color::ofNumber(risks[each].setting()));
        if (project.isInCriticalPath(task.getID())) addBar(at, Bar::Kind::critical, row.start, row.ends[2], black);
        if (!task.isOpen()) addProgress(at);
    }
    void addProgress(std::size_t at)
    {
        CTask const & task = *shown[at].task;
        if (task.getStatus() == CTaskStatus::Started && task.getPercentComplete() > 0)
            addBar(at, Bar::Kind::progress, shown[at].start, task.getTimeOfPercentCompletePoint(), progressColor);
        CProjectTime const planned = task.getPlannedEndTime(), end = task.getEndTime();
        if (!planned.isValid() || !end.isValid()) return;
        if (end > planned && CProjectConfig::getGanttShowLateness())
            addBar(at, Bar::Kind::late, planned, end, Color::ofNumber(CProjectConfig::getLatenessColor()));
        if (end < planned && CProjectConfig::getGanttShowEarlyness())
            addBar(at, Bar::Kind::early, end, planned, Color::ofNumber(CProjectConfig::getEarlynessColor()));
    }

    // That of the status, or of the company whose resource comes first, as the settings tell.
    Color statusColor(CTask const & task) const
    {
        if (CProjectConfig::getGanttUseCompanyColors())
            for (CAssignedResource const & assigned : task.getAssignedResources())
                if (CCompany const * const company = project.getParentCompany(assigned.getResourceID()))
                    return Color::ofNumber(static_cast<long>(static_cast<unsigned long>(company->getColor())));
        return Color::ofNumber(static_cast<long>(CProjectConstants::getColor(task.getStatus())));
    }

    // ---- the arrows ----
    void addArrows()
    {
        std::unordered_map<_GUID, std::size_t> rowOf;
        for (std::size_t row = 0; row < shown.size(); ++row)
            if (shown[row].hasBar()) rowOf.emplace(shown[row].task->getID().getGUID(), row);
        std::unordered_set<_GUID> critical;
        for (CLink const & link : project.getCriticalPath().getLinksInCriticalPath())
            critical.insert(link.getID().getGUID());
        std::vector<Covered> const covered = coveredByBars();
        for (std::size_t row = 0; row < shown.size(); ++row)
        {
            if (!shown[row].hasBar()) continue;
            for (CLink const & link : shown[row].task->getUpstreamLinks())
            {
                auto const upstream = rowOf.find(link.getUpstreamTaskID().getGUID());
                if (upstream == rowOf.end() || upstream->second == row) continue;
                addArrow(link, upstream->second, row, covered, critical.contains(link.getID().getGUID()));
            }
        }
        // What matters most is drawn last.
        std::stable_partition(layout.arrows.begin(), layout.arrows.end(),
                              [](auto const & arrow) { return !arrow.isCritical; });
    }
    std::vector<Covered> coveredByBars() const
    {
        std::vector<Covered> covered(shown.size());
        for (Bar const & bar : layout.bars)
        {
            // Brackets of summary tasks span what is below them: no way leads round.
            if (bar.kind == Bar::Kind::summary) continue;
            Covered & row = covered[bar.row];
            bool const isFirst = row.right < row.left;
            row.left = isFirst ? bar.left : std::min(row.left, bar.left);
            row.right = isFirst ? bar.right : std::max(row.right, bar.right);
        }
        return covered;
    }
    void addArrow(CLink const & link, std::size_t upstream, std::size_t downstream,
                  std::vector<Covered> const & covered, bool isCritical)
    {
        int const type = link.getType().getEquivalentValue();
        ArrowEnd const from = endOf(upstream, type == CLinkType::FinishToStart || type == CLinkType::FinishToFinish);
        ArrowEnd const to = endOf(downstream, type == CLinkType::StartToFinish || type == CLinkType::FinishToFinish);
        double const width = layout.scale.width();
        if (std::max(from.x, to.x) < 0 || std::min(from.x, to.x) > width) return;
        layout.arrows.push_back({upstream, downstream, isCritical, routeArrow(layout.rows, covered, from, to)});
    }
    // Links count with the ends of stored risk.
    ArrowEnd endOf(std::size_t at, bool isFinish) const
    {
        constexpr double beyond = 20;
        Shown const & row = shown[at];
        double const left = layout.scale.x(row.start);
        double const right =
            row.kind == Row::Kind::keyDate ? left : std::max(layout.scale.x(row.ends[2]), left + leastBar);
        return {at, std::clamp(isFinish ? right : left, -beyond, layout.scale.width() + beyond), isFinish,
                right - left};
    }

    // ---- behind and across the bars ----
    void addShade(std::int64_t fromMinute, std::int64_t toMinute, Color color)
    {
        double const left = std::max(layout.scale.xOfMinute(fromMinute), 0.0);
        double const right = std::min(layout.scale.xOfMinute(toMinute), layout.scale.width());
        if (right - left >= leastShade) layout.shades.push_back({left, right, color});
    }
    void addShades()
    {
        constexpr double readableHours = 72;
        double const day = layout.scale.widthOfDay();
        if (!CProjectConfig::getGanttShowHolidays() || day < leastShade / 30) return;
        Color const color = Color::ofBackground(CProjectConfig::getGanttNonWorkingDayColor());
        std::int64_t const last = layout.scale.to().getDate().getDayNumber();
        std::int64_t freeSince = -1;
        bool isFree = false;
        for (std::int64_t each = layout.scale.from().getDate().getDayNumber(); each <= last; ++each)
        {
            CCalendarDayType const & type = project.getProjectCalendar().getDayType(CProjectDate::fromDayNumber(each));
            if (!type.isWorking() && !isFree) freeSince = each;
            if (type.isWorking() && isFree) addShade(freeSince * minutesInDay, each * minutesInDay, color);
            isFree = !type.isWorking();
            if (!isFree && day >= readableHours) addHoursWithoutWork(each * minutesInDay, type);
        }
        if (isFree) addShade(freeSince * minutesInDay, (last + 1) * minutesInDay, color);
    }
    void addHoursWithoutWork(std::int64_t midnightMinute, CCalendarDayType const & type)
    {
        Color const color = Color::ofNumber(CProjectConfig::getGanttNonWorkingTimeOfDayColor());
        int worked = 0;
        for (CProjectTimeOfDaySpan const & block : type.getTimeOfDaySpanArray())
        {
            addShade(midnightMinute + worked, midnightMinute + block.getStartMinute(), color);
            worked = std::max(worked, block.getEndMinute());
        }
        addShade(midnightMinute + worked, midnightMinute + minutesInDay, color);
    }

    void addMoment(CProjectTime const & time, double width, bool isFocus, int setting)
    {
        double const x = layout.scale.x(time);
        if (time.isValid() && x >= 0 && x <= layout.scale.width())
            layout.moments.push_back({x, width, isFocus, Color::ofNumber(setting)});
    }
    void addMoments()
    {
        constexpr double apart = 2;
        CProjectTime const & focus = project.getGanttPresentation().getFocussedTime();
        bool const isNow =
            options.now.isValid() && std::abs(layout.scale.x(focus) - layout.scale.x(options.now)) < apart;
        if (!isNow) addMoment(focus, 1.5, true, CProjectConfig::getFocussedTimeColor());
        addMoment(options.now, CProjectConfig::getGanttCurrentTimeThick() ? 2 : 1, false,
                  CProjectConfig::getCurrentTimeColor());
    }

    // ---- the legend ----
    // What occurs in the chart, once each.
    void addLegend()
    {
        if (CProjectConfig::getGanttUseCompanyColors()) addCompanies();
        else addStatuses();
        struct Meaning
        {
            Bar::Kind kind;
            char const * text;
        };
        constexpr Meaning meanings[] = {{Bar::Kind::summary, "Summary"},
                                        {Bar::Kind::keyDate, "Key date"},
                                        {Bar::Kind::progress, "Done"},
                                        {Bar::Kind::unmitigatedRisk, "Unmitigated risk"},
                                        {Bar::Kind::storedRisk, "Stored risk"},
                                        {Bar::Kind::bufferedRisk, "Buffered risk"},
                                        {Bar::Kind::mitigatedRisk, "Mitigated risk"},
                                        {Bar::Kind::late, "Later than planned"},
                                        {Bar::Kind::early, "Earlier than planned"},
                                        {Bar::Kind::baseline, "Baseline"}};
        for (auto const & [kind, text] : meanings)
        {
            auto const bar = std::ranges::find(layout.bars, kind, &Bar::kind);
            if (bar != layout.bars.end()) layout.legend.push_back({text, bar->color, kind, Sample::bar});
        }
        if (!layout.arrows.empty()) layout.legend.push_back({"Link", black, {}, Sample::link});
        if (std::ranges::find(layout.bars, Bar::Kind::critical, &Bar::kind) != layout.bars.end())
            layout.legend.push_back({"Critical path", black, {}, Sample::criticalLink});
        if (!layout.shades.empty())
            layout.legend.push_back({"Not worked", layout.shades.front().color, {}, Sample::shade});
        for (auto const & moment : layout.moments)
            layout.legend.push_back({moment.isFocus ? "Focussed time" : "Today",
                                     moment.color,
                                     {},
                                     moment.isFocus ? Sample::focus : Sample::now});
    }
    void addStatuses()
    {
        for (int number = CTaskStatus::Hold; number <= CTaskStatus::Finished; ++number)
        {
            CTaskStatus const status{static_cast<CTaskStatus::TASK_STATUS>(number)};
            bool const occurs = std::ranges::any_of(
                shown, [&](Shown const & row)
                { return row.hasBar() && row.kind != Row::Kind::summary && row.task->getStatus() == status; });
            if (occurs)
                layout.legend.push_back({std::string(status.getString().view()),
                                         Color::ofNumber(static_cast<long>(CProjectConstants::getColor(status))),
                                         Bar::Kind::task, Sample::bar});
        }
    }
    void addCompanies()
    {
        constexpr double mostWidth = 120;
        for (CCompany const & company : project.getAllCompanies())
        {
            Color const color = Color::ofNumber(static_cast<long>(static_cast<unsigned long>(company.getColor())));
            bool const occurs = std::ranges::any_of(layout.bars, [&](Bar const & bar)
                                                    { return bar.kind == Bar::Kind::task && bar.color == color; });
            if (occurs)
                layout.legend.push_back(
                    {fitted(company.getName().view(), mostWidth, {}), color, Bar::Kind::task, Sample::bar});
        }
    }

    CProject const & project;
    GanttOptions const & options;
    std::vector<Shown> shown;
    std::vector<Column> table;
    GanttLayout layout;
};

}  // namespace

// Bars stand a little above the middle, so that a baseline fits beneath.
double GanttLayout::Row::barHeight() const
{
    return std::min(11.0, height * 0.55);
}

double GanttLayout::Row::barTop() const
{
    return top + (height - 3 - barHeight()) / 2;
}

GanttLayout layOutGantt(CProject const & project, GanttOptions const & options)
{
    return GanttBuilder(project, options).build();
}

}  // namespace orvane::pictures
