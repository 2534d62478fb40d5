#include "platform/map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

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
    void set(std::string const & key, int value)
    {
        auto & chain = chainOf(key);
        auto const found = at(chain, key);
        if (found == chain.end()) chain.insert(chain.begin(), {key, value});
        else found->second = value;
    }
    bool remove(std::string const & key)
    {
        auto & chain = chainOf(key);
        auto const found = at(chain, key);
        if (found == chain.end()) return false;
        chain.erase(found);
        return true;
    }
    std::string walk() const
    {
        std::string text;
        for (auto const & chain : chains)
            for (auto const & [key, value] : chain) text += key + "=" + std::to_string(value) + " ";
        return text;
    }

private:
    using Chain = std::vector<std::pair<std::string, int>>;

    Chain & chainOf(std::string const & key)
    {
        unsigned hash = 0;
        for (unsigned char const byte : key) hash = hash * 33 + byte;
        return chains[hash % 17];
    }
    static Chain::iterator at(Chain & chain, std::string const & key)
    {
        return std::find_if(chain.begin(), chain.end(), [&](auto const & entry) { return entry.first == key; });
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
        if (random() % 3 == 0)
        {
            ASSERT_EQ(map.RemoveKey(key.c_str()), judge.remove(key));
        }
        else
        {
            map.SetAt(key.c_str(), step);
            judge.set(key, step);
        }
        ASSERT_EQ(walk(map), judge.walk()) << "step " << step;
    }
    Numbers copy(map);
    EXPECT_EQ(walk(copy), judge.walk());
    map.RemoveAll();
    EXPECT_TRUE(map.IsEmpty() && !map.GetStartPosition());
    map = copy;
    EXPECT_EQ(walk(map), judge.walk());
}

TEST(Map, FindsEntersAndRemoves)
{
    Numbers map;
    int value = -1;
    EXPECT_FALSE(map.Lookup("a", value) || map.find("a") || map.RemoveKey("a"));
    EXPECT_EQ(value, -1);
    EXPECT_EQ(map["a"], 0);
    map["a"] = 4;
    map.SetAt("b", map["a"]);
    EXPECT_TRUE(map.Lookup("b", value) && value == 4);
    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_EQ(map[nullptr], 0);
    EXPECT_TRUE(map.RemoveKey(""));
    EXPECT_FALSE(map.RemoveKey(""));
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
    EXPECT_EQ(map.GetCount(), 50);
    POSITION past = nullptr;
    map.GetNextAssoc(past, key, value);
    EXPECT_EQ(past, nullptr);
}

TEST(Map, TheNumberOfChainsCanBeSetWhileItIsEmpty)
{
    Numbers map;
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    map.InitHashTable(1);
    for (char const * const key : {"a", "b", "c"}) map[key] = 1;
    map.InitHashTable(17);
    map.InitHashTable(0);
    EXPECT_EQ(map.GetHashTableSize(), 1U);
    EXPECT_EQ(walk(map), "c=1 b=1 a=1 ");
    EXPECT_EQ(walk(Numbers(map)), walk(map));
}

TEST(Map, AddsFindsAndRemovesAsFastWhenItIsLarge)
{
    Numbers map;
    auto const key = [](int number) { return std::to_string(number); };
    for (int each = 0; each < 100000; ++each) map[key(each).c_str()] = each;
    for (int each = 0; each < 100000; ++each) ASSERT_EQ(*map.find(key(each).c_str()), each);
    for (int each = 0; each < 100000; ++each) ASSERT_TRUE(map.RemoveKey(key(each).c_str()));
    EXPECT_TRUE(map.IsEmpty());
}

TEST(TypedPtrMap, HoldsPointersOfOneClass)
{
    struct Thing : CObject
    {
    };
    CTypedPtrMap<CMapStringToOb, CString, Thing *> map(10);
    Thing thing;
    map.SetAt("thing", &thing);
    Thing * found = nullptr;
    EXPECT_TRUE(map.Lookup("thing", found) && found == &thing);
    EXPECT_FALSE(map.Lookup("other", found));
    EXPECT_EQ(found, &thing);

    POSITION position = map.GetStartPosition();
    CString key;
    Thing * walked = nullptr;
    map.GetNextAssoc(position, key, walked);
    EXPECT_TRUE(walked == &thing && key == "thing" && !position);
    EXPECT_TRUE(map.IsKindOf(CMapStringToOb::GetThisClass()));
}
