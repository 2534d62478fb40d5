#include "config/bitmap.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>

#include "platform/host.h"

namespace
{

using orvane::Bitmap;
using Pixel = std::vector<unsigned char>;

unsigned char component(unsigned long color, int shift)
{
    return static_cast<unsigned char>(color >> shift & 0xFF);
}

int squaredDistance(unsigned long a, unsigned long b)
{
    int sum = 0;
    for (int shift : {0, 8, 16})
    {
        int const difference = component(a, shift) - component(b, shift);
        sum += difference * difference;
    }
    return sum;
}

// An index of 8 bits; of equally near colours the first.
Pixel nearestIndex(std::vector<unsigned long> const & palette, unsigned long color)
{
    auto const end = palette.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(palette.size(), 256));
    auto const nearest = std::min_element(palette.begin(), end,
                                          [&](unsigned long a, unsigned long b)
                                          { return squaredDistance(a, color) < squaredDistance(b, color); });
    return {static_cast<unsigned char>(nearest - palette.begin())};
}

Pixel fiveBitsEach(unsigned long color)
{
    int const packed = component(color, 16) >> 3 | component(color, 8) >> 3 << 5 | component(color, 0) >> 3 << 10;
    return {static_cast<unsigned char>(packed & 0xFF), static_cast<unsigned char>(packed >> 8)};
}

// What to look for and what to put there, as the bytes of a pixel; nothing for a depth that has none.
std::pair<Pixel, Pixel> replacementFor(Bitmap const & bitmap)
{
    constexpr unsigned long lightGrey = 0xC0C0C0;
    unsigned long const face = orvane::host().systemColor(orvane::system_color::buttonFace);
    switch (bitmap.depth)
    {
        case 8:
            if (bitmap.palette.empty()) return {};
            return {nearestIndex(bitmap.palette, lightGrey), nearestIndex(bitmap.palette, face)};
        case 16: return {{0x18, 0x19}, fiveBitsEach(face)};
        case 24:
        case 32: return {{0xC0, 0xC0, 0xC0}, {component(face, 16), component(face, 8), component(face, 0)}};
        default: return {};
    }
}

// How many pixels of a row have bits.
std::int64_t pixelsInRow(Bitmap const & bitmap, std::int64_t firstByte, std::int64_t pixelBytes)
{
    std::int64_t const left = static_cast<std::int64_t>(bitmap.bits.size()) - firstByte;
    return std::min<std::int64_t>(bitmap.width, std::min<std::int64_t>(bitmap.stride, left) / pixelBytes);
}

}  // namespace

void replaceBitmapColor(HBITMAP bitmap)
{
    if (!bitmap || bitmap->stride < 1) return;
    auto const [sought, replacement] = replacementFor(*bitmap);
    if (sought.empty()) return;

    std::int64_t const pixelBytes = bitmap->depth / 8;
    std::int64_t const size = static_cast<std::int64_t>(bitmap->bits.size());
    for (std::int64_t y = 0, row = 0; y < bitmap->height && row < size; ++y, row += bitmap->stride)
    {
        std::int64_t const count = pixelsInRow(*bitmap, row, pixelBytes);
        for (std::int64_t x = 0; x < count; ++x)
        {
            auto const pixel = bitmap->bits.begin() + row + x * pixelBytes;
            if (std::equal(sought.begin(), sought.end(), pixel))
                std::copy(replacement.begin(), replacement.end(), pixel);
        }
    }
}
