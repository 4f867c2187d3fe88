#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "FormatTest.h"

namespace {

using namespace formattest;

constexpr LONG smallest = std::numeric_limits<LONG>::min();
constexpr LONG largest = std::numeric_limits<LONG>::max();
constexpr int seconds = FormatZeitDarstellungSekunden;
constexpr int hoursOnly = FormatZeitDarstellungStunden;
constexpr int hundredths = FormatZeitDarstellungHundertstel;
constexpr int minutes = FormatZeitDarstellungMinuten;

using Parts = std::pair<LONG, LONG>;

Parts read(const NkFormat& format, LPCTSTR pszText) {
    Parts parts;
    format.ParseTime(pszText, parts.first, parts.second);
    return parts;
}

bool refuses(const NkFormat& format, LPCTSTR pszText) {
    return errorNumberOf([&] { return read(format, pszText); }) == NkFoFehlerText;
}

ULONG writingError(const NkFormat& format, LONG hours, LONG sub) {
    return errorNumberOf([&] { return format.FormatTime(hours, sub); });
}

TEST(NkFormatTime, EveryDisplayWritesItsText) {
    EXPECT_EQ(text(timeFormat(0, seconds).FormatTime(8, 5)), "8:05:00");
    EXPECT_EQ(text(timeFormat(0, hoursOnly).FormatTime(8, 5)), "8");
    EXPECT_EQ(text(timeFormat(0, hundredths).FormatTime(8, 5)), "8,05");
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(8, 5)), "8:05");
}

TEST(NkFormatTime, AtLeastOneHourDigitAndExactlyTwoBehind) {
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(0, 7)), "0:07");
    for (const LPCTSTR pszText : {":30", "8:", "8:3", "8:300", "8:60", "-:30", "8:3 "}) {
        EXPECT_TRUE(refuses(timeFormat(0, minutes), pszText)) << pszText;
    }
    for (const LPCTSTR pszText : {",50", "8,", "8,5", "8,500"}) {
        EXPECT_TRUE(refuses(timeFormat(0, hundredths), pszText)) << pszText;
    }
    EXPECT_EQ(read(timeFormat(0, minutes), "8:59"), Parts(8, 59));
    EXPECT_EQ(read(timeFormat(0, hundredths), "8,99"), Parts(8, 99));
}

TEST(NkFormatTime, HoursAloneAreWholeHours) {
    for (const int display : {seconds, hoursOnly, hundredths, minutes}) {
        EXPECT_EQ(read(timeFormat(0, display), "8"), Parts(8, 0)) << display;
    }
}

TEST(NkFormatTime, EachDisplayReadsItsOwnSeparatorOnly) {
    EXPECT_TRUE(refuses(timeFormat(0, minutes), "8,30"));
    EXPECT_TRUE(refuses(timeFormat(0, hundredths), "8:30"));
    EXPECT_TRUE(refuses(timeFormat(0, hoursOnly), "8:30"));
    EXPECT_TRUE(refuses(timeFormat(0, hoursOnly), "8,50"));
    EXPECT_TRUE(refuses(timeFormat(0, minutes), "8:30:00"));
}

TEST(NkFormatTime, TheDisplayOfSecondsRefusesOtherThanZero) {
    EXPECT_EQ(read(timeFormat(0, seconds), "8:30:00"), Parts(8, 30));
    EXPECT_EQ(read(timeFormat(0, seconds), "8:30"), Parts(8, 30));
    for (const LPCTSTR pszText : {"8:30:15", "8:30:0", "8:30:", "8:30:000", "8:30:00:00"}) {
        EXPECT_TRUE(refuses(timeFormat(0, seconds), pszText)) << pszText;
    }
}

TEST(NkFormatTime, WholeHoursDropTheRestWhenWritten) {
    EXPECT_EQ(text(timeFormat(0, hoursOnly).FormatTime(-8, -59)), "-8");
    EXPECT_EQ(text(timeFormat(0, hoursOnly).FormatTime(8, 59)), "8");
}

TEST(NkFormatTime, MinusStandsIfWhatIsShownIsNegativeAndNotZero) {
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(0, -30)), "-0:30");
    EXPECT_EQ(text(timeFormat(0, hoursOnly).FormatTime(0, -30)), "0");
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(0, 0)), "0:00");
    EXPECT_EQ(text(timeFormat(0, minutes, 1, 1).FormatTime(0, 0)), "0:00");
    EXPECT_EQ(text(timeFormat(0, minutes, 1, 1).FormatTime(0, 1)), "+0:01");
    EXPECT_EQ(text(timeFormat(0, minutes, 2, 1).FormatTime(1, 0)), "1:00+");
    EXPECT_EQ(text(timeFormat(0, minutes, 2, 0).FormatTime(-1, 0)), "1:00-");
}

TEST(NkFormatTime, TheSignOfEitherPartCountsForBoth) {
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(-1, 30)), "-1:30");
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(1, -30)), "-1:30");
    EXPECT_EQ(read(timeFormat(0, minutes), "-1:30"), Parts(-1, -30));
    EXPECT_EQ(read(timeFormat(0, minutes), "-0:30"), Parts(0, -30));
    EXPECT_EQ(read(timeFormat(0, hundredths, 2), "1,25-"), Parts(-1, -25));
    EXPECT_EQ(read(timeFormat(0, minutes), "-0:00"), Parts(0, 0));
}

TEST(NkFormatTime, OneSignInItsPlaceAndPlusOnlyWhereItIsShown) {
    for (const LPCTSTR pszText : {"+8:30", "8:30-", "--8:30", "8:-30", "- 8:30", "-"}) {
        EXPECT_TRUE(refuses(timeFormat(0, minutes), pszText)) << pszText;
    }
    EXPECT_EQ(read(timeFormat(0, minutes, 1, 1), "+8:30"), Parts(8, 30));
    EXPECT_TRUE(refuses(timeFormat(0, minutes, 0, 1), "-8:30"));
    EXPECT_TRUE(refuses(timeFormat(0, minutes, 2), "8:30 -"));
}

TEST(NkFormatTime, WithoutSignsANegativeDurationIsRefused) {
    EXPECT_EQ(writingError(timeFormat(0, minutes, 0), -1, 0), NkFoFehlerWert);
    EXPECT_EQ(writingError(timeFormat(0, hoursOnly, 0), 0, -30), 0U);  // what is shown is zero
}

TEST(NkFormatTime, ATimeOfDayHasHoursFromZeroTo23) {
    const NkFormat format = timeFormat(1, minutes);
    EXPECT_EQ(text(format.FormatTime(23, 59)), "23:59");
    EXPECT_EQ(read(format, "23:59"), Parts(23, 59));
    EXPECT_EQ(writingError(format, 24, 0), NkFoFehlerWert);
    EXPECT_EQ(writingError(format, -1, 0), NkFoFehlerWert);
    EXPECT_EQ(writingError(format, 0, -1), NkFoFehlerWert);
    for (const LPCTSTR pszText : {"24:00", "-1:00", "-0:01"})
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
}

TEST(NkFormatTime, ADurationHasHoursWithoutLimitButTheMostDigits) {
    EXPECT_EQ(text(timeFormat(0, minutes).FormatTime(9999999, 0)), "9999999:00");
    EXPECT_EQ(writingError(timeFormat(0, minutes), 10000000, 0), NkFoFehlerWert);
    EXPECT_EQ(read(timeFormat(0, minutes), "-9999999:00"), Parts(-9999999, 0));
    EXPECT_TRUE(refuses(timeFormat(0, minutes), "10000000:00"));
    EXPECT_TRUE(refuses(timeFormat(0, minutes), "00000008:00"));
}

TEST(NkFormatTime, TheWholeRangeOfTheHoursIsServedAndNoMore) {
    const NkFormat format = timeFormat(0, minutes, 1, 0, 4294967295U);
    EXPECT_EQ(text(format.FormatTime(smallest, -59)), "-2147483648:59");
    EXPECT_EQ(read(format, "-2147483648:59"), Parts(smallest, -59));
    EXPECT_EQ(read(format, "2147483647:59"), Parts(largest, 59));
    for (const LPCTSTR pszText : {"2147483648:00", "-2147483649:00", "99999999999999999999"}) {
        EXPECT_TRUE(refuses(format, pszText)) << pszText;
    }
}

TEST(NkFormatTime, APartOfTheHourThatIsTooLargeIsRefused) {
    EXPECT_EQ(writingError(timeFormat(0, minutes), 1, 60), NkFoFehlerWert);
    EXPECT_EQ(writingError(timeFormat(0, minutes), -1, -60), NkFoFehlerWert);
    EXPECT_EQ(writingError(timeFormat(0, hundredths), 1, 60), 0U);
    EXPECT_EQ(writingError(timeFormat(0, hundredths), 1, 100), NkFoFehlerWert);
    EXPECT_EQ(writingError(timeFormat(0, minutes), 1, smallest), NkFoFehlerWert);
}

TEST(NkFormatTime, HoursAreFilledToTheFewestDigits) {
    EXPECT_EQ(text(timeFormat(0, minutes, 1, 0, 7, 3, '0').FormatTime(-8, -5)), "-008:05");
    EXPECT_EQ(text(timeFormat(0, minutes, 1, 0, 7, 3, '*').FormatTime(-8, -5)), "**-8:05");
    EXPECT_EQ(text(timeFormat(0, minutes, 1, 0, 7, 3, ' ').FormatTime(1234, 5)), "1234:05");
    EXPECT_EQ(read(timeFormat(0, minutes, 1, 0, 7, 3, '*'), "**-8:05"), Parts(-8, -5));
    EXPECT_TRUE(refuses(timeFormat(0, minutes, 1, 0, 7, 3, '*'), "-**8:05"));
    EXPECT_TRUE(refuses(timeFormat(0, minutes, 1, 0, 7, 0, '*'), "*8:05"));  // filling is not used
    EXPECT_TRUE(refuses(timeFormat(0, minutes, 1, 0, 4, 3, '*'), "****8:05"));
}

TEST(NkFormatTime, BlanksStandAtTheEndsOnlyAndNothingIsLeftOver) {
    EXPECT_EQ(read(timeFormat(0, minutes), "  8:30 "), Parts(8, 30));
    for (const LPCTSTR pszText : {"8 :30", "8: 30", "8h", "8:30h", "x8:30", "", "  ", "8.30"}) {
        EXPECT_TRUE(refuses(timeFormat(0, minutes), pszText)) << pszText;
    }
    EXPECT_TRUE(refuses(timeFormat(0, minutes), nullptr));
}

TEST(NkFormatTime, ARefusedTextStoresNothing) {
    LONG hours = 77;
    LONG sub = 88;
    EXPECT_EQ(errorNumberOf([&] { return timeFormat(0, minutes).ParseTime("9:99", hours, sub), 0; }),
              NkFoFehlerText);
    EXPECT_EQ(errorNumberOf([&] { return timeFormat(1, minutes).ParseTime("24:00", hours, sub), 0; }),
              NkFoFehlerText);
    EXPECT_EQ(hours, 77);
    EXPECT_EQ(sub, 88);
}

}  // namespace
