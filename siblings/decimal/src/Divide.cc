#include <algorithm>

#include "Exact.h"

using namespace nkdec;

namespace {

/// A quotient's places: how many the numerator is multiplied out to, and at which scale it then is.
struct Steps {
    int digits = 0;
    int scale = 0;
};

/// The quotient without the zeros behind its last digit, down to @p least places.
Decimal96 stripped(UInt128 magnitude, bool negative, int scale, int least) noexcept {
    for (int step = 16; step > 0; step /= 2) {
        while (scale - step >= least) {
            const WideQuotient shorter = withoutDigits(wide(magnitude), step);
            if (shorter.remainder != 0) break;
            magnitude = narrowed(shorter.quotient);
            scale -= step;
        }
    }
    return number(magnitude, negative, scale);
}

/// The most digits that the numerator can be multiplied with so that the quotient fits, or one more than
/// that: a / b lies above 2^(bits(a) - bits(b) - 1).
int mostDigits(UInt128 numerator, UInt128 divisor) noexcept {
    const int bits = mantissaBits + 1 - bitLength(numerator) + bitLength(divisor);
    return bits * 1233 / 4096;
}

/// The quotient at the largest scale up to that of @p most at which it fits.
/// @param least  what the numerator is multiplied with at least
/// @param asked  the places are what the caller wants, so that digits behind them are no loss
Decimal96 quotientOf(const Operand& a, const Operand& b, Steps least, Steps most, Rounding method,
                     bool asked) {
    const bool negative = a.negative != b.negative;
    const int digits = std::min(mostDigits(a.magnitude, b.magnitude), most.digits);
    if (digits < least.digits) return overflow(Operation::divide);
    int scale = most.scale - (most.digits - digits);

    const WideQuotient division = divide(withDigits(a.magnitude, digits), b.magnitude);
    UInt128 result = narrowed(division.quotient);
    UInt128 remainder = division.remainder;
    UInt128 divisor = b.magnitude;
    const auto rounded = [&] { return result + (roundsUp(remainder, divisor, method) ? 1U : 0U); };
    if (!fitsMantissa(rounded())) {
        const WideQuotient shorter = withoutDigits(wide(result), 1);
        result = narrowed(shorter.quotient);
        remainder += shorter.remainder * divisor;
        divisor *= 10;
        --scale;
        if (digits == least.digits || !fitsMantissa(rounded())) return overflow(Operation::divide);
    }
    if (remainder != 0) {
        if (!asked || scale != most.scale) reportInexact(Operation::divide);
        return number(rounded(), negative, scale);
    }
    return asked ? number(result, negative, scale) : stripped(result, negative, scale, least.scale);
}

/// A quotient that needs no digits behind those of the numerator, if both fit 64 bits.
bool isPlain(const Operand& a, const Operand& b, int digits) noexcept {
    return digits <= 9 && upper(a.magnitude) == 0 && upper(b.magnitude) == 0 &&
           lower(a.magnitude) >> 32U == 0 &&
           lower(a.magnitude) * tenTo[static_cast<std::size_t>(digits)] % lower(b.magnitude) == 0;
}

}  // namespace

Decimal96 Decimal96::divideWide(Decimal96 a, Decimal96 b) {
    const Operand left = taken(a, Operation::divide);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::divide);
    if (!right.isNumber()) return right.asNonNumber();
    if (right.magnitude == 0) return overflow(Operation::divide);

    const Steps least{std::max(right.scale - left.scale, 0), std::max(left.scale - right.scale, 0)};
    if (left.magnitude == 0) return number(0, false, least.scale);
    if (isPlain(left, right, least.digits)) {
        const std::uint64_t quotient =
            lower(left.magnitude) * tenTo[static_cast<std::size_t>(least.digits)] / lower(right.magnitude);
        return number(quotient, left.negative != right.negative, least.scale);
    }
    const Steps most{least.digits + maxScale - least.scale, maxScale};
    return quotientOf(left, right, least, most, PLAIN, false);
}

Decimal96 Decimal96::divideRoundedWide(Decimal96 a, Decimal96 b, int places, Rounding method) {
    places = std::clamp(places, 0, maxScale);
    const Operand left = taken(a, Operation::divide);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::divide);
    if (!right.isNumber()) return right.asNonNumber();
    if (right.magnitude == 0) return overflow(Operation::divide);
    if (left.magnitude == 0) return number(0, false, places);

    const int digits = places - left.scale + right.scale;
    if (digits >= 0) return quotientOf(left, right, {digits - places, 0}, {digits, places}, method, true);
    // More places are held than are wanted: the divisor is lengthened instead.
    const Wide divisor = withDigits(right.magnitude, -digits);
    const bool negative = left.negative != right.negative;
    if (!fitsMantissa(divisor)) {
        const bool up =
            method == UP ||
            (method == PLAIN && compare(add(wide(left.magnitude), wide(left.magnitude)), divisor) >= 0);
        return number(up ? 1U : 0U, negative && up, places);
    }
    const WideQuotient quotient = divide(wide(left.magnitude), narrowed(divisor));
    const bool up = roundsUp(quotient.remainder, narrowed(divisor), method);
    return number(narrowed(quotient.quotient) + (up ? 1U : 0U), negative, places);
}
