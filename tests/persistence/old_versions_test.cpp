#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "model/project.h"
#include "persistence/compressed_file.h"
#include "tests/support/file_layout.h"
#include "tests/support/recording_host.h"
#include "tests/support/scratch_folder.h"

using namespace orvane;

namespace
{

std::string inflated(CString const & path)
{
    SECCompressFile file;
    EXPECT_TRUE(file.Open(path, CFile::modeRead));
    std::string stream;
    char piece[4096];
    while (unsigned int const got = file.Read(piece, sizeof piece)) stream.append(piece, got);
    return stream;
}

// As the table has it in its texts.
template <class Value>
std::string shown(Value const & value)
{
    if constexpr (requires { value.getEquivalentValue(); }) return std::to_string(value.getEquivalentValue());
    else if constexpr (requires { value.getGUID(); })
    {
        std::string bytes;
        for (unsigned char const byte : value.getGUID().bytes()) bytes += std::to_string(byte) + ".";
        return bytes;
    }
    else
    {
        std::string const valid = value.isValid() ? "+" : "-";
        if constexpr (requires { value.view(); }) return "'" + std::string(value.view()) + "'" + valid;
        else if constexpr (requires { value.getCTime(); }) return std::to_string(value.getCTime().GetTime()) + valid;
        else return std::to_string(value.getValue()) + valid;
    }
}

template <class Object>
void load(Object & object, std::string stream)
{
    CMemFile file;
    file.Attach(reinterpret_cast<unsigned char *>(stream.data()), stream.size());
    CProjectArchive archive(&file, CArchive::load, true);
    object.Serialize(archive);
}

// One object out of a stream of the present version. Fields of one class that were exchanged for each other would be
// stored as they were read; only their accessors tell.
template <class Object>
class Loaded
{
public:
    explicit Loaded(char const * className) : path(className), laid(layOut(className, 42))
    {
        load(object, laid.stream);
    }

    // The values of the items with these names, which a path within the object may precede.
    template <class... Values>
    void expect(std::string const & below, char const * names, Values const &... values) const
    {
        std::istringstream each(names);
        std::string name;
        auto const expectOne = [&](auto const & value)
        {
            each >> name;
            EXPECT_EQ(shown(value), laid.expected.at(path + below + "." + name)) << path << below << "." << name;
        };
        (expectOne(values), ...);
    }

    Object object;

private:
    std::string path;
    LaidOut laid;
};

// A class that is flags alone: each of them is set once, by itself.
template <class Object>
void expectFlags(std::vector<CProjectBool const & (Object::*)() const> const & flags)
{
    for (std::size_t set = 0; set < flags.size(); ++set)
    {
        std::string stream("\x2A\0\0\0", 4);
        for (std::size_t each = 0; each < flags.size(); ++each) stream += {static_cast<char>(each == set), char{1}};
        Object object;
        load(object, stream);
        for (std::size_t each = 0; each < flags.size(); ++each)
            EXPECT_EQ((object.*flags[each])().getValue(), each == set) << set << ' ' << each;
    }
}

template <class Owner>
void expectPermissions(char const * className, std::string const & below, auto permissionsOf)
{
    Loaded<Owner> const loaded(className);
    CPermissions const & rights = permissionsOf(loaded.object);
    loaded.expect(
        below,
        "writeTasks readTasks writeTaskCosts readTaskCosts writeTaskResources readTaskResources writeTaskRisks "
        "readTaskRisks writeTaskRiskCosts readTaskRiskCosts writeTaskReports readTaskReports writeTaskReportCosts "
        "readTaskReportCosts writeResources readResources writeResourceCosts readResourceCosts writeUsers writeRoles",
        rights.getWriteTasks(), rights.getReadTasks(), rights.getWriteTaskCosts(), rights.getReadTaskCosts(),
        rights.getWriteTaskResources(), rights.getReadTaskResources(), rights.getWriteTaskRisks(),
        rights.getReadTaskRisks(), rights.getWriteTaskRiskCosts(), rights.getReadTaskRiskCosts(),
        rights.getWriteTaskReports(), rights.getReadTaskReports(), rights.getWriteTaskReportCosts(),
        rights.getReadTaskReportCosts(), rights.getWriteResource(), rights.getReadResource(),
        rights.getWriteResourceCost(), rights.getReadResourceCost(), rights.getWriteUsers(), rights.getWriteRoles());
}

template <class Resource>
void expectResource(char const * className)
{
    Loaded<Resource> const loaded(className);
    Resource const * resource = &loaded.object;
    std::string below;
    // What is asked of a resource with others below is asked of those.
    for (;; resource = &resource->getSubResources()->GetAt(1), below += ".below[1]")
    {
        loaded.expect(below, "name description autoAccept orderRequired", resource->getName(),
                      resource->getDescription(), resource->getAutoAccept(), resource->getOrderRequired());
        if (!resource->hasSubResource()) break;
    }
    loaded.expect(below, "used from to", resource->getPercentageUsed(), resource->getAvailableFrom(),
                  resource->getAvailableTo());
}

// Loads a plain file of that version, stores it, and compares what then stands in the present layout.
template <class Part>
void expectReads(std::string const & className, int version)
{
    CScratchFolder const folder;
    LaidOut const old = layOut(className, version);
    Part part;
    ASSERT_EQ(part.readFromFile(folder.write("old", old.stream)), 1);
    ASSERT_EQ(part.saveToFile(folder.path("new")), 1);
    std::string const stored = inflated(folder.path("new"));
    LayoutValues const found = readLayout(className, stored);
    for (auto const & [path, value] : old.expected)
    {
        auto const at = found.find(path);
        ASSERT_TRUE(at != found.end()) << path;
        if (value != "?")
        {
            EXPECT_EQ(at->second, value) << path;
        }
    }
    // Nothing stands there that nobody expects, but the default roles.
    for (auto const & [path, value] : found)
        if (!old.expected.contains(path) && (version >= 15 || !path.starts_with("ProjectData.roles[")))
            ADD_FAILURE() << path << " is " << value;
    if (version < 15)
    {
        EXPECT_EQ(found.at("ProjectData.roles[0].name"), "'Administrator'+");
    }
    // Maps are stored in an order of their own.
    if (version == 42 && className == "ProjectData")
    {
        EXPECT_EQ(stored, old.stream);
    }
}

TEST(FileFieldsTest, TheLengthOfATextTakesOneThreeOrSevenBytes)
{
    struct Case
    {
        std::size_t length;
        std::string head;
    };
    Case const cases[] = {{0, std::string(1, '\0')},
                          {254, "\xFE"},
                          {255, std::string("\xFF\xFF\0", 3)},
                          {65533, "\xFF\xFD\xFF"},
                          {65534, std::string("\xFF\xFF\xFF\xFE\xFF\0\0", 7)}};
    for (auto const & [length, head] : cases)
    {
        std::string const stream = std::string("\x2A\0\0\0\1", 5) + head + std::string(length, 'x');
        CProjectString text;
        load(text, stream);
        EXPECT_EQ(text.view(), std::string(length, 'x'));
        CMemFile file;
        {
            CProjectArchive archive(&file, CArchive::store, true);
            text.Serialize(archive);
        }
        std::string stored(static_cast<std::size_t>(file.GetLength()), '\0');
        file.Seek(0, CFile::begin);
        file.Read(stored.data(), static_cast<unsigned int>(stored.size()));
        EXPECT_TRUE(stored == stream) << length;
    }
}

TEST(FileFieldsTest, FieldsOfOneClassStandEachBehindItsAccessor)
{
    expectPermissions<CPermissions>("Permissions", "", std::identity());
    expectPermissions<CRole>("Role", ".permissions", std::mem_fn(&CRole::getPermissions));
    expectPermissions<CUser>("User", ".permissions", std::mem_fn(&CUser::getPermissions));
    expectResource<CEquipmentResource>("Equipment");
    expectResource<CHumanResource>("Human");
    expectResource<CLocationResource>("Place");

    Loaded<CUser> const user("User");
    CUser const & someone = user.object;
    user.expect("", "name login password email telephone mobile", someone.getName(), someone.getLogin(),
                someone.getPassword(), someone.getEmail(), someone.getTelephoneNumber(),
                someone.getMobileTelephoneNumber());
    Loaded<CCompany> const company("Company");
    CCompany const & firm = company.object;
    company.expect("", "name address telephone fax email", firm.getName(), firm.getAddress(), firm.getTelephoneNumber(),
                   firm.getFaxNumber(), firm.getEmailAddress());
    Loaded<CCalendarWeek> const week("Week");
    CCalendarWeek const & days = week.object;
    week.expect("", "1 2 3 4 5 6 7", days.getDay(1), days.getDay(2), days.getDay(3), days.getDay(4), days.getDay(5),
                days.getDay(6), days.getDay(7));
    Loaded<CProjectTimeOfDaySpan> const span("Span");
    span.expect("", "start end", span.object.getStart(), span.object.getEnd());

    Loaded<CTask> const task("Task");
    CTask const & work = task.object;
    task.expect("", "name comments start actualStart predicted actualFinish buffer template", work.getName(),
                work.getComments(), work.getPlannedStartTime(), work.getActualStartTime(),
                work.getPredictedFinishTime(), work.getActualFinishTime(), work.getRiskBuffer(), work.isTemplate());
    Loaded<CTaskBaselineData> const baseline("Baseline");
    CTaskBaselineData const & plan = baseline.object;
    baseline.expect("", "start finish equipment human location material mitigated unmitigated task",
                    plan.getStartTime(), plan.getFinishTime(), plan.getEquipmentCost(), plan.getHumanCost(),
                    plan.getLocationCost(), plan.getMaterialCost(), plan.getMitigatedRiskCost(),
                    plan.getUnmitigatedRiskCost(), plan.getTaskCost());

    Loaded<CFilter> const filter("Filter");
    CNameFilter const & names = filter.object.getNameFilter();
    CDateRangeFilter const & dates = filter.object.getDateRangeFilter();
    filter.expect("", "nameUsed matches case wholeWord datesUsed start end overlaps", names.getInUse(),
                  names.getIncludeMatches(), names.getMatchCase(), names.getMatchWholeWordOnly(), dates.getInUse(),
                  dates.getStart(), dates.getEnd(), dates.getIncludeOverlaps());
    expectFlags<CStatusFilter>({&CStatusFilter::getInUse, &CStatusFilter::getHoldIncluded,
                                &CStatusFilter::getApprovedIncluded, &CStatusFilter::getReadyIncluded,
                                &CStatusFilter::getGoIncluded, &CStatusFilter::getTbaIncluded,
                                &CStatusFilter::getStartedIncluded, &CStatusFilter::getFinishedIncluded});
    expectFlags<CEVAGraphPresentation>({&CEVAGraphPresentation::getDisplayBCWS, &CEVAGraphPresentation::getDisplayBCWP,
                                        &CEVAGraphPresentation::getDisplayACWP});
    Loaded<CNavigatorPresentation> const navigator("Navigator");
    CNavigatorPresentation const & tree = navigator.object;
    navigator.expect("", "companyUsed equipment people places materials", tree.getCompanyFilterInUse(),
                     tree.getEquipmentResourcesExpanded(), tree.getHumanResourcesExpanded(),
                     tree.getLocationResourcesExpanded(), tree.getMaterialResourcesExpanded());
    Loaded<CPresentationData> const presentation("PresentationData");
    CPresentationData const & views = presentation.object;
    presentation.expect(
        "", "primaryTask reportCost riskCost taskCost resourceCost entity gantt.focussed gantt.viewStart",
        views.getPrimarySelectedTaskID(), views.getSelectedTaskReportCostID(), views.getSelectedAssignedRiskCostID(),
        views.getSelectedTaskCostID(), views.getSelectedResourceCostID(), views.getPrimarySelectedSceneEntityID(),
        views.getGanttPresentation().getFocussedTime(), views.getGanttPresentation().getViewStartTime());
}

class OldVersionsTest : public testing::TestWithParam<int>
{
};

TEST_P(OldVersionsTest, EveryItemComesBackOrTakesItsDefault)
{
    expectReads<CProjectData>("ProjectData", GetParam());
    if (GetParam() >= 28) expectReads<CPresentationData>("PresentationData", GetParam());
}

// A whole project: its header, until version 38 a user, the content, and since 39 the views.
TEST_P(OldVersionsTest, AProjectIsReadWholeOrRefused)
{
    CRecordingHost host;
    CScratchFolder const folder;
    int const version = GetParam();
    std::string stream = layOut("ProjectData", version).stream;
    std::string const header = "Orvane Schedule Project";
    std::string const user = version < 38 ? std::string(16, '\7') : "";
    stream.insert(4, static_cast<char>(header.size()) + header + user);
    if (version >= 39) stream += layOut("PresentationData", version).stream.substr(4);
    CProject project(nullptr, false);
    ASSERT_EQ(project.readFromFile(folder.write("whole", stream), false), 1);
    EXPECT_EQ(project.getNumberOfTasks(), 2);
    EXPECT_EQ(project.getPrimarySelectedTaskID().isNULL(), version < 39);
    EXPECT_EQ(project.getPresentationData().getTaskPresentations().GetCount(), 14);
    EXPECT_TRUE(project.getAdminUser());
    // No prefix is taken for a whole.
    for (std::size_t cut = 0; cut < stream.size(); cut += cut < 300 ? 1 : 311)
        EXPECT_EQ(project.readFromFile(folder.write("cut", stream.substr(0, cut)), false), 0) << cut;
}

INSTANTIATE_TEST_SUITE_P(Versions, OldVersionsTest, testing::Range(1, 43));

}  // namespace
