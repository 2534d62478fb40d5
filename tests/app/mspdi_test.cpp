#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <random>

#include "app/command.h"
#include "app/exchange/mspdi_reader.h"
#include "app/exchange/mspdi_values.h"
#include "app/exchange/mspdi_writer.h"
#include "tests/support/real_cases.h"

namespace orvane::app
{
namespace
{

std::string document(std::string const & inside)
{
    return "<?xml version=\"1.0\"?>\n<Project xmlns=\"http://schemas.microsoft.com/project\">" + inside + "</Project>";
}

std::string tasks(std::string const & inside)
{
    return document("<Tasks>" + inside + "</Tasks>");
}

std::string calendars(std::string const & inside)
{
    return document("<Calendars><Calendar><UID>1</UID><Name>Site</Name>" + inside + "</Calendar></Calendars><Tasks/>");
}

Plan read(std::string const & text)
{
    return readMspdi(text, "plan.xml");
}

std::string refusal(std::string const & text)
{
    try
    {
        read(text);
    }
    catch (Refusal const & refused)
    {
        return refused.what();
    }
    return "accepted";
}

// All that a plan holds as a list of lines, but for what reading alone adds.
void expectSame(Plan first, Plan second)
{
    auto const withoutLines = [](Plan & plan)
    {
        for (PlanTask & task : plan.tasks) task.line = 0;
    };
    withoutLines(first);
    withoutLines(second);
    EXPECT_EQ(first.name, second.name);
    EXPECT_EQ(std::tie(first.start, first.finish, first.statusDate),
              std::tie(second.start, second.finish, second.statusDate));
    EXPECT_EQ(std::tie(first.minutesPerDay, first.minutesPerWeek, first.calendarUID, first.currency),
              std::tie(second.minutesPerDay, second.minutesPerWeek, second.calendarUID, second.currency));
    EXPECT_TRUE(first.calendars == second.calendars);
    EXPECT_TRUE(first.resources == second.resources);
    EXPECT_TRUE(first.assignments == second.assignments);
    ASSERT_EQ(first.tasks.size(), second.tasks.size());
    for (std::size_t each = 0; each < first.tasks.size(); ++each)
        EXPECT_TRUE(first.tasks[each] == second.tasks[each]) << "task " << first.tasks[each].uid;
}

// A plan of all that the format can hold.
class RandomSchedule
{
public:
    explicit RandomSchedule(unsigned seed) : random(seed) {}

    Plan make()
    {
        plan.name = text();
        plan.start = time();
        plan.statusDate = maybe(time());
        plan.currency = below(2) ? "EUR" : "kr";
        for (int uid = 1; uid < 5; ++uid) addCalendar(uid);
        plan.calendarUID = 1;
        for (int uid = 1; uid < 4; ++uid) addResource(uid);
        for (int uid = 1; uid < 30; ++uid) addTask(uid);
        return plan;
    }

private:
    int below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    std::int64_t minutes(int bound) { return below(bound); }
    OptionalMinute time() { return 20'000'000 + minutes(8'000'000); }
    template <class T>
    std::optional<T> maybe(std::optional<T> value)
    {
        return below(2) ? value : std::nullopt;
    }
    double money() { return below(1'000'000) / 100.0; }
    std::string text()
    {
        static constexpr char const * all[] = {"Dig",         " <&> ", "Größe\n2\r\n", "\U0001F3D7 crane",
                                               "\"a\" 'b'\t", "]]>"};
        return all[below(6)] + std::to_string(below(100));
    }
    PlanDay day() { return below(3) ? PlanDay{{below(400), 480}, {540, below(2) ? 1440 : 1000}} : PlanDay{}; }

    void addCalendar(int uid)
    {
        PlanCalendar & calendar = plan.calendars.emplace_back();
        calendar.uid = uid;
        calendar.name = text();
        calendar.isBase = uid < 3;
        if (uid > 2) calendar.baseUID = uid - 2;
        for (auto & each : calendar.week)
            if (below(3)) each = day();
        for (int count = below(20); count > 0; --count)
        {
            std::int64_t const number = 15'000 + below(30);
            calendar.exceptions[number] = day();
            if (below(2)) calendar.exceptionNames[number] = "Feast " + std::to_string(below(2));
        }
    }

    void addResource(int uid)
    {
        plan.resources.push_back({uid, text(), static_cast<PlanResourceKind>(below(3)), uid, below(400) / 100.0,
                                  money(), money(), money(), text(), text()});
    }

    void addTask(int uid)
    {
        int const level = plan.tasks.empty() ? 1 : 1 + below(std::min(plan.tasks.back().outlineLevel + 1, 5));
        PlanTask & task = plan.tasks.emplace_back();
        task.uid = uid;
        task.id = uid * 2;
        task.isBlank = below(10) == 0;
        if (task.isBlank) return;
        task.outlineLevel = level;
        task.name = text();
        task.notes = text();
        if (below(2)) task.category = text();
        task.isMilestone = below(2), task.isManual = below(2), task.isActive = below(2), task.isElapsed = below(2);
        task.isSummary = below(2);
        task.duration = maybe(time());
        task.start = maybe(time()), task.finish = maybe(time()), task.deadline = maybe(time());
        task.actualStart = maybe(time()), task.actualFinish = maybe(time());
        task.percentComplete = below(101);
        task.calendarUID = below(2) ? 2 : -1;
        task.constraint = static_cast<PlanConstraint>(below(8));
        if (task.constraint > PlanConstraint::asLateAsPossible) task.constraintDate = time();
        task.fixedCost = money();
        if (below(2))
            task.baseline = PlanBaseline{maybe(time()), maybe(time()), maybe(time()), maybe(std::optional(money()))};
        if (uid > 2 && !plan.tasks[0].isBlank)
            task.links.push_back({1, static_cast<PlanLinkType>(below(4)), static_cast<PlanLink::Lag>(below(3)),
                                  static_cast<double>(below(2000) - 1000)});
        PlanAssignment & assignment = plan.assignments.emplace_back();
        assignment.taskUID = uid;
        assignment.resourceUID = 1 + below(3);
        assignment.units = below(500) / 100.0;
        bool const isCost =
            plan.resources[static_cast<std::size_t>(assignment.resourceUID - 1)].kind == PlanResourceKind::cost;
        if (isCost) assignment.cost = money();
    }

    std::mt19937 random;
    Plan plan;
};

TEST(Mspdi, ReadsBackWhatItWrites)
{
    for (unsigned seed = 1; seed <= 50; ++seed)
    {
        SCOPED_TRACE(seed);
        Plan const plan = RandomSchedule(seed).make();
        Plan const again = read(writeMspdi(plan));
        expectSame(plan, again);
        EXPECT_TRUE(again.losses.empty()) << again.losses[0].what;
        if (HasFailure()) return;
    }
}

TEST(Mspdi, ReadsSchedulesOfOthers)
{
    auto const folder = orvane::test::realCasesFolder() / "mspdi" / "files";
    if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << folder;
    for (auto const & entry : std::filesystem::directory_iterator(folder))
    {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const text{std::istreambuf_iterator<char>(file), {}};
        Plan const plan = read(text);
        EXPECT_FALSE(plan.tasks.empty());
        expectSame(plan, read(writeMspdi(plan)));
        // Half a file is none.
        EXPECT_NE(refusal(text.substr(0, text.size() / 2)).find("not well-formed"), std::string::npos);
    }
}

TEST(Mspdi, WritesOutExceptionsOfCalendars)
{
    struct Case
    {
        char const * rule;
        char const * first;
        char const * last;
        std::vector<char const *> days;
    };
    Case const cases[] = {
        {"<Type>1</Type>", "2027-03-01T00:00:00", "2027-03-03T23:59:00", {"2027-03-01", "2027-03-02", "2027-03-03"}},
        {"<Type>1</Type><Period>2</Period>",
         "2027-03-01T00:00:00",
         "2027-03-04T23:59:00",
         {"2027-03-01", "2027-03-03"}},
        // Mondays and Sundays of every second week.
        {"<Type>6</Type><Period>2</Period><DaysOfWeek>3</DaysOfWeek>",
         "2027-03-01T00:00:00",
         "2027-03-16T00:00:00",
         {"2027-03-01", "2027-03-14", "2027-03-15"}},
        {"<Type>4</Type><Period>1</Period><MonthDay>31</MonthDay>",
         "2027-01-15T00:00:00",
         "2027-04-15T00:00:00",
         {"2027-01-31", "2027-02-28", "2027-03-31"}},
        // The last Friday.
        {"<Type>5</Type><Period>2</Period><MonthItem>8</MonthItem><MonthPosition>4</MonthPosition>",
         "2027-01-01T00:00:00",
         "2027-04-01T00:00:00",
         {"2027-01-29", "2027-03-26"}},
        // The second working day.
        {"<Type>5</Type><Period>1</Period><MonthItem>1</MonthItem><MonthPosition>1</MonthPosition>",
         "2027-05-01T00:00:00",
         "2027-06-30T00:00:00",
         {"2027-05-04", "2027-06-02"}},
        {"<Type>2</Type><Month>1</Month><MonthDay>29</MonthDay>",
         "2027-01-01T00:00:00",
         "2028-12-31T00:00:00",
         {"2027-02-28", "2028-02-29"}},
        // The first Monday of September, twice.
        {"<EnteredByOccurrences>1</EnteredByOccurrences><Occurrences>2</Occurrences><Type>3</Type><Month>8</Month>"
         "<MonthItem>4</MonthItem><MonthPosition>0</MonthPosition>",
         "2027-01-01T00:00:00",
         "2031-12-31T00:00:00",
         {"2027-09-06", "2028-09-04"}},
    };
    for (Case const & each : cases)
    {
        SCOPED_TRACE(each.rule);
        std::string const period = std::string("<TimePeriod><FromDate>") + each.first + "</FromDate><ToDate>" +
                                   each.last + "</ToDate></TimePeriod>";
        Plan const plan = read(calendars("<Exceptions><Exception>" + period + "<Name>Off</Name>" + each.rule +
                                         "<DayWorking>0</DayWorking></Exception></Exceptions>"));
        std::vector<std::string> days;
        for (auto const & [day, name] : plan.calendars.at(0).exceptionNames)
        {
            std::chrono::year_month_day const date{std::chrono::sys_days(std::chrono::days(day))};
            char text[16];
            std::snprintf(text, sizeof text, "%04d-%02u-%02u", int(date.year()), unsigned(date.month()),
                          unsigned(date.day()));
            days.emplace_back(text);
        }
        EXPECT_EQ(days, std::vector<std::string>(each.days.begin(), each.days.end()));
    }
}

TEST(Mspdi, TakesDaysOfWorkAsTheyAreMeant)
{
    auto const work = [](char const * from, char const * to)
    { return std::string("<WorkingTime><FromTime>") + from + "</FromTime><ToTime>" + to + "</ToTime></WorkingTime>"; };
    auto const day = [](int type, std::string const & inside)
    { return "<WeekDay><DayType>" + std::to_string(type) + "</DayType>" + inside + "</WeekDay>"; };
    std::string const period =
        "<TimePeriod><FromDate>2027-03-01T00:00:00</FromDate><ToDate>2027-03-07T23:59:00</ToDate>"
        "</TimePeriod>";
    Plan const plan =
        read(calendars("<WeekDays>" + day(1, "<DayWorking>0</DayWorking>") + day(2, "<DayWorking>1</DayWorking>") +
                       day(3, "<DayWorking>1</DayWorking><WorkingTimes>" + work("13:00:00", "00:00:00") +
                                  work("06:00:00", "12:00:00") + work("22:00:00", "06:00:00") + "</WorkingTimes>") +
                       "</WeekDays><WorkWeeks><WorkWeek>" + period + "<Name>Rush</Name><WeekDays>" +
                       day(7, "<DayWorking>1</DayWorking>") + "</WeekDays></WorkWeek></WorkWeeks>"));
    PlanCalendar const & calendar = plan.calendars.at(0);
    EXPECT_EQ(calendar.week[0], PlanDay());
    EXPECT_EQ(calendar.week[1], (PlanDay{{480, 720}, {780, 1020}}));
    EXPECT_EQ(calendar.week[2], (PlanDay{{360, 720}, {780, 1440}}));
    EXPECT_FALSE(calendar.week[6]);
    constexpr std::int64_t saturday = 20883;
    EXPECT_EQ(calendar.exceptions, (std::map<std::int64_t, PlanDay>{{saturday, {{480, 720}, {780, 1020}}}}));
    EXPECT_EQ(plan.losses,
              (std::vector<PlanLoss>{{"", "calendar \"Site\": working times that end before they begin"}}));
}

// What is nearer to a single day wins: a period over a rule, a rule over a day of older files, that over a work week.
TEST(Mspdi, OrdersExceptionsByHowNearTheyAre)
{
    std::string const period = "<TimePeriod><FromDate>2027-03-01T00:00:00</FromDate>"
                               "<ToDate>2027-03-01T23:59:00</ToDate></TimePeriod>";
    auto const work = [](int hour)
    {
        std::string const clock = (hour < 10 ? "0" : "") + std::to_string(hour);
        return "<DayWorking>1</DayWorking><WorkingTimes><WorkingTime><FromTime>" + clock + ":00:00</FromTime><ToTime>" +
               clock + ":30:00</ToTime></WorkingTime></WorkingTimes>";
    };
    std::string const single = "<Exception>" + period + "<Type>1</Type>" + work(9) + "</Exception>";
    std::string const rule =
        "<Exception>" + period + "<Type>6</Type><DaysOfWeek>127</DaysOfWeek>" + work(8) + "</Exception>";
    std::string const old = "<WeekDays><WeekDay><DayType>0</DayType>" + period + work(7) + "</WeekDay></WeekDays>";
    std::string const week = "<WorkWeeks><WorkWeek>" + period + "<WeekDays><WeekDay><DayType>2</DayType>" + work(6) +
                             "</WeekDay></WeekDays></WorkWeek></WorkWeeks>";
    std::pair<std::string, int> const cases[] = {{week, 6},
                                                 {week + old, 7},
                                                 {week + old + "<Exceptions>" + rule + "</Exceptions>", 8},
                                                 {week + old + "<Exceptions>" + single + rule + "</Exceptions>", 9}};
    for (auto const & [inside, hour] : cases)
    {
        PlanCalendar const calendar = read(calendars(inside)).calendars.at(0);
        ASSERT_EQ(calendar.exceptions.size(), 1U);
        EXPECT_EQ(calendar.exceptions.begin()->second, (PlanDay{{hour * 60, hour * 60 + 30}}));
    }
}

TEST(Mspdi, ReadsLagsInTheirFormat)
{
    struct Case
    {
        int format;
        PlanLink::Lag in;
        double lag;
    };
    using Lag = PlanLink::Lag;
    for (auto const & [format, in, lag] :
         {Case{5, Lag::work, -48}, Case{7, Lag::work, -48}, Case{39, Lag::work, -48}, Case{8, Lag::clock, -48},
          Case{44, Lag::clock, -48}, Case{19, Lag::percent, -480}, Case{51, Lag::percent, -480},
          Case{0, Lag::work, -48}})
    {
        Plan const plan = read(tasks("<Task><UID>1</UID></Task><Task><UID>2</UID><PredecessorLink><PredecessorUID>1"
                                     "</PredecessorUID><Type>3</Type><LinkLag>-480</LinkLag><LagFormat>" +
                                     std::to_string(format) + "</LagFormat></PredecessorLink></Task>"));
        EXPECT_EQ(plan.tasks.at(1).links.at(0), (PlanLink{1, PlanLinkType::startToStart, in, lag})) << format;
    }
}

TEST(Mspdi, ReadsTimesAndDurations)
{
    constexpr Minute day = 20'878 * 1440;  // 2027-03-01
    std::pair<char const *, OptionalMinute> const times[] = {
        {"2027-03-01T09:30:00", day + 570},
        {"2027-03-01", day},
        {"2027-03-01T23:59:59.999", day + 1439},
        {"2027-03-01T24:00:00", day + 1440},
        {"2027-03-01T09:30:00+01:00", day + 570},
        {"1970-01-01T00:00:00Z", 0},
        {"2024-02-29T00:00:00", 19'782 * 1440},
        {"2100-02-29T00:00:00", {}},
        {"2027-03-01T09:30", {}},
        {"2027-13-01T00:00:00", {}},
        {"0000-01-01T00:00:00", {}},
        {"9999-12-31T24:00:00", {}},
        {"2027-03-01T09:30:00 x", {}},
        {"20270301", {}},
    };
    for (auto const & [text, minute] : times) EXPECT_EQ(readMspdiTime(text), minute) << text;
    std::pair<char const *, std::optional<double>> const durations[] = {
        {"PT8H30M0S", 510}, {"-PT1H0M0S", -60}, {"P1DT1H", 1500}, {"PT0H0M45.0S", 0.75}, {"PT1.5H", 90}, {"PT8", {}},
        {"P", {}},          {"PT-8H0M0S", {}},  {"P1Y", {}},      {"P1M", {}},           {"PTnanH", {}}, {"8H", {}},
    };
    for (auto const & [text, minutes] : durations) EXPECT_EQ(readMspdiDuration(text), minutes) << text;
}

TEST(Mspdi, TellsWhatAPlanCannotHold)
{
    std::string const pieces = "<OutlineLevel>1</OutlineLevel><Priority>500</Priority><Type>1</Type>";
    Plan const plan = read(document(
        "<ScheduleFromStart>0</ScheduleFromStart><Tasks>"
        "<Task><UID>0</UID><Name>Bridge</Name><OutlineLevel>0</OutlineLevel></Task>"
        "<Task><UID>1</UID><Name>Dig</Name>" +
        pieces +
        "<ExtendedAttribute><FieldID>1</FieldID></ExtendedAttribute>"
        "<ExtendedAttribute><FieldID>2</FieldID></ExtendedAttribute><Baseline><Number>3</Number></Baseline></Task>"
        "<Task><UID>2</UID><Name>Pour</Name>" +
        pieces +
        "<Priority>900</Priority><Novelty>x</Novelty>"
        "<PredecessorLink><PredecessorUID>0</PredecessorUID></PredecessorLink></Task></Tasks>"
        "<Resources><Resource><UID>0</UID></Resource><Resource><UID>4</UID><Name>Crew</Name><Code>C4</Code></Resource>"
        "</Resources><Assignments><Assignment><TaskUID>1</TaskUID><ResourceUID>4</ResourceUID><WorkContour>8</"
        "WorkContour>"
        "</Assignment><Assignment><TaskUID>2</TaskUID><ResourceUID>-65535</ResourceUID></Assignment>"
        "<Assignment><TaskUID>0</TaskUID><ResourceUID>4</ResourceUID></Assignment></Assignments>"));
    std::vector<PlanLoss> const expected = {
        {"", "resource \"Crew\": the code"},
        {"", "assignments to no task or to the whole schedule"},
        {"", "elements that no schedule is known to have"},
        {"", "scheduling backwards from the finish"},
        {"", "whether tasks keep their duration or their work (2)"},
        {"Dig", "custom fields (2)"},
        {"Dig", "further baselines"},
        {"Dig", "the contour of work"},
        {"Pour", "the priority"},
        {"Pour", "a link to no task"},
    };
    ASSERT_EQ(plan.losses.size(), expected.size());
    for (std::size_t each = 0; each < expected.size(); ++each)
        EXPECT_EQ(plan.losses[each].task + ": " + plan.losses[each].what,
                  expected[each].task + ": " + expected[each].what);
    EXPECT_EQ(plan.name, "Bridge");
    EXPECT_EQ(plan.assignments.size(), 1U);
}

TEST(Mspdi, RefusesWithFileLineAndSubject)
{
    std::string const dig = "\n<Task><UID>1</UID><Name>Dig</Name>";
    std::string deep;
    for (int each = 0; each < 200; ++each) deep += "<Task>";
    struct Case
    {
        std::string text;
        char const * message;
    };
    Case const cases[] = {
        {"", "line 1: the XML is not well-formed"},
        {"<Project>", "not well-formed"},
        {"<!DOCTYPE Project [<!ENTITY a \"b\">]>" + tasks("<Task><UID>1</UID><Name>&a;</Name></Task>"),
         "plan.xml: line 1: the document has a document type declaration"},
        {"<html/>", "line 1: the root element \"html\""},
        {"<Project Sdk=\"x\"/>", "no list of tasks"},
        {"<Project xmlns=\"urn:other\"><Tasks/></Project>", "the root element"},
        {tasks(deep), "stand too deep"},
        {tasks(dig + "\n<Start>2027-02-29T08:00:00</Start></Task>"),
         "plan.xml: line 4: task \"Dig\": Start \"2027-02-29T08:00:00\" is no time that exists"},
        {tasks(dig + "<Finish>2027-02-28T24:01:00</Finish></Task>"), "is no time that exists"},
        {tasks(dig + "<Duration>-PT8H0M0S</Duration></Task>"),
         "task \"Dig\": Duration \"-PT8H0M0S\" is a negative duration"},
        {tasks(dig + "<Duration>8 days</Duration></Task>"), "is no duration"},
        {tasks(dig + "<Duration>PT1e9H</Duration></Task>"), "is no duration"},
        {tasks(dig + "<Duration>PT99999999999H0M0S</Duration></Task>"), "is no duration"},
        {tasks(dig + "<PercentComplete>101</PercentComplete></Task>"), "outside its range"},
        {tasks(dig + "<FixedCost>1e999</FixedCost></Task>"), "is no number"},
        {tasks("\n\n<Task><Name>Dig</Name></Task>"), "line 4: task \"Dig\": has no UID"},
        {tasks(dig + "</Task>" + dig + "</Task>"), "line 4: task \"Dig\": the UID 1 stands twice"},
        {tasks(dig + "<PredecessorLink><PredecessorUID>7</PredecessorUID></PredecessorLink></Task>"),
         "line 3: task \"Dig\": there is no task 7 to link to"},
        {tasks(dig + "<CalendarUID>7</CalendarUID></Task>"), "task \"Dig\": there is no calendar 7"},
        {document("<Tasks>" + dig +
                  "</Task></Tasks><Assignments>\n<Assignment><TaskUID>1</TaskUID><ResourceUID>7</ResourceUID>"
                  "</Assignment></Assignments>"),
         "line 4: the assignment to task \"Dig\": there is no resource 7"},
        {calendars("<BaseCalendarUID>1</BaseCalendarUID>"), "calendar \"Site\": is a base of itself"},
        {calendars("<BaseCalendarUID>2</BaseCalendarUID>"), "calendar \"Site\": there is no calendar 2"},
    };
    for (Case const & each : cases)
        EXPECT_NE(refusal(each.text).find(each.message), std::string::npos) << each.message << "\n"
                                                                            << refusal(each.text);
}

// Documents that cost more than they hold are refused before they take the machine.
TEST(Mspdi, BoundsWhatADocumentCosts)
{
    std::string names, attributes;
    for (int each = 0; each < 300'000; ++each)
    {
        names += "<a" + std::to_string(each) + "/>";
        attributes += " a" + std::to_string(each) + "=\"\"";
    }
    EXPECT_NE(refusal(tasks(names)).find("more memory"), std::string::npos);
    EXPECT_NE(refusal(tasks("<Task" + attributes + "/>")).find("more memory"), std::string::npos);
    std::string const text(5'000'000, 'x');
    EXPECT_NE(refusal(tasks("<Task><Name>" + text + "</Name></Task>")).find("too long"), std::string::npos);
}

// Years of exceptions in each of many calendars would take all memory.
TEST(Mspdi, BoundsTheDaysOfExceptions)
{
    std::string const exception = "<Exception><TimePeriod><FromDate>0001-01-01T00:00:00</FromDate>"
                                  "<ToDate>9999-12-31T00:00:00</ToDate></TimePeriod><Type>1</Type></Exception>";
    Plan const plan = read(calendars("<Exceptions>" + exception + "</Exceptions>"));
    EXPECT_LT(plan.calendars[0].exceptions.size(), 10'000U);
    EXPECT_EQ(plan.losses.size(), 1U);
    std::string many;
    for (int each = 0; each < 1000; ++each) many += exception;
    EXPECT_NE(refusal(calendars("<Exceptions>" + many + "</Exceptions>")).find("too many exceptions"),
              std::string::npos);
}

}  // namespace
}  // namespace orvane::app
