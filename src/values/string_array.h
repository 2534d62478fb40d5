#pragma once

#include "values/scalars.h"
#include "values/typed_array.h"

// Texts of the model in the order in which they were added. Their key, the text in byte order, serves no
// lookup.
class CProjectStringArray : public orvane::CTypedArray<CProjectStringArray, CProjectString, std::identity{}>
{
};
