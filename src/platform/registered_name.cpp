#include "platform/registered_name.h"

#include <mutex>
#include <unordered_map>

#include "platform/string.h"

namespace
{

unsigned registerName(char const * name)
{
    static std::mutex mutex;
    static auto & numbers = *new std::unordered_map<CString, unsigned>;
    constexpr unsigned first = 0xC000, last = 0xFFFF;

    CString const key(name);
    std::lock_guard const lock(mutex);
    if (auto const known = numbers.find(key); known != numbers.end()) return known->second;
    if (key.IsEmpty() || numbers.size() > last - first) return 0;
    unsigned const number = first + static_cast<unsigned>(numbers.size());
    numbers.emplace(key, number);
    return number;
}

}  // namespace

unsigned RegisterClipboardFormat(char const * name)
{
    return registerName(name);
}

unsigned RegisterWindowMessage(char const * name)
{
    return registerName(name);
}
