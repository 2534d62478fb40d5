#pragma once

// The lowest bit of a number.
constexpr bool odd(int number)
{
    return (number & 1) != 0;
}

constexpr bool even(int number)
{
    return !odd(number);
}

// The sum of bytes from 0 to 255; it cannot outgrow the result. 0 for a null pointer or a length below 1.
inline long checksum(void const * bytes, int length)
{
    long sum = 0;
    auto const * const first = static_cast<unsigned char const *>(bytes);
    for (int i = 0; first && i < length; ++i) sum += first[i];
    return sum;
}
