#include "platform/text_measure.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <string_view>

#include <pango/pangocairo.h>

namespace
{

// Measures are proportional to the size, so all are taken at one. The font library counts in 32 bits, of 1/1024
// pixel: at this size a piece of a text stays within them even if each byte were 32 ems wide.
constexpr double measuredSize = 64;
constexpr std::size_t pieceBytes = 1024;

struct Release
{
    void operator()(PangoContext * context) const { g_object_unref(context); }
    void operator()(PangoLayout * layout) const { g_object_unref(layout); }
    void operator()(PangoFont * font) const { g_object_unref(font); }
    void operator()(PangoFontDescription * description) const { pango_font_description_free(description); }
    void operator()(PangoFontMetrics * metrics) const { pango_font_metrics_unref(metrics); }
    void operator()(cairo_font_options_t * options) const { cairo_font_options_destroy(options); }
    void operator()(char * text) const { g_free(text); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

Owned<PangoContext> makeContext()
{
    Owned<PangoContext> context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    Owned<cairo_font_options_t> const options(cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_context_set_round_glyph_positions(context.get(), false);
    return context;
}

// The library's font map belongs to the thread.
PangoContext * threadContext()
{
    thread_local Owned<PangoContext> const context = makeContext();
    return context.get();
}

// With U+FFFD for what is no UTF-8, zero bytes included.
Owned<char> validUtf8(std::string_view text)
{
    return Owned<char>(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

Owned<PangoFontDescription> describeFont(CString const & fontName)
{
    Owned<PangoFontDescription> description(pango_font_description_new());
    pango_font_description_set_family(description.get(), validUtf8(fontName.view()).get());
    pango_font_description_set_absolute_size(description.get(), measuredSize * PANGO_SCALE);
    return description;
}

// Where the first piece of a text ends: behind a blank if it has one, at least between two characters.
std::size_t firstPiece(std::string_view text)
{
    if (text.size() <= pieceBytes) return text.size();
    std::size_t const blank = text.rfind(' ', pieceBytes - 1);
    if (blank != std::string_view::npos) return blank + 1;
    std::size_t end = pieceBytes;
    while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return end;
}

double pieceWidth(PangoLayout & layout, std::string_view piece)
{
    pango_layout_set_text(&layout, piece.data(), static_cast<int>(piece.size()));
    PangoRectangle extent{};
    pango_layout_get_extents(&layout, nullptr, &extent);
    return extent.width;
}

double widthInUnits(CString const & text, CString const & fontName)
{
    Owned<PangoLayout> const layout(pango_layout_new(threadContext()));
    pango_layout_set_font_description(layout.get(), describeFont(fontName).get());
    pango_layout_set_single_paragraph_mode(layout.get(), true);

    Owned<char> const valid = validUtf8(text.view());
    double width = 0;
    for (std::string_view rest = valid.get(); !rest.empty(); rest.remove_prefix(firstPiece(rest)))
        width += pieceWidth(*layout, rest.substr(0, firstPiece(rest)));
    return width;
}

// The sum of measures of the font, in the library's units; 0 where the system has no font at all.
template <class... Measure>
double fontInUnits(CString const & fontName, Measure... measures)
{
    Owned<PangoFont> const font(pango_context_load_font(threadContext(), describeFont(fontName).get()));
    Owned<PangoFontMetrics> const metrics(pango_font_get_metrics(font.get(), nullptr));
    return (... + measures(metrics.get()));
}

template <class MeasureUnits>
double measure(CString const & text, double size, MeasureUnits const & units)
{
    if (text.IsEmpty() || !std::isfinite(size)) return 0;
    return std::abs(size) * (units() / (measuredSize * PANGO_SCALE));
}

}  // namespace

double textWidth(CString const & text, CString const & fontName, double size)
{
    return measure(text, size, [&] { return widthInUnits(text, fontName); });
}

double textAscent(CString const & text, CString const & fontName, double size)
{
    return measure(text, size, [&] { return fontInUnits(fontName, pango_font_metrics_get_ascent); });
}

double orvane::textHeight(CString const & text, CString const & fontName, double size)
{
    return measure(text, size,
                   [&]
                   { return fontInUnits(fontName, pango_font_metrics_get_ascent, pango_font_metrics_get_descent); });
}
