// The rules of the double that meet where few programs go: modes, flags and states behind failures, what is
// left over from earlier, and values that are their own operands.

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <cerrno>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalTesting.h"
#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using Limits = std::numeric_limits<double>;

constexpr double kInfinity = Limits::infinity();
constexpr double kNaN = Limits::quiet_NaN();

/// Undefined in that mode, storing this number, unmodified; an archive can leave a value so.
NkDtDouble undefinedStoring(double number, NkDtWorkingMode mode) {
    NkDtDouble value(mode);
    load(value, written([&](CArchive& archive) { archive << DWORD{0} << number; }));
    value.SetModified(FALSE);
    return value;
}

/// Defined in that mode, unmodified.
NkDtDouble holding(double number, NkDtWorkingMode mode) {
    NkDtDouble value(mode);
    value = number;
    value.SetModified(FALSE);
    return value;
}

// --- Texts ----------------------------------------------------------------------------------------

TEST(NkDtDoubleFromText, OfANumberTooSmallMakesTheNextIncompleteTextFail) {
    errno = 0;
    EXPECT_EQ(NkDtDouble("1e-400").GetValue(), 0.0);
    expectError(NkDtErrWertebereich, [] { const NkDtDouble made("12abc"); });
    EXPECT_EQ(NkDtDouble("12").GetValue(), 12.0);
    errno = 0;
    EXPECT_EQ(NkDtDouble("12abc").GetValue(), 12.0);
}

TEST(NkDtDoubleFromText, ReadsNoNumberIntoAnUndefinedValue) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        errno = ERANGE;  // nothing is read that could fail
        EXPECT_EQ(NkDtDouble(NkDtString(mode)).IsDefined(), FALSE);
        EXPECT_EQ(describe(NkDtDouble(undefinedWithText(mode, "5x"))),
                  mode == NkDtWmNull ? "0 null" : "0 missing");
        errno = 0;
    }
}

TEST(NkDtDoubleFromExtern, CountsAnErrnoLeftOverWhenTheTextIsNotANumberAlone) {
    const NkDtString incomplete("12abc");
    const NkDtString complete("12");
    NkDtDouble number(7.0);
    errno = ERANGE;
    expectReplaced(NkDtErrWertebereich, [&] { number.SetFromExtern(&incomplete, TRUE, 100); });
    EXPECT_EQ(describe(number), "7 defined");
    number.SetFromExtern(&complete, TRUE, 100);
    EXPECT_EQ(describe(number), "12 defined modified");
    errno = 0;
    number.SetFromExtern(&incomplete, TRUE, 100);
    EXPECT_EQ(describe(number), "12 defined modified");
}

TEST(NkDtDoubleFromExtern, ThatFailsMarksAnUndefinedValueInEveryMode) {
    const NkDtString large("1e400");
    errno = 0;
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtDouble undefined = undefinedStoring(9.5, mode);
        expectReplaced(NkDtErrWertebereich, [&] { undefined.SetFromExtern(&large, TRUE, 100); });
        EXPECT_EQ(describe(undefined), "9.5 defined modified");
        EXPECT_EQ(undefined.GetWorkingMode(), mode);
        NkDtDouble defined = holding(2.5, mode);
        expectReplaced(NkDtErrWertebereich, [&] { defined.SetFromExtern(&large, TRUE, 100); });
        EXPECT_EQ(describe(defined), "2.5 defined");
    }
    errno = 0;
}

TEST(NkDtDoubleToExtern, OfAValueMadeUndefinedInModeTwoIsUndefined) {
    const DefaultMode always(NkDtWmDefined);
    BOOL defined = TRUE;
    USHORT version = 0;
    const NkDtString text = undefinedStoring(9.5, NkDtWmDefined).ConvToExtern(defined, version);
    EXPECT_EQ(defined, FALSE);
    EXPECT_EQ(text.IsDefined(), FALSE);
    EXPECT_EQ(version, 100);
}

TEST(NkDtDoubleToSql, IsTheTextAloneWithoutTheValuesState) {
    NkDtDouble number = holding(2.5, NkDtWmNull);
    number.SetModified(TRUE);
    const NkDtString literal = number.ConvToSQL();
    EXPECT_EQ(describe(literal), "'2.5' 3/3 defined");
    EXPECT_EQ(literal.GetWorkingMode(), NkDtWmMissing);
}

TEST(NkDtDoubleFromOfl, TakesNoMoreThanTwoPlacesByTheDefaultFormat) {
    NkDtDouble number(7.0);
    expectReplaced(NkFoFehlerText, [&] { number.SetFromOFL("0,125"); });
    EXPECT_EQ(describe(number), "7 defined");
    number.SetFromOFL("0,12");
    EXPECT_EQ(describe(number), "0.12 defined modified");
}

TEST(NkDtDoubleFromOfl, ThatFailsLeavesAnUndefinedValueAsItIsInEveryMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtDouble undefined = undefinedStoring(9.5, mode);
        const std::string before = describe(undefined);
        expectReplaced(NkFoFehlerText, [&] { undefined.SetFromOFL("12x"); });
        EXPECT_EQ(describe(undefined), before);
    }
}

// --- Currency -------------------------------------------------------------------------------------

TEST(NkDtDoubleFromCurrency, IsModifiedByAnotherAmountOnly) {
    NkDtDouble number(2.5);
    number = currency(25000);
    EXPECT_EQ(describe(number), "2.5 defined");
    number = currency(25001);
    EXPECT_EQ(describe(number), "2.5001 defined modified");
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtDouble undefined = undefinedStoring(2.5, mode);
        undefined = currency(25000);
        EXPECT_EQ(describe(undefined), "2.5 defined modified");
    }
}

TEST(NkDtDoubleFromCurrency, WithoutAnAmountIsUndefinedButDefinedInModeTwo) {
    COleCurrency none = currency(25000);
    none.SetStatus(COleCurrency::null);
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        EXPECT_EQ(describe(NkDtDouble(none)), describe(NkDtDouble(mode)));
        EXPECT_EQ(NkDtDouble(none).GetWorkingMode(), mode);
    }
}

// --- States ---------------------------------------------------------------------------------------

TEST(NkDtDouble, MadeUndefinedInModeTwoIsNeitherMissingNorNullAndIsReadAsItIsStored) {
    const NkDtDouble undefined = undefinedStoring(9.5, NkDtWmDefined);
    EXPECT_EQ(undefined.IsDefined(), FALSE);
    EXPECT_EQ(undefined.IsMissing(), FALSE);
    EXPECT_EQ(undefined.IsNull(), FALSE);
    EXPECT_EQ(undefined.GetValue(), 9.5);
    EXPECT_TRUE(undefined == 9.5 && undefined > 9);
}

TEST(NkDtDouble, BecomesDefinedAgainByEverySetterInModeTwo) {
    const NkDtString text("9.5");
    const std::vector<std::function<void(NkDtDouble&)>> setters = {
        [](NkDtDouble& d) { d = 9.5; },
        [](NkDtDouble& d) { d = currency(95000); },
        [](NkDtDouble& d) { d.SetFromSQL(9.5); },
        [](NkDtDouble& d) { d.SetFromOFL("9,5"); },
        [&](NkDtDouble& d) { d.SetFromExtern(&text, TRUE, 100); },
        [](NkDtDouble& d) {
            CRecordset rs;
            const double field = 9.5;
            d.SetFromRecordSet(rs, field);
        }};
    for (const auto& set : setters) {
        NkDtDouble undefined = undefinedStoring(9.5, NkDtWmDefined);
        set(undefined);
        EXPECT_EQ(describe(undefined), "9.5 defined modified");
    }
    // Another value is not taken over in mode 2 but for its number.
    NkDtDouble undefined = undefinedStoring(9.5, NkDtWmDefined);
    undefined = NkDtDouble(7.0);
    EXPECT_EQ(describe(undefined), "7 undefined modified");
}

TEST(NkDtDouble, IsClearedByANullFieldAndStaysDefinedInModeTwo) {
    CRecordset rs;
    const double field = 9.5;
    rs.SetFieldNull(&field, TRUE);
    NkDtDouble zero = holding(0.0, NkDtWmDefined);
    zero.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(zero), "0 defined");
    NkDtDouble number = holding(2.5, NkDtWmDefined);
    number.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(number), "0 defined modified");
}

TEST(NkDtDouble, IsNotModifiedByItselfEvenIfItIsNoNumber) {
    for (const double number : {2.5, -0.0, kInfinity, kNaN}) {
        NkDtDouble value(number);
        const NkDtDouble& self = value;
        value = self;
        EXPECT_EQ(stateOf(value), "defined");
        value.Assign(self);
        EXPECT_EQ(stateOf(value), "defined");
        NkDtDouble& other = value;
        value = std::move(other);
        EXPECT_EQ(stateOf(value), "defined");
        EXPECT_EQ(std::signbit(value.GetValue()), std::signbit(number));
    }
}

// --- Operators ------------------------------------------------------------------------------------

TEST(NkDtDoubleOperators, ThatFailLeaveTheirOperandsUnchanged) {
    NkDtDouble five(5.0);
    NkDtDouble zero(0.0);
    NkDtDouble result = holding(2.5, NkDtWmNull);
    const std::vector<std::function<void()>> divisions = {
        [&] { result = five / zero; }, [&] { result = five / 0; },   [&] { result = five / -0.0; },
        [&] { result = 5 / zero; },    [&] { result = 5.0 / zero; }, [&] { zero = zero / zero; }};
    for (const auto& division : divisions) {
        const ErrorPtr error = expectError(NkDtErrDivisionDurchNull, division);
        EXPECT_TRUE(error->IsLogged());
        EXPECT_EQ(error->GetCauseNumber(), 0U);
    }
    EXPECT_EQ(describe(five), "5 defined");
    EXPECT_EQ(describe(zero), "0 defined");
    EXPECT_EQ(describe(result), "2.5 defined");
}

TEST(NkDtDoubleOperators, TellADivisorOfZeroOnlyWhereItIsDividedBy) {
    const NkDtDouble nullStoringZero(NkDtWmNull);
    EXPECT_EQ((NkDtDouble(5.0) / nullStoringZero).GetValue(), 5.0);
    EXPECT_EQ((5 / nullStoringZero).GetValue(), 5.0);
    EXPECT_EQ((5.0 / nullStoringZero).GetValue(), 5.0);
    // One that is no null divides, defined or not.
    const NkDtDouble undefined = undefinedStoring(0.0, NkDtWmDefined);
    expectError(NkDtErrDivisionDurchNull, [&] { static_cast<void>(NkDtDouble(5.0) / undefined); });
    expectError(NkDtErrDivisionDurchNull, [&] { static_cast<void>(5 / undefined); });
}

TEST(NkDtDoubleOperators, GiveResultsThatAreNotModifiedWhateverTheOperandsAre) {
    NkDtDouble a(6.5);
    NkDtDouble b(2.0);
    a.SetModified(TRUE);
    b.SetModified(TRUE);
    for (const NkDtDouble& result :
         {a + b, a - b, a * b, a / b, a + 1, 1 - a, a * 2.0, 2.0 / a, a + NkDtDouble(NkDtWmNull)})
        EXPECT_EQ(stateOf(result), "defined");
    EXPECT_EQ(stateOf(a * NkDtDouble(NkDtWmNull)), "defined modified");  // a copy of it
}

TEST(NkDtDoubleOperators, TakeAWholeNumberValueWithItsStateWhereTheDoubleIsNull) {
    NkDtLong whole(NkDtWmNull);
    whole = 7;
    const NkDtDouble null(NkDtWmNull);
    const DefaultMode scope(NkDtWmDefined);
    const NkDtDouble nullHere(NkDtWmNull);
    for (const NkDtDouble& result : {whole * null, nullHere * whole, whole / null}) {
        EXPECT_EQ(describe(result), "7 defined modified");
        EXPECT_EQ(result.GetWorkingMode(), NkDtWmNull);
    }
}

TEST(NkDtDoubleInPlace, TakesAWholeNumberValueForADouble) {
    NkDtDouble number(2.5);
    number += NkDtLong(NkDtWmMissing);
    EXPECT_EQ(describe(number), "2.5 defined");
    number -= NkDtShort(NkDtWmNull);  // carried out, with 0
    EXPECT_EQ(describe(number), "2.5 defined modified");
    NkDtDouble null(NkDtWmNull);
    null += NkDtLong(NkDtWmNull);
    EXPECT_EQ(describe(null), "0 null");
    null += NkDtShort(7);
    EXPECT_EQ(describe(null), "7 defined modified");
}

TEST(NkDtDoubleInPlace, MakesAValueDefinedThatWasMadeUndefinedInModeTwo) {
    const std::vector<std::function<void(NkDtDouble&)>> changes = {
        [](NkDtDouble& d) { d += 1; }, [](NkDtDouble& d) { d += 1.0; },
        [](NkDtDouble& d) { d += NkDtDouble(1.0); }, [](NkDtDouble& d) { ++d; }, [](NkDtDouble& d) { d++; }};
    for (const auto& change : changes) {
        NkDtDouble undefined = undefinedStoring(9.5, NkDtWmDefined);
        change(undefined);
        EXPECT_EQ(describe(undefined), "10.5 defined modified");
    }
}

TEST(NkDtDoubleInPlace, OverflowsToInfinityWithoutAnError) {
    NkDtDouble number(Limits::max());
    number += Limits::max();
    EXPECT_EQ(number.GetValue(), kInfinity);
    number -= kInfinity;
    EXPECT_TRUE(std::isnan(number.GetValue()));
    EXPECT_EQ(stateOf(number), "defined modified");
}

TEST(NkDtDoubleInPlace, RaisesTheFlagThroughTheVirtualFunction) {
    Derived<NkDtDouble> number(NkDtDouble(2.5));
    number += 0;
    number -= NkDtDouble(NkDtWmNull);
    ++number;
    EXPECT_EQ(number.calls, 3);
    number += NkDtDouble(NkDtWmMissing);
    EXPECT_EQ(number.calls, 3);
}

// --- Whole numbers and decimals -------------------------------------------------------------------

TEST(NkDtDoubleConversions, BetweenDecimalAndDoubleTakeStateAndTheNearestNumber) {
    NkDtDecimal amount(NkDtWmNull);
    amount = NkDtDecimal("1234567890.123456789012345678");
    const NkDtDouble number(amount);
    EXPECT_EQ(number.GetValue(), 1234567890.123456789012345678);
    EXPECT_EQ(stateOf(number), "defined modified");
    EXPECT_EQ(number.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(describe(NkDtDecimal(NkDtDouble(0.1))), "0.1 defined");
    // What no decimal can be is refused, but not asked of an undefined value.
    expectError(NkDtErrDezimal, [] { const NkDtDecimal made{NkDtDouble(kInfinity)}; });
    EXPECT_EQ(describe(NkDtDecimal(undefinedStoring(kInfinity, NkDtWmNull))), "0 null");
}

TEST(NkDtDoubleConversions, IntoWholeNumbersGoThroughTheDoubleOfADecimal) {
    EXPECT_EQ(NkDtLong(NkDtDecimal("2147483647.0000000001")).GetValue(), 2147483647);
    expectError(NkDtErrWertebereich, [] { const NkDtLong made{NkDtDecimal("2147483647.1")}; });
    expectError(NkDtErrWertebereich, [] { const NkDtLong made{NkDtDecimal("-2147483648.5")}; });
    EXPECT_EQ(NkDtLong(NkDtDecimal("-2147483648")).GetValue(), -2147483648LL);
    expectError(NkDtErrWertebereich, [] { const NkDtShort made{NkDtDecimal("32767.5")}; });
    expectError(NkDtErrWertebereich, [] { const NkDtShort made{NkDtDecimal("-32768.5")}; });
    EXPECT_EQ(NkDtShort(NkDtDecimal("-32768")).GetValue(), -32768);
    EXPECT_EQ(NkDtShort(NkDtDecimal("-0.9")).GetValue(), 0);
}

}  // namespace
