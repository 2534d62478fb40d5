#include "platform/map.h"

#include <gtest/gtest.h>

#include <list>
#include <random>
#include <string>

namespace
{

using Numbers = CMap<CString, char const *, int, int>;

std::string walk(Numbers const & map)
{
    std::string text;
    CString key;
    int value = 0;
    for (POSITION position = map.GetStartPosition(); position;)
    {
        map.GetNextAssoc(position, key, value);
        text += std::string(key.view()) + "=" + std::to_string(value) + " ";
    }
    return text;
}

// The judge: seventeen lists, each with the newest entry first.
class Chains
{
public:
    int & at(std::string const & key)
    {
        Chain & chain = chainOf(key);
        for (auto & [each, value] : chain)
            if (each == key) return value;
        return chain.emplace_front(key, 0).second;
    }
    bool remove(std::string const & key)
    {
        return std::erase_if(chainOf(key), [&](auto const & entry) { return entry.first == key; }) > 0;
    }
    std::string walk() const
    {
        std::string text;
        for (Chain const & chain : chains)
            for (auto const & [key, value] : chain) text += key + "=" + std::to_string(value) + " ";
        return text;
    }

private:
    using Chain = std::list<std::pair<std::string, int>>;

    Chain & chainOf(std::string const & key)
    {
        unsigned hash = 0;
        for (unsigned char const byte : key) hash = hash * 33 + byte;
        return chains[hash % 17];
    }

    Chain chains[17];
};

}  // namespace

TEST(Map, WalksItsChainsInOrderThroughRandomHistories)
{
    std::mt19937 random(20261121);
    Numbers map;
    Chains judge;
    for (int step = 0; step < 5000; ++step)
    {
        std::string const key = std::string(random() % 3, '\xE4') + std::to_string(random() % 60);
        switch (random() % 3)
        {
            case 0: ASSERT_EQ(map.RemoveKey(key.c_str()), judge.remove(key)); break;
            case 1: map.SetAt(key.c_str(), judge.at(key) = step); break;
            default: ASSERT_EQ(map[key.c_str()], judge.at(key)); break;
        }
        ASSERT_EQ(walk(map), judge.walk()) << "step " << step;
    }
    Numbers const copy(map);
    map.RemoveAll();
    EXPECT_TRUE(map.IsEmpty() && !map.GetStartPosition());
    map = copy;
    EXPECT_EQ(walk(map), judge.walk());
}

TEST(Map, EntriesMayGoWhileItIsWalked)
{
    Numbers map;
    for (int each = 0; each < 100; ++each) map[std::to_string(each).c_str()] = each;
    CString key;
    int value = 0;
    for (POSITION position = map.GetStartPosition(); position;)
    {
        map.GetNextAssoc(position, key, value);
        if (value % 2) map.RemoveKey(key);
    }
    EXPECT_FALSE(map.Lookup("1", value = -1) || map.find(nullptr) || value != -1 || map.GetCount() != 50);
    POSITION past = nullptr;
    map.GetNextAssoc(past, key, value);
    EXPECT_EQ(past, nullptr);
}

// The many entries of few chains are found without walking the chains.
TEST(Map, AddsFindsAndRemovesAsFastWhenItIsLarge)
{
    Numbers map;
    auto const key = [](int number) { return CString(std::to_string(number).c_str()); };
    for (int each = 0; each < 100000; ++each) map[key(each)] = each;
    for (int each = 0; each < 100000; ++each) ASSERT_TRUE(*map.find(key(each)) == each && map.RemoveKey(key(each)));
}
