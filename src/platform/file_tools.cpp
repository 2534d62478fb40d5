#include "platform/file_tools.h"

#include <array>
#include <climits>
#include <string>

#include <sys/stat.h>

#include "platform/file.h"
#include "platform/path.h"

namespace
{

bool readWholeFile(CFile & file, std::string & bytes)
{
    std::array<char, 1 << 16> piece;
    while (unsigned const count = file.Read(piece.data(), piece.size()))
    {
        if (bytes.size() + count > INT_MAX) return false;
        bytes.append(piece.data(), count);
    }
    return true;
}

// What a file operation answers; false when it ends in an exception of the file.
template <class Operation>
bool succeeds(Operation const & operation)
{
    try
    {
        return operation();
    }
    catch (CFileException const &)
    {
        return false;
    }
}

}  // namespace

bool fileExists(CString const & path)
{
    return CFile().Open(path, CFile::modeRead);
}

void makeDirectory(CString const & path)
{
    constexpr mode_t everyone = 0777;
    CString const native = orvane::nativePath(path);
    if (native.GetLength() >= PATH_MAX || native.Find('\0') >= 0) return;
    for (int end = native.Find('/', 1); end >= 0; end = native.Find('/', end + 1)) mkdir(native.Left(end), everyone);
    mkdir(native, everyone);
}

bool readStringFromFile(CString const & fileName, CString & text)
{
    CFile file;
    std::string bytes;
    if (!file.Open(fileName, CFile::modeRead) || !succeeds([&] { return readWholeFile(file, bytes); })) return false;
    if (!bytes.empty()) text = CString(bytes);
    return true;
}

bool writeStringToFile(CString const & fileName, CString const & text)
{
    CFile file;
    if (!file.Open(fileName, CFile::modeCreate | CFile::modeWrite)) return false;
    return succeeds(
        [&]
        {
            file.Write(text, static_cast<unsigned>(text.GetLength()));
            file.Close();
            return true;
        });
}
