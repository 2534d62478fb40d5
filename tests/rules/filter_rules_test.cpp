#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

TEST(FilterRules, FiltersComeChangeAndGo)
{
    for (int number = 1; number <= 3; ++number)
    {
        CRecordingHost host;
        host.answers = {answer::no, answer::yes};
        CRulesCheckerContext const context = contextOf(number);
        std::size_t const questions = context == CRulesCheckerContext::OriginatingClient ? 2 : 0;
        Plan plan;
        CFilter filter;
        auto const add = [&](auto & rules) { return rules.addFilter(filter); };
        auto const change = [&](auto & rules) { return rules.changeFilter(filter); };
        auto const remove = [&](auto & rules) { return rules.removeFilter(CFilterID(filter.getID())); };
        EXPECT_FALSE(plan.act(change, context) || plan.act(remove, context));
        EXPECT_TRUE(plan.act(add, context) && !plan.act(add, context));
        filter.setName("100%");
        plan.act([&](auto & rules) { return rules.setSelectedFilterID(filter.getID()); }, context);
        EXPECT_TRUE(plan.act(change, context) && *plan.project.getSelectedFilter() == filter);
        EXPECT_EQ(plan.act(remove, context), questions == 0);
        EXPECT_EQ(plan.act(remove, context), questions != 0);
        EXPECT_EQ(plan.project.getNumberOfFilters(), 0);
        EXPECT_EQ(plan.project.getSelectedFilterID().isNULL(), context != CRulesCheckerContext::TransactionServer);
        EXPECT_EQ(host.boxes.size(), questions);
        for (ShownBox const & box : host.boxes) EXPECT_EQ(box.text, "Remove the Filter \"100%\"?");
    }
}

TEST(FilterRules, TheSelectedFilterDeselects)
{
    Plan plan({aTask("a").with({aTask("b")}), aTask("c").inStatus(CTaskStatus::Ready), aTask("d")});
    // The selected tasks in their order, the primary one, and what is shown.
    auto const state = [&] {
        auto const nameOf = [&](CTaskID const & id) {
            CTask const * const task = plan.project.getTask(id);
            return task ? CString(task->getName()) : CString("?");
        };
        CString text;
        for (CTaskID const & id : plan.project.getSelectedTaskID()) text += nameOf(id);
        text += ' ' + nameOf(plan.project.getPrimarySelectedTaskID()) + " of ";
        for (char const * name : {"a", "b", "c", "d"}) text += plan[name].isIncludedByFilter() ? name : "";
        return text;
    };
    CTaskIDArray all = plan.ids({"d", "c", "b", "a"});
    all.Add(CTaskID());
    CStatusFilter part;
    part.setInUse(true);
    part.setReadyIncluded(false);
    CFilter filter;
    filter.setStatusFilter(part);
    plan.act([&](auto & rules) {
        rules.setSelectedTaskID(all);
        rules.setPrimarySelectedTaskID(plan.id("c"));
        return rules.addFilter(filter) && rules.setSelectedFilterID(filter.getID());
    });
    // A summary task is shown for its child, and not by itself.
    EXPECT_EQ(state(), "dcba? c of abd");
    plan.act([&](auto & rules) { return rules.changeFilter(filter); });
    EXPECT_EQ(state(), "db? ? of abd");
}

TEST(FilterRules, WhatGoesIsNoLongerChosen)
{
    Plan plan;
    CHumanResource crew, mason;
    CCompany company;
    CRisk weather, storm;
    CResourceIDArray resources;
    for (CResourceID const & id : {mason.getID(), CResourceID(), crew.getID(), mason.getID()}) resources.Add(id);
    CRiskIDArray risks;
    for (CRiskID const & id : {storm.getID(), weather.getID()}) risks.Add(id);
    CResourcesFilter ofResources;
    ofResources.setResourcesIncluded(resources);
    CRiskFilter ofRisks;
    ofRisks.setRiskIncluded(risks);
    CFilter filter;
    filter.setResourcesFilter(ofResources);
    filter.setRiskFilter(ofRisks);
    plan.act([&](auto & rules) {
        EXPECT_TRUE(rules.addCompany(company) && rules.addHumanResourceToCompany(crew, company.getID()));
        EXPECT_TRUE(rules.addHumanResourceToParent(mason, crew.getID()) && rules.addFilter(filter));
        EXPECT_TRUE(rules.addRisk(weather, CRiskID::getNULL()) && rules.addRisk(storm, weather.getID()));
        EXPECT_TRUE(rules.removeRisk(weather.getID()) && rules.removeResource(crew.getID()));
    });
    CFilter const & now = *plan.project.getFilter(filter.getID());
    EXPECT_EQ(now.getResourcesFilter().getResourcesIncluded().GetSize(), 1);
    EXPECT_EQ(now.getRiskFilter().getRiskIncluded().GetSize(), 0);
}

}  // namespace
