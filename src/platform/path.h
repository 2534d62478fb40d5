#pragma once

#include "platform/string.h"

// Paths. In texts their levels are separated by "\", as they stand in settings and in files; what is already in the
// platform's form is taken as well.

namespace orvane
{

// The path as the system takes it: every "\" is the platform's separator. Every call that reaches the file
// system takes its path through this function.
CString nativePath(CString const & path);

}  // namespace orvane

// The system's temporary directory, with a separator at its end: what the environment names (TMPDIR) if that is
// a directory, otherwise "/tmp/".
CString getTempPath();

// An extension is what follows the last point of a text, wherever that stands: "a.b.prj" ends in ".prj", and
// "plans.old\site" in ".old\site".

// From the last point on, the point included; empty when there is none.
CString getExtension(CString const & path);
// Appends a point and the extension, whatever the text ends with.
void setExtension(CString & path, CString const & extension);
// Cuts the text at its last point, if it has one.
void removeExtension(CString & path);
