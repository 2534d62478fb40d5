#pragma once

#include "values/typed_array.h"

// 16-bit numbers in the order in which they were added; only the lookup goes by their size.
class CSortedWordArray : public orvane::CTypedArray<CSortedWordArray, unsigned short, std::identity{}, CWordArray>
{
public:
    // The position of the number, or -1.
    int find(unsigned short number) const { return findByKey(number); }
};
