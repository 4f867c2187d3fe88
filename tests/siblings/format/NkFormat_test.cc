// What all formats have in common: which settings are accepted, one kind of value each, how a refusal looks.

#include <atomic>
#include <climits>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

static_assert(std::is_trivially_copyable_v<NkFormat>, "a copy costs nothing and owns nothing");
static_assert(!std::is_copy_assignable_v<NkFormat>, "a format never changes");
static_assert(!std::is_default_constructible_v<NkFormat>);

TEST(NkFormat, EnumeratorsHaveTheNumbersOfTheInterface) {
    EXPECT_EQ(FormatModusZiffern, 0);
    EXPECT_EQ(FormatModusWorte, 1);
    EXPECT_EQ(FormatModusBuchstaben, 2);
    EXPECT_EQ(FormatModusKreuz, 3);
    EXPECT_EQ(FormatAuffuellenNicht, 0);
    EXPECT_EQ(FormatAuffuellenAmAnfang, 1);
    EXPECT_EQ(FormatAuffuellenAmEnde, 2);
    EXPECT_EQ(FormatDatumArtTagMonatJahr, 0);
    EXPECT_EQ(FormatDatumArtMonatTagJahr, 1);
    EXPECT_EQ(FormatDatumArtJahrMonatTag, 2);
    EXPECT_EQ(FormatDatumTrennerPunkt, 0);
    EXPECT_EQ(FormatDatumTrennerSchraegstrich, 1);
    EXPECT_EQ(FormatDatumTrennerBindestrich, 2);
    EXPECT_EQ(FormatDatumTrennerLeerzeichen, 3);
    EXPECT_EQ(FormatDatumTrennerOhne, 4);
    EXPECT_EQ(FormatDatumJahrVierstellig, 0);
    EXPECT_EQ(FormatDatumJahrZweistellig, 1);
    EXPECT_EQ(FormatDatumJahrOhne, 2);
    EXPECT_EQ(FormatDatumMonatZahl, 0);
    EXPECT_EQ(FormatDatumMonatKurzname, 1);
    EXPECT_EQ(FormatDatumMonatName, 2);
    EXPECT_EQ(FormatDezimalTrennerPunkt, 0);
    EXPECT_EQ(FormatDezimalTrennerKomma, 1);
    EXPECT_EQ(FormatDezimalTrennerApostroph, 2);
    EXPECT_EQ(FormatDezimalTrennerOhne, 3);
    EXPECT_EQ(FormatTausenderTrennerOhne, 0);
    EXPECT_EQ(FormatTausenderTrennerPunkt, 1);
    EXPECT_EQ(FormatTausenderTrennerKomma, 2);
    EXPECT_EQ(FormatTausenderTrennerLeerzeichen, 3);
    EXPECT_EQ(FormatTausenderTrennerApostroph, 4);
    EXPECT_EQ(FormatVorzeichenOhne, 0);
    EXPECT_EQ(FormatVorzeichenVorn, 1);
    EXPECT_EQ(FormatVorzeichenHinten, 2);
    EXPECT_EQ(FormatVorzeichenNurMinus, 0);
    EXPECT_EQ(FormatVorzeichenPlusUndMinus, 1);
    EXPECT_EQ(FormatZeitArtDauer, 0);
    EXPECT_EQ(FormatZeitArtUhrzeit, 1);
    EXPECT_EQ(FormatZeitDarstellungSekunden, 0);
    EXPECT_EQ(FormatZeitDarstellungStunden, 1);
    EXPECT_EQ(FormatZeitDarstellungHundertstel, 2);
    EXPECT_EQ(FormatZeitDarstellungMinuten, 3);
}

TEST(NkFormat, ConstructorsRaiseForUnknownNumbersOfEveryEnumeration) {
    for (const int bad : {-1, 5, INT_MIN, INT_MAX}) {
        EXPECT_EQ(errorNumberOf([&] { return truthFormat(bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return textFormat(5, 1, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(bad, 0); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, 0, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, 0, 0, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, bad, 0); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, 0, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, 0, 0, 1, bad); }), NkFoFehlerEinstellung)
            << bad;
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(bad, 0); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(0, 0, bad); }), NkFoFehlerEinstellung) << bad;
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(0, 0, 1, bad); }), NkFoFehlerEinstellung) << bad;
    }
}

TEST(NkFormat, EveryKnownNumberOfEveryEnumerationIsAccepted) {
    for (int n = 0; n <= 3; ++n)
        EXPECT_EQ(errorNumberOf([&] { return truthFormat(n); }), 0U) << n;
    for (int n = 0; n <= 2; ++n)
        EXPECT_EQ(errorNumberOf([&] { return textFormat(5, 1, n); }), 0U) << n;
    for (int n = 0; n <= 2; ++n)
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(n, 0, n, n); }), 0U) << n;
    for (int n = 0; n <= 4; ++n)
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, n); }), 0U) << n;
    for (int n = 0; n <= 3; ++n)
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, n, 0); }), 0U) << n;
    for (int n = 0; n <= 4; ++n)
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 0, 3, n); }), 0U) << n;
    for (int n = 0; n <= 2; ++n)
        EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 2, 1, 1, n); }), 0U) << n;
    for (int n = 0; n <= 3; ++n)
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(n % 2, n, n % 3, n % 2); }), 0U) << n;
}

TEST(NkFormat, TheDefaultsOfTheValueClassesAreAccepted) {
    EXPECT_EQ(text(truthFormat(1, 1031).FormatBool(TRUE)), "Ja");
    EXPECT_EQ(text(textFormat(1, kulNkFoValidAll).FormatChar('x')), "x");
    EXPECT_EQ(text(textFormat(0, kulNkFoValidAll).FormatText("any length")), "any length");
    EXPECT_EQ(text(dateFormat(0, 0).FormatDate({2004, 3, 5, 0, 0, 0})), "05.03.2004");
    EXPECT_EQ(text(numberFormat(11, 0, 3, 0).FormatLong(INT_MIN)), "-2147483648");
    EXPECT_EQ(text(numberFormat(6, 0, 3, 0).FormatShort(SHRT_MIN)), "-32768");
    EXPECT_EQ(text(numberFormat(unlimited, 2, 1, 1).FormatDouble(-1234567.891)), "-1.234.567,89");
    EXPECT_EQ(text(numberFormat(unlimited, unlimited, 1, 1).FormatDecimalText("-1234.500")), "-1.234,500");
    EXPECT_EQ(text(timeFormat(0, 3).FormatTime(-1, -30)), "-1:30");
    EXPECT_EQ(text(timeFormat(0, 2).FormatTime(1, 50)), "1,50");
}

TEST(NkFormat, ConstructorsRaiseForUnknownLanguages) {
    for (int modus = 0; modus <= 3; ++modus) {
        for (const USHORT language : std::initializer_list<USHORT>{0, 1030, 1032, 1034, 65535}) {
            EXPECT_EQ(errorNumberOf([&] { return truthFormat(modus, language); }), NkFoFehlerEinstellung)
                << language;
        }
        EXPECT_EQ(errorNumberOf([&] { return truthFormat(modus, 1033); }), 0U);
    }
}

TEST(NkFormat, ConstructorsRaiseForUnknownBitsOfTheValidCharacters) {
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, 16); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, 0x80000000U); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, 15); }), 0U);
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, kulNkFoValidAll); }), 0U);
}

TEST(NkFormat, ConstructorsRaiseForEqualDecimalAndThousandsSeparators) {
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 0, 1); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 2); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 2, 4); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 0, 3, 0); }), 0U);  // none twice is no clash
}

TEST(NkFormat, ConstructorsRaiseForAFillCharacterThatIsADigitOneToNineASignOrASeparator) {
    for (const char fill : std::string("123456789+-")) {
        EXPECT_EQ(errorNumberOf([&] { return textFormat(5, 15, 1, fill); }), NkFoFehlerEinstellung) << fill;
        EXPECT_EQ(errorNumberOf([&] { return dateFormat(0, 0, 0, 0, 1, fill); }), NkFoFehlerEinstellung)
            << fill;
        EXPECT_EQ(errorNumberOf([&] { return timeFormat(0, 3, 1, 0, 7, 2, fill); }), NkFoFehlerEinstellung)
            << fill;
        for (const int fewest : {0, 3}) {  // a filling that is not used makes no difference
            EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 3, 1, 1, 1, 0, fewest, fill); }),
                      NkFoFehlerEinstellung);
            EXPECT_EQ(errorNumberOf([&] { return numberFormat(9, 3, 1, 1, 1, 0, 0, '0', fewest, fill); }),
                      NkFoFehlerEinstellung);
        }
    }
    EXPECT_EQ(errorNumberOf([] { return dateFormat(0, 0, 0, 0, 1, '.'); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return dateFormat(0, 3, 0, 0, 1, ' '); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 3, ','); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 3, '.'); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 3, 1, 0, 3, ' '); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 0, '0', 2, ','); }),
              NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return timeFormat(0, 3, 1, 0, 7, 2, ':'); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return timeFormat(0, 2, 1, 0, 7, 2, ','); }), NkFoFehlerEinstellung);
}

TEST(NkFormat, NulIsNoFillCharacterButMayStandForNone) {
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, 15, 1, '\0'); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 3, 1, 1, 1, 0, 3, '\0'); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return textFormat(5, 15, 0, '\0'); }), 0U);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 3, 1, 1, 1, 0, 0, '\0', 0, '\0'); }), 0U);
}

TEST(NkFormat, ABlankMayStandForNoFillingBesideABlankSeparator) {
    EXPECT_EQ(errorNumberOf([] { return dateFormat(0, 3, 0, 0, 0, ' '); }), 0U);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 3, 1, 0, 0, ' ', 0, ' '); }), 0U);
}

TEST(NkFormat, ConstructorsRaiseForFewestAboveMost) {
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 10); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 9); }), 0U);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 0, '0', 3); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 0, '0', 2); }), 0U);
    EXPECT_EQ(errorNumberOf([] { return timeFormat(0, 3, 1, 0, 5, 6); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return timeFormat(0, 3, 1, 0, 5, 5); }), 0U);
}

TEST(NkFormat, WithoutADecimalSeparatorThereAreNoPlacesToFill) {
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 3, 1, 1, 0, 0, '0', 1); }), NkFoFehlerEinstellung);
}

TEST(NkFormat, ConstructorsRaiseForANegativeFewest) {
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, -1); }), NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return numberFormat(9, 2, 1, 1, 1, 0, 0, '0', INT_MIN); }),
              NkFoFehlerEinstellung);
    EXPECT_EQ(errorNumberOf([] { return timeFormat(0, 3, 1, 0, 5, -1); }), NkFoFehlerEinstellung);
}

/// All operations of a format, in groups of one kind.
std::vector<ULONG> errorNumbersOfAllOperations(const NkFormat& format, int kind) {
    LONG hours = 0;
    LONG sub = 0;
    switch (kind) {
        case 0:
            return {errorNumberOf([&] { return format.FormatText("5"); }),
                    errorNumberOf([&] { return format.ParseText("5"); }),
                    errorNumberOf([&] { return format.FormatChar('5'); }),
                    errorNumberOf([&] { return format.ParseChar("5"); })};
        case 1:
            return {errorNumberOf([&] { return format.FormatBool(1); }),
                    errorNumberOf([&] { return format.ParseBool("1"); })};
        case 2:
            return {errorNumberOf([&] { return format.FormatLong(5); }),
                    errorNumberOf([&] { return format.ParseLong("5"); }),
                    errorNumberOf([&] { return format.FormatShort(5); }),
                    errorNumberOf([&] { return format.ParseShort("5"); }),
                    errorNumberOf([&] { return format.FormatDecimalText("5"); }),
                    errorNumberOf([&] { return format.ParseDecimalText("5"); }),
                    errorNumberOf([&] { return format.FormatDouble(5); }),
                    errorNumberOf([&] { return format.ParseDouble("5"); })};
        case 3:
            return {errorNumberOf([&] {
                        return format.FormatDateTime({2004, 3, 5, 0, 0, 0});
                    }),
                    errorNumberOf([&] { return format.ParseDateTime("05.03.2004"); }), errorNumberOf([&] {
                        return format.FormatDate({2004, 3, 5, 0, 0, 0});
                    }),
                    errorNumberOf([&] { return format.ParseDate("05.03.2004"); })};
        default:
            return {errorNumberOf([&] { return format.FormatTime(5, 0); }),
                    errorNumberOf([&] { return format.ParseTime("5", hours, sub), 0; }),
                    errorNumberOf([&] { return format.GetZeitDarstellung(); })};
    }
}

TEST(NkFormat, ServesTheKindItWasBuiltForAndRaisesForEveryOther) {
    const NkFormat formats[] = {textFormat(0, kulNkFoValidAll), truthFormat(0), germanNumber(),
                                dateFormat(0, 0), timeFormat(0, 3)};
    for (int built = 0; built < 5; ++built) {
        for (int asked = 0; asked < 5; ++asked) {
            const ULONG expected = built == asked ? 0U : ULONG{NkFoFehlerArt};
            for (const ULONG found : errorNumbersOfAllOperations(formats[built], asked)) {
                EXPECT_EQ(found, expected) << "built for " << built << ", asked for " << asked;
            }
        }
    }
}

TEST(NkFormat, TheModeQueryTellsTheNumberOfTheDisplay) {
    for (int display = 0; display <= 3; ++display)
        EXPECT_EQ(timeFormat(0, display).GetZeitDarstellung(), display);
}

TEST(NkFormat, ARefusalNamesTheTextThePositionAndTheReason) {
    EXPECT_EQ(errorTextOf([] { return germanNumber().ParseLong("12a"); }),
              "\"12a\" an Position 3: unerwartetes Zeichen");
    EXPECT_EQ(errorTextOf([] { return germanNumber().ParseLong("  -"); }),
              "\"  -\" an Position 4: Ziffer erwartet");
    EXPECT_EQ(errorTextOf([] { return germanNumber().ParseLong(nullptr); }), "kein Text");
    EXPECT_EQ(errorTextOf([] { return numberFormat(2, 0, 3, 0).FormatLong(-12); }),
              "\"-12\": mehr als 2 Zeichen vor dem Dezimaltrenner");
    EXPECT_EQ(errorTextOf([] {
                  return dateFormat(0, 0).FormatDate({2023, 12, 32, 0, 0, 0});
              }),
              "\"2023-12-32 0:0:0\": Tag nicht im Monat");
    EXPECT_EQ(errorTextOf([] { return dateFormat(0, 0).FormatLong(1); }),
              "Das Format ist f\xFCr Datumsangaben, nicht f\xFCr Zahlen");
    EXPECT_EQ(errorTextOf([] { return truthFormat(9); }), "FormatModus = 9: ung\xFCltige Einstellung");
    EXPECT_EQ(errorTextOf([] { return textFormat(5, 1, 1, '7'); }),
              "F\xFCllzeichen \"7\": ung\xFCltige Einstellung");
}

TEST(NkFormat, ALongTextIsCutInTheRefusalAndControlCharactersBecomeVisible) {
    const std::string longText(5000, '1');
    const std::string found = errorTextOf([&] { return germanNumber().ParseLong(longText.c_str()); });
    EXPECT_EQ(found, "\"" + std::string(100, '1') +
                         "...\" an Position 1: au\xDF"
                         "erhalb des Wertebereichs");
    EXPECT_EQ(errorTextOf([] { return germanNumber().ParseLong("1\n2"); }),
              "\"1.2\" an Position 2: unerwartetes Zeichen");
}

TEST(NkFormat, ATextLongerThanATextCanBeIsRefusedBeforeMemoryIsAskedFor) {
    const NkFormat number = numberFormat(unlimited, unlimited, 1, 1, 1, 0, INT_MAX, '*', INT_MAX, '0');
    EXPECT_EQ(errorNumberOf([&] { return number.FormatLong(1); }), NkFoFehlerWert);
    const NkFormat time = timeFormat(0, 3, 1, 0, unlimited, INT_MAX, '*');
    EXPECT_EQ(errorNumberOf([&] { return time.FormatTime(1, 0); }), NkFoFehlerWert);
    const NkFormat filled = textFormat(4294967295U, kulNkFoValidAll, FormatAuffuellenAmEnde, '*');
    EXPECT_EQ(errorNumberOf([&] { return filled.FormatText("a"); }), NkFoFehlerWert);
}

TEST(NkFormat, AnErrorTellsItsOrigin) {
    const auto error = errorOf([] { return germanNumber().ParseDecimalText("x"); });
    ASSERT_TRUE(error);
    EXPECT_STREQ(error->GetSourceFile(), ".\\NkFormatNumber.cc");
    EXPECT_STREQ(error->GetClassText(), "NkFormat");
    EXPECT_STREQ(error->GetFunctionText(), "ParseDecimalText(LPCTSTR)");
    EXPECT_EQ(error->GetErrorNumber(), NkFoFehlerText);
    EXPECT_EQ(error->GetClassification1(), 1U);
    EXPECT_EQ(error->GetClassification2(), 1U);
    EXPECT_EQ(error->GetException(), nullptr);
    EXPECT_EQ(error->GetTextNumber(), 0U);
    EXPECT_TRUE(error->IsLogged());
}

TEST(NkFormat, ACopyBehavesLikeTheOriginal) {
    const NkFormat original = germanNumber(2, 2);
    const NkFormat copy = original;
    EXPECT_EQ(copy.FormatDecimalText("-1234.5"), original.FormatDecimalText("-1234.5"));
    EXPECT_EQ(copy.ParseLong("1.234"), 1234);
}

TEST(NkFormat, ThreadsShareAFormat) {
    const NkFormat format = germanNumber(2, 2);
    std::atomic<int> wrong = 0;
    const auto work = [&] {
        for (LONG n = 0; n < 500; ++n) {
            if (format.ParseLong(format.FormatLong(n * 37)) != n * 37) ++wrong;
            if (errorNumberOf([&] { return format.ParseLong("12,"); }) != NkFoFehlerText) ++wrong;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
