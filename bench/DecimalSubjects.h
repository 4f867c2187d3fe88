#pragma once

/// @file
/// Decimals that are compared: ours, limits that do the least possible work on bare integers, and peers. Each
/// subject states the same steps. What a subject cannot do it does not state.

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "nkdec/Decimal96.h"

#ifdef NK_PEER_GCC_DECIMAL128
#include "GccDecimal128.h"
#endif
#ifdef NK_PEER_INTELRDFP_BID
// The library is compiled for operands by value, and rounding and flags as arguments.
#define DECIMAL_CALL_BY_REFERENCE 0
#define DECIMAL_GLOBAL_ROUNDING 0
#define DECIMAL_GLOBAL_EXCEPTION_FLAGS 0
extern "C" {
#include <bid_conf.h>
#include <bid_functions.h>
}
#endif
#ifdef NK_PEER_BOOST_HEADERS
#include <boost/multiprecision/cpp_dec_float.hpp>
#include <boost/multiprecision/cpp_int.hpp>
#endif

namespace bench {

__extension__ typedef __int128 Int128;

/// What all subjects are made of: up to 18 digits and their places.
struct Digits {
    std::int64_t mantissa = 0;
    int scale = 0;
};

inline constexpr std::array<std::int64_t, 11> powers = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000, 10000000000};

inline std::int64_t power(int digits) noexcept {
    return powers[static_cast<std::size_t>(digits)];
}

/// "-1234.50"
inline std::string textOf(Digits digits) {
    std::string text = std::to_string(digits.mantissa < 0 ? -digits.mantissa : digits.mantissa);
    const auto scale = static_cast<std::size_t>(digits.scale);
    if (text.size() <= scale) text.insert(0, scale + 1 - text.size(), '0');
    if (scale > 0) text.insert(text.size() - scale, ".");
    return (digits.mantissa < 0 ? "-" : "") + text;
}

#ifdef NK_PEER_GCC_DECIMAL128
struct GccDecimal128 : gcc_decimal128::Operations {
    static constexpr const char* name = "_Decimal128";
    static Value make(Digits d) { return of(d.mantissa, power(d.scale)); }
};
#endif

struct Ours {
    static constexpr const char* name = "Decimal96";
    using Value = Decimal96;
    static Value make(Digits d) {
        return Value::fromMantissa(d.mantissa < 0 ? -1 : 0, static_cast<std::uint64_t>(d.mantissa),
                                   static_cast<std::int16_t>(d.scale));
    }
    static void add(Value& total, const Value& x) { total += x; }
    static Value sum(const Value& a, const Value& b) { return a + b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value timesRounded(const Value& a, const Value& b) { return Value::multiplyRounded(a, b, 2); }
    static Value dividedRounded(const Value& a, const Value& b) { return Value::divideRounded(a, b, 2); }
    static Value divided(const Value& a, const Value& b) { return a / b; }
    static Value parse(const std::string& text) {
        Value value;
        Value::parse(text, value);
        return value;
    }
    static Value fromText(const std::string& text) { return parse(text); }
    static char* write(const Value& value, char* text) { return value.toString(text); }
    static Value fromDouble(double value) { return Value::from(value); }
};

/// The same in the two steps of the operators.
struct OursInSteps : Ours {
    static constexpr const char* name = "Decimal96_two_steps";
    static Value timesRounded(const Value& a, const Value& b) { return (a * b).round(2); }
    static Value dividedRounded(const Value& a, const Value& b) { return (a / b).round(2); }
};

/// Integers of 128 bits and a scale beside them, nothing checked; the scale of amounts is known to be 2.
struct Limit {
    static constexpr const char* name = "limit";
    struct Value {
        Int128 mantissa;
        int scale;
    };
    static Value make(Digits d) { return {d.mantissa, d.scale}; }
    static void add(Value& total, const Value& x) { total.mantissa += x.mantissa; }
    static Value sum(const Value& a, const Value& b) {
        const int difference = a.scale - b.scale;
        return {a.mantissa * power(difference < 0 ? -difference : 0) +
                    b.mantissa * power(difference < 0 ? 0 : difference),
                difference < 0 ? b.scale : a.scale};
    }
    static bool less(const Value& a, const Value& b) {
        const int difference = a.scale - b.scale;
        return a.mantissa * power(difference < 0 ? -difference : 0) <
               b.mantissa * power(difference < 0 ? 0 : difference);
    }
    static Value timesRounded(const Value& a, const Value& b) {
        const auto product = static_cast<std::int64_t>(a.mantissa * b.mantissa);
        return {(product + (product < 0 ? -5000 : 5000)) / 10000, 2};
    }
    static Value dividedRounded(const Value& a, const Value& b) {
        const auto dividend = static_cast<std::int64_t>(a.mantissa);
        const auto divisor = static_cast<std::int64_t>(b.mantissa);
        return {(dividend + (dividend < 0 ? -divisor : divisor) / 2) / divisor, 2};
    }
    static Value parse(const std::string& text) {
        const char* p = text.data();
        const char* const end = p + text.size();
        const bool negative = *p == '-';
        if (negative) ++p;
        std::int64_t mantissa = 0;
        int scale = 0;
        for (; p != end && *p != '.'; ++p)
            mantissa = mantissa * 10 + (*p - '0');
        if (p != end) {
            scale = static_cast<int>(end - ++p);
            for (; p != end; ++p)
                mantissa = mantissa * 10 + (*p - '0');
        }
        return {negative ? -mantissa : mantissa, scale};
    }
    static char* write(const Value& value, char* text) {
        auto cents = static_cast<std::int64_t>(value.mantissa);
        if (cents < 0) {
            *text++ = '-';
            cents = -cents;
        }
        text = std::to_chars(text, text + 20, cents / 100).ptr;
        const auto places = static_cast<int>(cents % 100);
        text[0] = '.';
        text[1] = static_cast<char>('0' + places / 10);
        text[2] = static_cast<char>('0' + places % 10);
        text[3] = '\0';
        return text + 3;
    }
    static Value fromDouble(double value) {
        double power = 1;
        for (int scale = 0; scale <= 6; ++scale, power *= 10) {
            const auto nearest = static_cast<std::int64_t>(std::nearbyint(value * power));
            if (static_cast<double>(nearest) / power == value) return {nearest, scale};
        }
        return {0, 0};
    }
};

#ifdef NK_PEER_INTELRDFP_BID
struct Bid128 {
    static constexpr const char* name = "BID128";
    using Value = BID_UINT128;
    static constexpr unsigned halfAway = 4;
    static constexpr unsigned halfEven = 0;

    static Value make(Digits d) { return parse(textOf(d)); }
    static void add(Value& total, const Value& x) { total = sum(total, x); }
    static Value sum(const Value& a, const Value& b) {
        _IDEC_flags flags = 0;
        return bid128_add(a, b, halfEven, &flags);
    }
    static bool less(const Value& a, const Value& b) {
        _IDEC_flags flags = 0;
        return bid128_quiet_less(a, b, &flags) != 0;
    }
    static Value rounded(const Value& value) {
        static const Value cent = parse("0.01");
        _IDEC_flags flags = 0;
        return bid128_quantize(value, cent, halfAway, &flags);
    }
    static Value timesRounded(const Value& a, const Value& b) {
        _IDEC_flags flags = 0;
        return rounded(bid128_mul(a, b, halfEven, &flags));
    }
    static Value dividedRounded(const Value& a, const Value& b) { return rounded(divided(a, b)); }
    static Value divided(const Value& a, const Value& b) {
        _IDEC_flags flags = 0;
        return bid128_div(a, b, halfEven, &flags);
    }
    static Value parse(const std::string& text) {
        _IDEC_flags flags = 0;
        return bid128_from_string(const_cast<char*>(text.c_str()), halfEven, &flags);
    }
    static Value fromText(const std::string& text) { return parse(text); }
    static char* write(const Value& value, char* text) {
        _IDEC_flags flags = 0;
        bid128_to_string(text, value, &flags);
        return text;
    }
    static Value fromDouble(double value) {
        _IDEC_flags flags = 0;
        return binary64_to_bid128(value, halfEven, &flags);
    }
};
#endif

#ifdef NK_PEER_BOOST_HEADERS
struct BoostFloat {
    static constexpr const char* name = "boost_cpp_dec_float";
    using Value = boost::multiprecision::number<boost::multiprecision::cpp_dec_float<28>,
                                                boost::multiprecision::et_off>;

    static Value make(Digits d) { return parse(textOf(d)); }
    static void add(Value& total, const Value& x) { total += x; }
    static Value sum(const Value& a, const Value& b) { return a + b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value rounded(const Value& value) {
        return boost::multiprecision::round(Value(value * 100)) / 100;
    }
    static Value timesRounded(const Value& a, const Value& b) { return rounded(a * b); }
    static Value dividedRounded(const Value& a, const Value& b) { return rounded(a / b); }
    static Value divided(const Value& a, const Value& b) { return a / b; }
    static Value parse(const std::string& text) { return Value(text.c_str()); }
    static Value fromText(const std::string& text) { return parse(text); }
    static char* write(const Value& value, char* text) {
        const std::string written = value.str(2, std::ios_base::fixed);
        std::memcpy(text, written.c_str(), written.size() + 1);
        return text + written.size();
    }
    static Value fromDouble(double value) { return Value(value); }
};

/// A scaled integer of 128 bits, nothing checked; the scale of amounts is known to be 2.
struct BoostInteger {
    static constexpr const char* name = "boost_cpp_int";
    using Mantissa = boost::multiprecision::int128_t;
    struct Value {
        Mantissa mantissa;
        int scale;
    };
    static Value make(Digits d) { return {d.mantissa, d.scale}; }
    static void add(Value& total, const Value& x) { total.mantissa += x.mantissa; }
    static Value sum(const Value& a, const Value& b) {
        if (a.scale < b.scale) return {a.mantissa * power(b.scale - a.scale) + b.mantissa, b.scale};
        if (b.scale < a.scale) return {a.mantissa + b.mantissa * power(a.scale - b.scale), a.scale};
        return {a.mantissa + b.mantissa, a.scale};
    }
    static bool less(const Value& a, const Value& b) {
        if (a.scale < b.scale) return a.mantissa * power(b.scale - a.scale) < b.mantissa;
        if (b.scale < a.scale) return a.mantissa < b.mantissa * power(a.scale - b.scale);
        return a.mantissa < b.mantissa;
    }
    static Value timesRounded(const Value& a, const Value& b) {
        const Mantissa product = a.mantissa * b.mantissa;
        return {(product + (product < 0 ? -5000 : 5000)) / 10000, 2};
    }
    static Value dividedRounded(const Value& a, const Value& b) {
        const Mantissa half = b.mantissa / 2;
        return {(a.mantissa < 0 ? Mantissa(a.mantissa - half) : Mantissa(a.mantissa + half)) / b.mantissa, 2};
    }
};
#endif

}  // namespace bench
