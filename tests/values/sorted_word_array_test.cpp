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

TEST(SortedWordArray, KeepsTheOrderOfInsertionAndFindsByNumber)
{
    CSortedWordArray array = of({5, 1, 3});
    EXPECT_EQ(array.find(3), 2);
    EXPECT_EQ(array.find(0), -1);
    EXPECT_EQ(array[0], 5);
    EXPECT_EQ(array.Add(65535), 3);
    EXPECT_EQ(array.find(65535), 3);
    array[0] = 7;
    EXPECT_EQ(array.find(5), -1);
    EXPECT_EQ(array.find(7), 0);
    array.RemoveAt(0);
    EXPECT_EQ(array.find(3), 1);
    array.InsertAt(0, array[2]);
    EXPECT_EQ(array.find(3), 2);
    EXPECT_EQ(CSortedWordArray().find(3), -1);
    EXPECT_TRUE(array.IsKindOf(CWordArray::GetThisClass()));
}

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
        array.resetChanged();
        EXPECT_FALSE(array.getChanged());
    }
}

TEST(SortedWordArray, IsEqualInTheOrderOfInsertion)
{
    CSortedWordArray array = of({5, 1});
    EXPECT_TRUE(array == of({5, 1}));
    EXPECT_TRUE(array != of({1, 5}) && array != of({5, 1, 1}));
    array = of({1, 5});
    EXPECT_EQ(array.find(5), 1);
    EXPECT_FALSE(array.getChanged());
}
