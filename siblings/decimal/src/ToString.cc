#include <algorithm>
#include <cstring>

#include "Digits.h"
#include "Exact.h"

using namespace nkdec;

namespace {

constexpr int mostDigits = 32;  // room for a mantissa's 29 and for 28 places behind a zero

constexpr auto pairs = [] {
    std::array<char, 200> digits{};
    for (std::size_t i = 0; i < 100; ++i) {
        digits[2 * i] = static_cast<char>('0' + i / 10);
        digits[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return digits;
}();

/// Writes digits backwards in front of @p end, two in a step; returns where they begin.
char* writeBackwards(std::uint64_t number, char* end) noexcept {
    while (number >= 100) {
        const std::uint64_t rest = number / 100;
        std::memcpy(end -= 2, &pairs[2 * (number - rest * 100)], 2);
        number = rest;
    }
    if (number >= 10) {
        std::memcpy(end -= 2, &pairs[2 * number], 2);
    } else {
        *--end = static_cast<char>('0' + number);
    }
    return end;
}

/// All digits of a mantissa in front of @p end.
char* writeMantissa(UInt128 magnitude, char* end) noexcept {
    if (upper(magnitude) == 0) return writeBackwards(lower(magnitude), end);
    const WideQuotient halves = withoutDigits(wide(magnitude), 18);
    char* const middle = end - 18;
    char* first = writeBackwards(lower(halves.remainder), end);
    while (first != middle)
        *--first = '0';
    return writeBackwards(lower(narrowed(halves.quotient)), middle);
}

/// Puts sign, digits and point together.
char* composed(const char* first, const char* last, bool negative, int places, char* out) noexcept {
    if (negative) *out++ = '-';
    const std::ptrdiff_t whole = last - first - places;
    std::memcpy(out, first, static_cast<std::size_t>(whole));
    out += whole;
    if (places > 0) {
        *out++ = '.';
        std::memcpy(out, first + whole, static_cast<std::size_t>(places));
        out += places;
    }
    *out = '\0';
    return out;
}

constexpr std::uint64_t eightDigitsEnd = 100'000'000;              // 10^8
constexpr std::uint64_t fifteenDigitsEnd = 1'000'000'000'000'000;  // 10^15

/// Writes digits that a register holds, the last one in its highest byte. Whole registers are stored, the
/// later ones over the rest of those before.
/// @param held  how many digits are held, leading zeros not counted; with one in front of the places they fit
template <class Register>
char* writeRegister(Register text, unsigned held, bool negative, unsigned places, char* out) noexcept {
    constexpr auto size = static_cast<unsigned>(sizeof(Register));
    const unsigned whole = std::max(held, places + 1) - places;
    *out = '-';
    out += static_cast<unsigned>(negative);
    store(text >> 8U * (size - places - whole), out);
    out += whole;
    *out = '.';
    store(text >> (8U * (size - places) & (8U * size - 1U)), out + 1);
    out += places + static_cast<unsigned>(places > 0);
    *out = '\0';
    return out;
}

/// Of up to 15 digits, so that the last register ends within the 33 bytes; with up to 15 places.
char* writeShort(std::uint64_t magnitude, bool negative, unsigned places, char* out) noexcept {
    if (magnitude < eightDigitsEnd && places < 8) {
        const std::uint64_t digits = eightDigits(static_cast<std::uint32_t>(magnitude));
        return writeRegister(digits | zeros, 8 - leadingZeros(digits), negative, places, out);
    }
    const std::uint64_t first = eightDigits(static_cast<std::uint32_t>(magnitude / eightDigitsEnd));
    const std::uint64_t last = eightDigits(static_cast<std::uint32_t>(magnitude % eightDigitsEnd));
    const unsigned held = first != 0 ? 16 - leadingZeros(first) : 8 - leadingZeros(last);
    return writeRegister(joined(last | zeros, first | zeros), held, negative, places, out);
}

}  // namespace

char* Decimal96::toString(char* buffer) const {
    if (hasDigitRegisters && __builtin_expect(m_tag <= 15 && isNarrow(), 1)) {
        const std::uint64_t magnitude = magnitudeOf(narrow());
        if (__builtin_expect(magnitude < fifteenDigitsEnd, 1))
            return writeShort(magnitude, isNegative(), m_tag, buffer);
    }
    const Operand operand = normalised(*this);
    if (!operand.isNumber()) {
        if (isNumber()) overflow(Operation::toText);
        std::memcpy(buffer, "NaN", 4);
        return buffer + 3;
    }
    char digits[mostDigits];
    char* const last = digits + mostDigits;
    char* first = writeMantissa(operand.magnitude, last);
    while (last - first <= operand.scale)
        *--first = '0';
    return composed(first, last, operand.negative, operand.scale, buffer);
}
