#include "platform/guid.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <pthread.h>
#include <sys/random.h>

namespace
{

std::atomic<std::uint32_t> forks = 0;

void requireForkNotice()
{
    // A failure is remembered: without the notice a child would repeat its parent.
    static int const error = pthread_atfork(nullptr, nullptr, [] { ++forks; });
    if (error != 0) throw std::system_error(error, std::generic_category(), "pthread_atfork");
}

void fillWithEntropy(unsigned char * data, std::size_t size)
{
    while (size > 0)
    {
        ssize_t const got = getrandom(data, size, 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) throw std::system_error(errno, std::generic_category(), "getrandom");
        data += got;
        size -= static_cast<std::size_t>(got);
    }
}

// Random identifiers drawn ahead, since one call of the system costs more than the identifier.
class GuidPool
{
public:
    _GUID take()
    {
        if (next == pool.size() || drawnAfterForks != forks.load(std::memory_order_relaxed)) draw();
        _GUID guid = pool[next++];
        guid.Data3 = static_cast<std::uint16_t>((guid.Data3 & 0x0FFF) | 0x4000);
        guid.Data4[0] = static_cast<std::uint8_t>((guid.Data4[0] & 0x3F) | 0x80);
        return guid;
    }

private:
    void draw()
    {
        requireForkNotice();
        next = pool.size();
        drawnAfterForks = forks;
        fillWithEntropy(reinterpret_cast<unsigned char *>(pool.data()), sizeof pool);
        next = 0;
    }

    std::array<_GUID, 256> pool;
    std::size_t next = pool.size();
    std::uint32_t drawnAfterForks = 0;
};

// One for each thread: no lock, and usable from constructors and destructors of static objects.
constinit thread_local GuidPool stock;

}  // namespace

bool CoCreateGuid(_GUID * guid)
{
    if (!guid) return false;
    *guid = stock.take();
    return true;
}
