// Decimal numbers: construction, access, assignment, rounding, records.

#include <nkdec/Decimal96.h>
#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "DecimalTesting.h"
#include "TextTesting.h"

namespace {

using namespace valuetest;

// --- Construction -------------------------------------------------------------------------------

TEST(NkDtDecimalConstruction, ByModeIsUndefinedAndZeroButDefinedInModeTwo) {
    EXPECT_EQ(describe(NkDtDecimal()), "0 missing");
    EXPECT_EQ(describe(NkDtDecimal(NkDtWmMissing)), "0 missing");
    EXPECT_EQ(describe(NkDtDecimal(NkDtWmNull)), "0 null");
    EXPECT_EQ(describe(NkDtDecimal(NkDtWmDefined)), "0 defined");
    const DefaultMode mode(NkDtWmNull);
    EXPECT_EQ(describe(NkDtDecimal()), "0 null");
}

TEST(NkDtDecimalConstruction, FromPlainNumbersIsExactAndDefined) {
    EXPECT_EQ(describe(NkDtDecimal(5)), "5 defined");
    EXPECT_EQ(describe(NkDtDecimal(std::numeric_limits<INT>::min())), "-2147483648 defined");
    EXPECT_EQ(describe(NkDtDecimal(9223372036854775807LL)), "9223372036854775807 defined");
    EXPECT_EQ(describe(NkDtDecimal(18446744073709551615ULL)), "18446744073709551615 defined");
    EXPECT_EQ(describe(NkDtDecimal(0.1)), "0.1 defined");
    EXPECT_EQ(describe(NkDtDecimal(0.5F)), "0.5 defined");
    EXPECT_EQ(describe(NkDtDecimal(-1.005)), "-1.005 defined");
}

TEST(NkDtDecimalConstruction, FromADoubleBeyondTheRangeOrNotFiniteIsRefused) {
    for (const double number :
         {1e29, -1e29, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        const ErrorPtr error = expectError(NkDtErrDezimal, [&] { const NkDtDecimal value(number); });
        EXPECT_STREQ(error->GetSourceFile(), "RWDecimal");
        EXPECT_STREQ(error->GetFunctionText(), "NkDtDecimalOverflowHandler(RWDecimal96OverflowErr&)");
    }
}

TEST(NkDtDecimalConstruction, FromTextGroupsWithCommasAndBlanks) {
    EXPECT_EQ(describe(NkDtDecimal("1,234,567.89")), "1234567.89 defined");
    EXPECT_EQ(describe(NkDtDecimal("1 234.5")), "1234.5 defined");
    EXPECT_EQ(describe(NkDtDecimal("-0.05")), "-0.05 defined");
    EXPECT_EQ(describe(NkDtDecimal("+7")), "7 defined");
    EXPECT_EQ(describe(NkDtDecimal("")), "0 defined");
    EXPECT_EQ(NkDtDecimal("1.50").GetPrecision(), 2);
}

TEST(NkDtDecimalConstruction, FromOtherTextIsRefused) {
    for (const char* text : {"1.2.3", "12a", " ", "-", ".", "1-2", "--1", "1e5"}) {
        SCOPED_TRACE(text);
        expectError(NkDtErrFormatUnzulaessig, [&] { const NkDtDecimal value(text); });
    }
    for (const char* text : {"123456789012345678901234567890123456789", "12345678901234567890123456789",
                             "1,234,567,890,123,456,789,012,345"}) {
        SCOPED_TRACE(text);
        expectError(NkDtErrEingabeZuLang, [&] { const NkDtDecimal value(text); });
    }
    const LPCTSTR nothing = nullptr;
    expectError(NkDtErrInitialwert, [&] { const NkDtDecimal value(nothing); });
}

TEST(NkDtDecimalConstruction, FromOtherValuesTakesTheirStateAndTheirNumber) {
    NkDtLong number(-7);
    number.SetModified(TRUE);
    EXPECT_EQ(describe(NkDtDecimal(number)), "-7 defined modified");
    EXPECT_EQ(describe(NkDtDecimal(NkDtShort(NkDtWmNull))), "0 null");
    EXPECT_EQ(describe(NkDtDecimal(NkDtDouble(2.5))), "2.5 defined");
    EXPECT_EQ(describe(NkDtDecimal(NkDtDouble(NkDtWmMissing))), "0 missing");
    EXPECT_EQ(describe(NkDtDecimal(NkDtString("1,000.5"))), "1000.5 defined");
    EXPECT_EQ(describe(NkDtDecimal(NkDtString(NkDtWmNull))), "0 null");
    expectError(NkDtErrFormatUnzulaessig, [] { const NkDtDecimal value(NkDtString("x")); });
}

TEST(NkDtDecimalConstruction, FromAnUndefinedTextIsZeroWhateverTheTextStores) {
    for (const char* const stored : {"5", "x"}) {
        EXPECT_EQ(describe(NkDtDecimal(undefinedWithText(NkDtWmMissing, stored))), "0 missing");
        EXPECT_EQ(describe(NkDtDecimal(undefinedWithText(NkDtWmNull, stored))), "0 null");
    }
}

TEST(NkDtDecimalConstruction, FromACurrencyHasFourPlacesAndIsDefinedOnlyIfItIsValid) {
    const NkDtDecimal value(currency(12'3456));
    EXPECT_EQ(describe(value), "12.3456 defined");
    EXPECT_EQ(NkDtDecimal(currency(12'0000)).GetPrecision(), 4);
    COleCurrency none = currency(5);
    none.SetStatus(COleCurrency::null);
    EXPECT_EQ(describe(NkDtDecimal(none)), "0 missing");
    none.SetStatus(COleCurrency::invalid);
    EXPECT_EQ(describe(NkDtDecimal(none)), "0 missing");
}

TEST(NkDtDecimalConstruction, ACopyHasStateModeAndPlaces) {
    NkDtDecimal source("1.50");
    source.SetWorkingMode(NkDtWmNull);
    source.SetModified(TRUE);
    const NkDtDecimal copy(source);
    EXPECT_EQ(describe(copy), "1.5 defined modified");
    EXPECT_EQ(copy.GetPrecision(), 2);
    EXPECT_EQ(copy.GetWorkingMode(), NkDtWmNull);
}

// --- Access ---------------------------------------------------------------------------------------

TEST(NkDtDecimalAccess, RefusesAMissingValueWhereItIsStated) {
    const NkDtDecimal missing(NkDtWmMissing);
    expectOrigins({{"GetValue", [&] { static_cast<void>(missing.GetValue()); }, NkDtErrUndefiniert,
                    ".\\Dtdecfkt.cc", "NkDtDecimal", "GetValue()"},
                   {"GetPrecision", [&] { static_cast<void>(missing.GetPrecision()); }, NkDtErrUndefiniert,
                    ".\\Dtdecfkt.cc", "NkDtDecimal", "GetPrecision()"}});
    EXPECT_EQ(static_cast<double>(missing), 0.0);
    EXPECT_EQ(NkDtDecimal(NkDtWmNull).GetValue(), 0.0);
    EXPECT_EQ(NkDtDecimal(NkDtWmNull).GetPrecision(), 0);
    EXPECT_TRUE(missing.IsDecimal0());
    EXPECT_TRUE(NkDtDecimal("0.00").IsDecimal0());
    EXPECT_FALSE(NkDtDecimal("0.01").IsDecimal0());
}

TEST(NkDtDecimalAccess, WritesThePlainTextWithoutSuperfluousPlaces) {
    char buffer[33];
    EXPECT_STREQ(NkDtDecimal("12.500").DecimalToAscii(buffer), "12.5");
    EXPECT_STREQ(NkDtDecimal("3.00").DecimalToAscii(buffer), "3");
    EXPECT_STREQ(NkDtDecimal("-0.050").DecimalToAscii(buffer), "-0.05");
    EXPECT_STREQ(NkDtDecimal(100).DecimalToAscii(buffer), "100");
    EXPECT_STREQ(NkDtDecimal("0.00").DecimalToAscii(buffer), "0");
    expectError(NkDtErrInitialwert, [] { NkDtDecimal(1).DecimalToAscii(nullptr); });
}

TEST(NkDtDecimalAccess, BecomesACurrencyWithinItsRange) {
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDecimal("922337203685477.5807")).m_cur.int64,
              std::numeric_limits<LONGLONG>::max());
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDecimal("-922337203685477.5808")).m_cur.int64,
              std::numeric_limits<LONGLONG>::min());
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDecimal("1.00005")).m_cur.int64, 10001);
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDecimal("-1.5")).m_cur.int64, -15000);
    for (const char* text : {"922337203685477.5808", "-922337203685477.5809"}) {
        expectError(NkDtErrWertebereich,
                    [&] { static_cast<void>(static_cast<COleCurrency>(NkDtDecimal(text))); });
    }
}

// --- Assignment -----------------------------------------------------------------------------------

TEST(NkDtDecimalAssignment, OfAValueCopiesADifferentNumberOnly) {
    NkDtDecimal value("1.5");
    value = NkDtDecimal("1.50");
    EXPECT_EQ(describe(value), "1.5 defined");
    EXPECT_EQ(value.GetPrecision(), 1);  // an equal number keeps its places
    const NkDtDecimal other("2.25");
    value = other;
    EXPECT_EQ(describe(value), "2.25 defined modified");
    value.SetModified(FALSE);
    value = static_cast<const NkDtDecimal&>(value);
    EXPECT_EQ(describe(value), "2.25 defined");
    const NkDtDecimal missing(NkDtWmMissing);
    value = missing;
    EXPECT_EQ(describe(value), "0 missing modified");
}

TEST(NkDtDecimalAssignment, OfAWholeNumberComparesWithTheIntegerPart) {
    NkDtDecimal value("5.7");
    value = 5;
    EXPECT_EQ(describe(value), "5 defined");
    EXPECT_EQ(value.GetPrecision(), 0);
    value = 6;
    EXPECT_EQ(describe(value), "6 defined modified");
    NkDtDecimal negative("-5.7");
    negative = -5;
    EXPECT_EQ(describe(negative), "-5 defined");
    NkDtDecimal large("123456789012.5");
    large = 5;
    EXPECT_EQ(describe(large), "5 defined modified");  // outside the whole numbers: different from each
    NkDtDecimal null(NkDtWmNull);
    null = 0;
    EXPECT_EQ(describe(null), "0 defined modified");
}

TEST(NkDtDecimalAssignment, OfADoubleReplacesTheNumber) {
    NkDtDecimal value("1.50");
    value = 1.5;
    EXPECT_EQ(describe(value), "1.5 defined");
    EXPECT_EQ(value.GetPrecision(), 1);
    value = 1.25;
    EXPECT_EQ(describe(value), "1.25 defined modified");
    value.SetModified(FALSE);
    expectError(NkDtErrDezimal, [&] { value = 1e30; });
    EXPECT_EQ(describe(value), "1.25 defined");
}

TEST(NkDtDecimalAssignment, OfACurrencyTakesItOrClears) {
    NkDtDecimal value("1.5");
    value = currency(15000);
    EXPECT_EQ(describe(value), "1.5 defined");
    EXPECT_EQ(value.GetPrecision(), 4);
    value = currency(-1);
    EXPECT_EQ(describe(value), "-0.0001 defined modified");
    COleCurrency none;
    none.SetStatus(COleCurrency::null);
    value = none;
    EXPECT_EQ(describe(value), "0 missing modified");
}

// --- Rounding -------------------------------------------------------------------------------------

std::string rounded(const char* number, SHORT power, int way) {
    NkDtDecimal value(number);
    value.Round(power, static_cast<NkDtDecimal::Rundungsart>(way));
    return describe(value);
}

TEST(NkDtDecimalRound, MovesTheNumberAsTheWaySays) {
    EXPECT_EQ(rounded("1.231", -2, 1), "1.24 defined modified");
    EXPECT_EQ(rounded("-1.239", -2, 1), "-1.23 defined modified");
    EXPECT_EQ(rounded("1.239", -2, 2), "1.23 defined modified");
    EXPECT_EQ(rounded("-1.231", -2, 2), "-1.24 defined modified");
    EXPECT_EQ(rounded("1.231", -2, 3), "1.24 defined modified");
    EXPECT_EQ(rounded("-1.231", -2, 3), "-1.24 defined modified");
    EXPECT_EQ(rounded("1.239", -2, 4), "1.23 defined modified");
    EXPECT_EQ(rounded("-1.239", -2, 4), "-1.23 defined modified");
    EXPECT_EQ(rounded("2.345", -2, 0), "2.35 defined modified");
    EXPECT_EQ(rounded("-2.345", -2, 0), "-2.35 defined modified");
    EXPECT_EQ(rounded("2.345", -2, 99), "2.35 defined modified");
    EXPECT_EQ(rounded("1250", 2, 0), "1300 defined modified");
    EXPECT_EQ(rounded("0.00", -1, 1), "0 defined modified");
}

TEST(NkDtDecimalRound, LeavesWhatHasNoMorePlacesAndWhatIsUndefined) {
    EXPECT_EQ(rounded("1.23", -2, 0), "1.23 defined");
    EXPECT_EQ(rounded("1.23", -3, 5), "1.23 defined");
    NkDtDecimal null(NkDtWmNull);
    EXPECT_EQ(&null.Round(0, NkDtDecimal::RundenVonNull), &null);
    EXPECT_EQ(describe(null), "0 null");
}

TEST(NkDtDecimalRound, ToStepsOf005IgnoresThePower) {
    for (const SHORT power : {SHORT{0}, SHORT{-1}}) {
        EXPECT_EQ(rounded("1.27", power, 5), "1.25 defined modified");
        EXPECT_EQ(rounded("1.25", power, 5), "1.2 defined modified");
        EXPECT_EQ(rounded("1.23", power, 5), "1.2 defined modified");
        EXPECT_EQ(rounded("-1.23", power, 5), "-1.25 defined modified");
        EXPECT_EQ(rounded("-1.27", power, 5), "-1.3 defined modified");
    }
    EXPECT_EQ(rounded("-1.2", 0, 5), "-1.25 defined modified");
}

TEST(NkDtDecimalTruncate, CutsUndefinedNumbersTooAndMarksThemUnlessThePlacesAreThose) {
    NkDtDecimal value("-1.239");
    EXPECT_EQ(describe(value.Truncate(2)), "-1.23 defined modified");
    value.SetModified(FALSE);
    EXPECT_EQ(describe(value.Truncate(2)), "-1.23 defined");
    EXPECT_EQ(describe(value.Truncate(3)), "-1.23 defined modified");
    EXPECT_EQ(value.GetPrecision(), 2);
    NkDtDecimal missing(NkDtWmMissing);
    EXPECT_EQ(describe(missing.Truncate(0)), "0 missing");
    EXPECT_EQ(describe(missing.Truncate(1)), "0 missing modified");
}

// --- Records --------------------------------------------------------------------------------------

TEST(NkDtDecimalRecord, IsTakenWithItsPlacesAndMarksADifferentNumber) {
    NkDtDecimal value("1.5");
    value.SetFromBTR(DEC{0, 2, 150, 0, 0}, TRUE);
    EXPECT_EQ(describe(value), "1.5 defined");
    EXPECT_EQ(value.GetPrecision(), 2);
    value.SetFromBTR(DEC{1, 1, 25, 0, 0}, 5);
    EXPECT_EQ(describe(value), "-2.5 defined modified");
    value.SetFromBTR(DEC{0, 0, 9, 0, 0}, FALSE);
    EXPECT_EQ(describe(value), "0 missing modified");
    NkDtDecimal null(NkDtWmNull);
    null.SetFromBTR(DEC{}, TRUE);
    EXPECT_EQ(describe(null), "0 defined modified");
}

TEST(NkDtDecimalRecord, IsWrittenWhateverTheDefinedness) {
    BOOL defined = FALSE;
    const DEC record = NkDtDecimal("-12.34").ConvToBTR(defined);
    EXPECT_TRUE(defined);
    EXPECT_EQ(record.sign, 1);
    EXPECT_EQ(record.scale, 2);
    EXPECT_EQ(record.low, 1234U);
    EXPECT_EQ(record.high, 0U);
    const DEC empty = NkDtDecimal(NkDtWmNull).ConvToBTR(defined);
    EXPECT_FALSE(defined);
    EXPECT_EQ(empty.low, 0U);
    EXPECT_TRUE(NkDtDecimal("-12.340").CompareDec(record));
    EXPECT_FALSE(NkDtDecimal("12.34").CompareDec(record));
}

}  // namespace
