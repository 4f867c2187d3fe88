#include <string>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

constexpr NkFoDateTime fifthOfMarch = {2004, 3, 5, 0, 0, 0};
constexpr NkFoDateTime afternoon = {2004, 3, 5, 14, 7, 9};

ULONG readingError(const NkFormat& format, LPCTSTR pszText) {
    return errorNumberOf([&] { return format.ParseDateTime(pszText); });
}

bool refuses(const NkFormat& format, LPCTSTR pszText) {
    return readingError(format, pszText) == NkFoFehlerText;
}

ULONG writingError(const NkFoDateTime& value) {
    return errorNumberOf([&] { return dateFormat(0, 0).FormatDateTime(value); });
}

TEST(NkFormatDate, OrdersSeparatorsAndYears) {
    struct {
        int order, separator, year;
        LPCTSTR pszText;
    } const cases[] = {
        {0, 0, 0, "05.03.2004"}, {1, 0, 0, "03.05.2004"}, {2, 0, 0, "2004.03.05"}, {0, 1, 0, "05/03/2004"},
        {2, 2, 0, "2004-03-05"}, {0, 3, 0, "05 03 2004"}, {0, 4, 0, "05032004"},   {2, 4, 0, "20040305"},
        {0, 0, 1, "05.03.04"},   {2, 2, 1, "04-03-05"},   {0, 4, 1, "050304"},     {1, 1, 1, "03/05/04"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(text(dateFormat(c.order, c.separator, c.year).FormatDate(fifthOfMarch)), c.pszText);
        EXPECT_EQ(dateFormat(c.order, c.separator, c.year).ParseDate(c.pszText), fifthOfMarch) << c.pszText;
    }
}

TEST(NkFormatDate, NoYearDropsItsSeparatorButThePointStays) {
    EXPECT_EQ(text(dateFormat(0, 0, 2).FormatDate(fifthOfMarch)), "05.03.");
    EXPECT_EQ(text(dateFormat(1, 0, 2).FormatDate(fifthOfMarch)), "03.05.");
    EXPECT_EQ(text(dateFormat(2, 0, 2).FormatDate(fifthOfMarch)),
              "03.05");  // the year's point stood in front
    EXPECT_EQ(text(dateFormat(0, 1, 2).FormatDate(fifthOfMarch)), "05/03");
    EXPECT_EQ(text(dateFormat(2, 2, 2).FormatDate(fifthOfMarch)), "03-05");
    EXPECT_EQ(text(dateFormat(0, 4, 2).FormatDate(fifthOfMarch)), "0503");
    EXPECT_TRUE(refuses(dateFormat(0, 0, 2), "05.03"));
    EXPECT_TRUE(refuses(dateFormat(0, 0, 2), "05.03.2004"));
}

TEST(NkFormatDate, TheFillMakesDayAndMonthTwoCharacters) {
    EXPECT_EQ(text(dateFormat(0, 0, 0, 0, 1, '*').FormatDate(fifthOfMarch)), "*5.*3.2004");
    EXPECT_EQ(text(dateFormat(0, 0, 0, 0, 1, ' ').FormatDate(fifthOfMarch)), " 5. 3.2004");
    EXPECT_EQ(text(dateFormat(0, 0, 0, 0, 0, '0').FormatDate(fifthOfMarch)), "5.3.2004");
    EXPECT_EQ(text(dateFormat(0, 0, 0, 0, 1, '*').FormatDate({2004, 12, 25, 0, 0, 0})), "25.12.2004");
}

TEST(NkFormatDate, WithSeparatorsDayAndMonthHaveOneOrTwoCharactersAndAFillCountsAsBlank) {
    const NkFormat zeros = dateFormat(0, 0);
    for (const LPCTSTR pszText : {"5.3.2004", "05.3.2004", "5.03.2004", " 05.03.2004 "}) {
        EXPECT_EQ(zeros.ParseDateTime(pszText), fifthOfMarch) << pszText;
    }
    const NkFormat stars = dateFormat(0, 0, 0, 0, 1, '*');
    for (const LPCTSTR pszText : {"*5.*3.2004", "5. 3.2004", "05.*3.2004"}) {
        EXPECT_EQ(stars.ParseDateTime(pszText), fifthOfMarch) << pszText;
    }
    for (const LPCTSTR pszText :
         {"005.03.2004", "05.003.2004", "**.03.2004", "*05.03.2004", ".03.2004", "05..2004"}) {
        EXPECT_TRUE(refuses(stars, pszText)) << pszText;
    }
    EXPECT_TRUE(refuses(zeros, "*5.03.2004"));
    EXPECT_TRUE(refuses(zeros, "5. 3.2004"));
    EXPECT_TRUE(
        refuses(dateFormat(0, 3, 0, 0, 1, '*'), "5  3 2004"));  // a blank that separates fills nothing
}

TEST(NkFormatDate, WithSeparatorsTheYearHasFourOrTwoDigitsWhateverTheSetting) {
    const ClockIn2023 clock;
    for (const int year : {0, 1}) {
        const NkFormat format = dateFormat(0, 0, year);
        EXPECT_EQ(format.ParseDate("05.03.2004"), fifthOfMarch);
        EXPECT_EQ(format.ParseDate("05.03.04"), fifthOfMarch);
        for (const LPCTSTR pszText :
             {"05.03.4", "05.03.004", "05.03.20045", "05.03.0099", "05.03.0000", "05.03."}) {
            EXPECT_TRUE(refuses(format, pszText)) << pszText;
        }
    }
}

TEST(NkFormatDate, TwoDigitYearsAreOfTheCurrentCenturyAndNoYearIsTheCurrentOne) {
    const ClockIn2023 clock;
    EXPECT_EQ(dateFormat(0, 0, 1).ParseDate("05.03.99").year, 2099);
    EXPECT_EQ(dateFormat(0, 0, 1).ParseDate("05.03.00").year, 2000);
    EXPECT_EQ(dateFormat(0, 0, 2).ParseDate("05.03.").year, 2023);
    EXPECT_TRUE(refuses(dateFormat(0, 0, 2), "29.02."));
}

TEST(NkFormatDate, AClockThatCannotBeReadIsAnErrorWhereTheCurrentYearIsNeeded) {
    const nkfw::ClockSource before = nkfw::setClockSource([]() noexcept -> std::time_t { return -1; });
    EXPECT_EQ(readingError(dateFormat(0, 0, 2), "05.03."), NkFoFehlerUhr);
    EXPECT_EQ(readingError(dateFormat(0, 0), "05.03.04"), NkFoFehlerUhr);
    EXPECT_EQ(readingError(dateFormat(0, 0), "05.03.2004"), 0U);
    nkfw::setClockSource(before);
}

TEST(NkFormatDate, WithoutSeparatorsEverythingIsWrittenAndReadFullTwoDigitsEach) {
    for (const int filled : {0, 1}) {
        for (const char fill : {'0', '*', ' '}) {
            const NkFormat format = dateFormat(0, 4, 0, 0, filled, fill);
            EXPECT_EQ(text(format.FormatDate(fifthOfMarch)), "05032004");
            for (const LPCTSTR pszText : {"5032004", "0532004", "532004", "050304", " 5032004", "05 32004"}) {
                EXPECT_TRUE(refuses(format, pszText)) << pszText;
            }
        }
    }
    EXPECT_TRUE(refuses(dateFormat(0, 4, 1), "05032004"));
    EXPECT_EQ(text(dateFormat(0, 4, 0, 1).FormatDate(fifthOfMarch)), "05M\xE4r2004");
    EXPECT_EQ(dateFormat(0, 4, 0, 1).ParseDate("05M\xE4rz2004"), fifthOfMarch);
}

TEST(NkFormatDate, MonthNamesAreThoseOfThePublishersLanguage) {
    LPCTSTR const german[] = {"Jan", "Feb", "M\xE4r", "Apr", "Mai", "Jun",
                              "Jul", "Aug", "Sep",    "Okt", "Nov", "Dez"};
    LPCTSTR const english[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    LPCTSTR const full[] = {"Januar", "Februar", "M\xE4rz",   "April",   "Mai",      "Juni",
                            "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
    for (int i = 0; i < 12; ++i) {
        const NkFoDateTime date = {2023, static_cast<SHORT>(i + 1), 7, 0, 0, 0};
        for (const USHORT language : {USHORT{0}, USHORT{1031}, USHORT{1033}}) {
            const PublishedLanguage published(language);
            const std::string name = language == 1033 ? english[i] : german[i];
            EXPECT_EQ(text(dateFormat(0, 0, 0, 1).FormatDate(date)), "07." + name + ".2023");
        }
        EXPECT_EQ(text(dateFormat(0, 3, 0, 2).FormatDate(date)), std::string("07 ") + full[i] + " 2023");
    }
    const PublishedLanguage published(1033);
    EXPECT_EQ(text(dateFormat(1, 3, 0, 2).FormatDate(fifthOfMarch)), "March 05 2004");
    EXPECT_TRUE(refuses(dateFormat(0, 0, 0, 1), "05.M\xE4r.2004"));
}

TEST(NkFormatDate, NamesAreReadInAnyLetterCaseShortOrFull) {
    for (const int month : {1, 2}) {
        const NkFormat format = dateFormat(0, 0, 0, month);
        for (const LPCTSTR pszText :
             {"5.M\xE4r.2004", "5.M\xE4rz.2004", "05.M\xC4RZ.2004", "5.m\xE4R.2004"}) {
            EXPECT_EQ(format.ParseDate(pszText), fifthOfMarch) << pszText;
        }
        for (const LPCTSTR pszText : {"5.Marz.2004", "5.M\xE4rzz.2004", "5.M\xE4.2004", "5.3.2004", "5..2004",
                                      "5. M\xE4r.2004", "5.Mar.2004"}) {
            EXPECT_TRUE(refuses(format, pszText)) << pszText;
        }
    }
    EXPECT_TRUE(refuses(dateFormat(0, 0), "5.M\xE4r.2004"));
}

TEST(NkFormatDate, YearsReachFrom1753To9999BothWays) {
    EXPECT_EQ(text(dateFormat(0, 0).FormatDate({1753, 1, 1, 0, 0, 0})), "01.01.1753");
    EXPECT_EQ(text(dateFormat(0, 0).FormatDate({9999, 12, 31, 0, 0, 0})), "31.12.9999");
    EXPECT_EQ(dateFormat(0, 0).ParseDate("01.01.1753").year, 1753);
    EXPECT_EQ(dateFormat(0, 0).ParseDate("31.12.9999").year, 9999);
    EXPECT_TRUE(refuses(dateFormat(0, 0), "31.12.1752"));
    for (const SHORT year : {SHORT{1752}, SHORT{10000}, SHORT{0}, SHORT{-2004}, SHORT{99}}) {
        EXPECT_EQ(writingError({year, 1, 1, 0, 0, 0}), NkFoFehlerWert) << year;
    }
}

TEST(NkFormatDate, DatesThatDoNotExistAreRefusedBothWays) {
    for (const LPCTSTR pszText :
         {"29.02.2023", "29.02.1900", "31.04.2023", "32.12.2023", "00.03.2004", "05.00.2004", "05.13.2004"}) {
        EXPECT_TRUE(refuses(dateFormat(0, 0), pszText)) << pszText;
    }
    EXPECT_EQ(dateFormat(0, 0).ParseDate("29.02.2000").day, 29);
    for (const NkFoDateTime& value :
         {NkFoDateTime{2023, 2, 29, 0, 0, 0}, NkFoDateTime{2023, 12, 32, 0, 0, 0},
          NkFoDateTime{2023, 0, 1, 0, 0, 0}, NkFoDateTime{2023, 13, 1, 0, 0, 0},
          NkFoDateTime{2023, 1, 0, 0, 0, 0}, NkFoDateTime{2023, 1, -1, 0, 0, 0}}) {
        EXPECT_EQ(writingError(value), NkFoFehlerWert);
    }
}

TEST(NkFormatDateTime, WritesTheTimeOfDayUnlessItIsMidnight) {
    EXPECT_EQ(text(dateFormat(0, 0).FormatDateTime(afternoon)), "05.03.2004 14:07:09");
    EXPECT_EQ(text(dateFormat(0, 0).FormatDateTime({2004, 3, 5, 0, 0, 1})), "05.03.2004 00:00:01");
    EXPECT_EQ(text(dateFormat(0, 0).FormatDateTime(fifthOfMarch)), "05.03.2004");
    EXPECT_EQ(text(dateFormat(0, 4, 2, 0, 0).FormatDateTime(afternoon)), "0503 14:07:09");
}

TEST(NkFormatDateTime, ReadsATimeOfDayAfterOneBlank) {
    const NkFormat format = dateFormat(0, 0);
    EXPECT_EQ(format.ParseDateTime("05.03.2004 14:07:09"), afternoon);
    EXPECT_EQ(format.ParseDateTime("05.03.2004 14:07"), (NkFoDateTime{2004, 3, 5, 14, 7, 0}));
    EXPECT_EQ(format.ParseDateTime("05.03.2004 4:07"), (NkFoDateTime{2004, 3, 5, 4, 7, 0}));
    EXPECT_EQ(format.ParseDateTime("05.03.2004  "), fifthOfMarch);
    for (const LPCTSTR pszText :
         {"05.03.2004  14:07", "05.03.200414:07", "05.03.2004 14", "05.03.2004 14:7",
          "05.03.2004 14:", "05.03.2004 :07", "05.03.2004 14:07:9", "05.03.2004 14:07:", "05.03.2004 24:00",
          "05.03.2004 14:60", "05.03.2004 14:07:60", "05.03.2004 014:07", "05.03.2004 14:07:09 x",
          "05.03.2004 14:07:09:00", "05.03.2004T14:07", "05.03.2004 -1:00", "05.03.2004 14.07"}) {
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
    }
}

TEST(NkFormatDateTime, ATimeOfDayThatDoesNotExistIsRefused) {
    for (const NkFoDateTime& value :
         {NkFoDateTime{2004, 3, 5, 24, 0, 0}, NkFoDateTime{2004, 3, 5, -1, 0, 0},
          NkFoDateTime{2004, 3, 5, 0, 60, 0}, NkFoDateTime{2004, 3, 5, 0, -1, 0},
          NkFoDateTime{2004, 3, 5, 0, 0, 60}, NkFoDateTime{2004, 3, 5, 0, 0, -1}}) {
        EXPECT_EQ(writingError(value), NkFoFehlerWert);
    }
}

TEST(NkFormatDate, TheDateAloneHasNoTimeOfDay) {
    EXPECT_EQ(text(dateFormat(0, 0).FormatDate({2004, 3, 5, 99, 99, 99})), "05.03.2004");
    EXPECT_EQ(errorNumberOf([] { return dateFormat(0, 0).ParseDate("05.03.2004 14:07"); }), NkFoFehlerText);
}

TEST(NkFormatDate, BlanksOnlyNothingAndANullPointerAreRefused) {
    for (const LPCTSTR pszText : {"", "   ", static_cast<LPCTSTR>(nullptr)})
        EXPECT_TRUE(refuses(dateFormat(0, 0), pszText));
}

TEST(NkFormatDate, NothingIsLeftOver) {
    for (const LPCTSTR pszText :
         {"05.03.2004x", "x05.03.2004", "05.03.2004.", "-05.03.2004", "05.03-2004", "05/03/2004"}) {
        EXPECT_TRUE(refuses(dateFormat(0, 0), pszText)) << pszText;
    }
}

}  // namespace
