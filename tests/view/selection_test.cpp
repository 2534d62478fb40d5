#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

// What is selected, by the names of the fields.
std::string selected(CProject const & project)
{
    std::pair<char const *, bool> const fields[] = {
        {"task", project.getPrimarySelectedTaskID().isNULL()},
        {"tasks", project.getSelectedTaskID().IsEmpty()},
        {"company", project.getSelectedCompanyID().isNULL()},
        {"resource", project.getSelectedResourceID().isNULL()},
        {"risk", project.getSelectedRiskID().isNULL()},
        {"filter", project.getSelectedFilterID().isNULL()},
        {"riskCost", project.getSelectedAssignedRiskCostID().isNULL()},
        {"taskCost", project.getSelectedTaskCostID().isNULL()},
        {"resourceCost", project.getSelectedResourceCostID().isNULL()},
        {"entity", project.getPrimarySelectedSceneEntityID().isNULL()},
        {"entities", project.getSelectedSceneEntityID().IsEmpty()},
        {"report", project.getSelectedTaskReportID().isNULL()},
        {"reportCost", project.getSelectedTaskReportCostID().isNULL()},
        {"user", project.getSelectedUserID().isNULL()},
        {"role", project.getSelectedRoleID().isNULL()},
    };
    std::string all;
    for (auto const & [name, isNothing] : fields) all += isNothing ? "" : std::string(name) + ' ';
    return all;
}

std::string const everything = "task tasks company resource risk filter riskCost taskCost resourceCost entity entities "
                               "report reportCost user role ";

std::string without(std::string all, std::vector<std::string> const & names)
{
    for (std::string const & name : names)
        if (std::size_t const at = (' ' + all).find(' ' + name + ' '); at != std::string::npos)
            all.erase(at, name.size() + 1);
    return all;
}

struct Selector
{
    std::string field;
    int mode;
    std::vector<std::string> drops;
    // Something fresh, which stays the same on every call, or nothing.
    std::function<bool(CLocalRulesChecker &, bool)> select;
};
template <class ID>
Selector ofOne(char const * field, bool (CLocalRulesChecker::*set)(ID const &), int mode = 0,
               std::vector<std::string> const & drops = {})
{
    return {field, mode, drops,
            [set, some = ID()](auto & rules, bool any) { return (rules.*set)(any ? some : ID::getNULL()); }};
}
template <class ID, class IDs>
Selector ofMany(char const * field, bool (CLocalRulesChecker::*set)(IDs const &), int mode)
{
    IDs some, none;
    some.Add(ID());
    none.Add(ID::getNULL());
    return {field, mode, {}, [=](auto & rules, bool any) { return (rules.*set)(any ? some : none); }};
}

using Rules = CLocalRulesChecker;

// With the mode that each chooses, if any, and what it drops.
std::vector<Selector> selectors()
{
    return {
        ofOne("company", &Rules::setSelectedCompanyID, 2),
        ofOne("resource", &Rules::setSelectedResourceID, 4, {"resourceCost"}),
        ofOne("risk", &Rules::setSelectedRiskID),
        ofOne("entity", &Rules::setPrimarySelectedSceneEntityID, 6),
        ofMany<CEntityID>("entities", &Rules::setSelectedSceneEntityID, 6),
        ofOne("user", &Rules::setSelectedUserID),
        ofOne("role", &Rules::setSelectedRoleID),
        ofOne("task", &Rules::setPrimarySelectedTaskID, 3, {"taskCost", "report", "reportCost", "riskCost"}),
        ofMany<CTaskID>("tasks", &Rules::setSelectedTaskID, 3),
        ofOne("report", &Rules::setSelectedTaskReportID, 0, {"reportCost", "resourceCost"}),
        ofOne("filter", &Rules::setSelectedFilterID),
        ofOne("taskCost", &Rules::setSelectedTaskCostID),
        ofOne("resourceCost", &Rules::setSelectedResourceCostID),
        ofOne("riskCost", &Rules::setSelectedAssignedRiskCostID),
        ofOne("reportCost", &Rules::setSelectedTaskReportCostID),
    };
}

// Selects whatever is not selected, in the order that drops nothing again, and puts the 3D view in a mode
// that no selection chooses.
void selectEverything(CProject & project, std::vector<Selector> const & selectors)
{
    CLocalRulesChecker rules(&project, CRulesCheckerContext::OriginatingClient);
    for (Selector const & each : selectors) EXPECT_TRUE(each.select(rules, true));
    C3DPresentation presentation;
    presentation.set3DDisplayMode(C3DDisplayMode::Mode5);
    EXPECT_TRUE(rules.set3DPresentation(presentation));
    EXPECT_EQ(selected(project), everything);
}

TEST(Selection, EverySetterDropsWhatBelongedToTheFormerChoiceAndMayTurnThe3DView)
{
    std::vector<Selector> const usual = selectors(), others = selectors();
    for (std::size_t each = 0; each < 2 * others.size(); ++each)
    {
        bool const automatic = each % 2 != 0;
        CProjectConfig::setAutoChoose3DMode(automatic);
        Selector const & tested = others[each / 2];
        SCOPED_TRACE(tested.field + (automatic ? ", automatic" : ""));
        std::string const kept = without(everything, tested.drops);
        auto const expectAfter = [&](Selector const & selector, bool any, std::string const & after, int chosen)
        {
            CProject project(nullptr, false);
            selectEverything(project, usual);
            CLocalRulesChecker rules(&project, CRulesCheckerContext::OriginatingClient);
            EXPECT_TRUE(selector.select(rules, any));
            EXPECT_EQ(selected(project), after);
            EXPECT_EQ(project.get3DPresentation().get3DDisplayMode().getEquivalentValue(), chosen);
        };
        bool const turns = automatic && tested.mode;
        // What is selected already is no choice at all.
        expectAfter(usual[each / 2], true, everything, 5);
        expectAfter(tested, true, kept, turns ? tested.mode : 5);
        expectAfter(tested, false, without(kept, {tested.field}), turns ? 1 : 5);
    }
    CProjectConfig::setAutoChoose3DMode(0);
}

TEST(Selection, WhatIsClearedShowsAsChanged)
{
    CPresentationData views;
    views.setSingleSelectedTaskID(CTaskID());
    views.resetChanged();
    EXPECT_FALSE(views.setChanged());
    views.setSelectedTaskID(CTaskIDArray());
    EXPECT_TRUE(views.setChanged());
    views.setSingleSelectedTaskID(CTaskID::getNULL());
    EXPECT_TRUE(views.getPrimarySelectedTaskID().isNULL() && views.getSelectedTaskID().IsEmpty());
}

// ---- what is assigned to the selected task --------------------------------------------------------

CAssignedRisk withCost(CRiskID const & risk, CCostID const & id)
{
    CAssignedRisk assigned(risk, CRiskValueMode::Percent);
    CCost cost;
    cost.setID(id);
    assigned.addCost(CCost());
    assigned.addCost(cost);
    return assigned;
}

TEST(Selection, TheCostOfAnAssignedRiskStaysOnlyWhereTheTaskHasIt)
{
    CRiskID const risk, otherRisk;
    CCostID const cost;
    struct Case
    {
        std::vector<CAssignedRisk> risks;
        int selected;
        bool keeps;
    };
    CAssignedRisk const without(risk, CRiskValueMode::Percent);
    Case const cases[] = {
        {{}, -1, false},
        {{withCost(otherRisk, cost)}, -1, false},
        {{without}, 0, false},
        {{withCost(risk, CCostID())}, 0, false},
        {{withCost(otherRisk, CCostID()), withCost(risk, cost)}, 1, true},
        {{withCost(risk, cost), without}, 0, true},
        {{without, withCost(risk, cost)}, 0, false},
    };
    for (Case const & each : cases)
    {
        SCOPED_TRACE(&each - cases);
        Plan plan({aTask("dig")});
        CAssignedRiskArray risks;
        for (CAssignedRisk const & assigned : each.risks) risks.Add(assigned);
        plan.writable("dig").setAssignedRisks(risks);
        plan.act(
            [&](auto & rules)
            {
                rules.setSelectedRiskID(risk);
                rules.setSelectedAssignedRiskCostID(cost);
                rules.setPrimarySelectedTaskID(plan.id("dig"));
            });
        EXPECT_EQ(plan.project.getSelectedAssignedRiskID(),
                  each.selected < 0 ? CAssignedRiskID::getNULL() : risks.GetAt(each.selected).getID());
        EXPECT_EQ(!plan.project.getSelectedAssignedRiskCostID().isNULL(), each.keeps);
    }
}

TEST(Selection, OfAResourceThatIsAssignedTwiceTheFirstAssignmentCounts)
{
    Plan plan({aTask("dig"), aTask("fill")});
    CResourceID const crane;
    CAssignedResourceArray assigned;
    for (int each = 0; each < 2; ++each) assigned.Add(CAssignedResource(CAssignedResourceID(), crane, 100));
    plan.writable("dig").setAssignedResources(assigned);
    plan.act([&](auto & rules) { rules.setPrimarySelectedTaskID(plan.id("dig")), rules.setSelectedResourceID(crane); });
    EXPECT_EQ(plan.project.getSelectedAssignedResourceID(), assigned.GetAt(0).getID());
    plan.act([&](auto & rules) { rules.setPrimarySelectedTaskID(plan.id("fill")); });
    EXPECT_TRUE(plan.project.getSelectedAssignedResourceID().isNULL());
}

TEST(Selection, AResourceIsDeselectedWithItsCompany)
{
    CHumanResource crew, mason;
    CHumanResourceArray below, top;
    below.Add(mason);
    crew.setSubResources(below);
    top.Add(crew);
    CCompany company;
    company.setHumanResources(top);
    CPresentationData views;
    for (CResourceID const & id : {CResourceID::getNULL(), CResourceID(), crew.getID(), mason.getID()})
    {
        bool const isOwned = crew.findResource(id) != nullptr;
        views.setSelectedResourceID(id);
        EXPECT_FALSE(views.deselectAllResources(company.getMaterialResources()));
        EXPECT_EQ(views.getSelectedResourceID(), id);
        EXPECT_EQ(views.deselectResourceIfOwnedByCompany(company), isOwned);
        EXPECT_EQ(views.getSelectedResourceID().isNULL(), isOwned || id.isNULL());
    }
}

}  // namespace
