#include "persistence/compressed_file.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "persistence/file_system.h"
#include "platform/archive.h"
#include "tests/support/scratch_folder.h"

namespace
{

using orvane::causeOf;
using namespace std::string_literals;

constexpr unsigned int forWriting = CFile::modeCreate | CFile::modeWrite;
std::string const plainHeader = "\x1F\x8B\x08\0\0\0\0\0\0\x0B"s;

// Half noise, half repetition.
std::string someBytes(std::size_t size)
{
    std::mt19937 random(1);
    std::string bytes;
    while (bytes.size() < size) bytes += std::string(random() % 20, 'a') + std::to_string(random());
    return bytes.substr(0, size);
}

void writeGzip(CString const & path, std::string const & bytes, std::size_t piece = 4096)
{
    SECCompressFile file;
    ASSERT_TRUE(file.Open(path, forWriting));
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        file.Write(bytes.data() + at, static_cast<unsigned int>(std::min(piece, bytes.size() - at)));
    file.Close();
}

std::string readGzip(CString const & path, unsigned int piece = 4096)
{
    SECCompressFile file;
    EXPECT_TRUE(file.Open(path, CFile::modeRead));
    std::string bytes, part(piece, '\0');
    while (unsigned int const got = file.Read(part.data(), piece)) bytes.append(part, 0, got);
    file.Close();
    return bytes;
}

// What zlib's own reader makes of it, which checks the trailer.
std::string readByOthers(CString const & path, std::size_t room)
{
    std::string bytes(room + 1, '\0');
    gzFile const file = gzopen(path, "rb");
    int const size = gzread(file, bytes.data(), static_cast<unsigned int>(bytes.size()));
    EXPECT_TRUE(!gzdirect(file) && gzclose(file) == Z_OK);
    return size < 0 ? "damaged" : bytes.substr(0, static_cast<std::size_t>(size));
}

TEST(CompressedFileTest, WritesAndReadsOneGzipMember)
{
    orvane::CScratchFolder const folder;
    CString const path = folder.path("a.prj");
    for (std::size_t size : {0, 1, 4096, 4097, 70000})
        for (std::size_t piece : {7, 4096, 1 << 20})
        {
            std::string const bytes = someBytes(size);
            writeGzip(path, bytes, piece);
            EXPECT_TRUE(folder.read("a.prj").starts_with(plainHeader));
            EXPECT_TRUE(readByOthers(path, size) == bytes) << size;
            EXPECT_TRUE(readGzip(path, static_cast<unsigned int>(piece)) == bytes) << size;
        }
}

TEST(CompressedFileTest, ReadsWhatOthersWrite)
{
    orvane::CScratchFolder const folder;
    std::string const bytes = someBytes(20000);
    writeGzip(folder.path("a"), bytes);
    std::string const data = folder.read("a").substr(10), name = std::string(9000, 'n') + '\0';
    auto const header = [](char method, char flags) { return "\x1F\x8B"s + method + flags + "\1\2\3\4\5\6"; };
    std::pair<std::string, std::string> const cases[] = {
        {header(8, 31) + "\5\0five!"s + name + name + "\0\1"s + data, bytes},
        {header(7, 0) + data, ""},
        {header(8, 32) + data, ""},
        {header(8, 4) + "\xFF\xFF" + data.substr(0, 1000), ""},
        {header(8, 8) + std::string(5000, 'x'), ""},
        {plainHeader + data + "behind the end", bytes},
        {"", ""},
        {"\x1F", "\x1F"},
        {bytes, bytes},
    };
    for (auto const & [file, content] : cases)
        for (unsigned int piece : {3U, 4096U, 50000U})
            EXPECT_TRUE(readGzip(folder.write("b", file), piece) == content) << file.substr(0, 20);
}

TEST(CompressedFileTest, DamageOnlyEndsTheReading)
{
    orvane::CScratchFolder const folder;
    std::string const bytes = someBytes(700);
    writeGzip(folder.path("a"), bytes);
    std::string const file = folder.read("a");
    std::size_t const trailer = file.size() - 8;
    for (std::size_t at = 2; at < file.size(); ++at)
    {
        std::string const content = readGzip(folder.write("b", file.substr(0, at)));
        EXPECT_TRUE(bytes.starts_with(content) && (at < trailer || content == bytes)) << at;
        std::string damaged = file;
        damaged[at] = static_cast<char>(~damaged[at]);
        std::string const changed = readGzip(folder.write("b", damaged));
        // Deflate swells by no more than this, whatever the bytes.
        EXPECT_TRUE(at < trailer ? changed.size() < 1032 * file.size() : changed == bytes) << at;
    }
    std::mt19937 random(1);
    for (int i = 0; i < 500; ++i)
    {
        std::string noise = plainHeader;
        while (random() % 100 > 0) noise += static_cast<char>(random());
        EXPECT_LT(readGzip(folder.write("b", noise)).size(), 1032 * noise.size());
    }
}

TEST(CompressedFileTest, ABombDoesNotOutgrowTheArchive)
{
    orvane::CScratchFolder const folder;
    writeGzip(folder.path("bomb"), std::string(10'000'000, '\0'));
    SECCompressFile file;
    ASSERT_TRUE(file.Open(folder.path("bomb"), CFile::modeRead));
    EXPECT_LT(file.GetLength(), 20'000);
    CArchive archive(&file, CArchive::load);
    archive.setBudget(1'000'000);
    std::string bytes(1'000'000, 'x');
    EXPECT_EQ(archive.Read(bytes.data(), 999'999), 999'999U);
    EXPECT_THROW(archive.Read(bytes.data(), 2), CArchiveException);
}

TEST(CompressedFileTest, TellsOfAFullDiskAndIsQuietAfterwards)
{
    orvane::CScratchFolder const folder;
    std::string const bytes = someBytes(200'000);
    SECCompressFile file;
    CFileException exception;
    EXPECT_FALSE(file.Open("/dev/full", forWriting, &exception));
    EXPECT_EQ(exception.m_cause, CFileException::diskFull);
    {
        orvane::CFullDisk const disk(100);
        ASSERT_TRUE(file.Open(folder.path("a"), forWriting));
        EXPECT_EQ(causeOf([&] { file.Write(bytes.data(), 200'000); }), CFileException::diskFull);
        EXPECT_EQ(causeOf([&] { file.Write(bytes.data(), 200'000), file.Close(); }), 0);
        // What is held back until the end does not fit.
        ASSERT_TRUE(file.Open(folder.path("b"), forWriting));
        EXPECT_EQ(causeOf([&] { file.Write(bytes.data(), 3'000); }), 0);
        EXPECT_EQ(causeOf([&] { file.Close(); }), CFileException::diskFull);
    }
    char byte = 'x';
    EXPECT_EQ(causeOf([&] { file.Write(&byte, 1), file.Close(), file.Abort(); }), 0);
    EXPECT_EQ(file.Read(&byte, 1), 0U);
}

TEST(FileSystemTest, CopiesOnlyWhereItMay)
{
    orvane::CScratchFolder const folder;
    std::string const bytes = someBytes(25'000);
    CString const source = folder.write("source", bytes);
    EXPECT_FALSE(copyFile(source, folder.write("there", "old"), false));
    std::filesystem::create_symlink("source", folder.path("link").view());
    std::filesystem::create_directory(folder.path("directory").view());
    std::tuple<char const *, char const *, bool> const cases[] = {
        {"source", "new", true},       {"source", "there", true},     {"none", "there", false},
        {"source", "source", false},   {"source", "link", false},     {"source", "directory", false},
        {"directory", "other", false}, {"source", "no/where", false},
    };
    for (auto const & [from, to, copied] : cases)
    {
        EXPECT_EQ(copyFile(folder.path(from), folder.path(to), true), copied) << from << " to " << to;
        EXPECT_TRUE(!copied || folder.read(to) == bytes) << to;
        EXPECT_TRUE(folder.read("source") == bytes) << to;
    }
    orvane::CFullDisk const disk(20'000);
    EXPECT_FALSE(copyFile(source, folder.path("half"), true));
    EXPECT_EQ(folder.read("half"), "");
}

}  // namespace
