#pragma once

/// @file
/// Sixteen decimal digits in a register: the text of most numbers is read and written without a branch that
/// depends on its length. The first digit is the lowest byte, as it lies in the memory of a little-endian
/// machine.

#include <bit>
#include <cstdint>
#include <cstring>

#include "nkdec/Decimal96Narrow.h"

namespace nkdec {

inline constexpr bool hasDigitRegisters = std::endian::native == std::endian::little;

constexpr std::uint64_t repeated(unsigned char byte) noexcept {
    return byte * std::uint64_t{0x0101010101010101};
}

/// The characters '0'.
inline constexpr std::uint64_t zeros = repeated('0');

/// The digits, as numbers, of n < 10^8.
constexpr std::uint64_t eightDigits(std::uint32_t n) noexcept {
    // Each step splits all parts in two, by multiplying with a reciprocal that is exact for the part's range.
    std::uint64_t parts = n / 10000 | std::uint64_t{n % 10000} << 32U;
    std::uint64_t heads = (parts * 10486 >> 20U) & 0x0000007F0000007FU;
    parts = heads | (parts - heads * 100) << 16U;
    heads = (parts * 103 >> 10U) & 0x000F000F000F000FU;
    return heads | (parts - heads * 10) << 8U;
}

/// The number of eight digits, each at most 9.
constexpr std::uint64_t ofEightDigits(std::uint64_t digits) noexcept {
    // Each step joins two neighbours: the first times 10, 100, 10000 plus the second.
    digits = digits * ((10U << 8U) + 1U) >> 8U & 0x00FF00FF00FF00FFU;
    digits = digits * ((100U << 16U) + 1U) >> 16U & 0x0000FFFF0000FFFFU;
    return digits * ((std::uint64_t{10000} << 32U) + 1U) >> 32U;
}

/// Whether every byte is a digit's number.
constexpr bool areDigits(std::uint64_t bytes) noexcept {
    return (((bytes + repeated(0x76)) | bytes) & repeated(0x80)) == 0;
}

/// How many bytes stand in front of the first one that is not 0, 7 if there is none.
constexpr unsigned leadingZeros(std::uint64_t bytes) noexcept {
    return static_cast<unsigned>(std::countr_zero(bytes | std::uint64_t{1} << 63U)) / 8;
}

/// Eight characters, or four.
inline std::uint64_t loadEight(const char* text) noexcept {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}
inline std::uint32_t loadFour(const char* text) noexcept {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}

template <class Bytes>
void store(Bytes bytes, char* text) noexcept {
    std::memcpy(text, &bytes, sizeof bytes);
}

}  // namespace nkdec
