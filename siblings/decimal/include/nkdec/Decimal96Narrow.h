#pragma once

/// @file
/// The pieces that the inlined paths of Decimal96 are made of: 128-bit integers, powers of ten, and rounding
/// by multiplied reciprocals. No interface for users.

#include <array>
#include <cstdint>

namespace nkdec {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

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
