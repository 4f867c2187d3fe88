#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

std::string read(const NkFormat& format, LPCTSTR pszText) {
    return text(format.ParseDecimalText(pszText));
}

std::string written(const NkFormat& format, std::string_view plain) {
    return text(format.FormatDecimalText(plain));
}

bool refuses(const NkFormat& format, LPCTSTR pszText) {
    return errorNumberOf([&] { return format.ParseDecimalText(pszText); }) == NkFoFehlerText;
}

ULONG writingError(const NkFormat& format, std::string_view plain) {
    return errorNumberOf([&] { return format.FormatDecimalText(plain); });
}

// ---- Reading is strict, because it is money ----

TEST(NkFormatNumberReading, ThousandsSeparatorsStandEveryThreeDigitsOrNotAtAll) {
    const NkFormat format = germanNumber();
    EXPECT_EQ(read(format, "1234567"), "1234567");
    EXPECT_EQ(read(format, "1.234.567"), "1234567");
    EXPECT_EQ(read(format, "12.345"), "12345");
    EXPECT_EQ(read(format, "1.234,5678"), "1234.5678");
    for (const LPCTSTR pszText : {"1.23", "12.34", "1.2345", "1234.567", "1.234567", "1234567.890", "1..234",
                                  ".123", "1.234.", "1.", "1.234.56", "1,234.567", "1.23 4"}) {
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
    }
    EXPECT_TRUE(refuses(numberFormat(unlimited, 2, 1, 0), "1.234"));
}

TEST(NkFormatNumberReading, EverySeparatorOfTheSettingsIsReadAndNoOther) {
    const std::string decimals = ".,'";
    const std::string thousands = ".,  '";  // by number, 1 to 4
    for (int d = 0; d < 3; ++d) {
        for (int t = 0; t <= 4; ++t) {
            const char decimal = decimals[static_cast<std::size_t>(d)];
            const char separator =
                t == 0 ? '\0' : std::string(".,").append(" '")[static_cast<std::size_t>(t - 1)];
            if (decimal == separator) continue;
            const NkFormat format = numberFormat(unlimited, 2, d, t);
            for (const char used : std::string(".,' ")) {
                const std::string grouped = std::string("1") + used + "234" + decimal + "5";
                EXPECT_EQ(refuses(format, grouped.c_str()), used != separator)
                    << grouped << " under " << d << t;
                const std::string places = std::string("1") + used + "5";
                EXPECT_EQ(refuses(format, places.c_str()), used != decimal) << places << " under " << d << t;
            }
        }
    }
}

TEST(NkFormatNumberReading, OneDecimalSeparatorWithDigitsOnBothSides) {
    const NkFormat format = germanNumber();
    EXPECT_EQ(read(format, "5,5"), "5.5");
    for (const LPCTSTR pszText : {"5,", ",5", ",", "5,,5", "5,5,5", "-,5", "1.234,"}) {
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
    }
}

TEST(NkFormatNumberReading, OneSignInItsPlace) {
    const NkFormat front = germanNumber();
    const NkFormat behind = numberFormat(unlimited, unlimited, 1, 1, FormatVorzeichenHinten);
    const NkFormat none = numberFormat(unlimited, unlimited, 1, 1, FormatVorzeichenOhne);
    EXPECT_EQ(read(front, "-5"), "-5");
    EXPECT_EQ(read(behind, "5-"), "-5");
    EXPECT_EQ(read(none, "5"), "5");
    for (const LPCTSTR pszText : {"5-", "--5", "-5-", "- 5", "-", "1-2"})
        EXPECT_TRUE(refuses(front, pszText)) << pszText;
    for (const LPCTSTR pszText : {"-5", "5--", "-5-", "5 -", "-", "1-2"})
        EXPECT_TRUE(refuses(behind, pszText)) << pszText;
    for (const LPCTSTR pszText : {"-5", "5-", "+5", "5+"})
        EXPECT_TRUE(refuses(none, pszText)) << pszText;
}

TEST(NkFormatNumberReading, PlusOnlyWhereTheFormatShowsIt) {
    EXPECT_TRUE(refuses(germanNumber(), "+5"));
    EXPECT_EQ(read(numberFormat(9, 2, 1, 1, FormatVorzeichenVorn, FormatVorzeichenPlusUndMinus), "+5"), "5");
    EXPECT_EQ(read(numberFormat(9, 2, 1, 1, FormatVorzeichenHinten, FormatVorzeichenPlusUndMinus), "5+"),
              "5");
    EXPECT_TRUE(refuses(numberFormat(9, 2, 1, 1, FormatVorzeichenHinten), "5+"));
    EXPECT_TRUE(refuses(numberFormat(9, 2, 1, 1, FormatVorzeichenOhne, FormatVorzeichenPlusUndMinus), "+5"));
}

TEST(NkFormatNumberReading, ANonNegativeNumberMayBeReadUnsigned) {
    EXPECT_EQ(read(numberFormat(9, 2, 1, 1, FormatVorzeichenVorn, FormatVorzeichenPlusUndMinus), "5"), "5");
    EXPECT_EQ(read(numberFormat(9, 2, 1, 1, FormatVorzeichenHinten, FormatVorzeichenPlusUndMinus), "0"), "0");
}

TEST(NkFormatNumberReading, BlanksOnlyAtTheEnds) {
    const NkFormat format = germanNumber();
    EXPECT_EQ(read(format, "  1.234,5  "), "1234.5");
    for (const LPCTSTR pszText : {"1 234", "- 5", "5 ,5", "5, 5", "\t5", "5\n",
                                  "\xA0"
                                  "5"}) {
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
    }
}

TEST(NkFormatNumberReading, NothingIsLeftOver) {
    for (const LPCTSTR pszText :
         {"12a", "a12", "1e5", "0x10", "12 3", "5%", "5 EUR", "inf", "nan", "1_000"}) {
        EXPECT_TRUE(refuses(germanNumber(), pszText)) << pszText;
    }
}

TEST(NkFormatNumberReading, BlanksOnlyAndTheEmptyTextAreRefused) {
    for (const LPCTSTR pszText : {"", " ", "     "}) {
        EXPECT_TRUE(refuses(germanNumber(), pszText));
        EXPECT_EQ(errorNumberOf([&] { return germanNumber().ParseLong(pszText); }), NkFoFehlerText);
        EXPECT_EQ(errorNumberOf([&] { return germanNumber().ParseDouble(pszText); }), NkFoFehlerText);
    }
    EXPECT_TRUE(refuses(germanNumber(), nullptr));
}

TEST(NkFormatNumberReading, LeadingZerosAreReadAndCount) {
    EXPECT_EQ(read(germanNumber(), "000.012,50"), "12.50");
    EXPECT_EQ(read(germanNumber(), "0000"), "0");
    const NkFormat four = numberFormat(4, 2, 1, 1);
    EXPECT_EQ(read(four, "0012"), "12");
    EXPECT_TRUE(refuses(four, "00012"));
}

TEST(NkFormatNumberReading, AnEnglishAmountUnderGermanSeparatorsIsRefused) {
    const NkFormat format = germanNumber(2);
    EXPECT_TRUE(refuses(format, "1234.56"));
    EXPECT_TRUE(refuses(format, "1,234.56"));
    EXPECT_EQ(errorNumberOf([&] { return format.ParseDouble("1234.56"); }), NkFoFehlerText);
    EXPECT_EQ(errorNumberOf([&] { return format.ParseLong("1234.56"); }), NkFoFehlerText);
}

TEST(NkFormatNumberReading, ANumberOutsideTheNativeTypeIsRefused) {
    const NkFormat format = germanNumber();
    EXPECT_EQ(format.ParseLong("2147483647"), 2147483647);
    EXPECT_EQ(format.ParseLong("-2.147.483.648"), std::numeric_limits<LONG>::min());
    EXPECT_EQ(format.ParseShort("32767"), 32767);
    EXPECT_EQ(format.ParseShort("-32.768"), -32768);
    for (const LPCTSTR pszText : {"2147483648", "-2147483649", "99999999999999999999999999"}) {
        EXPECT_EQ(errorNumberOf([&] { return format.ParseLong(pszText); }), NkFoFehlerText) << pszText;
    }
    for (const LPCTSTR pszText : {"32768", "-32769", "2147483647"}) {
        EXPECT_EQ(errorNumberOf([&] { return format.ParseShort(pszText); }), NkFoFehlerText) << pszText;
    }
    const std::string tooLarge(310, '9');
    const std::string tooSmall = "0," + std::string(330, '0') + "1";
    EXPECT_EQ(errorNumberOf([&] { return format.ParseDouble(tooLarge.c_str()); }), NkFoFehlerText);
    EXPECT_EQ(errorNumberOf([&] { return format.ParseDouble(tooSmall.c_str()); }), NkFoFehlerText);
}

TEST(NkFormatNumberReading, AWholeNumberMayHavePlacesOfZeros) {
    EXPECT_EQ(germanNumber(2).ParseLong("1.234,00"), 1234);
    EXPECT_EQ(errorNumberOf([] { return germanNumber(2).ParseLong("1,50"); }), NkFoFehlerText);
}

TEST(NkFormatNumberReading, MoreCharactersOrPlacesThanTheMostAreRefused) {
    const NkFormat format = numberFormat(4, 2, 1, 1);
    EXPECT_EQ(read(format, "1.234,50"), "1234.50");
    EXPECT_TRUE(refuses(format, "12.345"));
    EXPECT_TRUE(refuses(format, "-1.234"));  // the sign counts
    EXPECT_TRUE(refuses(format, "1,505"));
    EXPECT_TRUE(refuses(format, "1,500"));
    EXPECT_EQ(read(numberFormat(4, 2, 1, 1, FormatVorzeichenHinten), "1.234-"), "-1234");
    EXPECT_TRUE(refuses(numberFormat(4, 2, 3, 0), "1,5"));  // no decimal separator, no places
}

TEST(NkFormatNumberReading, ANegativeZeroIsZero) {
    EXPECT_EQ(read(germanNumber(), "-0,00"), "0.00");
    EXPECT_EQ(germanNumber().ParseLong("-0"), 0);
    EXPECT_FALSE(std::signbit(germanNumber().ParseDouble("-0,00")));
}

TEST(NkFormatNumberReading, HeldPlacesAreRead) {
    EXPECT_EQ(read(germanNumber(), "1,50"), "1.50");
    EXPECT_EQ(read(germanNumber(), "-0,0500"), "-0.0500");
    EXPECT_EQ(read(germanNumber(), "7,0000000000000000000000000001"), "7.0000000000000000000000000001");
}

TEST(NkFormatNumberReading, TheDoubleIsTheNearest) {
    EXPECT_EQ(germanNumber().ParseDouble("0,1"), 0.1);
    EXPECT_EQ(germanNumber().ParseDouble("-1.234,5678"), -1234.5678);
    EXPECT_EQ(germanNumber().ParseDouble("9007199254740993"), 9007199254740992.0);
    const std::string padded = std::string(2000, '0') + "1," + std::string(2000, '0');
    EXPECT_EQ(germanNumber().ParseDouble(padded.c_str()), 1.0);
}

// ---- Writing ----

TEST(NkFormatNumberWriting, FillZeroStandsBehindTheSignAndIsGrouped) {
    const NkFormat format = numberFormat(9, 2, 1, 1, 1, 0, 6, '0');
    EXPECT_EQ(written(format, "-1234"), "-001.234");
    EXPECT_EQ(written(format, "5"), "000.005");
    EXPECT_EQ(written(format, "1234567"), "1.234.567");
}

TEST(NkFormatNumberWriting, AnotherFillStandsOutermostWithGroupingUntouched) {
    const NkFormat format = numberFormat(9, 2, 1, 1, 1, 0, 6, '*');
    EXPECT_EQ(written(format, "-1234"), "**-1.234");
    EXPECT_EQ(written(format, "5"), "*****5");
    EXPECT_EQ(read(format, "**-1.234"), "-1234");
    EXPECT_TRUE(refuses(format, "-**1.234"));
}

TEST(NkFormatNumberWriting, TheCountIsOfDigits) {
    const NkFormat format = numberFormat(9, 2, 1, 1, 1, 1, 4, '*');
    EXPECT_EQ(written(format, "1234"), "+1.234");
    EXPECT_EQ(written(format, "123"), "*+123");
}

TEST(NkFormatNumberWriting, AtLeastOneDigitStandsBeforeTheSeparator) {
    EXPECT_EQ(written(germanNumber(), ".5"), "0,5");
    EXPECT_EQ(text(germanNumber().FormatDouble(0.25)), "0,25");
    EXPECT_EQ(written(germanNumber(), "0"), "0");
}

TEST(NkFormatNumberWriting, HeldPlacesStayCutByTheMostPaddedToTheFewest) {
    EXPECT_EQ(written(germanNumber(), "1.50"), "1,50");
    EXPECT_EQ(written(germanNumber(1), "1.50"), "1,5");
    EXPECT_EQ(written(germanNumber(4, 3), "1.5"), "1,500");
    EXPECT_EQ(written(germanNumber(4, 2), "7"), "7,00");
    EXPECT_EQ(text(germanNumber(2, 2).FormatLong(7)), "7,00");
    EXPECT_EQ(text(germanNumber(2, 0).FormatLong(7)), "7");
}

TEST(NkFormatNumberWriting, MorePlacesAreRoundedHalfAwayFromZero) {
    const NkFormat format = germanNumber(2);
    EXPECT_EQ(written(format, "0.005"), "0,01");
    EXPECT_EQ(written(format, "-0.005"), "-0,01");
    EXPECT_EQ(written(format, "0.0049999999999"), "0,00");
    EXPECT_EQ(written(format, "9.995"), "10,00");
    EXPECT_EQ(written(format, "-999.995"), "-1.000,00");
    EXPECT_EQ(written(germanNumber(0), "0.5"), "1");
    EXPECT_EQ(written(germanNumber(0), "-99.5"), "-100");
    EXPECT_EQ(written(numberFormat(9, 2, 3, 0), "12.5"), "13");
}

TEST(NkFormatNumberWriting, AFillBehindOtherThanZeroTakesThePlaceOfTheSeparatorToo) {
    const NkFormat format = numberFormat(9, 4, 1, 1, 1, 0, 0, '0', 4, '*');
    EXPECT_EQ(written(format, "5"), "5*****");
    EXPECT_EQ(written(format, "5.5"), "5,5***");
    EXPECT_EQ(read(format, "5*****"), "5");
    EXPECT_EQ(read(format, "5,5***"), "5.5");
    EXPECT_TRUE(refuses(format, "5,****"));
    EXPECT_TRUE(refuses(format, "5******"));
    EXPECT_TRUE(refuses(format, "5,5****"));
    EXPECT_TRUE(refuses(format, "5*5"));
}

TEST(NkFormatNumberWriting, ASignBehindStandsAfterTheFill) {
    const NkFormat format = numberFormat(9, 4, 1, 1, FormatVorzeichenHinten, 0, 0, '0', 4, '*');
    EXPECT_EQ(written(format, "-5.5"), "5,5***-");
    EXPECT_EQ(read(format, "5,5***-"), "-5.5");
    const NkFormat blanks = numberFormat(9, 4, 1, 1, FormatVorzeichenHinten, 0, 5, ' ', 3, ' ');
    EXPECT_EQ(written(blanks, "-5"), "    5    -");
    EXPECT_EQ(read(blanks, "    5    -"), "-5");
}

TEST(NkFormatNumberWriting, WhatIsZeroAfterRoundingHasNoSign) {
    const NkFormat both = numberFormat(9, 2, 1, 1, 1, FormatVorzeichenPlusUndMinus);
    EXPECT_EQ(written(both, "-0.004"), "0,00");
    EXPECT_EQ(written(both, "0.004"), "0,00");
    EXPECT_EQ(written(both, "-0"), "0");
    EXPECT_EQ(text(both.FormatDouble(-0.0)), "0");
    EXPECT_EQ(text(both.FormatLong(0)), "0");
    EXPECT_EQ(written(numberFormat(9, 2, 1, 1, FormatVorzeichenOhne), "-0.004"), "0,00");
}

TEST(NkFormatNumberWriting, SignsStandWhereTheSettingsWantThem) {
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 1, 0).FormatLong(5)), "5");
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 1, 1).FormatLong(5)), "+5");
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 1, 1).FormatLong(-5)), "-5");
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 2, 1).FormatLong(5)), "5+");
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 2, 0).FormatLong(-5)), "5-");
    EXPECT_EQ(text(numberFormat(9, 0, 3, 0, 0, 1).FormatLong(5)), "5");
}

TEST(NkFormatNumberWriting, WithoutSignsANegativeNumberIsRefused) {
    const NkFormat format = numberFormat(9, 2, 1, 1, FormatVorzeichenOhne);
    EXPECT_EQ(errorNumberOf([&] { return format.FormatLong(-5); }), NkFoFehlerWert);
    EXPECT_EQ(errorNumberOf([&] { return format.FormatDouble(-5); }), NkFoFehlerWert);
    EXPECT_EQ(writingError(format, "-0.01"), NkFoFehlerWert);
}

TEST(NkFormatNumberWriting, MoreCharactersBeforeTheSeparatorThanTheMostAreRefused) {
    const NkFormat format = numberFormat(4, 2, 1, 1);
    EXPECT_EQ(written(format, "1234.5"), "1.234,5");
    EXPECT_EQ(writingError(format, "12345"), NkFoFehlerWert);
    EXPECT_EQ(writingError(format, "-1234"), NkFoFehlerWert);     // the sign counts
    EXPECT_EQ(writingError(format, "9999.995"), NkFoFehlerWert);  // the rounded number counts
    EXPECT_EQ(written(numberFormat(4, 2, 1, 1, 2), "-1234"),
              "1.234-");  // a sign behind does not stand before
}

TEST(NkFormatNumberWriting, ADoubleIsWrittenFromItsShortestDecimal) {
    EXPECT_EQ(text(germanNumber(2).FormatDouble(1.005)), "1,01");
    EXPECT_EQ(text(germanNumber(2).FormatDouble(2.675)), "2,68");
    EXPECT_EQ(text(germanNumber(2).FormatDouble(0.125)), "0,13");
    EXPECT_EQ(text(germanNumber().FormatDouble(0.1)), "0,1");
    EXPECT_EQ(text(germanNumber().FormatDouble(1e23)), "100.000.000.000.000.000.000.000");
    EXPECT_EQ(text(germanNumber().FormatDouble(5e-324)), "0," + std::string(323, '0') + "5");
    EXPECT_EQ(text(numberFormat(unlimited, 2, 1, 0).FormatDouble(std::numeric_limits<double>::max())),
              "17976931348623157" + std::string(292, '0'));
}

TEST(NkFormatNumberWriting, NanAndInfinityAreRefused) {
    using Limits = std::numeric_limits<double>;
    for (const double value : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
        EXPECT_EQ(errorNumberOf([&] { return germanNumber().FormatDouble(value); }), NkFoFehlerWert);
    }
}

TEST(NkFormatNumberWriting, WhatIsNoPlainDecimalTextIsRefused) {
    for (const char* plain : {"", "-", ".", "-.", "+5", "1,5", "1.2.3", "12a", " 5", "5 ", "--5", "1e5"}) {
        EXPECT_EQ(writingError(germanNumber(), plain), NkFoFehlerWert) << plain;
    }
    EXPECT_EQ(written(germanNumber(), "-0012.50"), "-12,50");
}

TEST(NkFormatNumberWriting, TextsOfAnyLengthAreServed) {
    const std::string nines(5000, '9');
    const NkFormat format = numberFormat(unlimited, 3, 0, 0);
    EXPECT_EQ(written(format, nines + ".9996"), "1" + std::string(5000, '0') + ".000");
    EXPECT_EQ(read(format, nines.c_str()), nines);
    const NkFormat wide = numberFormat(unlimited, unlimited, 0, 0, 1, 0, 3000, '0', 3000, '0');
    EXPECT_EQ(read(wide, text(wide.FormatLong(-7)).c_str()), "-7." + std::string(3000, '0'));
    EXPECT_EQ(wide.ParseLong(wide.FormatLong(-7)), -7);
    EXPECT_EQ(wide.ParseDouble(wide.FormatDouble(-7.25)), -7.25);
}

TEST(NkFormatNumberWriting, TheResultIsAllocatedOnceAndHoldsExactlyItsText) {
    const CString result = germanNumber(2, 2).FormatDecimalText("-1234567.5");
    EXPECT_EQ(result.GetLength(), 13);
    EXPECT_EQ(result.GetAllocLength(), 13);
}

}  // namespace
