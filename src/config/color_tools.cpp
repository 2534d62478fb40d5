#include "config/color_tools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace
{

constexpr double full = 255, third = full / 3, sixth = full / 6;

// Red, green and blue, from 0 to 255.
using Components = std::array<double, 3>;

Components componentsOf(unsigned long color)
{
    return {static_cast<double>(color & 0xFF), static_cast<double>(color >> 8 & 0xFF),
            static_cast<double>(color >> 16 & 0xFF)};
}

// Fractions are cut.
unsigned long colorOf(Components const & components)
{
    auto const byte = [](double component) { return static_cast<unsigned long>(component); };
    return byte(components[0]) | byte(components[1]) << 8 | byte(components[2]) << 16;
}

double onScale(double number)
{
    return std::isnan(number) ? 0 : std::clamp(number, 0.0, full);
}

double onCircle(double hue)
{
    double const within = std::isfinite(hue) ? std::fmod(hue, full) : 0;
    return within < 0 ? within + full : within;
}

// What a component is at a distance on the circle, a third of which is its own hue: it rises for a sixth, is high
// for a third, falls for a sixth and is low for the rest.
double componentAt(double distance, double low, double high)
{
    if (distance < sixth) return low + (high - low) * distance / sixth;
    if (distance < 3 * sixth) return high;
    if (distance < 4 * sixth) return low + (high - low) * (4 * sixth - distance) / sixth;
    return low;
}

}  // namespace

void RGBtoHLS(unsigned long color, double & hue, double & luminance, double & saturation)
{
    Components const parts = componentsOf(color);
    auto const [low, high] = std::minmax_element(parts.begin(), parts.end());
    double const range = *high - *low, sum = *high + *low;
    luminance = sum / 2;
    hue = saturation = 0;
    if (range == 0) return;

    saturation = full * range / std::min(sum, 2 * full - sum);
    // The first of equal ones: from it the two that follow on the circle pull to either side.
    auto const strongest = static_cast<std::size_t>(std::max_element(parts.begin(), parts.end()) - parts.begin());
    double const pull = parts[(strongest + 1) % 3] - parts[(strongest + 2) % 3];
    hue = onCircle(static_cast<double>(strongest) * third + pull / range * sixth);
}

unsigned long HLStoRGB(double hue, double luminance, double saturation)
{
    double const middle = onScale(luminance);
    double const half = std::min(middle, full - middle) * onScale(saturation) / full;
    Components result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = std::round(
            componentAt(onCircle(hue + third - static_cast<double>(i) * third), middle - half, middle + half));
    return colorOf(result);
}

unsigned long interpolateColors(unsigned long a, unsigned long b, double t)
{
    bool const between = t >= 0 && t <= 1;
    if (!between) return a;
    Components const from = componentsOf(a), to = componentsOf(b);
    Components result{};
    for (std::size_t i = 0; i < result.size(); ++i) result[i] = from[i] * (1 - t) + to[i] * t;
    return colorOf(result);
}
