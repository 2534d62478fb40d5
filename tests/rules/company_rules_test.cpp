#include <array>
#include <functional>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

// A company, with a crane, that a project knows.
struct Site : Plan
{
    explicit Site(std::vector<TaskDraft> const & tasks = {}) : Plan(tasks)
    {
        for (char const * name : {"Builders", "Owners"})
            act([&](auto & rules)
                { return rules.addCompany(CCompany(name, CCompanyType::Contractor, "1 Quay", "555 1", "", "p@q")); });
        act([&](auto & rules) { return rules.addEquipmentResourceToCompany(crane, builders()); });
    }
    CCompany const & company(int index = 0) const { return *project.getCompany(index); }
    CCompanyID builders() const { return company().getID(); }
    CCompanyID owners() const { return company(1).getID(); }
    void hand(std::string const & task, CCompanyID const & supplier, std::vector<CCompanyID> const & customers = {})
    {
        CCompanyIDArray ids;
        for (CCompanyID const & each : customers) ids.Add(each);
        writable(task).getWritableSupplyChain().setSupplierID(supplier);
        writable(task).getWritableSupplyChain().setCustomerID(ids);
    }

    CEquipmentResource crane;
};

// ---- what texts may hold ----------------------------------------------------------------------------

// Whether a company takes an empty text, one of two lines, and one with a control character there.
TEST(CompanyRules, ChangedTextsAreChecked)
{
    std::pair<void (CCompany::*)(CString const &), char const *> const fields[] = {
        {&CCompany::setName, "---"},      {&CCompany::setAddress, "++-"},      {&CCompany::setTelephoneNumber, "+--"},
        {&CCompany::setFaxNumber, "+--"}, {&CCompany::setEmailAddress, "+--"},
    };
    Site site;
    CCompany const before(site.company());
    for (auto const & [set, answers] : fields)
        for (int each = 0; each < 3; ++each)
        {
            CCompany changed(before);
            (changed.*set)(std::array{"", "a\nb", "a\x01"}[static_cast<std::size_t>(each)]);
            bool const taken = site.act([&](auto & rules) { return rules.changeCompany(changed); });
            EXPECT_EQ(taken, answers[each] == '+') << answers << each;
            EXPECT_TRUE(site.company() == (taken ? changed : before));
            site.act([&](auto & rules) { return rules.changeCompany(before); });
        }
}

TEST(CompanyRules, WhatStaysAsItWasIsNotChecked)
{
    Site site;
    CCompanyID const id = site.builders();
    CLocalRulesChecker rules(&site.project, CRulesCheckerContext::OriginatingClient);
    EXPECT_TRUE(rules.setCompanyFaxNumber(id, "\n") && rules.setCompanyName(id, "\t"));
    EXPECT_FALSE(rules.setCompanyFaxNumber(id, "\n") || rules.setCompanyName(id, " "));
}

// ---- going --------------------------------------------------------------------------------------------

TEST(CompanyRules, CompanyWithAPartInATaskStays)
{
    std::pair<std::function<void(Site &)>, char const *> const cases[] = {
        {[](Site & site) { site.hand("walls", site.builders()); },
         "This company cannot be removed, because it is the Supplier of\n\"walls\""},
        {[](Site & site) {
             site.hand("roof", site.owners(), {site.owners(), site.builders()});
         },
         "This company cannot be removed, because it is the Customer of\n\"roof\""},
        {[](Site & site)
         { site.act([&](auto & rules) { return rules.assignResourceToTask(site.id("roof"), site.crane.getID()); }); },
         ""},
        {[](Site & site) { site.hand("roof", site.owners()); }, nullptr},
    };
    for (auto const & [arrange, message] : cases)
    {
        for (int number = 1; number <= 3; ++number)
        {
            Site site({aTask("house").with({aTask("walls"), aTask("roof")})});
            arrange(site);
            site.act([&](auto & rules) { return rules.setSelectedCompanyID(site.builders()); });
            site.act([&](auto & rules) { return rules.setSelectedResourceID(site.crane.getID()); });
            CRecordingHost desktop;
            {
                CLocalRulesChecker rules(&site.project, contextOf(number));
                // The selection itself is the argument, and is cleared on the way.
                EXPECT_EQ(rules.removeCompany(site.project.getSelectedCompanyID()), message == nullptr);
                EXPECT_EQ(rules.getMessage(), message ? message : "");
            }
            bool const warned = message && *message && number == 1;
            ASSERT_EQ(desktop.boxes.size(), warned ? 1u : 0u);
            for (ShownBox const & box : desktop.boxes) EXPECT_EQ(box.text, message);
            bool const cleared = !message && number != 2;
            EXPECT_EQ(site.project.getSelectedCompanyID().isNULL(), cleared);
            EXPECT_EQ(site.project.getSelectedResourceID().isNULL(), cleared);
            EXPECT_EQ(site.project.getNumberOfCompanies(), message ? 2 : 1);
        }
    }
}

// ---- the supply chain -----------------------------------------------------------------------------------

TEST(CompanyRules, SupplyChainNamesKnownCompaniesOnly)
{
    Site site({aTask("house").with({aTask("walls")})});
    for (CCompanyID const & supplier : {site.builders(), CCompanyID(), CCompanyID::getNULL()})
    {
        for (CCompanyID const & customer : {site.owners(), CCompanyID(), CCompanyID::getNULL()})
        {
            CSupplyChain chain(customer);
            chain.setID(site["walls"].getSupplyChain().getID());
            chain.assignToCompany(supplier);
            bool const known = supplier == site.builders() && (customer == site.owners() || customer.isNULL());
            EXPECT_EQ(site.act([&](auto & rules) { return rules.changeSupplyChain(chain); }), known);
            EXPECT_EQ(site["walls"].getSupplyChain() == chain, known);
        }
    }
}

}  // namespace
