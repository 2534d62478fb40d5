#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/object.h"

namespace orvane
{

// A copy of an element as it stands in an array after `slot = element`: the values of the source, and
// the change flags of an assignment where the class has such flags. No element is ever built from its
// default constructor for this, so copying an array issues no identifiers.
template <class T>
std::unique_ptr<T> assignedCopy(T const & source)
{
    auto copy = std::make_unique<T>(source);
    if constexpr (requires { copy->touch(); }) copy->touch();
    return copy;
}

[[noreturn]] inline void throwOutOfRange(int index, int size)
{
    throw std::out_of_range("array index " + std::to_string(index) + " is not below the size " + std::to_string(size));
}

// Elements owned one by one: they keep their addresses, flags and identities while others come and go.
template <class Type>
class COwnedElements
{
public:
    int size() const { return static_cast<int>(slots.size()); }
    Type & operator[](int index) const { return *slots[static_cast<std::size_t>(index)]; }

    // Makes room for `count` elements at `position` from `make()`, called once for each.
    template <class Make>
    void insert(int position, int count, Make const & make)
    {
        std::vector<std::unique_ptr<Type>> made;
        made.reserve(static_cast<std::size_t>(count));
        for (int each = 0; each < count; ++each) made.push_back(make());
        adopt(position, std::move(made));
    }
    void insertCopies(int position, Type const & element, int count)
    {
        insert(position, count, [&] { return assignedCopy(element); });
    }
    void insertDefaults(int position, int count)
    {
        insert(position, count, [] { return std::make_unique<Type>(); });
    }
    void erase(int position, int count)
    {
        slots.erase(slots.begin() + position, slots.begin() + position + count);
    }
    void adopt(int position, std::vector<std::unique_ptr<Type>> elements)
    {
        slots.insert(slots.begin() + position, std::make_move_iterator(elements.begin()),
                     std::make_move_iterator(elements.end()));
    }
    // Takes the element at `position` out, alive.
    std::unique_ptr<Type> release(int position)
    {
        std::unique_ptr<Type> element = std::move(slots[static_cast<std::size_t>(position)]);
        slots.erase(slots.begin() + position);
        return element;
    }
    void freeExtra() { slots.shrink_to_fit(); }
    void reserve(int count) { slots.reserve(static_cast<std::size_t>(count)); }

private:
    std::vector<std::unique_ptr<Type>> slots;
};

// Plain values side by side. Taking from the front is cheap, so that a list can be used up in order.
template <class Type>
class CPlainElements
{
public:
    int size() const { return static_cast<int>(values.size() - used); }
    Type & operator[](int index) { return values[used + static_cast<std::size_t>(index)]; }
    Type const & operator[](int index) const { return values[used + static_cast<std::size_t>(index)]; }

    void insertCopies(int position, Type element, int count)
    {
        values.insert(at(position), static_cast<std::size_t>(count), element);
    }
    void insertDefaults(int position, int count) { insertCopies(position, Type(), count); }
    void erase(int position, int count)
    {
        if (position == 0) used += static_cast<std::size_t>(count);
        else values.erase(at(position), at(position + count));
        if (used > values.size() / 2) dropUsed();
    }
    void freeExtra()
    {
        dropUsed();
        values.shrink_to_fit();
    }
    void reserve(int count) { values.reserve(used + static_cast<std::size_t>(count)); }

private:
    auto at(int index) { return values.begin() + static_cast<std::ptrdiff_t>(used) + index; }
    void dropUsed()
    {
        values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(used));
        used = 0;
    }

    std::vector<Type> values;
    std::size_t used = 0;
};

}  // namespace orvane

// The array of the framework: elements by value in the order of insertion, found by position.
//
// A position outside the array throws std::out_of_range where an element must be answered; an
// operation that changes the array ignores it. Growing, inserting and removing never construct, copy
// or move the elements that stay. A negative size or count counts as zero.
template <class Type, class Arg = Type const &>
class CArray : public CObject
{
    static constexpr bool isPlain = std::is_trivially_copyable_v<Type>;
    using Elements = std::conditional_t<isPlain, orvane::CPlainElements<Type>, orvane::COwnedElements<Type>>;

public:
    CArray() = default;
    CArray(CArray const & other) : CObject(other) { appendCopies(other); }
    CArray & operator=(CArray const & other)
    {
        Copy(other);
        return *this;
    }
    ~CArray() override = default;

    int GetSize() const { return elements.size(); }
    int GetUpperBound() const { return elements.size() - 1; }
    bool IsEmpty() const { return elements.size() == 0; }

    Type const & GetAt(int index) const { return (*this)[index]; }
    Type & ElementAt(int index) { return (*this)[index]; }
    Type const & operator[](int index) const
    {
        if (!holds(index)) orvane::throwOutOfRange(index, GetSize());
        return elements[index];
    }
    // The element for writing: the array counts as possibly written from here on.
    Type & operator[](int index)
    {
        if (!holds(index)) orvane::throwOutOfRange(index, GetSize());
        lentForWriting();
        return elements[index];
    }

    // The element at the index is assigned; an index outside the array is ignored.
    void SetAt(int index, Arg element)
    {
        if (!holds(index)) return;
        lentForWriting();
        elements[index] = element;
    }
    // As SetAt, after growing the array with new elements up to the index.
    void SetAtGrow(int index, Arg element)
    {
        if (index < 0) return;
        mutating();
        if (index < GetSize()) return SetAt(index, element);
        growTo(index);
        insertCopies(index, element, 1);
    }
    // The index of the new last element, a copy.
    int Add(Arg element)
    {
        mutating();
        insertCopies(GetSize(), element, 1);
        return GetUpperBound();
    }
    // The index of the first of the copies.
    int Append(CArray const & other)
    {
        int const first = GetSize();
        mutating();
        appendCopies(other);
        return first;
    }
    void Copy(CArray const & other)
    {
        if (this == &other) return;
        RemoveAll();
        appendCopies(other);
    }
    // An index past the end grows the array up to it first. A count below one inserts nothing.
    void InsertAt(int index, Arg element, int count = 1)
    {
        if (index < 0 || count < 1) return;
        mutating();
        growTo(index);
        insertCopies(index, element, count);
    }
    void InsertAt(int index, CArray * other)
    {
        if (index < 0 || !other) return;
        CArray const copy(*other);
        mutating();
        growTo(index);
        for (int each = 0; each < copy.GetSize(); ++each) insertCopies(index + each, copy.elements[each], 1);
    }
    // Removes what of the range lies inside the array.
    void RemoveAt(int index, int count = 1)
    {
        if (!holds(index) || count < 1) return;
        int const inside = std::min(count, GetSize() - index);
        mutating();
        leaving(index, inside);
        elements.erase(index, inside);
    }
    void RemoveAll()
    {
        mutating();
        leaving(0, GetSize());
        elements.erase(0, GetSize());
        elements.freeExtra();
    }
    // The second argument, a growth step, is accepted and has no effect that could be seen.
    void SetSize(int size, int = -1)
    {
        int const wanted = std::max(size, 0);
        mutating();
        if (wanted < GetSize()) RemoveAt(wanted, GetSize() - wanted);
        else growTo(wanted);
    }
    void FreeExtra() { elements.freeExtra(); }
    void Reserve(int count) { elements.reserve(count); }

    // Range-for over elements that are only read.
    class Iterator
    {
    public:
        Iterator(CArray const & array, int index) : array(&array), index(index) {}
        Type const & operator*() const { return array->elements[index]; }
        Iterator & operator++()
        {
            ++index;
            return *this;
        }
        bool operator!=(Iterator const & other) const { return index != other.index; }

    private:
        CArray const * array;
        int index;
    };
    Iterator begin() const { return Iterator(*this, 0); }
    Iterator end() const { return Iterator(*this, GetSize()); }

    // Access for passes that derive flags and caches and cannot change a key: does not count as writing.
    Type & elementForPass(int index) { return elements[index]; }

protected:
    // What a derived array learns: an operation is about to change the array as such; elements came to
    // stand at [first, first + count); elements are about to leave from there; an element was handed
    // out for writing.
    virtual void mutating() {}
    virtual void entered(int, int) {}
    virtual void leaving(int, int) {}
    virtual void lentForWriting() {}

    bool holds(int index) const { return index >= 0 && index < GetSize(); }
    Elements & storage() { return elements; }

private:
    void growTo(int size)
    {
        int const old = GetSize();
        if (size <= old) return;
        elements.insertDefaults(old, size - old);
        entered(old, size - old);
    }
    void insertCopies(int index, Type const & element, int count)
    {
        elements.insertCopies(index, element, count);
        entered(index, count);
    }
    void appendCopies(CArray const & other)
    {
        int const first = GetSize();
        int const count = other.GetSize();
        if (count == 0) return;
        elements.reserve(first + count);
        for (int each = 0; each < count; ++each) elements.insertCopies(first + each, other.elements[each], 1);
        entered(first, count);
    }

    Elements elements;
};

// 16-bit numbers.
class CWordArray : public CDynamic<CWordArray, CArray<unsigned short, unsigned short>>
{
};

// Objects that the array does not own.
class CObArray : public CDynamic<CObArray, CArray<CObject *, CObject *>>
{
};
