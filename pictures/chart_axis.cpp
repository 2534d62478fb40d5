#include "pictures/chart_axis.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace orvane::pictures
{

ValueAxis ValueAxis::covering(double least, double greatest, int most)
{
    least = std::min(least, 0.0);
    greatest = std::max(greatest, 0.0);
    if (greatest - least < 1e-9) greatest = least + 1;
    ValueAxis axis;
    double const power = std::pow(10, std::floor(std::log10((greatest - least) / most)));
    for (double const times : {1, 2, 5, 10, 20})
    {
        axis.step = times * power;
        axis.lowest = std::floor(least / axis.step) * axis.step;
        axis.highest = std::ceil(greatest / axis.step) * axis.step;
        if (std::lround((axis.highest - axis.lowest) / axis.step) <= most) break;
    }
    return axis;
}

Magnitude Magnitude::of(double value)
{
    constexpr Magnitude magnitudes[] = {
        {1, ""}, {1e3, "thousands"}, {1e6, "millions"}, {1e9, "billions"}, {1e12, "trillions"}};
    auto const isTooSmall = [&](Magnitude const & each) { return std::abs(value) < each.size * 1e5; };
    auto const found = std::find_if(std::begin(magnitudes), std::end(magnitudes), isTooSmall);
    return found == std::end(magnitudes) ? magnitudes[4] : *found;
}

std::string numberText(double value, int mostPlaces)
{
    char digits[400];
    auto const end = std::to_chars(digits, std::end(digits), std::abs(value), std::chars_format::fixed, mostPlaces).ptr;
    std::string text(digits, end);
    std::size_t point = text.find('.');
    if (point != text.npos)
    {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    for (std::size_t place = std::min(point, text.size()); place > 3; place -= 3) text.insert(place - 3, ",");
    return value < 0 && text.find_first_not_of("0.,") != text.npos ? "\u2212" + text : text;
}

}  // namespace orvane::pictures
