// Durations: how they are set, moved and rounded.

#include <nkdt/NkDtTime.h>

#include <functional>
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

// --- Setting --------------------------------------------------------------------------------------

TEST(NkDtTime, SetsTheHoursAndKeepsThePartOfItsModeWithItsSign) {
    struct Case {
        LONG before;
        TimeMode mode;
        LONG hours;
        const char* after;
    };
    constexpr Case cases[] = {
        {1800, T::Minutes, 2, "3000:1 defined modified"},
        {1800, T::Minutes, 1, "1800:1 defined"},
        {-1800, T::Minutes, 2, "1800:1 defined modified"},  // -30 minutes stay
        {-1800, T::Minutes, -1, "-1800:1 defined"},
        {1815, T::Minutes, 1, "1800:1 defined modified"},  // 15 ticks are below a minute
        {1815, T::Hundredths, 1, "1812:0 defined modified"},
        {1800, T::HoursOnly, 1, "1200:2 defined modified"},
        {1800, T::HoursOnly, 0, "0:2 defined modified"},
    };
    for (const Case& each : cases) {
        T t = ofTicks(each.before, each.mode);
        t.SetHour(each.hours);
        EXPECT_EQ(show(t), each.after) << each.before << " " << each.hours;
    }
}

TEST(NkDtTime, SetsThePartInAnyModeAndKeepsTheHours) {
    struct Case {
        LONG before;
        TimeMode own;
        LONG part;
        TimeMode mode;
        const char* after;
    };
    constexpr Case cases[] = {
        {1200, T::Minutes, 30, T::CurrentMode, "1800:1 defined modified"},
        {1800, T::Minutes, 30, T::Minutes, "1800:1 defined"},
        {1800, T::Minutes, 50, T::Hundredths, "1800:1 defined"},
        {1800, T::Minutes, 25, T::Hundredths, "1500:1 defined modified"},
        {1800, T::Hundredths, 25, T::CurrentMode, "1500:0 defined modified"},
        {1800, T::Minutes, 45, T::HoursOnly, "1200:1 defined modified"},
        {1800, T::Minutes, -30, T::Minutes, "600:1 defined modified"},
        {1800, T::Minutes, 90, T::Minutes, "3000:1 defined modified"},
        {-1800, T::Minutes, 15, T::Minutes, "-900:1 defined modified"},
        {-600, T::Minutes, -15, T::Minutes, "-300:1 defined modified"},
    };
    for (const Case& each : cases) {
        T t = ofTicks(each.before, each.own);
        t.SetMin(each.part, each.mode);
        EXPECT_EQ(show(t), each.after) << each.before << " " << each.part << " " << each.mode;
    }
}

TEST(NkDtTime, SetsTheWholeLengthInTheUnitThatItTellsItIn) {
    struct Case {
        TimeMode own;
        LONG length;
        TimeMode mode;
        const char* after;
    };
    constexpr Case cases[] = {
        {T::Minutes, 90, T::CurrentMode, "1800:1 defined modified"},
        {T::Minutes, 150, T::Hundredths, "1800:1 defined modified"},
        {T::Hundredths, 150, T::CurrentMode, "1800:0 defined modified"},
        {T::Minutes, 90, T::HoursOnly, "1200:1 defined modified"},
        {T::HoursOnly, 119, T::CurrentMode, "1200:2 defined modified"},
        {T::HoursOnly, -119, T::CurrentMode, "-1200:2 defined modified"},
        {T::Minutes, -1, T::Minutes, "-20:1 defined modified"},
        {T::Minutes, 107374182, T::Minutes, "2147483640:1 defined modified"},
        {T::Minutes, -107374182, T::Minutes, "-2147483640:1 defined modified"},
        {T::Minutes, 178956970, T::Hundredths, "2147483640:1 defined modified"},
        {T::HoursOnly, 107374199, T::HoursOnly, "2147482800:2 defined modified"},
        {T::Minutes, 0, T::Minutes, "0:1 defined"},
    };
    for (const Case& each : cases) {
        T t = ofTicks(0, each.own);
        t.SetTime(each.length, each.mode);
        EXPECT_EQ(show(t), each.after) << each.length << " " << each.mode;
    }
}

TEST(NkDtTime, BecomesDefinedByASetterAndTakesTheModeGivenOnlyThen) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        T hour = undefined(mode, 1815, T::Hundredths);
        hour.SetHour(2);
        EXPECT_EQ(show(hour), "3012:0 defined modified");
        T part = undefined(mode, 1815, T::Hundredths);
        part.SetMin(30, T::Minutes);
        EXPECT_EQ(show(part), "1800:1 defined modified");
        T current = undefined(mode, 1815, T::Hundredths);
        current.SetMin(30);
        EXPECT_EQ(show(current), "1560:0 defined modified");
        T length = undefined(mode, 0, T::Hundredths);
        length.SetTime(0, T::HoursOnly);
        EXPECT_EQ(show(length), "0:2 defined modified");
        T text = undefined(mode, 0, T::HoursOnly);
        text.SetValue("1,50");
        EXPECT_EQ(show(text), "1800:0 defined modified");
        EXPECT_EQ(text.GetWorkingMode(), mode);
    }
}

TEST(NkDtTime, IsSetFromATextAndTakesTheModeThatItWasReadIn) {
    struct Case {
        const char* text;
        TimeMode given;
        const char* after;
    };
    constexpr Case cases[] = {
        {"1:30", T::CurrentMode, "1800:1 defined"},
        {"1,50", T::CurrentMode, "1800:0 defined"},  // the mode alone is no change
        {"1", T::CurrentMode, "1200:2 defined modified"},
        {"1", T::Minutes, "1200:1 defined modified"},
        {"1", T::Hundredths, "1200:0 defined modified"},
        {"1:45", T::HoursOnly, "1200:2 defined modified"},
        {"-0:30", T::Minutes, "-600:1 defined modified"},
    };
    for (const Case& each : cases) {
        T t = ofTicks(1800);
        t.SetValue(each.text, each.given);
        EXPECT_EQ(show(t), each.after) << each.text;
    }
}

TEST(NkDtTime, StaysAsItWasWhenASetterRefuses) {
    constexpr LONG most = std::numeric_limits<LONG>::max();
    const std::pair<ULONG, std::function<void(T&)>> refused[] = {
        {NkDtErrWertebereich, [](T& t) { t.SetHour(1789570); }},
        {NkDtErrWertebereich, [](T& t) { t.SetHour(most); }},
        {NkDtErrWertebereich, [](T& t) { t.SetMin(most, T::Minutes); }},
        {NkDtErrWertebereich, [](T& t) { t.SetTime(107374183, T::Minutes); }},
        {NkDtErrWertebereich, [](T& t) { t.SetTime(-178956971, T::Hundredths); }},
        {NkDtErrWertebereich, [](T& t) { t.SetTime(most, T::Hundredths); }},
        {NkDtErrWertebereich, [](T& t) { t.SetValue("1:60"); }},
        {NkDtErrInitialwert, [](T& t) { t.SetValue(""); }},
        {NkDtErrInitialwert, [](T& t) { t.SetValue(nullptr); }},
        {NkDtErrFormatVerletzt, [](T& t) { t.SetValue("1,50", T::Minutes); }},
        {NkDtErrZeitmodus, [](T& t) { t.SetValue("1:30", kNoTimeModes[0]); }},
    };
    for (const auto& [cause, operation] : refused) {
        for (T t : {ofTicks(1815, T::Hundredths), undefined(NkDtWmMissing, 1815, T::HoursOnly),
                    undefined(NkDtWmNull, 1815), undefined(NkDtWmDefined, 1815)}) {
            const std::string before = show(t);
            expectReplaced(cause, [&, &set = operation] { set(t); });
            EXPECT_EQ(show(t), before);
        }
    }
    for (const TimeMode none : kNoTimeModes) {
        T t = undefined(NkDtWmMissing, 1815);
        expectError(NkDtErrZeitmodus, [&] { t.SetMin(1, none); });
        expectError(NkDtErrZeitmodus, [&] { t.SetTime(1, none); });
        expectError(NkDtErrZeitmodus, [&] { t.SetMode(none); });
        expectError(NkDtErrZeitmodus, [&] { t.Reset(none); });
        EXPECT_EQ(show(t), "1815:1 missing");
    }
}

TEST(NkDtTime, ChangesItsTimeModeAndKeepsItsLength) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        for (T t : {ofTicks(1815, T::Minutes, mode), undefined(mode, 1815)}) {
            const std::string state = stateOf(t);
            t.SetMode(T::Minutes);
            t.SetMode(T::CurrentMode);
            EXPECT_EQ(show(t), "1815:1 " + state);
            t.SetMode(T::HoursOnly);
            EXPECT_EQ(show(t), "1815:2 " + state + " modified");
            EXPECT_EQ(t.GetMode(), T::HoursOnly);
        }
    }
}

TEST(NkDtTime, IsResetToADefinedZeroInAMode) {
    struct Case {
        T before;
        TimeMode mode;
        const char* after;
    };
    const Case cases[] = {
        {ofTicks(1800), T::CurrentMode, "0:1 defined modified"},
        {ofTicks(0), T::CurrentMode, "0:1 defined"},
        {ofTicks(0), T::Minutes, "0:1 defined"},
        {ofTicks(0), T::Hundredths, "0:0 defined modified"},
        {ofTicks(0, T::HoursOnly), T::CurrentMode, "0:2 defined"},
        {undefined(NkDtWmMissing), T::CurrentMode, "0:1 defined modified"},
        {undefined(NkDtWmNull, 5), T::Hundredths, "0:0 defined modified"},
    };
    for (const Case& each : cases) {
        T t(each.before);
        t.Reset(each.mode);
        EXPECT_EQ(show(t), each.after) << show(each.before);
    }
}

TEST(NkDtTime, ClearsToTheEmptyValue) {
    struct Case {
        LONG ticks;
        TimeMode timeMode;
        const char* inModeNull;
        const char* inModeTwo;
    };
    constexpr Case cases[] = {{0, T::Minutes, "0:1 null modified", "0:1 defined"},
                              {1800, T::Minutes, "0:1 null modified", "0:1 defined modified"},
                              {0, T::Hundredths, "0:1 null modified", "0:1 defined modified"}};
    for (const Case& each : cases) {
        T null = ofTicks(each.ticks, each.timeMode, NkDtWmNull);
        null.Clear();
        EXPECT_EQ(show(null), each.inModeNull);
        T always = ofTicks(each.ticks, each.timeMode, NkDtWmDefined);
        always.Clear();
        EXPECT_EQ(show(always), each.inModeTwo);
    }
    T null(NkDtWmNull);
    null.Clear();
    EXPECT_EQ(show(null), "0:1 null");
    T stores = undefined(NkDtWmNull, 5);
    stores.Clear();
    EXPECT_EQ(show(stores), "0:1 null modified");
}

// --- Moving ---------------------------------------------------------------------------------------

TEST(NkDtTime, MovesByUnitsOfAMode) {
    struct Case {
        TimeMode own;
        LONG count;
        TimeMode mode;
        LONG distance;
    };
    constexpr Case cases[] = {
        {T::Minutes, 45, T::CurrentMode, 900},    {T::Minutes, 45, T::Minutes, 900},
        {T::Minutes, 45, T::Hundredths, 540},     {T::Minutes, 45, T::HoursOnly, 540},
        {T::Hundredths, 45, T::CurrentMode, 540}, {T::HoursOnly, 45, T::CurrentMode, 540},
        {T::HoursOnly, -45, T::Minutes, -900},
    };
    for (const Case& each : cases) {
        T more = ofTicks(1807, each.own);
        more.AddMin(each.count, each.mode);
        EXPECT_EQ(ticksOf(more), 1807 + each.distance);
        EXPECT_EQ(stateOf(more), "defined modified");
        EXPECT_EQ(more.GetMode(), each.own);
        T less = ofTicks(1807, each.own);
        less.SubMin(each.count, each.mode);
        EXPECT_EQ(ticksOf(less), 1807 - each.distance);
        EXPECT_EQ(stateOf(less), "defined modified");
    }
}

TEST(NkDtTime, WrapsAroundWhenItIsMovedBeyondItsTicksByUnits) {
    T most = ofTicks(kMostTicks);
    most.AddMin(1);
    EXPECT_EQ(show(most), "-2147483629:1 defined modified");
    most.SubMin(1);
    EXPECT_EQ(show(most), "2147483647:1 defined modified");
    T fewest = ofTicks(kFewestTicks, T::Hundredths);
    fewest.SubMin(1);
    EXPECT_EQ(show(fewest), "2147483636:0 defined modified");
    T round = ofTicks(5);
    round.AddMin(std::numeric_limits<LONG>::min());  // 20 times 2^31 is a multiple of 2^32
    EXPECT_EQ(show(round), "5:1 defined modified");
    round.SubMin(std::numeric_limits<LONG>::min(), T::Hundredths);
    EXPECT_EQ(show(round), "5:1 defined modified");
}

TEST(NkDtTime, MovesByHoursAndKeepsThePartOfItsMode) {
    struct Case {
        LONG before;
        TimeMode mode;
        LONG hours;
        LONG after;
    };
    constexpr Case cases[] = {
        {1800, T::Minutes, 1, 3000},
        {1800, T::Minutes, -2, -600},
        {-1800, T::Minutes, 1, -600},
        {-1800, T::Minutes, 3, 1800},
        {1815, T::Minutes, 1, 3000},
        {1815, T::Hundredths, 1, 3012},
        {1815, T::HoursOnly, 1, 2400},
        {0, T::Minutes, 1789569, 2147482800},
        {kMostTicks, T::Minutes, -1789569, 840},
    };
    for (const Case& each : cases) {
        T more = ofTicks(each.before, each.mode);
        more.AddHour(each.hours);
        EXPECT_EQ(ticksOf(more), each.after) << each.before << " " << each.hours;
        EXPECT_EQ(stateOf(more), "defined modified");
        T less = ofTicks(each.before, each.mode);
        less.SubHour(-each.hours);
        EXPECT_EQ(ticksOf(less), each.after) << each.before << " " << each.hours;
        EXPECT_EQ(stateOf(less), "defined modified");
    }
}

TEST(NkDtTime, RefusesToBeMovedBeyondItsTicksByHours) {
    T t = ofTicks(1800);
    for (const LONG hours : {LONG{1789569}, std::numeric_limits<LONG>::max()}) {
        expectReplaced(NkDtErrWertebereich, [&] { t.AddHour(hours); });
        EXPECT_EQ(show(t), "1800:1 defined");
    }
    for (const LONG hours : {LONG{1789572}, std::numeric_limits<LONG>::max()}) {
        expectReplaced(NkDtErrWertebereich, [&] { t.SubHour(hours); });
        EXPECT_EQ(show(t), "1800:1 defined");
    }
    expectReplaced(NkDtErrWertebereich, [&] { t.SubHour(std::numeric_limits<LONG>::min()); });
    // A null is marked first.
    T null = undefined(NkDtWmNull, 1800);
    expectReplaced(NkDtErrWertebereich, [&] { null.AddHour(1789569); });
    EXPECT_EQ(show(null), "1800:1 defined modified");
}

const std::pair<const char*, std::function<void(T&, LONG)>> kMoves[] = {
    {"AddHour", [](T& t, LONG n) { t.AddHour(n); }},
    {"SubHour", [](T& t, LONG n) { t.SubHour(n); }},
    {"AddMin", [](T& t, LONG n) { t.AddMin(n); }},
    {"SubMin", [](T& t, LONG n) { t.SubMin(n); }},
};

TEST(NkDtTime, RefusesToMoveAMissingLength) {
    for (const auto& [name, move] : kMoves) {
        for (const LONG count : {0, 1}) {
            T missing = undefined(NkDtWmMissing, 1800);
            expectError(NkDtErrUndefiniert, [&, &by = move] { by(missing, count); });
            EXPECT_EQ(show(missing), "1800:1 missing") << name;
        }
    }
    T missing;
    expectError(NkDtErrUndefiniert, [&] { missing.AddMin(1, kNoTimeModes[0]); });
    T null(NkDtWmNull);
    expectError(NkDtErrZeitmodus, [&] { null.AddMin(1, kNoTimeModes[0]); });
    expectError(NkDtErrZeitmodus, [&] { null.SubMin(0, kNoTimeModes[1]); });
    EXPECT_EQ(show(null), "0:1 null");
}

TEST(NkDtTime, IsMarkedDefinedAndOtherwiseUnchangedWhenItIsMovedByZero) {
    for (const auto& [name, move] : kMoves) {
        T defined = ofTicks(1815, T::HoursOnly);
        move(defined, 0);
        EXPECT_EQ(show(defined), "1815:2 defined") << name;
        for (const NkDtWorkingMode mode : {NkDtWmNull, NkDtWmDefined}) {
            T none = undefined(mode, 1815, T::HoursOnly);
            move(none, 0);
            EXPECT_EQ(show(none), "1815:2 defined modified") << name;
        }
    }
}

TEST(NkDtTime, IsMovedFromTheStoredLengthOfANull) {
    T null = undefined(NkDtWmNull, 1800);
    null.AddMin(30);
    EXPECT_EQ(show(null), "2400:1 defined modified");
    T empty(NkDtWmNull);
    empty.SubHour(2);
    EXPECT_EQ(show(empty), "-2400:1 defined modified");
}

// --- Rounding -------------------------------------------------------------------------------------

TEST(NkDtTime, IsRoundedAwayFromZeroNeverToTheNearest) {
    struct Case {
        LONG ticks;
        LONG quarter;
        LONG half;
        LONG full;
    };
    constexpr Case cases[] = {
        {0, 0, 0, 0},
        {1, 300, 600, 1200},
        {-1, -300, -600, -1200},
        {1220, 1500, 1800, 2400},
        {-1220, -1500, -1800, -2400},
        {1200, 1200, 1200, 1200},
        {300, 300, 600, 1200},
        {-300, -300, -600, -1200},
        {601, 900, 1200, 1200},
    };
    for (const Case& each : cases) {
        for (const TimeMode mode : kTimeModes) {
            const std::pair<NkDtTime::RoundMode, LONG> results[] = {
                {T::QuarterHour, each.quarter}, {T::HalfHour, each.half}, {T::FullHour, each.full}};
            for (const auto& [step, result] : results) {
                T t = ofTicks(each.ticks, mode);
                t.Round(step);
                const std::string state = result == each.ticks ? " defined" : " defined modified";
                EXPECT_EQ(show(t), std::to_string(result) + ":" + std::to_string(mode) + state)
                    << each.ticks << " " << step;
            }
        }
    }
}

TEST(NkDtTime, IsNotRoundedWhenItIsUndefined) {
    for (const NkDtWorkingMode mode : kStoredModes) {
        T t = undefined(mode, 1);
        const std::string before = show(t);
        t.Round(T::FullHour);
        EXPECT_EQ(show(t), before);
    }
}

TEST(NkDtTime, RefusesAStepThatIsNoneAndARoundedLengthThatDoesNotFit) {
    for (const int none : {-1, 3, 1000}) {
        for (T t : {ofTicks(1), undefined(NkDtWmMissing, 1)}) {
            const std::string before = show(t);
            const ErrorPtr error =
                expectError(NkDtErrOption, [&] { t.Round(static_cast<NkDtTime::RoundMode>(none)); });
            EXPECT_STREQ(error->GetErrorText(), "Unbekannte Option");
            EXPECT_EQ(show(t), before);
        }
    }
    for (const LONG ticks : {kMostTicks, kFewestTicks}) {
        T t = ofTicks(ticks);
        expectError(NkDtErrWertebereich, [&] { t.Round(T::FullHour); });
        EXPECT_EQ(ticksOf(t), ticks);
        EXPECT_EQ(stateOf(t), "defined");
    }
}

/// An application's duration that may not be modified.
class Locked : public T {
  public:
    Locked() : T(1, 30) {}
    void SetModified(BOOL) override { throw new NkDtExcep("", "", "", NkDtErrSonstiger, 0, FALSE); }
};

TEST(DurationSetters, ReplaceWhateverFailsInsideThemByTheirOwnError) {
    Locked locked;
    const auto replaced = [](const char* function, std::function<void()> operation) {
        return ErrorCase{function,       std::move(operation), NkDtErrFolgefehler,
                         ".\\dttime.cc", "NkDtTime",           function,
                         FALSE,          NkDtErrSonstiger};
    };
    expectOrigins({replaced("Clear()", [&] { locked.Clear(); }),
                   replaced("Reset(TimeMode)", [&] { locked.Reset(); }),
                   replaced("SetMode(TimeMode)", [&] { locked.SetMode(T::Hundredths); }),
                   replaced("SetValue(LPCTSTR,TimeMode)", [&] { locked.SetValue("2:00"); }),
                   replaced("SetHour(LONG)", [&] { locked.SetHour(2); }),
                   replaced("SetMin(LONG,TimeMode)", [&] { locked.SetMin(2); }),
                   replaced("SetTime(LONG,TimeMode)", [&] { locked.SetTime(2); }),
                   replaced("AddHour(LONG)", [&] { locked.AddHour(2); }),
                   replaced("SubHour(LONG)", [&] { locked.SubHour(2); }),
                   replaced("AddMin(LONG,TimeMode)", [&] { locked.AddMin(2); }),
                   replaced("SubMin(LONG,TimeMode)", [&] { locked.SubMin(2); }),
                   replaced("SetFromSQL(LONG)", [&] { locked.SetFromSQL(2); }),
                   replaced("SetFromOFL(LPCTSTR,NkFormat*)", [&] { locked.SetFromOFL("2:00"); })});
    EXPECT_EQ(show(locked), "1800:1 defined");
}

TEST(DurationOperators, LetAnErrorPass) {
    Locked locked;
    expectError(NkDtErrSonstiger, [&] { locked += T(0, 1); });
    expectError(NkDtErrSonstiger, [&] { locked -= T(0, 1); });
    EXPECT_EQ(show(locked), "1800:1 defined");
}

}  // namespace
