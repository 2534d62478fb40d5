#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"

using namespace orvane;

namespace
{

using Rules = CLocalRulesChecker;

// One thing that can be selected.
struct Selector
{
    std::string field;
    // The mode of the 3D view that it chooses, if any.
    int mode;
    std::vector<std::string> drops;
    std::function<bool(CProject const &)> isSelected;
    // Something fresh, which stays the same on every call, or nothing.
    std::function<bool(Rules &, bool)> select;
};
template <class ID>
Selector ofOne(char const * field, bool (Rules::*set)(ID const &), ID const & (CProject::*get)() const, int mode = 0,
               std::vector<std::string> const & drops = {})
{
    return {field, mode, drops, [get](auto & project) { return !(project.*get)().isNULL(); },
            [set, some = ID()](auto & rules, bool any) { return (rules.*set)(any ? some : ID::getNULL()); }};
}
template <class ID, class IDs>
Selector ofMany(char const * field, bool (Rules::*set)(IDs const &), IDs const & (CProject::*get)() const, int mode)
{
    IDs some, none;
    some.Add(ID());
    none.Add(ID::getNULL());
    return {field,
            mode,
            {},
            [get](auto & project) { return !(project.*get)().IsEmpty(); },
            [=](auto & rules, bool any) { return (rules.*set)(any ? some : none); }};
}

// In an order in which none drops what was selected before.
std::vector<Selector> selectors()
{
    using P = CProject;
    return {
        ofOne("company", &Rules::setSelectedCompanyID, &P::getSelectedCompanyID, 2),
        ofOne("resource", &Rules::setSelectedResourceID, &P::getSelectedResourceID, 4, {"resourceCost"}),
        ofOne("risk", &Rules::setSelectedRiskID, &P::getSelectedRiskID),
        ofOne("entity", &Rules::setPrimarySelectedSceneEntityID, &P::getPrimarySelectedSceneEntityID, 6),
        ofMany<CEntityID>("entities", &Rules::setSelectedSceneEntityID, &P::getSelectedSceneEntityID, 6),
        ofOne("user", &Rules::setSelectedUserID, &P::getSelectedUserID),
        ofOne("role", &Rules::setSelectedRoleID, &P::getSelectedRoleID),
        ofOne("task", &Rules::setPrimarySelectedTaskID, &P::getPrimarySelectedTaskID, 3,
              {"taskCost", "report", "reportCost", "riskCost"}),
        ofMany<CTaskID>("tasks", &Rules::setSelectedTaskID, &P::getSelectedTaskID, 3),
        ofOne("report", &Rules::setSelectedTaskReportID, &P::getSelectedTaskReportID, 0,
              {"reportCost", "resourceCost"}),
        ofOne("filter", &Rules::setSelectedFilterID, &P::getSelectedFilterID),
        ofOne("taskCost", &Rules::setSelectedTaskCostID, &P::getSelectedTaskCostID),
        ofOne("resourceCost", &Rules::setSelectedResourceCostID, &P::getSelectedResourceCostID),
        ofOne("riskCost", &Rules::setSelectedAssignedRiskCostID, &P::getSelectedAssignedRiskCostID),
        ofOne("reportCost", &Rules::setSelectedTaskReportCostID, &P::getSelectedTaskReportCostID),
    };
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
        // With everything selected before, and the 3D view in a mode that no selection chooses.
        auto const expectAfter =
            [&](Selector const & selector, bool any, std::vector<std::string> const & drops, int mode)
        {
            CProject project(nullptr, false);
            Rules rules(&project, CRulesCheckerContext::OriginatingClient);
            for (Selector const & other : usual) EXPECT_TRUE(other.select(rules, true));
            C3DPresentation presentation;
            presentation.set3DDisplayMode(C3DDisplayMode::Mode5);
            EXPECT_TRUE(rules.set3DPresentation(presentation));
            EXPECT_TRUE(selector.select(rules, any));
            for (Selector const & other : usual)
                EXPECT_EQ(other.isSelected(project), !std::ranges::count(drops, other.field)) << other.field;
            EXPECT_EQ(project.get3DPresentation().get3DDisplayMode().getEquivalentValue(), mode);
        };
        bool const turns = automatic && tested.mode;
        // What is selected already is no choice at all.
        expectAfter(usual[each / 2], true, {}, 5);
        expectAfter(tested, true, tested.drops, turns ? tested.mode : 5);
        std::vector<std::string> all = tested.drops;
        all.push_back(tested.field);
        expectAfter(tested, false, all, turns ? 1 : 5);
    }
    CProjectConfig::setAutoChoose3DMode(0);
}

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
    CAssignedRisk const without(risk, CRiskValueMode::Percent);
    // The risks of the task, which of them is then selected, and whether the cost still is.
    std::tuple<std::vector<CAssignedRisk>, int, bool> const cases[] = {
        {{withCost(otherRisk, cost)}, -1, false},
        {{withCost(otherRisk, CCostID()), withCost(risk, cost)}, 1, true},
        {{withCost(risk, cost), without}, 0, true},
        {{without, withCost(risk, cost)}, 0, false},
    };
    for (auto const & [assigned, chosen, keeps] : cases)
    {
        SCOPED_TRACE(assigned.size());
        Plan plan({aTask("dig")});
        CAssignedRiskArray risks;
        for (CAssignedRisk const & each : assigned) risks.Add(each);
        plan.writable("dig").setAssignedRisks(risks);
        plan.act(
            [&](auto & rules)
            {
                rules.setSelectedRiskID(risk);
                rules.setSelectedAssignedRiskCostID(cost);
                rules.setPrimarySelectedTaskID(plan.id("dig"));
            });
        EXPECT_EQ(plan.project.getSelectedAssignedRiskID(),
                  chosen < 0 ? CAssignedRiskID::getNULL() : risks.GetAt(chosen).getID());
        EXPECT_EQ(!plan.project.getSelectedAssignedRiskCostID().isNULL(), keeps);
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
