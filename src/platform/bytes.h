#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <type_traits>

namespace orvane
{

// Where bytes go. A sink that can take no more throws.
class IByteSink
{
public:
    virtual void write(void const * data, std::size_t size) = 0;

protected:
    ~IByteSink() = default;
};

// Where bytes come from.
class IByteSource
{
public:
    // How many bytes were read: fewer than asked for only at the end of the source. May also throw there.
    virtual std::size_t read(void * data, std::size_t size) = 0;

protected:
    ~IByteSource() = default;
};

template <class T>
concept Number = std::is_arithmetic_v<T>;

// A number as its bytes lie in a file, lowest first, and back.
template <Number T>
using NumberBytes = std::array<unsigned char, sizeof(T)>;

template <Number T>
NumberBytes<T> toBytes(T number)
{
    auto bytes = std::bit_cast<NumberBytes<T>>(number);
    if constexpr (std::endian::native == std::endian::big) std::ranges::reverse(bytes);
    return bytes;
}
template <Number T>
T fromBytes(NumberBytes<T> bytes)
{
    if constexpr (std::endian::native == std::endian::big) std::ranges::reverse(bytes);
    return std::bit_cast<T>(bytes);
}

template <Number T>
void writeNumber(IByteSink & sink, T number)
{
    auto const bytes = toBytes(number);
    sink.write(bytes.data(), bytes.size());
}
// False, with the number as it was, where the source ends first. Not for bool, which has two values only.
template <Number T>
    requires(!std::same_as<T, bool>)
bool readNumber(IByteSource & source, T & number)
{
    NumberBytes<T> bytes;
    if (source.read(bytes.data(), bytes.size()) != bytes.size()) return false;
    number = fromBytes<T>(bytes);
    return true;
}

}  // namespace orvane
