#include "model/supply_chain.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace
{

// Companies by their letters; '-' is none.
std::map<char, CCompanyID> companies()
{
    return {{'A', {}}, {'B', {}}, {'C', {}}, {'D', {}}, {'-', CCompanyID::getNULL()}};
}

TEST(SupplyChainTest, MovesDownAndBackUp)
{
    struct
    {
        char const * assigned;
        char const * expected;  // the supplier, then the customers
    } const cases[] = {
        {"", "- "},       {"A", "A "},  {"ABC", "C AB"},  {"ABCA", "A "},  {"ABCB", "B A"},
        {"ABCC", "C AB"}, {"AA", "A "}, {"ABCDB", "B A"}, {"ABA-", "- A"}, {"AB-C", "C AB"},
    };
    for (auto const & each : cases)
    {
        auto const byLetter = companies();
        auto const letterOf = [&](CCompanyID const & id)
        { return std::ranges::find_if(byLetter, [&](auto const & entry) { return entry.second == id; })->first; };
        CSupplyChain chain;
        for (char const * letter = each.assigned; *letter; ++letter) chain.assignToCompany(byLetter.at(*letter));
        std::string state{letterOf(chain.getSupplierID()), ' '};
        for (CCompanyID const & customer : chain.getCustomerID()) state += letterOf(customer);
        EXPECT_EQ(state, each.expected) << each.assigned;
    }
}

TEST(SupplyChainTest, TakesItsOwnCompaniesAsArguments)
{
    CCompanyID const first, second;
    CSupplyChain chain(first);
    chain.assignToCompany(second);
    chain.assignToCompany(chain.getCustomerID().GetAt(0));
    EXPECT_EQ(chain.getSupplierID(), first);
    EXPECT_TRUE(chain.getCustomerID().IsEmpty());
    CSupplyChain const before = chain;
    chain.assignToCompany(chain.getSupplierID());
    EXPECT_TRUE(chain == before);
}

}  // namespace
