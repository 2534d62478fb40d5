#include "values/typed_array.h"

#include "values/identifier_arrays.h"
#include "values/string_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace
{

// A row of a table, found by its identity.
class CRow : public CDynamic<CRow>
{
public:
    CRow() = default;
    CRow(CTaskID const & id, int number) : id(id), number(number) {}
    CTaskID const & getID() const { return id; }
    CProjectInt const & getNumber() const { return number; }
    bool setChanged() const { return number.getChanged(); }
    void resetChanged() { number.resetChanged(); }
    void touch() { number.touch(); }
    friend bool operator==(CRow const & a, CRow const & b) { return a.id == b.id && a.number == b.number; }

private:
    CTaskID id;
    CProjectInt number;
};

class CRowArray : public orvane::CIdentifiedArray<CRowArray, CRow>
{
public:
    using CTypedArray::isSorted;
};

// A binary search over the positions in the order of their keys, and of themselves where keys are equal.
int searched(std::vector<CTaskID> const & ids, CTaskID const & sought)
{
    std::vector<int> order(ids.size());
    std::iota(order.begin(), order.end(), 0);
    auto const compare = [&](int a, CTaskID const & id) { return ids[static_cast<std::size_t>(a)].compare(&id); };
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return compare(a, ids[static_cast<std::size_t>(b)]) < 0; });
    int low = 0;
    for (int high = static_cast<int>(ids.size()) - 1; low <= high;)
    {
        int const middle = (low + high) / 2;
        int const position = order[static_cast<std::size_t>(middle)];
        int const side = compare(position, sought);
        if (side == 0) return position;
        (side < 0 ? low : high) = side < 0 ? middle + 1 : middle - 1;
    }
    return -1;
}

TEST(TypedArray, ElementsKeepTheirIdentityAndAreCountedOnce)
{
    CTaskIDArray array;
    array.Add(CTaskID());
    CTaskID const * const first = &array.GetAt(0);
    CTaskID::getNULL();
    CTaskID::resetCreatedAndDeletedCount();
    CTaskID::setCollectIssuedIDs(true);
    for (int each = 0; each < 1000; ++each) array.Add(array.GetAt(0));
    array.InsertAt(0, array.GetAt(0));
    array.RemoveAt(5, 10);
    CTaskIDArray copy(array);
    copy = array;
    CTaskID::setCollectIssuedIDs(false);
    EXPECT_EQ(&array.GetAt(1), first);
    EXPECT_EQ(CTaskID::getCreated(), 1001 + 992 + 992);
    EXPECT_EQ(CTaskID::getDeleted(), 10 + 992);
    EXPECT_TRUE(CTaskID::getIssuedIDs().IsEmpty());
    EXPECT_TRUE(copy == array);
}

TEST(TypedArray, ChangingAnElementKeepsTheIndex)
{
    CRowArray rows;
    std::vector<CTaskID> const ids(20);
    for (CTaskID const & id : ids) rows.Add(CRow(id, 1));
    EXPECT_FALSE(rows.changeElement(CRow(CTaskID(), 2)));
    rows.resetChanged();
    EXPECT_TRUE(rows.isSorted());
    EXPECT_FALSE(rows.setChanged());
    EXPECT_TRUE(rows.changeElement(CRow(ids[7], 2)));
    EXPECT_TRUE(rows.isSorted() && rows.getChanged());
    EXPECT_EQ(rows.GetAt(7).getNumber().getValue(), 2);
    EXPECT_EQ(rows.findByID(ids[7]), 7);
    rows[3] = CRow(ids[7], 3);
    EXPECT_FALSE(rows.isSorted());
    EXPECT_EQ(rows.findByID(ids[3]), -1);
    rows.RemoveAll();
    EXPECT_EQ(rows.findByID(ids[7]), -1);
    EXPECT_FALSE(rows.isSorted());
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
    CTaskIDArray const copy(array);  // assigned elements are changed, the array's own flag is the source's
    EXPECT_FALSE(copy.getChanged());
    EXPECT_TRUE(copy.GetAt(0).getChanged());
    EXPECT_FALSE(array.GetAt(0).getChanged());
    array = array;
    EXPECT_FALSE(array.getChanged());
    EXPECT_TRUE(array.setChanged() && array == copy);
    array.resetChanged();
    array.RemoveAll();
    EXPECT_TRUE(array.setChanged());
}

TEST(TypedArray, TextsRollUpTheirFlags)
{
    CProjectStringArray texts;
    texts.Add("b");
    texts.Add("a");
    texts.resetChanged();
    CProjectStringArray const copy(texts);
    EXPECT_FALSE(texts.setChanged());
    texts[1] = "c";
    EXPECT_TRUE(texts.setChanged() && texts != copy);
    EXPECT_STREQ(copy.GetAt(0), "b");
}

// Against a plain list, with lookups after each step, equal keys among them.
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
        bool const inside = at < static_cast<int>(plain.size());
        switch (random() % 5)
        {
            case 0: array.Add(id), plain.push_back(id); break;
            case 1: array.InsertAt(at, id), plain.insert(plain.begin() + at, id); break;
            case 2:
                array.RemoveAt(at);
                if (inside) plain.erase(plain.begin() + at);
                break;
            case 3:
                array.SetAt(at, id);
                if (inside) plain[static_cast<std::size_t>(at)] = id;
                break;
            default:
                if (plain.size() > 30) array.SetSize(5), plain.resize(5);
                break;
        }
        ASSERT_EQ(array.GetSize(), static_cast<int>(plain.size()));
        for (int probe = 0; probe < 3; ++probe)
        {
            CTaskID const & sought = pool[random() % pool.size()];
            ASSERT_EQ(array.findByID(sought), searched(plain, sought)) << "step " << step;
        }
    }
}

}  // namespace
