#include <cmath>
#include <limits>

#include "Exact.h"

using namespace nkdec;

namespace {

constexpr std::uint64_t exactBelow = std::uint64_t{1} << 53U;

constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int mostExactPower = 22;

/// The nearest double of a positive number with a trace of more below it.
double nearest(UInt128 number, bool trace, int exponent) noexcept {
    const int surplus = bitLength(number) - 54;  // one bit more than a double has decides
    auto bits = lower(number >> static_cast<unsigned>(surplus));
    trace = trace || (number & ((UInt128{1} << static_cast<unsigned>(surplus)) - 1U)) != 0;
    const bool half = (bits & 1U) != 0;
    bits >>= 1U;
    if (half && (trace || (bits & 1U) != 0)) ++bits;
    return std::ldexp(static_cast<double>(bits), exponent + surplus + 1);
}

double converted(const Operand& operand) noexcept {
    if (operand.magnitude == 0) return 0;
    if (operand.magnitude <= exactBelow && operand.scale <= mostExactPower) {
        // Two exact numbers: the division rounds once.
        return static_cast<double>(lower(operand.magnitude)) / exactPowers[operand.scale];
    }
    // The numerator fills 190 bits and more, so the quotient has at least 96, plenty for a double.
    const int shift = 190 - bitLength(operand.magnitude);
    const Wide numerator =
        multiply(operand.magnitude << static_cast<unsigned>(shift - 95), UInt128{1} << 95U);
    const WideQuotient result = divide(numerator, wideTenTo[static_cast<std::size_t>(operand.scale)]);
    Wide quotient = result.quotient;
    bool trace = result.remainder != 0;
    int exponent = -shift;
    if (!fitsIn128(quotient)) {
        trace = trace || quotient.limb[0] != 0;
        quotient = {{quotient.limb[1], quotient.limb[2], 0}};
        exponent += 64;
    }
    return nearest(narrowed(quotient), trace, exponent);
}

}  // namespace

double Decimal96::toDouble() const noexcept {
    const Operand operand = normalised(*this);
    if (!operand.isNumber()) return std::numeric_limits<double>::quiet_NaN();
    const double magnitude = converted(operand);
    return operand.negative ? -magnitude : magnitude;
}
