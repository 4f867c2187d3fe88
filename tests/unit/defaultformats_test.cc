// What the formats do that a value takes when neither the caller nor the value gives one.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>

#include <initializer_list>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "ValueTesting.h"

namespace {

using namespace valuetest;

template <class Value>
std::string shown(const Value& value) {
    return std::string(value.ConvToOFL());
}

/// The texts are read as this value and shown as @p text.
template <class Value>
void expectRead(std::initializer_list<LPCTSTR> texts, const char* text) {
    for (const LPCTSTR each : texts) {
        SCOPED_TRACE(each);
        Value value(NkDtWmNull);
        const ErrorPtr error = errorOf([&] { value.SetFromOFL(each); });
        EXPECT_EQ(error, nullptr);
        EXPECT_EQ(shown(value), text);
    }
}

template <class Value>
void expectRefused(std::initializer_list<LPCTSTR> texts) {
    for (const LPCTSTR each : texts) {
        SCOPED_TRACE(each);
        Value value(NkDtWmNull);
        expectReplaced(NkFoFehlerText, [&] { value.SetFromOFL(each); });
        EXPECT_EQ(stateOf(value), "null");
    }
}

TEST(DefaultFormatOfALong, TakesElevenCharactersTheSignIncluded) {
    expectRead<NkDtLong>({"12", "00000000012"}, "12");
    expectRead<NkDtLong>({"-12", "-0000000012"}, "-12");
    expectRefused<NkDtLong>({"000000000012", "-00000000012"});
    EXPECT_EQ(shown(NkDtLong(std::numeric_limits<INT>::min())), "-2147483648");
}

TEST(DefaultFormatOfAShort, TakesSixCharactersTheSignIncluded) {
    expectRead<NkDtShort>({"12", "000012"}, "12");
    expectRead<NkDtShort>({"-12", "-00012"}, "-12");
    expectRefused<NkDtShort>({"0000012", "-000012"});
    EXPECT_EQ(shown(NkDtShort(-32768)), "-32768");
}

TEST(DefaultFormatOfAWholeNumber, HasNoSeparatorsNoFillAndAMinusInFrontAlone) {
    expectRefused<NkDtLong>({"1.000", "1,000", "1 000", "1'000", "12,5", "12.5", "12,0", "+12", "12-"});
    expectRefused<NkDtShort>({"1.000", "1,000", "1 000", "1'000", "12,5", "12.5", "12,0", "+12", "12-"});
    EXPECT_EQ(shown(NkDtLong(1234567)), "1234567");
    EXPECT_EQ(shown(NkDtLong(0)), "0");
    EXPECT_EQ(shown(NkDtShort(-1000)), "-1000");
    EXPECT_EQ(shown(NkDtShort(0)), "0");
}

TEST(DefaultFormatOfADouble, ShowsTwoPlacesAtMostAfterACommaAndThousandsWithPoints) {
    EXPECT_EQ(shown(NkDtDouble(1234567.125)), "1.234.567,13");
    EXPECT_EQ(shown(NkDtDouble(-1234.5)), "-1.234,5");
    EXPECT_EQ(shown(NkDtDouble(2.0)), "2");
    expectRead<NkDtDouble>({"1234,5", "1.234,5", "1.234,50", "00001234,5"}, "1.234,5");
    expectRefused<NkDtDouble>({"1234.5", "1.234,500", "0,125", "+1", "1-"});
}

TEST(DefaultFormatOfAText, TakesEveryCharacterAndAnyLength) {
    std::string every;
    for (int code = 1; code < 256; ++code)
        every += static_cast<char>(code);
    for (const std::string& text : {every, std::string(100000, 'x'), std::string("  x  ")}) {
        NkDtString value(NkDtWmNull);
        value.SetFromOFL(text.c_str());
        EXPECT_EQ(std::string(value.GetValue()), text);
        EXPECT_EQ(shown(value), text);
    }
}

TEST(DefaultFormatOfACharacter, TakesEveryCharacterAndNoSecondOne) {
    for (int code = 1; code < 256; ++code) {
        const TCHAR text[] = {static_cast<char>(code), '\0'};
        NkDtChar value(NkDtWmNull);
        value.SetFromOFL(text);
        EXPECT_EQ(value.GetValue(), text[0]) << code;
        EXPECT_EQ(shown(value), text);
    }
    expectRefused<NkDtChar>({"xy", "x ", " x"});
}

TEST(DefaultFormatOfATruthValue, HasTheGermanWordsWhole) {
    expectRead<NkDtBool>({"Ja", "ja", "JA"}, "Ja");
    expectRead<NkDtBool>({"Nein", "nein", "NEIN"}, "Nein");
    expectRefused<NkDtBool>({"J", "1", "X", "Yes"});
}

TEST(DefaultFormatOfADate, HasTwoDigitsForDayAndMonthFourForTheYearAndPoints) {
    EXPECT_EQ(shown(NkDtDateZp("05.03.2004")), "05.03.2004");
    expectRead<NkDtDateZp>({"05.03.2004", "5.3.2004"}, "05.03.2004");
    expectRefused<NkDtDateZp>({"05/03/2004", "2004.03.05", "05-03-2004", "05032004"});
}

TEST(DefaultFormatsOfADuration, TakeSevenDigitsOfHoursInBothModes) {
    expectRead<NkDtTime>({"8:30", "08:30", "0000008:30"}, "8:30");
    expectRefused<NkDtTime>({"00000008:30", "+8:30", "8:30-", "1.000:00"});
    NkDtTime hundredths("8,50", NkDtTime::Hundredths);
    EXPECT_EQ(shown(hundredths), "8,50");
    hundredths.SetFromOFL("0000009,25");
    EXPECT_EQ(shown(hundredths), "9,25");
    expectReplaced(NkFoFehlerText, [&] { hundredths.SetFromOFL("00000009,25"); });
    EXPECT_EQ(shown(hundredths), "9,25");
}

}  // namespace
