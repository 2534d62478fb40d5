#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// A plan with a tree of each kind: house(walls(door)) road, crew(mason) and a material, weather(storm(gust)).
struct Views
{
    Views()
    {
        CHumanResourceArray masons;
        masons.Add(mason);
        crew.setSubResources(masons);
        company.resourcesOf<CHumanResource>().Add(crew);
        company.resourcesOf<CMaterialResource>().Add(CMaterialResource());
        CRiskArray gusts, storms;
        gusts.Add(gust);
        storm.setSubRisks(gusts);
        storms.Add(storm);
        weather.setSubRisks(storms);
        const_cast<CCompanyArray &>(project.getAllCompanies()).Add(company);
        const_cast<CRiskArray &>(project.getAllRisks()).Add(weather);
        plan.derive();
    }
    // Of weather, storm and gust: "+" shown with what is below, "-" without, "." no entry.
    std::string risks() const
    {
        std::string all;
        for (CRisk const * each : {&weather, &storm, &gust})
        {
            CRiskPresentation entry;
            bool const isThere = project.getRiskPresentation(each->getID(), entry);
            all += !isThere ? '.' : entry.getShowExpanded() ? '+' : '-';
        }
        return all;
    }
    // How many entries there are for resources and for tasks.
    std::pair<int, int> others() const
    {
        CPresentationData const & data = project.getPresentationData();
        return {data.getResourcePresentations().GetCount(), data.getTaskPresentations().GetCount()};
    }

    Plan plan{{aTask("house").with({aTask("walls").with({aTask("door")})}), aTask("road")}};
    CProject & project = plan.project;
    CHumanResource crew, mason;
    CCompany company;
    CRisk weather, storm, gust;
};

TEST(ItemPresentations, ALoadKeepsTheEntriesOfWhatThereIs)
{
    Views views;
    CRiskPresentation collapsed;
    collapsed.setShowExpanded(false);
    CTaskPresentation tall, shown;
    tall.setRowHeight(44);
    views.plan.act(
        [&](auto & rules)
        {
            rules.collapseResource(views.mason.getID());
            rules.addResourcePresentation(CResourceID());
            rules.collapseRisk(views.gust.getID());
            rules.setRiskPresentation(CRiskID(), collapsed, false);
            for (CTaskID const & id : {views.plan.id("door"), CTaskID()}) rules.setTaskPresentation(id, tall);
            rules.removeTaskPresentation(views.plan.id("road"));
        });
    views.project.postSerialize();
    EXPECT_EQ(views.others(), std::pair(3, 4));
    EXPECT_EQ(views.project.getPresentationData().getRiskPresentations().GetCount(), 3);
    EXPECT_EQ(views.risks(), "++-");
    CResourcePresentation kept;
    EXPECT_TRUE(views.project.getResourcePresentation(views.mason.getID(), kept) && !kept.getShowExpanded());
    EXPECT_TRUE(views.project.getTaskPresentation(views.plan.id("door"), shown) && shown == tall);
    EXPECT_TRUE(views.project.getTaskPresentation(views.plan.id("road"), shown) && shown == CTaskPresentation());
}

TEST(ItemPresentations, ItemsAndTreesAreExpandedCollapsedAndForgotten)
{
    using Rules = CLocalRulesChecker;
    Views const views;
    CRiskID const weather = views.weather.getID(), storm = views.storm.getID(), unknown, null = CRiskID::getNULL();
    CRiskPresentation collapsed;
    collapsed.setShowExpanded(false);
    std::tuple<std::function<bool(Rules &)>, bool, char const *> const steps[] = {
        // Also without an entry, as after a move.
        {[&](Rules & rules) { return rules.expandRisk(storm); }, true, "..."},
        {[&](Rules & rules) { return rules.collapseRisk(storm) && rules.collapseRisk(storm); }, true, ".-."},
        {[&](Rules & rules) { return rules.expandRisk(storm); }, true, ".+."},
        {[&](Rules & rules) { return rules.expandRisk(unknown) || rules.collapseRisk(null); }, false, ".+."},
        {[&](Rules & rules) { return rules.removeRiskPresentation(unknown); }, true, ".+."},
        {[&](Rules & rules) { return rules.removeRiskPresentation(null); }, false, ".+."},
        {[&](Rules & rules) { return rules.addRiskPresentation(null); }, false, ".+."},
        {[&](Rules & rules) { return rules.setRiskPresentation(weather, collapsed, false); }, true, "-+."},
        {[&](Rules & rules) { return rules.setRiskPresentation(storm, collapsed, true); }, true, "---"},
        {[&](Rules & rules) { return rules.setRiskPresentation(unknown, {}, true); }, false, "---"},
        {[&](Rules & rules) { return rules.setRiskPresentation(&views.project.getAllRisks(), {}); }, true, "+++"},
        {[&](Rules & rules) { return rules.setRiskPresentation(nullptr, collapsed); }, true, "+++"},
        {[&](Rules & rules) { return rules.removeAllRiskPresentations(views.storm); }, true, "+.."},
    };
    Rules rules(&views.project, CRulesCheckerContext::OriginatingClient), nothing(nullptr, {});
    for (auto const & [change, answer, after] : steps)
    {
        EXPECT_EQ(change(rules), answer) << after;
        EXPECT_EQ(views.risks(), after);
        EXPECT_FALSE(change(nothing)) << after;
    }
    views.project.postSerialize();
    EXPECT_TRUE(rules.removeAllTaskPresentations(views.plan["walls"]));
    EXPECT_TRUE(rules.removeAllResourcePresentations(views.crew));
    EXPECT_EQ(views.others(), std::pair(1, 2));
    EXPECT_TRUE(rules.removeAllResourcePresentations(views.company));
    EXPECT_EQ(views.others(), std::pair(0, 2));
}

TEST(ItemPresentations, SummariesTellWhetherRowsBelowAreShown)
{
    Views views;
    CTaskPresentation collapsed;
    collapsed.setShowChildren(false);
    // Of each task whether something at or below it is expanded or collapsed, and whether it is hidden itself.
    auto const collapse = [&](std::string const & collapsedTask)
    {
        views.plan.act([&](auto & rules) { rules.setTaskPresentation(views.plan.id(collapsedTask), collapsed); });
        std::string all;
        for (char const * name : {"house", "walls", "door"})
        {
            CTaskID const id = views.plan.id(name);
            if (views.project.isTaskOrDescendantsExpanded(id)) all += 'e';
            if (views.project.isTaskOrDescendantsCollapsed(id)) all += 'c';
            if (views.project.isTaskHidden(id)) all += 'h';
            all += ' ';
        }
        return all;
    };
    EXPECT_EQ(collapse("door"), "e e  ");
    EXPECT_EQ(collapse("walls"), "ec c h ");
    EXPECT_EQ(collapse("house"), "c ch h ");
    EXPECT_FALSE(views.project.isTaskOrDescendantsExpanded(CTaskID()));
}

}  // namespace
