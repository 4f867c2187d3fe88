// What is the long integer's own; states and numbers are held against a generated table beside this.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <limits>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

constexpr INT kMax = std::numeric_limits<INT>::max();
constexpr INT kMin = std::numeric_limits<INT>::min();
const NkFormat kFormat(20, 0, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt, FormatVorzeichenVorn,
                       FormatVorzeichenNurMinus, 0, '0', 0, '0');

// --- Texts ----------------------------------------------------------------------------------------

TEST(NkDtLongFromText, ReadsBlanksASignAndDigits) {
    struct Case {
        LPCTSTR text;
        INT number;
    };
    constexpr Case cases[] = {{"", 0},
                              {"0", 0},
                              {"12", 12},
                              {"-12", -12},
                              {"+12", 12},
                              {"  12", 12},
                              {"\t\n\v\f\r12", 12},
                              {" -0012", -12},
                              {"-0", 0},
                              {"2147483647", kMax},
                              {"-2147483648", kMin},
                              {"00000000000000000000000000000012", 12}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtLong(each.text).GetValue(), each.number) << each.text;
}

TEST(NkDtLongFromText, IgnoresWhatFollowsASeparator) {
    struct Case {
        LPCTSTR text;
        INT number;
    };
    constexpr Case cases[] = {{"12,9", 12},
                              {"12.9", 12},
                              {"12,", 12},
                              {",5", 0},
                              {".5", 0},
                              {"12,x", 12},
                              {"12,9.5", 12},
                              {"12,9,5", 12},
                              {",", 0},
                              {"-12,9", -12},
                              {" 7,5", 7},
                              {"-2147483648,9", kMin},
                              {"0000000000012,5", 0},  // only 11 bytes count
                              {"2147483647,9", kMax},
                              {"00000000012,5", 12}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtLong(each.text).GetValue(), each.number) << each.text;
}

TEST(NkDtLongFromText, RefusesCharactersLeftOver) {
    for (LPCTSTR text : {"12x", "x", "12 ", " ", "-", "+", "--1", "1-", "0x10", "1e3", "12a,5", "1.234,5",
                         "1 2,5", "-,5", " ,5", "12 ,5"}) {
        const ErrorPtr error = expectError(NkDtErrInitialwert, [&] { const NkDtLong number(text); });
        EXPECT_EQ(error->GetErrorText(), cp1252("Ungültiger Initialwert")) << text;
    }
}

TEST(NkDtLongFromText, RefusesNumbersOutsideOfTheRangeBeforeCharactersLeftOver) {
    for (LPCTSTR text :
         {"2147483648", "-2147483649", "99999999999", "-99999999999", "2147483648x", "99999999999x",
          "12345678901234,5", "18446744073709551616", "99999999999999999999999999999999999999999"}) {
        expectError(NkDtErrWertebereich, [&] { const NkDtLong number(text); });
    }
}

TEST(NkDtLongFromText, RefusesNull) {
    expectError(NkDtErrInitialwert, [] { const NkDtLong number(LPCTSTR{nullptr}); });
}

TEST(NkDtLongFromText, StopsAtTheFirstNulOfATextValue) {
    NkDtString text("12");
    text += '\0';
    text += 'x';
    EXPECT_EQ(NkDtLong(text).GetValue(), 12);
}

// --- Values ---------------------------------------------------------------------------------------

TEST(NkDtLong, TakesTheStateOfTheValueThatItIsMadeFrom) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            NkDtShort number(mode);
            number = -7;
            number.SetModified(modified);
            number.SetFormat(&kFormat);
            NkDtString text(mode);
            text = "-7";
            text.SetModified(modified);
            text.SetFormat(&kFormat);
            const DefaultMode elsewhere(NkDtWmDefined);
            for (const NkDtLong& made : {NkDtLong(number), NkDtLong(text)}) {
                EXPECT_EQ(made.GetValue(), -7);
                EXPECT_EQ(stateOf(made), modified ? "defined modified" : "defined");
                EXPECT_EQ(made.GetWorkingMode(), mode);
                EXPECT_EQ(made.GetFormat(), nullptr);
            }
        }
    }
}

TEST(NkDtLong, StoresZeroWhenItIsMadeFromAnUndefinedValue) {
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        const std::string state = mode == NkDtWmNull ? "0 null" : "0 missing";
        EXPECT_EQ(describe(NkDtLong(mode)), state);
        EXPECT_EQ(describe(NkDtLong(NkDtShort(mode))), state);
        EXPECT_EQ(describe(NkDtLong(NkDtString(mode))), state);
    }
    NkDtShort storesNine(NkDtWmNull);
    load(storesNine, {0, 0, 0, 0, 9, 0});
    EXPECT_EQ(describe(NkDtLong(storesNine)), "0 null modified");
}

TEST(NkDtLong, ReadsANullAsItsStoredValueAndRefusesToReadAMissingOne) {
    EXPECT_EQ(NkDtLong(NkDtWmNull).GetValue(), 0);
    EXPECT_EQ(static_cast<long>(NkDtLong(NkDtWmNull)), 0);
    NkDtLong loaded(NkDtWmNull);
    load(loaded, {0, 0, 0, 0, 9, 0, 0, 0});
    EXPECT_EQ(loaded.GetValue(), 9);
    expectError(NkDtErrUndefiniert, [] { NkDtLong(NkDtWmMissing).GetValue(); });
    expectError(NkDtErrUndefiniert, [] { static_cast<void>(static_cast<long>(NkDtLong(NkDtWmMissing))); });
}

TEST(NkDtLong, InModeTwoMadeUndefinedByAFailedSumIsNeitherMissingNorNull) {
    NkDtLong number(NkDtWmDefined);
    number = 5;
    number += NkDtLong(NkDtWmMissing);
    EXPECT_EQ(number.IsDefined(), FALSE);
    EXPECT_EQ(number.IsMissing(), FALSE);
    EXPECT_EQ(number.IsNull(), FALSE);
    EXPECT_EQ(number.GetValue(), 0);
}

// --- Arithmetic -------------------------------------------------------------------------------------

TEST(NkDtLong, ComputesUpToItsBoundsAndNotBeyond) {
    EXPECT_EQ((NkDtLong(kMax) + 0).GetValue(), kMax);
    EXPECT_EQ((NkDtLong(kMin) - 0).GetValue(), kMin);
    EXPECT_EQ((NkDtLong(kMin) + kMax).GetValue(), -1);
    EXPECT_EQ((NkDtLong(46340) * 46340).GetValue(), 2147395600);
    EXPECT_EQ((NkDtLong(kMin) / 1).GetValue(), kMin);
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtLong(kMax) + 1); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtLong(kMin) - 1); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtLong(46341) * 46341); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtLong(kMin) * kMin); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtLong(kMin) / -1); });
}

TEST(NkDtLong, DividesTowardsZeroAndNotByZero) {
    EXPECT_EQ((NkDtLong(7) / 2).GetValue(), 3);
    EXPECT_EQ((NkDtLong(-7) / 2).GetValue(), -3);
    EXPECT_EQ((NkDtLong(7) / -2).GetValue(), -3);
    const ErrorPtr error = expectError(NkDtErrDivisionDurchNull, [] { static_cast<void>(NkDtLong(7) / 0); });
    EXPECT_STREQ(error->GetErrorText(), "Division durch 0");
}

TEST(NkDtLong, TakesANullForTheNeutralOperand) {
    const NkDtLong null(NkDtWmNull);
    EXPECT_EQ((null * 5).GetValue(), 5);
    EXPECT_EQ((null + 5).GetValue(), 5);
    EXPECT_EQ((5 / null).GetValue(), 5);
    EXPECT_EQ((null / 5).GetValue(), 0);
    EXPECT_EQ((5 - null).GetValue(), 5);
}

TEST(NkDtLong, GivesItsResultsTheDefaultModeAndNoFormat) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        NkDtLong a(NkDtWmNull);
        a = 6;
        a.SetFormat(&kFormat);
        const NkDtLong missing(NkDtWmMissing);
        const DefaultMode scope(mode);
        for (const NkDtLong& result : {a + a, a - 1, 2 * a, a / 2}) {
            EXPECT_EQ(stateOf(result), "defined");
            EXPECT_EQ(result.GetWorkingMode(), mode);
            EXPECT_EQ(result.GetFormat(), nullptr);
        }
        for (const NkDtLong& result : {a + missing, missing * 2, 2 / missing}) {
            EXPECT_EQ(describe(result), describe(NkDtLong(mode)));
            EXPECT_EQ(result.GetWorkingMode(), mode);
        }
    }
}

TEST(NkDtLong, CopiesAnOperandWithoutItsFormatWhereTheOtherIsNeutral) {
    NkDtLong a(NkDtWmNull);
    a = 6;
    a.SetFormat(&kFormat);
    const NkDtLong null(NkDtWmNull);
    for (const NkDtLong& result : {a * null, null * a, a / null}) {
        EXPECT_EQ(describe(result), "6 defined modified");
        EXPECT_EQ(result.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(result.GetFormat(), nullptr);
    }
}

TEST(NkDtLong, KeepsModeAndFormatWhenItIsComputedInPlace) {
    NkDtLong number(NkDtWmNull);
    number.SetFormat(&kFormat);
    number += 5;
    number -= NkDtLong(2);
    ++number;
    number--;
    EXPECT_EQ(describe(number), "3 defined modified");
    EXPECT_EQ(number.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(number.GetFormat(), &kFormat);
}

TEST(NkDtLong, IsModifiedInPlaceUnlessZeroIsAdded) {
    NkDtLong number(5);
    number += 0;
    number -= NkDtLong(0);
    EXPECT_EQ(describe(number), "5 defined");
    for (const auto& change : {+[](NkDtLong& n) { n += 1; }, +[](NkDtLong& n) { n -= NkDtLong(-1); },
                               +[](NkDtLong& n) { ++n; }, +[](NkDtLong& n) { n++; }}) {
        NkDtLong changed(5);
        change(changed);
        EXPECT_EQ(describe(changed), "6 defined modified");
    }
    NkDtLong null(NkDtWmNull);
    null += 0;
    EXPECT_EQ(describe(null), "0 defined modified");
}

TEST(NkDtLong, ChangesNothingWhenAComputationInPlaceFails) {
    NkDtLong number(kMax);
    expectError(NkDtErrWertebereich, [&] { number += 1; });
    expectError(NkDtErrWertebereich, [&] { number += number; });
    expectError(NkDtErrWertebereich, [&] { ++number; });
    expectError(NkDtErrWertebereich, [&] { number++; });
    EXPECT_EQ(describe(number), "2147483647 defined");
    number = kMin;
    number.SetModified(FALSE);
    expectError(NkDtErrWertebereich, [&] { number -= NkDtLong(1); });
    expectError(NkDtErrWertebereich, [&] { --number; });
    expectError(NkDtErrWertebereich, [&] { number--; });
    EXPECT_EQ(describe(number), "-2147483648 defined");
}

TEST(NkDtLong, IncrementsAndDecrementsWithoutAResult) {
    static_assert(std::is_void_v<decltype(++std::declval<NkDtLong&>())>);
    static_assert(std::is_void_v<decltype(std::declval<NkDtLong&>()++)>);
    static_assert(std::is_void_v<decltype(--std::declval<NkDtLong&>())>);
    static_assert(std::is_void_v<decltype(std::declval<NkDtLong&>()--)>);
    NkDtLong missing(NkDtWmMissing);
    ++missing;
    missing--;
    EXPECT_EQ(describe(missing), "0 missing");
}

TEST(NkDtLong, IsNotChangedByANumberBeyond32Bits) {
    for (const LONGLONG number :
         {LONGLONG{2147483648}, LONGLONG{-2147483649}, std::numeric_limits<LONGLONG>::min()}) {
        NkDtLong value(5);
        expectError(NkDtErrWertebereich, [&] { value = number; });
        expectError(NkDtErrWertebereich, [&] { value += number; });
        expectError(NkDtErrWertebereich, [&] { value -= number; });
        EXPECT_EQ(describe(value), "5 defined");
    }
}

// --- Streams --------------------------------------------------------------------------------------------

TEST(NkDtLong, WritesItsDigitsToAStreamAndNothingWhenUndefined) {
    std::ostringstream stream;
    stream << NkDtLong(kMin) << '|' << NkDtLong(0) << '|' << NkDtLong(NkDtWmMissing) << NkDtLong(NkDtWmNull)
           << '|' << NkDtShort(-32768);
    EXPECT_EQ(stream.str(), "-2147483648|0||-32768");
}

// --- SQL and recordset beyond 32 bits -----------------------------------------------------------------

TEST(NkDtLong, RefusesNativeNumbersBeyond32BitsUnchanged) {
    for (const long number :
         {2147483648L, -2147483649L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()}) {
        for (const NkDtWorkingMode mode : kStoredModes) {
            CRecordset rs;
            NkDtLong value(mode);
            const std::string before = describe(value);
            expectError(NkDtErrWertebereich, [&] { value.SetFromSQL(number); });
            EXPECT_EQ(describe(value), before);
            expectError(NkDtErrWertebereich, [&] { value.SetFromRecordSet(rs, number); });
            EXPECT_EQ(describe(value), before);
        }
    }
}

TEST(NkDtLong, TakesNativeNumbersAtItsBounds) {
    CRecordset rs;
    for (const long number : {2147483647L, -2147483648L}) {
        NkDtLong value;
        value.SetFromSQL(number);
        EXPECT_EQ(value.GetValue(), number);
        NkDtLong field;
        field.SetFromRecordSet(rs, number);
        EXPECT_EQ(field.GetValue(), number);
    }
}

TEST(NkDtLong, IgnoresWhatStandsInANullField) {
    CRecordset rs;
    const long field = 2147483648L;
    rs.SetFieldNull(&field, TRUE);
    NkDtLong value(5);
    value.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(value), "0 missing modified");
}

// --- Archive ----------------------------------------------------------------------------------------

TEST(NkDtLong, ArchivesItsDefinednessAndItsValueInTwice32Bits) {
    NkDtLong number(-2);
    EXPECT_EQ(stored(number), (Bytes{1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF}));
    NkDtLong null(NkDtWmNull);
    EXPECT_EQ(stored(null), (Bytes{0, 0, 0, 0, 0, 0, 0, 0}));
}

// --- Where errors come from -----------------------------------------------------------------------------

TEST(NkDtLong, NamesTheOriginsOfItsErrors) {
    static NkDtLong number(5);
    static const NkDtLong missing(NkDtWmMissing);
    static const NkDtLong largest(kMax);
    static CRecordset rs;
    static const long tooLarge = 2147483648L;
    static const NkDtString bad("12x");
    static const NkDtString undefined(NkDtWmNull);
    constexpr const char* module = ".\\dtlong.cc";
    constexpr const char* record = ".\\Imp\\dtlongi.cc";
    const std::string name = "NkDtLong";
    const std::string functions = cp1252("Funktionen für NkDtLong");
    expectOrigins({
        {"GetValue", [] { missing.GetValue(); }, 2, module, name, "GetValue()"},
        {"conversion", [] { static_cast<void>(static_cast<long>(missing)); }, 2, module, name, "GetValue()"},
        {"text", [] { const NkDtLong made("12x"); }, 5, record, "NkDtLong_Imp", "FromString(LPCTSTR)"},
        {"large text", [] { const NkDtLong made("99999999999"); }, 8, record, "NkDtLong_Imp",
         "FromString(LPCTSTR)"},
        {"null text", [] { const NkDtLong made(LPCTSTR{nullptr}); }, 5, record, "NkDtLong_Imp",
         "FromString(LPCTSTR)"},
        {"text value", [] { const NkDtLong made(bad); }, 5, record, "NkDtLong_Imp", "FromString(LPCTSTR)"},
        {"wide number", [] { const NkDtLong made(5000000000L); }, 8, record, "NkDtLong_Imp",
         "NkDtLong_Imp(double)"},
        {"+", [] { static_cast<void>(largest + 1); }, 8, record, functions, "AddierenLong(double,double)"},
        {"+=", [] { number += kMax; }, 8, record, functions, "AddierenLong(double,double)"},
        {"-", [] { static_cast<void>(kMin - largest); }, 8, record, functions,
         "SubtrahierenLong(double,double)"},
        {"*", [] { static_cast<void>(largest * largest); }, 8, record, functions,
         "MultiplizierenLong(double,double)"},
        {"/ 0", [] { static_cast<void>(largest / 0); }, 12, record, functions,
         "DividierenLong(double,double)"},
        {"/ -1", [] { static_cast<void>(kMin / NkDtLong(-1)); }, 8, record, functions,
         "DividierenLong(double,double)"},
        {"==", [] { static_cast<void>(missing == largest); }, 2, module, name, "operator==(NkDtLong&)"},
        {"!=", [] { static_cast<void>(largest != missing); }, 2, module, name, "operator!=(NkDtLong&)"},
        {"<", [] { static_cast<void>(missing < largest); }, 2, module, name, "operator<(NkDtLong&)"},
        {">", [] { static_cast<void>(missing > largest); }, 2, module, name, "operator>(NkDtLong&)"},
        {"<=", [] { static_cast<void>(missing <= largest); }, 2, module, name, "operator<=(NkDtLong&)"},
        {">=", [] { static_cast<void>(missing >= largest); }, 2, module, name, "operator>=(NkDtLong&)"},
        {"== int", [] { static_cast<void>(missing == 1); }, 2, module, name, "operator==(INT)"},
        {"< int", [] { static_cast<void>(missing < 1); }, 2, module, name, "operator<(INT)"},
        {">= int", [] { static_cast<void>(missing >= 1); }, 2, module, name, "operator>=(INT)"},
        {"Assign", [] { number.Assign(NkDtString("5")); }, 10, module, name, "Assign(NkDtBasis&)"},
        {"SetFromSQL", [] { number.SetFromSQL(tooLarge); }, 8, module, name, "SetFromSQL(long)"},
        {"SetFromRecordSet", [] { number.SetFromRecordSet(rs, tooLarge); }, 8, module, name,
         "SetFromRecordSet(CRecordset&,long&)"},
        {"version", [] { number.SetFromExtern(&bad, TRUE, 99); }, 14, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"undefined text", [] { number.SetFromExtern(&undefined, TRUE, 100); }, 13, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"external text", [] { number.SetFromExtern(&bad, TRUE, 100); }, 1, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)", FALSE, 5},
        {"SetFromOFL", [] { number.SetFromOFL("12x"); }, 1, module, name, "SetFromOFL(LPCTSTR,NkFormat*)",
         FALSE, NkFoFehlerText},
    });
}

}  // namespace
