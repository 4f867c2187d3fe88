#include <algorithm>

#include "Exact.h"

using namespace nkdec;

Decimal96 Decimal96::addWide(Decimal96 a, Decimal96 b) {
    const Operand left = taken(a, Operation::add);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::add);
    if (!right.isNumber()) return right.asNonNumber();

    const int scale = std::max(left.scale, right.scale);
    const Wide leftAligned = withDigits(left.magnitude, scale - left.scale);
    const Wide rightAligned = withDigits(right.magnitude, scale - right.scale);
    if (left.negative == right.negative) {
        return fitted({add(leftAligned, rightAligned), scale, left.negative}, Operation::add);
    }
    if (compare(leftAligned, rightAligned) < 0) {
        return fitted({subtract(rightAligned, leftAligned), scale, right.negative}, Operation::add);
    }
    return fitted({subtract(leftAligned, rightAligned), scale, left.negative}, Operation::add);
}
