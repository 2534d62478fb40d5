#include "pictures/gantt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "config/project_config.h"
#include "config/project_constants.h"
#include "pictures/gantt_arrows_impl.h"
#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"
#include "tests/support/svg_structure.h"

namespace
{

using namespace orvane;
using namespace orvane::pictures;
using Bar = GanttLayout::Bar;
using Kind = GanttLayout::Bar::Kind;

GanttOptions january()
{
    GanttOptions options;
    options.from = "01-05 00:00"_t;
    options.to = "02-04 00:00"_t;
    options.width = 1200;
    return options;
}

std::size_t rowOf(GanttLayout const & layout, std::string const & name)
{
    auto const found = std::ranges::find(layout.rows, name, [](auto const & row) { return row.cells[1]; });
    return static_cast<std::size_t>(found - layout.rows.begin());
}

// The bars of a row as "kind from to", in hours since the start of the chart; diamonds have a single hour.
std::string barsOf(GanttLayout const & layout, std::string const & name)
{
    std::map<Kind, std::string> const words{{Kind::task, "task"},
                                            {Kind::summary, "summary"},
                                            {Kind::keyDate, "key date"},
                                            {Kind::unmitigatedRisk, "unmitigated"},
                                            {Kind::storedRisk, "stored"},
                                            {Kind::bufferedRisk, "buffered"},
                                            {Kind::mitigatedRisk, "mitigated"},
                                            {Kind::progress, "done"},
                                            {Kind::late, "late"},
                                            {Kind::early, "early"},
                                            {Kind::baseline, "baseline"},
                                            {Kind::baselineKeyDate, "baseline key date"},
                                            {Kind::critical, "critical"}};
    double const hour = layout.scale.widthOfDay() / 24;
    std::string text;
    for (Bar const & bar : layout.bars)
    {
        if (bar.row != rowOf(layout, name)) continue;
        text += (text.empty() ? "" : ", ") + words.at(bar.kind) + ' ' + std::to_string(std::lround(bar.left / hour));
        if (bar.right > bar.left) text += ' ' + std::to_string(std::lround(bar.right / hour));
    }
    return text;
}

std::string rowsOf(GanttLayout const & layout)
{
    std::string text;
    for (auto const & row : layout.rows) text += row.cells[0] + ' ' + row.cells[1] + '\n';
    return text;
}

std::vector<std::string> labels(std::vector<TimeScale::Cell> const & cells)
{
    std::vector<std::string> texts;
    for (auto const & cell : cells) texts.push_back(cell.label);
    return texts;
}

// How many upright lines of the way pass through a bar of a row between its ends.
int crossings(GanttLayout const & layout, GanttLayout::Arrow const & arrow)
{
    int count = 0;
    for (Bar const & bar : layout.bars)
    {
        auto const & row = layout.rows[bar.row];
        if (bar.kind != Kind::task || bar.row == arrow.from || bar.row == arrow.to) continue;
        for (std::size_t each = 1; each < arrow.points.size(); ++each)
        {
            Point const & a = arrow.points[each - 1];
            Point const & b = arrow.points[each];
            count += a.x == b.x && a.x > bar.left && a.x < bar.right && std::min(a.y, b.y) < row.barMiddle() &&
                     std::max(a.y, b.y) > row.barMiddle();
        }
    }
    return count;
}

struct WithCriticalPath
{
    WithCriticalPath() { CProjectConfig::setShowCriticalPath(1); }
    ~WithCriticalPath() { CProjectConfig::setShowCriticalPath(0); }
};

// ---- what stands where ------------------------------------------------------------------------------

TEST(Gantt, PutsBarsWhereTheirTimesAre)
{
    ClockScope const clock("01-07 13:00"_t);
    WithCriticalPath const critical;
    Plan plan({aTask("house").with(
                   {aTask("dig").lasting(2_d).started("01-06 09:00"_t), aTask("build").from("01-07 09:00"_t)}),
               aTask("done").lasting(2_d).finished("01-05 09:00"_t, "01-07 17:00"_t),
               aTask("roof").from("01-08 09:00"_t).lasting(2_d).after("build"),
               aTask("over").from("01-09 09:00"_t).keyDate(), aTask("beyond").from("03-01 09:00"_t)});
    plan.act([&](auto & rules) { return rules.setTasksBaseline(plan.ids({"roof"})); });
    GanttLayout const layout = layOutGantt(plan.project, january());
    std::pair<char const *, char const *> const expected[] = {{"house", "summary 33 65"},
                                                              {"dig", "task 33 65, done 33 61, late 41 65"},
                                                              {"build", "task 57 65, critical 57 65"},
                                                              {"done", "task 9 65, late 41 65"},
                                                              {"roof", "task 81 113, critical 81 113, baseline 81 113"},
                                                              {"over", "key date 105"},
                                                              {"beyond", ""}};
    for (auto const & [name, bars] : expected) EXPECT_EQ(barsOf(layout, name), bars) << name;
    EXPECT_EQ(layout.bars[1].color,
              Color::ofNumber(static_cast<long>(CProjectConstants::getColor(CTaskStatus::Started))));
    EXPECT_DOUBLE_EQ(layout.scale.width(), 1200 - layout.tableWidth);
}

// What is drawn, in hours and rows.
TEST(Gantt, DrawsWhatIsLaidOut)
{
    ClockScope const clock("01-07 13:00"_t);
    WithCriticalPath const critical;
    Plan plan({aTask("house").with({aTask("dig").lasting(2_d).started("01-06 09:00"_t),
                                    aTask("walls & roof").from("01-08 09:00"_t).after("dig")}),
               aTask("over").from("01-09 09:00"_t).keyDate().after("walls & roof"), aTask("free").from("01-12 09:00"_t),
               aTask("last").from("02-03 09:00"_t).keyDate()});
    plan.act([&](auto & rules) { return rules.setTasksBaseline(plan.ids({"free"})); });
    // So wide that a few pixels are less than an hour.
    GanttOptions options = january();
    options.now = "01-07 13:00"_t;
    options.width = 4000;
    options.to = "02-03 12:00"_t;
    GanttLayout const layout = layOutGantt(plan.project, options);
    EXPECT_TRUE(!layout.notes[0].isBefore && layout.notes[1].isBefore);
    std::string const svg = drawGantt(layout, Format::svg);
    double const row = layout.rows[0].height;
    EXPECT_EQ('\n' + test::SvgStructure(svg, 1, {1e9, row}, row).text, R"(
box #e9eef4 0..0 at 0
text 1 at 0
text house at 0
text 3d at 0
text 6 Jan 2004 at 0
text 8 Jan 2004 at 0
text 1.1 at 1
text dig at 1
text 2d at 1
text 6 Jan 2004 at 1
text 7 Jan 2004 at 1
text 1.2 at 2
text walls &amp; roof at 2
text 1d at 2
text 8 Jan 2004 at 2
text 8 Jan 2004 at 2
text 2 at 3
text over at 3
text 9 Jan 2004 at 3
text 9 Jan 2004 at 3
text 3 at 4
text free at 4
text 1d at 4
text 12 Jan 2004 at 4
text 12 Jan 2004 at 4
text 4 at 5
text last at 5
text 3 Feb 2004 at 5
text 3 Feb 2004 at 5
)");
    EXPECT_EQ('\n' + test::SvgStructure(svg, 2, {layout.scale.widthOfDay() / 24, row}, row).text, R"(
line #000000 65 at 1 to 82 at 1
shape #000000 81..82 at 2
line #000000 89 at 2 to 105 at 2
shape #000000 104..106 at 3
shape #2d3748 33..89 at 0
box #7f7f7f 33..65 at 1
box round 33..65 at 1
box #141a24 33..61 at 1
box #ff0000 41..65 at 1
box #ff0000 81..89 at 2
box round 81..89 at 2
shape #ff0000 104..106 at 3
line #000000 105 at 3 to 106 at 3
box #ff0000 177..185 at 4
box #96a0af 177..185 at 4
shape #ff0000 704..706 at 5
text 9 Jan at 3
text 3 Feb at 5
line #0000ff 61 at 0 to 61 at 6
)");
}

TEST(Gantt, ContinuesABarByEachEndOfItsRisks)
{
    Plan plan({aTask("dig").lasting(10_d)});
    for (auto const status : {CRiskStatus::Unmitigated, CRiskStatus::Buffered, CRiskStatus::Mitigated})
    {
        CRisk const risk;
        plan.act([&](auto & rules) { return rules.addRisk(risk, CRiskID(nullID)); });
        plan.act([&](auto & rules) { return rules.assignRiskToTask(plan.ids({"dig"}), risk.getID()); });
        CAssignedRisk assigned = plan["dig"].getAssignedRisks()[plan["dig"].getAssignedRisks().GetSize() - 1];
        assigned.setStatus(status);
        assigned.setValueMode(CRiskValueMode::Fixed);
        assigned.setValueFixed(1_d);
        ASSERT_TRUE(plan.act([&](auto & rules) { return rules.changeAssignedRisk(assigned); }));
    }
    GanttLayout const layout = layOutGantt(plan.project, january());
    EXPECT_EQ(barsOf(layout, "dig"), "task 9 209, unmitigated 209 233, buffered 233 257, mitigated 257 281");
    std::set<std::string> texts;
    for (auto const & entry : layout.legend) texts.insert(entry.text);
    for (char const * const text : {"Hold", "Unmitigated risk", "Buffered risk", "Mitigated risk", "Not worked"})
        EXPECT_TRUE(texts.contains(text)) << text;
    EXPECT_FALSE(texts.contains("Baseline"));
}

TEST(Gantt, ShowsTheRowsAsked)
{
    Plan plan({aTask("a").with({aTask("b").with({aTask("c")}), aTask("d")}), aBlank(), aBlank(), aTask("e"), aBlank()});
    CTaskPresentation collapsed;
    collapsed.setShowChildren(CProjectBool(false));
    const_cast<CPresentationData &>(plan.project.getPresentationData()).setTaskPresentation(plan.id("b"), collapsed);
    GanttOptions options = january();
    EXPECT_EQ(rowsOf(layOutGantt(plan.project, options)), "1 a\n1.1 b\n1.2 d\n \n2 e\n");
    options.rows = GanttOptions::Rows::all;
    EXPECT_EQ(rowsOf(layOutGantt(plan.project, options)), "1 a\n1.1 b\n1.1.1 c\n1.2 d\n \n2 e\n");
    options.rows = GanttOptions::Rows::roots;
    EXPECT_EQ(rowsOf(layOutGantt(plan.project, options)), "1 a\n \n2 e\n");
}

TEST(Gantt, PicksUnitsThatCanBeRead)
{
    struct Case
    {
        CProjectTime from, to;
        std::size_t upper, lower;
        std::string firstUpper, secondLower;
    };
    Case const cases[] = {{"01-05 00:00"_t, "01-06 00:00"_t, 1, 24, "Mon 5 January 2004", "01"},
                          {"01-05 00:00"_t, "01-25 00:00"_t, 1, 20, "January 2004", "6"},
                          {"01-05 00:00"_t, "05-03 00:00"_t, 5, 17, "January 2004", "12"},
                          {"01-01 00:00"_t, "2006-01-01 00:00"_t, 2, 24, "2004", "Feb"},
                          {"01-01 00:00"_t, "2014-01-01 00:00"_t, 2, 10, "2000s", "2005"},
                          {"1902-01-01 00:00"_t, "2038-01-01 00:00"_t, 2, 14, "1900s", "1910s"}};
    for (Case const & each : cases)
    {
        TimeScale const scale(each.from, each.to, 720);
        EXPECT_EQ(scale.upper().size(), each.upper) << each.firstUpper;
        EXPECT_EQ(scale.lower().size(), each.lower) << each.firstUpper;
        EXPECT_EQ(labels(scale.upper()).front(), each.firstUpper);
        EXPECT_EQ(labels(scale.lower())[1], each.secondLower);
        EXPECT_DOUBLE_EQ(scale.lower().back().right, 720);
    }
}

TEST(Gantt, ShadesWhatIsNotWorked)
{
    Plan const plan({aTask("a")});
    GanttOptions options = january();
    GanttLayout const month = layOutGantt(plan.project, options);
    ASSERT_EQ(month.shades.size(), 4U);
    EXPECT_DOUBLE_EQ(month.shades[0].left, month.scale.x("01-10 00:00"_t));
    EXPECT_DOUBLE_EQ(month.shades[0].right, month.scale.x("01-12 00:00"_t));
    options.to = "01-07 00:00"_t;
    EXPECT_EQ(layOutGantt(plan.project, options).shades.size(), 4U) << "two mornings and two evenings";
}

// ---- arrows -----------------------------------------------------------------------------------------

TEST(Gantt, LeadsArrowsRoundBarsBetween)
{
    Plan plan({aTask("first").lasting(2_d), aTask("wall").from("01-05 09:00"_t).lasting(15_d),
               aTask("short").from("01-05 09:00"_t), aTask("last").from("01-30 09:00"_t).after("first"),
               aTask("back").from("01-05 09:00"_t).after("last", CLinkType::StartToStart),
               aTask("tight").from("01-06 09:00"_t).after("back"), aTask("loop").after("loop")});
    GanttLayout const layout = layOutGantt(plan.project, january());
    ASSERT_EQ(layout.arrows.size(), 3U);
    for (auto const & arrow : layout.arrows)
    {
        EXPECT_EQ(crossings(layout, arrow), 0) << arrow.from;
        for (std::size_t each = 1; each < arrow.points.size(); ++each)
            EXPECT_TRUE(arrow.points[each - 1].x == arrow.points[each].x ||
                        arrow.points[each - 1].y == arrow.points[each].y);
        EXPECT_NEAR(arrow.points.back().y, layout.rows[arrow.to].barMiddle(),
                    layout.rows[arrow.to].barHeight() / 2 + 0.01);
    }
    GanttOptions options = january();
    options.showsLinks = false;
    EXPECT_TRUE(layOutGantt(plan.project, options).arrows.empty());
}

// ---- what comes from anyone -------------------------------------------------------------------------

TEST(Gantt, TakesNamesForNamesOnly)
{
    std::pair<std::string, std::string> const names[] = {
        {"<script>a&b</script>",
         "<text x=\"57\" y=\"95.5\" font-size=\"11\" fill=\"#1f2937\">&lt;script&gt;a&amp;b&lt;/script&gt;</text>"},
        {"שלום", "direction=\"rtl\" text-anchor=\"end\">שלום</text>"},
        {"a\n\x01\x1b[31mb\xe2\x80\xae", ">a   [31mb</text>"},
        {"\xff\xfe", ">\xef\xbf\xbd\xef\xbf\xbd</text>"},
        {std::string(100'000, 'W'), "W…</text>"}};
    for (auto const & [name, expected] : names)
    {
        Plan const plan({aTask(name)});
        GanttLayout const layout = layOutGantt(plan.project, january());
        std::string const svg = drawGantt(layout, Format::svg);
        std::size_t const tail = expected.find("font-size");
        EXPECT_NE(svg.find(tail == std::string::npos ? expected : expected.substr(tail)), std::string::npos)
            << expected;
        EXPECT_LT(svg.size(), 60'000U);
        EXPECT_TRUE(printGantt(layout, paperOfSettings("A4", false)).starts_with("%PDF"));
    }
}

TEST(Gantt, DrawsWhatHasNoDatesOrACenturyOfThem)
{
    std::vector<std::vector<TaskDraft>> const plans = {
        {},
        {aBlank("later")},
        {aTask("one")},
        {aTask("old").from("1902-01-06 09:00"_t), aTask("new").from("2037-12-01 09:00"_t).lasting(30_d).after("old")}};
    CProjectConfig::setGanttGridLinesColor(-1);
    CProjectConfig::setGanttNonWorkingDayColor(0x7FFFFFFF);
    for (auto const & drafts : plans)
    {
        Plan const plan(drafts);
        GanttLayout const layout = layOutGantt(plan.project, {});
        EXPECT_EQ(layout.rows.size(), drafts.size());
        EXPECT_TRUE(drawGantt(layout, Format::svg).ends_with("</svg>\n"));
        EXPECT_TRUE(drawGantt(layout, Format::png).starts_with("\x89PNG"));
        EXPECT_TRUE(printGantt(layout, paperOfSettings("A4", true)).starts_with("%PDF"));
    }
    CProjectConfig::setGanttGridLinesColor(0);
    CProjectConfig::setGanttNonWorkingDayColor(15);
}

TEST(Gantt, RefusesWhatCannotBeDrawn)
{
    Plan const plan({aTask("one")});
    GanttOptions reversed = january(), narrow = january();
    std::swap(reversed.from, reversed.to);
    narrow.width = 10;
    EXPECT_THROW(layOutGantt(plan.project, reversed), std::invalid_argument);
    EXPECT_THROW(layOutGantt(plan.project, narrow), std::invalid_argument);
    EXPECT_THROW(paperOfSettings("A9", false), std::invalid_argument);
    EXPECT_THROW(printGantt(layOutGantt(plan.project, {}), Paper{}), std::invalid_argument);
    GanttOptions wide = january();
    wide.width = 40'000;
    EXPECT_THROW(drawGantt(layOutGantt(plan.project, wide), Format::png), std::invalid_argument);
}

// ---- pages ------------------------------------------------------------------------------------------

int pagesOf(std::string const & pdf)
{
    std::string const mark = "/Type /Page ";
    int count = 0;
    for (std::size_t at = pdf.find(mark); at != std::string::npos; at = pdf.find(mark, at + 1)) ++count;
    return count;
}

TEST(Gantt, TilesPagesOrShrinksToOne)
{
    std::vector<TaskDraft> drafts;
    for (int each = 0; each < 100; ++each)
        drafts.push_back(aTask("task").from(CProjectTime(2004, 1 + each / 10, 5, 9, 0)));
    Plan const plan(drafts);
    std::tuple<char const *, bool, int> const cases[] = {{"A4", true, 16}, {"A1", false, 1}};
    for (auto const & [name, isLandscape, pages] : cases)
    {
        Paper paper = paperOfSettings(name, isLandscape);
        GanttLayout const layout = layOutGantt(plan.project, {}, paper);
        double const across = layout.scale.width() / (paper.roomWidth() - layout.tableWidth);
        EXPECT_NEAR(across, std::round(across), 1e-6) << "pages are filled";
        EXPECT_EQ(pagesOf(printGantt(layout, paper)), pages) << name;
        paper.isOnePage = true;
        EXPECT_EQ(pagesOf(printGantt(layOutGantt(plan.project, {}, paper), paper)), 1) << name;
    }
}

}  // namespace
