#pragma once

/// @file
/// What the tests of a decimal's value record share: numbers, and the texts of its writers.

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Imp/dtdecimi.h"
#include "ValueTesting.h"

namespace valuetest {

using Imp = NkDtDecimal_Imp;

inline constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::uint64_t kAllBits = std::numeric_limits<std::uint64_t>::max();

/// The largest mantissa, 39614081257132168796771975167.
inline Decimal96 largest(std::int16_t scale = 0) {
    return Decimal96::fromMantissa(kHighest, kAllBits, scale);
}

inline std::string nines(std::size_t count) {
    return std::string(count, '9');
}
inline std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

/// The text of a writer, after a look at the NUL behind it.
template <class Text>
std::string written(std::string_view (*write)(const Decimal96&, Text&), const Decimal96& number) {
    Text buffer;
    std::memset(buffer, '#', sizeof buffer);
    const std::string_view text = write(number, buffer);
    EXPECT_EQ(text.data(), buffer);
    EXPECT_LT(text.size(), sizeof buffer);
    EXPECT_EQ(std::strlen(buffer), text.size());
    return std::string(text);
}

inline std::string plain(const Decimal96& number) {
    return written(&Imp::plainText, number);
}
inline std::string held(const Decimal96& number) {
    return written(&Imp::sqlText, number);
}
inline std::string field(const Decimal96& number) {
    return written(&Imp::fieldText, number);
}
inline std::string external(const Decimal96& number) {
    return written(&Imp::externText, number);
}

/// A writer's text of a literal.
inline std::string plain(const char* number) {
    return plain(Decimal96(number));
}
inline std::string held(const char* number) {
    return held(Decimal96(number));
}
inline std::string field(const char* number) {
    return field(Decimal96(number));
}
inline std::string external(const char* number) {
    return external(Decimal96(number));
}

using Reader = Decimal96 (*)(LPCTSTR);
inline constexpr Reader kAllReaders[] = {&Imp::fromText, &Imp::fromFieldText, &Imp::fromPlainText,
                                         &Imp::fromExtern};

/// The same mantissa and scale.
inline void expectSame(const Decimal96& a, const Decimal96& b) {
    EXPECT_EQ(a.mantissaHigh(), b.mantissaHigh());
    EXPECT_EQ(a.mantissaLow(), b.mantissaLow());
    EXPECT_EQ(a.scale(), b.scale());
}

/// Numbers of all sizes and scales.
template <class Body>
void forManyNumbers(Body&& body) {
    std::mt19937_64 random(20040229);
    for (int i = 0; i < 4000; ++i) {
        const auto bits = static_cast<unsigned>(random() % 95 + 1);
        const std::uint64_t low = bits >= 64 ? random() : random() >> (64 - bits);
        const auto high = static_cast<std::uint32_t>(bits > 64 ? random() >> (128 - bits) : 0);
        const auto scale = static_cast<std::int16_t>(random() % 29);
        const Decimal96 number =
            Decimal96::fromParts(static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(low >> 32U),
                                 high, random() % 2 != 0, scale);
        SCOPED_TRACE(held(number));
        body(number);
        if (testing::Test::HasFailure()) return;
    }
}

}  // namespace valuetest
