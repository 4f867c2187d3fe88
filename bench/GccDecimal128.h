#pragma once

/// @file
/// The decimals that g++ knows, which live in a library of their own: the names of their arithmetic are those
/// of another peer.

#include <cstdint>
#include <string>

namespace gcc_decimal128 {

struct __attribute__((visibility("default"))) Operations {
    typedef float Value __attribute__((mode(TD)));

    static Value of(std::int64_t mantissa, std::int64_t power);
    static void add(Value& total, const Value& x);
    static Value sum(const Value& a, const Value& b);
    static bool less(const Value& a, const Value& b);
    static Value timesRounded(const Value& a, const Value& b);
    static Value dividedRounded(const Value& a, const Value& b);
    static Value divided(const Value& a, const Value& b);
    static Value fromText(const std::string& text);
};

}  // namespace gcc_decimal128
