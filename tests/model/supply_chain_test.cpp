#include "model/supply_chain.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace
{

TEST(SupplyChainTest, MovesDownAndBackUp)
{
    // What is assigned, and then the supplier and the customers.
    std::pair<char const *, char const *> const cases[] = {
        {"", "- "},       {"A", "A "},  {"ABC", "C AB"},  {"ABCA", "A "},  {"ABCB", "B A"},
        {"ABCC", "C AB"}, {"AA", "A "}, {"ABCDB", "B A"}, {"ABA-", "- A"}, {"AB-C", "C AB"},
    };
    // Companies by their letters.
    std::map<char, CCompanyID> const byLetter{{'A', {}}, {'B', {}}, {'C', {}}, {'D', {}}, {'-', CCompanyID::getNULL()}};
    for (auto const & [assigned, expected] : cases)
    {
        auto const letterOf = [&](CCompanyID const & id)
        { return std::ranges::find_if(byLetter, [&](auto const & entry) { return entry.second == id; })->first; };
        CSupplyChain chain;
        for (char const * letter = assigned; *letter; ++letter) chain.assignToCompany(byLetter.at(*letter));
        std::string state{letterOf(chain.getSupplierID()), ' '};
        for (CCompanyID const & customer : chain.getCustomerID()) state += letterOf(customer);
        EXPECT_EQ(state, expected) << assigned;
    }
}

}  // namespace
