#pragma once

namespace orvane
{

// The element at the index, or null outside the array.
template <class Array>
auto elementAt(Array const & array, int index) -> decltype(&array.GetAt(0))
{
    return index >= 0 && index < array.GetSize() ? &array.GetAt(index) : nullptr;
}

// The element of that identifier; null when there is none, and for a NULL identifier.
template <class Array, class ID>
auto elementOf(Array const & array, ID const & id) -> decltype(&array.GetAt(0))
{
    return id.isNULL() ? nullptr : elementAt(array, array.findByID(id));
}

}  // namespace orvane
