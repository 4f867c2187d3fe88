// Durations: how they are built, read and assigned, and where their errors come from.

#include <nkdt/NkDtLong.h>
#include <nkdt/NkDtString.h>
#include <nkdt/NkDtTime.h>
#include <nkfo/NkFormat.h>

#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "DurationTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using namespace durationtest;
using T = NkDtTime;

NkDtLong nullStoring(LONG n) {
    NkDtLong value(NkDtWmNull);
    load(value, written([&](CArchive& archive) { archive << DWORD{0} << n; }));
    value.SetModified(FALSE);
    return value;
}

// --- Construction ---------------------------------------------------------------------------------

TEST(NkDtTime, IsBuiltEmptyInItsWorkingMode) {
    EXPECT_EQ(show(T(NkDtWmMissing)), "0:1 missing");
    EXPECT_EQ(show(T(NkDtWmNull)), "0:1 null");
    EXPECT_EQ(show(T(NkDtWmDefined)), "0:1 defined");
    for (const NkDtWorkingMode mode : kStoredModes) {
        const DefaultMode scope(mode);
        EXPECT_EQ(show(T()), show(T(mode)));
        EXPECT_EQ(T().GetWorkingMode(), mode);
    }
}

TEST(NkDtTime, IsBuiltFromHoursAndAPartInTheUnitOfTheMode) {
    struct Case {
        LONG hours;
        LONG part;
        TimeMode mode;
        const char* shown;
    };
    constexpr Case cases[] = {
        {1, 30, T::Minutes, "1800:1 defined"},
        {1, 50, T::Hundredths, "1800:0 defined"},
        {1, 59, T::HoursOnly, "1200:2 defined"},
        {1, 30, T::CurrentMode, "1800:1 defined"},
        {2, -30, T::Minutes, "1800:1 defined"},
        {-1, 30, T::Minutes, "-600:1 defined"},
        {-1, -30, T::Minutes, "-1800:1 defined"},
        {0, 90, T::Minutes, "1800:1 defined"},
        {0, 0, T::Hundredths, "0:0 defined"},
        {1789569, 42, T::Minutes, "2147483640:1 defined"},
        {-1789569, -70, T::Hundredths, "-2147483640:0 defined"},
    };
    for (const Case& each : cases) {
        const DefaultMode scope(NkDtWmNull);
        const T made(each.hours, each.part, each.mode);
        EXPECT_EQ(show(made), each.shown);
        EXPECT_EQ(made.GetWorkingMode(), NkDtWmNull);
        EXPECT_EQ(made.GetFormat(), nullptr);
    }
    EXPECT_EQ(show(T(1, 30)), "1800:1 defined");
}

TEST(NkDtTime, IsNotBuiltBeyondItsTicks) {
    EXPECT_EQ(ticksOf(T(1789570, -19, T::Minutes)), 2147483620);
    constexpr LONG most = std::numeric_limits<LONG>::max();
    constexpr LONG least = std::numeric_limits<LONG>::min();
    for (const auto& [hours, part] : {std::pair{LONG{1789570}, LONG{0}},
                                      {-1789570, 0},
                                      {0, 107374183},
                                      {most, most},
                                      {least, least},
                                      {1789569, 43},
                                      {-1789569, -43},
                                      {1789570, -1}})
        expectReplaced(NkDtErrWertebereich, [hours = hours, part = part] { const T made(hours, part); });
    EXPECT_EQ(ticksOf(T(0, most, T::HoursOnly)), 0);  // the part does not count
}

TEST(NkDtTime, RefusesATimeModeThatIsNoneInEveryConstructor) {
    const NkDtString text("1:30");
    const NkDtString undefinedText(NkDtWmNull);
    for (const TimeMode none : kNoTimeModes) {
        expectReplaced(NkDtErrZeitmodus, [&] { const T made(1, 30, none); });
        expectReplaced(NkDtErrZeitmodus, [&] { const T made("1:30", none); });
        expectReplaced(NkDtErrZeitmodus, [&] { const T made(text, none); });
        expectReplaced(NkDtErrZeitmodus, [&] { const T made(undefinedText, none); });
        expectReplaced(NkDtErrZeitmodus, [&] { const T made(NkDtLong(1), NkDtLong(30), none); });
        expectReplaced(NkDtErrZeitmodus, [&] { const T made(NkDtLong(NkDtWmMissing), NkDtLong(30), none); });
    }
}

TEST(NkDtTime, IsBuiltFromNumbersOfWhichNoneIsMissing) {
    const DefaultMode scope(NkDtWmNull);
    const NkDtLong missing(NkDtWmMissing);
    const NkDtLong null(NkDtWmNull);
    const NkDtLong one(1);
    const NkDtLong thirty(30);
    EXPECT_EQ(show(T(one, thirty)), "1800:1 defined");
    EXPECT_EQ(show(T(one, thirty, T::Hundredths)), "1560:0 defined");
    EXPECT_EQ(show(T(one, thirty, T::CurrentMode)), "1800:1 defined");
    EXPECT_EQ(show(T(one, null)), "1200:1 defined");
    EXPECT_EQ(show(T(null, thirty)), "600:1 defined");
    EXPECT_EQ(show(T(null, null)), "0:1 defined");
    EXPECT_EQ(show(T(nullStoring(2), nullStoring(15))), "2700:1 defined");
    EXPECT_EQ(show(T(missing, thirty, T::Hundredths)), "0:1 null");
    EXPECT_EQ(show(T(one, missing)), "0:1 null");
    EXPECT_EQ(show(T(missing, missing)), "0:1 null");
    EXPECT_EQ(T(one, thirty).GetWorkingMode(), NkDtWmNull);
    expectReplaced(NkDtErrWertebereich, [] { const T made(NkDtLong(1789570), NkDtLong(0)); });
    NkDtSetDefaultWorkingMode(NkDtWmDefined);
    EXPECT_EQ(show(T(missing, thirty)), "0:1 defined");
}

TEST(NkDtTime, IsCopiedWithLengthTimeModeAndStateButNotTheFormat) {
    const NkFormat format(FormatZeitArtDauer, FormatZeitDarstellungMinuten, FormatVorzeichenVorn,
                          FormatVorzeichenNurMinus, 7, 0, '0');
    for (const NkDtWorkingMode mode : kStoredModes) {
        T source = ofTicks(7, T::Hundredths, mode);
        source.SetModified(TRUE);
        source.SetFormat(&format);
        const DefaultMode elsewhere(NkDtWmDefined);
        const T copy(source);
        EXPECT_EQ(show(copy), "7:0 defined modified");
        EXPECT_EQ(copy.GetWorkingMode(), mode);
        EXPECT_EQ(copy.GetFormat(), nullptr);
    }
    EXPECT_EQ(show(T(undefined(NkDtWmNull, 9, T::HoursOnly))), "9:2 null");
}

// --- Reading --------------------------------------------------------------------------------------

TEST(NkDtTime, TellsItsPartsInEveryMode) {
    struct Case {
        LONG ticks;
        LONG hour;
        LONG part[3];  // Hundredths, Minutes, HoursOnly
        LONG whole[3];
    };
    constexpr Case cases[] = {
        {1800, 1, {50, 30, 0}, {150, 90, 60}},
        {-1800, -1, {-50, -30, 0}, {-150, -90, -60}},
        {1199, 0, {99, 59, 0}, {99, 59, 0}},
        {-1199, 0, {-99, -59, 0}, {-99, -59, 0}},
        {11, 0, {0, 0, 0}, {0, 0, 0}},
        {-19, 0, {-1, 0, 0}, {-1, 0, 0}},
        {3600, 3, {0, 0, 0}, {300, 180, 180}},
        {kMostTicks, 1789569, {70, 42, 0}, {178956970, 107374182, 107374140}},
        {kFewestTicks, -1789569, {-70, -42, 0}, {-178956970, -107374182, -107374140}},
    };
    for (const Case& each : cases) {
        for (const TimeMode own : kTimeModes) {
            const T t = ofTicks(each.ticks, own);
            EXPECT_EQ(t.GetHour(), each.hour) << each.ticks;
            for (const TimeMode mode : kTimeModes) {
                EXPECT_EQ(t.GetMin(mode), each.part[mode]) << each.ticks << " " << mode;
                EXPECT_EQ(t.GetTime(mode), each.whole[mode]) << each.ticks << " " << mode;
            }
            EXPECT_EQ(t.GetMin(), each.part[own]) << each.ticks;
            EXPECT_EQ(t.GetTime(T::CurrentMode), each.whole[own]) << each.ticks;
            EXPECT_EQ(stateOf(t), "defined");
        }
    }
}

TEST(NkDtTime, ReadsANullAsItsStoredLengthAndRefusesToReadAMissingOne) {
    EXPECT_EQ(T(NkDtWmNull).GetTime(T::Minutes), 0);
    const T null = undefined(NkDtWmNull, 1800);
    EXPECT_EQ(null.GetHour(), 1);
    EXPECT_EQ(null.GetMin(), 30);
    EXPECT_EQ(null.GetTime(), 90);
    const T inModeTwo = undefined(NkDtWmDefined, 1800);  // neither missing nor null
    EXPECT_EQ(inModeTwo.GetTime(), 90);
    const T missing = undefined(NkDtWmMissing, 1800);
    expectError(NkDtErrUndefiniert, [&] { missing.GetHour(); });
    // Asked before the mode.
    expectError(NkDtErrUndefiniert, [&] { missing.GetMin(kNoTimeModes[0]); });
    expectError(NkDtErrUndefiniert, [&] { missing.GetTime(kNoTimeModes[1]); });
    EXPECT_EQ(missing.GetMode(), T::Minutes);
}

TEST(NkDtTime, RefusesToTellItsPartsInATimeModeThatIsNone) {
    const T t(1, 30);
    for (const TimeMode none : kNoTimeModes) {
        expectError(NkDtErrZeitmodus, [&] { t.GetMin(none); });
        expectError(NkDtErrZeitmodus, [&] { t.GetTime(none); });
    }
}

// --- Assignment -----------------------------------------------------------------------------------

TEST(NkDtTime, TakesLengthTimeModeAndDefinednessAndKeepsItsWorkingMode) {
    struct Case {
        T before;
        T assigned;
        const char* after;
    };
    const Case cases[] = {
        {ofTicks(1800), ofTicks(1800), "1800:1 defined"},
        {ofTicks(1800), ofTicks(1500), "1500:1 defined modified"},
        {ofTicks(1800), ofTicks(1800, T::Hundredths), "1800:0 defined modified"},
        {ofTicks(1800), undefined(NkDtWmNull), "0:1 missing modified"},
        {ofTicks(0, T::Minutes, NkDtWmDefined), undefined(NkDtWmNull), "0:1 defined"},
        {ofTicks(5, T::Minutes, NkDtWmDefined), undefined(NkDtWmNull, 7), "7:1 defined modified"},
        {undefined(NkDtWmNull, 5), ofTicks(5), "5:1 defined modified"},
        {undefined(NkDtWmNull), undefined(NkDtWmMissing), "0:1 null"},
    };
    for (const Case& each : cases) {
        T copied(each.before);
        copied = each.assigned;
        EXPECT_EQ(show(copied), each.after) << show(each.before) << " = " << show(each.assigned);
        EXPECT_EQ(copied.GetWorkingMode(), each.before.GetWorkingMode());
        T moved(each.before);
        moved = T(each.assigned);
        EXPECT_EQ(show(moved), each.after);
        T assigned(each.before);
        assigned.Assign(each.assigned);
        EXPECT_EQ(show(assigned), each.after);
    }
}

TEST(NkDtTime, IsNotChangedByItself) {
    for (T t : {ofTicks(1800, T::Hundredths), undefined(NkDtWmMissing, 7), undefined(NkDtWmDefined, 7)}) {
        const std::string before = show(t);
        const T& itself = t;
        t = itself;
        t.Assign(t);
        EXPECT_EQ(show(t), before);
    }
}

// --- Counts ---------------------------------------------------------------------------------------

TEST(NkDtTime, TakesCountsOfEveryWholeTypeThatFit) {
    EXPECT_EQ(show(T(1L, 30L)), "1800:1 defined");
    EXPECT_EQ(show(T(short{1}, 30U, T::Hundredths)), "1560:0 defined");
    T t = ofTicks(0);
    t.SetHour(1L);
    t.SetMin(NkDtLong(30));
    t.AddHour(short{1});
    t.SubHour(1ULL);
    t.AddMin(15LL, T::Minutes);
    t.SubMin(NkDtShort(5));
    EXPECT_EQ(ticksOf(t), 2000);
    t.SetTime(90L, T::Minutes);
    t.SetFromSQL(1801L);
    EXPECT_EQ(ticksOf(t), 1801);
    t.SetModified(FALSE);
    constexpr LONGLONG wide = 2147483648;
    expectError(NkDtErrWertebereich, [&] { t.SetHour(wide); });
    expectError(NkDtErrWertebereich, [&] { t.SetMin(4294967295U); });
    expectError(NkDtErrWertebereich, [&] { t.SetTime(-wide - 1); });
    expectError(NkDtErrWertebereich, [&] { t.AddMin(wide); });
    expectError(NkDtErrWertebereich, [&] { t.SetFromSQL(wide); });
    expectError(NkDtErrWertebereich, [&] { const T made(wide, 0L); });
    expectError(NkDtErrUndefiniert, [&] { t.AddHour(NkDtLong(NkDtWmMissing)); });
    EXPECT_EQ(show(t), "1801:1 defined");
}

// --- Where errors come from -----------------------------------------------------------------------

TEST(NkDtTime, NamesTheOriginsOfItsErrors) {
    static T t(1, 30);
    static T missing(NkDtWmMissing);
    static const NkDtString bad("x");
    static const TimeMode none = kNoTimeModes[0];
    constexpr const char* module = ".\\dttime.cc";
    const std::string name = "NkDtTime";
    expectOrigins({
        {"text", [] { const T made("x"); }, 1, module, name, "NkDtTime(LPCTSTR,TimeMode)", FALSE, 5},
        {"text value", [] { const T made(bad); }, 1, module, name, "NkDtTime(NkDtString&,TimeMode)", FALSE,
         5},
        {"parts", [] { const T made(1789570, 0); }, 1, module, name, "NkDtTime(LONG,LONG,TimeMode)", FALSE,
         8},
        {"number values", [] { const T made(NkDtLong(1), NkDtLong(0), none); }, 1, module, name,
         "NkDtTime(NkDtLong&,NkDtLong&,TimeMode)", FALSE, 17},
        {"GetHour", [] { missing.GetHour(); }, 2, module, name, "GetHour()"},
        {"GetMin", [] { missing.GetMin(); }, 2, module, name, "GetMin(TimeMode)"},
        {"GetMin mode", [] { t.GetMin(none); }, 17, module, name, "GetMin(TimeMode)"},
        {"GetTime", [] { missing.GetTime(); }, 2, module, name, "GetTime(TimeMode)"},
        {"GetTime mode", [] { t.GetTime(none); }, 17, module, name, "GetTime(TimeMode)"},
        {"SetValue", [] { t.SetValue("x"); }, 1, module, name, "SetValue(LPCTSTR,TimeMode)", FALSE, 5},
        {"SetHour", [] { t.SetHour(1789570); }, 1, module, name, "SetHour(LONG)", FALSE, 8},
        {"SetMin", [] { t.SetMin(2147483647); }, 1, module, name, "SetMin(LONG,TimeMode)", FALSE, 8},
        {"SetMin mode", [] { t.SetMin(1, none); }, 17, module, name, "SetMin(LONG,TimeMode)"},
        {"SetTime", [] { t.SetTime(2147483647); }, 1, module, name, "SetTime(LONG,TimeMode)", FALSE, 8},
        {"SetTime mode", [] { t.SetTime(1, none); }, 17, module, name, "SetTime(LONG,TimeMode)"},
        {"AddHour", [] { t.AddHour(1789570); }, 1, module, name, "AddHour(LONG)", FALSE, 8},
        {"AddHour of missing", [] { missing.AddHour(1); }, 2, module, name, "AddHour(LONG)"},
        {"SubHour", [] { t.SubHour(2147483647); }, 1, module, name, "SubHour(LONG)", FALSE, 8},
        {"AddMin", [] { missing.AddMin(1); }, 2, module, name, "AddMin(LONG,TimeMode)"},
        {"AddMin mode", [] { t.AddMin(1, none); }, 17, module, name, "AddMin(LONG,TimeMode)"},
        {"SubMin", [] { missing.SubMin(1); }, 2, module, name, "SubMin(LONG,TimeMode)"},
        {"SetMode", [] { t.SetMode(none); }, 17, module, name, "SetMode(TimeMode)"},
        {"Reset", [] { t.Reset(none); }, 17, module, name, "Reset(TimeMode)"},
        {"Round", [] { t.Round(static_cast<NkDtTime::RoundMode>(3)); }, 31, module, name, "Round(RoundMode)"},
        {"Assign", [] { t.Assign(NkDtLong(1)); }, 10, module, name, "Assign(NkDtBasis&)"},
    });
    EXPECT_EQ(show(t), "1800:1 defined");
}

}  // namespace
