#include <algorithm>

#include "Exact.h"

using namespace nkdec;

namespace {

/// The truncated quotient and the remainder of two magnitudes at one scale.
struct Division {
    Wide quotient;
    UInt128 remainder = 0;
};

Division wholeQuotient(const Operand& a, const Operand& b) noexcept {
    if (a.scale <= b.scale) {
        const WideQuotient result = divide(withDigits(a.magnitude, b.scale - a.scale), b.magnitude);
        return {result.quotient, result.remainder};
    }
    const Wide divisor = withDigits(b.magnitude, a.scale - b.scale);
    if (!fitsMantissa(divisor)) return {Wide{}, a.magnitude};  // larger than any mantissa
    const WideQuotient result = divide(wide(a.magnitude), narrowed(divisor));
    return {result.quotient, result.remainder};
}

}  // namespace

Decimal96 Decimal96::remainderWide(Decimal96 a, Decimal96 b) {
    if (canBeAligned(a, b)) {
        const Alignment factors = alignment(a, b);
        const UInt128 dividend = UInt128{magnitudeOf(a.narrow())} * static_cast<std::uint64_t>(factors.left);
        const UInt128 divisor = UInt128{magnitudeOf(b.narrow())} * static_cast<std::uint64_t>(factors.right);
        if (upper(dividend | divisor) == 0 && divisor != 0) {
            return number(lower(dividend) % lower(divisor), a.isNegative(),
                          static_cast<int>(std::max(a.m_tag, b.m_tag)));
        }
    }
    const Operand left = taken(a, Operation::remainder);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::remainder);
    if (!right.isNumber()) return right.asNonNumber();
    if (right.magnitude == 0) return overflow(Operation::remainder);
    const Division division = wholeQuotient(left, right);
    if (!fitsMantissa(division.quotient)) return overflow(Operation::remainder);
    return number(division.remainder, left.negative, std::max(left.scale, right.scale));
}

Decimal96 Decimal96::truncatedQuotient(const Decimal96& divisor) const {
    const Operand left = taken(*this, Operation::divide);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(divisor, Operation::divide);
    if (!right.isNumber()) return right.asNonNumber();
    if (right.magnitude == 0) return overflow(Operation::divide);
    const Division division = wholeQuotient(left, right);
    if (!fitsMantissa(division.quotient)) return overflow(Operation::divide);
    return number(narrowed(division.quotient), left.negative != right.negative, 0);
}
