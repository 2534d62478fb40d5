#include "persistence/project_file.h"

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/plan_builder.h"
#include "tests/support/random_actions.h"
#include "tests/support/recording_host.h"
#include "tests/support/scratch_folder.h"

// Puts back what a save that broke off leaves behind.
struct orvane::SaveGuard
{
    static void reset() { CProject::saving = false; }
};

using namespace orvane;

namespace
{

// A task below a task, so many levels deep.
Plan nested(int levels)
{
    TaskDraft draft = aTask("deepest");
    for (int each = 0; each < levels; ++each) draft = aTask("level").with({draft});
    return Plan({draft});
}

TEST(ProjectFileTest, RandomProjectsComeBackEqualAndTheSameByteForByte)
{
    CRecordingHost host;
    CScratchFolder const folder;
    for (unsigned seed = 1; seed <= 12; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        CProject project(nullptr, false);
        for (int each = 0; each < 150; ++each) actAtRandom(project, random);
        // Rows of views stand in files in the order of their making; after a load in that of the plan.
        project.postSerialize();
        CProject back(nullptr, false);
        ASSERT_EQ(project.saveToFile(folder.path("plan.prj")), 1);
        ASSERT_EQ(back.readFromFile(folder.path("plan.prj"), true), 1);
        EXPECT_TRUE(back.getAllTasks() == project.getAllTasks());
        EXPECT_EQ(streamOf(back), streamOf(project));
        EXPECT_EQ(back.getProjectEnd(), project.getProjectEnd());
        EXPECT_EQ(back.getScene().isEmpty(), project.getScene().isEmpty());
    }
}

TEST(ProjectFileTest, DamagedBytesAreRefusedOrReadAndNeverMore)
{
    CRecordingHost host;
    std::mt19937 random(7);
    CProject project(nullptr, false);
    for (int each = 0; each < 60; ++each) actAtRandom(project, random);
    std::string const stream = streamOf(project);
    for (std::size_t cut = 0; cut < stream.size(); cut += 1 + cut / 64)
    {
        CProject target(nullptr, false);
        ASSERT_FALSE(loadStream(target, stream.substr(0, cut))) << cut;
    }
    for (std::size_t place = 0; place < stream.size(); place += 1 + place / 512)
        for (char const change : {'\x01', '\x80', '\xFF'})
        {
            std::string damaged = stream;
            damaged[place] ^= change;
            CProject target(nullptr, false);
            if (!loadStream(target, damaged)) continue;
            // What was read is a project: it works, and is stored as it was read.
            actAtRandom(target, random);
            CProject again(nullptr, false);
            ASSERT_TRUE(loadStream(again, streamOf(target))) << place;
        }
}

TEST(ProjectFileTest, SaysWhatItCannotOpenAndRefusesWhatItIsNot)
{
    CRecordingHost host;
    CScratchFolder const folder;
    Plan plan({aTask("dig")});
    EXPECT_EQ(plan.project.readFromFile(folder.path("none.prj"), false), 0);
    EXPECT_THROW(plan.project.readFromFile(folder.path("none.prj"), true), int);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(plan.project.saveToFile(folder.path("none/plan.prj")), 0);
    EXPECT_EQ(host.boxes.size(), 1u);

    // A header that reads otherwise leaves all as it was.
    std::string stream = streamOf(plan.project);
    stream[stream.find("Project Data")] ^= 1;
    EXPECT_EQ(plan.project.readFromFile(folder.write("second.prj", stream), false), 0);
    EXPECT_EQ(host.boxes.back().text, "Incompatible project data file");
    EXPECT_EQ(plan["dig"].getName(), "dig");

    // Versions beyond the known ones are read as the nearest; a calendar, a picture or nothing are none.
    for (std::string const & bytes :
         {std::string(), std::string(300, '\0'), std::string(300, '\xFF'), std::string("\x2A\0\0\0", 4)})
        EXPECT_EQ(plan.project.readFromFile(folder.write("odd.prj", bytes), false), 0);
}

TEST(ProjectFileTest, AFullDiskOrTooDeepATreeKeepsTheOldFileAndStopsFurtherSaves)
{
    CRecordingHost host;
    CScratchFolder const folder;
    CString const path = folder.path("plan.prj");
    Plan small({aTask("dig")});
    ASSERT_EQ(small.project.saveToFile(path), 1);
    std::string const old = folder.read("plan.prj");
    {
        CFullDisk const full(100);
        EXPECT_EQ(causeOf([&] { small.project.saveToFile(path); }), CFileException::diskFull);
    }
    EXPECT_EQ(small.project.saveToFile(path), 0);
    SaveGuard::reset();
    Plan deepest = nested(nestingLimit);
    EXPECT_EQ(deepest.project.saveToFile(folder.path("deep.prj")), 1);
    EXPECT_EQ(small.project.readFromFile(folder.path("deep.prj"), false), 1);
    Plan tooDeep = nested(nestingLimit + 1);
    EXPECT_THROW(tooDeep.project.saveToFile(path), CArchiveException);
    SaveGuard::reset();
    EXPECT_EQ(folder.read("plan.prj"), old);
    EXPECT_EQ(folder.entryCount(), 2);
}

// Whenever the process that saves dies, one of its two plans stands in the file, whole.
TEST(ProjectFileTest, SurvivesTheDeathOfTheSavingProcess)
{
    CScratchFolder const folder;
    CString const path = folder.path("plan.prj");
    Plan first({aTask("first")});
    Plan second({aTask("second"), aTask("more")});
    ASSERT_EQ(first.project.saveToFile(path), 1);
    std::mt19937 random(1);
    for (int round = 0; round < 25; ++round)
    {
        pid_t const child = fork();
        if (child == 0)
            for (;;)
            {
                second.project.saveToFile(path);
                first.project.saveToFile(path);
            }
        usleep(std::uniform_int_distribution<useconds_t>(0, 20'000)(random));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        CProject back(nullptr, false);
        ASSERT_EQ(back.readFromFile(path, false), 1);
        CString const name = back.getTask(0)->getName();
        EXPECT_TRUE(name == (back.getNumberOfTasks() == 1 ? "first" : "second"));
    }
}

}  // namespace
