#include "persistence/undo_redo_list.h"

#include <map>

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/plan_builder.h"
#include "tests/support/random_actions.h"
#include "tests/support/recording_host.h"
#include "tests/support/scratch_folder.h"

using namespace orvane;

namespace
{

// A project with a history of its own.
struct Kept : Plan
{
    explicit Kept(std::vector<TaskDraft> const & tasks = {}) : Plan(tasks)
    {
        project.setProjectNameDirectoryAndHistoryDirectory("plan", folder.path(""), folder.path(""));
        project.setFullHistory(true);
        at(1);
    }
    ~Kept() { CProjectConfig::setMaximumNumberUndoRedoStates(20); }

    void at(int index) { project.setCurrentStateIndex(CProjectStateIndex(index)); }
    int index() const { return project.getCurrentStateIndex().getValue(); }
    void step(bool back, int count = 1)
    {
        act([&](auto & rules) { EXPECT_TRUE(back ? rules.undo(count) : rules.redo(count)); });
    }
    static std::string stateName(int index)
    {
        CString name;
        name.Format("%010d.prj", index);
        return std::string(name.view());
    }
    bool has(int index) const { return access(folder.path(stateName(index)), F_OK) == 0; }

    CScratchFolder folder;
};

TEST(UndoRedoListTest, ARandomHistoryGoesBackAndForthThroughExactlyTheStatesPushed)
{
    CRecordingHost host;
    for (unsigned seed = 1; seed <= 4; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Kept kept({aTask("dig"), aTask("pour").after("dig")});
        kept.project.postSerialize();
        std::map<int, std::string> states;
        for (int each = 0; each < 60; ++each)
        {
            int const choice = std::uniform_int_distribution<int>(0, 5)(random);
            int const before = kept.index();
            if (choice > 3)
            {
                kept.project.pushState("action");
                states[before] = streamOf(kept.project);
                actAtRandom(kept.project, random);
                kept.project.postSerialize();
                kept.at(before + 1);
                states.erase(states.upper_bound(before), states.end());
                states[before + 1] = streamOf(kept.project);
                // What was undone is overwritten as new states are pushed; the next one differs already.
                for (int above = before + 1; kept.has(above); ++above)
                    std::filesystem::remove(kept.folder.path(Kept::stateName(above)).view());
                continue;
            }
            int const count = 1 + choice % 2;
            int const target = choice < 2 ? before - count : before + count;
            kept.step(choice < 2, count);
            ASSERT_EQ(kept.index(), states.contains(target) ? target : before);
            EXPECT_TRUE(states.empty() || streamOf(kept.project) == states[kept.index()]);
        }
    }
}

TEST(UndoRedoListTest, IsInertWithoutFullHistoryOrName)
{
    Kept kept;
    kept.project.pushState("one");
    kept.at(2);
    EXPECT_TRUE(kept.project.canUndo() && !kept.project.canRedo());
    kept.project.setFullHistory(false);
    EXPECT_FALSE(kept.project.canUndo());
    kept.project.setFullHistory(true);
    kept.project.setProjectNameDirectoryAndHistoryDirectory("", kept.folder.path(""), kept.folder.path(""));
    EXPECT_FALSE(kept.project.canUndo());
}

TEST(UndoRedoListTest, StopsAtTheFirstStateAndBeyondTheLast)
{
    Kept kept({aTask("dig")});
    kept.at(0);
    kept.project.pushState("begin");
    kept.at(1);
    auto const expectAfter = [&](bool back, int count, int index)
    {
        kept.step(back, count);
        EXPECT_EQ(kept.index(), index) << count;
    };
    for (int const count : {0, -1, 2, 1'000'000'000, INT_MAX}) expectAfter(true, count, 1);
    expectAfter(true, 1, 0);
    // A file for the index below the first is found, and yet there is nothing to undo.
    std::filesystem::copy_file(kept.folder.path(Kept::stateName(0)).view(), kept.folder.path("00000000-1.prj").view());
    EXPECT_TRUE(kept.project.canUndo());
    expectAfter(true, 1, 0);
    // The state that was left was kept on the way.
    expectAfter(false, INT_MAX, 0);
    expectAfter(false, 1, 1);
}

TEST(UndoRedoListTest, DoesNotUndoTheUserWhoIsLoggedIn)
{
    CRecordingHost host;
    Kept kept;
    kept.project.pushState("add a user");
    CUser user("mason", "secret", "Pat", "pat@example.org", "1", "2");
    user.setRoleID(kept.project.getAdminRole()->getID());
    kept.act([&](auto & rules) { EXPECT_TRUE(rules.addUser(user)); });
    kept.at(2);
    ASSERT_TRUE(kept.project.login("mason", "secret"));
    kept.step(true);
    EXPECT_EQ(host.boxes.back().text, "Can't 'Undo' past the creation of the currently logged in User!");
    EXPECT_EQ(kept.index(), 2);
    EXPECT_TRUE(kept.project.getCurrentUser());
}

TEST(UndoRedoListTest, TrimsFarStatesUpToTheFirstHole)
{
    std::tuple<std::vector<int>, std::vector<int>, bool> const cases[] = {{{38, 39, 40, 41}, {40, 41}, false},
                                                                          {{36, 38, 39}, {38, 39}, false},
                                                                          {{59, 60, 61, 62}, {59, 60}, true},
                                                                          {{61, 63}, {61}, true}};
    for (auto const & [before, left, redo] : cases)
    {
        Kept kept;
        CProjectConfig::setMaximumNumberUndoRedoStates(10);
        for (int const index : before) kept.folder.write(Kept::stateName(index), "");
        // Without digits it counts with the number before it.
        kept.folder.write("zero.prj", "");
        kept.at(50);
        if (redo) kept.project.clearRedoStack();
        else kept.project.clearUndoStack();
        for (int const index : before) EXPECT_EQ(kept.has(index), std::ranges::count(left, index) == 1) << index;
    }
}

TEST(UndoRedoListTest, KeepsARecoveryFileOfAPlanWithoutASiteWhileThereIsNoHistory)
{
    Kept kept({aTask("dig")});
    CProject::removeRecoveryFile();
    kept.project.pushState("with history");
    EXPECT_FALSE(CProject::recoveryFileExists());
    kept.project.setFullHistory(false);
    kept.project.pullState(false);
    EXPECT_FALSE(CProject::recoveryFileExists());
    kept.project.pushState("without");
    ASSERT_TRUE(CProject::recoveryFileExists());
    CProject back(nullptr, false);
    EXPECT_EQ(back.readFromFile(CProject::recoveryFileName(), false), 1);
    EXPECT_EQ(back.getTask(0)->getName(), "dig");
    CProject::removeRecoveryFile();
    EXPECT_FALSE(CProject::recoveryFileExists());
}

}  // namespace
