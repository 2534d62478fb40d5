#include "persistence/compressed_file.h"

bool SECCompressFile::Open(CString const & path, unsigned int flags, CFileException * exception)
{
    if (!CFile::Open(path, flags, exception)) return false;
    if (!compressionOn) return true;
    try
    {
        gzState = comp.open(*this, flags & modeAccess ? writeMode : "rb");
    }
    catch (CFileException const & failure)
    {
        if (exception) *exception = failure;
    }
    if (!gzState) CFile::Abort();
    return gzState != nullptr;
}

unsigned int SECCompressFile::Read(void * buffer, unsigned int count)
{
    if (!compressionOn) return CFile::Read(buffer, count);
    return gzState ? comp.read(*gzState, buffer, count) : 0;
}

void SECCompressFile::Write(void const * buffer, unsigned int count)
{
    if (!compressionOn) CFile::Write(buffer, count);
    else if (gzState) comp.write(*gzState, buffer, count);
}

void SECCompressFile::Close()
{
    // Whatever happens, it is closed afterwards.
    orvane::GzipStreamPointer const stream = std::move(gzState);
    try
    {
        if (stream && compressionOn) comp.close(*stream);
    }
    catch (...)
    {
        CFile::Abort();
        throw;
    }
    CFile::Close();
}

void SECCompressFile::Abort()
{
    gzState.reset();
    CFile::Abort();
}
