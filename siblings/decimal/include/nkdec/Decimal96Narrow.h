#pragma once

/// @file
/// The pieces that the inlined paths of Decimal96 are made of: 128-bit integers, powers of ten, and rounding
/// by multiplied reciprocals. No interface for users.

#include <array>
#include <cstdint>

namespace nkdec {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// 0, or -1 for a negative number: what flips the bits of one.
constexpr std::int64_t signOf(std::int64_t n) noexcept {
    return n >> 63;
}
constexpr std::uint64_t magnitudeOf(std::int64_t n) noexcept {
    const auto sign = static_cast<std::uint64_t>(signOf(n));
    return (static_cast<std::uint64_t>(n) ^ sign) - sign;
}
/// The magnitude, below 2^63, with that sign.
constexpr std::int64_t withSign(std::uint64_t magnitude, std::int64_t sign) noexcept {
    return (static_cast<std::int64_t>(magnitude) ^ sign) - sign;
}

/// 10^0 to 10^19, all that fit into 64 bits.
inline constexpr std::array<std::uint64_t, 20> tenTo = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

/// What two mantissas are multiplied with so that they have one scale: the one with fewer places with a power
/// of ten, the other with 1.
struct Alignment {
    std::int64_t left;
    std::int64_t right;
};

/// The largest difference of two scales at which a product of 64 bits and the power stays below 2^127.
inline constexpr unsigned mostAligned = 18;

/// For the scale of the left number less that of the right one, from -18 to 18, plus 18.
inline constexpr std::array<Alignment, 2 * mostAligned + 1> alignments = [] {
    std::array<Alignment, 2 * mostAligned + 1> result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        const std::size_t leftDigits = i < mostAligned ? mostAligned - i : 0;
        const std::size_t rightDigits = i < mostAligned ? 0 : i - mostAligned;
        result[i] = {static_cast<std::int64_t>(tenTo[leftDigits]),
                     static_cast<std::int64_t>(tenTo[rightDigits])};
    }
    return result;
}();

/// Stands for a division by 10^k: the quotient of n < 2^63 is the upper half of 2n * factor, shifted right.
struct Reciprocal {
    std::uint64_t factor;
    unsigned shift;
};

/// For 10^0 to 10^18. With 2^shift the first power of two that is not below d = 10^k, the factor exceeds
/// 2^(63 + shift) / d by at most 1, which is too little to carry any n below 2^63 over the next quotient.
inline constexpr std::array<Reciprocal, 19> reciprocals = [] {
    std::array<Reciprocal, 19> result{};
    unsigned shift = 0;
    for (std::size_t k = 0; k < result.size(); ++k) {
        while ((UInt128{1} << shift) < tenTo[k])
            ++shift;
        result[k] = {static_cast<std::uint64_t>((UInt128{1} << (63U + shift)) / tenTo[k] + 1U), shift};
    }
    return result;
}();

/// n / 10^places, for n < 2^63 and places <= 18.
constexpr std::uint64_t withoutDigits(std::uint64_t n, unsigned places) noexcept {
    const Reciprocal reciprocal = reciprocals[places];
    const std::uint64_t doubled = n << 1U;
    return static_cast<std::uint64_t>((UInt128{doubled} * reciprocal.factor) >> 64U) >> reciprocal.shift;
}

}  // namespace nkdec
