// Date-times: how they are built, read from text, copied, assigned and cleared.

#include <nkdt/NkDtDateTime.h>
#include <nkdt/NkDtDateZp.h>
#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkfo/NkFormat.h>
#include <nkfw/OleDateTime.h>

#include <ctime>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "DateTesting.h"
#include "TextTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace datetest;
using D = NkDtDateTime;

// --- By mode and from numbers -----------------------------------------------------------------------

TEST(NkDtDateTime, IsTheClocksTimeWhenItIsBuiltInModeTwoAsPassed) {
    const NoonIn2023 noon;
    EXPECT_EQ(describe(D(NkDtWmDefined)), std::string(kNow) + " defined");
    EXPECT_EQ(allFieldsOf(D(NkDtWmDefined)), "123 5 15 12 34 56 0 0 -1");
    EXPECT_EQ(describe(D(NkDtWmMissing)), "01.01.1900 00:00:00 missing");
    EXPECT_EQ(describe(D(NkDtWmNull)), "01.01.1900 00:00:00 null");
    EXPECT_EQ(allFieldsOf(D(NkDtWmNull)), "0 0 1 0 0 0 0 0 -1");
    const DefaultMode scope(NkDtWmDefined);
    EXPECT_EQ(describe(D(NkDtWmDefault)), "01.01.1900 00:00:00 defined");
    EXPECT_EQ(describe(D(static_cast<NkDtWorkingMode>(7))), "01.01.1900 00:00:00 defined");
}

TEST(NkDtDateTime, IsNotBuiltWithTheClocksTimeWhenTheClockCannotBeRead) {
    const NoClock none;
    expectReplaced(NkDtErrInitialwert, [] { const D made(NkDtWmDefined); });
    expectReplaced(NkDtErrInitialwert, [] { const D made(32767, 0); });
    expectReplaced(NkDtErrInitialwert, [] { const D made(5, 3, 4); });  // of which century
    EXPECT_EQ(describe(D(5, 3, 2004)), "05.03.2004 00:00:00 defined");
    EXPECT_EQ(describe(D(10, 30)), "01.01.1900 10:30:00 defined");
}

TEST(NkDtDateTime, IsBuiltFromSixNumbersInTheirOrder) {
    const DefaultMode scope(NkDtWmNull);
    const D made(5, 3, 2004, 14, 7, 9);
    EXPECT_EQ(describe(made), "05.03.2004 14:07:09 defined");
    EXPECT_EQ(allFieldsOf(made), "104 2 5 14 7 9 0 0 -1");
    EXPECT_EQ(made.GetWorkingMode(), NkDtWmNull);
    EXPECT_EQ(made.GetFormat(), nullptr);
    EXPECT_EQ(describe(D(1, 1, 1753, 0, 0, 0)), "01.01.1753 00:00:00 defined");
    EXPECT_EQ(describe(D(31, 12, 32767, 23, 59, 59)), "31.12.32767 23:59:59 defined");
    EXPECT_EQ(describe(D(29, 2, 2000, 0, 0, 0)), "29.02.2000 00:00:00 defined");
    EXPECT_EQ(describe(D(29, 2, 2004, 0, 0, 0)), "29.02.2004 00:00:00 defined");
}

TEST(NkDtDateTime, ReplacesTheErrorOfTheFirstFieldThatIsRefused) {
    struct Case {
        SHORT day, month, year, hour, minute, second;
        ULONG cause;
    };
    constexpr Case cases[] = {
        {29, 2, 2003, 0, 0, 0, NkDtErrTag},
        {29, 2, 1900, 0, 0, 0, NkDtErrTag},
        {29, 2, 2100, 0, 0, 0, NkDtErrTag},
        {30, 2, 2004, 0, 0, 0, NkDtErrTag},
        {31, 4, 2004, 0, 0, 0, NkDtErrTag},
        {0, 1, 2004, 0, 0, 0, NkDtErrTag},
        {-1, 1, 2004, 0, 0, 0, NkDtErrTag},
        {32, 1, 2004, 0, 0, 0, NkDtErrTag},
        {1, 13, 2004, 0, 0, 0, NkDtErrMonat},
        {1, 0, 2004, 0, 0, 0, NkDtErrMonat},
        {31, 12, 1752, 0, 0, 0, NkDtErrJahr},
        {1, 1, 100, 0, 0, 0, NkDtErrJahr},
        {1, 1, 2004, 24, 0, 0, NkDtErrStunde},
        {1, 1, 2004, -1, 0, 0, NkDtErrStunde},
        {1, 1, 2004, 32767, 0, 0, NkDtErrStunde},
        {1, 1, 2004, 0, 60, 0, NkDtErrMinute},
        {1, 1, 2004, 0, 0, 60, NkDtErrSekunde},
        // the year first, then month, day, hour, minute, second
        {99, 99, 1000, 99, 99, 99, NkDtErrJahr},
        {99, 99, 2004, 99, 99, 99, NkDtErrMonat},
        {99, 1, 2004, 99, 99, 99, NkDtErrTag},
        {1, 1, 2004, 99, 99, 99, NkDtErrStunde},
        {1, 1, 2004, 1, 99, 99, NkDtErrMinute},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::to_string(each.day) + "." + std::to_string(each.month));
        const ErrorPtr error = expectReplaced(each.cause, [&] {
            const D made(each.day, each.month, each.year, each.hour, each.minute, each.second);
        });
        EXPECT_STREQ(error->GetErrorText(), "Default-Catch / Folgefehler");
    }
}

TEST(NkDtDateTime, TellsWhatWasWrongAsTheCause) {
    const auto causeText = [](const char* text, auto&&... fields) {
        const ErrorPtr error = expectError(NkDtErrFolgefehler, [&] { const D made(fields...); });
        EXPECT_EQ(error->GetCauseText(), cp1252(text));
    };
    causeText("Tagesangabe ist ungültig oder nicht zur Monatsangabe passend", 29, 2, 2003);
    causeText("Monatsangabe ist ungültig, d.h. <1 oder > 12", 1, 13, 2004);
    causeText("Jahresangabe ist ungültig, Jahreszahl < 1753", 1, 1, 1752);
    causeText("Stundenangabe ist ungültig, d.h. <0 oder > 23", 24, 0);
    causeText("Minutenangabe ist ungültig, d.h. < 0 oder > 59", 0, 60);
    causeText("Sekundenangabe ist ungültig, d.h. <0 oder > 59", 1, 1, 2004, 0, 0, 60);
    causeText("Ungültiger Initialwert", "5.3.2004");
}

TEST(NkDtDateTime, ReadsAYearUpTo99InTheCenturyOfTheClock) {
    const NoonIn2023 noon;
    EXPECT_EQ(describe(D(5, 3, 4, 0, 0, 0)), "05.03.2004 00:00:00 defined");
    EXPECT_EQ(describe(D(5, 3, 99, 0, 0, 0)), "05.03.2099 00:00:00 defined");
    EXPECT_EQ(describe(D(5, 3, 0, 0, 0, 0)), "05.03.2000 00:00:00 defined");
    EXPECT_EQ(describe(D(5, 3, -1, 0, 0, 0)), "05.03.1999 00:00:00 defined");
    EXPECT_EQ(describe(D(5, 3, -247, 0, 0, 0)), "05.03.1753 00:00:00 defined");
    expectReplaced(NkDtErrJahr, [] { const D made(5, 3, -248, 0, 0, 0); });
    expectReplaced(NkDtErrJahr, [] { const D made(5, 3, -32768, 0, 0, 0); });
    nkfw::setClockSource([]() noexcept { return std::time_t{-86400}; });  // 31 December 1969
    EXPECT_EQ(describe(D(5, 3, 4, 0, 0, 0)), "05.03.1904 00:00:00 defined");
}

TEST(NkDtDateTime, IsBuiltFromATimeOfDayOnTheFirstDay) {
    const NoonIn2023 noon;
    EXPECT_EQ(describe(D(10, 30)), "01.01.1900 10:30:00 defined");
    EXPECT_EQ(describe(D(0, 0)), "01.01.1900 00:00:00 defined");
    EXPECT_EQ(describe(D(32767, 0)), std::string(kNow) + " defined");
    EXPECT_EQ(describe(D(32767, 99)), std::string(kNow) + " defined");
    expectReplaced(NkDtErrStunde, [] { const D made(24, 0); });
    expectReplaced(NkDtErrStunde, [] { const D made(-1, 99); });
    expectReplaced(NkDtErrMinute, [] { const D made(0, 60); });
}

// --- From values --------------------------------------------------------------------------------------

TEST(NkDtDateTime, IsBuiltFromValuesThatAreAllDefined) {
    const NoonIn2023 noon;
    const DefaultMode scope(NkDtWmNull);
    const auto v = [](INT n) { return NkDtShort(n); };
    EXPECT_EQ(describe(D(v(5), v(3), v(2004))), "05.03.2004 00:00:00 defined");
    EXPECT_EQ(describe(D(v(5), v(3), v(2004), v(14), v(7), v(9))), "05.03.2004 14:07:09 defined");
    EXPECT_EQ(describe(D(v(14), v(7))), "01.01.1900 14:07:00 defined");
    EXPECT_EQ(describe(D(v(32767), v(7))), std::string(kNow) + " defined");
    EXPECT_EQ(D(v(5), v(3), v(2004)).GetWorkingMode(), NkDtWmNull);
    expectReplaced(NkDtErrTag, [&] { const D made(v(29), v(2), v(2003)); });
    expectReplaced(NkDtErrSekunde, [&] { const D made(v(5), v(3), v(2004), v(14), v(7), v(60)); });
    expectReplaced(NkDtErrStunde, [&] { const D made(v(24), v(0)); });
}

TEST(NkDtDateTime, IsUndefinedAndEmptyUnlessAllValuesAreDefined) {
    const NkDtShort good(7);
    const NkDtShort bad(99);
    for (const NkDtWorkingMode mode : {NkDtWmMissing, NkDtWmNull}) {
        const NkDtShort none(mode);
        for (int missing = 0; missing < 6; ++missing) {
            const auto at = [&](int i) -> const NkDtShort& { return i == missing ? none : bad; };
            EXPECT_EQ(describe(D(at(0), at(1), at(2), at(3), at(4), at(5))), "01.01.1900 00:00:00 missing");
            if (missing < 3) {
                EXPECT_EQ(describe(D(at(0), at(1), at(2))), "01.01.1900 00:00:00 missing");
            }
            if (missing < 2) {
                EXPECT_EQ(describe(D(at(0), at(1))), "01.01.1900 00:00:00 missing");
            }
        }
        const DefaultMode scope(NkDtWmDefined);
        EXPECT_EQ(describe(D(none, good)), "01.01.1900 00:00:00 defined");
        EXPECT_EQ(describe(D(good, none, good)), "01.01.1900 00:00:00 defined");
    }
}

// --- From other times -----------------------------------------------------------------------------------

TEST(NkDtDateTime, IsBuiltFromABrokenDownTimeWhoseYearIsFullFrom1000On) {
    const NoonIn2023 noon;
    struct Case {
        int year;
        const char* shown;
    };
    constexpr Case cases[] = {{104, "05.03.2004"},    {2004, "05.03.2004"},  {999, "05.03.2899"},
                              {-147, "05.03.1753"},   {1753, "05.03.1753"},  {0, "05.03.1900"},
                              {-1850, "05.03.2050"},  {-1900, "05.03.2000"}, {-2147, "05.03.1753"},
                              {32767, "05.03.32767"}, {-1801, "05.03.2099"}};
    for (const Case& each : cases) {
        std::tm time = brokenDown(each.year, 2, 5, 14, 7, 9);
        time.tm_wday = 5;
        time.tm_yday = 64;
        time.tm_isdst = 1;
        const D made(&time);
        EXPECT_EQ(describe(made), std::string(each.shown) + " 14:07:09 defined") << each.year;
        EXPECT_EQ(allFieldsOf(made).substr(allFieldsOf(made).size() - 6), "0 0 -1");
    }
}

TEST(NkDtDateTime, RefusesABrokenDownTimeWithAFieldOutOfItsRange) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    struct Case {
        std::tm time;
        ULONG cause;
    };
    const Case cases[] = {
        {brokenDown(-148, 0, 1), NkDtErrJahr},
        {brokenDown(1752, 0, 1), NkDtErrJahr},
        {brokenDown(1000, 0, 1), NkDtErrJahr},
        {brokenDown(least, 0, 1), NkDtErrJahr},
        {brokenDown(32768, 0, 1), NkDtErrWertebereich},
        {brokenDown(most, 0, 1), NkDtErrWertebereich},
        {brokenDown(104, -1, 1), NkDtErrMonat},
        {brokenDown(104, 12, 1), NkDtErrMonat},
        {brokenDown(104, most, 1), NkDtErrMonat},
        {brokenDown(104, least, 1), NkDtErrMonat},
        {brokenDown(104, 0, 0), NkDtErrTag},
        {brokenDown(104, 0, most), NkDtErrTag},
        {brokenDown(103, 1, 29), NkDtErrTag},
        {brokenDown(104, 0, 1, 24), NkDtErrStunde},
        {brokenDown(104, 0, 1, least), NkDtErrStunde},
        {brokenDown(104, 0, 1, 0, 60), NkDtErrMinute},
        {brokenDown(104, 0, 1, 0, 0, 60), NkDtErrSekunde},
        {brokenDown(104, 0, 1, 0, 0, -1), NkDtErrSekunde},
    };
    for (const Case& each : cases) {
        std::tm time = each.time;
        expectReplaced(each.cause, [&] { const D made(&time); });
    }
    std::tm* const none = nullptr;
    expectReplaced(NkDtErrInitialwert, [&] { const D made(none); });
}

TEST(NkDtDateTime, IsBuiltFromATimeOfTheSystemClockWithAllNineLocalFields) {
    const frameworktest::TimeZone zone("WIN-1SUM,M3.5.0,M10.5.0/3");
    EXPECT_EQ(allFieldsOf(D(std::time_t{1078488429})), "104 2 5 13 7 9 5 64 0");
    EXPECT_EQ(describe(D(std::time_t{1078488429})), "05.03.2004 13:07:09 defined");
    EXPECT_EQ(allFieldsOf(D(std::time_t{1088640000})), "104 6 1 2 0 0 4 182 1");  // in summer
    EXPECT_EQ(describe(D(std::time_t{-1})), "01.01.1970 00:59:59 defined");
    const frameworktest::TimeZone west("WEST+8");
    EXPECT_EQ(describe(D(std::time_t{0})), "31.12.1969 16:00:00 defined");
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        EXPECT_EQ(D(std::time_t{0}).GetWorkingMode(), mode);
    }
}

TEST(NkDtDateTime, RefusesATimeOfTheSystemClockBeyondItsYears) {
    const frameworktest::TimeZone zone("UTC");
    EXPECT_EQ(describe(D(std::time_t{-6847804800})), "01.01.1753 00:00:00 defined");
    expectReplaced(NkDtErrJahr, [] { const D made(std::time_t{-6847804801}); });
    EXPECT_EQ(describe(D(std::time_t{971890963199})), "31.12.32767 23:59:59 defined");
    expectReplaced(NkDtErrWertebereich, [] { const D made(std::time_t{971890963200}); });
    expectReplaced(NkDtErrInitialwert, [] { const D made(std::numeric_limits<std::time_t>::max()); });
    expectReplaced(NkDtErrInitialwert, [] { const D made(std::numeric_limits<std::time_t>::min()); });
}

TEST(NkDtDateTime, IsBuiltFromAValidOleDateAndUndefinedFromAnyOther) {
    const DefaultMode scope(NkDtWmNull);
    EXPECT_EQ(describe(D(COleDateTime(2004, 3, 5, 14, 7, 9))), "05.03.2004 14:07:09 defined");
    EXPECT_EQ(describe(D(COleDateTime())), "30.12.1899 00:00:00 defined");
    EXPECT_EQ(describe(D(COleDateTime(2003, 2, 29, 0, 0, 0))), "01.01.1900 00:00:00 null");
    COleDateTime null(2004, 3, 5, 14, 7, 9);
    null.SetStatus(COleDateTime::null);
    EXPECT_EQ(describe(D(null)), "01.01.1900 00:00:00 null");
    NkDtSetDefaultWorkingMode(NkDtWmDefined);
    EXPECT_EQ(describe(D(null)), "01.01.1900 00:00:00 defined");
    EXPECT_EQ(describe(D(COleDateTime(2004, 3, 5, 14, 7, 9))), "05.03.2004 14:07:09 defined");
    expectReplaced(NkDtErrJahr, [] { const D made(COleDateTime(1752, 12, 31, 0, 0, 0)); });
}

// --- From text ----------------------------------------------------------------------------------------

TEST(NkDtDateTime, IsBuiltFromATextOfItsForm) {
    const NoonIn2023 noon;
    struct Case {
        const char* text;
        D::FormOfDateTimeString form;
        const char* shown;
    };
    constexpr auto other = static_cast<D::FormOfDateTimeString>(3);
    constexpr auto negative = static_cast<D::FormOfDateTimeString>(-1);
    constexpr Case cases[] = {
        {"05.03.2004 14:07:09", D::DateAndTime, "05.03.2004 14:07:09"},
        {"05.03.2004 14:07", D::DateAndTime, "05.03.2004 14:07:00"},
        {"05.03.2004 14:07:9", D::DateAndTime, "05.03.2004 14:07:00"},
        {"05.03.2004  9:07", D::DateAndTime, "05.03.2004 09:07:00"},
        {"5.3.2004   14:07", D::DateAndTime, "05.03.2004 14:07:00"},  // the time stands at its place
        {"05.03.2004x14:07", D::DateAndTime, nullptr},
        {"05.03.2004 14:07:09", other, "05.03.2004 14:07:09"},
        {"05.03.2004 14:07:09", negative, "05.03.2004 14:07:09"},
        {"5.3.2004", D::DateOnly, "05.03.2004 00:00:00"},
        {"05.03.04", D::DateOnly, "05.03.2004 00:00:00"},
        {"05.03.2004 14:07:09", D::DateOnly, "05.03.2004 00:00:00"},
        {"14:07", D::TimeOnly, "01.01.1900 14:07:00"},
        {"14:07:09", D::TimeOnly, "01.01.1900 14:07:09"},
        {" 9:05", D::TimeOnly, "01.01.1900 09:05:00"},
        {"05.03.2004", D::TimeOnly, nullptr},
        {"14:07", D::DateOnly, nullptr},
        {"05.03.2004 9:07", D::DateAndTime, nullptr},    // 15 characters
        {"01.02.04 13:45", D::DateAndTime, nullptr},     // 14 characters
        {"01.02.04 13:45:30", D::DateAndTime, nullptr},  // the time is not where it is looked for
        {"", D::DateAndTime, nullptr},
        {"", D::DateOnly, nullptr},
        {"", D::TimeOnly, nullptr},
        {"", other, nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        if (each.shown != nullptr) {
            EXPECT_EQ(describe(D(each.text, each.form)), std::string(each.shown) + " defined");
            EXPECT_EQ(describe(D(NkDtString(each.text), each.form)), std::string(each.shown) + " defined");
        } else {
            expectReplaced(NkDtErrInitialwert, [&] { const D made(each.text, each.form); });
        }
    }
    const LPCTSTR none = nullptr;
    for (const auto form : {D::DateAndTime, D::DateOnly, D::TimeOnly, other})
        expectReplaced(NkDtErrInitialwert, [&] { const D made(none, form); });
}

TEST(NkDtDateTime, TakesTheBaseStateOfATextValue) {
    const NkFormat format(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        NkDtString text("05.03.2004 14:07");
        text.SetModified(TRUE);
        text.SetFormat(&format);
        const D made(text);
        EXPECT_EQ(describe(made), "05.03.2004 14:07:00 defined modified");
        EXPECT_EQ(made.GetWorkingMode(), mode);
        EXPECT_EQ(made.GetFormat(), nullptr);
        EXPECT_EQ(describe(D(NkDtString(""))), "01.01.1900 00:00:00 defined");
        EXPECT_EQ(describe(D(NkDtString(""), D::TimeOnly)), "01.01.1900 00:00:00 defined");
        expectReplaced(NkDtErrInitialwert, [] { const D other(NkDtString("x")); });
    }
    EXPECT_EQ(describe(D(NkDtString(NkDtWmNull))), "01.01.1900 00:00:00 null");
    EXPECT_EQ(describe(D(NkDtString(NkDtWmMissing), D::DateOnly)), "01.01.1900 00:00:00 missing");
    EXPECT_EQ(describe(D(NkDtString(NkDtWmDefined))), "01.01.1900 00:00:00 defined");
    EXPECT_EQ(describe(D(undefinedWithText(NkDtWmNull, "05.03.2004 14:07"))), "01.01.1900 00:00:00 null");
    EXPECT_EQ(describe(D(undefinedWithText(NkDtWmMissing, "x"))), "01.01.1900 00:00:00 missing");
}

// --- The text setters -----------------------------------------------------------------------------------

TEST(NkDtDateTime, SetDateTimeReadsDateAndTime) {
    const NoonIn2023 noon;
    struct Case {
        const char* text;
        const char* shown;
    };
    constexpr Case cases[] = {
        {"01.02.2004 13:45:30", "01.02.2004 13:45:30"},
        {"01.02.2004 13:45", "01.02.2004 13:45:00"},
        {"01.02.2004 13:45:3", "01.02.2004 13:45:00"},
        {"01.02.2004", "01.02.2004 00:00:00"},
        {"01.02.2004 ", "01.02.2004 00:00:00"},
        {"1.2.2004", "01.02.2004 00:00:00"},
        {"01.02.04", "01.02.2004 00:00:00"},
        {"01.02.04 13:45", "01.02.2004 13:45:00"},
        {"1.2.04 13:45:30", "01.02.2004 13:45:30"},
        {"1.2.04  9:05", "01.02.2004 09:05:00"},
        {"1.2.04    13:45", "01.02.2004 13:45:00"},
        {"1.2.2004 23:59:59", "01.02.2004 23:59:59"},
        {"01.02.2004  9:05", "01.02.2004 09:05:00"},
        {"01.02.2004x", nullptr},
        {"01.02.04 9:05", "01.02.2004 09:05:00"},
        {"01.02.2004 9:05", nullptr},
        {"1.2.04     ", "01.02.2004 00:00:00"},
        {"1.2.04      ", nullptr},
        {"1.2.04 x13:45", nullptr},
        {"1.2.04 13-45", nullptr},
        {"1.2.04 :5:00", nullptr},
        {"01/02/2004", nullptr},
        {"01.02/2004 10:00", "01.02.2004 10:00:00"},
        {"", nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        D value(NkDtWmNull);
        if (each.shown != nullptr) {
            value.SetDateTime(each.text);
            EXPECT_EQ(describe(value), std::string(each.shown) + " defined modified");
        } else {
            expectReplaced(NkDtErrInitialwert, [&] { value.SetDateTime(each.text); });
            EXPECT_EQ(stateOf(value), "defined modified");
        }
    }
}

TEST(NkDtDateTime, SetDateTimeOfNoTextIsTheClocksTime) {
    const NoonIn2023 noon;
    for (const NkDtWorkingMode mode : kStoredModes) {
        D value = undefined(mode);
        value.SetDateTime(nullptr);
        EXPECT_EQ(describe(value), std::string(kNow) + " defined modified");
        value.SetModified(FALSE);
        value.SetDateTime(nullptr);
        EXPECT_EQ(describe(value), std::string(kNow) + " defined");
    }
    const NoClock none;
    D value = defined("05.03.2004 14:07:09");
    expectReplaced(NkDtErrInitialwert, [&] { value.SetDateTime(nullptr); });
    EXPECT_EQ(describe(value), "05.03.2004 14:07:09 defined");
    D other = undefined(NkDtWmNull);
    expectReplaced(NkDtErrInitialwert, [&] { other.SetDateTime(nullptr); });
    EXPECT_EQ(describe(other), "05.03.2004 14:07:09 defined modified");
}

TEST(NkDtDateTime, SetDateKeepsTheTimeAndSetTimeTheDate) {
    D value = defined("05.03.2004 14:07:09");
    value.SetDate("6.3.2004");
    EXPECT_EQ(describe(value), "06.03.2004 14:07:09 defined modified");
    value.SetTime("23:59");
    EXPECT_EQ(describe(value), "06.03.2004 23:59:00 defined modified");
    value.SetDate("07.03.2004 10:00");  // the rest does not count
    EXPECT_EQ(describe(value), "07.03.2004 23:59:00 defined modified");
}

TEST(NkDtDateTime, TextSettersRaiseTheFlagForAnotherValueOnly) {
    D value = defined("05.03.2004 14:07:09");
    value.SetDateTime("05.03.2004 14:07:09");
    value.SetDate("5.3.2004");
    value.SetTime("14:07:09");
    EXPECT_EQ(stateOf(value), "defined");
    for (int step = 0; step < 3; ++step) {
        value = defined("05.03.2004 14:07:09");
        value.SetModified(FALSE);
        if (step == 0) value.SetDateTime("05.03.2004 14:07:10");
        if (step == 1) value.SetDate("05.03.2005");
        if (step == 2) value.SetTime("14:08:09");
        EXPECT_EQ(stateOf(value), "defined modified");
    }
    value.SetModified(TRUE);
    value.SetTime("14:08:09");
    EXPECT_EQ(stateOf(value), "defined modified");
}

TEST(NkDtDateTime, SetTimeOfAnUndefinedValueSetsTheDayToOneAndNothingElseOfTheDate) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        D value = undefined(mode, {9, 7, 14, 2004, 3, 5});
        value.SetTime("10:30");
        EXPECT_EQ(describe(value), "01.03.2004 10:30:00 defined modified");
        D failing = undefined(mode, {9, 7, 14, 2004, 3, 5});
        expectReplaced(NkDtErrInitialwert, [&] { failing.SetTime("x"); });
        EXPECT_EQ(describe(failing), "01.03.2004 14:07:09 defined modified");
    }
    D value = defined("05.03.2004 14:07:09");
    value.SetTime("10:30");
    EXPECT_EQ(describe(value), "05.03.2004 10:30:00 defined modified");
}

TEST(NkDtDateTime, ARefusedTextLeavesTheFieldsSetSoFarAndNoFlagForThem) {
    struct Case {
        void (D::*setter)(LPCTSTR);
        const char* text;
        ULONG cause;
        const char* after;
    };
    constexpr Case cases[] = {
        {&D::SetDateTime, "31.02.2005 10:30", NkDtErrTag, "05.02.2005 14:07:09"},
        {&D::SetDateTime, "31.13.2005 10:30", NkDtErrMonat, "05.03.2005 14:07:09"},
        {&D::SetDateTime, "01.01.1752 10:30", NkDtErrJahr, "05.03.1752 14:07:09"},
        {&D::SetDateTime, "01.01.0000 10:30", NkDtErrJahr, "05.03.0 14:07:09"},
        {&D::SetDateTime, "01.01.2005 24:30", NkDtErrStunde, "01.01.2005 14:07:09"},
        {&D::SetDateTime, "01.01.2005 23:60", NkDtErrMinute, "01.01.2005 23:07:09"},
        {&D::SetDateTime, "01.01.2005 23:59:60", NkDtErrSekunde, "01.01.2005 23:59:09"},
        {&D::SetDateTime, "01.01.2005 23:5x", NkDtErrInitialwert, "01.01.2005 23:07:09"},
        {&D::SetDateTime, "01.x1.2005", NkDtErrInitialwert, "05.03.2005 14:07:09"},
        {&D::SetDateTime, "x1.01.2005", NkDtErrInitialwert, "05.01.2005 14:07:09"},
        {&D::SetDateTime, "01.01.200x", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {&D::SetDate, "31.02.2005", NkDtErrTag, "05.02.2005 14:07:09"},
        {&D::SetDate, "", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {&D::SetTime, "10:30:61", NkDtErrSekunde, "05.03.2004 10:30:09"},
        {&D::SetTime, "10:3", NkDtErrInitialwert, "05.03.2004 14:07:09"},
        {&D::SetTime, "10:30.00", NkDtErrInitialwert, "05.03.2004 10:30:09"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.text);
        for (const NkDtWorkingMode mode : kStoredModes) {
            D value = defined("05.03.2004 14:07:09", mode);
            expectReplaced(each.cause, [&] { (value.*each.setter)(each.text); });
            EXPECT_EQ(describe(value), std::string(each.after) + " defined");
            D null = undefined(mode);
            expectReplaced(each.cause, [&] { (null.*each.setter)(each.text); });
            EXPECT_EQ(stateOf(null), "defined modified");
        }
    }
}

TEST(NkDtDateTime, SetDateAndSetTimeOfNoTextChangeNothing) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (D value : {undefined(mode), defined("05.03.2004 14:07:09", mode)}) {
            const std::string before = describe(value);
            expectReplaced(NkDtErrInitialwert, [&] { value.SetDate(nullptr); });
            expectReplaced(NkDtErrInitialwert, [&] { value.SetTime(nullptr); });
            EXPECT_EQ(describe(value), before);
        }
    }
}

TEST(NkDtDateTime, TextSettersKeepTheFieldsThatTheClassDoesNotUse) {
    const frameworktest::TimeZone zone("UTC");
    D value(std::time_t{1078488429});
    value.SetDate("06.04.2005");
    value.SetTime("10:30:00");
    value.SetDateTime("07.04.2005 11:30:00");
    value.AddDay365(1);
    value.SetMonth(5);
    EXPECT_EQ(allFieldsOf(value), "105 4 8 11 30 0 5 64 0");
    const D copy(value);
    EXPECT_EQ(allFieldsOf(copy), allFieldsOf(value));
    D assigned;
    assigned = value;
    EXPECT_EQ(allFieldsOf(assigned), allFieldsOf(value));
    EXPECT_TRUE(assigned == D("08.05.2005 11:30:00"));
    D same("08.05.2005 11:30:00");
    same = value;
    EXPECT_EQ(stateOf(same), "defined");
    EXPECT_EQ(allFieldsOf(same), allFieldsOf(value));
    value.Clear();
    EXPECT_EQ(allFieldsOf(value), "0 0 1 0 0 0 0 0 -1");
}

}  // namespace
