#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "pictures/canvas.h"
#include "pictures/time_scale.h"
#include "values/date_time.h"
#include "values/identifiers.h"

class CProject;

namespace orvane::pictures
{

// ---- what the chart is to show ----------------------------------------------------------------------

struct GanttOptions
{
    enum class Rows
    {
        asViewed,
        all,
        roots
    };
    static constexpr double leastWidth = 400, mostWidth = 100'000;

    // The ends of the time shown; one that is not valid is where the plan begins, or ends, with a little room.
    CProjectTime from = {};
    CProjectTime to = {};
    // Where the line of the present stands; there is none if it is not valid.
    CProjectTime now = {};
    // Rows below those that the views show collapsed are left out; or none are; or all but the outermost.
    Rows rows = Rows::asViewed;
    bool showsLinks = true;
    // Of the whole picture, from leastWidth to mostWidth; 0 for as much as makes bars readable.
    double width = 0;
    // The room for a chart and its columns on one page, if it is to be cut into pages, which the chart then fills;
    // 0 for one piece.
    double pageWidth = 0;
};

// ---- what it is to stand on -------------------------------------------------------------------------

// A sheet of paper and what stands on it besides the chart; all lengths in units of 1/96 inch.
struct Paper
{
    double width = 0;
    double height = 0;
    double topMargin = 0, bottomMargin = 0, leftMargin = 0, rightMargin = 0;
    std::string header;
    std::string footer;
    bool hasPageNumbers = true;
    // Everything on a single page, made as small as it must.
    bool isOnePage = false;

    double roomWidth() const { return width - leftMargin - rightMargin; }
    double roomHeight() const { return height - topMargin - bottomMargin; }
};

// A sheet "A4" to "A1" with the header, the footer, the page numbers and the margins, in centimetres, of the settings.
// Throws std::invalid_argument for another name.
Paper paperOfSettings(std::string const & name, bool isLandscape);

// ---- where everything stands ------------------------------------------------------------------------

// The chart as positions: `left`, `right` and `x` count from the start of the time shown, `top` and `y` from the top of
// the first row.
struct GanttLayout
{
    struct Column
    {
        enum class Content
        {
            number,
            name,
            duration,
            start,
            finish
        };

        Content content;
        std::string title;
        double left;
        double width;
        Align align;

        // Between its edges and what it holds.
        static constexpr double padding = 5;
    };
    struct Row
    {
        enum class Kind
        {
            task,
            summary,
            keyDate,
            blank
        };

        CTaskID id;
        Kind kind;
        int level;
        double indent;  // of the name
        double top;
        double height;
        std::vector<std::string> cells;  // one a column, cut to its width

        double bottom() const { return top + height; }
        // The upper edge of the row's bar, its height and its middle.
        double barTop() const;
        double barHeight() const;
        double barMiddle() const { return barTop() + barHeight() / 2; }
    };
    // What is drawn in a row, in the order of drawing.
    struct Bar
    {
        enum class Kind
        {
            task,
            summary,
            keyDate,  // a diamond, of which left and right are the middle
            unmitigatedRisk,
            storedRisk,
            bufferedRisk,
            mitigatedRisk,
            progress,
            late,
            early,
            baseline,
            baselineKeyDate,
            critical  // a heavy outline
        };

        std::size_t row;
        Kind kind;
        double left;
        double right;
        Color color;

        // From the middle of a diamond to its corners.
        static constexpr double halfDiamond = 6;

        friend bool operator==(Bar const &, Bar const &) = default;
    };
    struct Arrow
    {
        std::size_t from;  // rows
        std::size_t to;
        bool isCritical;
        std::vector<Point> points;  // the last is the tip
    };
    // A date beside a diamond: behind it or, where the chart ends there, before it.
    struct Note
    {
        // To the middle of the diamond.
        static constexpr double gap = Bar::halfDiamond + 2;
        static constexpr Font font{.size = 8.5};

        std::size_t row;
        double x;
        std::string text;
        bool isBefore;
    };
    struct Shade
    {
        double left;
        double right;
        Color color;
    };
    // The present, or the moment on which the views are focussed.
    struct Moment
    {
        double x;
        double width;
        bool isFocus;
        Color color;
    };
    struct LegendEntry
    {
        std::string text;
        Color color;
        // The sample is a bar of that kind, or a bit of shade, or a line.
        std::optional<Bar::Kind> bar;
        enum class Sample
        {
            bar,
            shade,
            link,
            criticalLink,
            now,
            focus
        } sample;
    };

    std::string title;
    std::string subtitle;
    TimeScale scale;
    double tableWidth;
    std::vector<Column> columns;
    std::vector<Row> rows;
    std::vector<Bar> bars;  // by row
    std::vector<Arrow> arrows;
    std::vector<Note> notes;  // by row
    std::vector<Shade> shades;
    std::vector<Moment> moments;
    std::vector<LegendEntry> legend;

    double height() const { return rows.empty() ? 0 : rows.back().bottom(); }
};

// Throws std::invalid_argument when the end is not after the start, or the width cannot be.
GanttLayout layOutGantt(CProject const & project, GanttOptions const & options);
// So that it fills pages of that paper.
GanttLayout layOutGantt(CProject const & project, GanttOptions const & options, Paper const & paper);

// ---- the picture ------------------------------------------------------------------------------------

// One picture of the whole chart, as the content of an SVG or PNG file. Throws std::invalid_argument when it would be
// larger than a PNG can be.
std::string drawGantt(GanttLayout const & layout, Format format);

// How many times larger the paper must be for the chart to fit on a single sheet; at least 1.
double enlargementForOnePage(GanttLayout const & layout, Paper const & paper);

// The content of a PDF file: pages side by side for the time, one below the other for the rows, each with the headings
// and the legend. Throws std::invalid_argument for more than 10,000 pages, or when the margins leave no paper.
std::string printGantt(GanttLayout const & layout, Paper const & paper);

}  // namespace orvane::pictures
