#include "pictures/chart_sheet.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "model/project.h"

namespace orvane::pictures
{

std::string chartTitle(CProject const & project)
{
    return project.getProjectName().IsEmpty() ? "Project" : drawable(project.getProjectName().view());
}

TimeScale scaleOf(TimeSteps const & steps, TimeRange const & range, double width)
{
    return {range.from.isValid() ? range.from : CProjectTime::fromLocalMinutes(steps.first),
            range.to.isValid() ? range.to : CProjectTime::fromLocalMinutes(steps.last()), width};
}

TimeRange const & checked(TimeRange const & range)
{
    if (range.from.isValid() && range.to.isValid() && range.to <= range.from)
        throw std::invalid_argument("the end of a chart must be after its start");
    return range;
}

Color rulerBackground()
{
    return Color::ofBackground(CProjectConfig::getRulerBackgroundColor());
}
Color rulerInk()
{
    return readable(Color::ofNumber(CProjectConfig::getRulerForegroundColor()), rulerBackground());
}

void drawTitle(Canvas & canvas, Point const & at, double width, std::string const & title, std::string const & subtitle)
{
    Font const bold{.size = 15, .isBold = true, .color = darkInk},
        plain{.size = 11, .color = faintInk, .align = Align::right};
    std::string const shown = fitted(title, width * 0.6, bold);
    canvas.text({at.x, at.y + 16}, shown, bold);
    canvas.text({at.x + width, at.y + 16}, fitted(subtitle, width - textWidth(shown, bold) - 20, plain), plain);
}

double rulerHeight()
{
    return CProjectConstants::getGanttRulerHeight();
}

void drawRuler(Canvas & canvas, TimeScale const & scale, double left, double right)
{
    double const half = rulerHeight() / 2;
    auto const isSeen = [&](TimeScale::Cell const & cell) { return cell.right >= left && cell.left <= right; };
    canvas.box({left, 0, right - left, 2 * half}, {.fill = rulerBackground()});
    Font const above{.size = 10, .isBold = false, .color = rulerInk()};
    Font const below{.size = 10, .color = rulerInk(), .align = Align::middle};
    for (TimeScale::Cell const & cell : scale.upper())
    {
        if (!isSeen(cell)) continue;
        drawLine(canvas, {cell.left, 0}, {cell.left, half}, frameColor, 0.8);
        // What began on another page says its name here, too.
        double const start = std::max(cell.left, left) + 4;
        if (start + textWidth(cell.label, above) <= std::min(cell.right, right))
            canvas.text({start, half - 4.5}, cell.label, above);
    }
    for (TimeScale::Cell const & cell : scale.lower())
    {
        if (!isSeen(cell)) continue;
        drawLine(canvas, {cell.left, half}, {cell.left, 2 * half}, frameColor, 0.6);
        canvas.text({(cell.left + cell.right) / 2, 2 * half - 4.5}, cell.label, below);
    }
    drawLine(canvas, {left, half}, {right, half}, frameColor, 0.6);
}

void drawFlag(Canvas & canvas, double x, Color color)
{
    double const foot = rulerHeight();
    std::array<Point, 3> const flag{Point{x - 4, foot - 6}, {x + 4, foot - 6}, {x, foot}};
    canvas.shape(flag, {.fill = color});
}

void drawLine(Canvas & canvas, Point const & from, Point const & to, Color color, double width)
{
    std::array<Point, 2> const points{from, to};
    canvas.shape(points, {.line = color, .lineWidth = width});
}

Color gridColor(double paleness)
{
    return mixed(Color::ofNumber(CProjectConfig::getGanttGridLinesColor()), white, paleness);
}

double scaleFor(Format format, double width, double height)
{
    constexpr double mostFinePixels = 60e6;
    bool const isFine = 2 * std::max(width, height) <= mostPixels && 4 * width * height <= mostFinePixels;
    return format == Format::png && isFine ? 2 : 1;
}

void drawPaperEdges(Canvas & canvas, Paper const & paper, PageNumber page)
{
    Font const note{.size = 10, .color = faintInk, .align = Align::middle},
        right{.size = 10, .color = faintInk, .align = Align::right};
    double const middle = paper.leftMargin + paper.roomWidth() / 2, bottom = paper.height - paper.bottomMargin;
    if (!paper.header.empty())
        canvas.text({middle, paper.topMargin + 10}, fitted(paper.header, paper.roomWidth(), note), note);
    canvas.text({middle, bottom - 3}, fitted(paper.footer, paper.roomWidth() * 0.7, note), note);
    if (paper.hasPageNumbers || page.count > 1)
        canvas.text({paper.leftMargin + paper.roomWidth(), bottom - 3},
                    "Page " + std::to_string(page.number) + " of " + std::to_string(page.count), right);
}

void requireRoom(Paper const & paper)
{
    if (!(paper.roomWidth() > 0) || !(paper.roomHeight() > 0))
        throw std::invalid_argument("the margins leave no paper");
}

}  // namespace orvane::pictures
