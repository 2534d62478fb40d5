// Calendars, rights, filters and the state of the views as they stand in documents.

#include <gtest/gtest.h>

#include <sstream>

#include "schedule/calendar.h"
#include "security/role.h"
#include "security/secure_object.h"
#include "security/user.h"
#include "tests/support/document_text.h"
#include "view/company_presentation.h"
#include "view/filter.h"
#include "view/presentation_data.h"

namespace
{

using namespace orvane;
using std::string;

string replaced(CString text, char const * from, char const * to)
{
    text.Replace(from, to);
    return string(text.view());
}

// With which all identifiers of this test begin; in its texts "#" stands for them.
constexpr char const * zeros = "0000000000000000000000000000000";

void fill(IProjectXMLTagProcessor & object, string const & document)
{
    EXPECT_EQ(parse(replaced(document.c_str(), "#", zeros), object), 1) << document;
}

// The object's document in short: its lines, each behind its level and before a bar.
template <class Object>
string digest(Object object, std::size_t furtherLevels = 0)
{
    string text, line;
    for (std::istringstream lines(written(object)); std::getline(lines, line);)
    {
        std::size_t const blanks = line.find_first_not_of(' ');
        text += std::to_string(blanks / 3 + furtherLevels) + line.substr(blanks / 3 * 3) + '|';
    }
    return replaced(text.c_str(), zeros, "#");
}

template <class Object>
string digestAfter(string const & document, Object object = {})
{
    fill(object, document);
    return digest(object);
}

TEST(ViewDocumentTest, ReadsAndWritesACalendar)
{
    CCalendar calendar;
    CProjectTime const tuesday(2004, 1, 6, 5, 59);
    EXPECT_FALSE(calendar.isValidStartTime(tuesday));
    // An hour without its minute is a minute early.
    string const types =
        "<CalendarDayTypes><CalendarDayType ID='#2' description='Shift' color='1, 0.5, 0'><ProjectTimeOfDaySpans>"
        "<ProjectTimeOfDaySpan start='6' finish='10'/><ProjectTimeOfDaySpan start='11:00'/></ProjectTimeOfDaySpans>"
        "</CalendarDayType><CalendarDayType ID='#3' color='0,0,0' daytype='2'/></CalendarDayTypes>";
    string const days = "<CalendarWeek day0='#3' day2='#2'/><CALENDARDAYS>"
                        "<CalendarDay date='Tue Jan 13 2004' dayTypeID='#3'/></CALENDARDAYS>";
    fill(calendar, "<Calendar ID='#1' inUse='1'>" + types + days + "</Calendar>");
    EXPECT_EQ(digest(calendar),
              R"(1<Calendar|2inUse = "true"|2ID = "#1"|2>|2<CalendarWeek|3day0 = "#3"|3day1 = "#0"|3day2 = "#2"|)"
              R"(3day3 = "#0"|3day4 = "#0"|3day5 = "#0"|3day6 = "#0"|2/>|3<CalendarDays>|4<CalendarException|)"
              R"(5date = "Tu, 13 Jan, 2004"|5dayTypeID = "#3"|4/>|3</CalendarDays>|3<CalendarDayTypes>|)"
              R"(4<CalendarDayType|5ID = "#2"|5description = "Shift"|5color = "1.000000, 0.500000, 0.000000"|)"
              R"(5daytype = "1"|5>|5<ProjectTimeOfDaySpans>|6<TimeOfDaySpan|7start = "05:59"|7finish = "09:59"|6/>|)"
              R"(7<TimeOfDaySpan|8start = "10:59"|7/>|7</ProjectTimeOfDaySpans>|6</CalendarDayType>|)"
              R"(6<CalendarDayType|7ID = "#3"|7color = "0.000000, 0.000000, 0.000000"|7daytype = "2"|7>|)"
              R"(7<ProjectTimeOfDaySpans/>|6</CalendarDayType>|5</CalendarDayTypes>|4</Calendar>|)");
    // Its tables are those of the new days.
    fill(calendar, "<Calendar inUse='1' normalDayInUse='1'/>");
    EXPECT_TRUE(calendar.isValidStartTime(tuesday));
    EXPECT_FALSE(calendar.isValidStartTime({2004, 1, 13, 5, 59}));
    EXPECT_TRUE(calendar.isValidStartTime({2004, 1, 20, 5, 59}));
    // Exceptions and blocks are read under other names than they are written.
    CCalendar back;
    fill(back, written(calendar));
    EXPECT_EQ(back.getCalendarWeek(), calendar.getCalendarWeek());
    EXPECT_EQ(back.getCalendarDayExceptions().GetSize(), 0);
    ASSERT_EQ(back.getCalendarDayTypes().GetSize(), 2);
    EXPECT_EQ(back.getCalendarDayTypes().GetAt(0).getNumberOfTimeBlocks(), 0);
    // One that is not in use tells nothing of its days, and keeps them.
    fill(calendar, "<r><Calendar><CalendarDays/></Calendar></r>");
    EXPECT_EQ(digest(calendar), "1<Calendar|2ID = \"#0\"|2>|1</Calendar>|");
    EXPECT_EQ(calendar.getCalendarDayExceptions().GetSize(), 1);
}

TEST(ViewDocumentTest, ReadsAndWritesUsersAndRoles)
{
    string const rights = "<Permissions readTasks='1' writeRoles='2'/>";
    string const rightsDigest =
        R"(2<Permissions|3writeTasks = "5"|3readTasks = "1"|3writeTaskCosts = "5"|3readTaskCosts = "5"|)"
        R"(3writeTaskResources = "5"|3readTaskResources = "5"|3writeTaskRisks = "5"|3readTaskRisks = "5"|)"
        R"(3writeTaskRiskCosts = "5"|3readTaskRiskCosts = "5"|3writeTaskReports = "5"|3readTaskReports = "5"|)"
        R"(3writeTaskReportCosts = "5"|3readTaskReportCosts = "5"|3writeResources = "5"|3readResources = "5"|)"
        R"(3writeResourceCosts = "5"|3readResourceCosts = "5"|3writeUsers = "5"|3writeRoles = "2"|2/>|)";
    // Whatever the element, its attributes are the role's, and those that it lacks are emptied.
    EXPECT_EQ(digestAfter<CRole>("<Role id='#9' name='x'>" + rights + "</Role>"),
              "1<Role|2id = \"#0\"|2>|" + rightsDigest + "1</Role>|");
    EXPECT_EQ(digestAfter("<r>" + rights + "<User ID='#7' name='n' login='l' email='e' password='p' mobile='2'"
                          " telephoneNumber='1' RoleID='#8' CompanyID='#9'/></r>", CUser("", "secret", "", "", "", "")),
              R"(1<User|2ID = "#7"|2name = "n"|2login = "l"|2email = "e"|2telephoneNumber = "1"|2mobile = "2"|)"
              R"(2RoleID = "#8"|2CompanyID = "#9"|2>|)" + rightsDigest + "1</User>|");

    CUserArray users;
    users.Add(CUser());
    fill(users, "<Users><User ID='#7' login='a' password='p'>" + rights + "</User><User login='a'/>"
                    "<USER login='A'/></Users>");
    ASSERT_EQ(users.GetSize(), 2);
    // The array gets the rights' element, and has no use for it.
    EXPECT_TRUE(users.GetAt(0).getPassword() == "" && users.GetAt(0).getPermissions() == CPermissions());
    EXPECT_TRUE(users.GetAt(1).getLogin() == "A" && users.GetAt(1).getID().isNULL());

    CRoleArray roles;
    CRole guest;
    guest.setToDefaultGuestRole();
    roles.Add(guest);
    fill(roles, "<Roles/>");
    EXPECT_EQ(digest(roles), "1<Roles>|" + digest(guest, 1) + "1</Roles>|");
    EXPECT_EQ(digestAfter("<Roles><Role name='x'/></Roles>", roles), "1<Roles/>|");

    EXPECT_EQ(digest(CSecureObject()), "1<SecureObject|2>|1</SecureObject>|");
    EXPECT_EQ(digest(CSecurityGuard()), "1<SecurityGuard|2>|1</SecurityGuard>|");
}

TEST(ViewDocumentTest, ReadsAndWritesFilters)
{
    CFilter filter;
    CNameFilter names;
    CProjectStringArray texts;
    texts.Add("dig & fill");
    names.setNames(texts);
    filter.setNameFilter(names);
    fill(filter, "<r><NameFilter inUse='1'/><DateRangeFilter start='Mon Jan 5 2004'/>"
                     "<StatusFilter tbaIncluded='1'/><ResourcesFilter inUse='1'><ResourceIDs><ResourceID id='#5'/>"
                     "</ResourceIDs></ResourcesFilter>"
                     "<CompanyFilter mode='4'><CompanyIDs><CompanyID id='#6'/></CompanyIDs></CompanyFilter>"
                     "<Filter ID='#4' name='n' filterMode='2'/></r>");
    EXPECT_EQ(digest(filter),
              R"(1<Filter |2ID = "#4"|2name = "n"|2filterMode = "2"|2 >|2<NameFilter |3inUse = "true"|3>|3<Names>|)"
              R"(4<ProjectString|5value = "dig &amp; fill"|4/>|3</Names>|2</NameFilter>|2<DateRangeFilter |)"
              R"(3start = "Mo, 05 Jan, 2004"|2/>|2<StatusFilter |3tbaIncluded = "true"|2 />|2<ResourcesFilter|)"
              R"(3inUse = "true"|3>|3<ResourceIDs>|4id = "#5"|3</ResourceIDs>|2</ResourcesFilter>|2<RiskFilter|3>|)"
              R"(3<RiskIDs/>|2</RiskFilter>|2<CompanyFilter|3mode = "4"|3>|3<CompanyIDs>|4<CompanyID|5id = "#6"|4/>|)"
              R"(4</CompanyIDs>|3</CompanyFilter>|2</Filter>|)");
    // The array gets the elements of the questions, and has no use for them.
    CFilterArray filters;
    fill(filters, "<Filters>" + written(filter) + "</Filters>");
    ASSERT_EQ(filters.GetSize(), 1);
    EXPECT_TRUE(filters.GetAt(0).getID() == filter.getID() && filters.GetAt(0).getName() == "n");
    EXPECT_FALSE(filters.GetAt(0).getNameFilter().getInUse().getValue());
    // Texts are written under one name and emptied under another.
    fill(filter, "<NameFilter><Names/><ProjectStringArray/></NameFilter>");
    EXPECT_EQ(filter.getNameFilter().getNames().GetSize(), 0);
}

TEST(ViewDocumentTest, ReadsAndWritesThePartsOfTheViews)
{
    EXPECT_EQ(digestAfter<CEVAGraphPresentation>("<r displayBCWS='1' displayACWP='true'/>"),
              R"(1displayBCWS = "true"|1displayACWP = "true"|)");
    EXPECT_EQ(digestAfter<C3DPresentation>("<r Resource3DDisplayMode='3'/>"),
              R"(1Resource3DDisplayMode = "3"|13DLockMode = "3"|)");
    EXPECT_EQ(digestAfter<CGanttPresentation>("<r Zoom='0.002' FocusedTime='Mon, Jan 5 2004' FocusedTimePlaying='1'"
                                              " PlaySpeed='9 Hours' ScrollPosition='1500'/>"),
              R"(1Zoom = "2e-3"|1FocusedTime = "00:00 Mo, 05 Jan, 2004"|1FocusedTimePlaying = "true"|)"
              R"(1PlaySpeed = "1 Days"|1ScrollPosition = "1.5e+3"|)");
    CCompanyPresentation company;
    company.setColor(CColor(0, 0, 1));
    EXPECT_EQ(digest(company), R"(1<companyPresentation|2color = "0.000000, 0.000000, 1.000000"|1/>|)");
}

TEST(ViewDocumentTest, ReadsAndWritesTheStateOfTheViews)
{
    CPresentationData views;
    CTaskID task{nullID};
    CProjectXMLArchive::stringToHandle((zeros + string("2")).c_str(), task);
    views.setSingleSelectedTaskID(task);
    views.addRiskPresentation(CRiskID());
    // An entry needs its identifier in front.
    fill(views,
             "<PresentationData selectedRoleID='#9'><ResourceUtilisationPresentation displayUtilisationChartFor='2'"
             " chartType='2' displayChartFor='4'/><NavigatorPresentation companyFilter='5' companyFilterInUse='1'/>"
             "<ResourcePresentationMap><ResourcePresentationMapItem><ResourceID id='#5'/><CResourcePresentation/>"
             "</ResourcePresentationMapItem><ResourcePresentationMapItem><CResourcePresentation/>"
             "</ResourcePresentationMapItem></ResourcePresentationMap><RiskPresentationMap/>"
             "<TaskPresentationMap><TaskPresentation/><TaskPresentationMapItem><TaskID id='#2'/>"
             "<TaskPresentation rowHeight='30'/></TaskPresentationMapItem></TaskPresentationMap></PresentationData>");
    EXPECT_EQ(digest(views),
              R"(1<PresentationData|2primarySelectedTaskID = "#0"|2selectedCompanyID = "#0"|)"
              R"(2selectedResourceID = "#0"|2selectedRiskID = "#0"|2selectedFilterID = "#0"|)"
              R"(2selectedAssignedRiskCostID = "#0"|2selectedTaskCostID = "#0"|2selectedResourceCostID = "#0"|)"
              R"(2primarySelectedSceneEntityID = "#0"|2selectedTaskReportID = "#0"|)"
              R"(2selectedTaskReportCostID = "#0"|2selectedUserID = "#0"|2selectedRoleID = "#9"|2>|)"
              R"(2<selectedTaskIDs>|3<TaskIDs>|4id = "#2"|3</TaskIDs>|2</selectedTaskIDs>|)"
              R"(2<ResourceUtilisationPresentation|3chartType = "2"|3displayChartFor = "4"|)"
              R"(3displayUtilisationChartFor = "2"|2/>|)" +
                  digest(views.getEVAGraphPresentation(), 1) +
                  R"(2<NavigatorPresentation|3companyFilter = "5"|3companyFilterInUse = "true"|)"
                  R"(3resourceFilter = "#0"|2/>|)" +
                  digest(views.get3DPresentation(), 1) + digest(views.getGanttPresentation(), 1) +
                  R"(2<ResourcePresentationMap>|3<ResourcePresentationMapItem|4>|4<ResourceID|5id = "#5"|4/>|)"
                  R"(5<CResourcePresentation|5/>|4</ResourcePresentationMapItem>|3</ResourcePresentationMap>|)"
                  R"(3<RiskPresentationMap/>|3<TaskPresentationMap>|4<TaskPresentationMapItem|5>|5<TaskID|6id = "#2"|)"
                  R"(5/>|6<TaskPresentation|7rowHeight = "30"|6/>|5</TaskPresentationMapItem>|)"
                  R"(4</TaskPresentationMap>|3</PresentationData>|)");
    // Bare lines are text to a reader, also those of the selected tasks.
    CPresentationData back = views;
    fill(back, written(views));
    EXPECT_EQ(back.getSelectedTaskID().GetSize(), 0);
    back.setSelectedTaskID(views.getSelectedTaskID());
    EXPECT_EQ(back, views);
}

}  // namespace
