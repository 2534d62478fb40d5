#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// Puts one sub-filter into use.
using Use = std::function<void(CFilter &)>;
template <class Part>
Use use(void (CFilter::*set)(Part const &), Part part)
{
    part.setInUse(true);
    return [=](CFilter & filter) { (filter.*set)(part); };
}
Use byName(std::vector<char const *> const & texts, bool include, bool matchCase = false, bool wholeWord = false)
{
    CNameFilter part;
    CProjectStringArray names;
    for (char const * text : texts) names.Add(text);
    part.setNames(names);
    part.setIncludeMatches(include);
    part.setMatchCase(matchCase);
    part.setMatchWholeWordOnly(wholeWord);
    return use(&CFilter::setNameFilter, part);
}
Use byDays(int first, int last, bool overlaps)
{
    CDateRangeFilter part;
    part.setStart(CProjectDate(2004, 1, first));
    part.setEnd(CProjectDate(2004, 1, last));
    part.setIncludeOverlaps(overlaps);
    return use(&CFilter::setDateRangeFilter, part);
}
Use byStatusBut(void (CStatusFilter::*hide)(CProjectBool const &))
{
    CStatusFilter part;
    (part.*hide)(false);
    return use(&CFilter::setStatusFilter, part);
}
template <class Part, class Array, class ID>
Use byChosen(void (CFilter::*set)(Part const &), void (Part::*choose)(Array const &), ID const & id, Part part = {})
{
    Array chosen;
    for (ID const & each : {ID(), id}) chosen.Add(each);
    (part.*choose)(chosen);
    return use(set, part);
}
Use byCompany(CCompany const & company, CCompanyFilterMode const & mode)
{
    CCompanyFilter part;
    part.setMode(mode);
    return byChosen(&CFilter::setCompanyFilter, &CCompanyFilter::setCompanyIncluded, company.getID(), part);
}

// dig 01-05, walls 01-06 and 01-07, house(roof 01-08), and a blank row. The builders, who dig for the owners, own
// the crane that lifts the walls; the roof fears a storm.
TEST(Filter, ShowsWhatPasses)
{
    Plan plan{{aTask("dig"), aTask("walls").from("01-06 09:00"_t).lasting(2_d).inStatus(CTaskStatus::Ready),
               aTask("house").with({aTask("roof").from("01-08 09:00"_t).inStatus(CTaskStatus::TBA)}), aBlank("blank")}};
    CEquipmentResource crane;
    CCompany builders, owners;
    CRisk storm;
    builders.resourcesOf<CEquipmentResource>().Add(crane);
    const_cast<CCompanyArray &>(plan.project.getAllCompanies()).Add(builders);
    plan.writable("dig").setSupplyChain(CSupplyChain(owners.getID()));
    plan.writable("dig").getWritableSupplyChain().assignToCompany(builders.getID());
    CAssignedResourceArray lifting;
    lifting.Add(CAssignedResource(CAssignedResourceID(), crane.getID(), 100));
    plan.writable("walls").setAssignedResources(lifting);
    CAssignedRiskArray fears;
    fears.Add(CAssignedRisk(storm.getID(), CRiskValueMode::Percent));
    plan.writable("roof").setAssignedRisks(fears);
    plan.derive();

    using Mode = CCompanyFilterMode;
    CFilterMode const every = CFilterMode::PassEvery, any = CFilterMode::PassAny;
    struct
    {
        std::vector<Use> uses;
        CFilterMode mode;
        std::string description, shown;
    } const cases[] = {
        {{}, every, "No Filter", "dig walls house roof "},
        {{byName({}, true)}, every, "Name Filter", ""},
        {{byName({}, false)}, any, "Name Filter", "dig walls house roof "},
        {{byName({"ROOF", "w"}, true)}, every, "Name Filter", "walls roof "},
        {{byName({"ROOF", "w"}, true, true)}, every, "Name Filter", "walls "},
        {{byName({"o", "roof"}, true, false, true)}, every, "Name Filter", "roof "},
        {{byName({"o"}, false)}, every, "Name Filter", "dig walls "},
        {{byDays(5, 5, false)}, every, "Date Range Filter", "dig "},
        {{byDays(7, 8, true)}, every, "Date Range Filter", "walls house roof "},
        {{byDays(7, 8, false)}, every, "Date Range Filter", "house roof "},
        {{byStatusBut(&CStatusFilter::setTbaIncluded)}, every, "Status Filter", "dig walls "},
        {{byChosen(&CFilter::setResourcesFilter, &CResourcesFilter::setResourcesIncluded, crane.getID())},
         every, "Resources Filter", "walls "},
        {{byChosen(&CFilter::setRiskFilter, &CRiskFilter::setRiskIncluded, storm.getID())},
         every, "Risk Filter", "roof "},
        {{byCompany(builders, Mode::Supplier)}, every, "Company Filter", "dig "},
        {{byCompany(owners, Mode::Customer)}, every, "Company Filter", "dig "},
        {{byCompany(owners, Mode::SupplierOrCustomer)}, every, "Company Filter", "dig "},
        {{byCompany(builders, Mode::ResourceOwner)}, every, "Company Filter", "walls "},
        {{byName({"l", "oo"}, true), byDays(7, 9, true)}, every, "Multiple Filters", "walls roof "},
        {{byName({"use"}, true), byStatusBut(&CStatusFilter::setTbaIncluded)},
         any, "Multiple Filters", "dig walls house "},
    };
    for (auto const & [uses, mode, description, shown] : cases)
    {
        CFilter filter;
        filter.setFilterMode(mode);
        for (Use const & each : uses) each(filter);
        filter.setProject(&plan.project);
        EXPECT_EQ(filter.getDescription(), (description + " Applied").c_str());
        std::string names;
        for (std::string const name : {"dig", "walls", "house", "roof", "blank"})
            if (filter.includeTask(plan[name])) names += name + ' ';
        EXPECT_EQ(names, shown + "blank ") << description;
    }
}

}  // namespace
