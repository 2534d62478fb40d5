#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/object.h"
#include "platform/string.h"

namespace orvane
{

// The framework's hash over the bytes of a key, which orders the chains of a map: h = h * 33 + byte.
inline std::uint32_t chainHash(std::string_view bytes)
{
    std::uint32_t hash = 0;
    for (char const byte : bytes) hash = hash * 33 + static_cast<unsigned char>(byte);
    return hash;
}

// The bytes of a key. A key class that is no text says them in a member keyBytes().
inline std::string_view keyBytes(CString const & key)
{
    return key.view();
}
inline std::string_view keyBytes(char const * key)
{
    return key ? key : "";
}
template <class Key>
    requires requires(Key const & key) { key.keyBytes(); }
std::string_view keyBytes(Key const & key)
{
    return key.keyBytes();
}

}  // namespace orvane

// Where a walk over a map stands; null before the first and after the last entry.
using POSITION = void *;

// The hash map of the framework. A walk visits 17 chains, each with its newest entry first, as the
// files show them; entries are found in constant time through an index beside the chains.
template <class Key, class ArgKey, class Value, class ArgValue>
class CMap : public CObject
{
public:
    // The block size of the framework's allocator is accepted and has no effect.
    explicit CMap(int = 10) {}
    CMap(CMap const & other) : CObject(other) { copyEntries(other); }
    CMap & operator=(CMap const & other)
    {
        if (this == &other) return *this;
        RemoveAll();
        copyEntries(other);
        return *this;
    }
    ~CMap() override { RemoveAll(); }

    int GetCount() const { return static_cast<int>(index.size()); }
    bool IsEmpty() const { return index.empty(); }
    std::size_t GetHashTableSize() const { return chains.size(); }
    // Another number of chains, while the map is empty. It changes the order of walks and nothing else.
    void InitHashTable(unsigned int size, bool = true)
    {
        if (IsEmpty() && size > 0) chains.assign(size, nullptr);
    }

    // The value under the key, or null. The pointer holds until the entry is removed.
    Value * find(ArgKey key)
    {
        auto const found = index.find(orvane::keyBytes(key));
        return found == index.end() ? nullptr : &(*found)->value;
    }
    Value const * find(ArgKey key) const { return const_cast<CMap *>(this)->find(key); }
    // Copies the value under the key out; false and untouched when there is none.
    bool Lookup(ArgKey key, Value & value) const
    {
        Value const * const found = find(key);
        if (found) value = *found;
        return found != nullptr;
    }
    // The value under the key, entered with a default value when it is new.
    Value & operator[](ArgKey key)
    {
        Value * const found = find(key);
        return found ? *found : enter(key)->value;
    }
    void SetAt(ArgKey key, ArgValue value) { (*this)[key] = value; }
    // False when there was no such entry.
    bool RemoveKey(ArgKey key)
    {
        auto const found = index.find(orvane::keyBytes(key));
        if (found == index.end()) return false;
        std::unique_ptr<Entry> const entry(*found);
        index.erase(found);
        unchain(*entry);
        return true;
    }
    void RemoveAll()
    {
        for (Entry * const entry : index) delete entry;
        index.clear();
        std::ranges::fill(chains, nullptr);
    }
    void Reserve(int count) { index.reserve(static_cast<std::size_t>(std::max(count, 0))); }
    // Makes the map what it would be if it were emptied and filled anew with the keys that `forEachKey(enter)` names,
    // in that order: each with the value that it had, or with a default one.
    template <class ForEachKey>
    void refill(ForEachKey const & forEachKey)
    {
        for (Entry * const entry : index) entry->chain = unchained;
        std::ranges::fill(chains, nullptr);
        std::size_t named = 0;
        forEachKey([&](ArgKey key) {
            auto const found = index.find(orvane::keyBytes(key));
            if (found == index.end()) enter(key);
            else if ((*found)->chain == unchained) putFirst(**found);
            else return;
            ++named;
        });
        if (named < index.size()) dropUnchained();
    }

    POSITION GetStartPosition() const { return firstFrom(0); }
    // Copies the entry at the position out and moves the position to the next, or to null. The entry may
    // be removed then. At null nothing happens.
    void GetNextAssoc(POSITION & position, Key & key, Value & value) const
    {
        Entry * const entry = static_cast<Entry *>(position);
        if (!entry) return;
        key = entry->key;
        value = entry->value;
        position = entry->next ? entry->next : firstFrom(entry->chain + 1);
    }
    // Calls visit(key, value) for every entry in the order of a walk.
    template <class Visit>
    void forEach(Visit const & visit) const
    {
        for (Entry * chain : chains)
            for (Entry * entry = chain; entry; entry = entry->next) visit(entry->key, entry->value);
    }

private:
    static constexpr std::size_t unchained = static_cast<std::size_t>(-1);
    struct Entry
    {
        Key key;
        Value value;
        std::size_t chain;
        Entry * next = nullptr;
        Entry * previous = nullptr;
    };
    struct Hash
    {
        using is_transparent = void;
        std::size_t operator()(Entry const * entry) const { return (*this)(orvane::keyBytes(entry->key)); }
        std::size_t operator()(std::string_view bytes) const
        {
            // Identifiers are random already.
            std::uint64_t halves[2];
            if (bytes.size() != sizeof halves) return std::hash<std::string_view>()(bytes);
            std::memcpy(halves, bytes.data(), sizeof halves);
            return static_cast<std::size_t>(halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15));
        }
    };
    struct Equal
    {
        using is_transparent = void;
        bool operator()(Entry const * a, Entry const * b) const { return a == b; }
        bool operator()(std::string_view bytes, Entry const * entry) const
        {
            return bytes == orvane::keyBytes(entry->key);
        }
        bool operator()(Entry const * entry, std::string_view bytes) const { return (*this)(bytes, entry); }
    };

    Entry * enter(ArgKey key)
    {
        auto entry = std::unique_ptr<Entry>(new Entry{Key(key), Value(), unchained});
        index.insert(entry.get());
        putFirst(*entry);
        return entry.release();
    }
    void putFirst(Entry & entry)
    {
        entry.chain = orvane::chainHash(orvane::keyBytes(entry.key)) % chains.size();
        Entry *& first = chains[entry.chain];
        entry.next = std::exchange(first, &entry);
        entry.previous = nullptr;
        if (entry.next) entry.next->previous = &entry;
    }
    void dropUnchained()
    {
        std::vector<Entry *> gone;
        std::ranges::copy_if(index, std::back_inserter(gone), [](Entry const * entry) { return entry->chain == unchained; });
        for (Entry * const entry : gone)
        {
            index.erase(entry);
            delete entry;
        }
    }
    void unchain(Entry & entry)
    {
        (entry.previous ? entry.previous->next : chains[entry.chain]) = entry.next;
        if (entry.next) entry.next->previous = entry.previous;
    }
    Entry * firstFrom(std::size_t chain) const
    {
        while (chain < chains.size() && !chains[chain]) ++chain;
        return chain < chains.size() ? chains[chain] : nullptr;
    }
    // In each chain from the oldest to the newest, so that the copy is walked in the same order.
    void copyEntries(CMap const & other)
    {
        chains.assign(other.chains.size(), nullptr);
        for (Entry * entry : other.chains)
        {
            while (entry && entry->next) entry = entry->next;
            for (; entry; entry = entry->previous) enter(entry->key)->value = entry->value;
        }
    }

    std::vector<Entry *> chains = std::vector<Entry *>(17);
    std::unordered_set<Entry *, Hash, Equal> index;
};

// Text to object, the objects not owned.
class CMapStringToOb : public CDynamic<CMapStringToOb, CMap<CString, char const *, CObject *, CObject *>>
{
public:
    using CDynamic::CDynamic;
};

// A map of pointers whose values are all of one class.
template <class Base, class Key, class Value>
class CTypedPtrMap : public Base
{
public:
    using Base::Base;

    bool Lookup(char const * key, Value & value) const
    {
        CObject * const * const found = Base::find(key);
        if (found) value = static_cast<Value>(*found);
        return found != nullptr;
    }
    void SetAt(char const * key, Value value) { Base::SetAt(key, value); }
    void GetNextAssoc(POSITION & position, Key & key, Value & value) const
    {
        if (!position) return;
        CObject * object = nullptr;
        Base::GetNextAssoc(position, key, object);
        value = static_cast<Value>(object);
    }
};
