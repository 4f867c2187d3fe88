#include <limits>

#include "Exact.h"

using namespace nkdec;

namespace {

template <class Integer>
bool convert(const Decimal96& decimal, Integer& value, Decimal96::Rounding method) noexcept {
    const Operand operand = normalised(decimal);
    if (!operand.isNumber()) return false;
    const Wide rounded = shortened(wide(operand.magnitude), operand.scale, method).quotient;
    const auto magnitude = static_cast<Int128>(narrowed(rounded));  // not larger than the mantissa
    const Int128 whole = operand.negative ? -magnitude : magnitude;
    if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max())
        return false;
    value = static_cast<Integer>(whole);
    return true;
}

template <class Integer>
Integer converted(const Decimal96& decimal, Decimal96::Rounding method) {
    Integer value = 0;
    if (!convert(decimal, value, method) && decimal.isNumber()) overflow(Operation::toInteger);
    return value;
}

}  // namespace

bool Decimal96::tryToInt(std::int32_t& value, Rounding method) const noexcept {
    return convert(*this, value, method);
}

bool Decimal96::tryToInt64(std::int64_t& value, Rounding method) const noexcept {
    return convert(*this, value, method);
}

std::int32_t Decimal96::toInt(Rounding method) const {
    return converted<std::int32_t>(*this, method);
}

std::int64_t Decimal96::toInt64(Rounding method) const {
    return converted<std::int64_t>(*this, method);
}
