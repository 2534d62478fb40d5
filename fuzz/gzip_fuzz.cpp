// The gzip layer and the blocks of memory archives, out of hostile bytes: whatever zlib itself accepts is read as zlib
// reads it, what is no gzip passes as it stands, and what is written reads back.

#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "persistence/compressed_file.h"
#include "persistence/memory_archive.h"

namespace
{

using Bytes = std::vector<std::uint8_t>;

// No more than this is compared: a few bytes may swell a thousandfold.
constexpr unsigned int limit = 1 << 16;

// A file without a place on any disk.
class MemoryFile
{
public:
    explicit MemoryFile(Bytes const & bytes) : handle(memfd_create("gzip_fuzz", 0))
    {
        if (write(handle, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
        path.Format("/proc/self/fd/%d", handle);
    }
    MemoryFile(MemoryFile const &) = delete;
    MemoryFile & operator=(MemoryFile const &) = delete;
    ~MemoryFile() { close(handle); }

    CString path;

private:
    int handle;
};

// Its beginning, up to the limit, in pieces.
Bytes readFile(MemoryFile const & source, unsigned int piece)
{
    SECCompressFile file;
    if (!file.Open(source.path, CFile::modeRead)) std::abort();
    Bytes bytes(limit);
    unsigned int size = 0;
    while (unsigned int const got = file.Read(bytes.data() + size, std::min(piece, limit - size))) size += got;
    file.Close();
    bytes.resize(size);
    return bytes;
}

Bytes writeAndRead(Bytes const & bytes, unsigned int piece)
{
    MemoryFile const target(Bytes{});
    SECCompressFile file;
    if (!file.Open(target.path, CFile::modeCreate | CFile::modeWrite)) std::abort();
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        file.Write(bytes.data() + at, static_cast<unsigned int>(std::min<std::size_t>(piece, bytes.size() - at)));
    file.Close();
    return readFile(target, limit);
}

// Whether zlib takes the bytes for a whole member within the limit, and what it holds.
bool inflateWhole(Bytes bytes, Bytes & content)
{
    z_stream z{};
    inflateInit2(&z, 15 + 16);
    content.resize(limit);
    z.next_in = bytes.data();
    z.avail_in = static_cast<uInt>(bytes.size());
    z.next_out = content.data();
    z.avail_out = limit;
    bool const whole = inflate(&z, Z_FINISH) == Z_STREAM_END;
    content.resize(z.total_out);
    inflateEnd(&z);
    return whole;
}

void readBlock(Bytes const & bytes)
{
    CProjectMemoryArchive archive(bytes.data(), bytes.size());
    Bytes content(limit);
    if (archive.Read(content.data(), limit) > 0 && !archive.OK()) std::abort();
    unsigned char * data;
    unsigned long size;
    archive.getCompressedData(data, size);
    delete[] data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    if (size == 0 || size > limit) return 0;
    // The first byte says the length of the pieces.
    unsigned int const piece = 1U << (data[0] & 15);
    Bytes const bytes(data + 1, data + size);
    Bytes const content = readFile(MemoryFile(bytes), piece);
    Bytes judged;
    bool const gzip = bytes.size() >= 2 && bytes[0] == 0x1F && bytes[1] == 0x8B;
    if (gzip ? inflateWhole(bytes, judged) && content != judged : content != bytes) std::abort();
    if (writeAndRead(bytes, piece) != bytes) std::abort();
    // Blocks that state up to 1 GiB are cleared at once: a few of them are enough.
    if (bytes.size() < 4 || bytes[3] < 1) readBlock(bytes);
    return 0;
}
