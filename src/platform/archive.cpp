#include "platform/archive.h"

#include "platform/file.h"

#include <algorithm>
#include <limits>

CArchive::CArchive(CFile * file, unsigned int mode, int bufferSize)
    : file(file),
      bufferSize(static_cast<std::size_t>(std::max(bufferSize, 128))),
      loading((mode & load) != 0)
{
    buffer = std::make_unique_for_overwrite<unsigned char[]>(this->bufferSize);
    next = buffer.get();
    limit = loading ? next : next + this->bufferSize;
}

CArchive::~CArchive()
{
    try
    {
        Close();
    }
    catch (...)
    {
        // Nobody is left to be told.
    }
}

void CArchive::requireOpen(bool toLoad) const
{
    if (!file) throw CArchiveException(CArchiveException::genericException);
    if (toLoad != loading)
        throw CArchiveException(loading ? CArchiveException::readOnly : CArchiveException::writeOnly);
}

bool CArchive::fill()
{
    next = limit = buffer.get();
    std::size_t const wanted = static_cast<std::size_t>(std::min<std::uint64_t>(bufferSize, budget));
    if (wanted == 0) throw CArchiveException(CArchiveException::genericException, file->GetFilePath());
    std::size_t const got = file->Read(buffer.get(), static_cast<unsigned int>(wanted));
    budget -= got;
    limit += got;
    return got > 0;
}

std::size_t CArchive::read(void * data, std::size_t size)
{
    requireOpen(true);
    auto * to = static_cast<unsigned char *>(data);
    std::size_t missing = size;
    while (missing > 0 && (room() > 0 || fill()))
    {
        std::size_t const piece = std::min(missing, room());
        std::memcpy(to, next, piece);
        next += piece;
        to += piece;
        missing -= piece;
    }
    return size - missing;
}

void CArchive::readBeyond(void * data, std::size_t size)
{
    if (read(data, size) != size) throw CArchiveException(CArchiveException::endOfFile, file->GetFilePath());
}

void CArchive::writeBeyond(void const * data, std::size_t size)
{
    requireOpen(false);
    auto const * from = static_cast<unsigned char const *>(data);
    while (size > 0)
    {
        if (room() == 0) Flush();
        std::size_t const piece = std::min(size, room());
        std::memcpy(next, from, piece);
        next += piece;
        from += piece;
        size -= piece;
    }
}

void CArchive::Flush()
{
    if (!file || loading) return;
    std::size_t const filled = static_cast<std::size_t>(next - buffer.get());
    // Emptied first: what the file refused is not offered again.
    next = buffer.get();
    if (filled > 0) file->Write(buffer.get(), static_cast<unsigned int>(filled));
}

void CArchive::Close()
{
    if (!file) return;
    try
    {
        Flush();
    }
    catch (...)
    {
        Abort();
        throw;
    }
    Abort();
}

void CArchive::Abort()
{
    file = nullptr;
    forgetBuffer();
}
