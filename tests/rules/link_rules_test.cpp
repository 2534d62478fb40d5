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

TEST(LinkRules, ALinkIsAddedBeforeItIsJudged)
{
    // Upstream, downstream, and the message; null when it is accepted.
    std::tuple<char const *, char const *, char const *> const cases[] = {
        {"a", "c", nullptr},   {"a", "t", nullptr},  {"t", "v", nullptr},  {"c", "s", nullptr},  {"gap", "a", nullptr},
        {"a", "gap", nullptr}, {"a", "b", doubled},  {"a", "a", circular}, {"c", "a", circular}, {"b", "a", circular},
        {"s", "t", circular},  {"t", "s", circular}, {"s", "v", circular}, {"v", "s", circular}, {"u", "v", circular},
    };
    for (int context = 1; context <= 3; ++context)
    {
        for (auto const & [upstream, downstream, message] : cases)
        {
            CRecordingHost desktop;
            Plan plan(tasks());
            int const before = plan[downstream].getUpstreamLinks().GetSize();
            auto const add = [&](auto & rules)
            { return rules.addLink(plan.id(upstream), plan.id(downstream), CLinkType::StartToStart); };
            EXPECT_EQ(plan.act(add, contextOf(context)), !message) << upstream << downstream;
            CLinkArray const & links = plan[downstream].getUpstreamLinks();
            ASSERT_EQ(links.GetSize(), before + 1);
            CLink const & link = links.GetAt(before);
            EXPECT_EQ(link.getUpstreamTaskID(), plan.id(upstream));
            EXPECT_TRUE(link.getType() == CLinkType::StartToStart && link.getStatus() == CLinkStatus::Accepted);
            EXPECT_EQ(link.getDelay(), 0_m);
            std::vector<ShownBox> shown;
            if (message && context == 1) shown.push_back({message, "Tessel Orvane Schedule", 0x2040});
            EXPECT_EQ(desktop.boxes, shown) << upstream << downstream << context;
        }
    }
}

TEST(LinkRules, ACircleElsewhereIsMetToo)
{
    CRecordingHost desktop;
    Plan plan({aTask("x").after("y"), aTask("y").after("x"), aTask("z"), aTask("free")});
    EXPECT_FALSE(
        plan.act([&](auto & rules) { return rules.addLink(plan.id("x"), plan.id("z"), CLinkType::FinishToStart); }));
    // A doubled link among others is met by whatever link is added next.
    Plan twice({aTask("p"), aTask("q"), aTask("r").after("p").after("p")});
    EXPECT_FALSE(
        twice.act([&](auto & rules) { return rules.addLink(twice.id("q"), twice.id("r"), CLinkType::FinishToStart); }));
    EXPECT_EQ(desktop.boxes.back().text, doubled);
}

TEST(LinkRules, ALinkChangesAllButWhereItComesFrom)
{
    Plan plan(tasks());
    CLink link(plan.link("a", "b")), elsewhere(link), unknown(link);
    link.setType(CLinkType::FinishToFinish);
    elsewhere.setUpstreamTaskID(plan.id("t"));
    unknown.setID(CLinkID());
    for (CLink const & given : {link, elsewhere, unknown})
        EXPECT_EQ(plan.act([&](auto & rules) { return rules.changeLink(given); }), given == link);
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
        EXPECT_TRUE(plan.act([&](auto & rules) { return rules.removeLink(first); }, contextOf(context)));
        EXPECT_EQ(plan.project.isInCriticalPath(first), context == 2);
        EXPECT_TRUE(plan["b"].getUpstreamLinks().IsEmpty());
        for (CLinkID const & id : {first, CLinkID(), CLinkID::getNULL()})
            EXPECT_FALSE(plan.act([&](auto & rules) { return rules.removeLink(id); }, contextOf(context)));
    }
    CProjectConfig::setShowCriticalPath(0);
}

}  // namespace
