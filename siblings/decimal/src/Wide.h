#pragma once

/// @file
/// Magnitudes of up to 192 bits: what two mantissas of 96 bits make when they are multiplied, aligned or
/// divided.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "nkdec/Decimal96Narrow.h"

namespace nkdec {

/// Three limbs, the lowest first.
struct Wide {
    std::uint64_t limb[3] = {0, 0, 0};
};

/// 10^0 to 10^28.
inline constexpr std::array<UInt128, 29> wideTenTo = [] {
    std::array<UInt128, 29> powers{};
    UInt128 power = 1;
    for (UInt128& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

constexpr std::uint64_t lower(UInt128 number) noexcept {
    return static_cast<std::uint64_t>(number);
}
constexpr std::uint64_t upper(UInt128 number) noexcept {
    return static_cast<std::uint64_t>(number >> 64U);
}
constexpr UInt128 joined(std::uint64_t high, std::uint64_t low) noexcept {
    return UInt128{high} << 64U | low;
}

constexpr Wide wide(UInt128 number) noexcept {
    return {{lower(number), upper(number), 0}};
}
/// The lower 128 bits.
constexpr UInt128 narrowed(const Wide& a) noexcept {
    return joined(a.limb[1], a.limb[0]);
}
constexpr bool fitsIn128(const Wide& a) noexcept {
    return a.limb[2] == 0;
}
constexpr bool isZero(const Wide& a) noexcept {
    return (a.limb[0] | a.limb[1] | a.limb[2]) == 0;
}

constexpr int bitLength(UInt128 number) noexcept {
    return upper(number) != 0 ? 128 - std::countl_zero(upper(number)) : 64 - std::countl_zero(lower(number));
}
constexpr int bitLength(const Wide& a) noexcept {
    return a.limb[2] != 0 ? 192 - std::countl_zero(a.limb[2]) : bitLength(narrowed(a));
}

/// A mantissa's magnitude stays below this.
inline constexpr int mantissaBits = 95;

constexpr bool fitsMantissa(UInt128 number) noexcept {
    return (number >> mantissaBits) == 0;
}
constexpr bool fitsMantissa(const Wide& a) noexcept {
    return fitsIn128(a) && fitsMantissa(narrowed(a));
}

/// -1, 0 or 1.
constexpr int compare(const Wide& a, const Wide& b) noexcept {
    for (int i = 2; i >= 0; --i) {
        if (a.limb[i] != b.limb[i]) return a.limb[i] < b.limb[i] ? -1 : 1;
    }
    return 0;
}

/// The sum, which fits.
constexpr Wide add(const Wide& a, const Wide& b) noexcept {
    const UInt128 low = UInt128{a.limb[0]} + b.limb[0];
    const UInt128 middle = UInt128{a.limb[1]} + b.limb[1] + upper(low);
    return {{lower(low), lower(middle), a.limb[2] + b.limb[2] + upper(middle)}};
}
/// a - b, where a >= b.
constexpr Wide subtract(const Wide& a, const Wide& b) noexcept {
    const UInt128 low = narrowed(a) - narrowed(b);
    const std::uint64_t borrow = narrowed(a) < narrowed(b) ? 1 : 0;
    return {{lower(low), upper(low), a.limb[2] - b.limb[2] - borrow}};
}

/// The product, which fits.
constexpr Wide multiply(UInt128 a, UInt128 b) noexcept {
    const UInt128 low = UInt128{lower(a)} * lower(b);
    const UInt128 cross1 = UInt128{lower(a)} * upper(b);
    const UInt128 cross2 = UInt128{upper(a)} * lower(b);
    const UInt128 middle = UInt128{upper(low)} + lower(cross1) + lower(cross2);
    const std::uint64_t high = upper(a) * upper(b) + upper(cross1) + upper(cross2) + upper(middle);
    return {{lower(low), lower(middle), high}};
}
/// The product plus a digit or group of digits, which fits.
constexpr Wide multiplyAdd(const Wide& a, std::uint64_t factor, std::uint64_t addend) noexcept {
    const UInt128 low = UInt128{a.limb[0]} * factor + addend;
    const UInt128 middle = UInt128{a.limb[1]} * factor + upper(low);
    return {{lower(low), lower(middle), a.limb[2] * factor + upper(middle)}};
}
/// number * 10^digits, for up to 56 digits; the product fits.
constexpr Wide withDigits(UInt128 number, int digits) noexcept {
    if (digits <= 28) return multiply(number, wideTenTo[static_cast<std::size_t>(digits)]);
    return multiply(number * wideTenTo[static_cast<std::size_t>(digits - 28)], wideTenTo[28]);
}

/// high:low / divisor, where high < divisor: one instruction, which compilers do not use by themselves.
inline std::uint64_t divide2by1(std::uint64_t high, std::uint64_t low, std::uint64_t divisor,
                                std::uint64_t& remainder) noexcept {
#if defined(__x86_64__)
    std::uint64_t quotient = 0;
    __asm__("divq %4" : "=a"(quotient), "=d"(remainder) : "0"(low), "1"(high), "r"(divisor) : "cc");
    return quotient;
#else
    const UInt128 dividend = joined(high, low);
    remainder = lower(dividend % divisor);
    return lower(dividend / divisor);
#endif
}

/// Divides in place and returns the remainder.
inline std::uint64_t divideBy(Wide& a, std::uint64_t divisor) noexcept {
    std::uint64_t remainder = 0;
    for (int i = 2; i >= 0; --i) {
        if (remainder == 0 && a.limb[i] < divisor) {  // spares leading zeros their division
            remainder = a.limb[i];
            a.limb[i] = 0;
        } else {
            a.limb[i] = divide2by1(remainder, a.limb[i], divisor, remainder);
        }
    }
    return remainder;
}

struct WideQuotient {
    Wide quotient;
    UInt128 remainder = 0;
};

/// a / 10^digits, for up to 28 digits.
inline WideQuotient withoutDigits(Wide a, int digits) noexcept {
    if (digits <= 19) {
        const std::uint64_t remainder = divideBy(a, tenTo[static_cast<std::size_t>(digits)]);
        return {a, remainder};
    }
    const std::uint64_t low = divideBy(a, tenTo[19]);
    const std::uint64_t high = divideBy(a, tenTo[static_cast<std::size_t>(digits - 19)]);
    return {a, UInt128{high} * tenTo[19] + low};
}

/// n2:n1:n0 / divisor, whose top bit is set; n2:n1 < divisor. The remainder replaces n2:n1.
inline std::uint64_t divide3by2(UInt128& n2n1, std::uint64_t n0, UInt128 divisor) noexcept {
    const std::uint64_t d1 = upper(divisor);
    std::uint64_t quotient = 0;
    std::uint64_t rest = 0;
    bool exceeds = false;  // the rest beside d0's product has grown beyond 64 bits
    if (upper(n2n1) == d1) {
        quotient = ~std::uint64_t{0};
        rest = lower(n2n1) + d1;
        exceeds = rest < d1;
    } else {
        quotient = divide2by1(upper(n2n1), lower(n2n1), d1, rest);
    }
    const std::uint64_t d0 = lower(divisor);
    UInt128 product = UInt128{quotient} * d0;
    while (!exceeds && product > joined(rest, n0)) {  // twice at most
        --quotient;
        product -= d0;
        rest += d1;
        exceeds = rest < d1;
    }
    n2n1 = joined(rest, n0) - product;
    return quotient;
}

/// a / divisor, for a divisor from 1 up to less than 2^127.
inline WideQuotient divide(Wide a, UInt128 divisor) noexcept {
    if (upper(divisor) == 0) {
        const std::uint64_t remainder = divideBy(a, lower(divisor));
        return {a, remainder};
    }
    const auto shift = static_cast<unsigned>(std::countl_zero(upper(divisor)));  // 1 to 63
    const auto shifted = [shift](std::uint64_t high, std::uint64_t low) {
        return high << shift | low >> (64U - shift);
    };
    const UInt128 top = divisor << shift;
    UInt128 rest = joined(a.limb[2] >> (64U - shift), shifted(a.limb[2], a.limb[1]));
    const std::uint64_t high = divide3by2(rest, shifted(a.limb[1], a.limb[0]), top);
    const std::uint64_t low = divide3by2(rest, a.limb[0] << shift, top);
    return {wide(joined(high, low)), rest >> shift};
}

}  // namespace nkdec
