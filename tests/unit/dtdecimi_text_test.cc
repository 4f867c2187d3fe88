// The texts of a decimal's value record.

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DecimalRecordTesting.h"
#include "Imp/dtdecimi.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;

/// The number that is read, with all its places.
std::string read(Reader reader, const std::string& text) {
    std::string result = "error";
    const ErrorPtr error = errorOf([&] { result = held(reader(text.c_str())); });
    return error == nullptr ? result : "error " + std::to_string(error->GetErrorNumber());
}

struct TextCase {
    std::string text;
    std::string result;
};

void expectRead(Reader reader, const std::vector<TextCase>& cases) {
    for (const TextCase& each : cases)
        EXPECT_EQ(read(reader, each.text), each.result) << "'" << each.text << "'";
}

// --- Text -------------------------------------------------------------------------------------

TEST(DecimalFromText, KeepsTheWrittenPlaces) {
    expectRead(&Imp::fromText, {{"0", "0"},
                                {"1.50", "1.50"},
                                {"-3.00", "-3.00"},
                                {"+7", "7"},
                                {"5.", "5"},
                                {".5", "0.5"},
                                {"-.5", "-0.5"},
                                {"-0.00", "0.00"}});
}

TEST(DecimalFromText, LeavesCommasAndBlanksOut) {
    expectRead(&Imp::fromText, {{"1,234,567.89", "1234567.89"},
                                {"1 234.5", "1234.5"},
                                {" - 1,5 ", "-15"},
                                {"1.2,3 4", "1.234"},
                                {",1,", "1"}});
}

TEST(DecimalFromText, AnEmptyTextIs0) {
    expectRead(&Imp::fromText, {{"", "0"}});
}

TEST(DecimalFromText, ATextWithoutADigitIsRefused) {
    expectRead(&Imp::fromText, {{" ", "error 20"},
                                {",", "error 20"},
                                {", ,", "error 20"},
                                {"-", "error 20"},
                                {"+", "error 20"},
                                {".", "error 20"},
                                {"-.", "error 20"},
                                {" + ", "error 20"}});
}

TEST(DecimalFromText, ASignStandsInFrontOnly) {
    expectRead(&Imp::fromText,
               {{"5-", "error 20"}, {"5+5", "error 20"}, {"--5", "error 20"}, {"+-5", "error 20"}});
}

TEST(DecimalFromText, ASecondPointAndOtherCharactersAreRefused) {
    expectRead(&Imp::fromText, {{"1.2.3", "error 20"},
                                {"..", "error 20"},
                                {"12a", "error 20"},
                                {"1E5", "error 20"},
                                {"1\t", "error 20"},
                                {"\xFC", "error 20"},
                                {"1/2", "error 20"},
                                {"1:2", "error 20"}});
}

TEST(DecimalFromText, MoreThan38CharactersAreTooLong) {
    expectRead(&Imp::fromText, {{zeros(37) + "5", "5"},
                                {zeros(38) + "5", "error 11"},
                                {"-" + zeros(38), "error 11"},
                                {std::string(100000, ' '), "error 11"}});
}

TEST(DecimalFromText, TheCountOfCharactersIsCheckedFirst) {
    expectRead(&Imp::fromText, {{"1.2.3" + zeros(34), "error 11"},
                                {"1.2.3" + zeros(33), "error 20"},
                                {"a" + zeros(38), "error 11"},
                                {"a" + zeros(37), "error 20"}});
}

TEST(DecimalFromText, TheCountOfDigitsIsCheckedBehindTheCharactersAndBeforeTheSigns) {
    expectRead(&Imp::fromText, {{nines(29), "error 11"},
                                {nines(29) + "a", "error 20"},
                                {nines(29) + ".1.", "error 20"},
                                {nines(14) + "-" + nines(15), "error 11"},
                                {nines(14) + "-" + nines(13), "error 20"}});
}

TEST(DecimalFromText, PointAndSignInFrontDoNotCountAsDigits) {
    expectRead(&Imp::fromText, {{nines(28), nines(28)},
                                {"-" + nines(28), "-" + nines(28)},
                                {"+" + nines(14) + "." + nines(14), nines(14) + "." + nines(14)},
                                {nines(14) + "." + nines(15), "error 11"},
                                {"-" + nines(29), "error 11"}});
}

TEST(DecimalFromText, ASignBehindCommasAndBlanksDoesNotCountEither) {
    expectRead(&Imp::fromText, {{" -" + nines(27), "-" + nines(27)},
                                {",+" + nines(13) + "." + nines(14), nines(13) + "." + nines(14)},
                                {" -" + nines(28), "error 11"},
                                {"- " + nines(27), "-" + nines(27)}});
}

TEST(DecimalFromText, CommasAndBlanksCountAsDigits) {
    expectRead(&Imp::fromText, {{nines(27) + ",", nines(27)},
                                {nines(28) + ",", "error 11"},
                                {" " + nines(28), "error 11"},
                                {std::string(29, ' '), "error 11"},
                                {std::string(28, ' '), "error 20"}});
}

TEST(DecimalFromText, ALeadingZeroLiftsTheBoundOfDigits) {
    expectRead(&Imp::fromText, {{"0" + nines(28), nines(28)},
                                {"039614081257132168796771975167", "39614081257132168796771975167"},
                                {"039614081257132168796771975168", "error 24"},
                                {"0" + nines(29), "error 24"},
                                {" ,0" + nines(28), nines(28)},
                                {"-0" + nines(28), "error 11"},
                                {".0" + nines(28), "error 11"}});
}

TEST(DecimalFromText, PlacesBeyondThe28thAreRoundedOnce) {
    expectRead(&Imp::fromText, {{"0." + zeros(27) + "15", "0." + zeros(27) + "2"},
                                {"0." + zeros(27) + "149", "0." + zeros(27) + "1"},
                                {"0." + nines(30), "1." + zeros(28)}});
}

// --- The text of a field ----------------------------------------------------------------------

TEST(DecimalFromField, ReadsWhatATextReads) {
    expectRead(&Imp::fromFieldText, {{"", "0"},
                                     {"0", "0"},
                                     {"00", "0"},
                                     {"0.", "0"},
                                     {"0.00", "0.00"},
                                     {"-12.50", "-12.50"},
                                     {"+7", "7"},
                                     {"0,5", "5"},
                                     {"1,234.5 ", "1234.5"},
                                     {"-0", "0"},
                                     {"0.5", "0.5"},
                                     {"05", "5"}});
}

TEST(DecimalFromField, RefusesWhatATextRefuses) {
    expectRead(&Imp::fromFieldText, {{"-", "error 20"},
                                     {"+", "error 20"},
                                     {".", "error 20"},
                                     {" ", "error 20"},
                                     {"--5", "error 20"},
                                     {"-+5", "error 20"},
                                     {"0-5", "error 20"},
                                     {"0.-5", "error 20"},
                                     {"-0-5", "error 20"},
                                     {"1.2.3", "error 20"},
                                     {"12a", "error 20"},
                                     {nines(39), "error 11"},
                                     {nines(29), "error 11"}});
}

TEST(DecimalFromField, SignAndOneLeadingZeroDoNotCount) {
    expectRead(&Imp::fromFieldText, {{"-0." + nines(28), "-0." + nines(28)},
                                     {"-0" + nines(28), "-" + nines(28)},
                                     {"0" + nines(29), "error 11"},
                                     {"-0." + nines(29), "error 11"},
                                     {"-" + zeros(37) + "5", "-5"},
                                     {"-" + zeros(38) + "5", "-5"},
                                     {"-" + zeros(39) + "5", "error 11"}});
}

TEST(DecimalFromField, ZerosOfThePlacesBeyondThe28thDigitDoNotCountButAreKept) {
    expectRead(&Imp::fromFieldText, {{"1." + zeros(28), "1." + zeros(28)},
                                     {"-0.5" + zeros(100), "-0.5" + zeros(27)},
                                     {"12345678901234567890.1234567800", "12345678901234567890.123456780"},
                                     {"1234567890123456789.00000000000", "1234567890123456789.0000000000"},
                                     {nines(28) + "." + zeros(1000), nines(28)},
                                     {nines(28) + ".0", nines(28)},
                                     {nines(29) + ".0", "error 11"},
                                     {nines(28) + ".01", "error 11"},
                                     {nines(28) + "0", "error 11"}});
}

TEST(DecimalFromField, MagnitudesOf29DigitsDoNotComeBack) {
    const std::string text = field(largest(10));
    EXPECT_EQ(text, "3961408125713216879.6771975167");
    EXPECT_EQ(read(&Imp::fromFieldText, text), "error 11");
    EXPECT_EQ(read(&Imp::fromText, text), "error 11");
}

TEST(DecimalFromField, EveryWrittenNumberOf28DigitsComesBack) {
    forManyNumbers([](const Decimal96& number) {
        const Decimal96 magnitude =
            Decimal96::fromMantissa(number.abs().mantissaHigh(), number.abs().mantissaLow());
        if (magnitude >= Decimal96("1" + zeros(28))) return;
        const Decimal96 back = Imp::fromFieldText(field(number).c_str());
        EXPECT_EQ(back, number);
        if (number.scale() > 0) {
            EXPECT_EQ(back.scale(), number.isZero() ? 2 : number.scale());
        }
    });
}

// --- Plain text -------------------------------------------------------------------------------

TEST(DecimalFromPlainText, TakesDigitsOnePointAndASignInFront) {
    expectRead(&Imp::fromPlainText, {{"", "0"},
                                     {"1.50", "1.50"},
                                     {"-7", "-7"},
                                     {"+7", "7"},
                                     {".5", "0.5"},
                                     {"5.", "5"},
                                     {nines(28), nines(28)},
                                     {"39614081257132168796771975167", "39614081257132168796771975167"},
                                     {"39614081257132168796771975168", "error 24"}});
}

TEST(DecimalFromPlainText, RefusesEveryOtherCharacter) {
    for (int code = 1; code < 256; ++code) {
        const char ch = static_cast<char>(code);
        if ((ch >= '0' && ch <= '9') || ch == '.') continue;
        EXPECT_EQ(read(&Imp::fromPlainText, std::string("1") + ch + "2"), "error 20") << code;
    }
    expectRead(&Imp::fromPlainText, {{" 1", "error 20"},
                                     {"1 ", "error 20"},
                                     {"1,5", "error 20"},
                                     {"-", "error 20"},
                                     {".", "error 20"},
                                     {"--1", "error 20"},
                                     {"1.2.3", "error 20"}});
}

TEST(DecimalFromPlainText, UsesTheFirst38CharactersAndChecksThemAll) {
    expectRead(&Imp::fromPlainText, {{zeros(37) + "12", "1"},
                                     {"-" + zeros(36) + "12", "-1"},
                                     {zeros(36) + "1.5", "1"},
                                     {zeros(38) + "a", "error 20"},
                                     {zeros(38) + "-", "error 20"},
                                     {zeros(38) + "..", "error 20"},
                                     {zeros(20) + "." + zeros(20) + ".", "error 20"},
                                     {nines(38), "error 24"}});
}

// --- Writing ----------------------------------------------------------------------------------

TEST(DecimalText, PlainTextHasNoZerosAtItsEnd) {
    EXPECT_EQ(plain("12.500"), "12.5");
    EXPECT_EQ(plain("3.00"), "3");
    EXPECT_EQ(plain("100"), "100");
    EXPECT_EQ(plain("-0.50"), "-0.5");
    EXPECT_EQ(plain("0.00"), "0");
    EXPECT_EQ(plain("0"), "0");
    EXPECT_EQ(plain("-1000.0001"), "-1000.0001");
    EXPECT_EQ(plain("10.0"), "10");
}

TEST(DecimalText, SqlTextHasAllHeldPlaces) {
    EXPECT_EQ(held("12.500"), "12.500");
    EXPECT_EQ(held("5"), "5");
    EXPECT_EQ(held("-0.10"), "-0.10");
    EXPECT_EQ(held("0.00"), "0.00");
}

TEST(DecimalText, FieldTextHasAPlaceAtLeast) {
    EXPECT_EQ(field("5"), "5.0");
    EXPECT_EQ(field("-100"), "-100.0");
    EXPECT_EQ(field("1.250"), "1.250");
    EXPECT_EQ(field("0"), "0.00");
    EXPECT_EQ(field("0.0000"), "0.00");
}

TEST(DecimalText, ExternalTextIsScientificWithAllHeldDigits) {
    const struct {
        const char* number;
        const char* text;
    } cases[] = {
        {"123.45", "1.2345E+002"}, {"100", "1.00E+002"},        {"0.05", "5E-002"},   {"-0.5", "-5E-001"},
        {"0", "0E+000"},           {"0.000", "0E+000"},         {"1", "1E+000"},      {"-1", "-1E+000"},
        {"10", "1.0E+001"},        {"9.99", "9.99E+000"},       {"0.50", "5.0E-001"}, {"0.0120", "1.20E-002"},
        {"100.00", "1.0000E+002"}, {"-1000.5", "-1.0005E+003"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(external(each.number), each.text);
        EXPECT_EQ(read(&Imp::fromExtern, each.text), Decimal96(each.number).isZero() ? "0" : each.number);
    }
}

TEST(DecimalText, TheLongestTextsFit) {
    const Decimal96 whole = -largest();
    const Decimal96 small = -Decimal96::fromMantissa(0, 1, 28);
    const Decimal96 placed = -largest(28);
    EXPECT_EQ(field(whole), "-39614081257132168796771975167.0");  // 32 characters
    EXPECT_EQ(plain(small), "-0." + zeros(27) + "1");
    EXPECT_EQ(held(placed), "-3.9614081257132168796771975167");
    EXPECT_EQ(external(whole), "-3.9614081257132168796771975167E+028");  // 36 characters
    EXPECT_EQ(external(small), "-1E-028");
}

TEST(DecimalText, ARawScaleIsWrittenNormalised) {
    EXPECT_EQ(held(Decimal96::fromMantissa(0, 15, -2)), "1500");
    EXPECT_EQ(external(Decimal96::fromMantissa(0, 15, -2)), "1.500E+003");
    EXPECT_EQ(plain(Decimal96::fromMantissa(0, 15, 29)), "0." + zeros(27) + "2");
}

TEST(DecimalText, WhatNormalisesTo0IsWrittenAs0) {
    const Decimal96 tiny = -Decimal96::fromMantissa(0, 4, 29);
    EXPECT_EQ(field(tiny), "0.00");
    EXPECT_EQ(external(tiny), "0E+000");
    EXPECT_EQ(plain(tiny), "0");
}

TEST(DecimalText, ANegativeScaleThatCannotBeMultipliedOutIsAnOverflow) {
    const Imp record(Decimal96::fromMantissa(0, 1, -30));
    expectError(NkDtErrDezimal, [&] { plain(record.value); });
    expectError(NkDtErrDezimal, [&] { held(record.value); });
    expectError(NkDtErrDezimal, [&] { field(record.value); });
    expectError(NkDtErrDezimal, [&] { external(record.value); });
}

// What an application's own handler lets pass must not turn into a 0 in a file.
TEST(DecimalText, WhatIsNoNumberIsWrittenSoThatNothingReadsIt) {
    setDecimal96OverflowHandler(nullptr);
    const Decimal96 none = largest() + largest();
    Imp::setHandlers();
    EXPECT_EQ(plain(none), "NaN");
    EXPECT_EQ(external(none), "NaN");
    for (const Reader reader : kAllReaders)
        EXPECT_EQ(errorOf([&] { reader("NaN"); }) == nullptr, false);
}

// --- External text ----------------------------------------------------------------------------

TEST(DecimalFromExtern, EveryNumberComesBackWithItsPlaces) {
    forManyNumbers([](const Decimal96& number) {
        if (number.isZero()) return;
        expectSame(Imp::fromExtern(external(number).c_str()), number);
    });
    for (const std::int16_t scale : std::initializer_list<std::int16_t>{0, 1, 14, 27, 28}) {
        for (const Decimal96& number :
             {largest(scale), -largest(scale), Decimal96::fromMantissa(0, 1, scale),
              Decimal96::fromMantissa(0, kAllBits, scale), -Decimal96::fromMantissa(1, 0, scale)})
            expectSame(Imp::fromExtern(external(number).c_str()), number);
    }
}

TEST(DecimalFromExtern, ShiftsThePointOfAnyMantissa) {
    expectRead(&Imp::fromExtern, {{"12.5E+001", "125"},
                                  {"12.5E-001", "1.25"},
                                  {"+5E+000", "5"},
                                  {"5.E+001", "50"},
                                  {".5E+001", "5"},
                                  {"0.5E+1", "5"},
                                  {"5E-12", "0.000000000005"},
                                  {"007E+000", "7"},
                                  {"0E+000", "0"},
                                  {"0E+999", "0"},
                                  {"0.00E+000", "0.00"},
                                  {"-0E+000", "0"},
                                  {std::string(37, '0') + "1E+000", "1"},
                                  {std::string(38, '0') + "1E+000", "error 11"}});
}

TEST(DecimalFromExtern, WithoutAnEIsError18) {
    expectRead(&Imp::fromExtern, {{"", "error 18"}, {"5", "error 18"}, {"1e+000", "error 18"}});
}

TEST(DecimalFromExtern, TheExponentIsASignAndOneToThreeDigits) {
    expectRead(&Imp::fromExtern, {{"1E", "error 18"},
                                  {"1E+", "error 18"},
                                  {"1E000", "error 18"},
                                  {"1E+0000", "error 18"},
                                  {"1E+00a", "error 18"},
                                  {"1E+ 1", "error 18"},
                                  {"1E++1", "error 18"},
                                  {"1E+1E+1", "error 18"},
                                  {"1E+1 ", "error 18"},
                                  {"aE*", "error 18"}});
}

TEST(DecimalFromExtern, TheMantissaIsDigitsWithOnePointAndASignInFront) {
    expectRead(&Imp::fromExtern, {{"E+000", "error 20"},
                                  {"-E+000", "error 20"},
                                  {".E+000", "error 20"},
                                  {"--1E+000", "error 20"},
                                  {"1.5.3E+003", "error 20"},
                                  {"1,5E+000", "error 20"},
                                  {" 1E+000", "error 20"},
                                  {"1-E+000", "error 20"},
                                  {"\xE4"
                                   "E+000",
                                   "error 20"}});
}

TEST(DecimalFromExtern, NumbersThatNoDecimalHoldsAreRefused) {
    expectRead(&Imp::fromExtern, {{"1E+028", "1" + zeros(28)},
                                  {"4E+028", "error 24"},
                                  {"1E+029", "error 11"},
                                  {"1E+999", "error 11"},
                                  {"1E-028", "0." + zeros(27) + "1"},
                                  {"1E-029", "error 11"},
                                  {"1E-999", "error 11"},
                                  {"1." + zeros(29) + "E+000", "error 11"},
                                  {nines(38) + "E+000", "error 11"},
                                  {nines(39) + "E+000", "error 11"},
                                  {nines(100000) + "E-999", "error 11"}});
}

}  // namespace
