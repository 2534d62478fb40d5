#pragma once

#include "platform/string.h"

// Searching names. Case is that of the ASCII letters. A text counts as a whole word when no ASCII letter or
// digit stands directly beside it; an underscore separates words. After an occurrence that does not count, the
// search starts anew one byte further on, as if the subject began there. An empty text is found everywhere.

bool isStringMatch(CString const & text, CString const & subject, bool matchCase, bool wholeWord);

// Replaces the first occurrence, and begins again until there is none. What could not end, or grows beyond
// 4,096 replacements or 64 KiB, is done in one pass instead, in which what was put in is not searched. An
// empty text replaces nothing.
CString replaceSubString(CString const & subject, CString const & text, CString const & replacement, bool matchCase,
                         bool wholeWord);
