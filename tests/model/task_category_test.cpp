#include "model/task_category.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace
{

// Both lookups after each of many changes, against a plain search.
TEST(TaskCategoryArrayTest, LookupsStayRight)
{
    constexpr unsigned seed = 20261205;
    std::mt19937 random(seed);
    auto const below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<CTaskCategory> pool;
    for (int each = 0; each < 30; ++each) pool.emplace_back(CString('a', each));
    CTaskCategoryArray array;
    for (int step = 0; step < 3000; ++step)
    {
        CTaskCategory const & category = pool[static_cast<std::size_t>(below(30))];
        int const position = below(array.GetSize() + 1);
        switch (below(8))
        {
            case 0: array.InsertAt(position, category); break;
            case 1: array.RemoveAt(position, below(3)); break;
            case 2: array.SetAt(position, category); break;
            case 3: array.getByName(category.getName()) = category; break;
            case 4: array = CTaskCategoryArray(array); break;
            case 5:
                if (below(20) == 0) array.RemoveAll();
                break;
            default: array.Add(category);
        }
        CTaskCategory const & sought = pool[static_cast<std::size_t>(below(30))];
        bool present = false;
        for (CTaskCategory const & each : array) present = present || each == sought;
        SCOPED_TRACE(testing::Message() << "step " << step << " of seed " << seed);
        for (int const found : {array.findByName(sought.getName()), array.findByID(sought.getID())})
        {
            ASSERT_EQ(found >= 0, present);
            ASSERT_TRUE(!present || array.GetAt(found) == sought);
        }
    }
}

}  // namespace
