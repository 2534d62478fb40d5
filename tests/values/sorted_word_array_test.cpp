#include "values/sorted_word_array.h"

#include <gtest/gtest.h>

namespace
{

CSortedWordArray of(std::initializer_list<unsigned short> numbers)
{
    CSortedWordArray array;
    for (unsigned short const number : numbers) array.Add(number);
    array.resetChanged();
    return array;
}

}  // namespace

TEST(SortedWordArray, EveryChangeOfTheArrayFlagsIt)
{
    void (*const changes[])(CSortedWordArray &) = {
        [](CSortedWordArray & array) { array.Add(1); },
        [](CSortedWordArray & array) { array.InsertAt(0, 1, 2); },
        [](CSortedWordArray & array) { array.InsertAt(0, &array); },
        [](CSortedWordArray & array) { array.RemoveAt(0, 0); },
        [](CSortedWordArray & array) { array.RemoveAll(); },
        [](CSortedWordArray & array) { array.SetSize(array.GetSize()); },
        [](CSortedWordArray & array) { array.SetAtGrow(9, 1); },
    };
    for (auto const change : changes)
    {
        CSortedWordArray array = of({2, 2});
        EXPECT_FALSE(array.setChanged());
        change(array);
        EXPECT_TRUE(array.getChanged() && array.setChanged());
        EXPECT_TRUE(CSortedWordArray(array).getChanged());
    }
}

TEST(SortedWordArray, IsEqualInTheOrderOfInsertion)
{
    CSortedWordArray array = of({5, 1});
    EXPECT_TRUE(array == of({5, 1}) && array != of({1, 5}) && array != of({5, 1, 1}));
    array[0] = 7;
    EXPECT_TRUE(array.find(5) == -1 && array.find(7) == 0);
    array = of({1, 5});
    EXPECT_TRUE(array.find(5) == 1 && !array.getChanged());
}
