#include <algorithm>

#include "Exact.h"

using namespace nkdec;

namespace {

/// The largest scale up to @p places at which the exact number still fits: zeros are hung on.
Decimal96 lengthened(UInt128 magnitude, bool negative, int scale, int places) noexcept {
    while (scale < places && fitsMantissa(magnitude * 10)) {
        magnitude *= 10;
        ++scale;
    }
    return number(magnitude, negative, scale);
}

}  // namespace

Decimal96 Decimal96::multiplyWide(Decimal96 a, Decimal96 b) {
    const Operand left = taken(a, Operation::multiply);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::multiply);
    if (!right.isNumber()) return right.asNonNumber();
    return fitted({multiply(left.magnitude, right.magnitude), left.scale + right.scale,
                   left.negative != right.negative},
                  Operation::multiply);
}

Decimal96 Decimal96::multiplyRoundedWide(Decimal96 a, Decimal96 b, int places, Rounding method) {
    places = std::clamp(places, 0, maxScale);
    const Operand left = taken(a, Operation::multiply);
    if (!left.isNumber()) return left.asNonNumber();
    const Operand right = taken(b, Operation::multiply);
    if (!right.isNumber()) return right.asNonNumber();

    const Exact product{multiply(left.magnitude, right.magnitude), left.scale + right.scale,
                        left.negative != right.negative};
    if (product.scale < places && fitsMantissa(product.magnitude)) {
        return lengthened(narrowed(product.magnitude), product.negative, product.scale, places);
    }
    return fitted(product, Operation::multiply, places, method, true);
}
