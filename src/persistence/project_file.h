#pragma once

#include <functional>

#include "platform/project_archive.h"

class CFileException;

namespace orvane
{

// A project file, or a file of one part of a project: a gzip file that holds the version and then what `exchange`
// stores or loads.
//
// Both answer false, with the reason, when the file cannot be opened. What goes wrong later throws, and the files
// are closed. A file that is stored replaces the old one only when it is whole and on the disk.
using Exchange = std::function<void(CProjectArchive &)>;
bool storeProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange);
bool loadProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange);

}  // namespace orvane
