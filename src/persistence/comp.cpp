#include "persistence/comp.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include "platform/bytes.h"
#include "platform/file.h"

namespace orvane
{

struct GzipStream : z_stream
{
    static constexpr unsigned int bufferSize = 4096;

    explicit GzipStream(CFile & file) : z_stream{}, file(&file) {}
    ~GzipStream()
    {
        if (mode == 'w') deflateEnd(this);
        if (mode == 'r') inflateEnd(this);
    }

    // The last result of zlib: Z_ERRNO when the file threw, Z_STREAM_END when all was read.
    int error = Z_OK;
    bool endOfFile = false;
    CFile * file;
    std::unique_ptr<unsigned char[]> inBuffer;
    std::unique_ptr<unsigned char[]> outBuffer;
    // Of the uncompressed bytes.
    uLong crc = crc32(0, nullptr, 0);
    // The file is no gzip file.
    bool transparent = false;
    // 'r' or 'w'; zero until zlib's state is there.
    char mode = '\0';
};

void GzipStreamEnd::operator()(GzipStream * stream) const noexcept
{
    delete stream;
}

}  // namespace orvane

using orvane::GzipStream;

// ---- blocks of memory -----------------------------------------------------------------------------

namespace
{

// Either direction of zlib.
struct Direction
{
    int (*begin)(z_stream *);
    int (*run)(z_stream *, int);
    int (*end)(z_stream *);
};

constexpr Direction deflating = {[](z_stream * z) { return deflateInit(z, Z_DEFAULT_COMPRESSION); }, deflate,
                                 deflateEnd};
constexpr Direction inflating = {[](z_stream * z) { return inflateInit(z); }, inflate, inflateEnd};

int runInOneCall(Direction const & direction, unsigned char * dest, unsigned long & destLength,
                 unsigned char const * source, unsigned long sourceLength)
{
    z_stream z{};
    z.next_in = const_cast<Bytef *>(source);
    z.avail_in = static_cast<uInt>(sourceLength);
    z.next_out = dest;
    z.avail_out = static_cast<uInt>(destLength);
    // zlib counts in 32 bits.
    if (z.avail_in != sourceLength || z.avail_out != destLength) return Z_BUF_ERROR;
    if (int const error = direction.begin(&z); error != Z_OK) return error;
    int const result = direction.run(&z, Z_FINISH);
    direction.end(&z);
    if (result != Z_STREAM_END) return result == Z_OK ? Z_BUF_ERROR : result;
    destLength = z.total_out;
    return Z_OK;
}

}  // namespace

int SECComp::compress(unsigned char * dest, unsigned long & destLength, unsigned char const * source,
                      unsigned long sourceLength)
{
    return runInOneCall(deflating, dest, destLength, source, sourceLength);
}

int SECComp::uncompress(unsigned char * dest, unsigned long & destLength, unsigned char const * source,
                        unsigned long sourceLength)
{
    return runInOneCall(inflating, dest, destLength, source, sourceLength);
}

unsigned long SECComp::bound(unsigned long sourceLength)
{
    return compressBound(sourceLength);
}

// ---- between the stream and its file --------------------------------------------------------------

namespace
{

// Raw deflate data of up to 32 KiB distance: the header and the trailer are ours to write.
constexpr int rawWindowBits = -15;
constexpr int memoryLevel = 8;

constexpr unsigned char gzipHeader[] = {0x1F, 0x8B, Z_DEFLATED, 0, 0, 0, 0, 0, 0, 11};

// Runs an exchange with the file; if it throws, the stream says so from then on.
template <class Exchange>
auto withFile(GzipStream & stream, Exchange && exchange)
{
    try
    {
        return exchange(*stream.file);
    }
    catch (...)
    {
        stream.error = Z_ERRNO;
        throw;
    }
}

void writeFile(GzipStream & stream, void const * data, std::size_t size)
{
    withFile(stream, [&](CFile & file) { file.CFile::Write(data, static_cast<unsigned int>(size)); });
}

unsigned int readFile(GzipStream & stream, void * data, unsigned int size)
{
    unsigned int const got = withFile(stream, [&](CFile & file) { return file.CFile::Read(data, size); });
    if (got == 0) stream.endOfFile = true;
    return got;
}

void fillInput(GzipStream & stream)
{
    stream.next_in = stream.inBuffer.get();
    stream.avail_in = stream.endOfFile ? 0 : readFile(stream, stream.next_in, GzipStream::bufferSize);
}

void emptyOutput(GzipStream & stream)
{
    unsigned char * const from = stream.outBuffer.get();
    if (stream.next_out != from) writeFile(stream, from, static_cast<std::size_t>(stream.next_out - from));
    stream.next_out = from;
    stream.avail_out = GzipStream::bufferSize;
}

// What stands in the buffer, and behind it in the file.
unsigned int readPlain(GzipStream & stream, unsigned char * to, unsigned int count)
{
    unsigned int const held = std::min(count, stream.avail_in);
    if (held > 0) std::memcpy(to, stream.next_in, held);
    stream.next_in += held;
    stream.avail_in -= held;
    return count > held ? held + readFile(stream, to + held, count - held) : held;
}

// ---- the header -----------------------------------------------------------------------------------

// -1 at the end of the file.
int nextByte(GzipStream & stream)
{
    if (stream.avail_in == 0) fillInput(stream);
    if (stream.avail_in == 0) return -1;
    --stream.avail_in;
    return *stream.next_in++;
}

void skip(GzipStream & stream, int count)
{
    while (count-- > 0 && nextByte(stream) >= 0) {}
}

void skipText(GzipStream & stream)
{
    while (nextByte(stream) > 0) {}
}

// What the flags of the header announce.
void skipFields(GzipStream & stream, int flags)
{
    constexpr int checksum = 1 << 1, extra = 1 << 2, name = 1 << 3, comment = 1 << 4;
    if (flags & extra)
    {
        int const low = nextByte(stream);
        int const high = nextByte(stream);
        skip(stream, high < 0 ? 0 : low + (high << 8));
    }
    if (flags & name) skipText(stream);
    if (flags & comment) skipText(stream);
    if (flags & checksum) skip(stream, 2);
}

void readHeader(GzipStream & stream)
{
    constexpr int firstReservedFlag = 1 << 5;
    constexpr int timeSystemAndExtraFlags = 6;
    fillInput(stream);
    if (stream.avail_in < 2 || stream.next_in[0] != gzipHeader[0] || stream.next_in[1] != gzipHeader[1])
    {
        stream.transparent = true;
        return;
    }
    skip(stream, 2);
    int const method = nextByte(stream);
    int const flags = nextByte(stream);
    skip(stream, timeSystemAndExtraFlags);
    bool const known = method == Z_DEFLATED && flags >= 0 && flags < firstReservedFlag;
    if (known) skipFields(stream, flags);
    if (!known || stream.endOfFile) stream.error = Z_DATA_ERROR;
}

// ---- checksum and trailer ----------------------------------------------------------------------------------

void addToChecksum(GzipStream & stream, unsigned char const * data, unsigned int size)
{
    // A null pointer would start zlib's checksum anew.
    if (size > 0) stream.crc = crc32(stream.crc, data, size);
}

// The checksum and the length in four bytes each, lowest first.
auto trailer(GzipStream const & stream, uLong length)
{
    std::uint64_t const both = (stream.crc & 0xFFFFFFFF) | std::uint64_t{length} << 32;
    return orvane::toBytes(both);
}

void writeRest(GzipStream & stream)
{
    stream.avail_in = 0;
    do
    {
        emptyOutput(stream);
        stream.error = deflate(&stream, Z_FINISH);
    } while (stream.error == Z_OK);
    if (stream.error != Z_STREAM_END) return;
    emptyOutput(stream);
    withFile(stream, [](CFile & file) { file.CFile::Flush(); });
    auto const bytes = trailer(stream, stream.total_in);
    writeFile(stream, bytes.data(), bytes.size());
    stream.error = Z_OK;
}

void checkTrailer(GzipStream & stream)
{
    auto const expected = trailer(stream, stream.total_out);
    auto found = expected;
    bool const whole = readPlain(stream, found.data(), found.size()) == found.size();
    if (!whole || found != expected) stream.error = Z_DATA_ERROR;
}

// ---- beginning ------------------------------------------------------------------------------------

bool beginReading(GzipStream & stream)
{
    if (inflateInit2(&stream, rawWindowBits) != Z_OK) return false;
    stream.mode = 'r';
    stream.inBuffer = std::make_unique_for_overwrite<unsigned char[]>(GzipStream::bufferSize);
    readHeader(stream);
    return true;
}

bool beginWriting(GzipStream & stream, int level)
{
    if (deflateInit2(&stream, level, Z_DEFLATED, rawWindowBits, memoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) return false;
    stream.mode = 'w';
    stream.outBuffer = std::make_unique_for_overwrite<unsigned char[]>(GzipStream::bufferSize);
    stream.next_out = stream.outBuffer.get();
    stream.avail_out = GzipStream::bufferSize;
    writeFile(stream, gzipHeader, sizeof gzipHeader);
    return true;
}

bool beginStream(GzipStream & stream, std::string_view mode)
{
    std::size_t const digit = mode.find_first_of("123456789");
    int const level = digit == mode.npos ? Z_DEFAULT_COMPRESSION : mode[digit] - '0';
    std::size_t const direction = mode.find_first_of("rw");
    if (direction == mode.npos) return false;
    return mode[direction] == 'r' ? beginReading(stream) : beginWriting(stream, level);
}

}  // namespace

// ---- gzip files -----------------------------------------------------------------------------------

orvane::GzipStreamPointer SECComp::open(CFile & file, char const * mode) const
{
    try
    {
        orvane::GzipStreamPointer stream(new GzipStream(file));
        return beginStream(*stream, mode) ? std::move(stream) : nullptr;
    }
    catch (std::bad_alloc const &)
    {
        return nullptr;
    }
}

unsigned int SECComp::read(GzipStream & stream, void * buffer, unsigned int count) const
{
    if (stream.mode != 'r' || stream.error == Z_DATA_ERROR || stream.error == Z_STREAM_END) return 0;
    auto * const to = static_cast<unsigned char *>(buffer);
    if (stream.transparent) return readPlain(stream, to, count);
    stream.next_out = to;
    stream.avail_out = count;
    while (stream.avail_out > 0)
    {
        if (stream.avail_in == 0) fillInput(stream);
        stream.error = inflate(&stream, Z_NO_FLUSH);
        if (stream.error != Z_OK || stream.endOfFile) break;
    }
    unsigned int const delivered = count - stream.avail_out;
    addToChecksum(stream, to, delivered);
    return delivered;
}

unsigned int SECComp::write(GzipStream & stream, void const * buffer, unsigned int count) const
{
    if (stream.mode != 'w' || stream.error != Z_OK) return 0;
    auto const * const from = static_cast<unsigned char const *>(buffer);
    stream.next_in = const_cast<Bytef *>(from);
    stream.avail_in = count;
    while (stream.avail_in > 0 && stream.error == Z_OK)
    {
        if (stream.avail_out == 0) emptyOutput(stream);
        stream.error = deflate(&stream, Z_NO_FLUSH);
    }
    unsigned int const taken = count - stream.avail_in;
    addToChecksum(stream, from, taken);
    return taken;
}

int SECComp::close(GzipStream & stream) const
{
    if (stream.mode == 'w' && stream.error == Z_OK) writeRest(stream);
    if (stream.mode == 'r' && stream.error == Z_STREAM_END) checkTrailer(stream);
    return stream.error;
}
