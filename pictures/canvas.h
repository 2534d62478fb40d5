#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orvane::pictures
{

struct Point
{
    double x = 0;
    double y = 0;

    friend bool operator==(Point const &, Point const &) = default;
};

struct Box
{
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double right() const { return left + width; }
    double bottom() const { return top + height; }
};

// ---- colours ----------------------------------------------------------------------------------------

struct Color
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    // Of the numbers that settings hold, 0x00BBGGRR; what stands above the three bytes is not looked at.
    static constexpr Color ofNumber(long number)
    {
        return {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
                static_cast<std::uint8_t>(number >> 16)};
    }
    // Of a setting for a background: there 15 stands for the system's colour of surfaces, a light grey.
    static constexpr Color ofBackground(long number) { return number == 15 ? Color{240, 240, 240} : ofNumber(number); }
    friend bool operator==(Color const &, Color const &) = default;
};

inline constexpr Color black{0, 0, 0};
inline constexpr Color white{255, 255, 255};

// The colour on the way from `a` (share 0) to `b` (share 1).
Color mixed(Color a, Color b, double share);
// The colour itself where it can be read on the background, or else black or white.
Color readable(Color color, Color background);

// ---- drawing ----------------------------------------------------------------------------------------

// How a shape is filled and outlined; without either it does not show.
struct Ink
{
    std::optional<Color> fill = {};
    std::optional<Color> line = {};
    double lineWidth = 1;
    double dash = 0;  // length of dashes and of the gaps between them, 0 for a whole line
    double opacity = 1;
};

enum class Align
{
    left,
    middle,
    right
};

// A sans-serif font; the size is that of the em.
struct Font
{
    double size = 11;
    bool isBold = false;
    Color color = black;
    Align align = Align::left;
};

// A picture that is being drawn, in units of 1/96 inch from the top left corner. Later shapes cover earlier ones.
class Canvas
{
public:
    virtual ~Canvas() = default;

    virtual void box(Box const & box, Ink const & ink) = 0;
    // Closed if it is filled, and otherwise a line through the points.
    virtual void shape(std::span<Point const> points, Ink const & ink) = 0;
    // On the base line; `at` is its left end, its middle or its right end, also for scripts that run to the left. The
    // text is shown as it is, and never read as markup.
    virtual void text(Point const & at, std::string_view text, Font const & font) = 0;
    // Until leave, only what lies within the box is seen, and coordinates count from `origin`.
    virtual void enter(Box const & clip, Point const & origin) = 0;
    virtual void leave() = 0;
    // Only in a format with pages.
    virtual void nextPage() = 0;
    // Ends the picture, and answers the content of its file.
    virtual std::string finish() = 0;
};

enum class Format
{
    svg,
    png,
    pdf
};

// An empty picture of that size; `scale` enlarges all that is drawn, and the picture with it. Throws
// std::invalid_argument for a size that the format cannot have: a PNG has at most 32,000 pixels a side, and
// 150 million in all.
std::unique_ptr<Canvas> makeCanvas(Format format, double width, double height, double scale, std::string_view title);
inline constexpr double mostPixels = 32'000;

// ---- texts ------------------------------------------------------------------------------------------

// The text as a picture may hold it: whole characters of UTF-8, blanks for control characters, no marks that turn the
// direction of what follows, and no more of it than a line could show.
std::string drawable(std::string_view text);
double textWidth(std::string_view drawableText, Font const & font);
// The text made drawable and, if it is wider than that, cut with "…" behind.
std::string fitted(std::string_view text, double width, Font const & font);

}  // namespace orvane::pictures
