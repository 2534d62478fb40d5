#pragma once

#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>

// An identifier of 16 bytes that is unique in the world. The fields lie in memory in the order of the
// machine; files and orderings see the 16 bytes as they lie. All zero until it is given.
struct _GUID
{
    using Bytes = std::array<unsigned char, 16>;

    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0;
    std::uint16_t Data3 = 0;
    std::uint8_t Data4[8] = {};

    constexpr Bytes bytes() const { return std::bit_cast<Bytes>(*this); }
    static constexpr _GUID fromBytes(Bytes const & bytes) { return std::bit_cast<_GUID>(bytes); }
    // The bytes as two numbers of the machine, for comparison and hashing.
    constexpr std::array<std::uint64_t, 2> halves() const { return std::bit_cast<std::array<std::uint64_t, 2>>(*this); }

    friend constexpr bool operator==(_GUID const & left, _GUID const & right)
    {
        return left.halves() == right.halves();
    }
    // By unsigned bytes in memory order.
    friend constexpr std::strong_ordering operator<=>(_GUID const & left, _GUID const & right)
    {
        auto const [a, b] = left.halves();
        auto const [c, d] = right.halves();
        return a == c ? firstByteHighest(b) <=> firstByteHighest(d) : firstByteHighest(a) <=> firstByteHighest(c);
    }

private:
    static constexpr std::uint64_t firstByteHighest(std::uint64_t half)
    {
        return std::endian::native == std::endian::little ? __builtin_bswap64(half) : half;
    }
};

static_assert(sizeof(_GUID) == 16);

// Writes an identifier that nobody has had before: random bytes, seeded by the system, marked as version 4. Safe
// from every thread and after a fork. False for a null pointer and nothing else; a system that yields no
// random bytes raises std::system_error, so that an identifier is never repeated.
bool CoCreateGuid(_GUID * guid);

template <>
struct std::hash<_GUID>
{
    // Stirs all 128 bits, for identifiers given by hand differ in few of them.
    std::size_t operator()(_GUID const & guid) const
    {
        auto const [a, b] = guid.halves();
        return static_cast<std::size_t>(stir(stir(a) + b));
    }

private:
    static constexpr std::uint64_t stir(std::uint64_t number)
    {
        number *= 0x9E3779B97F4A7C15u;
        return number ^ number >> 32;
    }
};
