// Date-times computed with: moved by durations, and subtracted from each other.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtTime.h>

#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "DurationTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using durationtest::ofTicks;
using durationtest::show;
using D = NkDtDateTime;
using T = NkDtTime;

// --- Moved by a duration ------------------------------------------------------------------------------

TEST(DateTimeSum, IsACopyMovedByTheMinutesOfTheDuration) {
    struct Case {
        const char* from;
        T duration;
        const char* sum;
        const char* difference;
    };
    const Case cases[] = {
        {"05.03.2004 14:07:09", T(1, 30), "05.03.2004 15:37:09", "05.03.2004 12:37:09"},
        {"05.03.2004 14:07:09", T(0, 0), "05.03.2004 14:07:09", "05.03.2004 14:07:09"},
        {"05.03.2004 14:07:09", T(-24, 0), "04.03.2004 14:07:09", "06.03.2004 14:07:09"},
        {"31.12.2003 23:30:09", T(0, 45), "01.01.2004 00:15:09", "31.12.2003 22:45:09"},
        {"05.03.2004 14:07:09", T(1, 50, T::Hundredths), "05.03.2004 15:37:09", "05.03.2004 12:37:09"},
        {"05.03.2004 14:07:09", ofTicks(39), "05.03.2004 14:08:09", "05.03.2004 14:06:09"},  // not 2 minutes
        {"05.03.2004 14:07:09", T(1, 30, T::HoursOnly), "05.03.2004 15:07:09", "05.03.2004 13:07:09"},
    };
    for (const Case& each : cases) {
        const D value = defined(each.from);
        const bool moves = std::string(each.from) != each.sum;
        EXPECT_EQ(describe(value + each.duration),
                  each.sum + std::string(moves ? " defined modified" : " defined"));
        EXPECT_EQ(describe(value - each.duration),
                  each.difference + std::string(moves ? " defined modified" : " defined"));
        EXPECT_EQ(describe(value), std::string(each.from) + " defined");
    }
}

TEST(DateTimeSum, KeepsModeAndFlagOfTheDate) {
    const DefaultMode scope(NkDtWmNull);
    for (const NkDtWorkingMode mode : kStoredModes) {
        D value = defined("05.03.2004 14:07:09", mode);
        value.SetModified(TRUE);
        EXPECT_EQ((value + T(0, 0)).GetWorkingMode(), mode);
        EXPECT_EQ(stateOf(value - T(0, 0)), "defined modified");
    }
}

TEST(DateTimeSum, IsUndefinedInTheDefaultModeWhenOneIsMissingOrBothAreUndefined) {
    const D date(5, 3, 2004, 14, 7, 9);
    const T hour(1, 0);
    const T missingHour(NkDtWmMissing);
    const T nullHour = durationtest::undefined(NkDtWmNull, 1200);
    const DefaultMode scope(NkDtWmNull);
    const char* const none = "01.01.1900 00:00:00 null";
    EXPECT_EQ(describe(date + missingHour), none);
    EXPECT_EQ(describe(date - missingHour), none);
    EXPECT_EQ(describe(undefined(NkDtWmMissing) + hour), none);
    EXPECT_EQ(describe(undefined(NkDtWmNull) - nullHour), none);
    EXPECT_EQ(describe(undefined(NkDtWmMissing) + missingHour), none);
    EXPECT_EQ(describe(undefined(NkDtWmNull) + hour), "05.03.2004 15:07:09 defined modified");
    EXPECT_EQ(describe(date + nullHour), "05.03.2004 15:07:09 defined modified");
    NkDtSetDefaultWorkingMode(NkDtWmDefined);
    EXPECT_EQ(describe(date + missingHour), "01.01.1900 00:00:00 defined");  // not the clock's time
}

TEST(DateTimeSum, ShowsTheErrorOfTheMove) {
    const D first(1, 1, 1753);
    const ErrorPtr error = expectReplaced(NkDtErrJahr, [&] { static_cast<void>(first - T(0, 1)); });
    EXPECT_STREQ(error->GetFunctionText(), "SubMin(LONG)");
    const D last(31, 12, 32767);
    expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(last + T(24, 0)); });
}

TEST(DateTimeSum, CanBeAssignedToItsOwnOperand) {
    D value = defined("05.03.2004 14:07:09", NkDtWmNull);
    value = value + T(24, 0);
    value = value - T(0, 7);
    EXPECT_EQ(describe(value), "06.03.2004 14:00:09 defined modified");
    EXPECT_EQ(value.GetWorkingMode(), NkDtWmNull);
}

// --- The difference -----------------------------------------------------------------------------------

struct Difference {
    const char* a;
    const char* b;
    LONG hours;
    LONG minutes;
};

void expectDifferences(std::initializer_list<Difference> cases) {
    for (const Difference& each : cases) {
        SCOPED_TRACE(std::string(each.a) + " - " + each.b);
        const T difference = defined(each.a) - defined(each.b);
        EXPECT_EQ(show(difference), show(ofTicks(each.hours * 1200 + each.minutes * 20)) + " modified");
        EXPECT_EQ(difference.GetWorkingMode(), NkDtWmMissing);
    }
}

TEST(DateTimeDifference, IsHoursAndMinutesWithinAYear) {
    expectDifferences({
        {"10.03.2004", "10.02.2004", 672, 0},  // the leap day does not count
        {"10.03.2003", "10.02.2003", 672, 0},
        {"10.02.2004", "10.03.2004", -672, 0},
        {"05.03.2004 14:07:09", "05.03.2004 12:00:00", 2, 7},
        {"05.03.2004 14:07:09", "05.03.2004 12:00:10", 2, 6},  // a second is borrowed, then dropped
        {"05.03.2004 14:07:09", "05.03.2004 12:07:10", 1, 59},
        {"05.03.2004 14:07:09", "05.03.2004 14:07:09", 0, 0},
        {"05.03.2004 14:00:00", "05.03.2004 13:30:00", 0, 30},
        {"05.03.2004 12:00:00", "05.03.2004 14:07:00", -3, 53},  // minutes count forward
        {"31.12.2004 23:59:59", "01.01.2004 00:00:00", 364 * 24 + 23, 59},
    });
}

TEST(DateTimeDifference, CountsWholeYearsWhenTheDayOfTheYearGoesTheSameWay) {
    expectDifferences({
        {"01.06.2005", "01.06.2003", 17520, 0},  // 2004 is the year before this one and not looked at
        {"01.06.2006", "01.06.2003", 17520 + 8760 + 24, 0},
        {"01.06.2005", "01.01.2004", (365 + 151 + 1) * 24, 0},
        {"01.03.2005", "31.03.2004", -30 * 24, 0},        // the days go the other way
        {"31.03.2005", "31.03.2004", (365 + 1) * 24, 0},  // March of a leap year counts as its start
        {"01.04.2005", "01.04.2004", 365 * 24, 0},
        {"31.03.2004", "31.03.2003", 365 * 24, 0},
        {"01.04.2004", "01.04.2003", (365 + 1) * 24, 0},
        {"01.06.2013", "01.06.2003", (3650 + 2) * 24, 0},  // 2004 and 2008; 2012 is not looked at
        {"01.06.2104", "01.06.2096", (8 * 365 + 1) * 24, 0},
        {"01.06.1904", "01.06.1896", (8 * 365 + 1) * 24, 0},
    });
}

TEST(DateTimeDifference, MirrorsItselfBackwards) {
    expectDifferences({
        {"01.06.2003", "01.06.2005", -17520, 0},
        {"01.06.2003", "01.06.2006", -17520 - 8760, 0},  // the year behind this one is not looked at
        {"01.06.2002", "01.06.2006", -17520 - 17520 - 24, 0},
        {"31.03.2004", "31.03.2005", -(365 + 1) * 24, 0},
        {"01.04.2004", "01.04.2005", -365 * 24, 0},
        {"31.03.2003", "01.04.2004", -(365 + 1 + 1) * 24, 0},
    });
}

TEST(DateTimeDifference, LeavesWholeYearsOutWhenTheDayOfTheYearGoesTheOtherWay) {
    expectDifferences({
        {"10.01.2005", "01.06.2004", -3408, 0},
        {"10.01.9999", "01.06.1753", -3408, 0},
        {"01.06.2004", "10.01.2005", 3408, 0},
    });
}

TEST(DateTimeDifference, BeyondTheTicksOfADurationIsRefused) {
    const D late(1, 6, 2250);
    const D early(1, 6, 1800);
    const ErrorPtr error = expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(late - early); });
    EXPECT_STREQ(error->GetFunctionText(), "SetHour(LONG)");
    expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(early - late); });
    expectReplaced(NkDtErrWertebereich, [] { static_cast<void>(D(1, 6, 32767) - D(1, 6, 1753)); });
    EXPECT_EQ((D(1, 6, 2004) - D(1, 6, 1804)).GetHour(), (200 * 365 + 49) * 24);  // 1808 to 2004
    const D first(1, 1, 1900);
    EXPECT_EQ(show(D(26, 2, 2104, 9, 42, 0) - first), "2147483640:1 defined modified");
    const ErrorPtr minute =
        expectReplaced(NkDtErrWertebereich, [&] { static_cast<void>(D(26, 2, 2104, 9, 43, 0) - first); });
    EXPECT_STREQ(minute->GetFunctionText(), "SetMin(LONG,TimeMode)");
}

TEST(DateTimeDifference, NeedsMonthsOfTheCalendar) {
    const D good(5, 3, 2004);
    for (const INT month : {0, 13, -200}) {
        const D bad = loaded(NkDtWmMissing, TRUE, {0, 0, 0, 2004, month, 1});
        for (const bool left : {true, false}) {
            const ErrorPtr error =
                expectError(NkDtErrMonat, [&] { static_cast<void>(left ? bad - good : good - bad); });
            EXPECT_STREQ(error->GetFunctionText(), "operator-(NkDateTime&)");
            EXPECT_STREQ(error->GetClassText(), "NkDtDateTime");
            EXPECT_TRUE(error->IsLogged());
        }
    }
}

TEST(DateTimeDifference, IsUndefinedInTheDefaultModeWhenOneIsMissingOrBothAreUndefined) {
    const D date(5, 3, 2004, 14, 7, 9);
    const D missing = undefined(NkDtWmMissing);
    const D null = undefined(NkDtWmNull);
    const DefaultMode scope(NkDtWmNull);
    EXPECT_EQ(show(date - missing), "0:1 null");
    EXPECT_EQ(show(missing - date), "0:1 null");
    EXPECT_EQ(show(null - null), "0:1 null");
    EXPECT_EQ(show(null - D(5, 3, 2004)), "16940:1 defined modified");
    EXPECT_EQ(show(D(5, 3, 2004) - null), "-16960:1 defined modified");
    NkDtSetDefaultWorkingMode(NkDtWmDefined);
    EXPECT_EQ(show(date - missing), "0:1 defined");
    EXPECT_EQ(show(date - date), "0:1 defined");
}

}  // namespace
