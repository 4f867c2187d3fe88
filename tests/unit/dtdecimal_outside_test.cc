// What a decimal number is outside the program: the record of files, texts, fields, archives. The rules of
// the value around them; the texts and bytes themselves are those of its record (dtdecimi).

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtString.h>
#include <nkfw/Archive.h>
#include <nkfw/Recordset.h>

#include <cstring>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DecimalTesting.h"

namespace {

using namespace valuetest;

constexpr const char* kLargest = "039614081257132168796771975167";  // the zero lifts the bound of digits

NkDtDecimal decimal(const char* text) {
    return NkDtDecimal(text);
}

DEC record(SHORT sign, SHORT scale, ULONG high, ULONG low) {
    DEC result = {};
    result.sign = sign;
    result.scale = scale;
    result.low = low;
    result.high = high;
    return result;
}

NkDtDecimal ofRecord(const DEC& given) {
    NkDtDecimal value(0);
    value.SetModified(TRUE);  // spares the comparison with the number before
    value.SetFromBTR(given, TRUE);
    value.SetModified(FALSE);
    return value;
}

bool isAllZero(const DEC& given) {
    const DEC zero = {};
    return std::memcmp(&given, &zero, sizeof zero) == 0;
}

DEC recordOf(const NkDtDecimal& value) {
    BOOL defined = FALSE;
    return value.ConvToBTR(defined);
}

// --- A scale that cannot be multiplied out ---------------------------------------------------------------

const DEC kBeyond = record(0, -30, 0, 1);

TEST(NkDtDecimalBeyond, IsTakenFromARecordWhateverTheFlag) {
    for (const BOOL modified : {FALSE, TRUE}) {
        NkDtDecimal value(7);
        value.SetModified(modified);
        value.SetFromBTR(kBeyond, TRUE);
        EXPECT_TRUE(value.IsModified());
        EXPECT_EQ(value.GetPrecision(), -30);
    }
}

TEST(NkDtDecimalBeyond, DiffersFromAllButItsLike) {
    NkDtDecimal value = ofRecord(kBeyond);
    value.SetFromBTR(kBeyond, TRUE);
    EXPECT_FALSE(value.IsModified());
    value = std::as_const(value);
    EXPECT_FALSE(value.IsModified());
    value = ofRecord(kBeyond);
    EXPECT_FALSE(value.IsModified());
    value.SetFromBTR(record(0, -30, 0, 2), TRUE);
    EXPECT_TRUE(value.IsModified());
}

TEST(NkDtDecimalBeyond, IsReplacedByEveryOtherNumber) {
    const NkDtDecimal beyond = ofRecord(kBeyond);
    const NkDtString external("1.25E+000");
    const std::pair<const char*, void (*)(NkDtDecimal&)> replacements[] = {
        {"SQL", [](NkDtDecimal& d) { d.SetFromSQL("1.25"); }},
        {"user interface", [](NkDtDecimal& d) { d.SetFromOFL("1.25"); }},
        {"double", [](NkDtDecimal& d) { d = 1.25; }},
        {"value", [](NkDtDecimal& d) { d = decimal("1.25"); }},
        {"record", [](NkDtDecimal& d) { d.SetFromBTR(record(0, 2, 0, 125), TRUE); }}};
    for (const auto& [name, replace] : replacements) {
        SCOPED_TRACE(name);
        NkDtDecimal value(beyond);
        replace(value);
        EXPECT_EQ(describe(value), "1.25 defined modified");
    }
    NkDtDecimal value(beyond);
    value.SetFromExtern(&external, TRUE, 100);
    EXPECT_EQ(describe(value), "1.25 defined modified");
}

TEST(NkDtDecimalBeyond, BeginsWhereTheMantissaEnds) {
    NkDtDecimal value = ofRecord(record(0, -28, 0, 3));  // 3 * 10^28 fits a mantissa, 4 * 10^28 does not
    value.SetFromSQL("30000000000");
    EXPECT_EQ(describe(value), "30000000000 defined modified");
    value = ofRecord(record(0, -2, 0, 5));
    value.SetModified(FALSE);
    value.SetFromSQL("500");
    EXPECT_EQ(describe(value), "500 defined");
    value = ofRecord(record(0, -28, 0, 4));
    value.SetModified(FALSE);
    value.SetFromSQL("4");
    EXPECT_EQ(describe(value), "4 defined modified");
}

// --- The record of files --------------------------------------------------------------------------------

TEST(NkDtDecimalBTR, ZeroIsWrittenAs14ZeroBytesWhateverItsPlaces) {
    EXPECT_TRUE(isAllZero(recordOf(decimal("0"))));
    EXPECT_TRUE(isAllZero(recordOf(decimal("0.000"))));
    EXPECT_TRUE(isAllZero(recordOf(NkDtDecimal(NkDtWmMissing))));
}

TEST(NkDtDecimalBTR, ANegativeZeroIsZeroAndWithAnotherSignMinus2To32) {
    EXPECT_EQ(describe(ofRecord(record(1, 2, 0, 0))), "0 defined");
    EXPECT_EQ(describe(ofRecord(record(2, 0, 0, 0))), "-4294967296 defined");
    EXPECT_EQ(describe(ofRecord(record(-1, 1, 0, 0))), "-429496729.6 defined");
}

TEST(NkDtDecimalBTR, ALargePositiveNumberLosesPlacesOrIsRefused) {
    EXPECT_EQ(describe(ofRecord(recordOf(decimal("1844674407370955161.59")))),
              "1844674407370955161.5 defined");
    EXPECT_EQ(describe(ofRecord(recordOf(decimal("18446744073709551615.99")))),
              "18446744073709551615 defined");
    BOOL defined = FALSE;
    expectOrigins(
        {{"2^64", [&] { decimal("18446744073709551616.5").ConvToBTR(defined); }, NkDtErrWertebereich,
          ".\\Imp\\dtdecimi.cc", "NkDtDecimal_Imp", "ConvRWToDecimal(RWDecimal96&)"}});
    EXPECT_TRUE(defined);  // told before the number is looked at
}

TEST(NkDtDecimalBTR, ALargeNegativeNumberKeepsItsPlacesAndWraps) {
    const DEC written = recordOf(decimal("-184467440737095516.19"));
    EXPECT_EQ(written.sign, 1);
    EXPECT_EQ(written.scale, 2);
    EXPECT_EQ(written.high, 0U);
    EXPECT_EQ(written.low, 3U);
    EXPECT_TRUE(isAllZero(recordOf(decimal("-18446744073709551616"))));
}

TEST(NkDtDecimalBTR, APlacesCountOfTheRecordIsHeldCopiedAndWrittenAsItIs) {
    for (const SHORT scale : {SHORT{28}, SHORT{29}, SHORT{32767}, SHORT{-1}, SHORT{-32768}}) {
        SCOPED_TRACE(scale);
        const NkDtDecimal value = ofRecord(record(0, scale, 0, 7));
        EXPECT_EQ(value.GetPrecision(), scale);
        EXPECT_EQ(NkDtDecimal(value).GetPrecision(), scale);
        EXPECT_EQ(recordOf(value).scale, scale);
        EXPECT_EQ(recordOf(value).low, 7U);
    }
    EXPECT_EQ(describe(ofRecord(record(1, -2, 0, 15))), "-1500 defined");
    EXPECT_TRUE(ofRecord(record(0, 29, 0, 5)) == decimal("0.0000000000000000000000000001"));
    EXPECT_TRUE(ofRecord(record(0, 29, 0, 4)).IsDecimal0());
    EXPECT_EQ((ofRecord(record(0, -2, 0, 15)) + 0).GetPrecision(), 0);
}

TEST(NkDtDecimalBTR, ComparingLooksAtTheNumberAlone) {
    EXPECT_TRUE(NkDtDecimal(NkDtWmMissing).CompareDec(DEC{}));
    EXPECT_TRUE(NkDtDecimal(NkDtWmNull).CompareDec(record(1, 5, 0, 0)));
    EXPECT_TRUE(decimal("1500").CompareDec(record(0, -2, 0, 15)));
    EXPECT_FALSE(decimal("1.5").CompareDec(record(1, 1, 0, 15)));
}

// --- Texts -----------------------------------------------------------------------------------------------

TEST(NkDtDecimalTexts, TheLongestOnesFitTheBufferOf33Characters) {
    for (const NkDtDecimal& value :
         {0 - decimal(kLargest), 0 - decimal("0.0000000000000000000000000001"),
          0 - ofRecord(record(0, 28, 0xFFFFFFFF, 0xFFFFFFFF)), decimal("-1234567890123.456789012345678")}) {
        char buffer[34];
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(value.DecimalToAscii(buffer), buffer);
        EXPECT_LT(std::strlen(buffer), 33U);
        EXPECT_EQ(buffer[33], '#');
        EXPECT_STREQ(NkDtString(value), buffer);
    }
}

TEST(NkDtDecimalTexts, TwentyNineDigitsNeedALeadingZero) {
    expectError(NkDtErrEingabeZuLang, [] { decimal("39614081257132168796771975167"); });
    EXPECT_EQ(describe(decimal(kLargest)), "39614081257132168796771975167 defined");
    expectError(NkDtErrDezimal, [] { decimal("039614081257132168796771975168"); });
    NkDtDecimal value(1);
    value.SetFromSQL(kLargest);
    EXPECT_EQ(describe(value), "39614081257132168796771975167 defined modified");
    const NkDtString text(kLargest);
    EXPECT_TRUE(NkDtDecimal(text) == value);
}

TEST(NkDtDecimalTexts, Of29DigitsComeBackFromTheExternalTextAndTheArchiveAlone) {
    NkDtDecimal largest(kLargest);
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString external = largest.ConvToExtern(defined, version);
    NkDtDecimal back;
    back.SetFromExtern(&external, TRUE, version);
    EXPECT_TRUE(back == largest);
    NkDtDecimal loaded;
    load(loaded, stored(largest));
    EXPECT_TRUE(loaded == largest);
    expectError(NkDtErrEingabeZuLang, [&] { back.SetFromSQL(largest.ConvToSQL()); });
    CRecordset rs;
    CString field('x', 40);
    largest.ConvToRecordSet(rs, field);
    EXPECT_STREQ(field, "39614081257132168796771975167.0");
    expectError(NkDtErrEingabeZuLang, [&] { back.SetFromRecordSet(rs, field); });
    back.SetFromOFL(largest.ConvToOFL());
    EXPECT_EQ(describe(back), "39614081257132168796771975167 defined modified");
}

TEST(NkDtDecimalTexts, AnUndefinedValueHasAnUndefinedExternalTextInEveryMode) {
    for (const NkDtWorkingMode processDefault : kStoredModes) {
        for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
            const NkDtDecimal value(mode);
            const DefaultMode scope(processDefault);
            BOOL defined = TRUE;
            USHORT version = 0;
            EXPECT_FALSE(value.ConvToExtern(defined, version).IsDefined());
            EXPECT_FALSE(defined);
            EXPECT_EQ(version, 100);
            EXPECT_STREQ(value.ConvToSQL(), "NULL");
        }
    }
}

TEST(NkDtDecimalTexts, WhatTheyTakeKeepsTheWrittenPlacesEvenIfTheNumberIsTheSame) {
    NkDtDecimal value("1.5");
    value.SetFromSQL("1.500");
    EXPECT_EQ(value.GetPrecision(), 3);
    value.SetFromOFL("1.50");
    EXPECT_EQ(value.GetPrecision(), 2);
    const NkDtString text("1.5000E+000");
    value.SetFromExtern(&text, TRUE, 100);
    EXPECT_EQ(value.GetPrecision(), 4);
    EXPECT_EQ(describe(value), "1.5 defined");
}

// --- Fields ----------------------------------------------------------------------------------------------

TEST(NkDtDecimalField, IsCutToItsCapacityAsEveryTextField) {
    CRecordset rs;
    CString field("12345");
    decimal("123456").ConvToRecordSet(rs, field);
    EXPECT_STREQ(field, "1234");
    EXPECT_FALSE(rs.IsFieldNull(&field));
}

// --- Archives --------------------------------------------------------------------------------------------

TEST(NkDtDecimalArchives, OfAnUndefinedValueSetZeroAndLookAtNoMode) {
    NkDtDecimal undefined(NkDtWmMissing);
    const Bytes bytes = stored(undefined);
    EXPECT_EQ(bytes, (Bytes{0, 0, 0, 0, 0}));  // the definedness and an empty text
    for (const auto& [mode, state] : {std::pair{NkDtWmMissing, "0 missing modified"},
                                      {NkDtWmNull, "0 null modified"},
                                      {NkDtWmDefined, "0 undefined modified"}}) {
        NkDtDecimal value("1.50");
        value.SetWorkingMode(mode);
        load(value, bytes);
        EXPECT_EQ(describe(value), state);
    }
}

TEST(NkDtDecimalArchives, HoldTheDefinednessAndTheExternalText) {
    NkDtDecimal value("123.45");
    const std::string text = "1.2345E+002";
    Bytes expected{1, 0, 0, 0, static_cast<BYTE>(text.size())};
    expected.insert(expected.end(), text.begin(), text.end());
    EXPECT_EQ(stored(value), expected);
}

TEST(NkDtDecimalArchives, LeaveTheFlagOfAnEqualNumberAlone) {
    for (const BOOL before : {FALSE, TRUE}) {
        NkDtDecimal source("1.50");
        NkDtDecimal value("1.5");
        value.SetModified(before);
        load(value, stored(source));
        EXPECT_EQ(value.IsModified(), before);
        EXPECT_EQ(value.GetPrecision(), 2);
    }
}

TEST(NkDtDecimalArchives, HoldNothingOfANumberThatCannotBeWritten) {
    NkDtDecimal value = ofRecord(record(0, -30, 0, 1));
    EXPECT_TRUE(written([&](CArchive& archive) {
                    expectError(NkDtErrDezimal, [&] { value.Serialize(archive); });
                }).empty());
}

}  // namespace
