// How a chart looks, in one piece and on paper.

#include "pictures/gantt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "config/project_config.h"
#include "pictures/chart_sheet.h"

namespace orvane::pictures
{
namespace
{

using Bar = GanttLayout::Bar;
using Row = GanttLayout::Row;
using Entry = GanttLayout::LegendEntry;

constexpr Color linkColor{124, 135, 152};
constexpr Color outermostTint{233, 238, 244}, innerTint{245, 247, 250};

// A part of the chart: rows from `first` up to `last`, and the time between two places of the chart's width.
struct Part
{
    std::size_t first;
    std::size_t last;
    double left;
    double right;
};

class GanttDrawing
{
public:
    GanttDrawing(GanttLayout const & layout, Canvas & canvas) : layout(layout), canvas(canvas) {}

    double heightOf(Part const & part) const
    {
        return part.last == part.first ? 0 : layout.rows[part.last - 1].bottom() - layout.rows[part.first].top;
    }

    void drawTitle(Point const & at, double width) const
    {
        pictures::drawTitle(canvas, at, width, layout.title, layout.subtitle);
    }

    // The headings and, below them, the rows.
    void drawPart(Point const & at, Part const & part) const
    {
        double const rowsTop = at.y + rulerHeight(), chartLeft = at.x + layout.tableWidth;
        double const height = heightOf(part), width = part.right - part.left;
        drawTableHeading(at);
        canvas.enter({chartLeft, at.y, width, rulerHeight()}, {chartLeft - part.left, at.y});
        drawRuler(part);
        canvas.leave();
        double const firstTop = part.first == part.last ? 0 : layout.rows[part.first].top;
        canvas.enter({at.x, rowsTop, layout.tableWidth, height}, {at.x, rowsTop - firstTop});
        for (std::size_t row = part.first; row < part.last; ++row) drawCells(layout.rows[row]);
        canvas.leave();
        canvas.enter({chartLeft, rowsTop, width, height}, {chartLeft - part.left, rowsTop - firstTop});
        drawChart(part);
        canvas.leave();
        Ink const frame{.line = frameColor, .lineWidth = 0.8};
        canvas.box({at.x, at.y, layout.tableWidth, rulerHeight() + height}, frame);
        canvas.box({chartLeft, at.y, width, rulerHeight() + height}, frame);
    }

    // In as many lines as it takes; nothing is drawn when it is only measured. Answers the height.
    double legend(Point const & at, double width, bool isDrawn) const
    {
        LegendLines lines(isDrawn ? &canvas : nullptr, at, width);
        for (Entry const & entry : layout.legend)
            lines.add(entry.text, [&](Box const & room) { drawSample(entry, room); });
        return lines.height();
    }

private:
    // ---- headings ----
    void drawTableHeading(Point const & at) const
    {
        Font font{.size = 10, .isBold = true, .color = rulerInk()};
        canvas.box({at.x, at.y, layout.tableWidth, rulerHeight()}, {.fill = rulerBackground()});
        for (GanttLayout::Column const & column : layout.columns)
        {
            font.align = column.align;
            canvas.text({at.x + edgeOf(column, 0), at.y + rulerHeight() - 6}, column.title, font);
        }
    }
    static double edgeOf(GanttLayout::Column const & column, double indent)
    {
        return column.left + (column.align == Align::left ? GanttLayout::Column::padding + indent
                                                          : column.width - GanttLayout::Column::padding);
    }
    void drawRuler(Part const & part) const
    {
        pictures::drawRuler(canvas, layout.scale, part.left, part.right);
        for (auto const & moment : layout.moments)
            if (touches(part, moment.x - 4, moment.x + 4)) drawFlag(canvas, moment.x, moment.color);
    }

    // ---- the table ----
    void drawCells(Row const & row) const
    {
        bool const isSummary = row.kind == Row::Kind::summary;
        if (isSummary)
            canvas.box({0, row.top, layout.tableWidth, row.height},
                       {.fill = row.level == 0 ? outermostTint : innerTint});
        drawRowLine(row, 0, layout.tableWidth);
        for (std::size_t each = 0; each < layout.columns.size(); ++each)
        {
            GanttLayout::Column const & column = layout.columns[each];
            bool const isName = column.content == GanttLayout::Column::Content::name;
            Font const font{.isBold = isSummary && isName, .color = isName ? darkInk : faintInk, .align = column.align};
            double const indent = isName ? row.indent : 0;
            if (!row.cells[each].empty())
                canvas.text({edgeOf(column, indent), row.top + row.height / 2 + 4}, row.cells[each], font);
        }
    }
    void drawRowLine(Row const & row, double left, double right) const
    {
        if (CProjectConfig::getGanttShowHorizontalLines())
            line({left, row.bottom()}, {right, row.bottom()}, gridColor(0.88), 0.6);
    }

    // ---- the chart ----
    static bool touches(Part const & part, double left, double right)
    {
        return right >= part.left && left <= part.right;
    }

    void drawChart(Part const & part) const
    {
        drawBackground(part);
        for (GanttLayout::Arrow const & arrow : layout.arrows)
            if (std::max(arrow.from, arrow.to) >= part.first && std::min(arrow.from, arrow.to) < part.last)
                drawArrow(arrow);
        forEachInRows(layout.bars, part,
                      [&](Bar const & bar)
                      {
                          if (touches(part, bar.left - Bar::halfDiamond, bar.right + Bar::halfDiamond))
                              drawBar(bar, layout.rows[bar.row]);
                      });
        forEachInRows(layout.notes, part,
                      [&](GanttLayout::Note const & note)
                      {
                          Row const & row = layout.rows[note.row];
                          Font font = GanttLayout::Note::font;
                          font.color = darkInk;
                          if (note.isBefore) font.align = Align::right;
                          // Above the arrow that may leave the diamond.
                          canvas.text({note.x, row.barMiddle() - 2}, note.text, font);
                      });
        double const top = part.first == part.last ? 0 : layout.rows[part.first].top;
        for (GanttLayout::Moment const & moment : layout.moments)
        {
            std::array<Point, 2> const points{Point{moment.x, top}, {moment.x, top + heightOf(part)}};
            canvas.shape(points, {.line = moment.color, .lineWidth = moment.width, .dash = moment.isFocus ? 5.0 : 0.0});
        }
    }
    template <class Items, class Draw>
    static void forEachInRows(Items const & items, Part const & part, Draw const & draw)
    {
        using Item = typename Items::value_type;
        auto const first = std::ranges::lower_bound(items, part.first, {}, &Item::row);
        for (auto each = first; each != items.end() && each->row < part.last; ++each) draw(*each);
    }

    void drawBackground(Part const & part) const
    {
        if (part.first == part.last) return;
        double const top = layout.rows[part.first].top, bottom = top + heightOf(part);
        Color const worked = Color::ofNumber(CProjectConfig::getGanttWorkingTimeColor());
        canvas.box({part.left, top, part.right - part.left, bottom - top}, {.fill = worked});
        for (GanttLayout::Shade const & shade : layout.shades)
            if (touches(part, shade.left, shade.right))
                canvas.box({shade.left, top, shade.right - shade.left, bottom - top}, {.fill = shade.color});
        for (std::size_t row = part.first; row < part.last; ++row) drawRowLine(layout.rows[row], part.left, part.right);
        if (!CProjectConfig::getGanttShowVerticalLines()) return;
        drawUnitLines(part, layout.scale.lower(), {top, bottom}, gridColor(0.88));
        drawUnitLines(part, layout.scale.upper(), {top, bottom}, gridColor(0.7));
    }
    void drawUnitLines(Part const & part, std::vector<TimeScale::Cell> const & cells, std::pair<double, double> span,
                       Color color) const
    {
        for (TimeScale::Cell const & cell : cells)
            if (cell.left > 0 && touches(part, cell.left, cell.left))
                line({cell.left, span.first}, {cell.left, span.second}, color, 0.6);
    }
    void line(Point const & from, Point const & to, Color color, double width) const
    {
        drawLine(canvas, from, to, color, width);
    }

    void drawArrow(GanttLayout::Arrow const & arrow) const
    {
        Color const color = arrow.isCritical ? black : linkColor;
        drawWay(arrow.points, color, arrow.isCritical ? 1.7 : 0.9);
    }
    // The line stops where its tip begins.
    void drawWay(std::vector<Point> points, Color color, double width) const
    {
        constexpr double tipLength = 5, tipHalf = 3;
        Point const tip = points.back(), before = points[points.size() - 2];
        double const length = std::max(std::hypot(tip.x - before.x, tip.y - before.y), 0.01);
        Point const ahead{(tip.x - before.x) / length, (tip.y - before.y) / length};
        Point const foot{tip.x - ahead.x * tipLength, tip.y - ahead.y * tipLength};
        points.back() = foot;
        canvas.shape(points, {.line = color, .lineWidth = width});
        std::array<Point, 3> const head{tip, Point{foot.x - ahead.y * tipHalf, foot.y + ahead.x * tipHalf},
                                        Point{foot.x + ahead.y * tipHalf, foot.y - ahead.x * tipHalf}};
        canvas.shape(head, {.fill = color});
    }

    // ---- the bars ----
    void drawBar(Bar const & bar, Row const & row) const
    {
        double const top = row.barTop(), height = row.barHeight();
        double const width = bar.right - bar.left;
        Ink const outlined{.fill = bar.color, .line = mixed(bar.color, black, 0.5), .lineWidth = 0.7};
        switch (bar.kind)
        {
            case Bar::Kind::summary: return drawSummary(bar, top);
            case Bar::Kind::keyDate: return drawDiamond({bar.left, row.barMiddle()}, Bar::halfDiamond, outlined);
            case Bar::Kind::baselineKeyDate:
                return drawDiamond({bar.left, row.barMiddle()}, Bar::halfDiamond - 1.5,
                                   {.fill = white, .line = bar.color});
            case Bar::Kind::progress:
                return canvas.box({bar.left, top + height / 2 - 1.5, width, 3}, {.fill = bar.color});
            case Bar::Kind::late:
            case Bar::Kind::early: return canvas.box({bar.left, top - 2.6, width, 2}, {.fill = bar.color});
            case Bar::Kind::baseline: return canvas.box({bar.left, row.bottom() - 4, width, 2.6}, {.fill = bar.color});
            case Bar::Kind::critical:
                if (row.kind == Row::Kind::keyDate)
                    return drawDiamond({bar.left, row.barMiddle()}, Bar::halfDiamond,
                                       {.line = bar.color, .lineWidth = 1.8});
                return canvas.box({bar.left, top, width, height}, {.line = bar.color, .lineWidth = 1.8});
            default: return canvas.box({bar.left, top, width, height}, outlined);
        }
    }
    void drawSummary(Bar const & bar, double top) const
    {
        double const foot = std::min(5.0, (bar.right - bar.left) / 2);
        std::array<Point, 7> const bracket{
            Point{bar.left, top + 1},   {bar.right, top + 1}, {bar.right, top + 10}, {bar.right - foot, top + 6},
            {bar.left + foot, top + 6}, {bar.left, top + 10}, {bar.left, top + 1}};
        canvas.shape(bracket, {.fill = bar.color});
    }
    void drawDiamond(Point const & middle, double half, Ink const & paint) const
    {
        std::array<Point, 4> const corners{Point{middle.x, middle.y - half},
                                           {middle.x + half, middle.y},
                                           {middle.x, middle.y + half},
                                           {middle.x - half, middle.y}};
        if (paint.fill) return canvas.shape(corners, paint);
        std::array<Point, 6> const around{corners[0], corners[1], corners[2], corners[3], corners[0], corners[1]};
        canvas.shape(around, paint);
    }

    void drawSample(Entry const & entry, Box const & room) const
    {
        double const middle = room.top + room.height / 2;
        std::vector<Point> const across{{room.left, middle}, {room.right(), middle}};
        std::vector<Point> const upright{{room.left + room.width / 2, room.top + 2},
                                         {room.left + room.width / 2, room.bottom() - 2}};
        Row const row{CTaskID(nullID), Row::Kind::task, 0, 0, room.top, room.height, {}};
        double const place = entry.bar == Bar::Kind::keyDate ? room.left + room.width / 2 : room.left;
        switch (entry.sample)
        {
            case Entry::Sample::bar:
                return drawBar({0, *entry.bar, place, place == room.left ? room.right() : place, entry.color}, row);
            case Entry::Sample::shade:
                return canvas.box({room.left, room.top + 2, room.width, room.height - 4},
                                  {.fill = entry.color, .line = frameColor, .lineWidth = 0.5});
            case Entry::Sample::link: return drawWay(across, linkColor, 0.9);
            case Entry::Sample::criticalLink: return drawWay(across, black, 1.7);
            case Entry::Sample::now: return canvas.shape(upright, {.line = entry.color, .lineWidth = 2});
            case Entry::Sample::focus: return canvas.shape(upright, {.line = entry.color, .lineWidth = 1.5, .dash = 5});
        }
    }

    GanttLayout const & layout;
    Canvas & canvas;
};

// ---- pages ------------------------------------------------------------------------------------------

constexpr double legendSpace = 6;
// By how much a chart may be larger than its room; nobody sees it.
constexpr double tolerance = 0.5;

// What stands above and below the rows on a page.
double heightBesideRows(Paper const & paper, GanttDrawing const & drawing)
{
    return (paper.header.empty() ? 0 : headerLine) + titleHeight + rulerHeight() + legendSpace +
           drawing.legend({}, paper.roomWidth(), false) + footerLine;
}

std::vector<Part> partsFor(GanttLayout const & layout, double chartRoom, double heightRoom)
{
    constexpr std::size_t mostPages = 10'000;
    double const width = layout.scale.width();
    double const pagesAcross = std::max(std::ceil((width - tolerance) / chartRoom), 1.0);
    std::vector<Part> parts;
    std::size_t first = 0;
    do {
        std::size_t last = first;
        while (last < layout.rows.size() &&
               (last == first || layout.rows[last].bottom() - layout.rows[first].top <= heightRoom + tolerance))
            ++last;
        for (double page = 0; page < pagesAcross; ++page)
            parts.push_back({first, last, page * chartRoom, std::min((page + 1) * chartRoom, width)});
        first = last;
        if (parts.size() > mostPages) throw std::invalid_argument("the chart takes more than 10000 pages");
    } while (first < layout.rows.size());
    return parts;
}

void drawPage(Canvas & canvas, GanttDrawing const & drawing, Paper const & paper, Part const & part, PageNumber page)
{
    drawPaperEdges(canvas, paper, page);
    Point at{paper.leftMargin, paper.topMargin};
    if (!paper.header.empty()) at.y += headerLine;
    drawing.drawTitle(at, paper.roomWidth());
    at.y += titleHeight;
    drawing.drawPart(at, part);
    double const legendTop = paper.height - paper.bottomMargin - footerLine;
    drawing.legend({at.x, legendTop - drawing.legend({}, paper.roomWidth(), false)}, paper.roomWidth(), true);
}

// The paper as if it were so many times as large.
Paper enlarged(Paper paper, double times)
{
    for (double * const length :
         {&paper.width, &paper.height, &paper.topMargin, &paper.bottomMargin, &paper.leftMargin, &paper.rightMargin})
        *length *= times;
    return paper;
}

// Measures without drawing.
std::unique_ptr<Canvas> measuringCanvas()
{
    return makeCanvas(Format::svg, 1, 1, 1, "");
}

}  // namespace

std::string drawGantt(GanttLayout const & layout, Format format)
{
    constexpr double margin = pictureMargin;
    std::unique_ptr<Canvas> const measure = measuringCanvas();
    double const innerWidth = layout.tableWidth + layout.scale.width();
    double const width = innerWidth + 2 * margin;
    double const legendTop = margin + titleHeight + rulerHeight() + layout.height() + legendSpace;
    double const height = legendTop + GanttDrawing(layout, *measure).legend({}, innerWidth, false) + margin;
    std::unique_ptr<Canvas> const canvas =
        makeCanvas(format, width, height, scaleFor(format, width, height), layout.title);
    GanttDrawing const drawing(layout, *canvas);
    drawing.drawTitle({margin, margin}, innerWidth);
    drawing.drawPart({margin, margin + titleHeight}, {0, layout.rows.size(), 0, layout.scale.width()});
    drawing.legend({margin, legendTop}, innerWidth, true);
    return canvas->finish();
}

Paper paperOfSettings(std::string const & name, bool isLandscape)
{
    struct Sheet
    {
        char const * name;
        double width, height;  // in millimetres
    };
    constexpr Sheet sheets[] = {{"A4", 210, 297}, {"A3", 297, 420}, {"A2", 420, 594}, {"A1", 594, 841}};
    auto const sheet = std::ranges::find(sheets, name, &Sheet::name);
    if (sheet == std::end(sheets)) throw std::invalid_argument("paper is A4, A3, A2 or A1");
    constexpr double perMillimetre = 96 / 25.4;
    Paper paper;
    paper.width = (isLandscape ? sheet->height : sheet->width) * perMillimetre;
    paper.height = (isLandscape ? sheet->width : sheet->height) * perMillimetre;
    // Margins leave at least half of the sheet.
    auto const margin = [](int centimetres, double length)
    { return std::clamp(centimetres * 10 * perMillimetre, 0.0, length / 4); };
    paper.topMargin = margin(CProjectConfig::getPrintingTopMargin(), paper.height);
    paper.bottomMargin = margin(CProjectConfig::getPrintingBottomMargin(), paper.height);
    paper.leftMargin = margin(CProjectConfig::getPrintingLeftMargin(), paper.width);
    paper.rightMargin = margin(CProjectConfig::getPrintingRightMargin(), paper.width);
    if (CProjectConfig::getPrintingHasHeader()) paper.header = CProjectConfig::getPrintingHeader().view();
    if (CProjectConfig::getPrintingHasFooter()) paper.footer = CProjectConfig::getPrintingFooter().view();
    paper.hasPageNumbers = CProjectConfig::getPrintingHasPageNumbers() != 0;
    return paper;
}

// A wider sheet may need fewer lines for its legend, so that the size is found by trying.
double enlargementForOnePage(GanttLayout const & layout, Paper const & paper)
{
    requireRoom(paper);
    std::unique_ptr<Canvas> const measure = measuringCanvas();
    GanttDrawing const drawing(layout, *measure);
    constexpr double step = 1.01;
    auto const fits = [&](Paper const & sheet)
    {
        return layout.tableWidth + layout.scale.width() <= sheet.roomWidth() + tolerance &&
               heightBesideRows(sheet, drawing) + layout.height() <= sheet.roomHeight() + tolerance;
    };
    double times = 1;
    while (!fits(enlarged(paper, times))) times *= step;
    return times;
}

GanttLayout layOutGantt(CProject const & project, GanttOptions const & given, Paper const & paper)
{
    GanttOptions options = given;
    options.pageWidth = paper.isOnePage ? 0 : paper.roomWidth();
    GanttLayout const layout = layOutGantt(project, options);
    if (!paper.isOnePage || options.width > 0) return layout;
    // The rows say how large the sheet must be; the time then takes all of its width.
    Paper tall = paper;
    tall.width = tall.leftMargin + tall.rightMargin + layout.tableWidth + layout.scale.width();
    options.width = std::clamp(paper.roomWidth() * enlargementForOnePage(layout, tall), GanttOptions::leastWidth,
                               GanttOptions::mostWidth);
    return layOutGantt(project, options);
}

std::string printGantt(GanttLayout const & layout, Paper const & given)
{
    requireRoom(given);
    double const times = given.isOnePage ? enlargementForOnePage(layout, given) : 1;
    Paper const paper = enlarged(given, times);
    auto const canvas = makeCanvas(Format::pdf, paper.width, paper.height, 1 / (perPoint * times), layout.title);
    GanttDrawing const drawing(layout, *canvas);
    double const heightRoom = paper.roomHeight() - heightBesideRows(paper, drawing);
    double const chartRoom = std::max(paper.roomWidth() - layout.tableWidth, 50.0);
    std::vector<Part> const parts = partsFor(layout, chartRoom, heightRoom);
    for (std::size_t each = 0; each < parts.size(); ++each)
    {
        if (each > 0) canvas->nextPage();
        drawPage(*canvas, drawing, paper, parts[each], {each + 1, parts.size()});
    }
    return canvas->finish();
}

}  // namespace orvane::pictures
