#pragma once

#include <functional>
#include <memory>
#include <type_traits>

#include "platform/array.h"
#include "platform/project_xml_archive.h"
#include "platform/string.h"
#include "values/identifiers.h"
#include "values/position_index.h"

namespace orvane
{

// Three-way order of keys: negative, zero or positive.
inline int compareKeys(CIDBase const & a, CIDBase const & b) { return a.compare(&b); }
inline int compareKeys(CString const & a, CString const & b) { return a.Compare(b); }
inline int compareKeys(int a, int b) { return (a > b) - (a < b); }
template <class Key>
    requires requires(Key const & a, Key const & b) { a.compare(b); }
int compareKeys(Key const & a, Key const & b)
{
    return a.compare(b);
}

// An array of the model: elements in the order of insertion, which carries meaning, a flag that takes
// part in change tracking, and a lookup by key through an index that is brought up to date on demand.
//
// A member of the family derives from this with its element class and its key: a getter of the element,
// or std::identity{} where the elements are the keys. It adds only lookups of its own. It may extend an
// array that has a name of its own, and hold plain numbers, which have no flags.
template <class Self, class Element, auto key, class Array = CArray<Element, Element const &>>
class CTypedArray : public CDynamic<Self, Array>
{
    using Base = CDynamic<Self, Array>;

public:
    CTypedArray() = default;
    CTypedArray(CTypedArray const & other) : Base() { copyFrom(other); }
    CTypedArray & operator=(CTypedArray const & other)
    {
        if (this != &other) copyFrom(other);
        else forEachFlagged([](auto & element) { element.touch(); });
        return *this;
    }
    ~CTypedArray() override = default;

    // The array or one of its elements changed; current after setChanged.
    bool getChanged() const { return changed; }
    // ORs every element's setChanged into the flag. A change of the array itself stays flagged until
    // resetChanged.
    bool setChanged()
    {
        forEachFlagged([this](auto & element) { changed |= element.setChanged(); });
        return changed;
    }
    void resetChanged()
    {
        changed = false;
        forEachFlagged([](auto & element) { element.resetChanged(); });
    }
    // Elements of a copied array are flagged as assigned already: nothing is left to flag.
    void touch() {}

    // The number of elements, then each. Loading adds them one by one as they come, since the number is only what
    // the file says.
    void Serialize(CProjectArchive & archive)
    {
        int const count = archive.exchangeCount(this->GetSize());
        if (archive.IsStoring())
        {
            for (int each = 0; each < count; ++each) archive.exchange(this->elementForPass(each));
            return;
        }
        this->RemoveAll();
        for (int each = 0; each < count; ++each)
        {
            archive.claimMemory(sizeof(Element));
            auto element = std::make_unique<Element>();
            archive.exchange(*element);
            this->take(std::move(element));
        }
    }

    // Appends an element that `read` makes of a new one, where it stands: it keeps its address.
    template <class Read>
    void appendNew(Read const & read)
    {
        std::unique_ptr<Element> element;
        if constexpr (std::is_constructible_v<Element, NullID>) element = std::make_unique<Element>(nullID);
        else element = std::make_unique<Element>();
        read(*element);
        this->take(std::move(element));
    }

    // Equal size, and equal elements in the order of storage; flags play no part.
    friend bool operator==(Self const & a, Self const & b) { return equal(a, b); }

protected:
    using Key = std::remove_cvref_t<std::invoke_result_t<decltype(key), Element const &>>;

    static decltype(auto) keyOf(Element const & element) { return std::invoke(key, element); }

    // The position of an element with that key, or -1. With equal keys, whichever the search meets.
    int findByKey(Key const & sought) const
    {
        auto const at = [this](int position) -> decltype(auto) { return keyOf(this->GetAt(position)); };
        return index.find(
            this->GetSize(), [&](int a, int b) { return compareKeys(at(a), at(b)); },
            [&](int position) { return compareKeys(at(position), sought); });
    }
    // Assigns over the element with the same key; the index stays, as the key does. False without one.
    bool changeByKey(Element const & element)
    {
        int const position = findByKey(keyOf(element));
        if (position < 0) return false;
        this->elementForPass(position) = element;
        changed = true;
        return true;
    }

    // Whether the index is up to date, so that a lookup would sort nothing.
    bool isSorted() const { return index.covers(this->GetSize()); }

    void mutating() override { changed = true; }
    void entered(int first, int count) override
    {
        if (first + count < this->GetSize()) index.drop();
    }
    void leaving(int, int) override { index.drop(); }
    void lentForWriting() override { index.drop(); }

    // The elements of the source as assigned, and its flag.
    void copyFrom(CTypedArray const & other)
    {
        this->Copy(other);
        changed = other.changed;
    }

    // Lookups leave it alone, but for the one array that counts being sorted as a change.
    mutable bool changed = false;

private:
    template <class Visit>
    void forEachFlagged(Visit const & visit)
    {
        if constexpr (std::is_class_v<Element>)
            for (int each = 0; each < this->GetSize(); ++each) visit(this->elementForPass(each));
    }
    static bool equal(Self const & a, Self const & b)
    {
        if (a.GetSize() != b.GetSize()) return false;
        for (int each = 0; each < a.GetSize(); ++each)
            if (!(a.GetAt(each) == b.GetAt(each))) return false;
        return true;
    }

    mutable CPositionIndex index;
};

// An array whose key is an identifier.
template <class Self, class Element, auto key = &Element::getID>
class CIdentifiedArray : public CTypedArray<Self, Element, key>
{
    using Base = CTypedArray<Self, Element, key>;

public:
    // The position of an element with that identifier, or -1. A few are looked through sooner than sorted, unless
    // the identifier turns up twice.
    int findByID(typename Base::Key const & id) const
    {
        constexpr int few = 8;
        if (this->GetSize() > few) return this->findByKey(id);
        int found = -1;
        for (int position = 0; position < this->GetSize(); ++position)
        {
            if (!(Base::keyOf(this->GetAt(position)) == id)) continue;
            if (found >= 0) return this->findByKey(id);
            found = position;
        }
        return found;
    }
    // Assigns over the element with the same identifier; false when there is none.
    bool changeElement(Element const & element) { return this->changeByKey(element); }
};

// An array of identifiers.
template <class Self, class ID>
class CIDArrayOf : public CIdentifiedArray<Self, ID, std::identity{}>, public IProjectXMLTagProcessor
{
};

}  // namespace orvane
