// The texts of durations: plain text and user-interface text.

#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfo/NkFormat.h>

#include <cstring>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "DurationTesting.h"
#include "MemoryTesting.h"
#include "TextTesting.h"
#include "ValueTesting.h"
#include "support/Instruments.h"

namespace {

using namespace valuetest;
using namespace durationtest;
using T = NkDtTime;

std::string plainText(const T& t) {
    char buffer[12];
    return t.GetValue(buffer, sizeof buffer);
}

NkFormat format(FormatZeitDarstellung display, ULONG most = 7) {
    return NkFormat(FormatZeitArtDauer, display, FormatVorzeichenVorn, FormatVorzeichenNurMinus, most, 0,
                    '0');
}

const NkFormat kHundredths = format(FormatZeitDarstellungHundertstel);
const NkFormat kMinutes = format(FormatZeitDarstellungMinuten);
const NkFormat kSeconds = format(FormatZeitDarstellungSekunden);
const NkFormat kHours = format(FormatZeitDarstellungStunden);
const NkFormat kOneDigit = format(FormatZeitDarstellungMinuten, 1);
const NkFormat kForeign(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');

// --- Writing plain text ---------------------------------------------------------------------------

struct Written {
    LONG ticks;
    const char* text[3];  // Hundredths, Minutes, HoursOnly
};
constexpr Written kWritten[] = {
    {0, {"00,00", "00:00", "00"}},
    {1800, {"01,50", "01:30", "01"}},
    {-1800, {"-01,50", "-01:30", "-01"}},
    {600, {"00,50", "00:30", "00"}},
    {-600, {"-00,50", "-00:30", "00"}},
    {-3, {"00,00", "00:00", "00"}},
    {-12, {"-00,01", "00:00", "00"}},
    {-1200, {"-01,00", "-01:00", "-01"}},
    {11988, {"09,99", "09:59", "09"}},
    {12000, {"10,00", "10:00", "10"}},
    {147600, {"123,00", "123:00", "123"}},
    {kMostTicks, {"1789569,70", "1789569:42", "1789569"}},
    {kFewestTicks, {"-1789569,70", "-1789569:42", "-1789569"}},
};

TEST(DurationText, ShowsTheLengthInTheObjectsMode) {
    for (const Written& each : kWritten) {
        for (const TimeMode mode : kTimeModes) {
            const T t = ofTicks(each.ticks, mode);
            EXPECT_EQ(plainText(t), each.text[mode]);
            std::ostringstream stream;
            stream << t;
            EXPECT_EQ(stream.str(), each.text[mode]);
        }
    }
    std::ostringstream stream;
    stream << T(NkDtWmMissing) << T(NkDtWmNull) << undefined(NkDtWmDefined, 5);
    EXPECT_EQ(stream.str(), "");
}

TEST(DurationText, IsWrittenIntoABufferThatHoldsItWithItsTerminator) {
    const T t = ofTicks(kFewestTicks);
    char buffer[14];
    std::memset(buffer, '#', sizeof buffer);
    for (const INT size : {-1, 0, 1, 11}) {
        const ErrorPtr error = expectReplaced(NkDtErrPuffer, [&] { t.GetValue(buffer, size); });
        EXPECT_STREQ(error->GetFunctionText(), "GetValue(LPTSTR,INT)");
        EXPECT_STREQ(error->GetClassText(), "NkDtTime");
        EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '#'));
    }
    EXPECT_EQ(t.GetValue(buffer, 12), buffer);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("-1789569:42\0##", 14));
    expectReplaced(NkDtErrInitialwert, [&] { t.GetValue(nullptr, 12); });
    expectReplaced(NkDtErrInitialwert, [&] { t.GetValue(nullptr, 0); });
    // Asked first.
    expectError(NkDtErrUndefiniert, [&] { T(NkDtWmMissing).GetValue(nullptr, 0); });
    EXPECT_EQ(plainText(undefined(NkDtWmNull, 1800, T::Hundredths)), "01,50");
}

// --- Reading plain text ---------------------------------------------------------------------------

struct Read {
    const char* text;
    TimeMode given;
    LONG ticks;
    TimeMode taken;
};
constexpr Read kRead[] = {
    {"1:30", T::Minutes, 1800, T::Minutes},
    {"01:30", T::CurrentMode, 1800, T::Minutes},
    {"1,50", T::Hundredths, 1800, T::Hundredths},
    {"1,50", T::CurrentMode, 1800, T::Hundredths},
    {"0,99", T::Hundredths, 1188, T::Hundredths},
    {"8", T::CurrentMode, 9600, T::HoursOnly},
    {"8", T::Minutes, 9600, T::Minutes},
    {"8", T::Hundredths, 9600, T::Hundredths},
    {"8", T::HoursOnly, 9600, T::HoursOnly},
    {"1:30", T::HoursOnly, 1200, T::HoursOnly},
    {"1,99", T::HoursOnly, 1200, T::HoursOnly},
    {"-1:30", T::Minutes, -1800, T::Minutes},
    {"+1:30", T::Minutes, 1800, T::Minutes},
    {"-0:30", T::Minutes, -600, T::Minutes},
    {"-00,50", T::CurrentMode, -600, T::Hundredths},
    {"-0:30", T::HoursOnly, 0, T::HoursOnly},
    {"+0:30", T::Minutes, 600, T::Minutes},
    {"-5", T::CurrentMode, -6000, T::HoursOnly},
    {"000000000000000001:00", T::Minutes, 1200, T::Minutes},
    {"1:59", T::Minutes, 2380, T::Minutes},
    {"1789568:59", T::Minutes, 2147482780, T::Minutes},
    {"-1789568,99", T::Hundredths, -2147482788, T::Hundredths},
    {"1789568", T::CurrentMode, 2147481600, T::HoursOnly},
};

TEST(DurationText, IsReadInTheModeGivenOrInTheOneThatTheTextShows) {
    for (const Read& each : kRead) {
        SCOPED_TRACE(each.text);
        T set;
        set.SetValue(each.text, each.given);
        EXPECT_EQ(show(set),
                  std::to_string(each.ticks) + ":" + std::to_string(each.taken) + " defined modified");
        // A constructor stores the mode that it is given.
        const TimeMode stored = each.given == T::CurrentMode ? T::Minutes : each.given;
        const std::string built = std::to_string(each.ticks) + ":" + std::to_string(stored) + " defined";
        EXPECT_EQ(show(T(each.text, each.given)), built);
        EXPECT_EQ(show(T(NkDtString(each.text), each.given)), built);
    }
}

struct Refused {
    const char* text;
    TimeMode given;
    ULONG cause;
};
constexpr Refused kRefused[] = {
    {"", T::Minutes, 5},
    {"", T::CurrentMode, 5},
    {" ", T::Minutes, 5},
    {"x", T::CurrentMode, 5},
    {"-", T::HoursOnly, 5},
    {"+", T::Minutes, 5},
    {"--1", T::Minutes, 5},
    {" 1", T::Minutes, 5},
    {"1 ", T::Minutes, 5},
    {"1.5", T::Minutes, 5},
    {" 1:30", T::Minutes, 5},
    {"1 :30", T::Minutes, 5},
    {"1:3x", T::Minutes, 5},
    {"1:-5", T::Minutes, 5},
    {"1:+5", T::Minutes, 5},
    {"1: 5", T::Minutes, 5},
    {"-:30", T::Minutes, 5},
    {"x:30", T::Minutes, 5},
    {"1:2:30", T::Minutes, 5},
    {"1,2:30", T::HoursOnly, 5},
    {"1:xx", T::HoursOnly, 5},
    {"1\t:30", T::Minutes, 5},
    {"\xB2:30", T::Minutes, 5},
    {":30", T::Minutes, 21},
    {"1:5", T::Minutes, 21},
    {",", T::CurrentMode, 21},
    {"1,5", T::Hundredths, 21},
    {":", T::HoursOnly, 21},
    {"1:30 ", T::Minutes, 21},
    {"1:300", T::Minutes, 21},
    {"1:30", T::Hundredths, 21},
    {"1,50", T::Minutes, 21},
    {"1:300", T::CurrentMode, 21},
    {"12:5", T::CurrentMode, 21},
    {"1:60", T::Minutes, 8},
    {"1:99", T::CurrentMode, 8},
    {"1789569:00", T::Minutes, 8},
    {"-1789569:00", T::Minutes, 8},
    {"1789569", T::CurrentMode, 8},
    {"-1789569,00", T::Hundredths, 8},
    {"99999999999999999999999", T::HoursOnly, 8},
    {"-99999999999999999999:00", T::Minutes, 8},
};

TEST(DurationText, RefusesEverythingElse) {
    for (const Refused& each : kRefused) {
        SCOPED_TRACE(each.text);
        expectReplaced(each.cause, [&] { const T made(each.text, each.given); });
        expectReplaced(each.cause, [&] { const T made(NkDtString(each.text), each.given); });
        T t = ofTicks(7, T::Hundredths);
        expectReplaced(each.cause, [&] { t.SetValue(each.text, each.given); });
        EXPECT_EQ(show(t), "7:0 defined");
    }
    expectReplaced(NkDtErrInitialwert, [] { const T made(LPCTSTR{nullptr}); });
}

TEST(DurationText, ReadsWhatItWritesInEveryMode) {
    std::mt19937 random(20260503);
    std::uniform_int_distribution<LONG> hours(-1789568, 1789568);
    std::uniform_int_distribution<LONG> part(0, 99);
    const int rounds = nktest::isWatched() ? 1'000 : 50'000;
    for (int i = 0; i < rounds; ++i) {
        const LONG whole = i % 2 == 0 ? hours(random) : hours(random) % 100;
        for (const TimeMode mode : kTimeModes) {
            const LONG rest = mode == T::Minutes ? part(random) % 60 : part(random);
            const T t(whole, whole < 0 ? -rest : rest, mode);
            const std::string text = plainText(t);
            EXPECT_EQ(ticksOf(T(text.c_str(), mode)), ticksOf(t)) << text;
            T set;
            set.SetValue(text.c_str());
            EXPECT_TRUE(set == t) << text;
            EXPECT_EQ(set.GetMode(), mode);
        }
    }
}

TEST(DurationText, TakesTheStateOfTheTextThatItIsReadFrom) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (const BOOL modified : {FALSE, TRUE}) {
            NkDtString text(mode);
            text = "-0:30";
            text.SetModified(modified);
            const DefaultMode elsewhere(NkDtWmDefined);
            const T t(text, T::Minutes);
            EXPECT_EQ(show(t), modified ? "-600:1 defined modified" : "-600:1 defined");
            EXPECT_EQ(t.GetWorkingMode(), mode);
        }
    }
    EXPECT_EQ(show(T(NkDtString(NkDtWmMissing))), "0:1 missing");
    EXPECT_EQ(show(T(NkDtString(NkDtWmNull), T::Hundredths)), "0:1 null");
    EXPECT_EQ(show(T(undefinedWithText(NkDtWmNull, "1:30"))), "0:1 null");
    EXPECT_EQ(show(T(undefinedWithText(NkDtWmMissing, "x"))), "0:1 missing");
    expectReplaced(NkDtErrInitialwert, [] { const T made{NkDtString(NkDtWmDefined)}; });  // a defined ""
    NkDtString withNul("1:30");
    withNul += '\0';
    withNul += 'x';
    EXPECT_EQ(ticksOf(T(withNul)), 1800);
}

TEST(DurationText, IsTheTextOfATextValueWithItsStateAndNoRoomBeyondIt) {
    EXPECT_EQ(describe(NkDtString(T(1, 30))), "'01:30' 5/5 defined");
    EXPECT_EQ(describe(NkDtString(T(1, 50, T::Hundredths))), "'01,50' 5/5 defined");
    EXPECT_EQ(describe(NkDtString(ofTicks(kFewestTicks))), "'-1789569:42' 11/11 defined");
    EXPECT_EQ(describe(NkDtString(T(NkDtWmMissing))), "'' 0/0 missing");
    EXPECT_EQ(describe(NkDtString(undefined(NkDtWmNull, 5))), "'' 0/0 null");
    T t = ofTicks(1800, T::HoursOnly, NkDtWmNull);
    t.SetModified(TRUE);
    const NkDtString text(t);
    EXPECT_EQ(describe(text), "'01' 2/2 defined modified");
    EXPECT_EQ(text.GetWorkingMode(), NkDtWmNull);
    NkDtString assigned("x");
    assigned = t;
    EXPECT_EQ(bytesOf(assigned), "01");
    assigned += T(2, 15);
    EXPECT_EQ(bytesOf(assigned), "0102:15");
    assigned = T(NkDtWmNull);
    EXPECT_EQ(stateOf(assigned), "missing modified");
}

TEST(DurationText, IsReadAndWrittenWithoutMemory) {
    T t = ofTicks(0);
    BOOL equal = FALSE;
    char buffer[12];
    const NkDtString external("C01000000013000");
    {
        const memorytest::Requests requests;
        t.SetValue("-1789568:59");
        t.GetValue(buffer, sizeof buffer);
        t.SetFromExtern(&external, TRUE, 100);
        t.SetTime(90, T::Minutes);
        t += t;
        t.Round(T::FullHour);
        equal = t == t;
        EXPECT_EQ(memorytest::Requests::count(), 0);
    }
    EXPECT_EQ(equal, TRUE);
    EXPECT_STREQ(buffer, "-1789568:59");
    EXPECT_EQ(ticksOf(t), 3600);
}

// --- User-interface text --------------------------------------------------------------------------

TEST(DurationOnTheUserInterface, IsShownInTheUnitThatTheFormatShows) {
    struct Case {
        LONG ticks;
        const char* hundredths;
        const char* minutes;
        const char* seconds;
        const char* hours;
    };
    constexpr Case cases[] = {
        {0, "0,00", "0:00", "0:00:00", "0"},
        {1800, "1,50", "1:30", "1:30:00", "1"},
        {-1800, "-1,50", "-1:30", "-1:30:00", "-1"},
        {-600, "-0,50", "-0:30", "-0:30:00", "0"},
        {19, "0,01", "0:00", "0:00:00", "0"},
        {kMostTicks, "1789569,70", "1789569:42", "1789569:42:00", "1789569"},
        {kFewestTicks, "-1789569,70", "-1789569:42", "-1789569:42:00", "-1789569"},
    };
    for (const Case& each : cases) {
        for (const TimeMode mode : kTimeModes) {
            T t = ofTicks(each.ticks, mode);
            EXPECT_EQ(t.ConvToOFL(&kHundredths), CString(each.hundredths));
            EXPECT_EQ(t.ConvToOFL(&kMinutes), CString(each.minutes));
            EXPECT_EQ(t.ConvToOFL(&kSeconds), CString(each.seconds));
            EXPECT_EQ(t.ConvToOFL(&kHours), CString(each.hours));
            EXPECT_EQ(t.ConvToOFL(), CString(mode == T::Hundredths ? each.hundredths : each.minutes));
            t.SetFormat(&kSeconds);
            EXPECT_EQ(t.ConvToOFL(), CString(each.seconds));
            EXPECT_EQ(t.ConvToOFL(&kHundredths), CString(each.hundredths));
        }
    }
}

TEST(DurationOnTheUserInterface, IsBuiltFromWhatIsReadAloneAndKeepsItsMode) {
    struct Case {
        const char* text;
        const NkFormat* given;
        LONG ticks;
    };
    const Case cases[] = {
        {"1:30", nullptr, 1800},   {"1,50", nullptr, 1800},      {"8", nullptr, 9600},
        {"-0:30", nullptr, -600},  {"-0,25", nullptr, -300},     {" 2:15 ", nullptr, 2700},
        {"1:30", &kMinutes, 1800}, {"1,25", &kHundredths, 1500}, {"1:30:00", &kSeconds, 1800},
        {"12", &kHours, 14400},    {"8", &kHundredths, 9600},    {"1789569:42", nullptr, 2147483640},
    };
    for (const Case& each : cases) {
        for (const TimeMode mode : kTimeModes) {
            for (const LONG before : {0, 1815, -1815}) {
                T t = ofTicks(before, mode);
                t.SetFromOFL(each.text, each.given);
                EXPECT_EQ(show(t),
                          std::to_string(each.ticks) + ":" + std::to_string(mode) + " defined modified")
                    << each.text;
                t.SetModified(FALSE);
                t.SetFromOFL(each.text, each.given);
                EXPECT_EQ(stateOf(t), "defined") << each.text;
            }
        }
    }
}

TEST(DurationOnTheUserInterface, BecomesDefinedAndKeepsEvenThenItsMode) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        T t = undefined(mode, 5, T::HoursOnly);
        t.SetFromOFL("0,00");
        EXPECT_EQ(show(t), "0:2 defined modified");
    }
}

TEST(DurationOnTheUserInterface, StaysAsItWasWhenATextIsRefused) {
    for (T t : {ofTicks(1815, T::Hundredths), undefined(NkDtWmMissing, 7), undefined(NkDtWmDefined)}) {
        const std::string before = show(t);
        for (const char* text : {"x", " ", "1:60", "1:3", "8,5", "1:30,", "--1:30", "1:30:00", "12345678:00"})
            expectReplaced(NkFoFehlerText, [&] { t.SetFromOFL(text); });
        expectReplaced(NkFoFehlerText, [&] { t.SetFromOFL("1,50", &kMinutes); });
        expectReplaced(NkFoFehlerText, [&] { t.SetFromOFL("12:00", &kOneDigit); });
        expectReplaced(NkFoFehlerArt, [&] { t.SetFromOFL("1:30", &kForeign); });
        expectReplaced(NkDtErrWertebereich, [&] { t.SetFromOFL("1789569:43"); });
        expectReplaced(NkDtErrWertebereich, [&] { t.SetFromOFL("-1789569,71"); });
        expectReplaced(NkDtErrWertebereich, [&] { t.SetFromOFL("9999999"); });
        EXPECT_EQ(show(t), before);
    }
    const T t(12, 0);
    expectReplaced(NkFoFehlerWert, [&] { t.ConvToOFL(&kOneDigit); });
    const ErrorPtr error = expectReplaced(NkFoFehlerArt, [&] { t.ConvToOFL(&kForeign); });
    EXPECT_STREQ(error->GetFunctionText(), "ConvToOFL(NkFormat*)");
}

TEST(DurationOnTheUserInterface, IsEmptyWhenItIsUndefinedAndClearsWhenItIsEmpty) {
    for (const T& t : {undefined(NkDtWmMissing, 5), undefined(NkDtWmNull, 5), undefined(NkDtWmDefined, 5)})
        EXPECT_EQ(t.ConvToOFL(&kForeign), CString(""));
    for (const LPCTSTR text : {LPCTSTR{nullptr}, LPCTSTR{""}}) {
        T t = ofTicks(1800, T::Hundredths);
        t.SetFromOFL(text, &kForeign);
        EXPECT_EQ(show(t), "0:1 missing modified");
        T always = ofTicks(1800, T::Minutes, NkDtWmDefined);
        always.SetFromOFL(text);
        EXPECT_EQ(show(always), "0:1 defined modified");
    }
}

}  // namespace
