#pragma once

#include "platform/array.h"
#include "platform/string.h"

// Texts in the order of insertion.
class CStringArray : public CDynamic<CStringArray, CArray<CString, char const *>>
{
};
