#include "persistence/xml_attribute.h"

#include "values/document_array_impl.h"

void CAttribute::resetChanged()
{
    id.resetChanged();
    name.resetChanged();
    value.resetChanged();
}

void CAttribute::touch()
{
    id.touch();
    name.touch();
    value.touch();
}

void CAttribute::Serialize(CProjectArchive & archive)
{
    archive.exchange(id, name, value);
    loaded |= archive.IsLoading();
}

void CAttribute::xmlSerialize(CProjectXMLArchive & archive)
{
    archive.startEntity("Attribute");
    id.xmlSerialize(archive, "ID");
    name.xmlSerialize(archive, "attribute");
    value.xmlSerialize(archive, "value");
    archive.endEntity();
    loaded |= archive.isLoading() != 0;
}

void CAttributeArray::xmlSerialize(CProjectXMLArchive & archive)
{
    orvane::exchangeElements(archive, *this, "Attributes", "Attribute");
}
