#include <functional>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

CRulesCheckerContext context(int number)
{
    CRulesCheckerContext value;
    value = number;
    return value;
}

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

TEST(CompanyRules, ChangedTextsAreChecked)
{
    struct TextCase
    {
        CString text;
        bool asName, asLine, asLines;
    };
    TextCase const cases[] = {
        {CString('n', 1024), true, true, true},
        {CString('n', 1025), false, false, false},
        // Bytes count, not characters.
        {CString('n', 1023) + "\xC3\xA9", false, false, false},
        {"", false, true, true},
        {" \t ", false, false, false},
        {"a\nb", false, false, true},
        {"a\x01", false, false, false},
        {"a\x09\x0B\x11", true, true, true},
    };
    std::pair<void (CCompany::*)(CString const &), bool TextCase::*> const fields[] = {
        {&CCompany::setName, &TextCase::asName},
        {&CCompany::setAddress, &TextCase::asLines},
        {&CCompany::setTelephoneNumber, &TextCase::asLine},
        {&CCompany::setFaxNumber, &TextCase::asLine},
        {&CCompany::setEmailAddress, &TextCase::asLine},
    };
    Site site;
    for (TextCase const & each : cases)
    {
        for (auto const & [set, allowed] : fields)
        {
            CCompany const before(site.company());
            CCompany changed(before);
            (changed.*set)(each.text);
            EXPECT_EQ(site.act([&](auto & rules) { return rules.changeCompany(changed); }), each.*allowed) << each.text;
            EXPECT_TRUE(site.company() == (each.*allowed ? changed : before));
            site.act([&](auto & rules) { return rules.changeCompany(before); });
        }
    }
}

TEST(CompanyRules, WhatStaysAsItWasIsNotChecked)
{
    Site site;
    CCompanyID const id = site.builders();
    CLocalRulesChecker rules(&site.project, CRulesCheckerContext::OriginatingClient);
    EXPECT_TRUE(rules.setCompanyFaxNumber(id, "\n") && rules.setCompanyName(id, "\t"));
    EXPECT_FALSE(rules.setCompanyFaxNumber(id, "\n") || rules.setCompanyName(id, " "));
    CCompany copy(site.company());
    copy.setAddress("2 Quay");
    EXPECT_TRUE(rules.changeCompany(copy));
    copy.getWritableEquipmentResources().Add(CEquipmentResource());
    EXPECT_FALSE(rules.changeCompany(copy));
}

// ---- going --------------------------------------------------------------------------------------------

TEST(CompanyRules, CompanyWithAPartInATaskStays)
{
    struct Case
    {
        std::function<void(Site &)> arrange;
        char const * message;
    };
    Case const cases[] = {
        {[](Site & site) { site.hand("walls", site.builders()); },
         "This company cannot be removed, because it is the Supplier of\n\"walls\""},
        {[](Site & site) {
             site.hand("roof", site.owners(), {site.owners(), site.builders()});
         },
         "This company cannot be removed, because it is the Customer of\n\"roof\""},
        // The first in the order of the rows, a summary task before what is below it.
        {[](Site & site)
         {
             site.hand("walls", site.builders());
             site.hand("house", site.builders(), {site.builders()});
         },
         "This company cannot be removed, because it is the Supplier of\n\"house\""},
        {[](Site & site)
         { site.act([&](auto & rules) { return rules.assignResourceToTask(site.id("roof"), site.crane.getID()); }); },
         ""},
        {[](Site & site) { site.hand("roof", site.owners()); }, nullptr},
    };
    for (Case const & each : cases)
    {
        for (int number = 1; number <= 3; ++number)
        {
            Site site({aTask("house").with({aTask("walls"), aTask("roof")})});
            each.arrange(site);
            site.act(
                [&](auto & rules) {
                    return rules.setSelectedCompanyID(site.builders()) &&
                           rules.setSelectedResourceID(site.crane.getID());
                });
            CRecordingHost desktop;
            {
                CLocalRulesChecker rules(&site.project, context(number));
                // The selection itself is the argument, and is cleared on the way.
                EXPECT_EQ(rules.removeCompany(site.project.getSelectedCompanyID()), each.message == nullptr);
                EXPECT_EQ(rules.getMessage(), each.message ? each.message : "");
            }
            bool const warned = each.message && *each.message && number == 1;
            ASSERT_EQ(desktop.boxes.size(), warned ? 1u : 0u);
            for (ShownBox const & box : desktop.boxes) EXPECT_EQ(box.text, each.message);
            bool const cleared = !each.message && number != 2;
            EXPECT_EQ(site.project.getSelectedCompanyID().isNULL(), cleared);
            EXPECT_EQ(site.project.getSelectedResourceID().isNULL(), cleared);
            EXPECT_EQ(site.project.getNumberOfCompanies(), each.message ? 2 : 1);
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
