// Computing and comparing with decimal numbers, in every operand form.

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>

#include <functional>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DecimalTesting.h"

namespace {

using namespace valuetest;

const NkDtDecimal missing(NkDtWmMissing);
const NkDtDecimal null(NkDtWmNull);
const NkDtDecimal zero(0);

NkDtDecimal decimal(const char* text) {
    return NkDtDecimal(text);
}

// --- Definedness of results ---------------------------------------------------------------------

TEST(NkDtDecimalArithmetic, OfDefinedNumbersIsExactAndHasTheDefaultMode) {
    NkDtDecimal a("7.5");
    a.SetWorkingMode(NkDtWmNull);
    a.SetModified(TRUE);
    const NkDtDecimal b("2");
    EXPECT_EQ(describe(a + b), "9.5 defined");
    EXPECT_EQ(describe(a - b), "5.5 defined");
    EXPECT_EQ(describe(a * b), "15 defined");
    EXPECT_EQ(describe(a / b), "3.75 defined");
    EXPECT_EQ(describe(a % b), "1.5 defined");
    EXPECT_EQ((a + b).GetWorkingMode(), NkDtWmMissing);
    EXPECT_EQ(describe(a), "7.5 defined modified");
    EXPECT_EQ((decimal("1.50") * b).GetPrecision(), 2);
}

TEST(NkDtDecimalArithmetic, WithAMissingOrTwoUndefinedOperandsIsUndefinedWithoutAnError) {
    for (const auto& [a, b] : {std::pair{missing, decimal("1")},
                               {decimal("1"), missing},
                               {null, missing},
                               {missing, null},
                               {null, null},
                               {missing, missing},
                               {missing, zero},
                               {zero, missing}}) {
        for (const NkDtDecimal& result : {a + b, a - b, a * b, a / b, a % b}) {
            EXPECT_EQ(describe(result), "0 missing");
        }
    }
    const DefaultMode mode(NkDtWmNull);
    EXPECT_EQ(describe(missing + missing), "0 null");
}

TEST(NkDtDecimalArithmetic, ANullTakesPartWithItsNumberOrIsNeutral) {
    const NkDtDecimal a("2.5");
    EXPECT_EQ(describe(a + null), "2.5 defined");
    EXPECT_EQ(describe(null + a), "2.5 defined");
    EXPECT_EQ(describe(a - null), "2.5 defined");
    EXPECT_EQ(describe(null - a), "-2.5 defined");
    EXPECT_EQ(describe(a * null), "2.5 defined");
    EXPECT_EQ(describe(null * a), "2.5 defined");
    EXPECT_EQ(describe(a / null), "2.5 defined");
    EXPECT_EQ(describe(null / a), "0 defined");
    EXPECT_EQ(describe(a % null), "0.5 defined");
    EXPECT_EQ(describe(decimal("-2.5") % null), "-0.5 defined");
    EXPECT_EQ(describe(null % a), "0 defined");
}

TEST(NkDtDecimalArithmetic, WhatANeutralNullLeavesIsTheNumberAloneAndUnmodified) {
    NkDtDecimal a("2.50");
    a.SetWorkingMode(NkDtWmNull);
    a.SetModified(TRUE);
    const NkDtDecimal product = a * null;
    EXPECT_EQ(describe(product), "2.5 defined");
    EXPECT_EQ(product.GetPrecision(), 2);
    EXPECT_EQ(product.GetWorkingMode(), NkDtWmMissing);
}

TEST(NkDtDecimalArithmetic, WithAPlainNumberNeedsNoMoreThanAValueThatIsNotMissing) {
    const NkDtDecimal a("7.5");
    EXPECT_EQ(describe(a + 2), "9.5 defined");
    EXPECT_EQ(describe(a - 2), "5.5 defined");
    EXPECT_EQ(describe(a * 2), "15 defined");
    EXPECT_EQ(describe(a / 2), "3.75 defined");
    EXPECT_EQ(describe(a % 2), "1.5 defined");
    EXPECT_EQ(describe(a + 0.1), "7.6 defined");
    EXPECT_EQ(describe(a - 0.1), "7.4 defined");
    EXPECT_EQ(describe(a * 0.1), "0.75 defined");
    EXPECT_EQ(describe(a / 0.5), "15 defined");
    EXPECT_EQ(describe(a % 0.7), "0.5 defined");
    for (const NkDtDecimal& result :
         {missing + 2, missing - 2, missing * 2, missing / 2, missing % 2, missing + 0.5, missing - 0.5,
          missing * 0.5, missing / 0.5, missing % 0.5, missing / 0}) {
        EXPECT_EQ(describe(result), "0 missing");
    }
    for (const NkDtDecimal& result : {null * 2, null / 2, null % 2, null * 0.5}) {
        EXPECT_EQ(describe(result), "0 defined");
    }
    EXPECT_EQ(describe(null + 2), "2 defined");
    EXPECT_EQ(describe(null - 0.5), "-0.5 defined");
}

TEST(NkDtDecimalArithmetic, WithAPlainNumberInFront) {
    const NkDtDecimal a("2.5");
    EXPECT_EQ(describe(1 + a), "3.5 defined");
    EXPECT_EQ(describe(1 - a), "-1.5 defined");
    EXPECT_EQ(describe(0 - a), "-2.5 defined");
    EXPECT_EQ(describe(4 * a), "10 defined");
    EXPECT_EQ(describe(5 / a), "2 defined");
    EXPECT_EQ(describe(7 % a), "2 defined");
    EXPECT_EQ(describe(0.5 + a), "3 defined");
    EXPECT_EQ(describe(0.5 - a), "-2 defined");
    EXPECT_EQ(describe(0.5 * a), "1.25 defined");
    EXPECT_EQ(describe(0.5 / a), "0.2 defined");
    EXPECT_EQ(describe(-7.5 % a), "0 defined");
    for (const NkDtDecimal& result : {1 + missing, 1 - missing, 1 * missing, 1 / missing, 1 % missing,
                                      0 / missing, 0.5 + missing, 0.5 / missing}) {
        EXPECT_EQ(describe(result), "0 missing");
    }
    EXPECT_EQ(describe(3 + null), "3 defined");
    EXPECT_EQ(describe(3 - null), "3 defined");
    EXPECT_EQ(describe(3 * null), "3 defined");
    EXPECT_EQ(describe(3 / null), "3 defined");
    EXPECT_EQ(describe(0 / null), "0 defined");
    EXPECT_EQ(describe(3.5 % null), "0.5 defined");
}

// --- Division -----------------------------------------------------------------------------------

TEST(NkDtDecimalDivision, OfAPlainNumberByADefinedZeroIsRefusedFirst) {
    constexpr const char* module = ".\\Dtdecope.cc";
    const std::string friends = cp1252("Friend-Operatoren für NkDtDecimal");
    expectOrigins({{"1 / 0", [] { static_cast<void>(1 / zero); }, NkDtErrDivisionDurchNull, module, friends,
                    "operator/(INT,NkDtDecimal&)"},
                   {"0 / 0", [] { static_cast<void>(0 / zero); }, NkDtErrDivisionDurchNull, module, friends,
                    "operator/(INT,NkDtDecimal&)"},
                   {"0.5 / 0", [] { static_cast<void>(0.5 / zero); }, NkDtErrDivisionDurchNull, module,
                    friends, "operator/(double,NkDtDecimal&)"},
                   {"1e30 / 0", [] { static_cast<void>(1e30 / zero); }, NkDtErrDivisionDurchNull, module,
                    friends, "operator/(double,NkDtDecimal&)"}});
    EXPECT_EQ(describe(0 / decimal("2")), "0 defined");
}

TEST(NkDtDecimalDivision, OfAPlainNumberReplacesEveryOtherFailure) {
    expectReplaced(NkDtErrDezimal, [] { static_cast<void>(1e30 / decimal("2")); });
    expectReplaced(NkDtErrDezimal, [] { static_cast<void>(5 / decimal("0.0000000000000000000000000001")); });
}

TEST(NkDtDecimalDivision, OfAValueByZeroIsTheDecimalsOwnError) {
    const NkDtDecimal a("2.5");
    for (const auto& operation : std::initializer_list<std::function<void()>>{
             [&] { static_cast<void>(a / zero); }, [&] { static_cast<void>(a / 0); },
             [&] { static_cast<void>(a / 0.0); }, [&] { static_cast<void>(a % zero); },
             [&] { static_cast<void>(a % 0); }, [&] { static_cast<void>(null / 0); }}) {
        const ErrorPtr error = expectError(NkDtErrDezimal, operation);
        EXPECT_STREQ(error->GetSourceFile(), "RWDecimal");
    }
    EXPECT_EQ(describe(a), "2.5 defined");
}

TEST(NkDtDecimalDivision, TheRemainderHasTheSignOfTheDividend) {
    EXPECT_EQ(describe(decimal("7") % 3), "1 defined");
    EXPECT_EQ(describe(decimal("-7") % 3), "-1 defined");
    EXPECT_EQ(describe(decimal("7") % -3), "1 defined");
    EXPECT_EQ(describe(decimal("7.5") % decimal("2")), "1.5 defined");
    EXPECT_EQ(describe(decimal("0.3") % decimal("0.1")), "0 defined");
}

TEST(NkDtDecimalArithmetic, BeyondTheRangeLeavesTheOperandsAsTheyWere) {
    NkDtDecimal largest("0039614081257132168796771975167");
    const std::string before = describe(largest);
    EXPECT_EQ(before, "39614081257132168796771975167 defined");
    expectError(NkDtErrDezimal, [&] { static_cast<void>(largest + largest); });
    expectError(NkDtErrDezimal, [&] { static_cast<void>(largest * 2); });
    expectError(NkDtErrDezimal, [&] { largest += 1; });
    expectError(NkDtErrDezimal, [&] { largest += largest; });
    expectError(NkDtErrDezimal, [&] { ++largest; });
    expectError(NkDtErrDezimal, [&] { largest -= 1e30; });
    EXPECT_EQ(describe(largest), before);
}

// --- Adding in place ----------------------------------------------------------------------------

std::string after(NkDtDecimal value, const std::function<void(NkDtDecimal&)>& operation) {
    value.SetModified(FALSE);
    operation(value);
    return describe(value);
}

TEST(NkDtDecimalCompound, WithAPlainNumberIsModifiedUnlessThatIsZero) {
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += 2; }), "3.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d -= 2; }), "-0.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += 0; }), "1.5 defined");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += 0.25; }), "1.75 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d -= 0.0; }), "1.5 defined");
    EXPECT_EQ(after(null, [](auto& d) { d += 2; }), "2 defined modified");
    EXPECT_EQ(after(null, [](auto& d) { d += 0; }), "0 defined modified");  // it becomes defined
    EXPECT_EQ(after(missing, [](auto& d) { d += 2; }), "0 missing");
}

TEST(NkDtDecimalCompound, WithAValueIsModifiedWhenTheNumberDiffers) {
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += decimal("2"); }), "3.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d -= decimal("2"); }), "-0.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += zero; }), "1.5 defined");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += null; }), "1.5 defined");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += missing; }), "1.5 defined");
    EXPECT_EQ(after(null, [](auto& d) { d += decimal("2"); }), "2 defined modified");
    EXPECT_EQ(after(null, [](auto& d) { d += null; }), "0 null");
    EXPECT_EQ(after(missing, [](auto& d) { d += decimal("2"); }), "0 missing");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d += d; }), "3 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d -= d; }), "0 defined modified");
}

/// Counts how often the flag is raised.
class Watched : public NkDtDecimal {
  public:
    using NkDtDecimal::NkDtDecimal;
    void SetModified(BOOL fModified) override {
        ++raised;
        NkDtDecimal::SetModified(fModified);
    }
    int raised = 0;
};

TEST(NkDtDecimalCompound, WithAValueRaisesAFlagThatIsDownOnly) {
    Watched unmodified(NkDtWmNull);
    unmodified += decimal("2");
    EXPECT_EQ(unmodified.raised, 1);
    Watched modified(NkDtWmNull);
    modified.SetModified(TRUE);
    modified.raised = 0;
    modified += decimal("2");
    EXPECT_EQ(describe(modified), "2 defined modified");
    modified -= null;
    EXPECT_EQ(describe(modified), "2 defined modified");
    EXPECT_EQ(modified.raised, 0);
}

TEST(NkDtDecimalCompound, CountsUpAndDown) {
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { ++d; }), "2.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d++; }), "2.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { --d; }), "0.5 defined modified");
    EXPECT_EQ(after(decimal("1.5"), [](auto& d) { d--; }), "0.5 defined modified");
    EXPECT_EQ(after(null, [](auto& d) { ++d; }), "1 defined modified");
    EXPECT_EQ(after(missing, [](auto& d) { ++d; }), "0 missing");
}

// --- Comparing ----------------------------------------------------------------------------------

TEST(NkDtDecimalComparison, IsByNumberWhateverThePlaces) {
    EXPECT_TRUE(decimal("2.50") == decimal("2.5"));
    EXPECT_FALSE(decimal("2.50") != decimal("2.5"));
    EXPECT_TRUE(decimal("2.5") < decimal("2.51"));
    EXPECT_TRUE(decimal("-3") < decimal("-2.99"));
    EXPECT_TRUE(decimal("2.5") >= 2.5);
    EXPECT_TRUE(decimal("2.5") > 2);
    EXPECT_TRUE(2 < decimal("2.5"));
    EXPECT_TRUE(0.1 == decimal("0.1"));
    EXPECT_FALSE(decimal("123456789012") == 5);
    EXPECT_TRUE(null == 0);
    EXPECT_TRUE(null == zero);
    EXPECT_TRUE(decimal("9223372036854775807") == 9223372036854775807LL);
    EXPECT_TRUE(decimal("18446744073709551615") > 9223372036854775807LL);
}

TEST(NkDtDecimalComparison, WithAMissingOperandIsRefusedByItsOwnName) {
    constexpr const char* module = ".\\Dtdecope.cc";
    const NkDtDecimal a("1");
    const auto expect = [&](const std::function<void()>& operation, const char* function) {
        expectOrigins({{function, operation, NkDtErrUndefiniert, module, "NkDtDecimal", function}});
    };
    expect([&] { static_cast<void>(missing == a); }, "operator==(NkDtDecimal&)");
    expect([&] { static_cast<void>(a != missing); }, "operator!=(NkDtDecimal&)");
    expect([&] { static_cast<void>(missing < a); }, "operator<(NkDtDecimal&)");
    expect([&] { static_cast<void>(a > missing); }, "operator>(NkDtDecimal&)");
    expect([&] { static_cast<void>(missing <= null); }, "operator<=(NkDtDecimal&)");
    expect([&] { static_cast<void>(missing >= missing); }, "operator>=(NkDtDecimal&)");
    expect([&] { static_cast<void>(missing < 1); }, "operator<(INT)");
    expect([&] { static_cast<void>(missing == 1); }, "operator==(INT)");
    expect([&] { static_cast<void>(missing >= 1.0); }, "operator>=(double)");
    expect([&] { static_cast<void>(missing != 1e30); }, "operator!=(double)");
}

TEST(NkDtDecimalComparison, WithADoubleThatIsNoDecimalIsReplacedAndNotLogged) {
    const NkDtDecimal a("1");
    expectReplaced(NkDtErrDezimal, [&] { static_cast<void>(a < 1e30); });
    expectReplaced(NkDtErrDezimal, [&] { static_cast<void>(a == std::numeric_limits<double>::quiet_NaN()); });
}

// --- Beside whole-number values -------------------------------------------------------------------

TEST(NkDtDecimalMixed, AWholeNumberValueCountsAsADecimalOfItsState) {
    const NkDtLong number(3);
    const NkDtLong nullNumber(NkDtWmNull);
    const NkDtDecimal a("2.5");
    EXPECT_EQ(describe(a + number), "5.5 defined");
    EXPECT_EQ(describe(number - a), "0.5 defined");
    EXPECT_EQ(describe(number * a), "7.5 defined");
    EXPECT_EQ(describe(nullNumber * a), "2.5 defined");
    EXPECT_EQ(describe(number * null), "3 defined");
    EXPECT_EQ(describe(number * missing), "0 missing");
    EXPECT_EQ(describe(NkDtShort(2) * a), "5 defined");
    EXPECT_TRUE(a < number);
    EXPECT_TRUE(NkDtShort(2) < a);
    NkDtDecimal sum("0.5");
    sum += number;
    EXPECT_EQ(describe(sum), "3.5 defined modified");
    sum = number;
    EXPECT_EQ(describe(sum), "3 defined modified");
}

}  // namespace
