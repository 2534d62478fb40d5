#pragma once

#include "platform/object.h"
#include "platform/string.h"

// Copies files in pieces.
class SECFileSystem : public CDynamic<SECFileSystem>
{
public:
    explicit SECFileSystem(int listingBufferSize = 1024) : listingBufferSize(listingBufferSize) {}

    int getListingBufferSize() const { return listingBufferSize; }
    // Through a buffer of that many bytes. False when the destination exists, which then stays as it was, or when
    // anything goes wrong; what was copied until then is removed.
    bool copyFile(CString const & source, CString const & destination, unsigned int bufferSize) const;

private:
    int listingBufferSize;
};

// False when the source does not exist, when the destination exists and `overwrite` is false, when both are the
// same file, or when the copying fails. A destination that may be overwritten is removed before.
bool copyFile(CString const & source, CString const & destination, bool overwrite);
