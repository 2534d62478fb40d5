#pragma once

#include "platform/string.h"

// Where the two programs keep what is theirs: "System\Client\" and "System\Server\" below the system directory of the
// settings, with a "\" at the end. The directory is made by the call. Without a system directory they lie
// below the current one.
CString getClientDirectory();
CString getServerDirectory();
