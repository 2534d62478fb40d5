#include "values/enumerations.h"

#include <gtest/gtest.h>

#include <climits>
#include <concepts>
#include <string>

namespace
{

// Instead of the number that an unknown number becomes.
constexpr int keeps = -1000, stores = -2000;

template <class E>
CString textOf(E const & value)
{
    if constexpr (requires { value.getString(); }) return value.getString();
    else if constexpr (std::convertible_to<E, CString>) return CString(value);
    else return "";
}

// The numbers known, as what an unknown one is read after its assignment, as what a fresh value is read, and texts.
template <class E>
void check(int first, int last, int unknown, int fresh, char const * firstText = "", char const * lastText = "")
{
    SCOPED_TRACE(std::string(E::GetThisClass()->getName()));
    EXPECT_EQ(E().getEquivalentValue(), fresh);
    CString former = "-";
    for (int number = first - 1; number <= last + 1; ++number)
    {
        int const outside = number < first ? INT_MIN : INT_MAX;
        bool const known = number >= first && number <= last;
        for (int given : {number, known ? number : outside})
        {
            int const otherwise = unknown == keeps ? last : unknown == stores ? given : unknown;
            E value(static_cast<typename E::Number>(last));
            EXPECT_FALSE(value.getChanged());
            value = given;
            EXPECT_EQ(value.getEquivalentValue(), known ? given : otherwise) << given;
            EXPECT_TRUE(value.setChanged());
            if (!known) continue;
            EXPECT_EQ(E(static_cast<typename E::Number>(number)), value);
            EXPECT_TRUE(textOf(value) != former || *lastText == '\0') << number;
            if (number != first && number != last) continue;
            EXPECT_EQ(textOf(value), number == first ? firstText : lastText);
        }
        if (E value; known) former = textOf(value = number);
    }
}

TEST(Enumerations, KeepTheirNumbersFlagsAndTexts)
{
    check<C3DDisplayMode>(1, 7, 1, 1);
    check<C3DLockMode>(1, 3, 3, 3);
    check<CAccessType>(1, 5, 5, 5, "All", "None");
    check<CChartType>(1, 2, 0, 1);
    check<CCompanyFilterMode>(1, 4, keeps, 1);
    check<CCompanyType>(1, 22, stores, 0, "Supplier", "Reseller");
    check<CCostTotalType>(1, 2, keeps, 1, "Budgeted", "Actual");
    check<CCostType>(1, 7, keeps, 1, "Fixed", "Yearly");
    check<CDayType>(1, 3, 1, 1);
    check<CDisplayChartFor>(3, 4, 0, 3);
    check<CDisplayUtilisationChartFor>(1, 7, 7, 7, "Selected Resource", "All Resources");
    check<CFilterMode>(1, 2, keeps, 1);
    check<CInsertType>(1, 3, 1, 1);
    check<CLinkStatus>(1, 2, 1, 1, "Proposed", "Accepted");
    check<CLinkType>(1, 4, 1, 1);
    check<CResourceProfileType>(1, 3, 2, 2, "Install", "Remove");
    check<CResourceStatus>(1, 4, 1, 1, "Active", "Constrained");
    check<CResourceType>(1, 4, 1, 0);
    check<CResourceUnitType>(0, 34, keeps, 0, "Unknown", "Person");
    check<CRiskStatus>(1, 3, 1, 1, "Unmitigated", "Buffered");
    check<CRiskType>(1, 2, keeps, 1, "Subtractive", "Additive");
    check<CRiskValueMode>(1, 2, keeps, 1);
    check<CRiskWeight>(1, 3, 1, 1, "Low", "High");
    check<CRulesCheckerContext>(1, 3, 1, 1, "Originating Client", "Recieving Client");
    check<CTaskConstraintType>(1, 2, 1, 1, "No Constraint", "Cannot Reschedule");
    check<CTaskPasteMode>(1, 3, keeps, 1);
    check<CTaskReportType>(1, 2, keeps, 1, "Delay", "Advance");
    check<CTaskStatus>(1, 7, 1, 1, "Hold", "Finished");
    check<CTaskType>(0, 2, 0, 0, "", "Key Date");
}

// One row for each right, one column for each limit, in the order of their numbers.
TEST(AccessType, GreaterGrantsAccessThatTheOtherDoesNot)
{
    char const * const greater[] = {".XXXX", "..X.X", ".X..X", ".XX.X", "....."};
    for (int own = 1; own <= 5; ++own)
        for (int other = 1; other <= 5; ++other)
        {
            CAccessType right, limit;
            right = own;
            limit = other;
            bool const isGreater = greater[own - 1][other - 1] == 'X';
            EXPECT_EQ(right > limit, isGreater) << own << " > " << other;
            right.resetChanged();
            right.makeEqualOrLessPermissive(limit);
            EXPECT_EQ(right.getEquivalentValue(), isGreater ? other : own) << own << " cut to " << other;
            EXPECT_EQ(right.getChanged(), isGreater);
        }
    EXPECT_FALSE(CAccessType() > CAccessType(CAccessType::WhereSupplier));  // never given: grants nothing
}

}  // namespace
