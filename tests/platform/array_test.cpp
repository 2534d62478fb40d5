#include "platform/array.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

namespace
{

// An element that lives at an address of its own, and counts how often one was made from nothing.
struct Owned
{
    Owned() { ++fromNothing; }
    Owned(int number) : number(number) {}
    Owned(Owned const & other) : number(other.number) {}
    Owned & operator=(Owned const &) = default;
    operator int() const { return number; }

    int number = 0;
    static inline int fromNothing = 0;
};

template <class Type>
class ArrayOf : public testing::Test
{
};
using Types = testing::Types<int, Owned>;
TYPED_TEST_SUITE(ArrayOf, Types);

template <class Type>
std::vector<int> contents(CArray<Type> const & array)
{
    std::vector<int> numbers;
    for (Type const & element : array) numbers.push_back(element);
    return numbers;
}

}  // namespace

// Against a plain list, at places within and without. What is put in comes from the array itself as often as not.
TYPED_TEST(ArrayOf, StaysRightThroughRandomHistories)
{
    std::mt19937 random(20261121);
    CArray<TypeParam> array;
    std::vector<int> plain;
    auto const upTo = [&](auto bound) { return static_cast<int>(random() % static_cast<unsigned>(bound + 1)); };
    auto const insert = [&](int at, std::vector<int> const & numbers)
    {
        if (at < 0 || numbers.empty()) return;
        if (at > std::ssize(plain)) plain.resize(static_cast<std::size_t>(at));
        plain.insert(plain.begin() + at, numbers.begin(), numbers.end());
    };
    for (int step = 0; step < 20000; ++step)
    {
        TypeParam const fresh = step;
        int const at = upTo(plain.size() + 3) - 1, count = upTo(4) - 1, from = upTo(plain.size());
        TypeParam const & element = from < array.GetSize() ? std::as_const(array)[from] : fresh;
        int const number = element;
        int const size = array.GetSize();
        bool const inside = at >= 0 && at < size;
        switch (random() % 8)
        {
            case 0:
                array.InsertAt(at, element, count);
                insert(at, std::vector<int>(static_cast<std::size_t>(std::max(count, 0)), number));
                break;
            case 1:
                array.SetAtGrow(at, element);
                if (inside) plain[static_cast<std::size_t>(at)] = number;
                else insert(at, {number});
                break;
            case 2: array.InsertAt(at, &array), insert(at, std::vector<int>(plain)); break;
            case 3:
                EXPECT_EQ(array.Append(CArray<TypeParam>(array)), std::ssize(plain));
                insert(static_cast<int>(plain.size()), std::vector<int>(plain));
                break;
            case 4: array.SetSize(at), plain.resize(static_cast<std::size_t>(std::max(at, 0))); break;
            case 5: array.Add(element), plain.push_back(number); break;
            default:
                array.RemoveAt(at, count);
                for (int gone = 0; inside && gone < std::min(count, size - at); ++gone) plain.erase(plain.begin() + at);
                break;
        }
        ASSERT_EQ(contents(array), plain) << "step " << step;
        if (plain.size() > 40) array.RemoveAll(), plain.clear();
    }
    EXPECT_THROW(array.InsertAt(1, 3, INT_MAX), std::length_error);
    array.InsertAt(5, nullptr);
    array.Reserve(-1);
    for (int outside : {-1, array.GetSize()}) EXPECT_THROW(array.GetAt(outside), std::out_of_range);
}

TEST(Array, ElementsThatStayAreNeitherMovedNorMadeAhead)
{
    CArray<Owned> array;
    array.Add(1);
    Owned const * const first = &array.GetAt(0);
    Owned::fromNothing = 0;
    for (int each = 0; each < 1000; ++each) array.Add(array.GetAt(0));
    array.InsertAt(0, *first, 3);
    array.RemoveAt(1);
    array.FreeExtra();
    CArray<Owned> const copy(array);
    EXPECT_TRUE(&array.GetAt(2) == first && Owned::fromNothing == 0);
    array.SetAtGrow(array.GetSize() + 2, *first);
    EXPECT_EQ(Owned::fromNothing, 2);
}

// A branch is put in place of the tree that it grows on, which goes with the last reference.
TEST(Array, TakesOnAnArrayInsideItsOwnElement)
{
    struct Node
    {
        std::shared_ptr<CArray<Node>> children;
    };
    CArray<Node> tree;
    tree.SetSize(1);
    tree[0].children = std::make_shared<CArray<Node>>();
    tree[0].children->SetSize(3);
    tree.Copy(*tree.GetAt(0).children);
    EXPECT_EQ(tree.GetSize(), 3);
}
