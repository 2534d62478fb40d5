#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>

#include "model/location.h"
#include "model/project.h"
#include "model/user_job_function.h"
#include "tests/support/document_text.h"
#include "tests/support/plan_builder.h"
#include "tests/support/recording_host.h"

namespace
{

using namespace orvane;
using std::string;

// The text with its identifiers as "#1", "#2" and so on in the order in which they turn up; NULL is "#0".
string withNumberedIDs(string text)
{
    std::map<string, string> names{{string(32, '0'), "#0"}};
    std::regex const id("[0-9a-f]{32}");
    for (std::smatch found; std::regex_search(text, found, id);)
    {
        string const next = "#" + std::to_string(names.size());
        string const name = names.try_emplace(found.str(), next).first->second;
        text.replace(static_cast<std::size_t>(found.position()), 32, name);
    }
    return text;
}

template <class Array, class... Elements>
Array arrayOf(Elements const &... elements)
{
    Array array;
    (array.Add(elements), ...);
    return array;
}

CCost aCost(double amount)
{
    CCost cost;
    cost.setAmount(amount);
    return cost;
}

template <class Owner>
Owner withCalendarOutOfUse(Owner owner = {})
{
    CCalendar calendar = owner.getCalendar();
    calendar.setInUse(false);
    owner.setCalendar(calendar);
    return owner;
}

CCompany aCompany()
{
    auto crane = withCalendarOutOfUse<CEquipmentResource>();
    crane.setName("Crane");
    crane.setDescription("6\"");
    crane.setAutoAccept(true);
    crane.setTotalUnitsAvailable(2000);
    crane.setResourceUnitType(CResourceUnitType::Each);
    crane.setAvailableFrom(CProjectDate(2004, 1, 5));
    crane.addSupplierReference("A-1");
    crane.addCost(aCost(0.5), -1);
    auto hook = withCalendarOutOfUse<CEquipmentResource>();
    hook.setOrderRequired(true);
    hook.setUseRatePerDay(0);
    crane.makeSubResources().Add(hook);
    CMaterialResource sand;
    sand.setUsedOn("01-06 10:30"_t);
    auto company =
        withCalendarOutOfUse(CCompany("Dig & Co", CCompanyType::Contractor, "Lane 1\r\nTown", "1", "", "a@b"));
    company.setColor(CProjectColor(1.0F, 0.5F, 0.0F));
    company.resourcesOf<CEquipmentResource>().Add(crane);
    company.resourcesOf<CLocationResource>().Add(withCalendarOutOfUse<CLocationResource>());
    company.resourcesOf<CMaterialResource>().Add(sand);
    return company;
}

CTask aFullTask(CResourceID const & resource, CRiskID const & risk, CCompanyID const & company)
{
    CTask task = aTask("dig").constrained().make();
    task.setCosts(arrayOf<CCostArray>(aCost(1500)));
    task.setBaseline();
    CAssignedRisk fixed(risk, CRiskValueMode::Fixed);
    fixed.setCosts({});
    CAssignedRisk percent(risk, CRiskValueMode::Percent);
    percent.setValuePercent(12.5);
    task.setAssignedRisks(arrayOf<CAssignedRiskArray>(fixed, percent));
    CAssignedResource assigned({}, resource, 2000);
    assigned.setTransform(CTransform::translation({1, 2, -0.5}));
    task.setAssignedResources(arrayOf<CAssignedResourceArray>(assigned));
    CLink link(task.getID(), CLinkType::StartToStart);
    link.setDelay(1_h);
    task.setUpstreamLinks(arrayOf<CLinkArray>(link));
    CTaskReport report;
    report.setRiskID(risk);
    report.setDate(CProjectDate(2004, 1, 6));
    report.setComments("wet");
    task.setTaskReports(arrayOf<CTaskReportArray>(report));
    CSupplyChain chain(company);
    chain.assignToCompany(CCompanyID(nullID));
    task.setSupplyChain(chain);
    task.setActualStartTime("01-05 09:30"_t);
    task.setPredictedFinishTime("01-07 12:00"_t);
    task.setActualFinishTime("01-08 12:00"_t);
    task.setRiskBuffer(true);
    task.setComments("a\r\nb<");
    task.setTemplate(true);
    return task;
}

CProjectData someContent()
{
    CCompany const company = aCompany();
    CRisk rain, storm;
    rain.setDescription("rain");
    storm.setDescription("storm");
    rain.setSubRisks(arrayOf<CRiskArray>(storm));
    CTask house = aTask("house").with({aTask("dug over"), aBlank().with({aTask("gone")})}).make();
    CTaskArray & below = *house.getWritableSubTasks();
    below[0] = aFullTask(company.getEquipmentResources().GetAt(0).getID(), storm.getID(), company.getID());
    below[1].getWritableSubTasks()->RemoveAll();
    CTaskArray tasks;
    tasks.addTask(house);

    CProjectData data;
    data.setCompanies(arrayOf<CCompanyArray>(company));
    data.setRisks(arrayOf<CRiskArray>(rain));
    data.setTasks(tasks);
    return data;
}

// The document as the file beside this one has it, but for its two dates.
string expectedDocument()
{
    std::ifstream file(std::filesystem::path(ORVANE_SOURCE_DIR) / "tests/persistence/plan_document.txt");
    string text(std::istreambuf_iterator<char>(file), {});
    string const day(CTime::GetCurrentTime().Format("%A, %B %d, %Y").view());
    text = std::regex_replace(text, std::regex("\\{day\\}"), day);
    return std::regex_replace(text, std::regex("\\{year\\}"), __DATE__ + 7);
}

TEST(ModelDocumentTest, WritesAWholeProject)
{
    CRecordingHost host;
    CScratchFolder const folder;
    CProject project(someContent());
    project.xmlSerialize(true, folder.path("plan.xml"), false);
    EXPECT_EQ(withNumberedIDs(folder.read("plan.xml")), expectedDocument());

    // No parser accepts the root's name: nothing is read.
    project.xmlSerialize(false, folder.path("plan.xml"), false);
    project.xmlSerialize(false, folder.path("missing.xml"), false);
    project.xmlSerialize(true, folder.path("again.xml"), false);
    EXPECT_EQ(folder.read("again.xml"), folder.read("plan.xml"));
    project.xmlSerialize(true, folder.path("packed"), true);
    EXPECT_EQ(folder.read("packed").substr(0, 2), "\x1F\x8B");
    EXPECT_TRUE(host.boxes.empty());
    project.xmlSerialize(true, folder.path("no/such"), false);
    ASSERT_EQ(host.boxes.size(), 1U);
    EXPECT_EQ(host.boxes[0].text, "I/O error " + folder.path("no/such") + " : Bad path");
}

// The object as the document, which is well-formed, leaves it.
template <class Object>
Object readInto(Object object, string const & document)
{
    EXPECT_EQ(parse(document, object), 1) << document;
    return object;
}

TEST(ModelDocumentTest, ReadsBackWhatItWrites)
{
    auto const expectRoundTrip = [](auto array)
    { EXPECT_EQ(readInto(decltype(array)(), written(array)), array) << written(array); };
    expectRoundTrip(arrayOf<CLinkArray>(CLink(CTaskID(), CLinkType::FinishToFinish)));
    expectRoundTrip(arrayOf<CCostArray>(aCost(-1.5), CCost()));
    expectRoundTrip(arrayOf<CLocationArray>(CLocation()));
    expectRoundTrip(arrayOf<CAssignedRiskArray>(CAssignedRisk(CRiskID(), CRiskValueMode::Fixed)));
    expectRoundTrip(arrayOf<CRiskArray>(CRisk(), CRisk()));
    CUserJobFunction functions(1, 0, 1, 0, 1, 0, 1, 0, 1);
    EXPECT_TRUE(written(functions).ends_with("      isManager = \"true\"\n    />\n"));
    EXPECT_EQ(readInto(CUserJobFunction(), written(functions)), functions);

    // No array comes to be for what a new resource holds none of, so that the sub-resource reads over the resource.
    CCompany company = aCompany();
    CCompany const back = readInto(CCompany(), written(company));
    EXPECT_TRUE(back.getID() == company.getID() && back.getAddress() == "Lane 1\r\nTown");
    ASSERT_EQ(back.getTotalNumberOfResources(), 3);
    CEquipmentResource const & crane = back.getEquipmentResources().GetAt(0);
    EXPECT_FALSE(crane.getCosts() || crane.getSubResources() || crane.getNumberOfSupplierReferences());
    EXPECT_EQ(crane.getName(), "New Equipment Resource");
}

TEST(ModelDocumentTest, ReadsArraysInTheirOwnWays)
{
    auto const sizes = [](auto const & array, std::vector<std::pair<string, int>> const & cases)
    {
        for (auto const & [document, size] : cases) EXPECT_EQ(readInto(array, document).GetSize(), size) << document;
    };
    sizes(arrayOf<CLinkArray>(CLink()), {{"<LINKS><link/><x><Link/></x><Cost/></LINKS>", 2}, {"<r><Link/></r>", 2}});
    sizes(arrayOf<CTaskCategoryArray>(CTaskCategory("a")), {{"<TaskCategories><TaskCategory/></TaskCategories>", 2},
                                                            {"<TaskCategorys><TaskCategory/></TaskCategorys>", 1}});
    sizes(arrayOf<CTaskReportArray>(CTaskReport()),
          {{"<TaskReport/>", 1}, {"<TaskReports><TaskReport/></TaskReports>", 0}});
    CTaskArray tasks;
    tasks.addTask(aTask("a").make());
    sizes(tasks,
          {{"<Task name='b'/>", 1}, {"<Tasks><Task><Links><Link/></Links><Tasks><Task/></Tasks></Task></Tasks>", 0}});

    auto const assigned = readInto(arrayOf<CAssignedResourceArray>(CAssignedResource()),
                                   "<AssignedResources><AssignedResource id='1f' assignedAmount='2e+3'><Transform "
                                   "Matrix='2'/></AssignedResource></AssignedResources>");
    ASSERT_EQ(assigned.GetSize(), 2);
    EXPECT_TRUE(assigned.GetAt(0) == assigned.GetAt(1) && assigned.GetAt(0).getTransform().isIdentity());
    EXPECT_EQ(assigned.GetAt(0).getPercentageAssigned(), 2);
    // Without the attribute that announces an array, inner elements go to the outer one.
    auto const nested = [](string const & attribute)
    { return "<Risks><Risk description='a'" + attribute + "><Risks><Risk/></Risks></Risk><Risk/></Risks>"; };
    CRiskArray const risks = readInto(CRiskArray(), nested(" hasSubRisks='true'"));
    ASSERT_TRUE(risks.GetSize() == 2 && risks.GetAt(0).getSubRisks());
    EXPECT_EQ(risks.GetAt(0).getSubRisks()->GetSize(), 1);
    EXPECT_EQ(readInto(CRiskArray(), nested("")).GetAt(0).getDescription(), "");
}

TEST(ModelDocumentTest, OffersElementsToChildren)
{
    CTask task = aTask("dig").with({aTask("x")}).make();
    task.setCosts(arrayOf<CCostArray>(aCost(1), aCost(2)));
    task.setBaseline();
    // A task takes its attributes from every element, and the last one has none. Emptied by their elements, the arrays
    // of costs and subtasks are none.
    CTask const read =
        readInto(task, "<Task ID='01' name='n' duration='9 Days' startTime='Tue, Jan 6 2004'>"
                       "<TaskConstraint type='2'/><Costs><Cost/></Costs><Tasks/><SupplyChain supplierID='1'>"
                       "<CompanyIDs><CompanyID id='5'/></CompanyIDs></SupplyChain><Links/></Task>");
    EXPECT_TRUE(read.getID().isNULL() && read.getName().IsEmpty() && !read.getPlannedStartTime().isValid());
    EXPECT_EQ(read.getPlannedDuration(), task.getPlannedDuration());
    EXPECT_EQ(read.getBaselineStart(), task.getBaselineStart());
    EXPECT_EQ(read.getConstraintType(), CTaskConstraintType::CannotReschedule);
    EXPECT_FALSE(read.isSummaryTask() || read.getCosts() || read.getSupplyChain().getSupplierID().isNULL());
    EXPECT_EQ(read.getSupplyChain().getCustomerID().GetSize(), 1);
    EXPECT_EQ(readInto(task, "<Task startTime='Tue, Jan 6 2004'/>").getPlannedStartTime(), "01-06 00:00"_t);

    auto const crane =
        readInto(aCompany().getEquipmentResources().GetAt(0),
                 "<r><EquipmentResources><EquipmentResource/></EquipmentResources><HumanResources/></r>");
    EXPECT_TRUE(crane.getName() == "Crane" && crane.getSubResources()->GetAt(0).getName().IsEmpty());
}

TEST(ModelDocumentTest, ReadsSomePartsOfTheContent)
{
    std::unique_ptr<CProjectData> const fresh(CProject(nullptr, false).getCopyOfProjectData());
    fresh->setTasks(someContent().getTasks());
    EXPECT_EQ(readInto(*fresh, "<r><Roles><Role/></Roles><TaskCategorys/><Task/><Company/></r>"), *fresh);
    CProjectData const read = readInto(
        *fresh,
        "<ProjectData adminUserID='02'><ProjectStateIndex index='7'/><Companies><Company name='c'><Calendar ID='3'/>"
        "</Company></Companies><Tasks><Task/></Tasks><Users/></ProjectData>");
    CProject const project(read);
    EXPECT_TRUE(read.getTasks().IsEmpty() && read.getCompanies().GetAt(0).getName() == "c");
    EXPECT_EQ(project.getCurrentStateIndex().getValue(), 7);
    EXPECT_TRUE(project.getNumberOfRoles() == 3 && project.getNumberOfUsers() == 0 && project.getProjectID().isNULL());
}

TEST(ModelDocumentTest, OutlivesHostileNesting)
{
    std::pair<string, string> const elements[] = {
        {"<Risks><Risk hasSubRisks='1'>", "</Risk></Risks>"},
        {"<Companies><Company><EquipmentResources><EquipmentResource>",
         "</EquipmentResource></EquipmentResources></Company></Companies>"},
        {"<Tasks><Task><SupplyChain><CompanyIDs>", "</CompanyIDs></SupplyChain></Task></Tasks>"},
    };
    for (auto const & [open, close] : elements)
        for (int const depth : {240, 2000})
        {
            string document;
            for (int each = 0; each < depth; ++each) document = open + document + close;
            CProjectData data;
            EXPECT_EQ(parse(document, data), depth == 240) << open;
        }
}

}  // namespace
