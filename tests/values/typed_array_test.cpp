#include "values/typed_array.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "values/identifier_arrays.h"

namespace
{

TEST(Array, PositionsOutsideAreRefusedOrIgnored)
{
    CArray<int, int> array;
    array.Add(7);
    EXPECT_THROW(array.GetAt(1), std::out_of_range);
    EXPECT_THROW(array[-1], std::out_of_range);
    array.RemoveAt(5);
    array.RemoveAt(-1);
    array.InsertAt(-1, 3);
    array.SetAt(9, 3);
    array.SetAtGrow(-2, 3);
    array.SetSize(-4);
    EXPECT_EQ(array.GetSize(), 0);
    array.InsertAt(2, 5, 2);
    EXPECT_EQ(array.GetSize(), 4);
    array.RemoveAt(3, 100);
    EXPECT_EQ(array.GetUpperBound(), 2);
}

TEST(Array, ElementsThatStayKeepTheirAddresses)
{
    CTaskIDArray array;
    array.Add(CTaskID());
    CTaskID const * const first = &array.GetAt(0);
    for (int each = 0; each < 1000; ++each) array.Add(array.GetAt(0));
    array.InsertAt(0, array.GetAt(0));
    EXPECT_EQ(&array.GetAt(1), first);
    EXPECT_EQ(array.GetAt(0), *first);
}

TEST(Array, CopyingIssuesNoIdentifiers)
{
    CTaskIDArray array;
    for (int each = 0; each < 3; ++each) array.Add(CTaskID());
    CTaskID::setCollectIssuedIDs(true);
    CTaskIDArray copy(array);
    copy.Add(array.GetAt(0));
    copy = array;
    CTaskID::setCollectIssuedIDs(false);
    EXPECT_TRUE(CTaskID::getIssuedIDs().IsEmpty());
    EXPECT_TRUE(copy == array);
}

TEST(TypedArray, FlagsFollowTheArrayAndItsElements)
{
    CTaskIDArray array;
    array.Add(CTaskID());
    EXPECT_TRUE(array.getChanged());
    array.resetChanged();
    EXPECT_FALSE(array.setChanged());
    array[0] = array.GetAt(0);
    EXPECT_FALSE(array.getChanged());
    EXPECT_TRUE(array.setChanged());
    array.resetChanged();
    CTaskIDArray const copy(array);   // assigned elements are changed, the array's own flag is the source's
    EXPECT_FALSE(copy.getChanged());
    EXPECT_TRUE(copy.GetAt(0).getChanged());
    EXPECT_FALSE(array.GetAt(0).getChanged());
    array.RemoveAll();
    EXPECT_TRUE(array.setChanged());
}

// Every operation on the array against a plain list, with lookups after each.
TEST(TypedArray, LookupsStayRightThroughRandomHistories)
{
    std::mt19937 random(20261121);
    std::vector<CTaskID> pool(40);
    CTaskIDArray array;
    std::vector<CTaskID> plain;
    auto const some = [&](std::size_t bound) { return static_cast<int>(random() % bound); };
    for (int step = 0; step < 4000; ++step)
    {
        CTaskID const & id = pool[random() % pool.size()];
        int const at = some(plain.size() + 1);
        switch (random() % 5)
        {
        case 0: array.Add(id); plain.push_back(id); break;
        case 1: array.InsertAt(at, id); plain.insert(plain.begin() + at, id); break;
        case 2: array.RemoveAt(at); if (at < static_cast<int>(plain.size())) plain.erase(plain.begin() + at); break;
        case 3: if (!plain.empty()) { int const i = some(plain.size()); array[i] = id; plain[static_cast<std::size_t>(i)] = id; } break;
        default: if (plain.size() > 30) { array.SetSize(5); plain.resize(5); } break;
        }
        ASSERT_EQ(array.GetSize(), static_cast<int>(plain.size()));
        for (int probe = 0; probe < 3; ++probe)
        {
            CTaskID const & sought = pool[random() % pool.size()];
            int const found = array.findByID(sought);
            bool const present = std::find(plain.begin(), plain.end(), sought) != plain.end();
            ASSERT_EQ(found >= 0, present) << "step " << step;
            ASSERT_TRUE(!present || array.GetAt(found) == sought) << "step " << step;
        }
    }
}

}  // namespace
