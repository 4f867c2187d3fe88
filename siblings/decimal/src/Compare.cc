#include <algorithm>

#include "Exact.h"

using namespace nkdec;

int Decimal96::compareWide(Decimal96 a, Decimal96 b) {
    const Operand left = taken(a, Operation::compare);
    const Operand right = taken(b, Operation::compare);
    if (!left.isNumber() || !right.isNumber())
        return static_cast<int>(left.state) - static_cast<int>(right.state);
    if (left.negative != right.negative) return left.negative ? -1 : 1;
    const int scale = std::max(left.scale, right.scale);
    const int order = compare(withDigits(left.magnitude, scale - left.scale),
                              withDigits(right.magnitude, scale - right.scale));
    return left.negative ? -order : order;
}

std::size_t Decimal96::hash() const noexcept {
    Operand operand = normalised(*this);
    if (!operand.isNumber()) return static_cast<std::size_t>(operand.state);
    for (int step = 16; step > 0; step /= 2) {
        while (operand.scale >= step) {
            const WideQuotient shorter = withoutDigits(wide(operand.magnitude), step);
            if (shorter.remainder != 0) break;
            operand.magnitude = narrowed(shorter.quotient);
            operand.scale -= step;
        }
    }
    // Multiplying spreads every bit upward, the shift brings it down again.
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;
    std::uint64_t bits = (lower(operand.magnitude) ^ upper(operand.magnitude) * spread) * spread;
    bits = (bits ^ bits >> 32U) + static_cast<std::uint64_t>(operand.scale * 2 + (operand.negative ? 1 : 0));
    bits *= spread;
    return static_cast<std::size_t>(bits ^ bits >> 32U);
}
