#include <algorithm>

#include "Exact.h"

using namespace nkdec;

namespace {

/// Rounded to tens, hundreds ..., which are written out again.
Decimal96 roundedToUnits(const Operand& operand, int zeros, Decimal96::Rounding method) {
    // Beyond 29 zeros only UP leaves a trace, which is too large then.
    zeros = std::min(zeros, 30);
    const Wide units = shortened(wide(operand.magnitude), operand.scale + zeros, method).quotient;
    if (isZero(units)) return Decimal96();
    const Wide product = zeros > 28 ? Wide{{0, 0, 1}} : withDigits(narrowed(units), zeros);
    if (!fitsMantissa(product)) return overflow(Operation::round);
    return number(narrowed(product), operand.negative, 0);
}

}  // namespace

Decimal96 Decimal96::roundWide(Decimal96 number, int places, Rounding method) {
    if (!number.isNumber() || places >= number.scale()) return number;
    const Operand operand = taken(number, Operation::round);
    if (!operand.isNumber()) return operand.asNonNumber();
    if (places < 0) return roundedToUnits(operand, places < -30 ? 30 : -places, method);
    return fitted({wide(operand.magnitude), operand.scale, operand.negative}, Operation::round, places,
                  method, true);
}
