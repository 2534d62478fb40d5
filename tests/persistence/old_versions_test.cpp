#include <gtest/gtest.h>

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
    // Nothing stands there that nobody expects, but below what was drawn anew.
    for (auto const & [path, value] : found)
        if (!old.expected.contains(path) && version >= 15) ADD_FAILURE() << path << " is " << value;
    // Maps are stored in an order of their own.
    if (version == 42 && className == "ProjectData")
    {
        EXPECT_EQ(stored, old.stream);
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
    for (std::size_t cut = 0; cut < stream.size(); cut += 1 + stream.size() / 150)
        EXPECT_EQ(project.readFromFile(folder.write("cut", stream.substr(0, cut)), false), 0) << cut;
}

INSTANTIATE_TEST_SUITE_P(Versions, OldVersionsTest, testing::Range(1, 43));

}  // namespace
