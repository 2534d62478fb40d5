#include "config/project_directories.h"

#include <gtest/gtest.h>

#include "config/project_config.h"
#include "tests/support/scratch_folder.h"

TEST(ProjectDirectoriesTest, AreMadeBelowTheSystemDirectory)
{
    orvane::CScratchFolder const folder;
    CString const former = CProjectConfig::getSystemDirectory(), root = folder.path("site");
    for (char const * end : {"", "\\"})
    {
        CProjectConfig::setSystemDirectory(root + end);
        EXPECT_EQ(getClientDirectory(), root + "\\System\\Client\\");
        EXPECT_EQ(getServerDirectory(), root + "\\System\\Server\\");
    }
    CProjectConfig::setSystemDirectory(former);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("site/System/Server").view()));
}
