#include "values/string_array.h"

#include "values/document_array_impl.h"

void CProjectStringArray::xmlSerialize(CProjectXMLArchive & archive, CString const & name)
{
    if (orvane::readWrapper(archive, *this, documentTag) || !archive.isStoring() || IsEmpty()) return;
    orvane::writeWrapper(archive, name, GetSize(),
                         [&](int each)
                         {
                             archive.startEntity("ProjectString");
                             elementForPass(each).xmlSerialize(archive, "value");
                             archive.endEntity();
                         });
}
