#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string>

#include "platform/string.h"

// A file in memory, under a path.
class CMemoryPath
{
public:
    CMemoryPath(void const * data, std::size_t size) : handle(memfd_create("document", MFD_CLOEXEC))
    {
        if (write(handle, data, size) != static_cast<ssize_t>(size)) std::abort();
    }
    CMemoryPath(CMemoryPath const &) = delete;
    CMemoryPath & operator=(CMemoryPath const &) = delete;
    ~CMemoryPath() { close(handle); }
    CString path() const { return CString(std::string_view("/proc/self/fd/" + std::to_string(handle))); }

private:
    int handle;
};
