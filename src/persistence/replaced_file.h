#pragma once

#include <string>

#include "platform/string.h"

class CFile;
class CFileException;

namespace orvane
{

// Saves a file so that at every moment the old or the new content stands under its name, whole: the new one is
// written beside it, brought to the disk and renamed over it.
//
//     CReplacedFile target(path);
//     SECCompressFile file;
//     if (!target.open(file, &exception)) ...
//     ... write, then file.Close()
//     target.commit();
//
// Without commit, as when an exception passes, the old file stays and the new one is removed. An existing file
// keeps its mode; a new one is for its owner alone unless told otherwise. A target that is a link or no regular file, or whose directory
// takes no new file, is written in place, without this safety.
class CReplacedFile
{
public:
    // For whom a file is that was not there before.
    enum class NewFile
    {
        forOwner,
        // For whom the user lets new files be, by his umask.
        byUmask
    };

    explicit CReplacedFile(CString const & path, NewFile newFile = NewFile::forOwner) : target(path), newFile(newFile)
    {
    }
    CReplacedFile(CReplacedFile const &) = delete;
    CReplacedFile & operator=(CReplacedFile const &) = delete;
    ~CReplacedFile() { discard(); }

    // Opens `file` for writing from the beginning; its failures name the target. A target that may not be written
    // is refused, even where it could be replaced. Once only.
    bool open(CFile & file, CFileException * exception = nullptr);
    // The file must be closed. Throws CFileException, and the old file stays, when the disk does not take the new one.
    void commit();

private:
    int create();
    void createAgain();
    int finish();
    void discard();

    CString target;
    NewFile newFile;
    // Beside the target; empty when written in place.
    std::string temporary;
    // Of what is written. Held from the beginning, so that no failure to write it goes unnoticed.
    int handle = -1;
};

}  // namespace orvane
