#pragma once

#include "platform/guid.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>

// The identity of an entity. The default one is NULL and belongs to no entity.
class CHandle
{
public:
    CHandle() = default;
    CHandle(_GUID const & guid) : guid(guid) {}

    // A handle that nobody has had before.
    static CHandle create()
    {
        _GUID guid;
        CoCreateGuid(&guid);
        return guid;
    }

    _GUID const & getGUID() const { return guid; }
    bool isNull() const { return guid == _GUID(); }

    friend bool operator==(CHandle const &, CHandle const &) = default;

private:
    _GUID guid;
};

namespace orvane
{

// Hashes handles with a secret of its own, so that no file can be made whose handles all meet in one place.
class HandleHash
{
public:
    std::size_t operator()(CHandle const & handle) const
    {
        auto const [first, second] = handle.getGUID().halves();
        auto const [firstSecret, secondSecret] = secret.getGUID().halves();
        std::array<std::uint64_t, 2> const hidden = {first ^ firstSecret, second ^ secondSecret};
        return std::hash<_GUID>()(std::bit_cast<_GUID>(hidden));
    }

private:
    CHandle secret = CHandle::create();
};

}  // namespace orvane
