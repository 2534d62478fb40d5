#include "platform/guid.h"

#include <span>
#include <thread>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr _GUID sample{0x03020100, 0x0504, 0x0706, {8, 9, 10, 11, 12, 13, 14, 0xFF}};
static_assert(_GUID::fromBytes(sample.bytes()) == sample);
static_assert(std::endian::native != std::endian::little
              || sample.bytes() == _GUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 0xFF});

void draw(std::span<_GUID> guids)
{
    for (_GUID & guid : guids) EXPECT_TRUE(CoCreateGuid(&guid));
}

std::size_t countDistinct(std::span<_GUID const> guids)
{
    return std::unordered_set<_GUID>(guids.begin(), guids.end()).size();
}

TEST(GuidTest, MakesRandomIdentifiersOfVersion4InEveryThread)
{
    EXPECT_FALSE(CoCreateGuid(nullptr));
    std::vector<_GUID> guids(40'000);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) threads.emplace_back(draw, std::span(guids).subspan(i * 10'000, 10'000));
    for (std::thread & thread : threads) thread.join();
    EXPECT_EQ(countDistinct(guids), guids.size());
    for (_GUID const & guid : guids) ASSERT_TRUE(guid.Data3 >> 12 == 4 && guid.Data4[0] >> 6 == 2);
}

// A stock that a child inherits is not used twice: this process, its child and the child's child draw.
TEST(GuidTest, NeverRepeatsTheParentAfterAFork)
{
    constexpr std::size_t count = 20;
    void * const shared = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    std::span const guids(static_cast<_GUID *>(shared), 4 * count);
    draw(guids.last(count));
    if (pid_t const child = fork(); child == 0)
    {
        pid_t const grandchild = fork();
        draw(guids.subspan(grandchild > 0 ? count : 2 * count, count));
        if (grandchild > 0) waitpid(grandchild, nullptr, 0);
        _exit(0);
    }
    draw(guids.first(count));
    wait(nullptr);
    EXPECT_EQ(countDistinct(guids), guids.size());
    munmap(shared, 4096);
}

}  // namespace
