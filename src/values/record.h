#pragma once

#include "platform/object.h"
#include "platform/project_archive.h"

class CProjectXMLArchive;

namespace orvane
{

// What every record of the model can do, derived from its one list of fields.
//
// A record derives from CRecord<Self>, says `friend class orvane::CRecord<Self>;` and declares
// `template <class Visit> static void describe(Visit && visit);`. In its source it defines describe as
// a list `visit("name", &Self::field)` in the order of the fields, and instantiates
// `template class orvane::CRecord<Self>;` after including values/record_impl.h; its header says
// `extern template class orvane::CRecord<Self>;` behind the class. Readers of the header pay for
// declarations only.
template <class Self, class Base = CObject>
class CRecord : public CDynamic<Self, Base>
{
public:
    // Whether a field changed since the last resetChanged; current after setChanged.
    bool getChanged() const { return changed; }
    // Derives the flag from the fields. Every field is asked, so that each can derive its own.
    bool setChanged();
    void resetChanged();
    // The fields as they stand in a project file. A record whose file has another order says its own.
    void Serialize(CProjectArchive & archive);
    // Turns a copy into what an assignment would have left: every field flagged.
    void touch();

    // Field by field; flags play no part.
    friend bool operator==(Self const & a, Self const & b) { return CRecord::equal(a, b); }

protected:
    CRecord() = default;
    CRecord(CRecord const &) = default;
    CRecord & operator=(CRecord const &) = default;
    ~CRecord() override = default;

    static bool equal(Self const & a, Self const & b);

    // For records whose document has the names and the order of the list. The single values, each as an attribute of
    // its name; then the fields that stand in elements of their own. A record whose document differs says its own.
    void exchangeAttributes(CProjectXMLArchive & archive);
    void exchangeChildren(CProjectXMLArchive & archive);
    // A whole element of these: of attributes alone, or with the children. While reading, the current element is taken
    // for it, whatever its name.
    void exchangeElement(CProjectXMLArchive & archive, CString const & tag, char const * end = "/>");
    void exchangeElementWithChildren(CProjectXMLArchive & archive, CString const & tag);

    bool changed = false;

private:
    Self & self() { return static_cast<Self &>(*this); }
};

}  // namespace orvane
