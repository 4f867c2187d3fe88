#include "GccDecimal128.h"

namespace gcc_decimal128 {

namespace {

using Value = Operations::Value;

/// To 2 places, half away from zero.
Value rounded(Value value) {
    const Value cents = value * static_cast<Value>(100);
    const Value half = static_cast<Value>(cents < static_cast<Value>(0) ? -1 : 1) / static_cast<Value>(2);
    return static_cast<Value>(static_cast<std::int64_t>(cents + half)) / static_cast<Value>(100);
}

}  // namespace

Value Operations::of(std::int64_t mantissa, std::int64_t power) {
    return static_cast<Value>(mantissa) / static_cast<Value>(power);
}
void Operations::add(Value& total, const Value& x) {
    total += x;
}
Value Operations::sum(const Value& a, const Value& b) {
    return a + b;
}
bool Operations::less(const Value& a, const Value& b) {
    return a < b;
}
Value Operations::timesRounded(const Value& a, const Value& b) {
    return rounded(a * b);
}
Value Operations::dividedRounded(const Value& a, const Value& b) {
    return rounded(a / b);
}
Value Operations::divided(const Value& a, const Value& b) {
    return a / b;
}

Value Operations::fromText(const std::string& text) {
    const Value ten = static_cast<Value>(10);
    Value value = static_cast<Value>(0);
    Value unit = static_cast<Value>(1);
    bool whole = true;
    for (const char c : text) {
        if (c == '.') {
            whole = false;
        } else {
            value = value * ten + static_cast<Value>(c - '0');
            if (!whole) unit = unit * ten;
        }
    }
    return value / unit;
}

}  // namespace gcc_decimal128
