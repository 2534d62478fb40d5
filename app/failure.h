#pragma once

#include <string>

class CArchiveException;
class CFileException;

namespace orvane::app
{

// What went wrong with a file, as a sentence that begins with the file.
std::string describe(CFileException const & failure);
std::string describe(CArchiveException const & failure, std::string const & path = "");

// The whole content of a file; "-" is the standard input. Refuses one that cannot be read, or is larger than 1 GiB.
std::string readText(std::string const & path);
// Replaces the file by the text, whole or not at all; "-" is the standard output.
void writeText(std::string const & path, std::string const & text);

}  // namespace orvane::app
