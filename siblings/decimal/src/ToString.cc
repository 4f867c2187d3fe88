#include <algorithm>
#include <cstring>

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

}  // namespace

char* Decimal96::toString(char* buffer) const {
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
