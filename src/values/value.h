#pragma once

#include "platform/object.h"
#include "platform/project_archive.h"

class CProjectXMLArchive;

namespace orvane
{

// Whether a copy of a value counts as a change. Dates and times say yes, all others no.
enum class CopyCounts { asUnchanged, asChange };

// The two flags of every leaf value, with the rules of copying that all of them share: a copy takes
// over `valid` and starts unchanged, an assignment takes over `valid` and is a change, also when the
// two were equal. A derived class leaves its copy operations to the compiler.
template <class Self, CopyCounts copyCounts = CopyCounts::asUnchanged, class Base = CObject>
class CFlagged : public CDynamic<Self, Base>
{
public:
    // Whether the value was changed since the last resetChanged.
    bool getChanged() const { return changed; }
    // A leaf derives nothing: the same answer as getChanged.
    bool setChanged() const { return changed; }
    void resetChanged() { changed = false; }
    // Turns a copy into what an assignment would have left: flagged.
    void touch() { changed = true; }

    // Whether the value has ever been given. A value that is not valid is left out of documents.
    bool isValid() const { return valid; }
    void setValid(bool flag) { valid = flag; }

protected:
    CFlagged() = default;
    explicit CFlagged(bool valid) : valid(valid) {}
    CFlagged(CFlagged const & other)
        : CDynamic<Self, Base>(other), changed(copyCounts == CopyCounts::asChange), valid(other.valid)
    {
    }
    CFlagged & operator=(CFlagged const & other)
    {
        CDynamic<Self, Base>::operator=(other);
        valid = other.valid;
        changed = true;
        return *this;
    }
    ~CFlagged() override = default;

    // The value as files hold it: itself, then whether it is valid. Having been loaded is a change.
    template <class Value>
    void exchangeLeaf(CProjectArchive & archive, Value & value)
    {
        archive.exchange(value, valid);
        changed |= archive.IsLoading();
    }

    bool changed = false;
    bool valid = false;
};

}  // namespace orvane
