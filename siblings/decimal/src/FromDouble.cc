#include <algorithm>
#include <charconv>
#include <cmath>

#include "Exact.h"

using namespace nkdec;

namespace {

constexpr double firstWithoutPlaces = 9007199254740992.0;        // 2^53
constexpr double firstBeyond = 39614081257132168796771975168.0;  // 2^95

/// From 2^53 on a double is a whole number.
Decimal96 fromWhole(double value) noexcept {
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(value), &exponent);
    const auto bits = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
    return number(UInt128{bits} << static_cast<unsigned>(exponent - 53), value < 0, 0);
}

/// From the shortest digits, which are those with the fewest places below 2^53.
Decimal96 fromShortest(double value) {
    char text[32];
    const auto [end, error] =
        std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific);
    const char* const letter = std::find(text, end, 'e');
    std::uint64_t digits = 0;
    for (const char* p = text; p != letter; ++p) {
        if (*p != '.') digits = digits * 10 + static_cast<std::uint64_t>(*p - '0');
    }
    int exponent = 0;
    std::from_chars(letter + (letter[1] == '+' ? 2 : 1), end, exponent);
    const int places = std::max(static_cast<int>(letter - text) - 2, 0) - exponent;
    if (places < 0) return number(static_cast<std::uint64_t>(std::fabs(value)), value < 0, 0);
    if (places <= Decimal96::maxScale) return number(digits, value < 0, places);
    const Shortened rounded = shortened(wide(digits), places - Decimal96::maxScale, Decimal96::PLAIN);
    reportInexact(Operation::fromDouble);
    return number(narrowed(rounded.quotient), value < 0, Decimal96::maxScale);
}

}  // namespace

Decimal96 Decimal96::from(double value) {
    // What people write has few places: the first count that gives the double back is the fewest.
    constexpr int fewPlaces = 6;
    constexpr double mostForFewPlaces = 1e9;  // a product of up to 10^15 is off by less than a half
    const double magnitude = std::fabs(value);
    if (magnitude < mostForFewPlaces) {
        double power = 1;
        for (int places = 0; places <= fewPlaces; ++places, power *= 10) {
            const double raised = magnitude * power + 0.5;
            const auto nearest = static_cast<std::int64_t>(raised);
            if (static_cast<double>(nearest) / power == magnitude) {
                return Decimal96(std::signbit(value) ? -nearest : nearest,
                                 static_cast<std::uint32_t>(places));
            }
        }
    }
    if (!(magnitude < firstBeyond)) return overflow(Operation::fromDouble);
    return magnitude < firstWithoutPlaces ? fromShortest(value) : fromWhole(value);
}
