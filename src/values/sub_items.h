#pragma once

#include <memory>

#include "platform/project_archive.h"

class CProjectXMLArchive;

namespace orvane
{

// Whether an array that became empty lives on in a copy of its record.
enum class Empty { goes, stays };

// An array that a record owns and that exists only once it holds something: null for a leaf. A copy is
// deep, and is null when the source is null or, unless it stays, empty. Two are equal when both are null,
// or neither and their arrays are equal. Records that hold one need no copy operations of their own.
template <class Array, Empty empty = Empty::goes>
class CSubItems
{
public:
    CSubItems() = default;
    CSubItems(CSubItems const & other) : items(copyOf(other)) {}
    // Copies first: the source may lie inside what goes.
    CSubItems & operator=(CSubItems const & other)
    {
        items = copyOf(other);
        return *this;
    }

    Array * get() { return items.get(); }
    Array const * get() const { return items.get(); }
    explicit operator bool() const { return items != nullptr; }

    // The array for adding to, created when there is none yet.
    Array & make()
    {
        if (!items) items = std::make_unique<Array>();
        return *items;
    }
    void assign(Array const & array) { items = array.IsEmpty() ? nullptr : std::make_unique<Array>(array); }
    // Turns an empty array into none; whether it did.
    bool deleteIfEmpty()
    {
        bool const drops = items && items->IsEmpty();
        if (drops) items.reset();
        return drops;
    }

    // Whether there is an array, then the array.
    void Serialize(CProjectArchive & archive)
    {
        bool exists = items != nullptr;
        archive.exchange(exists);
        if (archive.IsLoading()) items = exists ? std::make_unique<Array>() : nullptr;
        if (!exists) return;
        CProjectArchive::CNested const nested(archive);
        archive.exchange(*items);
    }

    // The array, when there is one.
    void xmlSerialize(CProjectXMLArchive & archive)
        requires requires(Array & array) { array.xmlSerialize(archive); }
    {
        if (items) items->xmlSerialize(archive);
    }

    bool setChanged() { return items && items->setChanged(); }
    void resetChanged()
    {
        if (items) items->resetChanged();
    }
    // As with any array, a copy has flagged its elements already.
    void touch() {}
    friend bool operator==(CSubItems const & a, CSubItems const & b)
    {
        return !a.items || !b.items ? !a.items && !b.items : *a.items == *b.items;
    }

private:
    static std::unique_ptr<Array> copyOf(CSubItems const & other)
    {
        bool const lives = other.items && (empty == Empty::stays || !other.items->IsEmpty());
        return lives ? std::make_unique<Array>(*other.items) : nullptr;
    }

    std::unique_ptr<Array> items;
};

}  // namespace orvane
