#pragma once

// Numbers for names that programs agree on, from 0xC000 to 0xFFFF: the same number for the same name as
// long as the process runs, whatever thread asks and whatever the name is for. 0 for an empty name, and
// for a new one when all numbers are taken.
unsigned RegisterClipboardFormat(char const * name);
unsigned RegisterWindowMessage(char const * name);
