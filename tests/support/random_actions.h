#pragma once

#include <random>
#include <string>

#include "model/project.h"
#include "platform/file.h"

namespace orvane
{

// One user action on the project, through the rules: rows and links, companies with resources, risks, costs, users,
// filters, calendars, the site, progress, selection. What the rules refuse counts as one too.
void actAtRandom(CProject & project, std::mt19937 & random);

// The uncompressed stream of an object, and what a stream loads into; false, and the object partly replaced, when it
// is refused.
template <class Object>
std::string streamOf(Object & object)
{
    CMemFile file;
    CProjectArchive archive(&file, CArchive::store, true);
    object.Serialize(archive);
    archive.Close();
    std::string stream(static_cast<std::size_t>(file.GetLength()), '\0');
    file.Seek(0, CFile::begin);
    file.Read(stream.data(), static_cast<unsigned int>(stream.size()));
    return stream;
}
template <class Object>
bool loadStream(Object & object, std::string stream)
{
    CMemFile file;
    file.Attach(reinterpret_cast<unsigned char *>(stream.data()), stream.size());
    try
    {
        CProjectArchive archive(&file, CArchive::load, true);
        object.Serialize(archive);
        return true;
    }
    catch (CArchiveException const &)
    {
        return false;
    }
}

}  // namespace orvane
