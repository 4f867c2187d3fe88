#include <limits>

#include "Exact.h"

using namespace nkdec;

namespace {

bool convert(const Decimal96& decimal, std::int64_t& value, Rounding method) noexcept {
    const Operand operand = normalised(decimal);
    if (!operand.isNumber()) return false;
    const Wide rounded = shortened(wide(operand.magnitude), operand.scale, method).quotient;
    const auto magnitude = static_cast<Int128>(narrowed(rounded));  // not larger than the mantissa
    const Int128 whole = operand.negative ? -magnitude : magnitude;
    value = static_cast<std::int64_t>(whole);
    return value == whole;
}

}  // namespace

bool Decimal96::tryToInt64(std::int64_t& value, Rounding method) const noexcept {
    if (isNarrow() && m_tag <= 18 && isShort(narrow())) {
        value = shortened(narrow(), m_tag, method);
        return true;
    }
    std::int64_t whole = 0;
    if (!convert(*this, whole, method)) return false;
    value = whole;
    return true;
}

bool Decimal96::tryToInt(std::int32_t& value, Rounding method) const noexcept {
    std::int64_t whole = 0;
    if (!tryToInt64(whole, method)) return false;
    if (whole < std::numeric_limits<std::int32_t>::min() ||
        whole > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    value = static_cast<std::int32_t>(whole);
    return true;
}

std::int32_t Decimal96::toInt(Rounding method) const {
    std::int32_t value = 0;
    if (!tryToInt(value, method) && isNumber()) overflow(Operation::toInteger);
    return value;
}

std::int64_t Decimal96::toInt64(Rounding method) const {
    std::int64_t value = 0;
    if (!tryToInt64(value, method) && isNumber()) overflow(Operation::toInteger);
    return value;
}
