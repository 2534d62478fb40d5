#include <gtest/gtest.h>

#include <sstream>

#include "model/project.h"
#include "persistence/compressed_file.h"
#include "tests/support/file_layout.h"
#include "tests/support/random_actions.h"
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

// One object out of a stream of the present version. Fields of one class that were exchanged for each other would be
// stored as they were read; only their accessors tell.
template <class Object>
class Loaded
{
public:
    Loaded(char const * className, std::string const & root) : path(root), laid(layOut(className, 42, root))
    {
        EXPECT_TRUE(loadStream(object, laid.stream));
    }

    // The values of the items with these names.
    template <class... Values>
    void expect(char const * names, Values const &... values) const
    {
        std::istringstream each(names);
        std::string name;
        auto const expectOne = [&](auto const & value)
        {
            each >> name;
            EXPECT_EQ(shown(value), laid.expected.at(path + "." + name)) << path << "." << name;
        };
        (expectOne(values), ...);
    }

    Object object;

private:
    std::string path;
    LaidOut laid;
};

// Loads a plain file of that version, stores it, and compares what then stands in the present layout.
template <class Part>
void expectReads(std::string const & className, int version)
{
    CScratchFolder const folder;
    LaidOut const old = layOut(className, version, className);
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
    // Maps are stored in an order of their own.
    if (version == 42 && className == "ProjectData")
    {
        EXPECT_EQ(stored, old.stream);
    }
}

TEST(FileFieldsTest, TheLengthOfATextTakesOneThreeOrSevenBytes)
{
    std::pair<std::size_t, std::string> const cases[] = {{0, std::string(1, '\0')},
                                                         {254, "\xFE"},
                                                         {255, std::string("\xFF\xFF\0", 3)},
                                                         {65533, "\xFF\xFD\xFF"},
                                                         {65534, std::string("\xFF\xFF\xFF\xFE\xFF\0\0", 7)}};
    for (auto const & [length, head] : cases)
    {
        std::string const stream = std::string("\x2A\0\0\0\1", 5) + head + std::string(length, 'x');
        CProjectString text;
        EXPECT_TRUE(loadStream(text, stream) && text.view() == std::string(length, 'x'));
        EXPECT_TRUE(streamOf(text) == stream) << length;
    }
}

TEST(FileFieldsTest, FieldsOfOneClassStandEachBehindItsAccessor)
{
    // Often enough that no two fields always have the same value.
    for (std::string const root : {"a", "b", "c", "d", "e", "f", "g", "h"})
    {
        Loaded<CPermissions> const permissions("Permissions", root);
        CPermissions const & may = permissions.object;
        permissions.expect(
            "writeTasks readTasks writeTaskCosts readTaskCosts writeTaskResources readTaskResources writeTaskRisks "
            "readTaskRisks writeTaskRiskCosts readTaskRiskCosts writeTaskReports readTaskReports "
            "writeTaskReportCosts readTaskReportCosts writeResources readResources writeResourceCosts "
            "readResourceCosts writeUsers writeRoles",
            may.getWriteTasks(), may.getReadTasks(), may.getWriteTaskCosts(), may.getReadTaskCosts(),
            may.getWriteTaskResources(), may.getReadTaskResources(), may.getWriteTaskRisks(), may.getReadTaskRisks(),
            may.getWriteTaskRiskCosts(), may.getReadTaskRiskCosts(), may.getWriteTaskReports(),
            may.getReadTaskReports(), may.getWriteTaskReportCosts(), may.getReadTaskReportCosts(),
            may.getWriteResource(), may.getReadResource(), may.getWriteResourceCost(), may.getReadResourceCost(),
            may.getWriteUsers(), may.getWriteRoles());

        Loaded<CTask> const task("Task", root);
        CTask const & work = task.object;
        task.expect("name comments start actualStart predicted actualFinish buffer template", work.getName(),
                    work.getComments(), work.getPlannedStartTime(), work.getActualStartTime(),
                    work.getPredictedFinishTime(), work.getActualFinishTime(), work.getRiskBuffer(), work.isTemplate());
        Loaded<CTaskBaselineData> const baseline("Baseline", root);
        CTaskBaselineData const & plan = baseline.object;
        baseline.expect("start finish equipment human location material mitigated unmitigated task",
                        plan.getStartTime(), plan.getFinishTime(), plan.getEquipmentCost(), plan.getHumanCost(),
                        plan.getLocationCost(), plan.getMaterialCost(), plan.getMitigatedRiskCost(),
                        plan.getUnmitigatedRiskCost(), plan.getTaskCost());

        Loaded<CFilter> const filter("Filter", root);
        CNameFilter const & names = filter.object.getNameFilter();
        CDateRangeFilter const & dates = filter.object.getDateRangeFilter();
        filter.expect("nameUsed matches case wholeWord datesUsed start end overlaps", names.getInUse(),
                      names.getIncludeMatches(), names.getMatchCase(), names.getMatchWholeWordOnly(), dates.getInUse(),
                      dates.getStart(), dates.getEnd(), dates.getIncludeOverlaps());
        CStatusFilter const & status = filter.object.getStatusFilter();
        filter.expect("statusUsed hold approved ready go tba started finished", status.getInUse(),
                      status.getHoldIncluded(), status.getApprovedIncluded(), status.getReadyIncluded(),
                      status.getGoIncluded(), status.getTbaIncluded(), status.getStartedIncluded(),
                      status.getFinishedIncluded());
    }
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
    std::string stream = layOut("ProjectData", version, "ProjectData").stream;
    std::string const header = "Orvane Schedule Project";
    std::string const user = version < 38 ? std::string(16, '\7') : "";
    stream.insert(4, static_cast<char>(header.size()) + header + user);
    if (version >= 39) stream += layOut("PresentationData", version, "PresentationData").stream.substr(4);
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
