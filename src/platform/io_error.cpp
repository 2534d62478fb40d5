#include "platform/io_error.h"

#include <cstddef>
#include <iterator>

#include "platform/message.h"

namespace
{

struct CauseTexts
{
    char const * word;
    char const * sentence;
};

// By the number of the cause.
constexpr CauseTexts causes[] = {
    {"Unknown", "No error occurred."},
    {"Generic", "An unspecified error occurred."},
    {"File not found", "The file could not be located."},
    {"Bad path", "All or part of the path is invalid."},
    {"Too many open files", "The permitted number of open files was exceeded."},
    {"Access denied", "The file could not be accessed."},
    {"Invalid path", "There was an attempt to use an invalid file handle."},
    {"removeCurrentDir", "The current working directory cannot be removed."},
    {"directoryFull", "There are no more directory entries."},
    {"badSeek", "There was an error trying to set the file pointer."},
    {"hardIO", "There was a hardware error."},
    {"sharingViolation", "SHARE.EXE was not loaded, or a shared region was locked."},
    {"lockViolation", "There was an attempt to lock a region that was already locked."},
    {"diskFull", "The disk is full."},
    {"endOfFile", "The end of file was reached."},
};

CauseTexts textsOf(CFileException const & exception)
{
    bool const isKnown = exception.m_cause >= 0 && static_cast<std::size_t>(exception.m_cause) < std::size(causes);
    return isKnown ? causes[exception.m_cause] : CauseTexts{"", ""};
}

}  // namespace

CString getErrorDescription(CFileException const & exception)
{
    return textsOf(exception).sentence;
}

void reportIOError(CString const & fileName, CFileException & exception)
{
    warning("I/O error %s : %s", static_cast<char const *>(fileName), textsOf(exception).word);
}
