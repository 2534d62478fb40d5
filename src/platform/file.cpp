#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <span>

#include "platform/path.h"

// ---- CFileException -------------------------------------------------------------------------------

int CFileException::causeOf(int systemError)
{
    switch (systemError)
    {
        case 0: return none;
        case ENOENT: return fileNotFound;
        case ENOTDIR:
        case ENAMETOOLONG: return badPath;
        case EMFILE:
        case ENFILE: return tooManyOpenFiles;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ELOOP:
        case ENXIO:
        case ETXTBSY: return accessDenied;
        case EBADF: return invalidFile;
        case ESPIPE: return badSeek;
        case EIO: return hardIO;
        case EBUSY: return sharingViolation;
        case EDEADLK:
        case ENOLCK: return lockViolation;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return diskFull;
        default: return genericException;
    }
}

// ---- CFile ----------------------------------------------------------------------------------------

namespace
{

// What a call of the system answers once no signal interrupts it.
template <class Call>
auto uninterrupted(Call && call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

int systemFlags(unsigned int flags)
{
    // Opening does not wait for the other end of a pipe.
    int result = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    if (flags & CFile::modeReadWrite) result |= O_RDWR;
    else result |= flags & CFile::modeWrite ? O_WRONLY : O_RDONLY;
    if (flags & CFile::modeCreate) result |= O_CREAT;
    if (flags & CFile::modeOwn) result |= O_NOFOLLOW;
    return result;
}

// 0, or the error that forbids the file.
int refusal(struct stat const & status, unsigned int flags)
{
    if (S_ISDIR(status.st_mode)) return EISDIR;
    bool const own = S_ISREG(status.st_mode) && status.st_uid == geteuid() && status.st_nlink == 1;
    return flags & CFile::modeOwn && !own ? EACCES : 0;
}

// Makes an opened handle what its flags ask for. 0, or what went wrong.
int prepare(int handle, unsigned int flags)
{
    struct stat status;
    if (fstat(handle, &status) != 0) return errno;
    if (int const error = refusal(status, flags)) return error;
    // From here on, waiting is right.
    if (!S_ISREG(status.st_mode)) fcntl(handle, F_SETFL, fcntl(handle, F_GETFL) & ~O_NONBLOCK);
    if (flags & CFile::modeOwn && (status.st_mode & 077) != 0 && fchmod(handle, 0600) != 0) return errno;
    bool const kept = !(flags & CFile::modeCreate) || flags & CFile::modeNoTruncate || !(flags & CFile::modeAccess);
    // Not emptied before it is known to be the right file, nor when it is empty: some file systems would then bring
    // it to the disk when it is closed, which takes milliseconds.
    return !kept && S_ISREG(status.st_mode) && status.st_size > 0 && ftruncate(handle, 0) != 0 ? errno : 0;
}

}  // namespace

CFile::CFile(CString const & path, unsigned int flags)
{
    CFileException exception;
    if (!CFile::Open(path, flags, &exception)) throw exception;
}

CFile::~CFile()
{
    CFile::Abort();
}

void CFile::fail(int systemError) const
{
    throw CFileException(CFileException::causeOf(systemError), filePath);
}

// A handle, or an error number below zero.
int CFile::openHandle(CString const & path, unsigned int flags)
{
    // A zero byte would cut the path to the name of another file.
    if (path.Find('\0') >= 0) return -ENOTDIR;
    CString const native = orvane::nativePath(path);
    mode_t const mode = flags & modeOwn ? 0600 : 0666;
    int const opened = uninterrupted([&] { return open(native, systemFlags(flags), mode); });
    // Where the file may be made, it is the way to it that is missing.
    if (opened < 0) return errno == ENOENT && flags & modeCreate && !native.IsEmpty() ? -ENOTDIR : -errno;
    int const error = prepare(opened, flags);
    if (error == 0) return opened;
    close(opened);
    return -error;
}

bool CFile::Open(CString const & path, unsigned int flags, CFileException * exception)
{
    int const opened = handle >= 0 ? -EBUSY : openHandle(path, flags);
    if (opened < 0)
    {
        if (exception) *exception = CFileException(CFileException::causeOf(-opened), path);
        return false;
    }
    handle = opened;
    filePath = path;
    return true;
}

unsigned int CFile::Read(void * buffer, unsigned int count)
{
    auto * const to = static_cast<unsigned char *>(buffer);
    unsigned int done = 0;
    while (done < count)
    {
        ssize_t const got = uninterrupted([&] { return read(handle, to + done, count - done); });
        if (got < 0) fail(errno);
        if (got == 0) break;
        done += static_cast<unsigned int>(got);
    }
    return done;
}

void CFile::Write(void const * buffer, unsigned int count)
{
    if (handle < 0) fail(EBADF);
    auto const * from = static_cast<unsigned char const *>(buffer);
    while (count > 0)
    {
        ssize_t const put = uninterrupted([&] { return write(handle, from, count); });
        if (put <= 0) fail(put < 0 ? errno : ENOSPC);
        from += put;
        count -= static_cast<unsigned int>(put);
    }
}

std::int64_t CFile::Seek(std::int64_t offset, unsigned int from)
{
    static constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    off_t const position = from < std::size(origins) ? lseek(handle, offset, origins[from]) : -1;
    if (handle < 0) fail(EBADF);
    if (position < 0) throw CFileException(CFileException::badSeek, filePath);
    return position;
}

std::int64_t CFile::GetPosition() const
{
    off_t const position = lseek(handle, 0, SEEK_CUR);
    if (position < 0) fail(errno);
    return position;
}

std::int64_t CFile::GetLength() const
{
    struct stat status;
    if (fstat(handle, &status) != 0) fail(errno);
    return status.st_size;
}

void CFile::Close()
{
    if (handle < 0) return;
    // Interrupted or not, the handle is gone afterwards.
    int const error = close(handle) == 0 || errno == EINTR ? 0 : errno;
    handle = -1;
    if (error != 0) fail(error);
}

void CFile::Abort()
{
    if (handle >= 0) close(handle);
    handle = -1;
}

// ---- CMemFile -------------------------------------------------------------------------------------

CMemFile::~CMemFile()
{
    CMemFile::Close();
}

void CMemFile::Attach(unsigned char * given, std::size_t size, unsigned int step)
{
    CMemFile::Close();
    memory = given;
    capacity = given ? size : 0;
    length = step == 0 ? capacity : 0;
    growBytes = step;
    attached = true;
}

unsigned char * CMemFile::Detach()
{
    unsigned char * const result = memory;
    memory = nullptr;
    CMemFile::Close();
    return result;
}

bool CMemFile::Open(CString const & path, unsigned int, CFileException * exception)
{
    if (exception) *exception = CFileException(CFileException::badPath, path);
    return false;
}

unsigned int CMemFile::Read(void * buffer, unsigned int count)
{
    std::size_t const left = position < length ? length - position : 0;
    std::size_t const size = left < count ? left : count;
    if (size > 0) std::memcpy(buffer, memory + position, size);
    position += size;
    return static_cast<unsigned int>(size);
}

void CMemFile::grow(std::size_t needed)
{
    if (needed <= capacity) return;
    if (growBytes == 0) throw CFileException(CFileException::diskFull, GetFilePath());
    // Whole steps, and at least half as much again, so that long contents are not moved at each step.
    std::size_t const least = needed > capacity + capacity / 2 ? needed : capacity + capacity / 2;
    std::size_t const steps = least / growBytes + (least % growBytes != 0);
    void * const grown = steps <= PTRDIFF_MAX / growBytes ? std::realloc(memory, steps * growBytes) : nullptr;
    if (!grown) throw CFileException(CFileException::diskFull, GetFilePath());
    memory = static_cast<unsigned char *>(grown);
    capacity = steps * growBytes;
}

void CMemFile::Write(void const * buffer, unsigned int count)
{
    if (count == 0) return;
    grow(position + count);
    if (position > length) std::memset(memory + length, 0, position - length);
    std::memcpy(memory + position, buffer, count);
    position += count;
    if (position > length) length = position;
}

std::int64_t CMemFile::Seek(std::int64_t offset, unsigned int from)
{
    std::int64_t const origins[] = {0, GetPosition(), GetLength()};
    std::int64_t target;
    if (from >= std::size(origins) || __builtin_add_overflow(origins[from], offset, &target) || target < 0)
        throw CFileException(CFileException::badSeek, GetFilePath());
    position = static_cast<std::size_t>(target);
    return target;
}

void CMemFile::Close()
{
    if (!attached) std::free(memory);
    memory = nullptr;
    capacity = length = position = 0;
    attached = false;
}
