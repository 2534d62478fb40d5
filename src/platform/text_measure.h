#pragma once

#include "platform/string.h"

// The size of a text of one line in a font of that face, or of the nearest face that the system has; it may be of
// any length. `size` is the height of the em, in pixels or any other unit: the measure is in the same
// unit, and grows with the size in proportion, without hinting. The size's sign makes no difference. An empty
// text, and a size that is 0 or no finite number, give 0.

double textWidth(CString const & text, CString const & fontName, double size);
// How far the font's letters rise above the base line.
double textAscent(CString const & text, CString const & fontName, double size);

namespace orvane
{

// From the highest to the lowest that the font's letters reach.
double textHeight(CString const & text, CString const & fontName, double size);

}  // namespace orvane
