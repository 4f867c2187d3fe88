#include "Exact.h"

#include <algorithm>

namespace nkdec {

namespace {

/// The powers of ten behind which nothing of a mantissa is left, and which no mantissa can be multiplied
/// with.
constexpr int digitsOfMantissa = 29;

Operand withScaleMultipliedOut(Operand operand) noexcept {
    if (operand.magnitude != 0) {
        if (operand.scale < -Decimal96::maxScale) {
            operand.state = Decimal96State::overflow;
            return operand;
        }
        const Wide product = withDigits(operand.magnitude, -operand.scale);
        if (!fitsMantissa(product)) {
            operand.state = Decimal96State::overflow;
            return operand;
        }
        operand.magnitude = narrowed(product);
    }
    operand.scale = 0;
    return operand;
}

Operand withPlacesRounded(Operand operand) noexcept {
    const int digits = operand.scale - Decimal96::maxScale;
    const Shortened rounded = shortened(wide(operand.magnitude), digits, Decimal96::PLAIN);
    operand.magnitude = narrowed(rounded.quotient);
    operand.negative = operand.negative && operand.magnitude != 0;
    operand.inexact = rounded.inexact;
    operand.scale = Decimal96::maxScale;
    return operand;
}

}  // namespace

Operand normalised(const Decimal96& number) noexcept {
    Operand operand;
    operand.state = number.state();
    const Int128 mantissa = Decimal96Access::mantissa(number);
    operand.negative = mantissa < 0;
    operand.magnitude = static_cast<UInt128>(operand.negative ? -mantissa : mantissa);
    operand.scale = number.scale();
    if (operand.scale < 0) return withScaleMultipliedOut(operand);
    if (operand.scale > Decimal96::maxScale) return withPlacesRounded(operand);
    return operand;
}

Operand taken(const Decimal96& number, Operation operation) {
    const Operand operand = normalised(number);
    if (operand.state == Decimal96State::overflow && number.isNumber()) overflow(operation);
    if (operand.inexact) reportInexact(operation);
    return operand;
}

Shortened shortened(const Wide& magnitude, int digits, Rounding method) noexcept {
    if (digits <= 0) return {magnitude, false};
    if (digits > 2 * digitsOfMantissa) {  // nothing is left but what the method makes of a trace
        const bool trace = !isZero(magnitude);
        return {wide(trace && method == Decimal96::UP ? 1U : 0U), trace};
    }
    // All digits but the last 28 to go are cut off first: what they leave behind matters to UP alone.
    constexpr int most = 28;
    const int before = std::max(digits - most, 0);
    WideQuotient first{magnitude, 0};
    bool trace = false;
    for (int rest = before; rest > 0; rest -= most) {
        first = withoutDigits(first.quotient, std::min(rest, most));
        trace = trace || first.remainder != 0;
    }
    const int last = digits - before;
    WideQuotient second = withoutDigits(first.quotient, last);
    const UInt128 divisor = wideTenTo[static_cast<std::size_t>(last)];
    if (roundsUp(second.remainder, divisor, method) || (trace && method == Decimal96::UP)) {
        second.quotient = add(second.quotient, wide(1));
    }
    return {second.quotient, trace || second.remainder != 0};
}

Decimal96 fitted(const Exact& exact, Operation operation, int places, Rounding method, bool asked) {
    const int wanted = std::max(exact.scale - places, 0);
    // The fewest digits to go: n bits beyond the mantissa are at least (n - 1) * lg 2 digits.
    const int bits = std::max(bitLength(exact.magnitude) - mantissaBits - 1, 0);
    for (int digits = std::max(wanted, bits * 1233 / 4096); digits <= exact.scale; ++digits) {
        const Shortened result = shortened(exact.magnitude, digits, method);
        if (!fitsMantissa(result.quotient)) continue;
        if ((result.inexact || exact.trace) && !(asked && digits == wanted)) reportInexact(operation);
        return number(narrowed(result.quotient), exact.negative, exact.scale - digits);
    }
    return overflow(operation);
}

}  // namespace nkdec
