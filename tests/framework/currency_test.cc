#include <nkfw/Currency.h>

#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

constexpr LONGLONG most = std::numeric_limits<LONGLONG>::max();
constexpr LONGLONG least = std::numeric_limits<LONGLONG>::min();
constexpr COleCurrency::CurrencyStatus statuses[] = {COleCurrency::valid, COleCurrency::invalid,
                                                     COleCurrency::null};

COleCurrency ofCount(LONGLONG count) {
    return COleCurrency(CURRENCY{count});
}

COleCurrency parsed(LPCTSTR text) {
    COleCurrency amount(7, 0);
    const BOOL isAmount = amount.ParseCurrency(text);
    EXPECT_EQ(isAmount != FALSE, amount.GetStatus() == COleCurrency::valid) << text;
    return amount;
}

std::string formatted(const COleCurrency& amount) {
    return amount.Format().GetString();
}

void expectInvalid(const COleCurrency& amount) {
    EXPECT_EQ(amount.GetStatus(), COleCurrency::invalid);
    EXPECT_EQ(amount.m_cur.int64, 0);
}

void expectCount(const COleCurrency& amount, LONGLONG count) {
    EXPECT_EQ(amount.GetStatus(), COleCurrency::valid);
    EXPECT_EQ(amount.m_cur.int64, count);
}

// ---- Construction and status ----

TEST(Currency, StartsAsAValidZero) {
    expectCount(COleCurrency(), 0);
}

TEST(Currency, HoldsTheCountThatItIsMadeFrom) {
    for (const LONGLONG count : {LONGLONG{0}, LONGLONG{1}, LONGLONG{-12345678}, most, least})
        expectCount(ofCount(count), count);
}

TEST(Currency, AStatusThatIsSetLeavesTheCount) {
    COleCurrency amount(12, 3400);
    for (const COleCurrency::CurrencyStatus status : statuses) {
        amount.SetStatus(status);
        EXPECT_EQ(amount.GetStatus(), status);
        EXPECT_EQ(amount.m_cur.int64, 123400);
    }
}

TEST(Currency, TheStatusesHaveTheNumbersOfAutomation) {
    EXPECT_EQ(COleCurrency::valid, 0);
    EXPECT_EQ(COleCurrency::invalid, 1);
    EXPECT_EQ(COleCurrency::null, 2);
}

// ---- Parts ----

struct PartsCase {
    long units;
    long fraction;
    LONGLONG count;
};

TEST(CurrencyFromParts, IsTheSumOfBoth) {
    const PartsCase cases[] = {
        {0, 0, 0},
        {1234, 5678, 12345678},
        {-1, -5000, -15000},
        {0, -1, -1},
        {1, -1, 9999},
        {0, 9999, 9999},
        {922337203685477, 5807, most},
        {-922337203685477, -5808, least},
        {-922337203685477, 9999, -9223372036854760001},
    };
    for (const PartsCase& each : cases) {
        SCOPED_TRACE(std::to_string(each.units) + " " + std::to_string(each.fraction));
        expectCount(COleCurrency(each.units, each.fraction), each.count);
    }
}

TEST(CurrencyFromParts, BeyondTheRangeIsInvalid) {
    const PartsCase cases[] = {
        {922337203685477, 5808, 0},
        {-922337203685477, -5809, 0},
        {922337203685478, -9999, 0},
        {-922337203685478, 9999, 0},
        {0, 10000, 0},
        {0, -10000, 0},
        {std::numeric_limits<long>::max(), 0, 0},
        {std::numeric_limits<long>::min(), 0, 0},
        {0, std::numeric_limits<long>::max(), 0},
        {0, std::numeric_limits<long>::min(), 0},
    };
    for (const PartsCase& each : cases) {
        SCOPED_TRACE(std::to_string(each.units) + " " + std::to_string(each.fraction));
        expectInvalid(COleCurrency(each.units, each.fraction));
    }
}

TEST(CurrencyFromParts, SettingThemMakesAnInvalidAmountValid) {
    COleCurrency amount(0, 10000);
    amount.SetCurrency(2, 5000);
    expectCount(amount, 25000);
}

// ---- Doubles ----

struct DoubleCase {
    double number;
    LONGLONG count;
};

TEST(CurrencyFromDouble, RoundsItsShortestDecimalHalfAwayFromZero) {
    const DoubleCase cases[] = {
        {0.0, 0},
        {-0.0, 0},
        {2.5, 25000},
        {-1234.5678, -12345678},
        {0.00004999, 0},
        {-0.00004999, 0},
        {0.00005, 1},
        {-0.00005, -1},
        {1.00005, 10001},  // the double itself is below the tie
        {1.00015, 10002},
        {-1.00015, -10002},
        {0.99995, 10000},
        {1e-300, 0},
        {std::numeric_limits<double>::denorm_min(), 0},
        {900719925474.09921, 9007199254740992},
        {922337203685477.5, 9223372036854775000},
        {-922337203685477.5, -9223372036854775000},
    };
    for (const DoubleCase& each : cases) {
        SCOPED_TRACE(each.number);
        expectCount(COleCurrency::FromDouble(each.number), each.count);
    }
}

TEST(CurrencyFromDouble, BeyondTheRangeAndNotFiniteIsInvalid) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    for (const double number : {922337203685477.625, -922337203685477.625, 999999999999999.9, 1e15, -1e15,
                                1e300, infinity, -infinity, noNumber}) {
        SCOPED_TRACE(number);
        expectInvalid(COleCurrency::FromDouble(number));
    }
}

TEST(CurrencyToDouble, IsTheNearest) {
    const DoubleCase cases[] = {
        {0.0, 0},
        {0.0001, 1},
        {-1234.5678, -12345678},
        {0.1, 1000},
        {922337203685477.5807, most},
        {-922337203685477.5808, least},
        {900719925474.0993, 9007199254740993},
    };
    for (const DoubleCase& each : cases)
        EXPECT_EQ(ofCount(each.count).GetDouble(), each.number) << each.count;
}

TEST(CurrencyToDouble, ComesBackWithUpTo15Digits) {
    std::mt19937_64 random(20040229);
    std::uniform_int_distribution<LONGLONG> counts(-999'999'999'999'999, 999'999'999'999'999);
    for (int i = 0; i < 2000; ++i) {
        const COleCurrency amount = ofCount(counts(random));
        ASSERT_EQ(COleCurrency::FromDouble(amount.GetDouble()), amount) << amount.m_cur.int64;
    }
}

// ---- Texts ----

struct TextCase {
    LPCTSTR text;
    LONGLONG count;
};

TEST(CurrencyFromText, ReadsDigitsWithUpToFourPlaces) {
    const TextCase cases[] = {
        {"0", 0},
        {"1234.5678", 12345678},
        {"-1.5", -15000},
        {"+1.5", 15000},
        {"-0", 0},
        {"0.0001", 1},
        {"12", 120000},
        {"00000000000000000000000000000000012.50", 125000},
        {"922337203685477.5807", most},
        {"-922337203685477.5808", least},
    };
    for (const TextCase& each : cases) {
        SCOPED_TRACE(each.text);
        expectCount(parsed(each.text), each.count);
    }
}

TEST(CurrencyFromText, RefusesEverythingElse) {
    for (LPCTSTR text : {"",
                         " ",
                         "-",
                         "+",
                         ".",
                         "-.",
                         "1.",
                         ".5",
                         "1,5",
                         "1.2.3",
                         "1..2",
                         "--1",
                         "1-",
                         "1 000",
                         " 1",
                         "1 ",
                         "0x10",
                         "1e3",
                         "1.00000",
                         "1.23456",
                         "922337203685477.5808",
                         "-922337203685477.5809",
                         "9223372036854775808",
                         "99999999999999999999999999999999"}) {
        SCOPED_TRACE(text);
        expectInvalid(parsed(text));
    }
    expectInvalid(parsed(nullptr));
}

TEST(CurrencyToText, HasAlwaysFourPlaces) {
    const TextCase cases[] = {
        {"0.0000", 0},
        {"1234.5678", 12345678},
        {"-1.5000", -15000},
        {"-0.0001", -1},
        {"0.0100", 100},
        {"922337203685477.5807", most},
        {"-922337203685477.5808", least},
    };
    for (const TextCase& each : cases)
        EXPECT_EQ(formatted(ofCount(each.count)), each.text);
}

TEST(CurrencyToText, IsEmptyUnlessTheAmountIsValid) {
    COleCurrency amount(1, 0);
    amount.SetStatus(COleCurrency::invalid);
    EXPECT_EQ(formatted(amount), "");
    amount.SetStatus(COleCurrency::null);
    EXPECT_EQ(formatted(amount), "");
}

TEST(CurrencyToText, ComesBack) {
    std::mt19937_64 random(20040229);
    for (int i = 0; i < 2000; ++i) {
        const COleCurrency amount = ofCount(static_cast<LONGLONG>(random()) >> (i % 64));
        ASSERT_EQ(parsed(amount.Format().GetString()), amount) << amount.m_cur.int64;
    }
}

// ---- Comparison ----

TEST(CurrencyComparison, OrdersValidAmountsByTheirCount) {
    const COleCurrency small = ofCount(least);
    const COleCurrency large = ofCount(most);
    EXPECT_TRUE(small < large && small <= large && large > small && large >= small && small != large);
    EXPECT_FALSE(large < small || large <= small || small > large || small >= large || small == large);
    EXPECT_TRUE(small == ofCount(least) && small <= ofCount(least) && small >= ofCount(least));
    EXPECT_FALSE(small != ofCount(least) || small < ofCount(least) || small > ofCount(least));
}

TEST(CurrencyComparison, EqualAmountsHaveOneStatus) {
    for (const COleCurrency::CurrencyStatus one : statuses) {
        for (const COleCurrency::CurrencyStatus other : statuses) {
            COleCurrency a(1, 0);
            COleCurrency b(1, 0);
            a.SetStatus(one);
            b.SetStatus(other);
            EXPECT_EQ(a == b, one == other);
            EXPECT_EQ(a != b, one != other);
        }
    }
}

TEST(CurrencyComparison, WhatIsNotValidHasNoOrder) {
    const COleCurrency amount(1, 0);
    COleCurrency none;
    none.SetStatus(COleCurrency::null);
    EXPECT_FALSE(none < amount || none <= amount || none > amount || none >= amount);
    EXPECT_FALSE(amount < none || amount <= none || amount > none || amount >= none);
    EXPECT_FALSE(none < none || none <= none || none > none || none >= none);
}

TEST(CurrencyComparison, TakesABareCountOnEitherSide) {
    EXPECT_TRUE(COleCurrency(1, 0) == CURRENCY{10000});
    EXPECT_TRUE(CURRENCY{10000} == COleCurrency(1, 0));
    EXPECT_TRUE(CURRENCY{9999} < COleCurrency(1, 0));
}

}  // namespace
