#pragma once

#include <string>

namespace orvane::pictures
{

// An even scale of values that begins and ends at round ones.
struct ValueAxis
{
    double lowest = 0;
    double highest = 1;
    double step = 1;

    // From 0, or from below it, to at least the value, in no more than `most` steps of 1, 2 or 5 times a power of ten.
    static ValueAxis covering(double least, double greatest, int most);
    // The part of the way from the lowest to the highest.
    double share(double value) const { return (value - lowest) / (highest - lowest); }
};

// What a value is told in: of a million as "millions".
struct Magnitude
{
    double size = 1;
    char const * name = "";

    static Magnitude of(double value);
};

// With commas between thousands, and with as many decimal places as there may be but no idle zeros.
std::string numberText(double value, int mostPlaces);

}  // namespace orvane::pictures
