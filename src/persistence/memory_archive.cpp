#include "persistence/memory_archive.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "persistence/comp.h"
#include "platform/bytes.h"

namespace
{

using orvane::NumberBytes;

constexpr unsigned int growBytes = 1024;
constexpr std::uint32_t longestBlock = std::uint32_t{1} << 30;

struct Free
{
    void operator()(unsigned char * memory) const { std::free(memory); }
};
using Memory = std::unique_ptr<unsigned char, Free>;

// Frees its memory at the end also when that was attached.
std::shared_ptr<CMemFile> makeMemFile()
{
    return {new CMemFile(growBytes), [](CMemFile * file) {
                std::free(file->Detach());
                delete file;
            }};
}

// Holds the memory of a file, and gives it back with no room to grow.
class CBorrowed
{
public:
    explicit CBorrowed(CMemFile & file)
        : file(file),
          position(file.GetPosition()),
          size(static_cast<std::size_t>(file.GetLength())),
          data(file.Detach())
    {
    }
    CBorrowed(CBorrowed const &) = delete;
    CBorrowed & operator=(CBorrowed const &) = delete;
    ~CBorrowed()
    {
        file.Attach(data, size);
        file.Seek(position, CFile::begin);
    }

    unsigned char const * getData() const { return data; }
    std::size_t getSize() const { return size; }

private:
    CMemFile & file;
    std::int64_t position;
    std::size_t size;
    unsigned char * data;
};

// The block of a stream, or null with a size of 0.
std::unique_ptr<unsigned char[]> makeBlock(CBorrowed const & stream, bool compressed, unsigned long & size)
{
    auto const length = orvane::toBytes(static_cast<std::uint32_t>(stream.getSize()));
    unsigned long dataSize = compressed ? SECComp::bound(stream.getSize()) : stream.getSize();
    std::unique_ptr<unsigned char[]> block(new (std::nothrow) unsigned char[length.size() + dataSize]);
    if (!block) return nullptr;
    unsigned char * const data = std::copy(length.begin(), length.end(), block.get());
    if (!compressed) std::memcpy(data, stream.getData(), dataSize);
    else if (SECComp::compress(data, dataSize, stream.getData(), stream.getSize()) != 0) return nullptr;
    size = length.size() + dataSize;
    return block;
}

// The stream of a block, `length` bytes long; null when the data are not its.
Memory takeStream(unsigned char const * data, unsigned long size, unsigned long length, bool compressed)
{
    if (!compressed && length < size) return nullptr;
    Memory stream(static_cast<unsigned char *>(std::calloc(length, 1)));
    if (!stream) return nullptr;
    if (!compressed) std::copy_n(data, size, stream.get());
    else if (SECComp::uncompress(stream.get(), length, data, size) != 0) return nullptr;
    return stream;
}

}  // namespace

CProjectMemoryArchive::CProjectMemoryArchive(std::shared_ptr<CMemFile> file, unsigned int mode)
    : CProjectArchive(file.get(), mode, false), archiveFile(file), memFile(std::move(file))
{
}

CProjectMemoryArchive::CProjectMemoryArchive() : CProjectMemoryArchive(makeMemFile(), store)
{
    ok = 1;
}

CProjectMemoryArchive::CProjectMemoryArchive(unsigned char const * data, unsigned long size)
    : CProjectMemoryArchive(makeMemFile(), load)
{
    readBlock(data, size);
}

CProjectMemoryArchive::CProjectMemoryArchive(CProjectMemoryArchive const & other)
    : CProjectMemoryArchive(other.memFile, other.IsLoading() ? load : store)
{
    *this = other;
}

CProjectMemoryArchive & CProjectMemoryArchive::operator=(CProjectMemoryArchive const & other)
{
    memFile = other.memFile;
    ok = other.ok;
    compressed = other.compressed;
    return *this;
}

CProjectMemoryArchive::~CProjectMemoryArchive()
{
    try
    {
        // While the memory is there still.
        Close();
    }
    catch (...)
    {
        // Nobody is left to be told.
    }
}

void CProjectMemoryArchive::readBlock(unsigned char const * data, unsigned long size)
{
    NumberBytes<std::uint32_t> lengthBytes;
    if (size < lengthBytes.size()) return;
    std::copy_n(data, lengthBytes.size(), lengthBytes.begin());
    std::uint32_t const length = orvane::fromBytes<std::uint32_t>(lengthBytes);
    if (length == 0 || length > longestBlock) return;
    Memory stream = takeStream(data + lengthBytes.size(), size - lengthBytes.size(), length, compressed != 0);
    if (!stream) return;
    memFile->Attach(stream.release(), length);
    ok = 1;
}

int CProjectMemoryArchive::getCompressedData(unsigned char *& data, unsigned long & size)
{
    data = nullptr;
    size = 0;
    Flush();
    std::int64_t const length = memFile->GetLength();
    if (length == 0 || length > UINT32_MAX) return 0;
    data = makeBlock(CBorrowed(*memFile), compressed != 0, size).release();
    return data != nullptr;
}
