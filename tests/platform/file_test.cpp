#include "platform/file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/scratch_folder.h"

namespace
{

using orvane::causeOf;

TEST(FileTest, TellsWhyItDoesNotOpen)
{
    orvane::CScratchFolder const folder;
    CString const there = folder.write("a", "12345"), pipe = folder.path("pipe");
    mkfifo(pipe, 0600);
    std::tuple<CString, unsigned int, int> const cases[] = {
        {"", CFile::modeCreate, CFileException::fileNotFound},
        {folder.path("none"), CFile::modeRead, CFileException::fileNotFound},
        {folder.path("no/where"), CFile::modeCreate | CFile::modeWrite, CFileException::badPath},
        {there + CString("\0x", 2), CFile::modeRead, CFileException::badPath},
        {pipe, CFile::modeWrite, CFileException::accessDenied},
    };
    for (auto const & [path, flags, cause] : cases)
    {
        CFileException exception;
        EXPECT_FALSE(CFile().Open(path, flags, &exception)) << path;
        EXPECT_EQ(exception.m_cause, cause) << path;
        EXPECT_EQ(exception.m_strFileName, path);
    }
}

TEST(FileTest, RefusesWhatItCannotDo)
{
    orvane::CScratchFolder const folder;
    CFile file(folder.write("a", "12345"), CFile::modeRead), full("/dev/full", CFile::modeWrite);
    EXPECT_FALSE(file.Open("/dev/null", CFile::modeRead));
    EXPECT_EQ(file.Seek(-2, CFile::end), 3);
    EXPECT_EQ(causeOf([&] { file.Seek(-9, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(causeOf([&] { full.Write("x", 1); }), CFileException::diskFull);
    char bytes[9];
    EXPECT_EQ(file.Read(bytes, 9), 2U);
    EXPECT_EQ(causeOf([&] { file.Close(), file.Close(), file.Abort(); }), 0);
    EXPECT_EQ(causeOf([&] { file.Read(bytes, 1); }), CFileException::invalidFile);
}

TEST(FileTest, OwnFilesAreNobodyElses)
{
    orvane::CScratchFolder const folder;
    constexpr unsigned int flags = CFile::modeOwn | CFile::modeCreate | CFile::modeWrite;
    CString const path = folder.path("own"), link = folder.path("link"), pipe = folder.path("pipe");
    CFile(path, flags).Write("long", 4);
    chmod(path, 0666);
    CFile(path, flags).Write("new", 3);
    EXPECT_EQ(std::filesystem::status(path.view()).permissions(), std::filesystem::perms(0600));
    ASSERT_EQ(symlink(path, link) + mkfifo(pipe, 0600), 0);
    for (CString const & refused : {link, pipe, CString("/dev/null"), folder.path(".")})
        EXPECT_EQ(causeOf([&] { CFile(refused, flags); }), CFileException::accessDenied) << refused;
    ASSERT_EQ(::link(path, folder.path("another name")), 0);
    EXPECT_EQ(causeOf([&] { CFile(path, flags); }), CFileException::accessDenied);
    EXPECT_EQ(folder.read("own"), "new");
}

TEST(MemFileTest, GrowsAndSeeks)
{
    CMemFile file(7);
    std::string expected, bytes(20000, '?');
    for (int i = 0; i < 999; ++i) file.Write("12345678", i % 9U), expected += std::string("12345678", i % 9U);
    file.Seek(10, CFile::current);
    file.Write("x", 1);
    file.Seek(0, CFile::begin);
    bytes.resize(file.Read(bytes.data(), 20000));
    EXPECT_TRUE(bytes == expected + std::string(10, '\0') + 'x');
    EXPECT_EQ(causeOf([&] { file.Seek(INT64_MAX, CFile::end); }), CFileException::badSeek);
    file.Seek(INT64_MAX, CFile::begin);
    EXPECT_EQ(file.Read(bytes.data(), 1), 0U);
    EXPECT_EQ(causeOf([&] { file.Write("x", 1); }), CFileException::diskFull);
}

}  // namespace
