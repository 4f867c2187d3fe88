// What is the double's own: how it is built, read, assigned and converted.

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtDouble.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <cerrno>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;
using Limits = std::numeric_limits<double>;

constexpr double kInfinity = Limits::infinity();
constexpr double kNaN = Limits::quiet_NaN();
const NkFormat kFormat(20, 6, FormatDezimalTrennerPunkt, FormatTausenderTrennerOhne, FormatVorzeichenVorn,
                       FormatVorzeichenNurMinus, 0, '0', 0, '0');

COleCurrency currency(LONGLONG count, COleCurrency::CurrencyStatus status = COleCurrency::valid) {
    COleCurrency made(CURRENCY{count});
    made.SetStatus(status);
    return made;
}

NkDtDouble read(LPCTSTR psz) {
    errno = 0;
    return NkDtDouble(psz);
}

/// A null value that stores this number, as an archive can leave it.
NkDtDouble nullStoring(double number) {
    NkDtDouble value(NkDtWmNull);
    load(value, written([&](CArchive& archive) { archive << DWORD{0} << number; }));
    value.SetModified(FALSE);
    return value;
}

// --- Texts ----------------------------------------------------------------------------------------

TEST(NkDtDoubleFromText, ReadsTheNumberThatTheTextBeginsWith) {
    struct Case {
        LPCTSTR text;
        double number;
    };
    constexpr Case cases[] = {{"", 0},       {"12", 12},   {" -12.5e1", -125}, {"+.5", 0.5},    {"1,5", 1},
                              {"12abc", 12}, {"abc", 0},   {"1e", 1},          {"0x10", 0},     {"inf", 0},
                              {"nan", 0},    {"0.1", 0.1}, {"1e-400", 0},      {"1e308", 1e308}};
    for (const Case& each : cases) {
        const NkDtDouble number = read(each.text);
        EXPECT_EQ(number.GetValue(), each.number) << each.text;
        EXPECT_EQ(stateOf(number), "defined") << each.text;
        EXPECT_EQ(NkDtDouble(NkDtString(each.text)).GetValue(), each.number) << each.text;
    }
}

TEST(NkDtDoubleFromText, RefusesANumberBeyondTheRange) {
    for (LPCTSTR text : {"1e400", "-1e400", "1e400abc", "1.8e308"}) {
        const ErrorPtr error = expectError(NkDtErrWertebereich, [&] { read(text); });
        EXPECT_EQ(error->GetErrorText(), cp1252("Wert außerhalb des Wertebereichs"));
        expectError(NkDtErrWertebereich, [&] { const NkDtDouble made{NkDtString(text)}; });
    }
}

TEST(NkDtDoubleFromText, CountsAnErrnoLeftOverWhenTheTextIsNotANumberAlone) {
    errno = ERANGE;
    expectError(NkDtErrWertebereich, [] { const NkDtDouble made("12abc"); });
    EXPECT_EQ(NkDtDouble("12").GetValue(), 12.0);
    errno = 0;
    EXPECT_EQ(NkDtDouble("12abc").GetValue(), 12.0);
}

TEST(NkDtDoubleFromText, RefusesNull) {
    expectError(NkDtErrInitialwert, [] { const NkDtDouble made(LPCTSTR{nullptr}); });
}

TEST(NkDtDoubleFromText, StopsAtTheFirstNulOfATextValue) {
    NkDtString text("12");
    text += '\0';
    text += '5';
    EXPECT_EQ(NkDtDouble(text).GetValue(), 12.0);
}

// --- Construction ---------------------------------------------------------------------------------

TEST(NkDtDouble, IsBuiltUndefinedInItsModeAndDefinedInModeTwo) {
    EXPECT_EQ(describe(NkDtDouble(NkDtWmMissing)), "0 missing");
    EXPECT_EQ(describe(NkDtDouble(NkDtWmNull)), "0 null");
    EXPECT_EQ(describe(NkDtDouble(NkDtWmDefined)), "0 defined");
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        EXPECT_EQ(describe(NkDtDouble()), describe(NkDtDouble(mode)));
        EXPECT_EQ(NkDtDouble().GetWorkingMode(), mode);
    }
}

TEST(NkDtDouble, IsBuiltDefinedInTheDefaultModeFromAPlainNumber) {
    const DefaultMode scope(NkDtWmNull);
    for (const NkDtDouble& made : {NkDtDouble(5), NkDtDouble(5.0), NkDtDouble(5.0F), NkDtDouble(5L),
                                   NkDtDouble(5U), NkDtDouble("5"), NkDtDouble(currency(50000))}) {
        EXPECT_EQ(describe(made), "5 defined");
        EXPECT_EQ(made.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(made.GetFormat(), nullptr);
    }
    EXPECT_EQ(NkDtDouble(std::numeric_limits<INT>::min()).GetValue(), -2147483648.0);
    EXPECT_EQ(NkDtDouble(9007199254740993LL).GetValue(), 9007199254740992.0);
    EXPECT_EQ(NkDtDouble(std::numeric_limits<ULONGLONG>::max()).GetValue(), 18446744073709551616.0);
}

TEST(NkDtDouble, HoldsEveryDouble) {
    EXPECT_TRUE(std::signbit(NkDtDouble(-0.0).GetValue()));
    EXPECT_EQ(NkDtDouble(kInfinity).GetValue(), kInfinity);
    EXPECT_TRUE(std::isnan(NkDtDouble(kNaN).GetValue()));
    EXPECT_EQ(NkDtDouble(Limits::denorm_min()).GetValue(), Limits::denorm_min());
}

template <class Source>
void expectStateTaken(const char* text, double number) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            Source source(mode);
            source = text;
            source.SetModified(modified);
            source.SetFormat(&kFormat);
            const DefaultMode elsewhere(NkDtWmDefined);
            const NkDtDouble made(source);
            EXPECT_EQ(made.GetValue(), number);
            EXPECT_EQ(stateOf(made), modified ? "defined modified" : "defined");
            EXPECT_EQ(made.GetWorkingMode(), mode);
            EXPECT_EQ(made.GetFormat(), nullptr);
        }
    }
    EXPECT_EQ(describe(NkDtDouble(Source(NkDtWmMissing))), "0 missing");
    EXPECT_EQ(describe(NkDtDouble(Source(NkDtWmNull))), "0 null");
}

TEST(NkDtDouble, TakesStateAndNumberOfTheValueThatItIsMadeFrom) {
    expectStateTaken<NkDtLong>("-7", -7);
    expectStateTaken<NkDtShort>("-7", -7);
    expectStateTaken<NkDtDecimal>("-7.25", -7.25);
    expectStateTaken<NkDtString>("-7.25", -7.25);
    expectStateTaken<NkDtDouble>("-7.25", -7.25);
    EXPECT_EQ(NkDtDouble(NkDtDecimal("0.1")).GetValue(), 0.1);
    EXPECT_EQ(NkDtDouble(NkDtDecimal("1234567890123456789012345678")).GetValue(),
              1234567890123456789012345678.0);
}

TEST(NkDtDouble, StoresZeroWhenItIsMadeFromAnUndefinedNumberThatStoresAnother) {
    NkDtLong storesNine(NkDtWmNull);
    load(storesNine, {0, 0, 0, 0, 9, 0, 0, 0});
    EXPECT_EQ(describe(NkDtDouble(storesNine)), "0 null modified");
}

TEST(NkDtDouble, CopiesTheStoredNumberOfAnUndefinedDouble) {
    EXPECT_EQ(describe(NkDtDouble(nullStoring(9.5))), "9.5 null");
}

// --- Reading --------------------------------------------------------------------------------------

TEST(NkDtDouble, ReadsANullAsItsStoredNumberAndRefusesToReadAMissingOne) {
    EXPECT_EQ(NkDtDouble(NkDtWmNull).GetValue(), 0.0);
    EXPECT_EQ(nullStoring(9.5).GetValue(), 9.5);
    const ErrorPtr error = expectError(NkDtErrUndefiniert, [] { NkDtDouble(NkDtWmMissing).GetValue(); });
    EXPECT_STREQ(error->GetErrorText(), "Undefinierter Wert");
}

TEST(NkDtDouble, IsConvertedToADoubleWithoutACheck) {
    EXPECT_EQ(static_cast<double>(NkDtDouble(NkDtWmMissing)), 0.0);
    EXPECT_EQ(static_cast<double>(nullStoring(9.5)), 9.5);
    const double number = NkDtDouble(2.5);
    EXPECT_EQ(number, 2.5);
}

// --- Assignment -----------------------------------------------------------------------------------

TEST(NkDtDouble, IsModifiedByAnotherNumberOnly) {
    struct Case {
        double before;
        double assigned;
        bool modified;
    };
    const Case cases[] = {{2.5, 2.5, false},
                          {2.5, 2.25, true},
                          {0.0, Limits::denorm_min(), true},
                          {kInfinity, kInfinity, false},
                          {kInfinity, -kInfinity, true},
                          {kNaN, kNaN, true},  // differs from itself
                          {0.0, kNaN, true}};
    for (const Case& each : cases) {
        NkDtDouble number(each.before);
        number = each.assigned;
        EXPECT_EQ(number.IsModified(), each.modified) << each.before << " = " << each.assigned;
        NkDtDouble other(each.before);
        other = NkDtDouble(each.assigned);
        EXPECT_EQ(other.IsModified(), each.modified) << each.before << " = " << each.assigned;
        if (!std::isnan(each.assigned)) {
            EXPECT_EQ(number.GetValue(), each.assigned);
            EXPECT_EQ(other.GetValue(), each.assigned);
        }
    }
}

TEST(NkDtDouble, TakesTheSignOfAZeroAndIsNotModifiedByIt) {
    NkDtDouble number(0.0);
    number = -0.0;
    EXPECT_EQ(describe(number), "-0 defined");
    number = 0;
    EXPECT_EQ(describe(number), "0 defined");
    number = NkDtDouble(-0.0);
    EXPECT_EQ(describe(number), "-0 defined");
    number.SetFromSQL(0.0);
    EXPECT_EQ(describe(number), "0 defined");
    CRecordset rs;
    const double field = -0.0;
    number.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(number), "-0 defined");
    NkDtDouble fresh;
    NkDtDouble minusZero(-0.0);
    load(fresh, stored(minusZero));
    EXPECT_EQ(describe(fresh), "-0 defined modified");
    NkDtDouble always(NkDtWmDefined);
    always = -0.0;
    always.Clear();
    EXPECT_EQ(describe(always), "0 defined");
}

TEST(NkDtDouble, BecomesDefinedByAPlainNumberAndKeepsModeAndFormat) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        NkDtDouble zero(mode);
        zero.SetFormat(&kFormat);
        zero = 0;
        EXPECT_EQ(describe(zero), "0 defined modified");
        EXPECT_EQ(zero.GetWorkingMode(), mode);
        EXPECT_EQ(zero.GetFormat(), &kFormat);
        NkDtDouble number(mode);
        number = 2.5;
        EXPECT_EQ(describe(number), "2.5 defined modified");
        NkDtDouble amount(mode);
        amount = currency(-25000);
        EXPECT_EQ(describe(amount), "-2.5 defined modified");
        NkDtDouble wide(mode);
        wide = 5000000000L;
        EXPECT_EQ(describe(wide), "5000000000 defined modified");
    }
}

TEST(NkDtDouble, TakesTheDefinednessOfAnotherValueExceptInModeTwo) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtDouble number(mode);
        number = 2.5;
        number.SetModified(FALSE);
        number = NkDtDouble(NkDtWmNull);
        EXPECT_EQ(describe(number), mode == NkDtWmDefined ? "0 defined modified"
                                    : mode == NkDtWmNull  ? "0 null modified"
                                                          : "0 missing modified");
        NkDtDouble taken(mode);
        taken = NkDtLong(7);
        EXPECT_EQ(textOf(taken), "7");
        EXPECT_EQ(taken.GetWorkingMode(), mode);
    }
}

TEST(NkDtDouble, IsClearedByACurrencyThatIsNotValid) {
    for (const auto status : {COleCurrency::invalid, COleCurrency::null}) {
        EXPECT_EQ(describe(NkDtDouble(currency(50000, status))), "0 missing");
        NkDtDouble number(2.5);
        number = currency(50000, status);
        EXPECT_EQ(describe(number), "0 missing modified");
        NkDtDouble always(NkDtWmDefined);
        always = currency(50000, status);
        EXPECT_EQ(describe(always), "0 defined");
    }
}

TEST(NkDtDouble, ClearsToAnUndefinedZero) {
    struct Case {
        double number;
        const char* inModeNull;
        const char* inModeTwo;
    };
    // A defined 0.0 becomes undefined, which raises the flag; in mode 2 nothing changes.
    const Case cases[] = {{0.0, "0 null modified", "0 defined"},
                          {2.5, "0 null modified", "0 defined modified"},
                          {kNaN, "0 null modified", "0 defined modified"}};
    for (const Case& each : cases) {
        for (const NkDtWorkingMode mode : {NkDtWmNull, NkDtWmDefined}) {
            NkDtDouble number(mode);
            number = each.number;
            number.SetModified(FALSE);
            number.Clear();
            EXPECT_EQ(describe(number), mode == NkDtWmNull ? each.inModeNull : each.inModeTwo);
        }
    }
    NkDtDouble null(NkDtWmNull);
    null.Clear();
    EXPECT_EQ(describe(null), "0 null");
    NkDtDouble stores = nullStoring(9.5);
    stores.Clear();
    EXPECT_EQ(describe(stores), "0 null modified");
}

// --- Currency -------------------------------------------------------------------------------------

TEST(NkDtDouble, IsACurrencyWithFourPlaces) {
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDouble(2.5)), currency(25000));
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDouble(-0.00005)), currency(-1));
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDouble(1.00005)), currency(10001));
    EXPECT_EQ(static_cast<COleCurrency>(NkDtDouble(NkDtWmMissing)), currency(0));
    for (const double number : {1e15, -1e15, kInfinity, kNaN})
        EXPECT_EQ(static_cast<COleCurrency>(NkDtDouble(number)).GetStatus(), COleCurrency::invalid) << number;
    EXPECT_EQ(NkDtDouble(currency(123456789)).GetValue(), 12345.6789);
    EXPECT_EQ(NkDtDouble(currency(std::numeric_limits<LONGLONG>::min())).GetValue(), -922337203685477.5808);
}

// --- User-interface text --------------------------------------------------------------------------

TEST(NkDtDouble, IsShownWithTwoPlacesAtMostAndPointsBetweenThousands) {
    struct Case {
        double number;
        const char* text;
    };
    constexpr Case cases[] = {{0.0, "0"},
                              {-0.0, "0"},
                              {5.0, "5"},
                              {1234.5, "1.234,5"},
                              {-1234567.89, "-1.234.567,89"},
                              {0.125, "0,13"},
                              {1.005, "1,01"},
                              {-0.001, "0,00"},
                              {1e20, "100.000.000.000.000.000.000"}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtDouble(each.number).ConvToOFL(), CString(each.text)) << each.number;
}

TEST(NkDtDouble, RefusesToShowWhatIsNoNumber) {
    for (const double number : {kNaN, kInfinity, -kInfinity})
        expectReplaced(NkFoFehlerWert, [&] { NkDtDouble(number).ConvToOFL(); });
}

TEST(NkDtDouble, ReadsWhatItShowsAndRefusesEverythingElse) {
    NkDtDouble number(7.0);
    for (LPCTSTR text : {"1234.56", "1,234", "5,", ",5", "1.23,4", "abc", " ", "1e5", "+5", "--5", "5 5"}) {
        expectReplaced(NkFoFehlerText, [&] { number.SetFromOFL(text); });
        EXPECT_EQ(describe(number), "7 defined") << text;
    }
    number.SetFromOFL(" -1.234.567,89 ");
    EXPECT_EQ(describe(number), "-1234567.89 defined modified");
    number.SetModified(FALSE);
    number.SetFromOFL("-1234567,89");
    EXPECT_EQ(describe(number), "-1234567.89 defined");
}

// --- Texts, SQL -----------------------------------------------------------------------------------

TEST(NkDtDouble, IsATextWithFifteenDigitsAndRoomFor316Characters) {
    EXPECT_EQ(describe(NkDtString(NkDtDouble(0.1))), "'0.1' 3/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(1.0 / 3))), "'0.333333333333333' 17/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(-1e20))), "'-1e+20' 6/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(-0.0))), "'-0' 2/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(kNaN))), "'nan' 3/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(-kInfinity))), "'-inf' 4/316 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDouble(NkDtWmMissing))), "'' 0/0 missing");
    EXPECT_EQ(describe(NkDtString(nullStoring(9.5))), "'' 0/0 null");
    NkDtDouble number(NkDtWmNull);
    number = 2.5;
    number.SetFormat(&kFormat);
    const NkDtString text(number);
    EXPECT_EQ(describe(text), "'2.5' 3/316 defined modified");
    EXPECT_EQ(text.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(text.GetFormat(), nullptr);
}

TEST(NkDtDouble, IsAnSqlLiteralWithFifteenDigits) {
    EXPECT_EQ(bytesOf(NkDtDouble(0.1 + 0.2).ConvToSQL()), "0.3");
    EXPECT_EQ(bytesOf(NkDtDouble(-1234.5).ConvToSQL()), "-1234.5");
    EXPECT_EQ(bytesOf(NkDtDouble(1e20).ConvToSQL()), "1e+20");
    EXPECT_EQ(bytesOf(NkDtDouble(NkDtWmNull).ConvToSQL()), "NULL");
    NkDtDouble number(NkDtWmNull);
    number = 2.5;
    EXPECT_EQ(stateOf(number.ConvToSQL()), "defined");
    EXPECT_EQ(number.ConvToSQL().GetWorkingMode(), NkDtGetDefaultWorkingMode());
}

TEST(NkDtDouble, IsWrittenToAStreamAsItsTextAndNothingWhenUndefined) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(3);
    stream << NkDtDouble(1.0 / 3) << '|' << NkDtDouble(NkDtWmMissing) << NkDtDouble(NkDtWmNull) << '|'
           << NkDtDouble(-1e20);
    EXPECT_EQ(stream.str(), "0.333333333333333||-1e+20");
}

// --- External text --------------------------------------------------------------------------------

TEST(NkDtDouble, HasAnExternalTextOfSixteenDigits) {
    struct Case {
        double number;
        const char* text;
    };
    const Case cases[] = {
        {0.1, "0.1"}, {1e20, "1E+20"},          {1.0 / 3, "0.3333333333333333"},           {0.0, "0"},
        {-0.0, "-0"}, {-1.5e-300, "-1.5E-300"}, {Limits::max(), "1.797693134862316E+308"}, {kInfinity, "INF"},
        {kNaN, "NAN"}};
    for (const Case& each : cases) {
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString text = NkDtDouble(each.number).ConvToExtern(defined, version);
        EXPECT_EQ(bytesOf(text), each.text);
        EXPECT_EQ(stateOf(text), "defined");
        EXPECT_EQ(defined, TRUE);
        EXPECT_EQ(version, 100);
    }
}

TEST(NkDtDouble, HasAnUndefinedExternalTextWhenItIsUndefined) {
    for (const NkDtDouble& value : {NkDtDouble(NkDtWmMissing), NkDtDouble(NkDtWmNull), nullStoring(9.5)}) {
        BOOL defined = TRUE;
        USHORT version = 0;
        const NkDtString text = value.ConvToExtern(defined, version);
        EXPECT_EQ(text.IsDefined(), FALSE);
        EXPECT_EQ(text.GetLength(), 0);
        EXPECT_EQ(defined, FALSE);
        EXPECT_EQ(version, 100);
    }
}

TEST(NkDtDouble, ReadsAnExternalTextAsAnyText) {
    errno = 0;
    NkDtDouble number;
    const NkDtString text("-1.5E+020 and more");
    number.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(describe(number), "-1.5E+20 defined modified");
    number.SetModified(FALSE);
    number.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(describe(number), "-1.5E+20 defined");
}

TEST(NkDtDouble, IsMarkedDefinedBeforeAnExternalTextBeyondTheRangeIsRefused) {
    const NkDtString large("1e400");
    NkDtDouble missing(NkDtWmMissing);
    expectReplaced(NkDtErrWertebereich, [&] { missing.SetFromExtern(&large, TRUE, 100); });
    EXPECT_EQ(describe(missing), "0 defined modified");
    NkDtDouble number(2.5);
    expectReplaced(NkDtErrWertebereich, [&] { number.SetFromExtern(&large, TRUE, 100); });
    EXPECT_EQ(describe(number), "2.5 defined");
}

TEST(NkDtDouble, ComesBackFromItsExternalTextWithFifteenDigitsAndMoreAsNearAsSixteenTell) {
    std::mt19937_64 random(20260405);
    std::uniform_int_distribution<LONGLONG> mantissa(-999'999'999'999'999, 999'999'999'999'999);
    std::uniform_int_distribution<int> exponent(-300, 290);
    const int rounds = nktest::isWatched() ? 500 : 20'000;
    for (int i = 0; i < rounds; ++i) {
        const std::string digits = std::to_string(mantissa(random)) + "e" + std::to_string(exponent(random));
        const NkDtDouble number = read(digits.c_str());
        BOOL defined = FALSE;
        USHORT version = 0;
        const NkDtString text = number.ConvToExtern(defined, version);
        NkDtDouble back;
        back.SetFromExtern(&text, defined, version);
        EXPECT_EQ(back.GetValue(), number.GetValue()) << digits;
        EXPECT_EQ(read(NkDtString(number)).GetValue(), number.GetValue()) << digits;
    }
}

// --- Recordset ------------------------------------------------------------------------------------

TEST(NkDtDouble, ExchangesTheFieldItselfWithARecordset) {
    CRecordset rs;
    for (const double field : {0.1 + 0.2, -0.0, Limits::max(), Limits::denorm_min(), kInfinity}) {
        NkDtDouble value(NkDtWmNull);
        value.SetFromRecordSet(rs, field);
        EXPECT_EQ(value.GetValue(), field);
        EXPECT_EQ(stateOf(value), "defined modified");
        double back = 7.0;
        value.ConvToRecordSet(rs, back);
        EXPECT_EQ(back, field);
        EXPECT_EQ(rs.IsFieldNull(&back), FALSE);
    }
}

// --- Archive --------------------------------------------------------------------------------------

TEST(NkDtDouble, ArchivesItsDefinednessAndItsEightBytes) {
    NkDtDouble number(-2.5);
    EXPECT_EQ(stored(number), (Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x04, 0xC0}));
    NkDtDouble null(NkDtWmNull);
    EXPECT_EQ(stored(null), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(NkDtDouble, ComesBackFromAnArchiveWithEveryBit) {
    for (const double number : {0.1 + 0.2, -0.0, Limits::max(), Limits::denorm_min(), -kInfinity}) {
        NkDtDouble written(number);
        NkDtDouble back(NkDtWmNull);
        load(back, stored(written));
        EXPECT_EQ(back.GetValue(), number);
        EXPECT_EQ(std::signbit(back.GetValue()), std::signbit(number));
        EXPECT_EQ(stateOf(back), "defined modified");
    }
    NkDtDouble same(2.5);
    load(same, stored(same));
    EXPECT_EQ(describe(same), "2.5 defined");
    NkDtDouble noNumber(kNaN);
    NkDtDouble back;
    load(back, stored(noNumber));
    EXPECT_TRUE(std::isnan(back.GetValue()));
}

TEST(NkDtDouble, KeepsTheNumberThatAnUndefinedOneWasArchivedWith) {
    NkDtDouble undefined = nullStoring(9.5);
    NkDtDouble back(NkDtWmNull);
    load(back, stored(undefined));
    EXPECT_EQ(describe(back), "9.5 null modified");
}

// --- Whole numbers from it ------------------------------------------------------------------------

TEST(NkDtLongFromDouble, IsTheIntegerPartOfADouble) {
    struct Case {
        double number;
        long whole;
    };
    constexpr Case cases[] = {{0.0, 0},
                              {-0.9, 0},
                              {2.9, 2},
                              {-2.9, -2},
                              {1e9, 1000000000},
                              {2147483647.0, 2147483647},
                              {-2147483648.0, -2147483647 - 1}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtLong(NkDtDouble(each.number)).GetValue(), each.whole) << each.number;
}

TEST(NkDtLongFromDouble, RefusesADoubleBeyondItsBoundsAndWhatIsNoNumber) {
    for (const double number :
         {2147483647.5, 2147483648.0, -2147483648.5, 1e300, kInfinity, -kInfinity, kNaN})
        expectError(NkDtErrWertebereich, [&] { const NkDtLong made{NkDtDouble(number)}; });
}

TEST(NkDtLongFromDouble, TakesTheStateOfADouble) {
    NkDtDouble number(NkDtWmNull);
    number = 2.5;
    number.SetFormat(&kFormat);
    const NkDtLong made(number);
    EXPECT_EQ(describe(made), "2 defined modified");
    EXPECT_EQ(made.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(made.GetFormat(), nullptr);
    EXPECT_EQ(describe(NkDtLong(NkDtDouble(NkDtWmMissing))), "0 missing");
    EXPECT_EQ(describe(NkDtLong(nullStoring(kNaN))), "0 null");
}

// --- Where errors come from -----------------------------------------------------------------------

TEST(NkDtDouble, NamesTheOriginsOfItsErrors) {
    static NkDtDouble number(5.0);
    static const NkDtDouble missing(NkDtWmMissing);
    static const NkDtString large("1e400");
    static const NkDtString undefined(NkDtWmNull);
    constexpr const char* module = ".\\dtdouble.cc";
    constexpr const char* record = ".\\Imp\\dtdoubli.cc";
    constexpr const char* parse = "ConvAsciiToDouble(LPCTSTR)";
    const std::string name = "NkDtDouble";
    expectOrigins({
        {"null text", [] { const NkDtDouble made(LPCTSTR{nullptr}); }, 5, module, name,
         "NkDtDouble(LPCTSTR)"},
        {"text", [] { const NkDtDouble made("1e400"); }, 8, record, "NkDtDouble_Imp", parse},
        {"text value", [] { const NkDtDouble made(large); }, 8, record, "NkDtDouble_Imp", parse},
        {"GetValue", [] { missing.GetValue(); }, 2, module, name, "GetValue()"},
        {"Assign", [] { number.Assign(NkDtLong(5)); }, 10, module, name, "Assign(NkDtBasis&)"},
        {"ConvToOFL", [] { NkDtDouble(kNaN).ConvToOFL(); }, 1, module, name, "ConvToOFL(NkFormat*)", FALSE,
         NkFoFehlerWert},
        {"SetFromOFL", [] { number.SetFromOFL("12x"); }, 1, module, name, "SetFromOFL(LPCTSTR,NkFormat*)",
         FALSE, NkFoFehlerText},
        {"version", [] { number.SetFromExtern(&large, TRUE, 99); }, 14, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"undefined text", [] { number.SetFromExtern(&undefined, TRUE, 100); }, 13, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"external text", [] { number.SetFromExtern(&large, TRUE, 100); }, 1, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)", FALSE, 8},
        {"to long", [] { const NkDtLong made{NkDtDouble(1e300)}; }, 8, ".\\Imp\\dtlongi.cc", "NkDtLong_Imp",
         "NkDtLong_Imp(double)"},
    });
    EXPECT_EQ(describe(number), "5 defined");
}

}  // namespace
