#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/object.h"
#include "platform/string.h"

// What went wrong with a file. Thrown by value.
class CFileException
{
public:
    // The numbers are those of the framework; each has its word and its sentence in messages.
    enum Cause
    {
        none = 0,
        genericException = 1,
        fileNotFound = 2,
        badPath = 3,
        tooManyOpenFiles = 4,
        accessDenied = 5,
        invalidFile = 6,
        removeCurrentDir = 7,
        directoryFull = 8,
        badSeek = 9,
        hardIO = 10,
        sharingViolation = 11,
        lockViolation = 12,
        diskFull = 13,
        endOfFile = 14,
    };

    explicit CFileException(int cause = none, CString const & fileName = CString())
        : m_cause(cause), m_strFileName(fileName)
    {
    }
    // The cause that an error number of the system stands for.
    static int causeOf(int systemError);

    int m_cause;
    CString m_strFileName;
};

// A file of bytes, without a buffer of its own. Reading, writing and seeking throw CFileException, also
// on a file that is not open; interrupted calls go on.
class CFile : public CDynamic<CFile>
{
public:
    enum OpenFlags : unsigned int
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        // The two bits that tell reading from writing.
        modeAccess = 0x0003,
        // What others may do meanwhile: taken, and without effect, since the system keeps nobody out.
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        // Always so: no file stays open in programs that are started.
        modeNoInherit = 0x0080,
        // Made if missing; emptied if there and opened for writing.
        modeCreate = 0x1000,
        // With modeCreate: what is there stays.
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000,
        // Only a regular file of the user's own, under one name, that no link led to; other users are kept out of
        // it. For files at known names in directories that others may write to.
        modeOwn = 0x10000,
    };
    enum SeekPosition : unsigned int
    {
        begin = 0,
        current = 1,
        end = 2,
    };

    CFile() = default;
    // Throws where Open would fail.
    CFile(CString const & path, unsigned int flags);
    CFile(CFile const &) = delete;
    CFile & operator=(CFile const &) = delete;
    // Closes without complaint: who must know whether all arrived closes before.
    ~CFile() override;

    // A failure answers false and is told in `exception`. Directories are not opened, and a file that is open
    // already stays as it is. Never waits: a pipe without a reader is not opened for writing.
    virtual bool Open(CString const & path, unsigned int flags, CFileException * exception = nullptr);
    // How many bytes were there, up to `count`: fewer only at the end of the file.
    virtual unsigned int Read(void * buffer, unsigned int count);
    virtual void Write(void const * buffer, unsigned int count);
    // The new position, from the beginning.
    virtual std::int64_t Seek(std::int64_t offset, unsigned int from);
    virtual std::int64_t GetPosition() const;
    virtual std::int64_t GetLength() const;
    // Hands on what the class holds back: nothing, here. The system may hold it in memory still.
    virtual void Flush() {}
    // Throws when the system could not keep what was written; the file is closed all the same.
    virtual void Close();
    // Closes whatever the state, without complaint.
    virtual void Abort();

    // The path as it was given; it names the file in exceptions.
    CString const & GetFilePath() const { return filePath; }
    virtual void SetFilePath(CString const & path) { filePath = path; }

private:
    int openHandle(CString const & path, unsigned int flags);
    [[noreturn]] void fail(int systemError) const;

    int handle = -1;
    CString filePath;
};

// A file in memory. It starts empty with memory of its own, that grows in steps; beyond what the steps or
// the memory allow, writing throws CFileException::diskFull.
class CMemFile : public CDynamic<CMemFile, CFile>
{
public:
    // A step of 0 bytes allows no growth.
    explicit CMemFile(unsigned int growBytes = 1024) : growBytes(growBytes) {}
    // Frees the memory unless it was attached.
    ~CMemFile() override;

    // Takes on memory that was obtained with malloc and stays the caller's: Detach gives it back, moved if it grew.
    // With a step of 0 its bytes are the file's content; otherwise the file is empty and may grow. The
    // position is the beginning.
    void Attach(unsigned char * memory, std::size_t size, unsigned int growBytes = 0);
    // Hands over the memory, for free(), and leaves the file empty.
    unsigned char * Detach();

    // There is no path to open: always false.
    bool Open(CString const & path, unsigned int flags, CFileException * exception = nullptr) override;
    unsigned int Read(void * buffer, unsigned int count) override;
    void Write(void const * buffer, unsigned int count) override;
    // May stand behind the end: reading gives nothing there, writing fills the gap with zeros.
    std::int64_t Seek(std::int64_t offset, unsigned int from) override;
    std::int64_t GetPosition() const override { return static_cast<std::int64_t>(position); }
    std::int64_t GetLength() const override { return static_cast<std::int64_t>(length); }
    // Frees the memory unless it was attached; the file is empty then.
    void Close() override;
    void Abort() override { Close(); }

private:
    void grow(std::size_t needed);

    unsigned char * memory = nullptr;
    std::size_t capacity = 0;
    std::size_t length = 0;
    std::size_t position = 0;
    unsigned int growBytes;
    bool attached = false;
};
