#pragma once

#include <vector>

namespace orvane
{

// A picture in memory, its rows `stride` bytes apart. A pixel has 8 bits, an index into the palette; 16, five
// each of blue, green and red from the lowest up; or 24 or 32, the bytes of blue, green and red. Colours of the
// palette are 0x00BBGGRR.
struct Bitmap
{
    int width = 0;
    int height = 0;
    int stride = 0;
    int depth = 0;
    std::vector<unsigned long> palette{};
    std::vector<unsigned char> bits{};
};

}  // namespace orvane

using HBITMAP = orvane::Bitmap *;

// Turns light grey (0xC0C0C0) into the colour of the desktop's buttons. With a palette both are the nearest colours
// that it has; with 16 bits light grey is the pair of bytes 0x18, 0x19. Nothing for null, and for other
// depths. Pixels for which there are no bits are left out.
void replaceBitmapColor(HBITMAP bitmap);
