#pragma once

#include "platform/file.h"

// How errors of files are told to the user.

// A sentence for the cause; empty for a cause that is none.
CString getErrorDescription(CFileException const & exception);

// Warns that a file could not be opened, read or written, with a word for the cause.
void reportIOError(CString const & fileName, CFileException & exception);
