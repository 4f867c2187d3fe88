#include <nkdec/Decimal96.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>

#include <gtest/gtest.h>
#include <nkdec/Decimal96Hash.h>

#include "DecimalTest.h"

namespace {

using namespace decimaltest;

// ---- Construction ----

TEST(Decimal96, IsZeroWithoutPlacesAtFirst) {
    EXPECT_TRUE(Decimal96().isZero());
    EXPECT_EQ(text(Decimal96()), "0");
}

TEST(Decimal96, HoldsEveryWholeNumberOf64Bits) {
    EXPECT_EQ(text(Decimal96(-2147483647 - 1)), "-2147483648");
    EXPECT_EQ(text(Decimal96(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(text(Decimal96(std::numeric_limits<std::uint64_t>::max())), "18446744073709551615");
    EXPECT_EQ(text(Decimal96(short{-3})), "-3");
}

TEST(Decimal96, IsMadeOfNumbersAndTextsOnly) {
    static_assert(std::is_convertible_v<int, Decimal96> && std::is_convertible_v<long long, Decimal96>);
    static_assert(std::is_constructible_v<Decimal96, double> && !std::is_convertible_v<double, Decimal96>);
    static_assert(std::is_constructible_v<Decimal96, const char*> &&
                  !std::is_convertible_v<const char*, Decimal96>);
    static_assert(!std::is_constructible_v<Decimal96, bool> && !std::is_constructible_v<Decimal96, char>);
    static_assert(!std::is_constructible_v<Decimal96, int*> &&
                  !std::is_constructible_v<Decimal96, long double>);
}

TEST(Decimal96, IsAConstantWhereItIsMadeOfWholeNumbers) {
    constexpr Decimal96 five = 5;
    static_assert((-five).sign() == -1 && (-five).abs().mantissaLow() == 5 && five.scale() == 0);
    EXPECT_EQ(five, 5);
}

TEST(Decimal96, IsMadeOfPartsOfAnyScale) {
    const Decimal96 amount = Decimal96::fromParts(12345, 0, 0, true, 2);
    EXPECT_EQ(text(amount), "-123.45");
    EXPECT_EQ(Decimal96::fromParts(~0U, ~0U, 0x7FFFFFFF, false), largest());
    EXPECT_EQ(Decimal96::fromMantissa(-1, ~std::uint64_t{0}, 1), dec("-0.1"));
    EXPECT_EQ(Decimal96::fromMantissa(-1, std::uint64_t{0xFFFFFFFF00000000}), dec("-4294967296"));
}

TEST(Decimal96, PartsBeyondTheMantissaOverflow) {
    const CountingHandlers handlers;
    EXPECT_EQ(Decimal96::fromMantissa(std::numeric_limits<std::int32_t>::min(), 0).state(),
              Decimal96State::overflow);
    EXPECT_EQ(Decimal96::fromParts(0, 0, 0x80000000U, false).state(), Decimal96State::overflow);
    EXPECT_EQ(overflows, 2);
    EXPECT_EQ(lastOperation, Decimal96Operation::fromMantissa);
}

TEST(Decimal96, TellsItsPartsAsHeld) {
    const Decimal96 raw = Decimal96::fromMantissa(-1, ~std::uint64_t{0} - 4, 77);
    EXPECT_EQ(raw.scale(), 77);
    EXPECT_EQ(raw.mantissaHigh(), -1);
    EXPECT_EQ(raw.mantissaLow(), ~std::uint64_t{0} - 4);
    EXPECT_EQ(raw.sign(), -1);
    EXPECT_EQ(Decimal96::fromMantissa(0, 5, -3).scale(), -3);
    EXPECT_EQ((-raw).scale(), 77);
    EXPECT_EQ(raw.abs().scale(), 77);
}

// ---- Raw scales ----

TEST(Decimal96, ARawScaleIsSeenNormalised) {
    EXPECT_EQ(Decimal96::fromMantissa(0, 5, -3), 5000);
    EXPECT_EQ(text(Decimal96::fromMantissa(0, 5, -3)), "5000");
    EXPECT_EQ(text(Decimal96::fromMantissa(0, 15, 29)), "0.0000000000000000000000000002");
    EXPECT_EQ(Decimal96::fromMantissa(0, 150, 29) + 0, dec("0.0000000000000000000000000015").round(28));
    EXPECT_TRUE(Decimal96::fromMantissa(0, 0, -32768).isZero());
    EXPECT_EQ(text(Decimal96::fromMantissa(0, 0, -32768)), "0");
    EXPECT_EQ(Decimal96::fromMantissa(0, 7, 32767), 0);
    EXPECT_EQ(Decimal96::fromMantissa(0, 5, -3).toInt(), 5000);
}

TEST(Decimal96, ANegativeScaleThatCannotBeMultipliedOutOverflows) {
    const CountingHandlers handlers;
    const Decimal96 huge = Decimal96::fromMantissa(0, 1, -29);
    EXPECT_EQ(overflows, 0);
    EXPECT_FALSE((huge + 1).isNumber());
    EXPECT_EQ(overflows, 1);
    EXPECT_FALSE(huge == 1);
    EXPECT_EQ(overflows, 2);
    EXPECT_EQ(text(huge), "NaN");
    EXPECT_EQ(overflows, 3);
    EXPECT_TRUE(std::isnan(huge.toDouble()));
    EXPECT_EQ(overflows, 3);
}

// ---- Arithmetic ----

struct BinaryCase {
    const char* left;
    const char* right;
    const char* result;
};

TEST(Decimal96, SumsHaveTheLargerScale) {
    for (const auto& [left, right, result] : {
             BinaryCase{"1.50", "1.5", "3.00"},
             {"0.1", "0.2", "0.3"},
             {"-5", "5.000", "0.000"},
             {"18446744073709551615", "1", "18446744073709551616"},
             {"4294967295.9", "0.1", "4294967296.0"},
         }) {
        EXPECT_EQ(text(dec(left) + dec(right)), result);
        EXPECT_EQ(text(dec(right) + dec(left)), result);
        EXPECT_EQ(text(dec(left) - -dec(right)), result);
    }
}

TEST(Decimal96, ASumThatDoesNotFitLosesPlacesRoundedHalfAwayFromZero) {
    EXPECT_EQ(text(dec("39614081257132168796771975167") + dec("0.4")), "39614081257132168796771975167");
    EXPECT_EQ(text(dec("-3000000000000000000000000000") - dec("0.05")), "-3000000000000000000000000000.1");
}

TEST(Decimal96, ProductsHaveBothScales) {
    EXPECT_EQ(text(dec("1.5") * dec("1.25")), "1.875");
    EXPECT_EQ(text(dec("-1.50") * dec("2")), "-3.00");
    EXPECT_EQ(text(dec("0.000000000000001") * dec("0.000000000000005")), "0.0000000000000000000000000000");
    EXPECT_EQ(text(dec("0.00000000000001") * dec("0.000000000000005")), "0.0000000000000000000000000001");
}

TEST(Decimal96, ExactQuotientsHaveTheSmallestScale) {
    EXPECT_EQ(text(dec("10") / dec("4")), "2.5");
    EXPECT_EQ(text(dec("10.00") / dec("4")), "2.50");
    EXPECT_EQ(text(dec("10.00") / dec("4.0")), "2.5");
    EXPECT_EQ(text(dec("1") / dec("0.125")), "8");
    EXPECT_EQ(text(dec("0.00") / dec("7")), "0.00");
    EXPECT_EQ(text(dec("1") / dec("1024")), "0.0009765625");
}

TEST(Decimal96, OtherQuotientsHaveAsManyPlacesAsFit) {
    EXPECT_EQ(text(dec("1") / dec("3")), "0.3333333333333333333333333333");
    EXPECT_EQ(text(dec("2") / dec("3")), "0.6666666666666666666666666667");
    EXPECT_EQ(text(dec("-200") / dec("3")), "-66.66666666666666666666666667");
    EXPECT_EQ(text(dec("20000000000000000000000000") / dec("3")), "6666666666666666666666666.667");
}

TEST(Decimal96, ADivisorOfZeroOverflows) {
    const CountingHandlers handlers;
    EXPECT_FALSE((dec("1") / dec("0.00")).isNumber());
    EXPECT_FALSE((dec("0") / dec("0")).isNumber());
    EXPECT_FALSE((dec("1") % dec("0")).isNumber());
    EXPECT_FALSE(dec("1").truncatedQuotient(0).isNumber());
    EXPECT_FALSE(Decimal96::divideRounded(1, 0, 2).isNumber());
    EXPECT_EQ(overflows, 5);
}

TEST(Decimal96, TheRemainderHasTheSignOfTheDividend) {
    EXPECT_EQ(text(dec("7") % dec("3")), "1");
    EXPECT_EQ(text(dec("-7") % dec("3")), "-1");
    EXPECT_EQ(text(dec("7") % dec("-3")), "1");
    EXPECT_EQ(text(dec("7.5") % dec("2")), "1.5");
    EXPECT_EQ(text(dec("7.5") % dec("0.25")), "0.00");
    EXPECT_EQ(text(dec("39614081257132168796771975167") % dec("10")), "7");
}

TEST(Decimal96, TheTruncatedQuotientIsWhole) {
    EXPECT_EQ(text(dec("7.9").truncatedQuotient(dec("2"))), "3");
    EXPECT_EQ(text(dec("-7.9").truncatedQuotient(dec("2.00"))), "-3");
}

TEST(Decimal96, CompoundFormsAreTheirOperators) {
    Decimal96 value = dec("10.5");
    value += dec("0.25");
    value -= 1;
    value *= 2;
    EXPECT_EQ(text(value), "19.50");
    value /= 4;
    value %= 2;
    EXPECT_EQ(text(value), "0.875");
}

TEST(Decimal96, AnOperandMayBeTheResult) {
    Decimal96 value = dec("1.5");
    const Decimal96& same = value;
    value += same;
    value *= same;
    value -= same;
    EXPECT_EQ(text(value), "0.00");
}

// ---- Fused forms ----

TEST(Decimal96, FusedFormsRoundOnce) {
    EXPECT_EQ(text(Decimal96::multiplyRounded(dec("1.15"), dec("0.3"), 2)), "0.35");
    EXPECT_EQ(text(Decimal96::multiplyRounded(dec("-1.15"), dec("0.3"), 2)), "-0.35");
    EXPECT_EQ(text(Decimal96::multiplyRounded(dec("-1.11"), dec("0.1"), 2, Decimal96::UP)), "-0.12");
    EXPECT_EQ(text(Decimal96::multiplyRounded(dec("1.19"), dec("0.1"), 2, Decimal96::DOWN)), "0.11");
    EXPECT_EQ(text(Decimal96::divideRounded(dec("100.00"), dec("3"), 2)), "33.33");
    EXPECT_EQ(text(Decimal96::divideRounded(dec("1"), dec("8"), 2)), "0.13");
    EXPECT_EQ(text(Decimal96::divideRounded(dec("-0.0049"), dec("1"), 2)), "0.00");
    EXPECT_EQ(text(Decimal96::divideRounded(dec("-0.0050"), dec("1"), 2)), "-0.01");
}

TEST(Decimal96, FusedFormsHaveExactlyThePlacesAskedFor) {
    EXPECT_EQ(text(Decimal96::multiplyRounded(3, 2, 2)), "6.00");
    EXPECT_EQ(text(Decimal96::divideRounded(6, 2, 2)), "3.00");
    EXPECT_EQ(text(Decimal96::divideRounded(0, 2, 3)), "0.000");
    EXPECT_EQ(text(Decimal96::multiplyRounded(dec("1.25"), 1, -5)), "1");
    EXPECT_EQ(Decimal96::multiplyRounded(largest(), 1, 2).scale(), 0);
    EXPECT_EQ(Decimal96::multiplyRounded(1, 1, std::numeric_limits<int>::max()).scale(), 28);
    EXPECT_EQ(Decimal96::divideRounded(1, 3, std::numeric_limits<int>::min()).scale(), 0);
}

// ---- Rounding ----

struct RoundCase {
    const char* number;
    int places;
    Decimal96::Rounding method;
    const char* result;
};

TEST(Decimal96, RoundsByTheMethod) {
    for (const auto& [number, places, method, result] : {
             RoundCase{"2.345", 2, Decimal96::PLAIN, "2.35"},
             {"-2.345", 2, Decimal96::PLAIN, "-2.35"},
             {"2.3449", 2, Decimal96::PLAIN, "2.34"},
             {"1.231", 2, Decimal96::UP, "1.24"},
             {"-1.231", 2, Decimal96::UP, "-1.24"},
             {"1.230", 2, Decimal96::UP, "1.23"},
             {"1.239", 2, Decimal96::DOWN, "1.23"},
             {"-1.239", 2, Decimal96::DOWN, "-1.23"},
             {"-0.004", 2, Decimal96::PLAIN, "0.00"},
             {"0.5", 0, Decimal96::PLAIN, "1"},
             {"12345678901234567890.12345", 3, Decimal96::PLAIN, "12345678901234567890.123"},
         }) {
        EXPECT_EQ(text(dec(number).round(places, method)), result) << number;
    }
}

TEST(Decimal96, RoundingToMorePlacesThanHeldLeavesTheNumber) {
    EXPECT_EQ(text(dec("1.5").round(1)), "1.5");
    EXPECT_EQ(text(dec("1.5").round(2)), "1.5");
    EXPECT_EQ(text(dec("1.5").truncate(99)), "1.5");
    EXPECT_EQ(Decimal96::fromMantissa(0, 1, 40).round(50).scale(), 40);
}

TEST(Decimal96, RoundingToNegativePlacesGivesScaleZero) {
    EXPECT_EQ(text(dec("1250.55").round(-2)), "1300");
    EXPECT_EQ(text(dec("-1249.99").round(-2)), "-1200");
    EXPECT_EQ(text(dec("49.99").round(-2)), "0");
    EXPECT_EQ(text(dec("0.01").round(-2, Decimal96::UP)), "100");
    EXPECT_EQ(text(dec("0").round(-99, Decimal96::UP)), "0");
    EXPECT_EQ(text(dec("1250.55").truncate(-2)), "1200");
}

TEST(Decimal96, RoundingBeyondTheMantissaOverflows) {
    const CountingHandlers handlers;
    EXPECT_FALSE(largest().round(-1).isNumber());
    EXPECT_FALSE(dec("1").round(-29, Decimal96::UP).isNumber());
    EXPECT_FALSE(dec("1").round(std::numeric_limits<int>::min(), Decimal96::UP).isNumber());
    EXPECT_EQ(overflows, 3);
    EXPECT_EQ(lastOperation, Decimal96Operation::round);
    EXPECT_EQ(text(dec("1").round(std::numeric_limits<int>::min())), "0");
}

// ---- Comparisons ----

TEST(Decimal96, ComparesByValue) {
    EXPECT_EQ(dec("2.50"), dec("2.5"));
    EXPECT_NE(dec("2.50"), dec("2.51"));
    EXPECT_LT(dec("-1"), dec("0.001"));
    EXPECT_GT(largest(0), largest(1));
    EXPECT_LE(dec("1.0"), 1);
    EXPECT_GE(1, dec("1.0"));
    EXPECT_FALSE(dec("0.0") < dec("-0"));
    EXPECT_EQ(dec("1.5") <=> dec("1.50"), std::weak_ordering::equivalent);
}

TEST(Decimal96, ANumberOutsideTheIntRangeDiffersFromEveryInt) {
    EXPECT_NE(dec("4294967296"), 0);
    EXPECT_NE(dec("2147483648"), std::numeric_limits<int>::min());
    EXPECT_GT(dec("18446744073709551616"), std::numeric_limits<int>::max());
}

TEST(Decimal96, EqualNumbersShareTheirHash) {
    EXPECT_EQ(dec("1.5").hash(), dec("1.50000000000000000000").hash());
    EXPECT_EQ(dec("0").hash(), dec("-0.000").hash());
    EXPECT_EQ(Decimal96::fromMantissa(0, 5, -3).hash(), Decimal96(5000).hash());
    EXPECT_NE(dec("1.5").hash(), dec("-1.5").hash());
    EXPECT_NE(dec("1.5").hash(), dec("15").hash());
    const std::unordered_set<Decimal96> keys = {dec("1.5"), dec("1.50"), dec("2")};
    EXPECT_EQ(keys.size(), 2U);
}

// ---- What is no number ----

TEST(Decimal96, WhatIsNoNumberStaysNone) {
    const CountingHandlers handlers;
    const Decimal96 none = largest() * largest();
    EXPECT_EQ(overflows, 1);
    for (const Decimal96& result :
         {none + 1, 1 - none, none * 2, 2 / none, none % 2, -none, none.abs(), none.round(0),
          none.truncatedQuotient(1), Decimal96::multiplyRounded(none, 1, 2),
          Decimal96::divideRounded(1, none, 2)}) {
        EXPECT_EQ(result.state(), Decimal96State::overflow);
    }
    EXPECT_EQ(text(none), "NaN");
    EXPECT_TRUE(std::isnan(none.toDouble()));
    EXPECT_EQ(none.toInt(), 0);
    EXPECT_FALSE(none.isZero());
    EXPECT_EQ((dec("x") + none).state(), Decimal96State::invalid);
    EXPECT_EQ(overflows, 1);
}

TEST(Decimal96, WhatIsNoNumberIsGreaterThanEveryNumberAndEqualsItsLike) {
    const Decimal96 none = dec("x");
    EXPECT_GT(none, largest());
    EXPECT_FALSE(none < largest());
    EXPECT_EQ(none, dec("y"));
    EXPECT_NE(none, 0);
    EXPECT_EQ(none.hash(), dec("y").hash());
}

// ---- Doubles ----

TEST(Decimal96, ADoubleBecomesTheDecimalWithTheFewestPlaces) {
    EXPECT_EQ(text(Decimal96(0.1)), "0.1");
    EXPECT_EQ(text(Decimal96(-2.50)), "-2.5");
    EXPECT_EQ(text(Decimal96(-0.0)), "0");
    EXPECT_EQ(text(Decimal96(1.005)), "1.005");
    EXPECT_EQ(text(Decimal96(0.1 + 0.2)), "0.30000000000000004");
    EXPECT_EQ(text(Decimal96(1e-20)), "0.00000000000000000001");
    EXPECT_EQ(text(Decimal96(1e22)), "10000000000000000000000");
    EXPECT_EQ(text(Decimal96(2251799813685249.5)), "2251799813685249.5");
}

TEST(Decimal96, ADoubleIsRoundedTo28Places) {
    EXPECT_EQ(text(Decimal96(5e-29)), "0.0000000000000000000000000001");
    EXPECT_EQ(text(Decimal96(4.9e-29)), "0.0000000000000000000000000000");
    EXPECT_EQ(text(Decimal96(std::numeric_limits<double>::denorm_min())), "0.0000000000000000000000000000");
}

TEST(Decimal96, ADoubleBeyondTheMantissaOverflows) {
    const CountingHandlers handlers;
    const double beyond = std::ldexp(1.0, 95);
    for (const double value :
         {beyond, -beyond, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
          std::numeric_limits<double>::max()}) {
        EXPECT_FALSE(Decimal96(value).isNumber()) << value;
    }
    EXPECT_EQ(overflows, 5);
    EXPECT_TRUE(Decimal96(std::nextafter(beyond, 0)).isNumber());
}

TEST(Decimal96, ADoubleIsCorrectlyRounded) {
    EXPECT_EQ(dec("0.1").toDouble(), 0.1);
    EXPECT_EQ(dec("-123.456").toDouble(), -123.456);
    EXPECT_EQ(dec("9007199254740993").toDouble(), 9007199254740992.0);
    EXPECT_EQ(dec("9007199254740993.0000000001").toDouble(), 9007199254740994.0);
    EXPECT_EQ(largest().toDouble(), std::ldexp(1.0, 95));
    EXPECT_EQ(dec("0.0000000000000000000000000001").toDouble(), 1e-28);
    EXPECT_EQ(dec("0").toDouble(), 0.0);
}

// ---- Whole numbers ----

TEST(Decimal96, AWholeNumberIsTruncatedUnlessTheMethodSaysOtherwise) {
    EXPECT_EQ(dec("5.7").toInt(), 5);
    EXPECT_EQ(dec("-5.7").toInt(), -5);
    EXPECT_EQ(dec("-5.5").toInt(Decimal96::PLAIN), -6);
    EXPECT_EQ(dec("5.1").toInt64(Decimal96::UP), 6);
    EXPECT_EQ(dec("-2147483648.9").toInt(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(dec("9223372036854775807").toInt64(), std::numeric_limits<std::int64_t>::max());
}

TEST(Decimal96, ANumberOutsideTheWholeTypeOverflows) {
    const CountingHandlers handlers;
    EXPECT_EQ(dec("2147483648").toInt(), 0);
    EXPECT_EQ(dec("2147483647.5").toInt(Decimal96::PLAIN), 0);
    EXPECT_EQ(dec("-9223372036854775809").toInt64(), 0);
    EXPECT_EQ(overflows, 3);
    std::int32_t value = 7;
    EXPECT_FALSE(dec("2147483648").tryToInt(value));
    EXPECT_EQ(value, 7);
    EXPECT_EQ(overflows, 3);
}

// ---- Texts ----

TEST(Decimal96, ATextKeepsItsPlaces) {
    for (const char* const kept : {"1.50", "-0.001", "0.00", "123", largestDigits.c_str(),
                                   "0.0000000000000000000000000001", "-3.9614081257132168796771975167"}) {
        EXPECT_EQ(text(dec(kept)), kept);
    }
}

TEST(Decimal96, ATextMayLackOneSideOfThePoint) {
    EXPECT_EQ(text(dec("+.5")), "0.5");
    EXPECT_EQ(text(dec("5.")), "5");
    EXPECT_EQ(text(dec("-007.10")), "-7.10");
    EXPECT_EQ(text(dec("")), "0");
    EXPECT_EQ(text(dec("-0")), "0");
}

TEST(Decimal96, ATextThatIsNoNumberIsRefusedWithItsPosition) {
    using Error = Decimal96TextError;
    struct Case {
        const char* text;
        Error error;
        std::size_t position;
    };
    for (const auto& [given, error, position] : {Case{"-", Error::noDigit, 1},
                                                 {".", Error::noDigit, 1},
                                                 {"+.", Error::noDigit, 2},
                                                 {" ", Error::character, 0},
                                                 {"1 ", Error::character, 1},
                                                 {"1-", Error::character, 1},
                                                 {"--1", Error::character, 1},
                                                 {"1.2.3", Error::character, 3},
                                                 {"12a", Error::character, 2},
                                                 {"1,5", Error::character, 1},
                                                 {"1e5", Error::character, 1}}) {
        Decimal96 value = 7;
        const Decimal96TextResult result = Decimal96::parse(given, value);
        EXPECT_FALSE(result) << given;
        EXPECT_EQ(result.error, error) << given;
        EXPECT_EQ(result.position, position) << given;
        EXPECT_EQ(value.state(), Decimal96State::invalid) << given;
    }
    EXPECT_FALSE(dec(std::string_view("1\0", 2)).isNumber());
}

TEST(Decimal96, PlacesOfATextThatDoNotFitAreRoundedOnce) {
    EXPECT_EQ(text(dec("0.00000000000000000000000000005")), "0.0000000000000000000000000001");
    EXPECT_EQ(text(dec("0.000000000000000000000000000049999999999")), "0.0000000000000000000000000000");
    EXPECT_EQ(text(dec(largestDigits + ".49")), largestDigits);
    EXPECT_EQ(text(dec("3961408125713216879677197515.75")), "3961408125713216879677197515.8");
    EXPECT_EQ(text(dec(std::string(100, '0') + "1." + std::string(100, '0'))).size(), 30U);
}

TEST(Decimal96, ATextBeyondTheMantissaOverflows) {
    const CountingHandlers handlers;
    EXPECT_FALSE(dec("39614081257132168796771975168").isNumber());
    EXPECT_FALSE(dec(largestDigits + ".5").isNumber());
    EXPECT_FALSE(dec("-" + std::string(1000, '9')).isNumber());
    EXPECT_EQ(overflows, 3);
    EXPECT_EQ(lastOperation, Decimal96Operation::fromText);
}

TEST(Decimal96, EveryTextFitsTheBufferWithItsNul) {
    std::array<char, Decimal96::textSize + 4> buffer;
    for (std::int16_t scale = 0; scale <= Decimal96::maxScale; ++scale) {
        for (const Decimal96& number : {largest(scale), Decimal96::fromMantissa(0, 1, scale),
                                        Decimal96::fromMantissa(0, 999'999'999'999'999, scale),
                                        Decimal96::fromMantissa(0, 1'000'000'000'000'000, scale)}) {
            buffer.fill('#');
            char* const end = (-number).toString(buffer.data());
            EXPECT_LT(end, buffer.data() + Decimal96::textSize);
            EXPECT_EQ(*end, '\0');
            EXPECT_EQ(std::string(buffer.data() + Decimal96::textSize, 4), "####");
            EXPECT_EQ(dec(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()))),
                      -number);
        }
    }
}

}  // namespace
