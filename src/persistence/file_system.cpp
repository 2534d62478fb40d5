#include "persistence/file_system.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <new>
#include <system_error>

#include "platform/file.h"
#include "platform/path.h"

namespace
{

constexpr unsigned int copyBufferSize = 10240;

std::filesystem::path systemPath(CString const & path)
{
    return orvane::nativePath(path).view();
}

// A link counts, wherever it leads.
bool somethingStandsAt(CString const & path)
{
    std::error_code failure;
    return std::filesystem::exists(std::filesystem::symlink_status(systemPath(path), failure));
}

bool isReadable(CString const & path)
{
    CFile file;
    return file.Open(path, CFile::modeRead);
}

bool isSameFile(CString const & a, CString const & b)
{
    std::error_code failure;
    return std::filesystem::equivalent(systemPath(a), systemPath(b), failure);
}

// Throws what the files throw. False when the source ends before its length.
bool copyBytes(CFile & from, CFile & to, unsigned char * buffer, unsigned int bufferSize)
{
    std::int64_t left = from.GetLength();
    while (left > 0)
    {
        unsigned int const got = from.Read(buffer, static_cast<unsigned int>(std::min<std::int64_t>(left, bufferSize)));
        if (got == 0) return false;
        to.Write(buffer, got);
        left -= got;
    }
    // Closing tells of what the system could not keep after all.
    to.Close();
    return true;
}

}  // namespace

bool SECFileSystem::copyFile(CString const & source, CString const & destination, unsigned int bufferSize) const
{
    std::unique_ptr<unsigned char[]> const buffer(new (std::nothrow) unsigned char[bufferSize]);
    if (!buffer || bufferSize == 0 || somethingStandsAt(destination)) return false;
    CFile from;
    CFile to;
    if (!from.Open(source, CFile::modeRead)) return false;
    if (!to.Open(destination, CFile::modeCreate | CFile::modeWrite)) return false;
    try
    {
        if (copyBytes(from, to, buffer.get(), bufferSize)) return true;
    }
    catch (CFileException const &)
    {
        // Told by the answer, like a source that ends early.
    }
    unlink(orvane::nativePath(destination));
    return false;
}

bool copyFile(CString const & source, CString const & destination, bool overwrite)
{
    // What stands behind a zero byte is lost on the system: another file would be removed.
    if (destination.Find('\0') >= 0) return false;
    if (!isReadable(source) || isSameFile(source, destination)) return false;
    if (somethingStandsAt(destination))
    {
        if (!overwrite) return false;
        // Where this fails, the copying finds the destination there.
        unlink(orvane::nativePath(destination));
    }
    return SECFileSystem().copyFile(source, destination, copyBufferSize);
}
