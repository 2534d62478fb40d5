#include "persistence/replaced_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/file.h"
#include "platform/path.h"

namespace orvane
{

namespace
{

std::string directoryOf(std::string const & path)
{
    std::size_t const slash = path.rfind('/');
    return slash == path.npos ? "./" : path.substr(0, slash + 1);
}

// What forbids a file beside the target, but not writing the target itself.
bool takesNoNewFile(int error)
{
    return error == EACCES || error == EPERM || error == EROFS;
}

// Files that cannot be flushed, such as devices, have nothing to lose. 0, or what went wrong.
int flushToDisk(int handle)
{
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
}

int flushDirectory(std::string const & path)
{
    int const directory = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A directory that may be written but not read cannot be flushed; the file in it is.
    if (directory < 0) return takesNoNewFile(errno) ? 0 : errno;
    int const error = flushToDisk(directory);
    close(directory);
    return error;
}

// Gives a new file the owner and mode of the one whose place it takes.
int takeOver(int handle, struct stat const & old)
{
    mode_t mode = old.st_mode & 0777;
    // A group that cannot be given must not let another one in.
    bool const given = fchown(handle, old.st_uid, old.st_gid) == 0 || fchown(handle, uid_t(-1), old.st_gid) == 0;
    if (!given) mode &= ~mode_t{S_IRWXG};
    return fchmod(handle, mode) == 0 ? 0 : errno;
}

}  // namespace

// Makes the file beside the target, unless the target is to be written in place. 0, or what went wrong.
int CReplacedFile::create()
{
    std::string const path(nativePath(target).view());
    if (path.empty()) return ENOENT;
    // A zero byte would cut the path to the name of another file.
    if (path.find('\0') != path.npos) return ENOTDIR;
    struct stat old;
    if (lstat(path.c_str(), &old) == 0)
    {
        if (!S_ISREG(old.st_mode)) return 0;
        if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return errno;
    }
    temporary = directoryOf(path) + ".orvane-XXXXXX";
    handle = mkostemp(temporary.data(), O_CLOEXEC);
    if (handle >= 0 && newFile == NewFile::byUmask) createAgain();
    if (handle >= 0) return 0;
    temporary.clear();
    if (errno == ENOENT) return ENOTDIR;
    return takesNoNewFile(errno) ? 0 : errno;
}

// Under the name that was free, as the system makes new files.
void CReplacedFile::createAgain()
{
    close(handle);
    unlink(temporary.c_str());
    handle = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

bool CReplacedFile::open(CFile & file, CFileException * exception)
{
    int const error = handle >= 0 ? EBUSY : create();
    if (error != 0)
    {
        if (exception) *exception = CFileException(CFileException::causeOf(error), target);
        return false;
    }
    CString const path = temporary.empty() ? target : CString(temporary);
    if (file.Open(path, CFile::modeCreate | CFile::modeWrite, exception))
    {
        if (handle < 0) handle = ::open(nativePath(target), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
        file.SetFilePath(target);
        return true;
    }
    if (exception) exception->m_strFileName = target;
    discard();
    return false;
}

// 0, or what went wrong.
int CReplacedFile::finish()
{
    if (temporary.empty()) return handle < 0 ? 0 : flushToDisk(handle);
    std::string const path(nativePath(target).view());
    struct stat old;
    if (stat(path.c_str(), &old) == 0)
        if (int const error = takeOver(handle, old)) return error;
    if (int const error = flushToDisk(handle)) return error;
    if (std::rename(temporary.c_str(), path.c_str()) != 0) return errno;
    temporary.clear();
    return flushDirectory(directoryOf(path));
}

void CReplacedFile::commit()
{
    int const error = finish();
    discard();
    if (error != 0) throw CFileException(CFileException::causeOf(error), target);
}

void CReplacedFile::discard()
{
    if (!temporary.empty()) unlink(temporary.c_str());
    temporary.clear();
    if (handle >= 0) close(handle);
    handle = -1;
}

}  // namespace orvane
