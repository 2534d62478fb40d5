#include "values/enumerations.h"

#include <gtest/gtest.h>

#include <climits>
#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace
{

enum class Kept { asBefore, asGiven };

// What files and planners know of an enumeration, stated apart from its own row.
struct Expected
{
    Expected(int first, int last, int unknown) : first(first), last(last), becomes(unknown), reads(unknown) {}
    Expected(int first, int last, Kept kept, int reads = 1) : first(first), last(last), kept(kept), reads(reads) {}
    Expected & starting(int number) { return initial = number, *this; }
    Expected & reading(int number) { return reads = number, *this; }
    Expected & named(std::string firstName, std::string lastName, std::string otherwise = "")
    {
        names = {firstName, lastName, otherwise};
        hasNames = true;
        return *this;
    }

    bool holds(int number) const { return number >= first && number <= last; }
    // What is read from a value that holds the number, and after the number was assigned over `before`.
    int read(int number) const { return holds(number) || kept == Kept::asGiven ? number : reads; }
    int assigned(int number, int before) const
    {
        if (holds(number)) return number;
        return read(kept == Kept::asGiven ? number : kept == Kept::asBefore ? before : becomes);
    }

    int first, last;
    std::optional<Kept> kept;
    int becomes = 0;
    int reads;
    int initial = 0;
    bool hasNames = false;
    struct { std::string first, last, otherwise; } names;
};

template <class E>
std::optional<std::string> textOf(E const & value)
{
    if constexpr (requires { value.getString(); }) return std::string(value.getString().view());
    else if constexpr (std::convertible_to<E, CString>) return std::string(CString(value).view());
    else return std::nullopt;
}

template <class E>
void expectFlags(E const & value, bool valid, bool changed)
{
    if constexpr (requires { value.isValid(); })
    {
        EXPECT_EQ(value.isValid(), valid);
    }
    EXPECT_EQ(value.getChanged(), changed);
    EXPECT_EQ(value.setChanged(), changed);
}

template <class E>
void expectNumbers(Expected const & expected)
{
    std::vector<int> numbers = {INT_MIN, INT_MAX};
    for (int number = -1; number <= expected.last + 1; ++number) numbers.push_back(number);
    for (int const number : numbers)
    {
        for (int before = expected.first; before <= expected.last; before += expected.last - expected.first)
        {
            E value;
            value = before;
            value.resetChanged();
            value = number;
            EXPECT_EQ(value.getEquivalentValue(), expected.assigned(number, before)) << number << " over " << before;
            expectFlags(value, true, true);
        }
    }
    if (expected.kept == Kept::asBefore)
    {
        EXPECT_EQ(E() = INT_MAX, E());  // one that was never given stays so in its number
    }
}

template <class E>
void expectConstructionAndCopies(Expected const & expected)
{
    E value;
    expectFlags(value, false, false);
    EXPECT_EQ(value.getEquivalentValue(), expected.read(expected.initial));

    using Number = typename E::Number;
    E const last(static_cast<Number>(expected.last));
    expectFlags(last, true, false);
    value = last;
    EXPECT_EQ(value, last);
    EXPECT_EQ(value.getEquivalentValue(), expected.last);
    expectFlags(value, true, true);
    expectFlags(E(value), true, false);
    EXPECT_NE(value, E(static_cast<Number>(expected.first)));

    value = E();
    EXPECT_EQ(value, E());
    expectFlags(value, false, true);
}

template <class E>
void expectTexts(Expected const & expected)
{
    E value;
    ASSERT_EQ(textOf(value).has_value(), expected.hasNames);
    if (!expected.hasNames) return;
    if (!expected.holds(expected.initial))
    {
        EXPECT_EQ(textOf(value), expected.names.otherwise);
    }
    EXPECT_EQ(textOf(value = expected.first), expected.names.first);
    EXPECT_EQ(textOf(value = expected.last), expected.names.last);
    for (int number = expected.first + 1; number < expected.last; ++number)
    {
        E const next = value = number;
        EXPECT_NE(textOf(next), "") << number;
        EXPECT_NE(textOf(next), textOf(value = number - 1)) << number;
    }
}

template <class E>
void check(Expected const & expected)
{
    SCOPED_TRACE(std::string(E::GetThisClass()->getName()));
    static_assert(sizeof(E) <= 16);
    expectNumbers<E>(expected);
    expectConstructionAndCopies<E>(expected);
    expectTexts<E>(expected);
}

TEST(Enumerations, KeepTheirNumbersFlagsAndTexts)
{
    check<C3DDisplayMode>({1, 7, 1});
    check<C3DLockMode>({1, 3, 3});
    check<CAccessType>(Expected(1, 5, 5).named("All", "None"));
    check<CChartType>(Expected(1, 2, 0).starting(1));
    check<CCompanyFilterMode>({1, 4, Kept::asBefore});
    check<CCompanyType>(Expected(1, 22, Kept::asGiven).named("Supplier", "Reseller"));
    check<CCostTotalType>(Expected(1, 2, Kept::asBefore).named("Budgeted", "Actual"));
    check<CCostType>(Expected(1, 7, Kept::asBefore).named("Fixed", "Yearly"));
    check<CDayType>({1, 3, 1});
    check<CDisplayChartFor>(Expected(3, 4, 0).starting(3));
    check<CDisplayUtilisationChartFor>(Expected(1, 7, 7).named("Selected Resource", "All Resources"));
    check<CFilterMode>({1, 2, Kept::asBefore});
    check<CInsertType>({1, 3, 1});
    check<CLinkStatus>(Expected(1, 2, 1).named("Proposed", "Accepted"));
    check<CLinkType>({1, 4, 1});
    check<CResourceProfileType>(Expected(1, 3, 0).starting(2).reading(2).named("Install", "Remove"));
    check<CResourceStatus>(Expected(1, 4, 1).named("Active", "Constrained", "Unknown"));
    check<CResourceType>(Expected(1, 4, 1).reading(0));
    check<CResourceUnitType>(Expected(0, 34, Kept::asBefore, 0).named("Unknown", "Person"));
    check<CRiskStatus>(Expected(1, 3, 1).named("Unmitigated", "Buffered"));
    check<CRiskType>(Expected(1, 2, Kept::asBefore).named("Subtractive", "Additive"));
    check<CRiskValueMode>({1, 2, Kept::asBefore});
    check<CRiskWeight>(Expected(1, 3, 1).named("Low", "High"));
    check<CRulesCheckerContext>(Expected(1, 3, 1).named("Originating Client", "Recieving Client"));
    check<CTaskConstraintType>(Expected(1, 2, 1).named("No Constraint", "Cannot Reschedule"));
    check<CTaskPasteMode>({1, 3, Kept::asBefore});
    check<CTaskReportType>(Expected(1, 2, Kept::asBefore).named("Delay", "Advance"));
    check<CTaskStatus>(Expected(1, 7, 1).named("Hold", "Finished"));
    check<CTaskType>(Expected(0, 2, 0).named("", "Key Date"));
}

// Names in the code and texts on the screen meet in the middle of the long tables too.
TEST(Enumerations, NamesCarryTheTextsThatPlannersRead)
{
    EXPECT_STREQ(CTaskStatus(CTaskStatus::Started).getString(), "Started");
    EXPECT_STREQ(CAccessType(CAccessType::WhereCustomer).getString(), "Where User is Customer");
    EXPECT_STREQ(CString(CCostType(CCostType::Quarterly)), "Quaterly");
    EXPECT_STREQ(CString(CCompanyType(CCompanyType::ProjectManager)), "Project manager");
    EXPECT_STREQ(CString(CResourceUnitType(CResourceUnitType::Millimeter)), "Milimeter");
    EXPECT_STREQ(CString(CResourceUnitType(CResourceUnitType::SquareMeter)), "Sq Meter");
    EXPECT_STREQ(CString(CResourceUnitType(CResourceUnitType::Pack)), "Pack");
    EXPECT_STREQ(CString(CResourceUnitType(CResourceUnitType::Sachet)), "Sachet");
    EXPECT_STREQ(CString(CResourceProfileType()), "Temporary");
}

TEST(Enumerations, TellTheirRanges)
{
    EXPECT_EQ(CCompanyType::getMinimumEquivalentValue(), 1);
    EXPECT_EQ(CCompanyType::getMaximumEquivalentValue(), 22);
    EXPECT_EQ(CResourceProfileType::getMinimumEquivalentValue(), 1);
    EXPECT_EQ(CResourceProfileType::getMaximumEquivalentValue(), 3);
    EXPECT_EQ(CResourceProfileType::getNumberOfProfileTypes(), 3);
    EXPECT_EQ(CResourceUnitType::getMinimumEquivalentValue(), 0);
    EXPECT_EQ(CResourceUnitType::getMaximumEquivalentValue(), 34);
    EXPECT_EQ(CResourceUnitType::getNumberOfUnitTypes(), 35);
}

// Two classes take in a number that they do not know; it has no text, however it is read.
TEST(Enumerations, UnknownNumbersHaveNoText)
{
    CCompanyType company(CCompanyType::Client);
    CResourceProfileType profile(CResourceProfileType::Install);
    EXPECT_STREQ(CString(company = 23), "");
    EXPECT_STREQ(CString(profile = 4), "");
}

// One row for each right, one column for each limit, in the order of their numbers.
TEST(AccessType, GreaterGrantsAccessThatTheOtherDoesNot)
{
    char const * const greater[] = {".XXXX", "..X.X", ".X..X", ".XX.X", "....."};
    for (int own = 1; own <= 5; ++own)
    {
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
    }
    EXPECT_FALSE(CAccessType() > CAccessType(CAccessType::WhereSupplier));  // never given: grants nothing
}

}  // namespace
