#pragma once

#include "platform/project_xml_archive.h"

namespace orvane
{

// An array's element: "<Tasks/>" when it is empty, otherwise a line, what `write` writes for each of `count` elements
// one level deeper, and a line.
template <class Write>
void writeWrapper(CProjectXMLArchive & archive, CString const & wrapper, int count, Write const & write)
{
    if (count == 0) return archive.out("<" + wrapper + "/>");
    archive.out("<" + wrapper + ">");
    archive.indent();
    for (int each = 0; each < count; ++each) write(each);
    archive.undent();
    archive.out("</" + wrapper + ">");
}

// Whether the current element is the array's own, which empties it and makes it the tag processor.
template <class Array>
bool readWrapper(CProjectXMLArchive & archive, Array & array, char const * wrapper)
{
    if (!archive.isLoading() || !archive.isTag(wrapper)) return false;
    array.RemoveAll();
    archive.setTagProcessor(&array);
    return true;
}

// Appends what the current element holds, if it has that name; null is no name. It is read where it comes to stand,
// so that its children find it there.
template <class Array>
void readElement(CProjectXMLArchive & archive, Array & array, char const * element)
{
    if (!archive.isLoading() || !element || !archive.isTag(element)) return;
    array.appendNew([&](auto & loaded) { loaded.xmlSerialize(archive); });
}

// An array whose elements write elements of their own.
template <class Array>
void exchangeElements(CProjectXMLArchive & archive, Array & array, char const * wrapper, char const * element)
{
    if (readWrapper(archive, array, wrapper)) return;
    readElement(archive, array, element);
    if (!archive.isStoring()) return;
    writeWrapper(archive, wrapper, array.GetSize(),
                 [&](int each) { array.elementForPass(each).xmlSerialize(archive); });
}

// An array whose elements stand as bare lines `name = "..."` inside the wrapper. A reader sees no attributes in them:
// only the wrapper is read.
template <class Array>
void exchangeLines(CProjectXMLArchive & archive, Array & array, char const * wrapper, CString const & name)
{
    if (readWrapper(archive, array, wrapper) || !archive.isStoring()) return;
    writeWrapper(archive, wrapper, array.GetSize(),
                 [&](int each) { array.elementForPass(each).xmlSerialize(archive, name); });
}

// An owned array as an attribute tells of it: none, or an empty one that takes the elements to come. Does nothing while
// storing, for what is written stands without that attribute.
template <class SubItems>
void readOwnedArray(CProjectXMLArchive & archive, SubItems & items, char const * name)
{
    if (!archive.isLoading()) return;
    bool exists = false;
    archive.attribute(name, exists, false);
    items = SubItems();
    if (exists) archive.setTagProcessor(&items.make());
}

}  // namespace orvane
