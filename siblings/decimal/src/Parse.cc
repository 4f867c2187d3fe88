#include <algorithm>

#include "Digits.h"
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

/// A number of up to 15 digits, of which up to 7 stand behind a point; other texts are not looked at further.
struct Short {
    bool isNumber = false;
    std::uint64_t magnitude = 0;
    unsigned places = 0;
};

/// Reads a text of 4 to 16 bytes without its sign: first the eight last ones, then what is in front of them.
/// No byte beside the text is touched.
Short parseShort(const char* text, std::size_t length) noexcept {
    const char* const end = text + length;
    std::uint64_t last = 0;
    std::uint64_t first = 0;
    if (length < 8) {
        const auto missing = static_cast<unsigned>(8 * (8 - length));
        const std::uint64_t head = std::uint64_t{loadFour(text)} << missing & 0xFFFFFFFFU;
        last = (std::uint64_t{loadFour(end - 4)} << 32U | head) ^ zeros << missing;
    } else {
        const auto missing = static_cast<unsigned>(8 * (15 - std::min<std::size_t>(length, 15)));
        last = loadEight(end - 8) ^ zeros;
        first = (loadEight(text) ^ zeros) << missing << (length < 16 ? 8U : 0U);
    }
    // The point's byte becomes 0 by this, every other something else; subtracting 1 from each byte finds the
    // first.
    const std::uint64_t points = last ^ repeated('.' ^ '0');
    const std::uint64_t found = (points - repeated(1)) & ~points & repeated(0x80);
    const auto before = static_cast<unsigned>(std::countr_zero(found | std::uint64_t{1} << 63U)) & 56U;
    const std::uint64_t front = (std::uint64_t{1} << before) - 1U;
    const std::uint64_t back = ~front << 8U;
    last = (last & back) | (last & front) << 8U | first >> 56U;
    first <<= 8U;
    if (__builtin_expect(found == 0 || !areDigits(last) || !areDigits(first), 0)) return {};
    return {true, ofEightDigits(first) * 100'000'000 + ofEightDigits(last), 7 - before / 8};
}

}  // namespace

Decimal96TextResult Decimal96::parse(std::string_view text, Decimal96& value) {
    const char* p = text.data();
    const char* const end = p + text.size();
    if (hasDigitRegisters && __builtin_expect(text.size() - 4 <= 16 - 4, 1)) {
        const int minus = static_cast<int>(*p == '-');  // all without a branch, since either sign is likely
        const auto sign = static_cast<std::size_t>(minus | static_cast<int>(*p == '+'));
        if (__builtin_expect(text.size() - sign >= 4, 1)) {
            const Short number = parseShort(p + sign, text.size() - sign);
            if (__builtin_expect(number.isNumber, 1)) {
                value = Decimal96(withSign(number.magnitude, -minus), number.places);
                return {Decimal96TextError::none, text.size()};
            }
        }
    }
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
