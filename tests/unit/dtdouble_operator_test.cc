// The operators of the double: what they compute, what undefined operands do, what is modified.

#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkfo/NkFormat.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;
using Limits = std::numeric_limits<double>;

constexpr double kInfinity = Limits::infinity();
constexpr double kNaN = Limits::quiet_NaN();
const NkFormat kFormat(20, 6, FormatDezimalTrennerPunkt, FormatTausenderTrennerOhne, FormatVorzeichenVorn,
                       FormatVorzeichenNurMinus, 0, '0', 0, '0');

/// Undefined in that mode, storing this number, unmodified; an archive can leave a value so.
NkDtDouble undefinedStoring(double number, NkDtWorkingMode mode) {
    NkDtDouble value(mode);
    load(value, written([&](CArchive& archive) { archive << DWORD{0} << number; }));
    value.SetModified(FALSE);
    return value;
}

const NkDtDouble kMissing(NkDtWmMissing);
const NkDtDouble kNull(NkDtWmNull);
const NkDtDouble kNine = undefinedStoring(9.0, NkDtWmNull);

// --- Computing ------------------------------------------------------------------------------------

TEST(NkDtDoubleArithmetic, IsThatOfDoubles) {
    const double numbers[] = {0.0,           -0.0,          1.0,     -1.5,      0.1,  0.2, 1e-300,    -1e300,
                              Limits::max(), Limits::min(), 1.0 / 3, kInfinity, kNaN, 5.0, -kInfinity};
    const auto expectSame = [](const NkDtDouble& result, double expected, double a, double b) {
        EXPECT_EQ(stateOf(result), "defined") << a << ", " << b;
        const double number = result.GetValue();
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(number)) << a << ", " << b;
            return;
        }
        EXPECT_EQ(number, expected) << a << ", " << b;
        EXPECT_EQ(std::signbit(number), std::signbit(expected)) << a << ", " << b;
    };
    for (const double a : numbers) {
        for (const double b : numbers) {
            const NkDtDouble left(a);
            const NkDtDouble right(b);
            for (const NkDtDouble& sum : {left + right, left + b, a + right})
                expectSame(sum, a + b, a, b);
            for (const NkDtDouble& difference : {left - right, left - b, a - right})
                expectSame(difference, a - b, a, b);
            for (const NkDtDouble& product : {left * right, left * b, a * right})
                expectSame(product, a * b, a, b);
            if (b == 0.0) continue;
            for (const NkDtDouble& quotient : {left / right, left / b, a / right})
                expectSame(quotient, a / b, a, b);
        }
    }
}

TEST(NkDtDoubleArithmetic, TakesWholeNumbersForTheNearestDouble) {
    const NkDtDouble number(2.5);
    EXPECT_EQ((number + 2).GetValue(), 4.5);
    EXPECT_EQ((2 - number).GetValue(), -0.5);
    EXPECT_EQ((number * -2).GetValue(), -5.0);
    EXPECT_EQ((5 / number).GetValue(), 2.0);
    EXPECT_EQ((number / 2L).GetValue(), 1.25);
    EXPECT_EQ((number + 9007199254740993LL).GetValue(), 2.5 + 9007199254740992.0);
    EXPECT_EQ((std::numeric_limits<ULONGLONG>::max() * NkDtDouble(1.0)).GetValue(), 18446744073709551616.0);
    EXPECT_EQ((number + 0.5F).GetValue(), 3.0);
}

TEST(NkDtDoubleArithmetic, RefusesADivisorOfZeroInEveryForm) {
    static const NkDtDouble five(5.0);
    static const NkDtDouble zero(0.0);
    static const NkDtDouble minusZero(-0.0);
    static const NkDtDouble null(NkDtWmNull);
    const std::function<void()> divisions[] = {[] { static_cast<void>(five / zero); },
                                               [] { static_cast<void>(five / minusZero); },
                                               [] { static_cast<void>(five / 0.0); },
                                               [] { static_cast<void>(five / -0.0); },
                                               [] { static_cast<void>(five / 0); },
                                               [] { static_cast<void>(five / 0L); },
                                               [] { static_cast<void>(5.0 / zero); },
                                               [] { static_cast<void>(5 / zero); },
                                               [] { static_cast<void>(5 / minusZero); },
                                               [] { static_cast<void>(0 / zero); },
                                               [] { static_cast<void>(0.0 / zero); },
                                               [] { static_cast<void>(kNaN / zero); },
                                               [] { static_cast<void>(NkDtDouble(kInfinity) / zero); },
                                               [] { static_cast<void>(null / zero); },
                                               [] { static_cast<void>(null / 0); },
                                               [] { static_cast<void>(null / 0.0); },
                                               [] { static_cast<void>(five / NkDtLong(0)); },
                                               [] { static_cast<void>(NkDtLong(5) / zero); }};
    for (const auto& division : divisions) {
        const ErrorPtr error = expectError(NkDtErrDivisionDurchNull, division);
        EXPECT_STREQ(error->GetErrorText(), "Division durch 0");
    }
    EXPECT_EQ((five / 1e-300).GetValue(), 5.0 / 1e-300);
    EXPECT_EQ((five / NkDtDouble(Limits::denorm_min())).GetValue(), kInfinity);
}

TEST(NkDtDoubleArithmetic, LooksAtMissingOperandsBeforeTheDivisor) {
    for (const NkDtDouble& result : {kMissing / NkDtDouble(0.0), kMissing / 0, kMissing / 0.0, 5 / kMissing,
                                     5.0 / kMissing, 0 / kMissing})
        EXPECT_EQ(describe(result), "0 missing");
}

// --- Undefined operands ---------------------------------------------------------------------------

TEST(NkDtDoubleArithmetic, IsUndefinedWithAMissingOperandOrTwoUndefinedOnes) {
    const NkDtDouble five(5.0);
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        const std::string undefined = describe(NkDtDouble(mode));  // a defined 0 in mode 2
        for (const NkDtDouble& result :
             {five + kMissing,  kMissing + five,     five - kMissing, kMissing - five,  five * kMissing,
              kMissing * five,  five / kMissing,     kMissing / five, kMissing + kNull, kNull + kMissing,
              kMissing * kNull, kNull / kMissing,    kNull + kNull,   kNull - kNull,    kNull * kNull,
              kNull / kNull,    kMissing - kMissing, kMissing + 5,    kMissing - 5.0,   kMissing * 5,
              kMissing / 5.0,   5 + kMissing,        5.0 - kMissing,  5 * kMissing,     5.0 / kMissing,
              kNine + kNine,    kNine * kNull}) {
            EXPECT_EQ(describe(result), undefined);
            EXPECT_EQ(result.GetWorkingMode(), mode);
        }
    }
}

TEST(NkDtDoubleArithmetic, TakesANullForZeroAndForTheNeutralFactor) {
    struct Case {
        const char* name;
        NkDtDouble result;
        double number;
    };
    const NkDtDouble five(5.0);
    const Case cases[] = {{"null + 5", kNull + five, 5},
                          {"5 + null", five + kNull, 5},
                          {"null - 5", kNull - five, -5},
                          {"5 - null", five - kNull, 5},
                          {"null * 5", kNull * five, 5},
                          {"5 * null", five * kNull, 5},
                          {"null / 5", kNull / five, 0},
                          {"5 / null", five / kNull, 5},
                          {"null + i", kNull + 5, 5},
                          {"i + null", 5 + kNull, 5},
                          {"null - i", kNull - 5, -5},
                          {"i - null", 5 - kNull, 5},
                          {"null * i", kNull * 5, 0},
                          {"i * null", 5 * kNull, 5},
                          {"null / i", kNull / 5, 0},
                          {"i / null", 5 / kNull, 5},
                          {"null + d", kNull + 5.0, 5},
                          {"d + null", 5.0 + kNull, 5},
                          {"null - d", kNull - 5.0, -5},
                          {"d - null", 5.0 - kNull, 5},
                          {"null * d", kNull * 5.0, 0},
                          {"d * null", 5.0 * kNull, 5},
                          {"null / d", kNull / 5.0, 0},
                          {"d / null", 5.0 / kNull, 5},
                          // One that stores a number is computed with it, and is neutral all the same.
                          {"nine + 5", kNine + five, 14},
                          {"5 - nine", five - kNine, -4},
                          {"nine * 5", kNine * five, 5},
                          {"5 * nine", five * kNine, 5},
                          {"nine / 5", kNine / five, 1.8},
                          {"5 / nine", five / kNine, 5},
                          {"nine * i", kNine * 5, 45},
                          {"i * nine", 5 * kNine, 5},
                          {"nine / d", kNine / 4.5, 2},
                          {"d / nine", 5.0 / kNine, 5},
                          {"0 / null", 0 / kNull, 0}};
    for (const Case& each : cases) {
        EXPECT_EQ(each.result.GetValue(), each.number) << each.name;
        EXPECT_EQ(stateOf(each.result), "defined") << each.name;
    }
}

TEST(NkDtDoubleArithmetic, CopiesAnOperandWithItsStateWhereTheOtherIsNeutral) {
    NkDtDouble a(NkDtWmNull);
    a = 6.5;
    a.SetFormat(&kFormat);
    const DefaultMode scope(NkDtWmDefined);
    const NkDtDouble null(NkDtWmNull);
    for (const NkDtDouble& result : {a * null, null * a, a / null}) {
        EXPECT_EQ(describe(result), "6.5 defined modified");
        EXPECT_EQ(result.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(result.GetFormat(), nullptr);
    }
}

TEST(NkDtDoubleArithmetic, GivesComputedResultsTheDefaultModeAndNoFormat) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtDouble a(NkDtWmNull);
        a = 6.5;
        a.SetFormat(&kFormat);
        const DefaultMode scope(mode);
        for (const NkDtDouble& result : {a + a, a - 1, 2 * a, a / 2.0, 1.0 / a, 5 * kNull, 5.0 / kNull}) {
            EXPECT_EQ(stateOf(result), "defined");
            EXPECT_EQ(result.GetWorkingMode(), mode);
            EXPECT_EQ(result.GetFormat(), nullptr);
        }
    }
}

TEST(NkDtDoubleArithmetic, ComputesWithAnUndefinedOperandInModeTwo) {
    const NkDtDouble undefined = undefinedStoring(9.0, NkDtWmDefined);
    const NkDtDouble five(5.0);
    EXPECT_EQ((undefined + five).GetValue(), 14.0);
    EXPECT_EQ((five * undefined).GetValue(), 45.0);  // it is no null
    EXPECT_EQ((undefined * 5).GetValue(), 45.0);
    EXPECT_EQ((45 / undefined).GetValue(), 5.0);
    EXPECT_EQ((undefined + undefined).IsDefined(), FALSE);
}

TEST(NkDtDoubleArithmetic, TakesAWholeNumberValueForADouble) {
    const NkDtDouble number(2.5);
    EXPECT_EQ((NkDtLong(2) * number).GetValue(), 5.0);
    EXPECT_EQ((number - NkDtShort(2)).GetValue(), 0.5);
    EXPECT_EQ((NkDtLong(NkDtWmNull) * number).GetValue(), 2.5);
    EXPECT_EQ((NkDtLong(7) * NkDtDouble(NkDtWmNull)).GetValue(), 7.0);
    EXPECT_EQ(describe(NkDtLong(NkDtWmMissing) * number), "0 missing");
    EXPECT_EQ(describe(NkDtLong(NkDtWmNull) * NkDtDouble(NkDtWmNull)), "0 missing");
    static_assert(std::is_same_v<decltype(NkDtLong() * number), NkDtDouble>);
    static_assert(std::is_same_v<decltype(number * NkDtShort()), NkDtDouble>);
}

// --- In place -------------------------------------------------------------------------------------

TEST(NkDtDoubleInPlace, AlwaysIsModified) {
    const std::vector<std::function<void(NkDtDouble&)>> nothingAdded = {
        [](NkDtDouble& d) { d += 0; },
        [](NkDtDouble& d) { d -= 0; },
        [](NkDtDouble& d) { d += 0.0; },
        [](NkDtDouble& d) { d -= 0.0; },
        [](NkDtDouble& d) { d += NkDtDouble(0.0); },
        [](NkDtDouble& d) { d -= NkDtDouble(0.0); },
        [](NkDtDouble& d) { d += NkDtDouble(NkDtWmNull); },
        [](NkDtDouble& d) { d += 0L; },
        [](NkDtDouble& d) { d -= 1e-300; }};
    for (const auto& change : nothingAdded) {
        NkDtDouble number(2.5);
        change(number);
        EXPECT_EQ(describe(number), "2.5 defined modified");
    }
    const std::vector<std::function<void(NkDtDouble&)>> oneAdded = {[](NkDtDouble& d) { d += 1; },
                                                                    [](NkDtDouble& d) { d -= -1.0; },
                                                                    [](NkDtDouble& d) { d += NkDtDouble(1); },
                                                                    [](NkDtDouble& d) { ++d; },
                                                                    [](NkDtDouble& d) { d++; },
                                                                    [](NkDtDouble& d) { d -= NkDtLong(-1); },
                                                                    [](NkDtDouble& d) { d += 1U; },
                                                                    [](NkDtDouble& d) { d += 1.0F; }};
    for (const auto& change : oneAdded) {
        NkDtDouble number(2.5);
        change(number);
        EXPECT_EQ(describe(number), "3.5 defined modified");
    }
    NkDtDouble number(2.5);
    --number;
    number--;
    EXPECT_EQ(describe(number), "0.5 defined modified");
    NkDtDouble huge(1e300);
    ++huge;
    EXPECT_EQ(describe(huge), "1E+300 defined modified");
}

TEST(NkDtDoubleInPlace, LeavesAMissingValueAsItIs) {
    NkDtDouble missing(NkDtWmMissing);
    missing += 5;
    missing -= 5.0;
    missing += NkDtDouble(5.0);
    missing -= NkDtDouble(NkDtWmNull);
    ++missing;
    missing++;
    --missing;
    missing--;
    EXPECT_EQ(describe(missing), "0 missing");
}

TEST(NkDtDoubleInPlace, LeavesAValueAsItIsBesideAMissingOneAndTwoUndefinedOnes) {
    NkDtDouble number(2.5);
    number += kMissing;
    number -= kMissing;
    EXPECT_EQ(describe(number), "2.5 defined");
    NkDtDouble null(NkDtWmNull);
    null += kNull;
    null -= kMissing;
    EXPECT_EQ(describe(null), "0 null");
    NkDtDouble always(NkDtWmDefined);
    always += kMissing;
    EXPECT_EQ(describe(always), "0 defined");
}

TEST(NkDtDoubleInPlace, MakesANullDefined) {
    const std::vector<std::function<void(NkDtDouble&)>> fiveAdded = {
        [](NkDtDouble& d) { d += 5; }, [](NkDtDouble& d) { d -= -5.0; },
        [](NkDtDouble& d) { d += NkDtDouble(5.0); }, [](NkDtDouble& d) { d -= NkDtLong(-5); }};
    for (const auto& change : fiveAdded) {
        NkDtDouble null(NkDtWmNull);
        change(null);
        EXPECT_EQ(describe(null), "5 defined modified");
        NkDtDouble nine = undefinedStoring(9.0, NkDtWmNull);
        change(nine);
        EXPECT_EQ(describe(nine), "14 defined modified");
    }
    NkDtDouble stepped(NkDtWmNull);
    --stepped;
    EXPECT_EQ(describe(stepped), "-1 defined modified");
}

TEST(NkDtDoubleInPlace, KeepsModeAndFormatAndGivesItself) {
    NkDtDouble number(NkDtWmNull);
    number.SetFormat(&kFormat);
    EXPECT_EQ(&(number += 5), &number);
    EXPECT_EQ(&(number -= NkDtDouble(1.0)), &number);
    EXPECT_EQ(&(number += 0.5), &number);
    EXPECT_EQ(describe(number), "4.5 defined modified");
    EXPECT_EQ(number.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(number.GetFormat(), &kFormat);
    static_assert(std::is_void_v<decltype(++number)> && std::is_void_v<decltype(number++)>);
    static_assert(std::is_void_v<decltype(--number)> && std::is_void_v<decltype(number--)>);
}

TEST(NkDtDoubleInPlace, TakesItselfForTheOperand) {
    NkDtDouble number(2.5);
    const NkDtDouble& same = number;
    number += same;
    EXPECT_EQ(describe(number), "5 defined modified");
    number -= same;
    EXPECT_EQ(describe(number), "0 defined modified");
    number = 2.5;
    number = same * same / same;
    EXPECT_EQ(describe(number), "2.5 defined modified");
    NkDtDouble null(NkDtWmNull);
    const NkDtDouble& sameNull = null;
    null += sameNull;
    EXPECT_EQ(describe(null), "0 null");
}

// --- Comparing ------------------------------------------------------------------------------------

TEST(NkDtDoubleComparison, IsThatOfDoublesWithoutTolerance) {
    const double numbers[] = {0.0,       -0.0,       0.1 + 0.2, 0.3, -1.5, 7.0, Limits::denorm_min(),
                              kInfinity, -kInfinity, kNaN};
    for (const double a : numbers) {
        for (const double b : numbers) {
            const NkDtDouble left(a);
            const NkDtDouble right(b);
            const std::string pair = std::to_string(a) + ", " + std::to_string(b);
            EXPECT_EQ(left == right, a == b) << pair;
            EXPECT_EQ(left != right, a != b) << pair;
            EXPECT_EQ(left < right, a < b) << pair;
            EXPECT_EQ(left > right, a > b) << pair;
            EXPECT_EQ(left <= right, a <= b) << pair;
            EXPECT_EQ(left >= right, a >= b) << pair;
            EXPECT_EQ(left == b, a == b) << pair;
            EXPECT_EQ(left != b, a != b) << pair;
            EXPECT_EQ(left < b, a < b) << pair;
            EXPECT_EQ(left > b, a > b) << pair;
            EXPECT_EQ(left <= b, a <= b) << pair;
            EXPECT_EQ(left >= b, a >= b) << pair;
            EXPECT_EQ(a == right, a == b) << pair;
            EXPECT_EQ(a != right, a != b) << pair;
            EXPECT_EQ(a < right, a < b) << pair;
            EXPECT_EQ(a > right, a > b) << pair;
            EXPECT_EQ(a <= right, a <= b) << pair;
            EXPECT_EQ(a >= right, a >= b) << pair;
        }
    }
    EXPECT_EQ(NkDtDouble(0.1) + NkDtDouble(0.2) == NkDtDouble(0.3), FALSE);
}

TEST(NkDtDoubleComparison, TakesWholeNumbersForTheNearestDouble) {
    const NkDtDouble number(7.0);
    EXPECT_TRUE(number == 7 && 7 == number && number == 7L && number == 7U && number != 8);
    EXPECT_TRUE(number < 8 && 8 > number && number >= 7 && 7 <= number && number > -1LL);
    EXPECT_TRUE(number == NkDtLong(7) && NkDtShort(7) == number && number < NkDtLong(8));
    EXPECT_TRUE(NkDtDouble(9007199254740993LL) == 9007199254740993LL);
    EXPECT_TRUE(NkDtDouble(2147483647.5) > std::numeric_limits<INT>::max());
}

TEST(NkDtDoubleComparison, TakesANullForItsStoredNumber) {
    EXPECT_TRUE(kNull == 0 && kNull == 0.0 && kNull == kNull && kNull == NkDtDouble(0.0) && kNull < 1);
    EXPECT_TRUE(kNine == 9 && kNine > kNull && NkDtDouble(9.0) == kNine);
    const NkDtDouble undefined = undefinedStoring(9.0, NkDtWmDefined);
    EXPECT_TRUE(undefined == 9.0);
}

TEST(NkDtDoubleComparison, RefusesAMissingOperandOnEitherSide) {
    static const NkDtDouble five(5.0);
    const std::function<void()> comparisons[] = {[] { static_cast<void>(kMissing == five); },
                                                 [] { static_cast<void>(five == kMissing); },
                                                 [] { static_cast<void>(kMissing != kMissing); },
                                                 [] { static_cast<void>(kMissing < kNull); },
                                                 [] { static_cast<void>(kNull > kMissing); },
                                                 [] { static_cast<void>(kMissing <= 5); },
                                                 [] { static_cast<void>(5 >= kMissing); },
                                                 [] { static_cast<void>(kMissing == 5.0); },
                                                 [] { static_cast<void>(5.0 != kMissing); },
                                                 [] { static_cast<void>(kMissing < 5L); },
                                                 [] { static_cast<void>(kMissing == kNaN); },
                                                 [] { static_cast<void>(kMissing < NkDtLong(5)); },
                                                 [] { static_cast<void>(five == NkDtLong(NkDtWmMissing)); }};
    for (const auto& comparison : comparisons)
        expectError(NkDtErrUndefiniert, comparison);
}

// --- Where errors come from -----------------------------------------------------------------------

TEST(NkDtDoubleOperators, NameTheOriginsOfTheirErrors) {
    static const NkDtDouble five(5.0);
    static const NkDtDouble zero(0.0);
    constexpr const char* module = ".\\dtdouble.cc";
    const std::string name = "NkDtDouble";
    expectOrigins({
        {"/", [] { static_cast<void>(five / zero); }, 12, module, name, "operator/(NkDtDouble&)"},
        {"/ int", [] { static_cast<void>(five / 0); }, 12, module, name, "operator/(INT)"},
        {"/ double", [] { static_cast<void>(five / 0.0); }, 12, module, name, "operator/(double)"},
        {"int /", [] { static_cast<void>(5 / zero); }, 12, module, name, "operator/(INT,NkDtDouble&)"},
        {"double /", [] { static_cast<void>(5.0 / zero); }, 12, module, name,
         "operator/(double,NkDtDouble&)"},
        {"==", [] { static_cast<void>(kMissing == five); }, 2, module, name, "operator==(NkDtDouble&)"},
        {"!=", [] { static_cast<void>(five != kMissing); }, 2, module, name, "operator!=(NkDtDouble&)"},
        {"<", [] { static_cast<void>(kMissing < five); }, 2, module, name, "operator<(NkDtDouble&)"},
        {">", [] { static_cast<void>(kMissing > five); }, 2, module, name, "operator>(NkDtDouble&)"},
        {"<=", [] { static_cast<void>(kMissing <= five); }, 2, module, name, "operator<=(NkDtDouble&)"},
        {">=", [] { static_cast<void>(kMissing >= five); }, 2, module, name, "operator>=(NkDtDouble&)"},
        {"== int", [] { static_cast<void>(kMissing == 1); }, 2, module, name, "operator==(INT)"},
        {"!= int", [] { static_cast<void>(kMissing != 1); }, 2, module, name, "operator!=(INT)"},
        {"< int", [] { static_cast<void>(kMissing < 1); }, 2, module, name, "operator<(INT)"},
        {"> int", [] { static_cast<void>(kMissing > 1); }, 2, module, name, "operator>(INT)"},
        {"<= int", [] { static_cast<void>(kMissing <= 1); }, 2, module, name, "operator<=(INT)"},
        {">= int", [] { static_cast<void>(kMissing >= 1); }, 2, module, name, "operator>=(INT)"},
        {"== double", [] { static_cast<void>(kMissing == 1.0); }, 2, module, name, "operator==(double)"},
        {"!= double", [] { static_cast<void>(kMissing != 1.0); }, 2, module, name, "operator!=(double)"},
        {"< double", [] { static_cast<void>(kMissing < 1.0); }, 2, module, name, "operator<(double)"},
        {"> double", [] { static_cast<void>(kMissing > 1.0); }, 2, module, name, "operator>(double)"},
        {"<= double", [] { static_cast<void>(kMissing <= 1.0); }, 2, module, name, "operator<=(double)"},
        {">= double", [] { static_cast<void>(kMissing >= 1.0); }, 2, module, name, "operator>=(double)"},
    });
}

}  // namespace
