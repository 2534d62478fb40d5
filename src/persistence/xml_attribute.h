#pragma once

#include "platform/project_xml_archive.h"
#include "values/identifiers.h"
#include "values/scalars.h"
#include "values/typed_array.h"

// An attribute of an element: a name and a text, as a document holds them.
class CAttribute : public CDynamic<CAttribute>, public IProjectXMLTagProcessor
{
public:
    CAttribute() = default;
    CAttribute(CString const & name, CString const & value) : name(name), value(value) {}

    CAttributeID const & getID() const { return id; }
    CProjectString const & getName() const { return name; }
    CProjectString const & getValue() const { return value; }
    // Whether it came out of a file.
    bool isLoaded() const { return loaded; }

    // As with any field of the model: whether a part was changed since the last resetChanged.
    bool setChanged() const { return id.getChanged() || name.getChanged() || value.getChanged(); }
    void resetChanged();
    void touch();

    void Serialize(CProjectArchive & archive);
    void xmlSerialize(CProjectXMLArchive & archive) override;

    friend bool operator==(CAttribute const & a, CAttribute const & b)
    {
        return a.id == b.id && a.name == b.name && a.value == b.value;
    }

private:
    CProjectString name;
    CProjectString value;
    CAttributeID id;
    bool loaded = false;
};

// Attributes in the order of the document.
class CAttributeArray : public orvane::CIdentifiedArray<CAttributeArray, CAttribute>, public IProjectXMLTagProcessor
{
public:
    // As Add of a new attribute, without the copy.
    void add(CString const & name, CString const & value) { take(std::make_unique<CAttribute>(name, value)); }

    void xmlSerialize(CProjectXMLArchive & archive) override;
};
