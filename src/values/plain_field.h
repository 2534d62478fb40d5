#pragma once

#include <utility>

#include "platform/project_archive.h"

namespace orvane
{

// A value of a class that knows no change flags, as a field of a record: assigning to it is a change.
template <class Value>
class CPlainField
{
public:
    CPlainField() = default;
    explicit CPlainField(Value value) : value(std::move(value)) {}
    // As with leaf values, a copy starts unchanged.
    CPlainField(CPlainField const & other) : value(other.value) {}
    CPlainField & operator=(CPlainField const & other) { return *this = other.value; }
    CPlainField & operator=(Value const & other)
    {
        value = other;
        changed = true;
        return *this;
    }

    Value const & get() const { return value; }

    void Serialize(CProjectArchive & archive)
    {
        value.Serialize(archive);
        changed |= archive.IsLoading();
    }

    bool setChanged() const { return changed; }
    void resetChanged() { changed = false; }
    void touch() { changed = true; }

    friend bool operator==(CPlainField const & a, CPlainField const & b) { return a.value == b.value; }

private:
    Value value;
    bool changed = false;
};

}  // namespace orvane
