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
//
// What is written before every action and soon replaced is packed in less time, into more bytes.
enum class Packing { tight, quick };
using Exchange = std::function<void(CProjectArchive &)>;
bool storeProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange,
                      Packing packing = Packing::tight);
bool loadProjectFile(CString const & fileName, CFileException & failure, Exchange const & exchange);

}  // namespace orvane
