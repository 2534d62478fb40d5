#pragma once

#include "platform/string.h"

// Loads the shared object of a component and has it register itself: its function DllRegisterServer is called and
// answers a negative number on failure. A name without a directory is looked for in the current one. False
// when it cannot be loaded, has no such function, or fails; the first two are told when `showErrors`.
bool registerOCX(CString const & file, bool showErrors);
