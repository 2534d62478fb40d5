#pragma once

#include "app/verify/byte_source.h"
#include "app/verify/file_check.h"

// Each reads the content to its end and adds to the check what it finds: what the file is, where that shows only then,
// what it counts, and what is wrong.
namespace orvane::app
{

// A document that a parser accepts.
void checkXml(ByteSource & source, FileCheck & check);
// The document of a project, whose root bears a name that no parser accepts.
void checkProjectDocument(ByteSource & source, FileCheck & check);
// One value, or lines of one each.
void checkJson(ByteSource & source, FileCheck & check);
void checkCsv(ByteSource & source, FileCheck & check, char separator);

}  // namespace orvane::app
