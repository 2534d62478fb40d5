#include "platform/file_tools.h"

#include <climits>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/path.h"
#include "tests/support/scratch_folder.h"

namespace
{

TEST(FileToolsTest, GiveBackWhatWasWritten)
{
    orvane::CScratchFolder const folder;
    CString const file = folder.path("") + "\\text";
    for (CString const & text : {CString("a\r\nb\0c\xFF", 7), CString('x', 200'000), CString("short"), CString()})
    {
        CString read;
        EXPECT_TRUE(writeStringToFile(file, text) && readStringFromFile(file, read));
        EXPECT_EQ(read, text);
    }
    CString kept = "kept";
    EXPECT_TRUE(readStringFromFile(file, kept) && kept == "kept");
}

TEST(FileToolsTest, RefuseWhatIsNoFile)
{
    orvane::CScratchFolder const folder;
    CString const root = folder.path(""), pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe, 0600), 0);
    CString kept = "kept";
    for (CString const & path : {root, root + "\\missing", root + "\\no\\way", CString(), CString('x', 10'000)})
        EXPECT_FALSE(fileExists(path) || readStringFromFile(path, kept)) << path;
    for (CString const & path : {root, root + "\\no\\way", CString(), pipe, CString("/dev/full")})
        EXPECT_FALSE(writeStringToFile(path, CString('x', 100'000))) << path;
    EXPECT_EQ(kept, "kept");
}

TEST(FileToolsTest, MakeEveryLevel)
{
    orvane::CScratchFolder const folder;
    for (char const * path : {"a\\b/c\\", "new\\..\\d"}) makeDirectory(folder.path("") + path);
    makeDirectory(folder.path("e\\") + CString('x', PATH_MAX));
    for (char const * made : {"a/b/c", "new", "d"})
        EXPECT_TRUE(std::filesystem::is_directory(folder.path(made).view()));
    EXPECT_EQ(folder.entryCount(), 3);
}

TEST(PathTest, FindsTheExtensionAtTheLastPoint)
{
    char const * const cases[][3] = {
        {"a.b.prj", ".prj", "a.b"}, {"abc", "", "abc"}, {".prj", ".prj", ""}, {"old.d\\file", ".d\\file", "old"}};
    for (auto const & [given, extension, rest] : cases)
    {
        CString path = given;
        EXPECT_EQ(getExtension(path), extension);
        removeExtension(path);
        EXPECT_EQ(path, rest);
    }
}

}  // namespace
