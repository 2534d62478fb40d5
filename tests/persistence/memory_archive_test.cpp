#include "persistence/memory_archive.h"

#include <gtest/gtest.h>

namespace
{

using Bytes = std::vector<unsigned char>;

// Blocks of the compressed kind, for which the class has no door.
class CCompressedArchive : public CProjectMemoryArchive
{
public:
    CCompressedArchive() { compressed = 1; }
    CCompressedArchive(unsigned char const * data, unsigned long size) : CProjectMemoryArchive(nullptr, 0)
    {
        compressed = 1;
        readBlock(data, size);
    }
};

Bytes blockOf(CProjectMemoryArchive & archive)
{
    unsigned char * data = nullptr;
    unsigned long size = 1;
    int const made = archive.getCompressedData(data, size);
    EXPECT_EQ(made, data != nullptr);
    Bytes block(data, data + size);
    delete[] data;
    return block;
}

// The block of so many numbers, which reads back.
template <class Archive>
Bytes blockOfNumbers(int count)
{
    Archive archive;
    for (int i = 0; i < count; ++i) archive << i;
    Bytes const block = blockOf(archive);
    Archive back(block.data(), block.size());
    EXPECT_EQ(back.OK(), count > 0);
    int number = -1;
    for (int i = 0; i < count; ++i) EXPECT_EQ((back >> number, number), i);
    EXPECT_THROW(back >> number, CArchiveException);
    return block;
}

TEST(MemoryArchiveTest, BlocksRoundTrip)
{
    EXPECT_EQ(blockOfNumbers<CProjectMemoryArchive>(2), (Bytes{8, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(blockOfNumbers<CProjectMemoryArchive>(0), Bytes());
    EXPECT_EQ(blockOfNumbers<CProjectMemoryArchive>(5000).size(), 20'004U);
    EXPECT_LT(blockOfNumbers<CCompressedArchive>(5000).size(), 10'000U);
}

TEST(MemoryArchiveTest, TakesOnlyWhatIsABlock)
{
    std::pair<Bytes, int> const cases[] = {
        {{}, 0},
        {{0, 0, 0, 0, 1}, 0},
        {{3, 0, 0, 0, 1, 2, 3, 4}, 0},
        {{5, 0, 0, 0, 1, 2, 3, 4}, 1},
        {{1, 0, 0, 64, 1, 2, 3, 4}, 0},
    };
    for (auto const & [block, ok] : cases)
    {
        CProjectMemoryArchive archive(block.data(), block.size());
        EXPECT_EQ(archive.OK(), ok) << block.size();
        int number = 0;
        EXPECT_EQ(archive.Read(&number, 4), ok ? 4U : 0U);
        EXPECT_EQ(blockOf(archive).size(), ok ? block[0] + 4U : 0U);
    }
    Bytes block = blockOfNumbers<CCompressedArchive>(300);
    for (std::size_t at = 4; at < block.size(); ++at)
    {
        EXPECT_EQ(CCompressedArchive(block.data(), at).OK(), 0) << at;
        block[at] ^= 0xFF;
        EXPECT_EQ(CCompressedArchive(block.data(), block.size()).OK(), 0) << at;
        block[at] ^= 0xFF;
    }
}

}  // namespace
