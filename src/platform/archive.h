#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "platform/bytes.h"
#include "platform/string.h"

class CFile;

// What ends an exchange with an archive.
class CArchiveException
{
public:
    // The numbers are those of the framework.
    enum Cause
    {
        none = 0,
        genericException = 1,
        readOnly = 2,
        endOfFile = 3,
        writeOnly = 4,
        badIndex = 5,
        badClass = 6,
        badSchema = 7,
    };

    explicit CArchiveException(int cause = none, CString const & fileName = CString())
        : m_cause(cause), m_strFileName(fileName)
    {
    }

    int m_cause;
    CString m_strFileName;
};

// A stream of bytes to or from a file, through a buffer. An archive stores or loads, never both.
//
// Whatever goes wrong throws: CArchiveException for the archive's own reasons, what the file throws for
// its own. After Abort every exchange throws, so that nothing behind a fault is taken for data.
class CArchive : public orvane::IByteSink, public orvane::IByteSource
{
public:
    enum Mode : unsigned int
    {
        store = 0,
        load = 1,
    };

    // The file must be open, stays the caller's and outlives the archive. The buffer has at least 128 bytes.
    CArchive(CFile * file, unsigned int mode, int bufferSize = 4096);
    CArchive(CArchive const &) = delete;
    CArchive & operator=(CArchive const &) = delete;
    // Closes an archive that is open still, without complaint: who must know whether all arrived closes it.
    virtual ~CArchive();

    bool IsLoading() const { return loading; }
    bool IsStoring() const { return !loading; }
    CFile * GetFile() const { return file; }
    unsigned int GetObjectSchema() const { return objectSchema; }
    void SetObjectSchema(unsigned int schema) { objectSchema = schema; }

    // How many bytes were there to read, up to `size`.
    unsigned int Read(void * data, unsigned int size) { return static_cast<unsigned int>(read(data, size)); }
    void Write(void const * data, unsigned int size) { write(data, size); }
    std::size_t read(void * data, std::size_t size) override;
    void write(void const * data, std::size_t size) override
    {
        if (size > room()) return writeBeyond(data, size);
        std::memcpy(next, data, size);
        next += size;
    }
    // All of the bytes, or CArchiveException::endOfFile.
    void readExactly(void * data, std::size_t size)
    {
        if (size > room()) return readBeyond(data, size);
        std::memcpy(data, next, size);
        next += size;
    }

    // When storing, hands to the file what the buffer holds.
    void Flush();
    // Flushes and lets go of the file.
    void Close();
    // Lets go of the file without flushing.
    void Abort();

    // The most bytes that will be read; 1 GiB at first. Beyond, reading throws, so that a small file that
    // swells cannot fill the memory.
    void setBudget(std::uint64_t bytes) { budget = bytes; }

private:
    std::size_t room() const { return static_cast<std::size_t>(limit - next); }
    void writeBeyond(void const * data, std::size_t size);
    void readBeyond(void * data, std::size_t size);
    // Reads at least a byte of the file into the buffer, or tells that there is none.
    bool fill();
    void requireOpen(bool toLoad) const;
    void forgetBuffer() { next = limit = nullptr; }

    CFile * file;
    std::unique_ptr<unsigned char[]> buffer;
    std::size_t bufferSize;
    // Loading: the bytes not yet taken. Storing: the room not yet filled. Empty once closed.
    unsigned char * next;
    unsigned char * limit;
    std::uint64_t budget = std::uint64_t{1} << 30;
    unsigned int objectSchema = ~0U;
    bool loading;
};
