#include "platform/settings_store.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/scratch_folder.h"

namespace
{

using orvane::makeSettingsFile;
using orvane::StoredValue;

class SettingsStoreTest : public testing::Test
{
protected:
    std::string bytes() const { return scratch.read("made/settings.db"); }

    orvane::CScratchFolder const scratch;
    std::filesystem::path const folder = scratch.path("").view(), file = folder / "made" / "settings.db";
};

StoredValue doubleWord(std::uint32_t value)
{
    return value;
}

TEST_F(SettingsStoreTest, KeepsValuesOfEachTypeUnderTheirKeys)
{
    StoredValue const values[] = {doubleWord(0xFFFFFFFF), CString(), CString("\xFF'\\%s\0b", 7), std::vector<std::byte>{},
                                  std::vector(8, std::byte{0xF0})};
    auto const store = makeSettingsFile(file);
    EXPECT_EQ(store->read("Root", "x"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(file.parent_path()));
    for (StoredValue const & value : values)
    {
        EXPECT_TRUE(store->write("Root\\One", "../../x\\y", value));
        EXPECT_EQ(makeSettingsFile(file)->read("\\ROOT\\\\one\\", "../../X\\y"), value);
    }
    EXPECT_EQ(store->read("Root", "../../x\\y"), std::nullopt);
    EXPECT_FALSE(store->write("\\", "x", doubleWord(1)));
}

TEST_F(SettingsStoreTest, RemovesAKeyWithAllBelowAndNothingBeside)
{
    auto const store = makeSettingsFile(file);
    for (char const * key : {"R\\a", "R\\A!\\b", "r\\a\\c\\d", "R\\\xC3\xA4", "R\\a]", "R", "R2\\x"})
        store->write(key, "v", doubleWord(1));
    EXPECT_EQ(store->subkeys("R"), (std::vector<CString>{"a", "A!", "a]", "\xC3\xA4"}));
    EXPECT_TRUE(store->removeKey("R\\A"));
    EXPECT_EQ(store->subkeys("R"), (std::vector<CString>{"A!", "a]", "\xC3\xA4"}));
    EXPECT_FALSE(store->removeKey("\\"));
    EXPECT_TRUE(store->removeKey("R"));
    EXPECT_EQ(store->subkeys("R"), std::vector<CString>{});
    EXPECT_EQ(store->read("R", "v"), std::nullopt);
    EXPECT_EQ(store->read("R2\\x", "v"), doubleWord(1));
}

TEST_F(SettingsStoreTest, LosesNothingWhenProcessesWriteAtOnce)
{
    constexpr std::uint32_t processes = 4, values = 25;
    for (std::uint32_t process = 0; process < processes; ++process)
    {
        if (::fork() != 0) continue;
        bool good = true;
        auto const store = makeSettingsFile(file);
        for (std::uint32_t i = 0; i < values; ++i)
            good &= store->write("R", std::to_string(process * values + i).c_str(), doubleWord(i));
        ::_exit(!good);
    }
    for (int status; ::wait(&status) > 0;) EXPECT_EQ(status, 0);
    auto const store = makeSettingsFile(file);
    for (std::uint32_t i = 0; i < processes * values; ++i)
        EXPECT_EQ(store->read("R", std::to_string(i).c_str()), doubleWord(i % values));
}

TEST_F(SettingsStoreTest, LeavesAFileThatIsNotItsOwnOrDamaged)
{
    makeSettingsFile(file)->write("R", "v", doubleWord(7));
    std::string const whole = bytes();
    // The application that a database says it belongs to: another, and none.
    std::string foreign = whole, unnamed = whole;
    foreign.replace(68, 4, "\1\2\3\4");
    unnamed.replace(68, 4, 4, '\0');
    for (std::string const & content :
         {std::string("[settings]\nv=7\n"), std::string(whole.size(), '\0'), foreign, unnamed, whole.substr(0, 1),
          whole.substr(0, 100), whole.substr(0, 600), whole.substr(0, 4096), whole.substr(0, whole.size() - 1)})
    {
        scratch.write("made/settings.db", content);
        auto const store = makeSettingsFile(file);
        EXPECT_EQ(store->read("R", "v"), std::nullopt);
        EXPECT_FALSE(store->write("R", "v", doubleWord(8)));
        EXPECT_FALSE(store->removeKey("R"));
        EXPECT_TRUE(bytes() == content) << content.size() << " bytes changed";
    }
    scratch.write("made/settings.db", "");
    EXPECT_TRUE(makeSettingsFile(file)->write("R", "v", doubleWord(8)));
    EXPECT_EQ(makeSettingsFile(file)->read("R", "v"), doubleWord(8));

    for (auto const & path : {file / "below" / "settings.db", folder, std::filesystem::path()})
        EXPECT_FALSE(makeSettingsFile(path)->write("R", "v", doubleWord(1)));
}

TEST_F(SettingsStoreTest, KeepsTheOldValuesWhenTheDiskIsFull)
{
    makeSettingsFile(file)->write("R", "v", CString('o', 100'000));
    {
        orvane::CFullDisk const disk(bytes().size());
        auto const store = makeSettingsFile(file);
        EXPECT_TRUE(!store->write("R", "v", CString('n', 300'000)) && store->read("R", "v"));
    }
    EXPECT_EQ(makeSettingsFile(file)->read("R", "v"), StoredValue(CString('o', 100'000)));
}

}  // namespace
