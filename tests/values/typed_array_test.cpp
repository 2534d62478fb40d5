#include "values/typed_array.h"

#include "values/identifier_arrays.h"
#include "values/sorted_word_array.h"
#include "values/string_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace
{

// A binary search over the positions in the order of their keys, and of themselves where keys are equal.
template <class Key>
int searched(std::vector<Key> const & keys, Key const & sought)
{
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), 0U);
    auto const compare = [&](std::size_t a, Key const & key) { return orvane::compareKeys(keys[a], key); };
    std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return compare(a, keys[b]) < 0; });
    for (std::size_t low = 0, high = order.size(); low < high;)
    {
        std::size_t const middle = (low + high - 1) / 2;
        int const side = compare(order[middle], sought);
        if (side == 0) return static_cast<int>(order[middle]);
        (side < 0 ? low : high) = side < 0 ? middle + 1 : middle;
    }
    return -1;
}

// Against a plain list, with lookups after each step, equal keys among them.
template <class Array, class Key, class Find>
void liveThroughARandomHistory(std::vector<Key> const & pool, Find const & find)
{
    std::mt19937 random(20261121);
    Array array;
    std::vector<Key> plain;
    for (int step = 0; step < 4000; ++step)
    {
        Key const & key = pool[random() % pool.size()];
        int const at = static_cast<int>(random() % (plain.size() + 1));
        bool const inside = at < std::ssize(plain);
        switch (random() % 5)
        {
            case 0: array.Add(key), plain.push_back(key); break;
            case 1: array.InsertAt(at, key), plain.insert(plain.begin() + at, key); break;
            case 2:
                array.RemoveAt(at);
                if (inside) plain.erase(plain.begin() + at);
                break;
            case 3:
                array.SetAt(at, key);
                if (inside) plain[static_cast<std::size_t>(at)] = key;
                break;
            default:
                if (plain.size() > 30) array.SetSize(5), plain.resize(5);
        }
        ASSERT_EQ(array.GetSize(), std::ssize(plain));
        for (Key const & sought : {key, pool[random() % pool.size()], pool.front()})
            ASSERT_EQ(find(array, sought), searched(plain, sought)) << "step " << step;
    }
    Array const copy(array);
    EXPECT_TRUE(copy == array);
    array.Add(pool.front());
    EXPECT_TRUE(copy != array);
}

TEST(TypedArray, LookupsStayRightThroughRandomHistories)
{
    liveThroughARandomHistory<CTaskIDArray>(std::vector<CTaskID>(40), std::mem_fn(&CTaskIDArray::findByID));
    std::vector<unsigned short> numbers(40);
    std::iota(numbers.begin(), numbers.end(), 0);
    numbers.back() = 65535;
    liveThroughARandomHistory<CSortedWordArray>(numbers, std::mem_fn(&CSortedWordArray::find));
}

TEST(TypedArray, FlagsFollowTheArrayAndItsElements)
{
    CProjectStringArray array;
    array.Add("a");
    EXPECT_TRUE(array.getChanged());
    array.resetChanged();
    EXPECT_FALSE(array.setChanged());
    array[0] = "b";
    EXPECT_TRUE(!array.getChanged() && array.setChanged());
    array.resetChanged();
    CProjectStringArray const copy(array);  // assigned elements are changed, the array's own flag is the source's
    EXPECT_TRUE(!copy.getChanged() && copy.GetAt(0).getChanged() && !array.GetAt(0).getChanged());
    array = array;
    EXPECT_TRUE(!array.getChanged() && array.setChanged() && array == copy);
    array[0] = "c";
    EXPECT_TRUE(array != copy);
}

}  // namespace
