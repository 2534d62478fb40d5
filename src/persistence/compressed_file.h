#pragma once

#include "persistence/comp.h"
#include "platform/file.h"

// A gzip file, written or read from its beginning to its end; what is read and is no gzip file passes as it
// stands. One opening and one closing: after that, or unopened, calls do nothing and answer nothing.
//
// What the file itself refuses (a full disk) throws CFileException. Damaged compressed data only end the reading
// early; a wrong checksum at the end goes unnoticed.
class SECCompressFile : public CDynamic<SECCompressFile, CFile>
{
public:
    SECCompressFile() = default;
    // A file that was not closed gets no trailer.
    ~SECCompressFile() override = default;

    // For reading, or, where the flags allow writing, for writing from the beginning.
    bool Open(CString const & path, unsigned int flags, CFileException * exception = nullptr) override;
    // Counts uncompressed bytes. Positions and lengths of the file, by contrast, are those of the compressed bytes.
    unsigned int Read(void * buffer, unsigned int count) override;
    void Write(void const * buffer, unsigned int count) override;
    void Close() override;
    void Abort() override;

    // Off, every operation is that of a plain file. To be said before opening.
    void setCompression(bool on) { compressionOn = on; }
    // Writes in a fraction of the time, into more bytes. To be said before opening.
    void setQuick() { writeMode = "wb1"; }

private:
    SECComp comp;
    // Null while closed.
    orvane::GzipStreamPointer gzState;
    int compressionOn = 1;
    char const * writeMode = "wb";
};
