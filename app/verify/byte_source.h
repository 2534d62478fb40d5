#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <streambuf>
#include <string>
#include <vector>

struct z_stream_s;

namespace orvane::app
{

// The content of a file from its beginning: unpacked when it is a gzip file, else as it stands. What is wrong with the
// file ends the content.
class ByteSource
{
public:
    // Refuses a file that cannot be opened.
    explicit ByteSource(std::string const & path);
    ByteSource(ByteSource const &) = delete;
    ByteSource & operator=(ByteSource const &) = delete;
    ~ByteSource();

    // How many bytes were there to read.
    std::size_t read(char * bytes, std::size_t count);

    bool isCompressed() const { return unpacking != nullptr; }
    // Why the content ends before its end; empty as long as nothing is wrong.
    std::string const & fault() const { return wrong; }
    // So far.
    std::uint64_t contentSize() const { return given; }

private:
    std::size_t readFile();
    std::size_t unpack(char * bytes, std::size_t count);
    void endMember();
    void fail(std::string const & what);

    struct Close
    {
        void operator()(std::FILE * opened) const { std::fclose(opened); }
    };
    struct EndUnpacking
    {
        void operator()(z_stream_s * stream) const;
    };

    std::unique_ptr<std::FILE, Close> file;
    std::vector<unsigned char> packed;
    std::size_t packedCount = 0;
    std::size_t packedAt = 0;
    std::unique_ptr<z_stream_s, EndUnpacking> unpacking;
    bool atEnd = false;
    std::uint64_t given = 0;
    std::string wrong;
};

// The same for those who read streams.
class ByteSourceBuffer : public std::streambuf
{
public:
    explicit ByteSourceBuffer(ByteSource & source) : source(source) {}

private:
    int_type underflow() override;

    ByteSource & source;
    char block[65536];
};

}  // namespace orvane::app
