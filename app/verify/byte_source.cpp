#include "app/verify/byte_source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>
#include <sys/stat.h>
#include <zlib.h>

#include "app/command.h"

namespace orvane::app
{
namespace
{

constexpr std::size_t packedBlock = 65536;
// A small file may swell without end; no project is larger.
constexpr std::uint64_t mostUnpacked = std::uint64_t{1} << 30;

}  // namespace

void ByteSource::EndUnpacking::operator()(z_stream_s * stream) const
{
    inflateEnd(stream);
    delete stream;
}

ByteSource::ByteSource(std::string const & path) : packed(packedBlock)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) throw Refusal(path + ": is a directory");
    file.reset(std::fopen(path.c_str(), "rbe"));
    if (!file) throw Refusal(fmt::format("{}: {}", path, std::strerror(errno)));
    readFile();
    if (packedCount < 2 || packed[0] != 0x1F || packed[1] != 0x8B) return;
    // With a header and a trailer of gzip, both of which are checked.
    constexpr int gzipWindow = MAX_WBITS + 16;
    auto stream = std::make_unique<z_stream>(z_stream{});
    if (inflateInit2(stream.get(), gzipWindow) != Z_OK) throw std::bad_alloc();
    unpacking.reset(stream.release());
}

ByteSource::~ByteSource() = default;

void ByteSource::fail(std::string const & what)
{
    wrong = what;
    atEnd = true;
}

// Takes the next block of the file.
std::size_t ByteSource::readFile()
{
    packedAt = 0;
    packedCount = std::fread(packed.data(), 1, packed.size(), file.get());
    if (packedCount == 0 && std::ferror(file.get())) fail(std::strerror(errno));
    return packedCount;
}

std::size_t ByteSource::read(char * bytes, std::size_t count)
{
    if (atEnd || count == 0) return 0;
    if (packedAt == packedCount && readFile() == 0)
    {
        if (unpacking && wrong.empty()) fail("the compressed data end too early");
        atEnd = true;
        return 0;
    }
    std::size_t got = 0;
    if (unpacking) got = unpack(bytes, count);
    else
    {
        got = std::min(count, packedCount - packedAt);
        std::memcpy(bytes, packed.data() + packedAt, got);
        packedAt += got;
    }
    given += got;
    return got;
}

std::size_t ByteSource::unpack(char * bytes, std::size_t count)
{
    z_stream & stream = *unpacking;
    stream.next_out = reinterpret_cast<Bytef *>(bytes);
    stream.avail_out = static_cast<uInt>(std::min<std::size_t>(count, UINT32_MAX));
    uInt const room = stream.avail_out;
    while (stream.avail_out == room)
    {
        if (packedAt == packedCount && readFile() == 0)
        {
            if (wrong.empty()) fail("the compressed data end too early");
            break;
        }
        stream.next_in = packed.data() + packedAt;
        stream.avail_in = static_cast<uInt>(packedCount - packedAt);
        int const result = inflate(&stream, Z_NO_FLUSH);
        packedAt = packedCount - stream.avail_in;
        if (result == Z_STREAM_END)
        {
            endMember();
            break;
        }
        if (result != Z_OK && result != Z_BUF_ERROR)
        {
            fail(fmt::format("the compressed data are damaged: {}", stream.msg ? stream.msg : "unknown form"));
            break;
        }
    }
    if (given + (room - stream.avail_out) > mostUnpacked) fail("swells to more than 1 GiB; not read further");
    return room - stream.avail_out;
}

// Behind the compressed data.
void ByteSource::endMember()
{
    atEnd = true;
    if (packedAt < packedCount || readFile() > 0) wrong = "other bytes follow the compressed data";
}

ByteSourceBuffer::int_type ByteSourceBuffer::underflow()
{
    std::size_t const count = source.read(block, sizeof block);
    if (count == 0) return traits_type::eof();
    setg(block, block, block + count);
    return traits_type::to_int_type(block[0]);
}

}  // namespace orvane::app
