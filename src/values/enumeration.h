#pragma once

#include "platform/string.h"
#include "values/value.h"

#include <concepts>
#include <cstddef>
#include <iterator>

namespace orvane
{

// What an enumeration does with a number that it does not know, when it is assigned one.
enum class UnknownNumber { becomes, keepsValue, isStored };

// The row of one enumeration.
struct EnumerationRow
{
    // The numbers that it knows.
    int first;
    int last;
    // What a default-constructed value holds.
    int initial = 0;
    UnknownNumber onUnknown = UnknownNumber::becomes;
    int unknownBecomes = 0;
    // As what a value that holds an unknown number is read.
    int unknownReads = 0;
};

// The usual row: an unknown number becomes the fallback, and is read as it.
constexpr EnumerationRow numbers(int first, int last, int fallback, int initial = 0)
{
    return {first, last, initial, UnknownNumber::becomes, fallback, fallback};
}
// An unknown number leaves the value as it was.
constexpr EnumerationRow numbersOrKeep(int first, int last, int reads = 1)
{
    return {first, last, 0, UnknownNumber::keepsValue, 0, reads};
}

// Exchanges a number with a document, where 0 is left out. Whether it was loaded.
bool exchangeNumber(CProjectXMLArchive & archive, CString const & name, int & number);

// A value out of a short list. A member of the family derives from this (or from one of the two forms with
// texts below), declares its nested enum with explicit numbers, which stand in files and never change their
// meaning, names it `Number`, states its row as `row` and, with texts, its `texts` from the first number on,
// and takes over constructors and assignment:
//
//     class CThing : public orvane::CEnumeration<CThing>
//     {
//     public:
//         enum THING { One = 1, Two = 2 };
//         using Number = THING;
//         static constexpr orvane::EnumerationRow row = orvane::numbers(1, 2, 1);
//         using CEnumeration::CEnumeration;
//         using CEnumeration::operator=;
//     };
template <class Self>
class CEnumeration : public CFlagged<Self>
{
public:
    // The row's initial number, not valid.
    CEnumeration() : value(Self::row.initial) {}
    // Valid, unchanged.
    template <class Enum, class Complete = Self>
        requires std::same_as<Enum, typename Complete::Number>
    CEnumeration(Enum number) : CFlagged<Self>(true), value(number)
    {
    }
    CEnumeration(CEnumeration const &) = default;
    CEnumeration & operator=(CEnumeration const &) = default;
    // Takes a stored number over, by the row when it is unknown; valid and changed in any case.
    Self & operator=(int number)
    {
        constexpr EnumerationRow row = Self::row;
        if (isKnown(number) || row.onUnknown == UnknownNumber::isStored) value = number;
        else if (row.onUnknown == UnknownNumber::becomes) value = row.unknownBecomes;
        this->valid = this->changed = true;
        return static_cast<Self &>(*this);
    }

    // The number as files store it.
    int getEquivalentValue() const
    {
        bool const stands = isKnown(value) || Self::row.onUnknown == UnknownNumber::isStored;
        return stands ? value : Self::row.unknownReads;
    }

    // The stored number. Loading starts from a fresh value, so that an unknown number leaves no trace of the old.
    void Serialize(CProjectArchive & archive)
    {
        int number = getEquivalentValue();
        archive.exchange(number);
        if (archive.IsLoading()) load(number);
    }
    // The number as it stands: one that was never given is left out of documents.
    void xmlSerialize(CProjectXMLArchive & archive, CString const & name)
    {
        int number = value;
        if (exchangeNumber(archive, name, number)) load(number);
    }

    // The value alone; flags play no part.
    friend bool operator==(Self const & a, Self const & b) { return a.value == b.value; }

protected:
    ~CEnumeration() override = default;

    static constexpr bool isKnown(int number) { return number >= Self::row.first && number <= Self::row.last; }
    CString text(char const * unknown = "") const
    {
        static_assert(std::size(Self::texts) == static_cast<std::size_t>(Self::row.last - Self::row.first + 1));
        return isKnown(value) ? Self::texts[value - Self::row.first] : unknown;
    }

    int value;

private:
    void load(int number)
    {
        Self loaded;
        loaded = number;
        static_cast<Self &>(*this) = loaded;
    }
};

// An enumeration whose text, empty for an unknown number, is asked for.
template <class Self>
class CNamedEnumeration : public CEnumeration<Self>
{
public:
    using CEnumeration<Self>::CEnumeration;
    using CEnumeration<Self>::operator=;
    CString getString() const { return this->text(); }
};

// An enumeration that is its text wherever a text is wanted.
template <class Self>
class CTextEnumeration : public CEnumeration<Self>
{
public:
    using CEnumeration<Self>::CEnumeration;
    using CEnumeration<Self>::operator=;
    operator CString() const { return this->text(); }
};

}  // namespace orvane
