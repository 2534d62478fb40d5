// How the chart of earned value looks.

#include "pictures/chart.h"

#include <array>
#include <functional>

#include "config/project_config.h"
#include "model/project.h"
#include "pictures/chart_axis.h"
#include "pictures/chart_sheet.h"

namespace orvane::pictures
{
namespace
{

constexpr double pictureHeight = 640, tableRow = 34;

struct Curve
{
    char const * name;
    char const * meaning;
    std::vector<double> const * values;
    double atStatus;
    Color color;
    bool isShown;
    double dash = 0;
};

class CurveDrawing
{
public:
    CurveDrawing(CProject const & project, EarnedValue const & value, TimeScale const & scale, Canvas & canvas)
        : project(project), value(value), scale(scale), canvas(canvas)
    {
        CEVAGraphPresentation const & view = project.getEVAGraphPresentation();
        curves = {Curve{"BCWS", "budgeted cost of work scheduled", &value.scheduled, value.scheduled.back(),
                        Color::ofNumber(CProjectConfig::getEVAGraphBCWSColor()), view.getDisplayBCWS().getValue()},
                  Curve{"BCWP", "budgeted cost of work performed", &value.performed, value.atStatus.performed,
                        Color::ofNumber(CProjectConfig::getEVAGraphBCWPColor()), view.getDisplayBCWP().getValue()},
                  Curve{"ACWP", "actual cost of work performed", &value.actual, value.atStatus.actual,
                        Color::ofNumber(CProjectConfig::getEVAGraphACWPColor()), view.getDisplayACWP().getValue(), 7}};
        makeAxis();
    }

    double axisWidth() const
    {
        double width = 0;
        for (double each = axis.lowest; each < axis.highest + axis.step / 2; each += axis.step)
            width = std::max(width, textWidth(tickText(each), tickFont));
        return width + 12;
    }

    void draw(Box const & room, double legendHeight, std::string const & title)
    {
        drawTitle(canvas, {room.left, room.top}, room.width, title + ": earned value", subtitle());
        double const foot = legendHeight + 2 * tableRow + 14;
        plot = {room.left + axisWidth(), room.top + titleHeight + 14 + rulerHeight(), scale.width(), 0};
        plot.height = std::max(room.bottom() - foot - plot.top, 40.0);
        drawAxis();
        canvas.enter({plot.left, plot.top - rulerHeight(), plot.width, rulerHeight()},
                     {plot.left, plot.top - rulerHeight()});
        drawRuler(canvas, scale, 0, plot.width);
        if (isNowSeen()) drawFlag(canvas, nowX(), nowColor());
        canvas.leave();
        canvas.enter(plot, {plot.left, plot.top});
        drawGrid();
        for (Curve const & curve : curves)
            if (curve.isShown) drawCurve(curve);
        if (isNowSeen())
            drawLine(canvas, {nowX(), 0}, {nowX(), plot.height}, nowColor(),
                     CProjectConfig::getGanttCurrentTimeThick() ? 2 : 1);
        drawLabels();
        drawNote();
        canvas.leave();
        canvas.box({plot.left, plot.top - rulerHeight(), plot.width, plot.height + rulerHeight()},
                   {.line = frameColor, .lineWidth = 0.8});
        legend({room.left, plot.bottom() + 8}, room.width, true);
        drawTable({room.left, plot.bottom() + 14 + legendHeight}, room.width);
    }

    // In as many lines as it takes; nothing is drawn when it is only measured. Answers the height.
    double legend(Point const & at, double width, bool isDrawn) const
    {
        LegendLines lines(isDrawn ? &canvas : nullptr, at, width);
        for (Curve const & curve : curves)
            if (curve.isShown)
                lines.add(std::string(curve.name) + ": " + curve.meaning,
                          [&](Box const & room)
                          {
                              double const middle = room.top + room.height / 2;
                              stroke({{room.left, middle}, {room.right(), middle}}, curve);
                          });
        if (isNowSeen())
            lines.add("As of " + dateText(value.status),
                      [&](Box const & room)
                      {
                          double const middle = room.left + room.width / 2;
                          drawLine(canvas, {middle, room.top + 2}, {middle, room.bottom() - 2}, nowColor(), 2);
                      });
        return lines.height();
    }

private:
    // ---- the scale of money ----
    void makeAxis()
    {
        constexpr int mostTicks = 10;
        // A little room above the highest curve, where its name stands.
        constexpr double above = 1.04;
        double least = 0, greatest = 0;
        for (Curve const & curve : curves)
        {
            if (!curve.isShown) continue;
            for (double const each : *curve.values) least = std::min(least, each), greatest = std::max(greatest, each);
            least = std::min(least, curve.atStatus), greatest = std::max(greatest, curve.atStatus);
        }
        axis = ValueAxis::covering(least, greatest * above, mostTicks);
        magnitude = Magnitude::of(std::max(axis.highest, -axis.lowest));
    }
    std::string tickText(double amount) const { return numberText(amount / magnitude.size, axis.step < 1 ? 9 : 3); }
    double y(double amount) const { return plot.height * (1 - axis.share(amount)); }

    void drawAxis()
    {
        Font font = tickFont;
        font.align = Align::right;
        for (double each = axis.lowest; each < axis.highest + axis.step / 2; each += axis.step)
            canvas.text({plot.left - 6, plot.top + y(each) + 3.5}, tickText(each), font);
        std::string const unit = *magnitude.name ? std::string("Cost, ") + magnitude.name : "Cost";
        canvas.text({plot.left - axisWidth(), plot.top - rulerHeight() - 5}, unit,
                    {.size = 10, .isBold = true, .color = darkInk});
    }
    void drawGrid()
    {
        canvas.box({0, 0, plot.width, plot.height}, {.fill = white});
        for (TimeScale::Cell const & cell : scale.lower())
            if (cell.left > 0) drawLine(canvas, {cell.left, 0}, {cell.left, plot.height}, gridColor(0.93), 0.5);
        for (TimeScale::Cell const & cell : scale.upper())
            if (cell.left > 0) drawLine(canvas, {cell.left, 0}, {cell.left, plot.height}, gridColor(0.78), 0.6);
        for (double each = axis.lowest; each < axis.highest + axis.step / 2; each += axis.step)
            drawLine(canvas, {0, y(each)}, {plot.width, y(each)},
                     gridColor(std::abs(each) < axis.step / 2 ? 0.4 : 0.85), 0.6);
    }

    // ---- the curves ----
    void drawCurve(Curve const & curve)
    {
        std::vector<Point> points;
        for (std::size_t each = 0; each < curve.values->size(); ++each)
        {
            Point const point{scale.xOfMinute(value.steps.point(each)), y((*curve.values)[each])};
            // Nothing is gained by points along a level line.
            std::size_t const count = points.size();
            if (count > 1 && points[count - 1].y == point.y && points[count - 2].y == point.y) points.pop_back();
            points.push_back(point);
        }
        if (curve.values != &value.scheduled && !points.empty() && value.status.getLocalMinutes() <= value.steps.last())
            points.push_back({nowX(), y(curve.atStatus)});
        if (points.size() > 1) stroke(points, curve);
    }
    // A colour that is too pale for paper gets a dark edge; gaps let another curve be seen below.
    void stroke(std::vector<Point> const & points, Curve const & curve) const
    {
        if (readable(curve.color, white) != curve.color)
            canvas.shape(points, {.line = mixed(curve.color, black, 0.55), .lineWidth = 4.2, .dash = curve.dash});
        canvas.shape(points, {.line = curve.color, .lineWidth = 2.4, .dash = curve.dash});
    }

    // What each curve comes to, beside its end: above that of the plan, and below all curves at the present, where the
    // plan rises and leaves room.
    void drawLabels() const
    {
        constexpr double gap = 8, above = 9, below = 17, apart = 15;
        std::vector<Curve const *> now;
        for (Curve const & curve : curves)
        {
            if (!curve.isShown || curve.values->empty()) continue;
            if (curve.values != &value.scheduled) now.push_back(&curve);
            else drawLabel(curve, {plot.width - gap, std::max(y(curve.atStatus) - above, 14.0)});
        }
        if (!isNowSeen() || now.empty()) return;
        std::ranges::sort(now, std::greater(), &Curve::atStatus);
        double const lowest = std::min(value.atStatus.scheduled, now.back()->atStatus);
        double const most = plot.height - 5 - apart * static_cast<double>(now.size() - 1);
        Point at{nowX() + gap, std::min(y(lowest) + below, most)};
        for (Curve const * const curve : now)
        {
            drawLabel(*curve, at);
            at.y += apart;
        }
    }
    // From there to the right where there is room.
    void drawLabel(Curve const & curve, Point const & at) const
    {
        std::string const text = std::string(curve.name) + ' ' + moneyText(curve.atStatus);
        double const width = textWidth(text, labelFont), left = std::min(at.x, plot.width - width - 8);
        canvas.box({left - 2, at.y - 11, width + 4, 14}, {.fill = white, .opacity = 0.85});
        canvas.text({left, at.y}, text, labelFont);
    }

    // ---- texts ----
    static std::string moneyText(double amount)
    {
        Magnitude const magnitude = Magnitude::of(amount / 1e3);
        std::string const number = numberText(amount / magnitude.size, magnitude.size > 1 ? 2 : 0);
        return *magnitude.name ? number + ' ' + magnitude.name : number;
    }
    std::string subtitle() const
    {
        std::string text = dateText(scale.from()) + " – " + dateText(scale.to());
        if (value.status.isValid()) text += ", as of " + dateText(value.status);
        return text;
    }
    // Why there is little to be seen.
    void drawNote() const
    {
        std::string note;
        if (!value.hasTimes) note = "No task has a time.";
        else if (axis.highest - axis.lowest <= 1 && value.budgetAtCompletion == 0) note = "No task has a cost.";
        else if (value.status.isValid() && value.atStatus.performed == 0 && value.atStatus.actual == 0)
            note = "No work was performed by " + dateText(value.status) + ".";
        if (std::ranges::none_of(curves, &Curve::isShown)) note = "The views show none of the curves.";
        canvas.text({10, 20}, note, {.size = 11, .color = faintInk});
    }
    void drawTable(Point const & at, double width) const
    {
        // Below this an index is read as less than 1.
        constexpr double nearlyOne = 0.995, mostIndex = 1e4;
        EarnedValue::Figures const & figures = value.atStatus;
        struct Cell
        {
            char const * name;
            std::string text;
            bool isBad = false;
        };
        auto const none = [](char const * name) { return Cell{name, "–"}; };
        auto const money = [&](char const * name, double amount, bool isVariance) {
            return value.status.isValid() ? Cell{name, moneyText(amount), isVariance && amount < 0} : none(name);
        };
        auto const index = [&](char const * name, std::optional<double> share)
        {
            bool const isTold = share && std::abs(*share) < mostIndex;
            return isTold ? Cell{name, numberText(*share, 2), *share < nearlyOne} : none(name);
        };
        Cell const cells[] = {{"Budget at completion", moneyText(value.budgetAtCompletion)},
                              money("BCWS, scheduled until then", figures.scheduled, false),
                              money("BCWP, performed", figures.performed, false),
                              money("ACWP, spent", figures.actual, false),
                              money("Schedule variance, BCWP \u2212 BCWS", figures.scheduleVariance(), true),
                              money("Cost variance, BCWP \u2212 ACWP", figures.costVariance(), true),
                              index("Schedule index, BCWP / BCWS", figures.schedulePerformance()),
                              index("Cost index, BCWP / ACWP", figures.costPerformance())};
        Color const bad = readable(Color::ofNumber(CProjectConfig::getLatenessColor()), white);
        constexpr int columns = 4;
        double const column = width / columns;
        for (int each = 0; each < static_cast<int>(std::size(cells)); ++each)
        {
            Cell const & cell = cells[each];
            double const left = at.x + column * (each % columns), top = at.y + tableRow * (each / columns);
            Font const name{.size = 9.5, .color = faintInk};
            Font const number{.size = 13, .isBold = true, .color = cell.isBad ? bad : darkInk};
            canvas.text({left, top + 11}, fitted(cell.name, column - 8, name), name);
            canvas.text({left, top + 26}, fitted(cell.text, column - 8, number), number);
        }
    }

    double nowX() const { return scale.x(value.status); }
    bool isNowSeen() const { return value.status.isValid() && nowX() >= 0 && nowX() <= scale.width(); }
    static Color nowColor() { return Color::ofNumber(CProjectConfig::getCurrentTimeColor()); }

    Font const tickFont{.size = 10, .color = darkInk}, 
        labelFont{.size = 11, .isBold = true, .color = darkInk};
    CProject const & project;
    EarnedValue const & value;
    TimeScale const & scale;
    Canvas & canvas;
    std::array<Curve, 3> curves;
    ValueAxis axis;
    Magnitude magnitude;
    Box plot;
};

// What stands in the room once it is known how wide the numbers beside the curves are.
void drawIn(Box const & room, CProject const & project, ChartOptions const & options, EarnedValue const & value,
            Canvas & canvas)
{
    TimeScale const narrow = scaleOf(value.steps, options.range, 1);
    double const width = room.width - CurveDrawing(project, value, narrow, canvas).axisWidth();
    TimeScale const scale = scaleOf(value.steps, options.range, std::max(width, 50.0));
    CurveDrawing drawing(project, value, scale, canvas);
    drawing.draw(room, drawing.legend({}, room.width, false), chartTitle(project));
}

}  // namespace

std::string drawEarnedValue(CProject const & project, ChartOptions const & options, Format format)
{
    EarnedValue const value = earnedValueOf(project, options.now, checked(options.range));
    Box const room{pictureMargin, pictureMargin, options.checkedWidth() - 2 * pictureMargin,
                   pictureHeight - 2 * pictureMargin};
    double const scale = scaleFor(format, options.width, pictureHeight);
    auto const canvas = makeCanvas(format, options.width, pictureHeight, scale, chartTitle(project) + ": earned value");
    drawIn(room, project, options, value, *canvas);
    return canvas->finish();
}

std::string printEarnedValue(CProject const & project, ChartOptions const & options, Paper const & paper)
{
    requireRoom(paper);
    EarnedValue const value = earnedValueOf(project, options.now, checked(options.range));
    auto const canvas =
        makeCanvas(Format::pdf, paper.width, paper.height, 1 / perPoint, chartTitle(project) + ": earned value");
    drawPaperEdges(*canvas, paper, {1, 1});
    double const header = paper.header.empty() ? 0 : headerLine;
    // On upright paper the chart is no higher than wide.
    double const height = std::min(paper.roomHeight() - header - footerLine, paper.roomWidth());
    drawIn({paper.leftMargin, paper.topMargin + header, paper.roomWidth(), height}, project, options, value, *canvas);
    return canvas->finish();
}

}  // namespace orvane::pictures
