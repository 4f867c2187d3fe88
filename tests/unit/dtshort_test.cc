// What is the short integer's own; states and numbers are held against a generated table beside this.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Recordset.h>

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

const NkFormat kFormat(20, 0, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt, FormatVorzeichenVorn,
                       FormatVorzeichenNurMinus, 0, '0', 0, '0');

// --- Construction -----------------------------------------------------------------------------------

TEST(NkDtShort, TakesAShortAsItIsAndChecksAnInt) {
    EXPECT_EQ(NkDtShort(short{-32768}).GetValue(), -32768);
    EXPECT_EQ(NkDtShort(32767).GetValue(), 32767);
    EXPECT_EQ(NkDtShort(-32768).GetValue(), -32768);
    for (const int number :
         {32768, -32769, 40000, 65537, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        expectError(NkDtErrWertebereich, [&] { const NkDtShort made(number); });
    }
}

TEST(NkDtShortFromText, ReadsBlanksASignAndDigits) {
    struct Case {
        LPCTSTR text;
        int number;
    };
    constexpr Case cases[] = {{"", 0},          {"12", 12},         {" -12", -12},           {"+7", 7},
                              {"32767", 32767}, {"-32768", -32768}, {"0000000032767", 32767}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtShort(each.text).GetValue(), each.number) << each.text;
}

TEST(NkDtShortFromText, CountsSixBytesOfATextWithASeparator) {
    struct Case {
        LPCTSTR text;
        int number;
    };
    constexpr Case cases[] = {{"12,9", 12}, {"12.9", 12},       {"-32768,9", -32768}, {"12,x", 12},
                              {",", 0},     {"000000012,5", 0}, {"000012,5", 12}};
    for (const Case& each : cases)
        EXPECT_EQ(NkDtShort(each.text).GetValue(), each.number) << each.text;
    expectError(NkDtErrWertebereich, [] { const NkDtShort made("123456,7"); });
    expectError(NkDtErrWertebereich, [] { const NkDtShort made("1234567,8"); });
    expectError(NkDtErrInitialwert, [] { const NkDtShort made("12a,5"); });
    expectError(NkDtErrInitialwert, [] { const NkDtShort made("1.234,5"); });
}

TEST(NkDtShortFromText, RefusesNumbersOutsideOfTheRangeBeforeCharactersLeftOver) {
    for (LPCTSTR text : {"32768", "-32769", "40000x", "99999999999", "99999999999999999999999999x"})
        expectError(NkDtErrWertebereich, [&] { const NkDtShort made(text); });
    for (LPCTSTR text : {"12x", "x", " ", "-", "12 "})
        expectError(NkDtErrInitialwert, [&] { const NkDtShort made(text); });
    expectError(NkDtErrInitialwert, [] { const NkDtShort made(LPCTSTR{nullptr}); });
}

TEST(NkDtShort, TakesTheStateOfTheValueThatItIsMadeFrom) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            NkDtLong number(mode);
            number = -7;
            number.SetModified(modified);
            number.SetFormat(&kFormat);
            NkDtString text(mode);
            text = "-7";
            text.SetModified(modified);
            text.SetFormat(&kFormat);
            const DefaultMode elsewhere(NkDtWmDefined);
            for (const NkDtShort& made : {NkDtShort(number), NkDtShort(text)}) {
                EXPECT_EQ(made.GetValue(), -7);
                EXPECT_EQ(stateOf(made), modified ? "defined modified" : "defined");
                EXPECT_EQ(made.GetWorkingMode(), mode);
                EXPECT_EQ(made.GetFormat(), nullptr);
            }
        }
    }
}

TEST(NkDtShort, ChecksALongThatIsDefined) {
    expectError(NkDtErrWertebereich, [] { const NkDtShort made(NkDtLong(32768)); });
    expectError(NkDtErrWertebereich, [] { const NkDtShort made(NkDtLong(-32769)); });
    NkDtLong storesALot(NkDtWmNull);
    load(storesALot, {0, 0, 0, 0, 0, 0, 0, 0x40});
    EXPECT_EQ(describe(NkDtShort(storesALot)), "0 null modified");
}

TEST(NkDtShort, ReadsANullAsItsStoredValueAndRefusesToReadAMissingOne) {
    EXPECT_EQ(NkDtShort(NkDtWmNull).GetValue(), 0);
    EXPECT_EQ(static_cast<short>(NkDtShort(NkDtWmNull)), 0);
    expectError(NkDtErrUndefiniert, [] { NkDtShort(NkDtWmMissing).GetValue(); });
    expectError(NkDtErrUndefiniert, [] { static_cast<void>(static_cast<short>(NkDtShort(NkDtWmMissing))); });
}

// --- Assignment and arithmetic -----------------------------------------------------------------------

TEST(NkDtShort, RefusesAnIntOutsideOfItsRangeUnchanged) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const int number : {32768, -32769, std::numeric_limits<int>::min()}) {
            NkDtShort value(mode);
            const std::string before = describe(value);
            expectError(NkDtErrWertebereich, [&] { value = number; });
            EXPECT_EQ(describe(value), before);
        }
    }
}

TEST(NkDtShort, ComputesUpToItsBoundsAndNotBeyond) {
    EXPECT_EQ((NkDtShort(32767) + 0).GetValue(), 32767);
    EXPECT_EQ((NkDtShort(181) * 181).GetValue(), 32761);
    EXPECT_EQ((NkDtShort(-7) / 2).GetValue(), -3);
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(32767) + NkDtShort(1)); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(-32768) - 1); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(200) * NkDtShort(200)); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(-32768) / -1); });
    expectError(NkDtErrDivisionDurchNull, [] { static_cast<void>(NkDtShort(7) / NkDtShort(0)); });
}

TEST(NkDtShort, ComputesWithAll32BitsOfAnIntAndChecksTheResultAlone) {
    EXPECT_EQ((NkDtShort(-32768) + 65535).GetValue(), 32767);
    EXPECT_EQ((NkDtShort(0) * 70000).GetValue(), 0);
    EXPECT_EQ((70000 / NkDtShort(7)).GetValue(), 10000);
    EXPECT_EQ((NkDtShort(7) / 70000).GetValue(), 0);
    EXPECT_EQ((40000 - NkDtShort(32767)).GetValue(), 7233);
    NkDtShort value(-30000);
    value += 60000;
    EXPECT_EQ(value.GetValue(), 30000);
    value -= 60000;
    EXPECT_EQ(value.GetValue(), -30000);
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(32767) + largest); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(NkDtShort(-32768) * smallest); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(smallest - NkDtShort(1)); });
    expectError(NkDtErrWertebereich, [] { static_cast<void>(smallest / NkDtShort(-1)); });
}

TEST(NkDtShort, YieldsTheIntThroughItsRangeWhereItIsNullOrTheIntIsZero) {
    const NkDtShort null(NkDtWmNull);
    EXPECT_EQ((null * 5).GetValue(), 5);
    EXPECT_EQ((NkDtShort(7) * 0).GetValue(), 0);
    EXPECT_EQ((5 / null).GetValue(), 5);
    EXPECT_EQ((null / 5).GetValue(), 0);
    expectError(NkDtErrWertebereich, [&] { static_cast<void>(null * 70000); });
    expectError(NkDtErrDivisionDurchNull, [&] { static_cast<void>(null / 0); });
}

TEST(NkDtShort, ChangesNothingWhenAComputationInPlaceFails) {
    NkDtShort number(32767);
    expectError(NkDtErrWertebereich, [&] { number += 1; });
    expectError(NkDtErrWertebereich, [&] { number += NkDtShort(1); });
    expectError(NkDtErrWertebereich, [&] { ++number; });
    expectError(NkDtErrWertebereich, [&] { number -= std::numeric_limits<int>::min(); });
    EXPECT_EQ(describe(number), "32767 defined");
}

// --- Recordset and archive ----------------------------------------------------------------------------

TEST(NkDtShort, ReadsTheLow16BitsOfAField) {
    struct Case {
        int field;
        int value;
    };
    constexpr Case cases[] = {{65537, 1},  {32767, 32767}, {32768, -32768}, {-32769, 32767},
                              {65535, -1}, {-1, -1},       {65536, 0},      {0x12345678, 0x5678}};
    CRecordset rs;
    for (const Case& each : cases) {
        NkDtShort value;
        value.SetFromRecordSet(rs, each.field);
        EXPECT_EQ(value.GetValue(), each.value) << each.field;
    }
}

TEST(NkDtShort, WritesItsValueIntoAFieldWithTheSign) {
    CRecordset rs;
    int field = 0x7FFFFFFF;
    NkDtShort(-5).ConvToRecordSet(rs, field);
    EXPECT_EQ(field, -5);
}

TEST(NkDtShort, ArchivesItsDefinednessIn32AndItsValueIn16Bits) {
    NkDtShort number(-2);
    EXPECT_EQ(stored(number), (Bytes{1, 0, 0, 0, 0xFE, 0xFF}));
    NkDtShort null(NkDtWmNull);
    EXPECT_EQ(stored(null), (Bytes{0, 0, 0, 0, 0, 0}));
}

// --- Where errors come from ---------------------------------------------------------------------------

TEST(NkDtShort, NamesTheOriginsOfItsErrors) {
    static NkDtShort number(5);
    static const NkDtShort missing(NkDtWmMissing);
    static const NkDtShort largest(32767);
    static const NkDtString bad("12x");
    static const NkDtString undefined(NkDtWmNull);
    constexpr const char* module = ".\\dtshort.cc";
    constexpr const char* record = ".\\Imp\\dtshorti.cc";
    const std::string name = "NkDtShort";
    const std::string functions = cp1252("Funktionen für NkDtShort");
    expectOrigins({
        {"GetValue", [] { missing.GetValue(); }, 2, module, name, "GetValue()"},
        {"int", [] { const NkDtShort made(40000); }, 8, record, "NkDtShort_Imp", "NkDtShort_Imp(double)"},
        {"long value", [] { const NkDtShort made(NkDtLong(40000)); }, 8, record, "NkDtShort_Imp",
         "NkDtShort_Imp(double)"},
        {"wide number", [] { const NkDtShort made(5000000000L); }, 8, record, "NkDtShort_Imp",
         "NkDtShort_Imp(double)"},
        {"text", [] { const NkDtShort made("12x"); }, 5, record, "NkDtShort_Imp", "FromString(LPCTSTR)"},
        {"large text", [] { const NkDtShort made("123456,7"); }, 8, record, "NkDtShort_Imp",
         "FromString(LPCTSTR)"},
        {"= int", [] { number = 40000; }, 8, module, name, "operator=(INT)"},
        {"+", [] { static_cast<void>(largest + 1); }, 8, record, functions, "AddierenShort(LONG,LONG)"},
        {"-", [] { static_cast<void>(-2 - largest); }, 8, record, functions, "SubtrahierenShort(LONG,LONG)"},
        {"*", [] { static_cast<void>(largest * 2); }, 8, record, functions, "MultiplizierenShort(LONG,LONG)"},
        {"/ 0", [] { static_cast<void>(largest / 0); }, 12, record, functions, "DividierenShort(LONG,LONG)"},
        {"/ -1", [] { static_cast<void>(-32768 / NkDtShort(-1)); }, 8, record, functions,
         "DividierenShort(LONG,LONG)"},
        {"==", [] { static_cast<void>(missing == largest); }, 2, module, name, "operator==(NkDtShort&)"},
        {">= int", [] { static_cast<void>(missing >= 1); }, 2, module, name, "operator>=(INT)"},
        {"Assign", [] { number.Assign(NkDtLong(5)); }, 10, module, name, "Assign(NkDtBasis&)"},
        {"version", [] { number.SetFromExtern(&bad, TRUE, 99); }, 14, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"undefined text", [] { number.SetFromExtern(&undefined, TRUE, 100); }, 13, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)"},
        {"external text", [] { number.SetFromExtern(&bad, TRUE, 100); }, 1, module, name,
         "SetFromExtern(NkDtString*,BOOL,USHORT)", FALSE, 5},
        {"SetFromOFL", [] { number.SetFromOFL("40000"); }, 1, module, name, "SetFromOFL(LPCTSTR,NkFormat*)",
         FALSE, NkFoFehlerText},
    });
}

}  // namespace
