#pragma once

#include "platform/string.h"

// Whether the file can be opened for reading; a directory cannot.
bool fileExists(CString const & path);

// Makes the directory with all that lead to it. Who needs it finds out whether that went well. Nothing is made
// for a path that is longer than the system takes, or holds a zero byte.
void makeDirectory(CString const & path);

// The whole file, byte for byte. False, with `text` left alone, when it cannot be opened or read, or has 2 GiB or
// more. True for an empty file, which leaves `text` alone too.
bool readStringFromFile(CString const & fileName, CString & text);

// Makes the file if it is missing, and replaces what it held. False when it cannot be opened or the text could not
// be written.
bool writeStringToFile(CString const & fileName, CString const & text);
