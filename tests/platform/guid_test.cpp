#include "platform/guid.h"

#include <algorithm>
#include <cstring>
#include <thread>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

static_assert(std::is_trivially_copyable_v<_GUID> && std::is_standard_layout_v<_GUID>);

constexpr _GUID sample{0x03020100, 0x0504, 0x0706, {8, 9, 10, 11, 12, 13, 14, 0xFF}};

_GUID fresh()
{
    _GUID guid;
    EXPECT_TRUE(CoCreateGuid(&guid));
    return guid;
}

std::vector<_GUID> draw(std::size_t count)
{
    std::vector<_GUID> guids(count);
    std::generate(guids.begin(), guids.end(), fresh);
    return guids;
}

std::size_t countDistinct(std::vector<_GUID> const & guids)
{
    return std::unordered_set<_GUID>(guids.begin(), guids.end()).size();
}

TEST(GuidTest, LiesInMemoryAsItsBytes)
{
    static_assert(_GUID::fromBytes(sample.bytes()) == sample);
    EXPECT_EQ(std::memcmp(sample.bytes().data(), &sample, sizeof sample), 0);
    static_assert(std::endian::native != std::endian::little
                  || sample.bytes() == _GUID::Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 0xFF});
    EXPECT_FALSE(CoCreateGuid(nullptr));
}

TEST(GuidTest, OrdersAsItsBytesDo)
{
    std::vector<_GUID> const guids = draw(40);
    for (_GUID const & left : guids)
        for (std::size_t changed = 0; changed < 16; ++changed)
        {
            _GUID::Bytes bytes = left.bytes();
            ++bytes[changed];
            _GUID const right = _GUID::fromBytes(bytes);
            EXPECT_NE(left, right);
            EXPECT_EQ(left < right, left.bytes() < bytes);
        }
}

TEST(GuidTest, HashesIdentifiersThatDifferInOneByteApart)
{
    std::unordered_set<std::size_t> hashes;
    for (std::size_t place = 0; place < 16; ++place)
        for (unsigned value = 1; value < 256; ++value)
        {
            _GUID::Bytes bytes{};
            bytes[place] = static_cast<unsigned char>(value);
            hashes.insert(std::hash<_GUID>()(_GUID::fromBytes(bytes)));
        }
    EXPECT_EQ(hashes.size(), 16u * 255u);
}

TEST(GuidTest, MakesRandomIdentifiersOfVersion4)
{
    std::vector<_GUID> const guids = draw(100'000);
    EXPECT_EQ(countDistinct(guids), guids.size());

    for (_GUID const & guid : guids)
    {
        ASSERT_EQ(guid.Data3 >> 12, 4);
        ASSERT_EQ(guid.Data4[0] >> 6, 2);
    }
}

TEST(GuidTest, NeverRepeatsAnotherThread)
{
    std::vector<std::vector<_GUID>> drawn(4);
    std::vector<std::thread> threads;
    for (auto & mine : drawn) threads.emplace_back([&mine] { mine = draw(1000); });
    for (std::thread & thread : threads) thread.join();

    std::vector<_GUID> all;
    for (auto const & mine : drawn) all.insert(all.end(), mine.begin(), mine.end());
    EXPECT_EQ(countDistinct(all), 4000u);
}

// What a child of this process, and its own child, draw.
std::vector<_GUID> drawInChildren(std::size_t count)
{
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    if (pid_t const child = fork(); child == 0)
    {
        pid_t const grandchild = fork();
        std::vector<_GUID> const mine = draw(count);
        bool const written = write(ends[1], mine.data(), count * sizeof(_GUID)) > 0;
        if (grandchild > 0) waitpid(grandchild, nullptr, 0);
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    std::vector<_GUID> guids(2 * count);
    auto * to = reinterpret_cast<char *>(guids.data());
    std::size_t got = 0;
    for (ssize_t part; (part = read(ends[0], to + got, guids.size() * sizeof(_GUID) - got)) > 0;)
        got += static_cast<std::size_t>(part);
    close(ends[0]);
    wait(nullptr);
    EXPECT_EQ(got, guids.size() * sizeof(_GUID));
    return guids;
}

TEST(GuidTest, NeverRepeatsTheParentAfterAFork)
{
    fresh();  // there is a stock to inherit
    std::vector<_GUID> all = drawInChildren(20);
    for (_GUID const & guid : drawInChildren(20)) all.push_back(guid);
    for (_GUID const & guid : draw(20)) all.push_back(guid);
    EXPECT_EQ(countDistinct(all), 100u);
}

}  // namespace
