#include "platform/guid.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <optional>
#include <random>
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

// Random identifiers from a generator that the system seeds: one call of the system costs more than many identifiers.
class GuidStock
{
public:
    _GUID take()
    {
        if (!generator || seededAfterForks != forks.load(std::memory_order_relaxed)) seed();
        std::uint64_t const bytes[] = {(*generator)(), (*generator)()};
        _GUID guid;
        std::memcpy(&guid, bytes, sizeof guid);
        guid.Data3 = static_cast<std::uint16_t>((guid.Data3 & 0x0FFF) | 0x4000);
        guid.Data4[0] = static_cast<std::uint8_t>((guid.Data4[0] & 0x3F) | 0x80);
        return guid;
    }

private:
    void seed()
    {
        requireForkNotice();
        // Nothing is drawn unless the system yielded all of it.
        generator.reset();
        seededAfterForks = forks;
        std::array<std::uint32_t, 16> entropy;
        fillWithEntropy(reinterpret_cast<unsigned char *>(entropy.data()), sizeof entropy);
        std::seed_seq sequence(entropy.begin(), entropy.end());
        generator.emplace(sequence);
    }

    std::optional<std::mt19937_64> generator;
    std::uint32_t seededAfterForks = 0;
};

// One for each thread: no lock, and usable from constructors and destructors of static objects.
constinit thread_local GuidStock stock;

}  // namespace

bool CoCreateGuid(_GUID * guid)
{
    if (!guid) return false;
    *guid = stock.take();
    return true;
}
