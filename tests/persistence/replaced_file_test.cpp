#include "persistence/replaced_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/scratch_folder.h"

namespace
{

using orvane::CReplacedFile;

// Saves bytes as a project is saved; answers the cause of the failure.
int save(CString const & path, std::string const & bytes)
{
    CReplacedFile target(path);
    CFile file;
    CFileException exception;
    return orvane::causeOf([&] {
        if (!target.open(file, &exception)) throw exception;
        EXPECT_EQ(file.GetFilePath(), path);
        file.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
        file.Close();
        target.commit();
    });
}

int mode(CString const & path)
{
    return static_cast<int>(std::filesystem::status(path.view()).permissions());
}

TEST(ReplacedFileTest, TheOldFileStaysUntilTheNewOneIsWhole)
{
    orvane::CScratchFolder const folder;
    CString const path = folder.path("a.prj");
    EXPECT_EQ(save(path, "first"), 0);
    EXPECT_EQ(mode(path), 0600);
    chmod(path, 0664);
    CFile before(path, CFile::modeRead);
    EXPECT_EQ(save(path, "second"), 0);
    EXPECT_EQ(mode(path), 0664);
    mode_t const umaskBefore = umask(027);
    {
        CReplacedFile target(folder.path("shared"), CReplacedFile::NewFile::byUmask);
        CFile file;
        ASSERT_TRUE(target.open(file));
        file.Close();
        target.commit();
    }
    umask(umaskBefore);
    EXPECT_EQ(mode(folder.path("shared")), 0640);
    EXPECT_EQ(before.GetLength(), 5);
    {
        CReplacedFile target(path);
        CFile file;
        ASSERT_TRUE(target.open(file));
        file.Write("third", 5);
    }
    {
        orvane::CFullDisk const disk(1000);
        EXPECT_EQ(save(path, std::string(2000, 'x')), CFileException::diskFull);
    }
    EXPECT_EQ(folder.read("a.prj"), "second");
    EXPECT_EQ(folder.entryCount(), 2);
}

TEST(ReplacedFileTest, LinksAndDevicesAreWrittenInPlace)
{
    orvane::CScratchFolder const folder;
    CString const path = folder.write("a.prj", "old"), link = folder.path("link");
    ASSERT_EQ(symlink(path, link), 0);
    EXPECT_EQ(save(link, "new"), 0);
    EXPECT_EQ(folder.read("a.prj"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(link.view()));
    EXPECT_EQ(save("/dev/null", "new"), 0);
    EXPECT_FALSE(std::filesystem::is_regular_file("/dev/null"));
    EXPECT_EQ(save("/dev/full", "new"), CFileException::diskFull);
}

TEST(ReplacedFileTest, TellsWhyItDoesNotOpen)
{
    orvane::CScratchFolder const folder;
    EXPECT_EQ(save("", "new"), CFileException::fileNotFound);
    EXPECT_EQ(save(folder.path("no/where"), "new"), CFileException::badPath);
    EXPECT_EQ(save(folder.path("."), "new"), CFileException::accessDenied);
}

}  // namespace
