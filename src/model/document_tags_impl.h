#pragma once

#include <initializer_list>

#include "platform/project_xml_archive.h"

namespace orvane
{

// Whether an element of another name is being read; false while storing.
inline bool readsAnother(CProjectXMLArchive const & archive, char const * tag)
{
    return archive.isLoading() && !archive.isTag(tag);
}

// Whether an element of one of the names is being read.
inline bool readsAny(CProjectXMLArchive const & archive, std::initializer_list<char const *> tags)
{
    for (char const * tag : tags)
        if (archive.isTag(tag)) return true;
    return false;
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
