#pragma once

/// @file
/// What the tests of durations share: durations in every state, shown with all that they store.

#include <nkdt/NkDtTime.h>

#include <string>

#include "ValueTesting.h"

namespace durationtest {

using TimeMode = NkDtTime::TimeMode;

inline constexpr LONG kMostTicks = 2147483647;
inline constexpr LONG kFewestTicks = -2147483647 - 1;
inline constexpr TimeMode kTimeModes[] = {NkDtTime::Hundredths, NkDtTime::Minutes, NkDtTime::HoursOnly};
/// What is no time mode.
inline constexpr TimeMode kNoTimeModes[] = {static_cast<TimeMode>(-1), static_cast<TimeMode>(4)};

/// The stored ticks, whether the value is defined or not.
inline LONG ticksOf(const NkDtTime& t) {
    return std::stoi(valuetest::textOf(t));
}

/// "ticks:time mode state".
inline std::string show(const NkDtTime& t) {
    return std::to_string(ticksOf(t)) + ":" + std::to_string(t.GetMode()) + " " + valuetest::stateOf(t);
}

/// A defined duration, not modified.
inline NkDtTime ofTicks(LONG ticks, TimeMode timeMode = NkDtTime::Minutes,
                        NkDtWorkingMode mode = NkDtWmDefault) {
    NkDtTime t(mode);
    t.SetFromSQL(ticks);
    t.SetMode(timeMode);
    t.SetModified(FALSE);
    return t;
}

/// An undefined duration that stores this, as an archive can leave it; not modified.
inline NkDtTime undefined(NkDtWorkingMode mode, LONG ticks = 0, TimeMode timeMode = NkDtTime::Minutes) {
    NkDtTime t(mode);
    valuetest::load(t, valuetest::written([&](CArchive& archive) { archive << DWORD{0} << ticks; }));
    t.SetMode(timeMode);
    t.SetModified(FALSE);
    return t;
}

}  // namespace durationtest
