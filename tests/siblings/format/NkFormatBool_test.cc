#include <string>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

ULONG readingError(const NkFormat& format, LPCTSTR pszText) {
    return errorNumberOf([&] { return format.ParseBool(pszText); });
}

TEST(NkFormatBool, EveryModeWritesItsTexts) {
    struct {
        int modus;
        USHORT language;
        LPCTSTR pszTrue;
        LPCTSTR pszFalse;
    } const cases[] = {
        {0, 1031, "1", "0"}, {1, 1031, "Ja", "Nein"}, {2, 1031, "J", "N"}, {3, 1031, "X", " "},
        {0, 1033, "1", "0"}, {1, 1033, "Yes", "No"},  {2, 1033, "Y", "N"}, {3, 1033, "X", " "},
    };
    for (const auto& c : cases) {
        const NkFormat format = truthFormat(c.modus, c.language);
        EXPECT_EQ(text(format.FormatBool(TRUE)), c.pszTrue);
        EXPECT_EQ(text(format.FormatBool(FALSE)), c.pszFalse);
        EXPECT_EQ(format.ParseBool(c.pszTrue), TRUE) << c.pszTrue;
        EXPECT_EQ(format.ParseBool(c.pszFalse), FALSE) << c.pszFalse;
    }
}

TEST(NkFormatBool, EveryNumberButZeroIsTrue) {
    for (const BOOL value : {1, 2, -1, 0x10000})
        EXPECT_EQ(text(truthFormat(1).FormatBool(value)), "Ja");
}

TEST(NkFormatBool, TruthWordsAreReadInAnyLetterCase) {
    for (const LPCTSTR pszText : {"ja", "JA", "jA", "Ja"})
        EXPECT_EQ(truthFormat(1).ParseBool(pszText), TRUE);
    for (const LPCTSTR pszText : {"nein", "NEIN", "nEiN"})
        EXPECT_EQ(truthFormat(1).ParseBool(pszText), FALSE);
    EXPECT_EQ(truthFormat(2).ParseBool("j"), TRUE);
    EXPECT_EQ(truthFormat(2, 1033).ParseBool("y"), TRUE);
    EXPECT_EQ(truthFormat(3).ParseBool("x"), TRUE);
}

TEST(NkFormatBool, OnlyWhatTheFormatWritesIsRead) {
    for (const LPCTSTR pszText : {"1", "J", "Yes", "Jaa", "J a", "wahr", "Ja!", "X"}) {
        EXPECT_EQ(readingError(truthFormat(1), pszText), NkFoFehlerText) << pszText;
    }
    for (const LPCTSTR pszText : {"2", "01", "10", "Ja", "-1"}) {
        EXPECT_EQ(readingError(truthFormat(0), pszText), NkFoFehlerText) << pszText;
    }
    for (const LPCTSTR pszText : {"Ja", "Y", "0"}) {
        EXPECT_EQ(readingError(truthFormat(2), pszText), NkFoFehlerText) << pszText;
    }
    for (const LPCTSTR pszText : {"XX", "0", "-"}) {
        EXPECT_EQ(readingError(truthFormat(3), pszText), NkFoFehlerText) << pszText;
    }
}

TEST(NkFormatBool, BlanksMayStandAtTheEndsAndAloneOnlyForTheCross) {
    EXPECT_EQ(truthFormat(1).ParseBool("  Ja "), TRUE);
    EXPECT_EQ(truthFormat(3).ParseBool(" X "), TRUE);
    EXPECT_EQ(truthFormat(3).ParseBool("   "), FALSE);
    for (const int modus : {0, 1, 2})
        EXPECT_EQ(readingError(truthFormat(modus), " "), NkFoFehlerText) << modus;
}

TEST(NkFormatBool, AnEmptyTextAndANullPointerAreRefused) {
    for (const int modus : {0, 1, 2, 3}) {
        EXPECT_EQ(readingError(truthFormat(modus), ""), NkFoFehlerText) << modus;
        EXPECT_EQ(readingError(truthFormat(modus), nullptr), NkFoFehlerText) << modus;
    }
}

TEST(NkFormatBool, TheWordsAreThoseOfTheLanguageGivenWhateverThePublisherSpeaks) {
    const PublishedLanguage english(1033);
    EXPECT_EQ(text(truthFormat(1, 1031).FormatBool(TRUE)), "Ja");
    const PublishedLanguage none(0);
    EXPECT_EQ(text(truthFormat(1, 1033).FormatBool(FALSE)), "No");
}

}  // namespace
