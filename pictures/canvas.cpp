#include "pictures/canvas.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

namespace orvane::pictures
{
namespace
{

template <auto release>
struct Release
{
    void operator()(auto * object) const { release(object); }
};
template <class T, auto release>
using Owned = std::unique_ptr<T, Release<release>>;

// ---- texts ------------------------------------------------------------------------------------------

using Layout = Owned<PangoLayout, g_object_unref>;

void setText(PangoLayout & layout, std::string_view text, Font const & font)
{
    Owned<PangoFontDescription, pango_font_description_free> const description(pango_font_description_new());
    pango_font_description_set_family_static(description.get(), "sans-serif");
    pango_font_description_set_absolute_size(description.get(), font.size * PANGO_SCALE);
    pango_font_description_set_weight(description.get(), font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(&layout, description.get());
    pango_layout_set_single_paragraph_mode(&layout, true);
    pango_layout_set_text(&layout, text.data(), static_cast<int>(text.size()));
}

double widthOf(PangoLayout & layout)
{
    PangoRectangle extent{};
    pango_layout_get_extents(&layout, nullptr, &extent);
    return static_cast<double>(extent.width) / PANGO_SCALE;
}

// Unhinted, so that widths are in proportion to the size; the library's font map belongs to the thread.
Layout makeMeasure()
{
    Owned<PangoContext, g_object_unref> const context(
        pango_font_map_create_context(pango_cairo_font_map_get_default()));
    Owned<cairo_font_options_t, cairo_font_options_destroy> const options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), false);
    return Layout(pango_layout_new(context.get()));
}

// A line of text to ask about.
PangoLayout & measured(std::string_view text, Font const & font = {})
{
    thread_local Layout const layout = makeMeasure();
    setText(*layout, text, font);
    return *layout;
}

// Most texts are ASCII, whose letters are measured once; pairs that move together make no visible difference.
std::array<double, 128> measureLetters(bool isBold)
{
    std::array<double, 128> widths{};
    for (std::size_t each = ' '; each < widths.size() - 1; ++each)
    {
        std::string const sixteen(16, static_cast<char>(each));
        widths[each] = widthOf(measured(sixteen, {.size = 100, .isBold = isBold})) / 1600;
    }
    return widths;
}

bool turnsDirection(gunichar character)
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

// Also the ends of lines and paragraphs, and the two numbers that XML has no place for.
bool isControl(gunichar character)
{
    return g_unichar_iscntrl(character) || character == 0x2028 || character == 0x2029 || (character & 0xFFFE) == 0xFFFE;
}

// Where the character that begins at `start` ends, with the marks that belong to it.
std::size_t endOfCharacter(std::string const & text, std::size_t start)
{
    char const * at = g_utf8_next_char(text.c_str() + start);
    while (g_unichar_ismark(g_utf8_get_char(at)) || g_utf8_get_char(at) == 0x200D) at = g_utf8_next_char(at);
    return static_cast<std::size_t>(at - text.c_str());
}

bool runsToTheLeft(std::string_view text)
{
    auto const isAscii = [](char each) { return static_cast<unsigned char>(each) < 0x80; };
    return !std::ranges::all_of(text, isAscii) && pango_layout_get_direction(&measured(text), 0) == PANGO_DIRECTION_RTL;
}

// ---- colours ----------------------------------------------------------------------------------------

double luminance(Color color)
{
    auto const part = [](std::uint8_t value)
    {
        double const share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.red) + 0.7152 * part(color.green) + 0.0722 * part(color.blue);
}

double contrast(Color a, Color b)
{
    double const lighter = std::max(luminance(a), luminance(b)), darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

// ---- PNG and PDF ------------------------------------------------------------------------------------

cairo_status_t appendTo(void * content, unsigned char const * data, unsigned int length)
{
    static_cast<std::string *>(content)->append(reinterpret_cast<char const *>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

class CairoCanvas : public Canvas
{
public:
    CairoCanvas(Format format, double width, double height, double scale, std::string_view title)
        : isPng(format == Format::png), surface(makeSurface(width * scale, height * scale))
    {
        if (!isPng) cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, drawable(title).c_str());
        context.reset(cairo_create(surface.get()));
        cairo_scale(context.get(), scale, scale);
        if (isPng)
        {
            cairo_set_source_rgb(context.get(), 1, 1, 1);
            cairo_paint(context.get());
        }
        layout.reset(pango_cairo_create_layout(context.get()));
        pango_context_set_round_glyph_positions(pango_layout_get_context(layout.get()), false);
    }

    void box(Box const & box, Ink const & ink) override
    {
        cairo_new_path(context.get());
        cairo_rectangle(context.get(), box.left, box.top, box.width, box.height);
        paint(ink);
    }
    void shape(std::span<Point const> points, Ink const & ink) override
    {
        cairo_new_path(context.get());
        for (Point const & point : points) cairo_line_to(context.get(), point.x, point.y);
        if (ink.fill) cairo_close_path(context.get());
        paint(ink);
    }
    void text(Point const & at, std::string_view text, Font const & font) override
    {
        setText(*layout, text, font);
        double const share = font.align == Align::left ? 0 : font.align == Align::middle ? 0.5 : 1;
        setSource(font.color, 1);
        cairo_move_to(context.get(), at.x - share * (share > 0 ? widthOf(*layout) : 0), at.y);
        pango_cairo_show_layout_line(context.get(), pango_layout_get_line_readonly(layout.get(), 0));
    }
    void enter(Box const & clip, Point const & origin) override
    {
        cairo_save(context.get());
        cairo_new_path(context.get());
        cairo_rectangle(context.get(), clip.left, clip.top, clip.width, clip.height);
        cairo_clip(context.get());
        cairo_translate(context.get(), origin.x, origin.y);
    }
    void leave() override { cairo_restore(context.get()); }
    void nextPage() override { cairo_show_page(context.get()); }
    std::string finish() override
    {
        if (isPng) cairo_surface_write_to_png_stream(surface.get(), appendTo, &content);
        cairo_surface_finish(surface.get());
        cairo_status_t const status = cairo_surface_status(surface.get());
        if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
        return std::move(content);
    }

private:
    cairo_surface_t * makeSurface(double width, double height)
    {
        cairo_surface_t * const made =
            isPng ? cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(width)),
                                               static_cast<int>(std::ceil(height)))
                  : cairo_pdf_surface_create_for_stream(appendTo, &content, width, height);
        if (cairo_surface_status(made) == CAIRO_STATUS_SUCCESS) return made;
        cairo_surface_destroy(made);
        throw std::bad_alloc();
    }
    void setSource(Color color, double opacity)
    {
        cairo_set_source_rgba(context.get(), color.red / 255.0, color.green / 255.0, color.blue / 255.0, opacity);
    }
    void paint(Ink const & ink)
    {
        if (ink.fill)
        {
            setSource(*ink.fill, ink.opacity);
            cairo_fill_preserve(context.get());
        }
        if (ink.line)
        {
            setSource(*ink.line, ink.opacity);
            cairo_set_line_width(context.get(), ink.lineWidth);
            cairo_set_dash(context.get(), &ink.dash, ink.dash > 0 ? 1 : 0, 0);
            cairo_stroke(context.get());
        }
    }

    bool isPng;
    std::string content;
    Owned<cairo_surface_t, cairo_surface_destroy> surface;
    Owned<cairo_t, cairo_destroy> context;
    Layout layout;
};

// ---- SVG --------------------------------------------------------------------------------------------

// Written by hand rather than by Cairo, which would turn letters into shapes that nobody can select or search.
class SvgCanvas : public Canvas
{
public:
    SvgCanvas(double width, double height, double scale, std::string_view title)
    {
        svg = R"(<?xml version="1.0" encoding="UTF-8"?>)"
              "\n"
              R"(<svg xmlns="http://www.w3.org/2000/svg")";
        attribute("width", width * scale);
        attribute("height", height * scale);
        svg += " viewBox=\"0 0 ";
        number(width);
        svg += ' ';
        number(height);
        svg += "\" font-family=\"sans-serif\" role=\"img\">\n<title>";
        escaped(drawable(title));
        svg += "</title>\n";
        box({0, 0, width, height}, {.fill = white});
    }

    void box(Box const & box, Ink const & ink) override
    {
        svg += "<rect";
        attribute("x", box.left);
        attribute("y", box.top);
        attribute("width", box.width);
        attribute("height", box.height);
        paint(ink);
    }
    void shape(std::span<Point const> points, Ink const & ink) override
    {
        svg += "<path d=\"";
        char command = 'M';
        for (Point const & point : points)
        {
            svg += std::exchange(command, 'L');
            number(point.x);
            svg += ' ';
            number(point.y);
        }
        svg += ink.fill ? "Z\"" : "\"";
        paint(ink);
    }
    void text(Point const & at, std::string_view text, Font const & font) override
    {
        if (text.empty()) return;
        svg += "<text";
        attribute("x", at.x);
        attribute("y", at.y);
        attribute("font-size", font.size);
        if (font.isBold) svg += " font-weight=\"bold\"";
        if (font.color != black) color("fill", font.color);
        // An anchor counts in the direction of the text.
        bool const turned = runsToTheLeft(text);
        if (turned) svg += " direction=\"rtl\"";
        if (font.align == Align::middle) svg += " text-anchor=\"middle\"";
        else if ((font.align == Align::right) != turned) svg += " text-anchor=\"end\"";
        svg += '>';
        escaped(text);
        svg += "</text>\n";
    }
    // Nested pictures cut off what lies outside of them.
    void enter(Box const & clip, Point const & origin) override
    {
        svg += "<svg";
        attribute("x", clip.left);
        attribute("y", clip.top);
        attribute("width", clip.width);
        attribute("height", clip.height);
        svg += " viewBox=\"";
        for (double const each : {clip.left - origin.x, clip.top - origin.y, clip.width, clip.height})
        {
            number(each);
            svg += ' ';
        }
        svg.back() = '"';
        svg += ">\n";
    }
    void leave() override { svg += "</svg>\n"; }
    void nextPage() override { throw std::logic_error("an SVG has no pages"); }
    std::string finish() override { return std::move(svg += "</svg>\n"); }

private:
    // To a hundredth, which no eye can tell apart.
    void number(double value)
    {
        char text[32];
        double const rounded = std::round(std::clamp(value, -1e9, 1e9) * 100) / 100 + 0.0;
        auto const [end, error] = std::to_chars(text, text + sizeof text, rounded);
        svg.append(text, end);
    }
    void attribute(char const * name, double value)
    {
        svg.append(" ").append(name).append("=\"");
        number(value);
        svg += '"';
    }
    void color(char const * name, Color color)
    {
        constexpr char digits[] = "0123456789abcdef";
        svg.append(" ").append(name).append("=\"#");
        for (std::uint8_t const part : {color.red, color.green, color.blue})
            svg.append({digits[part / 16], digits[part % 16]});
        svg += '"';
    }
    void paint(Ink const & ink)
    {
        if (ink.fill) color("fill", *ink.fill);
        else svg += " fill=\"none\"";
        if (ink.line) color("stroke", *ink.line);
        if (ink.line && ink.lineWidth != 1) attribute("stroke-width", ink.lineWidth);
        if (ink.line && ink.dash > 0) attribute("stroke-dasharray", ink.dash);
        if (ink.opacity < 1) attribute("opacity", ink.opacity);
        svg += "/>\n";
    }
    void escaped(std::string_view text)
    {
        for (char const each : text)
        {
            if (each == '&') svg += "&amp;";
            else if (each == '<') svg += "&lt;";
            else if (each == '>') svg += "&gt;";
            else svg += each;
        }
    }

    std::string svg;
};

}  // namespace

Color mixed(Color a, Color b, double share)
{
    auto const part = [share](std::uint8_t from, std::uint8_t to)
    { return static_cast<std::uint8_t>(std::lround(from + (to - from) * std::clamp(share, 0.0, 1.0))); };
    return {part(a.red, b.red), part(a.green, b.green), part(a.blue, b.blue)};
}

Color readable(Color color, Color background)
{
    constexpr double least = 3;
    if (contrast(color, background) >= least) return color;
    return contrast(black, background) >= contrast(white, background) ? black : white;
}

std::unique_ptr<Canvas> makeCanvas(Format format, double width, double height, double scale, std::string_view title)
{
    double const longer = std::max(width, height) * scale;
    if (!(std::min(width, height) > 0) || !(scale > 0) || !std::isfinite(longer))
        throw std::invalid_argument("a picture must have a size");
    constexpr double mostInAll = 150e6;
    if (format == Format::png && (longer > mostPixels || width * height * scale * scale > mostInAll))
        throw std::invalid_argument("the picture is larger than a PNG may be: 32000 pixels a side, 150 million in all");
    if (format == Format::svg) return std::make_unique<SvgCanvas>(width, height, scale, title);
    return std::make_unique<CairoCanvas>(format, width, height, scale, title);
}

std::string drawable(std::string_view text)
{
    constexpr std::size_t mostBytes = 4096;
    constexpr int mostCharacters = 400;
    Owned<char, g_free> const valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(std::min(text.size(), mostBytes))));
    std::string result;
    int left = mostCharacters;
    for (char const * at = valid.get(); *at && left > 0; at = g_utf8_next_char(at), --left)
    {
        gunichar const character = g_utf8_get_char(at);
        if (turnsDirection(character)) continue;
        if (isControl(character)) result += ' ';
        else result.append(at, static_cast<char const *>(g_utf8_next_char(at)));
    }
    return result;
}

double textWidth(std::string_view text, Font const & font)
{
    static std::array<double, 128> const letters[] = {measureLetters(false), measureLetters(true)};
    double width = 0;
    for (char const each : text)
    {
        auto const byte = static_cast<unsigned char>(each);
        if (byte >= 0x80) return widthOf(measured(text, font));
        width += letters[font.isBold][byte];
    }
    return width * font.size;
}

std::string fitted(std::string_view text, double width, Font const & font)
{
    std::string const whole = drawable(text);
    if (textWidth(whole, font) <= width) return whole;
    std::vector<std::size_t> ends{0};
    while (ends.back() < whole.size()) ends.push_back(endOfCharacter(whole, ends.back()));
    auto const cut = [&](std::size_t end) { return whole.substr(0, end) + "…"; };
    auto const firstTooWide = std::partition_point(ends.begin() + 1, ends.end(),
                                                   [&](std::size_t end) { return textWidth(cut(end), font) <= width; });
    return cut(*(firstTooWide - 1));
}

}  // namespace orvane::pictures
