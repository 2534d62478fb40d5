// How the chart of the use of resources looks.

#include "pictures/chart.h"

#include <cmath>
#include <functional>
#include <stdexcept>

#include "config/project_config.h"
#include "model/project.h"
#include "pictures/chart_axis.h"
#include "pictures/chart_sheet.h"

namespace orvane::pictures
{
namespace
{

using Band = Utilisation::Band;
using Load = Utilisation::Load;

constexpr double bandHeight = 58, plotTop = 7, plotFoot = 5, namesWidth = 190, axisWidth = 40;
constexpr double chartLeft = namesWidth + axisWidth, bandsSpace = 6;
constexpr Color availableColor{226, 231, 238};

Color ofNumber(unsigned long number)
{
    return Color::ofNumber(static_cast<long>(number));
}

// Loads that are alike, one after the other.
struct Run
{
    double left, right;
    Load load;
};

struct KindInk
{
    CResourceType::CType kind;
    char const * text;
    int (*setting)();
};
constexpr KindInk kindInks[] = {
    {CResourceType::Equipment, "Equipment in use", CProjectConfig::getEquipmentResourceColor},
    {CResourceType::Human, "People in use", CProjectConfig::getHumanResourceColor},
    {CResourceType::Location, "Places in use", CProjectConfig::getLocationResourceColor},
    {CResourceType::Material, "Materials in use", CProjectConfig::getMaterialResourceColor}};

class BandDrawing
{
public:
    BandDrawing(CProject const & project, Utilisation const & utilisation, UtilisationOptions const & what,
                ChartOptions const & options, double width, Canvas & canvas)
        : project(project),
          utilisation(utilisation),
          what(what),
          now(options.now),
          scale(scaleOf(utilisation.steps, options.range, std::max(width - chartLeft, 50.0))),
          canvas(canvas),
          hasLines(project.getResourceUtilisationPresentation().getChartType() == CChartType::Type2),
          hasCompanyColors(CProjectConfig::getDisplayResourceWithCompanyColor() ||
                           what.by == UtilisationOptions::By::company)
    {
    }

    double width() const { return chartLeft + scale.width(); }
    // An empty chart has room to say so.
    double heightOf(std::size_t bands) const
    {
        return rulerHeight() + bandHeight * static_cast<double>(std::max<std::size_t>(bands, 1));
    }

    void drawTitle(Point const & at) const
    {
        std::string text = dateText(scale.from()) + " – " + dateText(scale.to());
        if (utilisation.idle > 0 && what.by == UtilisationOptions::By::resource)
            text += ", without " + std::to_string(utilisation.idle) + " unused";
        if (now.isValid()) text += ", as of " + dateText(now);
        pictures::drawTitle(canvas, at, width(), chartTitle(project) + ": use of resources", text);
    }

    void drawBands(Point const & at, std::size_t first, std::size_t last) const
    {
        double const height = heightOf(last - first), left = at.x + chartLeft, top = at.y + rulerHeight();
        canvas.box({at.x, at.y, chartLeft, rulerHeight()}, {.fill = rulerBackground()});
        char const * const heading = what.by == UtilisationOptions::By::resource  ? "Resource"
                                     : what.by == UtilisationOptions::By::company ? "Company"
                                                                                  : "Kind";
        Font const bold{.size = 10, .isBold = true, .color = rulerInk()};
        canvas.text({at.x + 6, top - 6}, heading, bold);
        canvas.text({left - 6, top - 6}, "Units",
                    {.size = 10, .isBold = true, .color = rulerInk(), .align = Align::right});
        canvas.enter({left, at.y, scale.width(), height}, {left, at.y});
        drawRuler(canvas, scale, 0, scale.width());
        if (isNowSeen()) drawFlag(canvas, scale.x(now), nowColor());
        canvas.leave();
        for (std::size_t each = first; each < last; ++each)
        {
            double const bandTop = top + bandHeight * static_cast<double>(each - first);
            drawNames({at.x, bandTop}, utilisation.bands[each]);
            canvas.enter({left, bandTop, scale.width(), bandHeight}, {left, bandTop});
            drawBand(utilisation.bands[each]);
            canvas.leave();
            drawLine(canvas, {at.x, bandTop + bandHeight}, {at.x + width(), bandTop + bandHeight}, gridColor(0.75),
                     0.6);
        }
        if (first == last) canvas.text({at.x + 6, top + 20}, emptyText(), {.size = 11, .color = faintInk});
        double const nowX = left + scale.x(now);
        if (isNowSeen())
            drawLine(canvas, {nowX, top}, {nowX, at.y + height}, nowColor(),
                     CProjectConfig::getGanttCurrentTimeThick() ? 2 : 1);
        canvas.box({at.x, at.y, chartLeft, height}, {.line = frameColor, .lineWidth = 0.8});
        canvas.box({left, at.y, scale.width(), height}, {.line = frameColor, .lineWidth = 0.8});
    }

    // In as many lines as it takes; nothing is drawn when it is only measured. Answers the height.
    double legend(Point const & at, bool isDrawn) const
    {
        LegendLines lines(isDrawn ? &canvas : nullptr, at, width());
        auto const filled = [&](Color color)
        {
            return [this, color](Box const & room)
            { canvas.box({room.left, room.top + 3, room.width, room.height - 6}, {.fill = color, .line = mixed(color, black, 0.4), .lineWidth = 0.7}); };
        };
        if (hasCompanyColors && !utilisation.bands.empty())
            lines.add("In use, in the company's colour", filled(inUse(companyColor(utilisation.bands.front()))));
        for (KindInk const & ink : kindInks)
            if (!hasCompanyColors &&
                std::ranges::any_of(utilisation.bands, [&](Band const & band) { return band.kind == ink.kind; }))
                lines.add(ink.text, filled(inUse(Color::ofNumber(ink.setting()))));
        lines.add("Available", filled(availableColor));
        if (std::ranges::any_of(utilisation.bands, [](Band const & band) { return band.daysOver > 0; }))
            lines.add("More than available", filled(overColor()));
        if (isNowSeen())
            lines.add("As of " + dateText(now),
                      [&](Box const & room)
                      {
                          double const middle = room.left + room.width / 2;
                          drawLine(canvas, {middle, room.top + 2}, {middle, room.bottom() - 2}, nowColor(), 2);
                      });
        return lines.height();
    }

private:
    char const * emptyText() const
    {
        using Whose = CDisplayUtilisationChartFor;
        if (what.whose == Whose::SelectedResource) return "The views have no resource selected.";
        if (what.whose == Whose::SelectedCompany) return "No task uses a resource of the selected company.";
        return "No task uses a resource.";
    }

    // ---- beside the bands ----
    void drawNames(Point const & at, Band const & band) const
    {
        Font const name{.size = 11, .isBold = true, .color = darkInk}, more{.size = 9, .color = faintInk};
        double const room = namesWidth - 12;
        std::string const below = band.owner + (band.owner.empty() || band.unit.empty() ? "" : ", ") + band.unit;
        canvas.text({at.x + 6, at.y + 17}, fitted(band.name, room, name), name);
        if (!below.empty()) canvas.text({at.x + 6, at.y + 31}, fitted(below, room, more), more);
        std::string text =
            "most " + numberText(band.mostUsed, 2) + (band.isLimited ? " of " + numberText(band.mostAvailable, 2) : "");
        if (band.daysOver > 0)
            text += ", " + std::to_string(band.daysOver) + (band.daysOver == 1 ? " day over" : " days over");
        Font const figures{.size = 9, .isBold = band.daysOver > 0, .color = band.daysOver > 0 ? overColor() : faintInk};
        canvas.text({at.x + 6, at.y + (below.empty() ? 31 : 44)}, fitted(text, room, figures), figures);
        ValueAxis const axis = axisOf(band);
        for (double each = 0; each < axis.highest + axis.step / 2; each += axis.step)
            canvas.text({at.x + chartLeft - 6, at.y + y(axis, each) + 3}, fitted(numberText(each, 2), axisWidth, more),
                        {.size = 8.5, .color = faintInk, .align = Align::right});
    }

    // ---- a band ----
    static ValueAxis axisOf(Band const & band)
    {
        double const most = std::max(band.mostUsed, band.mostAvailable);
        return ValueAxis::covering(0, most, most > 1 ? 3 : 1);
    }
    static double y(ValueAxis const & axis, double units)
    {
        return plotTop + (bandHeight - plotTop - plotFoot) * (1 - axis.share(units));
    }

    void drawBand(Band const & band) const
    {
        canvas.box({0, 0, scale.width(), bandHeight}, {.fill = white});
        ValueAxis const axis = axisOf(band);
        std::vector<Load> const loads = shownLoads(band);
        double const foot = y(axis, 0);
        forEachRun(
            loads, [](Load const & load) { return load.available; },
            [&](Run const & run) { drawColumn(run, foot, y(axis, run.load.available), availableColor); });
        for (double each = axis.step; each < axis.highest + axis.step / 2; each += axis.step)
            drawLine(canvas, {0, y(axis, each)}, {scale.width(), y(axis, each)}, gridColor(0.86), 0.5);
        for (TimeScale::Cell const & cell : scale.upper())
            if (cell.left > 0) drawLine(canvas, {cell.left, 0}, {cell.left, bandHeight}, gridColor(0.82), 0.5);
        drawLine(canvas, {0, foot}, {scale.width(), foot}, gridColor(0.5), 0.6);
        Color const color = hasCompanyColors ? companyColor(band) : kindColor(band);
        std::vector<Point> line;
        forEachRun(loads, std::identity(),
                   [&](Run const & run)
                   {
                       Load const & load = run.load;
                       line.push_back({run.left, y(axis, load.used)});
                       line.push_back({run.right, y(axis, load.used)});
                       double const within = load.isOver ? std::min(load.used, load.available) : load.used;
                       if (!hasLines) drawColumn(run, foot, y(axis, within), inUse(color));
                       if (load.isOver) drawColumn(run, y(axis, within), y(axis, load.used), overColor());
                   });
        if (hasLines) canvas.shape(line, {.line = readable(color, white), .lineWidth = 1.8});
    }
    void drawColumn(Run const & run, double foot, double top, Color color) const
    {
        if (foot > top) canvas.box({run.left, top, run.right - run.left, foot - top}, {.fill = color});
    }

    // Where a day is narrow, days on which nothing is there and nothing used would only flicker: over a weekend goes on
    // what was there before, and what was in use if it is so after.
    std::vector<Load> shownLoads(Band const & band) const
    {
        constexpr double narrow = 4;
        constexpr std::size_t mostBridged = 4;
        std::vector<Load> loads = band.loads;
        if (scale.widthOfDay() * static_cast<double>(utilisation.steps.length) / TimeSteps::day >= narrow) return loads;
        std::size_t worked = loads.size();  // the last step that is not blank
        for (std::size_t step = 0; step < loads.size(); ++step)
        {
            if (loads[step] == Load()) continue;
            if (worked < step && step - worked <= mostBridged + 1)
            {
                bool const isSame = loads[worked] == loads[step];
                Load const between =
                    isSame ? loads[step] : Load{0, std::min(loads[worked].available, loads[step].available)};
                std::fill(loads.begin() + static_cast<std::ptrdiff_t>(worked) + 1,
                          loads.begin() + static_cast<std::ptrdiff_t>(step), between);
            }
            worked = step;
        }
        return loads;
    }
    // Calls `draw` with the ends and the load of all steps side by side that are alike.
    template <class Key, class Draw>
    void forEachRun(std::vector<Load> const & loads, Key const & key, Draw const & draw) const
    {
        for (std::size_t first = 0, last; first < loads.size(); first = last)
        {
            for (last = first + 1; last < loads.size() && key(loads[last]) == key(loads[first]);) ++last;
            Run const run{scale.xOfMinute(utilisation.steps.point(first)),
                          scale.xOfMinute(utilisation.steps.point(last)), loads[first]};
            if (run.right >= 0 && run.left <= scale.width()) draw(run);
        }
    }

    // ---- colours ----
    Color companyColor(Band const & band) const
    {
        CCompany const * const company = project.getCompany(band.companyID);
        return company ? ofNumber(company->getColor()) : kindColor(band);
    }
    static Color kindColor(Band const & band)
    {
        auto const * const ink = std::ranges::find(kindInks, static_cast<int>(band.kind.getEquivalentValue()),
                                                   [](KindInk const & each) { return static_cast<int>(each.kind); });
        return ink == std::end(kindInks) ? frameColor : Color::ofNumber(ink->setting());
    }
    // Calm enough that what is over stands out.
    static Color inUse(Color color) { return mixed(mixed(color, frameColor, 0.25), white, 0.25); }
    static Color overColor() { return mixed(Color::ofNumber(CProjectConfig::getLatenessColor()), black, 0.2); }
    static Color nowColor() { return Color::ofNumber(CProjectConfig::getCurrentTimeColor()); }
    bool isNowSeen() const { return now.isValid() && scale.x(now) >= 0 && scale.x(now) <= scale.width(); }

    CProject const & project;
    Utilisation const & utilisation;
    UtilisationOptions const & what;
    CProjectTime const now;
    TimeScale const scale;
    Canvas & canvas;
    bool const hasLines;
    bool const hasCompanyColors;
};

}  // namespace

double ChartOptions::checkedWidth() const
{
    if (!(width >= leastWidth && width <= mostWidth))
        throw std::invalid_argument("a chart must be 400 to 100000 pixels wide");
    return width;
}

std::string drawUtilisation(CProject const & project, UtilisationOptions const & what, ChartOptions const & options,
                            Format format)
{
    Utilisation const utilisation = utilisationOf(project, what, checked(options.range));
    double const inner = options.checkedWidth() - 2 * pictureMargin;
    auto const measure = makeCanvas(Format::svg, 1, 1, 1, "");
    BandDrawing const measured(project, utilisation, what, options, inner, *measure);
    std::size_t const count = utilisation.bands.size();
    double const legendTop = pictureMargin + titleHeight + measured.heightOf(count) + bandsSpace;
    double const height = legendTop + measured.legend({}, false) + pictureMargin;
    std::string const title = chartTitle(project) + ": use of resources";
    auto const canvas = makeCanvas(format, options.width, height, scaleFor(format, options.width, height), title);
    BandDrawing const drawing(project, utilisation, what, options, inner, *canvas);
    drawing.drawTitle({pictureMargin, pictureMargin});
    drawing.drawBands({pictureMargin, pictureMargin + titleHeight}, 0, count);
    drawing.legend({pictureMargin, legendTop}, true);
    return canvas->finish();
}

std::string printUtilisation(CProject const & project, UtilisationOptions const & what, ChartOptions const & options,
                             Paper const & paper)
{
    constexpr std::size_t mostPages = 10'000;
    requireRoom(paper);
    Utilisation const utilisation = utilisationOf(project, what, checked(options.range));
    std::string const title = chartTitle(project) + ": use of resources";
    auto const canvas = makeCanvas(Format::pdf, paper.width, paper.height, 1 / perPoint, title);
    BandDrawing const drawing(project, utilisation, what, options, paper.roomWidth(), *canvas);
    double const top = paper.topMargin + (paper.header.empty() ? 0 : headerLine);
    double const legendTop = paper.height - paper.bottomMargin - footerLine - drawing.legend({}, false);
    double const room = legendTop - bandsSpace - top - titleHeight - drawing.heightOf(0) + bandHeight;
    std::size_t const count = utilisation.bands.size();
    auto const perPage = static_cast<std::size_t>(std::max(std::floor(room / bandHeight), 1.0));
    std::size_t const pages = std::max<std::size_t>((count + perPage - 1) / perPage, 1);
    if (pages > mostPages) throw std::invalid_argument("the chart takes more than 10000 pages");
    for (std::size_t page = 0; page < pages; ++page)
    {
        if (page > 0) canvas->nextPage();
        drawPaperEdges(*canvas, paper, {page + 1, pages});
        drawing.drawTitle({paper.leftMargin, top});
        drawing.drawBands({paper.leftMargin, top + titleHeight}, page * perPage, std::min((page + 1) * perPage, count));
        drawing.legend({paper.leftMargin, legendTop}, true);
    }
    return canvas->finish();
}

}  // namespace orvane::pictures
