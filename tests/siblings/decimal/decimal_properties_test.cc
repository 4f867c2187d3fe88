// What holds for any numbers, tried with random ones.

#include <bit>
#include <cmath>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "DecimalTest.h"
#include "support/Instruments.h"

namespace {

using namespace decimaltest;

int rounds() {
    return nktest::isUnderValgrind() ? 2000 : 50'000;
}

class DecimalProperties : public testing::Test {
  protected:
    /// Any size up to @p bits, any scale.
    Decimal96 any(unsigned bits = 95) {
        const unsigned size = 1 + static_cast<unsigned>(m_random() % bits);
        const std::uint64_t low = m_random() >> (size < 64 ? 64 - size : 0);
        const auto high = size > 64 ? static_cast<std::uint32_t>(m_random() >> (128 - size)) : 0U;
        return Decimal96::fromParts(static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(low >> 32U),
                                    high, m_random() % 2 == 0, static_cast<std::int16_t>(m_random() % 29));
    }
    std::uint64_t bits() { return m_random(); }

  private:
    std::mt19937_64 m_random{20240229};
};

TEST_F(DecimalProperties, WhatIsAddedCanBeTakenAwayWhereNothingIsLost) {
    const CountingHandlers handlers;
    int exact = 0;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        const Decimal96 b = any();
        overflows = losses = 0;
        const Decimal96 sum = a + b;
        if (overflows + losses > 0) continue;
        const Decimal96 back = sum - b;
        if (overflows + losses > 0) continue;
        ++exact;
        ASSERT_EQ(back, a) << text(a) << " + " << text(b);
        ASSERT_EQ(b + a, sum);
    }
    EXPECT_GT(exact, rounds() / 10);
}

TEST_F(DecimalProperties, TheRemainderIsSmallerThanTheDivisorAndHasTheSignOfTheDividend) {
    const CountingHandlers handlers;
    int divided = 0;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        const Decimal96 b = any();
        const Decimal96 rest = a % b;
        if (!rest.isNumber()) continue;
        ++divided;
        ASSERT_LT(rest.abs(), b.abs()) << text(a) << " % " << text(b);
        ASSERT_LE(rest.abs(), a.abs());
        ASSERT_TRUE(rest.isZero() || rest.sign() == a.sign()) << text(a) << " % " << text(b);
        losses = 0;
        const Decimal96 product = a.truncatedQuotient(b) * b;
        if (product.isNumber() && losses == 0) {
            const Decimal96 sum = product + rest;
            if (losses == 0) {
                ASSERT_EQ(sum, a) << text(a) << " % " << text(b);
            }
        }
    }
    EXPECT_GT(divided, rounds() / 2);
}

TEST_F(DecimalProperties, TheOrderIsTheSignOfTheDifference) {
    const CountingHandlers handlers;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        const Decimal96 b = i % 8 == 0 ? a : any();
        overflows = losses = 0;
        const Decimal96 difference = a - b;
        if (overflows + losses > 0) continue;
        ASSERT_EQ(a < b, difference.sign() < 0) << text(a) << " - " << text(b);
        ASSERT_EQ(a > b, difference.sign() > 0) << text(a) << " - " << text(b);
        ASSERT_EQ(a == b, difference.sign() == 0) << text(a) << " - " << text(b);
    }
}

TEST_F(DecimalProperties, AQuotientTimesItsDivisorIsNearTheDividend) {
    const CountingHandlers handlers;
    int divided = 0;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        const Decimal96 b = any();
        const Decimal96 quotient = a / b;
        if (!quotient.isNumber()) continue;
        ++divided;
        // The quotient is off by half a unit of its last place, the product by half a unit of its own.
        const double back = quotient.toDouble() * b.toDouble();
        const double allowed = std::fabs(b.toDouble()) * std::pow(10.0, -quotient.scale()) * 0.5000001 +
                               std::fabs(a.toDouble()) * 1e-15;
        ASSERT_LE(std::fabs(back - a.toDouble()), allowed) << text(a) << " / " << text(b);
    }
    EXPECT_GT(divided, rounds() / 2);
}

TEST_F(DecimalProperties, ATextReadsBackAsTheSameNumberAndPlaces) {
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        const Decimal96 back = dec(text(a));
        ASSERT_EQ(back, a) << text(a);
        ASSERT_EQ(back.scale(), a.scale()) << text(a);
    }
}

TEST_F(DecimalProperties, ADoubleOfAnyBitsComesBackWhereItsPlacesCanBeHeld) {
    const CountingHandlers handlers;
    int returned = 0;
    for (int i = 0; i < rounds(); ++i) {
        // Any sign and fraction; an exponent from 2^-36, whose shortest digits end before the 29th place, to
        // 2^94.
        const std::uint64_t exponent = 1023 - 36 + bits() % 131;
        const double value = std::bit_cast<double>((bits() & 0x800FFFFFFFFFFFFFU) | exponent << 52U);
        overflows = losses = 0;
        const Decimal96 decimal(value);
        ASSERT_EQ(overflows, 0) << value;
        if (losses > 0) continue;
        ++returned;
        ASSERT_EQ(decimal.toDouble(), value);
    }
    EXPECT_GT(returned, rounds() / 2);
}

TEST_F(DecimalProperties, FusedFormsAreTheExactResultRoundedOnce) {
    const CountingHandlers handlers;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any(46);
        const Decimal96 b = any(46);
        overflows = losses = 0;
        const Decimal96 product = a * b;
        if (losses + overflows > 0) continue;
        const int places = product.scale() < 2 ? product.scale() : 2;
        ASSERT_EQ(Decimal96::multiplyRounded(a, b, places), product.round(places))
            << text(a) << " * " << text(b);
    }
}

TEST_F(DecimalProperties, RoundingTwiceToTheSamePlacesChangesNothing) {
    const CountingHandlers handlers;
    for (int i = 0; i < rounds(); ++i) {
        const Decimal96 a = any();
        for (const Decimal96::Rounding method : {Decimal96::PLAIN, Decimal96::UP, Decimal96::DOWN}) {
            const Decimal96 once = a.round(3, method);
            ASSERT_EQ(once.round(3, method), once);
            ASSERT_LE(a.truncate(3).abs(), a.abs());
        }
    }
}

}  // namespace
