#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

using namespace orvane;

namespace
{

char const * const doubled = "These Tasks are already linked.";
char const * const circular = "This action would produce a circular link.";

// a -> b -> c in a row, and a summary task s(t u(v))
std::vector<TaskDraft> tasks()
{
    return {aTask("a"), aTask("b").after("a"), aTask("c").after("b"),
            aTask("s").with({aTask("t"), aTask("u").with({aTask("v")})}), aBlank("gap")};
}

CRulesCheckerContext role(int number)
{
    CRulesCheckerContext result;
    result = number;
    return result;
}

TEST(LinkRules, ALinkIsAddedBeforeItIsJudged)
{
    struct
    {
        char const * upstream;
        char const * downstream;
        char const * message;  // null: accepted
    } const cases[] = {
        {"a", "c", nullptr},   {"a", "t", nullptr},  {"t", "v", nullptr},  {"c", "s", nullptr},  {"gap", "a", nullptr},
        {"a", "gap", nullptr}, {"a", "b", doubled},  {"a", "a", circular}, {"c", "a", circular}, {"b", "a", circular},
        {"s", "t", circular},  {"t", "s", circular}, {"s", "v", circular}, {"v", "s", circular}, {"u", "v", circular},
    };
    for (int context = 1; context <= 3; ++context)
    {
        for (auto const & each : cases)
        {
            CRecordingHost desktop;
            Plan plan(tasks());
            int const before = plan[each.downstream].getUpstreamLinks().GetSize();
            auto const add = [&](auto & rules)
            { return rules.addLink(plan.id(each.upstream), plan.id(each.downstream), CLinkType::StartToStart); };
            EXPECT_EQ(plan.act(add, role(context)), !each.message) << each.upstream << each.downstream;
            CLinkArray const & links = plan[each.downstream].getUpstreamLinks();
            ASSERT_EQ(links.GetSize(), before + 1);
            CLink const & link = links.GetAt(before);
            EXPECT_EQ(link.getUpstreamTaskID(), plan.id(each.upstream));
            EXPECT_TRUE(link.getType() == CLinkType::StartToStart && link.getStatus() == CLinkStatus::Accepted);
            EXPECT_EQ(link.getDelay(), 0_m);
            std::vector<ShownBox> shown;
            if (each.message && context == 1) shown.push_back({each.message, "Tessel Orvane Schedule", 0x2040});
            EXPECT_EQ(desktop.boxes, shown) << each.upstream << each.downstream << context;
        }
    }
}

TEST(LinkRules, ACircleElsewhereIsMetToo)
{
    CRecordingHost desktop;
    Plan plan({aTask("x").after("y"), aTask("y").after("x"), aTask("z"), aTask("free")});
    EXPECT_FALSE(
        plan.act([&](auto & rules) { return rules.addLink(plan.id("x"), plan.id("z"), CLinkType::FinishToStart); }));
    // Also where a change in the same action has left a task without its parent until the next pass.
    Plan parents({aTask("s").with({aTask("t")})});
    EXPECT_FALSE(parents.act(
        [&](auto & rules)
        {
            return rules.changeTaskDuration(parents.id("t"), 2_d, true) &&
                   rules.addLink(parents.id("t"), parents.id("s"), CLinkType::StartToStart);
        }));
    // A doubled link among others is met by whatever link is added next.
    Plan twice({aTask("p"), aTask("q"), aTask("r").after("p").after("p")});
    EXPECT_FALSE(
        twice.act([&](auto & rules) { return rules.addLink(twice.id("q"), twice.id("r"), CLinkType::FinishToStart); }));
    EXPECT_EQ(desktop.boxes.back().text, doubled);
}

TEST(LinkRules, ALinkChangesAllButWhereItComesFrom)
{
    Plan plan(tasks());
    CLink link(plan.link("a", "b"));
    link.setType(CLinkType::FinishToFinish);
    link.setStatus(CLinkStatus::Proposed);
    link.setDelay(3_h);
    auto const change = [&](CLink const & given)
    { return plan.act([&](auto & rules) { return rules.changeLink(given); }); };
    EXPECT_TRUE(change(link));
    EXPECT_TRUE(plan.link("a", "b") == link);
    CLink elsewhere(link);
    elsewhere.setUpstreamTaskID(plan.id("t"));
    CLink unknown(link);
    unknown.setID(CLinkID());
    for (CLink const & refused : {elsewhere, unknown}) EXPECT_FALSE(change(refused));
    EXPECT_TRUE(plan.link("a", "b") == link);
}

TEST(LinkRules, RemovalsLeaveTheCriticalPathToOthersOnATransactionServer)
{
    CProjectConfig::setShowCriticalPath(1);
    for (int context = 1; context <= 3; ++context)
    {
        Plan plan(tasks());
        plan.project.updateCriticalPath();
        CLinkID const first = plan.link("a", "b").getID();
        ASSERT_TRUE(plan.project.isInCriticalPath(first));
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeLink(first); }, role(context)));
        EXPECT_EQ(plan.project.isInCriticalPath(first), context == 2);
        EXPECT_TRUE(plan["b"].getUpstreamLinks().IsEmpty());
        for (CLinkID const & id : {first, CLinkID(), CLinkID::getNULL()})
            EXPECT_FALSE(plan.act([&](auto & rules) { return rules.removeLink(id); }, role(context)));
    }
    CProjectConfig::setShowCriticalPath(0);
}

TEST(LinkRules, SelectsTheTasksThatALinkJoins)
{
    Plan plan({aTask("a"), aTask("s").with({aTask("t").after("a")}), aTask("c").after("t")});
    auto const select = [&](char const * upstream, char const * downstream)
    {
        CLinkID const id = plan.link(upstream, downstream).getID();
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.setSelectedLinksTasks(id); }));
        std::string names;
        for (CTaskID const & task : plan.project.getSelectedTaskID()) names += plan.project.getTask(task)->getName();
        return names;
    };
    EXPECT_EQ(select("a", "t"), "ta");
    CTaskPresentation collapsed;
    collapsed.setShowChildren(false);
    plan.act([&](auto & rules) { return rules.setTaskPresentation(plan.id("s"), collapsed); });
    EXPECT_EQ(select("a", "t"), "a");
    EXPECT_EQ(select("t", "c"), "c");
    EXPECT_FALSE(plan.act([&](auto & rules) { return rules.setSelectedLinksTasks(CLinkID()); }));
}

}  // namespace
