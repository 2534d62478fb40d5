#pragma once

#include <algorithm>
#include <memory>
#include <numeric>
#include <vector>

namespace orvane
{

// The positions of an array's elements in the order of their keys, brought up to date when it is asked.
// Equal keys stand in the order of their positions. Appending keeps what is sorted and merges the rest
// in; every other change drops the index.
class CPositionIndex
{
public:
    CPositionIndex() = default;
    // An index describes one array and is never copied with it.
    CPositionIndex(CPositionIndex const &) {}
    CPositionIndex & operator=(CPositionIndex const &)
    {
        drop();
        return *this;
    }

    void drop() { order.reset(); }
    // Whether a search among that many elements would have nothing left to sort.
    bool covers(int size) const { return order && order->size() == static_cast<std::size_t>(size); }

    // Binary search among the first `size` elements: `compare(a, b)` orders two positions, `side(p)`
    // says on which side of the sought key the element at p lies (negative: before it). Answers a
    // position, or -1.
    template <class Compare, class Side>
    int find(int size, Compare const & compare, Side const & side)
    {
        if (size == 0) return -1;
        bring(static_cast<std::size_t>(size), compare);
        int low = 0;
        int high = size - 1;
        while (low <= high)
        {
            int const middle = low + (high - low) / 2;
            int const position = (*order)[static_cast<std::size_t>(middle)];
            int const place = side(position);
            if (place == 0) return position;
            if (place < 0) low = middle + 1;
            else high = middle - 1;
        }
        return -1;
    }

private:
    template <class Compare>
    void bring(std::size_t size, Compare const & compare)
    {
        if (!order) order = std::make_unique<std::vector<int>>();
        std::size_t const sorted = order->size();
        if (sorted == size) return;
        order->resize(size);
        auto const tail = order->begin() + static_cast<std::ptrdiff_t>(sorted);
        std::iota(tail, order->end(), static_cast<int>(sorted));
        auto const before = [&](int a, int b) { return compare(a, b) < 0; };
        // Stable, so that equal keys keep the order of their positions.
        std::stable_sort(tail, order->end(), before);
        if (sorted == 0) return;
        // One new element needs no walk over the sorted ones, only its place among them.
        if (size - sorted == 1) std::rotate(std::upper_bound(order->begin(), tail, *tail, before), tail, order->end());
        else std::inplace_merge(order->begin(), tail, order->end(), before);
    }

    std::unique_ptr<std::vector<int>> order;
};

}  // namespace orvane
