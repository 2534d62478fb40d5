#include "platform/array.h"

#include "platform/string_array.h"

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

TYPED_TEST(ArrayOf, IgnoresPositionsOutsideButAnswersNoElement)
{
    CArray<TypeParam> array;
    array.Add(7);
    EXPECT_THROW(array.GetAt(1), std::out_of_range);
    EXPECT_THROW(array[-1], std::out_of_range);
    array.RemoveAt(5);
    array.RemoveAt(-1);
    array.RemoveAt(0, -3);
    array.InsertAt(-1, 3);
    array.InsertAt(5, 3, 0);
    array.InsertAt(5, nullptr);
    array.SetAt(9, 3);
    array.SetAtGrow(-2, 3);
    array.Reserve(-1);
    EXPECT_THROW(array.InsertAt(1, 3, INT_MAX), std::length_error);
    EXPECT_EQ(contents(array), std::vector<int>{7});
    array.SetSize(-4);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetUpperBound(), -1);
}

// Against a plain list. What is put in comes from the array itself as often as not.
TYPED_TEST(ArrayOf, StaysRightThroughRandomHistories)
{
    std::mt19937 random(20261121);
    CArray<TypeParam> array;
    std::vector<int> plain;
    auto const upTo = [&](std::size_t bound) { return static_cast<int>(random() % (bound + 1)); };
    auto const insert = [&](int at, std::vector<int> const & numbers)
    {
        if (at > static_cast<int>(plain.size())) plain.resize(static_cast<std::size_t>(at));
        plain.insert(plain.begin() + at, numbers.begin(), numbers.end());
    };
    for (int step = 0; step < 20000; ++step)
    {
        TypeParam const fresh = step;
        int const at = upTo(plain.size() + 2);
        int const count = upTo(3);
        int const from = upTo(plain.size());
        bool const own = from < array.GetSize();
        TypeParam const & element = own ? std::as_const(array)[from] : fresh;
        int const number = element;
        bool const inside = at < array.GetSize();
        switch (random() % 9)
        {
            case 0:
                EXPECT_EQ(array.Add(element), static_cast<int>(plain.size()));
                plain.push_back(number);
                break;
            case 1:
                array.InsertAt(at, element, count);
                if (count > 0) insert(at, std::vector<int>(static_cast<std::size_t>(count), number));
                break;
            case 2:
                array.SetAtGrow(at, element);
                if (inside) plain[static_cast<std::size_t>(at)] = number;
                else insert(at, {number});
                break;
            case 3:
                array.InsertAt(at, &array);
                if (!plain.empty()) insert(at, std::vector<int>(plain));
                break;
            case 4:
                EXPECT_EQ(array.Append(CArray<TypeParam>(array)), static_cast<int>(plain.size()));
                insert(static_cast<int>(plain.size()), std::vector<int>(plain));
                break;
            case 5:
                array.SetSize(at);
                plain.resize(static_cast<std::size_t>(at));
                break;
            case 6: array.Copy(CArray<TypeParam>(array)); break;
            default:
                array.RemoveAt(at, count);
                if (inside)
                    plain.erase(plain.begin() + at,
                                plain.begin() + std::min(at + count, static_cast<int>(plain.size())));
                break;
        }
        ASSERT_EQ(contents(array), plain) << "step " << step;
        if (plain.size() > 40) array.RemoveAll(), plain.clear();
    }
}

// As a queue, from which the first is taken and to which new ones are added.
TEST(Array, PlainElementsCanBeUsedUpFromTheFront)
{
    CArray<int> queue;
    for (int each = 0; each < 200000; ++each) queue.Add(each);
    for (int each = 0; each < 200000; ++each)
    {
        ASSERT_EQ(queue.GetAt(0), each);
        queue.RemoveAt(0);
        if (each % 2 == 0) queue.Add(200000 + each / 2);
    }
    EXPECT_EQ(queue.GetSize(), 100000);
    EXPECT_EQ(queue[99999], 299999);
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
    EXPECT_EQ(&array.GetAt(2), first);
    CArray<Owned> const copy(array);
    EXPECT_EQ(Owned::fromNothing, 0);
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

TEST(Array, TextsAreTakenFromPointersAndFromTheArrayItself)
{
    CStringArray texts;
    texts.Add("a text too long to lie within its object");
    texts.InsertAt(3, texts.GetAt(0), 2);
    texts.SetAt(1, texts.GetAt(0));
    texts.Add(CString("end"));
    EXPECT_STREQ(texts.GetAt(2), "");
    for (int each : {0, 1, 3, 4}) EXPECT_EQ(texts.GetAt(each), texts.GetAt(0));
    EXPECT_EQ(texts[5], CString("end"));
}
