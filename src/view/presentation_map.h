#pragma once

#include <algorithm>

#include "platform/map.h"
#include "platform/project_xml_archive.h"
#include "values/identifiers.h"
#include "view/task_presentation.h"
#include "view/tree_presentation.h"

namespace orvane
{

// How each object of a kind is shown, under the object's identifier, with a flag that takes part in
// change tracking. A member of the family derives from this with its key and value classes and its name in
// documents.
template <class Self, class Key, class Value, Literal name>
class CPresentationMap : public CDynamic<Self, CMap<Key, Key const &, Value, Value const &>>,
                         public IProjectXMLTagProcessor
{
    using Base = CDynamic<Self, CMap<Key, Key const &, Value, Value const &>>;

public:
    CPresentationMap() = default;
    CPresentationMap(CPresentationMap const &) = default;
    CPresentationMap & operator=(CPresentationMap const & other)
    {
        Base::operator=(other);
        changed = true;
        return *this;
    }

    // Whether an entry came, went or was written. Entries are not asked, so that a pass over many costs nothing.
    bool getChanged() const { return changed; }
    bool setChanged() const { return changed; }
    void resetChanged() { changed = false; }
    void touch() { changed = true; }

    // The number of entries, then the key and the value of each in the order of a walk.
    void Serialize(CProjectArchive & archive)
    {
        int const count = archive.exchangeCount(this->GetCount());
        if (archive.IsStoring())
        {
            this->forEach([&](Key const & key, Value const & value) { archive << key << value; });
            return;
        }
        RemoveAll();
        // Not more than what may well come, whatever the file says.
        this->Reserve(std::min(count, 1 << 16));
        for (int each = 0; each < count; ++each)
        {
            archive.claimMemory(sizeof(Key) + sizeof(Value));
            Key key{nullID};
            Value value;
            archive.exchange(key, value);
            SetAt(key, value);
        }
    }

    // An element for each entry, with the identifier's element and the presentation's in it. An entry that is read
    // without an identifier is dropped.
    void xmlSerialize(CProjectXMLArchive & archive) override;

    // Enters the value, or puts it in the place of the one that is there.
    void SetAt(Key const & key, Value const & value)
    {
        changed = true;
        Base::SetAt(key, value);
    }
    // Entries are written through SetAt, so that the flag tells.
    Value const * find(Key const & key) const { return Base::find(key); }
    Value & operator[](Key const & key) = delete;
    // False when there was no such entry; a change all the same.
    bool RemoveKey(Key const & key)
    {
        changed = true;
        return Base::RemoveKey(key);
    }
    void RemoveAll()
    {
        changed = true;
        Base::RemoveAll();
    }
    template <class ForEachKey>
    void refill(ForEachKey const & forEachKey)
    {
        changed = true;
        Base::refill(forEachKey);
    }

    // The same entries, whatever their order.
    friend bool operator==(Self const & a, Self const & b) { return equal(a, b); }

private:
    static bool equal(Self const & a, Self const & b)
    {
        bool same = a.GetCount() == b.GetCount();
        a.forEach([&](Key const & key, Value const & value) {
            Value const * const other = same ? b.find(key) : nullptr;
            same = other && *other == value;
        });
        return same;
    }

    void read(CProjectXMLArchive & archive, CString const & item);

    bool changed = false;
    // Of the entry that is being read from a document.
    Key readKey{nullID};
};

}  // namespace orvane

// clang-format off
class CResourcePresentationMap : public orvane::CPresentationMap<CResourcePresentationMap, CResourceID,
                                                                 CResourcePresentation, "ResourcePresentationMap"> {};
class CRiskPresentationMap
    : public orvane::CPresentationMap<CRiskPresentationMap, CRiskID, CRiskPresentation, "RiskPresentationMap"> {};
class CTaskPresentationMap
    : public orvane::CPresentationMap<CTaskPresentationMap, CTaskID, CTaskPresentation, "TaskPresentationMap"> {};
// clang-format on
