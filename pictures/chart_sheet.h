#pragma once

#include <string>

#include "pictures/canvas.h"
#include "pictures/chart_steps.h"
#include "pictures/gantt.h"
#include "pictures/time_scale.h"

// What the charts of a project share: their inks, and what stands round a chart on its sheet.
namespace orvane::pictures
{

inline constexpr Color darkInk{31, 41, 55}, faintInk{84, 96, 114}, frameColor{150, 158, 170};
// Of what stands above and below a chart, and between its edges and those of a picture.
inline constexpr double titleHeight = 26, headerLine = 18, footerLine = 18, legendLine = 18, pictureMargin = 12;
// Of a point, in units of the canvas.
inline constexpr double perPoint = 96.0 / 72.0;

// The project's name, or "Project" for one without.
std::string chartTitle(CProject const & project);
// Over the range as far as it is told, and else over the steps.
TimeScale scaleOf(TimeSteps const & steps, TimeRange const & range, double width);
// The range, unless it ends before it starts: that throws std::invalid_argument.
TimeRange const & checked(TimeRange const & range);

// In one line: the title, and what it tells of at the right.
void drawTitle(Canvas & canvas, Point const & at, double width, std::string const & title,
               std::string const & subtitle);

double rulerHeight();
Color rulerBackground();
Color rulerInk();
// Two rows of units across what can be seen of the scale, between two places of its width. The canvas counts from the
// scale's start.
void drawRuler(Canvas & canvas, TimeScale const & scale, double left, double right);
// The mark of a moment at the foot of the ruler.
void drawFlag(Canvas & canvas, double x, Color color);
void drawLine(Canvas & canvas, Point const & from, Point const & to, Color color, double width);

// That of the settings, so pale that it does not compete with what stands before it.
Color gridColor(double paleness);

// The entries of a legend, each a sample with a text behind it, in as many lines as it takes.
class LegendLines
{
public:
    // Without a canvas they are only measured.
    LegendLines(Canvas * canvas, Point const & at, double width) : canvas(canvas), at(at), width(width) {}

    // Calls `drawSample` with its room.
    template <class DrawSample>
    void add(std::string const & text, DrawSample const & drawSample)
    {
        constexpr double sample = 24, gap = 5, between = 16;
        Font const font{.size = 10, .color = darkInk};
        double const length = sample + gap + textWidth(text, font);
        if (x > 0 && x + length > width) x = 0, y += legendLine;
        if (canvas)
        {
            drawSample(Box{at.x + x, at.y + y, sample, legendLine});
            canvas->text({at.x + x + sample + gap, at.y + y + 12.5}, text, font);
        }
        x += length + between;
    }
    // Nothing without an entry.
    double height() const { return x > 0 ? y + legendLine : 0; }

private:
    Canvas * canvas;
    Point at;
    double width;
    double x = 0, y = 0;
};

// How fine the pixels of a picture are: twice as fine where that does not take too much.
double scaleFor(Format format, double width, double height);

struct PageNumber
{
    std::size_t number;
    std::size_t count;
};
// The header, the footer and the number of a page of a paper.
void drawPaperEdges(Canvas & canvas, Paper const & paper, PageNumber page);
// Throws std::invalid_argument when the margins leave no paper.
void requireRoom(Paper const & paper);

}  // namespace orvane::pictures
