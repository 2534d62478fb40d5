#pragma once

#include <memory>

#include "platform/file.h"
#include "platform/project_archive.h"

// A project archive in memory. Its stream has no version item and always the current layout, so one build of the
// program reads what the same build wrote.
//
// As a block the stream is preceded by its length, in four bytes, lowest first; in a compressed block zlib's form of
// the stream follows.
class CProjectMemoryArchive : public CProjectArchive
{
public:
    // For storing.
    CProjectMemoryArchive();
    // For loading from a block, which is copied. When it is none, OK() is 0 and there is nothing to load: it is
    // shorter than its length item, states a length of 0, one of less than what follows or of more than 1 GiB, or
    // its compressed data are damaged. What a plain block states beyond its data reads as zeros.
    CProjectMemoryArchive(unsigned char const * data, unsigned long size);
    // A copy shares the memory, position included, but has an archive of its own: what one of them still holds in
    // its buffer reaches the memory when that one is flushed, closed or destroyed. After an assignment an archive
    // goes on exchanging with the memory it was made for; only the block is that of the other.
    CProjectMemoryArchive(CProjectMemoryArchive const & other);
    CProjectMemoryArchive & operator=(CProjectMemoryArchive const & other);
    ~CProjectMemoryArchive() override;

    // 1, or 0 after a block that could not be read.
    int OK() const { return ok; }
    // The block of what was stored so far, flushed first; the caller deletes it with delete[]. Answers 1, or 0 with
    // no data: nothing was stored, or the memory is short. From then on the stream cannot grow.
    int getCompressedData(unsigned char *& data, unsigned long & size);

protected:
    // Takes the stream out of a block.
    void readBlock(unsigned char const * data, unsigned long size);

private:
    CProjectMemoryArchive(std::shared_ptr<CMemFile> file, unsigned int mode);

    // The memory that the archive itself works on.
    std::shared_ptr<CMemFile> archiveFile;
    std::shared_ptr<CMemFile> memFile;
    int ok = 0;

protected:
    // 1 for compressed blocks.
    int compressed = 0;
};
