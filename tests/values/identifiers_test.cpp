#include "values/identifiers.h"

#include <gtest/gtest.h>

namespace
{

TEST(Identifiers, TextKeepsItsWidthAndReadsBack)
{
    CTaskID id{orvane::nullID};
    id.setGUID(CString("0a1b2c3d4e5f60718293a4b5c6d7e8 f"));
    EXPECT_EQ(id.toString(), CString(" a1b2c3d4e5f60718293a4b5c6d7e8 f"));
    CTaskID back;
    back.resetChanged();
    back.setGUID(id.toString());
    EXPECT_TRUE(back == id && !back.getChanged());
    for (int const length : {0, 31, 33})
    {
        back.setGUID(CString('a', length));
        EXPECT_TRUE(back.isNULL() && back.isValid() && back.getChanged()) << length;
    }
}

TEST(Identifiers, OrderIsByUnsignedBytesInMemory)
{
    CTaskID low, high;
    low.setGUID(CString("01ff0000000000000000000000000000"));
    high.setGUID(CString("80000000000000000000000000000000"));
    EXPECT_TRUE(low.compare(&high) == -1 && high.compare(&low) == 1);
}

// What was collected on one side comes out again, in order, on the other; copies take no part.
TEST(Identifiers, ReplayGivesTheSameIdentifiers)
{
    CFilterID::setCollectIssuedIDs(true);
    CFilterID const first;
    CFilterID const copy(first);
    CFilterID::suspendCollectingIssuedIDs();
    CFilterID const aside;
    CFilterID::resumeCollectingIssuedIDs();
    CFilterID const second;
    CFilterID::setCollectIssuedIDs(false);
    ASSERT_EQ(CFilterID::getIssuedIDs().GetSize(), 2);

    CFilterID::getIDsToIssue() = CFilterID::getIssuedIDs();
    CFilterID::setIssueIDs(true);
    CFilterID const null{orvane::nullID};
    CFilterID const again;
    EXPECT_EQ(again, first);

    EXPECT_EQ(CFilterID(), second);
    EXPECT_TRUE(CFilterID::getIDsToIssue().IsEmpty());
    EXPECT_NE(CFilterID(), second);
    CFilterID::setIssueIDs(false);
}

}  // namespace
