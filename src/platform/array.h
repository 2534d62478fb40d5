#pragma once

#include <algorithm>
#include <climits>
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
[[noreturn]] inline void throwTooLong()
{
    throw std::length_error("an array counts its elements in 32 bits");
}

// Elements owned one by one: they keep their addresses, flags and identities while others come and go.
template <class Type>
class COwnedElements
{
public:
    COwnedElements() = default;
    // Of copies, each as if it had been assigned.
    COwnedElements(COwnedElements const & other)
    {
        slots.reserve(other.slots.size());
        for (auto const & slot : other.slots) slots.push_back(assignedCopy(*slot));
    }
    COwnedElements(COwnedElements &&) = default;
    COwnedElements & operator=(COwnedElements &&) = default;

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
        if (count == 1) slots.insert(slots.begin() + position, assignedCopy(element));
        else insert(position, count, [&] { return assignedCopy(element); });
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
    void insertAll(int position, COwnedElements && other)
    {
        if (slots.empty()) slots = std::move(other.slots);
        else adopt(position, std::move(other.slots));
    }
    void append(std::unique_ptr<Type> element) { slots.push_back(std::move(element)); }
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
    void insertAll(int position, CPlainElements const & other)
    {
        values.insert(at(position), other.values.begin() + static_cast<std::ptrdiff_t>(other.used), other.values.end());
    }
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
// or move the elements that stay. A negative size or count counts as zero. What is put in may be an
// element of this array, or an array inside one. There is no GetData: elements are owned one by one.
template <class Type, class Arg = Type const &>
class CArray : public CObject
{
    static constexpr bool isPlain = std::is_trivially_copyable_v<Type>;
    using Elements = std::conditional_t<isPlain, orvane::CPlainElements<Type>, orvane::COwnedElements<Type>>;
    // An argument that lasts while the array grows: an owned element stays where it is, a plain one moves.
    using Lasting = std::conditional_t<isPlain, Type, Type const &>;

public:
    CArray() = default;
    CArray(CArray const & other) : CObject(other), elements(other.elements) {}
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
        if (index < GetSize()) SetAt(index, element);
        else insertCopies(index, element, 1);
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
        insertAll(first, Elements(other.elements));
        return first;
    }
    void Copy(CArray const & other)
    {
        if (this == &other) return;
        Elements copies(other.elements);
        RemoveAll();
        insertAll(0, std::move(copies));
    }
    // An index past the end grows the array up to it first.
    void InsertAt(int index, Arg element, int count = 1)
    {
        if (index < 0) return;
        mutating();
        insertCopies(index, element, std::max(count, 0));
    }
    void InsertAt(int index, CArray * other)
    {
        if (index < 0 || !other) return;
        mutating();
        insertAll(index, Elements(other->elements));
    }
    // Removes what of the range lies inside the array.
    void RemoveAt(int index, int count = 1)
    {
        if (!holds(index)) return;
        mutating();
        remove(index, std::clamp(count, 0, GetSize() - index));
    }
    void RemoveAll()
    {
        mutating();
        remove(0, GetSize());
        elements.freeExtra();
    }
    // The second argument, a growth step, is accepted and has no effect that could be seen.
    void SetSize(int size, int = -1)
    {
        int const wanted = std::max(size, 0);
        mutating();
        if (wanted > GetSize()) growTo(wanted);
        else remove(wanted, GetSize() - wanted);
    }
    void FreeExtra() { elements.freeExtra(); }
    void Reserve(int count) { elements.reserve(std::max(count, 0)); }

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

    // Appends an element that was built elsewhere.
    void take(std::unique_ptr<Type> element)
    {
        mutating();
        growFor(GetSize(), 1);
        elements.append(std::move(element));
        entered(GetUpperBound(), 1);
    }
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
    void insertCopies(int index, Lasting element, int count)
    {
        if (count == 0) return;
        growFor(index, count);
        elements.insertCopies(index, element, count);
        entered(index, count);
    }
    void insertAll(int index, Elements copies)
    {
        int const count = copies.size();
        if (count == 0) return;
        growFor(index, count);
        elements.insertAll(index, std::move(copies));
        entered(index, count);
    }
    void growFor(int index, int count)
    {
        if (count > INT_MAX - std::max(index, GetSize())) orvane::throwTooLong();
        growTo(index);
    }
    void remove(int index, int count)
    {
        leaving(index, count);
        elements.erase(index, count);
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
