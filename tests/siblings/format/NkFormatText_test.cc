#include <string>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

constexpr int atStart = FormatAuffuellenAmAnfang;
constexpr int atEnd = FormatAuffuellenAmEnde;

ULONG writingError(const NkFormat& format, std::string_view value) {
    return errorNumberOf([&] { return format.FormatText(value); });
}

ULONG readingError(const NkFormat& format, LPCTSTR pszText) {
    return errorNumberOf([&] { return format.ParseText(pszText); });
}

TEST(NkFormatText, ATextLongerThanTheGreatestLengthIsRefusedBothWays) {
    const NkFormat format = textFormat(3, kulNkFoValidAll);
    EXPECT_EQ(text(format.FormatText("abc")), "abc");
    EXPECT_EQ(text(format.ParseText("abc")), "abc");
    EXPECT_EQ(writingError(format, "abcd"), NkFoFehlerWert);
    EXPECT_EQ(readingError(format, "abcd"), NkFoFehlerText);
    EXPECT_EQ(errorTextOf([&] { return format.ParseText("abcd"); }),
              "\"abcd\" an Position 4: h\xF6"
              "chstens 3 Zeichen");
}

TEST(NkFormatText, LengthZeroIsUnlimited) {
    const NkFormat format = textFormat(0, kulNkFoValidAll);
    const std::string longText(100'000, 'x');
    EXPECT_EQ(text(format.FormatText(longText)), longText);
    EXPECT_EQ(text(format.ParseText(longText.c_str())), longText);
}

TEST(NkFormatText, LengthZeroMeansNoFilling) {
    for (const int side : {atStart, atEnd}) {
        const NkFormat format = textFormat(0, kulNkFoValidAll, side, '*');
        EXPECT_EQ(text(format.FormatText("ab")), "ab");
        EXPECT_EQ(text(format.ParseText("*ab*")), "*ab*");
    }
}

TEST(NkFormatText, FillsUpToTheLengthGivenOnItsSide) {
    EXPECT_EQ(text(textFormat(6, kulNkFoValidAll, atStart, '*').FormatText("ab")), "****ab");
    EXPECT_EQ(text(textFormat(6, kulNkFoValidAll, atEnd, '*').FormatText("ab")), "ab****");
    EXPECT_EQ(text(textFormat(2, kulNkFoValidAll, atEnd, '*').FormatText("ab")), "ab");
    EXPECT_EQ(text(textFormat(6, kulNkFoValidAll).FormatText("ab")), "ab");
}

TEST(NkFormatText, AFilledTextIsReadWithoutItsFillCharactersOnTheFilledSide) {
    EXPECT_EQ(text(textFormat(8, kulNkFoValidAll, atStart, '*').ParseText("**a*b**")), "a*b**");
    EXPECT_EQ(text(textFormat(8, kulNkFoValidAll, atEnd, '*').ParseText("**a*b**")), "**a*b");
    EXPECT_EQ(text(textFormat(8, kulNkFoValidAll, atEnd, ' ').ParseText("ab      ")), "ab");
    EXPECT_EQ(text(textFormat(8, kulNkFoValidAll).ParseText("  ab  ")), "  ab  ");
}

TEST(NkFormatText, ATextAllOfFillReadsAsAnEmptyText) {
    for (const int side : {atStart, atEnd}) {
        EXPECT_EQ(text(textFormat(4, kulNkFoValidAll, side, '*').ParseText("****")), "");
        EXPECT_EQ(text(textFormat(4, kulNkFoValidAll, side, '*').ParseText("*")), "");
        EXPECT_EQ(text(textFormat(4, kulNkFoValidAll, side, '*').FormatText("")), "****");
    }
}

TEST(NkFormatText, ALongerTextIsRefusedFillCharactersIncluded) {
    EXPECT_EQ(readingError(textFormat(3, kulNkFoValidAll, atStart, '*'), "***a"), NkFoFehlerText);
}

TEST(NkFormatText, TheMaskTellsWhichCharactersAreValid) {
    struct {
        ULONG valid;
        LPCTSTR pszGood;
        LPCTSTR pszBad;
    } const cases[] = {
        {kulNkFoValidDigits, "0123456789", "a"},
        {kulNkFoValidDigits, "7", " "},
        {kulNkFoValidDigits, "7", "-"},
        {kulNkFoValidLetters, "azAZ", "1"},
        {kulNkFoValidLetters, "x", " "},
        {kulNkFoValidLetters, "x", "_"},
        {kulNkFoValidBlank, "  ", "a"},
        {kulNkFoValidBlank, " ", "1"},
        {kulNkFoValidBlank, " ", "\xA0"},
        {kulNkFoValidOther, "-_.\t\x80\xA0", " "},
        {kulNkFoValidOther, "%", "a"},
        {kulNkFoValidOther, "%", "1"},
        {0, "", "a"},
    };
    for (const auto& c : cases) {
        const NkFormat format = textFormat(0, c.valid);
        EXPECT_EQ(writingError(format, c.pszGood), 0U) << c.pszGood;
        EXPECT_EQ(readingError(format, c.pszGood), 0U) << c.pszGood;
        EXPECT_EQ(writingError(format, c.pszBad), NkFoFehlerWert) << c.pszBad;
        EXPECT_EQ(readingError(format, c.pszBad), NkFoFehlerText) << c.pszBad;
    }
    EXPECT_EQ(errorTextOf([] { return textFormat(0, kulNkFoValidDigits).ParseText("12a"); }),
              "\"12a\" an Position 3: Buchstabe nicht erlaubt");
}

TEST(NkFormatText, TheLettersAreThoseOfCodePage1252) {
    const std::string others = "\x83\x8A\x8C\x8E\x9A\x9C\x9E\x9F\xAA\xB5\xBA";
    const NkFormat letters = textFormat(0, kulNkFoValidLetters);
    for (int code = 1; code < 256; ++code) {
        const char c = static_cast<char>(code);
        const bool ascii = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        const bool upper = code >= 0xC0 && code != 0xD7 && code != 0xF7;
        const bool letter = ascii || upper || others.find(c) != std::string::npos;
        EXPECT_EQ(writingError(letters, {&c, 1}) == 0, letter) << code;
    }
}

TEST(NkFormatText, TheMaskConcernsTheTextAndNotItsFillCharacters) {
    const NkFormat format = textFormat(5, kulNkFoValidDigits, atStart, '*');
    EXPECT_EQ(text(format.FormatText("42")), "***42");
    EXPECT_EQ(text(format.ParseText("***42")), "42");
    EXPECT_EQ(readingError(format, "*4*2"), NkFoFehlerText);
}

TEST(NkFormatText, ATextEndsAtItsFirstNul) {
    EXPECT_EQ(text(textFormat(2, kulNkFoValidLetters).FormatText(std::string_view("ab\0cdef", 7))), "ab");
}

TEST(NkFormatText, ANullPointerIsRefused) {
    EXPECT_EQ(readingError(textFormat(0, kulNkFoValidAll), nullptr), NkFoFehlerText);
}

TEST(NkFormatChar, ACharacterUsesTheTextSettings) {
    EXPECT_EQ(text(textFormat(1, kulNkFoValidAll).FormatChar('x')), "x");
    EXPECT_EQ(textFormat(1, kulNkFoValidAll).ParseChar("x"), 'x');
    EXPECT_EQ(text(textFormat(3, kulNkFoValidAll, atStart, '*').FormatChar('x')), "**x");
    EXPECT_EQ(textFormat(3, kulNkFoValidAll, atStart, '*').ParseChar("**x"), 'x');
    EXPECT_EQ(errorNumberOf([] { return textFormat(1, kulNkFoValidDigits).FormatChar('x'); }),
              NkFoFehlerWert);
    EXPECT_EQ(errorNumberOf([] { return textFormat(1, kulNkFoValidDigits).ParseChar("x"); }), NkFoFehlerText);
}

TEST(NkFormatChar, ATextAllOfFillReadsAsTheFillCharacterWhereItIsValid) {
    EXPECT_EQ(textFormat(3, kulNkFoValidAll, atStart, '0').ParseChar("000"), '0');
    EXPECT_EQ(textFormat(3, kulNkFoValidLetters, atStart, '0').ParseChar("000"), '\0');
    EXPECT_EQ(textFormat(3, kulNkFoValidLetters, atStart, '0').ParseChar("00x"), 'x');
}

TEST(NkFormatChar, MoreThanOneCharacterIsRefused) {
    EXPECT_EQ(errorNumberOf([] { return textFormat(1, kulNkFoValidAll).ParseChar("xy"); }), NkFoFehlerText);
    EXPECT_EQ(errorNumberOf([] { return textFormat(0, kulNkFoValidAll).ParseChar("xy"); }), NkFoFehlerText);
}

TEST(NkFormatChar, EveryCharacterReadsBack) {
    for (const NkFormat& format :
         {textFormat(1, kulNkFoValidAll), textFormat(4, kulNkFoValidAll, atStart, ' '),
          textFormat(4, kulNkFoValidAll, atEnd, '*'), textFormat(1, 15, atStart, '*')}) {
        for (int code = 0; code < 256; ++code) {
            const char c = static_cast<char>(code);
            EXPECT_EQ(format.ParseChar(format.FormatChar(c)), c) << code;
        }
    }
}

}  // namespace
