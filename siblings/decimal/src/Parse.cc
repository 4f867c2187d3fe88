#include "Exact.h"

using namespace nkdec;

namespace {

constexpr bool isDigit(char c) noexcept {
    return static_cast<unsigned char>(c - '0') <= 9;
}

/// A number of more digits than 64 bits hold, or of more places than 28. The text is known to be well formed.
Decimal96 parseLong(std::string_view digits, bool negative) {
    // One place more than can be held decides how the last one is rounded; behind it only a trace is kept.
    constexpr int mostPlaces = Decimal96::maxScale + 1;
    Exact exact;
    exact.negative = negative;
    bool whole = true;
    for (const char c : digits) {
        if (c == '.') {
            whole = false;
            continue;
        }
        if (!whole && ++exact.scale > mostPlaces) {
            exact.scale = mostPlaces;
            exact.trace = exact.trace || c != '0';
            continue;
        }
        exact.magnitude = multiplyAdd(exact.magnitude, 10, static_cast<std::uint64_t>(c - '0'));
        if (whole && !fitsMantissa(exact.magnitude)) return overflow(Operation::fromText);
    }
    return fitted(exact, Operation::fromText);
}

}  // namespace

Decimal96TextResult Decimal96::parse(std::string_view text, Decimal96& value) {
    const char* p = text.data();
    const char* const end = p + text.size();
    if (p == end) {
        value = Decimal96();
        return {};
    }
    const bool negative = *p == '-';
    if (negative || *p == '+') ++p;

    const char* const first = p;
    std::uint64_t mantissa = 0;
    for (; p != end && isDigit(*p); ++p)
        mantissa = mantissa * 10 + static_cast<unsigned char>(*p - '0');
    std::ptrdiff_t count = p - first;
    std::ptrdiff_t places = 0;
    if (p != end && *p == '.') {
        const char* const point = ++p;
        for (; p != end && isDigit(*p); ++p)
            mantissa = mantissa * 10 + static_cast<unsigned char>(*p - '0');
        places = p - point;
        count += places;
    }
    const auto position = static_cast<std::size_t>(p - text.data());
    if (__builtin_expect(p != end, 0)) {
        value = Decimal96Access::make(Decimal96State::invalid);
        return {Decimal96TextError::character, position};
    }
    if (__builtin_expect(count <= 18, 1)) {
        if (__builtin_expect(count == 0, 0)) {
            value = Decimal96Access::make(Decimal96State::invalid);
            return {Decimal96TextError::noDigit, position};
        }
        const auto number = static_cast<std::int64_t>(mantissa);
        value = Decimal96(negative ? -number : number, static_cast<std::uint32_t>(places));
        return {Decimal96TextError::none, position};
    }
    value = parseLong(std::string_view(first, static_cast<std::size_t>(end - first)), negative);
    return {Decimal96TextError::none, position};
}
