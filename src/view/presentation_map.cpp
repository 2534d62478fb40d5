#include "view/presentation_map.h"

#include "values/document_array_impl.h"

namespace orvane
{

template <class Self, class Key, class Value, Literal name>
void CPresentationMap<Self, Key, Value, name>::xmlSerialize(CProjectXMLArchive & archive)
{
    CString const item = CString(name.characters) + "Item";
    POSITION position = this->GetStartPosition();
    if (archive.isLoading()) return read(archive, item);
    writeWrapper(archive, name.characters, this->GetCount(),
                 [&](int)
                 {
                     Key key{nullID};
                     Value value;
                     this->GetNextAssoc(position, key, value);
                     archive.startEntity(item);
                     archive.out(">");
                     key.xmlSerialize(archive);
                     value.xmlSerialize(archive);
                     archive.endEntity("</" + item + ">");
                 });
}

// The identifier and the presentation of an entry arrive one after the other.
template <class Self, class Key, class Value, Literal name>
void CPresentationMap<Self, Key, Value, name>::read(CProjectXMLArchive & archive, CString const & item)
{
    if (readWrapper(archive, *this, name.characters)) return;
    if (archive.isTag(item)) readKey.clear();
    if (archive.isTag(readKey.tagName())) readKey.xmlSerialize(archive);
    if (!archive.isTag(Value::documentTag) || readKey.isNULL()) return;
    Value value;
    value.xmlSerialize(archive);
    SetAt(readKey, value);
}

}  // namespace orvane

template class orvane::CPresentationMap<CResourcePresentationMap, CResourceID, CResourcePresentation,
                                        "ResourcePresentationMap">;
template class orvane::CPresentationMap<CRiskPresentationMap, CRiskID, CRiskPresentation, "RiskPresentationMap">;
template class orvane::CPresentationMap<CTaskPresentationMap, CTaskID, CTaskPresentation, "TaskPresentationMap">;
