// Earned value and the use of resources: the figures against the minutes one by one, and the pictures of them.

#include "pictures/chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "pictures/chart_axis.h"
#include "tests/support/clock_scope.h"
#include "tests/support/plan_builder.h"

namespace
{

using namespace orvane;
using namespace orvane::pictures;
using Load = Utilisation::Load;

// ---- random projects --------------------------------------------------------------------------------

CCostArray oneCost(double amount, CCostType const & type = CCostType::Fixed)
{
    CCost cost;
    cost.setAmount(amount);
    cost.setType(type);
    CCostArray costs;
    costs.Add(cost);
    return costs;
}

void assign(CTask & task, CResourceID const & resource, int percent)
{
    CAssignedResourceArray assigned(task.getAssignedResources());
    assigned.Add(CAssignedResource(CAssignedResourceID(), resource, percent));
    task.setAssignedResources(assigned);
}

// People with calendars, limits and dates of their own, one of them a crew of two.
CHumanResourceArray randomPeople(std::mt19937 & random)
{
    CHumanResourceArray people;
    for (int each = 0; each < 4; ++each)
    {
        CHumanResource person;
        person.setName(("person " + std::to_string(each)).c_str());
        person.setTotalUnitsAvailable(static_cast<int>(random() % 3));
        person.setUseRatePerDay(static_cast<int>(random() % 3));
        if (each == 1) person.setAvailableFrom(CProjectDate(2004, 1, 14));
        if (each == 2) person.setAvailableTo(CProjectDate(2004, 1, 20));
        CCalendar calendar;
        calendar.setDayTypeOfSelectedDate(CProjectDate(2004, 1, 19),
                                          calendar.getDayType(CProjectDate(2004, 1, 18)).getID());
        calendar.setInUse(each == 3);
        person.setCalendar(calendar);
        people.Add(person);
    }
    CHumanResource crew;
    crew.setName("crew");
    CHumanResourceArray members(people);
    members.RemoveAt(2, 2);
    crew.setSubResources(members);
    people.RemoveAt(0, 2);
    people.Add(crew);
    return people;
}

// Thirty tasks within two months, with pauses at noon, in all states, with and without baseline and costs.
struct RandomProject : Plan
{
    explicit RandomProject(unsigned seed) : Plan(drafts(seed))
    {
        std::mt19937 random(seed);
        CCalendar calendar(project.getProjectCalendar());
        CCalendarDayType day(calendar.getNormalDay());
        day.setTimeBlock(0, {CProjectTimeOfDay(8, 0), CProjectTimeOfDay(12, 15)});
        day.setTimeBlock(1, {CProjectTimeOfDay(13, 0), CProjectTimeOfDay(16, 40)});
        calendar.editCalendarDayType(day);
        CCompany company;
        company.setName("company");
        company.setHumanResources(randomPeople(random));
        act([&](auto & rules) { return rules.setCalendar(calendar) && rules.addCompany(company); });
        CHumanResourceArray const people = project.getAllHumanResources();
        CResourceID const crew = project.getAllCompanies().GetAt(0).getHumanResources().GetAt(2).getID();
        for (int each = 0; each < 30; ++each)
        {
            CTask & task = writable("task " + std::to_string(each));
            for (CHumanResource const & person : people)
                if (random() % 4 == 0) assign(task, person.getID(), 25 * static_cast<int>(random() % 9));
            if (each % 6 == 0) assign(task, crew, 100);
            if (random() % 3)
                task.setCosts(oneCost(static_cast<double>(random() % 9000) - 1000,
                                      CCostType(static_cast<CCostType::Number>(1 + random() % 3))));
            if (random() % 3 == 0) task.setBaseline();
            if (random() % 4 == 0) task.setDominantCalendarID(people.GetAt(3).getCalendar().getID());
        }
        derive();
    }

    static std::vector<TaskDraft> drafts(unsigned seed)
    {
        std::mt19937 random(seed);
        std::vector<TaskDraft> groups;
        for (int each = 0; each < 30; ++each)
        {
            if (each % 6 == 0) groups.push_back(aTask("group"));
            auto const time = [&]
            {
                int const day = 5 + static_cast<int>(random() % 5 + random() % 6 * 7);
                return CProjectTime(2004, 1, day, 9 + static_cast<int>(random() % 8), static_cast<int>(random() % 60));
            };
            TaskDraft draft = aTask("task " + std::to_string(each))
                                  .from(time())
                                  .lasting(CProjectDuration(60L * static_cast<long>(random() % 4000)));
            if (random() % 3 == 0) draft.started(time());
            else if (random() % 3 == 0) draft.finished("01-06 10:20"_t, time());
            if (random() % 9 == 0) draft.keyDate();
            groups.back().children.push_back(draft);
        }
        return groups;
    }
};

// Which minutes calendars work, asked one by one.
class Minutes
{
public:
    static inline std::int64_t const first = "2003-12-01 00:00"_t.getLocalMinutes();

    bool isWorked(CCalendar const & calendar, std::int64_t minute) { return count(calendar, minute, minute + 1) > 0; }
    int count(CCalendar const & calendar, std::int64_t from, std::int64_t to)
    {
        if (to <= from) return 0;
        std::vector<int> & sums = before[&calendar];
        if (sums.empty()) sums.push_back(0);
        for (std::int64_t each = first + std::ssize(sums) - 1; each < to; ++each)
            sums.push_back(sums.back() + calendar.isValidStartTime(CProjectTime::fromLocalMinutes(each)));
        return sums.at(static_cast<std::size_t>(to - first)) - sums.at(static_cast<std::size_t>(from - first));
    }

private:
    std::map<CCalendar const *, std::vector<int>> before;
};

void forEachTask(CTaskArray const & tasks, auto const & visit)
{
    for (CTask const & task : tasks)
    {
        if (task.isValid()) visit(task);
        if (task.getSubTasks()) forEachTask(*task.getSubTasks(), visit);
    }
}

// ---- earned value -----------------------------------------------------------------------------------

// By the definitions, for one moment.
EarnedValue::Figures plainFigures(CProject const & project, CProjectTime const & status, std::int64_t moment,
                                  Minutes & minutes)
{
    EarnedValue::Figures sum;
    forEachTask(
        project.getAllTasks(),
        [&](CTask const & task)
        {
            auto const share = [&](CProjectTime const & from, CProjectTime const & to)
            {
                std::int64_t const start = from.getLocalMinutes(), end = std::max(to.getLocalMinutes(), start);
                int const work = minutes.count(task.getCalendar(), start, end);
                if (work == 0) return moment > start ? 1.0 : 0.0;
                return static_cast<double>(minutes.count(task.getCalendar(), start, std::clamp(moment, start, end))) /
                       work;
            };
            bool const has = task.isBaselineSet(), isSummary = task.isSummaryTask(),
                       isStarted = task.getStatus() == CTaskStatus::Started;
            double const budget = has ? task.getBaselineTotalCost() : task.getSumTotal(CCostTotalType::Budgeted);
            sum.scheduled += budget * (has ? share(task.getBaselineStart(), task.getBaselineFinish())
                                           : share(isSummary ? task.getStartTime() : task.getPlannedStartTime(),
                                                   isSummary ? task.getEndTime() : task.getPlannedEndTime()));
            if (task.isOpen() && !isSummary) return;
            double const time = share(task.getStartTime(), task.getEndTime());
            sum.actual += task.getSumTotal(CCostTotalType::Actual) * time;
            if (!isStarted) sum.performed += budget * time;
            else if (status > task.getActualStartTime())
                sum.performed += budget * task.getPercentComplete() / 100 * share(task.getActualStartTime(), status);
        });
    return sum;
}

TEST(EarnedValue, IsWhatTheMinutesOfEachTaskComeTo)
{
    for (unsigned seed = 1; seed <= 15; ++seed)
    {
        RandomProject const plan(seed);
        CProjectTime const status(2004, 1, 10 + static_cast<int>(seed) * 5, 11, 3);
        ClockScope const clock(status);
        Minutes minutes;
        TimeRange const ranges[] = {{}, {"01-16 00:00"_t, "01-20 00:00"_t}};
        for (TimeRange const & range : ranges)
        {
            EarnedValue const value = earnedValueOf(plan.project, status, range);
            ASSERT_EQ(value.steps.length, range.from.isValid() ? 60 : 24 * 60);
            for (std::size_t each = 0; each < value.scheduled.size(); ++each)
            {
                auto const plain = plainFigures(plan.project, status, value.steps.point(each), minutes);
                ASSERT_NEAR(value.scheduled[each], plain.scheduled, 1e-6) << seed << ' ' << each;
                if (each >= value.performed.size()) continue;
                ASSERT_NEAR(value.performed[each], plain.performed, 1e-6) << seed << ' ' << each;
                ASSERT_NEAR(value.actual[each], plain.actual, 1e-6) << seed << ' ' << each;
            }
            auto const plain = plainFigures(plan.project, status, status.getLocalMinutes(), minutes);
            EXPECT_NEAR(value.atStatus.scheduled, plain.scheduled, 1e-6);
            EXPECT_NEAR(value.atStatus.performed, plain.performed, 1e-6);
            EXPECT_NEAR(value.atStatus.actual, plain.actual, 1e-6);
        }
    }
}

TEST(EarnedValue, TellsHowFarItIsFromThePlan)
{
    Plan plan({aTask("on").started("01-05 09:00"_t).lasting(4_d), aTask("behind").from("01-05 09:00"_t),
               aTask("gate").keyDate()});
    for (auto const * const name : {"on", "behind", "gate"}) plan.writable(name).setCosts(oneCost(400));
    ClockScope const clock("01-07 09:00"_t);
    EarnedValue const value = earnedValueOf(plan.project, "01-07 09:00"_t);
    EXPECT_EQ(value.budgetAtCompletion, plan.project.getTotalCosts(CCostTotalType::Budgeted));
    EXPECT_EQ(value.scheduled.back(), 1200);
    EXPECT_EQ(value.atStatus.scheduled, 1000);
    EXPECT_EQ(value.atStatus.performed, 200);
    EXPECT_EQ(value.atStatus.scheduleVariance(), -800);
    EXPECT_EQ(value.atStatus.costPerformance(), 1);
    EXPECT_FALSE(EarnedValue::Figures().schedulePerformance());
}

// ---- the use of resources ---------------------------------------------------------------------------

// The load of one day of the leaves, and of what is above them.
Load plainLoad(CProject const & project, std::vector<CHumanResource const *> const & leaves,
               CResourceIDArray const & used, std::int64_t midnight, bool isToTheMinute, Minutes & minutes)
{
    std::int64_t const next = midnight + 24 * 60;
    std::map<std::int64_t, std::int64_t> atMinute;
    std::int64_t all = 0, most = 0;
    forEachTask(project.getAllTasks(),
                [&](CTask const & task)
                {
                    std::int64_t const start = std::max(task.getStartTime().getLocalMinutes(), midnight),
                                       end = std::min(task.getEndTime().getLocalMinutes(), next);
                    for (CAssignedResource const & assigned : task.getAssignedResources())
                    {
                        if (used.findByID(assigned.getResourceID()) < 0 ||
                            minutes.count(task.getCalendar(), start, end) == 0)
                            continue;
                        all += assigned.getPercentageAssigned();
                        for (std::int64_t each = start; each < end; ++each)
                            if (minutes.isWorked(task.getCalendar(), each))
                                most = std::max(most, atMinute[each] += assigned.getPercentageAssigned());
                    }
                });
    int units = 0;
    for (CHumanResource const * const leaf : leaves)
    {
        std::int64_t const day = midnight / (24 * 60);
        bool const isThere = (!leaf->getAvailableFrom().isValid() || leaf->getAvailableFrom().getDayNumber() <= day) &&
                             (!leaf->getAvailableTo().isValid() || leaf->getAvailableTo().getDayNumber() >= day);
        if (!isThere || minutes.count(leaf->getCalendarInUse(), midnight, next) == 0) continue;
        units += leaf->getTotalUnitsAvailable() > 0 ? leaf->getTotalUnitsAvailable() : leaf->getUseRatePerDay();
    }
    Load load{static_cast<double>(isToTheMinute ? most : all) / 100, static_cast<double>(units)};
    load.isOver = load.used > load.available;
    return load;
}

TEST(Utilisation, IsWhatTheMinutesOfEachDayComeTo)
{
    using By = UtilisationOptions::By;
    for (unsigned seed = 1; seed <= 15; ++seed)
    {
        RandomProject const plan(seed);
        Minutes minutes;
        for (By const by : {By::resource, By::company, By::kind})
        {
            bool const isToTheMinute = seed % 2;
            Utilisation const found =
                utilisationOf(plan.project, {by, CDisplayUtilisationChartFor::AllResources, isToTheMinute});
            ASSERT_EQ(found.bands.size(), by == By::resource ? 5 - static_cast<std::size_t>(found.idle) : 1);
            for (auto const & band : found.bands)
            {
                std::vector<CHumanResource const *> leaves;
                CResourceIDArray used;
                CHumanResourceArray const & tops = plan.project.getAllCompanies().GetAt(0).getHumanResources();
                auto const take = [&](auto const & self, CHumanResourceArray const & people, bool isWithin) -> void
                {
                    for (CHumanResource const & person : people)
                    {
                        bool const isHere = isWithin || by != By::resource || person.getName() == band.name.c_str();
                        if (isHere) used.Add(person.getID());
                        if (isHere && !person.hasSubResource()) leaves.push_back(&person);
                        if (person.getSubResources()) self(self, *person.getSubResources(), isHere);
                    }
                };
                take(take, tops, false);
                for (std::size_t each = 0; each < found.steps.count; ++each)
                    ASSERT_EQ(band.loads[each],
                              plainLoad(plan.project, leaves, used, found.steps.point(each), isToTheMinute, minutes))
                        << seed << band.name << each;
            }
        }
    }
}

// ---- pictures ---------------------------------------------------------------------------------------

std::vector<std::string> allPictures(CProject const & project, ChartOptions const & options)
{
    return {drawEarnedValue(project, options, Format::svg),
            drawUtilisation(project, {}, options, Format::svg),
            drawEarnedValue(project, options, Format::png),
            drawUtilisation(project, {}, options, Format::png),
            printEarnedValue(project, options, paperOfSettings("A4", true)),
            printUtilisation(project, {}, options, paperOfSettings("A4", false))};
}

TEST(Chart, DrawsWhateverAProjectHolds)
{
    ClockScope const clock("01-20 12:00"_t);
    std::vector<std::vector<TaskDraft>> const plans = {
        {},
        {aBlank("later")},
        {aTask("one")},
        {aTask("old").from("1902-01-06 09:00"_t),
         aTask("new").from("2037-12-01 09:00"_t).lasting(30_d).started("2037-12-01 09:00"_t)}};
    double const amounts[] = {0, -5, 1e300, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()};
    for (auto const & drafts : plans)
        for (double const amount : amounts)
        {
            if (amount != 0 && &drafts != &plans.back()) continue;
            Plan plan(drafts);
            CCompany company;
            CHumanResource person;
            person.setName("<b>&\n\xff");
            person.setTotalUnitsAvailable(INT32_MAX);
            CHumanResourceArray people;
            people.Add(person);
            company.setHumanResources(people);
            plan.act([&](auto & rules) { return rules.addCompany(company); });
            for (TaskDraft const & draft : drafts)
            {
                if (draft.blank) continue;
                CTask & task = plan.writable(draft.name);
                task.setCosts(oneCost(amount, CCostType::Daily));
                for (int const percent : {INT32_MAX, INT32_MAX, INT32_MIN}) assign(task, person.getID(), percent);
            }
            for (CProjectTime const & now : {"01-05 12:00"_t, "?"_t})
            {
                auto const pictures = allPictures(plan.project, {{}, now});
                for (std::size_t each = 0; each < pictures.size(); ++each)
                {
                    EXPECT_TRUE(pictures[each].starts_with(each < 2 ? "<?xml" : each < 4 ? "\x89PNG" : "%PDF"));
                    EXPECT_LT(pictures[each].size(), 900'000U);
                    bool const isText = each < 2;
                    EXPECT_FALSE(isText && pictures[each].find("nan") != std::string::npos);
                    EXPECT_FALSE(isText && pictures[each].find("<b>") != std::string::npos);
                }
            }
        }
    Plan const plan({aTask("one")});
    EXPECT_THROW(allPictures(plan.project, {{"01-06 00:00"_t, "01-05 00:00"_t}}), std::invalid_argument);
    EXPECT_THROW(allPictures(plan.project, {{}, {}, std::nan("")}), std::invalid_argument);
    EXPECT_THROW(printUtilisation(plan.project, {}, {}, Paper{}), std::invalid_argument);
}

TEST(Chart, ShowsTheCurvesThatTheViewsShow)
{
    Plan plan({aTask("one")});
    plan.writable("one").setCosts(oneCost(100));
    for (bool const isShown : {true, false})
    {
        CEVAGraphPresentation view;
        view.setDisplayBCWS(CProjectBool(isShown));
        plan.act([&](auto & rules) { return rules.setEVAGraphPresentation(view); });
        std::string const svg = drawEarnedValue(plan.project, {{}, "01-05 13:00"_t}, Format::svg);
        EXPECT_EQ(svg.find(">BCWS: budgeted") != std::string::npos, isShown);
        EXPECT_NE(svg.find(">BCWP: budgeted"), std::string::npos);
    }
}

TEST(Chart, CountsInRoundNumbers)
{
    ValueAxis const axis = ValueAxis::covering(-30, 410, 8);
    EXPECT_EQ(axis.lowest, -100);
    EXPECT_EQ(axis.highest, 500);
    EXPECT_EQ(axis.step, 100);
    std::pair<double, char const *> const numbers[] = {
        {0, "0"}, {-0.001, "0"}, {12.5, "12.5"}, {1234567, "1,234,567"}, {-1000.25, "\u22121,000.25"}, {999, "999"}};
    for (auto const & [number, text] : numbers) EXPECT_EQ(numberText(number, 2), text);
}

}  // namespace
