// Decimal numbers as texts, SQL, fields, archives, and what other classes make of them.

#include <nkdt/NkDtDecimal.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtShort.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/Archive.h>
#include <nkfw/File.h>
#include <nkfw/Recordset.h>

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "DecimalTesting.h"

namespace {

using namespace valuetest;

const NkFormat kAmount(2147483647, 2, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                       FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 2, '0');

// --- User-interface text --------------------------------------------------------------------------

TEST(NkDtDecimalOFL, WithoutAFormatIsThePlainTextWithAllPlaces) {
    EXPECT_STREQ(NkDtDecimal("-1234.50").ConvToOFL(), "-1234.50");
    EXPECT_STREQ(NkDtDecimal("7").ConvToOFL(), "7");
    EXPECT_STREQ(NkDtDecimal(NkDtWmNull).ConvToOFL(), "");
    NkDtDecimal value("1");
    value.SetFromOFL("-1234.50");
    EXPECT_EQ(describe(value), "-1234.5 defined modified");
    EXPECT_EQ(value.GetPrecision(), 2);
}

TEST(NkDtDecimalOFL, WithAFormatIsItsTextBothWays) {
    EXPECT_STREQ(NkDtDecimal("-1234.5").ConvToOFL(&kAmount), "-1.234,50");
    NkDtDecimal value("1");
    value.SetFormat(&kAmount);
    EXPECT_STREQ(value.ConvToOFL(), "1,00");
    value.SetFromOFL("-1.234,50");
    EXPECT_EQ(describe(value), "-1234.5 defined modified");
    value.SetModified(FALSE);
    value.SetFromOFL("-1.234,5");
    EXPECT_EQ(describe(value), "-1234.5 defined");
}

TEST(NkDtDecimalOFL, RefusesAnotherTextUnchangedAndClearsForNone) {
    NkDtDecimal value("1.5");
    for (const char* text : {"12a", "1,5", " 1", "1.2.3", "-", "1-"}) {
        SCOPED_TRACE(text);
        const ErrorPtr error = expectReplaced(NkDtErrFormatUnzulaessig, [&] { value.SetFromOFL(text); });
        EXPECT_STREQ(error->GetFunctionText(), "SetFromOFL(LPCTSTR,NkFormat*)");
        EXPECT_EQ(describe(value), "1.5 defined");
    }
    expectError(NkDtErrFolgefehler, [&] { value.SetFromOFL("1234.56", &kAmount); });
    EXPECT_EQ(describe(value), "1.5 defined");
    value.SetFromOFL("");
    EXPECT_EQ(describe(value), "0 missing modified");
    value = 2;
    value.SetFromOFL(nullptr);
    EXPECT_EQ(describe(value), "0 missing modified");
}

// --- SQL --------------------------------------------------------------------------------------------

TEST(NkDtDecimalSQL, HasAllHeldPlacesBothWays) {
    EXPECT_STREQ(NkDtDecimal("99.50").ConvToSQL(), "99.50");
    EXPECT_STREQ(NkDtDecimal("-0.01").ConvToSQL(), "-0.01");
    EXPECT_STREQ(NkDtDecimal("60").ConvToSQL(), "60");
    EXPECT_STREQ(NkDtDecimal(NkDtWmMissing).ConvToSQL(), "NULL");
    NkDtDecimal value("99.5");
    value.SetFromSQL("99.50");
    EXPECT_EQ(describe(value), "99.5 defined");
    EXPECT_STREQ(value.ConvToSQL(), "99.50");
    value.SetFromSQL("1,000");
    EXPECT_EQ(describe(value), "1000 defined modified");
}

TEST(NkDtDecimalSQL, RefusesAnotherTextUnchanged) {
    NkDtDecimal value("1.5");
    expectError(NkDtErrFormatUnzulaessig, [&] { value.SetFromSQL("1.2.3"); });
    expectError(NkDtErrFormatUnzulaessig, [&] { value.SetFromSQL("12a"); });
    expectError(NkDtErrEingabeZuLang, [&] { value.SetFromSQL("12345678901234567890123456789"); });
    expectError(NkDtErrInitialwert, [&] { value.SetFromSQL(nullptr); });
    EXPECT_EQ(describe(value), "1.5 defined");
    NkDtDecimal null(NkDtWmNull);
    expectError(NkDtErrFormatUnzulaessig, [&] { null.SetFromSQL("x"); });
    EXPECT_EQ(describe(null), "0 null");
    null.SetFromSQL("");
    EXPECT_EQ(describe(null), "0 defined modified");
}

// --- External text ------------------------------------------------------------------------------------

std::string external(const NkDtDecimal& value) {
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString text = value.ConvToExtern(defined, version);
    EXPECT_EQ(defined, value.IsDefined());
    EXPECT_EQ(version, 100);
    EXPECT_EQ(text.IsDefined(), value.IsDefined());
    return static_cast<LPCTSTR>(text);
}

TEST(NkDtDecimalExtern, HasOneDigitInFrontAndThreeOfTheExponent) {
    EXPECT_EQ(external(NkDtDecimal("123.45")), "1.2345E+002");
    EXPECT_EQ(external(NkDtDecimal("100")), "1.00E+002");
    EXPECT_EQ(external(NkDtDecimal("0.05")), "5E-002");
    EXPECT_EQ(external(NkDtDecimal("-0.5")), "-5E-001");
    EXPECT_EQ(external(NkDtDecimal("0.00")), "0E+000");
    EXPECT_EQ(external(NkDtDecimal(NkDtWmNull)), "");
}

TEST(NkDtDecimalExtern, IsReadBackAndMarksADifferentNumber) {
    NkDtDecimal value("123.45");
    const NkDtString same("1.2345E+002");
    value.SetFromExtern(&same, TRUE, 100);
    EXPECT_EQ(describe(value), "123.45 defined");
    const NkDtString other("5E-002");
    value.SetFromExtern(&other, TRUE, 100);
    EXPECT_EQ(describe(value), "0.05 defined modified");
}

TEST(NkDtDecimalExtern, RefusesAnotherFormAndKeepsTheNumberButIsDefined) {
    for (const char* text : {"123.45", "1.5E", "1.5E+", "1.5E2", "1.5E+1234", "1.5E+0x1"}) {
        SCOPED_TRACE(text);
        NkDtDecimal value(NkDtWmNull);
        const NkDtString external(text);
        expectReplaced(NkDtErrExtern, [&] { value.SetFromExtern(&external, TRUE, 100); });
        EXPECT_EQ(describe(value), "0 defined modified");
    }
    NkDtDecimal value("1.5");
    const NkDtString text("5E-002");
    expectError(NkDtErrVersion, [&] { value.SetFromExtern(&text, TRUE, 99); });
    EXPECT_EQ(describe(value), "1.5 defined");
    const NkDtString undefined(NkDtWmNull);
    expectError(NkDtErrDefiniertheit, [&] { value.SetFromExtern(&undefined, TRUE, 100); });
    EXPECT_EQ(describe(value), "1.5 defined");
    value.SetFromExtern(&text, FALSE, 100);
    EXPECT_EQ(describe(value), "0 missing modified");
}

// --- Recordset ------------------------------------------------------------------------------------------

class DecimalField : public ::testing::Test {
  protected:
    DecimalField() {
        field.GetBuffer(40);
        field.ReleaseBuffer(0);
    }
    CRecordset rs;
    CString field;
};

TEST_F(DecimalField, HasOnePlaceAtLeast) {
    for (const auto& [number, text] :
         {std::pair{"5", "5.0"}, {"0", "0.00"}, {"0.0000", "0.00"}, {"-1.50", "-1.50"}}) {
        NkDtDecimal(number).ConvToRecordSet(rs, field);
        EXPECT_STREQ(field, text);
        EXPECT_FALSE(rs.IsFieldNull(&field));
    }
    NkDtDecimal(NkDtWmNull).ConvToRecordSet(rs, field);
    EXPECT_STREQ(field, "-1.50");
    EXPECT_TRUE(rs.IsFieldNull(&field));
}

TEST_F(DecimalField, IsReadWithItsPlacesOrClears) {
    NkDtDecimal value("99.5");
    field = "99.50";
    rs.SetFieldNull(&field, FALSE);
    value.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(value), "99.5 defined");
    EXPECT_EQ(value.GetPrecision(), 2);
    field = "x";
    expectError(NkDtErrFormatUnzulaessig, [&] { value.SetFromRecordSet(rs, field); });
    EXPECT_EQ(describe(value), "99.5 defined");
    rs.SetFieldNull(&field, TRUE);
    value.SetFromRecordSet(rs, field);
    EXPECT_EQ(describe(value), "0 missing modified");
}

TEST_F(DecimalField, OfTwentyEightDigitsCountsNeitherSignNorLeadingZero) {
    NkDtDecimal value;
    for (const char* text : {"-1234567890123456789012345678", "-0.1234567890123456789012345678",
                             "123456789012345678.0000000000000000000000"}) {
        SCOPED_TRACE(text);
        field = text;
        rs.SetFieldNull(&field, FALSE);
        EXPECT_NO_THROW(value.SetFromRecordSet(rs, field));
    }
}

// --- Archive --------------------------------------------------------------------------------------------

TEST(NkDtDecimalArchive, BringsBackNumberPlacesAndDefinedness) {
    for (const char* text : {"0", "123.45", "-0.05", "100", "0.10", "9999999999999999999999999999"}) {
        SCOPED_TRACE(text);
        NkDtDecimal source(text);
        CMemFile file;
        {
            CArchive archive(&file, CArchive::store);
            source.Serialize(archive);
            NkDtDecimal(NkDtWmNull).Serialize(archive);
        }
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::load);
        NkDtDecimal loaded;
        loaded.Serialize(archive);
        EXPECT_TRUE(loaded.IsDefined());
        EXPECT_TRUE(loaded == source);
        loaded.SetModified(FALSE);
        loaded.Serialize(archive);
        EXPECT_EQ(describe(loaded), "0 missing modified");
    }
}

TEST(NkDtDecimalArchive, ThatIsDamagedLeavesTheValueAsItWas) {
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        archive << BOOL{TRUE} << CString("no number");
    }
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    NkDtDecimal value(NkDtWmNull);
    expectReplaced(NkDtErrExtern, [&] { value.Serialize(archive); });
    EXPECT_EQ(describe(value), "0 null");
}

// --- The other classes ------------------------------------------------------------------------------------

TEST(NkDtDecimalText, HasItsStateAndRoomFor38Characters) {
    const NkDtString text(NkDtDecimal("-12.500"));
    EXPECT_EQ(describe(text), "'-12.5' 5/38 defined");
    EXPECT_EQ(describe(NkDtString(NkDtDecimal(NkDtWmNull))), "'' 0/0 null");
    NkDtString sum("Summe: ");
    sum += NkDtDecimal("1.50");
    EXPECT_EQ(bytesOf(sum), "Summe: 1.5");
    std::ostringstream stream;
    stream << NkDtDecimal("1.50") << '|' << NkDtDecimal();
    EXPECT_EQ(stream.str(), "1.5|");
}

TEST(NkDtDecimalNumbers, BecomeWholeNumbersWithoutTheirPlaces) {
    EXPECT_EQ(describe(NkDtLong(NkDtDecimal("-2.9"))), "-2 defined");
    EXPECT_EQ(describe(NkDtLong(NkDtDecimal(NkDtWmNull))), "0 null");
    EXPECT_EQ(describe(NkDtShort(NkDtDecimal("32767"))), "32767 defined");
    expectError(NkDtErrWertebereich, [] { const NkDtLong number(NkDtDecimal("2147483647.5")); });
    expectError(NkDtErrWertebereich, [] { const NkDtLong number(NkDtDecimal("-2147483648.5")); });
    expectError(NkDtErrWertebereich, [] { const NkDtShort number(NkDtDecimal("32767.5")); });
}

}  // namespace
