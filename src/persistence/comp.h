#pragma once

#include <memory>

#include "platform/object.h"

class CFile;

namespace orvane
{

// One open gzip file: the state of the compression, its buffer, the running checksum.
struct GzipStream;
struct GzipStreamEnd
{
    void operator()(GzipStream * stream) const noexcept;
};
using GzipStreamPointer = std::unique_ptr<GzipStream, GzipStreamEnd>;

}  // namespace orvane

// The door to zlib: blocks of memory in one call, and gzip files piece by piece. Results are zlib's codes, 0 for
// success. docs/file-format.md tells the bytes of the container.
class SECComp : public CDynamic<SECComp>
{
public:
    // Into `dest`, which has room for `destLength` bytes; the room used comes back in `destLength`. What does not
    // fit, and a source that ends too early, give -5; damaged data give -3.
    static int compress(unsigned char * dest, unsigned long & destLength, unsigned char const * source,
                        unsigned long sourceLength);
    static int uncompress(unsigned char * dest, unsigned long & destLength, unsigned char const * source,
                          unsigned long sourceLength);
    // The room that compressing so many bytes may take.
    static unsigned long bound(unsigned long sourceLength);

    // Begins a gzip member on an open file, which must outlive the stream: "r" reads the header, "w" writes it; a digit
    // from 1 to 9 sets the level. Null when the mode is neither or memory is short. What does not begin as gzip
    // is read as it stands. Only the operations of CFile itself are used on the file, never those of a class
    // derived from it.
    orvane::GzipStreamPointer open(CFile & file, char const * mode) const;
    // How many bytes there were, up to `count`. Damaged data, like the end, give fewer and then none.
    unsigned int read(orvane::GzipStream & stream, void * buffer, unsigned int count) const;
    // How many bytes were taken: less than `count` only after a failure. When the file throws, the stream takes
    // no more.
    unsigned int write(orvane::GzipStream & stream, void const * buffer, unsigned int count) const;
    // Writes what is due still, and the trailer; or, once all was read, checks the trailer and answers -3 if it
    // does not match. The file stays open.
    int close(orvane::GzipStream & stream) const;
};
