#include "config/project_config.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "platform/settings_store.h"

namespace
{

using orvane::ISettingsStore;

// The user's settings are in a folder of the test's own. What a process remembers ends with it, so each
// step of a test that asks settings is a new process, which starts as this one did.
class ProjectConfigTest : public testing::Test
{
protected:
    ~ProjectConfigTest() override
    {
        ::unsetenv("XDG_CONFIG_HOME");
        ::unsetenv("ORVANE_TEST_STEP");
        std::filesystem::remove_all(folder);
    }

    // Where this process and its steps keep settings. A step finds it in its environment; it ends before
    // the destructor.
    static std::filesystem::path makeFolder()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        if (std::getenv("ORVANE_TEST_STEP")) return std::getenv("XDG_CONFIG_HOME");
        char pattern[] = "/tmp/orvane_config_XXXXXX";
        char const * const made = ::mkdtemp(pattern);
        if (!made) std::abort();
        ::setenv("XDG_CONFIG_HOME", made, 1);
        ::setenv("ORVANE_TEST_STEP", "1", 1);
        return made;
    }

    static void inNewProcess(void (*step)())
    {
        auto const run = [&]
        {
            CProjectConfig::setRegistryKey("Tessel\\%s");
            step();
            std::_Exit(HasFailure());
        };
        // The steps before are skipped in a new process, but what stands between them is not.
        EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
    }

    std::filesystem::path const folder = makeFolder();
    std::unique_ptr<ISettingsStore> store = orvane::makeSettingsFile(orvane::userSettingsFile());
};

// A value that is not the default, and not that of another row.
template <class T>
auto other(T byDefault, int row)
{
    if constexpr (std::is_same_v<T, bool>) return int{!byDefault};
    else if constexpr (std::is_same_v<T, char const *>) return byDefault + CString('x', row);
    else return byDefault - 1000 * row - 7;
}

TEST_F(ProjectConfigTest, KeepsEachSettingForTheNextProcess)
{
    inNewProcess([] {
        int row = 0;
#define STEP(type, name, byDefault, ...) EXPECT_EQ(CProjectConfig::get##name(), byDefault) << #name;
        ORVANE_SETTINGS(STEP)
#undef STEP
#define STEP(type, name, byDefault, ...) CProjectConfig::set##name(other(byDefault, ++row));
        ORVANE_SETTINGS(STEP)
#undef STEP
    });
    inNewProcess([] {
        int row = 0;
#define STEP(type, name, byDefault, ...) EXPECT_EQ(CProjectConfig::get##name(), other(byDefault, ++row)) << #name;
        ORVANE_SETTINGS(STEP)
#undef STEP
    });

    EXPECT_TRUE(store->read("Tessel\\%s\\Config", "DisplayActiveResourceInstallWithOriginalColor"));
    for (char const * name : {"GanntGridLinesColor", "GanttSelectedColor", "3DDisplayMode"})
        EXPECT_TRUE(store->read("Tessel\\%s\\ProjectConfig", name)) << name;
    EXPECT_FALSE(store->read("Tessel\\%s\\Config", "PrintingHasFooter"));
}

TEST_F(ProjectConfigTest, TakesTheDefaultForWhatIsNoValueOfTheSetting)
{
    CString const longest('s', 259);
    CString const section = "Tessel\\%s\\ProjectConfig";
    store->write(section, "ServerUser", longest);
    store->write(section, "ServerName", longest + 's');
    store->write(section, "PrintingHeader", CString("cut\0off", 7));
    store->write(section, "GlobalCurrencyUnit", std::uint32_t{1});
    store->write(section, "ServerPort", CString("80"));
    store->write(section, "ServerConnectionDelay", std::vector<std::byte>(7));
    store->write(section, "GanttLinkStyle", std::uint32_t{0xFFFFFFFE});
    store->write("Tessel\\%s\\Config", "FullHistory", std::vector<std::byte>(4));
    inNewProcess([] {
        EXPECT_EQ(CProjectConfig::getServerUser(), CString('s', 259));
        EXPECT_EQ(CProjectConfig::getServerName(), "localhost");
        EXPECT_EQ(CProjectConfig::getPrintingHeader(), "cut");
        EXPECT_EQ(CProjectConfig::getGlobalCurrencyUnit(), "$");
        EXPECT_EQ(CProjectConfig::getServerPort(), 1200);
        EXPECT_EQ(CProjectConfig::getServerConnectionDelay(), 1.0);
        EXPECT_EQ(CProjectConfig::getGanttLinkStyle(), -2);
        EXPECT_EQ(CProjectConfig::getFullHistory(), 1);
    });
}

}  // namespace
