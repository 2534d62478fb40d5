#include "platform/string_table.h"

#include <gtest/gtest.h>

namespace
{

TEST(StringTableTest, SaysSoWhenANumberIsUnknown)
{
    EXPECT_EQ(orvane::loadString(54), "These Tasks are already linked.");
    for (int unknown : {-1, 0, 51, 52, 56}) EXPECT_EQ(orvane::loadString(unknown), orvane::loadString(50));
}

}  // namespace
