#pragma once

#include "platform/archive.h"

#include <concepts>
#include <cstdint>
#include <type_traits>

class CProjectArchive;
class CTime;
class CTimeSpan;

namespace orvane
{

// What stands in a project file by fields of its own.
template <class T>
concept Serialized = requires(T & field, CProjectArchive & archive) { field.Serialize(archive); };

// Numbers that stand in a project file as their bytes.
template <class T>
concept StoredNumber = std::same_as<T, char> || std::same_as<T, short> || std::same_as<T, int> ||
                       std::same_as<T, float> || std::same_as<T, double>;

// What of a kind can hold others of its kind must not nest deeper in a file.
inline constexpr int nestingLimit = 1000;

}  // namespace orvane

// The stream of a project file, and the version of its layout. docs/file-format.md tells the layout.
//
// A class says its fields once, for both directions, in `Serialize(CProjectArchive &)`: `exchange` stores a
// field or loads it, and nothing above it asks which.
class CProjectArchive : public CArchive
{
public:
    // The layout that is written.
    static constexpr int currentVersion = 42;

    // With `useVersion` the version is stored as the first item, or loaded; otherwise it is the current one.
    CProjectArchive(CFile * file, unsigned int mode, bool useVersion);

    // Exchanges the version. Below 1 reads as 1, above the current one as the current one.
    void Serialize();
    int fileVersion() const { return version; }

    template <orvane::StoredNumber T>
    void exchange(T & number)
    {
        orvane::NumberBytes<T> bytes = orvane::toBytes(number);
        exchangeBytes(bytes.data(), bytes.size());
        number = orvane::fromBytes<T>(bytes);
    }
    // A byte; any but zero is true.
    void exchange(bool & flag)
    {
        char byte = flag;
        exchange(byte);
        flag = byte != 0;
    }
    void exchangeBytes(void * data, std::size_t size)
    {
        if (IsStoring()) write(data, size);
        else readExactly(data, size);
    }
    void exchange(CString & text);
    void exchange(CTime & time);
    void exchange(CTimeSpan & span);
    template <orvane::Serialized T>
    void exchange(T & field)
    {
        field.Serialize(*this);
    }
    template <class... Fields>
        requires(sizeof...(Fields) > 1)
    void exchange(Fields &... fields)
    {
        (exchange(fields), ...);
    }
    // A field that entered the layout with a version: in files before it takes `absent`.
    template <class Field, class Absent>
    void exchangeSince(int first, Field & field, Absent const & absent)
    {
        if (version >= first) exchange(field);
        else field = absent;
    }
    // A field that left the layout with a version: read past in files before, never written.
    template <class... Gone>
    void skipUntil(int end)
    {
        if (version < end) (skip<Gone>(), ...);
    }
    template <class Gone>
    void skip()
    {
        Gone gone{};
        exchange(gone);
    }

    // The number of elements of an array; one below zero aborts the archive.
    int exchangeCount(int count);
    // An object of that many bytes is about to be built from the file; throws beyond what the memory shall bear.
    void claimMemory(std::size_t bytes)
    {
        if (bytes > memoryBudget) refuse();
        memoryBudget -= bytes;
    }
    // Aborts, and throws.
    [[noreturn]] void refuse(int cause = CArchiveException::genericException);

    // While it lives, what is exchanged lies one level deeper. Too deep throws, in both directions: what could
    // not be read again is not written.
    class CNested
    {
    public:
        explicit CNested(CProjectArchive & archive) : archive(archive)
        {
            if (archive.depth >= orvane::nestingLimit) archive.refuse();
            ++archive.depth;
        }
        CNested(CNested const &) = delete;
        CNested & operator=(CNested const &) = delete;
        ~CNested() { --archive.depth; }

    private:
        CProjectArchive & archive;
    };

private:
    int version = currentVersion;
    int depth = 0;
    // A few times what the longest stream can hold of a real project.
    std::uint64_t memoryBudget = std::uint64_t{4} << 30;
};

// Debugging aid: marks a place in the stream, and passes the mark when loading, without looking at it.
void checkMarker(CProjectArchive & archive);

// The framework's way to say it.
template <class T>
    requires requires(CProjectArchive & archive, T & field) { archive.exchange(field); }
CProjectArchive & operator<<(CProjectArchive & archive, T const & field)
{
    // Storing only reads the field.
    if (archive.IsLoading()) throw CArchiveException(CArchiveException::readOnly);
    archive.exchange(const_cast<T &>(field));
    return archive;
}
template <class T>
    requires requires(CProjectArchive & archive, T & field) { archive.exchange(field); }
CProjectArchive & operator>>(CProjectArchive & archive, T & field)
{
    if (archive.IsStoring()) throw CArchiveException(CArchiveException::writeOnly);
    archive.exchange(field);
    return archive;
}
